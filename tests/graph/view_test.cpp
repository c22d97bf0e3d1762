#include "graph/view.h"

#include <gtest/gtest.h>

using namespace kvo::channels;
using namespace kvo::graph;
using kvo::core::AppConfig;

TEST(View, AFullPictureShowsWhatItsTypeHas) {
    AppConfig config;
    config.AnalogVisible[6] = -1;
    const LabelVisibility eight = drawTrendLabels(8, config);
    EXPECT_EQ(eight, drawTrendLabels(12, config));
    EXPECT_EQ(eight.analogToggle[5], Show::hide);
    EXPECT_EQ(eight.analogValue[6], Show::hide);
    EXPECT_EQ(eight.analogToggle[4], Show::leave);
    EXPECT_EQ(eight.exhaustValue, Show::hide);
    EXPECT_EQ(eight.exhaustHeading, Show::hide);
    EXPECT_EQ(eight.clutch, Show::leave);

    const LabelVisibility seventeen = drawTrendLabels(17, config);
    EXPECT_EQ(seventeen.analogToggle[5], Show::show);
    EXPECT_EQ(seventeen.analogValue[5], Show::leave); // is off
    EXPECT_EQ(seventeen.analogValue[6], Show::show);
    EXPECT_EQ(seventeen.exhaustToggle, Show::hide);

    for (const int type : {25, 32, 43}) {
        const LabelVisibility labels = drawTrendLabels(type, config);
        EXPECT_EQ(labels.exhaustToggle, Show::show) << type;
        EXPECT_EQ(labels.exhaustHeading, Show::show) << type;
        EXPECT_EQ(labels.exhaustValue, Show::leave) << type;
        EXPECT_EQ(labels.analogToggle[8], Show::show) << type;
    }
    for (const int type : {20, 23, 29}) {
        EXPECT_EQ(drawTrendLabels(type, config), LabelVisibility{}) << type;
    }
}

TEST(View, ACarHidesTheClutchAndTypes23And29NothingElse) {
    LabelVisibility onlyClutch;
    onlyClutch.clutch = Show::hide;
    EXPECT_EQ(ShowChannelsForType(23, 1), onlyClutch);
    EXPECT_EQ(ShowChannelsForType(29, 1), onlyClutch);
    EXPECT_EQ(ShowChannelsForType(23, 2), LabelVisibility{});
    const LabelVisibility twenty = ShowChannelsForType(20, 0);
    EXPECT_EQ(twenty.analogToggle[6], Show::show);
    EXPECT_EQ(twenty.analogToggle[7], Show::hide);
    EXPECT_EQ(twenty.exhaustHeading, Show::show);
}

TEST(View, AnyOtherResolutionIsLow) {
    EXPECT_EQ(Resolution_Change(1).caption, "&Graph Resolution (High)  ");
    EXPECT_EQ(Resolution_Change(4).caption, "&Graph Resolution (Med)  ");
    for (const int step : {0, 2, 8, 9, 255}) {
        EXPECT_EQ(Resolution_Change(step).caption, "&Graph Resolution (Low)  ");
        EXPECT_EQ(Resolution_Change(step).checkedItem, 8);
    }
}

TEST(View, ABackgroundEqualToAChannelTurnsItWhiteOrBlack) {
    AppConfig config;
    for (int channel = 0; channel < channelCount; ++channel) colourField(config, channel) = 255;
    config.GraphBackColour = 0x00FF00;
    config.SlipColour = 0x00FF00;
    config.EngineColour = 0x00FF00;
    ColourChange change = changeColour(config);
    EXPECT_EQ(change.repaired, (std::vector<int>{engineChannel, slipChannel}));
    EXPECT_EQ(change.colours[slipChannel], 0xFFFFFF);
    EXPECT_EQ(change.colours[inputChannel], 255);
    EXPECT_FALSE(change.barsRepainted);
    config.GraphBackColour = 0xFFFFFF;
    config.ClutchColour = 0xFFFFFF;
    change = changeColour(config);
    EXPECT_EQ(change.colours[clutchChannel], 0);
}

TEST(View, ASwitchColourFallsToWhiteOnItsOwnBackground) {
    AppConfig config;
    for (int channel = 0; channel < channelCount; ++channel) colourField(config, channel) = 1;
    config.GraphBackColour = 255;
    const ColourChange change = changeColour(config);
    EXPECT_TRUE(change.barsRepainted);
    EXPECT_EQ(change.switchShift, 0xFFFFFF);
    EXPECT_EQ(change.switchDyna, 0xFF0009);
    EXPECT_EQ(change.switchThrottle, 0xFF00FF);
    EXPECT_EQ(change.switchBrake, 65408);
}

TEST(View, AnInvertedColourNeverLandsOnTheBackground) {
    EXPECT_EQ(InvertColour(255, 0), 0xFFFF00);
    EXPECT_EQ(InvertColour(0xFFFF00, 255), 0xFFFF00);
    EXPECT_EQ(InvertColour(0, 0xFFFFFF), 0);
    // Values that no dialog gives stay defined.
    EXPECT_EQ(InvertColour(-1, 0), 0x1000000);
    EXPECT_NE(InvertColour(INT32_MIN, 0), 0);
}

TEST(View, TheColourDialogStartsFromAColourOnly) {
    EXPECT_EQ(colourDialogStart(0xFFFFFF), 0xFFFFFFU);
    EXPECT_EQ(colourDialogStart(0), 0U);
    EXPECT_FALSE(colourDialogStart(0x1000000));
    EXPECT_FALSE(colourDialogStart(-1));
}
