#include "platform/qt/port_watch.h"

#ifdef Q_OS_WIN
#include <QWinEventNotifier>
#endif

namespace kvo::platform_qt {

namespace {
constexpr int watchPollMs = 50;
} // namespace

PortWatch::PortWatch(platform::WatchedPort& port) : m_port(port) {
#ifdef Q_OS_WIN
    for (void* const handle : port.wakeHandles()) {
        auto* const notifier = new QWinEventNotifier(handle, this);
        connect(notifier, &QWinEventNotifier::activated, this, &PortWatch::look);
    }
#endif
    m_poll.setInterval(watchPollMs);
    connect(&m_poll, &QTimer::timeout, this, &PortWatch::look);
    port.whenOpened = [this](bool open) { open ? m_poll.start() : m_poll.stop(); };
}

PortWatch::~PortWatch() {
    m_port.whenOpened = nullptr;
}

void PortWatch::look() {
    if (m_port.portOpen() && m_port.takeEvents()) emit activity();
}

} // namespace kvo::platform_qt
