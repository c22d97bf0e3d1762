#pragma once
// What tells the wait that something happened on the serial port.
#include <QObject>

namespace kvo::platform_qt {

class PortActivity : public QObject {
    Q_OBJECT

signals:
    // As many bytes are there as one input() takes, bytes went, or the line was lost.
    void activity();
};

} // namespace kvo::platform_qt
