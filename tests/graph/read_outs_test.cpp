#include "graph/cursor.h"
#include "graph/read_outs.h"
#include "tests/support/graph_calls.h"

#include <gtest/gtest.h>

#include <map>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;

namespace {

// A run and an overlay whose rows are told apart by their values; the overlay's time zero lies 20
// samples behind the run's.
struct ReadOuts : ::testing::Test {
    ReadOuts() {
        state.Run.DataType = 32;
        state.Overlay.DataType = 25;
        state.Run.SampleCount = 1360;
        state.Overlay.SampleCount = 1860;
        view.OverlayLoaded = -1;
        state.Config.Text_Magnify.fill(1);
        prepare(state.Run.image, 160, 8000);
        prepare(state.Overlay.image, 180, 6000);
        state.Overlay.image.header.BasketGearTeeth = 1;
        view.RpmScale = 10;
        view.MphScale = 10;
    }
    static void prepare(core::RunImage& image, int timeOffset, int engine) {
        image.header.CrankGearTeeth = 1;
        image.header.BasketGearTeeth = 2;
        image.tail.TimeOffset = static_cast<std::int16_t>(timeOffset);
        image.analog.CrownTeeth = 40;
        image.analog.PinionTeeth = 10;
        image.analog.RearWheelDiameter = 30;
        image.analog.AnalogScale.fill(1);
        for (int i = 1; i <= core::maxSamples; ++i) {
            core::RunSample& row = image.samples[i];
            row.Index = static_cast<std::int16_t>(i);
            row.EngineRpm = static_cast<std::int16_t>(engine);
            row.InputRpm = 3000;
            row.OutputRpm = 2000;
            row.SpeedRaw = 10001;
            row.Analog.fill(100);
            row.Exhaust.fill(50);
        }
    }
    using Labels = std::map<std::pair<int, bool>, std::string>;
    static Labels asMap(const std::vector<LabelText>& labels) {
        Labels all;
        for (const LabelText& label : labels) all[{label.channel, label.overlay}] = label.text;
        return all;
    }
    Labels line(int sample) {
        return asMap(kvo::testing::timeLineTexts(state, view, sample).labels);
    }
    std::string under(float x, float y) {
        const PointerLabels labels{[this](int channel) { return channel >= firstOn; },
            [](int n) { return "Name" + std::to_string(n); }};
        return kvo::testing::textUnderPointer(state, view, x, y, labels).value_or("-");
    }
    core::SharedState state;
    GraphView view;
    int firstOn = 0; // channels below it are switched off
};

} // namespace

TEST_F(ReadOuts, TheOverlayIsReadAtTheSameTime) {
    state.Overlay.image.samples[320].EngineRpm = 4321;
    const Labels all = line(300);
    EXPECT_EQ(all.size(), 50U);
    EXPECT_EQ(all.at({engineChannel, false}), "8000");
    EXPECT_EQ(all.at({engineChannel, true}), "4321");
    EXPECT_EQ(all.at({exhaustChannel(3), true}), "200");
}

TEST_F(ReadOuts, OverlaySamplesOutsideTheRunAreNotRead) {
    EXPECT_EQ(line(1340).size(), 50U);
    EXPECT_EQ(line(1341).size(), 25U); // its sample is 1361
    state.Overlay.image.tail.TimeOffset = 60;
    EXPECT_EQ(line(100).size(), 25U); // its sample is 0
    EXPECT_EQ(line(101).size(), 50U);
    view.OverlayLoaded = 0;
    EXPECT_EQ(line(101).size(), 25U);
}

TEST_F(ReadOuts, TheOverlaysTypeDecidesItsLabels) {
    state.Overlay.DataType = 12;
    EXPECT_EQ(line(300).size(), 25U + 13U);
    state.Overlay.DataType = 20;
    state.Overlay.image.samples[320].Status = 0x70;
    const Labels all = line(300);
    EXPECT_EQ(all.size(), 25U + 16U);
    EXPECT_EQ(all.at({exhaustChannel(8), true}), "400");
}

TEST_F(ReadOuts, AFailureOfOneRunLeavesTheOther) {
    state.Run.image.header.BasketGearTeeth = 0;
    EXPECT_EQ(line(300).size(), 3U + 25U);
    state.Run.image.header.BasketGearTeeth = 2;
    state.Overlay.image.analog.PinionTeeth = 0;
    const Labels all = line(300);
    EXPECT_EQ(all.size(), 50U); // each label stands for itself
    EXPECT_EQ(all.at({tyreGrowthChannel, true}), "N/A");
    EXPECT_EQ(all.at({analogChannel(1), true}), "100");
}

