#pragma once
// What a logger keeps while it is switched off: its 32 header bytes, in a file of their own.
#include "tools/logger_simulator/memory_image.h"

#include <optional>
#include <string>

namespace kvo::simulator {

// The settings in a file. Nothing where there is none; where there is one that cannot be read or
// has another length, nothing too, and `error` says why.
std::optional<HeaderBytes> readState(const std::string& path, std::string& error);
// Replaces the file as a whole. False, with `error`, where that failed; then the file is as it was.
bool writeState(const std::string& path, const HeaderBytes& settings, std::string& error);

} // namespace kvo::simulator
