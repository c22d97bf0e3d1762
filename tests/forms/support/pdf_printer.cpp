#include "tests/forms/support/pdf_printer.h"

#include "platform/qt/qt_print_job.h"
#include "platform/qt/text.h"

#include <QPageLayout>

namespace kvo::testing {

using namespace platform_qt;

platform::PrintStart PdfPrinter::begin(const platform::PrintRequest& request) {
    const QPageLayout layout(QPageSize(paper), QPageLayout::Portrait, QMarginsF());
    auto target = std::make_unique<PdfTarget>(
        m_files, typedPath(m_path), layout, shownMessage(request.documentName));
    return {{}, std::make_unique<QtPrintJob>(std::move(target), request.firstPage, whitePaper)};
}

} // namespace kvo::testing
