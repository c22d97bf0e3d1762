#pragma once
// Kvo.Cfg: the configuration record on disk, in the program's folder.
#include "core/config_record.h"
#include "platform/files.h"

#include <string>

namespace kvo::core {

// Decodes a file into `config`. What stands whole in front of a cut is taken, the rest keeps what
// it held; false where a read failed. A Text_Magnify of 0 becomes 1 in either case.
bool decodeConfig(const platform::Bytes& file, AppConfig& config);
// The bytes of the file: 737 with a blank password. Texts are padded or cut to their width.
platform::Bytes encodeConfig(const AppConfig& config);

// What came of reading Kvo.Cfg.
struct ConfigRead {
    std::string message; // of a missing or corrupt file; empty: it was read whole
    bool whole() const { return message.empty(); }
};
// Reads Kvo.Cfg. A file of no use is the caller's to tell: a beep, a critical box under the
// program's name with the message, then the setup form. The program goes on.
[[nodiscard]] ConfigRead LoadConfig(
    const std::string& appFolder, AppConfig& config, const platform::Files& files);
// Replaces Kvo.Cfg; a copy of the old one is kept in Backup/. A file that is marked as read-only
// stays as it is, without a copy, and counts as done: the user has fixed the settings. Any other
// failure is for the caller to tell; the old file is there then.
[[nodiscard]] platform::WriteResult SaveConfig(
    const std::string& appFolder, const AppConfig& config, platform::Files& files);

} // namespace kvo::core
