#include "graph/grid.h"

#include <gtest/gtest.h>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;

namespace {

struct Grid : ::testing::Test {
    Grid() {
        input.rpmScale = 10;
        input.mphScale = 5;
        input.timeOffset = 160;
        input.sampleCount = 1360;
        input.dataType = 32;
        input.scaleWidth = 1361;
    }
    const std::vector<GridMark>& grid() {
        makeGrid(config, input, marks);
        return marks;
    }
    std::vector<std::string> texts() {
        std::vector<std::string> all;
        for (const GridMark& mark : grid()) {
            if (mark.kind == GridMark::Kind::text) all.push_back(mark.text);
        }
        return all;
    }
    std::vector<GridMark> lines() {
        std::vector<GridMark> all;
        for (const GridMark& mark : grid()) {
            if (mark.kind == GridMark::Kind::line) all.push_back(mark);
        }
        return all;
    }
    static bool has(const std::vector<std::string>& all, const std::string& text) {
        return std::find(all.begin(), all.end(), text) != all.end();
    }
    core::AppConfig config;
    GridInput input;
    std::vector<GridMark> marks;
};

} // namespace

TEST(GridScale, SpeedScaleByTheFastestSample) {
    EXPECT_EQ(mphScaleFor(0), 10);
    EXPECT_EQ(mphScaleFor(19999), 10);
    EXPECT_EQ(mphScaleFor(20000), 6);
    EXPECT_EQ(mphScaleFor(29999), 6);
    EXPECT_EQ(mphScaleFor(30000), 5);
    EXPECT_EQ(mphScaleFor(39999), 5);
    EXPECT_EQ(mphScaleFor(40000), 3);
    EXPECT_EQ(mphScaleFor(INT32_MAX), 3);
    EXPECT_EQ(mphScaleFor(-5), 10);
}

// Whole thousands at every scale, though the heights are sums of singles.
TEST_F(Grid, LinesAreLabelledWithTheirWholeRpm) {
    for (int scale = 6; scale <= 17; ++scale) {
        input.rpmScale = scale;
        int expected = 0;
        for (const std::string& text : texts()) {
            if (!text.ends_with(" Rpm")) continue;
            expected += 1000;
            EXPECT_EQ(text, " " + std::to_string(expected) + " Rpm") << scale;
        }
        EXPECT_GE(expected, 5000) << scale;
    }
}

TEST_F(Grid, ALineEveryThousandRpm) {
    const auto all = lines();
    EXPECT_EQ(all[0].y1, 100);
    EXPECT_EQ(all[0].x2, 1361);
    EXPECT_EQ(all[9].y1, 1000);
    EXPECT_EQ(all.size(), 10U + 13U);
}

TEST_F(Grid, TheTopLineBearsAWord) {
    const auto all = texts();
    EXPECT_EQ(all[0], " 1000 Rpm");
    EXPECT_TRUE(has(all, " 9000 Rpm"));
    EXPECT_TRUE(has(all, " Bang"));
    EXPECT_FALSE(has(all, " 10000 Rpm"));
}

TEST_F(Grid, FiveDigitsStandFurtherLeft) {
    input.rpmScale = 20;
    for (const GridMark& mark : grid()) {
        if (mark.text == " 9000 Rpm") {
            EXPECT_EQ(mark.x1, 10);
        }
        if (mark.text == " 10000 Rpm") {
            EXPECT_EQ(mark.x1, 5);
            EXPECT_EQ(mark.y1, 497);
        }
    }
}

TEST_F(Grid, ARaisedRpmChannelRemovesAllRpmLabelsAndNoLine) {
    const std::size_t count = lines().size();
    for (const int channel : {engineChannel, clutchChannel, inputChannel, outputChannel}) {
        config.ComboScale.fill(0);
        config.ComboScale[static_cast<std::size_t>(channel)] = 20;
        const auto all = texts();
        EXPECT_FALSE(has(all, " 1000 Rpm")) << channel;
        EXPECT_FALSE(has(all, " Bang")) << channel;
        EXPECT_TRUE(has(all, " 20   Mph")) << channel;
        EXPECT_EQ(lines().size(), count) << channel;
    }
}

TEST_F(Grid, ARaisedMphRemovesAllMphLabels) {
    config.ComboScale[mphChannel] = 20;
    const auto all = texts();
    EXPECT_TRUE(has(all, " 1000 Rpm"));
    EXPECT_FALSE(has(all, " 20   Mph"));
    EXPECT_EQ(lines().size(), 23U);
}

TEST_F(Grid, MphLabelsStandAtTheEdgeBehindAnRpmLabel) {
    EXPECT_FALSE(grid()[1].setsX);
    config.ComboScale[engineChannel] = 20;
    EXPECT_TRUE(grid()[0].setsX);
    EXPECT_EQ(grid()[0].x1, 10);
    EXPECT_EQ(grid()[0].y1, 126);
}

