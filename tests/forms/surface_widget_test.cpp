// The surface as a real widget: what is in view is pixel for pixel the part of the whole picture,
// after every way in which the view or the picture can change.
#include "platform/qt/surface_widget.h"
#include "platform/services.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/support/scripted_dialogs.h"

#include <QCoreApplication>
#include <QProcess>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <fstream>
#include <random>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#include <unistd.h>
#endif

using kvo::platform::SurfaceSize;
using kvo::platform_qt::paintOperations;
using kvo::platform_qt::paintWhole;
using kvo::platform_qt::SurfaceWidget;

class SurfaceWidgetTest : public QObject {
    Q_OBJECT

    struct Window {
        QWidget frame;
        SurfaceWidget* trend = new SurfaceWidget(&frame);
        explicit Window(QSize surface = {1500, 1100}, QSize view = {400, 300}) {
            frame.resize(view);
            trend->resize(surface);
            frame.show();
            QVERIFY(QTest::qWaitForWindowExposed(&frame));
        }
        void scrollTo(int x, int y) {
            trend->move(-x, -y);
            QCoreApplication::processEvents();
        }
        // What the user sees, and below it what he should see.
        // That is the window's own pixels, not a painting made for the test, so that a part which
        // was not painted shows.
        QImage seen(bool atOnce = false) {
            if (!atOnce) QCoreApplication::processEvents();
            // The off-screen screen knows no scale factor.
            const QPixmap pixels = trend->devicePixelRatioF() == 1
                                       ? frame.screen()->grabWindow(frame.winId())
                                       : frame.grab();
            return pixels.toImage().convertToFormat(QImage::Format_RGB32);
        }
        QImage expected() {
            const SurfaceSize size = trend->deviceSize();
            const double ratio = trend->devicePixelRatioF();
            QImage image(size.widthPx, size.heightPx, QImage::Format_RGB32);
            const kvo::platform::PixelRect all{0, 0, size.widthPx, size.heightPx};
            auto& surface = trend->surface();
            paintWhole({&image, all}, all, surface.kept(), surface.backColor(), size, ratio);
            paintOperations(
                {&image, all}, all, surface.upper(), 0, surface.upper().size(), size, ratio);
            return image.copy(static_cast<int>(-trend->x() * ratio),
                static_cast<int>(-trend->y() * ratio), static_cast<int>(frame.width() * ratio),
                static_cast<int>(frame.height() * ratio));
        }
        bool isRight(bool atOnce = false) {
            QImage now = seen(atOnce);
            now.setDevicePixelRatio(1);
            return now == expected();
        }
    };

    static void drawCurves(SurfaceWidget& trend, unsigned seed = 1) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> height(0, 1000);
        auto& s = trend.surface();
        s.setAutoRedraw(true);
        s.setScale(0, 1100, 1361, 0);
        s.cls();
        s.setBackColor(0x404040);
        s.setForeColor(0xFFFFFF);
        for (int y = 100; y < 1100; y += 100) {
            s.setDrawStyle(2);
            s.line(0, static_cast<float>(y), 1361, static_cast<float>(y), 0xC0C0C0);
            s.setCurrentX(10);
            s.setCurrentY(static_cast<float>(y - 3));
            s.print(" 1000 Rpm");
        }
        for (int style = 0; style < 5; ++style) {
            s.setDrawStyle(style);
            s.setCurrentX(0);
            s.setCurrentY(0);
            for (int i = 1; i <= 1360; i += 8) {
                s.lineTo(static_cast<float>(i), height(random), 0x40FFU * (1U + unsigned(style)));
            }
        }
        s.setDrawStyle(0);
    }

    static void drawTimeLine(SurfaceWidget& trend, float x) {
        auto& s = trend.surface();
        s.setAutoRedraw(false);
        s.refresh();
        s.setDrawStyle(4);
        s.line(x, 1100, x, 0, 255);
        s.setDrawStyle(0);
    }

