#pragma once
// A run of the older program, which kept its runs as text: what its file holds, and the name and
// texts that it gets here. Nothing is asked or written.
#include "core/config_record.h"
#include "core/open_run.h"
#include "platform/clock.h"

#include <functional>
#include <string>
#include <string_view>

namespace kvo::library {

// What is said of a file that is no such run, behind its path.
inline constexpr const char* textRunRefusal = "    Is not a VRN Dos Data File";

struct TextRunOutcome {
    bool known = true;    // false: not a run of that program; nothing was read
    bool stopped = false; // the caller ended it
    // Something did not fit: a token that is no number or is too large, an end inside the rows.
    bool corrupt = false;
};

// Told after each row, with its number and the number of all; false ends the reading.
using RowProgress = std::function<bool(int row, int rows)>;

// Reads the text of such a file into `run`: data type, rows, blocks, count of rows, and line 1 as
// its header line so far. What the file does not bring stays as it was in `run`; names of analogs
// that it does not bring are blank. The analogs' scales of a file that ends early, wheel, teeth and
// types of sensors are those of the configuration.
TextRunOutcome readTextRun(std::string_view text, const core::AppConfig& config, core::OpenRun& run,
    const RowProgress& progress = {});

// The file name of an imported run: its date, and the number of its last three characters.
std::string importName(const platform::DateTime& date, std::string_view sourceName);
// " Run: " between date text and the answer: what the index says of the run.
std::string importDescription(std::string_view dateText, std::string_view answer);
// Record 1: line 1 of the source with that description, at most 82 characters.
std::string importHeaderLine(std::string_view firstLine, std::string_view description);

} // namespace kvo::library
