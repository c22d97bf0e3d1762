#include "graph/drawing.h"

#include "tests/support/graph_calls.h"
#include "tests/support/recording_surface.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;
using kvo::testing::RecordingHost;
using kvo::testing::SurfaceOperation;
using Kind = SurfaceOperation::Kind;

namespace {

// A run of 200 samples with every channel on, each in a colour that names it.
struct Drawing : ::testing::Test {
    Drawing() : drawing(kvo::testing::drawingOf(state, view, host)) {
        state.Run.DataType = 32;
        state.Run.SampleCount = 200;
        state.Overlay.DataType = 32;
        state.Overlay.SampleCount = 1860;
        state.Run.PeakSpeedRaw = 25000;
        state.Run.path = "/kvo/Data/26111514.52d";
        state.Config.G_Res = 1;
        state.Config.MaxRpm = 4;
        state.Config.GridStyle = 2;
        state.Config.OverlayStyle = 1;
        state.Config.Text_Magnify.fill(1);
        for (int channel = 0; channel < channelCount; ++channel) {
            visibleFlag(state.Config, channel) = -1;
            colourField(state.Config, channel) = 1000 + channel;
        }
        fill(state.Run.image, 160, 0);
        fill(state.Overlay.image, 180, 500);
        host.surface.setScale(0, trendTop, 201, 0);
        host.surface.forget();
    }
    static void fill(core::RunImage& image, int timeOffset, int more) {
        image.header.CrankGearTeeth = 1;
        image.header.BasketGearTeeth = 2;
        image.analog.PinionTeeth = 10;
        image.tail.TimeOffset = static_cast<std::int16_t>(timeOffset);
        for (int i = 1; i <= core::maxSamples; ++i) {
            core::RunSample& row = image.samples[i];
            row.Index = static_cast<std::int16_t>(i);
            row.EngineRpm = static_cast<std::int16_t>(i + more);
            row.Status = core::WideOpenThrottle;
        }
    }
    void drawTrend() { ASSERT_TRUE(drawing.DrawTrend()); }
    std::vector<SurfaceOperation> lines() const { return host.surface.ofKind(Kind::polyline); }
    // Channels of the lines in their order.
    std::vector<int> drawn() const {
        std::vector<int> all;
        for (const auto& line : lines()) all.push_back(static_cast<int>(line.colour) - 1000);
        return all;
    }
    // What stands between lines: the kinds of all operations in order, each run once.
    std::vector<Kind> course() const {
        std::vector<Kind> all;
        for (const auto& operation : host.surface.operations()) {
            if (all.empty() || all.back() != operation.kind) all.push_back(operation.kind);
        }
        return all;
    }
    core::SharedState state;
    GraphView view;
    RecordingHost host;
    TrendDrawing drawing;
};

} // namespace

TEST_F(Drawing, ARunThatIsNotThereOnlyClearsTheSurface) {
    state.Run.SampleCount = 0;
    drawTrend();
    EXPECT_EQ(course(), (std::vector<Kind>{Kind::cls, Kind::refresh}));
    EXPECT_TRUE(host.loading.empty());
    EXPECT_EQ(host.hourglass, (std::vector<bool>{true, false}));
}

TEST_F(Drawing, AFullPictureGoesFromTheGridToTheCurves) {
    drawTrend();
    const auto& all = host.surface.operations();
    EXPECT_EQ(all.front().kind, Kind::cls);
    EXPECT_EQ(all.back().kind, Kind::refresh);
    EXPECT_EQ(drawn(), (std::vector<int>{0, 1, 2, 3, 7, 5, 4, 6, 24, 8, 9, 10, 11, 12, 13, 14, 15,
                           16, 17, 18, 19, 20, 21, 22, 23}));
    EXPECT_EQ(view.RpmScale, 10);
    EXPECT_EQ(view.MphScale, 6);
    EXPECT_EQ(host.hourglass, (std::vector<bool>{true, false}));
    for (const auto& operation : all) EXPECT_TRUE(operation.kept);
    for (const auto& line : host.surface.ofKind(Kind::line)) EXPECT_EQ(line.drawStyle, 2);
    for (const auto& line : lines()) EXPECT_EQ(line.drawStyle, 0);
}

TEST_F(Drawing, OnlyTheCurvesAreWider) {
    view.LineWidthPx = 3;
    drawTrend();
    for (const auto& line : lines()) EXPECT_EQ(line.drawWidth, 3);
    for (const auto& line : host.surface.ofKind(Kind::line)) EXPECT_EQ(line.drawWidth, 1);
    EXPECT_EQ(host.surface.drawWidth(), 1);
}

