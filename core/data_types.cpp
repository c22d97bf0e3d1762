#include "core/data_types.h"

#include <array>

namespace kvo::core {

// Required: the overlay reads one row more of type 17 and 500 more of 32 and 43; type 23 is known
// to import only, and 29 to no reader.
static constexpr std::array<DataTypeFacts, 9> table{{
    // type rows overlay import timeOffset
    {8, 2520, 2520, 2520, 160},
    {12, 2520, 2520, 2520, 160},
    {17, 1724, 1725, 1724, 160},
    {20, 2048, 2048, 2048, 160},
    {23, 0, 0, 1213, 80},
    {25, 1213, 1213, 1213, 80},
    {29, 0, 0, 0, 80},
    {32, 1360, 1860, 1360, 160},
    {43, 1360, 1860, 1360, 160},
}};

std::optional<DataTypeFacts> dataTypeFacts(int type) {
    for (const DataTypeFacts& facts : table) {
        if (facts.type == type) return facts;
    }
    return {};
}

} // namespace kvo::core
