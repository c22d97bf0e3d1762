#include "graph/cursor.h"

#include "channels/derived.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "graph/curves.h"

#include <array>
#include <cmath>

namespace kvo::graph {

using namespace channels;
namespace {

using core::CStr;
using core::Format;
using core::RunSample;

constexpr float hitDistance = 5; // units, the end not included

// --- The switch strip

struct SwitchZone {
    core::StatusBit bit;
    float low; // neither end belongs to it
    float high;
    float overlayLow;
    float overlayHigh;
    const char* name;
};
constexpr std::array<SwitchZone, 4> switchZones{{
    {core::Dyna2Step, 1087, 1097, 1078, 1088, "Dyna 2 Step "},
    {core::ShiftLight, 1069, 1079, 1060, 1070, "Shift Light "},
    {core::WideOpenThrottle, 1051, 1061, 1042, 1052, "Wide Open Throttle "},
    {core::TransBrake, 1033, 1043, 1024, 1034, "Trans Brake "},
}};

bool between(float y, float low, float high) {
    return y > low && y < high;
}

std::optional<std::string> switchUnder(
    float y, const RunPlace& run, const std::optional<RunPlace>& overlay) {
    for (const SwitchZone& zone : switchZones) {
        if (between(y, zone.low, zone.high) && (run.row().Status & zone.bit) != 0) {
            return std::string(" ") + zone.name;
        }
        if (overlay && between(y, zone.overlayLow, zone.overlayHigh) &&
            (overlay->row().Status & zone.bit) != 0) {
            return std::string(" Overlay ") + zone.name;
        }
    }
    return std::nullopt;
}

// --- The curves

// Value of a curve at the sample, without smoothing: none where there is none to be hit.
Reading curveValue(const RunPlace& at, const ChannelFacts& facts) {
    const RunSample& row = at.row();
    const auto ratio = primaryRatio(at.ratioDrive);
    switch (facts.kind) {
    case ChannelKind::engine:
        return Reading::of(row.EngineRpm);
    case ChannelKind::input:
        return Reading::of(row.InputRpm);
    case ChannelKind::output:
        return Reading::of(row.OutputRpm);
    case ChannelKind::mph:
        return Reading::of(row.SpeedRaw);
    case ChannelKind::clutch: {
        const auto own = primaryRatio(at.image.header);
        return own ? Reading::of(clutchRpm(*own, row.EngineRpm)) : Reading::failed();
    }
    case ChannelKind::slip:
        return ratio ? slipMouse(*ratio, row.EngineRpm, row.InputRpm) : Reading::failed();
    case ChannelKind::ratio:
        return ratio ? ratioMouse(*ratio, row.EngineRpm, row.OutputRpm) : Reading::failed();
    case ChannelKind::rocos:
        return rocosDrawn(at.image, at.sampleCount, at.sample);
    case ChannelKind::tyreGrowth: {
        // Where the growth has no value its curve runs at the foot, which is not hit.
        const Reading growth = tyreGrowthMouse(row.SpeedRaw, row.OutputRpm, at.image.analog);
        if (!growth.hasValue()) return growth;
        return tyreGrowthDrawn(row.SpeedRaw, row.OutputRpm, at.image.analog);
    }
    case ChannelKind::analog:
        if (facts.number > lastAnalog(at.dataType)) return Reading::none();
        return Reading::of(
            analogDrawn(row.Analog[facts.number], at.image.tail.AnalogTypes[facts.number]));
    case ChannelKind::exhaust:
        break;
    }
    // Time-shared exhausts are not found under the pointer.
    return hasExhausts(at.dataType) ? Reading::of(row.Exhaust[facts.number]) : Reading::none();
}

// Writes the text of a hit.
class HitText {
public:
    HitText(
        core::SharedState& state, GraphView& view, const RunPlace& at, const PointerLabels& labels)
        : m_state(state), m_view(view), m_at(at), m_labels(labels) {}

