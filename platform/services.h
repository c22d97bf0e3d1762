#pragma once
// What stands between the program and the machine, in one place. main fills it with the real
// things, tests with doubles. Only forms and main reach it; logic takes what it needs as arguments.
#include "platform/browser.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folder_lock.h"
#include "platform/mail.h"
#include "platform/printer.h"
#include "platform/serial_port.h"
#include "platform/settings.h"
#include "platform/show_requests.h"
#include "platform/yield.h"

#include <functional>
#include <string>
#include <vector>

namespace kvo::platform {

struct Services {
    Files* files = nullptr;
    Clock* clock = nullptr;
    Dialogs* dialogs = nullptr;
    SerialPort* port = nullptr;
    Yield* yield = nullptr;
    Browser* browser = nullptr;
    Printer* printer = nullptr;
    Mail* mail = nullptr;
    FolderLock* folderLock = nullptr;
    ShowRequests* showRequests = nullptr;
    // From then on nothing that lies in this folder is changed, by whatever service.
    std::function<void(const std::string& folder)> lookOnlyAt = nullptr;
    Settings* settings = nullptr;
    // Starts the program once more with these words behind its name; false where that fails.
    std::function<bool(const std::vector<std::string>& words)> startAnew = nullptr;
};

// The one set of services of the program.
Services& services();

} // namespace kvo::platform
