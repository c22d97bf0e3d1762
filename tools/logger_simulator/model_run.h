#pragma once
// A modelled run as a download of it stands in memory, for whoever wants a run without a line.
#include "core/records.h"

#include <cstdint>
#include <vector>

namespace kvo::simulator {

struct Moment;
struct Vehicle;

// Puts `rows` rows of the vehicle of a data type into `image`, with its primary drive and the
// launch at sample `timeOffset`. The same seed gives the same run. Gives what it was made of.
std::vector<Moment> fillRun(
    core::RunImage& image, int dataType, int rows, int timeOffset, std::uint32_t seed);
// The same with a vehicle of its own.
std::vector<Moment> fillRun(core::RunImage& image, const Vehicle& vehicle, int dataType, int rows,
    int timeOffset, std::uint32_t seed);

// Seconds from the launch to a distance in feet, and the road speed there; 0 where the run does not
// get so far.
struct TrackTime {
    double seconds = 0;
    double mph = 0;
};
TrackTime trackTime(const std::vector<Moment>& moments, int timeOffset, double feet);

} // namespace kvo::simulator
