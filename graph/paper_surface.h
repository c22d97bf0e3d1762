#pragma once
// The surface of the graph on paper: the part of it that is in view lies over a page's frame, and
// on white paper what is drawn takes colours that can be read there.
#include "graph/layout.h"
#include "platform/draw/surface.h"

namespace kvo::graph {

// The colour itself, where it stands out from white paper. Otherwise a darker one of the same hue;
// of greys the dark one to a light one, so that white becomes black.
platform::Colour readableOnWhite(platform::Colour colour);

struct PaperLook {
    bool whitePaper = true;
    platform::Colour gridColour = 0; // as the screen has it; on white paper the grid is light grey
    SurfacePart part = {};           // that is in view
};

// Hands on to the surface of a page, which must outlive it, what is drawn as if on the screen.
class PaperSurface : public platform::Surface {
public:
    PaperSurface(platform::Surface& page, const PaperLook& look) : m_page(page), m_look(look) {}

    // The scale of the whole surface; the part in view is laid on the page.
    void setScale(float left, float top, float right, float bottom) override;
    float scaleWidth() const override { return m_scaleWidth; }
    void cls() override { m_page.cls(); }
    void lineTo(float x, float y, platform::Colour colour) override;
    void line(float x1, float y1, float x2, float y2, platform::Colour colour) override;
    void polyline(std::span<const platform::Point> points, platform::Colour colour) override;
    void box(float x1, float y1, float x2, float y2, platform::Colour colour) override;
    void boxes(std::span<const std::uint8_t> masks, std::span<const platform::Bar> bars) override;
    void print(std::string_view text) override { m_page.print(text); }
    void refresh() override {}
    void setCurrentX(float x) override { m_page.setCurrentX(x); }
    void setCurrentY(float y) override { m_page.setCurrentY(y); }
    float currentX() const override { return m_page.currentX(); }
    float currentY() const override { return m_page.currentY(); }
    void setForeColor(platform::Colour colour) override { m_page.setForeColor(inkOf(colour)); }
    // The ground, which is white on white paper.
    void setBackColor(platform::Colour colour) override;
    void setDrawStyle(int style) override { m_page.setDrawStyle(style); }
    void setDrawWidth(int pixels) override { m_page.setDrawWidth(pixels); }
    void setDrawMode(int mode) override { m_page.setDrawMode(mode); }
    void setFontSize(float points) override { m_page.setFontSize(points); }
    void setAutoRedraw(bool on) override { m_page.setAutoRedraw(on); }

private:
    platform::Colour inkOf(platform::Colour colour) const;
    platform::Colour lineColour(platform::Colour colour) const;

    platform::Surface& m_page;
    PaperLook m_look;
    float m_scaleWidth = 1;
};

} // namespace kvo::graph
