#include "platform/qt/qt_show_requests.h"

#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <cstring>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#endif

namespace kvo::platform_qt {

#ifdef Q_OS_UNIX
namespace {

// The address of a socket file; empty where the path is too long for one.
std::optional<sockaddr_un> addressOf(const QString& path) {
    const QByteArray bytes = QFile::encodeName(path);
    sockaddr_un address{};
    if (static_cast<std::size_t>(bytes.size()) >= sizeof address.sun_path) return {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return address;
}

} // namespace
#endif

QtShowRequests::QtShowRequests()
    : QtShowRequests(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)) {}

QtShowRequests::QtShowRequests(QString socketFolder) : m_socketFolder(std::move(socketFolder)) {}

QtShowRequests::~QtShowRequests() {
    closeSocket();
}

QString QtShowRequests::socketOf(std::int64_t process) const {
    return QStringLiteral("%1/kvo-%2.show").arg(m_socketFolder).arg(process);
}

#ifdef Q_OS_UNIX

bool QtShowRequests::askToShow(const platform::FolderHolder& holder) {
    const auto address = addressOf(socketOf(holder.process));
    if (!holder.here || !address) return false;
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0) return false;
    const bool sent = ::sendto(socket, "show", 4, 0, reinterpret_cast<const sockaddr*>(&*address),
                          sizeof *address) == 4;
    ::close(socket);
    return sent;
}

void QtShowRequests::whenAsked(std::function<void()> show) {
    closeSocket();
    const QString path = socketOf(QCoreApplication::applicationPid());
    const auto address = addressOf(path);
    if (!address) return;
    m_socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (m_socket < 0) return;
    QFile::remove(path); // of a program that had this number before and was killed
    if (::bind(m_socket, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0)
        return closeSocket();
    m_socketPath = path;
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
        [socket = m_socket, show = std::move(show)] {
            char word[16];
            bool asked = false;
            while (::recv(socket, word, sizeof word, 0) > 0) asked = true;
            if (asked) show();
        });
}

void QtShowRequests::closeSocket() {
    m_notifier.reset();
    if (m_socket >= 0) ::close(m_socket);
    m_socket = -1;
    if (!m_socketPath.isEmpty()) QFile::remove(m_socketPath);
    m_socketPath.clear();
}

#else

bool QtShowRequests::askToShow(const platform::FolderHolder&) {
    return false;
}

void QtShowRequests::whenAsked(std::function<void()>) {}

void QtShowRequests::closeSocket() {}

#endif

} // namespace kvo::platform_qt
