#pragma once
// What was saved once can always be had back: what is overwritten or deleted for good is first
// copied to Backup/ of the program's folder, as name.0001, name.0002 and so on. A file that refuses
// to be replaced stays, and no copy is made of it.
#include "platform/files.h"

#include <string>

namespace kvo::core {

// Copies a file to Backup/. Done too where there is no such file, or where the newest copy is the
// same already. On failure nothing was copied and the message says why.
[[nodiscard]] platform::WriteResult keepCopy(
    const std::string& appFolder, const std::string& path, platform::Files& files);

// Writes `content` to `path`. A link in Data/ that leads out of it is refused. The old content is
// kept first, unless the new one begins with it. On failure the file is as it was.
[[nodiscard]] platform::WriteResult replaceKept(const std::string& appFolder,
    const std::string& path, const platform::Bytes& content, platform::Files& files);

// The same for a file of records: `content` goes over its beginning, and what lies behind that
// stays.
[[nodiscard]] platform::WriteResult replaceBeginningKept(const std::string& appFolder,
    const std::string& path, platform::Bytes content, platform::Files& files);

// Keeps a text that was in no file: Backup/stem.txt, or stem-2.txt and so on where another text has
// that name. Done too where one of them is the same already.
[[nodiscard]] platform::WriteResult keepText(const std::string& appFolder, const std::string& stem,
    const std::string& text, platform::Files& files);

// Deletes a file that is kept first. A missing file is no failure.
[[nodiscard]] platform::WriteResult removeKept(
    const std::string& appFolder, const std::string& path, platform::Files& files);

} // namespace kvo::core
