#include "graph/forms/graph_commands.h"

#include "core/forms/doors.h"
#include "core/run_info.h"
#include "core/shared_state.h"
#include "graph/forms/graph_channels.h"
#include "graph/forms/graph_cursor.h"
#include "graph/forms/graph_export.h"
#include "graph/forms/graph_icons.h"
#include "graph/forms/graph_printing.h"
#include "graph/forms/graph_scale.h"
#include "graph/forms/graph_surface.h"
#include "library/statistics.h"
#include "platform/services.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <array>
#include <vector>

namespace kvo::forms {

using namespace platform_qt;

namespace {

// What a row needs; each bit is met or not by the state of the window.
constexpr Needs run = 1;        // a run in the window
constexpr Needs noOverlay = 2;  // no second run over it
constexpr Needs runBefore = 4;  // a run before the choice of the list
constexpr Needs runBehind = 8;  // and one behind it
constexpr Needs zoomed = 16;    // a zoom that can be cancelled
constexpr Needs notZoomed = 32; // one of the sizes of Mnu_Scale
constexpr Needs marked = 64;    // a reference, or the begin of an average
constexpr Needs steps = 128;    // a zoom that can be stepped back

using Menus = MenuRow<GraphCommands>;
using Keys = ToolRow<GraphCommands>;

// clang-format off
// A row without a routine is a command whose form does not exist yet.
std::span<const Menus> menuRows() {
    using G = GraphCommands;
    static constexpr auto rows = std::to_array<Menus>({
        {menuBarItself, "&File", "Mnu_File", {}, {.subMenu = true}},
        {menuBarItself, "&Options", "Mnu_View", {}, {.subMenu = true}},
        {menuBarItself, "&Graph Resolution (Med)  ", "Mnu_Resolution", {}, {.subMenu = true}},
        {menuBarItself, "&Graph Scale(Full)  ", "Mnu_Scale", {}, {.needs = run | notZoomed, .subMenu = true}},
        {menuBarItself, "&Tools", "Mnu_Tools", {}, {.subMenu = true}},
        {menuBarItself, "&Help", "Mnu_Help", {}, {.subMenu = true}},
        {"Mnu_File", "&Load Data File", "Mnu_LoadData", &G::Mnu_LoadData_Click, {.shortcut = "Ctrl+O"}},
        {"Mnu_File", "&Overlay Data File", "Mnu_Overlay", &G::Mnu_Overlay_Click, {.needs = run}},
        {"Mnu_File", "<<<<", "GraphChange(0)", {&G::GraphChange_Click, 0}, {.needs = runBefore, .shortcut = "Ctrl+PgUp", .spoken = "Previous"}},
        {"Mnu_File", ">>>>", "GraphChange(1)", {&G::GraphChange_Click, 1}, {.needs = runBehind, .shortcut = "Ctrl+PgDown", .spoken = "Next"}},
        {"Mnu_File", "&Info...", "Mnu_Info", &G::Mnu_Info_Click, {.needs = run, .line = true}},
        {"Mnu_File", "&Statistics", "Mnu_Statistics", &G::Mnu_Statistics_Click, {.needs = run}},
        {"Mnu_File", "&Time Graph", "Mnu_TimeGraph", &G::Mnu_TimeGraph_Click},
        {"Mnu_File", "&Delete Run", "Mnu_DeleteRun", &G::Mnu_DeleteRun_Click, {.line = true, .writes = true}},
        {"Mnu_File", "I&mport", "Mnu_ImportMenu", {}, {.subMenu = true}},
        {"Mnu_ImportMenu", "Kvo Data File/s", "Mnu_ImportFiles(0)", {&G::Mnu_ImportFiles_Click, 0}, {.writes = true}},
        {"Mnu_ImportMenu", "Vrn Dos File", "Mnu_ImportFiles(1)", {&G::Mnu_ImportFiles_Click, 1}, {.writes = true}},
        {"Mnu_File", "&Print", "Mnu_Printer", {}, {.needs = run, .subMenu = true, .line = true}},
        {"Mnu_Printer", "Screen", "Mnu_Print(0)", {&G::Mnu_Print_Click, 0}, {.needs = run, .shortcut = "Ctrl+P"}},
        {"Mnu_Printer", "Data", "Mnu_Print(1)", {&G::Mnu_Print_Click, 1}, {.needs = run}},
        {"Mnu_Printer", "Screen && Data", "Mnu_Print(2)", {&G::Mnu_Print_Click, 2}, {.needs = run}},
        {"Mnu_File", "&Export", "Mnu_ExportMenu", {}, {.needs = run, .subMenu = true}},
        {"Mnu_ExportMenu", "&Run as CSV...", "Mnu_Export(0)", {&G::Mnu_Export_Click, GraphExport::wholeRun}, {.needs = run, .shortcut = "Ctrl+E"}},
        {"Mnu_ExportMenu", "&Stretch in View as CSV...", "Mnu_Export(1)", {&G::Mnu_Export_Click, GraphExport::stretchInView}, {.needs = run, .shortcut = "Ctrl+Shift+E"}},
        {"Mnu_ExportMenu", "Picture as &PNG...", "Mnu_Export(2)", {&G::Mnu_Export_Click, GraphExport::pngPicture}, {.needs = run, .line = true, .shortcut = "Ctrl+Shift+P"}},
        {"Mnu_ExportMenu", "Picture as S&VG...", "Mnu_Export(3)", {&G::Mnu_Export_Click, GraphExport::svgPicture}, {.needs = run}},
        {"Mnu_ExportMenu", "Picture as P&DF...", "Mnu_Export(4)", {&G::Mnu_Export_Click, GraphExport::pdfPicture}, {.needs = run}},
        {"Mnu_ExportMenu", "&Copy Picture", "Mnu_Export(5)", {&G::Mnu_Export_Click, GraphExport::toClipboard}, {.needs = run, .line = true, .shortcut = "Ctrl+C"}},
        {"Mnu_File", "&Close", "Mnu_Close", &G::Mnu_Close_Click, {.line = true}},
        {"Mnu_View", "&Visible Options", "Mnu_Options", &G::Mnu_Options_Click},
        {"Mnu_View", "Graph BackColour", "Graph_Colour_Invert", &G::Graph_Colour_Invert_Click},
        {"Mnu_View", "Redo Clutch Rpm", "Mnu_RedoClutch", &G::Mnu_RedoClutch_Click, {.needs = run | noOverlay, .line = true, .writes = true}},
        {"Mnu_View", "Redo Time Offset", "Mnu_TimeOffset", &G::Mnu_TimeOffset_Click, {.needs = run | noOverlay, .writes = true}},
        {"Mnu_Resolution", "High", "Resolution(1)", {&G::Resolution_Click, 1}, {.checkable = true}},
        {"Mnu_Resolution", "Medium", "Resolution(4)", {&G::Resolution_Click, 4}, {.checkable = true}},
        {"Mnu_Resolution", "Low", "Resolution(8)", {&G::Resolution_Click, 8}, {.checkable = true}},
        {"Mnu_Scale", "Full Screen", "Mnu_ScaleItem(0)", {&G::Mnu_ScaleItem_Click, 0}, {.checkable = true}},
        {"Mnu_Scale", "1/2 Screen", "Mnu_ScaleItem(1)", {&G::Mnu_ScaleItem_Click, 1}, {.checkable = true}},
        {"Mnu_Scale", "1/4 Screen", "Mnu_ScaleItem(2)", {&G::Mnu_ScaleItem_Click, 2}, {.checkable = true}},
        {"Mnu_Scale", "Custom", "Mnu_ScaleItem(3)", {&G::Mnu_ScaleItem_Click, 3}, {.checkable = true}},
        {"Mnu_Tools", "Unit &Convertor", "Convertor_Mnu", &G::Convertor_Mnu_Click},
        {"Mnu_Tools", "Set &Reference", "Mnu_Reference", &G::Mnu_Reference_Click, {.needs = run | noOverlay, .line = true, .shortcut = "R"}},
        {"Mnu_Tools", "&Average", "Mnu_Average", &G::Mnu_Average_Click, {.needs = run, .shortcut = "A"}},
        {"Mnu_Tools", "Take &Mark Away", "Mnu_MarkAway", &G::Mnu_MarkAway_Click, {.needs = marked, .shortcut = "Esc"}},
        {"Mnu_Tools", "&First Sample", "Mnu_SampleEnd(0)", {&G::Mnu_SampleEnd_Click, 0}, {.needs = run, .line = true, .shortcut = "Home"}},
        {"Mnu_Tools", "&Last Sample", "Mnu_SampleEnd(1)", {&G::Mnu_SampleEnd_Click, 1}, {.needs = run, .shortcut = "End"}},
        {"Mnu_Tools", "Fit &Whole Run", "Mnu_FitWhole", &G::Mnu_FitWhole_Click, {.needs = run, .line = true, .shortcut = "F"}},
        {"Mnu_Tools", "Zoom &Back", "Mnu_ZoomBack", &G::Mnu_ZoomBack_Click, {.needs = run | steps, .shortcut = "Backspace"}},
        {"Mnu_Help", "&Help", "Mnu_HelpItem", {&G::Mnu_HelpItem_Click, 0}, {.shortcut = "F1"}},
        {"Mnu_Help", "&Keyboard", "Mnu_Keyboard", {&G::Mnu_HelpItem_Click, 1}},
        {"Mnu_Help", "&About KVO", "Mnu_GraphFile", &G::Mnu_GraphFile_Click},
    });
    return rows;
}

// How the curves look; these follow the other rows of their menu.
std::span<const Menus> lookRows() {
    using G = GraphCommands;
    static constexpr auto rows = std::to_array<Menus>({
        {"Mnu_View", "&Colours", "Mnu_ColourMenu", {}, {.subMenu = true, .line = true}},
        {"Mnu_ColourMenu", "&Dark", "Mnu_Colours(0)", {&G::Mnu_Colours_Click, 0}, {.checkable = true, .shortcut = "Ctrl+1"}},
        {"Mnu_ColourMenu", "Day&light", "Mnu_Colours(1)", {&G::Mnu_Colours_Click, 1}, {.checkable = true, .shortcut = "Ctrl+2"}},
        {"Mnu_ColourMenu", "&Colour-Blind", "Mnu_Colours(2)", {&G::Mnu_Colours_Click, 2}, {.checkable = true, .shortcut = "Ctrl+3"}},
        {"Mnu_View", "&Line Width", "Mnu_LineWidthMenu", {}, {.subMenu = true}},
        {"Mnu_LineWidthMenu", "&1 Pixel", "Mnu_LineWidth(1)", {&G::Mnu_LineWidth_Click, 1}, {.checkable = true, .shortcut = "1"}},
        {"Mnu_LineWidthMenu", "&2 Pixels", "Mnu_LineWidth(2)", {&G::Mnu_LineWidth_Click, 2}, {.checkable = true, .shortcut = "2"}},
        {"Mnu_LineWidthMenu", "&3 Pixels", "Mnu_LineWidth(3)", {&G::Mnu_LineWidth_Click, 3}, {.checkable = true, .shortcut = "3"}},
    });
    return rows;
}

std::span<const Keys> toolRows() {
    using G = GraphCommands;
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

GraphCommands::GraphCommands(const GraphParts& parts) : m_parts(parts) {}

std::vector<CommandRow> GraphCommands::commandRows() {
    auto rows = platform_qt::commandRows(menuRows(), toolRows());
    for (const auto& row : platform_qt::commandRows(lookRows(), std::span<const Keys>()))
        rows.push_back(row);
    return rows;
}

QToolBar& GraphCommands::make(QMainWindow& window) {
    m_commands.makeMenus(*window.menuBar(), *this, menuRows());
    m_commands.makeMenus(*window.menuBar(), *this, lookRows());
    QToolBar* toolbar = m_commands.makeToolbar(window, *this, toolRows());
    toolbar->setIconSize({20, 20});
    m_commands.allowWriting(!core::state().LookOnly);
    return *toolbar;
}

void GraphCommands::EnableGraphMenus(bool on) {
    m_commands.setMenusEnabled(
        {"Mnu_File", "Mnu_Options", "Convertor_Mnu", "Mnu_Help", "Mnu_Resolution"}, on);
    // Only with a run in the window, which is when Mnu_Overlay is enabled.
    if (m_parts.course.hasRun()) m_commands.setMenusEnabled({"Mnu_Scale", "Mnu_RedoClutch"}, on);
}

// --- What the state means to menus and toolbar

void GraphCommands::showCaptions() {
    const graph::Course& course = m_parts.course;
    m_commands.command("Mnu_Overlay").setText(QLatin1String(course.overlayCommand()));
    m_commands.key("OverlayData").setText(QLatin1String(course.overlayKey()));
    const int scale = m_parts.view.ScaleShown;
    m_commands.menu("Mnu_Scale").setTitle(QLatin1String(graph::scaleCaption(scale)));
    m_commands.check("Mnu_ScaleItem", core::state().Config.ScaleCustom);
    const auto scheme = graph::schemeOf(core::state().Config);
    m_commands.check("Mnu_LineWidth", m_parts.view.LineWidthPx);
    m_commands.check("Mnu_Colours", scheme ? static_cast<int>(*scheme) : -1);
}

void GraphCommands::Resolution_Change(int step) {
    const graph::ResolutionChoice choice = graph::Resolution_Change(step);
    m_commands.check("Resolution", choice.checkedItem);
    m_commands.menu("Mnu_Resolution").setTitle(QString::fromStdString(choice.caption));
}

void GraphCommands::showState() {
    showCaptions();
    const graph::Course& course = m_parts.course;
    Needs met = 0;
    if (core::state().Config.ScaleCustom != graph::scaleZoomed) met |= notZoomed;
    if (m_parts.view.CancelZoomOffered) met |= zoomed;
    if (course.hasRun()) met |= run;
    if (!course.overlayLoaded()) met |= noOverlay;
    if (m_parts.view.marks.any()) met |= marked;
    if (!m_parts.view.zooms.empty()) met |= steps;
    if (course.canChange(0)) met |= runBefore;
    if (course.canChange(1)) met |= runBehind;
    m_commands.setMet(met);
}

core::FromOne<std::string, 8> GraphCommands::analogCaptions() const {
    core::FromOne<std::string, 8> captions;
    for (int n = 1; n <= 8; ++n) captions[n] = m_parts.course.analogCaption(n);
    return captions;
}

// --- Commands of the run

void GraphCommands::Mnu_LoadData_Click() {
    m_parts.course.Mnu_LoadData();
}

void GraphCommands::GraphChange_Click(int index) {
    m_parts.course.GraphChange(index);
}

void GraphCommands::Mnu_Overlay_Click() {
    m_parts.course.Mnu_Overlay();
}

void GraphCommands::Mnu_DeleteRun_Click() {
    m_parts.course.Mnu_DeleteRun();
}

void GraphCommands::Mnu_RedoClutch_Click() {
    m_parts.course.Mnu_RedoClutch();
}

void GraphCommands::Mnu_TimeOffset_Click() {
    m_parts.course.Mnu_TimeOffset();
}

// The times that were typed there stand in the window at once.
void GraphCommands::Mnu_Info_Click() {
    core::OpenRun& shownRun = core::state().Run;
    const GraphMenusDisabled off(*this);
    doors().showInfo(shownRun.path, library::infoCaption(m_parts.course.caption()));
    shownRun.times = core::LoadRunTimes(shownRun.infoPath, *platform::services().files);
    m_parts.window.showState();
}

void GraphCommands::Mnu_Statistics_Click() {
    GraphTexts texts;
    texts.caption = m_parts.course.caption();
    texts.times = core::state().Run.times;
    texts.analogNames = analogCaptions();
    const GraphMenusDisabled off(*this);
    doors().showStatistics(texts);
    m_parts.window.showState(); // the info may have been opened from there
}

void GraphCommands::Mnu_TimeGraph_Click() {
    doors().showTimeGraph(true);
}

void GraphCommands::Mnu_ImportFiles_Click(int item) {
    std::vector<std::string> written;
    {
        const GraphMenusDisabled off(*this);
        written = doors().importRuns(item == 0);
    }
    m_parts.course.takeImported(written);
}

void GraphCommands::Mnu_Print_Click(int item) {
    const GraphMenusDisabled off(*this);
    m_parts.printing.Mnu_Print(item);
}

void GraphCommands::Mnu_Export_Click(int item) {
    const GraphMenusDisabled off(*this);
    m_parts.exporting.Mnu_Export(item);
}

void GraphCommands::Mnu_Close_Click() {
    m_parts.surface.window()->close();
}

// --- Commands of the picture

void GraphCommands::Mnu_Options_Click() {
    const GraphMenusDisabled off(*this);
    doors().showVisibleOptions(analogCaptions());
}

void GraphCommands::Graph_Colour_Invert_Click() {
    m_parts.channels.Graph_Colour_Invert();
}

void GraphCommands::Mnu_Colours_Click(int scheme) {
    m_parts.channels.chooseScheme(static_cast<graph::ColourScheme>(scheme));
}

void GraphCommands::Mnu_LineWidth_Click(int widthPx) {
    m_parts.channels.chooseLineWidth(widthPx);
}

void GraphCommands::Resolution_Click(int step) {
    core::state().Config.G_Res = static_cast<std::uint8_t>(step);
    Resolution_Change(step);
    m_parts.view.GraphDirty = core::flagOn;
    m_parts.course.redraw();
}

// The size that the user chose, twips; none where the question was left by Cancel.
std::optional<graph::Size> GraphCommands::askForSize() {
    const GraphMenusDisabled off(*this);
    const graph::Size inner = m_parts.surface.innerSize();
    const auto chosen = doors().chooseCustomScale({inner.width, inner.height});
    if (!chosen) return std::nullopt;
    return graph::Size{chosen->width, chosen->height};
}

void GraphCommands::Mnu_ScaleItem_Click(int item) {
    core::state().Config.ScaleCustom = static_cast<std::int16_t>(item);
    if (item == graph::scaleCustom) return m_parts.scale.chooseCustom(askForSize());
    m_parts.scale.choose(item);
}

void GraphCommands::ZoomIn_Click() {
    m_parts.scale.ZoomIn();
}

void GraphCommands::ZoomOut_Click() {
    m_parts.scale.ZoomOut();
}

void GraphCommands::CancelZoom_Click() {
    m_parts.scale.CancelZoom();
}

// --- Commands of the program

void GraphCommands::Convertor_Mnu_Click() {
    const GraphMenusDisabled off(*this);
    doors().openConversions();
}

// --- Commands of the cursor

void GraphCommands::Mnu_Reference_Click() {
    m_parts.cursor.setReference();
}

void GraphCommands::Mnu_Average_Click() {
    m_parts.cursor.average();
}

void GraphCommands::Mnu_MarkAway_Click() {
    m_parts.cursor.takeMarkAway();
}

void GraphCommands::Mnu_SampleEnd_Click(int last) {
    m_parts.cursor.goToEnd(last != 0);
    m_parts.scale.ScrollToCursor();
}

void GraphCommands::Mnu_FitWhole_Click() {
    m_parts.scale.fitWhole();
}

void GraphCommands::Mnu_ZoomBack_Click() {
    m_parts.scale.stepBack();
}

void GraphCommands::Mnu_HelpItem_Click(int keyboard) {
    doors().showHelp(keyboard != 0 ? HelpPage::keyboard : HelpPage::graph);
}

void GraphCommands::Mnu_GraphFile_Click() {
    const GraphMenusDisabled off(*this);
    doors().showAbout();
}

} // namespace kvo::forms
