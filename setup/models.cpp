#include "setup/models.h"

#include <array>
#include <cstddef>

namespace kvo::setup {

// Required: the code of the fourth row is 20 and not 22, and the rows of the last two models do not
// follow the tabs.
static constexpr std::array<ModelFacts, 7> table{{
    // text, type, analogs, on the tabs, exhaust groups, battery
    {"VRN 8", 8, 4, 4, 0, false},
    {"VRN 12", 12, 4, 4, 0, false},
    {"VRN 17", 17, 8, 8, 0, false},
    {"VRN 22 or KVO", 20, 6, 6, 2, true},
    {"VRN 23, 25", 25, 8, 8, 3, false},
    {"VRN 32", 32, 8, 0, 3, false},
    {"VRN 35, 43", 43, 8, 0, 3, false},
}};

std::span<const ModelFacts> models() {
    return table;
}

const ModelFacts* modelAt(int index) {
    if (index < 0 || index >= static_cast<int>(table.size())) return nullptr;
    return &table[static_cast<std::size_t>(index)];
}

int modelIndex(int type) {
    for (int index = 0; index < static_cast<int>(table.size()); ++index)
        if (modelAt(index)->type == type) return index;
    return -1;
}

const VehicleCaptions& vehicleCaptions(int Vehicle_Type) {
    static constexpr VehicleCaptions bike{"Rider Name:", "Output Correction:", "Bike Weight:",
        "Output Sprocket:", "Rear Wheel Sprocket:"};
    static constexpr VehicleCaptions fourWheels{
        "Driver Name:", "Pinion Correction:", "Vehicle Weight:", "Pinion:", "Crown Wheel:"};
    return Vehicle_Type == car ? fourWheels : bike;
}

void D_Modal_Change(SetupRows& rows, int D_Modal) {
    constexpr int firstOptional = 5; // every model has the analogs in front of it
    const ModelFacts* model = modelAt(D_Modal);
    rows.FrameExhaust = !model || model->exhaustGroups > 0;
    if (!model) return;
    const bool raise = rows.TabStrip2 == RowsTab::raise;
    for (int n = firstOptional; n <= 8; ++n) {
        const bool offered = n <= model->analogs;
        const int channel = channels::analogChannel(n);
        rows.analog[n] = offered;
        rows.options.Label_Magnify_Analog_Text[n] = offered;
        rowOf(rows.options.Label_Magnify, channel) = offered;
        // Required: on either tab, so that a magnification may stand beside a raise.
        rowOf(rows.options.Text_Magnify, channel) = offered;
        if (!offered || raise) rowOf(rows.options.ComboScale, channel) = offered;
    }
}

void Vehicle_Type_Change(SetupRows& rows, int Vehicle_Type) {
    const int clutch = channels::clutchChannel;
    if (Vehicle_Type == car) {
        rowOf(rows.options.Label_Magnify, clutch) = false;
        rowOf(rows.options.Text_Magnify, clutch) = false;
        rowOf(rows.options.ComboScale, clutch) = false;
        return;
    }
    rowOf(rows.options.Label_Magnify, clutch) = true;
    if (rows.TabStrip2 == RowsTab::raise) rowOf(rows.options.ComboScale, clutch) = true;
}

} // namespace kvo::setup
