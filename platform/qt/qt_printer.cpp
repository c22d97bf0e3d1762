#include "platform/qt/qt_printer.h"

#include "platform/qt/text.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <QWidget>

#include <cstring>

namespace kvo::platform_qt {

namespace {

constexpr int bytesPerPixel = 4;

// A name that every file system takes.
QString fileNameFor(QString documentName) {
    for (QChar& c : documentName) {
        if (!c.isLetterOrNumber() && !QStringLiteral(" .-_").contains(c)) c = QLatin1Char('_');
    }
    return documentName.simplified() + QStringLiteral(".pdf");
}

// Asks where to print to; false on Cancel.
bool choosePrinter(QPrinter& printer, const QString& documentName) {
    if (!QPrinterInfo::availablePrinters().isEmpty()) {
        QPrintDialog dialog(&printer, QApplication::activeWindow());
        return dialog.exec() == QDialog::Accepted;
    }
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const QString path = QFileDialog::getSaveFileName(QApplication::activeWindow(),
        QStringLiteral("There is no printer: save as PDF"),
        documents.filePath(fileNameFor(documentName)), QStringLiteral("PDF (*.pdf)"));
    if (path.isEmpty()) return false;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QFileInfo(path).absoluteFilePath());
    return true;
}

QImage imageOf(const platform::PixelImage& picture) {
    QImage image(picture.widthPx, picture.heightPx, QImage::Format_RGB32);
    const auto width = static_cast<std::size_t>(picture.widthPx);
    for (int y = 0; y < picture.heightPx; ++y) {
        std::memcpy(image.scanLine(y), picture.pixels.data() + static_cast<std::size_t>(y) * width,
            width * bytesPerPixel);
    }
    return image;
}

} // namespace

platform::Printed QtPrinter::printPicture(
    const platform::PixelImage& picture, const std::string& documentName) {
    using platform::Printed;
    if (picture.widthPx < 1 || picture.heightPx < 1) return Printed::failed;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(shown(documentName));
    printer.setPageOrientation(
        picture.widthPx > picture.heightPx ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (!choosePrinter(printer, shown(documentName))) return Printed::cancelled;
    QPainter painter;
    if (!painter.begin(&printer)) return Printed::failed;
    const QRect page(QPoint(0, 0), printer.pageRect(QPrinter::DevicePixel).size().toSize());
    const QImage image = imageOf(picture);
    QRect place(QPoint(0, 0), image.size().scaled(page.size(), Qt::KeepAspectRatio));
    place.moveCenter(page.center());
    place.moveTop(page.top());
    painter.drawImage(place, image);
    const bool ended = painter.end();
    return ended && printer.printerState() != QPrinter::Error ? Printed::done : Printed::failed;
}

platform::PixelImage pictureOf(QWidget& window) {
    const QImage image = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    platform::PixelImage picture;
    picture.widthPx = image.width();
    picture.heightPx = image.height();
    const auto width = static_cast<std::size_t>(image.width());
    picture.pixels.resize(width * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(picture.pixels.data() + static_cast<std::size_t>(y) * width,
            image.constScanLine(y), width * bytesPerPixel);
    }
    return picture;
}

} // namespace kvo::platform_qt
