#pragma once
// The two kinds of text in memory, both in std::string. What a file holds or the user types is file
// text: one byte a character, Windows-1252, cut and compared by place. Paths are the system's own
// text, UTF-8. All that is said to the user - a message and its title, a prompt, the reason of a
// failure, the name of a document - is UTF-8 too, so a path goes into it as it is, and a text of a
// file comes in through fromFile() alone.
#include <string>
#include <string_view>

namespace kvo::platform {

// The UTF-8 of a file's text. The five bytes that the code page leaves open become the control
// character of the same number, so that they can be told apart.
std::string fromFile(std::string_view fileText);

// UTF-16, as one of the systems has its paths and command lines, and back. What is no character -
// bytes that are no UTF-8, half of a pair - becomes U+FFFD, one for each.
std::u16string utf16Of(std::string_view utf8);
std::string utf8Of(std::u16string_view utf16);

// Whether these bytes are UTF-8; a file's text with any letter beyond ASCII is all but never that.
bool isUtf8(std::string_view text);

// The character of a byte of the code page, below 0x10000.
char16_t unicodeOf(unsigned char byte);
// The byte of a character; "?" where the code page does not have it.
char byteOf(char16_t unicode);

} // namespace kvo::platform
