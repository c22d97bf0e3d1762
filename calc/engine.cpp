#include "calc/engine.h"

#include "calc/conversions.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/basic/plain_number.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kvo::calc {

namespace {

using core::finite;
using core::keepOnFailure;
using core::strictNumber;
using core::Val;

constexpr double pi = 3.14159265358979; // Required: seven units in the last place below pi.
constexpr std::int16_t metricShown = -1;

struct ConversionRow {
    std::string_view name;
    double (*product)(double) = nullptr;
};

constexpr std::array<ConversionRow, 10> conversions{{
    {"InToCm", [](double x) { return x * inToCm; }},
    {"CmToIn", [](double x) { return x * cmToIn; }},
    {"LbsToKg", [](double x) { return x * lbsToKg; }},
    {"KgToLbs", [](double x) { return x * kgToLbs; }},
    {"MphToKph", [](double x) { return x * mphToKph; }},
    {"KphToMph", [](double x) { return x * kphToMph; }},
    {"CuInToCc", [](double x) { return x * cuInToCc; }},
    {"CcToCuIn", [](double x) { return x * ccToCuIn; }},
    {"CfmToLpm", [](double x) { return x * 0.028317 * 100; }},
    {"LpmToCfm", [](double x) { return x / 100 * 35.314475; }},
}};

// What the switch makes of a unit caption.
struct UnitTurn {
    std::string_view from;
    std::string_view to;
    Conversion conversion;
    std::int16_t MetricShown;
};

constexpr std::array<UnitTurn, 8> unitTurns{{
    {"In", "Cm", Conversion::InToCm, metricShown},
    {"Lbs", "Kg", Conversion::LbsToKg, metricShown},
    {"Mph", "Kph", Conversion::MphToKph, metricShown},
    {"Cfm", "Lpm", Conversion::CfmToLpm, metricShown},
    {"Cm", "In", Conversion::CmToIn, 0},
    {"Kg", "Lbs", Conversion::KgToLbs, 0},
    {"Kph", "Mph", Conversion::KphToMph, 0},
    {"Lpm", "Cfm", Conversion::LpmToCfm, 0},
}};

// A division by 0 fails, and so does one by what overflowed.
std::optional<double> quotient(double dividend, double divisor) {
    if (!finite(divisor)) return {};
    return finite(dividend / divisor);
}

// The sums, in inches, pounds and miles an hour. Where one takes a strict number, a text that is
// none fails.

std::optional<double> compression(const CalcTexts& texts) {
    const double radius = Val(texts[1]) / 2;
    const double chamber = Val(texts[3]);
    double swept = 0;
    keepOnFailure(swept, finite(radius * radius * pi * Val(texts[2]) * cuInToCc));
    return quotient(swept + chamber, chamber);
}

std::optional<double> displacement(const CalcTexts& texts) {
    const double cylinders = Val(texts[1]);
    constexpr std::array<double, 3> known{4, 6, 8};
    if (std::find(known.begin(), known.end(), cylinders) == known.end()) return {};
    // Required: by the text, so that another way to write the number leaves the factor 0.
    float factor = 0;
    if (texts[1] == "4") factor = 3.1416F;
    if (texts[1] == "6") factor = 4.7124F;
    if (texts[1] == "8") factor = 6.2832F;
    return finite(Val(texts[2]) * Val(texts[2]) * Val(texts[3]) * static_cast<double>(factor));
}

std::optional<double> pistonSpeed(const CalcTexts& texts) {
    const auto stroke = strictNumber(texts[2]);
    if (!stroke) return {};
    return finite(*stroke * 2 * Val(texts[3]) / 12 / 60);
}

std::optional<double> roadSpeed(const CalcTexts& texts) {
    return quotient(Val(texts[1]) * Val(texts[3]), Val(texts[2]) * 336);
}

std::optional<double> powerByHeadFlow(const CalcTexts& texts) {
    return finite(Val(texts[2]) * 0.43 * Val(texts[3]));
}

std::optional<double> powerByTime(const CalcTexts& texts) {
    const auto weight = strictNumber(texts[2]);
    const auto seconds = strictNumber(texts[3]);
    if (!weight || !seconds) return {};
    const double e = *seconds / 5.825;
    return quotient(*weight, e * e * e);
}

std::optional<double> powerBySpeed(const CalcTexts& texts) {
    double s = 0; // Required: a speed that is no number gives no power, and not no answer.
    if (const auto speed = strictNumber(texts[3])) s = *speed / 234;
    const auto weight = strictNumber(texts[2]);
    if (!weight) return {};
    return finite(s * s * s * *weight);
}

std::optional<double> tyreDiameter(const CalcTexts& texts) {
    const auto circumference = strictNumber(texts[3]);
    if (!circumference) return {};
    return finite(*circumference / pi);
}

constexpr std::string_view feetASecond = "####0.00 Ft/\\s\\ec";
constexpr std::string_view metresASecond = "###0.00 M/\\s\\ec";
constexpr CalcRow noRow{};

// clang-format off
constexpr std::array<EngineSum, 8> sums{{
    // menu, title, {caption, unit} of three rows, result, sum, picture, {turn back, turn to metric}
    {"Compression", "Compression Ratio Calc",
        {{{"Bore", "In"}, {"Stroke", "In"}, {"Volume @ TDC", "cc"}}},
        "Compression", compression, "##0.0 :1", {}, {}},
    {"Displacement", "Engine Displacement Calc",
        {{{"Cylinders", "4/6/8"}, {"Bore", "In"}, {"Stroke", "In"}}},
        "Displacement", displacement, "##0.00 Cu.In",
        {Conversion::CcToCuIn, " Cu.In"}, {Conversion::CuInToCc, " Cc"}},
    {"Mnu_PistonSpeen", "Piston Speed Calc",
        {{noRow, {"Stroke", "In"}, {"Rpm", "Rpm"}}},
        "Ave. Piston Speed", pistonSpeed, feetASecond,
        {{}, {}, metresToFeet, feetASecond}, {{}, {}, feetToMetres, metresASecond}},
    {"Speed", "RPM to MPH Calc",
        {{{"Tyre Diameter", "In"}, {"Gear Ratio", ":1"}, {"RPM", "Rpm"}}},
        "Speed", roadSpeed, "##0.00 Mph",
        {Conversion::KphToMph, " Mph"}, {Conversion::MphToKph, " Kph"}},
    {"MnuCFM", "Cylinder Head CFM to HP",
        {{noRow, {"Head Cfm @ 10 In", "Cfm"}, {"Cylinders", "4/6/8"}}},
        "Horsepower", powerByHeadFlow, "###0.0 Hp", {}, {}},
    {"MnuMileEt", "1/4 Mile ET to HP",
        {{noRow, {"Car Weight", "Lbs"}, {"1/4 Mile ET", "Et"}}},
        "Horsepower", powerByTime, "###0.0 Hp", {}, {}},
    {"MnuMileMph", "1/4 Mile Speed to HP",
        {{noRow, {"Car Weight", "Lbs"}, {"1/4 Mile Speed", "Mph"}}},
        "Horsepower", powerBySpeed, "###0.0 Hp", {}, {}},
    {"Mnu_TDiameter", "Tyre Diameter Calc",
        {{noRow, noRow, {"Tyre Circumference", "In"}}},
        "Diameter", tyreDiameter, "##0.00 In",
        {Conversion::CmToIn, " In"}, {Conversion::InToCm, " Cm"}},
}};
// clang-format on

// The slot keeps the result before this one where the product is too large.
double convert(CalcForm& form, Conversion conversion, double x) {
    keepOnFailure(form.ConvertedValue, converted(conversion, x));
    return form.ConvertedValue;
}

// A blank in front where a minus would stand. A large number has no exponent, since the next switch
// would take the digits in front of it for the whole.
std::string resultNumber(double value) {
    std::string text = core::Str(value);
    if (text.find('E') == std::string::npos) return text;
    return (value < 0 ? "" : " ") + core::plainNumber(value);
}

void turnRow(CalcForm& form, int row) {
    for (const UnitTurn& turn : unitTurns) {
        if (form.unit[row] != turn.from) continue;
        form.unit[row] = turn.to;
        const double value = Val(form.Text[row]);
        if (value != 0) form.Text[row] = core::plainNumber(convert(form, turn.conversion, value));
        form.MetricShown = turn.MetricShown;
        return;
    }
}

void turnResult(CalcForm& form) {
    const ResultTurn& turn =
        form.MetricShown == metricShown ? form.sum->metric : form.sum->imperial;
    const double value = Val(form.Label5);
    if (value == 0) return;
    if (turn.conversion) {
        form.Label5 = resultNumber(convert(form, *turn.conversion, value)) + std::string(turn.unit);
    } else if (!turn.picture.empty()) {
        if (const auto product = finite(value * turn.factor))
            form.Label5 = core::Format(*product, turn.picture);
    }
}

} // namespace

