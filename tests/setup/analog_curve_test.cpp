#include "setup/analog_curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kvo::setup {
namespace {

constexpr double tooLarge = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// Readings that grow by `step` from point to point.
PointTexts growing(int step) {
    PointTexts texts;
    for (int point = 1; point <= tablePoints; ++point) texts[point] = std::to_string(point * step);
    return texts;
}

AnalogTable built(const PointTexts& texts, double first = 0) {
    AnalogTable table{};
    table[0] = first;
    EXPECT_EQ(buildAnalogTable(table, texts), 0);
    return table;
}

AnalogTable linear(double step) {
    AnalogTable table{};
    for (std::size_t count = 0; count < 256; ++count)
        table[count] = step * static_cast<double>(count);
    return table;
}

AnalogTable flat(double reading) {
    AnalogTable table{};
    table.fill(reading);
    return table;
}

TEST(AnalogTable, ItsPointsLieHalfAVoltApart) {
    const int counts[] = {25, 51, 76, 102, 127, 153, 178, 204, 229, 255};
    for (int point = 1; point <= tablePoints; ++point)
        EXPECT_EQ(tableEntry(point), counts[point - 1]) << point;
    EXPECT_EQ(Label32(1), "0.5 v =");
    EXPECT_EQ(Label32(10), "5.0 v =");
}

TEST(AnalogTable, EveryStretchIsTakenForTwentyFiveCounts) {
    const AnalogTable table = built(growing(25));
    EXPECT_EQ(table[25], 25);
    EXPECT_EQ(table[24], 24);
    EXPECT_EQ(table[1], 1);
    EXPECT_EQ(table[51], 50);
    EXPECT_EQ(table[50], 49);
    EXPECT_EQ(table[26], 25) << "the even stretch has one count more, and its step is the same";
    EXPECT_EQ(table[76], 75);
    EXPECT_EQ(table[52], 51);
    EXPECT_EQ(table[255], 250);
    EXPECT_EQ(table[230], 225);
    EXPECT_EQ(table[229], 225);
}

TEST(AnalogTable, TheReadingOfCountZeroStays) {
    EXPECT_EQ(built(growing(10), -3.5)[0], -3.5);
    EXPECT_EQ(built(growing(10), 7)[0], 7);
}

TEST(AnalogTable, TheTextsAreReadLeniently) {
    PointTexts texts = growing(10);
    texts[1] = " 5 psi";
    texts[2] = "";
    texts[3] = "x9";
    texts[4] = "-2.5";
    const AnalogTable table = built(texts);
    EXPECT_EQ(table[25], 5);
    EXPECT_EQ(table[51], 0);
    EXPECT_EQ(table[76], 0);
    EXPECT_EQ(table[102], -2.5);
    EXPECT_EQ(table[101], -2.4);
}

TEST(AnalogTable, AStretchThatNoDoubleHoldsLeavesTheTable) {
    const std::string huge(400, '9');
    PointTexts texts = growing(10);
    texts[4] = huge;
    texts[5] = "-" + huge;
    AnalogTable table = flat(3);
    EXPECT_EQ(buildAnalogTable(table, texts), 5);
    EXPECT_EQ(table, flat(3));
    texts[5] = huge;
    EXPECT_EQ(buildAnalogTable(table, texts), 0) << "one large reading is a reading";
    EXPECT_TRUE(std::isfinite(table[90]));
}

TEST(AnalogCurve, IsTheTable) {
    const auto curve = analogCurve(linear(0.5), 0.5F);
    ASSERT_TRUE(curve);
    EXPECT_EQ(curve->values, linear(0.5));
    EXPECT_EQ(curve->remark, "");
    for (const bool stored : curve->stored) EXPECT_TRUE(stored);
}

TEST(AnalogCurve, ItsHeightGoesFromMarkToMark) {
    const auto curve = analogCurve(linear(0.4), 0.4F); // to 102
    ASSERT_TRUE(curve);
    EXPECT_EQ(curve->low, 0);
    EXPECT_EQ(curve->high, 150);
    ASSERT_EQ(curve->marks.size(), 4U);
    EXPECT_EQ(curve->marks[0].text, "0");
    EXPECT_EQ(curve->marks[3].text, "150");
    EXPECT_EQ(curve->marks[3].value, curve->high);
}

TEST(AnalogCurve, ItsMarksAreRoundNumbers) {
    AnalogTable table = linear(0.001);
    table[0] = -0.05;
    const auto small = analogCurve(table, 0.001F); // to 0.255
    ASSERT_TRUE(small);
    ASSERT_EQ(small->marks.size(), 5U);
    EXPECT_EQ(small->marks[0].text, "-0.1");
    EXPECT_EQ(small->marks[3].text, "0.2");
    EXPECT_EQ(small->marks[4].text, "0.3");
    const auto large = analogCurve(linear(70), 70); // to 17850
    ASSERT_TRUE(large);
    EXPECT_EQ(large->marks.back().text, "20000");
    EXPECT_EQ(large->marks.size(), 5U);
}

TEST(AnalogCurve, AFlatTableLiesInTheMiddle) {
    const auto zero = analogCurve(flat(0), 1);
    ASSERT_TRUE(zero);
    EXPECT_EQ(zero->low, -1);
    EXPECT_EQ(zero->high, 1);
    const auto ten = analogCurve(flat(10), 1);
    ASSERT_TRUE(ten);
    EXPECT_LT(ten->low, 10);
    EXPECT_GT(ten->high, 10);
    EXPECT_LE(ten->marks.size(), 8U);
}

// The marks of such tables would be without number or without end.
TEST(AnalogCurve, NoReadingHoldsItUp) {
    AnalogTable table = flat(1e15);
    table[7] = 1e15 + 1;
    ASSERT_TRUE(analogCurve(table, 1));
    EXPECT_LE(analogCurve(table, 1)->marks.size(), 8U);
    table = flat(0);
    table[7] = 5e-324;
    ASSERT_TRUE(analogCurve(table, 1));
    EXPECT_EQ(analogCurve(table, 1)->high, 1);
    table[7] = 1e300;
    ASSERT_TRUE(analogCurve(table, 1));
    EXPECT_LE(analogCurve(table, 1)->marks.size(), 8U);
    table[7] = 1.7e308;
    table[8] = -1.7e308;
    EXPECT_FALSE(analogCurve(table, 1)) << "the height is no number";
    EXPECT_FALSE(analogCurve(flat(1.7e308), 1)) << "neither with room above it";
}

TEST(AnalogCurve, AReadingThatIsNoNumberIsPassedOver) {
    AnalogTable table = linear(1);
    table[0] = noNumber;
    table[9] = tooLarge;
    const auto curve = analogCurve(table, 1);
    ASSERT_TRUE(curve);
    EXPECT_EQ(curve->low, 0);
    EXPECT_EQ(curve->high, 300);
    EXPECT_FALSE(curve->stored[0]);
    EXPECT_FALSE(curve->stored[9]);
    EXPECT_TRUE(curve->stored[10]);
    EXPECT_FALSE(analogCurve(flat(noNumber), 1));
}

TEST(AnalogCurve, SaysWhichCountsADownloadLeaves) {
    AnalogTable table = linear(0.4);
    table[255] = 103;
    const auto one = analogCurve(table, 0.4F);
    ASSERT_TRUE(one);
    EXPECT_FALSE(one->stored[255]);
    EXPECT_TRUE(one->stored[254]);
    EXPECT_EQ(one->remark, "Count 255 does not read between 0 and 102, the range of the input: a "
                           "download does not convert it.");

    const auto upper = analogCurve(linear(1), 0.5F);
    ASSERT_TRUE(upper);
    EXPECT_TRUE(upper->stored[127]);
    EXPECT_FALSE(upper->stored[128]);
    EXPECT_EQ(upper->remark, "Counts 128 to 255 do not read between 0 and 127.5, the range of the "
                             "input: a download does not convert them.");

    table = linear(1);
    table[3] = table[200] = -5;
    const auto apart = analogCurve(table, 1);
    ASSERT_TRUE(apart);
    EXPECT_EQ(apart->remark, "2 counts from 3 to 200 do not read between 0 and 255, the range of "
                             "the input: a download does not convert them.");
}

TEST(AnalogCurve, AScaleOfZeroStoresNothing) {
    const auto curve = analogCurve(linear(1), 0);
    ASSERT_TRUE(curve);
    EXPECT_EQ(curve->remark, "Counts 0 to 255 do not read between 0 and 0, the range of the input: "
                             "a download does not convert them.");
    const auto falling = analogCurve(linear(-1), -1);
    ASSERT_TRUE(falling);
    EXPECT_EQ(falling->remark, "") << "a negative scale stores negative readings";
    const auto wrong = analogCurve(linear(1), -1);
    ASSERT_TRUE(wrong);
    EXPECT_EQ(wrong->remark, "Counts 1 to 255 do not read between -255 and 0, the range of the "
                             "input: a download does not convert them.");
}

} // namespace
} // namespace kvo::setup
