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

} // namespace kvo::setup
