#pragma once
// A page of paper as a surface: from the user scale over a frame of the page to the pixels of the
// device that prints it.
#include "platform/printer.h"
#include "platform/qt/page_drawing.h"

#include <QFontMetricsF>
#include <QRectF>

#include <optional>

namespace kvo::platform_qt {

// A sheet in device pixels, (0, 0) at the paper's left top.
struct PaperSize {
    QRectF paper;
    QRectF printable; // the paper without its margins
    qreal pixelsPerPoint = 1;
    qreal leastLinePx = 0; // a finer line would be fainter on a screen
};

class PageSurface : public platform::Surface {
public:
    explicit PageSurface(const PaperSize& size) : m_size(size) {}

    // A fresh page. What was set stays set; the current position is (0, 0).
    void startPage(const PaperSize& size);
    const PageDrawing& page() const { return m_page; }
    // Gives the page away.
    PageDrawing takePage();

    void setFrame(const platform::PageFrame& frame);
    void setDigitWidth(float ofHeight);
    void printAt(float x, float y, std::string_view text, platform::TextSide side);
    // In units of the scale.
    float textWidth(std::string_view text) const;
    float lineHeight() const;
    void drawImage(const QImage& image);

    void setScale(float left, float top, float right, float bottom) override;
    float scaleWidth() const override { return m_right - m_left; }
    void cls() override;
    void lineTo(float x, float y, platform::Colour colour) override;
    void line(float x1, float y1, float x2, float y2, platform::Colour colour) override;
    void polyline(std::span<const platform::Point> points, platform::Colour colour) override;
    void box(float x1, float y1, float x2, float y2, platform::Colour colour) override;
    void boxes(std::span<const std::uint8_t> masks, std::span<const platform::Bar> bars) override;
    void print(std::string_view text) override;
    void refresh() override {}
    void setCurrentX(float x) override { m_current.x = x; }
    void setCurrentY(float y) override { m_current.y = y; }
    float currentX() const override { return m_current.x; }
    float currentY() const override { return m_current.y; }
    void setForeColor(platform::Colour colour) override { m_foreColor = colour; }
    void setBackColor(platform::Colour colour) override { m_backColor = colour; }
    void setDrawStyle(int style) override { m_drawStyle = style; }
    void setDrawWidth(int pixels) override { m_drawWidth = pixels; }
    void setDrawMode(int) override {}
    void setFontSize(float points) override;
    // Ink has no layer to lie on top of: all of it stays.
    void setAutoRedraw(bool) override {}

private:
    QRectF frameRect() const;
    QPointF place(platform::Point p) const;
    qreal linePx() const;
    struct Font {
        QFont font;
        QFontMetricsF metrics;
    };
    // The font of the size at hand.
    const Font& font() const;
    void addLine(QPolygonF points, platform::Colour colour);
    void addText(QPointF leftTop, const QString& text);
    void addClip();

    PaperSize m_size;
    platform::PageFrame m_frame;
    PageDrawing m_page;
    float m_left = 0;
    float m_top = 0;
    float m_right = 1;
    float m_bottom = 1;
    platform::Point m_current;
    platform::Colour m_foreColor = platform::black;
    platform::Colour m_backColor = platform::white;
    int m_drawStyle = 0;
    int m_drawWidth = 1;
    float m_fontPoints = 8;
    float m_digitWidth = 0;
    mutable std::optional<Font> m_font; // kept, since a table asks for it at every cell
};

} // namespace kvo::platform_qt
