#pragma once
// The polyline of a channel as values: from the rows of a run, through smoothing and the channel's
// formula, to points in the scale of Trend.
#include "channels/run_view.h"
#include "core/config_record.h"
#include "platform/draw/surface.h"

#include <optional>
#include <vector>

namespace kvo::graph {

// How values become places on the surface.
struct CurveScale {
    int step = 1;        // samples a point, 1 or more
    int rpmScale = 0;    // rpm a unit
    double mphScale = 0; // units a mph
};

// Fills `points` with the targets of the polyline of a channel of a run. Gives how many samples
// were visited. A run-time failure (no basket teeth, a number that does not fit) ends the curve:
// the points made before it stay.
int makeCurve(const channels::RunView& run, const CurveScale& scale, const core::AppConfig& config,
    int channel, std::vector<platform::Point>& points);

// Height of a channel's value v on the surface; nothing where it is no single (a run-time failure).
std::optional<float> curveHeight(
    const core::AppConfig& config, int channel, double v, int rpmScale, double mphScale);

// The magnification that counts, 1 to 255: the channel's default where 0 is stored.
int magnification(const core::AppConfig& config, int channel);

} // namespace kvo::graph
