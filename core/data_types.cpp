#include "core/data_types.h"

#include <algorithm>
#include <array>

namespace kvo::core {
namespace {

using enum Exhausts;

constexpr auto stays = std::nullopt; // an edge or a cursor that the type does not move
constexpr int lastOfFourAnalogs = 16;
constexpr int firstOfNearTimes = 23;

// Required: the overlay reads one row more of type 17 and 500 more of 32 and 43; type 23 is known
// to import only, and 29 to no reader. A download of types 8 and 12 is shown up to sample 2441. The
// printed table counts from 81 where the graph counts from 80.
// clang-format off
constexpr std::array<DataTypeFacts, 9> table{{
    // type, rows, overlay, import, tokens, zero, printed, a line, analogs, exhausts, labels, near, right, fresh, cursor
    {8, 2520, 2520, 2520, 4, 160, 160, 2, 4, none, true, false, 2521, 2442, 160},
    {12, 2520, 2520, 2520, 4, 160, 160, 2, 4, none, true, false, 2521, 2442, 160},
    {17, 1724, 1725, 1724, 8, 160, 160, 1, 8, none, true, false, 1725, 1725, 160},
    {20, 2048, 2048, 2048, 7, 160, 160, 1, 6, timeShared, true, false, 2049, 2049, 160},
    {23, 0, 0, 1213, 7, 80, 81, 1, 8, none, false, true, 1214, 1214, 80},
    {25, 1213, 1213, 1213, 8, 80, 81, 1, 8, own, true, true, 1214, 1214, 80},
    {29, 0, 0, 0, 0, 80, 81, 1, 8, none, false, true, stays, stays, stays},
    {32, 1360, 1860, 1360, 11, 160, 160, 1, 8, own, true, true, 1361, 1361, 160},
    {43, 1360, 1860, 1360, 11, 160, 160, 1, 8, own, true, true, 1361, 1361, 160},
}};
// clang-format on

} // namespace

const DataTypeFacts* dataTypeFacts(int type) {
    const auto* row = std::find_if(table.begin(), table.end(),
        [type](const DataTypeFacts& facts) { return facts.type == type; });
    return row != table.end() ? row : nullptr;
}

std::span<const DataTypeFacts> dataTypes() {
    return table;
}

int analogsOf(int type) {
    const DataTypeFacts* facts = dataTypeFacts(type);
    if (facts != nullptr) return facts->analogs;
    return type <= lastOfFourAnalogs ? 4 : 8;
}

Exhausts exhaustsOf(int type) {
    const DataTypeFacts* facts = dataTypeFacts(type);
    return facts != nullptr ? facts->exhausts : none;
}

bool timesStandNear(int type) {
    const DataTypeFacts* facts = dataTypeFacts(type);
    return facts != nullptr ? facts->nearTimes : type >= firstOfNearTimes;
}

} // namespace kvo::core
