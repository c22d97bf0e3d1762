#include "tools/logger_simulator/model_run.h"

#include "tools/logger_simulator/run_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace kvo::simulator {
namespace {

// 100 mph from the launch at sample 11 on: 146.67 feet a second.
std::vector<Moment> steadyRun() {
    std::vector<Moment> moments(400);
    for (std::size_t i = 10; i < moments.size(); ++i) moments[i].mph = 100;
    return moments;
}

TEST(TrackTime, IsCountedFromTheLaunch) {
    const TrackTime sixty = trackTime(steadyRun(), 10, 60);
    EXPECT_NEAR(sixty.seconds, 60 / (5280.0 / 36), 1e-9);
    EXPECT_DOUBLE_EQ(sixty.mph, 100);
}

TEST(TrackTime, IsNothingPastTheEndOfTheRun) {
    EXPECT_EQ(trackTime(steadyRun(), 10, 1320).seconds, 0);
    EXPECT_EQ(trackTime({}, 10, 60).seconds, 0);
    EXPECT_EQ(trackTime(steadyRun(), 5000, 60).seconds, 0);
}

TEST(FillRun, MakesTheSameRunOfASeed) {
    const auto first = std::make_unique<core::RunImage>();
    const auto second = std::make_unique<core::RunImage>();
    fillRun(*first, 25, 1213, 80, 4);
    fillRun(*second, 25, 1213, 80, 4);
    EXPECT_TRUE(std::equal(first->samples.begin(), first->samples.end(), second->samples.begin()));
    fillRun(*second, 25, 1213, 80, 5);
    EXPECT_FALSE(std::equal(first->samples.begin(), first->samples.end(), second->samples.begin()));
}

TEST(FillRun, LeavesWhatLiesBehindTheRunAtZero) {
    const auto run = std::make_unique<core::RunImage>();
    run->samples[1300].EngineRpm = 7;
    fillRun(*run, 25, 1213, 80, 1);
    EXPECT_EQ(run->samples[1213].Index, 1213);
    EXPECT_EQ(run->samples[1300], core::RunSample{});
    EXPECT_EQ(run->tail.TimeOffset, 80);
}

TEST(FillRun, SharesOneTemperatureARowInType20) {
    const auto run = std::make_unique<core::RunImage>();
    const auto moments = fillRun(*run, 20, 2048, 160, 1);
    for (const int i : {1, 8, 500}) {
        const int channel = (run->samples[i].Status & 127) / 16;
        EXPECT_EQ(channel, i % 8);
        EXPECT_EQ(run->samples[i].Analog[7],
            moments[static_cast<std::size_t>(i - 1)].exhaust[static_cast<std::size_t>(channel)]);
        EXPECT_EQ(run->samples[i].Exhaust[1], 0);
    }
}

} // namespace
} // namespace kvo::simulator
