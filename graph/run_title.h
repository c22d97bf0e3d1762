#pragma once
// Which run is this: the title that stands beside the cursor's time and above a printed picture.
#include "core/open_run.h"

#include <string>

namespace kvo::graph {

// The title of its header line without blanks around it; the name of the run's file where it has
// none.
std::string shownTitle(const core::OpenRun& run);

} // namespace kvo::graph
