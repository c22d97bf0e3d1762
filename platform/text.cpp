#include "platform/text.h"

#include <algorithm>
#include <array>
#include <optional>

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

// What stands for something that is no character.
constexpr char32_t noCharacter = 0xFFFD;

bool isHalf(char32_t character) {
    return character >= 0xD800 && character < 0xE000;
}

// Takes the character at `place` and goes behind it; behind the leading byte alone where there is
// none.
std::optional<char32_t> takeCharacter(std::string_view utf8, std::size_t& place) {
    const Lead lead = leadOf(static_cast<unsigned char>(utf8[place++]));
    if (lead.followers < 0) return {};
    char32_t character = lead.bits;
    std::size_t next = place;
    for (int k = 0; k < lead.followers; ++k, ++next) {
        const unsigned byte = next < utf8.size() ? static_cast<unsigned char>(utf8[next]) : 0U;
        if ((byte & 0xC0U) != 0x80U) return {};
        character = character << 6U | (byte & 0x3FU);
    }
    if (character < lead.least || character > 0x10FFFF || isHalf(character)) return {};
    place = next;
    return character;
}

void append(std::string& utf8, char32_t character) {
    const auto follower = [character](unsigned bits) {
        return static_cast<char>(0x80U | (character >> bits & 0x3FU));
    };
    if (character < 0x80) {
        utf8 += static_cast<char>(character);
        return;
    }
    if (character < 0x800) {
        utf8 += static_cast<char>(0xC0U | character >> 6U);
    } else if (character < 0x10000) {
        utf8 += static_cast<char>(0xE0U | character >> 12U);
        utf8 += follower(6);
    } else {
        utf8 += static_cast<char>(0xF0U | character >> 18U);
        utf8 += follower(12);
        utf8 += follower(6);
    }
    utf8 += follower(0);
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
    for (const char byte : fileText) append(utf8, unicodeOf(static_cast<unsigned char>(byte)));
    return utf8;
}

std::u16string utf16Of(std::string_view utf8) {
    std::u16string utf16;
    utf16.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const char32_t character = takeCharacter(utf8, i).value_or(noCharacter);
        if (character < 0x10000) {
            utf16 += static_cast<char16_t>(character);
        } else {
            utf16 += static_cast<char16_t>(0xD7C0U + (character >> 10U));
            utf16 += static_cast<char16_t>(0xDC00U | (character & 0x3FFU));
        }
    }
    return utf16;
}

std::string utf8Of(std::u16string_view utf16) {
    const auto half = [&utf16](std::size_t place, unsigned kind) {
        return place < utf16.size() && (utf16[place] & 0xFC00U) == kind;
    };
    std::string utf8;
    utf8.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        if (half(i, 0xD800) && half(i + 1, 0xDC00)) {
            append(utf8, 0x10000U + ((utf16[i] & 0x3FFU) << 10U) + (utf16[i + 1] & 0x3FFU));
            ++i;
        } else {
            append(utf8, isHalf(utf16[i]) ? noCharacter : utf16[i]);
        }
    }
    return utf8;
}

bool isUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        if (!takeCharacter(text, i)) return false;
    }
    return true;
}

} // namespace kvo::platform
