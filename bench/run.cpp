#include "bench/run.h"

#include "channels/channels.h"
#include "core/run_file.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace kvo::bench {
namespace {

template <typename T> T whole(double value) {
    return static_cast<T>(std::lround(value));
}

core::RunSample sampleAt(int i, int rows, bool switches) {
    const double t = static_cast<double>(i) / rows;
    const double gear = std::fmod(t * 4.0, 1.0); // four gears: rpm falls at each change
    const double engine = 5200 + 3800 * gear + 120 * std::sin(i * 0.7);
    core::RunSample row;
    row.Index = whole<std::int16_t>(i);
    row.EngineRpm = whole<std::int16_t>(engine);
    row.InputRpm = whole<std::int16_t>(engine * (0.82 + 0.17 * gear));
    row.OutputRpm = whole<std::int16_t>(1 + 7000 * t + 60 * std::sin(i * 0.3));
    row.SpeedRaw = whole<std::int32_t>(200 * 190 * std::sqrt(t));
    if (switches)
        row.Status =
            static_cast<std::uint8_t>((t < 0.1 ? 1 : 0) | (t > 0.1 && t < 0.9 ? 2 : 0) |
                                      (gear > 0.8 ? 4 : 0) | (t > 0.05 && t < 0.12 ? 8 : 0));
    for (int n = 1; n <= 8; ++n) {
        row.Analog[n] = whole<std::uint8_t>(128 + 100 * std::sin(t * 9 * n + n));
        row.Exhaust[n] = whole<std::uint8_t>(40 + 150 * t + 8 * std::sin(i * 0.05 * n));
    }
    return row;
}

} // namespace

void fillRun(core::SharedState& state, int dataType, int rows, bool switches) {
    state.Run.DataType = static_cast<std::uint8_t>(dataType);
    state.Run.SampleCount = static_cast<std::uint16_t>(rows);
    core::RunImage& run = state.Run.image;
    run.header.CrankGearTeeth = 31;
    run.header.BasketGearTeeth = 47;
    for (int i = 1; i <= rows; ++i) run.samples[i] = sampleAt(i, rows, switches);
    for (int n = 1; n <= 8; ++n) run.setup.AnalogName[n] = "Channel ";
    run.analog.AnalogScale.fill(1);
    run.analog.RearWheelDiameter = 33;
    run.analog.CrownTeeth = 41;
    run.analog.PinionTeeth = 10;
    run.tail.TimeOffset = 160;
    state.Run.PeakSpeedRaw = 38000;
    state.Config.MaxRpm = 4;
    state.Config.G_Res = 1;
    state.Config.GraphBackColour = 0;
    for (int channel = 0; channel < channels::channelCount; ++channel) {
        channels::visibleFlag(state.Config, channel) = -1;
        channels::colourField(state.Config, channel) = 0x404040 + channel * 0x070503;
    }
}

void addOverlay(core::SharedState& state) {
    state.Overlay = state.Run;
    state.Overlay.image.tail.TimeOffset = 130;
}

platform::WriteResult saveFresh(core::SharedState& state, platform::Files& files) {
    const core::LoggerIdentity logger{35, 3, 2, 0};
    return core::SaveRun(state.Run, {logger, benchRunText, state.Config}, state.AppFolder, files);
}

ScratchFolder::ScratchFolder() {
    std::error_code error;
    std::string base = "/dev/shm";
    if (!std::filesystem::is_directory(base, error))
        base = std::filesystem::temp_directory_path(error).string();
    m_path = base + "/kvo-bench-XXXXXX";
    if (!mkdtemp(m_path.data())) std::abort();
}

ScratchFolder::~ScratchFolder() {
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
}

} // namespace kvo::bench
