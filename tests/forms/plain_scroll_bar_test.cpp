// The plain scroll bar beside the toolkit's own: the same events must move both alike. What it
// paints is a few flat colours of the palette, its parts where the toolkit has them.
#include "platform/qt/plain_scroll_bar.h"
#include "tests/forms/support/form_test_main.h"

#include <QSet>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

using kvo::platform_qt::PlainScrollBar;

class PlainScrollBarTest : public QObject {
    Q_OBJECT

    // Shows its option, for the places of the parts.
    class Bar : public PlainScrollBar {
    public:
        using PlainScrollBar::PlainScrollBar;
        QRect part(QStyle::SubControl which) const {
            QStyleOptionSlider option;
            initStyleOption(&option);
            return style()->subControlRect(QStyle::CC_ScrollBar, &option, which, this);
        }
    };

    struct Pair {
        QWidget window;
        Bar plain;
        QScrollBar own;
        explicit Pair(Qt::Orientation orientation) : plain(orientation), own(orientation) {
            auto* layout = orientation == Qt::Horizontal
                               ? static_cast<QBoxLayout*>(new QVBoxLayout(&window))
                               : new QHBoxLayout(&window);
            for (QScrollBar* bar : all()) {
                layout->addWidget(bar);
                bar->setRange(0, 1000);
                bar->setPageStep(150);
                bar->setSingleStep(7);
                bar->setValue(400);
            }
            window.resize(orientation == Qt::Horizontal ? QSize(400, 80) : QSize(80, 400));
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            QCOMPARE(plain.size(), own.size());
        }
        std::array<QScrollBar*, 2> all() { return {&plain, &own}; }
        template <typename Act> void both(Act act) {
            for (QScrollBar* bar : all()) act(bar);
        }
    };

    static QSet<QRgb> coloursOf(QWidget& widget) {
        const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
        QSet<QRgb> colours;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) colours.insert(image.pixel(x, y));
        }
        return colours;
    }

    static QRgb pixelAt(QWidget& widget, const QPoint& place) {
        return widget.grab().toImage().convertToFormat(QImage::Format_RGB32).pixel(place);
    }

