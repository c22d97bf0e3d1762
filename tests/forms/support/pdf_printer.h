#pragma once
// A printer that asks nothing and prints to a PDF file, as the program's own does once the user has
// answered.
#include "platform/files.h"
#include "platform/printer.h"

#include <QPageSize>
#include <QString>

namespace kvo::testing {

class PdfPrinter : public platform::Printer {
public:
    PdfPrinter(platform::Files& files, QString path) : m_files(files), m_path(std::move(path)) {}
    platform::PrintStart begin(const platform::PrintRequest& request) override;

    bool whitePaper = true;
    QPageSize::PageSizeId paper = QPageSize::A4;

private:
    platform::Files& m_files;
    QString m_path;
};

} // namespace kvo::testing
