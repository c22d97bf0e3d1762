#pragma once
// A run to measure with: curves that cross the whole picture as recorded ones do.
#include "core/shared_state.h"

#include <string>

namespace kvo::bench {

// Fills the main run with `rows` rows of a data type and a setup to draw it by. Without switches
// the status bytes are 0; else the four switches go on and off as in a run.
void fillRun(core::SharedState& state, int dataType, int rows, bool switches);
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
