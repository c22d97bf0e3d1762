#pragma once
// Kvo.Cfg: the configuration record on disk, in the program's folder.
#include "core/config_record.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <functional>

namespace kvo::core {

// Decodes a file into `config`. What stands whole in front of a cut is taken, the rest keeps what
// it held; false where a read failed. A Text_Magnify of 0 becomes 1 in either case.
bool decodeConfig(const platform::Bytes& file, AppConfig& config);
// The bytes of the file: 737 with a blank password. Texts are padded or cut to their width.
platform::Bytes encodeConfig(const AppConfig& config);

// Reads Kvo.Cfg; true where it was read whole. A missing or corrupt file is told to the user, then
// `showSoftwareSetup` is called (the setup form, modal); the program goes on.
bool LoadConfig(const std::string& appFolder, AppConfig& config, const platform::Files& files,
    platform::Dialogs& dialogs, const std::function<void()>& showSoftwareSetup);
// Replaces Kvo.Cfg; a copy of the old one is kept in Backup/. A file that is marked as read-only
// stays as it is, without a copy, and counts as done: the user has fixed the settings. Any other
// failure is for the caller to tell; the old file is there then.
[[nodiscard]] platform::WriteResult SaveConfig(
    const std::string& appFolder, const AppConfig& config, platform::Files& files);

} // namespace kvo::core
