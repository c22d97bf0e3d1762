#pragma once
// The search for the port that the logger is on.
#include "link/logger_link.h"
#include "platform/dialogs.h"

namespace kvo::link {

// The list of ports on the form that started the search.
class PortListView {
public:
    virtual ~PortListView() = default;
    // Selects an entry, 0 to 15 for ports 1 to 16.
    virtual void selectComPort(int entry) = 0;
};

// Asks to go on, then tries ports 1 to 16 and offers each one that answers. Only the list changes.
void FindLoggerPort(LoggerLink& link, platform::Dialogs& dialogs, PortListView& view);

} // namespace kvo::link
