#include "channels/channels.h"

#include "core/data_types.h"

#include <cassert>
#include <cstddef>

namespace kvo::channels {
namespace {

using core::AppConfig;

constexpr std::array<std::string_view, 8> analogNames{
    "Analog1", "Analog2", "Analog3", "Analog4", "Analog5", "Analog6", "Analog7", "Analog8"};
constexpr std::array<std::string_view, 8> exhaustNames{
    "Exhaust1", "Exhaust2", "Exhaust3", "Exhaust4", "Exhaust5", "Exhaust6", "Exhaust7", "Exhaust8"};

constexpr std::array<std::string_view, 8> analogCaptions{
    "Analog 1", "Analog 2", "Analog 3", "Analog 4", "Analog 5", "Analog 6", "Analog 7", "Analog 8"};
constexpr std::array<std::string_view, 8> exhaustCaptions{"Exhaust 1", "Exhaust 2", "Exhaust 3",
    "Exhaust 4", "Exhaust 5", "Exhaust 6", "Exhaust 7", "Exhaust 8"};

constexpr ChannelFacts analogFacts(int n) {
    const auto at = static_cast<std::size_t>(n - 1);
    return {analogChannel(n), ChannelKind::analog, n, analogNames[at], "DrawAnalog", 16 + n, 1, "",
        {"Text_Analog", n}, {"Analog", n}, {"OverlayAnalog", n},
        {analogCaptions[at], analogChannel(n), 16 + n}};
}

constexpr ChannelFacts exhaustFacts(int n) {
    const auto at = static_cast<std::size_t>(n - 1);
    return {exhaustChannel(n), ChannelKind::exhaust, n, exhaustNames[at], "DrawExhaust", 8 + n, 1,
        "Exhaust", {"Label9", n}, {"Exhaust", n}, {"OverlayExhaust", n},
        // The eight stagger, since their curves lie close together.
        {exhaustCaptions[at], exhaustChannel(n), 8 + n, 0, n - 1}};
}

using Kind = ChannelKind;

// Required: the drawing of Mph reads entry 7 of SmoothOption, the box of the output shaft; the box
// that bears its name, and those of Slip, Ratio, RoCoS and Tyre Growth, are read by no drawing. The
// boxes of Mph and RoCoS stand the other way round than the channels.
// clang-format off
constexpr std::array<ChannelFacts, channelCount> table{{
    // index, kind, number, name, routine, smooth, magnify, title, toggle, value label, overlay
    // label, {caption, drawn box, smooth entry, restored magnify, restored raise, box caption}
    {0, Kind::engine, 0, "Engine", "DrawEngine", 0, 0, "Engine Rpm",
        {"Label10", 0}, {"Rpm"}, {"OverlayRpm"}, {"Eng. RPM", 0, 0}},
    {1, Kind::clutch, 0, "Clutch", "DrawClutch", 1, 0, "Clutch Rpm",
        {"Label10", 1}, {"Clutch"}, {"OverlayClutch"}, {"Clutch RPM", 1, 1}},
    {2, Kind::input, 0, "Input", "DrawInput", 2, 0, "Input Rpm",
        {"Label10", 2}, {"InputRpm"}, {"OverlayInputRpm"}, {"Input RPM", 2, 2}},
    {3, Kind::output, 0, "Output", "DrawPinion", 7, 0, "Output Rpm",
        {"Label10", 3}, {"OutPutRpm"}, {"OverlayOutputRpm"}, {"Output RPM", 3, 7}},
    {4, Kind::slip, 0, "Slip", "DrawSlip", -1, 10, "Input Slip",
        {"Label13"}, {"Slip"}, {"OverlaySlip"}, {"Input Slip", 4, 3, 8}},
    {5, Kind::ratio, 0, "Ratio", "DrawRatio", -1, 50, "Drive Ratio",
        {"Label16"}, {"Ratio"}, {"OverlayRatio"}, {"Drive Ratio", 5, 4, 50}},
    {6, Kind::rocos, 0, "RoCoS", "DrawRoCoS", -1, 1, "RoCoS",
        {"Label18"}, {"RoCoS"}, {"OverlayRoCoS"}, {"RoCoS", 7, 6}},
    {7, Kind::mph, 0, "Mph", "DrawMph", 7, 0, "Mph",
        {"Label17"}, {"Mph"}, {"OverlayMph"}, {"MPH", 6, 5, 0, 0, "Mph"}},
    analogFacts(1), analogFacts(2), analogFacts(3), analogFacts(4),
    analogFacts(5), analogFacts(6), analogFacts(7), analogFacts(8),
    exhaustFacts(1), exhaustFacts(2), exhaustFacts(3), exhaustFacts(4),
    exhaustFacts(5), exhaustFacts(6), exhaustFacts(7), exhaustFacts(8),
    {24, Kind::tyreGrowth, 0, "TyreGrowth", "DrawTyreGrowth", -1, 10, "Tyre Growth",
        {"Label20"}, {"Tyre_Growth"}, {"OverlayTyreGrowth"}, {"Tyre Growth", 24, 8, 10, -1}},
}};

constexpr std::array<int, channelCount> labels{0, 1, 2, 3, 4, 5, 7, 6, 24,
    8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23};
constexpr std::array<int, channelCount> colours{0, 2, 3, 4, 5, 7, 6, 1, 24,
    8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23};

// What every type draws, then analogs 5 to 8 and exhausts 1 to 8.
constexpr std::array<int, channelCount> drawing{0, 1, 2, 3, 7, 5, 4, 6, 24,
    8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23};
// Where exhausts share analog 7 there are six analogs.
constexpr std::array<int, 23> drawingTimeShared{0, 1, 2, 3, 7, 5, 4, 6, 24,
    8, 9, 10, 11, 12, 13, 16, 17, 18, 19, 20, 21, 22, 23};
// clang-format on
constexpr std::size_t drawnByEveryType = 13;
constexpr std::size_t drawnWithAnalogs = 17;

template <typename Config> auto& flagOf(Config& config, const ChannelFacts& facts) {
    switch (facts.kind) {
    case Kind::engine:
        return config.EngineVisible;
    case Kind::clutch:
        return config.ClutchVisible;
    case Kind::input:
        return config.InputVisible;
    case Kind::output:
        return config.OutputVisible;
    case Kind::slip:
        return config.SlipVisible;
    case Kind::ratio:
        return config.RatioVisible;
    case Kind::rocos:
        return config.RoCoSVisible;
    case Kind::mph:
        return config.MphVisible;
    case Kind::analog:
        return config.AnalogVisible[facts.number];
    case Kind::exhaust:
        return config.ExhaustVisible[facts.number];
    case Kind::tyreGrowth:
        break;
    }
    return config.TyreGrowthVisible;
}

template <typename Config> auto& colourOf(Config& config, const ChannelFacts& facts) {
    switch (facts.kind) {
    case Kind::engine:
        return config.EngineColour;
    case Kind::clutch:
        return config.ClutchColour;
    case Kind::input:
        return config.InputColour;
    case Kind::output:
        return config.OutputColour;
    case Kind::slip:
        return config.SlipColour;
    case Kind::ratio:
        return config.RatioColour;
    case Kind::rocos:
        return config.RoCoSColour;
    case Kind::mph:
        return config.MphColour;
    case Kind::analog:
        return config.AnalogColour[facts.number];
    case Kind::exhaust:
        return config.ExhaustColour[facts.number];
    case Kind::tyreGrowth:
        break;
    }
    return config.TyreGrowthColour;
}

} // namespace

const ChannelFacts& channelFacts(int channel) {
    assert(channel >= 0 && channel < channelCount);
    return table[static_cast<std::size_t>(channel)];
}

std::int16_t& visibleFlag(AppConfig& config, int channel) {
    return flagOf(config, channelFacts(channel));
}

bool channelOn(const AppConfig& config, int channel) {
    return flagOf(config, channelFacts(channel)) != 0;
}

std::int32_t& colourField(AppConfig& config, int channel) {
    return colourOf(config, channelFacts(channel));
}

std::int32_t channelColour(const AppConfig& config, int channel) {
    return colourOf(config, channelFacts(channel));
}

std::span<const int> labelOrder() {
    return labels;
}

std::span<const int> colourOrder() {
    return colours;
}

std::span<const int> drawOrder(int dataType) {
    switch (core::exhaustsOf(dataType)) {
    case core::Exhausts::timeShared:
        return drawingTimeShared;
    case core::Exhausts::own:
        return drawing;
    case core::Exhausts::none:
        break;
    }
    const bool fourAnalogs = core::analogsOf(dataType) == 4;
    return std::span<const int>(drawing).first(fourAnalogs ? drawnByEveryType : drawnWithAnalogs);
}

} // namespace kvo::channels
