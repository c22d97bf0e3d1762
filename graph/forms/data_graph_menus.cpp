// The menu bar and the toolbar of the graph window: what stands where and what it runs.
#include "graph/forms/data_graph.h"

#include "graph/forms/graph_icons.h"
#include "mainwin/about.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/icons.h"
#include "platform/services.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QToolBar>
#include <QToolButton>

#include <cassert>

namespace kvo::forms {

using namespace platform_qt;

// One item: the menu it stands in, its caption, its control name, what it runs. A row without a
// routine is a command whose form does not exist yet: it stays disabled. A row that needs a run is
// disabled without one. `subMenu` makes the row a menu of its own; `line` draws a line above it.
struct DataGraph::MenuRow {
    const char* menu;
    const char* caption;
    const char* control;
    void (*routine)(DataGraph&) = nullptr;
    bool needsRun = false;
    bool subMenu = false;
    bool line = false;
    const char* shortcut = "";
};

struct DataGraph::ToolRow {
    const char* key;
    const char* caption;
    const char* control; // of the command that it presses, or none
    void (*routine)(DataGraph&);
    void (*icon)(QPainter&);
    const char* shortcut = "";
    bool line = false;
};

namespace {

struct TopMenu {
    const char* control;
    const char* caption;
};

constexpr std::array<TopMenu, 6> topMenus{{
    {"Mnu_File", "&File"},
    {"Mnu_View", "&Options"},
    {"Mnu_Resolution", "&Graph Resolution (Med)  "},
    {"Mnu_Scale", graph::captionFull},
    {"Mnu_Tools", "&Tools"},
    {"Mnu_Help", "&Help"},
}};

constexpr bool run = true;
constexpr bool subMenu = true;
constexpr bool line = true;

void loadData(DataGraph& g) {
    g.Mnu_LoadData_Click();
}
template <int Index> void graphChange(DataGraph& g) {
    g.GraphChange_Click(Index);
}
void overlay(DataGraph& g) {
    g.Mnu_Overlay_Click();
}
void redoClutch(DataGraph& g) {
    g.Mnu_RedoClutch_Click();
}
void timeOffset(DataGraph& g) {
    g.Mnu_TimeOffset_Click();
}
void deleteRun(DataGraph& g) {
    g.Mnu_DeleteRun_Click();
}
void about(DataGraph& g) {
    g.Mnu_GraphFile_Click();
}
void statistics(DataGraph& g) {
    g.Mnu_Statistics_Click();
}
void closeWindow(DataGraph& g) {
    g.Mnu_Close_Click();
}
void backColour(DataGraph& g) {
    g.Graph_Colour_Invert_Click();
}
template <int Step> void resolution(DataGraph& g) {
    g.Resolution_Click(Step);
}
template <int Item> void scaleItem(DataGraph& g) {
    g.Mnu_ScaleItem_Click(Item);
}
void zoomIn(DataGraph& g) {
    g.ZoomIn_Click();
}
void zoomOut(DataGraph& g) {
    g.ZoomOut_Click();
}
void cancelZoom(DataGraph& g) {
    g.CancelZoom_Click();
}

// clang-format off
constexpr auto menuRows = std::to_array<DataGraph::MenuRow>({
    {"Mnu_File", "&Load Data File", "Mnu_LoadData", loadData, !run, !subMenu, !line, "Ctrl+O"},
    {"Mnu_File", "&Overlay Data File", "Mnu_Overlay", overlay, run},
    {"Mnu_File", "<<<<", "GraphChange(0)", graphChange<0>, run, !subMenu, !line, "Ctrl+PgUp"},
    {"Mnu_File", ">>>>", "GraphChange(1)", graphChange<1>, run, !subMenu, !line, "Ctrl+PgDown"},
    {"Mnu_File", "&Info...", "Mnu_Info", nullptr, run, !subMenu, line},
    {"Mnu_File", "&Statistics", "Mnu_Statistics", statistics, run},
    {"Mnu_File", "&Time Graph", "Mnu_TimeGraph"},
    {"Mnu_File", "&Delete Run", "Mnu_DeleteRun", deleteRun, !run, !subMenu, line},
    {"Mnu_File", "I&mport", "Mnu_ImportMenu", nullptr, !run, subMenu},
    {"Mnu_ImportMenu", "Kvo Data File/s", "Mnu_ImportFiles(0)"},
    {"Mnu_ImportMenu", "Vrn Dos File", "Mnu_ImportFiles(1)"},
    {"Mnu_File", "&Print", "Mnu_Printer", nullptr, run, subMenu, line},
    {"Mnu_Printer", "Screen", "Mnu_Print(0)"},
    {"Mnu_Printer", "Data", "Mnu_Print(1)"},
    {"Mnu_Printer", "Screen && Data", "Mnu_Print(2)"},
    {"Mnu_File", "&Close", "Mnu_Close", closeWindow, !run, !subMenu, line},
    {"Mnu_View", "&Visible Options", "Mnu_Options"},
    {"Mnu_View", "Graph BackColour", "Graph_Colour_Invert", backColour},
    {"Mnu_View", "Redo Clutch Rpm", "Mnu_RedoClutch", redoClutch, run, !subMenu, line},
    {"Mnu_View", "Redo Time Offset", "Mnu_TimeOffset", timeOffset, run},
    {"Mnu_Resolution", "High", "Resolution(1)", resolution<1>},
    {"Mnu_Resolution", "Medium", "Resolution(4)", resolution<4>},
    {"Mnu_Resolution", "Low", "Resolution(8)", resolution<8>},
    {"Mnu_Scale", "Full Screen", "Mnu_ScaleItem(0)", scaleItem<0>},
    {"Mnu_Scale", "1/2 Screen", "Mnu_ScaleItem(1)", scaleItem<1>},
    {"Mnu_Scale", "1/4 Screen", "Mnu_ScaleItem(2)", scaleItem<2>},
    {"Mnu_Scale", "Custom", "Mnu_ScaleItem(3)"},
    {"Mnu_Tools", "Unit &Convertor", "Convertor_Mnu"},
    {"Mnu_Help", "&Help", "Mnu_HelpItem"},
    {"Mnu_Help", "&About KVO", "Mnu_GraphFile", about},
});

constexpr auto toolRows = std::to_array<DataGraph::ToolRow>({
    {"LoadData", "Load", "Mnu_LoadData", nullptr, drawLoadIcon},
    {"OverlayData", "Overlay", "Mnu_Overlay", nullptr, drawOverlayIcon},
    {"Statistics", "Statistics", "Mnu_Statistics", statistics, drawStatisticsIcon, "", line},
    {"Info", "Info", "Mnu_Info", nullptr, drawSheetIcon},
    {"PrintScreen", "Print", "Mnu_Print(0)", nullptr, drawPrinterIcon},
    {"TimeGraph", "Time Graph", "Mnu_TimeGraph", nullptr, drawTimesIcon},
    {"ZoomOut", "Zoom Out", nullptr, zoomOut, drawZoomOutIcon, "Ctrl+-", line},
    {"CancelZoom", "Cancel Zoom", nullptr, cancelZoom, drawCancelZoomIcon, "Ctrl+0"},
    {"ZoomIn", "Zoom In", nullptr, zoomIn, drawZoomInIcon, "Ctrl++"},
    {"PreviousData", "Previous", "GraphChange(0)", nullptr, drawPreviousIcon, "", line},
    {"NextData", "Next", "GraphChange(1)", nullptr, drawNextIcon},
});
// clang-format on

} // namespace

QMenu* DataGraph::menuNamed(const char* name) const {
    return findChild<QMenu*>(QLatin1String(name));
}

QAction* DataGraph::command(const char* name) const {
    return findChild<QAction*>(QLatin1String(name));
}

QAction* DataGraph::key(const char* name) const {
    return Toolbar1->findChild<QAction*>(QLatin1String("Key_") + QLatin1String(name));
}

void DataGraph::makeMenus() {
    for (const TopMenu& top : topMenus)
        menuBar()->addMenu(QLatin1String(top.caption))->setObjectName(QLatin1String(top.control));
    for (const MenuRow& row : menuRows) addCommand(row);
    menuNamed("Mnu_Scale")->menuAction()->setEnabled(false);
}

void DataGraph::addCommand(const MenuRow& row) {
    QMenu* menu = menuNamed(row.menu);
    assert(menu != nullptr);
    if (row.line) menu->addSeparator();
    if (row.subMenu) {
        QMenu* made = menu->addMenu(QLatin1String(row.caption));
        made->setObjectName(QLatin1String(row.control));
        made->menuAction()->setEnabled(!row.needsRun);
        return;
    }
    QAction* action = menu->addAction(QLatin1String(row.caption));
    action->setObjectName(QLatin1String(row.control));
    action->setEnabled(row.routine != nullptr && !row.needsRun);
    action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
    const std::string_view control = row.control;
    action->setCheckable(
        control.starts_with("Resolution(") || control.starts_with("Mnu_ScaleItem("));
    if (const auto routine = row.routine)
        connect(action, &QAction::triggered, this, [this, routine] { routine(*this); });
}

void DataGraph::makeToolbar() {
    Toolbar1 = new QToolBar(QStringLiteral("Commands"), m_inner);
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setMovable(false);
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    Toolbar1->setIconSize({20, 20});
    for (const ToolRow& row : toolRows) {
        if (row.line) Toolbar1->addSeparator();
        QAction* button = Toolbar1->addAction(drawnIcon(row.icon), QLatin1String(row.caption));
        button->setObjectName(QLatin1String("Key_") + QLatin1String(row.key));
        button->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        button->setEnabled(false);
        const char* key = row.key;
        connect(button, &QAction::triggered, this, [this, key] { Toolbar1_ButtonClick(key); });
        auto* widget = qobject_cast<QToolButton*>(Toolbar1->widgetForAction(button));
        widget->setObjectName(QLatin1String(key));
        widget->setFocusPolicy(Qt::TabFocus); // reachable without a mouse
    }
}

void DataGraph::Toolbar1_ButtonClick(std::string_view key) {
    for (const ToolRow& row : toolRows) {
        if (row.key != key) continue;
        if (row.routine != nullptr) return row.routine(*this);
        if (QAction* pressed = command(row.control)) pressed->trigger();
        return;
    }
}

// Everything that works on a run; back and forward depend on the chooser's list.
void DataGraph::enableRunCommands(bool on) {
    for (const MenuRow& row : menuRows) {
        if (!row.needsRun) continue;
        QAction* action = row.subMenu ? menuNamed(row.control)->menuAction() : command(row.control);
        action->setEnabled(on && (row.subMenu || row.routine != nullptr));
    }
    const bool zoomed = core::state().Config.ScaleCustom == graph::scaleZoomed;
    menuNamed("Mnu_Scale")->menuAction()->setEnabled(on && !zoomed);
    for (const ToolRow& row : toolRows) {
        const QAction* pressed = row.control != nullptr ? command(row.control) : nullptr;
        const bool works = pressed != nullptr ? pressed->isEnabled() : on;
        key(row.key)->setEnabled(works);
    }
    key("CancelZoom")->setEnabled(on && zoomed);
    enableNeighbours();
}

void DataGraph::enableMenus(bool on) {
    for (const char* name : {"Mnu_File", "Mnu_Resolution", "Mnu_Help"})
        menuNamed(name)->menuAction()->setEnabled(on);
    for (const MenuRow& row : menuRows) {
        const std::string_view control = row.control;
        if ((control == "Mnu_Options" || control == "Convertor_Mnu") && row.routine != nullptr)
            command(row.control)->setEnabled(on);
    }
    // Only with a run in the window, which is when Mnu_Overlay is enabled.
    const bool zoomed = core::state().Config.ScaleCustom == graph::scaleZoomed;
    if (!hasRun()) return;
    menuNamed("Mnu_Scale")->menuAction()->setEnabled(on && !zoomed);
    command("Mnu_RedoClutch")->setEnabled(on && core::state().OverlayLoaded == 0);
}

// --- Commands

void DataGraph::Mnu_Close_Click() {
    close();
}

void DataGraph::Mnu_GraphFile_Click() {
    EnableGraphMenus(false);
    showModal(form<About>());
    EnableGraphMenus(true);
}

void DataGraph::Resolution_Change(int step) {
    const graph::ResolutionChoice choice = graph::Resolution_Change(step);
    for (const int item : {1, 4, 8}) {
        command(qPrintable(QStringLiteral("Resolution(%1)").arg(item)))
            ->setChecked(item == choice.checkedItem);
    }
    menuNamed("Mnu_Resolution")->setTitle(QString::fromStdString(choice.caption));
}

void DataGraph::Resolution_Click(int step) {
    core::SharedState& state = core::state();
    state.Config.G_Res = static_cast<std::uint8_t>(step);
    Resolution_Change(step);
    state.ImportMode = -1; // is GraphDirty here
    redrawAll();
}

void DataGraph::Mnu_ScaleItem_Click(int item) {
    core::state().Config.ScaleCustom = static_cast<std::int16_t>(item);
    Graph_scale(item);
    applyTrendScale();
    redrawAll();
}

void DataGraph::zoom(double factor) {
    const Hourglass busy(*platform::services().dialogs);
    Trend->surface().setAutoRedraw(true);
    core::state().Config.ScaleCustom = graph::scaleZoomed;
    Graph_scale(graph::scaleZoomed, factor);
    applyTrendScale();
    redrawAll();
    ScrollToCursor();
    key("CancelZoom")->setEnabled(true);
}

void DataGraph::ZoomIn_Click() {
    zoom(1.2);
}

void DataGraph::ZoomOut_Click() {
    zoom(0.8);
}

void DataGraph::CancelZoom_Click() {
    const std::string caption = menuNamed("Mnu_Scale")->title().toStdString();
    int setting = graph::scaleFull;
    if (caption == graph::captionHalf) setting = graph::scaleHalf;
    if (caption == graph::captionQuarter) setting = graph::scaleQuarter;
    if (caption == graph::captionCustom) setting = graph::scaleCustom;
    core::state().Config.ScaleCustom = static_cast<std::int16_t>(setting);
    ArrangeGraph();
    menuNamed("Mnu_Scale")->menuAction()->setEnabled(true);
    key("CancelZoom")->setEnabled(false);
    applyTrendScale();
    redrawAll();
    ScrollToCursor();
}

} // namespace kvo::forms
