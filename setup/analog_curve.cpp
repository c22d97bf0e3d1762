#include "setup/analog_curve.h"

#include "core/analog_tables.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace kvo::setup {

namespace {

using core::CStr;

constexpr double countsAPoint = 25.5;
// Required: every stretch is taken for 25 counts wide, although every second one is 26.
constexpr int countsAStretch = 25;

std::size_t entryOf(int count) {
    return static_cast<std::size_t>(count);
}

// The stretch that ends in a point: the point itself and the counts below it, down to the point in
// front of it. False where a reading is no finite number.
bool fillStretch(AnalogTable& table, int point, double value, double before) {
    const double slope = (value - before) / countsAStretch;
    const int end = tableEntry(point);
    const int counts = point % 2 != 0 ? countsAStretch - 1 : countsAStretch;
    table[entryOf(end)] = value;
    for (int j = 1; j <= counts; ++j) {
        const double reading = value - slope * j;
        if (!std::isfinite(reading)) return false;
        table[entryOf(end - j)] = reading;
    }
    return true;
}

// Height between two marks: 1, 2 or 5 and zeros, so that about five fit.
double markStep(double height) {
    constexpr double marksWanted = 5;
    const double least = height / marksWanted;
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double nice : {1.0, 2.0, 5.0})
        if (least <= nice * power) return nice * power;
    return 10 * power;
}

struct Height {
    double low = 0;
    double high = 0;
};

// From the lowest to the highest finite reading; a flat table gets room above and below it.
std::optional<Height> heightOf(const AnalogTable& table) {
    std::optional<Height> height;
    for (const double reading : table) {
        if (!std::isfinite(reading)) continue;
        if (!height) height = Height{reading, reading};
        height->low = std::min(height->low, reading);
        height->high = std::max(height->high, reading);
    }
    if (!height) return {};
    constexpr double flat = 1e-9; // of the largest reading
    constexpr double nothing = 1e-290;
    const double size = std::max(std::abs(height->low), std::abs(height->high));
    if (height->high - height->low <= std::max(size * flat, nothing)) {
        const double room = size > nothing ? size / 2 : 1;
        height->low -= room;
        height->high += room;
    }
    if (!std::isfinite(height->high - height->low)) return {};
    return height;
}

// Marks from the first at or below the lowest reading to the first at or above the highest.
void setHeight(AnalogCurve& curve, const Height& height) {
    const double step = markStep(height.high - height.low);
    const double first = std::floor(height.low / step);
    const double last = std::ceil(height.high / step);
    curve.low = first * step;
    curve.high = last * step;
    for (double n = first; n <= last; ++n) curve.marks.push_back({n * step, CStr(n * step)});
}

std::string remarkOn(const AnalogCurve& curve, float scale) {
    const auto lost = std::count(curve.stored.begin(), curve.stored.end(), false);
    if (lost == 0) return {};
    const auto first = std::find(curve.stored.begin(), curve.stored.end(), false);
    const auto last = std::find(curve.stored.rbegin(), curve.stored.rend(), false);
    const int from = static_cast<int>(first - curve.stored.begin());
    const int to = static_cast<int>(curve.stored.rend() - last) - 1;
    const float end = scale * 255;
    const std::string limits = CStr(std::min(0.0F, end)) + " and " + CStr(std::max(0.0F, end));
    if (lost == 1)
        return "Count " + CStr(from) + " does not read between " + limits +
               ", the range of the input: a download does not convert it.";
    const bool all = lost == to - from + 1;
    return (all ? "Counts " : CStr(static_cast<int>(lost)) + " counts from ") + CStr(from) +
           " to " + CStr(to) + " do not read between " + limits +
           ", the range of the input: a download does not convert them.";
}

} // namespace

int tableEntry(int point) {
    return static_cast<int>(core::Fix(point * countsAPoint));
}

std::string Label32(int point) {
    return core::Format(point * 0.5, "0.0") + " v =";
}

int buildAnalogTable(AnalogTable& table, const PointTexts& Text9) {
    AnalogTable built = table;
    double before = 0;
    for (int point = 1; point <= tablePoints; ++point) {
        const double value = core::Val(Text9[point]) + 0.0; // "-0" is no other number than "0"
        if (!fillStretch(built, point, value, before)) return point;
        before = value;
    }
    table = built;
    return 0;
}

std::optional<AnalogCurve> analogCurve(const AnalogTable& table, float scale) {
    const auto height = heightOf(table);
    if (!height) return {};
    AnalogCurve curve;
    setHeight(curve, *height);
    if (!std::isfinite(curve.high - curve.low)) return {};
    curve.values = table;
    for (int count = 0; count <= 255; ++count)
        curve.stored[entryOf(count)] =
            core::tableByte(table, scale, static_cast<std::uint8_t>(count)).has_value();
    curve.remark = remarkOn(curve, scale);
    return curve;
}

} // namespace kvo::setup
