#include "calc/conversions.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>

namespace kvo::calc {
namespace {

// What the other box shows behind `typed`.
std::string shownBy(int pair, int box, const std::string& typed) {
    Conversions form;
    Command1_Click(form, pair);
    form.Text1[static_cast<std::size_t>(box)] = typed;
    Text1_KeyUp(form, box);
    EXPECT_EQ(form.Text1[static_cast<std::size_t>(box)], typed);
    return form.Text1[static_cast<std::size_t>(1 - box)];
}

TEST(Conversions, EveryPairGoesBothWays) {
    const struct {
        const char* forward;
        const char* backward;
    } hundred[] = {{"1638.72", "6.10"}, {"254.00", "39.37"}, {"30.48", "328.08"},
        {"45.36", "220.46"}, {"689.50", "14.50"}, {"160.93", "62.14"}, {"73.53", "136.00"},
        {"37.8", "212.0"}};
    for (int pair = 0; pair < 8; ++pair) {
        EXPECT_EQ(shownBy(pair, 0, "100"), hundred[pair].forward) << pair;
        EXPECT_EQ(shownBy(pair, 1, "100"), hundred[pair].backward) << pair;
    }
}

// As the user reads them; the degree sign is that of the file's text.
TEST(Conversions, HaveTheirCaptions) {
    const struct {
        const char* button;
        const char* title;
        const char* left;
        const char* right;
    } pairs[] = {{"Cu.in / Cc", "Cu.In to Cc", "Cu.In", "Cc"}, {"In / Cm", "In to Cm", "In", "Cm"},
        {"Feet / Metres", "Feet to Metres", "Ft", "M"}, {"Lbs / Kg", "Lbs to Kg", "Lbs", "Kg"},
        {"Psi / Kpa", "Psi to Kpa", "Psi", "Kpa"}, {"Mph / Kph", "Mph to Kph", "Mph", "Kph"},
        {"Hp / Kw", "Hp to Kw", "Hp", "Kw"},
        {"Deg F / Deg C", "Farenheit to Celcius", "\260F", "\260C"}};
    ASSERT_EQ(unitPairs().size(), std::size(pairs));
    for (std::size_t i = 0; i < std::size(pairs); ++i) {
        EXPECT_EQ(unitPairs()[i].button, pairs[i].button);
        EXPECT_EQ(unitPairs()[i].title, pairs[i].title);
        EXPECT_EQ(unitPairs()[i].left, pairs[i].left);
        EXPECT_EQ(unitPairs()[i].right, pairs[i].right);
    }
}

TEST(Conversions, CaptionsTellThePairsApart) {
    std::set<std::string_view> left;
    std::set<std::string_view> right;
    for (const UnitPair& pair : unitPairs()) {
        left.insert(pair.left);
        right.insert(pair.right);
    }
    EXPECT_EQ(left.size(), 8U);
    EXPECT_EQ(right.size(), 8U);
    EXPECT_EQ(unitPairs()[7].left, "\xB0"
                                   "F");
}

TEST(Conversions, AButtonEmptiesAndShowsTheBoxes) {
    Conversions form;
    EXPECT_FALSE(form.shown);
    EXPECT_EQ(unitPairs()[static_cast<std::size_t>(form.pair)].left, "Cu.In");
    form.Text1 = {"1", "16.39"};
    Command1_Click(form, 3);
    EXPECT_EQ(form.pair, 3);
    EXPECT_TRUE(form.shown);
    EXPECT_EQ(form.Text1[0] + form.Text1[1], "");
}

TEST(Conversions, ZeroAndBelowEmptyBothBoxes) {
    for (const char* typed : {"", "0", "-", "-40", "abc", "0.", "."}) {
        for (const int box : {0, 1}) {
            Conversions form;
            form.pair = 7;
            form.Text1 = {"9.9", "9.9"};
            form.Text1[static_cast<std::size_t>(box)] = typed;
            Text1_KeyUp(form, box);
            EXPECT_EQ(form.Text1[0] + form.Text1[1], "") << typed;
        }
    }
}

TEST(Conversions, AFailingSumLeavesTheOtherBox) {
    for (const std::string& typed :
        {std::string("12a"), std::string("1.2.3"), std::string(400, '9')}) {
        Conversions form;
        form.Text1 = {typed, "9.99"};
        Text1_KeyUp(form, 0);
        EXPECT_EQ(form.Text1[0], typed);
        EXPECT_EQ(form.Text1[1], "9.99") << typed;
    }
    // Too large to be read, where the sum itself would have room: a factor below 1.
    Conversions form;
    form.Text1 = {"9.99", std::string(400, '9')};
    Text1_KeyUp(form, 1);
    EXPECT_EQ(form.Text1[0], "9.99");
}

TEST(Conversions, ATemperatureMayBeBelowZeroOnTheOtherSide) {
    EXPECT_EQ(shownBy(7, 0, "14"), "-10.0");
    EXPECT_EQ(shownBy(7, 0, "32"), "0.0");
}

} // namespace
} // namespace kvo::calc
