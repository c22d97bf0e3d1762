// What mouse and keys do beside what is told of the cursor: a drag, Home and End, averages and
// colours by keys, zooms about the pointer and back.
#include "graph/forms/channel_cell.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QMenu>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphMouseTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    int cursor() { return view().CursorSample; }
    void key(Qt::Key one, Qt::KeyboardModifiers modifiers = {}) {
        form<DataGraph>().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form<DataGraph>()));
        QTest::keyClick(&trend(), one, modifiers);
    }
    // A notch of the wheel with Ctrl over a place of Trend.
    void turn(int delta, const QPoint& at) {
        QWheelEvent wheel(at, trend().mapToGlobal(QPointF(at)), {}, {0, delta}, Qt::NoButton,
            Qt::ControlModifier, Qt::NoScrollPhase, false);
        // Only a wheel that came from outside goes on to the widgets around.
        QSpontaneKeyEvent::setSpontaneous(&wheel);
        qApp->notify(&trend(), &wheel);
    }
    QScrollBar& along() { return part<QScrollBar>("HScroll"); }
    QScrollBar& down() { return part<QScrollBar>("VScroll"); }
    // Size and place of the surface.
    QRect surface() { return trend().geometry(); }
    void doubleClick(Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseDClick(&trend(), button, {}, place(500, 500));
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    // --- The drag

    void theCursorFollowsALeftDrag() {
        open(32);
        QTest::mousePress(&trend(), Qt::LeftButton, {}, place(300, 500));
        QCOMPARE(onTop(), 1U);
        emit trend().mouseMoved(Qt::LeftButton, 400.4F, 500);
        QCOMPARE(cursor(), 400);
        QCOMPARE(text("Rpm"), QString::number(state().Run.image.samples[400].EngineRpm));
        QCOMPARE(trend().surface().currentX(), 400.0F);
        emit trend().mouseMoved(Qt::LeftButton, 5000, 500);
        QCOMPARE(cursor(), 1360);
        emit trend().mouseMoved(Qt::LeftButton, -5000, 500);
        QCOMPARE(cursor(), 1);
        QCOMPARE(dialogs().beeps(), 0);
        QTest::mouseRelease(&trend(), Qt::LeftButton, {}, place(1, 500));
        emit trend().mouseMoved(Qt::NoButton, 700, 500);
        QCOMPARE(cursor(), 1);
    }

    void aDragNamesTheCurveUnderThePointerToo() {
        open(32);
        clickAt(300);
        const float height = static_cast<float>(state().Run.image.samples[500].EngineRpm) / 10;
        emit trend().mouseMoved(Qt::LeftButton, 500, height);
        QCOMPARE(cursor(), 500);
        QVERIFY(text("Label_DataChanel").startsWith(QLatin1String(" Engine Rpm = ")));
    }

    // A drag that began elsewhere, one with the right button too, or one of no run.
    void onlyADragOfTheLeftButtonMovesTheCursor() {
        open(32);
        emit trend().mouseMoved(Qt::LeftButton, 700, 500);
        QCOMPARE(cursor(), 160);
        clickAt(300);
        emit trend().mouseMoved(Qt::LeftButton | Qt::RightButton, 700, 500);
        QCOMPARE(cursor(), 300);
        emit trend().mouseDown(Qt::RightButton, 400, 500);
        emit trend().mouseMoved(Qt::LeftButton, 700, 500);
        QCOMPARE(cursor(), 300);
    }

    // --- Home and End

    void homeAndEndGoToTheEndsOfTheRun() {
        open(32);
        key(Qt::Key_End);
        QCOMPARE(cursor(), 1360);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 12.00 sec"));
        key(Qt::Key_Left);
        QCOMPARE(cursor(), 1359);
        key(Qt::Key_Home);
        QCOMPARE(cursor(), 1);
        command("Mnu_SampleEnd(1)").trigger();
        QCOMPARE(cursor(), 1360);
        command("Mnu_SampleEnd(0)").trigger();
        QCOMPARE(cursor(), 1);
        QCOMPARE(dialogs().beeps(), 0);
    }

    void theEndComesIntoView() {
        open(32);
        command("Mnu_ScaleItem(2)").trigger();
        QCOMPARE(along().value(), 0);
        key(Qt::Key_End);
        QCOMPARE(along().value(), along().maximum());
        key(Qt::Key_Home);
        QVERIFY(along().value() < along().maximum() / 100);
    }

    // --- Averages and colours by keys

    void theKeyAveragesAsTheRightButtonDoes() {
        open(32);
        clickAt(300);
        key(Qt::Key_A);
        QCOMPARE(view().marks.averageFrom, 300);
        QCOMPARE(onTop(), 2U);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 1.40 sec"));
        QVERIFY(command("Mnu_MarkAway").isEnabled());
        for (int i = 0; i < 4; ++i) key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(onTop(), 2U);
        key(Qt::Key_A);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time:1.40 / 5.40"));
        QCOMPARE(view().marks.averageFrom, std::nullopt);
        QVERIFY(!command("Mnu_MarkAway").isEnabled());
        QCOMPARE(onTop(), 5U); // edges, cross and the word
        const auto byKeys = texts();
        key(Qt::Key_Right); // on from the cursor
        QCOMPARE(cursor(), 701);
        emit trend().mouseDown(Qt::RightButton, 300, 700);
        emit trend().mouseUp(Qt::RightButton, 700, 400);
        QCOMPARE(texts(), byKeys);
    }

    void anAverageMayGoBackwards() {
        open(32);
        clickAt(700);
        command("Mnu_Average").trigger();
        clickAt(300);
        command("Mnu_Average").trigger();
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time:1.40 / 5.40"));
    }

    void theBeginOfAnAverageCanBeGivenUp() {
        open(32);
        key(Qt::Key_A);
        key(Qt::Key_A); // nothing between the two
        QCOMPARE(view().marks.averageFrom, std::nullopt);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 0.00 sec"));
        QCOMPARE(onTop(), 1U);
        QVERIFY(!command("Mnu_MarkAway").isEnabled());
        key(Qt::Key_R);
        key(Qt::Key_A);
        key(Qt::Key_Escape); // the last one first
        QCOMPARE(view().marks.averageFrom, std::nullopt);
        QCOMPARE(view().marks.reference, 160);
        key(Qt::Key_Escape);
        QVERIFY(!view().marks.any());
        key(Qt::Key_A);
        emit trend().mouseDown(Qt::RightButton, 300, 700);
        QCOMPARE(view().marks.averageFrom, std::nullopt);
        QVERIFY(!command("Mnu_MarkAway").isEnabled());
    }

    void anAverageNeedsACursorInTheRun() {
        open(32);
        clickAt(1361);
        key(Qt::Key_A);
        QVERIFY(!view().marks.any());
        QCOMPARE(dialogs().beeps(), 2);
        clickAt(1000);
        key(Qt::Key_A);
        QCOMPARE(view().marks.averageFrom, 1000);
        clickAt(1361);
        key(Qt::Key_A);
        QVERIFY(!view().marks.any());
    }

    void theKeyOfAChannelChoosesItsColour() {
        open(32);
        auto& toggle = part<ChannelToggle>("Label10(0)");
        toggle.setFocus();
        dialogs().expectColour(0x123456);
        QTest::keyClick(&toggle, Qt::Key_C);
        QCOMPARE(state().Config.EngineColour, 0x123456);
        QVERIFY(toggle.isChecked());
        toggle.setFocus();
        for (const auto with : {Qt::ControlModifier, Qt::ShiftModifier})
            QTest::keyClick(&toggle, Qt::Key_C, with);
        QTest::keyClick(&toggle, Qt::Key_Space);
        QVERIFY(!toggle.isChecked());
    }

    // --- Zooms

    void theWheelZoomsAboutThePointer() {
        open(32);
        const QPoint at = place(900, 300);
        const QPoint seen = trend().mapTo(&part<QWidget>("Frame1"), at);
        const auto stays = [&](const char* what) {
            const QPoint now = trend().mapTo(&part<QWidget>("Frame1"), place(900, 300));
            QVERIFY2((now - seen).manhattanLength() <= 3, what);
        };
        for (int i = 0; i < 5; ++i) {
            turn(120, place(900, 300));
            stays("in");
        }
        QVERIFY(along().value() > 0 && down().value() > 0);
        QVERIFY(trend().width() > 2 * 1366);
        turn(-120, place(900, 300));
        stays("out");
        QVERIFY(part<QToolButton>("CancelZoom").isEnabled());
        QCOMPARE(int(state().Config.ScaleCustom), 4);
        QCOMPARE(cursor(), 160);
    }

    void everyZoomCanBeSteppedBack() {
        DataGraph& graph = open(32);
        QVERIFY(!command("Mnu_ZoomBack").isEnabled());
        const QRect whole = surface();
        clickAt(1200);
        press("ZoomIn");
        press("ZoomIn");
        const QRect twice = surface();
        turn(120, place(300, 900));
        const QRect thrice = surface();
        graph.commands().ZoomOut_Click();
        key(Qt::Key_Backspace);
        QCOMPARE(surface(), thrice);
        key(Qt::Key_Backspace);
        QCOMPARE(surface(), twice);
        QVERIFY(part<QToolButton>("CancelZoom").isEnabled());
        command("Mnu_ZoomBack").trigger();
        command("Mnu_ZoomBack").trigger();
        QCOMPARE(surface().size(), whole.size());
        QCOMPARE(int(state().Config.ScaleCustom), 0);
        QVERIFY(!part<QToolButton>("CancelZoom").isEnabled());
        QVERIFY(menuEnabled("Mnu_Scale"));
        QVERIFY(!command("Mnu_ZoomBack").isEnabled());
        QVERIFY(!along().isVisible());
        QCOMPARE(onTop(), 1U);
    }

    void cancelZoomAndANewScaleForgetTheSteps() {
        open(32);
        press("ZoomIn");
        QVERIFY(command("Mnu_ZoomBack").isEnabled());
        press("CancelZoom");
        QVERIFY(!command("Mnu_ZoomBack").isEnabled());
        press("ZoomIn");
        doubleClick();
        QVERIFY(command("Mnu_ZoomBack").isEnabled());
        command("Mnu_ScaleItem(1)").trigger();
        QVERIFY(!command("Mnu_ZoomBack").isEnabled());
    }

    void aLoadKeepsTheZoomAndItsSteps() {
        for (const int number : {1, 2}) store(32, number);
        openByChooser(taking(2));
        const QRect whole = surface();
        press("ZoomIn");
        const int width = trend().width();
        part<QToolButton>("NextData").click();
        QCOMPARE(trend().width(), width);
        command("Mnu_ZoomBack").trigger();
        QCOMPARE(surface().size(), whole.size());
    }

    void aDoubleClickShowsTheWholeRun() {
        open(32);
        const QRect whole = surface();
        doubleClick();
        QCOMPARE(surface(), whole);
        QVERIFY(!command("Mnu_ZoomBack").isEnabled()); // nothing was changed
        command("Mnu_ScaleItem(1)").trigger();
        const QSize half = trend().size();
        press("ZoomIn");
        const QRect zoomed = surface();
        doubleClick(Qt::RightButton);
        QCOMPARE(surface(), zoomed);
        doubleClick();
        QCOMPARE(surface().size(), whole.size());
        QCOMPARE(int(state().Config.ScaleCustom), 0);
        QCOMPARE(part<QMenu>("Mnu_Scale").title(), QStringLiteral("&Graph Scale(Full)  "));
        QVERIFY(menuEnabled("Mnu_Scale"));
        QVERIFY(!part<QToolButton>("CancelZoom").isEnabled());
        // Back to the zoom, and from there to half the screen.
        command("Mnu_ZoomBack").trigger();
        QCOMPARE(surface(), zoomed);
        QVERIFY(part<QToolButton>("CancelZoom").isEnabled());
        QCOMPARE(part<QMenu>("Mnu_Scale").title(), QStringLiteral("&Graph Scale(1/2)  "));
        command("Mnu_ZoomBack").trigger();
        QCOMPARE(trend().size(), half);
        QCOMPARE(int(state().Config.ScaleCustom), 1);
        QVERIFY(command("Mnu_ScaleItem(1)").isChecked());
    }

    void theKeyShowsTheWholeRunToo() {
        open(32);
        const QRect whole = surface();
        press("ZoomIn");
        key(Qt::Key_F);
        QCOMPARE(surface().size(), whole.size());
    }

    // The second press of a double click holds the button down; the surface under it is another.
    void aDoubleClickDragsNoCursor() {
        open(32);
        press("ZoomIn");
        doubleClick();
        const int at = cursor();
        emit trend().mouseMoved(Qt::LeftButton, 900, 500);
        QCOMPARE(cursor(), at);
    }

    void withoutARunNothingHappens() {
        store(32, 1);
        openByChooser(cancelling());
        for (const char* name : {"Mnu_Average", "Mnu_SampleEnd(0)", "Mnu_SampleEnd(1)",
                 "Mnu_FitWhole", "Mnu_ZoomBack", "Mnu_MarkAway"})
            QVERIFY2(!command(name).isEnabled(), name);
        const QRect whole = surface();
        doubleClick();
        emit trend().mouseMoved(Qt::LeftButton, 900, 500);
        QCOMPARE(surface(), whole);
        QCOMPARE(dialogs().beeps(), 0);
    }

    // The cursor's own key, wherever the zoom may be.
    void altAndLeftMoveTheCursor() {
        open(32);
        press("ZoomIn");
        const QSize size = trend().size();
        key(Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(cursor(), 150);
        QCOMPARE(trend().size(), size);
    }

    void aStepThatHasNoMemoryIsForgotten() {
        DataGraph& graph = open(32);
        graph.commands().ZoomIn_Click();
        trend().surface().setUsable(false);
        dialogs().expectBoxTitled("Memory Error");
        command("Resolution(4)").trigger();
        QVERIFY(!command("Mnu_ZoomBack").isEnabled());
    }
};

KVO_FORM_TEST_MAIN(GraphMouseTest)
#include "graph_mouse_test.moc"
