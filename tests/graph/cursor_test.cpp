#include "graph/cursor.h"
#include "tests/support/graph_calls.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;

namespace {

// A run of 1360 equal samples with round numbers.
struct CursorOnRun : ::testing::Test {
    CursorOnRun() {
        state.Run.DataType = 32;
        state.Run.SampleCount = 1360;
        state.Config.Text_Magnify.fill(1);
        state.Run.image.header.CrankGearTeeth = 1;
        state.Run.image.header.BasketGearTeeth = 2;
        state.Run.image.tail.TimeOffset = 160;
        state.Run.image.analog.CrownTeeth = 40;
        state.Run.image.analog.PinionTeeth = 10;
        state.Run.image.analog.RearWheelDiameter = 30;
        for (int n = 1; n <= 8; ++n) {
            state.Run.image.analog.AnalogScale[n] = 0.5F;
            state.Run.image.analog.AnalogDecimals[n] = 1;
        }
        for (int i = 1; i <= 1360; ++i) state.Run.image.samples[i] = sampleAt(i);
        view.RpmScale = 10;
        view.MphScale = 10;
    }
    static core::RunSample sampleAt(int i) {
        core::RunSample row;
        row.Index = static_cast<std::int16_t>(i);
        row.EngineRpm = 8000;
        row.InputRpm = 3000;
        row.OutputRpm = 2000;
        row.SpeedRaw = 10000;
        for (int n = 1; n <= 8; ++n) {
            row.Analog[n] = static_cast<std::uint8_t>(40 + n);
            row.Exhaust[n] = static_cast<std::uint8_t>(120 + 10 * n);
        }
        return row;
    }
    std::map<int, std::string> texts(int sample) {
        std::map<int, std::string> all;
        for (const LabelText& label : kvo::testing::timeLineTexts(state, view, sample).labels)
            all[label.channel] = label.text;
        return all;
    }
    // What the pointer finds at (x, y); "-" for nothing.
    std::string under(float x, float y) {
        const PointerLabels labels{[this](int channel) { return !off.contains(channel); },
            [](int n) { return "Name" + std::to_string(n); }};
        return kvo::testing::textUnderPointer(state, view, x, y, labels).value_or("-");
    }
    core::SharedState state;
    GraphView view;
    std::set<int> off; // channels that are switched off
};

} // namespace

TEST_F(CursorOnRun, ReadOutsAtASample) {
    const ReadOutTexts line = kvo::testing::timeLineTexts(state, view, 311);
    EXPECT_EQ(line.loggerTime, "Time: 1.51 sec");
    EXPECT_EQ(kvo::testing::timeLineTexts(state, view, 60).loggerTime, "Time: -1.00 sec");
    auto all = texts(311);
    EXPECT_EQ(all[engineChannel], "8000");
    EXPECT_EQ(all[clutchChannel], "4000");
    EXPECT_EQ(all[inputChannel], "3000");
    EXPECT_EQ(all[outputChannel], "2000");
    EXPECT_EQ(all[slipChannel], "25.0");
    EXPECT_EQ(all[ratioChannel], "4.00"); // without the primary drive
    EXPECT_EQ(all[mphChannel], "50.00");
    EXPECT_EQ(all[rocosChannel], "0.00");
    EXPECT_EQ(all[tyreGrowthChannel], "3.60 in"); // 50 x 4 x 336 / 2000 = 33.6
    EXPECT_EQ(all[analogChannel(1)], "20.5");
    EXPECT_EQ(all[analogChannel(8)], "24.0");
    EXPECT_EQ(all[exhaustChannel(2)], "560");
    EXPECT_EQ(all.size(), 25U);
}

TEST_F(CursorOnRun, ATypeHasItsOwnLabels) {
    state.Run.DataType = 12;
    EXPECT_EQ(texts(300).size(), 13U);
    state.Run.DataType = 17;
    EXPECT_EQ(texts(300).size(), 17U);
    state.Run.DataType = 20;
    state.Run.image.samples[300].Status = 0x35; // exhaust 4, with two switches
    state.Run.image.samples[300].Analog[7] = 50;
    const auto shared = texts(300);
    EXPECT_EQ(shared.size(), 16U);
    EXPECT_EQ(shared.at(exhaustChannel(4)), "200");
    EXPECT_FALSE(shared.contains(exhaustChannel(3)));
    EXPECT_FALSE(shared.contains(analogChannel(7)));
}

