#include "graph/view.h"

namespace kvo::graph {

using namespace channels;
namespace {

using core::AppConfig;
using core::FromOne;

constexpr std::int32_t whiteColour = 0xFFFFFF;

// clang-format off
constexpr std::array<GraphTypeFacts, 9> typeTable{{
    // type, right edge, with a fresh file, cursor, time zero
    {8, 2521, 2442, 160, 160},
    {12, 2521, 2442, 160, 160},
    {17, 1725, 1725, 160, 160},
    {20, 2049, 2049, 160, 160},
    {23, 1214, 1214, 80, 80},
    {25, 1214, 1214, 80, 80},
    {29, std::nullopt, std::nullopt, std::nullopt, 80},
    {32, 1361, 1361, 160, 160},
    {43, 1361, 1361, 160, 160},
}};
// clang-format on

void showAnalogs(LabelVisibility& labels, int first, int last, Show show) {
    for (int n = first; n <= last; ++n) {
        labels.analogToggle[n] = show;
        labels.analogValue[n] = show;
    }
}

void showExhausts(LabelVisibility& labels, Show show) {
    labels.exhaustToggle = show;
    labels.exhaustValue = show;
    labels.exhaustHeading = show;
}

// The switch's default, or white where that is the background's colour.
std::int32_t switchColour(std::int32_t usual, std::int32_t back, bool& fell) {
    if (usual != back) return usual;
    fell = true;
    return whiteColour;
}

} // namespace

std::optional<GraphTypeFacts> graphTypeFacts(int type) {
    for (const GraphTypeFacts& row : typeTable) {
        if (row.type == type) return row;
    }
    return std::nullopt;
}

LabelVisibility ShowChannelsForType(int type, int vehicleType) {
    LabelVisibility labels;
    if (vehicleType == 1) labels.clutch = Show::hide;
    switch (type) {
    case 8:
    case 12:
        showAnalogs(labels, 5, 8, Show::hide);
        showExhausts(labels, Show::hide);
        break;
    case 17:
        showAnalogs(labels, 5, 8, Show::show);
        showExhausts(labels, Show::hide);
        break;
    case 20:
        showAnalogs(labels, 5, 6, Show::show);
        showAnalogs(labels, 7, 8, Show::hide);
        showExhausts(labels, Show::show);
        break;
    case 25:
    case 32:
    case 43:
        showAnalogs(labels, 5, 8, Show::show);
        showExhausts(labels, Show::show);
        break;
    default:
        break;
    }
    return labels;
}

LabelVisibility drawTrendLabels(int type, const AppConfig& config) {
    LabelVisibility labels;
    const bool withExhausts = type == 25 || type == 32 || type == 43;
    if (type == 8 || type == 12) {
        showAnalogs(labels, 5, 8, Show::hide);
        showExhausts(labels, Show::hide);
    } else if (type == 17 || withExhausts) {
        for (int n = 5; n <= 8; ++n) {
            labels.analogToggle[n] = Show::show;
            if (config.AnalogVisible[n] != 0) labels.analogValue[n] = Show::show;
        }
        if (type == 17) showExhausts(labels, Show::hide);
    }
    if (withExhausts) {
        labels.exhaustToggle = Show::show;
        labels.exhaustHeading = Show::show;
    }
    return labels;
}

ResolutionChoice Resolution_Change(int step) {
    if (step == 1) return {"&Graph Resolution (High)  ", 1};
    if (step == 4) return {"&Graph Resolution (Med)  ", 4};
    return {"&Graph Resolution (Low)  ", 8};
}

ColourChange changeColour(const AppConfig& config) {
    ColourChange change;
    const std::int32_t back = config.GraphBackColour;
    change.switchDyna = switchColour(switchDynaDefault, back, change.barsRepainted);
    change.switchShift = switchColour(switchShiftDefault, back, change.barsRepainted);
    change.switchThrottle = switchColour(switchThrottleDefault, back, change.barsRepainted);
    change.switchBrake = switchColour(switchBrakeDefault, back, change.barsRepainted);
    const std::int32_t replacement = back == whiteColour ? 0 : whiteColour;
    for (const int channel : colourOrder()) {
        std::int32_t colour = channelColour(config, channel);
        if (colour == back) {
            colour = replacement;
            change.repaired.push_back(channel);
        }
        change.colours[static_cast<std::size_t>(channel)] = colour;
    }
    return change;
}

std::int32_t InvertColour(std::int32_t colour, std::int32_t graphBackColour) {
    const std::int32_t inverted = static_cast<std::int32_t>(
        static_cast<std::uint32_t>(whiteColour) - static_cast<std::uint32_t>(colour));
    return inverted == graphBackColour ? colour : inverted;
}

std::optional<platform::Colour> colourDialogStart(std::int32_t colour) {
    if (colour < 0 || colour >= 0x1000000) return std::nullopt;
    return static_cast<platform::Colour>(colour);
}

} // namespace kvo::graph
