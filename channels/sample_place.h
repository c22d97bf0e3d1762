#pragma once
// A sample of one of the two runs on the graph: the run under the time line, or the overlay's
// sample at the same time from time zero.
#include "channels/run_view.h"

#include <optional>

namespace kvo::channels {

struct SamplePlace {
    const RunView& view; // must outlive the place
    int sample = 0;      // in the view's own rows

    const core::RunSample& row() const { return view.row(sample); }
};

// The view's own sample at sample `sample` of the run; none where the view has no such sample.
std::optional<SamplePlace> placeAt(const RunView& view, int sample);
// The same where there may be no view.
std::optional<SamplePlace> placeAt(const std::optional<RunView>& view, int sample);

// The same for the switch bars, which an overlay has up to its own last sample.
std::optional<SamplePlace> barPlaceAt(const std::optional<RunView>& view, int sample);

// The exhaust whose temperature a row of a time-shared type carries, 1 to 8.
int sharedExhaust(const core::RunSample& row);

} // namespace kvo::channels
