#pragma once
// Whole-pixel lines and boxes into the scan lines of a 32-bit RGB image. One rule says which pixels
// a line has, so a picture does not change with the toolkit: Bresenham, both ends included, never
// antialiased. A clip rectangle takes pixels away and moves none: a part painted alone is pixel for
// pixel the part of the whole.
#include "platform/draw/colour.h"
#include "platform/draw/pixel_scale.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace kvo::platform {

// 0xBBGGRR to 0xFFRRGGBB.
std::uint32_t rgb32(Colour colour);

// Whether a line of a style is drawn without gaps; no pixel of it depends on a phase then.
bool isSolid(int style);

// How a line looks. The dash pattern runs along the line, one step a pixel of the line's width.
struct Pen {
    std::uint32_t rgb = 0xFF000000;
    int style = 0; // 0 to 4: solid, dash, dot, dash-dot, dash-dot-dot; others are solid
    int widthPx = 1;
    std::uint32_t phase = 0; // device pixels of a pattern gone by; moves along with each line
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
    void solidLine(PixelPoint a, PixelPoint b, int width, std::uint32_t rgb);
    void stroke(PixelPoint a, PixelPoint b, const Pen& pen, std::uint32_t start, bool inside);
    void column(int x, int low, int high, std::uint32_t rgb);
    void thinPolyline(std::span<const Point> points, const PixelScale& scale, Pen& pen);
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