TEST_F(Drawing, EveryLineStartsAtTheOrigin) {
    drawTrend();
    for (const auto& line : lines()) {
        EXPECT_EQ(line.x1, 0);
        EXPECT_EQ(line.y1, 0);
    }
    // RoCoS has its first stroke too, over the samples that it leaves out.
    drawing.drawChannel(rocosChannel);
    EXPECT_EQ(lines().back().points.front().x, 14);
}

TEST_F(Drawing, TheLoadingPanelShowsTheFile) {
    drawTrend();
    ASSERT_EQ(host.loading.size(), 1U);
    EXPECT_EQ(host.loading[0].first, "Loading:");
    EXPECT_EQ(host.loading[0].second, "26111514.52d");
    EXPECT_EQ(host.hidden, 1);
    EXPECT_EQ(host.progressMax, (1 + 7 + 4 + 4 + 1 + 8) * 200);
    ASSERT_EQ(host.labels.size(), 1U);
    EXPECT_EQ(host.labels[0].exhaustToggle, Show::show);
}

TEST_F(Drawing, ProgressCountsWhatIsOnByType) {
    EXPECT_EQ(progressMax(state.Config, 8, 100), 12 * 100);
    EXPECT_EQ(progressMax(state.Config, 20, 100), 12 * 100);
    EXPECT_EQ(progressMax(state.Config, 17, 100), 17 * 100);
    EXPECT_EQ(progressMax(state.Config, 25, 100), 25 * 100);
    EXPECT_EQ(overlayProgressMax(state.Config, 12, 100), 12 * 100);
    EXPECT_EQ(overlayProgressMax(state.Config, 17, 100), 16 * 100);
    EXPECT_EQ(overlayProgressMax(state.Config, 20, 100), 22 * 100);
    EXPECT_EQ(overlayProgressMax(state.Config, 43, 100), 24 * 100);
    state.Config.SlipVisible = 0;
    state.Config.AnalogVisible[5] = 0;
    EXPECT_EQ(progressMax(state.Config, 25, 100), 23 * 100);
}

TEST_F(Drawing, TheBarMovesOnceAChannelWhileLoading) {
    drawTrend();
    EXPECT_TRUE(host.progressValues.empty());
    view.LoadingBar = -1;
    drawTrend();
    ASSERT_EQ(host.progressValues.size(), 25U);
    EXPECT_EQ(host.progressValues[0], 1);
    EXPECT_EQ(host.progressValues[1], 201);
    EXPECT_EQ(host.progressValues[24], 24 * 200 + 1);
    EXPECT_EQ(view.ProgressCount, 0);
    host.progressValues.clear();
    state.Config.G_Res = 8;
    drawTrend();
    EXPECT_EQ(host.progressValues[0], 8);
    EXPECT_EQ(host.progressValues[1], 208); // 25 calls of 8, and the next
}

TEST_F(Drawing, AResolutionThatIsNotSetBecomesMedium) {
    for (const int set : {0, 9, 255}) {
        state.Config.G_Res = static_cast<std::uint8_t>(set);
        drawTrend();
        EXPECT_EQ(state.Config.G_Res, 4) << set;
    }
    for (const int set : {1, 2, 8}) {
        state.Config.G_Res = static_cast<std::uint8_t>(set);
        drawTrend();
        EXPECT_EQ(state.Config.G_Res, set);
    }
    // A single routine leaves the setting, and still comes to its end.
    state.Config.G_Res = 0;
    host.surface.forget();
    drawing.drawChannel(engineChannel);
    EXPECT_EQ(lines()[0].points.size(), 50U);
    EXPECT_EQ(state.Config.G_Res, 0);
}

TEST_F(Drawing, TheClutchNeedsItsLabel) {
    host.clutchVisible = false;
    drawTrend();
    EXPECT_EQ(drawn()[1], inputChannel);
}

TEST_F(Drawing, ChannelsThatAreOffAreNotDrawn) {
    state.Config.EngineVisible = 0;
    state.Config.ExhaustVisible.fill(0);
    drawTrend();
    EXPECT_EQ(drawn().front(), clutchChannel);
    EXPECT_EQ(drawn().back(), analogChannel(8));
}

TEST_F(Drawing, AMagnificationOfZeroIsWrittenBack) {
    state.Config.Text_Magnify.fill(0);
    drawing.drawChannel(tyreGrowthChannel);
    EXPECT_EQ(state.Config.Text_Magnify[24], 10);
    EXPECT_EQ(state.Config.Text_Magnify[5], 0);
    drawing.drawChannel(ratioChannel);
    EXPECT_EQ(state.Config.Text_Magnify[5], 50);
    drawing.drawChannel(engineChannel);
    EXPECT_EQ(state.Config.Text_Magnify[0], 0);
    drawing.drawOverlayChannel(analogChannel(2));
    EXPECT_EQ(state.Config.Text_Magnify[9], 1);
}

