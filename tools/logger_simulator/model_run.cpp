#include "tools/logger_simulator/model_run.h"

#include "tools/logger_simulator/run_model.h"

#include <algorithm>
#include <cmath>

namespace kvo::simulator {

namespace {

constexpr int timeSharedType = 20; // one exhaust temperature a row, in analog 7

std::int16_t wholeRpm(double value) {
    return static_cast<std::int16_t>(std::lround(std::clamp(value, 0.0, 32000.0)));
}

core::RunSample sampleOf(const Moment& moment, int index, int dataType) {
    constexpr double rawPerMph = 200;
    core::RunSample row;
    row.Index = static_cast<std::int16_t>(index);
    row.EngineRpm = wholeRpm(moment.engineRpm);
    row.InputRpm = wholeRpm(moment.inputRpm);
    row.OutputRpm = wholeRpm(moment.outputRpm);
    row.SpeedRaw = static_cast<std::int32_t>(std::lround(moment.mph * rawPerMph));
    row.Status = moment.switches;
    for (int n = 1; n <= 8; ++n) {
        row.Analog[n] = moment.analog[static_cast<std::size_t>(n - 1)];
        row.Exhaust[n] = moment.exhaust[static_cast<std::size_t>(n - 1)];
    }
    if (dataType == timeSharedType) {
        const int shared = index % 8;
        row.Status = static_cast<std::uint8_t>((row.Status & 15) | shared << 4);
        row.Analog[7] = moment.exhaust[static_cast<std::size_t>(shared)];
        row.Exhaust.fill(0);
    }
    return row;
}

} // namespace

std::vector<Moment> fillRun(
    core::RunImage& image, int dataType, int rows, int timeOffset, std::uint32_t seed) {
    return fillRun(image, vehicleFor(dataType), dataType, rows, timeOffset, seed);
}

std::vector<Moment> fillRun(core::RunImage& image, const Vehicle& vehicle, int dataType, int rows,
    int timeOffset, std::uint32_t seed) {
    image = {};
    image.header.CrankGearTeeth = static_cast<std::uint8_t>(vehicle.crankTeeth);
    image.header.BasketGearTeeth = static_cast<std::uint8_t>(vehicle.basketTeeth);
    image.tail.TimeOffset = static_cast<std::int16_t>(timeOffset);
    auto moments = makeRun(vehicle, rows, timeOffset, seed);
    for (int i = 1; i <= rows; ++i)
        image.samples[i] = sampleOf(moments[static_cast<std::size_t>(i - 1)], i, dataType);
    return moments;
}

TrackTime trackTime(const std::vector<Moment>& moments, int timeOffset, double feet) {
    constexpr double feetPerSecondPerMph = 5280.0 / 3600.0;
    double gone = 0;
    for (auto i = static_cast<std::size_t>(timeOffset); i < moments.size(); ++i) {
        const double step = moments[i].mph * feetPerSecondPerMph / core::samplesPerSecond;
        if (gone + step >= feet) {
            const double part = step > 0 ? (feet - gone) / step : 0;
            const double samples = static_cast<double>(i) + part - timeOffset;
            return {samples / core::samplesPerSecond, moments[i].mph};
        }
        gone += step;
    }
    return {};
}

} // namespace kvo::simulator
