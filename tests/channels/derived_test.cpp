#include "channels/derived.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

using namespace kvo;
using namespace kvo::channels;

namespace {

core::RunHeader drive(int crank, int basket) {
    core::RunHeader header;
    header.CrankGearTeeth = static_cast<std::uint8_t>(crank);
    header.BasketGearTeeth = static_cast<std::uint8_t>(basket);
    return header;
}

core::RunAnalogBlock tyre(float crown, float pinion, float rear) {
    core::RunAnalogBlock block;
    block.CrownTeeth = crown;
    block.PinionTeeth = pinion;
    block.RearWheelDiameter = rear;
    return block;
}

// A run whose speed is given sample by sample.
template <typename Speed> std::unique_ptr<core::RunImage> speeds(Speed speed) {
    auto image = std::make_unique<core::RunImage>();
    for (int i = 1; i <= core::maxSamples; ++i) image->samples[i].SpeedRaw = speed(i);
    return image;
}

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float huge = std::numeric_limits<float>::max();

} // namespace

TEST(Derived, NoBasketTeethIsARunTimeFailure) {
    EXPECT_FALSE(primaryRatio(drive(30, 0)));
    EXPECT_FALSE(primaryRatio(drive(0, 0)));
    EXPECT_EQ(primaryRatio(drive(30, 60)), 0.5);
    EXPECT_EQ(primaryRatio(drive(0, 60)), 0.0);
    EXPECT_TRUE(slipPrinted(drive(30, 0), 100, 0).hasFailed());
    EXPECT_EQ(slipPrinted(drive(30, 0), 0, 0).text, ""); // the engine stands: not asked for
}

TEST(Derived, ClutchRpmIsCutTowardsZero) {
    EXPECT_EQ(clutchRpm(0.5, 3), 1);
    EXPECT_EQ(clutchRpm(0.5, -3), -1);
    EXPECT_EQ(clutchRpm(255, 32767), 8355585);
}

// One slip, four computations: 8 rpm of engine, 7 of input are 12.5 percent.
TEST(Derived, SlipInItsFourComputations) {
    EXPECT_EQ(slipDrawn(1, 8, 7).value, 12); // ties to even
    EXPECT_EQ(slipDrawn(1, 8, 5).value, 38);
    EXPECT_EQ(slipRead(1, 8, 7), "12.5");
    EXPECT_EQ(slipMouse(1, 8, 7).value, 12); // cut
    EXPECT_EQ(slipMouse(1, 8, 5).value, 37);
    EXPECT_EQ(slipPrinted(drive(1, 1), 8, 7).text, "12");
    // The printed one divides by the engine's word.
    EXPECT_EQ(slipDrawn(0.5, 1000, 400).value, 20);
    EXPECT_EQ(slipPrinted(drive(1, 2), 1000, 400).text, "10");
}

TEST(Derived, SlipOfAStandingEngine) {
    EXPECT_EQ(slipDrawn(0.5, 0, 500).value, 0);
    EXPECT_EQ(slipRead(0.5, 0, 500), "");
    EXPECT_EQ(slipMouse(0.5, 0, 500).state, Reading::State::none);
    EXPECT_EQ(slipPrinted(drive(1, 2), 0, 500).text, "");
    EXPECT_EQ(slipDrawn(0.5, -100, 500).value, 0);
}

TEST(Derived, SlipThatDoesNotFitSixteenBitsFails) {
    EXPECT_TRUE(slipDrawn(1 / 255.0, 1, 32767).hasFailed());
    // The whole number under the mouse rounds to a divisor of nothing.
    EXPECT_TRUE(slipMouse(1 / 255.0, 1, 32767).hasFailed());
}

TEST(Derived, RatioInItsFourComputations) {
    EXPECT_EQ(ratioDrawn(0.5, 6000, 2000), 1.5);
    EXPECT_EQ(ratioDrawn(0.5, 6000, 0), 0);
    EXPECT_EQ(ratioRead(6000, 2000), "3.00"); // without the primary drive
    EXPECT_EQ(ratioRead(6000, 0), "");
    EXPECT_EQ(ratioRead(6000, -2000), "-3.00");
    EXPECT_EQ(ratioMouse(0.5, 6000, 2000).value, 1.5);
    EXPECT_EQ(ratioMouse(0.5, 6000, 0).state, Reading::State::none);
    EXPECT_EQ(ratioPrinted(6000, 2000), "3.00");
    EXPECT_EQ(ratioPrinted(6000, -2000), "");
}

TEST(Derived, RocosHasItsBounds) {
    const auto run = speeds([](int i) { return i * 100; });
    EXPECT_EQ(rocosDrawn(*run, 2520, 13).state, Reading::State::none);
    EXPECT_TRUE(rocosDrawn(*run, 2520, 14).hasValue());
    EXPECT_TRUE(rocosDrawn(*run, 2520, 2506).hasValue());
    EXPECT_EQ(rocosDrawn(*run, 2520, 2507).state, Reading::State::none);
    EXPECT_EQ(RoCoS_Cal(*run, 2520, 13).text, "");
    EXPECT_NE(RoCoS_Cal(*run, 2520, 14).text, "");
    EXPECT_NE(RoCoS_Cal(*run, 2520, 2506).text, "");
    EXPECT_EQ(RoCoS_Cal(*run, 2520, 2507).text, "");
    // No window fits a run of 27 samples; one fits 28.
    EXPECT_EQ(rocosDrawn(*run, 27, 14).state, Reading::State::none);
    EXPECT_TRUE(rocosDrawn(*run, 28, 14).hasValue());
}

