#pragma once
// The border between the bytes of the logic (Windows-1252, one byte a character) and the Unicode
// texts of the windows.
#include <QString>

#include <string>
#include <string_view>

namespace kvo::platform_qt {

// Bytes as a control shows them. The five bytes that the code page leaves open become the control
// character of the same number, so that nothing is lost on the way back.
QString shown(std::string_view bytes);
// What the user typed, as bytes; a character that the code page does not have becomes "?".
std::string typed(const QString& text);

// A path of the system (UTF-8 bytes outside Windows).
QString shownPath(std::string_view path);
std::string typedPath(const QString& path);

// A text for a message: CR, CR LF and LF all become one line end.
QString shownLines(std::string_view bytes);

} // namespace kvo::platform_qt
