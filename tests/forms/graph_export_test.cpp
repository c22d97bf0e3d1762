// File, Export of the graph window: its commands by menu and key, what stands in the files, and the
// question for a picture's size.
#include "channels/run_view.h"
#include "graph/export_csv.h"
#include "graph/forms/graph_export.h"
#include "graph/forms/graph_surface.h"
#include "platform/qt/picture_page.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/user_click.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QXmlStreamReader>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;
using namespace kvo::testing;

namespace {

constexpr const char* name = "Wed 05 Jun 2024 Run_ 3 Second round";

QSpinBox& side(QWidget* dialog, const char* which) {
    return control<QSpinBox>(*dialog, which);
}

} // namespace

class GraphExportTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    // With KVO_PICTURES naming a folder the pictures stay there, to be looked at.
    void keep(const char* file) {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) return;
        QFile out(folder + QLatin1Char('/') + QLatin1String(file));
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(written(file));
    }
    QByteArray written(const std::string& file) {
        const auto content = files().read("/out/" + file);
        if (!content) return {};
        return {reinterpret_cast<const char*>(content->data()),
            static_cast<qsizetype>(content->size())};
    }
    graph::CsvLook look() {
        return graph::csvLookOf(QLocale::system().decimalPoint().front().unicode());
    }
    QByteArray csvOf(const graph::SampleStretch& stretch) {
        const auto bytes =
            graph::runAsCsv(channels::viewOfRun(state().Run), state().Config, stretch, look());
        return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
    }
    ScriptedDialogs::Expected& expectFile(
        const char* title, const char* extension, const char* answer) {
        return dialogs().expectFile(
            title, std::string("/out/") + name + extension, std::string("/out/") + answer);
    }
    // Answers the question for a picture; what `script` leaves open goes on by OK.
    static void answerLook(std::function<void(QWidget*)> script) {
        onModal([script](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("ExportPicture"));
            script(modal);
            if (!isLoaded<ExportPicture>()) return;
            auto& buttons = control<QDialogButtonBox>(*modal, "ExportButtons");
            QCOMPARE(userClick(buttons.button(QDialogButtonBox::Ok)), QString());
        });
    }

