#include "platform/qt/qt_show_requests.h"

#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <QStandardPaths>

#include <array>
#include <cstring>
#include <optional>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace kvo::platform_qt {

namespace {

const std::string showWord = "show";         // a run's path stands behind it
constexpr std::size_t longestRequest = 8192; // more than the system's paths have

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

QtShowRequests::QtShowRequests()
    : QtShowRequests(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)) {}

QtShowRequests::QtShowRequests(QString socketFolder) : m_socketFolder(std::move(socketFolder)) {}

QtShowRequests::~QtShowRequests() {
    closeSocket();
}

QString QtShowRequests::socketOf(std::int64_t process) const {
    return QStringLiteral("%1/kvo-%2.show").arg(m_socketFolder).arg(process);
}

bool QtShowRequests::askToShow(const platform::FolderHolder& holder, const std::string& run) {
    const std::string words = showWord + run;
    const auto address = addressOf(socketOf(holder.process));
    if (!holder.here || !address) return false;
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0) return false;
    const ssize_t sent = ::sendto(socket, words.data(), words.size(), 0,
        reinterpret_cast<const sockaddr*>(&*address), sizeof *address);
    ::close(socket);
    return sent == static_cast<ssize_t>(words.size());
}

void QtShowRequests::whenAsked(std::function<void(const std::string& run)> show) {
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
            std::array<char, longestRequest> words{};
            std::optional<std::string> run; // the last one that was asked for
            for (ssize_t size = 0; (size = ::recv(socket, words.data(), words.size(), 0)) > 0;) {
                const std::string_view asked(words.data(), static_cast<std::size_t>(size));
                if (asked.starts_with(showWord)) run = asked.substr(showWord.size());
            }
            if (run) show(*run);
        });
}

void QtShowRequests::closeSocket() {
    m_notifier.reset();
    if (m_socket >= 0) ::close(m_socket);
    m_socket = -1;
    if (!m_socketPath.isEmpty()) QFile::remove(m_socketPath);
    m_socketPath.clear();
}

} // namespace kvo::platform_qt
