#include "graph/colour_schemes.h"

#include "channels/channels.h"
#include "core/default_config.h"
#include "graph/grid.h"
#include "graph/view.h"
#include "platform/draw/contrast.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

using namespace kvo;
using namespace kvo::graph;
using channels::channelColour;
using channels::channelCount;
using channels::colourField;
using platform::Colour;

namespace {

using Three = std::array<double, 3>;
using Matrix = std::array<Three, 3>;

// On linear sRGB, from Machado, Oliveira and Fernandes, "A Physiologically-based Model for
// Simulation of Color Vision Deficiency" (2009), at full severity.
constexpr Matrix usualVision{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
constexpr Matrix protanopia{{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216},
    {-0.003882, -0.048116, 1.051998}}};
constexpr Matrix deuteranopia{{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413},
    {-0.011820, 0.042940, 0.968881}}};
constexpr Matrix xyzOfRgb{{{0.4124564, 0.3575761, 0.1804375}, {0.2126729, 0.7151522, 0.0721750},
    {0.0193339, 0.1191920, 0.9503041}}};

Three times(const Matrix& m, const Three& v) {
    Three out{};
    for (std::size_t i = 0; i < 3; ++i) out[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
    return out;
}

// CIE 1976 L*a*b* of a colour as such eyes see it.
Three seen(Colour colour, const Matrix& eyes) {
    Three light{};
    for (unsigned i = 0; i < 3; ++i)
        light[i] = platform::lightOfChannel(static_cast<int>(colour >> (8 * i) & 0xFFU));
    light = times(eyes, light);
    for (double& one : light) one = std::clamp(one, 0.0, 1.0);
    const Three xyz = times(xyzOfRgb, light);
    const auto f = [](double t) {
        return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
    };
    const double x = f(xyz[0] / 0.95047);
    const double y = f(xyz[1]);
    const double z = f(xyz[2] / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double distance(const Three& a, const Three& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

// The smallest distance of two channels; a step that one just notices is about 2.3.
double smallestDistance(const core::AppConfig& config, const Matrix& eyes) {
    double smallest = 1000;
    for (int i = 0; i < channelCount; ++i) {
        for (int j = 0; j < i; ++j) {
            const auto see = [&](int channel) {
                return seen(static_cast<Colour>(channelColour(config, channel)), eyes);
            };
            smallest = std::min(smallest, distance(see(i), see(j)));
        }
    }
    return smallest;
}

core::AppConfig schemed(ColourScheme scheme) {
    core::AppConfig config = core::defaultConfig();
    takeScheme(config, scheme);
    return config;
}

// The smallest contrast of a channel or its overlay to the ground.
double smallestContrast(const core::AppConfig& config) {
    const auto ground = static_cast<Colour>(config.GraphBackColour);
    double smallest = 21;
    for (int channel = 0; channel < channelCount; ++channel) {
        for (const std::int32_t colour :
            {channelColour(config, channel), overlayColour(config, channel)})
            smallest = std::min(smallest, platform::contrast(static_cast<Colour>(colour), ground));
    }
    return smallest;
}

} // namespace

TEST(ColourSchemes, DarkIsWhatANewFolderHas) {
    core::AppConfig config = schemed(ColourScheme::daylight);
    takeScheme(config, ColourScheme::dark);
    const core::AppConfig usual = core::defaultConfig();
    EXPECT_EQ(config.GraphBackColour, usual.GraphBackColour);
    for (int channel = 0; channel < channelCount; ++channel)
        EXPECT_EQ(channelColour(config, channel), channelColour(usual, channel)) << channel;
}

TEST(ColourSchemes, EveryChannelAndOverlayIsReadable) {
    for (const auto scheme :
        {ColourScheme::dark, ColourScheme::daylight, ColourScheme::colourBlind})
        EXPECT_GE(smallestContrast(schemed(scheme)), 4.5) << static_cast<int>(scheme);
    core::AppConfig inverted = core::defaultConfig();
    inverted.OverlayColours = 1;
    takeScheme(inverted, ColourScheme::daylight);
    EXPECT_GE(smallestContrast(inverted), 4.5);
}

TEST(ColourSchemes, DaylightIsWhite) {
    EXPECT_EQ(schemed(ColourScheme::daylight).GraphBackColour, 0xFFFFFF);
    EXPECT_EQ(gridTextColour(schemed(ColourScheme::daylight)), platform::black);
}

// All 25, since all of them are drawn unless the user says otherwise.
TEST(ColourSchemes, TwoChannelsAreToldApart) {
    EXPECT_GE(smallestDistance(schemed(ColourScheme::dark), usualVision), 30);
    EXPECT_GE(smallestDistance(schemed(ColourScheme::daylight), usualVision), 30);
    for (const Matrix& eyes : {usualVision, protanopia, deuteranopia})
        EXPECT_GE(smallestDistance(schemed(ColourScheme::colourBlind), eyes), 15);
    // What the scheme is for: the usual colours are not.
    EXPECT_LT(smallestDistance(schemed(ColourScheme::dark), deuteranopia), 5);
}

TEST(ColourSchemes, NoneIsRepairedForItsGround) {
    for (int i = 0; i < schemeCount; ++i)
        EXPECT_TRUE(changeColour(schemed(static_cast<ColourScheme>(i))).repaired.empty());
}

TEST(ColourSchemes, AConfigurationKnowsItsScheme) {
    for (int i = 0; i < schemeCount; ++i) {
        const auto scheme = static_cast<ColourScheme>(i);
        EXPECT_EQ(schemeOf(schemed(scheme)), scheme);
        for (int channel = 0; channel < channelCount; ++channel) {
            core::AppConfig config = schemed(scheme);
            ++colourField(config, channel);
            EXPECT_EQ(schemeOf(config), std::nullopt) << channel;
        }
        core::AppConfig config = schemed(scheme);
        config.GraphBackColour = 0x123456;
        EXPECT_EQ(schemeOf(config), std::nullopt);
        config = schemed(scheme);
        config.OverlayColours = 1;
        EXPECT_EQ(schemeOf(config), std::nullopt);
    }
    EXPECT_EQ(schemeOf(core::defaultConfig()), ColourScheme::dark);
    EXPECT_EQ(schemeOf(core::AppConfig{}), std::nullopt);
}

TEST(ColourSchemes, AnOverlayInTheRunsColoursKeepsAStyleOfItsOwn) {
    core::AppConfig config = core::defaultConfig();
    config.OverlayStyle = 0;
    takeScheme(config, ColourScheme::daylight);
    EXPECT_EQ(int(config.OverlayStyle), 2);
    config.OverlayStyle = 3;
    takeScheme(config, ColourScheme::dark);
    EXPECT_EQ(int(config.OverlayStyle), 3);
}

TEST(ColourSchemes, NothingElseChanges) {
    core::AppConfig config = core::defaultConfig();
    config.ComboScale[3] = 20;
    config.EngineVisible = 0;
    config.GridStyle = 4;
    takeScheme(config, ColourScheme::daylight);
    EXPECT_EQ(int(config.ComboScale[3]), 20);
    EXPECT_EQ(int(config.EngineVisible), 0);
    EXPECT_EQ(int(config.GridStyle), 4);
}
