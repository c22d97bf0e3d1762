#include "graph/cursor.h"

#include "channels/derived.h"
#include "channels/sample_place.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"
#include "graph/curves.h"

#include <algorithm>
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
    float y, const SamplePlace& run, const std::optional<SamplePlace>& overlay) {
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

// Value of an exhaust's curve as it is drawn; none where the labels' type has no exhausts that are
// found under the pointer.
Reading exhaustValue(const SamplePlace& at, int n) {
    if (core::exhaustsOf(at.view.labelType) != core::Exhausts::own) return Reading::none();
    const RunSample& row = at.row();
    if (core::exhaustsOf(at.view.drawType) != core::Exhausts::timeShared)
        return Reading::of(row.Exhaust[n]);
    return sharedExhaust(row) == n ? Reading::of(row.Analog[7]) : Reading::none();
}

Reading tyreGrowthValue(const SamplePlace& at) {
    const RunSample& row = at.row();
    // Where the growth has no value its curve runs at the foot, which is not hit.
    const Reading growth = tyreGrowthMouse(row.SpeedRaw, row.OutputRpm, at.view.image->analog);
    if (!growth.hasValue()) return growth;
    return tyreGrowthDrawn(row.SpeedRaw, row.OutputRpm, at.view.image->analog);
}

// Value of a curve at the sample as it is drawn, without smoothing; none where there is none to be
// hit. `ownRatio` and `drawnRatio` are the primary drives of the clutch and of slip and ratio.
Reading curveValue(
    const SamplePlace& at, const ChannelFacts& facts, double ownRatio, double drawnRatio) {
    const RunSample& row = at.row();
    switch (facts.kind) {
    case ChannelKind::engine:
        return Reading::of(row.EngineRpm);
    case ChannelKind::input:
        return Reading::of(row.InputRpm);
    case ChannelKind::output:
        return Reading::of(row.OutputRpm);
    case ChannelKind::mph:
        return Reading::of(row.SpeedRaw);
    case ChannelKind::clutch:
        return Reading::of(clutchRpm(ownRatio, row.EngineRpm));
    case ChannelKind::slip:
        return slipMouse(drawnRatio, row.EngineRpm, row.InputRpm);
    case ChannelKind::ratio:
        return ratioMouse(drawnRatio, row.EngineRpm, row.OutputRpm);
    case ChannelKind::rocos:
        return rocosDrawn(*at.view.image, at.view.rows, at.sample);
    case ChannelKind::tyreGrowth:
        return tyreGrowthValue(at);
    case ChannelKind::analog:
        if (facts.number > core::analogsOf(at.view.labelType)) return Reading::none();
        return Reading::of(
            analogDrawn(row.Analog[facts.number], at.view.image->tail.AnalogTypes[facts.number]));
    case ChannelKind::exhaust:
        break;
    }
    return exhaustValue(at, facts.number);
}

// Writes the text of a hit.
class HitText {
public:
    HitText(const ReadOutInput& input, const SamplePlace& at, const PointerLabels& labels)
        : m_input(input), m_at(at), m_labels(labels) {}

    std::optional<std::string> of(const ChannelFacts& facts) {
        if (facts.kind == ChannelKind::analog) return analog(facts.number);
        return (m_at.view.overlay ? " Overlay" : "") + own(facts);
    }

private:
    // With the primary drive of the run that the text is about.
    std::string own(const ChannelFacts& facts) {
        const RunSample& row = m_at.row();
        const double ratio = primaryRatio(m_at.view.ownDrive()).value_or(0);
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
            return " Mph = " + speed(row);
        case ChannelKind::rocos:
            return " RoCoS = " + rocos();
        case ChannelKind::tyreGrowth:
            return " Tyre Growth = " + growth(row);
        case ChannelKind::analog:
        case ChannelKind::exhaust:
            break;
        }
        return " Exhaust Temp " + CStr(facts.number) + " = " +
               CStr(temperature(row.Exhaust[facts.number], m_input.config.Exhaust));
    }

    std::string speed(const RunSample& row) const {
        // Required: a picture for the run, the plain number for the overlay.
        return m_at.view.overlay ? CStr(mph(row.SpeedRaw)) : Format(mph(row.SpeedRaw), "##0.00 ");
    }

    std::string growth(const RunSample& row) const {
        const Reading value = tyreGrowthMouse(row.SpeedRaw, row.OutputRpm, m_at.view.image->analog);
        return Format(value.value, m_at.view.overlay ? "##00.00 in" : "##0.00 in");
    }

    std::string rocos() {
        const TextReading text = RoCoS_Cal(*m_at.view.image, m_at.view.rows, m_at.sample);
        m_input.view.RocosText = text.hasText() ? text.text : std::string();
        return m_input.view.RocosText;
    }

    std::optional<std::string> analog(int n) {
        const TextReading value = analogRead(analogSetup(*m_at.view.image, n), m_at.row().Analog[n],
            m_input.config.Exhaust, m_input.analogPicture);
        if (!value.hasText()) return std::nullopt;
        return (m_at.view.overlay ? " Overlay " : "") + m_labels.analogCaption(n) + " = " +
               value.text;
    }

    const ReadOutInput& m_input;
    SamplePlace m_at;
    const PointerLabels& m_labels;
};

struct Search {
    bool ended = false; // a hit, or a run-time failure
    std::optional<std::string> text;
};

bool needsDrive(ChannelKind kind) {
    return kind == ChannelKind::clutch || kind == ChannelKind::slip || kind == ChannelKind::ratio;
}

// A run without basket teeth ends the search at its first curve that needs the primary drive. Any
// other value that cannot be formed leaves its own curve out.
Search curveUnder(
    const ReadOutInput& input, float y, const SamplePlace& at, const PointerLabels& labels) {
    const auto ownRatio = primaryRatio(at.view.ownDrive());
    const auto drawnRatio = primaryRatio(*at.view.slipDrive);
    for (const int channel : labelOrder()) {
        if (!labels.valueEnabled(channel)) continue;
        const ChannelFacts& facts = channelFacts(channel);
        if (needsDrive(facts.kind) && (!ownRatio || !drawnRatio)) return {true, std::nullopt};
        const Reading value = curveValue(at, facts, ownRatio.value_or(0), drawnRatio.value_or(0));
        if (!value.hasValue()) continue;
        const auto height = curveHeight(
            input.config, channel, value.value, input.view.RpmScale, input.view.MphScale);
        if (!height || std::abs(*height - y) >= hitDistance) continue;
        if (auto text = HitText(input, at, labels).of(facts)) return {true, std::move(text)};
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

int cursorDraggedTo(double x, int sampleCount) {
    const double inside = std::clamp(x, 1.0, static_cast<double>(std::max(1, sampleCount)));
    return cursorAt(inside).value_or(1);
}

int cursorAtTime(double seconds, int timeOffset, int sampleCount) {
    return cursorDraggedTo(seconds * core::samplesPerSecond + timeOffset, sampleCount);
}

std::optional<std::string> textUnderPointer(
    const ReadOutInput& input, float x, float y, const PointerLabels& labels) {
    const auto sample = cursorAt(x);
    if (!sample) return std::nullopt;
    const auto run = placeAt(input.runs.run, *sample);
    if (!run) return std::nullopt;
    if (auto text = switchUnder(y, *run, barPlaceAt(input.runs.overlay, *sample))) return text;
    const auto overlay = placeAt(input.runs.overlay, *sample);
    Search search = curveUnder(input, y, *run, labels);
    if (!search.ended && overlay) search = curveUnder(input, y, *overlay, labels);
    return search.text;
}

} // namespace kvo::graph
