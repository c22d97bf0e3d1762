#pragma once
// The date that a file system keeps of a file's making.
#include <ctime>
#include <filesystem>
#include <optional>

namespace kvo::platform_os {

// Seconds of the epoch; those of the last change where the making is not kept, nothing where there
// is no file.
std::optional<std::time_t> createdAt(const std::filesystem::path& path);

} // namespace kvo::platform_os
