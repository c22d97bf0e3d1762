#include "platform/qt/qt_printer.h"

#include "platform/qt/print_question.h"
#include "platform/qt/print_target.h"
#include "platform/qt/qt_print_job.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QImage>
#include <QPixmap>
#include <QPrinter>
#include <QWidget>

#include <cstring>

namespace kvo::platform_qt {

using platform::Printed;

platform::PrintStart QtPrinter::begin(const platform::PrintRequest& request) {
    const QString name = shownMessage(request.documentName);
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(name);
    const PrintAnswer answer = askWhereToPrint(*printer, name, request.offersWhitePaper);
    if (!answer.accepted) return {{Printed::cancelled, {}}, nullptr};
    std::unique_ptr<PrintTarget> target;
    if (answer.pdfPath.isEmpty()) {
        target = std::make_unique<PrinterTarget>(std::move(printer));
    } else {
        target = std::make_unique<PdfTarget>(
            m_files, typedPath(answer.pdfPath), printer->pageLayout(), name);
    }
    return {
        {}, std::make_unique<QtPrintJob>(std::move(target), request.firstPage, answer.whitePaper)};
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
            image.constScanLine(y), width * sizeof(std::uint32_t));
    }
    return picture;
}

platform::PrintResult printWindow(QWidget& window) {
    return platform::services().printer->printPicture(
        pictureOf(window), window.windowTitle().toStdString());
}

} // namespace kvo::platform_qt
