#pragma once
// Printing through the desktop: the user's printers, or a PDF file where there is none.
#include "platform/files.h"
#include "platform/printer.h"

#include <string>

class QWidget;

namespace kvo::platform_qt {

class QtPrinter : public platform::Printer {
public:
    // PDF files are written through `files`, which must outlive the printer and its jobs.
    explicit QtPrinter(platform::Files& files) : m_files(files) {}
    platform::PrintStart begin(const platform::PrintRequest& request) override;

private:
    platform::Files& m_files;
};

// Prints what a window says on a page of the program's printer, with a heading (a file's text) on
// top; the document has the window's title.
[[nodiscard]] platform::PrintResult printWindow(QWidget& window, const std::string& heading);

} // namespace kvo::platform_qt
