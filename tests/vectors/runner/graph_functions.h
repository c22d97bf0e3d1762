#pragma once
// What the files of the graph's golden vectors share: a run and settings as a line names them.
#include "core/shared_state.h"
#include "vector_tools.h"

#include <memory>

namespace kvo::vectors {

// Fields of AppConfig by name; what is not there stays.
void applyConfig(const Json& fields, core::AppConfig& config);
// Fresh state with the runs that "run" and "overlay" name, the settings of "config", and what the
// line replaces.
std::unique_ptr<core::SharedState> stateOf(const Case& c);

// The parts of the group.
void addGraphDrawing();
void addGraphCursor();

} // namespace kvo::vectors
