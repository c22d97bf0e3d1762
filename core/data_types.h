#pragma once
// The one table of the logger's data types.
#include <cstdint>
#include <optional>

namespace kvo::core {

struct DataTypeFacts {
    int type;
    int rows;        // N of the main reader, 0 where it rejects the type
    int overlayRows; // N of the overlay reader, 0 where it rejects the type
    int importRows;  // N of import, 0 where it rejects the type
    int timeOffset;  // default number of the sample that is time zero
};

// The row of a data type: 8, 12, 17, 20, 23, 25, 29, 32, 43; nothing for any other.
std::optional<DataTypeFacts> dataTypeFacts(int type);

} // namespace kvo::core
