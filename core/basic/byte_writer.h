#pragma once
// Numbers and texts into bytes, field by field: little-endian for files, high byte first for the
// line.
#include "platform/bytes.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

namespace kvo::core {

class ByteWriter {
public:
    void u8(std::uint8_t value) { m_bytes.push_back(value); }
    void u16le(std::uint16_t value) { whole(value, 2); }
    void i16le(std::int16_t value) { u16le(static_cast<std::uint16_t>(value)); }
    void u32le(std::uint32_t value) { whole(value, 4); }
    void i32le(std::int32_t value) { u32le(static_cast<std::uint32_t>(value)); }
    void f32le(float value);
    void f64le(double value);
    void u16be(std::uint16_t value);

    // Exactly `width` characters: blanks added behind, or cut.
    void text(std::string_view value, std::size_t width);
    // The characters as they are.
    void characters(std::string_view value);
    void raw(std::span<const std::uint8_t> bytes);
    // Zero bytes until the whole is `size` long; nothing if it is longer.
    void fillTo(std::size_t size);

    std::size_t size() const { return m_bytes.size(); }
    const platform::Bytes& bytes() const { return m_bytes; }
    platform::Bytes take() { return std::move(m_bytes); }

private:
    void whole(std::uint64_t value, std::size_t width);

    platform::Bytes m_bytes;
};

} // namespace kvo::core
