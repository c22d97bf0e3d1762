#pragma once
// A run as the graph looks at it: which rows, by which drives and data types, and how far its
// samples are moved. Curves, bars, read-outs, hits and the printed table take one for the run and
// one for the overlay, both made here.
#include "core/open_run.h"

#include <optional>
#include <string>

namespace kvo::channels {

struct RunView {
    const core::RunImage* image = nullptr;
    const core::RunHeader* slipDrive = nullptr; // primary drive with which slip and ratio are drawn
    int drawType = 0;                           // data type that decides how exhausts are drawn
    int labelType = 0; // data type that decides which channels are drawn, labelled and found
    int rows = 0;      // samples 1 to this number have a curve and read-outs
    int barRows = 0;   // samples 1 to this number have switch bars
    int shift = 0;     // own sample = sample of the run + shift
    bool overlay = false;
    std::string fileName; // base name of the run file

    // The primary drive of the clutch and of all labels.
    const core::RunHeader& ownDrive() const { return image->header; }
    bool has(int sample) const { return sample >= 1 && sample <= rows; }
    const core::RunSample& row(int sample) const { return image->rowOrZero(sample); }
};

// The run itself.
RunView viewOfRun(const core::OpenRun& run);
// The overlay at the run's time zero. It has no sample behind the run's count, none behind its own
// last row.
RunView viewOfOverlay(const core::OpenRun& run, const core::OpenRun& overlay);

// What is on the graph.
struct ShownRuns {
    RunView run;
    std::optional<RunView> overlay;
};
// `overlay` may be null.
ShownRuns shownRuns(const core::OpenRun& run, const core::OpenRun* overlay);

} // namespace kvo::channels