private slots:
    void everyPressMovesItAsTheToolkitsOwn_data() {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::newRow("horizontal") << Qt::Horizontal;
        QTest::newRow("vertical") << Qt::Vertical;
    }

    void everyPressMovesItAsTheToolkitsOwn() {
        QFETCH(Qt::Orientation, orientation);
        Pair pair(orientation);
        const bool flat = orientation == Qt::Horizontal;
        const int length = flat ? pair.plain.width() : pair.plain.height();
        QSet<int> values;
        for (int along = 2; along < length; along += 9) {
            const QPoint place = flat ? QPoint(along, 5) : QPoint(5, along);
            pair.both([&](QScrollBar* bar) { QTest::mouseClick(bar, Qt::LeftButton, {}, place); });
            QCOMPARE(pair.plain.value(), pair.own.value());
            values.insert(pair.plain.value());
        }
        QVERIFY(values.size() > 3);
    }

    void draggingMovesItAsTheToolkitsOwn() {
        Pair pair(Qt::Horizontal);
        const QPoint start = pair.plain.part(QStyle::SC_ScrollBarSlider).center();
        QSignalSpy moved(&pair.plain, &QScrollBar::valueChanged);
        pair.both([&](QScrollBar* bar) { QTest::mousePress(bar, Qt::LeftButton, {}, start); });
        QVERIFY(pair.plain.isSliderDown());
        for (const int by : {3, 40, -60, 200}) {
            pair.both([&](QScrollBar* bar) { QTest::mouseMove(bar, start + QPoint(by, 0)); });
            QCOMPARE(pair.plain.value(), pair.own.value());
        }
        pair.both([&](QScrollBar* bar) {
            QTest::mouseRelease(bar, Qt::LeftButton, {}, start + QPoint(200, 0));
        });
        QVERIFY(!pair.plain.isSliderDown());
        QVERIFY(moved.size() >= 3);
    }

    void wheelAndKeysMoveItAsTheToolkitsOwn() {
        Pair pair(Qt::Vertical);
        pair.both([](QScrollBar* bar) {
            QWheelEvent turn(QPointF(5, 50), bar->mapToGlobal(QPointF(5, 50)), {}, {0, -120},
                Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(bar, &turn);
        });
        QVERIFY(pair.plain.value() != 400);
        QCOMPARE(pair.plain.value(), pair.own.value());
        for (const int key :
            {Qt::Key_Down, Qt::Key_PageUp, Qt::Key_End, Qt::Key_Up, Qt::Key_Home}) {
            pair.both([&](QScrollBar* bar) { QTest::keyClick(bar, static_cast<Qt::Key>(key)); });
            QCOMPARE(pair.plain.value(), pair.own.value());
        }
    }

    void itsPartsAreFlatColoursOfThePalette() {
        Pair pair(Qt::Horizontal);
        PlainScrollBar& bar = pair.plain;
        const QRect slider = pair.plain.part(QStyle::SC_ScrollBarSlider);
        const QPalette colours = bar.palette();
        QCOMPARE(pixelAt(bar, slider.center()), colours.color(QPalette::Button).rgb());
        QCOMPARE(pixelAt(bar, slider.topLeft()), colours.color(QPalette::Dark).rgb());
        const QPoint beside(slider.right() + 3, slider.center().y());
        QVERIFY(pixelAt(bar, beside) != pixelAt(bar, slider.center()));
        QVERIFY(coloursOf(bar).size() <= 6);
        QVERIFY(coloursOf(pair.own).size() > 6);

        QPalette other = colours;
        other.setColor(QPalette::Button, QColor(12, 200, 34));
        bar.setPalette(other);
        QCOMPARE(pixelAt(bar, slider.center()), QColor(12, 200, 34).rgb());
    }

    void theSliderFollowsTheValue() {
        Pair pair(Qt::Vertical);
        const QPoint before = pair.plain.part(QStyle::SC_ScrollBarSlider).center();
        pair.plain.setValue(1000);
        const QPoint behind = pair.plain.part(QStyle::SC_ScrollBarSlider).center();
        QVERIFY(before != behind);
        const QRgb slider = pair.plain.palette().color(QPalette::Button).rgb();
        QCOMPARE(pixelAt(pair.plain, behind), slider);
        QVERIFY(pixelAt(pair.plain, before) != slider);
    }

    void whatIsHeldIsDarker() {
        Pair pair(Qt::Horizontal);
        const QRgb held = pair.plain.palette().color(QPalette::Mid).rgb();
        const QPoint slider = pair.plain.part(QStyle::SC_ScrollBarSlider).center();
        QTest::mousePress(&pair.plain, Qt::LeftButton, {}, slider);
        QCOMPARE(pixelAt(pair.plain, slider), held);
        QTest::mouseRelease(&pair.plain, Qt::LeftButton, {}, slider);
        QVERIFY(pixelAt(pair.plain, slider) != held);
    }

    void whatIsUnderThePointerIsLighter() {
        Pair pair(Qt::Horizontal);
        const QRect button = pair.plain.part(QStyle::SC_ScrollBarAddLine);
        const QPoint corner = button.topLeft() + QPoint(2, 2);
        const QRgb usual = pixelAt(pair.plain, corner);
        QTest::mouseMove(&pair.plain, button.center());
        QCOMPARE(pixelAt(pair.plain, corner), pair.plain.palette().color(QPalette::Midlight).rgb());
        QTest::mouseMove(&pair.plain, pair.plain.part(QStyle::SC_ScrollBarSlider).center());
        QCOMPARE(pixelAt(pair.plain, corner), usual);
    }

    void aBarWithoutWayHasNoSlider() {
        Pair pair(Qt::Horizontal);
        const QPoint slider = pair.plain.part(QStyle::SC_ScrollBarSlider).center();
        pair.plain.setRange(0, 0);
        const QPoint groove = pair.plain.part(QStyle::SC_ScrollBarGroove).center();
        QCOMPARE(pixelAt(pair.plain, slider), pixelAt(pair.plain, groove));
        QVERIFY(pixelAt(pair.plain, slider) != pair.plain.palette().color(QPalette::Button).rgb());
    }

    // In a script that runs to the left the button that adds is the left one.
    void arrowsPointToTheEnds() {
        Pair pair(Qt::Horizontal);
        for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            pair.plain.setLayoutDirection(direction);
            const QImage image = pair.plain.grab().toImage().convertToFormat(QImage::Format_RGB32);
            const QRgb arrow = pair.plain.palette().color(QPalette::ButtonText).rgb();
            const QRect left(0, 0, 20, image.height());
            const auto inked = [&](int x) {
                int count = 0;
                for (int y = 0; y < left.height(); ++y) count += image.pixel(x, y) == arrow ? 1 : 0;
                return count;
            };
            int first = 0;
            while (first < 20 && inked(first) == 0) ++first;
            int last = 19;
            while (last > 0 && inked(last) == 0) --last;
            QVERIFY(first < last);
            QVERIFY2(inked(first) < inked(last), "the arrow at the left end points to the left");
        }
    }
};

KVO_FORM_TEST_MAIN(PlainScrollBarTest)

#include "plain_scroll_bar_test.moc"
