#pragma once
// Numbers and texts out of bytes. Every read is checked against the end: one that does not fit
// gives nothing, marks the reader as failed and leaves the position, so no read ever leaves the
// array.
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>

namespace kvo::core {

class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    // Little-endian, as files have them.
    std::optional<std::uint8_t> u8() { return whole<std::uint8_t>(); }
    std::optional<std::uint16_t> u16le() { return whole<std::uint16_t>(); }
    std::optional<std::int16_t> i16le() { return as<std::int16_t>(u16le()); }
    std::optional<std::uint32_t> u32le() { return whole<std::uint32_t>(); }
    std::optional<std::int32_t> i32le() { return as<std::int32_t>(u32le()); }
    std::optional<float> f32le() { return as<float>(u32le()); }
    std::optional<double> f64le() { return as<double>(whole<std::uint64_t>()); }
    // High byte first, as the line has them.
    std::optional<std::uint16_t> u16be();

    // Exactly `length` bytes as text.
    std::optional<std::string> text(std::size_t length);
    // Exactly as many bytes as `into` holds; untouched on failure.
    bool raw(std::span<std::uint8_t> into);
    bool skip(std::size_t length);

    std::size_t position() const { return m_position; }
    std::size_t left() const { return m_bytes.size() - m_position; }
    // Whether any read so far did not fit.
    bool failed() const { return m_failed; }

private:
    // `count` bytes from here, or an empty span and a failure.
    std::span<const std::uint8_t> take(std::size_t count) {
        if (count > left()) {
            m_failed = true;
            return {};
        }
        const auto taken = m_bytes.subspan(m_position, count);
        m_position += count;
        return taken;
    }

    // Little-endian; here, so that a record of many fields is read without a call a field.
    template <typename Unsigned> std::optional<Unsigned> whole() {
        const auto bytes = take(sizeof(Unsigned));
        if (bytes.empty()) return {};
        Unsigned value = 0;
        if constexpr (std::endian::native == std::endian::little) {
            std::memcpy(&value, bytes.data(), sizeof(Unsigned));
        } else {
            for (std::size_t i = sizeof(Unsigned); i > 0; --i) {
                value =
                    static_cast<Unsigned>(static_cast<std::uint64_t>(value) << 8U | bytes[i - 1]);
            }
        }
        return value;
    }
    template <typename To, typename From> static std::optional<To> as(std::optional<From> bits) {
        if (!bits) return {};
        return std::bit_cast<To>(*bits);
    }

    std::span<const std::uint8_t> m_bytes;
    std::size_t m_position = 0;
    bool m_failed = false;
};

} // namespace kvo::core
