#pragma once
// The graph's routines on a whole state, as the window calls them.
#include "core/shared_state.h"
#include "graph/cursor.h"
#include "graph/drawing.h"
#include "graph/read_outs.h"

#include <optional>
#include <string>

namespace kvo::testing {

inline channels::ShownRuns shownRuns(const core::SharedState& state, const graph::GraphView& view) {
    return channels::shownRuns(state.Run, view.OverlayLoaded != 0 ? &state.Overlay : nullptr);
}

inline graph::ReadOutTexts timeLineTexts(
    core::SharedState& state, graph::GraphView& view, int sample) {
    const channels::ShownRuns runs = shownRuns(state, view);
    return graph::timeLineTexts({runs, state.Config, state.AnalogPicture, view}, sample);
}

inline graph::AverageTexts AverageRange(
    core::SharedState& state, graph::GraphView& view, float a, float b) {
    const channels::ShownRuns runs = shownRuns(state, view);
    return graph::AverageRange({runs, state.Config, state.AnalogPicture, view}, a, b);
}

inline std::optional<std::string> textUnderPointer(core::SharedState& state, graph::GraphView& view,
    float x, float y, const graph::PointerLabels& labels) {
    const channels::ShownRuns runs = shownRuns(state, view);
    return graph::textUnderPointer({runs, state.Config, state.AnalogPicture, view}, x, y, labels);
}

inline bool onRun(const core::SharedState& state, int sample) {
    return channels::viewOfRun(state.Run).has(sample);
}

inline graph::TrendDrawing drawingOf(
    core::SharedState& state, graph::GraphView& view, graph::TrendHost& host) {
    return {state.Config, state.Run, state.Overlay, view, host};
}

} // namespace kvo::testing
