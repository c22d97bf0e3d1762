#include "platform/machine/machine.h"

#include <utility>

namespace kvo::platform_machine {

#ifdef _WIN32
Machine::Machine(std::function<std::string()>) : m_port(platform_os::makeCommLine()) {}
#else
Machine::Machine(std::function<std::string()> portFolder) : m_port(std::move(portFolder)) {}
#endif

platform::Services Machine::services() {
    platform::Services all;
    all.files = &m_files;
    all.clock = &m_clock;
    all.dialogs = &m_dialogs;
    all.port = &m_port;
    all.yield = &m_yield;
    all.browser = &m_browser;
    all.printer = &m_printer;
    all.mail = &m_mail;
    all.folderLock = &m_folderLock;
    all.showRequests = &m_showRequests;
    all.lookOnlyAt = [this](const std::string& folder) { m_files.lookOnlyAt(folder); };
    all.settings = &m_settings;
    return all;
}

} // namespace kvo::platform_machine
