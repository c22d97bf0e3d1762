// How runs come into the graph window and go: the chooser, its list, deletes, overlays, and the
// tools that rewrite a run.
#include "core/basic/numbers.h"
#include "core/config.h"
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

#include <algorithm>
#include <limits>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class DataGraphRunTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    // A key that was typed ahead may open the same chooser before the window asks for its run.
    void aCommandThatWasQuickerThanTheChooserGoesFirst() {
        store(32, 1);
        QStringList titles;
        const auto cancel = [&titles](QWidget* chooser) {
            titles << chooser->windowTitle();
            pressIn(chooser, "BTN_Cancel");
        };
        testing::onModal(cancel);
        testing::onModal(cancel);
        auto& graph = form<DataGraph>();
        graph.show();
        command("Mnu_DeleteRun").trigger();
        QTRY_COMPARE(
            titles, (QStringList{QStringLiteral("Delete File"), QStringLiteral("Load Data File")}));
    }

    void chooserOpensARunAndTheKeysGoThroughItsList() {
        for (const int number : {1, 2, 3}) listModelRun(state(), files(), 32, number);
        DataGraph& graph = openByChooser([](QWidget* chooser) {
            QCOMPARE(chooser->windowTitle(), QStringLiteral("Load Data File"));
            chooseRow(chooser, 0);
            pressIn(chooser, "BTN_Ok");
        });
        QVERIFY(graph.hasRun());
        QCOMPARE(QString::fromStdString(state().Run.path).right(4), QStringLiteral(".33d"));
        QVERIFY(graph.caption().starts_with("Data File: "));
        QCOMPARE(int(state().Run.SampleCount), 1360);
        QCOMPARE(int(graph.view().CursorSample), 160);
        QVERIFY(!part<QToolButton>("PreviousData").isEnabled());
        QVERIFY(part<QToolButton>("NextData").isEnabled());
        QVERIFY(part<QToolButton>("ZoomIn").isEnabled());
        press("NextData");
        QCOMPARE(QString::fromStdString(state().Run.path).right(4), QStringLiteral(".32d"));
        QVERIFY(part<QToolButton>("PreviousData").isEnabled());
        command("GraphChange(1)").trigger();
        QCOMPARE(QString::fromStdString(state().Run.path).right(4), QStringLiteral(".31d"));
        QVERIFY(!part<QToolButton>("NextData").isEnabled());
        const std::uint32_t generation = kept().generation();
        graph.commands().GraphChange_Click(1); // at the end nothing at all happens
        QCOMPARE(kept().generation(), generation);
        graph.commands().GraphChange_Click(0);
        QCOMPARE(QString::fromStdString(state().Run.path).right(4), QStringLiteral(".32d"));
    }

    void cancelInTheChooserKeepsTheRun() {
        DataGraph& graph = open(32);
        const std::string caption = graph.caption();
        testing::onModal(cancelling());
        command("Mnu_LoadData").trigger();
        QCOMPARE(graph.caption(), caption);
        QVERIFY(!kept().empty());
    }

    // A row without a description is no choice; what is written next must not go to its file.
    void rowWithoutADescriptionLeavesTheRunItsFile() {
        for (const int number : {1, 2}) listModelRun(state(), files(), 32, number);
        auto rows = core::readRunIndex("/kvo/Data/KvoData.Ini", files());
        rows[1].Description.clear();
        QVERIFY(core::writeRunIndex("/kvo", rows, files()));
        DataGraph& graph = openByChooser(takingRow(0));
        const std::string shown = state().Run.path;
        const auto other = files().read("/kvo/Data/" + rows[1].FileName);
        testing::onModal(takingRow(1));
        command("Mnu_LoadData").trigger();
        QVERIFY(graph.hasRun());
        QCOMPARE(state().Run.path, shown);
        QCOMPARE(state().Run.infoPath.back(), 'i');
        dialogs().expectBoxTitled("Info", platform::Reply::yes);
        dialogs().expectInputTitled("Graph Time Offset", "100");
        command("Mnu_TimeOffset").trigger();
        QVERIFY(files().read("/kvo/Data/" + rows[1].FileName) == other);
        // The chooser's list now stands on its last row.
        QVERIFY(part<QToolButton>("PreviousData").isEnabled());
        QVERIFY(!part<QToolButton>("NextData").isEnabled());
    }

    // Renaming a run reads its header line; what is written next must not go out under it.
    void renamingAnotherRunLeavesTheOneInTheWindowItsHeader() {
        listModelRun(state(), files(), 32, 1);
        listModelRun(state(), files(), 25, 2);
        const auto rename = [this](int at, const char* title) {
            dialogs().expectInputTitled("Edit File Description", title);
            testing::onModal([at](QWidget* chooser) {
                chooseRow(chooser, at);
                QTest::keyClick(&control<QWidget>(*chooser, "Files_List"), Qt::Key_F2);
                pressIn(chooser, "BTN_Cancel");
            });
            command("Mnu_LoadData").trigger();
        };
        openByChooser(takingRow(1));
        const std::string file = state().Run.path;
        QCOMPARE(int(state().Run.DataType), 32);
        rename(0, "7 Another");
        dialogs().expectBoxTitled("Info", platform::Reply::yes);
        dialogs().expectInputTitled("Graph Time Offset", "100");
        command("Mnu_TimeOffset").trigger();
        const core::OpenRun again = loaded(file);
        QCOMPARE(int(again.DataType), 32);
        // Its own new name it keeps.
        rename(1, "8 Its own");
        QVERIFY(state().Run.headerLine.find("8 Its own") != std::string::npos);
        rename(0, "9 Another");
        QVERIFY(state().Run.headerLine.find("8 Its own") != std::string::npos);
    }

    void neighboursFollowTheListAlsoBehindACancel() {
        for (const int number : {1, 2, 3}) listModelRun(state(), files(), 32, number);
        openByChooser(takingRow(0));
        QVERIFY(!part<QToolButton>("PreviousData").isEnabled());
        testing::onModal([](QWidget* chooser) {
            chooseRow(chooser, 2);
            pressIn(chooser, "BTN_Cancel");
        });
        command("Mnu_LoadData").trigger();
        QVERIFY(part<QToolButton>("PreviousData").isEnabled());
        QVERIFY(!part<QToolButton>("NextData").isEnabled());
        press("PreviousData");
        QCOMPARE(QString::fromStdString(state().Run.path).right(4), QStringLiteral(".32d"));
    }

    // Not even the overlay goes.
    void nothingHappensAtTheEndsOfTheList() {
        for (const int number : {1, 2}) listModelRun(state(), files(), 32, number);
        DataGraph& graph = openByChooser(takingRow(0));
        testing::onModal(takingRow(1));
        command("Mnu_Overlay").trigger();
        const std::string caption = graph.caption();
        const std::string shown = state().Run.path;
        const std::uint32_t drawnOnce = kept().generation();
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(500, 500));
        const int cursor = graph.view().CursorSample;
        graph.activateWindow(); // off-screen nothing gives the focus back behind the chooser
        QVERIFY(QTest::qWaitForWindowActive(&graph));
        for (int press = 0; press < 2; ++press) {
            graph.commands().GraphChange_Click(1);
            QTest::keyClick(&trend(), Qt::Key_PageDown, Qt::ControlModifier);
        }
        QCOMPARE(graph.caption(), caption);
        QCOMPARE(state().Run.path, shown);
        QCOMPARE(int(form<DataGraph>().view().OverlayLoaded), -1);
        QCOMPARE(int(graph.view().CursorSample), cursor);
        QCOMPARE(kept().generation(), drawnOnce);
        // One back is the run itself, alone.
        QTest::keyClick(&trend(), Qt::Key_PageUp, Qt::ControlModifier);
        QCOMPARE(int(form<DataGraph>().view().OverlayLoaded), 0);
        QCOMPARE(state().Run.path, shown);
        QVERIFY(graph.caption().find("Overlay") == std::string::npos);
        QVERIFY(!part<QToolButton>("PreviousData").isEnabled());
        const std::uint32_t drawn = kept().generation();
        graph.commands().GraphChange_Click(0);
        QTest::keyClick(&trend(), Qt::Key_PageUp, Qt::ControlModifier);
        QCOMPARE(kept().generation(), drawn);
        QCOMPARE(state().Run.path, shown);
    }

    void deletingTheRunInTheWindowClearsIt() {
        for (const int number : {1, 2, 3}) listModelRun(state(), files(), 32, number);
        DataGraph& graph = openByChooser(takingRow(1));
        const std::string shown = state().Run.path;
        const auto deleteRow = [&](int row) {
            dialogs().expectBoxTitled("Warning", platform::Reply::yes);
            testing::onModal([row](QWidget* chooser) {
                QCOMPARE(chooser->windowTitle(), QStringLiteral("Delete File"));
                chooseRow(chooser, row);
                pressIn(chooser, "BTN_Ok");
                pressIn(chooser, "BTN_Cancel");
            });
            command("Mnu_DeleteRun").trigger();
        };
        deleteRow(2);
        QVERIFY(graph.hasRun());
        QCOMPARE(state().Run.path, shown);
        deleteRow(1);
        QVERIFY(!files().exists(shown));
        QCOMPARE(graph.caption(), std::string("Data Graph"));
        QVERIFY(kept().empty());
        QVERIFY(text("Rpm").isEmpty());
        QVERIFY(!part<QToolButton>("ZoomIn").isEnabled());
    }

    void overlayLiesOnTheRunAndGoesAgain() {
        for (const int number : {1, 2}) listModelRun(state(), files(), 32, number);
        DataGraph& graph = openByChooser(takingRow(0));
        const std::string shown = state().Run.path;
        const std::string caption = graph.caption();
        const std::size_t alone = kept().size();
        testing::onModal([](QWidget* chooser) {
            QCOMPARE(chooser->windowTitle(), QStringLiteral("Load Overlay File"));
            chooseRow(chooser, 1);
            pressIn(chooser, "BTN_Ok");
        });
        command("Mnu_Overlay").trigger();
        QCOMPARE(int(form<DataGraph>().view().OverlayLoaded), -1);
        QVERIFY(kept().size() > alone);
        QCOMPARE(state().Run.path, shown);
        QVERIFY(graph.caption().find("Overlay File:") != std::string::npos);
        QCOMPARE(command("Mnu_Overlay").text(), QStringLiteral("Unload Overlay"));
        QCOMPARE(part<QToolButton>("OverlayData").text(), QStringLiteral("Unload"));
        QVERIFY(!command("Mnu_RedoClutch").isEnabled());
        QVERIFY(part<QLabel>("OverlayRpm").isVisible());
        QVERIFY(!part<QLabel>("OverlayRpm").text().isEmpty());
        QVERIFY(part<QLabel>("Rpm").geometry().right() < part<QLabel>("OverlayRpm").x());
        QVERIFY(!part<QWidget>("Text_ET").isVisible());
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        QCoreApplication::processEvents();
        if (!folder.isEmpty())
            QVERIFY(graph.saveWindowPicture(QDir(folder).filePath(QStringLiteral("overlay.png"))));
        command("Mnu_Overlay").trigger();
        QCOMPARE(int(form<DataGraph>().view().OverlayLoaded), 0);
        QCOMPARE(kept().size(), alone);
        QCOMPARE(graph.caption(), caption);
        QCOMPARE(command("Mnu_Overlay").text(), QStringLiteral("Overlay Data File"));
        QVERIFY(command("Mnu_RedoClutch").isEnabled());
        QVERIFY(part<QWidget>("Text_ET").isVisible());
    }

    void overlayOfAnotherTypeIsAskedFor() {
        listModelRun(state(), files(), 32, 1);
        listModelRun(state(), files(), 25, 2);
        state().Run.image.setup.AnalogName[1] = "Other   ";
        QVERIFY(core::SaveRun(state().Run, "/kvo", files()));
        DataGraph& graph = openByChooser(takingRow(1));
        const std::string caption = graph.caption();
        dialogs().expectBox("The Overlay File is a Different Data Type.\r\n\r\n"
                            "             Do you wont to Continue",
            platform::boxStyle::yesNo, "Overlay", platform::Reply::no);
        testing::onModal(takingRow(0));
        command("Mnu_Overlay").trigger();
        QCOMPARE(int(form<DataGraph>().view().OverlayLoaded), 0);
        QCOMPARE(graph.caption(), caption);
        QVERIFY(command("Mnu_TimeOffset").isEnabled());
        QCOMPARE(part<ChannelToggle>("Text_Analog(1)").caption().trimmed(), QStringLiteral("Oil"));
    }

    void timeZeroIsMovedAndWritten() {
        DataGraph& graph = open(32);
        const std::string file = state().Run.path;
        dialogs().expectBoxTitled("Info", platform::Reply::yes);
        dialogs().expectInputTitled("Graph Time Offset", "100");
        command("Mnu_TimeOffset").trigger();
        QCOMPARE(int(state().Run.image.tail.TimeOffset), 260);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: -1.00 sec"));
        const core::OpenRun again = loaded(file);
        QCOMPARE(int(again.image.tail.TimeOffset), 260);
        QVERIFY(graph.hasRun());
    }

    // A fresh run of this type shows fewer samples than its file has rows; they stay, and so does
    // what lies behind them.
    void longestRunKeepsItsLastRows() {
        open(12);
        QCOMPARE(int(state().Run.SampleCount), 2441);
        const std::string file = state().Run.path;
        const auto before = files().read(file);
        state().Run.image.analog.RearWheelDiameter = 31.5F;
        dialogs().expectBoxTitled("Info", platform::Reply::yes);
        dialogs().expectInputTitled("Graph Time Offset", "100");
        command("Mnu_TimeOffset").trigger();
        QCOMPARE(int(state().Run.SampleCount), 2441);
        const core::OpenRun again = loaded(file);
        QCOMPARE(int(again.image.tail.TimeOffset), 260);
        QCOMPARE(again.image.analog.RearWheelDiameter, 31.5F);
        QCOMPARE(files().read(file)->size(), before->size());
        for (int i = 2430; i <= 2520; ++i)
            QVERIFY(again.image.samples[i] == state().Run.image.samples[i]);
    }

    void clutchIsDerivedAnew() {
        open(25);
        state().Run.image.tail.GearCount = 1;
        state().Run.image.setup.GearRatio[1] = 2;
        dialogs().expectBoxTitled("Info", platform::Reply::yes);
        dialogs().expectBoxTitled("Info", platform::Reply::yes);
        command("Mnu_RedoClutch").trigger();
        const core::RunSample& row = state().Run.image.samples[400];
        QCOMPARE(int(row.InputRpm), 2 * row.OutputRpm);
    }

    // Back and forward go on from the choice in the list, which an overlay has moved.
    void theKeysGoOnFromTheChoiceOfTheOverlay() {
        for (const int number : {1, 2, 3, 4}) store(32, number);
        openByChooser(taking(1));
        overlay(3);
        const auto& rows = library::runList().rows();
        const auto chosen = std::find_if(rows.begin(), rows.end(),
            [](const auto& row) { return row.FileName.find("33d") != std::string::npos; });
        QVERIFY(chosen != rows.end() && chosen != rows.begin() && chosen + 1 != rows.end());
        const auto nameOf = [](const core::RunIndexEntry& row) {
            return "/kvo/Data/" + core::rightTrimmed(row.FileName);
        };
        press("NextData");
        QCOMPARE(state().Run.path, nameOf(*(chosen + 1)));
        QCOMPARE(int(view().OverlayLoaded), 0);
        press("PreviousData");
        QCOMPARE(state().Run.path, nameOf(*chosen));
        press("PreviousData");
        QCOMPARE(state().Run.path, nameOf(*(chosen - 1)));
    }
};

KVO_FORM_TEST_MAIN(DataGraphRunTest)
#include "data_graph_run_test.moc"
