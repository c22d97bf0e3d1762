#include "link/decode.h"

#include "core/analog_tables.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"
#include "core/setup_kinds.h"

#include <algorithm>

namespace kvo::link {
namespace {

// Shorter periods are noise. The third channel gives two pulses a revolution, hence its halves.
constexpr double shaftThreshold = 0.00192;
constexpr double outputThreshold = 0.00096;

void convertShaft(std::int16_t& rpm, std::int32_t period, double threshold, double correction,
    double pulsesARevolution) {
    const double t = period > 0 ? period * tickSeconds : 0;
    if (t > threshold)
        core::keepOnFailure(rpm, core::CInt(60 / t * correction / pulsesARevolution));
    else
        rpm = 0;
}

void convertSpeed(std::int32_t& speed, const core::AppConfig& config) {
    if (speed <= 0) {
        speed = 0;
        return;
    }
    // Required: no lower limit here, a period of 1 counts.
    const double t = speed * tickSeconds;
    const double raw = (1 / t) * static_cast<double>(config.Wheel) * wheelConstant *
                       static_cast<double>(config.Speed_Correction);
    core::keepOnFailure(speed, core::CLng(raw));
}

} // namespace

void convertPulses(core::OpenRun& run, const core::AppConfig& config, const PulsePeriods& periods) {
    run.PeakSpeedRaw = 0;
    const int count = std::min<int>(run.SampleCount, core::maxSamples);
    for (int i = 1; i <= count; ++i) {
        core::RunSample& row = run.image.samples[i];
        convertShaft(row.EngineRpm, periods.EnginePeriod[i], shaftThreshold,
            static_cast<double>(config.Engine_Correction), 1);
        convertShaft(row.InputRpm, periods.InputPeriod[i], shaftThreshold,
            static_cast<double>(config.Clutch_Correction), 1);
        convertShaft(row.OutputRpm, periods.OutputPeriod[i], outputThreshold,
            static_cast<double>(config.Pinion_Correction), 2);
        convertSpeed(row.SpeedRaw, config);
        run.PeakSpeedRaw = std::max(run.PeakSpeedRaw, row.SpeedRaw);
    }
}

int analogChannelsWithTables(int dataType) {
    const auto type = downloadType(dataType);
    return type ? type->analogWithTables : core::analogsOf(dataType);
}

void convertAnalogChannel(core::OpenRun& run, const core::AppConfig& config,
    const core::AnalogTables& tables, int channel) {
    const int count = std::min<int>(run.SampleCount, core::maxSamples);
    for (int i = 1; i <= count; ++i) {
        std::uint8_t& raw = run.image.samples[i].Analog[channel];
        raw = core::applyAnalogTable(tables[channel], config.AnalogScale[channel], raw);
    }
}

std::string convertAnalogTables(core::OpenRun& run, const core::AppConfig& config,
    core::AnalogTables& tables, const std::string& appFolder, platform::Files& files) {
    const int channels = analogChannelsWithTables(run.DataType);
    std::string unread;
    for (int c = 1; c <= channels; ++c) {
        if (config.Analog_Type[c] != core::mappedInput) continue;
        const std::string why =
            core::LoadAnalogTable(appFolder, core::analogTableName(c), c, tables, files);
        if (unread.empty()) unread = why;
        convertAnalogChannel(run, config, tables, c);
    }
    return unread;
}

} // namespace kvo::link
