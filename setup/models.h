#pragma once
// The seven models of the logger and the two kinds of vehicle: what the setup form offers for each.
#include "setup/option_rows.h"

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

} // namespace kvo::setup
