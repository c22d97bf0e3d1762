// Conversions: the eight buttons, and two boxes of which each follows the other.
#include "calc/forms/conversions.h"

#include "core/forms/doors.h"
#include "platform/qt/text.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QClipboard>
#include <QPalette>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::Conversions;

class ConversionsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;
    int m_hidden = 0;
    int m_shown = 0;

    static QWidget& part(const char* name) { return control<QWidget>(form<Conversions>(), name); }
    static QLineEdit& box(int i) {
        return control<QLineEdit>(form<Conversions>(), i == 0 ? "Text1(0)" : "Text1(1)");
    }
    static QString unit(int i) {
        return control<QLabel>(form<Conversions>(), i == 0 ? "Label2(0)" : "Label2(1)").text();
    }
    static QPushButton& button(int i) {
        return control<QPushButton>(
            form<Conversions>(), qPrintable(QStringLiteral("Command1(%1)").arg(i)));
    }
    static void press(QWidget& widget) { QCOMPARE(userClick(&widget), QString()); }
    static QStringList boxes() { return {box(0).text(), box(1).text()}; }
    void open() {
        form<Conversions>().showForMainWindow();
        form<Conversions>().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form<Conversions>()));
    }
    void openOn(int pair) {
        open();
        press(button(pair));
    }
    static void typeIn(int i, const char* text) {
        press(box(i));
        QTest::keyClicks(&box(i), QLatin1String(text));
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_hidden = m_shown = 0;
        forms::doors().hideMainWindow = [this] { ++m_hidden; };
        forms::doors().showMainWindow = [this] { ++m_shown; };
    }
    void cleanup() {
        unloadAllForms();
        m_program.reset();
        QCOMPARE(modalComplaints(), QString());
    }

    void theBoxesComeWithTheFirstButton() {
        open();
        for (const char* name : {"Text1(0)", "Text1(1)", "Label2(0)", "Label2(1)", "Label3"})
            QVERIFY2(!part(name).isVisible(), name);
        QCOMPARE(unit(0), QStringLiteral("Cu.In"));
        QCOMPARE(unit(1), QStringLiteral("Cc"));
        const QSize size = form<Conversions>().size();
        press(button(3));
        for (const char* name : {"Text1(0)", "Text1(1)", "Label2(0)", "Label2(1)", "Label3"})
            QVERIFY2(part(name).isVisible(), name);
        QCOMPARE(control<QLabel>(form<Conversions>(), "Label3").text(), QStringLiteral("="));
        QApplication::processEvents();
        QCOMPARE(form<Conversions>().size(), size);
        QVERIFY(!box(0).hasFocus() && !box(1).hasFocus()); // the focus is not moved
    }

    void everyPairStandsAsItsTableSays() {
        open();
        QStringList letters;
        for (int i = 0; i < 8; ++i) {
            const calc::UnitPair& pair = calc::unitPairs()[static_cast<std::size_t>(i)];
            const QString caption = button(i).text();
            QCOMPARE(QString(caption).remove(QLatin1Char('&')), shown(pair.button));
            letters << caption.mid(caption.indexOf(QLatin1Char('&')) + 1, 1).toUpper();
            press(button(i));
            QCOMPARE(form<Conversions>().windowTitle(), shown(pair.title));
            QCOMPARE(unit(0), shown(pair.left));
            QCOMPARE(unit(1), shown(pair.right));
            for (int other = 0; other < 8; ++other) QCOMPARE(button(other).isChecked(), other == i);
        }
        QCOMPARE(unit(1), QStringLiteral("\u00b0C"));
        letters << QStringLiteral("C"); // of the close button
        QCOMPARE(letters.removeDuplicates(), 0);
        press(button(7)); // once more: it stays down
        QVERIFY(button(7).isChecked());
    }

    void eitherBoxFollowsTheOther() {
        openOn(3);
        typeIn(0, "1");
        QCOMPARE(boxes(), QStringList({"1", "0.45"}));
        QTest::keyClick(&box(0), Qt::Key_Backspace);
        QCOMPARE(boxes(), QStringList({"", ""}));
        typeIn(1, "1");
        QCOMPARE(boxes(), QStringList({"2.20", "1"}));
        QTest::keyClicks(&box(1), "0");
        QCOMPARE(boxes(), QStringList({"22.05", "10"}));
    }

    void theOtherBoxWaitsForTheKeyToComeUp() {
        openOn(1);
        press(box(0));
        QTest::keyPress(&box(0), Qt::Key_2);
        QCOMPARE(boxes(), QStringList({"2", ""}));
        QTest::keyRelease(&box(0), Qt::Key_2);
        QCOMPARE(boxes(), QStringList({"2", "5.08"}));
    }

    void nothingAndLessThanNothingEmptyBoth() {
        openOn(7);
        for (const int typedIn : {0, 1}) {
            for (const char* text : {"0", "-", "-5"}) {
                press(button(7));
                typeIn(1 - typedIn, "50");
                QVERIFY(!box(typedIn).text().isEmpty());
                press(box(typedIn));
                box(typedIn).selectAll();
                QTest::keyClicks(&box(typedIn), QString(QLatin1String(text)).left(1));
                QCOMPARE(boxes(), QStringList({"", ""}));
            }
        }
        typeIn(0, "98.6");
        QCOMPARE(boxes(), QStringList({"98.6", "37.0"}));
    }

    void aTailOfLettersLeavesTheOtherBox() {
        openOn(2);
        typeIn(0, "12");
        const QString metres = box(1).text();
        QTest::keyClicks(&box(0), "a");
        QCOMPARE(boxes(), QStringList({"12a", metres}));
        QTest::keyClick(&box(0), Qt::Key_Backspace);
        box(0).insert(QStringLiteral("x\u20ac"));
        QTest::keyClicks(&box(0), "y");
        QCOMPARE(box(1).text(), metres);
    }

    void anotherPairEmptiesBothBoxes() {
        openOn(3);
        typeIn(0, "5");
        press(button(4));
        QCOMPARE(boxes(), QStringList({"", ""}));
        typeIn(0, "5");
        QCOMPARE(box(1).text(), QStringLiteral("34.48"));
    }

    // The Tab that leads into a box does not turn the rounded number back over what was typed.
    void goingToTheOtherBoxChangesNothing() {
        openOn(3);
        typeIn(0, "1");
        QTest::keyPress(&box(0), Qt::Key_Tab);
        QVERIFY(box(1).hasFocus());
        QTest::keyRelease(&box(1), Qt::Key_Tab);
        QCOMPARE(boxes(), QStringList({"1", "0.45"}));
    }

    void theCursorStaysWhereTheUserTypes() {
        openOn(3);
        typeIn(0, "15");
        QTest::keyClick(&box(0), Qt::Key_Left);
        QTest::keyClicks(&box(0), "23");
        QCOMPARE(box(0).text(), QStringLiteral("1235"));
    }

    void whatTheMousePastesIsTurnedToo() {
        openOn(3);
        press(box(0));
        QApplication::clipboard()->setText(QStringLiteral("10"));
        box(0).paste();
        QCOMPARE(boxes(), QStringList({"10", "4.54"}));
    }

    void inTheMainWindowsPlaceItGivesItBack() {
        for (const bool byKey : {false, true}) {
            open();
            QVERIFY(!form<Conversions>().isModal());
            QCOMPARE(m_hidden, 1);
            QCOMPARE(m_shown, 0);
            if (byKey)
                QTest::keyClick(&form<Conversions>(), Qt::Key_Escape);
            else
                press(part("Cancel"));
            QVERIFY(!isLoaded<Conversions>());
            QCOMPARE(m_shown, 1);
            m_hidden = m_shown = 0;
        }
        open();
        form<Conversions>().close();
        QVERIFY(!isLoaded<Conversions>());
        QCOMPARE(m_shown, 1);
    }

    void overAFormItLeavesTheMainWindowAlone() {
        onModal([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("Conversions"));
            press(button(0));
            typeIn(0, "350");
            QCOMPARE(box(1).text(), QStringLiteral("5735.52"));
            press(part("Cancel"));
        });
        form<Conversions>().showOverForm();
        QVERIFY(!isLoaded<Conversions>());
        QCOMPARE(m_hidden + m_shown, 0);
    }

    // With KVO_PICTURES naming a folder: what the form looks like.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        const QPalette light = QApplication::palette();
        const QPalette dark(QColor(0x35, 0x37, 0x3b), QColor(0x2b, 0x2d, 0x30));
        for (const bool isDark : {false, true}) {
            QApplication::setPalette(isDark ? dark : light);
            const QString look = isDark ? QStringLiteral("dark") : QStringLiteral("light");
            open();
            QVERIFY(saveScreenshot(form<Conversions>(),
                QStringLiteral("%1/conversions-empty-%2.png").arg(folder, look)));
            press(button(7));
            typeIn(0, "98.6");
            QVERIFY(saveScreenshot(
                form<Conversions>(), QStringLiteral("%1/conversions-%2.png").arg(folder, look)));
            unloadAllForms();
        }
        QApplication::setPalette(light);
    }
};

KVO_FORM_TEST_MAIN(ConversionsTest)
#include "conversions_test.moc"
