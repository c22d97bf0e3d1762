#include "core/basic/format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace kvo::core {
namespace {

TEST(NumberPicture, CutsOptionalPlacesThatAreZero) {
    EXPECT_EQ(Format(1.5, "0.0#"), "1.5");
    EXPECT_EQ(Format(1.25, "0.0#"), "1.25");
    EXPECT_EQ(Format(2.0, "0.0#"), "2.0");
    EXPECT_EQ(Format(1.5, "0.00"), "1.50");
}

TEST(NumberPicture, RoundsHalfAwayFromZeroOnTheDecimalForm) {
    EXPECT_EQ(Format(0.125, "0.00"), "0.13");
    EXPECT_EQ(Format(-0.125, "0.00"), "-0.13");
    EXPECT_EQ(Format(1.005, "##0.00"), "1.01"); // its 15 digits end in 5
    EXPECT_EQ(Format(9.999, "####0"), "10");
    EXPECT_EQ(Format(999.995, "##0.00"), "1000.00");
}

// What stands right beside the middle between two results, and what has more places or digits than
// whole numbers are asked for.
TEST(NumberPicture, RoundsByTheDecimalFormWhereverTheMiddleIsNear) {
    EXPECT_EQ(Format(0.0125, "0.000"), "0.013");
    EXPECT_EQ(Format(1.0005, "0.000"), "1.001"); // its 15 digits end in 5
    EXPECT_EQ(Format(2000000.5, "0"), "2000001");
    EXPECT_EQ(Format(999999.5, "0"), "1000000");
    EXPECT_EQ(Format(0.5, "0"), "1");
    EXPECT_EQ(Format(1.5 - 1e-15, "0"), "2"); // 15 digits say 1.5
    EXPECT_EQ(Format(1.5 - 1e-13, "0"), "1");
    EXPECT_EQ(Format(2.675 + 1e-13, "0.00"), "2.68");
    EXPECT_EQ(Format(2.675 - 1e-13, "0.00"), "2.67");
    // Every speed that a logger tells, in hundredths of a mile: exact, and every second one a tie.
    for (int raw = 0; raw <= 100000; ++raw) {
        const int hundredths = (raw + 1) / 2;
        std::string digits = std::to_string(hundredths);
        if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
        digits.insert(digits.size() - 2, ".");
        ASSERT_EQ(Format(raw / 200.0, "##0.00"), digits);
    }
}

// One place more than the whole numbers serve, whose last digits then say how to round.
TEST(NumberPicture, RoundsAlikeHoweverManyPlacesAreAsked) {
    unsigned seed = 12345;
    for (int i = 0; i < 100000; ++i) {
        seed = seed * 1664525U + 1013904223U;
        const double value = (static_cast<double>(seed) - 2e9) / (i % 3 == 0 ? 3e3 : 7.1e6);
        const std::string fine = Format(value, "0.000000");
        const std::string tail = fine.substr(fine.size() - 4);
        if (tail == "5000" || tail == "0000") continue; // rounded to there already
        const std::string coarse = Format(value, "0.00");
        const double difference = std::abs(std::stod(coarse)) - std::abs(std::stod(fine));
        ASSERT_EQ(tail >= "5000", difference > 0) << fine << " and " << coarse;
        ASSERT_LT(std::abs(difference), 0.0050001) << fine << " and " << coarse;
    }
}

TEST(NumberPicture, LosesTheMinusOfAZero) {
    EXPECT_EQ(Format(-0.004, "##0.00"), "0.00");
    EXPECT_EQ(Format(-0.0, "##0"), "0");
    EXPECT_EQ(Format(-0.005, "##0.00"), "-0.01");
}

TEST(NumberPicture, PrintsNoDigitForAnOptionalZero) {
    EXPECT_EQ(Format(0, "###"), "");
    EXPECT_EQ(Format(0.25, "###.00"), ".25");
    EXPECT_EQ(Format(5.8, "##00.00 in"), "05.80 in");
}

TEST(NumberPicture, TakesEverythingElseAsItStands) {
    EXPECT_EQ(Format(1.5, "##0.00 s\\ec"), "1.50 sec");
    EXPECT_EQ(Format(3, "##0.0 :1"), "3.0 :1");
    EXPECT_EQ(Format(-3, "about 0"), "-about 3");
    EXPECT_EQ(Format(3, "none"), "none");
    EXPECT_EQ(Format(3, ""), "");
}

TEST(NumberPicture, SurvivesExtremes) {
    EXPECT_EQ(Format(1e300, "##0").size(), 301U);
    EXPECT_EQ(Format(1e-300, "##0.00"), "0.00");
    EXPECT_EQ(Format(std::numeric_limits<double>::quiet_NaN(), "##0.0"), "");
    EXPECT_EQ(Format(std::numeric_limits<double>::infinity(), "##0.0"), "");
}

TEST(DatePicture, NamesAreEnglishAndNumbersAreFilled) {
    const platform::DateTime moment{2026, 11, 5, 4, 7, 9};
    EXPECT_EQ(Format(moment, "ddd dd mmm yyyy"), "Thu 05 Nov 2026");
    EXPECT_EQ(Format(moment, "dddd, d mmmm yyyy"), "Thursday, 5 November 2026");
    EXPECT_EQ(Format(moment, "dd-mm-yyyy"), "05-11-2026");
}

TEST(DatePicture, MonthLettersBehindHoursAreMinutes) {
    const platform::DateTime moment{2026, 11, 15, 14, 2, 9};
    EXPECT_EQ(Format(moment, "yymmddhh.mm\\d"), "26111514.02d");
    EXPECT_EQ(Format(moment, "h:nn:ss"), "14:02:09");
}

TEST(DatePicture, KnowsTheDayOfTheWeek) {
    EXPECT_EQ(Format(platform::DateTime{2024, 2, 29, 0, 0, 0}, "ddd"), "Thu");
    EXPECT_EQ(Format(platform::DateTime{2000, 1, 1, 0, 0, 0}, "ddd"), "Sat");
    EXPECT_EQ(Format(platform::DateTime{1999, 12, 31, 0, 0, 0}, "ddd"), "Fri");
}

TEST(AnalogFormat, LeavesTheSlotForOtherDecimals) {
    std::string slot = "as it was";
    AnalogFormat(3, slot);
    EXPECT_EQ(slot, "as it was");
    AnalogFormat(-1, slot);
    EXPECT_EQ(slot, "as it was");
    AnalogFormat(0, slot);
    EXPECT_EQ(slot, "####0");
    AnalogFormat(1, slot);
    EXPECT_EQ(slot, "####0.0");
    AnalogFormat(2, slot);
    EXPECT_EQ(slot, "####0.00");
}

TEST(ExhaustToDegrees, IsFourCelsiusACountOrFahrenheit) {
    EXPECT_EQ(ExhaustToDegrees(0, 0), 0);
    EXPECT_EQ(ExhaustToDegrees(0, -1), 0);
    EXPECT_EQ(ExhaustToDegrees(-3, -1), 0);
    EXPECT_EQ(ExhaustToDegrees(100, 0), 400);
    EXPECT_EQ(ExhaustToDegrees(100, 1), 400); // any flag but -1 is Celsius
    EXPECT_EQ(ExhaustToDegrees(1, -1), 39);   // 39.2
    EXPECT_EQ(ExhaustToDegrees(255, -1), 1868);
}

} // namespace
} // namespace kvo::core
