#include "platform/draw/contrast.h"

#include <gtest/gtest.h>

using namespace kvo::platform;

TEST(Contrast, RunsFromOneToTwentyOne) {
    EXPECT_DOUBLE_EQ(contrast(black, white), 21);
    EXPECT_DOUBLE_EQ(contrast(white, black), 21);
    EXPECT_DOUBLE_EQ(contrast(0x123456, 0x123456), 1);
}

// Grey 0x76 is the lightest that has 4.5 to 1 on white; red, green and blue by their known values.
TEST(Contrast, AsTheFormulasHaveIt) {
    EXPECT_GE(contrast(0x767676, white), 4.5);
    EXPECT_LT(contrast(0x777777, white), 4.5);
    EXPECT_NEAR(luminance(0x0000FF), 0.2126, 1e-9);
    EXPECT_NEAR(luminance(0x00FF00), 0.7152, 1e-9);
    EXPECT_NEAR(luminance(0xFF0000), 0.0722, 1e-9);
    EXPECT_NEAR(luminance(0x808080), 0.2159, 1e-4);
    EXPECT_NEAR(lightOfChannel(10), 10 / 255.0 / 12.92, 1e-12);
}

TEST(Contrast, LightAndChannelGoBackAndForth) {
    for (int channel = 0; channel < 256; ++channel)
        EXPECT_NEAR(channelOfLight(lightOfChannel(channel)), channel, 1);
}

TEST(Contrast, TheBetterOfBlackAndWhite) {
    EXPECT_EQ(readableOn(white), black);
    EXPECT_EQ(readableOn(black), white);
    EXPECT_EQ(readableOn(0xC0C0C0), black);
    EXPECT_EQ(readableOn(0x800000), white);
}
