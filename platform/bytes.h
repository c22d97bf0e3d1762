#pragma once
// Raw bytes as files and the line carry them. Text inside the logic is one byte a character
// (Windows-1252) in std::string; forms convert it to Unicode.
#include <cstdint>
#include <string>
#include <vector>

namespace kvo::platform {

using Bytes = std::vector<std::uint8_t>;

} // namespace kvo::platform
