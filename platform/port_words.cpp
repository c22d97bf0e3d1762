#include "platform/port_words.h"

namespace kvo::platform {

namespace {

std::string named(int port, const std::string& device) {
    return "ort " + std::to_string(port) + ", " + device;
}

} // namespace

std::string missingPortText(int port, const std::string& device) {
    const std::string number = std::to_string(port);
    const std::string what = device.empty()
                                 ? "There is no serial port number " + number + " on this computer."
                                 : "Port " + number + " is " + device + ", which is not there.";
    return what + "\nPlug in the download cable's adapter, or choose another port.";
}

std::string forbiddenPortText(int port, const std::string& device, const std::string& group) {
    const std::string cure =
        group.empty() ? "Ask the administrator of this computer for access to it."
                      : "Join the group \"" + group + "\" (as administrator: adduser YOUR-NAME " +
                            group + "), then log out and in again.";
    return "You are not permitted to use p" + named(port, device) + ".\n" + cure;
}

std::string busyPortText(int port, const std::string& device) {
    return "P" + named(port, device) + ", is in use by another program.\nClose that program first.";
}

std::string failedPortText(int port, const std::string& device, const std::string& reason) {
    return "P" + named(port, device) + ", cannot be opened: " + reason + ".";
}

} // namespace kvo::platform
