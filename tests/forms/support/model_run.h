#pragma once
// A believable run of any data type, as a download leaves it: its file on the disk of the test, the
// shared state pointing at it.
#include "core/shared_state.h"
#include "tests/support/memory_files.h"

#include <string>

namespace kvo::testing {

// A configuration with every channel on, in colours that stay apart on black.
core::AppConfig graphConfig(int dataType);

// Puts a run of the type into state.Run, saves it under AppFolder "/kvo" and sets DataFilePath,
// RunIndexBuffer(1) and IndexNoSort as a download does. `seed` varies the run.
void storeModelRun(core::SharedState& state, MemoryFiles& files, int dataType, unsigned seed = 1);

} // namespace kvo::testing
