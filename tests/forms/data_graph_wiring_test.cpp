// How the parts of the graph window hang together: what must follow a click, a load, a delete or a
// change of size, so that no call between them can be dropped without a red test.
#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_info.h"
#include "graph/forms/channel_cell.h"
#include "graph/forms/channel_panel.h"
#include "library/run_list.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>
#include <vector>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class DataGraphWiringTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    std::vector<ValueLabel*> visibleLabels() {
        std::vector<ValueLabel*> all;
        for (auto* label : part<QWidget>("Frame3").findChildren<ValueLabel*>()) {
            const bool covered = label->objectName().startsWith(QLatin1String("Overlay")) &&
                                 view().OverlayLoaded == 0;
            if (label->isVisible() && !covered) all.push_back(label);
        }
        return all;
    }
    void allLabelsHold(const QString& longest) {
        for (ValueLabel* label : visibleLabels()) {
            const bool time = label->objectName().startsWith(QLatin1String("Text_"));
            label->setText(time ? QStringLiteral("000.000") : longest);
            const int needed = label->fontMetrics().horizontalAdvance(label->text());
            const QRect room = label->contentsRect();
            QVERIFY2(room.width() >= needed && room.height() >= label->fontMetrics().ascent(),
                qPrintable(label->objectName()));
        }
    }
    // Toggles, values, headings and the line above them, each in the window and beside the others.
    void nothingOverlaps() {
        const QWidget& graph = form<DataGraph>();
        std::vector<QWidget*> all{&part<QWidget>("ReadOuts"), &part<QWidget>("Frame1")};
        for (ValueLabel* label : visibleLabels()) all.push_back(label);
        for (auto* toggle : part<QWidget>("Frame3").findChildren<ChannelToggle*>()) {
            if (toggle->isVisible()) all.push_back(toggle);
        }
        std::vector<QRect> places;
        for (const QWidget* one : all) {
            const QRect place(one->mapTo(&graph, QPoint()), one->size());
            QVERIFY2(graph.rect().contains(place), qPrintable(one->objectName()));
            for (std::size_t i = 0; i < places.size(); ++i) {
                const QString both = one->objectName() + QLatin1Char(' ') + all[i]->objectName();
                QVERIFY2(!places[i].intersects(place), qPrintable(both));
            }
            places.push_back(place);
        }
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void theGroupsStandOnOneLineInATallPanel() {
        open(32);
        auto& panel = part<ChannelPanel>("Frame3");
        for (const int spare : {0, 9, 80}) {
            panel.resize(panel.width(), panel.heightNeeded(panel.width()) + spare);
            QCoreApplication::processEvents();
            std::vector<int> tops;
            for (const auto* label : panel.findChildren<QLabel*>()) {
                if (label->text() == QLatin1String("Rpm") ||
                    label->text() == QLatin1String("Derived"))
                    tops.push_back(label->mapTo(&panel, QPoint()).y());
            }
            for (const char* first : {"Rpm", "Slip"})
                tops.push_back(part<QWidget>(first).mapTo(&panel, QPoint()).y());
            QCOMPARE(tops.size(), std::size_t(4));
            QCOMPARE(tops[0], tops[1]);
            QCOMPARE(tops[2], tops[3]);
        }
    }

    // --- What a load and a delete take along

    // Where the exhausts share a byte the drawing leaves the labels as they are.
    void aLoadShowsTheChannelsOfItsType() {
        store(25, 1);
        store(20, 2);
        store(8, 3);
        openByChooser(taking(1));
        QVERIFY(part<QWidget>("Text_Analog(8)").isVisible());
        const auto loads = [this](int number) {
            testing::onModal(taking(number));
            command("Mnu_LoadData").trigger();
        };
        loads(2);
        QVERIFY(part<QWidget>("Text_Analog(6)").isVisible());
        QVERIFY(!part<QWidget>("Text_Analog(7)").isVisible());
        QVERIFY(part<QWidget>("Label9(1)").isVisible());
        loads(3);
        QVERIFY(!part<QWidget>("Text_Analog(5)").isVisible());
        QVERIFY(!part<QWidget>("Label9(1)").isVisible());
        loads(2);
        QVERIFY(part<QWidget>("Text_Analog(6)").isVisible());
        QVERIFY(part<QWidget>("Label9(1)").isVisible());
        QVERIFY(part<QWidget>("Label15").isVisible());
    }

    void aLoadTakesTheScaleTheNamesAndTheTimesOfItsRun() {
        store(32, 1);
        store(25, 2);
        state().Run.image.setup.AnalogName[1] = "Other   ";
        saveRun();
        core::RunInfo info;
        info.Text_ET = "7.31";
        QVERIFY(core::SaveRunInfo(
            "/kvo", core::infoFilePath(state().Run.path), state().Run.path, info, files()));
        DataGraph& graph = openByChooser(taking(1));
        clickAt(700);
        graph.commands().GraphChange_Click(0);
        QCOMPARE(trend().surface().scaleWidth(), 1214.0F);
        QCOMPARE(int(view().CursorSample), 80);
        QCOMPARE(part<ChannelToggle>("Text_Analog(1)").caption(), QStringLiteral("Other   "));
        QCOMPARE(text("Text_ET"), QStringLiteral("7.31"));
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 0.00 sec"));
        QCOMPARE(onTop(), 1U);
        graph.commands().GraphChange_Click(1);
        QCOMPARE(trend().surface().scaleWidth(), 1361.0F);
        QCOMPARE(text("Text_ET"), QString());
    }

    // A sample of this type names one exhaust; the boxes of the others are not the last run's.
    void aLoadEmptiesWhatTheRunBeforeShowed() {
        store(20, 1);
        store(32, 2);
        store(20, 3);
        DataGraph& graph = openByChooser(taking(2));
        QCOMPARE(filledExhausts(), 8);
        pointAtTheEngine();
        QVERIFY(text("Label_DataChanel").startsWith(QLatin1String(" Engine Rpm = ")));
        graph.commands().GraphChange_Click(1);
        QCOMPARE(int(state().Run.DataType), 20);
        QCOMPARE(filledExhausts(), 1);
        QCOMPARE(text("Label_DataChanel"), QString());
        for (int sample = 300; sample < 330; ++sample) clickAt(static_cast<float>(sample));
        QCOMPARE(filledExhausts(), 8);
        graph.commands().GraphChange_Click(0);
        graph.commands().GraphChange_Click(0);
        QCOMPARE(int(state().Run.DataType), 20);
        QCOMPARE(filledExhausts(), 1);
    }

    // --- The wheel

    void theWheelZoomsARun() {
        const auto turn = [this](int delta) {
            QWheelEvent wheel({100, 100}, trend().mapToGlobal(QPointF(100, 100)), {}, {0, delta},
                Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
            // Only a wheel that came from outside goes on to the widgets around.
            QSpontaneKeyEvent::setSpontaneous(&wheel);
            qApp->notify(&trend(), &wheel);
        };
        store(32, 1);
        openByChooser(cancelling());
        const int width = trend().width();
        turn(120);
        QCOMPARE(trend().width(), width);
        testing::onModal(taking(1));
        command("Mnu_LoadData").trigger();
        turn(120);
        QVERIFY(trend().width() > width);
        const int zoomed = trend().width();
        turn(-120);
        QVERIFY(trend().width() < zoomed);
    }

    // --- The time line

    void theLineComesBackWithTheWindow() {
        open(32);
        part<QWidget>("ZoomIn").setFocus();
        wipe();
        QCOMPARE(onTop(), 0U);
        QEvent activated(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&form<DataGraph>(), &activated);
        QCOMPARE(onTop(), 1U);
        QVERIFY(form<DataGraph>().focusWidget() == &trend());
    }

    void theLineFollowsEveryChangeOfTheSurface() {
        DataGraph& graph = open(32);
        const auto standsAfter = [&](const char* what) {
            QVERIFY2(onTop() == 1, what);
            QVERIFY2(graph.focusWidget() == &trend(), what);
            wipe();
            part<QWidget>("ZoomIn").setFocus();
        };
        wipe();
        command("Mnu_ScaleItem(1)").trigger();
        standsAfter("scale item");
        part<QScrollBar>("HScroll").setValue(20);
        standsAfter("along");
        part<QScrollBar>("VScroll").setValue(20);
        standsAfter("up and down");
        command("Mnu_ScaleItem(0)").trigger();
        standsAfter("full screen");
        // Nothing to scroll to: the line must come by itself.
        graph.commands().ZoomOut_Click();
        standsAfter("zoom out");
        QCOMPARE(part<QScrollBar>("HScroll").maximum(), 0);
        graph.commands().CancelZoom_Click();
        standsAfter("cancel zoom");
        command("Resolution(4)").trigger();
        standsAfter("resolution");
        chooseBackground(0x404040U);
        standsAfter("background");
        QCOMPARE(trend().cursor().shape(), Qt::ArrowCursor); // no hourglass is left
    }

    // --- Sizes

    // A download of this type is shown up to fewer samples than the type has.
    void everyChangeOfSizeTakesTheScaleOfTheType_data() {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("step");
        QTest::newRow("scale item") << 0 << 0;
        QTest::newRow("zoom in") << 0 << 1;
        QTest::newRow("cancel zoom") << 4 << 2;
    }
    void everyChangeOfSizeTakesTheScaleOfTheType() {
        QFETCH(int, stored);
        QFETCH(int, step);
        testing::storeModelRun(state(), files(), 12);
        state().Config.ScaleCustom = static_cast<std::int16_t>(stored);
        DataGraph& graph = openFresh();
        QCOMPARE(trend().surface().scaleWidth(), 2442.0F);
        if (step == 0) command("Mnu_ScaleItem(1)").trigger();
        if (step == 1) graph.commands().ZoomIn_Click();
        if (step == 2) graph.commands().CancelZoom_Click();
        QCOMPARE(trend().surface().scaleWidth(), 2521.0F);
    }

    void aStoredSizeOpensWithItsScrollSteps_data() {
        QTest::addColumn<int>("stored");
        QTest::newRow("half") << 1;
        QTest::newRow("custom") << 3;
    }
    void aStoredSizeOpensWithItsScrollSteps() {
        QFETCH(int, stored);
        testing::storeModelRun(state(), files(), 32);
        state().Config.ScaleCustom = static_cast<std::int16_t>(stored);
        state().Config.CustomScaleLow = state().Config.CustomScaleHigh = 2;
        openFresh();
        const QWidget& frame = part<QWidget>("Frame1");
        QTest::keyClick(&trend(), Qt::Key_PageDown);
        QVERIFY2(qAbs(-trend().x() - frame.width()) < 10, qPrintable(QString::number(trend().x())));
        QTest::keyClick(&trend(), Qt::Key_Down);
        const int step = -trend().y();
        QVERIFY2(step > frame.height() / 25 && step < frame.height() / 15,
            qPrintable(QString::number(step)));
    }

    // --- Values that cannot be formed

    void aMissingPinionTakesItsOwnLabelOnly() {
        testing::storeModelRun(state(), files(), 25);
        const auto look = [this](int teeth, QMap<QString, QString>& shown, QSet<QString>& hits) {
            state().Run.image.analog.PinionTeeth = static_cast<std::int16_t>(teeth);
            saveRun();
            openFresh();
            clickAt(500); // what is shown first must not stay
            clickAt(600);
            shown = texts();
            hits = hitsAt(600);
            unload<DataGraph>();
        };
        QMap<QString, QString> whole;
        QMap<QString, QString> missing;
        QSet<QString> wholeHits;
        QSet<QString> missingHits;
        look(10, whole, wholeHits);
        look(0, missing, missingHits);
        QVERIFY(whole[QStringLiteral("Tyre_Growth")].endsWith(QLatin1String(" in")));
        QCOMPARE(missing[QStringLiteral("Tyre_Growth")], QStringLiteral("N/A"));
        QCOMPARE(missing[QStringLiteral("LoggerTime")], QStringLiteral("Time: 5.20 sec"));
        whole.remove(QStringLiteral("Tyre_Growth"));
        missing.remove(QStringLiteral("Tyre_Growth"));
        QCOMPARE(missing, whole);
        QVERIFY(wholeHits.size() > 10);
        QVERIFY(std::any_of(wholeHits.begin(), wholeHits.end(),
            [](const QString& hit) { return hit.startsWith(QLatin1String("Oil      = ")); }));
        for (const QString& hit : wholeHits - missingHits)
            QVERIFY2(hit.startsWith(QLatin1String(" Tyre Growth")), qPrintable(hit));
    }

    void missingBasketTeethEmptyWhatLiesBehind() {
        testing::storeModelRun(state(), files(), 25);
        state().Run.image.header.BasketGearTeeth = 0;
        saveRun();
        openFresh();
        for (const int sample : {500, 600}) {
            clickAt(static_cast<float>(sample));
            const core::RunSample& row = state().Run.image.samples[sample];
            QMap<QString, QString> shown = texts();
            QCOMPARE(shown.take(QStringLiteral("Rpm")), QString::number(row.EngineRpm));
            QCOMPARE(shown.take(QStringLiteral("InputRpm")), QString::number(row.InputRpm));
            QCOMPARE(shown.take(QStringLiteral("OutPutRpm")), QString::number(row.OutputRpm));
            QVERIFY(!shown.take(QStringLiteral("LoggerTime")).isEmpty());
            for (auto label = shown.begin(); label != shown.end(); ++label)
                QVERIFY2(label.value().isEmpty(), qPrintable(label.key()));
        }
    }

    void neighboursOfADownloadAreThoseOfItsOwnRow() {
        for (const int number : {1, 2, 3, 4}) store(32, number);
        library::runList().read("/kvo", files());
        library::runList().chooseFile("24060512.34d");
        openFresh();
        QVERIFY(!part<QToolButton>("PreviousData").isEnabled());
        QVERIFY(part<QToolButton>("NextData").isEnabled());
        press("NextData");
        QCOMPARE(state().Run.path, pathOf(3));
    }

    // --- Nothing is cut

    void aValueCoversTheOverlaysRoom() {
        store(32, 1);
        store(32, 2);
        DataGraph& graph = openByChooser(taking(2));
        const auto labelAtTheEnd = [this, &graph] {
            const auto& cell = *part<QWidget>("Rpm").parentWidget();
            return graph.childAt(cell.mapTo(&graph, QPoint(cell.width() - 3, cell.height() / 2)));
        };
        QCOMPARE(labelAtTheEnd()->objectName(), QStringLiteral("Rpm"));
        overlay(1);
        QCOMPARE(labelAtTheEnd()->objectName(), QStringLiteral("OverlayRpm"));
        command("Mnu_Overlay").trigger();
        QCOMPARE(labelAtTheEnd()->objectName(), QStringLiteral("Rpm"));
    }

    void everyValueHasItsRoom_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("withOverlay");
        for (const int type : {8, 12, 17, 20, 25, 32, 43}) {
            QTest::addRow("%d", type) << type << false;
            QTest::addRow("%d with an overlay", type) << type << true;
        }
    }
    void everyValueHasItsRoom() {
        QFETCH(int, type);
        QFETCH(bool, withOverlay);
        store(type, 1);
        store(type, 2);
        state().Config.Vehicle_Type = 2; // the clutch takes room as well
        if (withOverlay) {
            openOverlaid({960, 540});
        } else {
            openByChooser(taking(2), {960, 540});
        }
        for (const QSize size : {QSize(960, 540), QSize(1024, 768), QSize(1366, 768)}) {
            form<DataGraph>().resize(size);
            QCoreApplication::processEvents();
            QCOMPARE(form<DataGraph>().size(), size);
            for (const char* longest : {"-13.34", "187.01", "-00.00 in", "-32768"})
                allLabelsHold(QLatin1String(longest));
            nothingOverlaps();
        }
    }
};

KVO_FORM_TEST_MAIN(DataGraphWiringTest)
#include "data_graph_wiring_test.moc"
