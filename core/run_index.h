#pragma once
// KvoData.Ini: 240-byte records that map run files to descriptions; names, titles and date keys.
#include "platform/clock.h"
#include "platform/files.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::core {

// One line of the run index: 80 and 160 characters in the file.
struct RunIndexEntry {
    std::string FileName;
    std::string Description;
    friend bool operator==(const RunIndexEntry&, const RunIndexEntry&) = default;
};

// Number by which descriptions sort: century, month, day, run number (two characters each).
std::int32_t RunDateKey(std::string_view description);
// "yymmddhh.mmd" of a moment.
std::string runFileName(const platform::DateTime& moment);
// " Date:" date " Run: " title (130 characters at most) "#".
std::string runText(std::string_view title, const platform::DateTime& moment);
// The same with a date that is a text already, as import has it.
std::string runText(std::string_view title, std::string_view date);
// What the index says of a run text: from character 7 up to the one before the first "#".
std::string indexDescription(std::string_view runText);

std::string indexPath(const std::string& appFolder, const platform::Files& files);
// All records in file order; padding kept off. A missing index is empty. A record cut short at the
// end is taken with what it has.
std::vector<RunIndexEntry> readRunIndex(const std::string& path, const platform::Files& files);
// The rows of an index that was read already.
std::vector<RunIndexEntry> runIndexOf(platform::Bytes index);
// The same for the program's own index, where a missing one is created empty. Throws std::bad_alloc
// where there is not enough memory for it.
struct ReadIndex {
    std::vector<RunIndexEntry> entries;
    std::string unread; // why an index that is there could not be read; nothing is created then
};
ReadIndex readOrCreateRunIndex(const std::string& appFolder, platform::Files& files);

// Takes one row off the index, or gives it another description. The index is read anew and every
// other record stays as it is, so that what somebody else has added in the meantime is kept; a copy
// of the old one goes to Backup/. A row that somebody else has described anew is taken off as the
// one of its file, and cannot be described; one that is not there at all is off already.
[[nodiscard]] platform::WriteResult removeFromIndex(
    const std::string& appFolder, const RunIndexEntry& row, platform::Files& files);
[[nodiscard]] platform::WriteResult describeInIndex(const std::string& appFolder,
    const RunIndexEntry& row, const std::string& description, platform::Files& files);

// Rewrites the whole index; a copy of the old one is kept in Backup/ first.
[[nodiscard]] platform::WriteResult writeRunIndex(const std::string& appFolder,
    const std::vector<RunIndexEntry>& entries, platform::Files& files);
// Whether the index is sorted, newest first, when a run is added: an import does, a download puts
// its run at the end.
enum class IndexOrder { sorted, asItIs };
// Adds a run to the index; read once, written once.
[[nodiscard]] platform::WriteResult AddRunToIndex(const std::string& appFolder,
    const RunIndexEntry& entry, IndexOrder order, platform::Files& files);
// The same for several runs at once; the index that adding them one after another would leave.
[[nodiscard]] platform::WriteResult AddRunsToIndex(const std::string& appFolder,
    std::span<const RunIndexEntry> entries, IndexOrder order, platform::Files& files);

// The title offered for the next download: from the last description ("" for none) and today.
std::string suggestTitle(std::string_view lastDescription, const platform::DateTime& today);

// Whether a name from an index or a folder may be used as a base name here: no separator, no "..",
// no control byte, no device name, not empty.
bool isSafeBaseName(std::string_view name);

} // namespace kvo::core
