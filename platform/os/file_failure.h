#pragma once
// The system's error numbers as kinds of failure, with words that tell the user what to do.
#include "platform/files.h"

#include <string>
#include <system_error>

namespace kvo::platform_os {

struct Cause {
    platform::FileFailure failure = platform::FileFailure::other;
    std::string words;
};

// `error` is an errno. An error without an own row gives `other` in the system's words.
Cause causeOfRead(int error);
Cause causeOfWrite(int error);

// The errno of what the file system library reports.
int errnoOf(const std::error_code& error);

} // namespace kvo::platform_os
