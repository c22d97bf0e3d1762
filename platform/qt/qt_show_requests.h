#pragma once
// ShowRequests of a Unix: a program that is asked to show its window hears of it over a socket that
// only its user may write to.
#include "platform/show_requests.h"

#include <QString>

#include <memory>

class QSocketNotifier;

namespace kvo::platform_qt {

class QtShowRequests : public platform::ShowRequests {
public:
    // The sockets of all programs lie in `socketFolder`, which only the user may enter; by default
    // the one that the system has for such.
    QtShowRequests();
    explicit QtShowRequests(QString socketFolder);
    ~QtShowRequests() override;
    QtShowRequests(const QtShowRequests&) = delete;
    QtShowRequests& operator=(const QtShowRequests&) = delete;

    bool askToShow(const platform::FolderHolder& holder, const std::string& run) override;
    void whenAsked(std::function<void(const std::string& run)> show) override;

private:
    QString socketOf(std::int64_t process) const;
    void closeSocket();

    QString m_socketFolder;
    QString m_socketPath; // of this program, while it listens
    int m_socket = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace kvo::platform_qt
