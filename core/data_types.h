#pragma once
// The one table of the logger's data types: all that the number in front of a header line decides,
// from the rows of the file to the edges of the graph and the lines of the printed table.
#include <optional>
#include <span>

namespace kvo::core {

// Where the exhaust temperatures of a type lie.
enum class Exhausts {
    none,
    own,       // eight bytes in every row
    timeShared // one a row, in analog 7; the status names its channel
};

struct DataTypeFacts {
    int type = 0;
    int rows = 0;               // N of the main reader, 0 where it rejects the type
    int overlayRows = 0;        // N of the overlay reader, 0 where it rejects the type
    int importRows = 0;         // N of import, 0 where it rejects the type
    int importAnalogTokens = 0; // analog numbers in a row of an imported text
    int timeOffset = 0;         // default sample of time zero, and the base of its tool
    int printedTimeBase = 0;    // sample of time zero in the printed table
    int printedSamplesALine = 1;
    int analogs = 0; // analogs 1 to this number are drawn, labelled and averaged: 4, 6 or 8
    Exhausts exhausts = Exhausts::none;
    bool setsLabels = false;           // whether the graph shows and hides labels for the type
    bool nearTimes = false;            // whether the grid's times stand near their lines
    std::optional<int> rightEdge;      // of the graph's scale, samples; none: it stays
    std::optional<int> freshRightEdge; // the same where the graph opens on a download
    std::optional<int> startCursor;    // sample of the first cursor on a download
};

// The row of a data type: 8, 12, 17, 20, 23, 25, 29, 32, 43; null for any other.
const DataTypeFacts* dataTypeFacts(int type);
// All rows, by type.
std::span<const DataTypeFacts> dataTypes();

// Analogs of a type: 4, 6 or 8. A number that is no type has the 4 that every logger has up to 16,
// and 8 above.
int analogsOf(int type);
// Exhausts of a type; none for a number that is no type.
Exhausts exhaustsOf(int type);

// Whether the times of the grid stand near their lines, as on the scale of few samples: by the
// type, and for a number that is no type from 23 on.
bool timesStandNear(int type);

} // namespace kvo::core
