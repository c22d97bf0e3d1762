#include "graph/curves.h"

#include "channels/channels.h"
#include "channels/derived.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;
using platform::Point;

namespace {

// A run whose every word is made from the sample's number.
struct Curves : ::testing::Test {
    Curves() {
        image.header.CrankGearTeeth = 1;
        image.header.BasketGearTeeth = 2;
        image.analog.CrownTeeth = 40;
        image.analog.PinionTeeth = 10;
        image.analog.RearWheelDiameter = 30;
        for (int i = 1; i <= core::maxSamples; ++i) fill(i);
        config.Text_Magnify.fill(2);
        run.image = &image;
        run.slipDrive = &image.header;
        run.rows = 100;
        scale.rpmScale = 10;
        scale.mphScale = 5;
    }
    void fill(int i) {
        core::RunSample& row = image.samples[i];
        row.EngineRpm = static_cast<std::int16_t>(i * 10);
        row.InputRpm = static_cast<std::int16_t>(i * 4);
        row.OutputRpm = static_cast<std::int16_t>(i);
        row.SpeedRaw = i * 200;
        for (int n = 1; n <= 8; ++n) {
            row.Analog[n] = static_cast<std::uint8_t>((i * n) % 256);
            row.Exhaust[n] = static_cast<std::uint8_t>((i + n) % 256);
        }
        // One exhaust after the other, as a type 20 logger sends them.
        row.Status = static_cast<std::uint8_t>((i % 8) << 4 | 5);
    }
    const std::vector<Point>& curve(int channel) {
        visited = makeCurve(run, scale, config, channel, points);
        return points;
    }
    void smooth(int option) { config.SmoothOption[static_cast<std::size_t>(option)] = 1; }

    core::RunImage image;
    core::AppConfig config;
    RunView run;
    CurveScale scale;
    std::vector<Point> points;
    int visited = 0;
};

} // namespace

TEST_F(Curves, RpmIsDividedByItsScaleAndRaised) {
    config.ComboScale[engineChannel] = 40;
    EXPECT_EQ(curve(engineChannel).size(), 100U);
    EXPECT_EQ(points[0], (Point{1, 41}));
    EXPECT_EQ(points[99], (Point{100, 140}));
    EXPECT_EQ(visited, 100);
    EXPECT_EQ(curve(clutchChannel)[2], (Point{3, 1.5F}));
    EXPECT_EQ(curve(inputChannel)[9], (Point{10, 4}));
    EXPECT_EQ(curve(outputChannel)[9], (Point{10, 1}));
}

TEST_F(Curves, OtherChannelsAreMagnified) {
    EXPECT_EQ(curve(mphChannel)[9], (Point{10, 50}));
    config.ComboScale[slipChannel] = 100;
    EXPECT_EQ(curve(slipChannel)[9], (Point{10, 140})); // 20 percent
    EXPECT_EQ(curve(ratioChannel)[9], (Point{10, 10})); // 0.5 x 100 / 10, twice
    EXPECT_EQ(curve(analogChannel(3))[9], (Point{10, 60}));
    EXPECT_EQ(curve(exhaustChannel(3))[9], (Point{10, 26}));
    config.Text_Magnify[slipChannel] = 255;
    EXPECT_EQ(curve(slipChannel)[9], (Point{10, 5200}));
}

TEST_F(Curves, AMagnificationOfZeroCountsAsItsDefault) {
    config.Text_Magnify.fill(0);
    EXPECT_EQ(magnification(config, slipChannel), 10);
    EXPECT_EQ(magnification(config, ratioChannel), 50);
    EXPECT_EQ(magnification(config, tyreGrowthChannel), 10);
    EXPECT_EQ(magnification(config, analogChannel(1)), 1);
    EXPECT_EQ(curve(ratioChannel)[9], (Point{10, 250}));
}

TEST_F(Curves, StepsThinAllCurves) {
    scale.step = 4;
    EXPECT_EQ(curve(engineChannel).size(), 25U);
    EXPECT_EQ(points.back().x, 97); // the last sample is not drawn
    scale.step = 8;
    EXPECT_EQ(curve(analogChannel(1)).size(), 13U);
    EXPECT_EQ(points.back().x, 97);
}

