#pragma once
// The rows of channels on the option forms and which of their controls are on view. The rules
// change these values; a form shows its controls by them after each rule and decides nothing
// itself.
#include "channels/channels.h"
#include "core/basic/from_one.h"

#include <array>
#include <cstddef>
#include <string>

namespace kvo::setup {

// A value for each channel, 0 to 24.
template <typename T> using ByChannel = std::array<T, channels::channelCount>;

template <typename T> T& rowOf(ByChannel<T>& rows, int channel) {
    return rows[static_cast<std::size_t>(channel)];
}
template <typename T> const T& rowOf(const ByChannel<T>& rows, int channel) {
    return rows[static_cast<std::size_t>(channel)];
}

// Which half of the rows is on view: the magnifications or the raised zeros.
enum class RowsTab { magnify, raise };

// Whether each control is on view. As a form is designed, the magnifications are, for the channels
// that have one.
struct OptionRows {
    ByChannel<bool> Label_Magnify{};
    ByChannel<bool> Text_Magnify{};
    ByChannel<bool> ComboScale{};
    core::FromOne<bool, 8> Label_Magnify_Analog_Text;

    OptionRows() {
        Label_Magnify.fill(true);
        Label_Magnify_Analog_Text.fill(true);
        for (int channel = 0; channel < channels::channelCount; ++channel)
            rowOf(Text_Magnify, channel) = channels::channelFacts(channel).magnifyDefault != 0;
    }
    friend bool operator==(const OptionRows&, const OptionRows&) = default;
};

// What leaving a box makes of it.
struct BoxCheck {
    std::string text;     // of the box afterwards
    bool refused = false; // the focus goes back into the box
    bool beep = false;
    friend bool operator==(const BoxCheck&, const BoxCheck&) = default;
};

} // namespace kvo::setup
