#include "library/statistics.h"

#include "channels/derived.h"
#include "channels/sample_place.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"

#include <algorithm>

namespace kvo::library {

namespace {

constexpr int alwaysAveraged = 6; // analog channels of the first pass

void seed(ChannelStatistics& channel, std::int16_t value, std::int64_t sum) {
    channel.Min = value;
    channel.Max = value;
    channel.sum = sum;
}

void take(ChannelStatistics& channel, std::int16_t value) {
    channel.Min = std::min(channel.Min, value);
    channel.Max = std::max(channel.Max, value);
    channel.sum += value;
}

// Required: the divisor is the width of the range and not the number of rows. False on a run-time
// failure (a width of 0, an average beyond 16 bits).
bool average(ChannelStatistics& channel, int width) {
    if (width == 0) return false;
    channel.Ave = core::CInt(static_cast<double>(channel.sum) / width);
    return channel.Ave.has_value();
}

bool timeShared(const core::OpenRun& run) {
    return core::exhaustsOf(run.DataType) == core::Exhausts::timeShared;
}

void seedAll(RunStatistics& result, const core::RunSample& row, bool sharedExhausts) {
    result.PeakSpeed = row.SpeedRaw;
    // Required: the first row stands in the rpm sums here and once more by the pass.
    seed(result.Rpm, row.EngineRpm, row.EngineRpm);
    seed(result.Input, row.InputRpm, row.InputRpm);
    seed(result.Pinion, row.OutputRpm, row.OutputRpm);
    for (int c = 1; c <= 8; ++c) {
        seed(result.A[c], row.Analog[c], 0);
        if (!sharedExhausts) seed(result.E[c], row.Exhaust[c], 0);
    }
}

void firstPass(RunStatistics& result, const core::RunImage& run, int last) {
    for (int i = result.FromSample; i <= last; ++i) {
        const core::RunSample& row = run.rowOrZero(i);
        result.PeakSpeed = std::max(result.PeakSpeed, row.SpeedRaw);
        take(result.Rpm, row.EngineRpm);
        take(result.Input, row.InputRpm);
        take(result.Pinion, row.OutputRpm);
        for (int c = 1; c <= alwaysAveraged; ++c) take(result.A[c], row.Analog[c]);
    }
}

bool firstAverages(RunStatistics& result, int width) {
    if (!average(result.Rpm, width) || !average(result.Input, width) ||
        !average(result.Pinion, width)) {
        return false;
    }
    for (int c = 1; c <= alwaysAveraged; ++c) {
        if (!average(result.A[c], width)) return false;
    }
    return true;
}

void secondPass(RunStatistics& result, const core::RunImage& run, int last) {
    for (int i = result.FromSample; i <= last; ++i) {
        const core::RunSample& row = run.rowOrZero(i);
        for (int c = alwaysAveraged + 1; c <= 8; ++c) take(result.A[c], row.Analog[c]);
        for (int c = 1; c <= 8; ++c) take(result.E[c], row.Exhaust[c]);
    }
}

// Time-shared exhausts: one temperature a row, in analog 7; the status names its channel.
void timeSharedPass(RunStatistics& result, const core::RunImage& run, int last) {
    core::FromOne<bool, 8> started;
    for (int i = result.FromSample; i <= last; ++i) {
        const core::RunSample& row = run.rowOrZero(i);
        const int channel = channels::sharedExhaust(row);
        const std::int16_t reading = row.Analog[7];
        if (!started[channel]) seed(result.E[channel], reading, 0);
        started[channel] = true;
        take(result.E[channel], reading);
    }
}

bool secondAverages(RunStatistics& result, bool sharedExhausts, int width) {
    if (!sharedExhausts) {
        for (int c = alwaysAveraged + 1; c <= 8; ++c) {
            if (!average(result.A[c], width)) return false;
        }
    }
    for (int c = 1; c <= 8; ++c) {
        if (!average(result.E[c], width)) return false;
    }
    return true;
}

bool calculate(RunStatistics& result, const core::OpenRun& run, std::string_view Text_ET) {
    const core::RunImage& image = run.image;
    result.FromSample = image.tail.TimeOffset;
    const double elapsed = core::Val(Text_ET);
    // Required: the end is a sample number of its own and is not shifted by time zero.
    if (!core::keepOnFailure(
            result.ToSample, core::CInt(elapsed > 0 ? elapsed * 100 : run.SampleCount))) {
        return false;
    }
    result.ToSample = static_cast<std::int16_t>(std::min<int>(result.ToSample, run.SampleCount));
    result.hasRange = true;
    const int width = result.ToSample - result.FromSample;
    seedAll(result, image.rowOrZero(result.FromSample), timeShared(run));
    firstPass(result, image, result.ToSample);
    if (!firstAverages(result, width)) return false;
    if (timeShared(run)) {
        timeSharedPass(result, image, result.ToSample);
    } else {
        secondPass(result, image, result.ToSample);
    }
    return secondAverages(result, timeShared(run), width);
}

// FromSample is time zero.
std::string rangeText(const RunStatistics& statistics) {
    if (!statistics.hasRange) return {};
    const auto seconds = [&](int sample) {
        return core::Format((sample - statistics.FromSample) / core::samplesPerSecond, "#0.00");
    };
    return seconds(statistics.FromSample) + " to " + seconds(statistics.ToSample) + " s";
}

StatisticsRow numberRow(const ChannelStatistics& channel) {
    return {core::Str(static_cast<int>(channel.Min)), core::Str(static_cast<int>(channel.Max)),
        channel.Ave ? core::Str(static_cast<int>(*channel.Ave)) : "", true};
}

std::string analogText(
    const channels::AnalogSetup& setup, int raw, int exhaustUnit, std::string& picture) {
    constexpr int temperatureKind = 1;
    if (setup.type == temperatureKind) return core::Str(channels::temperature(raw, exhaustUnit));
    const channels::TextReading reading = channels::analogRead(setup, raw, exhaustUnit, picture);
    return reading.hasText() ? reading.text : "";
}

StatisticsRow analogRow(const ChannelStatistics& channel, const channels::AnalogSetup& setup,
    int exhaustUnit, std::string& picture) {
    return {analogText(setup, channel.Min, exhaustUnit, picture),
        analogText(setup, channel.Max, exhaustUnit, picture),
        channel.Ave ? analogText(setup, *channel.Ave, exhaustUnit, picture) : "", true};
}

StatisticsRow temperatureRow(const ChannelStatistics& channel, int exhaustUnit) {
    const auto text = [&](int raw) { return core::Str(channels::temperature(raw, exhaustUnit)); };
    return {text(channel.Min), text(channel.Max), channel.Ave ? text(*channel.Ave) : "", true};
}

// What stands behind "Data File:", up to the overlay's name.
std::string nameInGraph(std::string_view graphCaption) {
    constexpr std::size_t first = 10;
    const std::string_view named = graphCaption.substr(0, graphCaption.find("Overlay File:"));
    return named.size() > first ? std::string(named.substr(first)) : std::string();
}

} // namespace

RunStatistics Cal(const core::OpenRun& run, std::string_view Text_ET) {
    RunStatistics result;
    result.failed = !calculate(result, run, Text_ET);
    return result;
}

StatisticsTexts statisticsTexts(const RunStatistics& statistics, const core::OpenRun& run,
    int exhaustUnit, std::string& picture) {
    StatisticsTexts texts;
    texts.Range = rangeText(statistics);
    texts.Mph_Max = channels::mphRead(channels::mph(statistics.PeakSpeed));
    texts.Rpm = numberRow(statistics.Rpm);
    texts.Input = numberRow(statistics.Input);
    texts.Pinion = numberRow(statistics.Pinion);
    const bool exhausts = core::exhaustsOf(run.DataType) != core::Exhausts::none;
    for (int c = 1; c <= 8; ++c) {
        texts.A[c] =
            analogRow(statistics.A[c], channels::analogSetup(run.image, c), exhaustUnit, picture);
        texts.A[c].shown = c <= core::analogsOf(run.DataType);
        texts.E[c] = temperatureRow(statistics.E[c], exhaustUnit);
        texts.E[c].shown = exhausts;
    }
    return texts;
}

std::string statisticsCaption(std::string_view graphCaption) {
    return " Statistics For : " + nameInGraph(graphCaption);
}

std::string infoCaption(std::string_view graphCaption) {
    return "Info For : " + nameInGraph(graphCaption);
}

std::optional<std::string> horsepower(std::string_view Et, float Weight_F) {
    constexpr double mileFactor = 5.825; // quarter mile seconds of one horsepower a pound
    const double seconds = core::Val(Et);
    if (!(seconds > 0) || !(Weight_F > 0)) return {};
    const double base = seconds / mileFactor;
    return core::CStr(core::Fix(static_cast<double>(Weight_F) / (base * base * base)));
}

} // namespace kvo::library
