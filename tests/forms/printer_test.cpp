// QtPrinter and its jobs: pages are printed to PDF, since no test machine has a printer, and read
// back by other programs.
#include "platform/draw/display_list.h"
#include "platform/os/os_files.h"
#include "platform/qt/print_question.h"
#include "platform/qt/qt_print_job.h"
#include "platform/qt/qt_printer.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/pdf_reader.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/memory_files.h"

#include <QCheckBox>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QTemporaryDir>

using namespace kvo;
using namespace kvo::platform_qt;
using kvo::testing::PdfPage;
using platform::Orientation;
using platform::Printed;
using platform::TextSide;

namespace {

constexpr double marginPoints = 17;

// A device that takes so many pages and no more.
class FailingWriter : public QPdfWriter {
public:
    FailingWriter(QIODevice* device, int pages) : QPdfWriter(device), m_left(pages) {}
    bool newPage() override { return --m_left > 0 && QPdfWriter::newPage(); }

private:
    int m_left;
};

// What became of it, and whether it was aborted while its painter was still at work.
struct TargetFate {
    int finished = 0;
    int abortedInTime = 0;
};

class FailingTarget : public PrintTarget {
public:
    FailingTarget(int pages, bool keepsPages, TargetFate& fate)
        : m_writer(&m_content, pages), m_keepsPages(keepsPages), m_fate(fate) {
        m_content.open(QIODevice::WriteOnly);
    }
    QPagedPaintDevice& device() override { return m_writer; }
    bool keepsPages() const override { return m_keepsPages; }
    void abort() override { m_fate.abortedInTime += m_writer.paintingActive() ? 1 : 0; }
    platform::PrintResult finish() override {
        ++m_fate.finished;
        return {};
    }

private:
    QBuffer m_content;
    FailingWriter m_writer;
    bool m_keepsPages;
    TargetFate& m_fate;
};

} // namespace

class PrinterTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    platform_os::OsFiles m_files;
    QtPrinter m_printer{m_files};

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

    std::unique_ptr<platform::PrintJob> beginPdf(
        const char* name, Orientation firstPage = Orientation::portrait) {
        nameFile(pathOf(name));
        auto start = m_printer.begin({"test", firstPage, false});
        return std::move(start.job);
    }

    // Where a place of a scale of 240 x 290 lies on a page, in points.
    static double across(const PdfPage& page, double x) {
        return marginPoints + x / 240 * (page.width - 2 * marginPoints);
    }
    static double down(const PdfPage& page, double y) {
        return marginPoints + y / 290 * (page.height - 2 * marginPoints);
    }
    static bool isNear(double a, double b, double tolerance) {
        return std::abs(a - b) <= tolerance;
    }
    static bool isPaper(const QImage& image, double xPoints, double yPoints, int dotsPerInch) {
        const auto px = [dotsPerInch](
                            double points) { return static_cast<int>(points * dotsPerInch / 72); };
        return image.pixelColor(px(xPoints), px(yPoints)) == QColor(Qt::white);
    }

