#pragma once
// What a list of ports says of each port number.
#include "platform/serial_port.h"

#include <string>
#include <vector>

namespace kvo::link {

// "COM1: /dev/ttyUSB0, free": a line each for the ports 1 to 16, UTF-8. Every device is opened for
// a moment to learn whether it is free.
std::vector<std::string> describePorts(const platform::SerialPort& port);

} // namespace kvo::link
