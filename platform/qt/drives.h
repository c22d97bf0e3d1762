#pragma once
// The disks that a user knows: where the system stands, the user's own folder, and what was plugged
// in or connected.
#include <string>
#include <vector>

namespace kvo::platform_qt {

struct Drive {
    std::string caption;
    std::string root; // path, UTF-8
};

// At least one. A disk without a medium in it may be among them.
std::vector<Drive> drives();

} // namespace kvo::platform_qt
