#pragma once
// What the value labels show: the values at the time line, or the means of a stretch of the run.
#include "core/shared_state.h"
#include "graph/view.h"

#include <string>
#include <vector>

namespace kvo::graph {

// A value label and what it shows from now on.
struct LabelText {
    int channel = 0; // 0 to 24
    std::string text;
    bool overlay = false; // the overlay label beside it
    friend bool operator==(const LabelText&, const LabelText&) = default;
};

struct TimeLineTexts {
    std::string loggerTime;
    // In the order in which they are filled; a label that is not here keeps what it shows. A
    // run-time failure (no basket teeth) leaves out what comes behind it.
    std::vector<LabelText> labels;
};
// The read-outs at a sample of the run, 1 to SampleCount, and of the overlay's sample at the same
// time. Sets RocosText, RocosFromOverlay and the analog picture of the shared state.
TimeLineTexts timeLineTexts(core::SharedState& state, GraphView& view, int sample);

struct AverageTexts {
    bool outside = false; // the stretch leaves the run: a beep, nothing else
    std::string loggerTime;
    std::vector<LabelText> labels; // as above; a stretch of no width fails before the first
};
// The means from x = a to x = b, a not above b, each end rounded to a sample. The overlay's labels
// show the overlay at the time line.
AverageTexts AverageRange(core::SharedState& state, GraphView& view, float a, float b);

// Width of a value label in twips: what an overlay needs uncovers the labels beside it.
int valueLabelWidth(int channel, bool overlayLoaded);

} // namespace kvo::graph
