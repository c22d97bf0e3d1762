#include "channels/derived.h"

#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/setup_kinds.h"

#include <cmath>
#include <limits>

namespace kvo::channels {
namespace {

using core::CInt;
using core::CLng;
using core::Fix;
using core::Format;
using core::RunAnalogBlock;
using core::RunImage;

constexpr int rocosNear = 7;                 // samples from i to the near end of a window
constexpr int rocosFar = 13;                 // and to its far end
constexpr int rocosCount = 7;                // samples in a window
constexpr double feetPerSecond = 1.46666666; // of one mph

std::int64_t speedSum(const RunImage& image, int first) {
    std::int64_t sum = 0;
    for (int i = first; i < first + rocosCount; ++i) sum += image.rowOrZero(i).SpeedRaw;
    return sum;
}

bool fitsLong(std::int64_t value) {
    return value >= std::numeric_limits<std::int32_t>::min() &&
           value <= std::numeric_limits<std::int32_t>::max();
}

// The rear wheel's diameter in inches from speed and output shaft; outputRpm is not 0.
Reading wheelDiameter(double mphValue, double outputRpm, const RunAnalogBlock& block) {
    const double pinion = block.PinionTeeth;
    if (pinion == 0) return Reading::failed();
    const double diameter =
        mphValue * (static_cast<double>(block.CrownTeeth) / pinion) * 336 / outputRpm;
    return std::isfinite(diameter) ? Reading::of(diameter) : Reading::failed();
}

// A value as a single holds it; a run-time failure where it is too large or no number.
Reading asSingle(double value) {
    const float single = static_cast<float>(value);
    return std::isfinite(single) ? Reading::of(single) : Reading::failed();
}

} // namespace

std::optional<double> primaryRatio(const core::RunHeader& header) {
    if (header.BasketGearTeeth == 0) return std::nullopt;
    return static_cast<double>(header.CrankGearTeeth) / header.BasketGearTeeth;
}

double clutchRpm(double ratio, std::int16_t engineRpm) {
    return Fix(ratio * engineRpm);
}

Reading slipDrawn(double ratio, std::int16_t engineRpm, std::int16_t inputRpm) {
    const double a = engineRpm * ratio;
    const auto b = CLng((a - inputRpm) * 100);
    if (!b) return Reading::failed();
    if (!(a > 0)) return Reading::of(0);
    const auto v = CInt(*b / a);
    return v ? Reading::of(*v) : Reading::failed();
}

std::string slipRead(double ratio, double engineRpm, double inputRpm) {
    const double a = engineRpm * ratio;
    if (!(a > 0)) return {};
    return Format((a - inputRpm) * 100 / a, "##0.0");
}

Reading slipMouse(double ratio, std::int16_t engineRpm, std::int16_t inputRpm) {
    const double a = engineRpm * ratio;
    if (a <= 0) return Reading::none();
    const auto quotient = core::intDivRounded(100 * (a - inputRpm), a);
    return quotient ? Reading::of(*quotient) : Reading::failed();
}

TextReading slipPrinted(
    const core::RunHeader& header, std::int16_t engineRpm, std::int16_t inputRpm) {
    if (engineRpm < 1) return TextReading::of({});
    if (header.BasketGearTeeth == 0) return TextReading::failed();
    // Required: the divisor is the engine's word, not that word times the primary drive.
    const double a =
        static_cast<double>(engineRpm) * header.CrankGearTeeth / header.BasketGearTeeth;
    const auto quotient = core::intDivRounded((a - inputRpm) * 100, engineRpm);
    if (!quotient) return TextReading::failed();
    return TextReading::of(Format(*quotient, "###"));
}

double ratioDrawn(double ratio, std::int16_t engineRpm, std::int16_t outputRpm) {
    return outputRpm != 0 ? ratio * engineRpm / outputRpm : 0;
}

std::string ratioRead(double engineRpm, double outputRpm) {
    // Required: label and table leave the primary drive out.
    return outputRpm != 0 ? Format(engineRpm / outputRpm, "##0.00") : std::string();
}

Reading ratioMouse(double ratio, std::int16_t engineRpm, std::int16_t outputRpm) {
    if (outputRpm == 0) return Reading::none();
    return Reading::of(ratioDrawn(ratio, engineRpm, outputRpm));
}

std::string ratioPrinted(std::int16_t engineRpm, std::int16_t outputRpm) {
    return outputRpm < 1 ? std::string() : ratioRead(engineRpm, outputRpm);
}

Reading rocosDrawn(const RunImage& image, int sampleCount, int i) {
    if (i <= rocosFar || i >= sampleCount - rocosFar) return Reading::none();
    const std::int64_t before = speedSum(image, i - rocosFar);
    const std::int64_t after = speedSum(image, i + rocosNear);
    if (!fitsLong(before) || !fitsLong(after)) return Reading::failed();
    const std::int64_t change = after / rocosCount - before / rocosCount;
    if (!fitsLong(change)) return Reading::failed();
    const std::int64_t steps = change / 40; // Required: whole ones.
    const auto v = CInt(static_cast<double>(steps) * 3.66666666);
    return v ? Reading::of(*v) : Reading::failed();
}

TextReading RoCoS_Cal(const RunImage& image, int sampleCount, int i) {
    if (i < 14 || i >= sampleCount - rocosFar) return TextReading::of({});
    // Required: each step is kept as a single.
    const auto feet = [&image](int first) {
        const float mean = static_cast<float>(static_cast<double>(speedSum(image, first)) / 1400.0);
        return static_cast<double>(static_cast<float>(mean * feetPerSecond));
    };
    const auto rate = CInt(Fix((feet(i + rocosNear) - feet(i - rocosFar)) * 15.5520995));
    if (!rate) return TextReading::failed();
    const int g = *rate > 999 ? 999 : *rate < 0 ? 0 : *rate;
    return TextReading::of(
        std::to_string(g / 100) + "." + std::to_string(g % 100 / 10) + std::to_string(g % 10));
}

double mph(std::int32_t speedRaw) {
    return speedRaw / 200.0;
}

std::string mphRead(double mphValue) {
    return Format(mphValue, "##0.00");
}

Reading tyreGrowthDrawn(
    std::int32_t speedRaw, std::int16_t outputRpm, const RunAnalogBlock& block) {
    if (outputRpm < 1 || speedRaw <= 0) return Reading::of(0);
    const Reading diameter = wheelDiameter(mph(speedRaw), outputRpm, block);
    if (!diameter.hasValue()) return diameter;
    // Required: the curve stands 10 above the growth.
    return Reading::of(diameter.value + 10 - block.RearWheelDiameter);
}

TextReading tyreGrowthRead(double mphValue, double outputRpm, std::string_view mphText,
    const RunAnalogBlock& block, std::string_view picture) {
    if (outputRpm < 1 || !(core::Val(mphText) > 0)) return TextReading::of("N/A");
    const Reading diameter = wheelDiameter(mphValue, outputRpm, block);
    const double growth = diameter.value - block.RearWheelDiameter;
    if (!diameter.hasValue() || !std::isfinite(growth)) return TextReading::failed();
    return TextReading::of(Format(growth, picture));
}

Reading tyreGrowthMouse(
    std::int32_t speedRaw, std::int16_t outputRpm, const RunAnalogBlock& block) {
    if (outputRpm < 1 || speedRaw <= 0) return Reading::none();
    const Reading diameter = wheelDiameter(mph(speedRaw), outputRpm, block);
    if (!diameter.hasValue()) return diameter;
    return Reading::of(diameter.value - block.RearWheelDiameter);
}

AnalogSetup analogSetup(const RunImage& image, int n) {
    return {image.tail.AnalogTypes[n], image.analog.AnalogScale[n], image.analog.AnalogOffset[n],
        image.analog.AnalogDecimals[n]};
}

double analogDrawn(double raw, int type) {
    return type == core::lambdaInput ? raw + 20 : raw;
}

TextReading analogRead(
    const AnalogSetup& setup, double raw, int exhaustUnit, std::string& picture, int fuelSelector) {
    if (setup.type == core::exhaustInput)
        return TextReading::of(core::CStr(temperature(raw, exhaustUnit)));
    if (setup.type == core::lambdaInput)
        return TextReading::of(Format(lambdaValue(raw, fuelSelector), "#0.0"));
    if (setup.type > core::pressureInput) return TextReading::left();
    const Reading value = asSingle(raw * setup.scale + setup.offset);
    if (!value.hasValue()) return TextReading::failed();
    core::AnalogFormat(setup.decimals, picture);
    return TextReading::of(Format(value.value, picture));
}

double lambdaValue(double raw, int fuelSelector) {
    const double lambda = raw / 51 + raw / 51 + 9;
    switch (fuelSelector) {
    case 1:
        return lambda * 15.7 / 14.7;
    case 2:
        return lambda * 6.4 / 14.7;
    case 3:
        return lambda * 9 / 14.7;
    case 4:
        return lambda / 14.7;
    default:
        return lambda;
    }
}

int temperature(double raw, int exhaustUnit) {
    if (!(raw >= 1)) return 0;
    if (exhaustUnit != -1) return CInt(raw * 4).value_or(0);
    return static_cast<int>(Fix(raw * 36 / 5 + 32));
}

} // namespace kvo::channels
