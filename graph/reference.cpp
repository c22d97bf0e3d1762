#include "graph/reference.h"

#include "channels/channels.h"
#include "core/basic/format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace kvo::graph {
namespace {

// A number as a label shows it: its digits as a whole number, how many of them are decimals, and
// the unit behind.
struct ShownNumber {
    std::int64_t digits = 0;
    int decimals = 0;
    std::string unit;
};

constexpr std::size_t mostDigits = 15;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::optional<ShownNumber> shownNumber(const std::string& text) {
    const bool negative = text.starts_with('-');
    ShownNumber number;
    std::string digits;
    bool behindPoint = false;
    std::size_t at = negative ? 1 : 0;
    for (; at < text.size() && (isDigit(text[at]) || (text[at] == '.' && !behindPoint)); ++at) {
        if (text[at] == '.') {
            behindPoint = true;
            continue;
        }
        digits += text[at];
        if (behindPoint) ++number.decimals;
    }
    if (digits.empty() || digits.size() > mostDigits) return std::nullopt;
    std::from_chars(digits.data(), digits.data() + digits.size(), number.digits);
    if (negative) number.digits = -number.digits;
    number.unit = text.substr(at);
    return number;
}

void takeDecimals(ShownNumber& number, int decimals) {
    for (; number.decimals < decimals; ++number.decimals) number.digits *= 10;
}

// "+1.25", "-0.05", "0.00".
std::string signedText(std::int64_t digits, int decimals) {
    std::string text = std::to_string(digits < 0 ? -digits : digits);
    const auto behind = static_cast<std::size_t>(decimals);
    if (text.size() <= behind) text.insert(0, behind + 1 - text.size(), '0');
    if (behind > 0) text.insert(text.size() - behind, ".");
    if (digits == 0) return text;
    return (digits < 0 ? "-" : "+") + text;
}

// The texts of the run's labels by channel; empty where there is none.
using RunTexts = std::array<std::string, channels::channelCount>;
RunTexts textsByChannel(const ReadOutTexts& texts) {
    RunTexts all;
    for (const LabelText& label : texts.labels) {
        if (!label.overlay) all[static_cast<std::size_t>(label.channel)] = label.text;
    }
    return all;
}

std::string timeText(const channels::RunView& run, int sample) {
    return core::Format(timeOf(run, sample), "##0.00 s\\ec");
}

} // namespace

std::string difference(const std::string& here, const std::string& reference) {
    auto minuend = shownNumber(here);
    auto subtrahend = shownNumber(reference);
    if (!minuend || !subtrahend || minuend->unit != subtrahend->unit) return {};
    const int decimals = std::max(minuend->decimals, subtrahend->decimals);
    takeDecimals(*minuend, decimals);
    takeDecimals(*subtrahend, decimals);
    return signedText(minuend->digits - subtrahend->digits, decimals) + minuend->unit;
}

Differences differences(
    const ReadOutInput& input, const ReadOutTexts& here, std::optional<int> cursor, int reference) {
    const channels::RunView& run = input.runs.run;
    const channels::ShownRuns runAlone{run, std::nullopt};
    std::string picture = input.analogPicture;
    GraphView view;
    const RunTexts now = textsByChannel(here);
    const RunTexts then =
        textsByChannel(timeLineTexts({runAlone, input.config, picture, view}, reference));
    Differences all;
    if (cursor) all.time = difference(timeText(run, *cursor), timeText(run, reference));
    for (const int channel : channels::labelOrder()) {
        const auto place = static_cast<std::size_t>(channel);
        all.labels.push_back({channel, difference(now[place], then[place]), true});
    }
    return all;
}

} // namespace kvo::graph
