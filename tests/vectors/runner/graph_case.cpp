// Runs and settings of the graph's golden vectors.
#include "channels/channels.h"
#include "core/run_file.h"
#include "graph_functions.h"
#include "tests/support/memory_files.h"

#include <stdexcept>

namespace kvo::vectors {
namespace {

using core::AppConfig;

template <typename Value> void take(const Json& fields, const char* name, Value& value) {
    if (const auto found = fields.find(name); found != fields.end()) value = found->get<Value>();
}

template <typename Array> void takeAll(const Json& fields, const char* name, Array& array) {
    const auto found = fields.find(name);
    if (found == fields.end()) return;
    std::size_t i = 0;
    for (auto& value : array) value = found->at(i++);
}

template <typename Value>
void takeSingle(const Json& fields, const char* name, Value AppConfig::*member, AppConfig& config) {
    take(fields, name, config.*member);
}

platform::Bytes bytesOfRun(const std::filesystem::path& path) {
    static std::map<std::string, platform::Bytes> read;
    const auto [place, isNew] = read.try_emplace(path.string());
    if (isNew) place->second = fileBytes(path);
    return place->second;
}

bool load(const Case& c, const char* key, core::SharedState& state) {
    if (!c.in.contains(key)) return false;
    const std::string name = c.in.at(key).get<std::string>();
    testing::MemoryFiles files;
    const std::string path = "/" + name;
    files.put(path, bytesOfRun(c.files / name));
    const core::LoadOutcome outcome = std::string(key) == "run"
                                          ? core::LoadRun(path, state.Run, files)
                                          : core::LoadOverlayRun(path, state.Overlay, files);
    if (!outcome) throw std::runtime_error("cannot load " + name);
    return true;
}

} // namespace

void applyConfig(const Json& fields, AppConfig& config) {
    takeAll(fields, "ComboScale", config.ComboScale);
    takeAll(fields, "Text_Magnify", config.Text_Magnify);
    takeAll(fields, "SmoothOption", config.SmoothOption);
    takeAll(fields, "AnalogVisible", config.AnalogVisible);
    takeAll(fields, "ExhaustVisible", config.ExhaustVisible);
    takeAll(fields, "AnalogColour", config.AnalogColour);
    takeAll(fields, "ExhaustColour", config.ExhaustColour);
    for (int channel = 0; channel < channels::channelCount; ++channel) {
        const channels::ChannelFacts& facts = channels::channelFacts(channel);
        if (facts.number != 0) continue;
        const std::string name(facts.name);
        take(fields, (name + "Visible").c_str(), channels::visibleFlag(config, channel));
        take(fields, (name + "Colour").c_str(), channels::colourField(config, channel));
    }
    takeSingle(fields, "GraphBackColour", &AppConfig::GraphBackColour, config);
    takeSingle(fields, "GridStyle", &AppConfig::GridStyle, config);
    takeSingle(fields, "OverlayColours", &AppConfig::OverlayColours, config);
    takeSingle(fields, "MaxRpm", &AppConfig::MaxRpm, config);
    takeSingle(fields, "G_Res", &AppConfig::G_Res, config);
    takeSingle(fields, "Exhaust", &AppConfig::Exhaust, config);
    takeSingle(fields, "Vehicle_Type", &AppConfig::Vehicle_Type, config);
    takeSingle(fields, "Gears", &AppConfig::Gears, config);
}

std::unique_ptr<GraphCase> graphCase(const Case& c) {
    auto made = std::make_unique<GraphCase>();
    core::SharedState& state = made->state;
    load(c, "run", state);
    if (load(c, "overlay", state)) made->view.OverlayLoaded = -1;
    take(c.in, "SampleCount", state.Run.SampleCount);
    take(c.in, "OverlayTimeOffset", state.Overlay.image.tail.TimeOffset);
    if (const auto found = c.in.find("config"); found != c.in.end()) {
        applyConfig(*found, state.Config);
    }
    return made;
}

} // namespace kvo::vectors
