#pragma once
// The logger's description of itself: 32 bytes that it sends ahead of the samples. Its fields are
// the program's own data type, codes, serial number and run header, so a header that was read goes
// into the run file as it is and stands until the next read or load.
#include "core/shared_state.h"

#include <cstdint>
#include <string>

namespace kvo::link {

// A view of those fields; the state must outlive it.
struct LoggerHeader {
    explicit LoggerHeader(core::SharedState& state);

    std::uint8_t& DataType;      // sample format: 8, 12, 17, 20, 25, 32, 43; 0 none
    std::uint8_t& LoggerModel;   // shown as a number
    std::uint8_t& LoggerVersion; // 1 to 10 stand for "1.0" to "1.9"
    std::uint8_t& LoggerMemory;  // 1 "32k", 2 "128k", 3 "512k", 4 "60k"
    std::int16_t& LoggerSerial;
    core::RunHeader& RunHeader; // pickups, thresholds (rpm), times (s), teeth
};

} // namespace kvo::link
