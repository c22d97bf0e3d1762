#include "graph/colour_schemes.h"

#include "channels/channels.h"
#include "core/default_config.h"
#include "platform/draw/colour.h"

#include <array>

namespace kvo::graph {
namespace {

using namespace channels;

constexpr std::uint8_t sameAsGraph = 0; // OverlayColours
constexpr std::uint8_t solidStyle = 0;
constexpr std::uint8_t dotsStyle = 2;

struct SchemeColours {
    std::int32_t ground = 0;
    std::array<std::int32_t, channelCount> channels{};
};

// Colours as one writes them, red first, in the order of the channels.
using WrittenColours = std::array<int, channelCount>;

// Each at least 4.5 to 1 on white.
constexpr WrittenColours daylightColours{0xEB0000, 0xA4660A, 0x6D780A, 0x038800, 0xC31FC0, 0x148089,
    0x496DDA, 0x001B1D, 0x78086C, 0x532800, 0x040084, 0x320019, 0x3D54FD, 0xE00087, 0x008452,
    0xE8004B, 0x8B0F3A, 0x104E81, 0x966682, 0x951200, 0x0100FF, 0x000041, 0x0A3600, 0xBB01FF,
    0x787053};
// Spread over what is left without red and green: yellow against blue, light against dark.
constexpr WrittenColours colourBlindColours{0xE22938, 0xFF7400, 0xFFFF09, 0xB2C758, 0xFA00E6,
    0x64FEFF, 0x788CFE, 0xC4F6D9, 0xDB4E07, 0xFFFF6B, 0x5F75A7, 0xFFFFC6, 0x67D8FF, 0xE30F74,
    0x3CCA92, 0xFFCA27, 0xE67967, 0x5FC5BA, 0x6BA6C3, 0x34817C, 0x2978C8, 0x9AE491, 0x3C843F,
    0xB90FFF, 0xFFFF95};

SchemeColours written(platform::Colour ground, const WrittenColours& colours) {
    SchemeColours scheme{static_cast<std::int32_t>(ground), {}};
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const int rgb = colours[i];
        scheme.channels[i] = (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
    }
    return scheme;
}

SchemeColours coloursOf(const core::AppConfig& config) {
    SchemeColours scheme{config.GraphBackColour, {}};
    for (int channel = 0; channel < channelCount; ++channel)
        scheme.channels[static_cast<std::size_t>(channel)] = channelColour(config, channel);
    return scheme;
}

SchemeColours coloursOf(ColourScheme scheme) {
    if (scheme == ColourScheme::daylight) return written(platform::white, daylightColours);
    if (scheme == ColourScheme::colourBlind) return written(platform::black, colourBlindColours);
    return coloursOf(core::defaultConfig());
}

} // namespace

void takeScheme(core::AppConfig& config, ColourScheme scheme) {
    const SchemeColours colours = coloursOf(scheme);
    config.GraphBackColour = colours.ground;
    for (int channel = 0; channel < channelCount; ++channel)
        colourField(config, channel) = colours.channels[static_cast<std::size_t>(channel)];
    // The inverse of a colour that is dark enough for white is too light for it.
    config.OverlayColours = sameAsGraph;
    // In the run's own colours only the style of its lines tells an overlay from the run.
    if (config.OverlayStyle == solidStyle) config.OverlayStyle = dotsStyle;
}

std::optional<ColourScheme> schemeOf(const core::AppConfig& config) {
    if (config.OverlayColours != sameAsGraph) return std::nullopt;
    const SchemeColours own = coloursOf(config);
    for (int i = 0; i < schemeCount; ++i) {
        const auto scheme = static_cast<ColourScheme>(i);
        const SchemeColours colours = coloursOf(scheme);
        if (own.ground == colours.ground && own.channels == colours.channels) return scheme;
    }
    return std::nullopt;
}

} // namespace kvo::graph
