#pragma once
// The logger's description of itself: 32 bytes that it sends ahead of the samples. What was read
// stays until the next read, also after the port is closed.
#include "core/run_file.h"

#include <cstdint>

namespace kvo::link {

struct LoggerHeader : core::LoggerIdentity {
    std::uint8_t DataType = 0; // sample format: 8, 12, 17, 20, 25, 32, 43; 0 none
    core::RunHeader RunHeader; // pickups, thresholds (rpm), times (s), teeth
};

} // namespace kvo::link
