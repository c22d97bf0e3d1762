#include "tools/make_runs/race_days.h"

#include "core/data_types.h"
#include "tools/logger_simulator/model_run.h"

namespace kvo::race_days {

namespace {

// The same car with too little clutch: it has to leave and to shift at fewer turns, never locks up,
// and is late.
simulator::Vehicle slipping(simulator::Vehicle vehicle) {
    vehicle.launchRpm -= 900;
    vehicle.shiftRpm -= 800;
    vehicle.clutchSlip = 0.09;
    vehicle.finishMph -= 9;
    vehicle.finishSeconds += 0.4;
    return vehicle;
}

std::vector<Download> makeDownloads() {
    const auto usual = [](int dataType) { return simulator::vehicleFor(dataType); };
    return {
        {25, 25, 11, {2026, 11, 14, 10, 20, 0}, "1 Qualifying, clutch slips", slipping(usual(25))},
        {25, 25, 12, {2026, 11, 14, 14, 5, 0}, "2 Qualifying, more clutch", usual(25)},
        {25, 25, 13, {2026, 11, 15, 11, 40, 0}, "1 First round", usual(25)},
        {20, 22, 14, {2026, 11, 15, 13, 15, 0}, "2 Second car", usual(20)},
        {32, 32, 15, {2026, 11, 15, 15, 55, 0}, "3 Third car", usual(32)},
    };
}

} // namespace

const std::vector<Download>& downloads() {
    static const std::vector<Download> all = makeDownloads();
    return all;
}

std::vector<simulator::Moment> fill(core::RunImage& image, const Download& download) {
    const auto facts = core::dataTypeFacts(download.dataType);
    return simulator::fillRun(
        image, download.vehicle, download.dataType, facts->rows, facts->timeOffset, download.seed);
}

} // namespace kvo::race_days
