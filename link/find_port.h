#pragma once
// The search for the port that the logger is on.
#include "link/logger_link.h"
#include "platform/dialogs.h"

namespace kvo::link {

// What the search shows, and the list of ports of the form that started it.
class PortListView {
public:
    virtual ~PortListView() = default;
    // Selects an entry, 0 to 15 for ports 1 to 16.
    virtual void selectComPort(int entry) = 0;
    // A port, 1 to 16, is tried next.
    virtual void showPort(int port) = 0;
    // The user has had enough; the search ends without a word. Asked before each port.
    virtual bool stopped() const = 0;
    // No port is tried any more; a last message may come.
    virtual void searchIsOver() = 0;
};

// Asks to go on, then tries ports 1 to 16 and offers each one that answers. Only the list changes.
void FindLoggerPort(LoggerLink& link, platform::Dialogs& dialogs, PortListView& view);

} // namespace kvo::link
