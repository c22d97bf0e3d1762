#pragma once
// The runs of two race days, to look at before the first download. The first two are of one car
// with its clutch slipping and with it set right, so that one laid over the other shows what an
// overlay is for.
#include "core/records.h"
#include "platform/clock.h"
#include "tools/logger_simulator/run_model.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvo::race_days {

struct Download {
    int dataType;
    int model; // of the logger
    std::uint32_t seed;
    platform::DateTime moment;
    std::string title;
    simulator::Vehicle vehicle;
};

// In the order of their moments.
const std::vector<Download>& downloads();

// Puts the rows of a download into `image`; gives what they were made of.
std::vector<simulator::Moment> fill(core::RunImage& image, const Download& download);

} // namespace kvo::race_days
