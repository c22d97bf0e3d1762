#pragma once
// Opening things by their path: which folder a run belongs to, and which folders and runs were open
// last.
#include "platform/files.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvo::core {

// What a path names, seen from a program's folder.
enum class OpenedThing {
    nothing,      // there is nothing
    folder,       // a folder, which may be one of the program
    ownRun,       // a run in the Data of this folder
    runElsewhere, // a run that lies anywhere else
    noRun         // a file that is no run
};
// Both paths are whole and without links, so that they can be compared; `ownData` is the folder of
// the program's runs.
OpenedThing thingAt(
    const std::string& path, const std::string& ownData, const platform::Files& files);

// The program's folder around a run: what its Data folder, in whatever case, lies in; empty where
// the run lies in no such folder.
std::string folderOfRun(const std::string& path);

// How many folders, and how many runs, are remembered.
inline constexpr std::size_t mostRecent = 10;
// The list with `path` in front, once.
std::vector<std::string> withRecent(std::vector<std::string> list, const std::string& path);
// The list without it.
std::vector<std::string> withoutRecent(std::vector<std::string> list, const std::string& path);

} // namespace kvo::core
