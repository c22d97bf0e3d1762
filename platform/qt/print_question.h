#pragma once
// The one question of a print job: which printer, or which PDF file, and on what paper.
#include <QString>

class QPrinter;

namespace kvo::platform_qt {

struct PrintAnswer {
    bool accepted = false;
    QString pdfPath; // absolute; empty for a printer, which is set up then
    bool whitePaper = true;
};

// Asks for one of the printers, or for a PDF file where there is none.
PrintAnswer askWhereToPrint(QPrinter& printer, const QString& documentName, bool offersWhitePaper);

// The same two questions, each alone.
PrintAnswer askForPrinter(QPrinter& printer, bool offersWhitePaper);
PrintAnswer askForPdf(const QString& documentName, bool offersWhitePaper);

} // namespace kvo::platform_qt
