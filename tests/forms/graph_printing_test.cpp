// What the graph window prints: its commands on a scripted printer, and its pages read back from
// PDF files by other programs.
#include "channels/run_view.h"
#include "core/data_types.h"
#include "graph/paper_surface.h"
#include "graph/print_table.h"
#include "platform/os/os_files.h"
#include "platform/qt/qt_printer.h"
#include "platform/qt/text.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/pdf_printer.h"
#include "tests/forms/support/pdf_reader.h"
#include "tests/forms/support/user_click.h"

#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <map>

using namespace kvo;
using namespace kvo::forms;
using kvo::testing::JobState;
using kvo::testing::PdfPage;
using kvo::testing::PdfPrinter;
using kvo::testing::PrintedDocument;
using platform::Orientation;

namespace {

// Most of the time other programs read what was printed, which the sanitizers do not watch.
#ifdef KVO_SANITIZED
constexpr std::array<int, 3> printedTypes{12, 25, 43};
#else
constexpr std::array<int, 7> printedTypes{8, 12, 17, 20, 25, 32, 43};
#endif
constexpr std::array<const char*, 3> items{"Mnu_Print(0)", "Mnu_Print(1)", "Mnu_Print(2)"};
constexpr double margin = 17; // points, of the paper

} // namespace

class GraphPrintingTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    QTemporaryDir m_folder;
    platform_os::OsFiles m_disk;

    // With KVO_PICTURES naming a folder the files stay there, to be looked at.
    QString pathOf(const QString& name) const {
        const QString kept = qEnvironmentVariable("KVO_PICTURES");
        return (kept.isEmpty() ? m_folder.path() : kept) + QLatin1Char('/') + name;
    }
    QString printPdf(const QString& name, const char* item, bool white,
        QPageSize::PageSizeId paper = QPageSize::A4) {
        PdfPrinter printer(m_disk, pathOf(name));
        printer.whitePaper = white;
        printer.paper = paper;
        platform::services().printer = &printer;
        command(item).trigger();
        platform::services().printer = &program().printer;
        return pathOf(name);
    }
    testing::ScriptedPrinter& printer() { return program().printer; }
    const PrintedDocument& print(const char* item) {
        command(item).trigger();
        return *printer().documents.back();
    }
    // Whether a text stands on a page.
    static bool has(const testing::PrintedPage& page, const QString& text) {
        return std::any_of(page.texts.begin(), page.texts.end(),
            [&](const auto& one) { return platform_qt::shown(one.text) == text; });
    }
    static int curves(const testing::PrintedPage& page) {
        return static_cast<int>(
            std::count_if(page.operations.begin(), page.operations.end(), [](const auto& op) {
                return op.kind == testing::SurfaceOperation::Kind::polyline &&
                       op.points.size() > 50;
            }));
    }

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    // --- The commands

    void printingNeedsARun() {
        openByChooser(cancelling());
        QVERIFY(!menuEnabled("Mnu_Printer"));
        for (const char* item : items) QVERIFY(!command(item).isEnabled());
        QVERIFY(!part<QWidget>("PrintScreen").isEnabled());
        platform_qt::form<DataGraph>().commands().Mnu_Print_Click(0);
        QVERIFY(printer().documents.empty());
        platform_qt::unload<DataGraph>();
        open(32);
        QVERIFY(menuEnabled("Mnu_Printer"));
        for (const char* item : items) QVERIFY(command(item).isEnabled());
        QVERIFY(part<QWidget>("PrintScreen").isEnabled());
    }

    void eachItemPrintsItsOwn() {
        open(25);
        QCOMPARE(command("Mnu_Print(0)").text(), QStringLiteral("Screen"));
        QCOMPARE(command("Mnu_Print(1)").text(), QStringLiteral("Data"));
        QCOMPARE(command("Mnu_Print(2)").text(), QStringLiteral("Screen && Data"));
        const std::array<std::size_t, 3> pages{1, 18, 19};
        for (std::size_t item = 0; item < 3; ++item) {
            const PrintedDocument& document = print(items[item]);
            QCOMPARE(printer().documents.size(), item + 1); // one question each
            QCOMPARE(document.state, JobState::ended);
            QCOMPARE(document.pages.size(), pages[item]);
            QCOMPARE(document.request.firstPage == Orientation::landscape, item != 1);
        }
        press("PrintScreen");
        QCOMPARE(printer().documents.size(), std::size_t(4));
        QCOMPARE(printer().documents.back()->pages.size(), std::size_t(1));
        QVERIFY(command("Mnu_Print(0)").isEnabled());
        QVERIFY(menuEnabled("Mnu_File"));
    }

    void aFailureIsTold_data() {
        QTest::addColumn<int>("item");
        QTest::addColumn<QString>("words");
        QTest::newRow("screen") << 0 << "Error Printing Graph. ";
        QTest::newRow("data") << 1 << "Error Printing Text. ";
        QTest::newRow("both") << 2 << "Error Printing Graph & Text. ";
    }
    void aFailureIsTold() {
        QFETCH(int, item);
        QFETCH(QString, words);
        open(25);
        const QCursor before = trend().cursor();
        printer().failingPage = 1;
        dialogs().expectBox(words.toStdString(), 0, "Kvo").whileShown = [this] {
            QCOMPARE(trend().cursor().shape(), Qt::WaitCursor);
            QVERIFY(!menuEnabled("Mnu_File"));
            QCOMPARE(printer().documents.back()->state, JobState::killed);
        };
        command(items[static_cast<std::size_t>(item)]).trigger();
        QCOMPARE(trend().cursor().shape(), before.shape());
        QVERIFY(menuEnabled("Mnu_File"));
    }

    void aFileThatCannotBeWrittenIsTold() {
        open(25);
        for (std::size_t item = 0; item < 3; ++item) {
            dialogs().expectBox(item == 0   ? "Error Printing Graph. "
                                : item == 1 ? "Error Printing Text. "
                                            : "Error Printing Graph & Text. ",
                0, "Kvo");
            const QString path = printPdf("no-folder/x.pdf", items[item], true);
            QVERIFY(!QFile::exists(path));
        }
    }

    void theQuestionIsAskedOnceAndMayBeCancelled() {
        if (!QPrinterInfo::availablePrinters().isEmpty()) QSKIP("this machine has a printer");
        open(43);
        platform_qt::QtPrinter real(m_disk);
        platform::services().printer = &real;
        const QString path = pathOf("asked.pdf");
        for (const bool accept : {false, true}) {
            testing::onModal([&](QWidget* dialog) {
                QCOMPARE(trend().cursor().shape(), Qt::WaitCursor);
                auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                QVERIFY(name->text().endsWith(
                    QLatin1String("Wed 05 Jun 2024 Run_ 3 Second round.pdf")));
                auto* white = dialog->findChild<QCheckBox*>(QStringLiteral("WhitePaper"));
                QVERIFY(white != nullptr && white->isChecked());
                name->setText(path);
                QMetaObject::invokeMethod(dialog, accept ? "accept" : "reject");
            });
            command("Mnu_Print(2)").trigger();
            QCOMPARE(QFile::exists(path), accept);
        }
        QCOMPARE(testing::modalComplaints(), QString());
        QCOMPARE(testing::readPdf(path).size(), std::size_t(21));
        platform::services().printer = &printer();
    }

    void aLongJobIsCancelledByItsButton() {
        open(43);
        int shown = 0;
        printer().beforePage = [&shown] {
            QTest::qSleep(150);
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                auto* box = qobject_cast<QProgressDialog*>(widget);
                if (box == nullptr || !box->isVisible()) continue;
                ++shown;
                QCOMPARE(box->maximum(), 20);
                QVERIFY(!box->findChild<QPushButton*>()->text().isEmpty());
                QCOMPARE(testing::userClick(box->findChild<QPushButton*>()), QString());
            }
        };
        const PrintedDocument& document = print("Mnu_Print(1)");
        QCOMPARE(shown, 1);
        QCOMPARE(document.state, JobState::killed);
        QVERIFY(document.pages.size() < 20);
        QVERIFY(command("Mnu_Print(1)").isEnabled());
        printer().beforePage = nullptr;
        QCOMPARE(print("Mnu_Print(1)").state, JobState::ended);
    }

    // --- One after another

    void whatIsShownIsPrinted() {
        store(43, 1);
        store(43, 2);
        state().Config.OverlayColours = 1;
        openByChooser(taking(2));
        const int all = curves(print(items[0]).pages[0]);
        overlay(1);
        QCOMPARE(curves(print(items[0]).pages[0]), 2 * all);
        QVERIFY(!command("Mnu_RedoClutch").isEnabled()); // as before the printing
        QVERIFY(has(printer().documents.back()->pages[0], text("OverlayRpm")));
        QVERIFY(has(print(items[1]).pages[0],
            QStringLiteral("Data File: 24060512.32d    Overlay File: 24060512.31d")));
        press("Label10(0)");
        press("Label17");
        QCOMPARE(curves(print(items[0]).pages[0]), 2 * all - 4);
        press("Label10(0)");
        QCOMPARE(curves(print(items[0]).pages[0]), 2 * all - 2);
        command("Mnu_Overlay").trigger();
        const PrintedDocument& alone = print(items[0]);
        QCOMPARE(curves(alone.pages[0]), all - 1);
        QVERIFY(has(alone.pages[0], QStringLiteral("Times")));
        QVERIFY(has(alone.pages[0], QStringLiteral("Wed 05 Jun 2024 Run: 2 Second round")));
        QVERIFY(has(alone.pages[0], text("LoggerTime")));
        QVERIFY(has(alone.pages[0], text("Rpm")));
    }

    void anOverlayOverADownloadIsNamed() {
        store(43, 1);
        open(43);
        overlay(1);
        const PrintedDocument& document = print(items[0]);
        QVERIFY(has(document.pages[0], QStringLiteral("Wed 05 Jun 2024 Run: 3 Second round")));
        QVERIFY(has(document.pages[0],
            QStringLiteral("Wed 05 Jun 2024 Run: 3 Second round    Overlay File: 24060512.31d")));
    }

    // What the panel shows, from the state and not from its controls.
    void theTextUnderThePointerIsPrintedWhereItStandsInTheWindow() {
        open(32);
        pointAtTheEngine();
        const QString pointed = text("Label_DataChanel");
        QVERIFY(pointed.startsWith(QLatin1String(" Engine Rpm = ")));
        part<QLabel>("Label_DataChanel").setText(QStringLiteral("no state"));
        QVERIFY(has(print(items[0]).pages[0], pointed));
        emit trend().mouseLeft();
        QVERIFY(!has(print(items[0]).pages[0], pointed));
        platform_qt::form<DataGraph>().resize(1000, 700); // there it is a tool tip
        QCoreApplication::processEvents();
        pointAtTheEngine();
        QCOMPARE(trend().toolTip(), pointed);
        QVERIFY(!has(print(items[0]).pages[0], pointed));
    }

    void afterADeleteThereIsNothingToPrint() {
        store(43, 1);
        openByChooser(taking(1));
        print(items[0]);
        dialogs().expectBoxTitled("Warning", platform::Reply::yes);
        testing::onModal([](QWidget* chooser) {
            taking(1)(chooser);
            pressIn(chooser, "BTN_Cancel");
        });
        command("Mnu_DeleteRun").trigger();
        for (const char* item : items) QVERIFY(!command(item).isEnabled());
        QVERIFY(!menuEnabled("Mnu_Printer"));
        QVERIFY(!part<QWidget>("PrintScreen").isEnabled());
    }

    void theStretchThatIsAveragedIsPrinted() {
        open(32);
        emit trend().mouseDown(Qt::RightButton, 300, 500);
        emit trend().mouseUp(Qt::RightButton, 600, 500);
        const PrintedDocument& document = print(items[0]);
        const auto& operations = document.pages[0].operations;
        QVERIFY(std::any_of(operations.begin(), operations.end(),
            [](const auto& op) { return op.text == "AVERAGE"; }));
        QVERIFY(has(document.pages[0], text("LoggerTime")));
        QVERIFY(text("LoggerTime").contains(QLatin1Char('/')));
        QVERIFY(has(document.pages[0], text("Rpm")));
    }

    void printingChangesNothingOfTheWindow() {
        open(20);
        state().Config.Text_Magnify.fill(0);
        const core::AppConfig config = state().Config;
        const QImage picture = trend().picture({700, 500});
        const auto texts = this->texts();
        for (const char* item : items) print(item);
        QCOMPARE(trend().picture({700, 500}), picture);
        QCOMPARE(this->texts(), texts);
        QVERIFY(state().Config == config);
    }

    void ofAnEnlargedSurfaceThePartInViewIsPrinted() {
        open(32);
        command("Mnu_ScaleItem(1)").trigger();
        const auto scaleOf = [](const testing::PrintedPage& page) {
            for (const auto& op : page.operations) {
                if (op.kind == testing::SurfaceOperation::Kind::scale && op.y1 > 1) return op;
            }
            return testing::SurfaceOperation();
        };
        auto scale = scaleOf(print(items[0]).pages[0]);
        QCOMPARE(scale.x1, 0.0F);
        QCOMPARE(scale.y1, 1100.0F);
        QVERIFY(scale.x2 > 600 && scale.x2 < 720);
        QVERIFY(scale.y2 > 300 && scale.y2 < 900);
        part<QScrollBar>("HScroll").setValue(part<QScrollBar>("HScroll").maximum());
        scale = scaleOf(print(items[0]).pages[0]);
        QVERIFY2(scale.x1 > 640 && scale.x1 < 760, qPrintable(QString::number(double(scale.x1))));
        QVERIFY(scale.x2 > 1355 && scale.x2 < 1362);
        command("Mnu_ScaleItem(0)").trigger();
        scale = scaleOf(print(items[0]).pages[0]);
        QCOMPARE(scale.x2, 1361.0F);
        QCOMPARE(scale.y2, 0.0F);
    }

    // --- The pages

    void everyCellOfTheTableReadsBack_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("letter");
        for (const int type : printedTypes) {
            QTest::addRow("%d on A4", type) << type << false;
            if (type == 12 || type == 32) QTest::addRow("%d on Letter", type) << type << true;
        }
    }
    void everyCellOfTheTableReadsBack() {
        QFETCH(int, type);
        QFETCH(bool, letter);
        open(type);
        const QString path = printPdf(QStringLiteral("table%1.pdf").arg(type), items[1], true,
            letter ? QPageSize::Letter : QPageSize::A4);
        const auto pages = testing::readPdf(path);
        const graph::PrintTable table =
            graph::makePrintTable(channels::viewOfRun(state().Run), state().AnalogPicture);
        QCOMPARE(pages.size(), (table.lines.size() + 67) / 68);
        for (std::size_t p = 0; p < pages.size(); ++p) comparePage(pages[p], p, table);
    }

    void thePictureBearsTitleAndValues() {
        open(43);
        for (const bool white : {true, false}) {
            const QString path = printPdf(white ? "white.pdf" : "screen.pdf", items[0], white);
            const auto pages = testing::readPdf(path);
            QCOMPARE(pages.size(), std::size_t(1));
            const PdfPage& page = pages[0];
            QVERIFY(page.width > page.height);
            QVERIFY(page.placeOf("Second").top() < margin + 20);
            QVERIFY(page.placeOf("2024").top() < margin + 20);
            for (const char* label : {"Rpm", "Clutch", "Exhaust(1)", "Analog(8)"})
                QVERIFY2(page.placeOf(text(label)).top() > page.height * 0.8, label);
            for (const testing::PdfWord& word : page.words) {
                QVERIFY2(word.place.left() > margin - 2, qPrintable(word.text));
                QVERIFY2(word.place.bottom() < page.height - margin + 3, qPrintable(word.text));
            }
            QVERIFY(QFile(path).size() < 300000);
        }
    }

    // The question takes the window's place, and gives the line of the cursor back behind it.
    void anAverageIsPrintedThroughTheQuestion() {
        if (!QPrinterInfo::availablePrinters().isEmpty()) QSKIP("this machine has a printer");
        open(43);
        emit trend().mouseDown(Qt::RightButton, 300, 500);
        emit trend().mouseUp(Qt::RightButton, 600, 500);
        const QString time = text("LoggerTime");
        const QString rpm = text("Rpm");
        QVERIFY(time.contains(QLatin1Char('/')));
        platform_qt::QtPrinter real(m_disk);
        platform::services().printer = &real;
        const QString path = pathOf("average.pdf");
        testing::onModal([&](QWidget* dialog) {
            dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
            QEvent activated(QEvent::WindowActivate);
            QCoreApplication::sendEvent(&platform_qt::form<DataGraph>(), &activated);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        command(items[0]).trigger();
        platform::services().printer = &printer();
        QCOMPARE(testing::modalComplaints(), QString());
        const auto pages = testing::readPdf(path);
        QCOMPARE(pages.size(), std::size_t(1));
        const QRectF word = pages[0].placeOf("AVERAGE");
        QVERIFY(!word.isEmpty() && word.bottom() < pages[0].height * 0.8);
        QVERIFY(!pages[0].placeOf(time.section(QLatin1Char(' '), -1)).isEmpty());
        QVERIFY(pages[0].placeOf(rpm).top() > pages[0].height * 0.8);
    }

    // A caption may be 160 characters long, and an overlay's name stands behind it.
    void aLongCaptionStaysOnThePaper() {
        testing::storeModelRun(state(), files(), 43);
        platform_qt::form<DataGraph>().openFresh(state().Run.path,
            " Date:" + std::string(30, 'W') + " " + std::string(150, 'M') + " end");
        show();
        const auto pages = testing::readPdf(printPdf("long.pdf", items[1], true));
        for (const testing::PdfWord& word : pages.at(0).words)
            QVERIFY2(word.place.right() < pages[0].width - margin + 2, qPrintable(word.text));
        QVERIFY(!pages[0].placeOf("end").isEmpty());
    }

    // Each channel alone: its curve stands in the picture where it stands in the window.
    void curvesStandWhereTheyStandInTheWindow_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("white");
        for (const int type : printedTypes) {
            QTest::addRow("%d on white", type) << type << true;
            QTest::addRow("%d as the screen", type) << type << false;
        }
    }
    void curvesStandWhereTheyStandInTheWindow() {
        QFETCH(int, type);
        QFETCH(bool, white);
        testing::storeModelRun(state(), files(), type);
        for (const int channel :
            {channels::engineChannel, channels::mphChannel, channels::analogChannel(2)}) {
            onlyChannel(channel);
            openFresh();
            const QString path = printPdf("curve.pdf", items[0], white);
            const auto colour =
                static_cast<platform::Colour>(channels::channelColour(state().Config, channel));
            compareCurve(path, white ? graph::readableOnWhite(colour) : colour);
            platform_qt::unload<DataGraph>();
        }
    }

    void theGroundIsThePapersOrTheScreens() {
        open(43);
        state().Config.GraphBackColour = 0x400000;
        for (const bool white : {true, false}) {
            const QImage page =
                testing::pdfPageImage(printPdf("ground.pdf", items[0], white), 1, 72);
            const QColor ground = page.pixelColor(page.width() - 60, page.height() / 4);
            QCOMPARE(ground, white ? QColor(Qt::white) : QColor(0, 0, 0x40));
            QCOMPARE(page.pixelColor(page.width() - 60, 6), QColor(Qt::white));
        }
    }

    // With KVO_PICTURES naming a folder: what each type and an overlay look like beside the window.
    void pictures() {
        if (qEnvironmentVariableIsEmpty("KVO_PICTURES")) QSKIP("KVO_PICTURES names no folder");
        const auto look = [this](const QString& name) {
            printPdf(name + QStringLiteral("-white.pdf"), items[0], true);
            printPdf(name + QStringLiteral("-screen.pdf"), items[0], false);
            QVERIFY(platform_qt::form<DataGraph>().saveWindowPicture(pathOf(name + ".png")));
        };
        for (const int type : printedTypes) {
            open(type);
            look(QStringLiteral("type%1").arg(type));
            platform_qt::unload<DataGraph>();
        }
        store(43, 1);
        store(32, 2);
        state().Config.OverlayColours = 1;
        state().Config.OverlayStyle = 1;
        openOverlaid({1920, 1080});
        look("overlay");
        command("Mnu_ScaleItem(2)").trigger();
        look("quarter");
    }

private:
    // The words of a page are the cells of its lines, each where its column says, and what stands
    // above and below them.
    void comparePage(const PdfPage& page, std::size_t number, const graph::PrintTable& table) {
        const auto across = [&](float x) {
            return margin + static_cast<double>(x) / 240 * (page.width - 2 * margin);
        };
        const auto down = [&](float y) {
            return margin + static_cast<double>(y) / 290 * (page.height - 2 * margin);
        };
        std::map<std::pair<int, int>, QString> wanted; // by line and column
        const std::size_t end = std::min(table.lines.size(), (number + 1) * 68);
        for (std::size_t line = number * 68; line < end; ++line) {
            for (const graph::PrintCell& cell : table.lines[line])
                wanted[{static_cast<int>(line % 68) + 1, cell.column}] =
                    QString::fromStdString(cell.text);
        }
        for (const testing::PdfWord& word : page.words) {
            // No printer reaches the outermost two millimetres.
            QVERIFY2(word.place.right() < page.width - 5.6, qPrintable(word.text));
            const double y = word.place.top();
            if (y < down(10) || y > down(284)) continue;
            const int line = qRound((y - down(11)) / (down(4) - down(0))) + 1;
            int column = 0;
            while (static_cast<std::size_t>(column) + 1 < table.columns.size() &&
                   across(table.columns[static_cast<std::size_t>(column) + 1].x) <
                       word.place.left() + 1.5)
                ++column;
            const float x = table.columns[static_cast<std::size_t>(column)].x;
            QVERIFY2(std::abs(word.place.left() - across(x)) < 1.5, qPrintable(word.text));
            const auto found = wanted.find({line, column});
            QVERIFY2(found != wanted.end(), qPrintable(word.text));
            QCOMPARE(word.text, found->second);
            wanted.erase(found);
        }
        QVERIFY(wanted.empty());
        QVERIFY(page.placeOf("Page:").top() > down(284));
        QVERIFY(std::abs(page.placeOf("Slip%").left() - across(55)) < 1.5);
        const QRectF names = page.placeOf("Eng");
        QVERIFY(names.top() > down(4) - 1 && names.bottom() < down(10));
    }

    // The line is where the display list of the window has it, in nine samples of ten: the red
    // cursor and texts lie over the rest.
    void compareCurve(const QString& path, platform::Colour colour) {
        constexpr int dotsPerInch = 144;
        const QImage page = testing::pdfPageImage(path, 1, dotsPerInch);
        const QRect frame = frameOf(page);
        const QImage window = trend().picture(frame.size());
        const auto own =
            static_cast<platform::Colour>(channels::channelColour(state().Config, onlyOne()));
        int curve = 0;
        int found = 0;
        for (int x = 0; x < frame.width(); x += 3) {
            for (int y = 0; y < frame.height(); ++y) {
                if (window.pixel(x, y) != platform::rgb32(own)) continue;
                ++curve;
                if (isNear(page, frame.topLeft() + QPoint(x, y), colour)) ++found;
            }
        }
        QVERIFY2(curve > 100, qPrintable(QString::number(curve)));
        QVERIFY2(
            found * 10 >= curve * 9, qPrintable(QStringLiteral("%1 of %2").arg(found).arg(curve)));
    }
    int onlyOne() {
        for (int channel = 0; channel < channels::channelCount; ++channel) {
            if (channels::channelOn(state().Config, channel)) return channel;
        }
        return 0;
    }
    static bool isNear(const QImage& page, QPoint at, platform::Colour colour) {
        for (int dx = -2; dx <= 2; ++dx) {
            for (int dy = -2; dy <= 2; ++dy) {
                const QPoint place = at + QPoint(dx, dy);
                if (page.valid(place) && page.pixel(place) == platform::rgb32(colour)) return true;
            }
        }
        return false;
    }
    // The graph's place: inside the black border.
    static QRect frameOf(const QImage& page) {
        const auto isRule = [&](int y) {
            int dark = 0;
            for (int x = page.width() / 4; x < page.width() * 3 / 4; ++x)
                dark += page.pixelColor(x, y) == QColor(Qt::black) ? 1 : 0;
            return dark > page.width() * 49 / 100;
        };
        int top = 0;
        while (top < page.height() - 1 && !isRule(top)) ++top;
        int bottom = page.height() - 1;
        while (bottom > top && !isRule(bottom)) --bottom;
        const int side = qRound(margin * page.width() / 841.9);
        return {QPoint(side, top), QPoint(page.width() - side, bottom)};
    }
};

KVO_FORM_TEST_MAIN(GraphPrintingTest)
#include "graph_printing_test.moc"
