#pragma once
// The box for a file of the program that is there and cannot be read.
#include "core/paths.h"
#include "platform/dialogs.h"
#include "platform/services.h"

#include <string>

namespace kvo::forms {

// Says why, as the reading gave it; no box where it gave nothing.
inline void tellUnread(const std::string& why) {
    if (why.empty()) return;
    platform::services().dialogs->messageBox(why, platform::boxStyle::critical, core::programName);
}

} // namespace kvo::forms
