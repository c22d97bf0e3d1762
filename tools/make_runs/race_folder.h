#pragma once
// The modelled runs of the race days as files of the program.
#include "core/shared_state.h"
#include "platform/files.h"

namespace kvo::race_days {

// Fills the program's folder that the state names with run files, times and the list of runs; a run
// file that is there stays. The setup goes into the runs, and `state` is left with the last of
// them. What could not be written ends it.
[[nodiscard]] platform::WriteResult fillFolder(core::SharedState& state, platform::Files& files);

} // namespace kvo::race_days
