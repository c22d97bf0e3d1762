#include "platform/text.h"

#include <algorithm>
#include <array>

namespace kvo::platform {

namespace {

// Characters 0x80 to 0x9F of the code page; 0 where it has none.
constexpr std::array<char16_t, 32> upperControls{0x20AC, 0, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020,
    0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017D, 0, 0, 0x2018, 0x2019, 0x201C, 0x201D,
    0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178};

// How many bytes follow a leading one, and the least character that needs so many; -1 for a byte
// that leads none.
struct Lead {
    int followers;
    unsigned bits;
    unsigned least;
};

Lead leadOf(unsigned char byte) {
    if (byte < 0x80) return {0, byte, 0};
    if (byte >= 0xC0 && byte < 0xE0) return {1, byte & 0x1FU, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {2, byte & 0x0FU, 0x800};
    if (byte >= 0xF0 && byte < 0xF8) return {3, byte & 0x07U, 0x10000};
    return {-1, 0, 0};
}

} // namespace

char16_t unicodeOf(unsigned char byte) {
    if (byte < 0x80 || byte > 0x9F) return byte;
    const char16_t known = upperControls[byte - 0x80U];
    return known != 0 ? known : byte;
}

char byteOf(char16_t unicode) {
    if (unicode < 0x80 || (unicode > 0x9F && unicode < 0x100)) return static_cast<char>(unicode);
    const auto* place = std::find(upperControls.begin(), upperControls.end(), unicode);
    if (place != upperControls.end())
        return static_cast<char>(0x80 + (place - upperControls.begin()));
    const bool openByte = unicode < 0x100 && upperControls[unicode - 0x80U] == 0;
    return openByte ? static_cast<char>(unicode) : '?';
}

std::string fromFile(std::string_view fileText) {
    std::string utf8;
    utf8.reserve(fileText.size());
    for (const char byte : fileText) {
        const unsigned c = unicodeOf(static_cast<unsigned char>(byte));
        if (c < 0x80) {
            utf8 += static_cast<char>(c);
        } else if (c < 0x800) {
            utf8 += static_cast<char>(0xC0U | c >> 6U);
            utf8 += static_cast<char>(0x80U | (c & 0x3FU));
        } else {
            utf8 += static_cast<char>(0xE0U | c >> 12U);
            utf8 += static_cast<char>(0x80U | (c >> 6U & 0x3FU));
            utf8 += static_cast<char>(0x80U | (c & 0x3FU));
        }
    }
    return utf8;
}

bool isUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const Lead lead = leadOf(static_cast<unsigned char>(text[i++]));
        if (lead.followers < 0) return false;
        unsigned character = lead.bits;
        for (int k = 0; k < lead.followers; ++k, ++i) {
            const unsigned next = i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
            if ((next & 0xC0U) != 0x80U) return false;
            character = character << 6U | (next & 0x3FU);
        }
        const bool half = character >= 0xD800 && character < 0xE000; // of a pair, no character
        if (character < lead.least || character > 0x10FFFF || half) return false;
    }
    return true;
}

} // namespace kvo::platform
