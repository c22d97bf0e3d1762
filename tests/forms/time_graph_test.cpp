// TimeGraph: its labels and marks, the line by mouse and by keys, scrolling, printing, the way to a
// run and the way back.
#include "core/forms/doors.h"
#include "core/run_index.h"
#include "core/run_times.h"
#include "library/forms/time_graph.h"
#include "library/run_list.h"
#include "platform/qt/surface_widget.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTextDocument>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::TimeGraph;

class TimeGraphTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;
    int m_mainShown = 0;
    int m_mainHidden = 0;
    int m_graphRaised = 0;
    std::vector<std::optional<core::ChosenRun>> m_opened;

    static SurfaceWidget& graph() { return control<SurfaceWidget>(form<TimeGraph>(), "Graph"); }
    static QPushButton& date(int i) {
        return control<QPushButton>(
            form<TimeGraph>(), qPrintable(QStringLiteral("Date(%1)").arg(i)));
    }
    static QScrollBar& scroll() { return control<QScrollBar>(form<TimeGraph>(), "HScroll1"); }
    static QString label(const char* name) {
        return control<QLabel>(form<TimeGraph>(), name).text();
    }
    static void click(QWidget& widget) { QCOMPARE(userClick(&widget), QString()); }
    static int shownDates() {
        int count = 0;
        for (int i = 1; i <= 25; ++i) count += date(i).isVisible() ? 1 : 0;
        return count;
    }
    // A pixel of Graph, from hundredths of a second and rows.
    static QPoint place(double time, double row) {
        return {qRound(graph().width() * time / 1900), qRound(graph().height() * row / 31)};
    }
    void key(Qt::Key one, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&graph(), one, modifiers);
    }
    void putRun(int number, const core::TypedTimes& times) {
        const std::string text = "Sun 15 Nov 2026 Run: " + std::to_string(number) + " Final & more";
        QVERIFY(core::updateTimesTable("/kvo",
            "25 VRN23 Ver 1.3 128k Serial No 7  Date:" + text + "#", times, m_program->files)
                    .done);
    }
    void putRuns(int count) {
        for (int i = 1; i <= count; ++i)
            putRun(i, {"1.34", "4.09", "6.56", "", std::to_string(8 + i * 0.25)});
    }
    void putIndex(const std::vector<core::RunIndexEntry>& rows) {
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
    }
    void show(bool fromGraph = false, QSize size = {1366, 768}) {
        form<TimeGraph>().resize(size);
        form<TimeGraph>().showTable(fromGraph);
        QVERIFY(QTest::qWaitForWindowActive(&form<TimeGraph>()));
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_program->state.AppFolder = "/kvo";
        m_mainShown = m_mainHidden = m_graphRaised = 0;
        m_opened.clear();
        forms::Doors& doors = forms::doors();
        doors.showMainWindow = [this] { ++m_mainShown; };
        doors.hideMainWindow = [this] { ++m_mainHidden; };
        doors.raiseGraph = [this] {
            QVERIFY(!isLoaded<TimeGraph>());
            ++m_graphRaised;
        };
        doors.showChosenRun = [this](const auto& run) {
            QVERIFY(!isLoaded<TimeGraph>());
            m_opened.push_back(run);
        };
    }
    void cleanup() {
        unload<TimeGraph>();
        const std::string problems = m_program->dialogs.problems();
        QVERIFY2(problems.empty(), problems.c_str());
        m_program.reset();
        QCOMPARE(modalComplaints(), QString());
    }

    void tellsOfTimesThatCannotBeReadNow() {
        m_program->files.put("/kvo/KvoTimes", {1});
        m_program->files.failReads("/kvo/KvoTimes", MemoryFiles::Failure::diskError);
        m_program->dialogs.expectBoxTitled("Kvo");
        form<TimeGraph>().showTable(false);
        QCOMPARE(m_program->files.writes(), 0);
    }

    void anEmptyTableHasNoLabels() {
        show();
        QCOMPARE(shownDates(), 0);
        QCOMPARE(label("Time_Label"), QStringLiteral("0.00"));
        QVERIFY(m_program->files.exists("/kvo/KvoTimes"));
    }

    void aRunHasItsLabelBesideItsMarks() {
        putRuns(2);
        show();
        QCOMPARE(shownDates(), 2);
        QCOMPARE(date(1).text(), QStringLiteral("15 Nov 2026 Run: 1 Final &&"));
        QCOMPARE(date(1).toolTip(),
            QStringLiteral("60 Time:1.34         330 Time:4.09          660 Time:6.56          "
                           "1000 Time:0           ET:8.25"));
        // Four marks: no 1000 foot time was taken.
        const QImage picture = graph().picture({1900, 310});
        QCOMPARE(picture.pixel(134, 15), 0xFFFF00FFU);
        QCOMPARE(picture.pixel(409, 15), 0xFF00FF00U);
        QCOMPARE(picture.pixel(656, 15), 0xFFFF0000U);
        QCOMPARE(picture.pixel(825, 15), 0xFF0000FFU);
        QCOMPARE(picture.pixel(850, 25), 0xFF0000FFU);
        for (int x = 0; x < 1900; ++x) QVERIFY(picture.pixel(x, 15) != 0xFF00FFFFU);
    }

    void aFullTableUsesEveryLabel() {
        putRuns(30);
        show(false, {1024, 768});
        QCOMPARE(shownDates(), 25);
        for (int i = 1; i <= 25; ++i) {
            const QFontMetrics metrics(date(i).font());
            QVERIFY(date(i).height() >= metrics.ascent() + metrics.descent());
            QVERIFY(i == 1 || date(i).y() >= date(i - 1).y() + date(i - 1).height());
        }
        // Each stands beside its row, with the scroll bar and without it.
        for (const QSize size : {QSize(1024, 768), QSize(1366, 768), QSize(960, 540)}) {
            form<TimeGraph>().resize(size);
            QCoreApplication::processEvents();
            for (const int i : {1, 13, 25}) {
                const QPoint middle =
                    date(i).mapTo(&form<TimeGraph>(), QPoint(0, date(i).height() / 2));
                const QPoint row = graph().mapTo(&form<TimeGraph>(), place(0, i + 0.5));
                QVERIFY2(qAbs(middle.y() - row.y()) <= 2, qPrintable(date(i).objectName()));
            }
        }
    }

    void theLegendNamesEachTime() {
        show();
        QStringList names;
        for (const QLabel* one : form<TimeGraph>().findChildren<QLabel*>())
            if (one->objectName().isEmpty() && !one->text().isEmpty()) names << one->text();
        QCOMPARE(names, QStringList({"60 foot", "330 foot", "660 foot", "1000 foot", "ET"}));
    }

    void keysMoveTheLine() {
        show();
        QVERIFY(graph().hasFocus());
        key(Qt::Key_Right);
        QCOMPARE(label("Time_Label"), QStringLiteral("0.01"));
        key(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(label("Time_Label"), QStringLiteral("0.11"));
        key(Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(label("Time_Label"), QStringLiteral("0.61"));
        key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(label("Time_Label"), QStringLiteral("1.61"));
        key(Qt::Key_Left, Qt::ShiftModifier);
        key(Qt::Key_Left);
        QCOMPARE(label("Time_Label"), QStringLiteral("0.60"));
        QCOMPARE(graph().surface().upper().size(), std::size_t(1));
        QCOMPARE(m_program->dialogs.beeps(), 0);
    }

    void aKeyThatWouldLeaveTheAxisBeeps() {
        show();
        key(Qt::Key_Left);
        QCOMPARE(m_program->dialogs.beeps(), 1);
        QCOMPARE(label("Time_Label"), QStringLiteral("0.00"));
        for (int i = 0; i < 19; ++i) key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(label("Time_Label"), QStringLiteral("19.00"));
        QCOMPARE(m_program->dialogs.beeps(), 1);
        key(Qt::Key_Right);
        QCOMPARE(m_program->dialogs.beeps(), 2);
        QCOMPARE(label("Time_Label"), QStringLiteral("19.00"));
    }

    void aClickPutsTheLineThereAndTheMarkSaysItsValue() {
        putRuns(2);
        show();
        QCOMPARE(userClick(&graph(), place(825, 5)), QString());
        const double time = label("Time_Label").toDouble();
        QVERIFY(qAbs(time - 8.25) < 0.02);
        QVERIFY2(label("Label7").contains(QStringLiteral("ET 8.25: 15 Nov 2026 Run: 1 Final &")),
            qPrintable(label("Label7")));
        QCOMPARE(userClick(&graph(), place(1000, 5)), QString());
        QCOMPARE(label("Label7"), QString());
    }

    void theMarkUnderThePointerHasATip() {
        putRuns(2);
        show();
        QTest::mouseMove(&graph(), place(656, 2.5));
        QCOMPARE(graph().toolTip(), QStringLiteral("660 foot 6.56: 15 Nov 2026 Run: 2 Final &"));
        QTest::mouseMove(&graph(), place(700, 2.5));
        QCOMPARE(graph().toolTip(), QString());
    }

    void aNarrowWindowScrolls() {
        putRuns(3);
        show(false, {1024, 768});
        QVERIFY(scroll().isVisible());
        QCOMPARE(scroll().singleStep(), form<TimeGraph>().width() / 5);
        const int hidden = graph().width() - graph().parentWidget()->width();
        QCOMPARE(scroll().maximum(), hidden);
        scroll().setValue(hidden);
        QCOMPARE(graph().x(), -hidden);
        // The line by the keys stays in view.
        key(Qt::Key_Right);
        QCOMPARE(scroll().value(), 1 * graph().width() / 1900);
        for (int i = 0; i < 18; ++i) key(Qt::Key_Right, Qt::ShiftModifier);
        QVERIFY(graph().x() + place(1801, 0).x() < graph().parentWidget()->width());
        form<TimeGraph>().resize(1900, 800);
        QVERIFY(!scroll().isVisible());
        QCOMPARE(graph().x(), 0);
        QCOMPARE(graph().width(), graph().parentWidget()->width());
    }

    void aLabelOpensItsRun() {
        putRuns(3);
        putIndex({{"26111514.52d", "Sun 15 Nov 2026 Run: 1 Final & more"},
            {"26111515.10d", "Sun 15 Nov 2026 Run: 2 Final & more"}});
        show();
        click(date(2));
        QCOMPARE(m_opened.size(), std::size_t(1));
        QVERIFY(m_opened[0].has_value());
        QCOMPARE(m_opened[0]->path, std::string("/kvo/Data/26111515.10d"));
        QCOMPARE(m_mainHidden, 1);
        QCOMPARE(library::runList().chosenRow(), 1);
    }

    void aLabelWithoutItsRunOpensTheChooser() {
        putRuns(3);
        putIndex({{"26111514.52d", "Sun 15 Nov 2026 Run: 9"}});
        show();
        date(1).setFocus();
        QTest::keyClick(&date(1), Qt::Key_Space);
        QCOMPARE(m_opened.size(), std::size_t(1));
        QVERIFY(!m_opened[0].has_value());
    }

    void theLastLabelOpensNothing() {
        putRuns(2);
        show();
        click(date(2));
        QVERIFY(isLoaded<TimeGraph>());
        QVERIFY(m_opened.empty());
        QCOMPARE(m_program->dialogs.beeps(), 1);
    }

    void closingShowsTheMainWindowAgainUnlessTheGraphIsThere() {
        show();
        click(control<QPushButton>(form<TimeGraph>(), "BUT_Close"));
        QVERIFY(!isLoaded<TimeGraph>());
        QCOMPARE(m_mainShown, 1);
        show(true);
        QTest::keyClick(&graph(), Qt::Key_Escape);
        QVERIFY(!isLoaded<TimeGraph>());
        QCOMPARE(m_mainShown, 1);
        QCOMPARE(m_graphRaised, 1);
        show();
        form<TimeGraph>().close();
        QVERIFY(!isLoaded<TimeGraph>());
        QCOMPARE(m_mainShown, 2);
        QCOMPARE(m_graphRaised, 1);
    }

    void theTabKeyWalksFromTheTimesToTheButtons() {
        putRuns(3);
        show(false, {1024, 768});
        QStringList walk;
        for (int i = 0; i < 8; ++i) {
            walk << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(walk, QStringList({"Graph", "Date(1)", "Date(2)", "Date(3)", "PrintGraph",
                           "BUT_Close", "Graph", "Date(1)"}));
    }

    void lettersPressTheButtons() {
        show();
        QTest::keyClick(&form<TimeGraph>(), Qt::Key_P, Qt::AltModifier);
        QTRY_COMPARE(m_program->printer.documents.size(), std::size_t(1));
        QTest::keyClick(&form<TimeGraph>(), Qt::Key_C, Qt::AltModifier);
        QTRY_VERIFY(!isLoaded<TimeGraph>());
    }

    void openedAgainItShowsWhatCameIn() {
        putRuns(1);
        show(true);
        putRuns(2);
        form<TimeGraph>().showTable(true);
        QCOMPARE(shownDates(), 2);
    }

    void printsTheForm() {
        putRuns(2);
        show();
        click(control<QPushButton>(form<TimeGraph>(), "PrintGraph"));
        QCOMPARE(m_program->printer.documents.size(), std::size_t(1));
        QCOMPARE(m_program->printer.documents[0]->request.documentName, std::string("Time Graph"));
        QCOMPARE(m_program->printer.documents[0]->pages.front().images.size(), std::size_t(1));
        QCOMPARE(m_program->printer.documents[0]->pages.front().texts.at(0).text,
            std::string("Times of the newest runs, printed on Sun 15 Nov 2026"));
        m_program->printer.answer = platform::Printed::failed;
        m_program->dialogs.expectBox("The Time Graph could not be printed. ", 0, "Time Graph");
        click(control<QPushButton>(form<TimeGraph>(), "PrintGraph"));
    }
};

KVO_FORM_TEST_MAIN(TimeGraphTest)
#include "time_graph_test.moc"
