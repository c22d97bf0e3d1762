#include "platform/qt/qt_print_job.h"

#include <QPageLayout>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace kvo::platform_qt {

using platform::Orientation;
using platform::Printed;
using platform::PrintResult;

namespace {

constexpr qreal pointsPerInch = 72;
constexpr qreal leastMarginPoints = 17; // six millimetres, which every printer reaches

QMarginsF marginsOf(const QPageLayout& layout) {
    const QMarginsF least(
        leastMarginPoints, leastMarginPoints, leastMarginPoints, leastMarginPoints);
    const QMarginsF device = layout.minimumMargins();
    return {std::max(least.left(), device.left()), std::max(least.top(), device.top()),
        std::max(least.right(), device.right()), std::max(least.bottom(), device.bottom())};
}

QImage imageOf(const platform::PixelImage& picture) {
    QImage image(picture.widthPx, picture.heightPx, QImage::Format_RGB32);
    if (image.isNull()) throw std::bad_alloc();
    const auto width = static_cast<std::size_t>(picture.widthPx);
    for (int y = 0; y < picture.heightPx; ++y) {
        std::memcpy(image.scanLine(y), picture.pixels.data() + static_cast<std::size_t>(y) * width,
            width * sizeof(std::uint32_t));
    }
    return image;
}

} // namespace

QtPrintJob::QtPrintJob(std::unique_ptr<PrintTarget> target, Orientation firstPage, bool whitePaper)
    : m_target(std::move(target)), m_orientation(firstPage), m_whitePaper(whitePaper),
      m_surface(paperOf(firstPage)) {}

QtPrintJob::~QtPrintJob() {
    if (!m_over) kill();
}

// The whole sheet from edge to edge, so that the device cuts off only what the paper cannot hold.
QPageLayout QtPrintJob::layoutOf(Orientation orientation) const {
    QPageLayout layout = m_target->device().pageLayout();
    layout.setUnits(QPageLayout::Point);
    layout.setMode(QPageLayout::FullPageMode);
    layout.setOrientation(
        orientation == Orientation::landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    return layout;
}

PaperSize QtPrintJob::paperOf(Orientation orientation) const {
    const QPageLayout layout = layoutOf(orientation);
    const int dotsPerInch = m_target->device().logicalDpiX();
    const qreal pixelsPerPoint = dotsPerInch / pointsPerInch;
    const QRectF paper(layout.fullRectPixels(dotsPerInch));
    return {paper, paper.marginsRemoved(marginsOf(layout) * pixelsPerPoint), pixelsPerPoint};
}

void QtPrintJob::drawImage(const platform::PixelImage& image) {
    if (image.widthPx > 0 && image.heightPx > 0) m_surface.drawImage(imageOf(image));
}

void QtPrintJob::keepPage() {
    m_waiting.push_back({m_orientation, m_surface.takePage()});
}

bool QtPrintJob::paintOnDevice(const Page& page) {
    QPagedPaintDevice& device = m_target->device();
    device.setPageLayout(layoutOf(page.orientation));
    const bool first = m_painted == 0;
    if (!(first ? m_painter.begin(&device) : device.newPage())) return false;
    if (first) m_painter.setRenderHint(QPainter::LosslessImageRendering);
    paintPage(m_painter, page.drawing);
    ++m_painted;
    return true;
}

PrintResult QtPrintJob::paintWaiting() {
    const std::vector<Page> pages = std::exchange(m_waiting, {});
    const int all = m_painted + static_cast<int>(pages.size());
    for (const Page& page : pages) {
        // Where the pages were taken one by one the user has been asked between them.
        const bool asks = m_goesOn && m_painted > 0 && !m_target->keepsPages();
        if (asks && !m_goesOn(m_painted, all)) return cancel();
        if (!paintOnDevice(page))
            return fail("Page " + std::to_string(m_painted + 1) + " could not be printed.");
    }
    return {};
}

PrintResult QtPrintJob::cancel() {
    kill();
    m_outcome = {Printed::cancelled, {}};
    return m_outcome;
}

PrintResult QtPrintJob::fail(std::string why) {
    kill();
    m_outcome = {Printed::failed, std::move(why)};
    return m_outcome;
}

PrintResult QtPrintJob::newPage(Orientation orientation) {
    if (m_over) return m_outcome ? fail("The print job is over.") : m_outcome;
    keepPage();
    if (m_target->keepsPages()) {
        if (auto painted = paintWaiting(); !painted) return painted;
    }
    ++m_page;
    m_orientation = orientation;
    m_surface.startPage(paperOf(orientation));
    return {};
}

PrintResult QtPrintJob::endDoc() {
    if (m_over) return m_outcome ? fail("The print job is over.") : m_outcome;
    keepPage();
    if (auto painted = paintWaiting(); !painted) return painted;
    if (!m_painter.end()) return fail("The document could not be ended.");
    m_over = true;
    auto finished = m_target->finish();
    return finished ? finished : fail(std::move(finished.message));
}

void QtPrintJob::kill() {
    m_over = true;
    m_waiting.clear();
    if (!m_painter.isActive()) return;
    m_target->abort();
    m_painter.end();
}

} // namespace kvo::platform_qt
