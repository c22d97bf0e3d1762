#include "graph/view.h"

#include "core/data_types.h"
#include "core/setup_kinds.h"

namespace kvo::graph {

using namespace channels;
namespace {

using core::AppConfig;
using core::FromOne;

constexpr std::int32_t whiteColour = 0xFFFFFF;

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

LabelVisibility ShowChannelsForType(int type, int vehicleType) {
    LabelVisibility labels;
    if (vehicleType == core::car) labels.clutch = Show::hide;
    const core::DataTypeFacts* facts = core::dataTypeFacts(type);
    if (facts == nullptr || !facts->setsLabels) return labels;
    showAnalogs(labels, 5, facts->analogs, Show::show);
    showAnalogs(labels, facts->analogs + 1, 8, Show::hide);
    showExhausts(labels, facts->exhausts == core::Exhausts::none ? Show::hide : Show::show);
    return labels;
}

LabelVisibility drawTrendLabels(int type, const AppConfig& config) {
    LabelVisibility labels;
    const core::DataTypeFacts* facts = core::dataTypeFacts(type);
    // Required: where exhausts are time-shared the labels stay as they are.
    if (facts == nullptr || !facts->setsLabels || facts->exhausts == core::Exhausts::timeShared)
        return labels;
    if (facts->analogs == 4) showAnalogs(labels, 5, 8, Show::hide);
    for (int n = 5; n <= facts->analogs; ++n) {
        labels.analogToggle[n] = Show::show;
        if (config.AnalogVisible[n] != 0) labels.analogValue[n] = Show::show;
    }
    if (facts->exhausts == core::Exhausts::none) {
        showExhausts(labels, Show::hide);
    } else {
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

std::int32_t overlayColour(const AppConfig& config, int channel) {
    const std::int32_t own = channelColour(config, channel);
    return config.OverlayColours != 1 ? own : InvertColour(own, config.GraphBackColour);
}

std::optional<platform::Colour> colourDialogStart(std::int32_t colour) {
    if (colour < 0 || colour >= 0x1000000) return std::nullopt;
    return static_cast<platform::Colour>(colour);
}

} // namespace kvo::graph
