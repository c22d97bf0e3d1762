#pragma once
// Runs that lie in the Data folder and stand in no list: what was saved when the computer failed in
// front of the index, and what came with a folder that was copied without one. They are offered for
// the list when the program starts. Deleting a run deletes its file, so none of those is offered.
#include "core/run_index.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <string>
#include <vector>

namespace kvo::library {

// A row for each of them, by file name, described as its header line says; one that says nothing
// by the date in its name. A run is a plain file, no link that leads out of the folder, named
// "????????.??d", which holds all rows of the data type that it tells. Nothing where the index is
// there and cannot be read, or where the folder does not let it be written.
std::vector<core::RunIndexEntry> unlistedRuns(
    const std::string& appFolder, const platform::Files& files);

// The question for these; the first ten are named.
std::string unlistedRunsText(const std::vector<core::RunIndexEntry>& runs);

// Asks for the list whether it takes them, and puts them at its end where the user says so. A No
// counts until the next start.
void offerUnlistedRuns(
    const std::string& appFolder, platform::Files& files, platform::Dialogs& dialogs);

} // namespace kvo::library