std::optional<Conversion> conversionNamed(std::string_view name) {
    for (std::size_t i = 0; i < conversions.size(); ++i)
        if (conversions[i].name == name) return static_cast<Conversion>(i);
    return {};
}

std::optional<double> converted(Conversion conversion, double x) {
    const auto product = finite(conversions[static_cast<std::size_t>(conversion)].product(x));
    if (!product) return {};
    return Val(core::Format(*product, "###0.00"));
}

std::span<const EngineSum> engineSums() {
    return sums;
}

const EngineSum* engineSum(std::string_view title) {
    for (const EngineSum& sum : sums)
        if (sum.title == title) return &sum;
    return nullptr;
}

CalcForm openedCalcForm(const EngineSum& sum) {
    CalcForm form;
    form.sum = &sum;
    for (int row = 1; row <= 3; ++row)
        form.unit[row] = sum.rows[static_cast<std::size_t>(row - 1)].unit;
    return form;
}

bool Command1_Click(CalcForm& form) {
    const bool turned = form.MetricShown == metricShown;
    if (turned) ToggleMetric_Click(form);
    const auto result = form.sum->sum(form.Text);
    if (result) form.Label5 = core::Format(*result, form.sum->picture);
    if (turned) ToggleMetric_Click(form);
    return result.has_value();
}

void ToggleMetric_Click(CalcForm& form) {
    for (int row = 1; row <= 3; ++row) turnRow(form, row);
    turnResult(form);
}

} // namespace kvo::calc
