#include "link/pit_run_display.h"

#include "core/basic/numbers.h"

namespace kvo::link {

namespace {

// The texts of all channels in their order, of readings that may be const.
template <class Readings> auto pitTexts(Readings& readings) {
    std::array<decltype(&readings.ERpm), pitChannels> texts{
        &readings.ERpm, &readings.CRpm, &readings.PRpm, &readings.Mph};
    for (int i = 1; i <= 8; ++i) {
        texts[static_cast<std::size_t>(firstPitAnalog + i - 1)] = &readings.Analog[i];
        texts[static_cast<std::size_t>(firstPitExhaust + i - 1)] = &readings.T[i];
    }
    return texts;
}

void takeNumber(PitRange& range, const std::string& text) {
    range.value = core::Val(text);
    if (!range.seen || range.value < range.smallest) {
        range.smallest = range.value;
        range.smallestText = text;
    }
    if (!range.seen || range.value > range.largest) {
        range.largest = range.value;
        range.largestText = text;
    }
    range.seen = true;
}

} // namespace

double PitRange::place() const {
    return largest > smallest ? (value - smallest) / (largest - smallest) : 0;
}

std::string PitRange::text() const {
    if (!seen) return {};
    return "Smallest " + core::rightTrimmed(core::leftTrimmed(smallestText)) + ", largest " +
           core::rightTrimmed(core::leftTrimmed(largestText));
}

void PitRunDisplay::start() {
    *this = {};
}

bool PitRunDisplay::take(const PitRunReadings& readings) {
    const auto texts = pitTexts(readings);
    const auto latest = pitTexts(m_latest);
    m_latest.LineNumber = readings.LineNumber;
    for (std::size_t channel = 0; channel < texts.size(); ++channel) {
        const std::optional<std::string>& text = *texts[channel];
        if (!text) continue; // its number stays as it was
        *latest[channel] = text;
        takeNumber(m_seen[channel], *text);
    }
    if (!m_frozen) m_shown = m_seen;
    return !m_frozen;
}

void PitRunDisplay::freeze(bool on) {
    m_frozen = on;
    if (!on) m_shown = m_seen;
}

} // namespace kvo::link
