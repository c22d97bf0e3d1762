#pragma once
// A run to measure with: curves that cross the whole picture as recorded ones do.
#include "core/shared_state.h"
#include "platform/files.h"

#include <string>

namespace kvo::bench {

// What the run text of it is: a date, a number and no title.
inline const std::string benchRunText = " Date:Mon 16 Nov 2026 Run: 1 #";
// Fills the main run with `rows` rows of a data type and a setup to draw it by. Without switches
// the status bytes are 0; else the four switches go on and off as in a run.
void fillRun(core::SharedState& state, int dataType, int rows, bool switches);
// Saves the main run to its path as a download of it is saved.
[[nodiscard]] platform::WriteResult saveFresh(core::SharedState& state, platform::Files& files);
// The main run once more as the overlay, a little later.
void addOverlay(core::SharedState& state);

// An empty folder in memory where the system has one, else among the temporary files; it goes with
// the object.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

} // namespace kvo::bench