TEST_F(Drawing, AFailureOfOneRoutineLeavesTheOthers) {
    state.Run.image.header.BasketGearTeeth = 0;
    drawTrend();
    const auto all = lines();
    ASSERT_EQ(all.size(), 25U);
    EXPECT_EQ(all[0].points.size(), 200U);
    EXPECT_TRUE(all[1].points.empty()); // clutch
    EXPECT_TRUE(all[6].points.empty()); // slip
    EXPECT_EQ(all[24].points.size(), 200U);
    EXPECT_EQ(host.hidden, 1);
}

TEST_F(Drawing, ASurfaceWithoutMemoryIsToldToTheCaller) {
    host.surface.setUsable(false);
    EXPECT_FALSE(drawing.DrawTrend());
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(host.hourglass, (std::vector<bool>{true, false}));
}

TEST_F(Drawing, BarsIgnoreTheResolution) {
    state.Config.G_Res = 8;
    drawing.DrawSwitches();
    const auto boxes = host.surface.ofKind(Kind::box);
    ASSERT_EQ(boxes.size(), 200U);
    EXPECT_EQ(boxes[0].x1, 0);
    EXPECT_EQ(boxes[0].y1, 1060);
    EXPECT_EQ(boxes[0].x2, 1);
    EXPECT_EQ(boxes[0].y2, 1052);
    EXPECT_EQ(boxes[199].x2, 200);
    EXPECT_EQ(boxes[0].colour, 0xFF00FFU);
}

TEST_F(Drawing, TheOverlaysBarsLieUnderTheRuns) {
    view.OverlayLoaded = -1;
    drawing.DrawSwitches();
    const auto boxes = host.surface.ofKind(Kind::box);
    ASSERT_EQ(boxes.size(), 400U);
    EXPECT_EQ(boxes[0].y1, 1060);
    EXPECT_EQ(boxes[1].y1, 1051);
    EXPECT_EQ(boxes[1].x1, boxes[0].x1);
}

TEST_F(Drawing, TheOverlayIsAlignedByTimeZero) {
    drawTrend();
    host.surface.forget();
    state.Overlay.DataType = 12;
    view.OverlayLoaded = -1;
    drawing.OverLayDraw();
    const auto all = lines();
    ASSERT_EQ(all.size(), 13U); // by the overlay's type
    EXPECT_EQ(all[0].points.front(), (platform::Point{1 + 160 - 180, 50.1F}));
    EXPECT_EQ(all[0].points.size(), 200U); // the run's count
    EXPECT_EQ(all[0].drawStyle, 1);
    EXPECT_EQ(host.surface.drawStyle(), 1); // is not put back
    EXPECT_EQ(host.loading.back().first, "Overlaying:");
    EXPECT_EQ(host.progressMax, 12 * 200);
    EXPECT_EQ(host.surface.ofKind(Kind::box).size(), 400U);
}

TEST_F(Drawing, TheSameFileAsItsOwnOverlayLiesOnItself) {
    state.Overlay = state.Run;
    drawTrend();
    const auto own = lines();
    host.surface.forget();
    state.Overlay.DataType = 32;
    view.OverlayLoaded = -1;
    drawing.OverLayDraw();
    const auto laid = lines();
    ASSERT_EQ(own.size(), laid.size());
    for (std::size_t k = 0; k < own.size(); ++k) EXPECT_EQ(own[k].points, laid[k].points) << k;
}

TEST_F(Drawing, AnOverlayTakesItsColourAndSoDoesItsLabel) {
    view.RpmScale = 10;
    state.Config.OverlayColours = 0;
    drawing.drawOverlayChannel(engineChannel);
    EXPECT_EQ(lines()[0].colour, 1000U);
    state.Config.OverlayColours = 1;
    drawing.drawOverlayChannel(engineChannel);
    EXPECT_EQ(lines()[1].colour, 0xFFFFFFU - 1000);
    EXPECT_EQ(view.OverlayChannelColour, 0xFFFFFF - 1000);
    state.Config.GraphBackColour = 0xFFFFFF - 1000;
    drawing.drawOverlayChannel(engineChannel);
    EXPECT_EQ(lines()[2].colour, 1000U); // would land on the background
    using Told = std::pair<int, std::int32_t>;
    EXPECT_EQ(
        host.overlayLabelColours, (std::vector<Told>{{0, 1000}, {0, 0xFFFFFF - 1000}, {0, 1000}}));
}

