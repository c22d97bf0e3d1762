#pragma once
// What the files of the graph's golden vectors share: a run and settings as a line names them.
#include "core/shared_state.h"
#include "graph/view.h"
#include "vector_tools.h"

#include <memory>

namespace kvo::vectors {

// Fields of AppConfig by name; what is not there stays.
void applyConfig(const Json& fields, core::AppConfig& config);
// A state and the window's own, as a line names them.
struct GraphCase {
    core::SharedState state;
    graph::GraphView view;
};
// Fresh state with the runs that "run" and "overlay" name, the settings of "config", and what the
// line replaces.
std::unique_ptr<GraphCase> graphCase(const Case& c);

// The parts of the group.
void addGraphDrawing();
void addGraphCursor();
void addGraphPrinting();

} // namespace kvo::vectors
