#pragma once
// A page as an SVG drawing. The toolkit's own writer of such drawings forgets the clipping, without
// which a curve of an enlarged graph would run over the whole page.
#include "platform/bytes.h"
#include "platform/qt/page_drawing.h"

#include <QSize>
#include <QString>

namespace kvo::platform_qt {

// `pagePx` is the size of the page in the units of its drawing, `shownPx` the one that a viewer is
// to show it in at first. Texts keep the width that they have here, whatever font a viewer takes.
// Images are left out.
platform::Bytes svgOf(
    const PageDrawing& page, const QSize& pagePx, const QSize& shownPx, const QString& title);

} // namespace kvo::platform_qt
