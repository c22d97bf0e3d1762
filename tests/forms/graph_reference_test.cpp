// The reference line: set at the cursor by key and menu, the differences beside the values, and all
// that takes it away.
#include "graph/forms/channel_cell.h"
#include "graph/forms/channel_panel.h"
#include "graph/transient.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QMenu>
#include <QScrollBar>
#include <QToolButton>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphReferenceTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    void key(Qt::Key one, Qt::KeyboardModifiers modifiers = {}) {
        // Off-screen nothing gives the focus back behind a dialog.
        form<DataGraph>().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form<DataGraph>()));
        QTest::keyClick(&trend(), one, modifiers);
    }
    bool stands() {
        const bool shown = !part<QWidget>("ReferenceTime").isHidden();
        if (shown != view().marks.reference.has_value()) qFatal("the line and its time differ");
        if (shown != command("Mnu_MarkAway").isEnabled()) qFatal("the command differs");
        return shown;
    }
    int engineAt(int sample) { return state().Run.image.samples[sample].EngineRpm; }
    // The label of the overlay's value shows beside that of the run's.
    bool secondValuesShow() {
        const QRect value = part<QWidget>("Rpm").geometry();
        const QRect overlay = part<QWidget>("OverlayRpm").geometry();
        return !value.intersects(overlay);
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void theKeySetsItAndTheValuesAreCompared() {
        open(32);
        QVERIFY(!stands());
        QVERIFY(!secondValuesShow());
        const QString time = text("LoggerTime");
        key(Qt::Key_R);
        QVERIFY(stands());
        QVERIFY(secondValuesShow());
        QCOMPARE(view().marks.reference, 160);
        QCOMPARE(text("OverlayRpm"), QStringLiteral("0"));
        QCOMPARE(text("ReferenceTime"), QStringLiteral("Reference: 0.00 sec"));
        QCOMPARE(text("LoggerTime"), time); // as without one
        key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(text("ReferenceTime"), QStringLiteral("Reference: +1.00 sec"));
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 1.00 sec"));
        QCOMPARE(text("Rpm"), QString::number(engineAt(260)));
        const int difference = engineAt(260) - engineAt(160);
        QVERIFY(difference > 0);
        QCOMPARE(text("OverlayRpm"), QStringLiteral("+%1").arg(difference));
        QVERIFY(!part<QWidget>("Frame_Times").isVisible());
        // Set again it stands at the cursor.
        key(Qt::Key_R);
        QCOMPARE(view().marks.reference, 260);
        QCOMPARE(text("OverlayRpm"), QStringLiteral("0"));
        QCOMPARE(dialogs().beeps(), 0);
    }

    void escapeTakesItAwayAndClosesNothing() {
        DataGraph& graph = open(32);
        const auto before = texts();
        key(Qt::Key_R);
        key(Qt::Key_Right);
        key(Qt::Key_Left);
        key(Qt::Key_Escape);
        QVERIFY(!stands());
        QVERIFY(graph.isVisible());
        QCOMPARE(texts(), before);
        QVERIFY(!secondValuesShow());
        QVERIFY(part<QWidget>("Frame_Times").isVisible());
        QCOMPARE(onTop(), 1U);
        key(Qt::Key_Escape);
        QVERIFY(graph.isVisible());
    }

    void theMenuDoesTheSame() {
        open(32);
        command("Mnu_Reference").trigger();
        QVERIFY(stands());
        QVERIFY(trend().hasFocus());
        command("Mnu_MarkAway").trigger();
        QVERIFY(!stands());
    }

    void withoutARunThereIsNothingToCompare() {
        store(32, 1);
        openByChooser(cancelling());
        QVERIFY(!command("Mnu_Reference").isEnabled());
        key(Qt::Key_R);
        QVERIFY(!stands());
    }

    void aCursorOutsideOfTheRunSetsNone() {
        open(32);
        clickAt(1361);
        QCOMPARE(dialogs().beeps(), 1);
        key(Qt::Key_R);
        QVERIFY(!stands());
        QCOMPARE(dialogs().beeps(), 2);
    }

    // In every state of the surface: the line of the reference and that of the cursor.
    void theLineIsDrawnInEveryState() {
        open(32);
        key(Qt::Key_R);
        key(Qt::Key_Right, Qt::ControlModifier);
        const auto bothLines = [this] {
            QCOMPARE(onTop(), 2U);
            QCOMPARE(trend().surface().currentX(), 210.0F);
            const platform::PixelRect place =
                trend().surface().upper().bounds(0, trend().deviceSize());
            const platform::PixelScale scale(trend().surface().scale(), trend().deviceSize());
            QVERIFY(qAbs(place.left - scale.x(160)) <= 1);
        };
        bothLines();
        command("Resolution(8)").trigger();
        bothLines();
        part<QToolButton>("ZoomIn").click();
        bothLines();
        part<QScrollBar>("HScroll").setValue(100);
        bothLines();
        part<QToolButton>("CancelZoom").click();
        bothLines();
        chooseBackground(0xFFFFFF);
        bothLines();
        command("Mnu_ScaleItem(1)").trigger();
        bothLines();
    }

    void theLineIsSeen() {
        open(32);
        for (int channel = 0; channel < channels::channelCount; ++channel)
            channels::visibleFlag(state().Config, channel) = 0;
        form<DataGraph>().takeOptions();
        key(Qt::Key_R);
        key(Qt::Key_Right, Qt::ShiftModifier);
        const int white = pixels(qRgb(255, 255, 255));
        key(Qt::Key_Escape);
        QVERIFY(white > pixels(qRgb(255, 255, 255)) + 300); // a dashed line from top to foot
    }

    void anAverageIsComparedToo() {
        open(32);
        key(Qt::Key_R);
        emit trend().mouseDown(Qt::RightButton, 300, 700);
        QCOMPARE(onTop(), 2U);
        emit trend().mouseUp(Qt::RightButton, 700, 400);
        const int difference = text("Rpm").toInt() - engineAt(160);
        QCOMPARE(text("OverlayRpm").toInt(), difference);
        QCOMPARE(text("ReferenceTime"), QStringLiteral("Reference: "));
        QVERIFY(secondValuesShow());
    }

    // The differences have the colours of their channels, also where an overlay has had others.
    void differencesAreInTheColoursOfTheirChannels() {
        for (const int number : {1, 2}) store(32, number);
        state().Config.OverlayColours = 1;
        openOverlaid();
        command("Mnu_Overlay").trigger();
        const auto colours = [this](const char* label) {
            return part<QLabel>(label).palette().color(QPalette::WindowText);
        };
        QVERIFY(colours("OverlayRpm") != colours("Rpm"));
        key(Qt::Key_R);
        QCOMPARE(colours("OverlayRpm"), colours("Rpm"));
        dialogs().expectColour(0x123456);
        QTest::mouseDClick(&part<QWidget>("Rpm"), Qt::LeftButton);
        QCOMPARE(colours("Rpm"), QColor(0x56, 0x34, 0x12));
        QCOMPARE(colours("OverlayRpm"), colours("Rpm"));
    }

    void whatTakesTheRunTakesTheReference() {
        for (const int number : {1, 2, 3}) store(32, number);
        openByChooser(taking(1));
        key(Qt::Key_R);
        part<QToolButton>("PreviousData").click();
        QVERIFY(!stands());
        QCOMPARE(text("OverlayRpm"), QString());
        QVERIFY(part<QWidget>("Frame_Times").isVisible());
        key(Qt::Key_R);
        QVERIFY(stands());
        const QString own = text("Rpm");
        overlay(3);
        QVERIFY(!stands());
        QVERIFY(secondValuesShow());
        QVERIFY(!text("OverlayRpm").startsWith(QLatin1Char('+')));
        // The second value is the overlay's own.
        QCOMPARE(text("Rpm"), own);
        QCOMPARE(text("OverlayRpm"), QString::number(state().Overlay.image.samples[160].EngineRpm));
        QVERIFY(!command("Mnu_Reference").isEnabled());
        key(Qt::Key_R);
        QVERIFY(!stands());
        command("Mnu_Overlay").trigger();
        QVERIFY(command("Mnu_Reference").isEnabled());
        key(Qt::Key_R);
        QVERIFY(stands());
    }

    void theFolderMayBeLookedAtOnly() {
        state().LookOnly = true;
        open(32);
        QVERIFY(command("Mnu_Reference").isEnabled());
        key(Qt::Key_R);
        QVERIFY(stands());
    }

    // What is printed is what the window shows.
    void differencesArePrintedWithTheLine() {
        open(32);
        auto& panel = part<ChannelPanel>("Frame3");
        const auto texts = [&] {
            return panel.shownTexts(state().Config, state().Run.times, false);
        };
        QVERIFY(!texts().differences);
        QCOMPARE(texts().time, std::string("Time: 0.00 sec"));
        QCOMPARE(texts().groups.back().heading, std::string("Times"));
        key(Qt::Key_R);
        key(Qt::Key_Right);
        QVERIFY(texts().differences);
        QCOMPARE(texts().time, std::string("Time: 0.01 sec    Reference: +0.01 sec"));
        QVERIFY(texts().groups.back().heading != "Times");
        QCOMPARE(texts().groups.front().cells.front().overlay, text("OverlayRpm").toStdString());
        key(Qt::Key_Escape);
        QVERIFY(!texts().differences);
        QCOMPARE(texts().time, std::string("Time: 0.01 sec"));
    }
};

KVO_FORM_TEST_MAIN(GraphReferenceTest)
#include "graph_reference_test.moc"
