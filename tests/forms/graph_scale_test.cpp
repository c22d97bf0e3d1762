// The sizes of the graph window: full, half and custom, zoom and scrolling.
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

#include <limits>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphScaleTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    // 0 where the system does not tell, or where a sanitizer's own memory is in the figure.
    static double residentMegabytes() {
#ifndef KVO_SANITIZED
        QFile file(QStringLiteral("/proc/self/status"));
        if (file.open(QIODevice::ReadOnly)) {
            for (const QByteArray& line : file.readAll().split('\n')) {
                if (line.startsWith("VmRSS:"))
                    return line.mid(6).trimmed().split(' ')[0].toDouble() / 1024;
            }
        }
#endif
        return 0;
    }

private slots:
    void init() {
        begin();
    }
    void cleanup() {
        QCOMPARE(end(), QString());
    }

    void trendFillsItsFrameAtFullScale() {
        for (const QSize size : {QSize(1366, 768), QSize(1920, 1080)}) {
            DataGraph& graph = open(32, size);
            const QWidget& frame = part<QWidget>("Frame1");
            QCOMPARE(frame.width(), size.width());
            // As it comes; a resize gives 30 twips less.
            QCOMPARE(trend().width(), size.width());
            QCOMPARE(trend().height(), frame.height());
            QCOMPARE(trend().pos(), QPoint(0, 0));
            // The window's height less 3200 twips.
            QVERIFY(qAbs(trend().height() - (graph.height() - 213)) <= 1);
            QVERIFY(!part<QScrollBar>("HScroll").isVisible());
            graph.resize(size - QSize(100, 50));
            QCoreApplication::processEvents();
            QCOMPARE(trend().width(), size.width() - 102);
            QCOMPARE(trend().height(), frame.height());
            unload<DataGraph>();
        }
    }

    void halfScreenDoublesTheSurface() {
        open(32);
        const QSize full = trend().size();
        command("Mnu_ScaleItem(1)").trigger();
        QCOMPARE(part<QMenu>("Mnu_Scale").title(), QStringLiteral("&Graph Scale(1/2)  "));
        QCOMPARE(trend().width(), 2 * 1366);
        QVERIFY(trend().height() > 2 * full.height());
        QVERIFY(part<QScrollBar>("HScroll").isVisible());
        QVERIFY(command("Mnu_ScaleItem(1)").isChecked());
        QScrollBar& along = part<QScrollBar>("HScroll");
        QVERIFY(along.maximum() > 0);
        along.setValue(along.maximum());
        const QWidget& frame = part<QWidget>("Frame1");
        QVERIFY(qAbs(trend().x() + trend().width() - frame.width()) <= 1);
        QScrollBar& down = part<QScrollBar>("VScroll");
        down.setValue(down.maximum());
        QVERIFY(qAbs(trend().y() + trend().height() - frame.height()) <= 1);
        command("Mnu_ScaleItem(0)").trigger();
        QCOMPARE(trend().pos(), QPoint(0, 0));
        QVERIFY(!along.isVisible());
        QCOMPARE(int(state().Config.ScaleCustom), 0);
    }

    void fifteenWindowsEachWayStaySmall() {
        testing::storeModelRun(state(), files(), 43);
        state().Config.ScaleCustom = 3;
        state().Config.CustomScaleLow = 15;
        state().Config.CustomScaleHigh = 15;
        openFresh({1920, 1080});
        QCOMPARE(part<QMenu>("Mnu_Scale").title(), QStringLiteral("&Graph Scale(Custom)"));
        QVERIFY(trend().width() > 14 * 1920);
        QScrollBar& along = part<QScrollBar>("HScroll");
        QScrollBar& down = part<QScrollBar>("VScroll");
        QVERIFY(along.isVisible() && along.maximum() > 0);
        for (int step = 0; step <= 20; ++step) {
            along.setValue(along.maximum() * step / 20);
            down.setValue(down.maximum() * (step % 5) / 5);
            QCoreApplication::processEvents();
        }
        QCOMPARE(trend().x() + trend().width(), part<QWidget>("Frame1").width());
        const double resident = residentMegabytes();
        QVERIFY2(resident < 150, qPrintable(QStringLiteral("%1 MB").arg(resident)));
    }

    void zoomGrowsTheSurfaceAndCancelGivesItBack() {
        DataGraph& graph = open(32);
        const int width = trend().width();
        QVERIFY(!part<QToolButton>("CancelZoom").isEnabled());
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(1300, 500));
        press("ZoomIn");
        QVERIFY(qAbs(trend().width() - qRound(width * 1.2)) <= 2);
        QCOMPARE(int(state().Config.ScaleCustom), 4);
        QVERIFY(!menuEnabled("Mnu_Scale"));
        QVERIFY(part<QToolButton>("CancelZoom").isEnabled());
        for (int i = 0; i < 8; ++i) graph.commands().ZoomIn_Click();
        // The cursor is in view.
        const int at = trend().x() + place(graph.view().CursorSample, 0).x();
        QVERIFY2(at >= 0 && at <= part<QWidget>("Frame1").width(), qPrintable(QString::number(at)));
        press("ZoomOut");
        press("CancelZoom");
        QVERIFY(qAbs(trend().width() - width) <= 2);
        QCOMPARE(trend().pos(), QPoint(0, 0));
        QVERIFY(menuEnabled("Mnu_Scale"));
        QVERIFY(!part<QToolButton>("CancelZoom").isEnabled());
    }

    // Also where the cursor is scrolled into view.
    void aZoomStepPaintsThePictureOnce() {
        DataGraph& graph = open(32);
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(1300, 500));
        for (int step = 0; step < 6; ++step) {
            QCoreApplication::processEvents();
            const int paints = trend().fullPaints();
            graph.commands().ZoomIn_Click();
            QCoreApplication::processEvents();
            QCOMPARE(trend().fullPaints(), paints + 1);
        }
    }

    // A drawing that is done at once brings up no panel; it would cost more than the drawing.
    void aShortLoadingShowsNoPanel() {
        DataGraph& graph = open(32);
        auto& frame = part<QWidget>("LoadingFrame");
        graph.commands().Resolution_Click(4);
        QVERIFY(!frame.isVisible());
        ReadOutLine& line = part<ReadOutLine>("ReadOuts");
        line.startLoading(QStringLiteral("Loading:"), QStringLiteral("x"));
        line.setProgressMax(10);
        line.setProgress(3);
        QVERIFY(!frame.isVisible());
        QTest::qSleep(120);
        line.setProgress(4);
        QVERIFY(frame.isVisible());
        QCOMPARE(part<QProgressBar>("ProgressBar1").value(), 4);
        line.endLoading();
        QVERIFY(!frame.isVisible());
    }

    // The configuration of a zoomed window was saved: there is no size to go on from.
    void storedZoomOpensOnTheWholeFrame() {
        testing::storeModelRun(state(), files(), 32);
        state().Config.ScaleCustom = 4;
        openFresh();
        const QWidget& frame = part<QWidget>("Frame1");
        QVERIFY(trend().width() >= frame.width());
        QVERIFY(trend().height() >= frame.height());
        QVERIFY(!menuEnabled("Mnu_Scale"));
        press("CancelZoom");
        QCOMPARE(trend().width(), frame.width());
        QVERIFY(menuEnabled("Mnu_Scale"));
    }

    void surfaceWithoutMemoryGoesBackAStep() {
        DataGraph& graph = open(32);
        graph.commands().ZoomIn_Click();
        trend().surface().setUsable(false);
        dialogs().expectBox("There isn't enough video memory to display at this resolution.",
            platform::boxStyle::critical, "Memory Error");
        // The step back gives the surface a new size, which has memory again.
        command("Resolution(4)").trigger();
        QVERIFY(trend().surface().usable());
        QVERIFY(!kept().empty());
    }

    // The button is not yet enabled while the first step is drawn, so there is no step to go back.
    void firstZoomWithoutMemoryGoesBackToTheFullScreen() {
        testing::storeModelRun(state(), files(), 32);
        state().Config.ScaleCustom = 3;
        state().Config.CustomScaleLow = 255;
        state().Config.CustomScaleHigh = 1;
        openFresh({3700, 700}); // 255 of these are in reach, a fifth more is not
        QVERIFY(trend().surface().usable());
        QVERIFY(!part<QToolButton>("CancelZoom").isEnabled());
        dialogs().expectBox("There isn't enough video memory to display at this resolution.",
            platform::boxStyle::critical, "Memory Error");
        press("ZoomIn");
        QCOMPARE(trend().width(), part<QWidget>("Frame1").width());
        QCOMPARE(part<QMenu>("Mnu_Scale").title(), QStringLiteral("&Graph Scale(Full)  "));
        QVERIFY(part<QToolButton>("CancelZoom").isEnabled());
        press("CancelZoom");
        QVERIFY(menuEnabled("Mnu_Scale"));
        QVERIFY(!kept().empty());
    }

    // The bars are at their ends; a smaller surface takes their places along.
    void smallerSurfaceLeavesNoGapInItsFrame() {
        DataGraph& graph = open(32);
        QTest::mouseClick(&trend(), Qt::LeftButton, {}, place(1360, 500));
        command("Mnu_ScaleItem(1)").trigger();
        for (int i = 0; i < 4; ++i) graph.commands().ZoomIn_Click();
        QScrollBar& along = part<QScrollBar>("HScroll");
        QScrollBar& down = part<QScrollBar>("VScroll");
        along.setValue(along.maximum());
        down.setValue(down.maximum());
        press("ZoomOut");
        const QWidget& frame = part<QWidget>("Frame1");
        QVERIFY(qAbs(trend().x() + trend().width() - frame.width()) <= 1);
        QVERIFY(qAbs(trend().y() + trend().height() - frame.height()) <= 1);
        // A larger window shows more of the same surface.
        along.setValue(along.maximum());
        down.setValue(down.maximum());
        graph.resize(graph.size() + QSize(200, 120));
        QCoreApplication::processEvents();
        QVERIFY(trend().x() + trend().width() >= frame.width() - 1);
        QVERIFY(trend().y() + trend().height() >= frame.height() - 1);
    }
};

KVO_FORM_TEST_MAIN(GraphScaleTest)
#include "graph_scale_test.moc"
