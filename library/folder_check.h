#pragma once
// Looks through a program's folder for files that are damaged. None of its formats has a check sum:
// what shows is a wrong length, a number that no such file holds, and what cannot be read at all.
#include "platform/files.h"

#include <string>
#include <vector>

namespace kvo::library {

struct FileFinding {
    std::string file;   // below the folder, UTF-8
    std::string reason; // UTF-8
    friend bool operator==(const FileFinding&, const FileFinding&) = default;
};

struct FolderFindings {
    int files = 0; // that were read
    std::vector<FileFinding> damaged;
    std::vector<FileFinding> notes; // what is no damage and worth knowing, such as an unlisted run
};

// Reads every file of the folder, of Data and of Backup. Nothing is changed or created.
FolderFindings checkFolder(const std::string& appFolder, const platform::Files& files);

// Why the files of a folder cannot be told, for the user; empty where they can, and where there is
// no such folder.
std::string whyUnlisted(const std::string& folder, const platform::Files& files);

// What is wrong with a run file's content; empty where nothing is.
std::string runDamage(const platform::Bytes& content);
// The same for the file of a run's notes. One that is empty was created by looking at its run.
std::string infoDamage(const platform::Bytes& content);

} // namespace kvo::library
