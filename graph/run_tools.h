#pragma once
// The two tools that rewrite a run: an input shaft speed derived from the output shaft, and a new
// time zero. Each asks the user, changes the run in memory and writes its file.
#include "core/open_run.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <string>
#include <vector>

namespace kvo::graph {

struct ToolResult {
    bool changed = false;          // the picture is to be drawn again
    platform::WriteResult written; // of the run file; not tried where nothing changed
    std::vector<int> shiftPoints;  // sample numbers, of the clutch tool
};

// Where a tool works.
struct ToolPlace {
    int gears = 0; // of the configuration, for a run that has no count of its own
    const std::string& appFolder;
    platform::Dialogs& dialogs;
    platform::Files& files;
};

// Derives InputRpm of every sample from OutputRpm and the gear ratios. A speed that does not fit 16
// bits ends the tool: the samples before it stay changed in memory, the file is not written.
ToolResult Mnu_RedoClutch(core::OpenRun& run, const ToolPlace& place);

// Moves TimeOffset of the run.
ToolResult Mnu_TimeOffset(core::OpenRun& run, const ToolPlace& place);

} // namespace kvo::graph
