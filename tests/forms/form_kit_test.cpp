// Making, finding and putting away forms; texts across the border; names for assistive tools.
#include "platform/qt/text.h"
#include "platform/services.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/scripted_dialogs.h"

#include <QCheckBox>
#include <QDialog>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <new>

using namespace kvo::platform_qt;
using namespace kvo::testing;

namespace {

class Sample : public QDialog {
public:
    static inline int alive = 0;
    struct Kept {
        int visits = 0;
    };
    Sample() {
        ++alive;
        setObjectName(QStringLiteral("Sample"));
        Text_ET = named(new QLineEdit, "Text_ET");
        Command = named(new QPushButton(QStringLiteral("&Go")), "Command");
        Analog.make("Analog", [this](int i) { return new QLabel(QString::number(i), this); });
        setLayout(column({row({buddyLabel(QStringLiteral("&ET"), Text_ET), Text_ET}), Command,
            &Analog[1], &Analog[8]}));
        connect(Command, &QPushButton::clicked, this, [this] { Command_Click(); });
    }
    ~Sample() override { --alive; }
    void Command_Click() {
        unload<Sample>();
        // The handler goes on after the unload, as a form's code may.
        Text_ET->setText(QStringLiteral("late"));
        lastText = Text_ET->text();
    }
    static inline QString lastText;
    QLineEdit* Text_ET = nullptr;
    QPushButton* Command = nullptr;
    ControlArray<QLabel, 1, 8> Analog;
};

} // namespace

class FormKitTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(modalComplaints(), QString()); }

    void aDesktopFindsTheEntryOfItsMenu() {
        QCOMPARE(QGuiApplication::desktopFileName(), QStringLiteral("kvo"));
    }

    void aFormIsMadeOnFirstUseAndStaysTheSame() {
        QVERIFY(!isLoaded<Sample>());
        Sample& first = form<Sample>();
        QVERIFY(isLoaded<Sample>());
        QCOMPARE(&form<Sample>(), &first);
        QCOMPARE(Sample::alive, 1);
        unload<Sample>();
        QVERIFY(!isLoaded<Sample>());
        unload<Sample>();
        QTRY_COMPARE(Sample::alive, 0);
    }

    void aModalFormMayUnloadItselfInItsOwnHandler() {
        onModal([](QWidget* modal) {
            QCOMPARE(userClick(&control<QPushButton>(*modal, "Command")), QString());
        });
        showModal(form<Sample>());
        QVERIFY(!isLoaded<Sample>());
        QCOMPARE(Sample::lastText, QStringLiteral("late"));
        QTRY_COMPARE(Sample::alive, 0);
    }

    // Whatever is thrown up to the loop for want of memory is told once, and the loop goes on.
    void anEventWithoutMemoryIsToldOfAndDropped() {
        kvo::testing::ScriptedDialogs dialogs;
        kvo::platform::services().dialogs = &dialogs;
        dialogs.setHourglass(true);
        const auto runOut = [] { throw std::bad_alloc(); };
        dialogs.expectBox("Not enough memory to do this.", kvo::platform::boxStyle::critical, "Kvo")
            .whileShown = [&runOut] {
            QTimer::singleShot(0, qApp, runOut); // not told on top of the box
            QCoreApplication::processEvents();
        };
        QTimer::singleShot(0, qApp, runOut);
        QTRY_COMPARE(QString::fromStdString(dialogs.problems()), QString());
        QCOMPARE(dialogs.titles().size(), 1U);
        QVERIFY(!dialogs.hourglass());
        kvo::platform::services().dialogs = nullptr;
    }

    // A wait inside a handler runs an event loop of its own; the form must not go away under it.
    void aFormUnloadedInsideItsHandlersWaitLivesUntilTheHandlerIsThrough() {
        QEventLoop handler;
        QTimer::singleShot(0, &handler, [&handler] {
            form<Sample>();
            QEventLoop wait;
            QTimer::singleShot(0, [] { unload<Sample>(); });
            QTimer::singleShot(120, &wait, &QEventLoop::quit);
            wait.exec();
            QCOMPARE(Sample::alive, 1);
            handler.quit();
        });
        handler.exec();
        QTRY_COMPARE(Sample::alive, 0);
    }

    // The same for a wait that has no event loop of its own.
    void aFormUnloadedInsideAMarkedWaitLivesToo() {
        QEventLoop handler;
        QTimer::singleShot(0, &handler, [&handler] {
            form<Sample>();
            {
                const Waiting waiting;
                unload<Sample>();
                QTest::qWait(120);
                QCOMPARE(Sample::alive, 1);
            }
            handler.quit();
        });
        handler.exec();
        QTRY_COMPARE(Sample::alive, 0);
    }

    void whatIsKeptOutlivesTheForm() {
        kept<Sample>().visits = 7;
        form<Sample>();
        unload<Sample>();
        QCOMPARE(kept<Sample>().visits, 7);
    }

    void arraysAreReachedByIndex() {
        Sample& sample = form<Sample>();
        QCOMPARE(sample.Analog[8].text(), QStringLiteral("8"));
        QCOMPARE(sample.Analog[3].objectName(), QStringLiteral("Analog(3)"));
        QVERIFY(sample.Analog.find(0) == nullptr);
        QVERIFY(sample.Analog.find(9) == nullptr);
        unload<Sample>();
    }

    void namesReachAssistiveToolsButNeverReplaceHumanOnes() {
        Sample& sample = form<Sample>();
        sample.Command->setAccessibleDescription(QStringLiteral("Starts the run"));
        sample.show();
        QVERIFY(QTest::qWaitForWindowExposed(&sample));
        QCOMPARE(sample.Text_ET->accessibleDescription(), QStringLiteral("Text_ET"));
        QCOMPARE(sample.Command->accessibleDescription(), QStringLiteral("Starts the run"));
        unload<Sample>();
    }

    void aWindowThatGoesLeavesNoBox() {
        auto window = std::make_unique<QWidget>();
        auto* box = new QLineEdit;
        window->setLayout(column({box}));
        int left = 0;
        onLeave(box, [&left] { ++left; });
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        box->setFocus();
        window->hide();
        box->clearFocus();
        QCOMPARE(left, 0);
        window.reset();
        QCOMPARE(left, 0);
    }

    void leavingABoxIsNotLosingTheWindow() {
        QWidget window;
        auto* first = new QLineEdit;
        auto* second = new QLineEdit;
        window.setLayout(column({first, second}));
        int left = 0;
        onLeave(first, [&left] { ++left; });
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        first->setFocus();
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(left, 0);
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(first, Qt::Key_Tab);
        QCOMPARE(left, 1);
    }

    void textsCrossTheBorderUnchanged() {
        std::string all;
        for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
        QCOMPARE(typed(shown(all)), all);
        QCOMPARE(shown("\x80\x99\xe9"), QStringLiteral("\u20ac\u2122\u00e9"));
        QCOMPARE(shownCaption("Oil & P\xe9"), QStringLiteral("Oil && P\u00e9"));
        QCOMPARE(typed(QStringLiteral("a\u0107\U0001F600b")), std::string("a??b"));
        QCOMPARE(shownMessage("a\rb\r\nc\nd\r\r"), QStringLiteral("a\nb\nc\nd\n\n"));
        QCOMPARE(shownMessage("J\xc3\xbcrg\xc5\x82"), QStringLiteral("J\u00fcrg\u0142"));
        QCOMPARE(shownMessage("/old/J\xfcrg"), QStringLiteral("/old/J\u00fcrg"));
    }

    void numbersNeverFollowTheLocale() {
        QCOMPARE(std::strtod("2.5", nullptr), 2.5);
        char text[16] = {};
        std::snprintf(text, sizeof text, "%.2f", 1.5);
        QCOMPARE(QByteArray(text), QByteArray("1.50"));
        QCOMPARE(QLocale().decimalPoint(), QStringLiteral("."));
    }

    void digitsThatChangeAreOfOneWidth() {
        const QFontMetricsF metrics(tabularFont());
        for (char digit = '1'; digit <= '9'; ++digit) {
            QCOMPARE(metrics.horizontalAdvance(QLatin1Char(digit)),
                metrics.horizontalAdvance(QLatin1Char('0')));
        }
    }

    // A click that came later could find a dialog over the window.
    void aKeyOfACaptionClicksAtOnce() {
        QDialog window;
        auto* go = new QPushButton(QStringLiteral("&Go"));
        auto* tick = new QCheckBox(QStringLiteral("&Tick"));
        window.setLayout(column({new QLineEdit, go, tick}));
        int clicks = 0;
        connect(go, &QPushButton::clicked, &window, [&] { ++clicks; });
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_G, Qt::AltModifier);
        QCOMPARE(clicks, 1);
        QTest::keyClick(&window, Qt::Key_T, Qt::AltModifier);
        QVERIFY(tick->isChecked() && tick->hasFocus());
        // Of two captions with one key neither is meant.
        tick->setText(QStringLiteral("&Got"));
        QTest::keyClick(&window, Qt::Key_G, Qt::AltModifier);
        QCOMPARE(clicks, 1);
        QVERIFY(tick->isChecked());
    }

    void windowsAreMeasuredInTwips() {
        QCOMPARE(toTwips(795), 11925);
        QCOMPARE(toPixels(2250), 150);
    }
};

KVO_FORM_TEST_MAIN(FormKitTest)
#include "form_kit_test.moc"
