#include "channels/sample_place.h"

namespace kvo::channels {

std::optional<SamplePlace> placeAt(const RunView& view, int sample) {
    const int own = sample + view.shift;
    if (!view.has(own)) return std::nullopt;
    return SamplePlace{view, own};
}

std::optional<SamplePlace> placeAt(const std::optional<RunView>& view, int sample) {
    return view ? placeAt(*view, sample) : std::nullopt;
}

std::optional<SamplePlace> barPlaceAt(const std::optional<RunView>& view, int sample) {
    if (!view) return std::nullopt;
    const int own = sample + view->shift;
    if (own < 1 || own > view->barRows) return std::nullopt;
    return SamplePlace{*view, own};
}

int sharedExhaust(const core::RunSample& row) {
    return ((row.Status >> 4) & 7) + 1;
}

} // namespace kvo::channels
