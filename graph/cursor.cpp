#include "graph/cursor.h"

#include "core/basic/numbers.h"
#include "core/basic/pictures.h"
#include "graph/curves.h"
#include "graph/derived.h"

#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace kvo::graph {
namespace {

using core::CStr;
using core::Format;
using core::RunSample;

bool hasExhausts(int type) {
    return type == 25 || type == 32 || type == 43;
}

// Analogs that a data type has.
int lastAnalog(int type) {
    if (type <= 16) return 4;
    return type == 20 ? 6 : 8;
}

// The exhaust whose temperature a row of a time-shared run carries, 1 to 8.
int sharedExhaust(const RunSample& row) {
    return ((row.Status >> 4) & 7) + 1;
}

// What one read-out or hit test works on.
struct Place {
    core::SharedState& state;
    GraphView& view;
    int sample;
    const RunSample& row;
};

void readRocos(const Place& at) {
    at.view.RocosFromOverlay = 0;
    const TextReading text = RoCoS_Cal(at.state.Run, at.state.SampleCount, at.sample);
    if (text.hasText()) at.view.RocosText = text.text;
}

void addTemperatures(const Place& at, TimeLineTexts& texts) {
    const int unit = at.state.Config.Exhaust;
    if (hasExhausts(at.state.DataType)) {
        for (int n = 1; n <= 8; ++n) {
            texts.labels.push_back({exhaustChannel(n), CStr(temperature(at.row.Exhaust[n], unit))});
        }
    } else if (at.state.DataType == 20) {
        texts.labels.push_back(
            {exhaustChannel(sharedExhaust(at.row)), CStr(temperature(at.row.Analog[7], unit))});
    }
}

bool addAnalogs(const Place& at, TimeLineTexts& texts) {
    for (int n = 1; n <= lastAnalog(at.state.DataType); ++n) {
        const TextReading text = analogRead(analogSetup(at.state.Run, n), at.row.Analog[n],
            at.state.Config.Exhaust, at.state.AnalogPicture);
        if (text.hasFailed()) return false;
        if (text.hasText()) texts.labels.push_back({analogChannel(n), text.text});
    }
    return true;
}

constexpr float hitDistance = 5;

// Height of a curve at the sample, without smoothing: none where there is no value to be hit.
Reading heightValue(const Place& at, const ChannelFacts& facts) {
    const RunSample& row = at.row;
    const auto ratio = primaryRatio(at.state.Run.header);
    switch (facts.kind) {
    case ChannelKind::engine:
        return Reading::of(row.EngineRpm);
    case ChannelKind::input:
        return Reading::of(row.InputRpm);
    case ChannelKind::output:
        return Reading::of(row.OutputRpm);
    case ChannelKind::clutch:
        return ratio ? Reading::of(clutchRpm(*ratio, row.EngineRpm)) : Reading::failed();
    case ChannelKind::slip:
        return ratio ? slipMouse(*ratio, row.EngineRpm, row.InputRpm) : Reading::failed();
    case ChannelKind::ratio:
        return ratio ? ratioMouse(*ratio, row.EngineRpm, row.OutputRpm) : Reading::failed();
    case ChannelKind::mph:
        return Reading::of(row.SpeedRaw);
    case ChannelKind::rocos:
        return rocosDrawn(at.state.Run, at.state.SampleCount, at.sample);
    case ChannelKind::tyreGrowth: {
        // Where the growth has no value its curve runs at the foot, which is not hit.
        const Reading growth = tyreGrowthMouse(row.SpeedRaw, row.OutputRpm, at.state.Run.analog);
        return growth.hasValue() ? tyreGrowthDrawn(row.SpeedRaw, row.OutputRpm, at.state.Run.analog)
                                 : growth;
    }
    case ChannelKind::analog:
        if (facts.number > lastAnalog(at.state.DataType)) return Reading::none();
        return Reading::of(
            analogDrawn(row.Analog[facts.number], at.state.Run.tail.AnalogTypes[facts.number]));
    case ChannelKind::exhaust:
        break;
    }
    // Time-shared exhausts are not found under the pointer.
    if (!hasExhausts(at.state.DataType)) return Reading::none();
    return Reading::of(row.Exhaust[facts.number]);
}

std::string analogText(const Place& at, int n, const PointerLabels& labels) {
    const TextReading value = analogRead(analogSetup(at.state.Run, n), at.row.Analog[n],
        at.state.Config.Exhaust, at.state.AnalogPicture);
    return labels.analogCaption(n) + " = " + value.text;
}

std::string hitText(const Place& at, const ChannelFacts& facts, const PointerLabels& labels) {
    const RunSample& row = at.row;
    const double ratio = primaryRatio(at.state.Run.header).value_or(0);
    switch (facts.kind) {
    case ChannelKind::engine:
        return " Engine Rpm = " + CStr(row.EngineRpm);
    case ChannelKind::clutch:
        return " Clutch Rpm = " + CStr(clutchRpm(ratio, row.EngineRpm));
    case ChannelKind::input:
        return " Input Rpm = " + CStr(row.InputRpm);
    case ChannelKind::output:
        return " Output Rpm = " + CStr(row.OutputRpm);
    case ChannelKind::slip:
        return " Input Slip = " + slipRead(ratio, row.EngineRpm, row.InputRpm) + "%";
    case ChannelKind::ratio:
        // Required: with the primary drive, unlike the value label.
        return " Drive Ratio = " +
               Format(ratioDrawn(ratio, row.EngineRpm, row.OutputRpm), "##0.00");
    case ChannelKind::mph:
        return " Mph = " + Format(mph(row.SpeedRaw), "##0.00 ");
    case ChannelKind::rocos:
        readRocos(at);
        return " RoCoS = " + at.view.RocosText;
    case ChannelKind::tyreGrowth:
        return " Tyre Growth = " +
               Format(tyreGrowthMouse(row.SpeedRaw, row.OutputRpm, at.state.Run.analog).value,
                   "##0.00 in");
    case ChannelKind::analog:
        return analogText(at, facts.number, labels);
    case ChannelKind::exhaust:
        break;
    }
    return " Exhaust Temp " + CStr(facts.number) + " = " +
           CStr(temperature(row.Exhaust[facts.number], at.state.Config.Exhaust));
}

struct SwitchZone {
    core::StatusBit bit;
    float low; // neither end belongs to it
    float high;
    const char* text;
};
constexpr std::array<SwitchZone, 4> switchZones{{
    {core::Dyna2Step, 1087, 1097, " Dyna 2 Step "},
    {core::ShiftLight, 1069, 1079, " Shift Light "},
    {core::WideOpenThrottle, 1051, 1061, " Wide Open Throttle "},
    {core::TransBrake, 1033, 1043, " Trans Brake "},
}};

} // namespace

