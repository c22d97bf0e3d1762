#pragma once
// Paints a picture into a QImage: lines and boxes by our own raster, texts by QPainter.
#include "platform/draw/display_list.h"

#include <QImage>

namespace kvo::platform_qt {

// An image of 32-bit RGB that holds the part `area` of a surface; it may be larger than that.
struct ImagePart {
    QImage* image = nullptr;
    platform::PixelRect area;
};

// Paints operations `first` up to the one before `end` inside `clip`, on what the image holds.
// pixelRatio is the number of device pixels to a pixel; texts grow with it.
void paintOperations(const ImagePart& part, const platform::PixelRect& clip,
    const platform::DisplayList& picture, std::size_t first, std::size_t end,
    const platform::SurfaceSize& surface, double pixelRatio);
// The back colour, then all operations.
void paintWhole(const ImagePart& part, const platform::PixelRect& clip,
    const platform::DisplayList& picture, platform::Colour ground,
    const platform::SurfaceSize& surface, double pixelRatio);

// Makes the image at least this large, without keeping what it holds. Throws std::bad_alloc where
// there is not enough memory.
void reserveImage(QImage& image, int widthPx, int heightPx);

} // namespace kvo::platform_qt
