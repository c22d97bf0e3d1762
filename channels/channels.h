#pragma once
// The one table of the 25 channels: names, routines, settings and controls of each, and the orders
// in which routines go through them. A channel is a number from 0 to 24, the index that ComboScale
// and Text_Magnify share.
#include "core/config_record.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kvo::channels {

inline constexpr int channelCount = 25;

// The channels that stand for themselves; analogs and exhausts follow by number.
inline constexpr int engineChannel = 0;
inline constexpr int clutchChannel = 1;
inline constexpr int inputChannel = 2;
inline constexpr int outputChannel = 3;
inline constexpr int slipChannel = 4;
inline constexpr int ratioChannel = 5;
inline constexpr int rocosChannel = 6;
inline constexpr int mphChannel = 7;
inline constexpr int tyreGrowthChannel = 24;
// n from 1 to 8.
constexpr int analogChannel(int n) {
    return 7 + n;
}
constexpr int exhaustChannel(int n) {
    return 15 + n;
}

enum class ChannelKind {
    engine,
    clutch,
    input,
    output,
    slip,
    ratio,
    rocos,
    mph,
    analog,
    exhaust,
    tyreGrowth
};

// A control of the graph window: its name, and its index where it belongs to a control array.
struct ControlName {
    std::string_view name;
    int index = -1; // -1: a control of its own
};

// The channel's row and boxes on the forms of the graph's options.
struct OptionFacts {
    std::string_view caption;         // of its row; an analog's gives way to its input's name
    int drawnBox = 0;                 // index in Check1 of the box that has it drawn
    int smoothEntry = 0;              // entry of SmoothOption that bears its name
    int restoredMagnify = 0;          // what Restore Defaults shows
    int restoredRaise = 0;            // list index that Restore Defaults selects, -1: left as it is
    std::string_view boxCaption = {}; // of its boxes where they are written another way
};

struct ChannelFacts {
    int index = 0;
    ChannelKind kind = ChannelKind::engine;
    int number = 0;                  // 1 to 8 of an analog or exhaust, else 0
    std::string_view name;           // "Engine", "Analog1", "TyreGrowth"
    std::string_view drawRoutine;    // "DrawEngine"; an analog's or exhaust's takes its number
    int smoothOption = -1;           // entry of SmoothOption that its drawing reads, -1 for none
    std::uint8_t magnifyDefault = 0; // 0: the channel has no magnification
    std::string_view colourTitle;    // of its colour dialog; empty: the channel's own caption
    ControlName toggle;
    ControlName valueLabel;
    ControlName overlayLabel;
    OptionFacts option;
};

// channel from 0 to 24.
const ChannelFacts& channelFacts(int channel);

// The visibility flag (0 or -1) and the colour of a channel in the configuration.
std::int16_t& visibleFlag(core::AppConfig& config, int channel);
bool channelOn(const core::AppConfig& config, int channel);
std::int32_t& colourField(core::AppConfig& config, int channel);
std::int32_t channelColour(const core::AppConfig& config, int channel);

// Order of the table of labels: toggles, enabling, search under the mouse.
std::span<const int> labelOrder();
// Order in which changed colours are repaired.
std::span<const int> colourOrder();
// Order of drawing of a full picture, for a data type: the channels of every type, then the further
// analogs and exhausts. Whether a channel is on is not looked at.
std::span<const int> drawOrder(int dataType);

} // namespace kvo::channels
