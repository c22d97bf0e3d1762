#include "channels/sample_place.h"

namespace kvo::channels {

bool onRun(const core::SharedState& state, int sample) {
    return sample >= 1 && sample <= state.SampleCount;
}

RunPlace runPlace(const core::SharedState& state, int sample) {
    return {state.Run, state.Run.header, state.DataType, state.SampleCount, sample, false};
}

std::optional<RunPlace> overlayPlace(const core::SharedState& state, int sample) {
    if (state.OverlayLoaded == 0) return std::nullopt;
    const int own = sample + state.Overlay.tail.TimeOffset - state.Run.tail.TimeOffset;
    if (!onRun(state, own)) return std::nullopt;
    // Required: slip and ratio of the overlay keep the run's primary drive.
    return RunPlace{
        state.Overlay, state.Run.header, state.OverlayDataType, state.SampleCount, own, true};
}

bool hasExhausts(int dataType) {
    return dataType == 25 || dataType == 32 || dataType == 43;
}

int lastAnalog(int dataType) {
    if (dataType <= 16) return 4;
    return dataType == 20 ? 6 : 8;
}

int sharedExhaust(const core::RunSample& row) {
    return ((row.Status >> 4) & 7) + 1;
}

} // namespace kvo::channels