TEST(Derived, RocosDrawnAndReadFollowTheirOwnFactors) {
    // 20 samples between the middles of the windows: 1000 raw units, 5 mph in 0.2 s.
    const auto run = speeds([](int i) { return i * 50; });
    EXPECT_EQ(rocosDrawn(*run, 2520, 1000).value, 92); // 25 x 3.66666666
    EXPECT_EQ(RoCoS_Cal(*run, 2520, 1000).text, "1.14");
}

TEST(Derived, RocosKeepsEachStepAsASingle) {
    // Windows of 93800 and 134309 raw units give 6.60; in doubles it would be 6.59.
    const auto run = speeds([](int i) {
        if (i >= 987 && i < 994) return 13400;   // 7 x 13400
        if (i >= 1007 && i < 1014) return 19187; // 7 x 19187
        return 0;
    });
    EXPECT_EQ(RoCoS_Cal(*run, 2520, 1000).text, "6.60");
    // The mean alone, before it is turned to feet: 2.19 if it were a double.
    const auto slower = speeds([](int i) {
        if (i >= 987 && i < 994) return 10001;
        if (i >= 1007 && i < 1014) return 11930;
        return 0;
    });
    EXPECT_EQ(RoCoS_Cal(*slower, 2520, 1000).text, "2.20");
}

TEST(Derived, RocosDrawnCutsEachWindowsMean) {
    // Means of 0 and 40, the first cut from 6 / 7; cut only once they would differ by 39.
    const auto run = speeds([](int i) {
        if (i == 987) return 6;
        return i >= 1007 && i < 1014 ? 40 : 0;
    });
    EXPECT_EQ(rocosDrawn(*run, 2520, 1000).value, 4);
}

TEST(Derived, ADeceleratingCarReadsZeroWhileItsCurveFalls) {
    const auto run = speeds([](int i) { return 300000 - i * 50; });
    EXPECT_EQ(rocosDrawn(*run, 2520, 1000).value, -92);
    EXPECT_EQ(RoCoS_Cal(*run, 2520, 1000).text, "0.00");
}

TEST(Derived, RocosStopsAtNineNinetyNine) {
    const auto run = speeds([](int i) { return i * 500; });
    EXPECT_EQ(RoCoS_Cal(*run, 2520, 1000).text, "9.99");
    const auto steady = speeds([](int) { return 40000; });
    EXPECT_EQ(RoCoS_Cal(*steady, 2520, 1000).text, "0.00");
}

TEST(Derived, SpeedsOutOfAllReasonFail) {
    const auto run = speeds([](int i) { return i < 1000 ? INT32_MIN : INT32_MAX; });
    EXPECT_TRUE(rocosDrawn(*run, 2520, 1000).hasFailed());
    EXPECT_TRUE(RoCoS_Cal(*run, 2520, 1000).hasFailed());
    EXPECT_TRUE(rocosDrawn(*run, 2520, 500).hasFailed());
}

TEST(Derived, RocosOfSamplesThatDoNotExistReadsZeros) {
    const auto run = speeds([](int i) { return i * 50; });
    EXPECT_EQ(rocosDrawn(*run, 65535, 60000).value, 0);
    EXPECT_EQ(RoCoS_Cal(*run, 65535, 65000).text, "0.00");
}

TEST(Derived, TyreGrowthInItsComputations) {
    const core::RunAnalogBlock block = tyre(40, 10, 30);
    // 50 mph, 2000 rpm: 50 x 4 x 336 / 2000 = 33.6 inches.
    EXPECT_DOUBLE_EQ(tyreGrowthDrawn(10000, 2000, block).value, 33.6 + 10 - 30);
    EXPECT_NEAR(tyreGrowthMouse(10000, 2000, block).value, 3.6, 1e-9);
    EXPECT_EQ(tyreGrowthRead(50, 2000, "50.00", block).text, "3.60 in");
    EXPECT_EQ(tyreGrowthRead(50, 2000, "50.00", block, "##00.00 in").text, "03.60 in");
}

TEST(Derived, TyreGrowthWithoutShaftOrSpeed) {
    const core::RunAnalogBlock block = tyre(40, 10, 30);
    EXPECT_EQ(tyreGrowthDrawn(10000, 0, block).value, 0);
    EXPECT_EQ(tyreGrowthDrawn(0, 2000, block).value, 0);
    EXPECT_EQ(tyreGrowthDrawn(-1, 2000, block).value, 0);
    EXPECT_EQ(tyreGrowthMouse(10000, 0, block).state, Reading::State::none);
    EXPECT_EQ(tyreGrowthRead(50, 0, "50.00", block).text, "N/A");
    EXPECT_EQ(tyreGrowthRead(50, 2000, "0.00", block).text, "N/A");
    EXPECT_EQ(tyreGrowthRead(50, 2000, "", block).text, "N/A");
}

