#pragma once
// Raw bytes as files and the line carry them.
#include <cstdint>
#include <string>
#include <vector>

namespace kvo::platform {

using Bytes = std::vector<std::uint8_t>;

} // namespace kvo::platform
