#include "platform/qt/print_target.h"

namespace kvo::platform_qt {

using platform::Printed;
using platform::PrintResult;

namespace {

constexpr int pdfDotsPerInch = 1200;

} // namespace

PdfTarget::PdfTarget(platform::Files& files, std::string path, const QPageLayout& layout,
    const QString& documentName)
    : m_files(files), m_path(std::move(path)) {
    m_content.open(QIODevice::WriteOnly);
    m_writer.setResolution(pdfDotsPerInch);
    m_writer.setPageLayout(layout);
    m_writer.setTitle(documentName);
    m_writer.setCreator(QStringLiteral("Kvo"));
}

PrintResult PdfTarget::finish() {
    const QByteArray& content = m_content.data();
    auto written = m_files.write(m_path, platform::Bytes(content.begin(), content.end()));
    if (!written) return {Printed::failed, std::move(written.message)};
    return {};
}

PrintResult PrinterTarget::finish() {
    const QPrinter::PrinterState state = m_printer->printerState();
    if (state != QPrinter::Error && state != QPrinter::Aborted) return {};
    return {Printed::failed, "The printer did not take the document."};
}

} // namespace kvo::platform_qt
