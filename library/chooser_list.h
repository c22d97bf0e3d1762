#pragma once
// The list behind the file chooser: the run index in its own order, and what choosing, deleting and
// renaming a run does to the list, the index and the run's files.
#include "core/open_run.h"
#include "core/run_index.h"
#include "platform/files.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::library {

// Full path (UTF-8) of the run a row names: the last 12 characters of its file name in the Data
// folder, so that a row that holds a whole path finds its run too. Where these are no plain base
// name there is no path: empty, which loads like a missing file.
std::string dataFilePath(
    const std::string& appFolder, std::string_view fileName, const platform::Files& files);

// The row of that file, else the row of the newest run by its name, else nothing (an empty list). A
// name tells two digits of its year: 80 to 99 are of the last century.
std::optional<std::size_t> rowToOpenOn(
    const std::vector<core::RunIndexEntry>& rows, std::string_view lastChosenFile);

// Deletes the run file and the info file of a row (copies go to Backup/ first), takes the row off
// the list and writes the index anew. Files that are not there are passed over; on failure of the
// copies or the deletion nothing is taken off.
[[nodiscard]] platform::WriteResult DeleteFile(const std::string& appFolder,
    std::vector<core::RunIndexEntry>& rows, std::size_t row, platform::Files& files);

// What the box for a new description shows: the part behind the row's first ":", trimmed.
std::string editableDescription(std::string_view description);
// The row's text with a new part behind its first ":". Nothing where the new text does not start
// with a number above 0.
std::optional<std::string> changedDescription(
    std::string_view description, std::string_view newText);
// Renames a row: the list, the index, the header line of the run file, and that of the open run
// where it is the same file. A new text that does not start with a number above 0 changes nothing.
[[nodiscard]] platform::WriteResult editDescription(const std::string& appFolder,
    std::vector<core::RunIndexEntry>& rows, std::size_t row, std::string_view newText,
    core::OpenRun& openRun, platform::Files& files);

} // namespace kvo::library
