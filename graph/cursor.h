#pragma once
// The pointer and the keys over the surface: how far a key moves the time line, and the name and
// value of the curve that lies under the pointer.
#include "graph/read_outs.h"
#include "graph/view.h"

#include <functional>
#include <optional>
#include <string>

namespace kvo::graph {

// Samples that an arrow key moves the line: 1, with Shift 100, Ctrl 50, Alt 10; any other
// combination counts as none. Negative to the left.
int cursorStep(bool right, bool shift, bool ctrl, bool alt);
// The sample of a position on the surface, ties to even; nothing beyond 16 bits (a run-time
// failure).
std::optional<std::int16_t> cursorAt(double x);
// The sample that a drag has taken the cursor to, in a run of so many: the nearest one, and beyond
// the run its end.
int cursorDraggedTo(double x, int sampleCount);

// The sample nearest to a time, seconds, of a run of so many with this time zero.
int cursorAtTime(double seconds, int timeOffset, int sampleCount);

// What the label under the pointer needs of the window.
struct PointerLabels {
    std::function<bool(int channel)> valueEnabled;
    std::function<std::string(int analog)> analogCaption; // 1 to 8
};
// The text for what lies under (x, y) of the surface: a bar of the switches, else the first curve
// within 5 units, of the run before the overlay; nothing where there is none, so that the label
// keeps its text. A curve that has no value there is not found. Sets RocosText and the analog
// picture.
std::optional<std::string> textUnderPointer(
    const ReadOutInput& input, float x, float y, const PointerLabels& labels);

} // namespace kvo::graph
