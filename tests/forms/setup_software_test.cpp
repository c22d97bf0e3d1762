// SetupSoftware through its real widgets.
#include "core/config.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "setup/forms/setup_software.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QPushButton>
#include <QTabBar>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::SetupSoftware;

class SetupSoftwareTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;

    static QPushButton* button(const char* name) {
        return &control<QPushButton>(form<SetupSoftware>(), name);
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_program->state.Config = core::defaultConfig();
        forms::doors().loadLogo = [] {};
    }
    void cleanup() {
        unload<SetupSoftware>();
        const std::string problems = m_program->dialogs.problems();
        m_program.reset();
        QVERIFY2(problems.empty(), problems.c_str());
        QCOMPARE(modalComplaints(), QString());
    }

    void eachTabShowsThePageOfItsName() {
        auto& setup = form<SetupSoftware>();
        setup.show();
        auto& tabs = control<QTabBar>(setup, "TabStrip1");
        const std::array<const char*, 3> names{"General", "Graph", "Data_Logger"};
        for (int tab = 0; tab < 3; ++tab) {
            QCOMPARE(userClick(&tabs, tabs.tabRect(tab).center()), QString());
            for (int page = 0; page < 3; ++page)
                QCOMPARE(
                    control<QWidget>(setup, names.at(static_cast<std::size_t>(page))).isVisible(),
                    page == tab);
        }
    }

    void saveWritesWhatTheFormWasOpenedWith() {
        form<SetupSoftware>().show();
        QCOMPARE(userClick(button("SaveSetup")), QString());
        QVERIFY(!isLoaded<SetupSoftware>());
        core::AppConfig saved;
        QVERIFY(core::decodeConfig(*m_program->files.read("/kvo/Kvo.Cfg"), saved));
        core::AppConfig wanted;
        QVERIFY(core::decodeConfig(core::encodeConfig(core::defaultConfig()), wanted));
        QVERIFY(saved == wanted);
        QVERIFY(!kept<SetupSoftware>().DialogCancelled);
    }

    void cancelWritesNothing() {
        form<SetupSoftware>().show();
        QCOMPARE(userClick(button("CancelSetup")), QString());
        QVERIFY(!isLoaded<SetupSoftware>());
        QVERIFY(!m_program->files.exists("/kvo/Kvo.Cfg"));
        QVERIFY(kept<SetupSoftware>().DialogCancelled);
    }
};

KVO_FORM_TEST_MAIN(SetupSoftwareTest)
#include "setup_software_test.moc"
