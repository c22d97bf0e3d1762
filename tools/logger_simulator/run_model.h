#pragma once
// A believable pass down the strip: staging, two step, launch off the trans brake, tyre slip, gear
// changes, wide open throttle to the finish and the shut-down behind it. One car or motorcycle for
// each data type. The same seed gives the same run to the last bit.
#include <array>
#include <cstdint>
#include <vector>

namespace kvo::simulator {

// One hundredth of a second, in physical units and raw sensor bytes.
struct Moment {
    double engineRpm = 0;
    double inputRpm = 0;
    double outputRpm = 0;
    double mph = 0;
    std::uint8_t switches = 0; // 1 trans brake, 2 wide open throttle, 4 shift light, 8 two step
    std::array<std::uint8_t, 8> analog{};
    std::array<std::uint8_t, 8> exhaust{}; // 4 degrees Celsius a count
};

struct Vehicle {
    bool motorcycle;
    std::vector<double> gears; // first to top
    double launchRpm;          // what the two step holds
    double shiftRpm;
    double finishMph;
    double finishSeconds; // after the launch
    int crankTeeth;       // primary drive of a motorcycle, 1 and 1 in a car
    int basketTeeth;
    double frontWheelInches;
    double rearTyreInches;
    double finalDrive;     // turns of the output shaft a turn of the wheel
    double clutchSlip = 0; // what the engine turns too fast, of the locked speed, while it pulls
};

// The vehicle that carries the logger of a data type.
const Vehicle& vehicleFor(int dataType);

// `count` samples with the launch at sample `launch`, counted from 1.
std::vector<Moment> makeRun(const Vehicle& vehicle, int count, int launch, std::uint32_t seed);

} // namespace kvo::simulator
