#pragma once
// A drawing surface with a user scale, as the screen, an image, a page and a recording offer it.
// Positions are singles in the scale set last.
#include "platform/draw/colour.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace kvo::platform {

struct Point {
    float x = 0;
    float y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

// One of the bars that boxes() draws.
struct Bar {
    float top = 0;
    float bottom = 0;
    Colour colour = 0;
};

class Surface {
public:
    virtual ~Surface() = default;

    // The rectangle of the user scale: left, top to right, bottom. The trend has (0, 1100)-(n, 0).
    virtual void setScale(float left, float top, float right, float bottom) = 0;
    virtual float scaleWidth() const = 0;

    // Wipes everything to the back colour and sets the current position to (0, 0) of the scale.
    virtual void cls() = 0;
    // From the current position to (x, y); leaves the current position there.
    virtual void lineTo(float x, float y, Colour colour) = 0;
    virtual void line(float x1, float y1, float x2, float y2, Colour colour) = 0;
    // The same as lineTo for each point in turn, in one call.
    virtual void polyline(std::span<const Point> points, Colour colour) = 0;
    // Filled box between two corners.
    virtual void box(float x1, float y1, float x2, float y2, Colour colour) = 0;
    // For i from 1 to masks.size() in turn, and in each for every bit b of masks[i - 1] that is
    // set, from bit 0 up: the filled box from (i - 1, bars[b].top) to (i, bars[b].bottom). The
    // picture is that of the single boxes in this order; a surface may reach it faster. At most 8
    // bars.
    virtual void boxes(std::span<const std::uint8_t> masks, std::span<const Bar> bars) {
        for (std::size_t i = 0; i < masks.size(); ++i) {
            for (std::size_t b = 0; b < bars.size(); ++b) {
                if (((masks[i] >> b) & 1) == 0) continue;
                box(static_cast<float>(i), bars[b].top, static_cast<float>(i + 1), bars[b].bottom,
                    bars[b].colour);
            }
        }
    }
    // Text at the current position in the fore colour. Behind it the next text starts at x = 0, a
    // line further down, unless the position is set.
    virtual void print(std::string_view text) = 0;
    // Shows the kept picture and wipes what was drawn on top of it with autoRedraw off.
    virtual void refresh() = 0;

    virtual void setCurrentX(float x) = 0;
    virtual void setCurrentY(float y) = 0;
    virtual float currentX() const = 0;
    virtual float currentY() const = 0;
    virtual void setForeColor(Colour colour) = 0;
    virtual void setBackColor(Colour colour) = 0;
    // 0 to 4: solid, dash, dot, dash-dot, dash-dot-dot.
    virtual void setDrawStyle(int style) = 0;
    virtual void setDrawWidth(int pixels) = 0;
    virtual void setDrawMode(int mode) = 0;
    virtual void setFontSize(float points) = 0;
    // True: drawing goes to the kept picture. False: it lies on top until the next refresh.
    virtual void setAutoRedraw(bool on) = 0;
    // False where there is no memory to draw at the present size.
    virtual bool usable() const { return true; }
};

} // namespace kvo::platform
