#include "graph/spoken.h"

#include "channels/channels.h"

#include <gtest/gtest.h>

using namespace kvo::graph;
using namespace kvo::channels;

TEST(Spoken, ThousandsStandApart) {
    EXPECT_EQ(spokenNumber("5595"), "5,595");
    EXPECT_EQ(spokenNumber("595"), "595");
    EXPECT_EQ(spokenNumber("-12345.6789 in"), "-12,345.6789 in");
    EXPECT_EQ(spokenNumber("+1095"), "+1,095");
    EXPECT_EQ(spokenNumber("1234567"), "1,234,567");
    EXPECT_EQ(spokenNumber("-123"), "-123");
    EXPECT_EQ(spokenNumber("0.54 in"), "0.54 in");
    EXPECT_EQ(spokenNumber("N/A"), "N/A");
    EXPECT_EQ(spokenNumber(""), "");
}

TEST(Spoken, AValueIsTiedToItsChannel) {
    EXPECT_EQ(spokenBox({"Engine", "5595", "", SecondValue::none, "rpm"}), "Engine 5,595 rpm");
    EXPECT_EQ(spokenBox({"Engine", "5595", "5610", SecondValue::overlay, "rpm"}),
        "Engine 5,595 rpm, overlay 5,610");
    EXPECT_EQ(spokenBox({"Engine", "5595", "-15", SecondValue::difference, "rpm"}),
        "Engine 5,595 rpm, difference -15");
    EXPECT_EQ(
        spokenBox({"Tyre Growth", "0.54 in", "", SecondValue::none, ""}), "Tyre Growth 0.54 in");
}

TEST(Spoken, WhatIsMissingIsSaid) {
    EXPECT_EQ(spokenBox({"Ratio", "", "", SecondValue::none, ""}), "Ratio no value");
    EXPECT_EQ(spokenBox({"Slip", "", "1.5", SecondValue::overlay, "percent"}),
        "Slip no value, overlay 1.5");
    EXPECT_EQ(spokenBox({"Slip", "1.5", "", SecondValue::overlay, "percent"}),
        "Slip 1.5 percent, overlay no value");
}

TEST(Spoken, TheSecondValueIsTiedToItsChannelToo) {
    EXPECT_EQ(spokenSecond({"Engine", "5595", "5610", SecondValue::overlay, "rpm"}),
        "Engine, overlay 5,610 rpm");
    EXPECT_EQ(spokenSecond({"Engine", "5595", "+15", SecondValue::difference, "rpm"}),
        "Engine, difference +15 rpm");
    EXPECT_EQ(spokenSecond({"Engine", "5595", "", SecondValue::overlay, "rpm"}),
        "Engine, overlay no value");
    EXPECT_EQ(spokenSecond({"Engine", "5595", "", SecondValue::none, "rpm"}), "Engine");
}

TEST(Spoken, TheCursorSaysItsTimeAndEveryValueThere) {
    const std::vector<SpokenBox> boxes{{"Engine", "5595", "", SecondValue::none, "rpm"},
        {"Ratio", "", "", SecondValue::none, ""}, {"Mph", "121.19", "", SecondValue::none, ""},
        {"Slip", "", "2.5", SecondValue::overlay, "percent"}};
    EXPECT_EQ(spokenCursor("Time: 2.00 sec", boxes),
        "Time: 2.00 sec. Engine 5,595 rpm. Mph 121.19. Slip no value, overlay 2.5");
    EXPECT_EQ(spokenCursor("", boxes), "");
}

TEST(Spoken, UnitsAreThoseThatNoTextSays) {
    for (const int channel : {engineChannel, clutchChannel, inputChannel, outputChannel})
        EXPECT_EQ(spokenUnit(channel), "rpm");
    EXPECT_EQ(spokenUnit(slipChannel), "percent");
    EXPECT_EQ(spokenUnit(exhaustChannel(8)), "degrees");
    for (const int channel :
        {ratioChannel, mphChannel, rocosChannel, tyreGrowthChannel, analogChannel(1)})
        EXPECT_EQ(spokenUnit(channel), "");
}
