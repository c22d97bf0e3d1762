// Entry of the program: makes the services, hands them to the forms, shows the first one.
#include "core/shared_state.h"
#include "link/forms/logger_line.h"
#include "mainwin/start.h"
#include "platform/look_only_files.h"
#include "platform/memory.h"
#include "platform/os/heap.h"
#include "platform/os/os_clock.h"
#include "platform/os/os_files.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/qt_browser.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_folder_lock.h"
#ifdef _WIN32
#include "platform/qt/mapi_mail.h"
#else
#include "platform/qt/qt_mail.h"
#endif
#include "platform/qt/qt_printer.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_yield.h"
#include "platform/services.h"

using namespace kvo;

int main(int argc, char* argv[]) {
    platform_os::keepFreedMemory();
    platform_qt::Application application(argc, argv);
    platform_qt::prepareApplication(application);

    platform_os::OsFiles disk;
    platform::LookOnlyFiles files(disk);
    platform_os::OsClock clock;
    platform_qt::QtDialogs dialogs;
    platform_qt::QtSerialPort port([] { return core::state().AppFolder; });
    platform_qt::QtYield yield(port);
    platform_qt::QtBrowser browser;
    platform_qt::QtPrinter printer(files);
#ifdef _WIN32
    platform_qt::MapiMail mail;
#else
    platform_qt::QtMail mail;
#endif
    platform_qt::QtFolderLock folderLock;
    platform::services() = {&files, &clock, &dialogs, &port, &yield, &browser, &printer, &mail,
        &folderLock, [&files](const std::string& folder) { files.lookOnlyAt(folder); }};
    link::LoggerLink logger(port, yield, dialogs);
    forms::useLoggerLink(&logger);

    bool started = false;
    platform::withinMemory(dialogs, "start", [&started] { started = forms::startProgram(); });
    const int result = started ? QApplication::exec() : 0;
    platform_qt::unloadAllForms();
    return result;
}
