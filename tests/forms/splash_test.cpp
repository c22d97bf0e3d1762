// frmSplash: with and without a login, by mouse and by keyboard.
#include "mainwin/splash.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::frmSplash;

class SplashTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;

    void wantPassword(const std::string& password) {
        m_program->state.Config.Password = password;
        m_program->state.Config.Check_Password = 1;
    }
    static QLineEdit& box(QWidget* splash) { return control<QLineEdit>(*splash, "txtPassword"); }

private slots:
    void init() { m_program = std::make_unique<TestProgram>(); }
    void cleanup() {
        const QString problems =
            modalComplaints() + QString::fromStdString(m_program->dialogs.problems());
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void withoutLoginTheTimerLetsTheProgramIn() {
        frmSplash& splash = form<frmSplash>();
        auto& timer = control<QTimer>(splash, "Timer1");
        QCOMPARE(timer.interval(), 3000);
        timer.setInterval(40); // the test does not wait three seconds
        onModal([](QWidget* modal) {
            QVERIFY(modal->findChild<QLineEdit*>() == nullptr);
            QVERIFY(modal->findChild<QPushButton*>() == nullptr);
            QTest::keyClick(modal, Qt::Key_Escape); // only the timer closes it
            QVERIFY(modal->isVisible());
            modal->close();
            QVERIFY(modal->isVisible());
        });
        showModal(splash);
        QVERIFY(splash.LoginSucceeded);
    }

    void noLoginIsNeeded_data() {
        QTest::addColumn<QString>("password");
        QTest::addColumn<int>("check");
        QTest::newRow("check off") << "secret" << 0;
        QTest::newRow("blank password") << "   " << 1;
        QTest::newRow("empty password") << "" << 1;
    }
    void noLoginIsNeeded() {
        QFETCH(QString, password);
        QFETCH(int, check);
        m_program->state.Config.Password = password.toStdString();
        m_program->state.Config.Check_Password = static_cast<std::uint8_t>(check);
        QVERIFY(form<frmSplash>().findChild<QLineEdit*>() == nullptr);
    }

    void theRightPasswordLetsIn() {
        wantPassword("secret");
        onModal([](QWidget* modal) {
            QVERIFY(!control<QTimer>(*modal, "Timer1").isActive());
            QVERIFY(box(modal).hasFocus());
            QCOMPARE(box(modal).echoMode(), QLineEdit::Password);
            QTest::keyClicks(&box(modal), "secret  "); // blanks behind do not count
            QCOMPARE(userClick(&control<QPushButton>(*modal, "cmdOK")), QString());
        });
        showModal(form<frmSplash>());
        QVERIFY(form<frmSplash>().LoginSucceeded);
    }

    void enterIsOk() {
        wantPassword("secret ");
        onModal([](QWidget* modal) {
            QTest::keyClicks(&box(modal), "secret");
            QTest::keyClick(&box(modal), Qt::Key_Return);
        });
        showModal(form<frmSplash>());
        QVERIFY(form<frmSplash>().LoginSucceeded);
    }

    void wrongPasswordsNeverLockTheLogin() {
        wantPassword("secret");
        constexpr int tries = 12;
        for (int i = 0; i < tries; ++i)
            m_program->dialogs.expectBox("Invalid Password, try again!", 0, "Login");
        onModal([](QWidget* modal) {
            for (int i = 0; i < tries; ++i) {
                QTest::keyClicks(&box(modal), i % 2 == 0 ? "Secret" : " secret");
                QCOMPARE(userClick(&control<QPushButton>(*modal, "cmdOK")), QString());
                QVERIFY(modal->isVisible());
                QVERIFY(box(modal).hasFocus());
                QCOMPARE(box(modal).selectedText(), box(modal).text());
            }
            QTest::keyClicks(&box(modal), "secret"); // replaces the selected text
            QTest::keyClick(&box(modal), Qt::Key_Return);
        });
        showModal(form<frmSplash>());
        QVERIFY(form<frmSplash>().LoginSucceeded);
    }

    void cancelKeepsOut_data() {
        QTest::addColumn<int>("how");
        QTest::newRow("button") << 0;
        QTest::newRow("escape") << 1;
        QTest::newRow("close") << 2;
    }
    void cancelKeepsOut() {
        wantPassword("secret");
        onModal([](QWidget* modal) {
            QFETCH(int, how);
            if (how == 0)
                QCOMPARE(userClick(&control<QPushButton>(*modal, "cmdCancel")), QString());
            if (how == 1) QTest::keyClick(modal, Qt::Key_Escape);
            if (how == 2) modal->close();
        });
        showModal(form<frmSplash>());
        QVERIFY(!form<frmSplash>().LoginSucceeded);
    }

    void itShowsVersionAndTheVehiclesPicture() {
        m_program->files.put("/kvo/Kvocar.dll", pictureFile(40, 20, 0xFF0000));
        m_program->files.put("/kvo/Kvobike.dll", pictureFile(20, 40, 0x0000FF));
        frmSplash& car = form<frmSplash>();
        QCOMPARE(
            control<QLabel>(car, "Label_Version").text(), QStringLiteral("Version " KVO_VERSION));
        QCOMPARE(control<QLabel>(car, "Picture").pixmap().size(), QSize(40, 20));
        unload<frmSplash>();
        m_program->state.Config.Vehicle_Type = 0;
        QCOMPARE(control<QLabel>(form<frmSplash>(), "Picture").pixmap().size(), QSize(20, 40));
    }

    void aBrokenOrMissingPictureIsNoPicture() {
        m_program->files.put("/kvo/Kvocar.dll", {0x4D, 0x5A, 0x90, 0x00});
        QVERIFY(control<QLabel>(form<frmSplash>(), "Picture").pixmap().isNull());
        unload<frmSplash>();
        m_program->state.Config.Vehicle_Type = 3;
        QVERIFY(control<QLabel>(form<frmSplash>(), "Picture").pixmap().isNull());
    }
};

KVO_FORM_TEST_MAIN(SplashTest)
#include "splash_test.moc"
