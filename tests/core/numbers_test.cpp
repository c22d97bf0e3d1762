#include "core/basic/numbers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace kvo::core {
namespace {

TEST(Val, TakesTheLongestLeadingNumber) {
    EXPECT_EQ(Val("  12.5 Western"), 12.5);
    EXPECT_EQ(Val("-.25"), -0.25);
    EXPECT_EQ(Val("5."), 5);
    EXPECT_EQ(Val("1.2.3"), 1.2);
    EXPECT_EQ(Val("+3"), 3);
}

TEST(Val, KnowsNoExponentAndNoRadix) {
    EXPECT_EQ(Val("1e5"), 1);
    EXPECT_EQ(Val("2D3"), 2);
    EXPECT_EQ(Val("&H10"), 0);
    EXPECT_EQ(Val("inf"), 0);
    EXPECT_EQ(Val("nan"), 0);
}

TEST(Val, IsZeroWithoutADigit) {
    for (const char* text : {"", "   ", ".", "-", "+.", "--5", "abc", "(5)"}) {
        EXPECT_EQ(Val(text), 0) << text;
    }
}

TEST(Val, SurvivesHundredsOfDigits) {
    EXPECT_EQ(Val(std::string(400, '9')), std::numeric_limits<double>::max());
    EXPECT_EQ(Val("-" + std::string(400, '9')), -std::numeric_limits<double>::max());
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(Val(std::string(400, '0') + "7"), 7);
}

TEST(StrictNumber, TakesBlanksAroundAndNothingElse) {
    EXPECT_EQ(strictNumber("  -12.5  "), -12.5);
    EXPECT_EQ(strictNumber("5."), 5.0);
    for (const char* text : {"", " ", "12a", "1 2", "1.2.3", "-", ".", "1,5", "1e5"}) {
        EXPECT_FALSE(strictNumber(text)) << text;
    }
}

TEST(StrictNumber, FailsWhereTheNumberIsTooLarge) {
    const std::string nines(400, '9');
    for (const std::string& text : {nines, "-" + nines, " +" + nines + ".5 "})
        EXPECT_FALSE(strictNumber(text)) << text;
    EXPECT_EQ(strictNumber("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(strictNumber(std::string(400, '0') + "7"), 7.0);
    EXPECT_EQ(strictNumber(std::string(308, '9')), 1e308);
}

TEST(Rounding, SendsTiesToTheEvenNeighbour) {
    EXPECT_EQ(CInt(0.5), 0);
    EXPECT_EQ(CInt(1.5), 2);
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CLng(2147483646.5), 2147483646);
    EXPECT_EQ(CByte(254.5), std::uint8_t{254});
}

TEST(Rounding, FailsOutsideItsWidth) {
    EXPECT_EQ(CInt(32767.49), std::int16_t{32767});
    EXPECT_FALSE(CInt(32767.5));
    EXPECT_EQ(CInt(-32768.5), std::numeric_limits<std::int16_t>::min());
    EXPECT_FALSE(CInt(-32769));
    EXPECT_FALSE(CLng(2147483647.5));
    EXPECT_FALSE(CByte(255.5));
    EXPECT_FALSE(CByte(-0.6));
    EXPECT_EQ(CByte(-0.5), std::uint8_t{0});
    EXPECT_FALSE(CInt(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(CLng(std::numeric_limits<double>::infinity()));
}

TEST(CSng, TakesTheNearestSingle) {
    EXPECT_EQ(CSng(0.1), 0.1F);
    EXPECT_EQ(CSng(3.4e38), 3.4e38F);
    EXPECT_FALSE(CSng(3.5e38));
    EXPECT_FALSE(CSng(-1e300));
    EXPECT_EQ(CSng(1e-60), 0.0F);
}

TEST(Finite, FailsWhereASumOverflowedOrWasDividedByZero) {
    const double zero = 0;
    EXPECT_EQ(finite(-1.5), -1.5);
    EXPECT_FALSE(finite(std::numeric_limits<double>::max() * 2));
    EXPECT_FALSE(finite(1 / zero));
    EXPECT_FALSE(finite(zero / zero));
}

TEST(Fix, CutsTowardZero) {
    EXPECT_EQ(Fix(2.7), 2);
    EXPECT_EQ(Fix(-2.7), -2);
    EXPECT_EQ(Fix(1e300), 1e300);
}

TEST(IntDiv, CutsTowardZeroAndFailsOnZero) {
    EXPECT_EQ(intDiv(7, 2), 3);
    EXPECT_EQ(intDiv(-7, 2), -3);
    EXPECT_FALSE(intDiv(7, 0));
    EXPECT_FALSE(intDiv(std::numeric_limits<std::int32_t>::min(), -1));
}

TEST(IntDiv, RoundsItsOperandsFirst) {
    EXPECT_EQ(intDivRounded(7.5, 1.5), 4);
    EXPECT_FALSE(intDivRounded(7, 0.5));
    EXPECT_FALSE(intDivRounded(3e9, 1));
}

TEST(KeepOnFailure, LeavesTheTargetOfAFailedStep) {
    std::int16_t field = 7;
    EXPECT_FALSE(keepOnFailure(field, CInt(40000)));
    EXPECT_EQ(field, 7);
    EXPECT_TRUE(keepOnFailure(field, CInt(40)));
    EXPECT_EQ(field, 40);
}

TEST(NumberToText, HasABlankWhereAMinusWouldStand) {
    EXPECT_EQ(Str(0), " 0");
    EXPECT_EQ(Str(-5), "-5");
    EXPECT_EQ(Str(0.5), " .5");
    EXPECT_EQ(Str(-0.5), "-.5");
    EXPECT_EQ(CStr(0.5), "0.5");
    EXPECT_EQ(Str(-0.0), " 0");
}

TEST(NumberToText, HasFifteenOrSevenDigits) {
    EXPECT_EQ(CStr(0.1 + 0.2), "0.3");
    EXPECT_EQ(CStr(1.1F), "1.1");
    EXPECT_EQ(CStr(1234567.8F), "1234568");
    EXPECT_EQ(CStr(1e15), "1E+15");
}

TEST(Texts, AreTrimmedAndPadded) {
    EXPECT_EQ(rightTrimmed("  ab  "), "  ab");
    EXPECT_EQ(rightTrimmed("   "), "");
    EXPECT_EQ(rightTrimmed("ab\t "), "ab\t");
    EXPECT_EQ(leftTrimmed("  ab  "), "ab  ");
    EXPECT_EQ(leftTrimmed("   "), "");
    EXPECT_EQ(leftTrimmed(""), "");
    EXPECT_EQ(leftTrimmed("\t ab"), "\t ab");
    EXPECT_EQ(padded("ab", 4), "ab  ");
    EXPECT_EQ(padded("abcdef", 4), "abcd");
    EXPECT_EQ(padded("", 0), "");
}

} // namespace
} // namespace kvo::core
