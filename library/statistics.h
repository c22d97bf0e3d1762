#pragma once
// Run statistics: minimum, maximum and average of every channel between time zero and the elapsed
// time, the texts the form shows of them, and the horsepower estimate.
#include "core/open_run.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvo::library {

// One channel over the range. The average is there once Cal came so far.
struct ChannelStatistics {
    std::int16_t Min = 0;
    std::int16_t Max = 0;
    std::optional<std::int16_t> Ave;
    std::int64_t sum = 0;
};

struct RunStatistics {
    std::int16_t FromSample = 0;
    std::int16_t ToSample = 0;
    std::int32_t PeakSpeed = 0; // 1/200 mph, inside the range
    ChannelStatistics Rpm;
    ChannelStatistics Input;
    ChannelStatistics Pinion;
    core::FromOne<ChannelStatistics, 8> A; // raw bytes
    core::FromOne<ChannelStatistics, 8> E; // raw bytes
    bool hasRange = false;                 // both ends are known
    // A run-time failure ended Cal: what was made before it is kept, the rest is empty.
    bool failed = false;
};

// All arithmetic of the form. `Text_ET` is the box of the elapsed time, seconds.
RunStatistics Cal(const core::OpenRun& run, std::string_view Text_ET);

// Minimum, maximum and average of one channel as its labels show them.
struct StatisticsRow {
    std::string Min;
    std::string Max;
    std::string Ave;
    bool shown = true;
};

struct StatisticsTexts {
    std::string Range; // "0.00 to 4.75 s", seconds from the launch; empty where it is not known
    std::string Mph_Max;
    StatisticsRow Rpm;
    StatisticsRow Input;
    StatisticsRow Pinion;
    core::FromOne<StatisticsRow, 8> A;
    core::FromOne<StatisticsRow, 8> E;
};
// `picture` is the shared slot of AnalogFormat; `exhaustUnit` -1 for Fahrenheit.
StatisticsTexts statisticsTexts(const RunStatistics& statistics, const core::OpenRun& run,
    int exhaustUnit, std::string& picture);

// Caption of the form from that of the graph.
std::string statisticsCaption(std::string_view graphCaption);
// Caption of the info of the run in the graph, from that of the graph.
std::string infoCaption(std::string_view graphCaption);

// Rear wheel horsepower from elapsed time (seconds, as typed) and weight; nothing unless both are
// above 0: the label then stays as it is.
std::optional<std::string> horsepower(std::string_view Et, float Weight_F);

} // namespace kvo::library
