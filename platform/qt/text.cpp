#include "platform/qt/text.h"

#include "platform/text.h"

#include <algorithm>

namespace kvo::platform_qt {

QString shown(std::string_view fileText) {
    QString text(static_cast<qsizetype>(fileText.size()), Qt::Uninitialized);
    std::transform(fileText.begin(), fileText.end(), text.begin(),
        [](char byte) { return QChar(platform::unicodeOf(static_cast<unsigned char>(byte))); });
    return text;
}

QString shownCaption(std::string_view fileText) {
    return shown(fileText).replace(QLatin1Char('&'), QLatin1String("&&"));
}

std::string typed(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text) {
        if (character.isLowSurrogate()) continue; // one "?" for the pair
        bytes.push_back(platform::byteOf(character.unicode()));
    }
    return bytes;
}

QString shownPath(std::string_view path) {
    return QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
}

std::string typedPath(const QString& path) {
    return path.toStdString();
}

QString shownMessage(std::string_view message) {
    // A path may hold bytes of another code page, from a disk of an older system.
    QString text = platform::isUtf8(message) ? shownPath(message) : shown(message);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

} // namespace kvo::platform_qt
