#pragma once
// Where the program's files lie: everything is found under the folder it was started in.
#include "platform/files.h"

#include <string>
#include <string_view>

namespace kvo::core {

// Title of boxes that have none of their own.
inline constexpr const char* programName = "Kvo";

// folder, one separator of the system, name.
std::string joined(const std::string& folder, std::string_view name, const platform::Files& files);
// What stands behind the last separator of either kind.
std::string baseName(std::string_view path);
// The folder of runs and index below the program's folder.
std::string dataFolder(const std::string& appFolder, const platform::Files& files);

} // namespace kvo::core
