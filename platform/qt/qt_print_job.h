#pragma once
// A print job on a device of the toolkit. Pages are kept until they are whole; a printer gets none
// of them before the document is complete, so that a job that breaks off leaves no half document.
#include "platform/printer.h"
#include "platform/qt/page_surface.h"
#include "platform/qt/print_target.h"

#include <QPainter>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kvo::platform_qt {

class QtPrintJob final : public platform::PrintJob {
public:
    QtPrintJob(
        std::unique_ptr<PrintTarget> target, platform::Orientation firstPage, bool whitePaper);
    ~QtPrintJob() override;
    QtPrintJob(const QtPrintJob&) = delete;
    QtPrintJob& operator=(const QtPrintJob&) = delete;

    platform::Surface& surface() override { return m_surface; }
    void setFrame(const platform::PageFrame& frame) override { m_surface.setFrame(frame); }
    void setDigitWidth(float ofHeight) override { m_surface.setDigitWidth(ofHeight); }
    void printAt(float x, float y, std::string_view text, platform::TextSide side) override {
        m_surface.printAt(x, y, text, side);
    }
    float textWidth(std::string_view text) const override { return m_surface.textWidth(text); }
    float lineHeight() const override { return m_surface.lineHeight(); }
    void drawImage(const platform::PixelImage& image) override;
    int page() const override { return m_page; }
    void whilePrinting(std::function<bool(int pagesDone, int allPages)> goesOn) override {
        m_goesOn = std::move(goesOn);
    }
    bool whitePaper() const override { return m_whitePaper; }
    platform::PrintResult newPage(platform::Orientation orientation) override;
    platform::PrintResult endDoc() override;
    void kill() override;

private:
    struct Page {
        platform::Orientation orientation;
        PageDrawing drawing;
    };
    QPageLayout layoutOf(platform::Orientation orientation) const;
    PaperSize paperOf(platform::Orientation orientation) const;
    void keepPage();
    // Paints the pages that wait, up to the one that the device does not take or that the user does
    // not want any more; the job is over then.
    platform::PrintResult paintWaiting();
    bool paintOnDevice(const Page& page);
    platform::PrintResult cancel();
    platform::PrintResult fail(std::string why);

    std::unique_ptr<PrintTarget> m_target;
    platform::Orientation m_orientation;
    bool m_whitePaper;
    PageSurface m_surface;
    QPainter m_painter;
    std::function<bool(int, int)> m_goesOn;
    std::vector<Page> m_waiting;
    int m_page = 1;
    int m_painted = 0;
    bool m_over = false;
    platform::PrintResult m_outcome; // done until a step fails
};

} // namespace kvo::platform_qt
