#include "tests/forms/support/model_run.h"

#include "channels/channels.h"
#include "core/data_types.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "platform/draw/colour.h"
#include "tools/logger_simulator/model_run.h"
#include "tools/logger_simulator/run_model.h"

#include <array>
#include <cstdlib>
#include <iostream>

namespace kvo::testing {
namespace {

// In the order of the channels' numbers.
constexpr std::array<std::int32_t, channels::channelCount> colours{0x4040FF, 0xFFA040, 0x40FF40,
    0xFFFF40, 0xFF60FF, 0x60C0FF, 0xC0C0C0, 0x00D7FF, 0x00A5FF, 0xB469FF, 0x32CD9A, 0xEBCE87,
    0x7A96E9, 0xD0E040, 0xDDA0DD, 0x8CE6F0, 0x2020D0, 0x0060E0, 0x00A0E0, 0x00E0E0, 0x00E080,
    0xA0A000, 0xE08000, 0xE04080, 0xA8A8FF};

void demand(const platform::WriteResult& written) {
    if (written) return;
    std::cerr << "model run: " << written.message << '\n';
    std::abort();
}

std::string runTextOf(int number) {
    return " Date:Wed 05 Jun 2024 Run: " + std::to_string(number) + " Second round#";
}

} // namespace

core::AppConfig graphConfig(int dataType) {
    core::AppConfig config;
    for (int channel = 0; channel < channels::channelCount; ++channel) {
        channels::visibleFlag(config, channel) = -1;
        channels::colourField(config, channel) = colours[static_cast<std::size_t>(channel)];
    }
    config.Text_Magnify = {};
    config.GraphBackColour = 0;
    config.MaxRpm = 4;
    config.G_Res = 1;
    config.GridStyle = 2;
    config.Exhaust = 0;
    config.LoggerDataType = static_cast<std::int16_t>(dataType);
    config.Vehicle_Type = simulator::vehicleFor(dataType).motorcycle ? 2 : 1;
    const std::array<const char*, 8> names{
        "Oil", "Fuel", "Boost", "Throttle", "G Force", "Volts", "Air", "Lambda"};
    for (int n = 1; n <= 8; ++n) {
        config.AnalogName[n] = names[static_cast<std::size_t>(n - 1)];
        config.AnalogScale[n] = 0.5F;
        config.Decimals[n] = 1;
    }
    config.Analog_Type[8] = 3;
    config.RWheel = 31;
    config.Crown_F = 41;
    config.Pinion_F = 10;
    config.Gears = 2;
    return config;
}

std::string storeModelRun(core::SharedState& state, MemoryFiles& files, int dataType, int number) {
    const auto* facts = core::dataTypeFacts(dataType);
    state.AppFolder = "/kvo";
    state.Config = graphConfig(dataType);
    state.Run.DataType = static_cast<std::uint8_t>(dataType);
    state.Run.SampleCount = static_cast<std::uint16_t>(facts->rows);
    const std::string digit = std::to_string(number);
    state.Run.path = "/kvo/Data/24060512.3" + digit + "d";
    simulator::fillRun(state.Run.image, dataType, facts->rows, facts->timeOffset,
        static_cast<std::uint32_t>(number));
    const std::string text = runTextOf(number);
    demand(core::SaveRun(state.Run, {{}, text, state.Config}, state.AppFolder, files));
    return text.substr(0, text.size() - 1); // without the "#"
}

void listModelRun(core::SharedState& state, MemoryFiles& files, int dataType, int number) {
    storeModelRun(state, files, dataType, number);
    demand(core::AddRunToIndex(state.AppFolder,
        core::indexEntryOf(state.Run.path, runTextOf(number)), core::IndexOrder::sorted, files));
}

} // namespace kvo::testing
