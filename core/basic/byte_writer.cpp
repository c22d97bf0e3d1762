#include "core/basic/byte_writer.h"

#include "core/basic/numbers.h"

#include <bit>

namespace kvo::core {

void ByteWriter::f32le(float value) {
    u32le(std::bit_cast<std::uint32_t>(value));
}

void ByteWriter::f64le(double value) {
    whole(std::bit_cast<std::uint64_t>(value));
}

void ByteWriter::u16be(std::uint16_t value) {
    u8(static_cast<std::uint8_t>(value >> 8U));
    u8(static_cast<std::uint8_t>(value));
}

void ByteWriter::text(std::string_view value, std::size_t width) {
    characters(padded(value, width));
}

void ByteWriter::characters(std::string_view value) {
    m_bytes.insert(m_bytes.end(), value.begin(), value.end());
}

void ByteWriter::raw(std::span<const std::uint8_t> bytes) {
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
}

void ByteWriter::fillTo(std::size_t size) {
    if (m_bytes.size() < size) m_bytes.resize(size);
}

} // namespace kvo::core
