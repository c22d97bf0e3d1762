// The rulers over an enlarged surface, through the window.
#include "graph/forms/ruler_strip.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/user_click.h"

#include <QScrollBar>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphRulersTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    RulerStrip& heights() { return part<RulerStrip>("RulerHeights"); }
    RulerStrip& times() { return part<RulerStrip>("RulerTimes"); }
    QScrollBar& along() { return part<QScrollBar>("HScroll"); }
    QScrollBar& down() { return part<QScrollBar>("VScroll"); }
    static bool says(const RulerStrip& strip, const std::string& text) {
        for (const graph::RulerText& one : strip.ruler().texts) {
            if (one.text == text) return true;
        }
        return false;
    }
    QImage frame() {
        return part<QWidget>("Frame1").grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    void scrollFar() {
        command("Mnu_ScaleItem(2)").trigger();
        along().setValue(along().maximum() / 2);
        down().setValue(down().maximum() / 2);
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void noneOnASurfaceInItsFrame() {
        open(32);
        QVERIFY(!heights().isVisible());
        QVERIFY(!times().isVisible());
        const QImage before = frame();
        scrollFar();
        command("Mnu_ScaleItem(0)").trigger();
        QVERIFY(!heights().isVisible());
        QVERIFY(!times().isVisible());
        QVERIFY(frame() == before);
    }

    void eachIsPinnedWhileItsNumbersAreOutOfView() {
        open(32);
        command("Mnu_ScaleItem(2)").trigger();
        QVERIFY(!heights().isVisible());
        along().setValue(along().maximum() / 2);
        QVERIFY(heights().isVisible());
        QVERIFY(!times().isVisible());
        QCOMPARE(heights().x(), 0);
        QCOMPARE(heights().height(), part<QWidget>("Frame1").height());
        down().setValue(down().maximum());
        QVERIFY(times().isVisible());
        QCOMPARE(times().pos(), QPoint(0, 0));
        QCOMPARE(heights().y(), times().height());
        QVERIFY(says(heights(), "1000 Rpm"));
        along().setValue(0);
        QVERIFY(!heights().isVisible());
        QVERIFY(times().isVisible());
        QVERIFY(says(times(), "0.0 s"));
        down().setValue(0);
        QVERIFY(!times().isVisible());
    }

    void aZoomShowsThemToo() {
        open(32);
        clickAt(900);
        for (int i = 0; i < 3; ++i) press("ZoomIn");
        QVERIFY(heights().isVisible());
        press("CancelZoom");
        QVERIFY(!heights().isVisible());
    }

    // A tick of a ruler is at its line of the grid.
    void ticksMeetTheGrid() {
        open(32);
        scrollFar();
        const float rpmScale = view().RpmScale;
        for (const graph::RulerText& text : heights().ruler().texts) {
            if (text.text.find("Rpm") == std::string::npos) continue;
            const float height = std::stof(text.text) / rpmScale;
            const int y = place(0, height).y() + trend().y();
            QVERIFY(qAbs(text.leftTop.y - 1 - y) <= 1);
        }
        QVERIFY(!times().ruler().ticks.empty());
    }

    // They hide what lies beneath on a ground of the surface's own colour.
    void nothingShowsThrough() {
        open(32);
        scrollFar();
        const QRgb ground = QColor(Qt::black).rgb();
        const QImage picture = frame();
        const QRect strip = heights().geometry();
        for (const graph::RulerText& text : heights().ruler().texts) {
            for (int x = strip.left(); x < text.leftTop.x; ++x)
                QCOMPARE(picture.pixel(x, text.leftTop.y + 6), ground);
        }
    }

    // The screen's own pixels, not a painting made for the test: a strip that is left as it was
    // after a step would show.
    void everyStepOfAScrollShowsOnTheScreen() {
        open(32);
        scrollFar();
        QWidget& inFrame = part<QWidget>("Frame1");
        if (inFrame.devicePixelRatioF() != 1) QSKIP("off-screen, the screen knows no scale factor");
        for (int i = 0; i < 6; ++i) {
            (i % 2 == 0 ? along() : down()).triggerAction(QAbstractSlider::SliderSingleStepAdd);
            QCoreApplication::processEvents();
            const QWidget& window = *inFrame.window();
            const QImage screen = window.screen()->grabWindow(window.winId()).toImage();
            const QRect place(inFrame.mapTo(&window, QPoint()), inFrame.size());
            QCOMPARE(screen.copy(place).convertToFormat(QImage::Format_RGB32), frame());
        }
    }

    void theMouseReachesTheSurfaceThroughThem() {
        open(32);
        scrollFar();
        QWidget& inFrame = part<QWidget>("Frame1");
        QCOMPARE(inFrame.childAt(heights().geometry().center()), &trend());
        QCOMPARE(inFrame.childAt(times().geometry().center()), &trend());
    }

    void aRaisedCurveTakesItsNumbersAway() {
        DataGraph& graph = open(32);
        scrollFar();
        QVERIFY(!heights().ruler().texts.empty());
        state().Config.ComboScale[channels::engineChannel] = 20;
        graph.takeOptions();
        for (const graph::RulerText& text : heights().ruler().texts)
            QVERIFY(text.text.find("Rpm") == std::string::npos);
        state().Config.ComboScale[channels::mphChannel] = 20;
        graph.takeOptions();
        QVERIFY(!heights().isVisible());
    }

    void theyGoWithTheRun() {
        DataGraph& graph = open(32);
        scrollFar();
        QVERIFY(times().isVisible());
        state().Run.SampleCount = 0;
        graph.takeOptions();
        QVERIFY(!times().isVisible());
        QVERIFY(!heights().isVisible());
    }

    void theyTakeTheBackgroundsColour() {
        open(32);
        scrollFar();
        chooseBackground(platform::white);
        const QPoint corner = heights().geometry().topLeft() + QPoint(0, 1);
        QCOMPARE(frame().pixel(corner), QColor(Qt::white).rgb());
    }

    void thePictureOfTheSurfaceKnowsNothingOfThem() {
        open(32);
        wipe();
        const QImage whole = picture();
        scrollFar();
        wipe();
        QVERIFY(picture() == whole);
    }

    // With KVO_PICTURES naming a folder: what they look like.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        for (const QSize size : {QSize(1024, 768), QSize(1366, 768), QSize(1920, 1080)}) {
            DataGraph& graph = open(32, size);
            const auto save = [&](const char* name) {
                QVERIFY(graph.saveWindowPicture(
                    QStringLiteral("%1/rulers-%2-%3.png").arg(folder, name).arg(size.width())));
            };
            command("Mnu_ScaleItem(1)").trigger();
            along().setValue(along().maximum() / 3);
            save("half");
            scrollFar();
            save("quarter");
            for (int i = 0; i < 8; ++i) press("ZoomIn");
            save("zoomed");
            command("Mnu_FitWhole").trigger();
            save("full");
            unload<DataGraph>();
        }
    }
};

KVO_FORM_TEST_MAIN(GraphRulersTest)
#include "graph_rulers_test.moc"