TEST_F(ReadOuts, MeansComeOutSlightlyHigh) {
    view.OverlayLoaded = 0;
    const AverageTexts average = kvo::testing::AverageRange(state, view, 261, 361);
    EXPECT_FALSE(average.outside);
    EXPECT_EQ(average.loggerTime, "Time:1.01 / 2.01");
    const Labels all = asMap(average.labels);
    EXPECT_EQ(all.size(), 24U);                        // no RoCoS
    EXPECT_EQ(all.at({engineChannel, false}), "8080"); // 101 samples over 100
    EXPECT_EQ(all.at({clutchChannel, false}), "4040");
    EXPECT_EQ(all.at({inputChannel, false}), "3030");
    EXPECT_EQ(all.at({ratioChannel, false}), "4.00");
    EXPECT_EQ(all.at({slipChannel, false}), "25.0");
    EXPECT_EQ(all.at({mphChannel, false}), "50.51");
    EXPECT_EQ(all.at({tyreGrowthChannel, false}), "3.60 in");
    EXPECT_EQ(all.at({analogChannel(8), false}), "101");
    EXPECT_EQ(all.at({exhaustChannel(1), false}), "202"); // 50.5 x 4
}

TEST_F(ReadOuts, AnAverageOfAStandingVehicle) {
    view.OverlayLoaded = 0;
    for (int i = 261; i <= 361; ++i) {
        state.Run.image.samples[i].OutputRpm = 0;
        state.Run.image.samples[i].EngineRpm = 0;
        state.Run.image.samples[i].SpeedRaw = 0;
    }
    const Labels all = asMap(kvo::testing::AverageRange(state, view, 261, 361).labels);
    EXPECT_EQ(all.at({ratioChannel, false}), "");
    EXPECT_EQ(all.at({slipChannel, false}), "");
    EXPECT_EQ(all.at({mphChannel, false}), "0.00");
    EXPECT_EQ(all.at({tyreGrowthChannel, false}), "N/A");
}

TEST_F(ReadOuts, AStretchWithoutWidthFails) {
    const AverageTexts average = kvo::testing::AverageRange(state, view, 300, 300);
    EXPECT_FALSE(average.outside);
    EXPECT_TRUE(average.labels.empty());
    EXPECT_TRUE(kvo::testing::AverageRange(state, view, 299.6F, 300.4F).labels.empty());
}

TEST_F(ReadOuts, AStretchOutsideTheRunBeeps) {
    EXPECT_TRUE(kvo::testing::AverageRange(state, view, 0, 100).outside);
    EXPECT_TRUE(kvo::testing::AverageRange(state, view, 1300, 1361).outside);
    EXPECT_TRUE(kvo::testing::AverageRange(state, view, 1, 1e30F).outside);
    EXPECT_FALSE(kvo::testing::AverageRange(state, view, 1, 1360).outside);
    // Both ends are rounded to samples first.
    EXPECT_FALSE(kvo::testing::AverageRange(state, view, 0.6F, 1360.4F).outside);
}

TEST_F(ReadOuts, AnAverageShowsTheOverlayAtTheTimeLine) {
    view.CursorSample = 300;
    state.Overlay.image.samples[320].EngineRpm = 4321;
    const Labels all = asMap(kvo::testing::AverageRange(state, view, 400, 500).labels);
    EXPECT_EQ(all.at({engineChannel, false}), "8080");
    EXPECT_EQ(all.at({engineChannel, true}), "4321");
    view.CursorSample = 0;
    state.Overlay.image.tail.TimeOffset = 160;
    EXPECT_FALSE(asMap(kvo::testing::AverageRange(state, view, 400, 500).labels)
                     .contains({engineChannel, true}));
}

TEST_F(ReadOuts, TheOverlaysCurvesAreNamed) {
    EXPECT_EQ(under(300, 800), " Engine Rpm = 8000");
    EXPECT_EQ(under(300, 600), " Overlay Engine Rpm = 6000"); // and its clutch at 6000 behind it
    firstOn = clutchChannel;
    EXPECT_EQ(under(300, 600), " Overlay Clutch Rpm = 6000"); // its own drive of 1
    // A plain number, not a picture: 50.005.
    EXPECT_EQ(under(300, 500), " Mph = 50.01 ");
    for (int i = 1; i <= core::maxSamples; ++i) state.Run.image.samples[i].SpeedRaw = 0;
    EXPECT_EQ(under(300, 500), " Overlay Mph = 50.005");
}

