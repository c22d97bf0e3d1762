#pragma once
// A run as it stands in memory: the logger's settings, the rows and the three blocks behind them.
// Each field is named as in the run file; units and ranges stand beside it.
#include "core/basic/from_one.h"

#include <cstdint>
#include <memory>
#include <string>

namespace kvo::core {

inline constexpr int maxSamples = 2520; // rows of the longest run
inline constexpr double samplesPerSecond = 100;

// The logger's settings when the run was taken.
struct RunHeader {
    std::uint8_t EnginePickups = 0;     // list position 1 to 4
    std::uint8_t InputPickups = 0;      // list position 1 to 4
    std::uint8_t OutputPickups = 0;     // list position 1 to 4 of 2, 4, 6, 8
    std::uint8_t FrontWheelPickups = 0; // list position 1 to 18
    std::int16_t RecordOnRpm = 0;       // rpm
    std::uint8_t CrankGearTeeth = 0;    // 1 to 255
    std::uint8_t BasketGearTeeth = 0;   // 1 to 255
    std::int16_t PreStartRpm = 0;       // rpm
    std::int16_t ShiftLightRpm1 = 0;    // rpm
    float ShiftLightTime1 = 0;          // seconds; carried, not shown
    std::int16_t ShiftLightRpm2 = 0;
    float ShiftLightTime2 = 0;
    std::int16_t ShiftLightRpm3 = 0;
    float ShiftLightTime3 = 0;
    std::int16_t ShiftLightRpm4 = 0;
    float ShiftLightTime4 = 0;
    friend bool operator==(const RunHeader&, const RunHeader&) = default;
};

// The switches in RunSample::Status.
enum StatusBit : std::uint8_t {
    TransBrake = 1,
    WideOpenThrottle = 2,
    ShiftLight = 4,
    Dyna2Step = 8
};

// One hundredth of a second.
struct RunSample {
    std::int16_t Index = 0;     // 1 to N
    std::int16_t EngineRpm = 0; // rpm
    std::int16_t InputRpm = 0;  // rpm
    std::int16_t OutputRpm = 0; // rpm
    std::int32_t SpeedRaw = 0;  // 1/200 mph
    std::uint8_t Status = 0;    // switches; bits 4 to 6 name the exhaust of a type 20 row
    FromOne<std::uint8_t, 8> Analog;
    std::int32_t Aux = 0;             // carried
    FromOne<std::uint8_t, 8> Exhaust; // 4 degrees Celsius a count
    friend bool operator==(const RunSample&, const RunSample&) = default;
};

struct RunSetupBlock {
    // Before anything is read a name is 8 zero characters, as the record is all zeros.
    RunSetupBlock() { AnalogName.fill(std::string(8, '\0')); }

    FromOne<float, 5> GearRatio;
    FromOne<std::string, 8> AnalogName; // 8 characters, blank padded
    friend bool operator==(const RunSetupBlock&, const RunSetupBlock&) = default;
};

struct RunAnalogBlock {
    FromOne<std::uint8_t, 8> AnalogDecimals; // 0, 1, 2
    FromOne<float, 8> AnalogScale;
    FromOne<float, 8> AnalogOffset;
    float RearWheelDiameter = 0; // inches
    float CrownTeeth = 0;
    float PinionTeeth = 0;
    friend bool operator==(const RunAnalogBlock&, const RunAnalogBlock&) = default;
};

struct RunTailBlock {
    FromOne<std::uint8_t, 8> AnalogTypes;
    FromOne<std::uint8_t, 4> reserved; // written as found
    std::int16_t GearCount = 0;        // 0: not set
    float GearRatio6 = 0;
    std::int16_t TimeOffset = 0; // number of the sample that is time zero
    friend bool operator==(const RunTailBlock&, const RunTailBlock&) = default;
};

// Everything of one run but its identity. The main run and the overlay have one each.
struct RunImage {
    RunHeader header;
    FromOne<RunSample, maxSamples> samples;
    RunSetupBlock setup;
    RunAnalogBlock analog;
    RunTailBlock tail;

    // Any row number may be asked for: outside 1 to 2520 it is a row of zeros.
    const RunSample& rowOrZero(int i) const {
        static const RunSample none;
        return i >= 1 && i <= maxSamples ? samples[i] : none;
    }
};

} // namespace kvo::core
