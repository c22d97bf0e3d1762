// The configuration that a new installation starts with.
#include "core/config.h"
#include "core/data_types.h"
#include "core/default_config.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <vector>

namespace kvo::core {
namespace {

platform::Bytes shipped() {
    std::ifstream file(KVO_TEST_DATA "/../packaging/Kvo.Cfg", std::ios::binary);
    return platform::Bytes(std::istreambuf_iterator<char>(file), {});
}

AppConfig shippedConfig() {
    AppConfig config;
    EXPECT_TRUE(decodeConfig(shipped(), config));
    return config;
}

std::vector<std::int32_t> coloursOf(const AppConfig& c) {
    std::vector<std::int32_t> colours{c.EngineColour, c.ClutchColour, c.InputColour, c.OutputColour,
        c.SlipColour, c.RatioColour, c.RoCoSColour, c.MphColour, c.TyreGrowthColour};
    colours.insert(colours.end(), c.AnalogColour.begin(), c.AnalogColour.end());
    colours.insert(colours.end(), c.ExhaustColour.begin(), c.ExhaustColour.end());
    return colours;
}

struct Seen {
    double lightness;
    double a;
    double b;
};

// How a colour looks, in the scale of even differences that the eye has.
Seen seen(std::int32_t colour) {
    const auto linear = [&](int shift) {
        const double part = static_cast<double>(colour >> shift & 0xFF) / 255;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto root = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
    const double r = linear(0);
    const double g = linear(8);
    const double b = linear(16);
    const double x = root((0.4124 * r + 0.3576 * g + 0.1805 * b) / 0.95047);
    const double y = root(0.2126 * r + 0.7152 * g + 0.0722 * b);
    const double z = root((0.0193 * r + 0.1192 * g + 0.9505 * b) / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double apart(std::int32_t one, std::int32_t other) {
    const Seen p = seen(one);
    const Seen q = seen(other);
    return std::hypot(p.lightness - q.lightness, p.a - q.a, p.b - q.b);
}

TEST(DefaultConfig, IsWhatIsShipped) {
    EXPECT_EQ(encodeConfig(defaultConfig()), shipped());
}

TEST(DefaultConfig, OpensWithoutAMessage) {
    testing::MemoryFiles files;
    files.put("/kvo/Kvo.Cfg", shipped());
    AppConfig config;
    EXPECT_TRUE(LoadConfig("/kvo", config, files).whole());
    EXPECT_EQ(encodeConfig(config), shipped());
}

TEST(DefaultConfig, HasColoursThatStayApart) {
    const AppConfig config = shippedConfig();
    const auto colours = coloursOf(config);
    ASSERT_EQ(colours.size(), 25U);
    for (std::size_t i = 0; i < colours.size(); ++i) {
        EXPECT_GT(seen(colours[i]).lightness, 49) << "channel " << i << " is too dark on black";
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_GT(apart(colours[i], colours[k]), 30) << i << " and " << k;
        }
    }
    EXPECT_EQ(config.GraphBackColour, 0);
}

TEST(DefaultConfig, DrawsEveryChannel) {
    const AppConfig c = shippedConfig();
    for (const std::int16_t flag :
        {c.EngineVisible, c.ClutchVisible, c.InputVisible, c.OutputVisible, c.SlipVisible,
            c.RatioVisible, c.RoCoSVisible, c.MphVisible, c.TyreGrowthVisible}) {
        EXPECT_EQ(flag, -1);
    }
    for (int n = 1; n <= 8; ++n) {
        EXPECT_EQ(c.AnalogVisible[n], -1);
        EXPECT_EQ(c.ExhaustVisible[n], -1);
        EXPECT_EQ(c.AnalogName[n], "Analog " + std::to_string(n));
        EXPECT_EQ(c.AnalogScale[n], 1);
        EXPECT_EQ(c.AnalogOffset[n], 0);
    }
}

TEST(DefaultConfig, CanDownloadAtOnce) {
    const AppConfig c = shippedConfig();
    EXPECT_EQ(c.LoggerDataType, 32);
    EXPECT_TRUE(dataTypeFacts(c.LoggerDataType));
    EXPECT_EQ(c.CommPort, 1);
    EXPECT_EQ(c.CheckBits[0], 0);
    EXPECT_EQ(c.CheckBits[1], -1);
    EXPECT_EQ(c.Vehicle_Type, 1);
    EXPECT_EQ(c.Date_Prompt, 0);
    EXPECT_EQ(c.SpeedWheel_Prompt, 0);
    EXPECT_EQ(c.Check_Password, 0);
    // No speed or rpm of the first run may come out as zero for want of a factor.
    for (const float factor : {c.Wheel, c.Engine_Correction, c.Clutch_Correction,
             c.Pinion_Correction, c.Speed_Correction, c.Crown_F, c.Pinion_F}) {
        EXPECT_GT(factor, 0);
    }
    EXPECT_GT(c.RWheel, 0);
    EXPECT_EQ(c.Gears, 2);
    EXPECT_GT(c.First_Ratio, c.Second_Ratio);
}

} // namespace
} // namespace kvo::core
