#pragma once
// What the program clears away in its folder at its start: leftovers of writes that were killed,
// and those of its many copies of lists and settings that nobody will miss.
#include "platform/clock.h"
#include "platform/files.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvo::core {

// Whether a name is one that a write gives to its file until it is whole: ".name.12-0.new".
bool isWriteLeftover(std::string_view name);

// A copy in Backup/ of a list or of settings: never of a run, its info file or a logger's settings.
struct KeptCopy {
    std::string name; // with its number: "KvoData.Ini.0001"
    platform::DateTime made;
};
// Those of the copies of one file that may go: all of today stay, of the last 30 days the first of
// each day, of the year before that the first of each month; older ones go, and the newest stays in
// any case. The first of a day has the rows that were deleted in it.
std::vector<std::string> copiesToDrop(
    std::vector<KeptCopy> copies, const platform::DateTime& today);

// Those of the names that are bytes of downloads ("26111514.52d.raw", "26111514.52d-failed.raw")
// and may go: the newest 200 by their names stay.
std::vector<std::string> rawSessionsToDrop(const std::vector<std::string>& names);

// Clears the program's folder, Data/ and Backup/: leftovers older than a day, and copies and bytes
// of downloads that may go. What cannot be deleted stays without a word; nothing else is ever
// touched.
void tidyFolder(
    const std::string& appFolder, const platform::DateTime& now, platform::Files& files);

} // namespace kvo::core
