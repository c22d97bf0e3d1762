#include "calc/engine.h"

#include "calc/conversions.h"

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <string>

namespace kvo::calc {
namespace {

CalcForm formOf(const char* title, const char* text1, const char* text2, const char* text3) {
    CalcForm form = openedCalcForm(*engineSum(title));
    form.Text[1] = text1;
    form.Text[2] = text2;
    form.Text[3] = text3;
    return form;
}

// The result behind "Calculate" with "old" in the label before.
std::string resultOf(const char* title, const char* text1, const char* text2, const char* text3) {
    CalcForm form = formOf(title, text1, text2, text3);
    form.Label5 = "old";
    Command1_Click(form);
    EXPECT_EQ(form.MetricShown, 0);
    return form.Label5;
}

const std::string huge(400, '9');

TEST(EngineSums, AreEightWithTheirMenus) {
    std::string menus;
    for (const EngineSum& sum : engineSums()) {
        menus += std::string(sum.menu) + " ";
        EXPECT_EQ(engineSum(sum.title), &sum);
        EXPECT_FALSE(sum.rows[2].caption.empty()) << "the last row is always there";
    }
    EXPECT_EQ(menus, "Compression Displacement Mnu_PistonSpeen Speed MnuCFM MnuMileEt MnuMileMph "
                     "Mnu_TDiameter ");
    EXPECT_EQ(engineSum("Calc"), nullptr);
}

TEST(EngineSums, AHiddenRowHasNeitherCaptionNorUnit) {
    for (const EngineSum& sum : engineSums())
        for (const CalcRow& row : sum.rows) EXPECT_EQ(row.caption.empty(), row.unit.empty());
    EXPECT_TRUE(engineSum("Tyre Diameter Calc")->rows[1].caption.empty());
    EXPECT_TRUE(engineSum("Piston Speed Calc")->rows[0].caption.empty());
    EXPECT_EQ(engineSum("Piston Speed Calc")->rows[1].caption, "Stroke");
}

// Captions as the user reads them, not as the table of the program has them.
TEST(EngineSums, HaveTheirCaptions) {
    const struct {
        const char* title;
        std::array<const char*, 6> rows; // caption and unit of each
        const char* result;
    } forms[] = {
        {"Compression Ratio Calc", {"Bore", "In", "Stroke", "In", "Volume @ TDC", "cc"},
            "Compression"},
        {"Engine Displacement Calc", {"Cylinders", "4/6/8", "Bore", "In", "Stroke", "In"},
            "Displacement"},
        {"Piston Speed Calc", {"", "", "Stroke", "In", "Rpm", "Rpm"}, "Ave. Piston Speed"},
        {"RPM to MPH Calc", {"Tyre Diameter", "In", "Gear Ratio", ":1", "RPM", "Rpm"}, "Speed"},
        {"Cylinder Head CFM to HP", {"", "", "Head Cfm @ 10 In", "Cfm", "Cylinders", "4/6/8"},
            "Horsepower"},
        {"1/4 Mile ET to HP", {"", "", "Car Weight", "Lbs", "1/4 Mile ET", "Et"}, "Horsepower"},
        {"1/4 Mile Speed to HP", {"", "", "Car Weight", "Lbs", "1/4 Mile Speed", "Mph"},
            "Horsepower"},
        {"Tyre Diameter Calc", {"", "", "", "", "Tyre Circumference", "In"}, "Diameter"},
    };
    ASSERT_EQ(engineSums().size(), std::size(forms));
    for (std::size_t i = 0; i < std::size(forms); ++i) {
        const EngineSum& sum = engineSums()[i];
        EXPECT_EQ(sum.title, forms[i].title);
        EXPECT_EQ(sum.result, forms[i].result);
        for (std::size_t row = 0; row < 3; ++row) {
            EXPECT_EQ(sum.rows[row].caption, forms[i].rows[2 * row]) << sum.title;
            EXPECT_EQ(sum.rows[row].unit, forms[i].rows[2 * row + 1]) << sum.title;
        }
    }
}

TEST(EngineSums, GiveTheirResults) {
    EXPECT_EQ(resultOf("Compression Ratio Calc", "4", "3.5", "60"), "13.0 :1");
    EXPECT_EQ(resultOf("Engine Displacement Calc", "4", "4", "3.48"), "174.92 Cu.In");
    EXPECT_EQ(resultOf("Engine Displacement Calc", "6", "4", "3.48"), "262.39 Cu.In");
    EXPECT_EQ(resultOf("Engine Displacement Calc", "8", "4", "3.48"), "349.85 Cu.In");
    EXPECT_EQ(resultOf("Piston Speed Calc", "", "3.48", "7000"), "67.67 Ft/sec");
    EXPECT_EQ(resultOf("RPM to MPH Calc", "28", "4.1", "6000"), "121.95 Mph");
    EXPECT_EQ(resultOf("Cylinder Head CFM to HP", "", "250", "8"), "860.0 Hp");
    EXPECT_EQ(resultOf("1/4 Mile ET to HP", "", "3000", "10.5"), "512.2 Hp");
    EXPECT_EQ(resultOf("1/4 Mile Speed to HP", "", "3000", "130"), "514.4 Hp");
    EXPECT_EQ(resultOf("Tyre Diameter Calc", "", "", "88"), "28.01 In");
}

TEST(EngineSums, AFailureKeepsTheResult) {
    EXPECT_EQ(resultOf("Compression Ratio Calc", "4", "3.5", "0"), "old");
    EXPECT_EQ(resultOf("Engine Displacement Calc", "5", "4", "3"), "old");
    EXPECT_EQ(resultOf("Piston Speed Calc", "", "x", "7000"), "old");
    EXPECT_EQ(resultOf("RPM to MPH Calc", "28", "0", "6000"), "old");
    EXPECT_EQ(resultOf("RPM to MPH Calc", "", "", ""), "old");
    EXPECT_EQ(resultOf("1/4 Mile ET to HP", "", "3000", "0"), "old");
    EXPECT_EQ(resultOf("1/4 Mile ET to HP", "", "3000", "x"), "old");
    EXPECT_EQ(resultOf("1/4 Mile ET to HP", "", "3000 lbs", "10.5"), "old");
    EXPECT_EQ(resultOf("1/4 Mile Speed to HP", "", "3000 lbs", "130"), "old");
    EXPECT_EQ(resultOf("Tyre Diameter Calc", "", "", "88x"), "old");
    EXPECT_EQ(resultOf("Tyre Diameter Calc", "", "", ""), "old");
}

TEST(EngineSums, ASpeedThatIsNoNumberGivesNoPower) {
    EXPECT_EQ(resultOf("1/4 Mile Speed to HP", "", "3000", "130 mph"), "0.0 Hp");
    EXPECT_EQ(resultOf("1/4 Mile Speed to HP", "", "3000", huge.c_str()), "0.0 Hp");
}

TEST(EngineSums, AnOverflowKeepsTheResultButForTheSweptVolume) {
    const char* large = huge.c_str();
    EXPECT_EQ(resultOf("Compression Ratio Calc", large, "3.5", "60"), "1.0 :1");
    EXPECT_EQ(resultOf("Engine Displacement Calc", "8", large, "3"), "old");
    EXPECT_EQ(resultOf("Piston Speed Calc", "", "3", large), "old");
    EXPECT_EQ(resultOf("RPM to MPH Calc", "28", large, "6000"), "old");
    EXPECT_EQ(resultOf("Cylinder Head CFM to HP", "", large, "8"), "old");
    EXPECT_EQ(resultOf("1/4 Mile ET to HP", "", "3000", large), "old");
    EXPECT_EQ(resultOf("1/4 Mile Speed to HP", "", large, "130"), "old");
    EXPECT_EQ(resultOf("Tyre Diameter Calc", "", "", large), "old");
}

TEST(EngineSums, CylindersAreToldByTheirText) {
    EXPECT_EQ(resultOf("Engine Displacement Calc", "4.0", "4", "3.48"), "0.00 Cu.In");
    EXPECT_EQ(resultOf("Engine Displacement Calc", "6.0", "4", "3.48"), "0.00 Cu.In");
    EXPECT_EQ(resultOf("Engine Displacement Calc", " 8", "4", "3.48"), "0.00 Cu.In");
}

TEST(EngineSums, ALenientInputMayHaveATail) {
    EXPECT_EQ(resultOf("Piston Speed Calc", "", "3.48", "7000 rpm"), "67.67 Ft/sec");
    EXPECT_EQ(resultOf("Compression Ratio Calc", "4 in", "3.5 in", "60 cc"), "13.0 :1");
}

TEST(Conversion, RoundsToTwoDecimals) {
    const struct {
        const char* routine;
        double ofHundred;
    } table[] = {{"InToCm", 254}, {"CmToIn", 39.37}, {"LbsToKg", 45.36}, {"KgToLbs", 220.46},
        {"MphToKph", 160.93}, {"KphToMph", 62.14}, {"CuInToCc", 1638.72}, {"CcToCuIn", 6.1},
        {"CfmToLpm", 283.17}, {"LpmToCfm", 35.31}};
    for (const auto& [routine, ofHundred] : table)
        EXPECT_EQ(converted(*conversionNamed(routine), 100), ofHundred) << routine;
    // A way back is no exact inverse.
    EXPECT_EQ(converted(Conversion::KgToLbs, 1e6), 2204585.5);
    EXPECT_EQ(converted(Conversion::CmToIn, 1e6), 393700.7);
    EXPECT_EQ(converted(Conversion::CcToCuIn, 1e6), 61020);
    EXPECT_EQ(converted(Conversion::KphToMph, 1e6), 621388.1);
    EXPECT_FALSE(conversionNamed("InToFt"));
    EXPECT_FALSE(converted(Conversion::InToCm, 1.7e308));
}

TEST(ToggleMetric, TurnsTheRowsThatHaveAnotherUnit) {
    CalcForm form = formOf("RPM to MPH Calc", "28", "4.1", "6000");
    ToggleMetric_Click(form);
    EXPECT_EQ(form.MetricShown, -1);
    EXPECT_EQ(form.unit[1] + form.unit[2] + form.unit[3], "Cm:1Rpm");
    EXPECT_EQ(form.Text[1], "71.12");
    EXPECT_EQ(form.Text[2], "4.1");
    EXPECT_EQ(form.Text[3], "6000");
    EXPECT_EQ(form.Label5, "");
    ToggleMetric_Click(form);
    EXPECT_EQ(form.MetricShown, 0);
    EXPECT_EQ(form.unit[1], "In");
    EXPECT_EQ(form.Text[1], "28");
}

TEST(ToggleMetric, KnowsEveryUnit) {
    const struct {
        const char* title;
        int row;
        const char* metric;
    } rows[] = {{"Tyre Diameter Calc", 3, "Cm"}, {"1/4 Mile ET to HP", 2, "Kg"},
        {"1/4 Mile Speed to HP", 3, "Kph"}, {"Cylinder Head CFM to HP", 2, "Lpm"}};
    for (const auto& [title, row, metric] : rows) {
        CalcForm form = formOf(title, "100", "100", "100");
        const std::string before = form.unit[row];
        ToggleMetric_Click(form);
        EXPECT_EQ(form.unit[row], metric);
        EXPECT_EQ(form.MetricShown, -1) << title;
        ToggleMetric_Click(form);
        EXPECT_EQ(form.unit[row], before);
        EXPECT_EQ(form.MetricShown, 0) << title;
    }
}

TEST(ToggleMetric, KeepsATextWithoutAValue) {
    CalcForm form = formOf("Tyre Diameter Calc", "", "", "abc");
    ToggleMetric_Click(form);
    EXPECT_EQ(form.Text[3], "abc");
    EXPECT_EQ(form.unit[3], "Cm");
    form.Text[3] = "12 tail";
    ToggleMetric_Click(form);
    EXPECT_EQ(form.Text[3], "4.72");
}

TEST(ToggleMetric, AnOverflowShowsTheConversionBefore) {
    CalcForm form = formOf("Compression Ratio Calc", "4", huge.c_str(), "60");
    ToggleMetric_Click(form);
    EXPECT_EQ(form.Text[1], "10.16");
    EXPECT_EQ(form.Text[2], "10.16");
}

TEST(ToggleMetric, TurnsTheResultOfFourSums) {
    CalcForm speed = formOf("RPM to MPH Calc", "28", "4.1", "6000");
    Command1_Click(speed);
    ToggleMetric_Click(speed);
    EXPECT_EQ(speed.Label5, " 196.25 Kph");
    ToggleMetric_Click(speed);
    EXPECT_EQ(speed.Label5, " 121.95 Mph");

    CalcForm piston = formOf("Piston Speed Calc", "", "3.48", "7000");
    Command1_Click(piston);
    ToggleMetric_Click(piston);
    EXPECT_EQ(piston.Label5, "20.63 M/sec");
    ToggleMetric_Click(piston);
    EXPECT_EQ(piston.Label5, "67.68 Ft/sec");

    CalcForm engine = formOf("Engine Displacement Calc", "8", "4", "3.48");
    Command1_Click(engine);
    ToggleMetric_Click(engine);
    EXPECT_EQ(engine.Label5, " 5733.06 Cc");
    ToggleMetric_Click(engine);
    EXPECT_EQ(engine.Label5, " 349.83 Cu.In");

    CalcForm power = formOf("1/4 Mile Speed to HP", "", "3000", "130");
    Command1_Click(power);
    ToggleMetric_Click(power);
    EXPECT_EQ(power.Label5, "514.4 Hp");
}

TEST(ToggleMetric, WritesLargeNumbersWithoutAnExponent) {
    CalcForm form = formOf("Tyre Diameter Calc", "", "", "1000000000000000");
    EXPECT_TRUE(Command1_Click(form));
    EXPECT_EQ(form.Label5, "318309886183791.00 In");
    form.Label5 = "2000000000000000.00 In";
    ToggleMetric_Click(form);
    EXPECT_EQ(form.Text[3], "2540000000000000");
    EXPECT_EQ(form.Label5, " 5080000000000000 Cm");
    ToggleMetric_Click(form);
    EXPECT_EQ(form.Text[3], "999999778000000");
    EXPECT_EQ(form.Label5, " 1999999556000000 In");
    // What is below 1 has no digit in front of its point in a result, and one in a box.
    CalcForm small = formOf("Tyre Diameter Calc", "", "", ".3");
    small.Label5 = "0.10 In";
    ToggleMetric_Click(small);
    EXPECT_EQ(small.Text[3], "0.76");
    EXPECT_EQ(small.Label5, " .25 Cm");
}

TEST(ToggleMetric, LeavesAResultOfZero) {
    CalcForm form = formOf("Engine Displacement Calc", "4.0", "4", "3.48");
    Command1_Click(form);
    ToggleMetric_Click(form);
    EXPECT_EQ(form.Label5, "0.00 Cu.In");
}

TEST(Calculate, InMetricSumsInInchesAndTurnsBack) {
    CalcForm form = formOf("Tyre Diameter Calc", "", "", "223.52");
    form.unit[3] = "Cm";
    form.MetricShown = -1;
    Command1_Click(form);
    EXPECT_EQ(form.Label5, " 71.15 Cm");
    EXPECT_EQ(form.Text[3], "223.52");
    EXPECT_EQ(form.unit[3], "Cm");
    EXPECT_EQ(form.MetricShown, -1);
    form.Text[3] = "12.3";
    Command1_Click(form);
    EXPECT_EQ(form.Text[3], "12.29") << "there and back, each step rounded";
}

TEST(Calculate, InMetricTurnsBackWhereThereIsNoSum) {
    CalcForm form = formOf("Engine Displacement Calc", "5", "4", "3");
    form.Label5 = "";
    ToggleMetric_Click(form);
    Command1_Click(form);
    EXPECT_EQ(form.MetricShown, -1);
    EXPECT_EQ(form.unit[2], "Cm");
    EXPECT_EQ(form.Text[2], "10.16");
    EXPECT_EQ(form.Label5, "");
}

// The result of the sum before goes to inches and back with the boxes, each step rounded.
TEST(Calculate, InMetricTurnsTheOldResultToo) {
    CalcForm form = formOf("Engine Displacement Calc", "8", "4", "3");
    EXPECT_TRUE(Command1_Click(form));
    EXPECT_EQ(form.Label5, "301.59 Cu.In");
    ToggleMetric_Click(form);
    EXPECT_EQ(form.Label5, " 4942.22 Cc");
    form.Text[1] = "5";
    EXPECT_FALSE(Command1_Click(form));
    EXPECT_EQ(form.Label5, " 4941.89 Cc");
    EXPECT_EQ(form.Text[1] + " " + form.Text[2] + " " + form.Text[3], "5 10.16 7.62");
    EXPECT_EQ(form.unit[2], "Cm");
    EXPECT_EQ(form.MetricShown, -1);
}

} // namespace
} // namespace kvo::calc
