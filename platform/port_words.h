#pragma once
// What the user is told of a serial port that does not open: which one it is, why, and what to do.
// UTF-8. `device` is the system's own text for what stands behind the number.
#include <string>

namespace kvo::platform {

// `device` may be empty: nothing stands behind that number at all.
std::string missingPortText(int port, const std::string& device);
// `group` is the one to join; empty where that would not help.
std::string forbiddenPortText(int port, const std::string& device, const std::string& group);
std::string busyPortText(int port, const std::string& device);
// `reason` is in the system's words, without a full stop.
std::string failedPortText(int port, const std::string& device, const std::string& reason);

} // namespace kvo::platform
