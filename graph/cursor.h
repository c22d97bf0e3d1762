#pragma once
// The time line and the pointer over the surface: what the value labels show at a sample, how far a
// key moves the line, and the name and value of the curve that lies under the pointer.
#include "core/shared_state.h"
#include "graph/view.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kvo::graph {

// A value label and what it shows from now on.
struct LabelText {
    int channel = 0; // 0 to 24
    std::string text;
    friend bool operator==(const LabelText&, const LabelText&) = default;
};

struct TimeLineTexts {
    std::string loggerTime;
    // In the order in which they are filled; a label that is not here keeps what it shows. A
    // run-time failure (no basket teeth) leaves out what comes behind it.
    std::vector<LabelText> labels;
};
// The read-outs at a sample of the run, 1 to SampleCount. Sets RocosText, RocosFromOverlay and the
// analog picture of the shared state.
TimeLineTexts timeLineTexts(core::SharedState& state, GraphView& view, int sample);

// Whether the sample can bear the time line.
bool onRun(const core::SharedState& state, int sample);

// Samples that an arrow key moves the line: 1, with Shift 100, Ctrl 50, Alt 10; any other
// combination counts as none. Negative to the left.
int cursorStep(bool right, bool shift, bool ctrl, bool alt);

// What the label under the pointer needs of the window.
struct PointerLabels {
    std::function<bool(int channel)> valueEnabled;
    std::function<std::string(int analog)> analogCaption; // 1 to 8
};
// The text for what lies under (x, y) of the surface: a bar of the switches, else the first curve
// within 5 units; nothing where there is none, so that the label keeps its text. Sets RocosText and
// the analog picture.
std::optional<std::string> textUnderPointer(
    core::SharedState& state, GraphView& view, float x, float y, const PointerLabels& labels);

} // namespace kvo::graph
