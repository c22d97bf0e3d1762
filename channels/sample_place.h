#pragma once
// A sample of one of the two runs in memory, with all that a read-out of it needs: the run under
// the time line, or the overlay's sample at the same time from time zero.
#include "core/shared_state.h"

#include <optional>

namespace kvo::channels {

struct RunPlace {
    const core::RunImage& image;
    const core::RunHeader& ratioDrive; // primary drive of slip and ratio as curves
    int dataType = 0;
    int sampleCount = 0; // of the main run, for both
    int sample = 0;      // in `image`
    bool overlay = false;

    const core::RunSample& row() const { return image.rowOrZero(sample); }
};

// Whether the sample can bear the time line: 1 to SampleCount.
bool onRun(const core::SharedState& state, int sample);
RunPlace runPlace(const core::SharedState& state, int sample);
// The overlay at sample `sample` of the run; nothing without an overlay, and where its own sample
// is not from 1 to SampleCount.
std::optional<RunPlace> overlayPlace(const core::SharedState& state, int sample);

// Types that carry eight temperatures in every row.
bool hasExhausts(int dataType);
// Analogs 1 to this number belong to a data type: 4, 6 or 8.
int lastAnalog(int dataType);
// The exhaust whose temperature a row of type 20 carries, 1 to 8.
int sharedExhaust(const core::RunSample& row);

} // namespace kvo::channels
