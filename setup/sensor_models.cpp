#include "setup/sensor_models.h"

#include <array>
#include <cstddef>

namespace kvo::setup {

namespace {

// HM and HS sensors give their range over 0.5 to 4.5 volts, which is 1.25 times as much over the
// whole input; the kvo sensors give it over all 5 volts.
constexpr std::array<SensorModel, 23> sensorTable{{
    {"None Selected", 255},
    {"HM0100  0-100 psi", 125},
    {"HM0200  0-200 psi", 250},
    {"HM0300  0-300 psi", 375},
    {"HM0500  0-500 psi", 625},
    {"HM1000  0-1000 psi", 1250},
    {"HM2000  0-2000 psi", 2500},
    {"HM3000  0-3000 psi", 3750},
    {"HS0005  0-5 psi", 6.25},
    {"HS0010  0-10 psi", 12.5},
    {"HS0025  0-25 psi", 31.25},
    {"HS0050  0-50 psi", 62.5},
    {"HS0100  0-100 psi", 125},
    {"HS0150  0-150 psi", 187.5},
    {"HS0200  0-200 psi", 250},
    {"HS0250  0-250 psi", 312.5},
    {"kvo 0015  0-15 psi", 15},
    {"kvo 0050  0-50 psi", 50},
    {"kvo 0100  0-100 psi", 100},
    {"kvo 0200  0-200 psi", 200},
    {"kvo 0500  0-500 psi", 500},
    {"kvo 1500  0-1500 psi", 1500},
    {"kvo 2000  0-2000 psi", 2000},
}};

} // namespace

std::span<const SensorModel> sensorModels() {
    return sensorTable;
}

const SensorModel* sensorModelAt(int index) {
    if (index < 0 || index >= static_cast<int>(sensorTable.size())) return nullptr;
    return &sensorTable[static_cast<std::size_t>(index)];
}

} // namespace kvo::setup
