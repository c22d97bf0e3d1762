#pragma once
// Which run is this: the title that stands beside the cursor's time and above a printed picture.
#include "core/open_run.h"

#include <string>
#include <string_view>

namespace kvo::graph {

// Date, number and title of a run, from its header line; all of the line where it has no date.
std::string_view titleOf(std::string_view headerLine);

// The same without blanks around it; the name of the run's file where it has none.
std::string shownTitle(const core::OpenRun& run);

} // namespace kvo::graph
