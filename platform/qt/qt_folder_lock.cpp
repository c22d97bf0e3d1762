#include "platform/qt/qt_folder_lock.h"

#include "platform/qt/text.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QSysInfo>

#ifdef Q_OS_UNIX
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#endif

namespace kvo::platform_qt {

namespace {

platform::DateTime dateTimeOf(const QDateTime& moment) {
    const QDate day = moment.date();
    const QTime time = moment.time();
    return {day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second()};
}

#ifdef Q_OS_UNIX
// The address of a socket file; empty where the path is too long for one.
std::optional<sockaddr_un> addressOf(const QString& path) {
    const QByteArray bytes = QFile::encodeName(path);
    sockaddr_un address{};
    if (static_cast<std::size_t>(bytes.size()) >= sizeof address.sun_path) return {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return address;
}
#endif

} // namespace

QtFolderLock::QtFolderLock()
    : QtFolderLock(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)) {}

QtFolderLock::QtFolderLock(QString socketFolder) : m_socketFolder(std::move(socketFolder)) {}

QtFolderLock::~QtFolderLock() {
    closeSocket();
}

std::optional<platform::FolderHolder> QtFolderLock::take(const std::string& folder) {
    m_lock = std::make_unique<QLockFile>(shownPath(folder) + QStringLiteral("/Kvo.lock"));
    // A lock does not get old while its program lives, however long that has not been heard of.
    m_lock->setStaleLockTime(0);
    if (m_lock->tryLock(0) || m_lock->error() != QLockFile::LockFailedError) return {};
    return holder();
}

platform::FolderHolder QtFolderLock::holder() const {
    platform::FolderHolder found;
    qint64 process = 0;
    QString host;
    QString program;
    if (m_lock->getLockInfo(&process, &host, &program)) {
        found.program = program.toStdString();
        found.host = host.toStdString();
        found.process = process;
        found.here = host == QSysInfo::machineHostName();
    }
    found.since = dateTimeOf(QFileInfo(m_lock->fileName()).lastModified());
    return found;
}

QString QtFolderLock::socketOf(std::int64_t process) const {
    return QStringLiteral("%1/kvo-%2.show").arg(m_socketFolder).arg(process);
}

#ifdef Q_OS_UNIX

bool QtFolderLock::askToShow(const platform::FolderHolder& holder) {
    const auto address = addressOf(socketOf(holder.process));
    if (!holder.here || !address) return false;
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0) return false;
    const bool sent = ::sendto(socket, "show", 4, 0, reinterpret_cast<const sockaddr*>(&*address),
                          sizeof *address) == 4;
    ::close(socket);
    return sent;
}

void QtFolderLock::whenAsked(std::function<void()> show) {
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

void QtFolderLock::closeSocket() {
    m_notifier.reset();
    if (m_socket >= 0) ::close(m_socket);
    m_socket = -1;
    if (!m_socketPath.isEmpty()) QFile::remove(m_socketPath);
    m_socketPath.clear();
}

#else

bool QtFolderLock::askToShow(const platform::FolderHolder&) {
    return false;
}

void QtFolderLock::whenAsked(std::function<void()>) {}

void QtFolderLock::closeSocket() {}

#endif

} // namespace kvo::platform_qt