bool onRun(const core::SharedState& state, int sample) {
    return sample >= 1 && sample <= state.SampleCount;
}

TimeLineTexts timeLineTexts(core::SharedState& state, GraphView& view, int sample) {
    const RunSample& row = state.Run.rowOrZero(sample);
    const Place at{state, view, sample, row};
    TimeLineTexts texts;
    texts.loggerTime =
        "Time: " + Format((row.Index - state.Run.tail.TimeOffset) / 100.0, "##0.00 s\\ec");
    texts.labels = {{engineChannel, CStr(row.EngineRpm)}, {inputChannel, CStr(row.InputRpm)},
        {outputChannel, CStr(row.OutputRpm)}};
    const auto ratio = primaryRatio(state.Run.header);
    if (!ratio) return texts;
    texts.labels.push_back({clutchChannel, CStr(clutchRpm(*ratio, row.EngineRpm))});
    texts.labels.push_back({ratioChannel, ratioRead(row.EngineRpm, row.OutputRpm)});
    texts.labels.push_back({slipChannel, slipRead(*ratio, row.EngineRpm, row.InputRpm)});
    readRocos(at);
    texts.labels.push_back({rocosChannel, view.RocosText});
    const double speed = mph(row.SpeedRaw);
    const std::string speedText = mphRead(speed);
    texts.labels.push_back({mphChannel, speedText});
    const TextReading growth = tyreGrowthRead(speed, row.OutputRpm, speedText, state.Run.analog);
    if (growth.hasFailed()) return texts;
    if (growth.hasText()) texts.labels.push_back({tyreGrowthChannel, growth.text});
    if (addAnalogs(at, texts)) addTemperatures(at, texts);
    return texts;
}

int cursorStep(bool right, bool shift, bool ctrl, bool alt) {
    int step = 1;
    if (shift && !ctrl && !alt) step = 100;
    if (ctrl && !shift && !alt) step = 50;
    if (alt && !shift && !ctrl) step = 10;
    return right ? step : -step;
}

std::optional<std::string> textUnderPointer(
    core::SharedState& state, GraphView& view, float x, float y, const PointerLabels& labels) {
    const auto sample = core::CInt(x);
    if (!sample || !onRun(state, *sample)) return {};
    const Place at{state, view, *sample, state.Run.rowOrZero(*sample)};
    for (const SwitchZone& zone : switchZones) {
        if (y > zone.low && y < zone.high && (at.row.Status & zone.bit) != 0) return zone.text;
    }
    for (const int channel : labelOrder()) {
        if (!labels.valueEnabled(channel)) continue;
        const ChannelFacts& facts = channelFacts(channel);
        const Reading value = heightValue(at, facts);
        if (value.hasFailed()) return {};
        if (!value.hasValue()) continue;
        const auto height =
            curveHeight(state.Config, channel, value.value, view.RpmScale, view.MphScale);
        if (!height) return {};
        if (std::abs(*height - y) < hitDistance) return hitText(at, facts, labels);
    }
    return {};
}

} // namespace kvo::graph
