#pragma once
// The lock of a folder by the toolkit: a file Kvo.lock with host, process and program in it. A
// program that is asked to show its window hears of it over a socket that only its user may write
// to; a system without such sockets has none, and its windows are not brought to the front.
#include "platform/folder_lock.h"

#include <QLockFile>
#include <QString>

#include <memory>

class QSocketNotifier;

namespace kvo::platform_qt {

class QtFolderLock : public platform::FolderLock {
public:
    // The sockets of all programs lie in `socketFolder`, which only the user may enter; by default
    // the one that the system has for such.
    QtFolderLock();
    explicit QtFolderLock(QString socketFolder);
    ~QtFolderLock() override;
    QtFolderLock(const QtFolderLock&) = delete;
    QtFolderLock& operator=(const QtFolderLock&) = delete;

    std::optional<platform::FolderHolder> take(const std::string& folder) override;
    bool askToShow(const platform::FolderHolder& holder) override;
    void whenAsked(std::function<void()> show) override;

private:
    platform::FolderHolder holder() const;
    QString socketOf(std::int64_t process) const;
    void closeSocket();

    QString m_socketFolder;
    QString m_socketPath; // of this program, while it listens
    int m_socket = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace kvo::platform_qt
