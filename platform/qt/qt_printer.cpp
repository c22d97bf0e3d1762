#include "platform/qt/qt_printer.h"

#include "platform/qt/paper_window.h"
#include "platform/qt/print_question.h"
#include "platform/qt/print_target.h"
#include "platform/qt/qt_print_job.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QPrinter>
#include <QWidget>

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

platform::PrintResult printWindow(QWidget& window, const std::string& heading) {
    return platform::services().printer->printPicture(
        paperPictureOf(window), window.windowTitle().toStdString(), heading);
}

} // namespace kvo::platform_qt
