#pragma once
// The routine of a channel as its call reads: "DrawEngine", "DrawAnalog(3)"; the overlay's with an
// "O" in front.
#include "channels/channels.h"

#include <string>

namespace kvo::testing {

inline std::string drawCall(int channel, bool overlay) {
    const channels::ChannelFacts& facts = channels::channelFacts(channel);
    std::string call = overlay ? "O" : "";
    call += facts.drawRoutine;
    if (facts.number != 0) call += "(" + std::to_string(facts.number) + ")";
    return call;
}

} // namespace kvo::testing