TEST_F(CursorOnRun, WithoutBasketTeethOnlyWhatStandsInFrontIsShown) {
    state.Run.image.header.BasketGearTeeth = 0;
    const auto all = texts(300);
    EXPECT_EQ(all.size(), 3U);
    EXPECT_FALSE(all.contains(clutchChannel));
    EXPECT_EQ(under(300, 300), "-"); // the clutch is asked for before the input
    off = {clutchChannel, slipChannel, ratioChannel};
    EXPECT_EQ(under(300, 300), " Input Rpm = 3000");
}

TEST_F(CursorOnRun, ReadOutsThatHaveNoValueAreEmpty) {
    state.Run.image.samples[300].OutputRpm = 0;
    state.Run.image.samples[300].EngineRpm = 0;
    const auto all = texts(300);
    EXPECT_EQ(all.at(ratioChannel), "");
    EXPECT_EQ(all.at(slipChannel), "");
    EXPECT_EQ(all.at(tyreGrowthChannel), "N/A");
    EXPECT_EQ(texts(13).at(rocosChannel), "");
    EXPECT_EQ(texts(14).at(rocosChannel), "0.00");
}

TEST_F(CursorOnRun, OnlySamplesOfTheRunBearTheLine) {
    EXPECT_FALSE(kvo::testing::onRun(state, 0));
    EXPECT_TRUE(kvo::testing::onRun(state, 1));
    EXPECT_TRUE(kvo::testing::onRun(state, 1360));
    EXPECT_FALSE(kvo::testing::onRun(state, 1361));
}

TEST(Cursor, StepsOfTheKeys) {
    EXPECT_EQ(cursorStep(true, false, false, false), 1);
    EXPECT_EQ(cursorStep(true, true, false, false), 100);
    EXPECT_EQ(cursorStep(true, false, true, false), 50);
    EXPECT_EQ(cursorStep(true, false, false, true), 10);
    EXPECT_EQ(cursorStep(false, false, false, true), -10);
    EXPECT_EQ(cursorStep(false, true, true, false), -1);
    EXPECT_EQ(cursorStep(true, true, true, true), 1);
    EXPECT_EQ(cursorStep(true, false, true, true), 1);
}

TEST_F(CursorOnRun, SwitchesAreFoundInTheirBars) {
    state.Run.image.samples[300].Status = core::Dyna2Step | core::TransBrake;
    EXPECT_EQ(under(300, 1090), " Dyna 2 Step ");
    EXPECT_EQ(under(300, 1087), "-");
    EXPECT_EQ(under(300, 1097), "-");
    EXPECT_EQ(under(300, 1087.5F), " Dyna 2 Step ");
    EXPECT_EQ(under(300, 1074), "-"); // that bit is not set
    EXPECT_EQ(under(300, 1034), " Trans Brake ");
    EXPECT_EQ(under(301, 1034), "-");
    state.Run.image.samples[300].Status = core::ShiftLight | core::WideOpenThrottle;
    EXPECT_EQ(under(300, 1074), " Shift Light ");
    EXPECT_EQ(under(300, 1052), " Wide Open Throttle ");
}

TEST_F(CursorOnRun, EachCurveIsNamedWithItsValue) {
    state.Config.ComboScale[slipChannel] = 250;
    state.Config.ComboScale[ratioChannel] = 240;
    state.Config.ComboScale[rocosChannel] = 230;
    state.Config.ComboScale[tyreGrowthChannel] = 90;
    EXPECT_EQ(under(300, 800), " Engine Rpm = 8000");
    EXPECT_EQ(under(300, 804.9F), " Engine Rpm = 8000");
    EXPECT_EQ(under(300, 805), "-"); // strictly within 5
    EXPECT_EQ(under(300, 795), "-");
    EXPECT_EQ(under(300, 400), " Clutch Rpm = 4000");
    EXPECT_EQ(under(300, 300), " Input Rpm = 3000");
    EXPECT_EQ(under(300, 204), " Output Rpm = 2000");
    EXPECT_EQ(under(300, 275), " Input Slip = 25.0%");
    EXPECT_EQ(under(300, 242), " Drive Ratio = 2.00"); // with the primary drive
    EXPECT_EQ(under(300, 500), " Mph = 50.00 ");
    EXPECT_EQ(under(300, 230), " RoCoS = 0.00");
    EXPECT_EQ(under(300, 103.6F), " Tyre Growth = 3.60 in");
    EXPECT_EQ(under(300, 36.5F), "Name1 = 20.5");
    EXPECT_EQ(under(300, 170), " Exhaust Temp 5 = 680");
}

