#pragma once
// The logger's memory as it leaves on the wire: 32 header bytes and the samples, two-byte numbers
// high byte first, speeds as pulse periods in ticks of 4 microseconds.
#include "platform/bytes.h"
#include "tools/logger_simulator/run_model.h"
#include "tools/logger_simulator/wire_layout.h"

#include <array>
#include <cstdint>
#include <vector>

namespace kvo::simulator {

using HeaderBytes = std::array<std::uint8_t, 32>;

// Ticks between two pulses at so many pulses a minute; 0 below what 16 bits can count.
std::uint16_t periodTicks(double pulsesPerMinute);

// The header that a logger of this type reports as it leaves the maker.
HeaderBytes makeHeader(const WireLayout& layout, const Vehicle& vehicle);
// One sample on the wire; `number` counts from 1.
platform::Bytes sampleBytes(
    const WireLayout& layout, const Vehicle& vehicle, const Moment& moment, int number);
// One frame of the live display.
platform::Bytes pitFrame(
    const WireLayout& layout, const Vehicle& vehicle, const Moment& moment, std::uint16_t counter);
// All samples of a run.
platform::Bytes memoryImage(const WireLayout& layout, std::uint32_t seed);

} // namespace kvo::simulator
