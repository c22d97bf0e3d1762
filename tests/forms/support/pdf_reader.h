#pragma once
// What a PDF file shows, read back by programs that have no part in making it: words with their
// places, and pages as images.
#include <QImage>
#include <QRectF>
#include <QString>

#include <vector>

namespace kvo::testing {

struct PdfWord {
    QRectF place; // points, from the page's left top
    QString text;
};

struct PdfPage {
    double width = 0; // points
    double height = 0;
    std::vector<PdfWord> words;
    // The first word with this text; an empty place where there is none.
    QRectF placeOf(const QString& text) const;
};

// The pages of a file; none where it cannot be read.
std::vector<PdfPage> readPdf(const QString& path);

// Page `number`, from 1, at a resolution, without smoothed edges.
QImage pdfPageImage(const QString& path, int number, int dotsPerInch);

} // namespace kvo::testing
