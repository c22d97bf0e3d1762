#pragma once
// Where a finished document goes to: a printer of the system, or a PDF file.
#include "platform/files.h"
#include "platform/printer.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPdfWriter>
#include <QPrinter>

#include <memory>
#include <string>

namespace kvo::platform_qt {

class PrintTarget {
public:
    virtual ~PrintTarget() = default;
    // What the pages are painted on.
    virtual QPagedPaintDevice& device() = 0;
    // Whether it keeps pages to itself until finish(). Any other prints what it has got when the
    // job breaks off, so it gets no page before the document is complete.
    virtual bool keepsPages() const = 0;
    // Takes back what it has got, as far as it can; the painter is ended behind it.
    virtual void abort() = 0;
    // Behind the last page: puts the document where it belongs.
    virtual platform::PrintResult finish() = 0;
};

// The pages are collected in memory; the file is written whole, checked, and only then takes the
// place of an older one.
class PdfTarget : public PrintTarget {
public:
    // `files` must outlive the target. `path` is absolute.
    PdfTarget(platform::Files& files, std::string path, const QPageLayout& layout,
        const QString& documentName);
    QPagedPaintDevice& device() override { return m_writer; }
    bool keepsPages() const override { return true; }
    void abort() override {} // nothing has left the memory
    platform::PrintResult finish() override;

private:
    platform::Files& m_files;
    std::string m_path;
    QBuffer m_content;
    QPdfWriter m_writer{&m_content};
};

class PrinterTarget : public PrintTarget {
public:
    explicit PrinterTarget(std::unique_ptr<QPrinter> printer) : m_printer(std::move(printer)) {}
    QPagedPaintDevice& device() override { return *m_printer; }
    bool keepsPages() const override { return false; }
    void abort() override { m_printer->abort(); }
    platform::PrintResult finish() override;

private:
    std::unique_ptr<QPrinter> m_printer;
};

} // namespace kvo::platform_qt
