#pragma once
// The pictures as files: small enough to lie in the repository and in the program, and the same to
// the last byte whenever they are made of the same windows.
#include <QImage>
#include <QString>

namespace kvo::guide_pictures {

// At most 256 colours, one byte a pixel. Where there are more, the rarer ones become the nearest of
// the more frequent.
QImage inFewColours(const QImage& picture);

// Writes a PNG file; false where it cannot be written. With the picture goes a mark of the letters
// and of the toolkit that it was drawn with.
[[nodiscard]] bool write(const QImage& picture, const QString& path);

// What the file lacks to be this picture, in words; empty where it is. Drawn with other letters or
// by another toolkit it is told by its size alone, which may differ by a fifth.
QString difference(const QImage& picture, const QString& path);

} // namespace kvo::guide_pictures
