#pragma once
// The wait that gives way to the window system: sleeps in the event loop until something happens on
// the port or the time is over, and says by the real clock how many turns went by.
#include "platform/yield.h"

namespace kvo::platform_qt {

class QtSerialPort;

class QtYield : public platform::Yield {
public:
    explicit QtYield(QtSerialPort& port) : m_port(port) {}
    int turns(int limit) override;

private:
    QtSerialPort& m_port;
};

} // namespace kvo::platform_qt
