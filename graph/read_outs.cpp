#include "graph/read_outs.h"

#include "channels/derived.h"
#include "channels/sample_place.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"

#include <optional>

namespace kvo::graph {

using namespace channels;
namespace {

using core::CStr;
using core::Fix;
using core::Format;
using core::RunImage;
using core::RunSample;
using core::Val;

// Fills labels one after the other until a step fails.
class Filler {
public:
    Filler(core::SharedState& state, GraphView& view, const RunPlace& at,
        std::vector<LabelText>& labels)
        : m_state(state), m_view(view), m_at(at), m_labels(labels) {}

    // The values of one sample.
    void fillSample() {
        const RunSample& row = m_at.row();
        show(engineChannel, CStr(row.EngineRpm));
        show(inputChannel, CStr(row.InputRpm));
        show(outputChannel, CStr(row.OutputRpm));
        const auto ratio = primaryRatio(m_at.image.header);
        if (!ratio) return;
        show(clutchChannel, CStr(clutchRpm(*ratio, row.EngineRpm)));
        show(ratioChannel, ratioRead(row.EngineRpm, row.OutputRpm));
        show(slipChannel, slipRead(*ratio, row.EngineRpm, row.InputRpm));
        fillRocos();
        if (!fillSpeed(mph(row.SpeedRaw), row.OutputRpm)) return;
        for (int n = 1; n <= lastAnalog(m_at.dataType); ++n) {
            if (!fillAnalog(n, row.Analog[n])) return;
        }
        fillTemperatures(row);
    }

    bool fillSpeed(double speed, double outputRpm) {
        const std::string text = mphRead(speed);
        show(mphChannel, text);
        const TextReading growth = tyreGrowthRead(speed, outputRpm, text, m_at.image.analog);
        if (growth.hasText()) show(tyreGrowthChannel, growth.text);
        return !growth.hasFailed();
    }

    bool fillAnalog(int n, double raw) {
        const TextReading value = analogRead(
            analogSetup(m_at.image, n), raw, m_state.Config.Exhaust, m_state.AnalogPicture);
        if (value.hasText()) show(analogChannel(n), value.text);
        return !value.hasFailed();
    }

    void fillTemperature(int n, double raw) {
        show(exhaustChannel(n), CStr(temperature(raw, m_state.Config.Exhaust)));
    }

    void show(int channel, std::string text) {
        m_labels.push_back({channel, std::move(text), m_at.overlay});
    }

private:
    void fillRocos() {
        m_view.RocosFromOverlay = m_at.overlay ? -1 : 0;
        const TextReading text = RoCoS_Cal(m_at.image, m_at.sampleCount, m_at.sample);
        if (text.hasText()) m_view.RocosText = text.text;
        show(rocosChannel, m_view.RocosText);
        m_view.RocosFromOverlay = 0;
    }

    // A row of type 20 names one exhaust; the others keep what they show.
    void fillTemperatures(const RunSample& row) {
        if (m_at.dataType == 20) fillTemperature(sharedExhaust(row), row.Analog[7]);
        if (!hasExhausts(m_at.dataType)) return;
        for (int n = 1; n <= 8; ++n) fillTemperature(n, row.Exhaust[n]);
    }

    core::SharedState& m_state;
    GraphView& m_view;
    RunPlace m_at;
    std::vector<LabelText>& m_labels;
};

void fillOverlay(
    core::SharedState& state, GraphView& view, int sample, std::vector<LabelText>& labels) {
    const auto at = overlayPlace(state, sample);
    if (at) Filler(state, view, *at, labels).fillSample();
}

// A stretch of samples and the means of what lies in it.
class Stretch {
public:
    Stretch(const RunImage& image, int from, int to) : m_image(image), m_from(from), m_to(to) {}

    template <typename Word> double mean(Word word) const {
        double sum = 0;
        for (int i = m_from; i <= m_to; ++i) sum += word(m_image.rowOrZero(i));
        // Required: divided by the width, which is one less than the count of samples.
        return sum / (m_to - m_from);
    }

private:
    const RunImage& m_image;
    int m_from;
    int m_to;
};

// Ratio and slip come from what the labels show.
bool fillMeanRpm(Filler& filler, const Stretch& stretch, const core::RunHeader& header,
    std::string& outputText) {
    const std::string rpm =
        CStr(Fix(stretch.mean([](const RunSample& row) { return row.EngineRpm; })));
    const std::string input =
        CStr(Fix(stretch.mean([](const RunSample& row) { return row.InputRpm; })));
    outputText = CStr(Fix(stretch.mean([](const RunSample& row) { return row.OutputRpm; })));
    filler.show(engineChannel, rpm);
    filler.show(inputChannel, input);
    filler.show(outputChannel, outputText);
    const auto ratio = primaryRatio(header);
    if (!ratio) return false;
    filler.show(clutchChannel, CStr(Fix(Val(rpm) * *ratio)));
    const double output = Val(outputText);
    filler.show(ratioChannel, output > 0 ? ratioRead(Val(rpm), output) : std::string());
    filler.show(slipChannel, slipRead(*ratio, Val(rpm), Val(input)));
    return true;
}

void fillMeans(Filler& filler, const Stretch& stretch, const core::SharedState& state) {
    std::string output;
    if (!fillMeanRpm(filler, stretch, state.Run.header, output)) return;
    const double speed = stretch.mean([](const RunSample& row) { return row.SpeedRaw; }) / 200;
    if (!filler.fillSpeed(speed, Val(output))) return;
    for (int n = 1; n <= lastAnalog(state.DataType); ++n) {
        const double raw = stretch.mean([n](const RunSample& row) { return row.Analog[n]; });
        if (!filler.fillAnalog(n, raw)) return;
    }
    if (!hasExhausts(state.DataType)) return;
    for (int n = 1; n <= 8; ++n) {
        filler.fillTemperature(
            n, stretch.mean([n](const RunSample& row) { return row.Exhaust[n]; }));
    }
}

double timeOf(const core::SharedState& state, int sample) {
    return (state.Run.rowOrZero(sample).Index - state.Run.tail.TimeOffset) / core::samplesPerSecond;
}

} // namespace

TimeLineTexts timeLineTexts(core::SharedState& state, GraphView& view, int sample) {
    TimeLineTexts texts;
    texts.loggerTime = "Time: " + Format(timeOf(state, sample), "##0.00 s\\ec");
    Filler(state, view, runPlace(state, sample), texts.labels).fillSample();
    fillOverlay(state, view, sample, texts.labels);
    return texts;
}

AverageTexts AverageRange(core::SharedState& state, GraphView& view, float a, float b) {
    AverageTexts texts;
    const auto from = core::CLng(a);
    const auto to = core::CLng(b);
    if (!from || !to || *from < 1 || *to > state.SampleCount) {
        texts.outside = true;
        return texts;
    }
    texts.loggerTime = "Time:" + Format(timeOf(state, *from), "##0.00") + " / " +
                       Format(timeOf(state, *to), "##0.00");
    if (*from >= *to) return texts;
    Filler filler(state, view, runPlace(state, *from), texts.labels);
    fillMeans(filler, Stretch(state.Run, *from, *to), state);
    fillOverlay(state, view, view.CursorSample, texts.labels);
    return texts;
}

int valueLabelWidth(int channel, bool overlayLoaded) {
    if (channel == tyreGrowthChannel) return overlayLoaded ? 850 : 1700;
    return overlayLoaded ? 730 : 1455;
}

} // namespace kvo::graph
