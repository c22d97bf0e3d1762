#pragma once
// The printed table of a run as values: what stands in each line, and where. Nothing here knows a
// page but how many lines it has.
#include "channels/run_view.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvo::graph {

// The page in the units of the table.
inline constexpr float tableWidth = 240;
inline constexpr float tableHeight = 290;
inline constexpr int linesAPage = 68;

// y of the text of line r of a page, r from 1.
constexpr float printedLineY(int r) {
    return static_cast<float>(r * 4 + 7);
}

// A column: where its cells begin, and how much room they have up to the next column, or to what a
// printer reaches of the paper's edge.
struct PrintColumn {
    float x = 0;
    float room = 0;
};

struct PrintCell {
    int column = 0; // place in the columns
    std::string text;
};

struct PrintTable {
    // The line of column names. It names columns that the type may not have.
    std::string_view header;
    // As many as the header has names.
    std::vector<PrintColumn> columns;
    // A line each, samples in their order; empty cells are left out.
    std::vector<std::vector<PrintCell>> lines;
    // A run-time failure, as without basket teeth: there is no table then.
    bool failed = false;
};

// All samples of a run. `analogPicture` is the shared slot of AnalogFormat.
PrintTable makePrintTable(const channels::RunView& run, std::string& analogPicture);

// The names of a header line, one a column.
std::vector<std::string_view> namesOf(std::string_view header);

} // namespace kvo::graph
