#pragma once
// Whole-pixel lines and boxes into the scan lines of a 32-bit RGB image. One rule says which pixels
// a line has, so a picture does not change with the toolkit: Bresenham, both ends included, never
// antialiased. A clip rectangle takes pixels away and moves none: a part painted alone is pixel for
// pixel the part of the whole.
#include "platform/draw/colour.h"
#include "platform/draw/surface.h"

#include <cstddef>
#include <cstdint>
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

// 0xBBGGRR to 0xFFRRGGBB.
std::uint32_t rgb32(Colour colour);

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

    double m_left;
    double m_top;
    double m_pixelsPerX;
    double m_pixelsPerY;
};

// How a line looks. The dash pattern runs along the line, one step a pixel of the line's width.
struct Pen {
    std::uint32_t rgb = 0xFF000000;
    int style = 0; // 0 to 4: solid, dash, dot, dash-dot, dash-dot-dot; others are solid
    int widthPx = 1;
    std::uint32_t phase = 0; // device pixels of the pattern gone by; moves along with each line
};

class Raster {
public:
    // `scanLines` hold the part `area` of a surface, `wordsPerLine` words to a line; both must
    // outlive the raster.
    Raster(std::uint32_t* scanLines, std::ptrdiff_t wordsPerLine, const PixelRect& area);

    const PixelRect& area() const { return m_area; }
    // Only pixels inside are touched from here on.
    void setClip(const PixelRect& clip) { m_clip = intersection(clip, m_area); }
    const PixelRect& clip() const { return m_clip; }

    void fill(const PixelRect& rect, std::uint32_t rgb);
    // Filled box, both corners included, in any order of the corners.
    void box(PixelPoint a, PixelPoint b, std::uint32_t rgb);
    // From a to b, both included.
    void line(PixelPoint a, PixelPoint b, Pen& pen);
    // From point to point; the pattern goes on round the corners.
    void polyline(std::span<const Point> points, const PixelScale& scale, Pen& pen);

private:
    void thinLine(PixelPoint a, PixelPoint b, std::uint32_t rgb);
    void stroke(PixelPoint a, PixelPoint b, const Pen& pen, std::uint32_t start);
    std::uint32_t* at(int x, int y) const {
        return m_scanLines + static_cast<std::ptrdiff_t>(y - m_area.top) * m_wordsPerLine +
               (x - m_area.left);
    }

    std::uint32_t* m_scanLines;
    std::ptrdiff_t m_wordsPerLine;
    PixelRect m_area;
    PixelRect m_clip;
};

} // namespace kvo::platform
