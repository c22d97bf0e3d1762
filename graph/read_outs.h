#pragma once
// What the value labels show: the values at the time line, or the means of a stretch of the run.
#include "channels/run_view.h"
#include "core/config_record.h"
#include "graph/view.h"

#include <string>
#include <vector>

namespace kvo::graph {

// The time of a sample of the run, seconds from the run's time zero.
double timeOf(const channels::RunView& run, int sample);

// A value label and what it shows from now on.
struct LabelText {
    int channel = 0; // 0 to 24
    std::string text;
    bool overlay = false; // the overlay label beside it
    friend bool operator==(const LabelText&, const LabelText&) = default;
};

// What the read-outs are made from.
struct ReadOutInput {
    const channels::ShownRuns& runs;
    const core::AppConfig& config;
    std::string& analogPicture; // the shared slot of AnalogFormat
    GraphView& view;            // RocosText is set
};

struct ReadOutTexts {
    std::string loggerTime;
    // In the order in which they are filled.
    std::vector<LabelText> labels;
    // Labels that have no value at this sample; they are to be empty, so that no label shows
    // another sample than the time says. A label that is in neither list keeps what it shows.
    std::vector<LabelText> emptied;
};
// The read-outs at a sample of the run, 1 to SampleCount, and of the overlay's sample at the same
// time. A value that cannot be formed empties its own label; without basket teeth the labels behind
// the clutch are empty.
ReadOutTexts timeLineTexts(const ReadOutInput& input, int sample);

struct AverageTexts : ReadOutTexts {
    bool outside = false; // the stretch leaves the run: a beep, nothing else
};
// The means from x = a to x = b, a not above b, each end rounded to a sample. The overlay's labels
// show the overlay at the time line. A stretch of no width fills no label.
AverageTexts AverageRange(const ReadOutInput& input, float a, float b);

} // namespace kvo::graph