TEST_F(Drawing, SlipAndRatioOfTheOverlayKeepTheRunsDrive) {
    view.RpmScale = 10;
    state.Overlay.image.header.CrankGearTeeth = 2;
    for (int i = 1; i <= 200; ++i) state.Overlay.image.samples[i].OutputRpm = 100;
    drawing.drawOverlayChannel(clutchChannel);
    EXPECT_FLOAT_EQ(lines()[0].points[9].y, 51); // 510 rpm, its own drive of 1
    drawing.drawOverlayChannel(ratioChannel);
    EXPECT_FLOAT_EQ(lines()[1].points[9].y, 2.55F); // the run's drive of 0.5
    state.Overlay.image.header.BasketGearTeeth = 0;
    drawing.drawOverlayChannel(slipChannel);
    EXPECT_EQ(lines()[2].points.size(), 200U);
    drawing.drawOverlayChannel(clutchChannel);
    EXPECT_TRUE(lines()[3].points.empty());
}

TEST_F(Drawing, TheRunsTypeDecidesAboutSharedExhausts) {
    state.Run.DataType = 20;
    state.Overlay.DataType = 32;
    drawing.drawOverlayChannel(exhaustChannel(1)); // bits 4 to 6 are 0 in every row
    EXPECT_EQ(lines()[0].points.size(), 200U);
    drawing.drawOverlayChannel(exhaustChannel(2));
    EXPECT_TRUE(lines()[1].points.empty());
    state.Run.DataType = 32;
    state.Overlay.DataType = 20;
    drawing.drawOverlayChannel(exhaustChannel(2));
    EXPECT_EQ(lines()[2].points.size(), 200U);
}

TEST_F(Drawing, ANewBackgroundRedrawsWhatTookItsColour) {
    drawTrend();
    host.surface.forget();
    state.Config.GraphBackColour = 1000; // the engine's
    state.Config.SlipColour = 1000;
    state.Config.MphColour = 1000;
    state.Config.RatioColour = 1000;
    state.Config.RatioVisible = 0;
    drawing.Change_Colour();
    EXPECT_EQ(state.Config.EngineColour, 0xFFFFFF);
    EXPECT_EQ(state.Config.RatioColour, 0xFFFFFF);
    EXPECT_EQ(state.Config.InputColour, 1002);
    EXPECT_EQ(lines().size(), 3U); // ratio is off
    EXPECT_EQ(host.surface.backColor(), 1000U);
    // The grid goes with Engine and with Mph, not with Slip.
    const auto& all = host.surface.operations();
    const auto isLine = [](const SurfaceOperation& one) { return one.kind == Kind::polyline; };
    EXPECT_NE(all.front().kind, Kind::polyline);
    const auto first = std::find_if(all.begin(), all.end(), isLine);
    EXPECT_EQ((first + 1)->kind, Kind::polyline);
    EXPECT_NE((first + 2)->kind, Kind::polyline);
    EXPECT_EQ(all.back().kind, Kind::polyline);
    EXPECT_TRUE(host.surface.ofKind(Kind::box).empty());
}

TEST_F(Drawing, ASwitchOnItsOwnColourIsRepainted) {
    state.Config.GraphBackColour = 0xFF00FF;
    drawing.Change_Colour();
    EXPECT_EQ(view.SwitchColourThrottle, 0xFFFFFF);
    ASSERT_EQ(host.surface.ofKind(Kind::box).size(), 200U);
    EXPECT_EQ(host.surface.ofKind(Kind::box)[0].colour, 0xFFFFFFU);
    state.Config.GraphBackColour = 0;
    drawing.Change_Colour();
    EXPECT_EQ(view.SwitchColourThrottle, 0xFF00FF);
    EXPECT_EQ(host.surface.ofKind(Kind::box).size(), 200U);
}

TEST_F(Drawing, WithoutARunColoursChangeAndNothingIsDrawn) {
    state.Run.SampleCount = 0;
    state.Config.GraphBackColour = 1000;
    drawing.Change_Colour();
    EXPECT_EQ(state.Config.EngineColour, 0xFFFFFF);
    EXPECT_TRUE(host.surface.operations().empty());
}

TEST_F(Drawing, CountsAndSettingsOutOfAllReason) {
    state.Run.SampleCount = 65535;
    state.Config.Text_Magnify.fill(255);
    state.Config.ComboScale.fill(255);
    state.Config.SmoothOption.fill(255);
    state.Config.MaxRpm = 255;
    state.Config.GridStyle = 255;
    state.Config.OverlayStyle = 255;
    view.OverlayLoaded = -1;
    state.Overlay.DataType = -1;
    state.Overlay.image.tail.TimeOffset = -32768;
    state.Run.image.tail.TimeOffset = 32767;
    for (const int type : {0, 8, 20, 25, 99, 255}) {
        state.Run.DataType = static_cast<std::uint8_t>(type);
        drawTrend();
        drawing.OverLayDraw();
    }
    EXPECT_EQ(view.RpmScale, 261);
}
