#include "setup/graph_options.h"

#include "channels/channels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace kvo::setup {
namespace {

using namespace channels;

using Indexes = std::vector<int>;

template <typename Flags> Indexes indexesOf(const Flags& flags, bool wanted = true) {
    Indexes indexes;
    for (std::size_t i = 0; i < flags.size(); ++i)
        if (flags[i] == wanted) indexes.push_back(static_cast<int>(i));
    return indexes;
}

Indexes from(int first, int last) {
    Indexes indexes(static_cast<std::size_t>(last - first + 1));
    std::iota(indexes.begin(), indexes.end(), first);
    return indexes;
}

Indexes joined(Indexes a, const Indexes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const Indexes magnified = joined({4, 5, 6}, from(8, 24));

core::AppConfig everyField() {
    core::AppConfig config;
    for (int i = 0; i < channelCount; ++i) {
        const auto at = static_cast<std::size_t>(i);
        config.Text_Magnify[at] = static_cast<std::uint8_t>(2 * i);
        config.ComboScale[at] = static_cast<std::uint8_t>(i % 11 * 20);
        config.SmoothOption[at] = i % 2 == 0 ? 1 : 0;
        visibleFlag(config, i) = i % 3 == 0 ? -1 : 0;
    }
    return config;
}

TEST(GraphOptions, AStoredMagnificationShowsOneLess) {
    EXPECT_EQ(magnifyInSetup(51), "50");
    EXPECT_EQ(magnifyInSetup(1), "0");
    EXPECT_EQ(magnifyInSetup(0), "0");
    EXPECT_EQ(magnifyInVisibleOptions(51), "50");
    EXPECT_EQ(magnifyInVisibleOptions(0), "-1");
}

TEST(GraphOptions, ARaiseIsAnEntryOfTheListOrNone) {
    EXPECT_EQ(raiseIndex(0), 0);
    EXPECT_EQ(raiseIndex(200), 10);
    EXPECT_EQ(raiseIndex(30), 2) << "a tie goes to the even entry";
    EXPECT_EQ(raiseIndex(210), 10);
    EXPECT_EQ(raiseIndex(211), -1);
    EXPECT_EQ(raiseIndex(255), -1);
    EXPECT_EQ(raiseList.size(), 11U);
}

TEST(GraphOptions, AMagnificationIsANumberFromZeroToFifty) {
    for (const char* good : {"0", "50", "2.5", " 7 "})
        EXPECT_EQ(Text_Magnify_LostFocus(good), (BoxCheck{good, false, false})) << good;
    for (const char* bad : {"-1", "51", "50.01", "", "12abc", "abc", "-0.1"})
        EXPECT_EQ(Text_Magnify_LostFocus(bad), (BoxCheck{"0", true, true})) << bad;
}

TEST(GraphOptions, RestoreDefaultsTouchesTheHalfInView) {
    ScaleValues values;
    values.Text_Magnify.fill("33");
    values.ComboScale.fill(9);
    OptionRows rows;
    restoreDefaults(values, rows);
    EXPECT_EQ(rowOf(values.Text_Magnify, slipChannel), "8");
    EXPECT_EQ(rowOf(values.Text_Magnify, ratioChannel), "50");
    EXPECT_EQ(rowOf(values.Text_Magnify, tyreGrowthChannel), "10");
    EXPECT_EQ(rowOf(values.Text_Magnify, engineChannel), "0");
    EXPECT_EQ(rowOf(values.Text_Magnify, exhaustChannel(3)), "0");
    for (const int index : values.ComboScale) EXPECT_EQ(index, 9);
    values.Text_Magnify.fill("33");
    rowOf(rows.ComboScale, engineChannel) = true;
    restoreDefaults(values, rows);
    const auto behind = values.ComboScale.begin() + 16;
    EXPECT_EQ(Indexes(values.ComboScale.begin(), behind), Indexes(16, 0));
    EXPECT_EQ(Indexes(behind, values.ComboScale.end()), (Indexes{0, 1, 2, 3, 4, 5, 6, 7, 9}))
        << "tyre growth stays as it is";
    for (const std::string& text : values.Text_Magnify) EXPECT_EQ(text, "33");
}

TEST(GraphOptions, AsDesignedTheMagnificationsAreOnView) {
    const OptionRows rows;
    EXPECT_EQ(indexesOf(rows.Label_Magnify), from(0, 24));
    EXPECT_EQ(indexesOf(rows.Text_Magnify), magnified);
    EXPECT_EQ(indexesOf(rows.ComboScale), Indexes{});
}

TEST(SetupTabStrip2, SwitchesTheRowsOfTheModel) {
    const Indexes analogs[] = {
        from(8, 11), from(8, 11), from(8, 15), from(8, 13), from(8, 15), {}, {}};
    for (int model = 0; model < 7; ++model) {
        OptionRows rows;
        SetupTabStrip2(rows, RowsTab::raise, model);
        const Indexes switched = joined(joined(from(0, 7), analogs[model]), from(16, 24));
        EXPECT_EQ(indexesOf(rows.ComboScale), switched) << model;
        EXPECT_EQ(indexesOf(rows.Text_Magnify), indexesOf(rows.ComboScale, false)) << model;
        SetupTabStrip2(rows, RowsTab::magnify, model);
        EXPECT_EQ(rows, OptionRows()) << model;
    }
    OptionRows rows;
    SetupTabStrip2(rows, RowsTab::raise, -1);
    EXPECT_EQ(indexesOf(rows.Text_Magnify), from(8, 15));
}

TEST(SetupTabStrip2, LeavesTheMagnificationOfASpeedAlone) {
    OptionRows rows;
    rowOf(rows.Text_Magnify, mphChannel) = true;
    SetupTabStrip2(rows, RowsTab::magnify, 0);
    EXPECT_TRUE(rowOf(rows.Text_Magnify, mphChannel));
    SetupTabStrip2(rows, RowsTab::raise, 0);
    EXPECT_FALSE(rowOf(rows.Text_Magnify, mphChannel));
}

TEST(VisibleTabStrip1, ShowsAFrameAndAHalfOfTheRows) {
    VisibleOptionsShown shown;
    VisibleTabStrip1(shown, VisibleTab::raise);
    EXPECT_EQ(shown.Frame, 1);
    EXPECT_EQ(indexesOf(shown.rows.ComboScale), from(0, 24));
    EXPECT_EQ(indexesOf(shown.rows.Text_Magnify), Indexes{});
    VisibleTabStrip1(shown, VisibleTab::smooth);
    EXPECT_EQ(shown.Frame, 2);
    EXPECT_EQ(indexesOf(shown.rows.ComboScale), from(0, 24)) << "the rows wait as they are";
    VisibleTabStrip1(shown, VisibleTab::magnify);
    EXPECT_EQ(shown.Frame, 1);
    EXPECT_EQ(indexesOf(shown.rows.ComboScale), Indexes{});
    EXPECT_EQ(indexesOf(shown.rows.Text_Magnify), magnified);
    VisibleTabStrip1(shown, VisibleTab::onOff);
    EXPECT_EQ(shown.Frame, 0);
}

TEST(HideUnusedOptions, GoesByTheLoadedRunElseByTheSetup) {
    EXPECT_EQ(optionsModel(12, 43), 12);
    EXPECT_EQ(optionsModel(0, 43), 43);
}

TEST(HideUnusedOptions, HidesTheInputsThatTheModelLacks) {
    VisibleOptionsShown shown;
    HideUnusedOptions(shown, 20, 0);
    EXPECT_EQ(indexesOf(shown.Check1, false), (Indexes{14, 15, 48, 49}));
    EXPECT_EQ(indexesOf(shown.rows.Label_Magnify, false), (Indexes{14, 15}));
    EXPECT_TRUE(shown.rows.Label_Magnify_Analog_Text[6]);
    EXPECT_FALSE(shown.rows.Label_Magnify_Analog_Text[7]);
    EXPECT_FALSE(shown.rows.Label_Magnify_Analog_Text[8]);
    EXPECT_EQ(indexesOf(shown.EGTFrame, false), Indexes{2});
}

TEST(HideUnusedOptions, TheFirstThreeModelsHaveNoExhausts) {
    const struct {
        int model;
        Indexes rows;
    } cases[] = {{8, from(12, 15)}, {12, from(12, 15)}, {17, {}}};
    for (const auto& [model, rows] : cases) {
        VisibleOptionsShown shown;
        HideUnusedOptions(shown, model, 0);
        EXPECT_EQ(indexesOf(shown.rows.Label_Magnify, false), rows) << model;
        EXPECT_EQ(indexesOf(shown.EGTFrame), Indexes{}) << model;
    }
}

TEST(HideUnusedOptions, ACarHasNoClutch) {
    VisibleOptionsShown shown;
    HideUnusedOptions(shown, 43, 1);
    EXPECT_EQ(indexesOf(shown.Check1, false), Indexes{1});
    EXPECT_EQ(indexesOf(shown.rows.Label_Magnify, false), Indexes{1});
    VisibleOptionsShown motorcycle;
    HideUnusedOptions(motorcycle, 43, 5);
    EXPECT_EQ(indexesOf(motorcycle.Check1, false), Indexes{});
}

TEST(HideUnusedOptions, AnEarlyTypeOfNoModelLosesEveryRowToTheLastAnalog) {
    VisibleOptionsShown shown;
    HideUnusedOptions(shown, 23, 0);
    EXPECT_EQ(indexesOf(shown.Check1, false), joined(from(0, 15), from(34, 49)));
    EXPECT_EQ(indexesOf(shown.rows.Label_Magnify, false), from(0, 15));
    EXPECT_EQ(indexesOf(shown.rows.Text_Magnify), from(16, 24));
    for (int n = 1; n <= 8; ++n) EXPECT_FALSE(shown.rows.Label_Magnify_Analog_Text[n]) << n;
    EXPECT_EQ(indexesOf(shown.EGTFrame), from(0, 2));
    VisibleOptionsShown late;
    HideUnusedOptions(late, 29, 0);
    EXPECT_EQ(indexesOf(late.Check1, false), Indexes{});
}

TEST(HideUnusedOptions, ShowsNothingThatWasHidden) {
    VisibleOptionsShown shown;
    HideUnusedOptions(shown, 8, 1);
    HideUnusedOptions(shown, 43, 0);
    EXPECT_EQ(indexesOf(shown.EGTFrame), Indexes{});
    EXPECT_EQ(indexesOf(shown.rows.Label_Magnify, false), (Indexes{1, 12, 13, 14, 15}));
}

TEST(TabStrip1, HidesAgainWhatItsTabShows) {
    VisibleOptionsShown shown;
    TabStrip1_Click(shown, VisibleTab::raise, 17, 1);
    EXPECT_EQ(indexesOf(shown.rows.ComboScale, false), Indexes{1});
    TabStrip1_Click(shown, VisibleTab::magnify, 8, 1);
    EXPECT_EQ(
        indexesOf(shown.rows.Text_Magnify), joined({4, 5, 6}, joined(from(8, 11), from(16, 24))));
}

TEST(VisibleOptionsForm, LoadsWhatIsSet) {
    core::AppConfig config = everyField();
    config.ComboScale[3] = 255;
    config.SmoothOption[4] = 2;
    const VisibleOptions form = loadVisibleOptions(config, 43);
    for (int channel = 0; channel < channelCount; ++channel) {
        const auto box = static_cast<std::size_t>(channelFacts(channel).option.drawnBox);
        EXPECT_EQ(form.values.Check1[box], channelOn(config, channel)) << channel;
    }
    EXPECT_EQ(form.values.Check1[6], channelOn(config, mphChannel));
    EXPECT_EQ(form.values.Check1[7], channelOn(config, rocosChannel));
    EXPECT_TRUE(form.values.Check1[25]);
    EXPECT_FALSE(form.values.Check1[26]);
    EXPECT_FALSE(form.values.Check1[29]) << "only 1 is smoothed";
    EXPECT_EQ(form.values.scales.Text_Magnify[0], "-1");
    EXPECT_EQ(form.values.scales.Text_Magnify[24], "47");
    EXPECT_EQ(form.values.scales.ComboScale[10], 10);
    EXPECT_EQ(form.values.scales.ComboScale[3], -1);
    EXPECT_FALSE(form.Command1_1_Enabled);
    EXPECT_EQ(form.Command2, "Cancel");
    EXPECT_EQ(form.shown.Frame, 0);
    EXPECT_EQ(indexesOf(form.shown.rows.ComboScale), Indexes{});
    EXPECT_EQ(indexesOf(loadVisibleOptions(config, 20).shown.EGTFrame), (Indexes{0, 1}));
}

TEST(VisibleOptionsForm, TheSameValuesGiveTheSameConfiguration) {
    core::AppConfig config = everyField();
    config.ComboScale[3] = 255;
    core::AppConfig applied = config;
    applyOptions(loadVisibleOptions(config, 43).values, applied);
    EXPECT_EQ(applied, config);
}

TEST(VisibleOptionsForm, AValueThatDoesNotFitLeavesItsField) {
    core::AppConfig config = everyField();
    VisibleOptions form = loadVisibleOptions(config, 43);
    form.values.scales.Text_Magnify[8] = "12abc";
    form.values.scales.Text_Magnify[9] = "";
    form.values.scales.Text_Magnify[10] = "255";
    form.values.scales.Text_Magnify[11] = "2.5";
    form.values.scales.Text_Magnify[12] = "-1";
    form.values.scales.ComboScale[13] = -1;
    applyOptions(form.values, config);
    EXPECT_EQ(config.Text_Magnify[8], 16);
    EXPECT_EQ(config.Text_Magnify[9], 18);
    EXPECT_EQ(config.Text_Magnify[10], 20);
    EXPECT_EQ(config.Text_Magnify[11], 4) << "3.5 rounds to the even number";
    EXPECT_EQ(config.Text_Magnify[12], 0);
    EXPECT_EQ(config.ComboScale[13], 40);
}

TEST(VisibleOptionsForm, CaptionsComeFromTheTableAndFromTheGraph) {
    core::FromOne<std::string, 8> names;
    names[1] = "Oil";
    names[8] = "Boost";
    const auto boxes = boxCaptions(names);
    const auto rows = rowCaptions(names);
    EXPECT_EQ(boxes[0], "Eng. RPM");
    EXPECT_EQ(boxes[6], "Mph");
    EXPECT_EQ(boxes[7], "RoCoS");
    EXPECT_EQ(boxes[8], "Oil");
    EXPECT_EQ(boxes[42], "Oil");
    EXPECT_EQ(boxes[49], "Boost");
    EXPECT_EQ(boxes[32], "Output RPM");
    EXPECT_EQ(boxes[33], "Tyre Growth");
    EXPECT_EQ(rows[0], "Eng. RPM");
    EXPECT_EQ(rows[7], "MPH");
    EXPECT_EQ(rows[15], "Boost");
    const std::string none;
    EXPECT_EQ(std::count(boxes.begin(), boxes.end(), none), 12)
        << "six analogs without a name, two boxes each";
}

TEST(VisibleOptionsForm, EachBoxHasItsChannel) {
    EXPECT_EQ(channelOfBox(0), engineChannel);
    EXPECT_EQ(channelOfBox(6), mphChannel);
    EXPECT_EQ(channelOfBox(7), rocosChannel);
    EXPECT_EQ(channelOfBox(24), tyreGrowthChannel);
    EXPECT_EQ(channelOfBox(25), engineChannel);
    EXPECT_EQ(channelOfBox(28), slipChannel);
    EXPECT_EQ(channelOfBox(32), outputChannel);
    EXPECT_EQ(channelOfBox(33), tyreGrowthChannel);
    for (int n = 1; n <= 8; ++n) {
        EXPECT_EQ(channelOfBox(7 + n), analogChannel(n));
        EXPECT_EQ(channelOfBox(15 + n), exhaustChannel(n));
        EXPECT_EQ(channelOfBox(33 + n), exhaustChannel(n));
        EXPECT_EQ(channelOfBox(41 + n), analogChannel(n));
        EXPECT_EQ(optionGroup(analogChannel(n)), OptionGroup::analogs);
        EXPECT_EQ(optionGroup(exhaustChannel(n)), OptionGroup::exhausts);
    }
    for (const int channel : joined(from(0, 7), {24}))
        EXPECT_EQ(optionGroup(channel), OptionGroup::channels);
}

TEST(VisibleOptionsForm, AllOnAndAllOffSetTheirEight) {
    VisibleOptions form;
    EGTCommand_Click(form, 0);
    EXPECT_FALSE(form.Command1_1_Enabled) << "nothing changed";
    EGTCommand_Click(form, 1);
    EXPECT_EQ(indexesOf(form.values.Check1), from(16, 23));
    EXPECT_TRUE(form.Command1_1_Enabled);
    AnalogCommand_Click(form, 1);
    EXPECT_EQ(indexesOf(form.values.Check1), from(8, 23));
    EGTCommand_Click(form, 0);
    EXPECT_EQ(indexesOf(form.values.Check1), from(8, 15));
    AnalogCommand_Click(form, 0);
    EXPECT_EQ(indexesOf(form.values.Check1), Indexes{});
}

TEST(VisibleOptionsForm, RestoredDefaultsAreForApplyToTake) {
    VisibleOptions form = loadVisibleOptions(core::AppConfig(), 43);
    TabStrip1_Click(form.shown, VisibleTab::magnify, 43, 0);
    Command3_Click(form);
    EXPECT_EQ(rowOf(form.values.scales.Text_Magnify, ratioChannel), "50");
    EXPECT_TRUE(form.Command1_1_Enabled);
    form.Command1_1_Enabled = false;
    Command3_Click(form);
    EXPECT_FALSE(form.Command1_1_Enabled) << "nothing changed";
    TabStrip1_Click(form.shown, VisibleTab::raise, 43, 0);
    Command3_Click(form);
    EXPECT_EQ(rowOf(form.values.scales.ComboScale, exhaustChannel(8)), 7);
    EXPECT_TRUE(form.Command1_1_Enabled);
}

TEST(VisibleOptionsForm, ApplyStaysAndSaveCloses) {
    core::AppConfig config;
    VisibleOptions form = loadVisibleOptions(config, 43);
    form.values.Check1[0] = true;
    form.Command1_1_Enabled = true;
    const OptionsOutcome applied = Command1_Click(form, 1, config);
    EXPECT_EQ(config.EngineVisible, -1);
    EXPECT_TRUE(applied.redraw);
    EXPECT_FALSE(applied.graphDirty);
    EXPECT_FALSE(applied.unload);
    EXPECT_FALSE(form.Command1_1_Enabled);
    EXPECT_EQ(form.Command2, "Exit");
    const OptionsOutcome unchanged = Command1_Click(form, 0, config);
    EXPECT_FALSE(unchanged.redraw) << "the graph shows it already";
    EXPECT_TRUE(unchanged.graphDirty);
    EXPECT_TRUE(unchanged.unload);
    form.Command1_1_Enabled = true;
    EXPECT_TRUE(Command1_Click(form, 0, config).redraw);
}

TEST(CustomScale, KeepsBothPositions) {
    core::AppConfig config;
    config.CustomScaleLow = 15;
    config.CustomScaleHigh = 16;
    EXPECT_EQ(loadCustomScale(config).Slider1, 15);
    EXPECT_EQ(loadCustomScale(config).Slider2, 1);
    EXPECT_EQ(loadCustomScale(core::AppConfig()).Slider1, 1);
    const CustomSurface surface = CustomScaleOK({2, 3}, 1265, 3225, config);
    EXPECT_EQ(surface.Height, 2000);
    EXPECT_EQ(surface.Width, 3000);
    EXPECT_STREQ(surface.scaleCaption, "&Graph Scale(Custom)");
    EXPECT_EQ(config.CustomScaleLow, 2);
    EXPECT_EQ(config.CustomScaleHigh, 3);
}

} // namespace
} // namespace kvo::setup
