#pragma once
// The walk through the folders of a disk that the folder dialogue shows: one folder at a time, with
// the folders and the files in it. Paths are the system's own, UTF-8.
#include "platform/files.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::library {

class FolderBrowser {
public:
    explicit FolderBrowser(const platform::Files& files) : m_files(files) {}

    // Goes to a folder; false where it cannot be read, and the walk stays where it is.
    bool enter(const std::string& folder);
    // Goes into the folder of a row; false as for enter(), and for a row that is not there.
    bool enterRow(std::size_t row);
    // Goes to the folder that this one is in; false at the root of a disk.
    bool goUp();

    const std::string& folder() const { return m_folder; }
    // "..", except at the root of a disk, then the folders; hidden ones are left out.
    const std::vector<std::string>& rows() const { return m_rows; }
    // The plain files in the folder but hidden ones.
    std::vector<std::string> files() const;

private:
    std::optional<std::string> above() const;

    const platform::Files& m_files;
    std::string m_folder;
    std::vector<std::string> m_rows;
};

// Whether this is the root of a disk: a separator alone, or one behind the letter of a drive. It
// keeps the separator at its end.
bool isRootFolder(std::string_view folder);

// The drive that a folder lies on: the longest of `roots` that the folder's path begins with;
// nothing if none.
std::optional<std::size_t> driveOf(
    const std::vector<std::string>& roots, const std::string& folder, char separator);

} // namespace kvo::library
