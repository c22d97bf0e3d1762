#include "channels/run_view.h"

#include "core/paths.h"

#include <algorithm>

namespace kvo::channels {

RunView viewOfRun(const core::OpenRun& run) {
    return {&run.image, &run.image.header, run.DataType, run.DataType, run.SampleCount,
        run.SampleCount, 0, false, core::baseName(run.path)};
}

RunView viewOfOverlay(const core::OpenRun& run, const core::OpenRun& overlay) {
    // Required: slip and ratio of the overlay keep the run's primary drive, and the run's type
    // decides whether its exhausts are time-shared. Its curves end at the run's count of samples,
    // its bars at its own.
    return {&overlay.image, &run.image.header, run.DataType, overlay.DataType,
        std::min(run.SampleCount, overlay.SampleCount), overlay.SampleCount,
        overlay.image.tail.TimeOffset - run.image.tail.TimeOffset, true,
        core::baseName(overlay.path)};
}

ShownRuns shownRuns(const core::OpenRun& run, const core::OpenRun* overlay) {
    ShownRuns shown{viewOfRun(run), std::nullopt};
    if (overlay != nullptr) shown.overlay = viewOfOverlay(run, *overlay);
    return shown;
}

} // namespace kvo::channels
