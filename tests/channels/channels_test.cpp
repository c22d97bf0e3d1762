#include "channels/channels.h"
#include "tests/support/draw_calls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

using namespace kvo::channels;
using kvo::core::AppConfig;
using kvo::testing::drawCall;

namespace {

std::vector<int> listed(std::span<const int> channels) {
    return {channels.begin(), channels.end()};
}

std::vector<std::string> calls(int dataType) {
    std::vector<std::string> all;
    for (const int channel : drawOrder(dataType)) all.push_back(drawCall(channel, false));
    return all;
}

} // namespace

TEST(Channels, EachRowStandsAtItsIndex) {
    for (int channel = 0; channel < channelCount; ++channel) {
        EXPECT_EQ(channelFacts(channel).index, channel);
    }
    EXPECT_EQ(channelFacts(analogChannel(1)).name, "Analog1");
    EXPECT_EQ(channelFacts(15).number, 8);
    EXPECT_EQ(channelFacts(16).name, "Exhaust1");
    EXPECT_EQ(channelFacts(exhaustChannel(8)).index, 23);
    EXPECT_EQ(channelFacts(24).name, "TyreGrowth");
}

TEST(Channels, FlagsAndColoursAreThoseOfTheConfiguration) {
    AppConfig config;
    std::set<const void*> flags;
    std::set<const void*> colours;
    for (int channel = 0; channel < channelCount; ++channel) {
        flags.insert(&visibleFlag(config, channel));
        colours.insert(&colourField(config, channel));
    }
    EXPECT_EQ(flags.size(), 25U);
    EXPECT_EQ(colours.size(), 25U);
    EXPECT_EQ(&visibleFlag(config, outputChannel), &config.OutputVisible);
    EXPECT_EQ(&visibleFlag(config, analogChannel(3)), &config.AnalogVisible[3]);
    EXPECT_EQ(&visibleFlag(config, tyreGrowthChannel), &config.TyreGrowthVisible);
    EXPECT_EQ(&colourField(config, exhaustChannel(8)), &config.ExhaustColour[8]);
    EXPECT_EQ(&colourField(config, rocosChannel), &config.RoCoSColour);
    config.MphVisible = -1;
    config.MphColour = 77;
    EXPECT_TRUE(channelOn(config, mphChannel));
    EXPECT_FALSE(channelOn(config, slipChannel));
    EXPECT_EQ(channelColour(config, mphChannel), 77);
}

TEST(Channels, SmoothingHasAnOrderOfItsOwn) {
    EXPECT_EQ(channelFacts(engineChannel).smoothOption, 0);
    EXPECT_EQ(channelFacts(clutchChannel).smoothOption, 1);
    EXPECT_EQ(channelFacts(inputChannel).smoothOption, 2);
    EXPECT_EQ(channelFacts(outputChannel).smoothOption, 7);
    EXPECT_EQ(channelFacts(mphChannel).smoothOption, 7);
    EXPECT_EQ(channelFacts(exhaustChannel(1)).smoothOption, 9);
    EXPECT_EQ(channelFacts(analogChannel(8)).smoothOption, 24);
    for (const int channel : {slipChannel, ratioChannel, rocosChannel, tyreGrowthChannel}) {
        EXPECT_EQ(channelFacts(channel).smoothOption, -1);
    }
}

TEST(Channels, MagnifyDefaults) {
    EXPECT_EQ(channelFacts(slipChannel).magnifyDefault, 10);
    EXPECT_EQ(channelFacts(ratioChannel).magnifyDefault, 50);
    EXPECT_EQ(channelFacts(rocosChannel).magnifyDefault, 1);
    EXPECT_EQ(channelFacts(tyreGrowthChannel).magnifyDefault, 10);
    EXPECT_EQ(channelFacts(analogChannel(4)).magnifyDefault, 1);
    EXPECT_EQ(channelFacts(exhaustChannel(4)).magnifyDefault, 1);
    EXPECT_EQ(channelFacts(engineChannel).magnifyDefault, 0);
    EXPECT_EQ(channelFacts(mphChannel).magnifyDefault, 0);
}

TEST(Channels, ControlsAndTitles) {
    const ChannelFacts& output = channelFacts(outputChannel);
    EXPECT_EQ(output.toggle.name, "Label10");
    EXPECT_EQ(output.toggle.index, 3);
    EXPECT_EQ(output.valueLabel.name, "OutPutRpm");
    EXPECT_EQ(output.overlayLabel.name, "OverlayOutputRpm");
    EXPECT_EQ(output.colourTitle, "Output Rpm");
    const ChannelFacts& exhaust = channelFacts(exhaustChannel(5));
    EXPECT_EQ(exhaust.toggle.name, "Label9");
    EXPECT_EQ(exhaust.toggle.index, 5);
    EXPECT_EQ(exhaust.colourTitle, "Exhaust");
    EXPECT_EQ(channelFacts(analogChannel(2)).toggle.name, "Text_Analog");
    EXPECT_EQ(channelFacts(slipChannel).colourTitle, "Input Slip");
}

