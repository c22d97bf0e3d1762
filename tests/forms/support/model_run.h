#pragma once
// A believable run of any data type, as a download leaves it: its file on the disk of the test, the
// shared state pointing at it.
#include "core/shared_state.h"
#include "tests/support/memory_files.h"

#include <string>

namespace kvo::testing {

// A configuration with every channel on, in colours that stay apart on black.
core::AppConfig graphConfig(int dataType);

// Puts a run of the type into state.Run and saves it under AppFolder "/kvo" as a download does.
// `number`, 1 to 9, varies the run and stands in its file's name and its title. Gives the caption
// under which a download shows it.
std::string storeModelRun(
    core::SharedState& state, MemoryFiles& files, int dataType, int number = 3);
// The same, and the run is added to the index.
void listModelRun(core::SharedState& state, MemoryFiles& files, int dataType, int number);

} // namespace kvo::testing