TEST_F(Grid, SecondsStartAtTimeZero) {
    const auto all = lines();
    EXPECT_EQ(all[10].x1, 160);
    EXPECT_EQ(all[10].y2, 1000);
    EXPECT_EQ(all.back().x1, 1360);
    const GridMark last = grid().back();
    EXPECT_EQ(last.text, " 12");
    EXPECT_EQ(last.y1, 1026);
    EXPECT_EQ(last.x1, 1350); // two digits: 10, since type 23
}

TEST_F(Grid, NumbersAreShiftedByDigitsAndType) {
    const auto shiftOf = [this](int type, const std::string& text) {
        input.dataType = type;
        for (const GridMark& mark : grid()) {
            if (mark.text == text) return 160 + 100 * std::stoi(text) - static_cast<int>(mark.x1);
        }
        return -1;
    };
    EXPECT_EQ(shiftOf(20, " 9"), 10);
    EXPECT_EQ(shiftOf(20, " 10"), 13);
    EXPECT_EQ(shiftOf(23, " 9"), 7);
    EXPECT_EQ(shiftOf(43, " 10"), 10);
}

TEST_F(Grid, ScalesOfNothingMakeNothing) {
    input.rpmScale = 0;
    EXPECT_TRUE(grid().empty());
    input.rpmScale = 261; // MaxRpm 255
    EXPECT_GT(grid().size(), 261U);
    input.mphScale = 0; // the division ends the routine behind the first rpm label
    input.rpmScale = 10;
    EXPECT_EQ(grid().size(), 1U);
    EXPECT_EQ(marks[0].text, " 1000 Rpm");
}

TEST_F(Grid, TimeZerosOutsideTheRun) {
    input.timeOffset = 2000;
    EXPECT_EQ(lines().size(), 10U);
    input.timeOffset = -32768;
    input.sampleCount = 65535;
    EXPECT_EQ(lines().size(), 10U + 984U);
}

TEST_F(Grid, ColoursStayApartFromTheBackground) {
    EXPECT_EQ(gridColour(config), 0xC0C0C0U);
    EXPECT_EQ(gridTextColour(config), 0xFFFFFFU);
    config.GraphBackColour = 0xC0C0C0;
    EXPECT_EQ(gridColour(config), 0xFFFFF5U);
    config.GraphBackColour = 0xFFFFFF;
    EXPECT_EQ(gridTextColour(config), 0U);
}

TEST(SwitchBars, EachSwitchHasItsBar) {
    GraphView view;
    const auto bars = switchBars(view);
    EXPECT_EQ(bars[0].top, 1096);
    EXPECT_EQ(bars[0].bottom, 1088);
    EXPECT_EQ(bars[0].colour, 0xFF0009U);
    EXPECT_EQ(bars[3].bottom, 1034);
    EXPECT_EQ(bars[3].colour, 65408U);
    EXPECT_EQ(bars[4].top, 1087);
    EXPECT_EQ(bars[7].bottom, 1025);
    for (std::size_t b = 0; b < 4; ++b) EXPECT_EQ(bars[b].colour, bars[b + 4].colour);
}

TEST(SwitchBars, MasksFollowTheStatusBits) {
    core::OpenRun run;
    run.SampleCount = 4;
    run.image.samples[1].Status = core::Dyna2Step;
    run.image.samples[2].Status = core::ShiftLight | core::TransBrake;
    run.image.samples[3].Status = 0xF0 | core::WideOpenThrottle; // the high bits are no switches
    std::vector<std::uint8_t> masks;
    makeSwitchMasks(shownRuns(run, nullptr), masks);
    EXPECT_EQ(masks, (std::vector<std::uint8_t>{1, 2 | 8, 4, 0}));
}

TEST(SwitchBars, TheOverlaysSampleIsTheOneOfTheSameTime) {
    core::OpenRun run;
    core::OpenRun overlay;
    run.SampleCount = 5;
    overlay.SampleCount = 4;
    run.image.tail.TimeOffset = 3;
    overlay.image.tail.TimeOffset = 5;
    overlay.image.samples[3].Status = core::TransBrake;
    std::vector<std::uint8_t> masks;
    makeSwitchMasks(shownRuns(run, &overlay), masks);
    EXPECT_EQ(masks, (std::vector<std::uint8_t>{0x80, 0, 0, 0, 0}));
    // Behind its last row the overlay has no bar, whatever lies there in memory.
    overlay.image.samples[5].Status = core::TransBrake;
    makeSwitchMasks(shownRuns(run, &overlay), masks);
    EXPECT_EQ(masks, (std::vector<std::uint8_t>{0x80, 0, 0, 0, 0}));
    run.SampleCount = 65535;
    run.image.tail.TimeOffset = 32767;
    overlay.image.tail.TimeOffset = -32768;
    makeSwitchMasks(shownRuns(run, &overlay), masks);
    EXPECT_EQ(masks.size(), 65535U);
}
