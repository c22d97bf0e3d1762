#pragma once
// The table of a mapped analog input: 256 readings made from ten typed ones, and the curve of them
// that the editor draws.
#include "core/basic/from_one.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kvo::setup {

// A reading for each count, 0 to 255.
using AnalogTable = std::array<double, 256>;

// The texts of Text9: the readings at 0.5 to 5.0 volts.
inline constexpr int tablePoints = 10;
using PointTexts = core::FromOne<std::string, tablePoints>;

// Count of a point, 1 to 10: its voltage on the scale of 5 volts over 255 counts.
int tableEntry(int point);
// "0.5 v =" to "5.0 v ="
std::string Label32(int point);

// Fills the entries 1 to 255 from the ten texts, read leniently; entry 0 stays as it is. Gives 0,
// or the first point whose stretch no double can hold: the table is then as it was.
[[nodiscard]] int buildAnalogTable(AnalogTable& table, const PointTexts& Text9);

// A line across the curve with its number.
struct CurveMark {
    double value = 0;
    std::string text;
};

// What is drawn of a table. `low` to `high` is the height of the drawing, and the marks lie in it.
struct AnalogCurve {
    AnalogTable values{};
    std::array<bool, 256> stored{}; // whether a download can keep the reading of that count
    double low = 0;
    double high = 0;
    std::vector<CurveMark> marks;
    std::string remark; // what is wrong with the table, for the user; empty if nothing is
};

// The curve of a table whose channel has that scale, units a count. A reading that is no finite
// number is not stored and no part of the height. Nothing where the height has no finite number.
std::optional<AnalogCurve> analogCurve(const AnalogTable& table, float scale);

} // namespace kvo::setup
