#include "graph/forms/data_graph.h"

#include "core/forms/doors.h"
#include "core/shared_state.h"
#include "graph/forms/channel_panel.h"
#include "graph/forms/graph_surface.h"
#include "graph/layout.h"
#include "graph/line_width.h"
#include "platform/qt/file_drop.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <utility>

namespace kvo::forms {

using namespace platform_qt;

DataGraph::DataGraph()
    : m_inner(named(new QWidget, "Inner")), m_surface(new GraphSurface(m_inner)),
      m_panel(new ChannelPanel(m_inner)),
      m_course({core::state().Config, core::state().ConfigKnown, core::state().AppFolder,
                   core::state().Run, core::state().Overlay, library::runList()},
          m_view, *this, *platform::services().dialogs, *platform::services().files),
      m_shown(*m_surface, *m_panel),
      m_drawing(core::state().Config, core::state().Run, core::state().Overlay, m_view, m_shown),
      m_cursor(m_view, m_course, *m_surface, *m_panel),
      m_scale(m_view, m_course, *this, *m_surface),
      m_channels(m_view, m_course, *this, m_drawing, m_shown, *m_panel),
      m_printing(m_view, m_course, m_shown, *m_surface, *m_panel),
      m_exporting(m_course, m_printing, *m_surface),
      m_commands({m_view, m_course, *this, *m_surface, m_cursor, m_scale, m_channels, m_printing,
          m_exporting}) {
    setObjectName(QStringLiteral("DataGraph"));
    makeControls();
    Form_Load();
}

void DataGraph::makeControls() {
    m_commands.make(*this).setParent(m_inner);
    setCentralWidget(m_inner);
    m_inner->installEventFilter(this);
    connect(m_surface, &GraphSurface::zoomWanted, this, [this](int direction, QPointF at) {
        if (hasRun()) m_scale.zoomAbout(direction, at);
    });
    connect(&m_surface->trend(), &SurfaceWidget::mouseDoubleClicked, this,
        [this](Qt::MouseButton button) {
            if (hasRun() && button == Qt::LeftButton) m_scale.fitWhole();
        });
    connect(&m_cursor, &GraphCursor::marksChanged, this, &DataGraph::showState);
    takeFileDrops(*this, [](const std::string& path) { doors().openDropped(path); });
    connect(m_panel, &ChannelPanel::heightChanged, this, &DataGraph::Form_Resize);
    setTabOrders();
    const QSize room = screen()->availableSize();
    setMinimumSize(qMin(m_panel->leastWidth(), room.width()), graph::lowestWindowPx);
    resize(graph::openedSidePx(room.width()), graph::openedSidePx(room.height()));
    setWindowState(Qt::WindowMaximized);
}

// Toolbar, surface, then the channels as they stand in their groups.
void DataGraph::setTabOrders() {
    QWidget* last = nullptr;
    const auto next = [&last](QWidget* widget) {
        if (last != nullptr) QWidget::setTabOrder(last, widget);
        last = widget;
    };
    for (QToolButton* button : m_commands.toolbar().findChildren<QToolButton*>()) {
        if (button->focusPolicy() == Qt::TabFocus) next(button);
    }
    next(&m_surface->trend());
    for (QWidget* toggle : m_panel->toggles()) next(toggle);
}

// --- Opening and closing

void DataGraph::Form_Load() {
    const core::AppConfig& config = core::state().Config;
    m_surface->surface().setFontSize(graph::trendPoints);
    // A program without a user keeps nothing for one.
    if (const platform::Settings* kept = platform::services().settings)
        m_view.LineWidthPx = graph::keptLineWidth(*kept);
    setScaleRight(graph::trendRightAtFirst);
    m_course.openEmpty();
    m_commands.Resolution_Change(config.G_Res);
    m_channels.Change_Colour();
    m_channels.ChanaleEnable();
    if (config.Exhaust != core::flagOn)
        m_panel->setExhaustHeading(QStringLiteral("Exhaust Temps Deg C"));
    showChannelsForType(config.LoggerDataType);
    m_view.CancelZoomOffered = config.ScaleCustom == graph::scaleZoomed;
    ArrangeGraph();
    m_chooseOnShow = true;
}

void DataGraph::openFresh(const std::string& path, const std::string& caption) {
    m_chooseOnShow = false;
    const bool opened = m_course.openFresh(path, caption);
    ArrangeGraph();
    if (!opened) return;
    showChannelsForType(core::state().Run.DataType);
    drawTrend();
    timeLine();
}

void DataGraph::openChosen(const std::optional<core::ChosenRun>& run) {
    m_chosenElsewhere = run;
    m_chooseOnShow = true;
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    isVisible() ? openAsked() : show();
    raise();
    activateWindow();
}

// The run that is wanted, or the chooser, once the window stands. A command that was quicker may
// have a dialog up, even the chooser itself: it goes first.
void DataGraph::openAsked(int afterMs) {
    constexpr int againMs = 50;
    if (!m_chooseOnShow) return;
    QTimer::singleShot(afterMs, this, [this] {
        if (QApplication::activeModalWidget() != nullptr || m_choosing) return openAsked(againMs);
        if (!std::exchange(m_chooseOnShow, false)) return;
        const auto chosen = std::exchange(m_chosenElsewhere, std::nullopt);
        chosen ? m_course.show(*chosen) : m_course.Mnu_LoadData();
    });
}

// The line comes back after another window has covered it.
void DataGraph::Form_Activate() {
    m_surface->settle();
    if (hasRun()) timeLine();
}

void DataGraph::Form_Unload() {
    m_course.close();
    unload<DataGraph>();
    doors().showMainWindow();
}

void DataGraph::closeEvent(QCloseEvent* event) {
    event->accept();
    if (isLoaded<DataGraph>() && &form<DataGraph>() == this) Form_Unload();
}

void DataGraph::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    openAsked();
}

