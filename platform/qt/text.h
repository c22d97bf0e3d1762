#pragma once
// The border between the texts of the logic and the Unicode of the windows. platform/text.h says
// which kind a text is of.
#include <QString>

#include <string>
#include <string_view>

namespace kvo::platform_qt {

// A file's text as a control shows it. Every byte becomes a character of its own, so that none is
// lost on the way back.
QString shown(std::string_view fileText);
// The same as the caption of a button or a box, where an & would mark the letter behind it.
QString shownCaption(std::string_view fileText);
// What the user typed, as a file's text; a character that the code page does not have becomes "?".
std::string typed(const QString& text);

// A path of the system.
QString shownPath(std::string_view path);
std::string typedPath(const QString& path);

// What is said to the user: CR, CR LF and LF all become one line end.
QString shownMessage(std::string_view message);

} // namespace kvo::platform_qt
