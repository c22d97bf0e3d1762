#pragma once
// What a run is called where it is shown or printed, by its file.
#include "platform/files.h"

#include <string>
#include <string_view>

namespace kvo::core {

// Date, number and title of a run, from its header line; all of the line where it has no date.
std::string_view titleOf(std::string_view headerLine);
// The same of a run file by its path, without blanks behind it; empty where it cannot be read or
// has no header line.
std::string titleOfFile(const std::string& runPath, const platform::Files& files);

} // namespace kvo::core
