#pragma once
// Lines, boxes and pictures by the rule itself, a pixel at a time and without any care for speed:
// what the program's own drawing is held against.
#include "platform/draw/display_list.h"
#include "platform/draw/raster.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kvo::testing {

// An image of the part `area` of a surface, zeros at first.
class PlainImage {
public:
    explicit PlainImage(const platform::PixelRect& area);

    const platform::PixelRect& area() const { return m_area; }
    // 0 outside.
    std::uint32_t at(int x, int y) const;
    // Outside it changes no pixel.
    void set(int x, int y, std::uint32_t rgb);
    // The program's own drawing into this image.
    platform::Raster raster();
    const std::vector<std::uint32_t>& words() const { return m_words; }

    // Each pixel nearest to the true line in each step of its longer side, both ends included; a
    // wide line has its further pixels right of a steep line and below a flat one. The pen's
    // pattern goes on behind it.
    void line(platform::PixelPoint a, platform::PixelPoint b, platform::Pen& pen);
    // Line by line. A step that stays in its pixel adds none, but for the first.
    void polyline(std::span<const platform::Point> points, const platform::UserScale& scale,
        const platform::SurfaceSize& size, platform::Pen& pen);
    void box(platform::PixelPoint a, platform::PixelPoint b, std::uint32_t rgb);

private:
    std::size_t place(int x, int y) const;

    platform::PixelRect m_area;
    std::vector<std::uint32_t> m_words;
};

// The pixel of a position on a surface, worked out anew from what the scale means.
platform::PixelPoint plainPixel(
    platform::Point at, const platform::UserScale& scale, const platform::SurfaceSize& size);

// Letters as a box of their height, inside the raster's clip: texts take part in a comparison of
// pixels without a font.
class BoxText : public platform::TextPainter {
public:
    explicit BoxText(platform::Raster& raster) : m_raster(raster) {}
    void paintText(platform::PixelPoint leftTop, std::string_view text, float points,
        platform::Colour colour) override;

private:
    platform::Raster& m_raster;
};

// A surface that keeps no list: it draws into its image at once.
class PlainSurface : public platform::Surface {
public:
    explicit PlainSurface(const platform::SurfaceSize& size);

    const PlainImage& image() const { return m_image; }

    void setScale(float left, float top, float right, float bottom) override;
    float scaleWidth() const override { return m_scale.right - m_scale.left; }
    void cls() override;
    void lineTo(float x, float y, platform::Colour colour) override;
    void line(float x1, float y1, float x2, float y2, platform::Colour colour) override;
    void polyline(std::span<const platform::Point> points, platform::Colour colour) override;
    void box(float x1, float y1, float x2, float y2, platform::Colour colour) override;
    void print(std::string_view text) override;
    void refresh() override {}
    void setCurrentX(float x) override { m_current.x = x; }
    void setCurrentY(float y) override { m_current.y = y; }
    float currentX() const override { return m_current.x; }
    float currentY() const override { return m_current.y; }
    void setForeColor(platform::Colour colour) override { m_foreColor = colour; }
    void setBackColor(platform::Colour) override {}
    void setDrawStyle(int style) override { m_drawStyle = style; }
    void setDrawWidth(int pixels) override { m_drawWidth = pixels; }
    void setDrawMode(int) override {}
    void setFontSize(float points) override { m_fontPoints = points; }
    void setAutoRedraw(bool) override {}

private:
    platform::Pen pen(platform::Colour colour) const;

    platform::SurfaceSize m_size;
    PlainImage m_image;
    platform::UserScale m_scale;
    platform::Point m_current;
    platform::Colour m_foreColor = platform::black;
    int m_drawStyle = 0;
    int m_drawWidth = 1;
    float m_fontPoints = 8;
};

} // namespace kvo::testing
