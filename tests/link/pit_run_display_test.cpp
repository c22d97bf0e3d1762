#include "link/pit_run_display.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

PitRunReadings pitReadings(const std::string& engine, const std::string& analog) {
    PitRunReadings readings;
    readings.LineNumber = " 7";
    readings.ERpm = engine;
    readings.Analog[2] = analog;
    readings.T[8] = " 400";
    return readings;
}

constexpr std::size_t secondAnalog = firstPitAnalog + 1;
constexpr std::size_t lastExhaust = firstPitExhaust + 7;

TEST(PitRunDisplay, KnowsTheSmallestAndTheLargestOfEachChannel) {
    PitRunDisplay display;
    for (const char* engine : {"3000", "800", "7440", "2000"})
        EXPECT_TRUE(display.take(pitReadings(engine, "-1.5")));
    const PitRange& engine = display.ranges()[0];
    EXPECT_EQ(engine.smallest, 800);
    EXPECT_EQ(engine.largest, 7440);
    EXPECT_EQ(engine.value, 2000);
    EXPECT_DOUBLE_EQ(engine.place(), 1200.0 / 6640);
    EXPECT_EQ(engine.text(), "Smallest 800, largest 7440");
    EXPECT_EQ(display.ranges()[secondAnalog].text(), "Smallest -1.5, largest -1.5");
    EXPECT_EQ(display.ranges()[lastExhaust].text(), "Smallest 400, largest 400");
}

TEST(PitRunDisplay, ItsPlacesAreTheEnds) {
    PitRunDisplay display;
    EXPECT_EQ(display.ranges()[secondAnalog].place(), 0);
    EXPECT_EQ(display.ranges()[secondAnalog].text(), "");
    display.take(pitReadings("0", "-3"));
    EXPECT_EQ(display.ranges()[secondAnalog].place(), 0); // all were alike
    display.take(pitReadings("0", "5"));
    EXPECT_EQ(display.ranges()[secondAnalog].place(), 1);
    display.take(pitReadings("0", "1"));
    EXPECT_EQ(display.ranges()[secondAnalog].place(), 0.5);
    display.take(pitReadings("0", "-3"));
    EXPECT_EQ(display.ranges()[secondAnalog].place(), 0);
}

TEST(PitRunDisplay, AChannelWithoutANumberStaysAsItWas) {
    PitRunDisplay display;
    display.take(pitReadings("800", "4"));
    PitRunReadings none;
    none.LineNumber = " 8";
    EXPECT_TRUE(display.take(none));
    EXPECT_EQ(display.latest().LineNumber, " 8");
    EXPECT_EQ(display.latest().ERpm, "800");
    EXPECT_EQ(display.latest().Analog[2], "4");
    EXPECT_EQ(display.latest().Analog[3], std::nullopt);
    EXPECT_EQ(display.ranges()[0].value, 800);
    EXPECT_FALSE(display.ranges()[1].seen);
}

TEST(PitRunDisplay, StandsStillAndStillSeesWhatComes) {
    PitRunDisplay display;
    display.take(pitReadings("800", "4"));
    display.freeze(true);
    EXPECT_TRUE(display.frozen());
    EXPECT_FALSE(display.take(pitReadings("9000", "4")));
    EXPECT_FALSE(display.take(pitReadings("5000", "4")));
    EXPECT_EQ(display.ranges()[0].largest, 800);
    display.freeze(false);
    EXPECT_FALSE(display.frozen());
    EXPECT_EQ(display.latest().ERpm, "5000");
    EXPECT_EQ(display.ranges()[0].largest, 9000);
    EXPECT_EQ(display.ranges()[0].value, 5000);
}

TEST(PitRunDisplay, EachStartBeginsAnew) {
    PitRunDisplay display;
    display.take(pitReadings("800", "4"));
    display.freeze(true);
    display.start();
    EXPECT_FALSE(display.frozen());
    EXPECT_FALSE(display.ranges()[0].seen);
    EXPECT_EQ(display.latest().ERpm, std::nullopt);
    EXPECT_TRUE(display.take(pitReadings("900", "4")));
    EXPECT_EQ(display.ranges()[0].smallest, 900);
}

} // namespace
} // namespace kvo::link
