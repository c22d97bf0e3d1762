#pragma once
// The seven models of the logger and the two kinds of vehicle: what the setup form offers for each.
#include "core/setup_kinds.h"
#include "setup/option_rows.h"

#include <array>
#include <span>
#include <string_view>

namespace kvo::setup {

struct ModelFacts {
    std::string_view text;   // in the list D_Modal
    int type = 0;            // LoggerDataType
    int analogs = 0;         // analog channels offered, from the first on
    int tabAnalogs = 0;      // how many of their rows follow TabStrip2
    int exhaustGroups = 0;   // of three on the graph's options, from the first on; 0: no exhausts
    bool hasBattery = false; // analog 6 is the logger's supply
};

// In the order of the list.
std::span<const ModelFacts> models();
// The model at a list index; nullptr without a selection (-1).
const ModelFacts* modelAt(int index);
// List index of a data type; -1 for one that is in no row.
int modelIndex(int type);

// The list Vehicle_Type, by its number.
inline constexpr int motorcycle = 0;
using core::car;
inline constexpr std::array<std::string_view, 2> vehicleList{"BIKE", "CAR"};

// Captions of the setup form that a kind of vehicle words in its own way.
struct VehicleCaptions {
    std::string_view Label_DriverNumber;
    std::string_view Pinion_Label;
    std::string_view Weight_Label;
    std::string_view Pteeth_Label;
    std::string_view Cteeth_Label;
};
// Whatever is no car is a motorcycle.
const VehicleCaptions& vehicleCaptions(int Vehicle_Type);

// What of the setup form comes and goes with model, vehicle and tab.
struct SetupRows {
    OptionRows options;            // on the Graph tab
    core::FromOne<bool, 8> analog; // Text(i), AnalogSetup(i) and Analog_Check(i)
    bool FrameExhaust = true;
    RowsTab TabStrip2 = RowsTab::magnify; // the selected tab

    SetupRows() { analog.fill(true); }
    friend bool operator==(const SetupRows&, const SetupRows&) = default;
};

// The routine of the model, `D_Modal` a list index; -1 shows the exhausts and leaves the rows
// alone.
void D_Modal_Change(SetupRows& rows, int D_Modal);
// The routine of the vehicle: a car has no clutch row.
void Vehicle_Type_Change(SetupRows& rows, int Vehicle_Type);

} // namespace kvo::setup
