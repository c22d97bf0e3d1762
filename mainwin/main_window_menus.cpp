// The menu bar and the toolbar of the main window: what stands where and what it runs.
#include "mainwin/main_window.h"

#include "core/opening.h"
#include "core/shared_state.h"
#include "mainwin/opening.h"
#include "mainwin/toolbar_icons.h"
#include "platform/qt/text.h"

#include <QAction>
#include <QMenuBar>
#include <QToolBar>

#include <array>

namespace kvo::forms {

using namespace platform_qt;

namespace {

// What a row of those that were open last needs: that there is one in its place.
constexpr Needs recentFolder(int place) {
    return 1U << static_cast<unsigned>(place);
}
constexpr Needs recentRun(int place) {
    return recentFolder(place + static_cast<int>(core::mostRecent));
}

} // namespace

// clang-format off
std::span<const MenuRow<VrnWin32>> VrnWin32::menuRows() {
    using W = VrnWin32;
    static constexpr auto rows = std::to_array<MenuRow<W>>({
        {menuBarItself, "&File", "Mnu_File", nullptr, {.subMenu = true}},
        {menuBarItself, "&Communications", "Mnu_Communications", nullptr, {.subMenu = true}},
        {menuBarItself, "&Tools", "VrnTools", nullptr, {.subMenu = true}},
        {menuBarItself, "&Setup", "Mnu_Setup", nullptr, {.subMenu = true}},
        {menuBarItself, "&Help", "Mnu_HelpList", nullptr, {.subMenu = true}},
        {"Mnu_File", "&Open Data File", "Mnu_ViewRun", &W::Mnu_ViewRun_Click},
        {"Mnu_File", "&Time Graph", "Mnu_TimeGraph", &W::Mnu_TimeGraph_Click},
        {"Mnu_File", "&Delete Data File/s", "Mnu_DeleteRun", &W::Mnu_DeleteRun_Click, {.writes = true}},
        {"Mnu_File", "&Enter Run Info...", "Mnu_EnterRunInfo", &W::Mnu_EnterRunInfo_Click},
        {"Mnu_File", "&Copy Data File/s", "Mnu_copydata(0)", {&W::Mnu_copydata_Click, 0}, {.line = true}},
        {"Mnu_File", "Email Data File/s (Requires internet)", "Mnu_copydata(1)", {&W::Mnu_copydata_Click, 1}},
        {"Mnu_File", "&Import Data File/s", "Mnu_ImportMenu", nullptr, {.subMenu = true}},
        {"Mnu_ImportMenu", "Kvo  File/s", "Mnu_Import(0)", {&W::Mnu_Import_Click, 0}, {.writes = true}},
        {"Mnu_ImportMenu", "Vrn Dos File/s", "Mnu_Import(1)", {&W::Mnu_Import_Click, 1}, {.writes = true}},
        {"Mnu_File", "Open &Folder...", "Mnu_OpenFolder", &W::Mnu_OpenFolder_Click, {.line = true, .shortcut = "Ctrl+Shift+O"}},
        {"Mnu_File", "&Recent Folders", "Mnu_RecentFolders", nullptr, {.subMenu = true}},
        {"Mnu_RecentFolders", "", "Mnu_RecentFolder(0)", {&W::Mnu_RecentFolder_Click, 0}, {.needs = recentFolder(0)}}, {"Mnu_RecentFolders", "", "Mnu_RecentFolder(1)", {&W::Mnu_RecentFolder_Click, 1}, {.needs = recentFolder(1)}},
        {"Mnu_RecentFolders", "", "Mnu_RecentFolder(2)", {&W::Mnu_RecentFolder_Click, 2}, {.needs = recentFolder(2)}}, {"Mnu_RecentFolders", "", "Mnu_RecentFolder(3)", {&W::Mnu_RecentFolder_Click, 3}, {.needs = recentFolder(3)}},
        {"Mnu_RecentFolders", "", "Mnu_RecentFolder(4)", {&W::Mnu_RecentFolder_Click, 4}, {.needs = recentFolder(4)}}, {"Mnu_RecentFolders", "", "Mnu_RecentFolder(5)", {&W::Mnu_RecentFolder_Click, 5}, {.needs = recentFolder(5)}},
        {"Mnu_RecentFolders", "", "Mnu_RecentFolder(6)", {&W::Mnu_RecentFolder_Click, 6}, {.needs = recentFolder(6)}}, {"Mnu_RecentFolders", "", "Mnu_RecentFolder(7)", {&W::Mnu_RecentFolder_Click, 7}, {.needs = recentFolder(7)}},
        {"Mnu_RecentFolders", "", "Mnu_RecentFolder(8)", {&W::Mnu_RecentFolder_Click, 8}, {.needs = recentFolder(8)}}, {"Mnu_RecentFolders", "", "Mnu_RecentFolder(9)", {&W::Mnu_RecentFolder_Click, 9}, {.needs = recentFolder(9)}},
        {"Mnu_File", "Recent R&uns", "Mnu_RecentRuns", nullptr, {.subMenu = true}},
        {"Mnu_RecentRuns", "", "Mnu_RecentRun(0)", {&W::Mnu_RecentRun_Click, 0}, {.needs = recentRun(0)}}, {"Mnu_RecentRuns", "", "Mnu_RecentRun(1)", {&W::Mnu_RecentRun_Click, 1}, {.needs = recentRun(1)}},
        {"Mnu_RecentRuns", "", "Mnu_RecentRun(2)", {&W::Mnu_RecentRun_Click, 2}, {.needs = recentRun(2)}}, {"Mnu_RecentRuns", "", "Mnu_RecentRun(3)", {&W::Mnu_RecentRun_Click, 3}, {.needs = recentRun(3)}},
        {"Mnu_RecentRuns", "", "Mnu_RecentRun(4)", {&W::Mnu_RecentRun_Click, 4}, {.needs = recentRun(4)}}, {"Mnu_RecentRuns", "", "Mnu_RecentRun(5)", {&W::Mnu_RecentRun_Click, 5}, {.needs = recentRun(5)}},
        {"Mnu_RecentRuns", "", "Mnu_RecentRun(6)", {&W::Mnu_RecentRun_Click, 6}, {.needs = recentRun(6)}}, {"Mnu_RecentRuns", "", "Mnu_RecentRun(7)", {&W::Mnu_RecentRun_Click, 7}, {.needs = recentRun(7)}},
        {"Mnu_RecentRuns", "", "Mnu_RecentRun(8)", {&W::Mnu_RecentRun_Click, 8}, {.needs = recentRun(8)}}, {"Mnu_RecentRuns", "", "Mnu_RecentRun(9)", {&W::Mnu_RecentRun_Click, 9}, {.needs = recentRun(9)}},
        {"Mnu_File", "E&xit", "Mnu_Exit", &W::Mnu_Exit_Click, {.line = true}},
        {"Mnu_Communications", "&Download Data", "Mnu_DownloadData", &W::Mnu_DownloadData_Click, {.writes = true}},
        {"Mnu_Communications", "&Pit Run", "Mnu_PitRun", &W::Mnu_PitRun_Click},
        {"VrnTools", "&Compression Ratio", "Compression", {&W::Calculator_Click, 0}},
        {"VrnTools", "&Engine Displacement", "Displacement", {&W::Calculator_Click, 1}},
        {"VrnTools", "&Horsepower", "Mnu_Horsepower", nullptr, {.subMenu = true}},
        {"Mnu_Horsepower", "from &Cylinder Head CFM", "MnuCFM", {&W::Calculator_Click, 4}},
        {"Mnu_Horsepower", "from 1/4 Mile &ET", "MnuMileEt", {&W::Calculator_Click, 5}},
        {"Mnu_Horsepower", "from 1/4 Mile &Mph", "MnuMileMph", {&W::Calculator_Click, 6}},
        {"VrnTools", "&Piston Speed", "Mnu_PistonSpeen", {&W::Calculator_Click, 2}},
        {"VrnTools", "&Rpm to Mph", "Speed", {&W::Calculator_Click, 3}},
        {"VrnTools", "&Tyre Diameter", "Mnu_TDiameter", {&W::Calculator_Click, 7}},
        {"VrnTools", "&Metric / Imperial Conversions", "MnuConversions", &W::MnuConversions_Click, {.line = true}},
        {"Mnu_Setup", "Setup Software", "Mnu_SetupSoftware", &W::Mnu_SetupSoftware_Click, {.writes = true}},
        {"Mnu_Setup", "Configure &On Board Computer", "Mnu_ConfigureComputer", &W::Mnu_ConfigureComputer_Click, {.writes = true}},
        {"Mnu_Setup", "Edit Vehicle Setup Defaults", "Mnu_EditVSetup", &W::Mnu_EditVSetup_Click, {.writes = true}},
        {"Mnu_HelpList", "&Index", "Mnu_Help(1)", {&W::Mnu_Help_Click, 1}, {.shortcut = "F1"}},
        {"Mnu_HelpList", "&Keyboard", "Mnu_Help(2)", {&W::Mnu_Help_Click, 2}},
        {"Mnu_HelpList", "&Commands", "Mnu_Help(3)", {&W::Mnu_Help_Click, 3}},
        {"Mnu_HelpList", "&Using Help", "Mnu_Help(4)", {&W::Mnu_Help_Click, 4}},
        {"Mnu_HelpList", "Check for KVO Update", "Mnu_UpDate", &W::Mnu_UpDate_Click, {.line = true}},
        {"Mnu_HelpList", "&About KVO", "Mnu_AboutVrn", &W::Mnu_AboutVrn_Click},
    });
    return rows;
}

std::span<const ToolRow<VrnWin32>> VrnWin32::toolRows() {
    static constexpr auto rows = std::to_array<ToolRow<VrnWin32>>({
        {"OpenDataFile", "Open Data", "Mnu_ViewRun", drawOpenIcon},
        {"TimeGraph", "Time Graph", "Mnu_TimeGraph", drawTimeGraphIcon},
        {"DownloadData", "Download", "Mnu_DownloadData", drawDownloadIcon, {.line = true}},
        {"PitRun", "Pit Run", "Mnu_PitRun", drawPitRunIcon},
        {"EnterRunInfo", "Run Info", "Mnu_EnterRunInfo", drawInfoIcon, {.line = true}},
        {"CopyData", "Copy Data", "Mnu_copydata(0)", drawCopyIcon},
        {"DeleteData", "Delete", "Mnu_DeleteRun", drawDeleteIcon},
        {"Help", "Help", "", drawHelpIcon, {.routine = {&VrnWin32::Mnu_Help_Click, 0}, .line = true}},
    });
    return rows;
}
// clang-format on

std::vector<CommandRow> VrnWin32::commandRows() {
    return platform_qt::commandRows(menuRows(), toolRows());
}

void VrnWin32::makeCommands() {
    m_commands.makeMenus(*menuBar(), *this, menuRows());
    QToolBar* toolbar = m_commands.makeToolbar(*this, toolRows());
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolbar->setIconSize({32, 32});
    addToolBar(toolbar);
    m_commands.allowWriting(!core::state().LookOnly);
}

// Those that were open last, by their places: the first one is &1, the tenth &0.
void VrnWin32::showRecent() {
    Needs met = 0;
    const int widestPath = fontMetrics().averageCharWidth() * 80;
    const auto show = [&](const QString& array, const std::vector<std::string>& paths, auto need) {
        for (int i = 0; i < static_cast<int>(core::mostRecent); ++i) {
            QAction& item = m_commands.command(array.arg(i).toStdString());
            item.setVisible(i < static_cast<int>(paths.size()));
            if (!item.isVisible()) continue;
            met |= need(i);
            QString path = shownPath(paths[static_cast<std::size_t>(i)]);
            path = fontMetrics().elidedText(path, Qt::ElideMiddle, widestPath);
            path.replace(QLatin1Char('&'), QLatin1String("&&"));
            item.setText(QStringLiteral("&%1  ").arg((i + 1) % 10) + path);
        }
    };
    show(QStringLiteral("Mnu_RecentFolder(%1)"), recentFolders(), recentFolder);
    show(QStringLiteral("Mnu_RecentRun(%1)"), recentRuns(), recentRun);
    m_commands.setMet(met);
}

void VrnWin32::enableMenus(bool on) {
    m_menusEnabled = on;
    m_commands.setMenusEnabled(
        {"Mnu_File", "Mnu_Communications", "VrnTools", "Mnu_Setup", "Mnu_HelpList"}, on);
    m_commands.toolbar().setEnabled(on);
}

} // namespace kvo::forms
