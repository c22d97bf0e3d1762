// The way from the graph to the times and from a time to its run, through the program's own doors.
#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/run_index.h"
#include "core/run_times.h"
#include "library/forms/time_graph.h"
#include "library/run_list.h"
#include "mainwin/main_window.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/user_click.h"

#include <QAction>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;
using namespace kvo::testing;

class TimeGraphWiringTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    // Three runs in the index and in the times; the last label opens none.
    void storeTimedRuns() {
        for (int number = 1; number <= 3; ++number) {
            store(25, number);
            const core::TypedTimes times{
                "1.30", "3.40", "5.60", "7.10", "8.5" + std::to_string(number)};
            QVERIFY(core::updateTimesTable("/kvo", state().Run.headerLine, times, files()).done);
        }
    }
    static void clickDate(int i) {
        QVERIFY(QTest::qWaitForWindowActive(&form<TimeGraph>()));
        QCOMPARE(userClick(&control<QPushButton>(
                     form<TimeGraph>(), qPrintable(QStringLiteral("Date(%1)").arg(i)))),
            QString());
    }

private slots:
    void init() { begin(); }
    void cleanup() {
        unload<TimeGraph>();
        unload<VrnWin32>();
        QCOMPARE(end(), QString());
        QCOMPARE(modalComplaints(), QString());
    }

    void theGraphStaysBehindItsTimes_data() {
        QTest::addColumn<bool>("byMenu");
        QTest::newRow("menu") << true;
        QTest::newRow("toolbar") << false;
    }
    void theGraphStaysBehindItsTimes() {
        QFETCH(bool, byMenu);
        storeTimedRuns();
        form<VrnWin32>();
        DataGraph& graph = openByChooser(taking(2));
        byMenu ? command("Mnu_TimeGraph").trigger() : part<QToolButton>("TimeGraph").click();
        QVERIFY(form<TimeGraph>().isVisible());
        QVERIFY(graph.isVisible());
        form<TimeGraph>().close();
        QVERIFY(!isLoaded<TimeGraph>());
        QVERIFY(graph.isVisible());
        QVERIFY(!form<VrnWin32>().isVisible());
    }

    void theGraphComesOutOfTheTaskBarWhenItsTimesGo() {
        storeTimedRuns();
        DataGraph& graph = openByChooser(taking(2));
        command("Mnu_TimeGraph").trigger();
        graph.showMinimized();
        QVERIFY(graph.isMinimized());
        form<TimeGraph>().close();
        QVERIFY(!graph.isMinimized());
        QVERIFY(QTest::qWaitForWindowActive(&graph));
    }

    // The graph may go before its times do; they make none.
    void timesThatTheirGraphHasLeftGoAlone() {
        storeTimedRuns();
        form<VrnWin32>();
        DataGraph& graph = openByChooser(taking(2));
        command("Mnu_TimeGraph").trigger();
        graph.close();
        QVERIFY(!isLoaded<DataGraph>());
        form<TimeGraph>().close();
        QVERIFY(!isLoaded<TimeGraph>() && !isLoaded<DataGraph>());
        QVERIFY(form<VrnWin32>().isVisible());
    }

    void aSecondVisitGoesBackToWhereItCameFrom() {
        storeTimedRuns();
        form<VrnWin32>();
        DataGraph& graph = openByChooser(taking(2));
        command("Mnu_TimeGraph").trigger();
        form<TimeGraph>().close();
        graph.close();
        QVERIFY(form<VrnWin32>().isVisible());
        control<QAction>(form<VrnWin32>(), "Mnu_TimeGraph").trigger();
        QVERIFY(!form<VrnWin32>().isVisible());
        form<TimeGraph>().close();
        QVERIFY(form<VrnWin32>().isVisible());
    }

    void aLabelPutsItsRunIntoTheOpenGraph() {
        storeTimedRuns();
        DataGraph& graph = openByChooser(taking(3));
        command("Mnu_TimeGraph").trigger();
        clickDate(1);
        QVERIFY(!isLoaded<TimeGraph>());
        QTRY_COMPARE(state().Run.path, pathOf(1));
        QCOMPARE(&form<DataGraph>(), &graph);
        QVERIFY(graph.hasRun());
        QVERIFY(QString::fromStdString(graph.caption()).endsWith(QLatin1String("24060512.31d")));
        QCOMPARE(int(view().CursorSample), int(state().Run.image.tail.TimeOffset));
        // Forward and back go on from there.
        QCOMPARE(library::runList().chosen().FileName, core::baseName(pathOf(1)));
    }

    void aLabelOpensTheGraphInTheMainWindowsPlace() {
        storeTimedRuns();
        state().Run.SampleCount = 0;
        form<VrnWin32>().show();
        doors().showTimeGraph(false);
        clickDate(2);
        QVERIFY(form<DataGraph>().isVisible());
        QVERIFY(!form<VrnWin32>().isVisible());
        QTRY_COMPARE(state().Run.path, pathOf(2));
        QVERIFY(form<DataGraph>().hasRun());
        // It is closed as one that the chooser opened.
        form<DataGraph>().close();
        QVERIFY(form<VrnWin32>().isVisible());
    }

    void aRunThatIsNotInTheIndexIsAskedFor() {
        storeTimedRuns();
        std::vector<core::RunIndexEntry> rows =
            core::readRunIndex("/kvo/Data/KvoData.Ini", files());
        for (core::RunIndexEntry& row : rows) row.Description = "Mon 01 Jan 2024 Run: 9";
        QVERIFY(core::writeRunIndex("/kvo", rows, files()).done);
        DataGraph& graph = openByChooser(cancelling());
        QVERIFY(!graph.hasRun());
        command("Mnu_TimeGraph").trigger();
        bool asked = false;
        onModal([&asked](QWidget* chooser) {
            asked = true;
            pressIn(chooser, "BTN_Cancel");
        });
        clickDate(1);
        QTRY_VERIFY(asked);
        QVERIFY(!graph.hasRun());
    }
};

KVO_FORM_TEST_MAIN(TimeGraphWiringTest)
#include "time_graph_wiring_test.moc"