    std::optional<std::string> of(const ChannelFacts& facts) {
        if (facts.kind == ChannelKind::analog) return analog(facts.number);
        return (m_at.overlay ? " Overlay" : "") + own(facts);
    }

private:
    std::string own(const ChannelFacts& facts) {
        const RunSample& row = m_at.row();
        const double ratio = primaryRatio(m_at.ratioDrive).value_or(0);
        switch (facts.kind) {
        case ChannelKind::engine:
            return " Engine Rpm = " + CStr(row.EngineRpm);
        case ChannelKind::clutch:
            return " Clutch Rpm = " +
                   CStr(clutchRpm(primaryRatio(m_at.image.header).value_or(0), row.EngineRpm));
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
            // Required: a picture for the run, the plain number for the overlay.
            return " Mph = " +
                   (m_at.overlay ? CStr(mph(row.SpeedRaw)) : Format(mph(row.SpeedRaw), "##0.00 "));
        case ChannelKind::rocos:
            return " RoCoS = " + rocos();
        case ChannelKind::tyreGrowth:
            return " Tyre Growth = " +
                   Format(tyreGrowthMouse(row.SpeedRaw, row.OutputRpm, m_at.image.analog).value,
                       m_at.overlay ? "##00.00 in" : "##0.00 in");
        case ChannelKind::analog:
        case ChannelKind::exhaust:
            break;
        }
        return " Exhaust Temp " + CStr(facts.number) + " = " +
               CStr(temperature(row.Exhaust[facts.number], m_state.Config.Exhaust));
    }

    std::string rocos() {
        m_view.RocosFromOverlay = m_at.overlay ? -1 : 0;
        const TextReading text = RoCoS_Cal(m_at.image, m_at.sampleCount, m_at.sample);
        if (text.hasText()) m_view.RocosText = text.text;
        m_view.RocosFromOverlay = 0;
        return m_view.RocosText;
    }

    std::optional<std::string> analog(int n) {
        const TextReading value = analogRead(analogSetup(m_at.image, n), m_at.row().Analog[n],
            m_state.Config.Exhaust, m_state.AnalogPicture);
        if (!value.hasText()) return std::nullopt;
        return (m_at.overlay ? " Overlay " : "") + m_labels.analogCaption(n) + " = " + value.text;
    }

    core::SharedState& m_state;
    GraphView& m_view;
    RunPlace m_at;
    const PointerLabels& m_labels;
};

struct Search {
    bool ended = false; // a hit, or a run-time failure
    std::optional<std::string> text;
};

Search curveUnder(core::SharedState& state, GraphView& view, float y, const RunPlace& at,
    const PointerLabels& labels) {
    for (const int channel : labelOrder()) {
        if (!labels.valueEnabled(channel)) continue;
        const ChannelFacts& facts = channelFacts(channel);
        const Reading value = curveValue(at, facts);
        if (value.hasFailed()) return {true, std::nullopt};
        if (!value.hasValue()) continue;
        const auto height =
            curveHeight(state.Config, channel, value.value, view.RpmScale, view.MphScale);
        if (!height) return {true, std::nullopt};
        if (std::abs(*height - y) >= hitDistance) continue;
        return {true, HitText(state, view, at, labels).of(facts)};
    }
    return {};
}

} // namespace

int cursorStep(bool right, bool shift, bool ctrl, bool alt) {
    int step = 1;
    if (shift && !ctrl && !alt) step = 100;
    if (ctrl && !shift && !alt) step = 50;
    if (alt && !shift && !ctrl) step = 10;
    return right ? step : -step;
}

std::optional<std::int16_t> cursorAt(double x) {
    return core::CInt(x);
}

std::optional<std::string> textUnderPointer(
    core::SharedState& state, GraphView& view, float x, float y, const PointerLabels& labels) {
    const auto sample = cursorAt(x);
    if (!sample || !onRun(state, *sample)) return std::nullopt;
    const RunPlace run = runPlace(state, *sample);
    const auto overlay = overlayPlace(state, *sample);
    if (auto text = switchUnder(y, run, overlay)) return text;
    Search search = curveUnder(state, view, y, run, labels);
    if (!search.ended && overlay) search = curveUnder(state, view, y, *overlay, labels);
    return search.text;
}

AverageMark averageMark(float x1, float x2) {
    AverageMark mark;
    mark.wordX = static_cast<float>((static_cast<double>(x1) + x2) / 2 - 137);
    return mark;
}

platform::Colour timeLineColour(std::int32_t graphBackColour) {
    // Required: compared with the number 12, not with the colour of that number.
    return platform::paletteColour(graphBackColour == 12 ? 4 : 12);
}

} // namespace kvo::graph
