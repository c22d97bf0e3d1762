#pragma once
// The one link to the logger that all forms share. Its record lives as long as the program, since
// what the last session left in it counts in the next.
#include "link/logger_link.h"

namespace kvo::forms {

// main (or a test) gives the link before the first form that needs it.
void useLoggerLink(link::LoggerLink* theLink);
link::LoggerLink& loggerLink();
// Closes the port at the end of the program, which ends every wait for the logger. Without a link
// there is nothing to close.
void closeLoggerLine();

} // namespace kvo::forms