TEST(Derived, TyreGrowthOfHostileSetups) {
    EXPECT_TRUE(tyreGrowthDrawn(10000, 2000, tyre(40, 0, 30)).hasFailed());
    EXPECT_TRUE(tyreGrowthRead(50, 2000, "50.00", tyre(40, 0, 30)).hasFailed());
    EXPECT_TRUE(tyreGrowthDrawn(10000, 2000, tyre(notANumber, 10, 30)).hasFailed());
    EXPECT_TRUE(tyreGrowthRead(50, 2000, "50.00", tyre(40, 10, notANumber)).hasFailed());
    // No crown teeth: the wheel comes out as nothing, and that is no failure.
    EXPECT_EQ(tyreGrowthDrawn(10000, 2000, tyre(0, 10, 30)).value, -20);
    EXPECT_EQ(tyreGrowthRead(50, 2000, "50.00", tyre(0, 10, 30)).text, "-30.00 in");
    EXPECT_TRUE(std::isfinite(tyreGrowthDrawn(INT32_MAX, 1, tyre(huge, 1, 30)).value));
}

TEST(Derived, AnalogValuesByType) {
    std::string picture;
    const AnalogSetup plain{0, 0.5F, 10, 1};
    EXPECT_EQ(analogRead(plain, 81, 0, picture).text, "50.5");
    EXPECT_EQ(analogRead({2, 0.5F, 10, 2}, 81, 0, picture).text, "50.50");
    EXPECT_EQ(analogRead({4, 0.5F, -50, 0}, 81, 0, picture).text, "-10");
    EXPECT_EQ(analogRead({1, 0.5F, 10, 2}, 100, 0, picture).text, "400");
    EXPECT_EQ(analogRead({1, 0.5F, 10, 2}, 100, -1, picture).text, "752");
    EXPECT_EQ(analogRead({3, 0.5F, 10, 2}, 255, 0, picture).text, "19.0");
    EXPECT_EQ(analogRead({5, 0.5F, 10, 2}, 81, 0, picture).state, TextReading::State::left);
}

TEST(Derived, AnAnalogValueIsASingle) {
    std::string picture;
    // 165 x 1.125 - 43.66 is 141.965: as a single a little less, as a double a little more.
    EXPECT_EQ(analogRead({0, 1.125F, -43.66F, 2}, 165, 0, picture).text, "141.96");
}

TEST(Derived, DecimalsThatAreNoneKeepThePictureBefore) {
    std::string picture = "####0.00";
    EXPECT_EQ(analogRead({0, 1, 0, 7}, 5, 0, picture).text, "5.00");
    EXPECT_EQ(picture, "####0.00");
}

TEST(Derived, AnalogSetupsOutOfAllReasonFail) {
    std::string picture;
    EXPECT_TRUE(analogRead({0, notANumber, 0, 0}, 5, 0, picture).hasFailed());
    EXPECT_TRUE(analogRead({0, huge, 0, 0}, 255, 0, picture).hasFailed());
    EXPECT_TRUE(analogRead({0, huge, 0, 0}, 0, 0, picture).hasText());
}

TEST(Derived, LambdaSensorsStandHigherWhenDrawn) {
    EXPECT_EQ(analogDrawn(100, 3), 120);
    EXPECT_EQ(analogDrawn(100, 2), 100);
}

TEST(Derived, LambdaThroughTheRowsOfTheFuels) {
    EXPECT_DOUBLE_EQ(lambdaValue(0, 0), 9);
    EXPECT_DOUBLE_EQ(lambdaValue(255, 0), 19);
    EXPECT_DOUBLE_EQ(lambdaValue(145.35, 1), 14.7 * 15.7 / 14.7);
    EXPECT_DOUBLE_EQ(lambdaValue(145.35, 2), 6.4);
    EXPECT_DOUBLE_EQ(lambdaValue(145.35, 3), 9);
    EXPECT_DOUBLE_EQ(lambdaValue(145.35, 4), 1);
    EXPECT_DOUBLE_EQ(lambdaValue(145.35, 99), 14.7);
}

TEST(Derived, TemperaturesOfBytesAndMeans) {
    EXPECT_EQ(temperature(0, 0), 0);
    EXPECT_EQ(temperature(0, -1), 0);
    EXPECT_EQ(temperature(1, 0), 4);
    EXPECT_EQ(temperature(1, -1), 39);
    EXPECT_EQ(temperature(255, -1), 1868);
    EXPECT_EQ(temperature(0.9, 0), 0);
    // A mean is no whole byte: Celsius is rounded, a tie to even, and Fahrenheit is cut.
    EXPECT_EQ(temperature(10.4, 0), 42);
    EXPECT_EQ(temperature(10.125, 0), 40);
    EXPECT_EQ(temperature(10.375, 0), 42);
    EXPECT_EQ(temperature(10.4, -1), 106);
    EXPECT_EQ(temperature(std::numeric_limits<double>::quiet_NaN(), -1), 0);
}
