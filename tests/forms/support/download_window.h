#pragma once
// What the tests of the download window share.
#include "link/forms/download_data.h"
#include "platform/qt/form_kit.h"

#include <QPushButton>

namespace kvo::testing {

// The file of the run that a download leaves on the tests' clock.
inline constexpr const char* downloadedRun = "/kvo/Data/26111514.42d";

inline QPushButton& sendButton() {
    return platform_qt::control<QPushButton>(
        platform_qt::form<forms::DownloadData>(), "Command_Send");
}

} // namespace kvo::testing
