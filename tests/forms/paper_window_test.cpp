// What of a window goes on paper, on a dark desktop too.
#include "platform/qt/paper_window.h"
#include "tests/forms/support/form_test_main.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

using namespace kvo;

namespace {

// A button that says something.
class SpeakingButton : public QPushButton {
public:
    using QPushButton::QPushButton;
};

QPalette darkColours() {
    QPalette dark(QColor(20, 20, 20));
    for (const auto letters : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(letters, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    return dark;
}

} // namespace

class PaperWindowTest : public QObject {
    Q_OBJECT

    QPalette m_before;
    std::unique_ptr<QWidget> m_window;

    template <class W> W* add(W* widget) {
        m_window->layout()->addWidget(widget);
        return widget;
    }
    void show() {
        m_window->resize(300, 200);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }
    std::ptrdiff_t darkPixels() {
        const auto picture = platform_qt::paperPictureOf(*m_window);
        return std::count_if(picture.pixels.begin(), picture.pixels.end(),
            [](std::uint32_t pixel) { return qGray(pixel) < 100; });
    }

private slots:
    void init() {
        m_before = QApplication::palette();
        QApplication::setPalette(darkColours());
        m_window = std::make_unique<QWidget>();
        m_window->setLayout(new QVBoxLayout);
    }
    void cleanup() {
        m_window.reset();
        QApplication::setPalette(m_before);
    }

    void lettersAreDarkOnWhite() {
        add(new QLabel(QStringLiteral("MMMM")));
        add(new QLineEdit(QStringLiteral("MMMM")))->selectAll();
        auto* disabled = add(new QLabel(QStringLiteral("MMMM")));
        disabled->setEnabled(false);
        show();
        const auto picture = platform_qt::paperPictureOf(*m_window);
        QVERIFY(!picture.pixels.empty());
        const auto all = static_cast<std::ptrdiff_t>(picture.pixels.size());
        const auto white = std::count(picture.pixels.begin(), picture.pixels.end(), 0xFFFFFFFFU);
        QVERIFY2(white > all * 8 / 10, qPrintable(QString::number(white)));
        QVERIFY(darkPixels() > 200);
    }

    void theWindowStaysAsItIs() {
        auto* label = add(new QLabel(QStringLiteral("MMMM")));
        show();
        const QImage before = m_window->grab().toImage();
        (void)platform_qt::paperPictureOf(*m_window);
        QCOMPARE(label->palette().color(QPalette::WindowText), QColor(Qt::white));
        QVERIFY(!m_window->testAttribute(Qt::WA_SetPalette));
        QCOMPARE(m_window->grab().toImage(), before);
        // Colours of its own come back too.
        m_window->setPalette(QPalette(Qt::red));
        (void)platform_qt::paperPictureOf(*m_window);
        QCOMPARE(m_window->palette().color(QPalette::Window), QColor(Qt::red));
    }

    void whatIsOnlyPressedIsLeftOut() {
        add(new QPushButton(QStringLiteral("MMMM")));
        add(new QScrollBar(Qt::Horizontal));
        m_window->layout()->setMenuBar(new QMenuBar);
        static_cast<QMenuBar*>(m_window->layout()->menuBar())->addMenu(QStringLiteral("MMMM"));
        show();
        QCOMPARE(darkPixels(), std::ptrdiff_t(0));
        auto* speaking = add(new SpeakingButton(QStringLiteral("MMMM")));
        speaking->setFlat(true);
        QCoreApplication::processEvents();
        QVERIFY(darkPixels() > 20);
    }

    // Blank lines over and under what is left would make it smaller on the page.
    void thePictureIsCutToWhatIsLeft() {
        add(new QLabel(QStringLiteral("MMMM")));
        add(new QPushButton(QStringLiteral("MMMM")));
        show();
        const auto picture = platform_qt::paperPictureOf(*m_window);
        QVERIFY(picture.widthPx >= 600); // finer than the screen
        QVERIFY(picture.heightPx < 100);
        const auto top = picture.pixels.begin();
        QVERIFY(std::any_of(
            top, top + picture.widthPx, [](std::uint32_t pixel) { return pixel != 0xFFFFFFFF; }));
    }
};

KVO_FORM_TEST_MAIN(PaperWindowTest)
#include "paper_window_test.moc"
