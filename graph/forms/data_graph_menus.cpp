// The menu bar and the toolbar of the graph window: what stands where, what it runs and needs.
#include "graph/forms/channel_panel.h"
#include "graph/forms/data_graph.h"
#include "graph/forms/data_graph_needs.h"
#include "graph/forms/graph_icons.h"
#include "graph/layout.h"
#include "platform/qt/form_kit.h"

#include <QMenuBar>
#include <QToolBar>

#include <array>

namespace kvo::forms {

using namespace platform_qt;

namespace {

using Menus = MenuRow<DataGraph>;
using Keys = ToolRow<DataGraph>;

// clang-format off
// A row without a routine is a command whose form does not exist yet.
std::span<const Menus> menuRows() {
    using G = DataGraph;
    using namespace graphNeeds;
    static constexpr auto rows = std::to_array<Menus>({
        {menuBarItself, "&File", "Mnu_File", {}, {.subMenu = true}},
        {menuBarItself, "&Options", "Mnu_View", {}, {.subMenu = true}},
        {menuBarItself, "&Graph Resolution (Med)  ", "Mnu_Resolution", {}, {.subMenu = true}},
        {menuBarItself, "&Graph Scale(Full)  ", "Mnu_Scale", {}, {.needs = run | notZoomed, .subMenu = true}},
        {menuBarItself, "&Tools", "Mnu_Tools", {}, {.subMenu = true}},
        {menuBarItself, "&Help", "Mnu_Help", {}, {.subMenu = true}},
        {"Mnu_File", "&Load Data File", "Mnu_LoadData", &G::Mnu_LoadData_Click, {.shortcut = "Ctrl+O"}},
        {"Mnu_File", "&Overlay Data File", "Mnu_Overlay", &G::Mnu_Overlay_Click, {.needs = run}},
        {"Mnu_File", "<<<<", "GraphChange(0)", {&G::GraphChange_Click, 0}, {.needs = runBefore, .shortcut = "Ctrl+PgUp"}},
        {"Mnu_File", ">>>>", "GraphChange(1)", {&G::GraphChange_Click, 1}, {.needs = runBehind, .shortcut = "Ctrl+PgDown"}},
        {"Mnu_File", "&Info...", "Mnu_Info", &G::Mnu_Info_Click, {.needs = run, .line = true}},
        {"Mnu_File", "&Statistics", "Mnu_Statistics", &G::Mnu_Statistics_Click, {.needs = run}},
        {"Mnu_File", "&Time Graph", "Mnu_TimeGraph", &G::Mnu_TimeGraph_Click},
        {"Mnu_File", "&Delete Run", "Mnu_DeleteRun", &G::Mnu_DeleteRun_Click, {.line = true}},
        {"Mnu_File", "I&mport", "Mnu_ImportMenu", {}, {.subMenu = true}},
        {"Mnu_ImportMenu", "Kvo Data File/s", "Mnu_ImportFiles(0)", {&G::Mnu_ImportFiles_Click, 0}},
        {"Mnu_ImportMenu", "Vrn Dos File", "Mnu_ImportFiles(1)", {&G::Mnu_ImportFiles_Click, 1}},
        {"Mnu_File", "&Print", "Mnu_Printer", {}, {.needs = run, .subMenu = true, .line = true}},
        {"Mnu_Printer", "Screen", "Mnu_Print(0)", {&G::Mnu_Print_Click, 0}, {.needs = run, .shortcut = "Ctrl+P"}},
        {"Mnu_Printer", "Data", "Mnu_Print(1)", {&G::Mnu_Print_Click, 1}, {.needs = run}},
        {"Mnu_Printer", "Screen && Data", "Mnu_Print(2)", {&G::Mnu_Print_Click, 2}, {.needs = run}},
        {"Mnu_File", "&Close", "Mnu_Close", &G::Mnu_Close_Click, {.line = true}},
        {"Mnu_View", "&Visible Options", "Mnu_Options", &G::Mnu_Options_Click},
        {"Mnu_View", "Graph BackColour", "Graph_Colour_Invert", &G::Graph_Colour_Invert_Click},
        {"Mnu_View", "Redo Clutch Rpm", "Mnu_RedoClutch", &G::Mnu_RedoClutch_Click, {.needs = run | noOverlay, .line = true}},
        {"Mnu_View", "Redo Time Offset", "Mnu_TimeOffset", &G::Mnu_TimeOffset_Click, {.needs = run | noOverlay}},
        {"Mnu_Resolution", "High", "Resolution(1)", {&G::Resolution_Click, 1}, {.checkable = true}},
        {"Mnu_Resolution", "Medium", "Resolution(4)", {&G::Resolution_Click, 4}, {.checkable = true}},
        {"Mnu_Resolution", "Low", "Resolution(8)", {&G::Resolution_Click, 8}, {.checkable = true}},
        {"Mnu_Scale", "Full Screen", "Mnu_ScaleItem(0)", {&G::Mnu_ScaleItem_Click, 0}, {.checkable = true}},
        {"Mnu_Scale", "1/2 Screen", "Mnu_ScaleItem(1)", {&G::Mnu_ScaleItem_Click, 1}, {.checkable = true}},
        {"Mnu_Scale", "1/4 Screen", "Mnu_ScaleItem(2)", {&G::Mnu_ScaleItem_Click, 2}, {.checkable = true}},
        {"Mnu_Scale", "Custom", "Mnu_ScaleItem(3)", {&G::Mnu_ScaleItem_Click, 3}, {.checkable = true}},
        {"Mnu_Tools", "Unit &Convertor", "Convertor_Mnu", &G::Convertor_Mnu_Click},
        {"Mnu_Help", "&Help", "Mnu_HelpItem"},
        {"Mnu_Help", "&About KVO", "Mnu_GraphFile", &G::Mnu_GraphFile_Click},
    });
    return rows;
}

std::span<const Keys> toolRows() {
    using G = DataGraph;
    using namespace graphNeeds;
    static constexpr auto rows = std::to_array<Keys>({
        {"LoadData", "Load", "Mnu_LoadData", drawLoadIcon},
        {"OverlayData", "Overlay", "Mnu_Overlay", drawOverlayIcon},
        {"Statistics", "Statistics", "Mnu_Statistics", drawStatisticsIcon, {.line = true}},
        {"Info", "Info", "Mnu_Info", drawSheetIcon},
        {"PrintScreen", "Print", "Mnu_Print(0)", drawPrinterIcon},
        {"TimeGraph", "Time Graph", "Mnu_TimeGraph", drawTimesIcon},
        {"ZoomOut", "Zoom Out", "", drawZoomOutIcon, {.routine = &G::ZoomOut_Click, .needs = run, .line = true, .shortcut = "Ctrl+-"}},
        {"CancelZoom", "Cancel Zoom", "", drawCancelZoomIcon, {.routine = &G::CancelZoom_Click, .needs = run | zoomed, .shortcut = "Ctrl+0"}},
        {"ZoomIn", "Zoom In", "", drawZoomInIcon, {.routine = &G::ZoomIn_Click, .needs = run, .shortcut = "Ctrl++"}},
        {"PreviousData", "Previous", "GraphChange(0)", drawPreviousIcon, {.line = true}},
        {"NextData", "Next", "GraphChange(1)", drawNextIcon},
    });
    return rows;
}
// clang-format on

} // namespace

void DataGraph::makeCommands() {
    m_commands.makeMenus(*menuBar(), *this, menuRows());
    QToolBar* toolbar = m_commands.makeToolbar(*this, toolRows());
    toolbar->setParent(m_inner);
    toolbar->setIconSize({20, 20});
}

void DataGraph::enableMenus(bool on) {
    m_commands.setMenusEnabled(
        {"Mnu_File", "Mnu_Options", "Convertor_Mnu", "Mnu_Help", "Mnu_Resolution"}, on);
    // Only with a run in the window, which is when Mnu_Overlay is enabled.
    if (hasRun()) m_commands.setMenusEnabled({"Mnu_Scale", "Mnu_RedoClutch"}, on);
}

void EnableGraphMenus(bool on) {
    if (isLoaded<DataGraph>()) form<DataGraph>().enableMenus(on);
}

void redrawGraph() {
    if (isLoaded<DataGraph>()) form<DataGraph>().takeOptions();
}

void keepGraphOptions() {
    if (isLoaded<DataGraph>()) form<DataGraph>().keepOptions();
}

} // namespace kvo::forms