TEST_F(CursorOnRun, CurvesWithoutAValueOrLabelAreNotFound) {
    state.Run.image.samples[300].OutputRpm = 0;
    state.Config.ComboScale[ratioChannel] = 240;
    state.Config.ComboScale[tyreGrowthChannel] = 90;
    EXPECT_EQ(under(300, 240), "-");
    EXPECT_EQ(under(300, 90), "-");
    EXPECT_EQ(under(300, 800), " Engine Rpm = 8000");
    off = {engineChannel};
    EXPECT_EQ(under(300, 800), "-");
    EXPECT_EQ(under(0.4F, 300), "-");
    EXPECT_EQ(under(1361, 300), "-");
    EXPECT_EQ(under(1e30F, 300), "-");
}

TEST_F(CursorOnRun, TheEarlierOfTwoCurvesAtOneHeightWins) {
    state.Run.image.samples[300].InputRpm = 8000;
    EXPECT_EQ(under(300, 800), " Engine Rpm = 8000");
    off = {engineChannel};
    EXPECT_EQ(under(300, 800), " Input Rpm = 8000");
}

TEST_F(CursorOnRun, ACurveWhoseTextCannotBeFormedHidesNoOther) {
    core::RunImage& image = state.Run.image;
    image.samples[300].Analog[1] = image.samples[300].Analog[2] = 70;
    EXPECT_EQ(under(300, 70), "Name1 = 35.0");
    image.analog.AnalogScale[1] = std::numeric_limits<float>::infinity();
    EXPECT_EQ(under(300, 70), "Name2 = 35.0");
    image.analog.AnalogScale[1] = 0.5F;
    image.tail.AnalogTypes[1] = 5;
    EXPECT_EQ(under(300, 70), "Name2 = 35.0");
}

TEST_F(CursorOnRun, PositionsRoundToTheNearestSampleTiesToEven) {
    state.Run.image.samples[300].EngineRpm = 7000;
    EXPECT_EQ(under(300.5F, 700), " Engine Rpm = 7000");
    EXPECT_EQ(under(299.5F, 700), " Engine Rpm = 7000");
    EXPECT_EQ(under(301.5F, 700), "-");
}

TEST_F(CursorOnRun, TimeSharedExhaustsAndForeignAnalogsAreNotFound) {
    state.Run.DataType = 20;
    state.Run.image.samples[300].Analog[7] = 250;
    EXPECT_EQ(under(300, 170), "-");
    EXPECT_EQ(under(300, 250), "-");
    state.Run.DataType = 32;
    EXPECT_EQ(under(300, 170), " Exhaust Temp 5 = 680");
    EXPECT_EQ(under(300, 250), "Name7 = 125.0");
}

TEST(CursorDrag, TakesTheNearestSampleOfTheRun) {
    EXPECT_EQ(cursorDraggedTo(300.4, 1360), 300);
    EXPECT_EQ(cursorDraggedTo(300.5, 1360), 300);
    EXPECT_EQ(cursorDraggedTo(301.5, 1360), 302);
    EXPECT_EQ(cursorDraggedTo(0.6, 1360), 1);
    EXPECT_EQ(cursorDraggedTo(1360.4, 1360), 1360);
}

TEST(CursorDrag, EndsAtTheEndsOfTheRun) {
    EXPECT_EQ(cursorDraggedTo(-5, 1360), 1);
    EXPECT_EQ(cursorDraggedTo(1e9, 1360), 1360);
    EXPECT_EQ(cursorDraggedTo(-1e9, 1360), 1);
    EXPECT_EQ(cursorDraggedTo(5, 0), 1);
}

TEST(CursorAtTime, IsTheNearestSampleOfTheRun) {
    EXPECT_EQ(cursorAtTime(0, 160, 1360), 160);
    EXPECT_EQ(cursorAtTime(-1.6, 160, 1360), 1);
    EXPECT_EQ(cursorAtTime(1.234, 160, 1360), 283);
    EXPECT_EQ(cursorAtTime(99, 160, 1360), 1360);
}