private slots:
    void initTestCase() {
        QVERIFY(m_folder.isValid());
        if (!QPrinterInfo::availablePrinters().isEmpty()) QSKIP("this machine has a printer");
    }
    void cleanup() { QCOMPARE(testing::modalComplaints(), QString()); }

    // --- The question

    void cancelBeginsNoJob() {
        nameFile(pathOf("nothing.pdf"), false);
        const auto start = m_printer.begin({"x"});
        QCOMPARE(start.result.outcome, Printed::cancelled);
        QVERIFY(start.job == nullptr);
        nameFile(pathOf("nothing.pdf"), false);
        QCOMPARE(m_printer.printPicture(picture(), "x").outcome, Printed::cancelled);
        QVERIFY(!QFile::exists(pathOf("nothing.pdf")));
    }

    void theNameOfTheDocumentIsSuggestedAsAFile() {
        testing::onModal([](QWidget* dialog) {
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            QCOMPARE(QFileInfo(name->text()).fileName(),
                QStringLiteral("Statistics For _ 1_2 J\u00fcrg\u0142.pdf"));
            QMetaObject::invokeMethod(dialog, "reject");
        });
        const auto start = m_printer.begin({" Statistics For : 1/2 J\u00fcrg\u0142"});
        QCOMPARE(start.result.outcome, Printed::cancelled);
    }

    void whitePaperIsOfferedWhereItIsWanted_data() {
        QTest::addColumn<bool>("offered");
        QTest::addColumn<bool>("white");
        QTest::newRow("not offered") << false << true;
        QTest::newRow("kept on") << true << true;
        QTest::newRow("switched off") << true << false;
    }
    void whitePaperIsOfferedWhereItIsWanted() {
        QFETCH(bool, offered);
        QFETCH(bool, white);
        testing::onModal([&](QWidget* dialog) {
            auto* box = dialog->findChild<QCheckBox*>(QStringLiteral("WhitePaper"));
            QCOMPARE(box != nullptr, offered);
            if (box != nullptr) {
                QVERIFY(box->isVisible() && box->isChecked());
                if (!white) QCOMPARE(testing::userClick(box, {8, box->height() / 2}), QString());
            }
            dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                ->setText(pathOf("paper.pdf"));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        auto start = m_printer.begin({"x", Orientation::portrait, offered});
        QVERIFY(start.job != nullptr);
        QCOMPARE(start.job->whitePaper(), white);
    }

    void aPrinterIsAskedForWhitePaperToo() {
        QPrinter printer(QPrinter::HighResolution);
        testing::onModal([](QWidget* dialog) {
            auto* box = dialog->findChild<QCheckBox*>(QStringLiteral("WhitePaper"));
            QVERIFY(box != nullptr);
            QVERIFY(box->isVisible());
            QCOMPARE(testing::userClick(box, {8, box->height() / 2}), QString());
            QMetaObject::invokeMethod(dialog, "reject");
        });
        const PrintAnswer answer = askForPrinter(printer, true);
        QVERIFY(!answer.accepted);
        QVERIFY(!answer.whitePaper);
    }

    void aFileMayBeChosenAmongThePrinters() {
        QPrinter printer(QPrinter::HighResolution);
        testing::onModal([this](QWidget* dialog) {
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("filename"));
            QVERIFY(name != nullptr);
            name->setText(pathOf("chosen.pdf"));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        const PrintAnswer answer = askForPrinter(printer, false);
        QVERIFY(answer.accepted);
        QCOMPARE(answer.pdfPath, pathOf("chosen.pdf"));
    }

    // --- Pages

    void aTableStandsWhereItsScaleSays() {
        auto job = beginPdf("table.pdf");
        QVERIFY(job != nullptr);
        job->surface().setFontSize(8);
        job->surface().setScale(0, 0, 240, 290);
        job->printAt(0, 11, "left", TextSide::left);
        job->printAt(44, 15, "1234.50", TextSide::left);
        job->printAt(231, 279,
            "\xb0"
            "C",
            TextSide::left); // text of a file
        job->printAt(100, 19, "9.99", TextSide::right);
        job->printAt(120, 23, "centre", TextSide::centre);
        job->surface().setCurrentX(60);
        job->surface().setCurrentY(40);
        job->surface().print("alpha");
        QCOMPARE(job->surface().currentX(), 0.0F);
        QCOMPARE(job->surface().currentY(), 40 + job->lineHeight());
        job->surface().print("beta");
        const double widthUnits = static_cast<double>(job->textWidth("1234.50"));
        QVERIFY(job->endDoc());

        const auto pages = testing::readPdf(pathOf("table.pdf"));
        QCOMPARE(pages.size(), std::size_t(1));
        const PdfPage& page = pages[0];
        QVERIFY(page.width < page.height);
        QVERIFY(isNear(page.placeOf("left").left(), across(page, 0), 0.5));
        const QRectF cell = page.placeOf("1234.50");
        QVERIFY(isNear(cell.left(), across(page, 44), 0.5));
        QVERIFY(isNear(cell.width(), widthUnits / 240 * (page.width - 2 * marginPoints), 0.5));
        QVERIFY(cell.height() > 7 && cell.height() < 12); // 8 points of letters
        QVERIFY(isNear(cell.top(), down(page, 15), 1.5));
        QVERIFY(isNear(page.placeOf(QStringLiteral("\u00b0C")).left(), across(page, 231), 0.5));
        QVERIFY(isNear(page.placeOf("9.99").right(), across(page, 100), 0.5));
        QVERIFY(isNear(page.placeOf("centre").center().x(), across(page, 120), 0.5));
        QVERIFY(isNear(page.placeOf("alpha").left(), across(page, 60), 0.5));
        QVERIFY(isNear(page.placeOf("beta").left(), across(page, 0), 0.5));
        QVERIFY(page.placeOf("beta").top() > page.placeOf("alpha").top() + 7);
    }

    // Columns of a table are a 24th of the paper wide, and hold six digits at 8 points.
    void narrowTextLeavesRoomBetweenColumns() {
        auto job = beginPdf("narrow.pdf");
        job->surface().setFontSize(8);
        job->surface().setScale(0, 0, 240, 290);
        job->printAt(0, 11, "wide", TextSide::left);
        const float wide = job->textWidth("141.96");
        job->setDigitWidth(0.46F);
        const float narrow = job->textWidth("141.96");
        QVERIFY(wide > 10);
        QVERIFY2(narrow < 9.2F, qPrintable(QString::number(double(narrow))));
        for (int c = 0; c < 8; ++c)
            job->printAt(88 + 10 * static_cast<float>(c), 15, "141.96", TextSide::left);
        job->setDigitWidth(0);
        QCOMPARE(job->textWidth("141.96"), wide);
        QVERIFY(job->endDoc());
        const PdfPage page = testing::readPdf(pathOf("narrow.pdf")).at(0);
        QCOMPARE(page.words.size(), std::size_t(9));
        for (std::size_t i = 1; i < 9; ++i) {
            const QRectF place = page.words[i].place;
            const double x = 88 + 10 * static_cast<double>(i - 1);
            QVERIFY(isNear(place.left(), across(page, x), 0.5));
            QVERIFY(isNear(place.right(), across(page, x + static_cast<double>(narrow)), 0.5));
        }
    }

    void eachPageIsTurnedAsItWants() {
        auto job = beginPdf("pages.pdf", Orientation::landscape);
        QCOMPARE(job->page(), 1);
        job->surface().setScale(0, 0, 240, 290);
        job->printAt(0, 0, "one", TextSide::left);
        QVERIFY(job->newPage(Orientation::portrait));
        QCOMPARE(job->page(), 2);
        QCOMPARE(job->surface().currentX(), 0.0F);
        job->printAt(240, 0, "two", TextSide::right);
        QVERIFY(job->newPage(Orientation::portrait));
        QVERIFY(job->newPage(Orientation::landscape));
        QCOMPARE(job->page(), 4);
        job->printAt(240, 0, "four", TextSide::right);
        QVERIFY(job->endDoc());
        const auto pages = testing::readPdf(pathOf("pages.pdf"));
        QCOMPARE(pages.size(), std::size_t(4));
        const std::vector<bool> wide{true, false, false, true};
        for (std::size_t i = 0; i < 4; ++i) QCOMPARE(pages[i].width > pages[i].height, wide[i]);
        QCOMPARE(pages[0].words.size(), std::size_t(1));
        QVERIFY(isNear(pages[1].placeOf("two").right(), across(pages[1], 240), 0.5));
        QVERIFY(isNear(pages[3].placeOf("four").right(), across(pages[3], 240), 0.5));
    }

    void whatReachesOutOfTheScaleIsPrintedUpToThePapersEdge() {
        auto job = beginPdf("wide.pdf");
        platform::Surface& paper = job->surface();
        paper.setScale(0, 0, 100, 100);
        paper.line(50, 50, 200, 50, 0);
        paper.line(50, 60, -100, 60, 0);
        paper.box(50, 98, 60, 110, 255);
        QVERIFY(job->endDoc());
        const PdfPage page = testing::readPdf(pathOf("wide.pdf")).at(0);
        const QImage image = testing::pdfPageImage(pathOf("wide.pdf"), 1, 288);
        const double width = page.width - 2 * marginPoints;
        const double height = page.height - 2 * marginPoints;
        const auto y = [&](double part) { return marginPoints + height * part; };
        QVERIFY(!isPaper(image, page.width - 3, y(0.5), 288));
        QVERIFY(!isPaper(image, 3, y(0.6), 288));
        QVERIFY(!isPaper(image, marginPoints + width * 0.55, page.height - 3, 288));
        QVERIFY(isPaper(image, page.width - 3, y(0.6), 288));
    }

    // Points on a straight way are left out, the point of a spike is none of them.
    void aSpikeOfALineStays() {
        auto job = beginPdf("spike.pdf");
        platform::Surface& paper = job->surface();
        paper.setScale(0, 0, 100, 100);
        paper.setCurrentX(20);
        paper.setCurrentY(50);
        const std::vector<platform::Point> way{
            {30, 50}, {40, 50}, {50, 50}, {50, 10}, {50, 50}, {60, 50}, {70, 50}};
        paper.polyline(way, 0);
        QVERIFY(job->endDoc());
        const PdfPage page = testing::readPdf(pathOf("spike.pdf")).at(0);
        const QImage image = testing::pdfPageImage(pathOf("spike.pdf"), 1, 288);
        const auto inked = [&](double x, double y) {
            return !isPaper(image, marginPoints + (page.width - 2 * marginPoints) * x / 100,
                marginPoints + (page.height - 2 * marginPoints) * y / 100, 288);
        };
        QVERIFY(inked(50, 15));
        QVERIFY(inked(35, 50));
        QVERIFY(inked(65, 50));
        QVERIFY(!inked(75, 50));
    }

    void aFrameIsAPartOfThePageAndCutsAtItsEdges() {
        auto job = beginPdf("frame.pdf");
        platform::Surface& paper = job->surface();
        job->setFrame({0.25F, 0.5F, 0.75F, 1});
        paper.setScale(0, 1100, 100, 0);
        paper.setBackColor(0x00FFFF); // yellow
        paper.cls();
        paper.line(-100, 550, 200, 550, 0);
        paper.box(20, 1000, 40, 900, 255);
        job->setFrame({});
        paper.setScale(0, 0, 100, 100);
        paper.line(0, 10, 100, 10, 0);
        QVERIFY(job->endDoc());
        const PdfPage page = testing::readPdf(pathOf("frame.pdf")).at(0);
        const QImage image = testing::pdfPageImage(pathOf("frame.pdf"), 1, 144);
        const auto at = [&](double x, double y) {
            const QPointF points(marginPoints + (page.width - 2 * marginPoints) * x,
                marginPoints + (page.height - 2 * marginPoints) * y);
            return image.pixelColor((points * 2).toPoint());
        };
        QCOMPARE(at(0.5, 0.6), QColor(255, 255, 0));
        QCOMPARE(at(0.5, 0.4), QColor(Qt::white));
        QCOMPARE(at(0.2, 0.75), QColor(Qt::white)); // the line goes on there
        QCOMPARE(at(0.8, 0.75), QColor(Qt::white));
        QCOMPARE(at(0.4, 0.5 + 0.5 * 150 / 1100), QColor(255, 0, 0));
        const QImage sharp = testing::pdfPageImage(pathOf("frame.pdf"), 1, 432);
        const auto ink = [&](double x, double y) {
            const int column =
                static_cast<int>((marginPoints + (page.width - 2 * marginPoints) * x) * 6);
            const int row =
                static_cast<int>((marginPoints + (page.height - 2 * marginPoints) * y) * 6);
            int dark = 0;
            for (int i = row - 20; i < row + 20; ++i)
                dark += sharp.pixelColor(column, i) == QColor(Qt::black) ? 1 : 0;
            return dark;
        };
        // Half a point is 3 dots of 1/432 inch.
        QVERIFY2(ink(0.5, 0.75) >= 2 && ink(0.5, 0.75) <= 4,
            qPrintable(QString::number(ink(0.5, 0.75))));
        QVERIFY(ink(0.5, 0.1) >= 2 && ink(0.5, 0.1) <= 4);
    }

    void aKeptPictureIsDrawnInItsFrame() {
        platform::DisplayListSurface trend;
        trend.setScale(0, 1100, 1361, 0);
        std::vector<std::uint8_t> masks(1361, 1);
        trend.boxes(masks, std::vector<platform::Bar>{{1100, 1000, 0xFF0000}});
        trend.setDrawStyle(1);
        trend.line(0, 550, 1361, 550, 255);
        trend.setDrawStyle(0);
        trend.line(0, 0, 1361, 500, 0x008000);
        trend.line(0, std::numeric_limits<float>::quiet_NaN(), 5, 5, 0);
        auto job = beginPdf("trend.pdf", Orientation::landscape);
        trend.kept().drawOn(job->surface());
        QVERIFY(job->endDoc());
        const PdfPage page = testing::readPdf(pathOf("trend.pdf")).at(0);
        const int dotsPerInch = 432;
        const QImage image = testing::pdfPageImage(pathOf("trend.pdf"), 1, dotsPerInch);
        const auto pixelY = [&](double y) {
            return static_cast<int>((marginPoints + (page.height - 2 * marginPoints) * y) * 6);
        };
        const int left = static_cast<int>(marginPoints * 6) + 5;
        const int right = static_cast<int>((page.width - marginPoints) * 6) - 5;
        // No hairline between the boxes of samples that follow one another.
        for (int x = left; x < right; ++x)
            QCOMPARE(image.pixelColor(x, pixelY(0.05)), QColor(0, 0, 255));
        int red = 0;
        for (int x = left; x < right; ++x)
            red += image.pixelColor(x, pixelY(0.5)) == QColor(255, 0, 0) ? 1 : 0;
        // Dashes of 18 and gaps of 6.
        QVERIFY2(isNear(red, (right - left) * 0.75, (right - left) * 0.02),
            qPrintable(QString::number(red)));
        QCOMPARE(image.pixelColor((left + right) / 2, pixelY(1 - 250.0 / 1100)), QColor(0, 128, 0));
    }

    void aPictureIsAsLargeAsThePageAllows() {
        nameFile(pathOf("statistics.pdf"));
        const auto printed = m_printer.printPicture(picture(), " Statistics For : 1/2");
        QVERIFY2(printed, printed.message.c_str());
        const PdfPage page = testing::readPdf(pathOf("statistics.pdf")).at(0);
        QVERIFY(page.width > page.height); // as the picture is
        const QImage image = testing::pdfPageImage(pathOf("statistics.pdf"), 1, 72);
        const double width = page.width - 2 * marginPoints;
        const auto isBlue = [&](double x, double y) {
            return image.pixelColor(static_cast<int>(x), static_cast<int>(y)) == QColor(0, 0, 255);
        };
        QVERIFY(isBlue(marginPoints + 3, marginPoints + 3));
        QVERIFY(isBlue(marginPoints + width - 3, marginPoints + width / 2 - 3));
        QVERIFY(!isBlue(marginPoints - 3, marginPoints + 3));
        QVERIFY(!isBlue(marginPoints + 3, marginPoints + width / 2 + 3));
    }

    void aHeadingStandsOverThePicture() {
        nameFile(pathOf("heading.pdf"));
        const auto printed = m_printer.printPicture(
            picture(), "x", "Sun 15 Nov 2026 Run: 1 " + std::string(150, 'M'));
        QVERIFY2(printed, printed.message.c_str());
        const PdfPage page = testing::readPdf(pathOf("heading.pdf")).at(0);
        const QRectF heading = page.placeOf("Sun");
        QVERIFY(!heading.isEmpty());
        QVERIFY(heading.top() < marginPoints + 12);
        // Made smaller it fits, and the picture begins below it.
        const QRectF end = page.placeOf(QString(150, QLatin1Char('M')));
        QVERIFY(!end.isEmpty());
        QVERIFY(end.right() <= page.width - marginPoints + 1);
        const QImage image = testing::pdfPageImage(pathOf("heading.pdf"), 1, 72);
        const auto pixel = [&](double y) {
            return image.pixelColor(static_cast<int>(page.width / 2), static_cast<int>(y));
        };
        QVERIFY(pixel(marginPoints + 1) != QColor(0, 0, 255));
        QCOMPARE(pixel(heading.bottom() + 20), QColor(0, 0, 255));
    }

    void anEmptyPictureIsAFailureWithoutAQuestion() {
        const auto printed = m_printer.printPicture({}, "x");
        QCOMPARE(printed.outcome, Printed::failed);
        QVERIFY(!printed.message.empty());
    }

    // --- The end of a job

    void aKilledJobLeavesTheOldFile() {
        QFile old(pathOf("kept.pdf"));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("old");
        old.close();
        for (const bool byItself : {false, true}) {
            testing::onModal([this](QWidget* dialog) {
                dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                    ->setText(pathOf("kept.pdf"));
                testing::answerBox(QStringLiteral("There is no printer: save as PDF"),
                    QStringLiteral("Yes")); // replace it
                QMetaObject::invokeMethod(dialog, "accept");
            });
            auto start = m_printer.begin({"x"});
            QVERIFY(start.job != nullptr);
            start.job->printAt(0, 0, "new", TextSide::left);
            QVERIFY(start.job->newPage(Orientation::portrait));
            if (!byItself) {
                start.job->kill();
                QVERIFY(!start.job->endDoc());
            }
            start.job.reset();
            QVERIFY(old.open(QIODevice::ReadOnly));
            QCOMPARE(old.readAll(), QByteArray("old"));
            old.close();
        }
        QCOMPARE(QDir(m_folder.path())
                     .entryList({QStringLiteral("*kept*")}, QDir::AllEntries | QDir::Hidden)
                     .size(),
            1);
    }

    void aFileThatCannotBeWrittenIsToldAtTheEnd() {
        testing::MemoryFiles files;
        const std::string path = pathOf("full.pdf").toStdString();
        files.put(path, {1});
        files.failWrites(path, testing::MemoryFiles::Failure::fullDisk);
        QtPrinter printer(files);
        nameFile(pathOf("full.pdf"));
        const auto printed = printer.printPicture(picture(), "x");
        QCOMPARE(printed.outcome, Printed::failed);
        QVERIFY2(
            printed.message.find("No space left") != std::string::npos, printed.message.c_str());
        QVERIFY(files.read(path) == platform::Bytes{1});
        files.allowWrites();
        nameFile(pathOf("full.pdf"));
        QVERIFY(printer.printPicture(picture(), "x"));
        const auto content = files.read(path).value();
        QCOMPARE(std::string(content.begin(), content.begin() + 4), std::string("%PDF"));
    }

    void aDeviceThatFailsAtAPageEndsTheJobInWords() {
        for (const bool keepsPages : {true, false}) {
            for (int pages = 1; pages <= 3; ++pages) {
                TargetFate fate;
                QtPrintJob job(std::make_unique<FailingTarget>(pages, keepsPages, fate),
                    Orientation::portrait, true);
                platform::PrintResult result;
                for (int i = 1; i < 4 && result; ++i) result = job.newPage(Orientation::landscape);
                if (result) result = job.endDoc();
                QCOMPARE(result.outcome, Printed::failed);
                const std::string words =
                    "Page " + std::to_string(pages + 1) + " could not be printed.";
                QCOMPARE(result.message, words);
                QCOMPARE(job.endDoc().message, words);
                QCOMPARE(job.newPage(Orientation::portrait).message, words);
                QCOMPARE(fate.finished, 0);
                QCOMPARE(fate.abortedInTime, 1);
            }
        }
    }

    // Painting for a printer comes at the end, and the user may have enough of it.
    void aPrinterIsCancelledBetweenItsPages() {
        for (const int stopAt : {2, 9}) {
            TargetFate fate;
            QtPrintJob job(
                std::make_unique<FailingTarget>(9, false, fate), Orientation::portrait, true);
            std::vector<std::pair<int, int>> asked;
            job.whilePrinting([&](int pagesDone, int allPages) {
                asked.emplace_back(pagesDone, allPages);
                return pagesDone != stopAt;
            });
            for (int i = 1; i < 4; ++i) QVERIFY(job.newPage(Orientation::portrait));
            QVERIFY(asked.empty());
            const bool cancelled = stopAt == 2;
            QCOMPARE(job.endDoc().outcome, cancelled ? Printed::cancelled : Printed::done);
            QCOMPARE(asked.size(), std::size_t(cancelled ? 2 : 3));
            QCOMPARE(asked[1], std::make_pair(2, 4));
            QCOMPARE(fate.finished, cancelled ? 0 : 1);
            QCOMPARE(fate.abortedInTime, cancelled ? 1 : 0);
            if (cancelled) QCOMPARE(job.endDoc().outcome, Printed::cancelled);
        }
    }

    void whatKeepsItsPagesDoesNotAskAtTheEnd() {
        TargetFate fate;
        QtPrintJob job(std::make_unique<FailingTarget>(9, true, fate), Orientation::portrait, true);
        job.whilePrinting([](int, int) { return false; });
        QVERIFY(job.newPage(Orientation::portrait));
        QVERIFY(job.newPage(Orientation::portrait));
        QVERIFY(job.endDoc());
        QCOMPARE(fate.finished, 1);
    }

    // A print queue takes what it has got when a job breaks off.
    void aPrinterGetsNoPageBeforeTheDocumentIsComplete() {
        for (const bool ends : {false, true}) {
            auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
            printer->setOutputFormat(QPrinter::PdfFormat);
            printer->setOutputFileName(pathOf("queue.pdf"));
            QtPrintJob job(
                std::make_unique<PrinterTarget>(std::move(printer)), Orientation::landscape, true);
            job.printAt(0, 0, "one", TextSide::left);
            QVERIFY(job.newPage(Orientation::portrait));
            job.printAt(0, 0, "two", TextSide::left);
            QVERIFY(job.newPage(Orientation::portrait));
            QVERIFY(!QFile::exists(pathOf("queue.pdf")));
            if (ends) QVERIFY(job.endDoc());
            job.kill();
            QCOMPARE(QFile::exists(pathOf("queue.pdf")), ends);
        }
        const auto pages = testing::readPdf(pathOf("queue.pdf"));
        QCOMPARE(pages.size(), std::size_t(3));
        QVERIFY(pages[0].width > pages[0].height);
        QVERIFY(pages[1].width < pages[1].height);
        QVERIFY(!pages[1].placeOf("two").isEmpty());
    }
};

KVO_FORM_TEST_MAIN(PrinterTest)
#include "printer_test.moc"
