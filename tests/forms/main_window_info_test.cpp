// VrnWin32: the commands that open the info of a run and the defaults of the vehicle's setup.
#include "core/forms/doors.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QAction>
#include <QMenu>
#include <QToolButton>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::VrnWin32;

class MainWindowInfoTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;

    static QAction& command(const char* name) { return control<QAction>(form<VrnWin32>(), name); }
    static bool menusOn() {
        return form<VrnWin32>().commands().menu("Mnu_File").menuAction()->isEnabled();
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        forms::openDoors();
    }
    void cleanup() {
        const QString problems =
            modalComplaints() + QString::fromStdString(m_program->dialogs.problems());
        unloadAllForms();
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void enteringRunInfoAsksForTheRun() {
        form<VrnWin32>().show();
        int opened = 0;
        forms::doors().showInfo = [&](const std::string& path, const std::string& caption) {
            ++opened;
            QCOMPARE(path, std::string("/kvo/Data/26111514.52d"));
            QCOMPARE(caption, std::string("Info For: Sun 15 Nov 2026 Run: 1"));
            QVERIFY(!menusOn());
        };
        forms::doors().chooseRun = [](const std::string&, const std::string&) {
            return std::optional<core::ChosenRun>();
        };
        command("Mnu_EnterRunInfo").trigger();
        QCOMPARE(opened, 0);
        forms::doors().chooseRun = [](const std::string& button, const std::string& title) {
            if (button != "Load" || title != "Load Data File") qFatal("another chooser");
            return std::optional(core::ChosenRun{"/kvo/Data/26111514.52d", "/kvo/Data/26111514.52i",
                "26111514.52d", "Sun 15 Nov 2026 Run: 1   "});
        };
        command("Mnu_EnterRunInfo").trigger();
        control<QToolButton>(form<VrnWin32>(), "EnterRunInfo").click();
        QCOMPARE(opened, 2);
        QVERIFY(menusOn());
    }

    void theSetupDefaultsAreEdited() {
        form<VrnWin32>().show();
        onModal([](QWidget* modal) {
            QCOMPARE(modal->windowTitle(), QStringLiteral("Edit Vehicle Setup Defaults"));
            QVERIFY(!menusOn());
            modal->close();
        });
        command("Mnu_EditVSetup").trigger();
        QVERIFY(menusOn());
    }
};

KVO_FORM_TEST_MAIN(MainWindowInfoTest)
#include "main_window_info_test.moc"
