// Menus and a toolbar made from tables: what stands where, what is enabled when, what runs.
#include "platform/qt/commands.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/own_process.h"
#include "tests/forms/support/user_click.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QToolBar>
#include <QToolButton>

#include <array>
#include <memory>

using namespace kvo::platform_qt;
using namespace kvo::testing;

namespace {

constexpr Needs run = 1;
constexpr Needs behind = 2;

void drawDot(QPainter& painter) {
    painter.drawPoint(12, 12);
}

class Window : public QMainWindow {
public:
    Window() {
        commands.makeMenus(*menuBar(), *this, menuRows());
        addToolBar(commands.makeToolbar(*this, toolRows()));
    }
    bool enabled(const char* control) const { return commands.command(control).isEnabled(); }
    bool opens(const char* control) const {
        return commands.menu(control).menuAction()->isEnabled();
    }
    bool keyEnabled(const char* text) const { return commands.key(text).isEnabled(); }

    Commands commands;
    QStringList ran;

private:
    void Mnu_Load_Click() { ran << QStringLiteral("load"); }
    void Mnu_Delete_Click() { ran << QStringLiteral("delete"); }
    void ZoomIn_Click() { ran << QStringLiteral("zoom"); }
    void Change_Click(int index) { ran << QStringLiteral("change %1").arg(index); }
    void Resolution_Click(int step) { ran << QStringLiteral("step %1").arg(step); }

    static std::span<const MenuRow<Window>> menuRows();
    static std::span<const ToolRow<Window>> toolRows();
};

// clang-format off
std::span<const MenuRow<Window>> Window::menuRows() {
    using W = Window;
    static constexpr auto rows = std::to_array<MenuRow<W>>({
        {menuBarItself, "&File", "Mnu_File", nullptr, {.subMenu = true}},
        {menuBarItself, "&Scale", "Mnu_Scale", nullptr, {.needs = run, .subMenu = true}},
        {menuBarItself, "&Empty", "Mnu_Empty", nullptr, {.subMenu = true}},
        {menuBarItself, "&Convertor", "Convertor_Mnu", &W::ZoomIn_Click},
        {"Mnu_File", "&Load", "Mnu_Load", &W::Mnu_Load_Click, {.shortcut = "Ctrl+O"}},
        {"Mnu_File", "<<<<", "Change(0)", {&W::Change_Click, 0}, {.needs = run, .line = true}},
        {"Mnu_File", ">>>>", "Change(1)", {&W::Change_Click, 1}, {.needs = run | behind}},
        {"Mnu_File", "&Print", "Mnu_Print", nullptr, {.needs = run}},
        {"Mnu_File", "&More", "Mnu_More", nullptr, {.subMenu = true}},
        {"Mnu_More", "&Delete", "Mnu_Delete", &W::Mnu_Delete_Click, {.needs = behind}},
        {"Mnu_More", "&Later", "Mnu_Later", nullptr, {.needs = run, .subMenu = true}},
        {"Mnu_Later", "Deep", "Mnu_Deep", &W::Mnu_Delete_Click},
        {"Mnu_File", "&Import", "Mnu_Import", nullptr, {.subMenu = true}},
        {"Mnu_Import", "Kvo", "Mnu_Import(0)"},
        {"Mnu_Scale", "High", "Resolution(1)", {&W::Resolution_Click, 1}, {.checkable = true}},
        {"Mnu_Scale", "Low", "Resolution(8)", {&W::Resolution_Click, 8}, {.checkable = true}},
    });
    return rows;
}

std::span<const ToolRow<Window>> Window::toolRows() {
    using W = Window;
    static constexpr auto rows = std::to_array<ToolRow<W>>({
        {"Load", "Load it", "Mnu_Load", drawDot},
        {"Next", "Next", "Change(1)", drawDot, {.line = true}},
        {"Print", "Print", "Mnu_Print", drawDot},
        {"Zoom", "Zoom", "", drawDot, {.routine = &W::ZoomIn_Click, .needs = run, .shortcut = "Ctrl+8"}},
        {"Step", "Step", "", drawDot, {.routine = {&W::Resolution_Click, 4}}},
        {"Help", "Help", "", drawDot},
    });
    return rows;
}
// clang-format on

} // namespace

class CommandsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Window> m_window;

    Window& shown() {
        m_window->show();
        m_window->activateWindow();
        if (!QTest::qWaitForWindowActive(m_window.get())) qWarning("the window did not come up");
        return *m_window;
    }