private slots:
    void viewIsPixelForPixelTheWhole() {
        Window window;
        drawCurves(*window.trend);
        QVERIFY(window.isRight());
        const std::pair<int, int> places[] = {
            {30, 0}, {31, 7}, {20, 400}, {1100, 800}, {1099, 790}, {0, 0}, {500, 300}, {460, 330}};
        for (const auto& [x, y] : places) {
            window.scrollTo(x, y);
            QVERIFY2(window.isRight(), qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
        }
    }

    void scrollStepPaintsOnlyWhatCameIn() {
        Window window;
        drawCurves(*window.trend);
        QCoreApplication::processEvents();
        const int paints = window.trend->fullPaints();
        for (int i = 1; i < 40; ++i) window.scrollTo(8 * i, 4 * i);
        QCOMPARE(window.trend->fullPaints(), paints);
        QVERIFY(window.isRight());
    }

    void curveDrawnOnTopSurvivesScrolling() {
        Window window;
        drawCurves(*window.trend);
        QCoreApplication::processEvents();
        const int paints = window.trend->fullPaints();
        window.trend->surface().setDrawStyle(1);
        window.trend->surface().lineTo(700, 500, 0xFF00);
        window.trend->surface().lineTo(10, 900, 0xFF00);
        QCoreApplication::processEvents();
        QCOMPARE(window.trend->fullPaints(), paints);
        QVERIFY(window.isRight());
        window.scrollTo(200, 100);
        QVERIFY(window.isRight());
    }

    // The image reaches beyond the view after a scroll; what is drawn then is there too, and a
    // larger view or one that turns back shows nothing stale.
    void whatLiesAheadIsKeptRight() {
        Window window;
        drawCurves(*window.trend);
        QVERIFY(window.isRight());
        window.scrollTo(60, 40);
        QVERIFY(window.isRight());
        window.trend->surface().lineTo(700, 100, 0xFF00FF);
        window.trend->surface().lineTo(10, 900, 0xFF00FF);
        for (const QPoint at : {QPoint(100, 40), QPoint(150, 90), QPoint(149, 120), QPoint(40, 20),
                 QPoint(10, 0), QPoint(1090, 790), QPoint(1100, 800), QPoint(1020, 740)}) {
            window.scrollTo(at.x(), at.y());
            QVERIFY2(window.isRight(), qPrintable(QStringLiteral("%1 %2").arg(at.x()).arg(at.y())));
        }
        window.frame.resize(440, 330);
        QVERIFY(window.isRight());
        window.scrollTo(900, 600);
        QVERIFY(window.isRight());
        window.frame.resize(300, 200);
        window.scrollTo(920, 620);
        QVERIFY(window.isRight());
    }

    // Steps inside of what was painted ahead paint nothing more.
    void aStepBackAndForthPaintsNothingAnew() {
        Window window;
        drawCurves(*window.trend);
        QVERIFY(window.isRight());
        window.scrollTo(60, 0);
        const int strips = window.trend->stripPaints();
        for (const int x : {100, 61, 159, 60}) {
            window.scrollTo(x, 0);
            QVERIFY(window.isRight());
        }
        QCOMPARE(window.trend->stripPaints(), strips);
        window.scrollTo(170, 0);
        QVERIFY(window.isRight());
        QCOMPARE(window.trend->stripPaints(), strips + 1);
    }

    void timeLineIsShownAtOnceAndMovesAlone() {
        Window window;
        drawCurves(*window.trend);
        QCoreApplication::processEvents();
        const int paints = window.trend->fullPaints();
        for (float x = 20; x < 60; x += 3) {
            drawTimeLine(*window.trend, x);
            QVERIFY(window.isRight(true));
        }
        window.scrollTo(13, 5);
        QVERIFY(window.isRight());
        QCOMPARE(window.trend->fullPaints(), paints);
        window.trend->surface().refresh();
        QVERIFY(window.isRight());
        QCOMPARE(window.trend->fullPaints(), paints);
    }

    void crossAndWordLieOnTopUntilTheNextRefresh() {
        Window window;
        drawCurves(*window.trend);
        const QImage plain = window.seen();
        auto& s = window.trend->surface();
        s.setAutoRedraw(false);
        s.setDrawStyle(2);
        s.line(100, 1100, 240, 0, 255);
        s.line(100, 0, 240, 1100, 255);
        s.setCurrentX(120);
        s.setCurrentY(900);
        s.setFontSize(25);
        s.print("AVERAGE");
        s.setFontSize(7);
        QCoreApplication::processEvents();
        QVERIFY(window.isRight());
        QVERIFY(window.seen() != plain);
        window.scrollTo(40, 90);
        QVERIFY(window.isRight());
        window.scrollTo(0, 0);
        s.refresh();
        QCoreApplication::processEvents();
        QCOMPARE(window.seen(), plain);
    }

    void resizeAndColoursPaintAnew() {
        Window window;
        drawCurves(*window.trend);
        QVERIFY(window.isRight());
        window.trend->resize(1800, 900);
        QVERIFY(window.isRight());
        window.frame.resize(500, 350);
        QVERIFY(window.isRight());
        window.trend->surface().setBackColor(0x102030);
        QVERIFY(window.isRight());
        drawCurves(*window.trend, 2);
        QVERIFY(window.isRight());
        window.trend->resize(100, 80);
        window.frame.resize(100, 80);
        QVERIFY(window.isRight());
    }

    void hugeSurfaceCostsNoMoreThanTheView() {
        Window window({400 * 15, 300 * 15});
        drawCurves(*window.trend);
        window.trend->resize(28800, 16200);
        QVERIFY(window.trend->surface().usable());
        window.scrollTo(28300, 15800);
        QVERIFY(window.trend->fullPaints() > 0);
        window.trend->resize(2000000, 16200);
        QVERIFY(!window.trend->surface().usable());
    }

    void mouseAndKeysComeInTheUserScale() {
        Window window({1361, 1100}, {1361, 1100});
        window.trend->surface().setScale(0, 1100, 1361, 0);
        QSignalSpy down(window.trend, &SurfaceWidget::mouseDown);
        QSignalSpy moved(window.trend, &SurfaceWidget::mouseMoved);
        QSignalSpy up(window.trend, &SurfaceWidget::mouseUp);
        QSignalSpy keys(window.trend, &SurfaceWidget::keyDown);
        QTest::mousePress(window.trend, Qt::RightButton, {}, {1360, 0});
        QTest::mouseMove(window.trend, {680, 550});
        QTest::mouseRelease(window.trend, Qt::RightButton, {}, {1360, 1099});
        QCOMPARE(down.size(), 1);
        QCOMPARE(down[0][0].value<Qt::MouseButton>(), Qt::RightButton);
        QCOMPARE(down[0][1].toFloat(), 1361.0F);
        QCOMPARE(down[0][2].toFloat(), 1100.0F);
        QVERIFY(!moved.isEmpty());
        QVERIFY(qAbs(moved.back()[1].toFloat() - 680.5F) < 1);
        QCOMPARE(up[0][1].toFloat(), 1361.0F);
        QVERIFY(qAbs(up[0][2].toFloat()) < 0.001F);
        QTest::keyClick(window.trend, Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClick(window.trend, Qt::Key_Left);
        QTest::keyClick(window.trend, Qt::Key_A);
        QCOMPARE(keys.size(), 2);
        QCOMPARE(keys[0][0].toInt(), int(Qt::Key_Right));
        QCOMPARE(keys[0][1].value<Qt::KeyboardModifiers>(), Qt::ShiftModifier);
    }

    void exportedPictureIsTheSurfaceAtItsSize() {
        Window window({600, 400}, {600, 400});
        drawCurves(*window.trend);
        drawTimeLine(*window.trend, 300);
        if (window.trend->devicePixelRatioF() != 1) QSKIP("made for one device pixel to a pixel");
        QCOMPARE(window.trend->picture({600, 400}), window.expected());
        QCOMPARE(window.trend->picture({900, 700}).size(), QSize(900, 700));
    }

    // The image of a surface that fills a large window is too large for what is left of the memory:
    // the picture stays away, that is told once, and it is back when there is memory again.
    void paintsNothingWithoutMemoryAndSaysSo() {
#if !defined(Q_OS_LINUX) || defined(KVO_SANITIZED)
        QSKIP("the sanitizer has memory of its own, and other systems count theirs otherwise");
#else
        kvo::testing::ScriptedDialogs dialogs;
        kvo::platform::services().dialogs = &dialogs;
        Window window({600, 400}, {600, 400});
        drawCurves(*window.trend);
        QVERIFY(window.isRight());
        rlimit before{};
        QCOMPARE(getrlimit(RLIMIT_AS, &before), 0);
        dialogs.expectBox("Not enough memory to do this.", kvo::platform::boxStyle::critical, "Kvo")
            .whileShown = [&before] { setrlimit(RLIMIT_AS, &before); };
        QImage picture(8000, 6000, QImage::Format_RGB32); // stands for the window's own pixels
        window.trend->resize(8000, 6000);
        long pages = 0;
        QVERIFY(std::ifstream("/proc/self/statm") >> pages);
        const rlim_t room = rlim_t{64} << 20U; // for all but the image
        const rlimit little{
            static_cast<rlim_t>(pages * sysconf(_SC_PAGESIZE)) + room, before.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_AS, &little), 0);
        window.trend->render(&picture);
        window.trend->render(&picture);
        QTRY_COMPARE(QString::fromStdString(dialogs.problems()), QString());
        setrlimit(RLIMIT_AS, &before);
        window.trend->resize(600, 400);
        QVERIFY(window.isRight());
        kvo::platform::services().dialogs = nullptr;
#endif
    }

    // The same tests on a screen with two device pixels to one.
    void allThatWithAScaleFactor() {
        if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) QSKIP("is the scaled run itself");
        QProcess self;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
        self.setProcessEnvironment(environment);
        self.setProcessChannelMode(QProcess::ForwardedChannels);
        self.start(QCoreApplication::applicationFilePath(), {kvo::testing::nameOfFormTest()});
        QVERIFY(self.waitForFinished(120000));
        QCOMPARE(self.exitCode(), 0);
    }
};

KVO_FORM_TEST_MAIN(SurfaceWidgetTest)
#include "surface_widget_test.moc"
