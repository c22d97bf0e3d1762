// QtPrinter: a page of a form's picture, here always a PDF, since no test machine has a printer.
#include "platform/qt/qt_printer.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/user_click.h"

#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QTemporaryDir>

using namespace kvo;
using namespace kvo::platform_qt;
using platform::Printed;

class PrinterTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    QtPrinter m_printer;

    static platform::PixelImage picture() {
        return {4, 2, std::vector<std::uint32_t>(8, 0xFF0000FF)};
    }
    // Names the file in the dialog that asks for it, or cancels it.
    static void nameFile(const QString& path, bool accept = true) {
        testing::onModal([path, accept](QWidget* dialog) {
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            QVERIFY(name != nullptr);
            QVERIFY2(name->text().endsWith(QLatin1String(".pdf")), qPrintable(name->text()));
            name->setText(path);
            QMetaObject::invokeMethod(dialog, accept ? "accept" : "reject");
        });
    }
    QString pathOf(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

private slots:
    void initTestCase() {
        QVERIFY(m_folder.isValid());
        if (!QPrinterInfo::availablePrinters().isEmpty()) QSKIP("this machine has a printer");
    }
    void cleanup() { QCOMPARE(testing::modalComplaints(), QString()); }

    void savesAPdfWhereThereIsNoPrinter() {
        nameFile(pathOf("statistics.pdf"));
        QVERIFY(m_printer.printPicture(picture(), " Statistics For : 1/2") == Printed::done);
        QFile file(pathOf("statistics.pdf"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("%PDF"));
    }

    void cancelPrintsNothing() {
        nameFile(pathOf("nothing.pdf"), false);
        QVERIFY(m_printer.printPicture(picture(), "x") == Printed::cancelled);
        QVERIFY(!QFile::exists(pathOf("nothing.pdf")));
    }

    void aPlaceThatTakesNoFileIsAFailure() {
        QVERIFY(QFile::link(QStringLiteral("/nowhere/there.pdf"), pathOf("dead.pdf")));
        nameFile(pathOf("dead.pdf"));
        QVERIFY(m_printer.printPicture(picture(), "x") == Printed::failed);
    }

    void anEmptyPictureIsAFailureWithoutAQuestion() {
        QVERIFY(m_printer.printPicture({}, "x") == Printed::failed);
    }

    void aWindowsPictureIsWhatItShows() {
        QLabel window;
        window.setFixedSize(30, 20);
        QPalette red(QColor(255, 0, 0));
        window.setPalette(red);
        window.setAutoFillBackground(true);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const platform::PixelImage shown = pictureOf(window);
        QCOMPARE(shown.widthPx, 30);
        QCOMPARE(shown.heightPx, 20);
        QCOMPARE(shown.pixels.size(), std::size_t(600));
        QCOMPARE(shown.pixels[310], 0xFFFF0000U);
    }
};

KVO_FORM_TEST_MAIN(PrinterTest)
#include "printer_test.moc"
