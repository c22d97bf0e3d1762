#include "platform/qt/print_question.h"

#include "platform/qt/form_kit.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>

#include <algorithm>

namespace kvo::platform_qt {

namespace {

// A name that every file system takes.
QString fileNameFor(QString documentName) {
    for (QChar& c : documentName) {
        if (!c.isLetterOrNumber() && !QStringLiteral(" .-_").contains(c)) c = QLatin1Char('_');
    }
    return documentName.simplified() + QStringLiteral(".pdf");
}

QCheckBox* whitePaperBox(QDialog& dialog) {
    auto* box = named(new QCheckBox(QStringLiteral("&White paper"), &dialog), "WhitePaper");
    box->setToolTip(QStringLiteral("Print on white instead of the colour of the screen's ground"));
    box->setChecked(true);
    return box;
}

PrintAnswer answerOf(const QDialog& dialog, QString pdfPath) {
    PrintAnswer answer;
    answer.accepted = dialog.result() == QDialog::Accepted;
    answer.pdfPath = std::move(pdfPath);
    const auto* box = dialog.findChild<QCheckBox*>(QStringLiteral("WhitePaper"));
    answer.whitePaper = box == nullptr || box->isChecked();
    return answer;
}

} // namespace

PrintAnswer askWhereToPrint(QPrinter& printer, const QString& documentName, bool offersWhitePaper) {
    if (QPrinterInfo::availablePrinters().isEmpty())
        return askForPdf(documentName, offersWhitePaper);
    return askForPrinter(printer, offersWhitePaper);
}

PrintAnswer askForPrinter(QPrinter& printer, bool offersWhitePaper) {
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    // All pages are printed, each turned as its content is.
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    // Above the buttons; a system with a print dialog of its own has no layout to put it into.
    auto* layout = qobject_cast<QBoxLayout*>(dialog.layout());
    if (offersWhitePaper && layout != nullptr)
        layout->insertWidget(std::max(0, layout->count() - 1), whitePaperBox(dialog));
    dialog.exec();
    const bool toFile =
        printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty();
    return answerOf(
        dialog, toFile ? QFileInfo(printer.outputFileName()).absoluteFilePath() : QString());
}

PrintAnswer askForPdf(const QString& documentName, bool offersWhitePaper) {
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    QFileDialog dialog(QApplication::activeWindow(),
        QStringLiteral("There is no printer: save as PDF"),
        documents.filePath(fileNameFor(documentName)), QStringLiteral("PDF (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    if (offersWhitePaper) {
        dialog.setOption(QFileDialog::DontUseNativeDialog); // into which no box can be put
        if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout()))
            grid->addWidget(whitePaperBox(dialog), grid->rowCount(), 0, 1, grid->columnCount());
    }
    dialog.exec();
    const QStringList chosen = dialog.selectedFiles();
    PrintAnswer answer = answerOf(dialog, QFileInfo(chosen.value(0)).absoluteFilePath());
    answer.accepted = answer.accepted && !chosen.isEmpty();
    return answer;
}

} // namespace kvo::platform_qt
