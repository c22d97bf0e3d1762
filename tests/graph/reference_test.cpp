#include "graph/reference.h"

#include "tests/support/graph_calls.h"

#include <gtest/gtest.h>

#include <map>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;

namespace {

// A run whose engine speed is ten times its sample.
struct ReferenceOnARun : ::testing::Test {
    ReferenceOnARun() {
        state.Run.DataType = 32;
        state.Run.SampleCount = 1360;
        core::RunImage& image = state.Run.image;
        image.header.CrankGearTeeth = 1;
        image.header.BasketGearTeeth = 2;
        image.tail.TimeOffset = 160;
        image.analog.CrownTeeth = 40;
        image.analog.PinionTeeth = 10;
        image.analog.RearWheelDiameter = 30;
        image.analog.AnalogScale.fill(0.5F);
        image.analog.AnalogDecimals[1] = 1;
        for (int i = 1; i <= core::maxSamples; ++i) {
            core::RunSample& row = image.samples[i];
            row.Index = static_cast<std::int16_t>(i);
            row.EngineRpm = static_cast<std::int16_t>(10 * i);
            row.InputRpm = 3000;
            row.OutputRpm = 2000;
            row.SpeedRaw = 100 * i;
            row.Analog.fill(static_cast<std::uint8_t>(i / 10));
            row.Exhaust.fill(static_cast<std::uint8_t>(i / 10));
        }
    }
    using Labels = std::map<int, std::string>;
    Differences between(const ReadOutTexts& here, std::optional<int> cursor, int reference) {
        const ShownRuns runs = kvo::testing::shownRuns(state, view);
        return differences(
            {runs, state.Config, state.AnalogPicture, view}, here, cursor, reference);
    }
    Differences between(int cursor, int reference) {
        return between(kvo::testing::timeLineTexts(state, view, cursor), cursor, reference);
    }
    static Labels asMap(const Differences& all) {
        Labels labels;
        for (const LabelText& label : all.labels) {
            EXPECT_TRUE(label.overlay);
            labels[label.channel] = label.text;
        }
        return labels;
    }
    core::SharedState state;
    GraphView view;
};

} // namespace

TEST(Difference, IsOfTheNumbersAsTheyAreShown) {
    EXPECT_EQ(difference("5595", "5475"), "+120");
    EXPECT_EQ(difference("5475", "5595"), "-120");
    EXPECT_EQ(difference("1.10", "0.95"), "+0.15");
    EXPECT_EQ(difference("0.95", "1.00"), "-0.05");
    EXPECT_EQ(difference("-0.35 in", "0.20 in"), "-0.55 in");
    EXPECT_EQ(difference("-3", "-12"), "+9");
    EXPECT_EQ(difference(".5", "1"), "-0.5"); // the finer of both
}

TEST(Difference, OfNothingHasNoSign) {
    EXPECT_EQ(difference("1.51", "1.51"), "0.00");
    EXPECT_EQ(difference("7", "7"), "0");
    EXPECT_EQ(difference("-0.00 in", "0.00 in"), "0.00 in");
}

TEST(Difference, WithoutANumberIsEmpty) {
    EXPECT_EQ(difference("", "12"), "");
    EXPECT_EQ(difference("12", ""), "");
    EXPECT_EQ(difference("N/A", "0.12 in"), "");
    EXPECT_EQ(difference("0.12 in", "N/A"), "");
    EXPECT_EQ(difference("-", "."), "");
    EXPECT_EQ(difference("12 in", "12"), ""); // not the same unit
    EXPECT_EQ(difference("1234567890123456", "1"), "");
    EXPECT_EQ(difference("123456789012345", "123456789012344"), "+1");
}

TEST_F(ReferenceOnARun, EveryChannelIsCompared) {
    const Differences all = between(500, 460);
    EXPECT_EQ(all.time, "+0.40 sec");
    const Labels labels = asMap(all);
    EXPECT_EQ(labels.size(), 25U);
    EXPECT_EQ(labels.at(engineChannel), "+400");
    EXPECT_EQ(labels.at(clutchChannel), "+200");
    EXPECT_EQ(labels.at(inputChannel), "0");
    EXPECT_EQ(labels.at(ratioChannel), "+0.20");
    EXPECT_EQ(labels.at(mphChannel), "+20.00");
    EXPECT_EQ(labels.at(analogChannel(1)), "+2.0");
    EXPECT_EQ(labels.at(exhaustChannel(8)), "+16");
    EXPECT_EQ(between(460, 500).time, "-0.40 sec");
    EXPECT_EQ(between(460, 460).time, "0.00 sec");
}

TEST_F(ReferenceOnARun, WhatOneOfBothDoesNotHaveIsEmpty) {
    state.Run.image.samples[460].OutputRpm = 0; // no ratio, no growth there
    const Labels labels = asMap(between(500, 460));
    EXPECT_EQ(labels.at(ratioChannel), "");
    EXPECT_EQ(labels.at(tyreGrowthChannel), "");
    EXPECT_EQ(labels.at(outputChannel), "+2000");
    EXPECT_EQ(asMap(between(460, 500)).at(ratioChannel), "");
    EXPECT_EQ(asMap(between(500, 5)).at(rocosChannel), ""); // too near to the run's begin
}

TEST_F(ReferenceOnARun, MeansAreComparedWithoutATime) {
    const auto means = kvo::testing::AverageRange(state, view, 500, 600);
    const Differences all = between(means, std::nullopt, 460);
    EXPECT_EQ(all.time, "");
    EXPECT_EQ(asMap(all).at(inputChannel), "+30"); // 101 samples over 100
}

// One exhaust a sample: only the one that both samples carry can be compared.
TEST_F(ReferenceOnARun, ATimeSharedExhaustNeedsBothSamples) {
    state.Run.DataType = 20;
    state.Run.image.samples[500].Status = 0x20;
    state.Run.image.samples[460].Status = 0x20;
    EXPECT_EQ(asMap(between(500, 460)).at(exhaustChannel(3)), "+16");
    state.Run.image.samples[460].Status = 0x30;
    EXPECT_EQ(asMap(between(500, 460)).at(exhaustChannel(3)), "");
    EXPECT_EQ(asMap(between(500, 460)).at(exhaustChannel(4)), "");
}

TEST_F(ReferenceOnARun, TheStateOfTheWindowIsLeftAlone) {
    const ReadOutTexts here = kvo::testing::timeLineTexts(state, view, 500);
    view.RocosText = "as it was";
    state.AnalogPicture = "#";
    between(here, 500, 460);
    EXPECT_EQ(view.RocosText, "as it was");
    EXPECT_EQ(state.AnalogPicture, "#");
}
