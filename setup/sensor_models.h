#pragma once
// The pressure sensors that the program knows by their model number, in the order of their list.
#include <span>
#include <string_view>

namespace kvo::setup {

struct SensorModel {
    std::string_view text; // in the list Sensor_Combo
    double atFiveVolts;    // reading at the top of the input, in the unit of the model
};

// In the order of the list. At 0 volts every one of them reads 0.
std::span<const SensorModel> sensorModels();
// The model at a list index; nullptr without a selection (-1).
const SensorModel* sensorModelAt(int index);

} // namespace kvo::setup