TEST(Channels, TheBoxesOfTheOptionsHaveOrdersOfTheirOwn) {
    std::set<int> drawn;
    std::set<int> smooth;
    for (int channel = 0; channel < channelCount; ++channel) {
        drawn.insert(channelFacts(channel).option.drawnBox);
        smooth.insert(channelFacts(channel).option.smoothEntry);
    }
    EXPECT_EQ(drawn.size(), 25U);
    EXPECT_EQ(*drawn.rbegin(), 24);
    EXPECT_EQ(smooth.size(), 25U);
    EXPECT_EQ(*smooth.rbegin(), 24);
    EXPECT_EQ(channelFacts(mphChannel).option.drawnBox, 6);
    EXPECT_EQ(channelFacts(rocosChannel).option.drawnBox, 7);
    EXPECT_EQ(channelFacts(mphChannel).option.smoothEntry, 5);
    EXPECT_EQ(channelFacts(outputChannel).option.smoothEntry, 7);
    EXPECT_EQ(channelFacts(tyreGrowthChannel).option.smoothEntry, 8);
    EXPECT_EQ(channelFacts(exhaustChannel(8)).option.smoothEntry, 16);
    EXPECT_EQ(channelFacts(analogChannel(1)).option.smoothEntry, 17);
}

TEST(Channels, CaptionsOfTheOptions) {
    EXPECT_EQ(channelFacts(engineChannel).option.caption, "Eng. RPM");
    EXPECT_EQ(channelFacts(ratioChannel).option.caption, "Drive Ratio");
    EXPECT_EQ(channelFacts(mphChannel).option.caption, "MPH");
    EXPECT_EQ(channelFacts(mphChannel).option.boxCaption, "Mph");
    EXPECT_EQ(channelFacts(rocosChannel).option.boxCaption, "");
    EXPECT_EQ(channelFacts(analogChannel(8)).option.caption, "Analog 8");
    EXPECT_EQ(channelFacts(exhaustChannel(1)).option.caption, "Exhaust 1");
}

TEST(Channels, DrawingRoutinesByName) {
    EXPECT_EQ(drawCall(outputChannel, false), "DrawPinion");
    EXPECT_EQ(drawCall(rocosChannel, true), "ODrawRoCoS");
    EXPECT_EQ(drawCall(analogChannel(3), false), "DrawAnalog(3)");
    EXPECT_EQ(drawCall(exhaustChannel(8), true), "ODrawExhaust(8)");
}

TEST(Channels, OrderOfDrawingByDataType) {
    const std::vector<std::string> everyType{"DrawEngine", "DrawClutch", "DrawInput", "DrawPinion",
        "DrawMph", "DrawRatio", "DrawSlip", "DrawRoCoS", "DrawTyreGrowth", "DrawAnalog(1)",
        "DrawAnalog(2)", "DrawAnalog(3)", "DrawAnalog(4)"};
    EXPECT_EQ(calls(8), everyType);
    EXPECT_EQ(calls(12), everyType);
    EXPECT_EQ(calls(17).size(), 17U);
    EXPECT_EQ(calls(17).back(), "DrawAnalog(8)");
    EXPECT_EQ(calls(20).size(), 23U);
    EXPECT_EQ(calls(20)[14], "DrawAnalog(6)");
    EXPECT_EQ(calls(20)[15], "DrawExhaust(1)");
    for (const int type : {25, 32, 43}) EXPECT_EQ(calls(type).size(), 25U) << type;
    for (const int type : {23, 29}) EXPECT_EQ(calls(type).back(), "DrawAnalog(8)") << type;
}

TEST(Channels, OrdersGoThroughAllChannels) {
    EXPECT_EQ(std::set<int>(labelOrder().begin(), labelOrder().end()).size(), 25U);
    EXPECT_EQ(std::set<int>(colourOrder().begin(), colourOrder().end()).size(), 25U);
    const auto labels = listed(labelOrder());
    EXPECT_EQ(std::vector<int>(labels.begin(), labels.begin() + 9),
        (std::vector<int>{0, 1, 2, 3, 4, 5, 7, 6, 24}));
    const auto colours = listed(colourOrder());
    EXPECT_EQ(std::vector<int>(colours.begin(), colours.begin() + 9),
        (std::vector<int>{0, 2, 3, 4, 5, 7, 6, 1, 24}));
}
