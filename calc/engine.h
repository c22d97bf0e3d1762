#pragma once
// The calculators: eight sums that one form serves, with a switch between inch-pound and metric
// units. The form keeps a CalcForm, copies its boxes into it before a routine and shows it after.
#include "core/basic/from_one.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kvo::calc {

// The ten conversions, in the order of their table.
enum class Conversion {
    InToCm,
    CmToIn,
    LbsToKg,
    KgToLbs,
    MphToKph,
    KphToMph,
    CuInToCc,
    CcToCuIn,
    CfmToLpm,
    LpmToCfm
};
// By the name of the routine; nothing for any other.
std::optional<Conversion> conversionNamed(std::string_view name);
// Rounded to two decimals; nothing where the product is too large.
std::optional<double> converted(Conversion conversion, double x);

// One of the three inputs. Without a caption its row is hidden.
struct CalcRow {
    std::string_view caption; // Label1 to Label3
    std::string_view unit;    // Label6 to Label8
};

using CalcTexts = core::FromOne<std::string, 3>; // Text1 to Text3

// How the result turns into another system of units: by a conversion and a unit behind it, or by a
// factor and a picture. Neither: it stays.
struct ResultTurn {
    std::optional<Conversion> conversion;
    std::string_view unit;
    double factor = 0;
    std::string_view picture = {};
};

struct EngineSum {
    std::string_view menu; // event of the main window's menu
    std::string_view title;
    std::array<CalcRow, 3> rows;
    std::string_view result; // Label4
    // The result; nothing where it fails or has nothing to sum: Label5 then keeps its text.
    std::optional<double> (*sum)(const CalcTexts& texts) = nullptr;
    std::string_view picture; // of Label5
    ResultTurn imperial;
    ResultTurn metric;
};
// The eight; the menus of the main window name them by their place.
std::span<const EngineSum> engineSums();
// By title; nullptr for any other.
const EngineSum* engineSum(std::string_view title);

struct CalcForm {
    const EngineSum* sum = nullptr;
    CalcTexts Text;
    core::FromOne<std::string, 3> unit; // Label6 to Label8
    std::string Label5;                 // the result
    std::int16_t MetricShown = 0;       // -1 while the units show metric
    double ConvertedValue = 0;          // result of the last conversion that did not fail
};
// The form as a menu command opens it.
CalcForm openedCalcForm(const EngineSum& sum);

// "Calculate": always in inch-pound units, turned back to metric where those are shown. False where
// the boxes have no result: Label5 is then that of the sum before.
bool Command1_Click(CalcForm& form);
// "Toggle Metric / Imp.": units and values of the rows that have another unit, and the result.
void ToggleMetric_Click(CalcForm& form);

} // namespace kvo::calc