private slots:
    void init() { m_window = std::make_unique<Window>(); }
    void cleanup() {
        m_window.reset();
        QCOMPARE(modalComplaints(), QString());
    }

    void rowsStandWhereTheTableSays() {
        const auto itemsOf = [](const QList<QAction*>& actions) {
            QStringList items;
            for (const QAction* action : actions) {
                if (action->isSeparator())
                    items << QStringLiteral("-");
                else if (action->menu() != nullptr)
                    items << action->text() + QLatin1String(" > ") + action->menu()->objectName();
                else
                    items << action->text() + QLatin1String(" = ") + action->objectName();
            }
            return items;
        };
        QCOMPARE(itemsOf(m_window->menuBar()->actions()),
            QStringList({"&File > Mnu_File", "&Scale > Mnu_Scale", "&Empty > Mnu_Empty",
                "&Convertor = Convertor_Mnu"}));
        QCOMPARE(itemsOf(m_window->commands.menu("Mnu_File").actions()),
            QStringList({"&Load = Mnu_Load", "-", "<<<< = Change(0)", ">>>> = Change(1)",
                "&Print = Mnu_Print", "&More > Mnu_More", "&Import > Mnu_Import"}));
        QCOMPARE(itemsOf(m_window->commands.menu("Mnu_More").actions()),
            QStringList({"&Delete = Mnu_Delete", "&Later > Mnu_Later"}));
        QCOMPARE(itemsOf(m_window->commands.toolbar().actions()),
            QStringList({"Load it = Key_Load", "-", "Next = Key_Next", "Print = Key_Print",
                "Zoom = Key_Zoom", "Step = Key_Step", "Help = Key_Help"}));
    }

    void controlsAreFoundByTheirNames() {
        QCOMPARE(
            &control<QAction>(*m_window, "Change(1)"), &m_window->commands.command("Change(1)"));
        QCOMPARE(&control<QMenu>(*m_window, "Mnu_Later"), &m_window->commands.menu("Mnu_Later"));
        QCOMPARE(&control<QToolBar>(*m_window, "Toolbar1"), &m_window->commands.toolbar());
        const auto& button = control<QToolButton>(*m_window, "Zoom");
        QCOMPARE(button.defaultAction(), &m_window->commands.key("Zoom"));
        QVERIFY(button.focusPolicy() & Qt::TabFocus);
        QVERIFY(!m_window->commands.key("Zoom").icon().isNull());
    }

    void aRowNeedsARoutineAndWhatItNeeds() {
        QVERIFY(m_window->enabled("Mnu_Load"));
        QVERIFY(!m_window->enabled("Change(0)"));
        m_window->commands.setMet(run);
        QVERIFY(m_window->enabled("Change(0)"));
        QVERIFY(!m_window->enabled("Change(1)")); // one need of two
        QVERIFY(!m_window->enabled("Mnu_Print")); // has no routine
        m_window->commands.setMet(behind);
        QVERIFY(!m_window->enabled("Change(0)"));
        QVERIFY(!m_window->enabled("Change(1)")); // the other of the two
        m_window->commands.setMet(run | behind);
        QVERIFY(m_window->enabled("Change(1)"));
        QVERIFY(m_window->enabled("Mnu_Load"));
    }

    void aSubMenuOpensWithItsFirstEnabledRow() {
        QVERIFY(!m_window->opens("Mnu_Import")); // no row of it has a routine
        QVERIFY(!m_window->opens("Mnu_Later"));  // its own need
        QVERIFY(!m_window->opens("Mnu_More"));
        QVERIFY(m_window->enabled("Mnu_Deep"));
        m_window->commands.setMet(behind);
        QVERIFY(!m_window->opens("Mnu_Later"));
        QVERIFY(m_window->opens("Mnu_More")); // by its command
        m_window->commands.setMet(run);
        QVERIFY(m_window->opens("Mnu_Later"));
        QVERIFY(m_window->opens("Mnu_More")); // by its sub menu
        QVERIFY(!m_window->opens("Mnu_Import"));
        m_window->commands.setMet(0);
        QVERIFY(!m_window->opens("Mnu_More"));
    }

    void aMenuOfTheBarOpensUnlessItsNeedsAreNotMet() {
        QVERIFY(m_window->opens("Mnu_File"));
        QVERIFY(m_window->opens("Mnu_Empty"));
        QVERIFY(!m_window->opens("Mnu_Scale"));
        QVERIFY(m_window->enabled("Convertor_Mnu"));
        m_window->commands.setMet(run);
        QVERIFY(m_window->opens("Mnu_Scale"));
    }

    void aSwitchGoesOnTopOfTheNeeds() {
        m_window->commands.setMet(run);
        m_window->commands.setMenusEnabled({"Mnu_File", "Mnu_Scale", "Change(0)"}, false);
        QVERIFY(!m_window->opens("Mnu_File"));
        QVERIFY(!m_window->opens("Mnu_Scale"));
        QVERIFY(!m_window->enabled("Change(0)"));
        QVERIFY(m_window->enabled("Mnu_Load"));
        m_window->commands.setMet(0);
        m_window->commands.setMet(run);
        QVERIFY(!m_window->enabled("Change(0)")); // still switched off
        m_window->commands.setMet(0);
        m_window->commands.setMenusEnabled({"Mnu_File", "Mnu_Scale", "Change(0)"}, true);
        QVERIFY(m_window->opens("Mnu_File"));
        QVERIFY(!m_window->opens("Mnu_Scale")); // the switch does not replace the need
        QVERIFY(!m_window->enabled("Change(0)"));
        m_window->commands.setMenusEnabled({"Mnu_Print"}, true);
        QVERIFY(!m_window->enabled("Mnu_Print")); // nor the routine
    }

    void aKeyFollowsTheCommandItPresses() {
        QVERIFY(m_window->keyEnabled("Load"));
        QVERIFY(!m_window->keyEnabled("Next"));
        QVERIFY(!m_window->keyEnabled("Zoom"));
        QVERIFY(m_window->keyEnabled("Step"));
        QVERIFY(!m_window->keyEnabled("Help")); // presses no command and has no routine
        m_window->commands.setMet(run | behind);
        QVERIFY(m_window->keyEnabled("Next"));
        QVERIFY(!m_window->keyEnabled("Print")); // its command has no routine
        QVERIFY(m_window->keyEnabled("Zoom"));
        QVERIFY(!m_window->keyEnabled("Help"));
        m_window->commands.setMenusEnabled({"Change(1)"}, false);
        QVERIFY(!m_window->keyEnabled("Next"));
    }

    void aRowRunsItsRoutineWithItsIndex() {
        m_window->commands.setMet(run | behind);
        for (const char* name : {"Mnu_Load", "Change(1)", "Change(0)", "Resolution(8)"})
            m_window->commands.command(name).trigger();
        QCOMPARE(m_window->ran, QStringList({"load", "change 1", "change 0", "step 8"}));
    }

    void aKeyIsPressedByItsExactText() {
        for (const char* text :
            {"load", "Load ", "Load it", "Mnu_Load", "", "Next", "Zoom", "Help"})
            m_window->commands.press(text);
        QCOMPARE(m_window->ran, QStringList());
        m_window->commands.press("Load");
        m_window->commands.press("Step");
        m_window->commands.setMet(run | behind);
        m_window->commands.press("Next");
        m_window->commands.press("Zoom");
        QCOMPARE(m_window->ran, QStringList({"load", "step 4", "change 1", "zoom"}));
    }

    void aClickOnAKeyPressesIt() {
        Window& window = shown();
        window.commands.setMet(run);
        for (const char* text : {"Load", "Zoom"})
            QCOMPARE(userClick(&control<QToolButton>(window, text)), QString());
        QCOMPARE(window.ran, QStringList({"load", "zoom"}));
    }

    void shortcutsRunMenusAndKeys() {
        Window& window = shown();
        QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
        QTest::keyClick(&window, Qt::Key_8, Qt::ControlModifier);
        QCOMPARE(window.ran, QStringList({"load"})); // the key has no run yet
        window.commands.setMet(run);
        QTest::keyClick(&window, Qt::Key_8, Qt::ControlModifier);
        QCOMPARE(window.ran, QStringList({"load", "zoom"}));
        window.commands.setMenusEnabled({"Mnu_File"}, false);
        QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(window.ran, QStringList({"load", "zoom"})); // a menu that is off keeps its rows
    }

    void oneItemOfAControlArrayIsChecked() {
        const auto checked = [this](const char* name) {
            return m_window->commands.command(name).isChecked();
        };
        QVERIFY(m_window->commands.command("Resolution(1)").isCheckable());
        QVERIFY(!m_window->commands.command("Change(1)").isCheckable());
        m_window->commands.check("Resolution", 8);
        QVERIFY(checked("Resolution(8)") && !checked("Resolution(1)"));
        m_window->commands.check("Resolution", 1);
        QVERIFY(!checked("Resolution(8)") && checked("Resolution(1)"));
        m_window->commands.check("Resolution", 4); // the array has no such item
        QVERIFY(!checked("Resolution(8)") && !checked("Resolution(1)"));
    }

    void aNameThatNoRowHasIsAnError_data() {
        QTest::addColumn<int>("wrong");
        QTest::newRow("command") << 0;
        QTest::newRow("command that is a menu") << 1;
        QTest::newRow("menu") << 2;
        QTest::newRow("menu that is a command") << 3;
        QTest::newRow("key") << 4;
        QTest::newRow("switch") << 5;
        QTest::newRow("control array") << 6;
    }
    void aNameThatNoRowHasIsAnError() {
#ifdef NDEBUG
        QSKIP("a build without asserts");
#endif
        if (!isOwnProcess()) {
            const QString told = abortInOwnProcess();
            QVERIFY(told.contains(QLatin1String("commands.cpp")));
            QVERIFY(told.contains(QLatin1String("Assertion")));
            return;
        }
        QFETCH(int, wrong);
        Commands& commands = m_window->commands;
        if (wrong == 0) commands.command("Mnu_load");
        if (wrong == 1) commands.command("Mnu_File");
        if (wrong == 2) commands.menu("Mnu_Gone");
        if (wrong == 3) commands.menu("Mnu_Load");
        if (wrong == 4) commands.key("load");
        if (wrong == 5) commands.setMenusEnabled({"Mnu_File", "Mnu_Gone"}, false);
        if (wrong == 6) commands.check("Resolutio", 1);
    }
};

KVO_FORM_TEST_MAIN(CommandsTest)
#include "commands_test.moc"
