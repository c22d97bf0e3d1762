#include "library/statistics.h"

#include <gtest/gtest.h>

#include <memory>

namespace kvo::library {
namespace {

class Statistics : public ::testing::Test {
protected:
    void SetUp() override {
        for (int i = 1; i <= core::maxSamples; ++i) {
            core::RunSample& row = run->image.samples[i];
            row.Index = static_cast<std::int16_t>(i);
            row.EngineRpm = 1000;
            row.SpeedRaw = 10 * i;
        }
    }
    // Of the run with so many rows, a type and a time zero.
    RunStatistics cal(int rows, int type, int timeOffset, std::string_view elapsed) {
        run->SampleCount = static_cast<std::uint16_t>(rows);
        run->DataType = static_cast<std::uint8_t>(type);
        run->image.tail.TimeOffset = static_cast<std::int16_t>(timeOffset);
        return Cal(*run, elapsed);
    }
    const std::unique_ptr<core::OpenRun> run = std::make_unique<core::OpenRun>();
    std::string picture = "####0";
};

TEST_F(Statistics, rangeIsTheWholeRunWithoutAnElapsedTime) {
    for (const char* text : {"", "0", "abc", "-3"}) {
        const RunStatistics got = cal(2048, 20, 160, text);
        EXPECT_EQ(got.FromSample, 160) << text;
        EXPECT_EQ(got.ToSample, 2048) << text;
        EXPECT_FALSE(got.failed);
    }
}

TEST_F(Statistics, rangeEndsAtTheElapsedTimeNotShiftedByTimeZero) {
    const RunStatistics got = cal(2048, 25, 160, "8.50");
    EXPECT_EQ(got.FromSample, 160);
    EXPECT_EQ(got.ToSample, 850);
    EXPECT_EQ(got.PeakSpeed, 8500) << "the peak inside the range, not of the run";
}

TEST_F(Statistics, rangePastTheRunEndsWithIt) {
    EXPECT_EQ(cal(1213, 25, 80, "99").ToSample, 1213);
}

TEST_F(Statistics, anElapsedTimeBeyondSixteenBitsFails) {
    EXPECT_TRUE(cal(1213, 25, 80, "400").failed);
}

TEST_F(Statistics, tellsTheRangeInSecondsFromTheLaunch) {
    const auto range = [&](int timeOffset, const char* Text_ET) {
        return statisticsTexts(cal(2048, 25, timeOffset, Text_ET), *run, 0, picture).Range;
    };
    EXPECT_EQ(range(160, "6.35"), "0.00 to 4.75 s");
    EXPECT_EQ(range(160, ""), "0.00 to 18.88 s");
    EXPECT_EQ(range(80, "0.80"), "0.00 to 0.00 s") << "the averages fail, the range is known";
    EXPECT_EQ(range(160, "1"), "0.00 to -0.60 s") << "it ends before the launch";
    EXPECT_EQ(range(80, "400"), "") << "no sample number";
}

TEST_F(Statistics, rpmSumsHoldTheFirstRowTwiceAndTheDivisorIsTheWidth) {
    run->image.samples[101].EngineRpm = 2000;
    run->image.samples[102].EngineRpm = 3001;
    // rows 100 to 102: (1000 + 1000 + 2000 + 3001) / 2, a tie to even.
    const RunStatistics got = cal(2048, 25, 100, "1.02");
    EXPECT_EQ(got.Rpm.Ave, 3500);
    EXPECT_EQ(got.Rpm.Min, 1000);
    EXPECT_EQ(got.Rpm.Max, 3001);
}

TEST_F(Statistics, allThreeRpmSumsHoldTheFirstRowTwice) {
    run->image.samples[100].InputRpm = 600;
    run->image.samples[101].InputRpm = 20;
    run->image.samples[100].OutputRpm = 300;
    run->image.samples[102].OutputRpm = 10;
    const RunStatistics got = cal(2048, 25, 100, "1.02");
    EXPECT_EQ(got.Input.Ave, 610) << "(600 + 600 + 20) / 2";
    EXPECT_EQ(got.Pinion.Ave, 305) << "(300 + 300 + 10) / 2";
}

TEST_F(Statistics, aRangeThatEndsBeforeTheLaunchIsTheFirstRow) {
    const RunStatistics got = cal(2048, 25, 160, "1.00");
    EXPECT_EQ(got.PeakSpeed, 1600);
    EXPECT_EQ(got.Rpm.Min, 1000);
    EXPECT_EQ(got.Rpm.Max, 1000);
    EXPECT_FALSE(got.failed);
}

TEST_F(Statistics, eachShaftHasItsOwnLeastAndGreatest) {
    for (int i = 100; i <= 102; ++i) {
        run->image.samples[i].InputRpm = static_cast<std::int16_t>(10 * i);
        run->image.samples[i].OutputRpm = static_cast<std::int16_t>(-i);
    }
    const RunStatistics got = cal(2048, 25, 100, "1.02");
    EXPECT_EQ(got.Input.Min, 1000);
    EXPECT_EQ(got.Input.Max, 1020);
    EXPECT_EQ(got.Pinion.Min, -102);
    EXPECT_EQ(got.Pinion.Max, -100);
}

TEST_F(Statistics, temperaturesAreInTheUnitOfTheConfiguration) {
    for (int i = 100; i <= 110; ++i) run->image.samples[i].Exhaust[3] = 100;
    run->image.samples[105].Exhaust[3] = 200;
    const RunStatistics got = cal(2048, 25, 100, "1.10");
    EXPECT_EQ(got.E[3].Ave, 120) << "(10 x 100 + 200) / 10";
    const StatisticsTexts celsius = statisticsTexts(got, *run, 0, picture);
    EXPECT_EQ(celsius.E[3].Min, " 400");
    EXPECT_EQ(celsius.E[3].Max, " 800");
    EXPECT_EQ(celsius.E[3].Ave, " 480");
    const StatisticsTexts fahrenheit = statisticsTexts(got, *run, -1, picture);
    EXPECT_EQ(fahrenheit.E[3].Min, " 752");
    EXPECT_EQ(fahrenheit.E[3].Ave, " 896");
}

TEST_F(Statistics, analogSumsHoldTheFirstRowOnce) {
    run->image.samples[100].Analog[1] = 10;
    run->image.samples[101].Analog[1] = 20;
    run->image.samples[102].Analog[1] = 30;
    run->image.samples[100].Analog[8] = 1;
    run->image.samples[102].Analog[8] = 3;
    const RunStatistics got = cal(2048, 25, 100, "1.02");
    EXPECT_EQ(got.A[1].Ave, 30) << "60 / 2";
    EXPECT_EQ(got.A[8].Ave, 2);
    EXPECT_EQ(got.A[8].Min, 0);
}

TEST_F(Statistics, aRangeOfNoWidthFailsAndKeepsWhatItHas) {
    const RunStatistics got = cal(2048, 25, 100, "1.00");
    EXPECT_TRUE(got.failed);
    EXPECT_EQ(got.Rpm.Max, 1000);
    EXPECT_EQ(got.Rpm.Ave, std::nullopt);
    const StatisticsTexts texts = statisticsTexts(got, *run, 0, picture);
    EXPECT_EQ(texts.Rpm.Max, " 1000");
    EXPECT_EQ(texts.Rpm.Ave, "");
}

TEST_F(Statistics, timeSharedTemperaturesGoToTheChannelTheirRowNames) {
    for (int i = 100; i <= 110; ++i) {
        core::RunSample& row = run->image.samples[i];
        row.Status = static_cast<std::uint8_t>((i % 2) * 16 + 15);
        row.Analog[7] = static_cast<std::uint8_t>(i % 2 ? 60 : 50);
    }
    // The bytes that other types keep their temperatures in are none of this type's.
    run->image.samples[100].Exhaust.fill(250);
    const RunStatistics got = cal(2048, 20, 100, "1.10");
    EXPECT_EQ(got.E[1].Min, 50);
    EXPECT_EQ(got.E[1].Max, 50);
    EXPECT_EQ(got.E[1].Ave, 30) << "6 readings of 50 over a width of 10";
    EXPECT_EQ(got.E[2].Max, 60);
    EXPECT_EQ(got.E[3].Max, 0);
    EXPECT_EQ(got.A[7].Ave, std::nullopt) << "no pass of its own";
}

TEST_F(Statistics, showsTheRowsOfTheDataType) {
    const auto shown = [&](int type) {
        const RunStatistics statistics = cal(1000, type, 160, "");
        const StatisticsTexts texts = statisticsTexts(statistics, *run, 0, picture);
        std::string rows;
        for (int c = 1; c <= 8; ++c) rows += texts.A[c].shown ? 'a' : '-';
        return rows + (texts.E[1].shown && texts.E[8].shown ? "e" : "-");
    };
    EXPECT_EQ(shown(8), "aaaa-----");
    EXPECT_EQ(shown(12), "aaaa-----");
    EXPECT_EQ(shown(17), "aaaaaaaa-");
    EXPECT_EQ(shown(20), "aaaaaa--e");
    EXPECT_EQ(shown(25), "aaaaaaaae");
    EXPECT_EQ(shown(43), "aaaaaaaae");
}

TEST_F(Statistics, analogRowsGoThroughTheirKind) {
    for (int i = 1; i <= core::maxSamples; ++i) {
        for (int c = 1; c <= 4; ++c) run->image.samples[i].Analog[c] = 51;
    }
    run->image.tail.AnalogTypes[1] = 1;
    run->image.tail.AnalogTypes[2] = 2;
    run->image.tail.AnalogTypes[3] = 3;
    run->image.tail.AnalogTypes[4] = 9;
    run->image.analog.AnalogScale[2] = 0.5F;
    run->image.analog.AnalogOffset[2] = 1;
    run->image.analog.AnalogDecimals[2] = 1;
    const RunStatistics statistics = cal(2520, 8, 160, "");
    const StatisticsTexts texts = statisticsTexts(statistics, *run, 0, picture);
    EXPECT_EQ(texts.A[1].Max, " 204");
    EXPECT_EQ(texts.A[2].Max, "26.5");
    EXPECT_EQ(texts.A[3].Max, "11.0");
    EXPECT_EQ(texts.A[4].Max, "") << "a kind that is not known shows nothing";
}

TEST_F(Statistics, captionDropsTheOverlay) {
    EXPECT_EQ(statisticsCaption("Data File: 26111514.52d"), " Statistics For :  26111514.52d");
    EXPECT_EQ(
        statisticsCaption("Data File: one    Overlay File: two"), " Statistics For :  one    ");
    EXPECT_EQ(statisticsCaption("short"), " Statistics For : ");
}

TEST_F(Statistics, theInfoIsOfTheSameName) {
    EXPECT_EQ(infoCaption("Data File: 26111514.52d"), "Info For :  26111514.52d");
    EXPECT_EQ(infoCaption("Data File: one    Overlay File: two"), "Info For :  one    ");
}

TEST_F(Statistics, horsepowerWantsTimeAndWeight) {
    EXPECT_EQ(horsepower("8.5", 2000), "643");
    EXPECT_EQ(horsepower("", 2000), std::nullopt);
    EXPECT_EQ(horsepower("0", 2000), std::nullopt);
    EXPECT_EQ(horsepower("8.5", 0), std::nullopt);
    EXPECT_EQ(horsepower("8.5", -1), std::nullopt);
}

TEST_F(Statistics, hostileStatesReadNothingOutsideTheRun) {
    EXPECT_NO_FATAL_FAILURE((void)cal(65535, 25, 1, ""));
    EXPECT_NO_FATAL_FAILURE((void)cal(30000, 20, 1, "300"));
    EXPECT_NO_FATAL_FAILURE((void)cal(1213, 25, -500, ""));
    EXPECT_NO_FATAL_FAILURE((void)cal(1213, 25, 2000, "0.01"));
}

} // namespace
} // namespace kvo::library
