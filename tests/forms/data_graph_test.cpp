// The graph window through its real widgets: a fresh run of each data type, the channels, the
// cursor, colours, and what a close leaves.
#include "core/config.h"
#include "core/forms/doors.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "graph/forms/channel_panel.h"
#include "graph/forms/data_graph.h"
#include "graph/forms/graph_surface.h"
#include "library/forms/load_file.h"
#include "library/run_list.h"
#include "platform/qt/form_kit.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>

#include <limits>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class DataGraphTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    static QPalette darkPalette() {
        QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
        dark.setColor(QPalette::Base, QColor(35, 35, 35));
        return dark;
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void freshRunOfEachTypeStandsAsAPicture_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("rightEdge");
        QTest::addColumn<int>("cursor");
        QTest::addColumn<int>("analogs");
        QTest::addColumn<bool>("exhausts");
        QTest::newRow("8") << 8 << 2442 << 160 << 4 << false;
        QTest::newRow("12") << 12 << 2442 << 160 << 4 << false;
        QTest::newRow("17") << 17 << 1725 << 160 << 8 << false;
        QTest::newRow("20") << 20 << 2049 << 160 << 6 << true;
        QTest::newRow("25") << 25 << 1214 << 80 << 8 << true;
        QTest::newRow("32") << 32 << 1361 << 160 << 8 << true;
        QTest::newRow("43") << 43 << 1361 << 160 << 8 << true;
    }

    void freshRunOfEachTypeStandsAsAPicture() {
        QFETCH(int, type);
        QFETCH(int, rightEdge);
        QFETCH(int, cursor);
        QFETCH(int, analogs);
        QFETCH(bool, exhausts);
        DataGraph& graph = open(type);
        QCOMPARE(int(state().Run.SampleCount), rightEdge - 1);
        QCOMPARE(trend().surface().scaleWidth(), static_cast<float>(rightEdge));
        QCOMPARE(int(graph.view().CursorSample), cursor);
        QVERIFY(graph.hasRun());
        QVERIFY(graph.windowTitle().contains(QLatin1String("Second round")));
        QVERIFY(menuEnabled("Mnu_Scale"));
        QVERIFY(kept().size() > 40);
        QCOMPARE(trend().surface().upper().size(), 1U); // the time line
        QCOMPARE(part<ChannelToggle>("Text_Analog(1)").caption().trimmed(), QStringLiteral("Oil"));
        for (int n = 1; n <= 8; ++n) {
            const QByteArray toggle = "Text_Analog(" + QByteArray::number(n) + ")";
            QCOMPARE(part<QWidget>(toggle).isVisible(), n <= analogs);
            const QByteArray value = "Analog(" + QByteArray::number(n) + ")";
            QCOMPARE(!part<QLabel>(value).text().isEmpty(), n <= analogs);
            const QByteArray exhaust = "Label9(" + QByteArray::number(n) + ")";
            QCOMPARE(part<QWidget>(exhaust).isVisible(), exhausts);
        }
        QCOMPARE(part<QWidget>("Label15").isVisible(), exhausts);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 0.00 sec"));
        const core::RunSample& row = state().Run.image.samples[cursor];
        QCOMPARE(text("Rpm"), QString::number(row.EngineRpm));
        QCOMPARE(text("InputRpm"), QString::number(row.InputRpm));
        QCOMPARE(text("OutPutRpm"), QString::number(row.OutputRpm));
    }

    void carHasNoClutch() {
        testing::storeModelRun(state(), files(), 25);
        state().Config.Vehicle_Type = 1;
        openFresh();
        for (const char* name : {"Label10(1)", "Clutch", "OverlayClutch"})
            QVERIFY(!part<QWidget>(name).isVisible());
        unload<DataGraph>();
        testing::storeModelRun(state(), files(), 25);
        state().Config.Vehicle_Type = 2;
        openFresh();
        QVERIFY(part<QWidget>("Label10(1)").isVisible());
    }

    void windowWithoutARun() {
        state().Config = testing::graphConfig(32);
        state().AppFolder = "/kvo";
        DataGraph& graph = openByChooser(cancelling());
        QCOMPARE(graph.caption(), std::string("Data Graph"));
        QVERIFY(!graph.hasRun());
        QVERIFY(!menuEnabled("Mnu_Scale"));
        QCOMPARE(trend().surface().scale(), (platform::UserScale{0, 1100, 1361, 0}));
        QVERIFY(!part<QToolButton>("ZoomIn").isEnabled());
        QVERIFY(kept().empty());
        QTest::keyClick(&trend(), Qt::Key_Right);
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, {300, 200});
        QTest::mouseMove(&trend(), {310, 220});
        QCOMPARE(int(graph.view().CursorSample), 0);
        QCOMPARE(dialogs().beeps(), 0);
        QVERIFY(kept().empty());
    }

    void missingFileLeavesAWindowWithoutARun() {
        state().Config = testing::graphConfig(32);
        state().Run.path = "/kvo/Data/24060512.31d";
        dialogs().expectBox("File no Found                  \n/kvo/Data/24060512.31d", 416, "Kvo");
        DataGraph& graph = openFresh();
        QVERIFY(!graph.hasRun());
        QCOMPARE(int(state().Run.SampleCount), 0);
    }

    void captionsAsTheWindowOpens() {
        open(32);
        QCOMPARE(command("Mnu_Overlay").text(), QStringLiteral("&Overlay Data File"));
        QCOMPARE(part<QToolButton>("OverlayData").text(), QStringLiteral("Overlay"));
        QCOMPARE(text("Label15"), QStringLiteral("Exhaust Temps Deg C"));
        QCOMPARE(command("GraphChange(0)").text(), QStringLiteral("<<<<"));
        QCOMPARE(command("GraphChange(1)").text(), QStringLiteral(">>>>"));
    }

    // The heading names the unit of the values below it, whatever number the file holds.
    void exhaustsAreNamedByTheirUnit_data() {
        QTest::addColumn<int>("flag");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<int>("degrees");
        QTest::newRow("C") << 0 << QStringLiteral("Exhaust Temps Deg C") << 400;
        QTest::newRow("F") << -1 << QStringLiteral("Exhaust Temps Deg F") << 752;
        QTest::newRow("neither") << 1 << QStringLiteral("Exhaust Temps Deg C") << 400;
    }

    void exhaustsAreNamedByTheirUnit() {
        QFETCH(int, flag);
        QFETCH(QString, heading);
        QFETCH(int, degrees);
        testing::storeModelRun(state(), files(), 32);
        state().Config.Exhaust = static_cast<std::int16_t>(flag);
        state().Run.image.samples[160].Exhaust[1] = 100;
        QVERIFY(core::SaveRun(state().Run, "/kvo", files()));
        openFresh();
        QCOMPARE(text("Label15"), heading);
        QCOMPARE(text("Exhaust(1)").toInt(), degrees);
    }

    void timesOfTheRunStandInTheirBoxes() {
        testing::storeModelRun(state(), files(), 25);
        core::RunInfo info;
        info.Text_60FootTime = "1.05";
        info.Text_330FootTime = "3.01";
        info.Text_660FootTime = "4.66";
        info.Text_660FootSpeed = "148.2";
        info.Text_1000FootTime = "6.11";
        info.Text_ET = "7.31";
        QVERIFY(core::SaveRunInfo(state().AppFolder, core::infoFilePath(state().Run.path),
            state().Run.path, info, files())
                    .done);
        openFresh();
        QCOMPARE(text("Text_60FootTime"), QStringLiteral("1.05"));
        QCOMPARE(text("Text_330FootTime"), QStringLiteral("3.01"));
        QCOMPARE(text("Text_660FootTime"), QStringLiteral("4.66"));
        QCOMPARE(text("Text_660FootSpeed"), QStringLiteral("148.2"));
        QCOMPARE(text("Text_1000FootTime"), QStringLiteral("6.11"));
        QCOMPARE(text("Text_ET"), QStringLiteral("7.31"));
    }

    // The info file of a run without one is made by merely viewing it.
    void viewingARunMakesItsInfoFile() {
        open(32);
        QVERIFY(files().exists(core::infoFilePath(state().Run.path)));
        QCOMPARE(text("Text_ET"), QString());
    }

    void closeSavesWhatWasChanged() {
        DataGraph& graph = open(32);
        press("Label10(0)");
        graph.close();
        QVERIFY(!isLoaded<DataGraph>());
        QCOMPARE(int(state().Run.SampleCount), 0);
        core::AppConfig saved;
        const auto file = files().read("/kvo/Kvo.Cfg");
        QVERIFY(file.has_value());
        QVERIFY(core::decodeConfig(*file, saved));
        QCOMPARE(int(saved.EngineVisible), 0);
    }

    void closeTellsWhatCouldNotBeSaved() {
        DataGraph& graph = open(32);
        press("Label10(0)");
        files().put("/kvo/Kvo.Cfg", {1});
        files().failWrites("/kvo/Kvo.Cfg", testing::MemoryFiles::Failure::fullDisk);
        dialogs().expectBox(
            "/kvo/Kvo.Cfg: No space left on device", platform::boxStyle::critical, "Kvo");
        graph.close();
        QVERIFY(!isLoaded<DataGraph>());
    }

    void closeIsSilentAboutAReadOnlyConfiguration() {
        DataGraph& graph = open(32);
        press("Label10(0)");
        files().put("/kvo/Kvo.Cfg", {1});
        files().failWrites("/kvo/Kvo.Cfg", testing::MemoryFiles::Failure::readOnly);
        graph.close();
        QVERIFY(!files().folderExists("/kvo/Backup"));
        QCOMPARE(files().read("/kvo/Kvo.Cfg"), platform::Bytes({1}));
    }

    void closeWithoutChangesSavesNothing() {
        DataGraph& graph = open(32);
        graph.close();
        QVERIFY(!files().exists("/kvo/Kvo.Cfg"));
        QCOMPARE(int(state().Run.SampleCount), 0);
    }

    void everythingIsReachedByTab() {
        DataGraph& graph = open(43);
        trend().setFocus();
        QSet<QWidget*> reached;
        for (int i = 0; i < 80; ++i) {
            reached.insert(graph.focusWidget());
            QTest::keyClick(graph.focusWidget(), Qt::Key_Tab);
        }
        for (QWidget* toggle : graph.findChildren<ChannelToggle*>())
            QVERIFY2(
                !toggle->isVisible() || reached.contains(toggle), qPrintable(toggle->objectName()));
        QVERIFY(reached.contains(&trend()));
        QVERIFY(reached.contains(&part<QWidget>("ZoomIn")));
    }

    void hostileRunsEndQuietly() {
        testing::storeModelRun(state(), files(), 25);
        state().Run.image.header.BasketGearTeeth = 0;
        state().Run.image.analog.CrownTeeth = 0;
        state().Run.image.analog.PinionTeeth = 0;
        for (int n = 1; n <= 8; ++n) {
            state().Run.image.analog.AnalogScale[n] = 3.4e38F;
            state().Run.image.analog.AnalogOffset[n] = -3.4e38F;
        }
        state().Config.Text_Magnify.fill(255);
        QVERIFY(core::SaveRun(state().Run, "/kvo", files()));
        openFresh();
        QTest::mouseMove(&trend(), place(600, 200));
        for (int i = 0; i < 20; ++i) QTest::keyClick(&trend(), Qt::Key_Right, Qt::ControlModifier);
        QVERIFY(!text("Rpm").isEmpty());
    }

    void rowsOfZerosAndNumbersThatAreNone() {
        testing::storeModelRun(state(), files(), 25);
        for (core::RunSample& row : state().Run.image.samples) row = {};
        const float none = std::numeric_limits<float>::quiet_NaN();
        state().Run.image.analog.CrownTeeth = 0;
        state().Run.image.analog.PinionTeeth = 10;
        state().Run.image.analog.RearWheelDiameter = none;
        state().Run.image.analog.AnalogScale.fill(none);
        state().Run.image.setup.GearRatio.fill(none);
        state().Config.Text_Magnify.fill(255);
        QVERIFY(core::SaveRun(state().Run, "/kvo", files()));
        openFresh();
        for (const float y : {1.0F, 3.0F, 200.0F, 1090.0F})
            QTest::mouseMove(&trend(), place(600, y));
        QTest::mousePress(&trend(), Qt::RightButton, {}, place(100, 700));
        QTest::mouseRelease(&trend(), Qt::RightButton, {}, place(900, 400));
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(600, 500));
        QCOMPARE(text("Rpm"), QStringLiteral("0"));
        QCOMPARE(text("Ratio"), QString());
        QCOMPARE(text("Slip"), QString());
        QCOMPARE(text("Tyre_Growth"), QStringLiteral("N/A"));
        state().Run.image.tail.GearCount = 1;
        dialogs().expectBoxTitled("Info", platform::Reply::yes);
        dialogs().expectBoxTitled("Info", platform::Reply::yes);
        command("Mnu_RedoClutch").trigger();
        QVERIFY(!dialogs().hourglass());
    }

    // Rows that are not in the file are rows of zeros, also behind the last that the type has.
    void shortFileShowsWhatItHolds() {
        testing::storeModelRun(state(), files(), 32);
        auto bytes = files().read(state().Run.path);
        QVERIFY(bytes.has_value());
        bytes->resize(84 * 300);
        files().put(state().Run.path, *bytes);
        state().Run.image = {};
        state().Run.image.header.BasketGearTeeth = 1;
        openFresh();
        QCOMPARE(int(state().Run.SampleCount), 1360);
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(1359, 500));
        QCOMPARE(text("Rpm"), QStringLiteral("0"));
        QTest::mouseMove(&trend(), place(1300, 600));
        command("Resolution(1)").trigger();
        QVERIFY(!kept().empty());
    }

    // With KVO_PICTURES naming a folder: what the window looks like with each type.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        const QPalette desktop = QApplication::palette();
        for (const bool dark : {false, true}) {
            if (dark) QApplication::setPalette(darkPalette());
            for (const int type : {8, 12, 17, 20, 25, 32, 43}) {
                for (const QSize size :
                    {QSize(960, 540), QSize(1024, 768), QSize(1366, 768), QSize(1920, 1080)}) {
                    DataGraph& graph = open(type, size);
                    QTest::mouseMove(&trend(), place(300, 1038));
                    const auto name = QStringLiteral("graph_%1_%2_%3.png")
                                          .arg(type)
                                          .arg(size.width())
                                          .arg(QLatin1String(dark ? "dark" : "light"));
                    QVERIFY(graph.saveWindowPicture(QDir(folder).filePath(name)));
                    unload<DataGraph>();
                }
            }
        }
        QApplication::setPalette(desktop);
    }
};

KVO_FORM_TEST_MAIN(DataGraphTest)
#include "data_graph_test.moc"
