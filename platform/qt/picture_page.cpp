#include "platform/qt/picture_page.h"

#include "platform/qt/svg_page.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <new>

namespace kvo::platform_qt {
namespace {

// A picture of so many points has letters that can be read on a screen; a larger one larger ones.
constexpr QSizeF readablePoints(640, 400);
constexpr qreal marginPoints = 8;
constexpr int unitsAPixel = 10; // of a drawing, which may be enlarged
constexpr int paperDotsPerInch = 1200;
constexpr qreal pointsPerInch = 72;
constexpr qreal paperMarginPoints = 17; // as of a print

QPageLayout sheetAcross() {
    QPageLayout layout(QPageSize(QPageSize::A4), QPageLayout::Landscape, {}, QPageLayout::Point);
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

PaperSize paperOf(const QSizeF& sizePx, qreal pixelsPerPoint, qreal margin) {
    const QRectF paper(QPointF(), sizePx);
    const qreal edge = margin * pixelsPerPoint;
    return {paper, paper.adjusted(edge, edge, -edge, -edge), pixelsPerPoint, 1};
}

PaperSize pictureOf(const QSize& sizePx) {
    const qreal pixelsPerPoint = std::min(
        sizePx.width() / readablePoints.width(), sizePx.height() / readablePoints.height());
    return paperOf(sizePx, pixelsPerPoint, marginPoints);
}

platform::Bytes bytesOf(const QBuffer& buffer) {
    return {buffer.data().begin(), buffer.data().end()};
}

} // namespace

PicturePage::PicturePage(const PaperSize& paper, const QSize& shownPx, bool whitePaper)
    : m_sizePx(paper.paper.size().toSize()), m_shownPx(shownPx), m_whitePaper(whitePaper),
      m_surface(paper) {}

PicturePage::PicturePage(const QSize& sizePx, bool whitePaper)
    : PicturePage(pictureOf(sizePx), sizePx, whitePaper) {}

PicturePage PicturePage::ofDrawing(const QSize& sizePx, bool whitePaper) {
    return {pictureOf(sizePx * unitsAPixel), sizePx, whitePaper};
}

PicturePage PicturePage::ofPaper(bool whitePaper) {
    const QSize sizePx = sheetAcross().fullRectPixels(paperDotsPerInch).size();
    return {
        paperOf(sizePx, paperDotsPerInch / pointsPerInch, paperMarginPoints), sizePx, whitePaper};
}

platform::PrintResult PicturePage::newPage(platform::Orientation) {
    return {platform::Printed::failed, "A picture has one page."};
}

QImage PicturePage::image() const {
    QImage image(m_sizePx, QImage::Format_RGB32);
    if (image.isNull()) throw std::bad_alloc();
    image.fill(Qt::white);
    QPainter painter(&image);
    paintPage(painter, m_surface.page());
    return image;
}

platform::Bytes PicturePage::png() const {
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    if (!image().save(&content, "PNG")) throw std::bad_alloc();
    return bytesOf(content);
}

platform::Bytes PicturePage::svg(const QString& title) const {
    return svgOf(m_surface.page(), m_sizePx, m_shownPx, title);
}

platform::Bytes PicturePage::pdf(const QString& title) const {
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    QPdfWriter writer(&content);
    writer.setResolution(paperDotsPerInch);
    writer.setPageLayout(sheetAcross());
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("Kvo"));
    QPainter painter(&writer);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    paintPage(painter, m_surface.page());
    painter.end();
    return bytesOf(content);
}

} // namespace kvo::platform_qt
