#pragma once
// Waits in the event loop for what happens on a port that the loop knows nothing of, and asks now
// and then whether its line is still there, for lines that do not tell by themselves.
#include "platform/qt/port_activity.h"
#include "platform/serial_port.h"

#include <QTimer>

namespace kvo::platform_qt {

class PortWatch : public PortActivity {
public:
    // The port outlives this.
    explicit PortWatch(platform::WatchedPort& port);
    ~PortWatch() override;
    PortWatch(const PortWatch&) = delete;
    PortWatch& operator=(const PortWatch&) = delete;

private:
    void look();

    platform::WatchedPort& m_port;
    QTimer m_poll;
};

} // namespace kvo::platform_qt
