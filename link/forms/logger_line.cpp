#include "link/forms/logger_line.h"

#include <cassert>

namespace kvo::forms {
namespace {

link::LoggerLink* theOne = nullptr;

} // namespace

void useLoggerLink(link::LoggerLink* theLink) {
    theOne = theLink;
}

link::LoggerLink& loggerLink() {
    assert(theOne != nullptr);
    return *theOne;
}

void closeLoggerLine() {
    if (theOne != nullptr) theOne->CloseLoggerPort();
}

} // namespace kvo::forms
