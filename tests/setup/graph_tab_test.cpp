#include "setup/graph_tab.h"

#include <gtest/gtest.h>

#include <string>

namespace kvo::setup {
namespace {

core::AppConfig someLook() {
    core::AppConfig config;
    config.G_Res = 4;
    config.MaxRpm = 11;
    config.Exhaust = -1;
    config.GridStyle = 2;
    config.OverlayStyle = 4;
    config.OverlayColours = 1;
    for (std::size_t i = 0; i < 25; ++i) {
        config.ComboScale[i] = static_cast<std::uint8_t>(i % 11 * 20);
        config.Text_Magnify[i] = static_cast<std::uint8_t>(i + 1);
    }
    return config;
}

core::AppConfig saved(const GraphTabValues& values, const core::AppConfig& before) {
    core::AppConfig config = before;
    OrderedSave save;
    saveGraphLists(values, config, save);
    saveScales(values.scales, config, save);
    EXPECT_FALSE(save.ended());
    return config;
}

TEST(GraphTab, SelectsWhatIsStored) {
    const GraphTabValues values = loadGraphTab(someLook());
    EXPECT_EQ(resolutionList.at(static_cast<std::size_t>(values.G_Res)), "Med");
    EXPECT_EQ(maxRpmList.at(static_cast<std::size_t>(values.MaxRpm)), "17000");
    EXPECT_EQ(temperatureList.at(static_cast<std::size_t>(values.Exhaust)), "Deg F");
    EXPECT_EQ(lineStyleList.at(static_cast<std::size_t>(values.GridStyle)), "Dots");
    EXPECT_EQ(lineStyleList.at(static_cast<std::size_t>(values.OverlayStyle)), "Dash Dot Dot");
    EXPECT_EQ(
        overlayColoursList.at(static_cast<std::size_t>(values.OverlayColours)), "Invert of Graph");
    EXPECT_EQ(values.scales.ComboScale[10], 10);
    EXPECT_EQ(values.scales.Text_Magnify[24], "24");
    for (std::size_t i = 0; i < maxRpmList.size(); ++i)
        EXPECT_EQ(maxRpmList[i], std::to_string(6000 + 1000 * i));
}

TEST(GraphTab, SavesWhatItLoads) {
    EXPECT_EQ(saved(loadGraphTab(someLook()), core::AppConfig()), someLook());
    for (const int step : {1, 4, 8}) {
        core::AppConfig config = someLook();
        config.G_Res = static_cast<std::uint8_t>(step);
        config.Exhaust = 0;
        EXPECT_EQ(saved(loadGraphTab(config), core::AppConfig()), config) << step;
    }
}

TEST(GraphTab, AnUnknownResolutionShowsAndSavesAsLow) {
    for (const int stored : {0, 2, 9, 255}) {
        core::AppConfig config;
        config.G_Res = static_cast<std::uint8_t>(stored);
        EXPECT_EQ(loadGraphTab(config).G_Res, 2) << stored;
        EXPECT_EQ(saved(loadGraphTab(config), config).G_Res, 8) << stored;
    }
}

TEST(GraphTab, AListWithoutSuchAnEntryKeepsItsField) {
    core::AppConfig config = someLook();
    config.MaxRpm = 12;
    config.GridStyle = 5;
    config.OverlayStyle = 255;
    config.OverlayColours = 2;
    config.ComboScale[7] = 255;
    const GraphTabValues values = loadGraphTab(config);
    EXPECT_EQ(values.MaxRpm, -1);
    EXPECT_EQ(values.GridStyle, -1);
    EXPECT_EQ(values.OverlayStyle, -1);
    EXPECT_EQ(values.OverlayColours, -1);
    EXPECT_EQ(values.scales.ComboScale[7], -1);
    EXPECT_EQ(saved(values, config), config);
}

TEST(GraphTab, ANeverSetMagnificationIsSavedAsOne) {
    const core::AppConfig fresh;
    EXPECT_EQ(loadGraphTab(fresh).scales.Text_Magnify[4], "0");
    EXPECT_EQ(saved(loadGraphTab(fresh), fresh).Text_Magnify[4], 1);
}

TEST(GraphTab, ReadsMagnificationsLeniently) {
    GraphTabValues values = loadGraphTab(someLook());
    values.scales.Text_Magnify[8] = "12abc";
    values.scales.Text_Magnify[9] = "";
    EXPECT_EQ(saved(values, someLook()).Text_Magnify[8], 13);
    EXPECT_EQ(saved(values, someLook()).Text_Magnify[9], 1);
    values.scales.Text_Magnify[9] = "255";
    values.scales.ComboScale[10] = 3;
    core::AppConfig config = someLook();
    OrderedSave save;
    saveScales(values.scales, config, save);
    EXPECT_EQ(save.failedBox(), "Magnify Data");
    EXPECT_EQ(config.Text_Magnify[8], 13);
    EXPECT_EQ(config.ComboScale[10], 200) << "nothing is taken behind it";
}

TEST(GraphTab, AClickOnItsTabsEndsWithTheVehicle) {
    SetupRows rows;
    TabStrip2_Click(rows, RowsTab::raise, 0, car);
    EXPECT_EQ(rows.TabStrip2, RowsTab::raise);
    EXPECT_FALSE(rowOf(rows.options.ComboScale, channels::clutchChannel));
    EXPECT_FALSE(rowOf(rows.options.Label_Magnify, channels::clutchChannel));
    EXPECT_TRUE(rowOf(rows.options.ComboScale, channels::analogChannel(4)));
    TabStrip2_Click(rows, RowsTab::raise, 0, motorcycle);
    EXPECT_TRUE(rowOf(rows.options.ComboScale, channels::clutchChannel));
    TabStrip2_Click(rows, RowsTab::magnify, 0, motorcycle);
    EXPECT_EQ(rows, SetupRows());
}

} // namespace
} // namespace kvo::setup
