#pragma once
// A picture of its own size as a page that is drawn on like paper: what a print would show, as the
// bytes of a picture file or as an image.
#include "platform/bytes.h"
#include "platform/printer.h"
#include "platform/qt/page_surface.h"

#include <QImage>
#include <QSize>
#include <QString>

namespace kvo::platform_qt {

class PicturePage : public platform::PrintJob {
public:
    // Letters and lines grow with the picture. White paper is for what has a dark ground on the
    // screen.
    PicturePage(const QSize& sizePx, bool whitePaper);
    // A sheet of A4 across, for pdf(), and a page of fine units that is shown at `sizePx`, for
    // svg().
    static PicturePage ofPaper(bool whitePaper);
    static PicturePage ofDrawing(const QSize& sizePx, bool whitePaper);

    // What was drawn up to now. Each throws std::bad_alloc where there is not enough memory.
    QImage image() const;
    platform::Bytes png() const;
    platform::Bytes svg(const QString& title) const;
    platform::Bytes pdf(const QString& title) const;

    platform::Surface& surface() override { return m_surface; }
    void setFrame(const platform::PageFrame& frame) override { m_surface.setFrame(frame); }
    void setDigitWidth(float ofHeight) override { m_surface.setDigitWidth(ofHeight); }
    void printAt(float x, float y, std::string_view text, platform::TextSide side) override {
        m_surface.printAt(x, y, text, side);
    }
    float textWidth(std::string_view text) const override { return m_surface.textWidth(text); }
    float lineHeight() const override { return m_surface.lineHeight(); }
    void drawImage(const platform::PixelImage&) override {} // a picture is drawn, not taken
    int page() const override { return 1; }
    void whilePrinting(std::function<bool(int, int)>) override {}
    bool whitePaper() const override { return m_whitePaper; }
    // There is one page and no more.
    platform::PrintResult newPage(platform::Orientation) override;
    platform::PrintResult endDoc() override { return {}; }
    void kill() override {}

private:
    PicturePage(const PaperSize& paper, const QSize& shownPx, bool whitePaper);

    QSize m_sizePx;  // in units of the page
    QSize m_shownPx; // of a drawing
    bool m_whitePaper;
    PageSurface m_surface;
};

} // namespace kvo::platform_qt
