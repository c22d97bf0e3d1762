#pragma once
// The main window of a program under test, on a modelled logger.
#include "link/forms/logger_line.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <QAction>
#include <QMenu>
#include <QTest>
#include <QToolBar>

#include <memory>

namespace kvo::testing {

class MainWindow {
protected:
    struct Line {
        explicit Line(TestProgram& program) : link(line, line, program.dialogs) {
            platform::services().port = &line;
            platform::services().yield = &line;
            forms::useLoggerLink(&link);
        }
        ~Line() { forms::useLoggerLink(nullptr); }
        simulator::ModelLogger logger{25};
        VirtualLine line{logger};
        link::LoggerLink link;
    };
    std::unique_ptr<TestProgram> m_program;
    std::unique_ptr<Line> m_line;

    static forms::VrnWin32& shownWindow() {
        auto& window = platform_qt::form<forms::VrnWin32>();
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) qWarning("the main window did not come up");
        return window;
    }
    static QMenu& menu(const char* name) {
        return platform_qt::control<QMenu>(platform_qt::form<forms::VrnWin32>(), name);
    }
    static QAction& command(const char* name) {
        return platform_qt::control<QAction>(platform_qt::form<forms::VrnWin32>(), name);
    }
    static bool menusEnabled() {
        bool all = true;
        for (const char* name :
            {"Mnu_File", "Mnu_Communications", "VrnTools", "Mnu_Setup", "Mnu_HelpList"})
            all = all && menu(name).menuAction()->isEnabled();
        return all &&
               platform_qt::control<QToolBar>(platform_qt::form<forms::VrnWin32>(), "Toolbar1")
                   .isEnabled();
    }
    static bool menusDisabled() {
        bool any = false;
        for (const char* name :
            {"Mnu_File", "Mnu_Communications", "VrnTools", "Mnu_Setup", "Mnu_HelpList"})
            any = any || menu(name).menuAction()->isEnabled();
        return !any &&
               !platform_qt::control<QToolBar>(platform_qt::form<forms::VrnWin32>(), "Toolbar1")
                    .isEnabled();
    }

    // A fresh program with its doors open.
    void open() {
        m_program = std::make_unique<TestProgram>();
        m_line = std::make_unique<Line>(*m_program);
        forms::openDoors();
    }
    // Ends it; what went wrong with its boxes, empty for nothing.
    QString closeAndTell() {
        const QString problems =
            modalComplaints() + QString::fromStdString(m_program->dialogs.problems());
        platform_qt::unloadAllForms();
        m_line.reset();
        m_program.reset();
        return problems;
    }
};

} // namespace kvo::testing
