#include "platform/qt/text.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace kvo::platform_qt {
namespace {

// Characters 0x80 to 0x9F of the code page; 0 where it has none.
constexpr std::array<char16_t, 32> upperControls{0x20AC, 0, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020,
    0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017D, 0, 0, 0x2018, 0x2019, 0x201C, 0x201D,
    0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178};

char16_t toUnicode(unsigned char byte) {
    if (byte < 0x80 || byte > 0x9F) return byte;
    const char16_t known = upperControls[byte - 0x80U];
    return known != 0 ? known : byte;
}

char toByte(char16_t unicode) {
    if (unicode < 0x80 || (unicode > 0x9F && unicode < 0x100)) return static_cast<char>(unicode);
    const auto* place = std::find(upperControls.begin(), upperControls.end(), unicode);
    if (place != upperControls.end())
        return static_cast<char>(0x80 + (place - upperControls.begin()));
    const bool openByte = unicode < 0x100 && upperControls[unicode - 0x80U] == 0;
    return openByte ? static_cast<char>(unicode) : '?';
}

} // namespace

QString shown(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(),
        [](char byte) { return QChar(toUnicode(static_cast<unsigned char>(byte))); });
    return text;
}

std::string typed(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text) {
        if (character.isLowSurrogate()) continue; // one "?" for the pair
        bytes.push_back(toByte(character.unicode()));
    }
    return bytes;
}

QString shownPath(std::string_view path) {
    return QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}

std::string typedPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString shownLines(std::string_view bytes) {
    QString text = shown(bytes);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

} // namespace kvo::platform_qt
