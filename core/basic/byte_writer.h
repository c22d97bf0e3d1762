#pragma once
// Numbers and texts into bytes, field by field: little-endian for files, high byte first for the
// line.
#include "platform/bytes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

namespace kvo::core {

class ByteWriter {
public:
    ByteWriter() = default;
    // Room for so many bytes is made at once; more may come.
    explicit ByteWriter(std::size_t expectedBytes) { m_bytes.reserve(expectedBytes); }

    void u8(std::uint8_t value) { m_bytes.push_back(value); }
    void u16le(std::uint16_t value) { whole(value); }
    void i16le(std::int16_t value) { u16le(static_cast<std::uint16_t>(value)); }
    void u32le(std::uint32_t value) { whole(value); }
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
    template <typename Unsigned> void whole(Unsigned value) {
        std::array<std::uint8_t, sizeof(Unsigned)> bytes{};
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            bytes[i] = static_cast<std::uint8_t>(value >> (8U * i));
        }
        raw(bytes);
    }

    platform::Bytes m_bytes;
};

} // namespace kvo::core