// It is found where it is drawn, with the run's drive, and says its own value.
TEST_F(ReadOuts, SlipOfTheOverlayIsFoundAtTheHeightThatIsDrawn) {
    firstOn = slipChannel;
    state.Config.ComboScale[slipChannel] = 240;
    state.Run.image.samples[300].EngineRpm = 0; // no slip to be hit
    state.Overlay.image.samples[320].InputRpm = 1500;
    EXPECT_EQ(under(300, 290), " Overlay Input Slip = 75.0%"); // 6000 against 1500
}

TEST_F(ReadOuts, TheOverlaysBarsAreFoundBehindTheRuns) {
    state.Run.image.samples[300].Status = core::ShiftLight;
    state.Overlay.image.samples[320].Status = core::ShiftLight | core::TransBrake;
    EXPECT_EQ(under(300, 1070), " Shift Light ");
    EXPECT_EQ(under(300, 1069.5F), " Shift Light "); // both zones: the run's comes first
    EXPECT_EQ(under(300, 1069), " Overlay Shift Light ");
    EXPECT_EQ(under(300, 1026), " Overlay Trans Brake ");
    EXPECT_EQ(under(300, 1038), "-");
}

// They are drawn up to the overlay's own last sample, behind the end of its curves.
TEST_F(ReadOuts, TheOverlaysBarsAreFoundAsFarAsTheyAreDrawn) {
    state.Overlay.SampleCount = 1370;
    for (int i = 1355; i <= 1380; ++i) state.Overlay.image.samples[i].Status = core::TransBrake;
    EXPECT_EQ(under(1340, 1026), " Overlay Trans Brake ");
    EXPECT_EQ(under(1350, 1026), " Overlay Trans Brake ");
    EXPECT_EQ(under(1351, 1026), "-");
    firstOn = channelCount;
    EXPECT_EQ(under(1350, 600), "-");
    firstOn = 0;
    EXPECT_EQ(under(1350, 600), "-"); // the curves end with the run
    EXPECT_EQ(under(1340, 600), " Overlay Engine Rpm = 6000");
}

// The run's type says where the overlay's exhausts are drawn, the overlay's own what they read.
TEST_F(ReadOuts, AnOverlayOfOwnExhaustsOverATimeSharedRun) {
    state.Run.DataType = 20;
    firstOn = exhaustChannel(1);
    state.Overlay.image.samples[320].Analog[7] = 140;
    state.Overlay.image.samples[320].Status = 2 << 4;
    EXPECT_EQ(under(300, 140), " Overlay Exhaust Temp 3 = 200"); // of its byte, 50
    EXPECT_EQ(under(300, 144.9F), " Overlay Exhaust Temp 3 = 200");
    EXPECT_EQ(under(300, 145), "-");
    EXPECT_EQ(under(300, 50), "-");
    state.Run.DataType = 32;
    firstOn = exhaustChannel(2);
    state.Run.image.samples[300].Exhaust.fill(90);
    EXPECT_EQ(under(300, 50), " Overlay Exhaust Temp 2 = 200");
}

TEST_F(ReadOuts, AnAverageWithoutPinionOrBasketTeeth) {
    view.OverlayLoaded = 0;
    const auto average = [this] { return kvo::testing::AverageRange(state, view, 261, 361); };
    state.Run.image.analog.PinionTeeth = 0;
    Labels all = asMap(average().labels);
    EXPECT_EQ(all.size(), 24U);
    EXPECT_EQ(all.at({tyreGrowthChannel, false}), "N/A");
    EXPECT_EQ(all.at({mphChannel, false}), "50.51");
    EXPECT_EQ(all.at({exhaustChannel(8), false}), "202");
    state.Run.image.header.BasketGearTeeth = 0;
    all = asMap(average().labels);
    EXPECT_EQ(all.size(), 3U);
    EXPECT_EQ(all.at({engineChannel, false}), "8080");
    EXPECT_EQ(all.at({outputChannel, false}), "2020");
    EXPECT_EQ(average().emptied.size(), 22U);
    EXPECT_FALSE(average().outside);
}

TEST_F(ReadOuts, AnalogTypesThatAreNoneAreNotNamed) {
    firstOn = analogChannel(1);
    state.Run.image.tail.AnalogTypes.fill(5);
    state.Overlay.image.tail.AnalogTypes.fill(5);
    EXPECT_EQ(under(300, 100), "-");
    EXPECT_FALSE(line(300).contains({analogChannel(1), false}));
}

TEST(CursorPlaces, PositionsBeyondSixteenBitsFail) {
    EXPECT_EQ(cursorAt(2.5), 2);
    EXPECT_EQ(cursorAt(3.5), 4);
    EXPECT_FALSE(cursorAt(40000));
}
