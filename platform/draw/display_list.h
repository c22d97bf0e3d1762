#pragma once
// The kept picture of a surface as a list of what was drawn, in the user scale it was drawn in. Its
// memory does not depend on the surface's size; any part of the surface can be painted from it, at
// any size, pixel for pixel as the whole would have been.
#include "platform/draw/raster.h"
#include "platform/draw/surface.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::platform {

// Puts text into the image that a raster paints. Text is not clipped by the raster: whoever
// implements this clips it to the raster's clip rectangle.
class TextPainter {
public:
    virtual ~TextPainter() = default;
    // `leftTop` in device pixels of the surface, size in points, colour 0xBBGGRR.
    virtual void paintText(
        PixelPoint leftTop, std::string_view text, float points, Colour colour) = 0;
};

// Height of a line of text of a size, in pixels of the surface without a scale factor.
int textLineHeightPx(float points);
// Height of its letters' font, likewise; never below what can be read.
int textFontPx(float points);

class DisplayList {
public:
    struct Style {
        Colour colour = black;
        int drawStyle = 0;
        int drawWidth = 1;
        friend bool operator==(const Style&, const Style&) = default;
    };

    void clear();
    bool empty() const { return m_operations.empty(); }
    std::size_t size() const { return m_operations.size(); }
    // Changes whenever something that was there has gone.
    std::uint32_t generation() const { return m_generation; }
    // What is drawn from here on is an operation of its own.
    void seal() { m_sealed = true; }

    // A line from a point through others. Goes on with the last operation where that is a line of
    // the same look which ends at `from`.
    void addLine(Point from, std::span<const Point> to, const Style& style, const UserScale& scale);
    void addBox(Point a, Point b, Colour colour, const UserScale& scale);
    // As Surface::boxes.
    void addBars(
        std::span<const std::uint8_t> masks, std::span<const Bar> bars, const UserScale& scale);
    void addText(
        Point leftTop, std::string_view text, float points, Colour colour, const UserScale& scale);

    // Paints operations `first` up to the one before `end` (at most size()) inside the raster's
    // clip.
    void paint(Raster& raster, TextPainter& text, const SurfaceSize& surface, std::size_t first,
        std::size_t end) const;
    // Draws all of it anew on another surface, which keeps the scale and the pen of the last
    // operation.
    void drawOn(Surface& surface) const;
    // Device pixels that operation may touch; a text counts as the whole surface.
    PixelRect bounds(std::size_t operation, const SurfaceSize& surface) const;
    // Bytes kept for what is drawn.
    std::size_t memory() const;

private:
    enum class Kind : std::uint8_t { line, boxes, bars, text };
    struct Operation {
        Kind kind = Kind::line;
        std::uint32_t scale = 0; // place in m_scales
        Style style;
        float points = 0;     // size of a text
        Point leftTop;        // of a text
        std::size_t bars = 0; // place in m_bars
        std::size_t barCount = 0;
        std::size_t first = 0; // place in m_points, m_boxes, m_masks or m_letters
        std::size_t count = 0;
        bool runsRight = true; // of a line: from the second point on x never falls
    };
    struct Box {
        Point a;
        Point b;
        Colour colour;
    };
    Operation& begin(Kind kind, const UserScale& scale, std::size_t first);
    bool goesOn(Kind kind, const UserScale& scale) const;
    void paintLine(const Operation& op, Raster& raster, const PixelScale& scale, int widthPx) const;
    void paintBoxes(const Operation& op, Raster& raster, const PixelScale& scale) const;
    void paintBars(const Operation& op, Raster& raster, const PixelScale& scale) const;

    std::vector<Operation> m_operations;
    std::vector<UserScale> m_scales;
    std::vector<Point> m_points;
    std::vector<Box> m_boxes;
    std::vector<std::uint8_t> m_masks;
    std::vector<Bar> m_bars;
    std::string m_letters;
    std::uint32_t m_generation = 0;
    bool m_sealed = true;
};

// Told when a picture surface has changed, so that it can be shown.
class DisplayListWatcher {
public:
    virtual ~DisplayListWatcher() = default;
    virtual void keptChanged() = 0;
    // Operation `place` of the upper picture is new.
    virtual void upperDrawn(std::size_t place) = 0;
    // The upper picture has been wiped.
    virtual void upperWiped() = 0;
    virtual void backColorChanged() = 0;
};

// A surface that keeps two pictures: the kept one, and on top of it what was drawn with autoRedraw
// off, which lasts until the next refresh or the next drawing on the kept one. Its scale is
// (0, 0)-(1, 1) and its font 8 points at first.
class DisplayListSurface : public Surface {
public:
    const DisplayList& kept() const { return m_kept; }
    const DisplayList& upper() const { return m_upper; }
    DisplayList& kept() { return m_kept; }
    Colour backColor() const { return m_backColor; }
    const UserScale& scale() const { return m_scale; }
    // Nobody watches where it is null. The watcher must outlive the surface or be taken off.
    void setWatcher(DisplayListWatcher* watcher) { m_watcher = watcher; }
    // What usable() says: whether there is memory to draw at the present size.
    void setUsable(bool usable) { m_usable = usable; }
    // Height without scale factor; it says how far down a line of text goes.
    void setHeightPx(int heightPx) { m_heightPx = heightPx; }

    void setScale(float left, float top, float right, float bottom) override;
    float scaleWidth() const override { return m_scale.right - m_scale.left; }
    void cls() override;
    void lineTo(float x, float y, Colour colour) override;
    void line(float x1, float y1, float x2, float y2, Colour colour) override;
    void polyline(std::span<const Point> points, Colour colour) override;
    void box(float x1, float y1, float x2, float y2, Colour colour) override;
    void boxes(std::span<const std::uint8_t> masks, std::span<const Bar> bars) override;
    void print(std::string_view text) override;
    void refresh() override;
    void setCurrentX(float x) override { m_current.x = x; }
    void setCurrentY(float y) override { m_current.y = y; }
    float currentX() const override { return m_current.x; }
    float currentY() const override { return m_current.y; }
    void setForeColor(Colour colour) override { m_foreColor = colour; }
    void setBackColor(Colour colour) override;
    void setDrawStyle(int style) override { m_drawStyle = style; }
    void setDrawWidth(int pixels) override { m_drawWidth = pixels; }
    // Only plain painting (13) is in use.
    void setDrawMode(int) override {}
    void setFontSize(float points) override { m_fontPoints = points; }
    void setAutoRedraw(bool on) override { m_autoRedraw = on; }
    bool usable() const override { return m_usable; }

private:
    DisplayList& target();
    void drawn();
    void wipeUpper();

    DisplayList m_kept;
    DisplayList m_upper;
    DisplayListWatcher* m_watcher = nullptr;
    UserScale m_scale{0, 0, 1, 1};
    Point m_current;
    Colour m_foreColor = black;
    Colour m_backColor = white;
    int m_heightPx = 1;
    int m_drawStyle = 0;
    int m_drawWidth = 1;
    float m_fontPoints = 8;
    bool m_autoRedraw = true;
    bool m_usable = true;
};

} // namespace kvo::platform
