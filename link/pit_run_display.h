#pragma once
// What the live display shows beside the numbers of a pit run: where each stands between the
// smallest and the largest seen since the start, and whether the numbers stand still while the
// logger goes on.
#include "link/pit_run.h"

#include <array>
#include <optional>
#include <string>

namespace kvo::link {

// The channels of a frame: the four speeds, the analogs, the exhausts.
inline constexpr int pitChannels = 20;
inline constexpr int firstPitAnalog = 4;
inline constexpr int firstPitExhaust = 12;

// What was seen of a channel since the start, as the numbers show it.
struct PitRange {
    bool seen = false;
    double value = 0;
    double smallest = 0;
    double largest = 0;
    // 0 at the smallest, 1 at the largest; 0 while all were alike.
    double place() const;
    // "Smallest 812, largest 7440"; empty while nothing was seen.
    std::string text() const;
    std::string smallestText;
    std::string largestText;
};

class PitRunDisplay {
public:
    // A pit run begins: nothing was seen yet, and nothing stands still.
    void start();
    // A frame came. True where it is to be shown; while the numbers stand still it only counts for
    // what was seen.
    bool take(const PitRunReadings& readings);
    // The numbers stand still, or go on.
    void freeze(bool on);
    bool frozen() const { return m_frozen; }

    // What is to be shown now: the last number of each channel, as far as there was any.
    const PitRunReadings& latest() const { return m_latest; }
    // The ranges that belong to the numbers that are shown.
    const std::array<PitRange, pitChannels>& ranges() const { return m_shown; }

private:
    bool m_frozen = false;
    PitRunReadings m_latest;
    std::array<PitRange, pitChannels> m_seen;
    std::array<PitRange, pitChannels> m_shown;
};

} // namespace kvo::link