private slots:
    void init() {
        begin();
        platform_qt::kept<GraphExport>() = {"/out", {}, false};
    }
    void cleanup() { QCOMPARE(end(), QString()); }

    void anExportNeedsARun() {
        openByChooser(cancelling());
        QVERIFY(!menuEnabled("Mnu_ExportMenu"));
        form<DataGraph>().commands().Mnu_Export_Click(GraphExport::wholeRun);
        unload<DataGraph>();
        open(32);
        QVERIFY(menuEnabled("Mnu_ExportMenu"));
    }

    void theKeysReachThem() {
        open(32);
        auto& window = form<DataGraph>();
        expectFile("Export as CSV", ".csv", "by key");
        QTest::keyClick(&window, Qt::Key_E, Qt::ControlModifier);
        QVERIFY(!written("by key.csv").isEmpty());
        expectFile("Export as CSV", ".csv", "by key 2");
        QTest::keyClick(&window, Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(!written("by key 2.csv").isEmpty());
        answerLook([](QWidget*) {});
        expectFile("Export as PNG", ".png", "by key");
        QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(written("by key.png").startsWith("\x89PNG"));
    }

    void theRunIsWrittenAsItsTable() {
        for (const int type : {8, 20, 32}) {
            open(type);
            expectFile("Export as CSV", ".csv", "run.csv").whileShown = [this] {
                QVERIFY(!menuEnabled("Mnu_File"));
            };
            if (type != 8)
                dialogs().expectBoxTitled("Export as CSV", platform::Reply::yes); // replace it
            command("Mnu_Export(0)").trigger();
            QCOMPARE(written("run.csv"), csvOf({1, state().Run.SampleCount}));
            QVERIFY(menuEnabled("Mnu_File"));
            unload<DataGraph>();
        }
    }

    void whatIsInViewIsAStretchOfIt() {
        open(32);
        command("Mnu_ScaleItem(2)").trigger();
        auto& bar = part<QScrollBar>("HScroll");
        bar.setValue(bar.maximum() / 2);
        const graph::SampleStretch seen = graph::stretchInView(channels::viewOfRun(state().Run),
            trend().surface().scale(), part<GraphSurface>("GraphSurface").partInView());
        QVERIFY(seen.from > 400 && seen.to < 1000 && seen.to - seen.from > 200);
        expectFile("Export as CSV", ".csv", "seen");
        command("Mnu_Export(1)").trigger();
        QCOMPARE(written("seen.csv"), csvOf(seen));
        expectFile("Export as CSV", ".csv", "all");
        command("Mnu_Export(0)").trigger();
        QCOMPARE(written("all.csv"), csvOf({1, 1360}));
    }

    void aPngHasTheSizeThatWasAsked() {
        open(32);
        answerLook([](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Export as PNG"));
            QCOMPARE(side(dialog, "Text_Width").value(), 1366);
            QCOMPARE(side(dialog, "Text_Height").value(), 768);
            QVERIFY(!control<QCheckBox>(*dialog, "WhitePaper").isChecked());
            side(dialog, "Text_Width").setValue(1920);
            side(dialog, "Text_Height").setValue(1080);
        });
        expectFile("Export as PNG", ".png", "dark");
        command("Mnu_Export(2)").trigger();
        keep("dark.png");
        QImage dark = QImage::fromData(written("dark.png"));
        QCOMPARE(dark.size(), QSize(1920, 1080));
        QCOMPARE(dark.pixelColor(960, 300), QColor(Qt::black)); // the ground, as on the screen
        QCOMPARE(dark.pixelColor(2, 2), QColor(Qt::white));
        // The next time the size stands there.
        answerLook([](QWidget* dialog) {
            QCOMPARE(side(dialog, "Text_Width").value(), 1920);
            control<QCheckBox>(*dialog, "WhitePaper").setChecked(true);
            side(dialog, "Text_Width").setValue(100000); // the most that there is
            QCOMPARE(side(dialog, "Text_Width").value(), graph::mostPictureSide);
            side(dialog, "Text_Width").setValue(800);
            side(dialog, "Text_Height").setValue(500);
        });
        expectFile("Export as PNG", ".png", "white");
        command("Mnu_Export(2)").trigger();
        keep("white.png");
        QImage white = QImage::fromData(written("white.png"));
        QCOMPARE(white.size(), QSize(800, 500));
        QVERIFY(platform_qt::kept<GraphExport>().whitePaper);
        // A curve is no fainter for being thin: as its square in the list of the channels.
        const QRgb ink = white.pixel(15, 431);
        bool found = false;
        for (int y = 100; y < 390; ++y) found |= white.pixel(200, y) == ink;
        QVERIFY(found);
        int grounds = 0;
        for (int y = 60; y < 300; ++y) grounds += white.pixelColor(400, y) == QColor(Qt::white);
        QVERIFY(grounds > 150);
    }

    void aPictureMayBeCancelled() {
        open(32);
        answerLook([](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
        command("Mnu_Export(2)").trigger();
        answerLook([](QWidget*) {});
        dialogs().expectFile("Export as PNG", std::string("/out/") + name + ".png", std::nullopt);
        command("Mnu_Export(2)").trigger();
        QVERIFY(files().list("/out").empty());
        QVERIFY(menuEnabled("Mnu_File"));
    }

    void aDrawingIsWholeAndKeepsItsCurvesInTheGraph() {
        open(32);
        command("Mnu_ScaleItem(1)").trigger();
        answerLook([](QWidget* dialog) { QVERIFY(!side(dialog, "Text_Width").isVisible()); });
        expectFile("Export as SVG", ".svg", "drawing");
        command("Mnu_Export(3)").trigger();
        keep("drawing.svg");
        QXmlStreamReader xml(written("drawing.svg"));
        int lines = 0;
        int clipped = 0;
        QStringList texts;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement) continue;
            if (xml.name() == QLatin1String("polyline")) ++lines;
            if (xml.name() == QLatin1String("g"))
                clipped += xml.attributes().hasAttribute(QLatin1String("clip-path"));
            if (xml.name() == QLatin1String("text")) texts << xml.readElementText();
        }
        QCOMPARE(xml.errorString(), QString());
        QVERIFY(lines > 25);
        QCOMPARE(clipped, 1);
        QVERIFY(texts.contains(QLatin1String("Wed 05 Jun 2024 Run: 3 Second round")));
        QVERIFY(texts.contains(text("LoggerTime")));
        QVERIFY(texts.contains(text("Rpm")));
    }

    void aDocumentHasOnePage() {
        open(32);
        answerLook([](QWidget* dialog) { QVERIFY(!side(dialog, "Text_Height").isVisible()); });
        expectFile("Export as PDF", ".pdf", "page");
        command("Mnu_Export(4)").trigger();
        keep("page.pdf");
        QVERIFY(written("page.pdf").startsWith("%PDF-"));
        QCOMPARE(written("page.pdf").count("/Type /Page\n"), 1);
    }

    void thePictureGoesToTheClipboard() {
        open(32);
        QApplication::clipboard()->clear();
        QTest::keyClick(&form<DataGraph>(), Qt::Key_C, Qt::ControlModifier);
        const QImage copied = QApplication::clipboard()->image();
        QCOMPARE(copied.size(), QSize(1366, 768));
        answerLook([](QWidget*) {});
        expectFile("Export as PNG", ".png", "same");
        command("Mnu_Export(2)").trigger();
        QCOMPARE(QImage::fromData(written("same.png")).convertToFormat(copied.format()), copied);
    }

    void whatCannotBeWrittenIsTold() {
        open(32);
        files().failWrites("/out", MemoryFiles::Failure::fullDisk);
        expectFile("Export as CSV", ".csv", "full");
        dialogs().expectBoxTitled("Export as CSV").contains = "/out/full.csv";
        command("Mnu_Export(0)").trigger();
        QVERIFY(files().list("/out").empty());
    }

    void anExportChangesNothingOfTheWindow() {
        open(20);
        state().Config.Text_Magnify.fill(0);
        const core::AppConfig config = state().Config;
        const QImage picture = trend().picture({700, 500});
        const auto texts = this->texts();
        for (int item = GraphExport::wholeRun; item <= GraphExport::toClipboard; ++item) {
            const bool asksForLook =
                item >= GraphExport::pngPicture && item < GraphExport::toClipboard;
            if (asksForLook) answerLook([](QWidget*) {});
            const char* const forms[] = {"CSV", "CSV", "PNG", "SVG", "PDF"};
            if (item != GraphExport::toClipboard)
                dialogs()
                    .expectFile(std::string("Export as ") + forms[item], {}, std::nullopt)
                    .text.reset();
            form<DataGraph>().commands().Mnu_Export_Click(item);
        }
        QCOMPARE(trend().picture({700, 500}), picture);
        QCOMPARE(this->texts(), texts);
        QVERIFY(state().Config == config);
    }
};

KVO_FORM_TEST_MAIN(GraphExportTest)
#include "graph_export_test.moc"
