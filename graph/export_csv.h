#pragma once
// A run as a table for spreadsheets and other programs: a line of names with their units, then a
// line a sample, with the values that the read-outs show of it.
#include "channels/run_view.h"
#include "core/config_record.h"
#include "graph/layout.h"
#include "platform/bytes.h"
#include "platform/draw/pixel_scale.h"

#include <string>
#include <string_view>

namespace kvo::graph {

// How numbers are written and what stands between two cells.
struct CsvLook {
    char decimalSign = '.';
    char separator = ',';
    friend bool operator==(const CsvLook&, const CsvLook&) = default;
};
// What the spreadsheets of a desktop expect: a semicolon where its decimal sign is the comma.
CsvLook csvLookOf(char32_t decimalSign);

// Samples of a run, the first and the last; none where the last lies below the first.
struct SampleStretch {
    int from = 1;
    int to = 0;
    bool empty() const { return to < from; }
    friend bool operator==(const SampleStretch&, const SampleStretch&) = default;
};
SampleStretch wholeRun(const channels::RunView& run);
// The samples between the edges of what is in view of the surface.
SampleStretch stretchInView(
    const channels::RunView& run, const platform::UserScale& scale, const SurfacePart& part);

// A text as a cell: in quotes where it needs them. One that a spreadsheet would take for a formula,
// with = + - @, TAB or CR in front, gets an apostrophe before it, which makes it a text.
std::string csvCell(std::string_view text, char separator);

// The table of a stretch, which must lie in the run. Time counts from time zero. It has each
// channel that the run's type has, on or off, but no clutch of a car, and the four switches as 1
// and 0. A value that cannot be formed leaves its own cell empty. Of exhausts that take turns each
// keeps the value that it had last, from the run's first sample on. Lines end with CR LF, the text
// is UTF-8, and only where a name is beyond ASCII it begins with a byte order mark: spreadsheets
// want it then, while other programs would take it for a part of the first name.
platform::Bytes runAsCsv(const channels::RunView& run, const core::AppConfig& config,
    const SampleStretch& stretch, const CsvLook& look);

} // namespace kvo::graph
