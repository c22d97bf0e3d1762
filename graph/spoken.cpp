#include "graph/spoken.h"

#include "channels/channels.h"

namespace kvo::graph {
namespace {

const char* nameOf(SecondValue kind) {
    return kind == SecondValue::overlay ? "overlay " : "difference ";
}

std::string valueOf(const std::string& text) {
    return text.empty() ? "no value" : spokenNumber(text);
}

std::string withUnit(const std::string& text, std::string_view unit) {
    std::string all = valueOf(text);
    if (!text.empty() && !unit.empty()) all.append(" ").append(unit);
    return all;
}

} // namespace

std::string_view spokenUnit(int channel) {
    using channels::ChannelKind;
    switch (channels::channelFacts(channel).kind) {
    case ChannelKind::engine:
    case ChannelKind::clutch:
    case ChannelKind::input:
    case ChannelKind::output:
        return "rpm";
    case ChannelKind::slip:
        return "percent";
    case ChannelKind::exhaust:
        return "degrees";
    case ChannelKind::ratio:
    case ChannelKind::rocos:
    case ChannelKind::mph:
    case ChannelKind::analog:
    case ChannelKind::tyreGrowth:
        break;
    }
    return {};
}

std::string spokenNumber(std::string_view text) {
    const std::size_t from = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
    std::size_t behind = from;
    while (behind < text.size() && text[behind] >= '0' && text[behind] <= '9') ++behind;
    std::string all(text);
    for (std::size_t at = behind; at > from + 3; at -= 3) all.insert(at - 3, ",");
    return all;
}

std::string spokenBox(const SpokenBox& box) {
    std::string all = box.caption + " " + withUnit(box.value, box.unit);
    if (box.kind != SecondValue::none)
        all.append(", ").append(nameOf(box.kind)).append(valueOf(box.second));
    return all;
}

std::string spokenSecond(const SpokenBox& box) {
    if (box.kind == SecondValue::none) return box.caption;
    return box.caption + ", " + nameOf(box.kind) + withUnit(box.second, box.unit);
}

std::string spokenCursor(const std::string& time, const std::vector<SpokenBox>& boxes) {
    if (time.empty()) return {};
    std::string all = time;
    for (const SpokenBox& box : boxes) {
        const bool none = box.value.empty() && box.second.empty();
        if (!none) all.append(". ").append(spokenBox(box));
    }
    return all;
}

} // namespace kvo::graph
