#include "graph/read_outs.h"

#include "channels/derived.h"
#include "channels/sample_place.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"

#include <array>
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

// Fills the labels of one run. What it could not fill is empty in the end.
class Filler {
public:
    Filler(const ReadOutInput& input, const RunView& run, ReadOutTexts& texts)
        : m_input(input), m_run(run), m_texts(texts) {}

    // The values of one sample.
    void fillSample(int sample) {
        const RunSample& row = m_run.row(sample);
        show(engineChannel, CStr(row.EngineRpm));
        show(inputChannel, CStr(row.InputRpm));
        show(outputChannel, CStr(row.OutputRpm));
        const auto ratio = primaryRatio(m_run.ownDrive());
        if (!ratio) return;
        show(clutchChannel, CStr(clutchRpm(*ratio, row.EngineRpm)));
        show(ratioChannel, ratioRead(row.EngineRpm, row.OutputRpm));
        show(slipChannel, slipRead(*ratio, row.EngineRpm, row.InputRpm));
        fillRocos(sample);
        fillSpeed(mph(row.SpeedRaw), row.OutputRpm);
        for (int n = 1; n <= core::analogsOf(m_run.labelType); ++n) fillAnalog(n, row.Analog[n]);
        fillTemperatures(row);
    }

    void fillSpeed(double speed, double outputRpm) {
        const std::string text = mphRead(speed);
        show(mphChannel, text);
        const TextReading growth = tyreGrowthRead(speed, outputRpm, text, m_run.image->analog);
        show(tyreGrowthChannel, growth.hasText() ? growth.text : "N/A");
    }

    void fillAnalog(int n, double raw) {
        const TextReading value = analogRead(
            analogSetup(*m_run.image, n), raw, m_input.config.Exhaust, m_input.analogPicture);
        if (value.hasText()) show(analogChannel(n), value.text);
    }

    void fillTemperature(int n, double raw) {
        show(exhaustChannel(n), CStr(temperature(raw, m_input.config.Exhaust)));
    }

    void show(int channel, std::string text) {
        m_filled[static_cast<std::size_t>(channel)] = true;
        m_texts.labels.push_back({channel, std::move(text), m_run.overlay});
    }

    void emptyTheRest() {
        for (const int channel : labelOrder()) {
            if (!m_filled[static_cast<std::size_t>(channel)])
                m_texts.emptied.push_back({channel, {}, m_run.overlay});
        }
    }

private:
    void fillRocos(int sample) {
        const TextReading text = RoCoS_Cal(*m_run.image, m_run.rows, sample);
        m_input.view.RocosText = text.hasText() ? text.text : std::string();
        show(rocosChannel, m_input.view.RocosText);
    }

    // A row of a time-shared type names one exhaust; the others keep the last value of theirs.
    void fillTemperatures(const RunSample& row) {
        const core::Exhausts exhausts = core::exhaustsOf(m_run.labelType);
        for (int n = 1; exhausts == core::Exhausts::own && n <= 8; ++n)
            fillTemperature(n, row.Exhaust[n]);
        if (exhausts != core::Exhausts::timeShared) return;
        fillTemperature(sharedExhaust(row), row.Analog[7]);
        for (int n = 1; n <= 8; ++n) m_filled[static_cast<std::size_t>(exhaustChannel(n))] = true;
    }

    const ReadOutInput& m_input;
    const RunView& m_run;
    ReadOutTexts& m_texts;
    std::array<bool, channelCount> m_filled{};
};

void fillOverlay(const ReadOutInput& input, int sample, ReadOutTexts& texts) {
    if (!input.runs.overlay) return;
    Filler filler(input, *input.runs.overlay, texts);
    if (const auto at = placeAt(input.runs.overlay, sample)) filler.fillSample(at->sample);
    filler.emptyTheRest();
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

void fillMeans(Filler& filler, const Stretch& stretch, const RunView& run) {
    std::string output;
    if (!fillMeanRpm(filler, stretch, run.ownDrive(), output)) return;
    const double speed = stretch.mean([](const RunSample& row) { return row.SpeedRaw; }) / 200;
    filler.fillSpeed(speed, Val(output));
    for (int n = 1; n <= core::analogsOf(run.labelType); ++n)
        filler.fillAnalog(n, stretch.mean([n](const RunSample& row) { return row.Analog[n]; }));
    if (core::exhaustsOf(run.labelType) != core::Exhausts::own) return;
    for (int n = 1; n <= 8; ++n) {
        filler.fillTemperature(
            n, stretch.mean([n](const RunSample& row) { return row.Exhaust[n]; }));
    }
}

} // namespace

double timeOf(const RunView& run, int sample) {
    return (run.row(sample).Index - run.image->tail.TimeOffset) / core::samplesPerSecond;
}

ReadOutTexts timeLineTexts(const ReadOutInput& input, int sample) {
    ReadOutTexts texts;
    texts.loggerTime = "Time: " + Format(timeOf(input.runs.run, sample), "##0.00 s\\ec");
    Filler filler(input, input.runs.run, texts);
    filler.fillSample(sample);
    filler.emptyTheRest();
    fillOverlay(input, sample, texts);
    return texts;
}

AverageTexts AverageRange(const ReadOutInput& input, float a, float b) {
    AverageTexts texts;
    const RunView& run = input.runs.run;
    const auto from = core::CLng(a);
    const auto to = core::CLng(b);
    if (!from || !to || *from < 1 || *to > run.rows) {
        texts.outside = true;
        return texts;
    }
    texts.loggerTime =
        "Time:" + Format(timeOf(run, *from), "##0.00") + " / " + Format(timeOf(run, *to), "##0.00");
    // A stretch of no width divides by nothing, a run-time failure: no label is filled.
    const bool fails = *from >= *to;
    Filler filler(input, run, texts);
    if (!fails) fillMeans(filler, Stretch(*run.image, *from, *to), run);
    filler.emptyTheRest();
    if (!fails) fillOverlay(input, input.view.CursorSample, texts);
    return texts;
}

} // namespace kvo::graph
