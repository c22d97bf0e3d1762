// The menu bar and the toolbar of the main window: what stands where and what it runs.
#include "mainwin/main_window.h"
#include "mainwin/toolbar_icons.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/icons.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <cassert>

namespace kvo::forms {

using namespace platform_qt;

// One item: the menu it stands in, its caption, its control name, what it runs. A row without a
// routine is a command whose form does not exist yet. `subMenu` makes the row a menu of its own;
// `line` draws a line above it.
struct VrnWin32::MenuRow {
    const char* menu;
    const char* caption;
    const char* control;
    void (VrnWin32::*routine)() = nullptr;
    bool subMenu = false;
    bool line = false;
    const char* shortcut = "";
};

struct VrnWin32::ToolRow {
    const char* key;
    const char* caption;
    const char* control; // of the command that it presses
    void (*icon)(QPainter&);
    bool line = false;
};

namespace {

struct TopMenu {
    const char* control;
    const char* caption;
};

constexpr std::array<TopMenu, 5> topMenus{{
    {"Mnu_File", "&File"},
    {"Mnu_Communications", "&Communications"},
    {"VrnTools", "&Tools"},
    {"Mnu_Setup", "&Setup"},
    {"Mnu_HelpList", "&Help"},
}};

constexpr bool subMenu = true;
constexpr bool line = true;

// clang-format off
constexpr auto menuRows = std::to_array<VrnWin32::MenuRow>({
    {"Mnu_File", "&Open Data File", "Mnu_ViewRun", &VrnWin32::Mnu_ViewRun_Click},
    {"Mnu_File", "&Time Graph", "Mnu_TimeGraph"},
    {"Mnu_File", "&Delete Data File/s", "Mnu_DeleteRun", &VrnWin32::Mnu_DeleteRun_Click},
    {"Mnu_File", "&Enter Run Info...", "Mnu_EnterRunInfo"},
    {"Mnu_File", "&Copy Data File/s", "Mnu_copydata(0)", nullptr, !subMenu, line},
    {"Mnu_File", "Email Data File/s (Requires internet)", "Mnu_copydata(1)"},
    {"Mnu_File", "&Import Data File/s", "Mnu_ImportMenu", nullptr, subMenu},
    {"Mnu_ImportMenu", "Kvo  File/s", "Mnu_Import(0)"},
    {"Mnu_ImportMenu", "Vrn Dos File/s", "Mnu_Import(1)"},
    {"Mnu_File", "E&xit", "Mnu_Exit", &VrnWin32::Mnu_Exit_Click, !subMenu, line},
    {"Mnu_Communications", "&Download Data", "Mnu_DownloadData", &VrnWin32::Mnu_DownloadData_Click},
    {"Mnu_Communications", "&Pit Run", "Mnu_PitRun"},
    {"VrnTools", "&Compression Ratio", "Compression"},
    {"VrnTools", "&Engine Displacement", "Displacement"},
    {"VrnTools", "&Horsepower", "Mnu_Horsepower", nullptr, subMenu},
    {"Mnu_Horsepower", "from &Cylinder Head CFM", "MnuCFM"},
    {"Mnu_Horsepower", "from 1/4 Mile &ET", "MnuMileEt"},
    {"Mnu_Horsepower", "from 1/4 Mile &Mph", "MnuMileMph"},
    {"VrnTools", "&Piston Speed", "Mnu_PistonSpeen"},
    {"VrnTools", "&Rpm to Mph", "Speed"},
    {"VrnTools", "&Tyre Diameter", "Mnu_TDiameter"},
    {"VrnTools", "&Metric / Imperial Conversions", "MnuConversions", nullptr, !subMenu, line},
    {"Mnu_Setup", "Setup Software", "Mnu_SetupSoftware"},
    {"Mnu_Setup", "Configure &On Board Computer", "Mnu_ConfigureComputer"},
    {"Mnu_Setup", "Edit Vehicle Setup Defaults", "Mnu_EditVSetup"},
    {"Mnu_HelpList", "&Index", "Mnu_Help(1)", nullptr, !subMenu, !line, "F1"},
    {"Mnu_HelpList", "&Keyboard", "Mnu_Help(2)"},
    {"Mnu_HelpList", "&Commands", "Mnu_Help(3)"},
    {"Mnu_HelpList", "&Using Help", "Mnu_Help(4)"},
    {"Mnu_HelpList", "Check for KVO Update", "Mnu_UpDate", &VrnWin32::Mnu_UpDate_Click, !subMenu, line},
    {"Mnu_HelpList", "&About KVO", "Mnu_AboutVrn", &VrnWin32::Mnu_AboutVrn_Click},
});

constexpr auto toolRows = std::to_array<VrnWin32::ToolRow>({
    {"OpenDataFile", "Open Data", "Mnu_ViewRun", drawOpenIcon},
    {"TimeGraph", "Time Graph", "Mnu_TimeGraph", drawTimeGraphIcon},
    {"DownloadData", "Download", "Mnu_DownloadData", drawDownloadIcon, line},
    {"PitRun", "Pit Run", "Mnu_PitRun", drawPitRunIcon},
    {"EnterRunInfo", "Run Info", "Mnu_EnterRunInfo", drawInfoIcon, line},
    {"CopyData", "Copy Data", "Mnu_copydata(0)", drawCopyIcon},
    {"DeleteData", "Delete", "Mnu_DeleteRun", drawDeleteIcon},
    {"Help", "Help", "Mnu_Help(0)", drawHelpIcon, line},
});
// clang-format on

} // namespace

QMenu* VrnWin32::menuNamed(const char* name) const {
    return findChild<QMenu*>(QLatin1String(name));
}

QAction* VrnWin32::command(const char* name) const {
    return findChild<QAction*>(QLatin1String(name));
}

void VrnWin32::makeMenus() {
    for (const TopMenu& top : topMenus)
        menuBar()->addMenu(QLatin1String(top.caption))->setObjectName(QLatin1String(top.control));
    for (const MenuRow& row : menuRows) addCommand(row);
    for (const MenuRow& row : menuRows)
        if (row.subMenu)
            menuNamed(row.control)->menuAction()->setEnabled(hasLiveCommand(row.control));
}

// A menu whose commands are all disabled is not worth opening.
bool VrnWin32::hasLiveCommand(const char* menu) const {
    const auto actions = menuNamed(menu)->actions();
    return std::any_of(actions.begin(), actions.end(),
        [](const QAction* action) { return !action->isSeparator() && action->isEnabled(); });
}

void VrnWin32::addCommand(const MenuRow& row) {
    QMenu* menu = menuNamed(row.menu);
    assert(menu != nullptr);
    if (row.line) menu->addSeparator();
    if (row.subMenu) {
        menu->addMenu(QLatin1String(row.caption))->setObjectName(QLatin1String(row.control));
        return;
    }
    QAction* action = menu->addAction(QLatin1String(row.caption));
    action->setObjectName(QLatin1String(row.control));
    action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
    action->setEnabled(row.routine != nullptr);
    if (const auto routine = row.routine)
        connect(action, &QAction::triggered, this, [this, routine] { (this->*routine)(); });
}

void VrnWin32::makeToolbar() {
    Toolbar1 = named(new QToolBar(QStringLiteral("Commands")), "Toolbar1");
    Toolbar1->setMovable(false);
    Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu);
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    Toolbar1->setIconSize({32, 32});
    for (const ToolRow& row : toolRows) {
        if (row.line) Toolbar1->addSeparator();
        QAction* button = Toolbar1->addAction(drawnIcon(row.icon), QLatin1String(row.caption));
        const QAction* pressed = command(row.control);
        button->setEnabled(pressed != nullptr && pressed->isEnabled());
        const char* key = row.key;
        connect(button, &QAction::triggered, this, [this, key] { Toolbar1_ButtonClick(key); });
        auto* widget = qobject_cast<QToolButton*>(Toolbar1->widgetForAction(button));
        widget->setObjectName(QLatin1String(key));
        widget->setFocusPolicy(Qt::TabFocus); // reachable without a mouse
    }
    addToolBar(Toolbar1);
}

void VrnWin32::Toolbar1_ButtonClick(std::string_view key) {
    for (const ToolRow& row : toolRows) {
        if (row.key != key) continue;
        if (QAction* pressed = command(row.control)) pressed->trigger();
        return;
    }
}

void VrnWin32::enableMenus(bool on) {
    for (const TopMenu& top : topMenus) menuNamed(top.control)->menuAction()->setEnabled(on);
    Toolbar1->setEnabled(on);
}

} // namespace kvo::forms
