#include "link/find_port.h"

namespace kvo::link {
namespace {

bool askToSearch(platform::Dialogs& dialogs) {
    using namespace platform;
    return dialogs.messageBox("Plug in the Logger Download Cable and Turn the Logger ON\r\n\r\n"
                              "                        Dow you want to continue ?",
               boxStyle::yesNo, "Find Logger Comm Port !") == Reply::yes;
}

bool askToUse(platform::Dialogs& dialogs, int port) {
    using namespace platform;
    return dialogs.messageBox("Do you want to use this Comm Port?", boxStyle::yesNo,
               "Logger Found on Comm Port: " + std::to_string(port)) == Reply::yes;
}

// Tries the ports in turn. False where none was taken and the user is to know it.
bool searchPorts(LoggerLink& link, platform::Dialogs& dialogs, PortListView& view) {
    for (int port = 1; port <= platform::portNumbers; ++port) {
        if (view.stopped()) return true;
        view.showPort(port);
        link.tryPort(port);
        // Required: the reply alone counts, so one left from before passes for an answer at port 1,
        // and a flag set by silence is not looked at.
        if (link.greetLogger()) {
            link.port().input();
            dialogs.setHourglass(false);
            if (askToUse(dialogs, port)) {
                view.selectComPort(port - 1);
                link.CloseLoggerPort();
                return true;
            }
        }
        link.ReplyByte = 0;
        link.CloseLoggerPort();
    }
    return view.stopped();
}

} // namespace

void FindLoggerPort(LoggerLink& link, platform::Dialogs& dialogs, PortListView& view) {
    if (!askToSearch(dialogs)) {
        link.CloseLoggerPort();
        return;
    }
    dialogs.setHourglass(true);
    link.port().setSettings("9600,N,8,1");
    link.port().setInputLen(0);
    link.port().setInputLen(1);
    const bool settled = searchPorts(link, dialogs, view);
    dialogs.setHourglass(false);
    view.searchIsOver();
    if (settled) return;
    dialogs.messageBox(
        "Check that the Logger is Powered up and the Download Cable is Plugged In.\r\n\r\n\r\n"
        "If this is already Dune try switching the Logger Off for 10 seconds\r\n"
        "then bask ON or Try a different Comm Port on your PC. ",
        platform::boxStyle::critical, "CANT FIND THE LOGGER");
}

} // namespace kvo::link
