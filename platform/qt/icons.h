#pragma once
// Pictures for windows: read from bytes whatever their format, and icons that are drawn and so
// follow the palette and the screen's density.
#include "platform/bytes.h"

#include <QIcon>
#include <QPixmap>

#include <functional>

class QPainter;

namespace kvo::platform_qt {

// The picture in a file's content; null when it is none. A picture that states a resolution of a
// multiple of 96 dots an inch is shown that much smaller and sharper.
QPixmap imageFromBytes(const platform::Bytes& content);

// The picture at the largest size that fits into a room, never larger than it is.
QPixmap fitted(const QPixmap& picture, QSize room, qreal screenRatio);

// An icon drawn on a grid of 24 by 24, y downwards, with a pen and brush that suit the palette.
QIcon drawnIcon(std::function<void(QPainter&)> draw);

} // namespace kvo::platform_qt
