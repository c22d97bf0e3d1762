#pragma once
// The machine that the program runs on: the real body of every service, as this system has it.
#include "platform/look_only_files.h"
#include "platform/os/os_clock.h"
#include "platform/os/os_files.h"
#include "platform/os/os_folder_lock.h"
#include "platform/qt/qt_browser.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_printer.h"
#include "platform/qt/qt_settings.h"
#include "platform/qt/qt_yield.h"
#include "platform/services.h"
#ifdef _WIN32
#include "platform/os/comm_port.h"
#include "platform/os/window_show_requests.h"
#include "platform/qt/mapi_mail.h"
#include "platform/qt/port_watch.h"
#else
#include "platform/qt/qt_mail.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_show_requests.h"
#endif

#include <functional>
#include <string>

namespace kvo::platform_machine {

class Machine {
public:
    // `portFolder` says where a link COMn may name the device of port n; Windows has its own names.
    explicit Machine(std::function<std::string()> portFolder);
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // All of them but startAnew; they live as long as this.
    platform::Services services();

private:
    platform_os::OsFiles m_disk;
    platform::LookOnlyFiles m_files{m_disk};
    platform_os::OsClock m_clock;
    platform_qt::QtDialogs m_dialogs;
#ifdef _WIN32
    platform_os::CommPort m_port;
    platform_qt::PortWatch m_activity{m_port};
    platform_qt::MapiMail m_mail;
    platform_os::WindowShowRequests m_showRequests;
#else
    platform_qt::QtSerialPort m_port;
    platform_qt::PortActivity& m_activity = m_port;
    platform_qt::QtMail m_mail;
    platform_qt::QtShowRequests m_showRequests;
#endif
    platform_qt::QtYield m_yield{m_activity};
    platform_qt::QtBrowser m_browser;
    platform_qt::QtPrinter m_printer{m_files};
    platform_os::OsFolderLock m_folderLock;
    platform_qt::QtSettings m_settings;
};

} // namespace kvo::platform_machine
