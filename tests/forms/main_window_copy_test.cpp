// Copy and e-mail as the main window opens them.
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/main_window.h"

#include <QPushButton>
#include <QToolButton>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::VrnWin32;

class MainWindowCopyTest : public QObject, private testing::MainWindow {
    Q_OBJECT

private slots:
    void init() { open(); }
    void cleanup() { QCOMPARE(closeAndTell(), QString()); }

    void copyAndMailOpenTheOneFormInItsTwoLayouts() {
        shownWindow();
        const auto expectForm = [](const char* caption) {
            onModal([caption](QWidget* modal) {
                QVERIFY(menusDisabled());
                QCOMPARE(modal->objectName(), QStringLiteral("Copy"));
                QCOMPARE(modal->windowTitle(), QLatin1String(caption));
                modal->close();
            });
        };
        expectForm("Data File Copy");
        command("Mnu_copydata(0)").trigger();
        QVERIFY(menusEnabled());
        expectForm("Email Files");
        command("Mnu_copydata(1)").trigger();
        QVERIFY(menusEnabled());
        expectForm("Data File Copy");
        QCOMPARE(userClick(&control<QToolButton>(form<VrnWin32>(), "CopyData")), QString());
        QVERIFY(menusEnabled());
    }

    void aMailTellsTheProgramsVersionAndPage() {
        shownWindow();
        m_program->dialogs.expectBoxTitled("Email Files");
        onModal([](QWidget* modal) {
            QCOMPARE(userClick(&control<QPushButton>(*modal, "But_Copy")), QString());
        });
        command("Mnu_copydata(1)").trigger();
        QCOMPARE(m_program->mail.drafts.size(), std::size_t(1));
        QVERIFY(m_program->mail.drafts[0].body.find(
                    "KVO Version 1.00  ( Kvo available at: https://kvo.example )") !=
                std::string::npos);
    }
};

KVO_FORM_TEST_MAIN(MainWindowCopyTest)
#include "main_window_copy_test.moc"
