#include "link/port_list.h"

namespace kvo::link {
namespace {

std::string stateText(platform::PortError error) {
    switch (error) {
    case platform::PortError::none:
        return "free";
    case platform::PortError::missing:
        return "not plugged in";
    case platform::PortError::busy:
        return "in use";
    case platform::PortError::notPermitted:
        return "not permitted";
    default:
        return "does not open";
    }
}

} // namespace

std::vector<std::string> describePorts(const platform::SerialPort& port) {
    std::vector<std::string> lines;
    for (const platform::PortState& state : port.portStates()) {
        const std::string name = "COM" + std::to_string(lines.size() + 1) + ": ";
        lines.push_back(state.device.empty() ? name + "no device"
                                             : name + state.device + ", " + stateText(state.error));
    }
    return lines;
}

} // namespace kvo::link