bool DataGraph::event(QEvent* event) {
    const bool done = QMainWindow::event(event);
    if (event->type() == QEvent::WindowActivate) Form_Activate();
    return done;
}

// --- Sizes

// A key that has no room for its caption shows its icon alone; its tool tip says the rest.
void DataGraph::placeToolbar(int width) {
    QToolBar& toolbar = m_commands.toolbar();
    toolbar.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    if (toolbar.sizeHint().width() > width) toolbar.setToolButtonStyle(Qt::ToolButtonIconOnly);
    toolbar.setGeometry(0, 0, width, graph::toolbarHeightPx);
}

void DataGraph::placePanels() {
    const int width = m_inner->width();
    const int room =
        graph::surfaceHeightPx(m_inner->height(), m_inner->y(), m_panel->heightNeeded(width));
    const int top = graph::toolbarHeightPx + room;
    placeToolbar(width);
    m_surface->setGeometry(0, graph::toolbarHeightPx, width, room);
    m_panel->setGeometry(0, top, width, qMax(0, m_inner->height() - top));
}

void DataGraph::ArrangeGraph() {
    layout()->activate(); // also while the window is not shown yet
    placePanels();
    m_scale.ArrangeGraph();
}

void DataGraph::Form_Resize() {
    const Hourglass busy(*platform::services().dialogs);
    placePanels();
    m_surface->resizeTo(m_view.ScaleShown);
}

// The window finds its size on the screen first; an enlarged surface is measured by that.
bool DataGraph::eventFilter(QObject* object, QEvent* event) {
    if (object == m_inner && event->type() == QEvent::Resize)
        m_surface->settled() ? Form_Resize() : ArrangeGraph();
    return QMainWindow::eventFilter(object, event);
}

void DataGraph::keyPressEvent(QKeyEvent* event) {
    if (!m_surface->scrollByKey(event->key())) QMainWindow::keyPressEvent(event);
}

// --- What the course asks for

std::optional<core::ChosenRun> DataGraph::chooseRun(const std::string& title) {
    const GraphMenusDisabled off(m_commands);
    const QScopedValueRollback choosing(m_choosing, true);
    return doors().chooseRun("Load", title);
}

void DataGraph::chooseRunsToDelete() {
    const GraphMenusDisabled off(m_commands);
    const QScopedValueRollback choosing(m_choosing, true);
    doors().chooseRunsToDelete("Delete File");
}

// Once for each run that comes into the window.
void DataGraph::rememberRun() {
    const std::string shownRun = hasRun() ? core::state().Run.path : std::string();
    const bool isNew = !shownRun.empty() && shownRun != m_remembered;
    m_remembered = shownRun;
    if (isNew && doors().rememberRun.isOpen()) doors().rememberRun(shownRun);
}

void DataGraph::showState() {
    rememberRun();
    setWindowTitle(shown(caption()) + QLatin1String(core::state().titleMark()));
    for (int n = 1; n <= 8; ++n) m_panel->setAnalogCaption(n, m_course.analogCaption(n));
    m_panel->showTimes(core::state().Run.times);
    m_panel->readOuts().showTitles(shown(m_course.runTitle()), shown(m_course.overlayTitle()));
    m_commands.showState();
}

void DataGraph::emptyLabels() {
    m_panel->emptyLabels();
    m_surface->trend().setToolTip({});
}

void DataGraph::emptyOverlayLabels() {
    m_panel->emptyOverlayLabels();
}

void DataGraph::clearSurface() {
    m_surface->surface().setAutoRedraw(true);
    m_surface->surface().cls();
    m_surface->showRulers({});
}

void DataGraph::setScaleRight(int right) {
    m_surface->surface().setScale(0, graph::trendTop, static_cast<float>(right), 0);
}

void DataGraph::showChannelsForType(int dataType) {
    m_panel->showLabels(graph::ShowChannelsForType(dataType, core::state().Config.Vehicle_Type));
}

// A surface that there is no memory for goes back a step of the zoom, or into its frame.
void DataGraph::drawTrend() {
    const bool drawn = m_drawing.DrawTrend();
    m_surface->showRulers(graph::rulerScales(core::state().Config, m_drawing.gridInput()));
    if (drawn) return;
    platform::services().dialogs->messageBox(
        "There isn't enough video memory to display at this resolution.",
        platform::boxStyle::critical, "Memory Error");
    if (hasRun() && m_view.CancelZoomOffered) {
        m_scale.ZoomOut();
    } else {
        m_scale.showFull();
        drawTrend();
    }
    m_view.zooms.clear(); // there is no memory for what was before
    showState();
}

// --- What other forms ask for

void DataGraph::takeOptions() {
    m_channels.ChanaleEnable();
    clearSurface();
    m_course.redraw();
}

void DataGraph::keepOptions() {
    m_view.GraphDirty = core::flagOn;
}

void redrawGraph() {
    if (isLoaded<DataGraph>()) form<DataGraph>().takeOptions();
}

void keepGraphOptions() {
    if (isLoaded<DataGraph>()) form<DataGraph>().keepOptions();
}

// --- Screenshots

bool DataGraph::saveWindowPicture(const QString& path) {
    return saveScreenshot(*this, path);
}

} // namespace kvo::forms