TEST_F(Curves, RpmSmoothsFiveSamplesForwardWhileTheyFit) {
    smooth(0);
    image.samples[3].EngineRpm = 31;
    curve(engineChannel);
    EXPECT_EQ(points[0].y, 3.0F);   // (10 + 20 + 31 + 40 + 50) / 5 = 30.2, a whole number
    EXPECT_EQ(points[93].y, 96.0F); // sample 94: the last that smooths
    EXPECT_EQ(points[94].y, 95.0F); // sample 95: as it is
}

TEST_F(Curves, RunsOfLessThanFiveSamplesNeverSmooth) {
    config.SmoothOption.fill(1);
    for (const int count : {1, 2, 4, 5, 6}) {
        run.rows = count;
        EXPECT_EQ(curve(engineChannel)[0].y, 1) << count;
    }
    run.rows = 7;
    EXPECT_EQ(curve(engineChannel)[0].y, 3);
    run.rows = 0;
    EXPECT_TRUE(curve(engineChannel).empty());
}

TEST_F(Curves, TheClutchIsCutBeforeItIsSmoothed) {
    smooth(1);
    for (int i = 1; i <= 5; ++i) image.samples[i].EngineRpm = 3; // 1.5 each, cut to 1
    EXPECT_FLOAT_EQ(curve(clutchChannel)[0].y, 0.1F);
}

TEST_F(Curves, MphSmoothsWithTheOutputShaftsBox) {
    smooth(5); // the box that bears its name
    EXPECT_EQ(curve(mphChannel)[0].y, 5);
    smooth(7);
    EXPECT_EQ(curve(mphChannel)[0].y, 15);
    EXPECT_FLOAT_EQ(curve(outputChannel)[0].y, 0.3F);
}

TEST_F(Curves, AnOptionOtherThanOneIsNoSmoothing) {
    config.SmoothOption[0] = 2;
    EXPECT_EQ(curve(engineChannel)[0].y, 1);
}

TEST_F(Curves, AnalogsRoundTheirMeanTiesToEven) {
    smooth(17);
    curve(analogChannel(1));
    EXPECT_EQ(points[0].y, 12);   // 5.5 to 6, magnified
    EXPECT_EQ(points[1].y, 12);   // 6.5 to 6
    EXPECT_EQ(points[88].y, 188); // sample 89: the last that smooths, 93.5 to 94
    EXPECT_EQ(points[89].y, 180); // sample 90
}

TEST_F(Curves, ExhaustsKeepTheirMean) {
    smooth(9);
    curve(exhaustChannel(1));
    EXPECT_EQ(points[0].y, 13); // 6.5, magnified
    EXPECT_EQ(points[88].y, 189);
    EXPECT_EQ(points[89].y, 182);
}

TEST_F(Curves, LambdaSensorsStandTwentyHigherBehindTheSmoothing) {
    image.tail.AnalogTypes[1] = 3;
    EXPECT_EQ(curve(analogChannel(1))[0].y, 42);
    smooth(17);
    EXPECT_EQ(curve(analogChannel(1))[0].y, 52);
}

TEST_F(Curves, RocosIsDrawnInsideItsBoundsOnly) {
    EXPECT_EQ(curve(rocosChannel).size(), 73U);
    EXPECT_EQ(points.front().x, 14);
    EXPECT_EQ(points.back().x, 86); // SampleCount - 14
    EXPECT_EQ(visited, 100);
    scale.step = 8;
    EXPECT_EQ(curve(rocosChannel).front().x, 17);
}

TEST_F(Curves, SharedExhaustsLookAtEverySample) {
    run.drawType = 20;
    scale.step = 8;
    smooth(11);
    curve(exhaustChannel(3)); // bits 4 to 6 say 2
    EXPECT_EQ(points.size(), 13U);
    EXPECT_EQ(points[0], (Point{2, 28})); // Analog(7) = 14
    EXPECT_EQ(points[1].x, 10);
    EXPECT_EQ(visited, 100);
}

