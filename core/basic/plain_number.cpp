#include "core/basic/plain_number.h"

#include "core/basic/numbers.h"

#include <array>
#include <charconv>
#include <cmath>

namespace kvo::core {

// The smallest and the largest double have 325 places and 309 digits.
template <typename Number> static std::string withoutExponent(Number value) {
    if (!std::isfinite(value)) return "0";
    std::string text = CStr(value);
    if (text.find('E') == std::string::npos) return text;
    std::array<char, 400> room{};
    const auto end =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::fixed);
    return {room.data(), end.ptr};
}

std::string plainNumber(float value) {
    return withoutExponent(value);
}

std::string plainNumber(double value) {
    return withoutExponent(value);
}

} // namespace kvo::core
