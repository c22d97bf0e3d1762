// Time line, text under the pointer and average, by keys and mouse on the surface.
#include "core/forms/doors.h"
#include "graph/forms/channel_panel.h"
#include "platform/qt/form_kit.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphCursorTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void arrowKeysMoveTheTimeLine() {
        DataGraph& graph = open(32);
        const auto cursorAfter = [&](int key, Qt::KeyboardModifiers modifiers) {
            QTest::keyClick(&trend(), Qt::Key(key), modifiers);
            return int(graph.view().CursorSample);
        };
        QCOMPARE(cursorAfter(Qt::Key_Right, Qt::NoModifier), 161);
        QCOMPARE(cursorAfter(Qt::Key_Right, Qt::ShiftModifier), 261);
        QCOMPARE(cursorAfter(Qt::Key_Right, Qt::ControlModifier), 311);
        QCOMPARE(cursorAfter(Qt::Key_Right, Qt::AltModifier), 321);
        QCOMPARE(cursorAfter(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier), 322);
        QCOMPARE(cursorAfter(Qt::Key_Left, Qt::NoModifier), 321);
        QCOMPARE(cursorAfter(Qt::Key_Left, Qt::AltModifier), 311);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 1.51 sec"));
        QCOMPARE(text("Rpm"), QString::number(state().Run.image.samples[311].EngineRpm));
        QCOMPARE(dialogs().beeps(), 0);
    }

    void heldArrowKeyPaintsThePictureOnce() {
        open(43, {1920, 1080});
        const int paints = trend().fullPaints();
        for (int i = 0; i < 200; ++i) {
            QTest::keyClick(&trend(), Qt::Key_Right);
            QCoreApplication::processEvents();
        }
        QCOMPARE(trend().fullPaints(), paints);
    }

    void cursorPastTheEndBeepsAndKeepsWhatStands() {
        DataGraph& graph = open(32);
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(1360, 500));
        QCOMPARE(int(graph.view().CursorSample), 1360);
        const QString shown = text("Rpm");
        QTest::keyClick(&trend(), Qt::Key_Right);
        QCOMPARE(dialogs().beeps(), 1);
        QCOMPARE(text("Rpm"), shown);
        QCOMPARE(trend().surface().currentX(), 1360.0F);
        QTest::keyClick(&trend(), Qt::Key_Left);
        QCOMPARE(int(graph.view().CursorSample), 1359);
    }

    void pointerNamesTheCurve() {
        open(32);
        for (const int sample : {500, 700}) {
            const core::RunSample& row = state().Run.image.samples[sample];
            const float height = static_cast<float>(row.EngineRpm) / 10;
            QTest::mouseMove(&trend(), place(static_cast<float>(sample), 1020));
            QTest::mouseMove(&trend(), place(static_cast<float>(sample), height));
            // At this width a pixel is more than a sample, so a neighbour's value is as good.
            const QString read = text("Label_DataChanel");
            QVERIFY2(read.startsWith(QLatin1String(" Engine Rpm = ")), qPrintable(read));
            const int value = read.mid(14).toInt();
            QVERIFY(qAbs(value - row.EngineRpm) < 60);
        }
        QVERIFY(part<QLabel>("Label_DataChanel").isVisible());
    }

    void onANarrowWindowTheReadOutIsAToolTip() {
        DataGraph& graph = open(32, {1000, 700});
        if (graph.width() >= 1026) {
            graph.setMinimumWidth(0);
            graph.resize(1000, 700);
            QCoreApplication::processEvents();
        }
        const float height = static_cast<float>(state().Run.image.samples[250].EngineRpm) / 10;
        QTest::mouseMove(&trend(), place(250, 1020));
        QTest::mouseMove(&trend(), place(250, height));
        QVERIFY(!part<QLabel>("Label_DataChanel").isVisible());
        QVERIFY2(trend().toolTip().startsWith(QLatin1String(" Engine Rpm = ")),
            qPrintable(trend().toolTip()));
    }

    void thePointersTextGoesWithThePointer() {
        open(32);
        pointAtTheEngine();
        QVERIFY(!text("Label_DataChanel").isEmpty());
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&trend(), &leave);
        QCOMPARE(text("Label_DataChanel"), QString());
    }

    // 15400 twips lie between 1026 and 1027 pixels.
    void theToolTipBelongsToANarrowWindow() {
        store(32, 1);
        store(32, 2);
        DataGraph& graph = openByChooser(taking(1), {1027, 700});
        QCOMPARE(graph.width(), 1027);
        pointAtTheEngine();
        QVERIFY(part<QWidget>("Label_DataChanel").isVisible());
        QCOMPARE(trend().toolTip(), QString());
        const auto narrow = [&](int sample) {
            pointAtTheEngine(sample);
            QVERIFY(!part<QWidget>("Label_DataChanel").isVisible());
            QVERIFY(trend().toolTip().startsWith(QLatin1String(" Engine Rpm = ")));
        };
        graph.resize(1026, 700);
        QCOMPARE(graph.width(), 1026);
        narrow(600);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&trend(), &leave);
        QCOMPARE(trend().toolTip(), QString());
        narrow(700);
        graph.commands().GraphChange_Click(0);
        QCOMPARE(state().Run.path, pathOf(2));
        QCOMPARE(trend().toolTip(), QString());
        // What a wide window shows beside the time lies on no tool tip as well.
        narrow(600);
        graph.resize(1027, 700);
        pointAtTheEngine(700);
        QCOMPARE(trend().toolTip(), QString());
        QVERIFY(part<QWidget>("Label_DataChanel").isVisible());
    }

    void aClickTakesTheNearestSample() {
        DataGraph& graph = open(32);
        const auto cursorAt = [&](float x) {
            clickAt(x);
            return int(graph.view().CursorSample);
        };
        QCOMPARE(cursorAt(300.4F), 300);
        QCOMPARE(cursorAt(300.6F), 301);
        QCOMPARE(cursorAt(300.5F), 300); // a tie goes to the even one
        QCOMPARE(cursorAt(301.5F), 302);
        QCOMPARE(text("Rpm"), QString::number(state().Run.image.samples[302].EngineRpm));
        QCOMPARE(cursorAt(40000), 302); // beyond 16 bits there is no sample
        QCOMPARE(dialogs().beeps(), 0);
        // And so does the pointer.
        const core::RunSample& row = state().Run.image.samples[700];
        pointAt(699.6F, static_cast<float>(row.EngineRpm) / 10);
        QCOMPARE(text("Label_DataChanel"), QStringLiteral(" Engine Rpm = %1").arg(row.EngineRpm));
    }

    void aCarsHiddenClutchIsNotFound_data() {
        QTest::addColumn<int>("vehicle");
        QTest::addColumn<bool>("found");
        QTest::newRow("car") << 1 << false;
        QTest::newRow("motorcycle") << 2 << true;
    }

    void aCarsHiddenClutchIsNotFound() {
        QFETCH(int, vehicle);
        QFETCH(bool, found);
        testing::storeModelRun(state(), files(), 25);
        state().Config.Vehicle_Type = static_cast<std::uint8_t>(vehicle);
        onlyChannel(channels::clutchChannel);
        openFresh();
        const QSet<QString> hits = hitsAt(600);
        QCOMPARE(std::any_of(hits.begin(), hits.end(),
                     [](const QString& hit) { return hit.startsWith(QLatin1String(" Clutch")); }),
            found);
    }

    void rightDragAverages() {
        open(32);
        QTest::mousePress(&trend(), Qt::RightButton, {}, place(300, 700));
        QCOMPARE(trend().surface().upper().size(), 1U);
        QTest::mouseMove(&trend(), place(500, 700));
        QTest::mouseRelease(&trend(), Qt::RightButton, {}, place(700, 400));
        QVERIFY(trend().surface().upper().size() >= 5U); // edges, cross and the word
        const QString time = text("LoggerTime");
        QVERIFY2(time.startsWith(QLatin1String("Time:1.")), qPrintable(time));
        QVERIFY(time.contains(QLatin1String(" / 5.")));
        double sum = 0;
        for (int i = 300; i <= 700; ++i) sum += state().Run.image.samples[i].EngineRpm;
        QVERIFY(qAbs(text("Rpm").toInt() - sum / 400) < 40);
        QTest::keyClick(&trend(), Qt::Key_Right); // from x = 0, where the word left the position
        QCOMPARE(trend().surface().upper().size(), 1U);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: -1.59 sec"));
    }

    void dragPastTheEndBeeps() {
        open(32);
        const QString time = text("LoggerTime");
        QTest::mousePress(&trend(), Qt::RightButton, {}, place(900, 700));
        QTest::mouseRelease(&trend(), Qt::RightButton, {}, place(1361, 700));
        QCOMPARE(dialogs().beeps(), 1);
        QCOMPARE(text("LoggerTime"), time);
    }

    // The mean of a stretch without a width is a division by nothing: no label has a value.
    void clickOfTheRightButtonAveragesNothing() {
        open(32);
        QTest::mouseClick(&trend(), Qt::RightButton, {}, place(600, 700));
        QCOMPARE(text("Rpm"), QString());
        QCOMPARE(text("Exhaust(8)"), QString());
        QCOMPARE(dialogs().beeps(), 0);
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(300, 700));
        QCOMPARE(trend().surface().upper().size(), 1U);
        const int cursor = form<DataGraph>().view().CursorSample;
        QCOMPARE(text("Rpm"), QString::number(state().Run.image.samples[cursor].EngineRpm));
    }

    void theMarkOfAnAverageNeedsARun() {
        store(32, 1);
        DataGraph& graph = openByChooser(cancelling());
        emit trend().mouseDown(Qt::RightButton, 300, 700);
        emit trend().mouseUp(Qt::RightButton, 600, 400);
        emit trend().mouseDown(Qt::LeftButton, 300, 700);
        emit trend().keyDown(Qt::Key_Right, Qt::NoModifier);
        emit trend().mouseMoved(Qt::NoButton, 300, 700);
        QCOMPARE(onTop(), 0U);
        QCOMPARE(int(graph.view().CursorSample), 0);
        QCOMPARE(dialogs().beeps(), 0);
        QCOMPARE(text("LoggerTime"), QString());
    }

    // The left button's release is no end of a drag, and a held right button finds no curve.
    void onlyTheRightButtonAverages() {
        open(32);
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(300, 700));
        QCOMPARE(onTop(), 1U);
        emit trend().mouseDown(Qt::RightButton, 300, 700);
        emit trend().mouseMoved(Qt::RightButton, 500,
            static_cast<float>(state().Run.image.samples[500].EngineRpm) / 10);
        QCOMPARE(text("Label_DataChanel"), QString());
        emit trend().mouseUp(Qt::RightButton, 700, 400);
        QCOMPARE(onTop(), 5U);
        // A drag to the left is the same stretch.
        const QMap<QString, QString> rightwards = texts();
        clickAt(400);
        QVERIFY(texts() != rightwards);
        emit trend().mouseDown(Qt::RightButton, 700, 700);
        emit trend().mouseUp(Qt::RightButton, 300, 400);
        QCOMPARE(texts(), rightwards);
        QCOMPARE(dialogs().beeps(), 0);
    }
};

KVO_FORM_TEST_MAIN(GraphCursorTest)
#include "graph_cursor_test.moc"