TEST_F(Curves, AnOverlayIsShifted) {
    run.shift = 100;
    EXPECT_EQ(curve(engineChannel).front(), (Point{-99, 1}));
    EXPECT_EQ(points.back().x, 0);
}

TEST_F(Curves, WithoutBasketTeethTheRoutineEnds) {
    image.header.BasketGearTeeth = 0;
    EXPECT_TRUE(curve(clutchChannel).empty());
    EXPECT_EQ(visited, 1);
    EXPECT_TRUE(curve(slipChannel).empty());
    // The ratio asks for the primary drive only where the output shaft turns.
    for (int i = 1; i <= 9; ++i) image.samples[i].OutputRpm = 0;
    EXPECT_EQ(curve(ratioChannel).size(), 9U);
    EXPECT_EQ(visited, 10);
    EXPECT_EQ(curve(engineChannel).size(), 100U);
}

TEST_F(Curves, AValueThatDoesNotFitEndsTheCurveAndKeepsWhatCameBefore) {
    image.header.BasketGearTeeth = 255;
    image.samples[50].EngineRpm = 1;
    image.samples[50].InputRpm = 32767;
    EXPECT_EQ(curve(slipChannel).size(), 49U);
    EXPECT_EQ(visited, 50);
}

TEST_F(Curves, SpeedsOutOfAllReason) {
    image.samples[50].SpeedRaw = INT32_MAX;
    image.samples[51].SpeedRaw = INT32_MAX;
    EXPECT_EQ(curve(mphChannel).size(), 100U);
    smooth(7);
    EXPECT_EQ(curve(mphChannel).size(), 45U); // the sum of 46 to 50 passes 32 bits
    EXPECT_LT(curve(rocosChannel).size(), 73U);
}

TEST_F(Curves, HostileTyreSetupsEndTheRoutine) {
    image.analog.PinionTeeth = 0;
    EXPECT_TRUE(curve(tyreGrowthChannel).empty());
    image.analog.PinionTeeth = 10;
    image.analog.RearWheelDiameter = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(curve(tyreGrowthChannel).empty());
    image.analog.RearWheelDiameter = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(curve(tyreGrowthChannel).empty());
    image.analog.RearWheelDiameter = 30;
    image.analog.CrownTeeth = 0;
    EXPECT_EQ(curve(tyreGrowthChannel).size(), 100U);
    EXPECT_EQ(points[0].y, -40);
    image.analog.CrownTeeth = std::numeric_limits<float>::max();
    EXPECT_TRUE(curve(tyreGrowthChannel).empty()); // no single holds it
}

TEST_F(Curves, AllZeroRowsAreFlatLines) {
    image.samples.fill({});
    config.Text_Magnify.fill(255);
    for (int channel = 0; channel < channelCount; ++channel) {
        for (const Point& point : curve(channel)) EXPECT_EQ(point.y, 0) << channel;
        EXPECT_EQ(visited, 100);
    }
}

TEST_F(Curves, CountsPastTheArrayReadZeros) {
    run.rows = 65535;
    config.SmoothOption.fill(1);
    for (int channel = 0; channel < channelCount; ++channel) {
        curve(channel);
        if (channel == rocosChannel) continue;
        ASSERT_EQ(points.size(), 65535U) << channel;
        EXPECT_EQ(points.back(), (Point{65535, 0})) << channel;
    }
}

TEST_F(Curves, BeforeTheFirstPictureThereIsNoScale) {
    scale.rpmScale = 0;
    EXPECT_TRUE(curve(engineChannel).empty());
    EXPECT_FALSE(curveHeight(config, engineChannel, 100, 0, 0));
    EXPECT_EQ(curveHeight(config, mphChannel, 100, 0, 0), 0.0F);
}

TEST_F(Curves, BuffersAreKeptFromCurveToCurve) {
    run.rows = core::maxSamples;
    const Point* before = curve(engineChannel).data();
    for (int channel = 1; channel < channelCount; ++channel) curve(channel);
    EXPECT_EQ(curve(engineChannel).data(), before);
}
