#include "tools/logger_simulator/memory_image.h"

#include "core/data_types.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace kvo::simulator {
namespace {

constexpr double tickSeconds = 4e-06;
constexpr double inchesPerMileMinute = 1056; // inches a minute at one mile an hour

void putWord(platform::Bytes& bytes, std::size_t at, std::uint16_t value) {
    bytes[at] = static_cast<std::uint8_t>(value >> 8);
    bytes[at + 1] = static_cast<std::uint8_t>(value & 0xFF);
}

// The four pulse channels: the output shaft gives two pulses a turn, the others one.
void putPulses(
    platform::Bytes& bytes, std::size_t at, const Vehicle& vehicle, const Moment& moment) {
    putWord(bytes, at, periodTicks(moment.engineRpm));
    putWord(bytes, at + 2, periodTicks(moment.inputRpm));
    putWord(bytes, at + 4, periodTicks(2 * moment.outputRpm));
    putWord(bytes, at + 6,
        periodTicks(
            moment.mph * inchesPerMileMinute / (std::numbers::pi * vehicle.frontWheelInches)));
}

} // namespace

std::uint16_t periodTicks(double pulsesPerMinute) {
    if (pulsesPerMinute <= 0) return 0;
    const double ticks = 60 / (pulsesPerMinute * tickSeconds);
    return ticks < 65535.5 ? static_cast<std::uint16_t>(std::lround(ticks)) : std::uint16_t{0};
}

HeaderBytes makeHeader(const WireLayout& layout, const Vehicle& vehicle) {
    platform::Bytes bytes(32, 0);
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    bytes[0] = byte(layout.dataType);
    bytes[1] = byte(layout.model);
    bytes[2] = 5; // firmware "1.4"
    bytes[3] = byte(layout.memoryCode);
    bytes[4] = bytes[5] = bytes[6] = bytes[7] = 1; // first entries of the lists of pickups
    putWord(bytes, 8, static_cast<std::uint16_t>(1200 + layout.dataType)); // serial number
    putWord(bytes, 10, periodTicks(3000));                                 // record on
    bytes[12] = byte(vehicle.crankTeeth);
    bytes[13] = byte(vehicle.basketTeeth);
    putWord(bytes, 14, periodTicks(vehicle.launchRpm - 400));
    putWord(bytes, 16, periodTicks(0.96 * vehicle.shiftRpm));
    for (std::size_t k = 1; k <= 3; ++k) { // thresholds that take over 2, 4 and 6 seconds on
        const std::size_t at = 16 + 4 * k;
        putWord(bytes, at, periodTicks((0.96 + 0.01 * static_cast<double>(k)) * vehicle.shiftRpm));
        putWord(bytes, at + 2, static_cast<std::uint16_t>(200 * k));
    }
    HeaderBytes header{};
    std::copy(bytes.begin(), bytes.end(), header.begin());
    return header;
}

platform::Bytes sampleBytes(
    const WireLayout& layout, const Vehicle& vehicle, const Moment& moment, int number) {
    platform::Bytes bytes(static_cast<std::size_t>(layout.sampleBytes), 0);
    putPulses(bytes, 0, vehicle, moment);
    bytes[8] = moment.switches;
    for (std::size_t c = 0; c < static_cast<std::size_t>(layout.analog); ++c)
        bytes[9 + c] = moment.analog[c];
    // The eight exhausts take turns on analog 7.
    if (core::exhaustsOf(layout.dataType) == core::Exhausts::timeShared) {
        const auto turn = static_cast<std::size_t>(number % 8);
        bytes[8] = static_cast<std::uint8_t>(bytes[8] | (turn << 4));
        bytes[15] = moment.exhaust[turn];
    }
    if (layout.auxBytes == 2)
        putWord(
            bytes, static_cast<std::size_t>(layout.auxAt - 1), static_cast<std::uint16_t>(number));
    if (layout.auxBytes == 1)
        bytes[static_cast<std::size_t>(layout.auxAt - 1)] =
            static_cast<std::uint8_t>(number & 0xFF);
    for (std::size_t c = 0; layout.exhaustAt > 0 && c < 8; ++c)
        bytes[static_cast<std::size_t>(layout.exhaustAt - 1) + c] = moment.exhaust[c];
    // Channels that only the maker's own program knows.
    for (std::size_t at = 32; at < bytes.size(); ++at)
        bytes[at] = static_cast<std::uint8_t>(0x80 + at);
    return bytes;
}

platform::Bytes pitFrame(
    const WireLayout& layout, const Vehicle& vehicle, const Moment& moment, std::uint16_t counter) {
    platform::Bytes bytes(static_cast<std::size_t>(layout.pitFrameBytes), 0);
    putWord(bytes, 0, counter);
    putPulses(bytes, 2, vehicle, moment);
    bytes[10] = moment.switches;
    for (std::size_t c = 0; c < 8; ++c) bytes[11 + c] = moment.analog[c];
    for (std::size_t c = 0; layout.pitExhaustAt > 0 && c < 8; ++c)
        bytes[static_cast<std::size_t>(layout.pitExhaustAt - 1) + c] = moment.exhaust[c];
    return bytes;
}

platform::Bytes memoryImage(const WireLayout& layout, std::uint32_t seed) {
    const Vehicle& vehicle = vehicleFor(layout.dataType);
    platform::Bytes all;
    all.reserve(
        static_cast<std::size_t>(layout.samples) * static_cast<std::size_t>(layout.sampleBytes));
    int number = 0;
    for (const Moment& moment : makeRun(vehicle, layout.samples, layout.timeOffset, seed)) {
        const platform::Bytes one = sampleBytes(layout, vehicle, moment, ++number);
        all.insert(all.end(), one.begin(), one.end());
    }
    return all;
}

} // namespace kvo::simulator
