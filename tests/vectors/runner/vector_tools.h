#pragma once
// What the functions of the golden vectors share: texts whose code points are bytes, bytes as hex,
// and the two sums that stand for long results.
#include "platform/bytes.h"
#include "vector_case.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kvo::vectors {

// The program's folder in memory.
inline constexpr const char* folder = "/kvo";

// A text of a line, one byte a code point 0 to 255. Throws for anything else.
std::string textOf(const Json& text);
// The other way; every byte may occur.
Json toJson(std::string_view text);
// Lowercase hex digits to bytes and back.
platform::Bytes bytesOfHex(const std::string& hex);
std::string hexOf(std::span<const std::uint8_t> bytes);
// A text without the blanks at its ends.
std::string trimmed(std::string text);
// Blanks off the right end of a text at `key` of an object, if it is there.
void trimRight(Json& object, const std::string& key);

// The common CRC-32 (polynomial 0xEDB88320 reflected, initial and final inversion).
std::uint32_t crc32(std::span<const std::uint8_t> bytes);
// 64 lowercase hex digits.
std::string sha256(std::span<const std::uint8_t> bytes);

// The whole file. Throws if it cannot be read.
platform::Bytes fileBytes(const std::filesystem::path& path);

} // namespace kvo::vectors
