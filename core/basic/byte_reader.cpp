#include "core/basic/byte_reader.h"

#include <algorithm>

namespace kvo::core {

std::optional<std::uint16_t> ByteReader::u16be() {
    const auto bytes = take(2);
    if (bytes.empty()) return {};
    return static_cast<std::uint16_t>(bytes[0] << 8U | bytes[1]);
}

std::optional<std::string> ByteReader::text(std::size_t length) {
    if (length > left()) {
        m_failed = true;
        return {};
    }
    const auto bytes = take(length);
    return std::string(bytes.begin(), bytes.end());
}

bool ByteReader::raw(std::span<std::uint8_t> into) {
    if (into.size() > left()) {
        m_failed = true;
        return false;
    }
    const auto bytes = take(into.size());
    std::copy(bytes.begin(), bytes.end(), into.begin());
    return true;
}

bool ByteReader::skip(std::size_t length) {
    if (length > left()) {
        m_failed = true;
        return false;
    }
    m_position += length;
    return true;
}

} // namespace kvo::core
