#pragma once
// The wait that gives way to the window system: sleeps in the event loop until something happens on
// the port or the time is over, and says by the real clock how many turns went by.
#include "platform/yield.h"

#include <QObject>

namespace kvo::platform_qt {

class PortActivity;

class QtYield : public QObject, public platform::Yield {
public:
    explicit QtYield(PortActivity& port);
    int turns(int limit) override;

private:
    unsigned m_activity = 0; // counts what happened on the port
};

} // namespace kvo::platform_qt
