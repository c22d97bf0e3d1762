#pragma once
// Device pixels of a surface: positions, rectangles, and the way from the user scale to them and
// back.
#include "platform/draw/surface.h"

#include <span>

namespace kvo::platform {

// Position in device pixels of the surface, (0, 0) at its left top.
struct PixelPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};

// Left and top belong to it, right and bottom do not.
struct PixelRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool empty() const { return right <= left || bottom <= top; }
    bool holds(PixelPoint p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

PixelRect intersection(const PixelRect& a, const PixelRect& b);

// Positions further out than this are moved in to it: lines of any length take time only for the
// pixels that are seen.
inline constexpr int farPixel = 1 << 29;
// The pixel of a position that is no number; a line that touches it is not drawn.
inline constexpr int noPixel = -(1 << 30);

// The user scale: its left top and right bottom corner.
struct UserScale {
    float left = 0;
    float top = 0;
    float right = 1;
    float bottom = 1;
    friend bool operator==(const UserScale&, const UserScale&) = default;
};

// A surface in device pixels. A line is linePx device pixels wide: 1, or 2 where the screen has
// two device pixels to one.
struct SurfaceSize {
    int widthPx = 1;
    int heightPx = 1;
    int linePx = 1;
    friend bool operator==(const SurfaceSize&, const SurfaceSize&) = default;
};

// From the user scale to device pixels and back. The edges of the scale fall on the first and the
// last line of the surface, so that a curve at 0 is seen.
class PixelScale {
public:
    PixelScale(const UserScale& scale, const SurfaceSize& size);
    int x(float userX) const { return toPixel((userX - m_left) * m_pixelsPerX); }
    int y(float userY) const { return toPixel((userY - m_top) * m_pixelsPerY); }
    PixelPoint point(Point p) const { return {x(p.x), y(p.y)}; }
    // The pixels of many points, as point() gives them, but two coordinates at a time; a point of
    // which one coordinate is no number is noPixel in both. `to` has room for all of them.
    void points(std::span<const Point> from, PixelPoint* to) const;
    // Whether a greater x never lies further left.
    bool runsRight() const { return m_pixelsPerX > 0; }
    // The user position of a pixel; (0, 0) on a surface of one pixel.
    Point user(double pixelX, double pixelY) const;

private:
    // The nearest pixel; a place half way between two goes to the greater. Here, since a picture
    // asks for it more often than for anything else.
    static int toPixel(double place) {
        if (place != place) return noPixel; // no number
        constexpr double far = farPixel;
        const double moved = (place < -far ? -far : place > far ? far : place) + 0.5;
        const int cut = static_cast<int>(moved); // toward zero
        return cut - (moved < cut ? 1 : 0);
    }
    bool nearPoints(std::span<const Point> from, PixelPoint* to) const;

    double m_left;
    double m_top;
    double m_pixelsPerX;
    double m_pixelsPerY;
};

} // namespace kvo::platform
