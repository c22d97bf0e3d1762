// The window itself, how it opens and closes, and what its menus do.
#include "graph/forms/data_graph.h"

#include "core/forms/doors.h"
#include "core/run_info.h"
#include "core/shared_state.h"
#include "graph/forms/channel_panel.h"
#include "graph/forms/data_graph_needs.h"
#include "graph/forms/graph_surface.h"
#include "graph/layout.h"
#include "library/statistics.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QScreen>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <utility>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int lowestWindowPx = 420;

} // namespace

DataGraph::DataGraph()
    : m_course({core::state().Config, core::state().ConfigKnown, core::state().AppFolder,
                   core::state().Run, core::state().Overlay, library::runList()},
          m_view, *this, *platform::services().dialogs, *platform::services().files),
      m_drawing(core::state().Config, core::state().Run, core::state().Overlay, m_view, *this) {
    setObjectName(QStringLiteral("DataGraph"));
    makeControls();
    Form_Load();
}

void DataGraph::makeControls() {
    m_inner = named(new QWidget, "Inner");
    makeCommands();
    m_surface = new GraphSurface(m_inner);
    m_panel = new ChannelPanel(m_inner);
    setCentralWidget(m_inner);
    m_inner->installEventFilter(this);
    connect(m_surface, &GraphSurface::scrolled, this, &DataGraph::TimeLine);
    connect(m_surface, &GraphSurface::zoomWanted, this, [this](int direction) {
        if (hasRun()) direction > 0 ? ZoomIn_Click() : ZoomOut_Click();
    });
    connect(m_panel, &ChannelPanel::toggled, this, &DataGraph::Toggle_Click);
    connect(m_panel, &ChannelPanel::colourWanted, this, &DataGraph::Value_DblClick);
    connect(m_panel, &ChannelPanel::heightChanged, this, &DataGraph::Form_Resize);
    SurfaceWidget& surface = m_surface->trend();
    connect(&surface, &SurfaceWidget::keyDown, this, &DataGraph::Trend_KeyDown);
    connect(&surface, &SurfaceWidget::mouseDown, this, &DataGraph::Trend_MouseDown);
    connect(&surface, &SurfaceWidget::mouseUp, this, &DataGraph::Trend_MouseUp);
    connect(&surface, &SurfaceWidget::mouseMoved, this, &DataGraph::Trend_MouseMove);
    connect(&surface, &SurfaceWidget::mouseLeft, this, [this] { Label_DataChanel_Change({}); });
    setTabOrders();
    const QSize room = screen()->availableSize();
    setMinimumSize(qMin(m_panel->leastWidth(), room.width()), lowestWindowPx);
    resize(room.width() * 9 / 10, room.height() * 9 / 10);
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
    m_course.openEmpty();
    Resolution_Change(config.G_Res);
    Change_Colour();
    ChanaleEnable();
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
    DrawTrend();
    TimeLine();
}

void DataGraph::openChosen(const std::optional<core::ChosenRun>& run) {
    m_chosenElsewhere = run;
    m_chooseOnShow = true;
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    isVisible() ? openAsked() : show();
    raise();
    activateWindow();
}

// The run that is wanted, or the chooser, once the window stands.
void DataGraph::openAsked() {
    if (!m_chooseOnShow) return;
    m_chooseOnShow = false;
    QTimer::singleShot(0, this, [this] {
        const auto chosen = std::exchange(m_chosenElsewhere, std::nullopt);
        chosen ? m_course.show(*chosen) : Mnu_LoadData_Click();
    });
}

// The line comes back after another window has covered it.
void DataGraph::Form_Activate() {
    m_surface->settle();
    if (hasRun()) TimeLine();
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
    const core::AppConfig& config = core::state().Config;
    layout()->activate(); // also while the window is not shown yet
    placePanels();
    takeScale(
        m_surface->ArrangeGraph(config.ScaleCustom, config.CustomScaleLow, config.CustomScaleHigh));
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
    const GraphMenusDisabled off;
    return doors().chooseRun("Load", title);
}

void DataGraph::chooseRunsToDelete() {
    const GraphMenusDisabled off;
    doors().chooseRunsToDelete("Delete File");
}

void DataGraph::showState() {
    setWindowTitle(shown(caption()));
    const bool overlay = m_course.overlayLoaded();
    m_commands.command("Mnu_Overlay").setText(shown(m_course.overlayCommand()));
    m_commands.key("OverlayData").setText(QLatin1String(m_course.overlayKey()));
    for (int n = 1; n <= 8; ++n) m_panel->setAnalogCaption(n, m_course.analogCaption(n));
    m_panel->showTimes(core::state().Run.times);
    const int setting = core::state().Config.ScaleCustom;
    m_commands.menu("Mnu_Scale").setTitle(QLatin1String(graph::scaleCaption(m_view.ScaleShown)));
    m_commands.check("Mnu_ScaleItem", setting);
    using namespace graphNeeds;
    Needs met = 0;
    if (setting != graph::scaleZoomed) met |= notZoomed;
    if (m_view.CancelZoomOffered) met |= zoomed;
    if (hasRun()) met |= run;
    if (!overlay) met |= noOverlay;
    if (m_course.canChange(0)) met |= runBefore;
    if (m_course.canChange(1)) met |= runBehind;
    m_commands.setMet(met);
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
}

void DataGraph::setScaleRight(int right) {
    m_surface->surface().setScale(0, graph::trendTop, static_cast<float>(right), 0);
}

void DataGraph::showChannelsForType(int dataType) {
    showLabels(graph::ShowChannelsForType(dataType, core::state().Config.Vehicle_Type));
}

// --- Commands

// The times that were typed there stand in the window at once.
void DataGraph::Mnu_Info_Click() {
    core::OpenRun& run = core::state().Run;
    const GraphMenusDisabled off;
    doors().showInfo(run.path, library::infoCaption(caption()));
    run.times = core::LoadRunTimes(run.infoPath, *platform::services().files);
    showState();
}

void DataGraph::Mnu_Statistics_Click() {
    GraphTexts texts;
    texts.caption = caption();
    texts.times = core::state().Run.times;
    texts.analogNames = analogCaptions();
    const GraphMenusDisabled off;
    doors().showStatistics(texts);
    showState(); // the info may have been opened from there
}

void DataGraph::Mnu_TimeGraph_Click() {
    doors().showTimeGraph(true);
}

void DataGraph::Convertor_Mnu_Click() {
    const GraphMenusDisabled off;
    doors().openConversions();
}

void DataGraph::Mnu_ImportFiles_Click(int item) {
    {
        const GraphMenusDisabled off;
        doors().importRuns(item == 0);
    }
    showState(); // the list of runs may go on from the one that is shown
}

void DataGraph::Mnu_Options_Click() {
    const GraphMenusDisabled off;
    doors().showVisibleOptions(analogCaptions());
}

void DataGraph::takeOptions() {
    ChanaleEnable();
    clearSurface();
    m_course.redraw();
}

void DataGraph::keepOptions() {
    m_view.GraphDirty = core::flagOn;
}

core::FromOne<std::string, 8> DataGraph::analogCaptions() const {
    core::FromOne<std::string, 8> captions;
    for (int n = 1; n <= 8; ++n) captions[n] = m_course.analogCaption(n);
    return captions;
}

void DataGraph::Mnu_GraphFile_Click() {
    const GraphMenusDisabled off;
    doors().showAbout();
}

void DataGraph::Resolution_Change(int step) {
    const graph::ResolutionChoice choice = graph::Resolution_Change(step);
    m_commands.check("Resolution", choice.checkedItem);
    m_commands.menu("Mnu_Resolution").setTitle(QString::fromStdString(choice.caption));
}

void DataGraph::Resolution_Click(int step) {
    core::state().Config.G_Res = static_cast<std::uint8_t>(step);
    Resolution_Change(step);
    m_view.GraphDirty = core::flagOn;
    m_course.redraw();
}

void DataGraph::takeScale(std::optional<int> setting) {
    if (setting) m_view.ScaleShown = *setting;
    showState();
}

// The setting that Mnu_Scale names from now on; none where the question was left by Cancel.
std::optional<int> DataGraph::chooseCustomScale() {
    const GraphMenusDisabled off;
    const graph::Size inner = m_surface->innerSize();
    const auto chosen = doors().chooseCustomScale({inner.width, inner.height});
    if (chosen) m_surface->setTrendSize({chosen->width, chosen->height});
    m_surface->Graph_scale(graph::scaleCustom);
    return chosen ? std::optional(graph::scaleCustom) : std::nullopt;
}

void DataGraph::Mnu_ScaleItem_Click(int item) {
    core::state().Config.ScaleCustom = static_cast<std::int16_t>(item);
    const std::optional<int> setting =
        item == graph::scaleCustom ? chooseCustomScale() : m_surface->Graph_scale(item);
    const Hourglass busy(*platform::services().dialogs);
    takeScale(setting);
    applyTrendScale();
    m_course.redraw();
}

void DataGraph::zoom(double factor) {
    core::SharedState& state = core::state();
    const Hourglass busy(*platform::services().dialogs);
    m_surface->surface().setAutoRedraw(true);
    state.Config.ScaleCustom = graph::scaleZoomed;
    takeScale(m_surface->Graph_scale(graph::scaleZoomed, factor));
    applyTrendScale();
    m_course.redraw();
    m_surface->ScrollToCursor(state.Run.SampleCount, m_view.CursorSample);
    m_view.CancelZoomOffered = true;
    showState();
}

void DataGraph::ZoomIn_Click() {
    zoom(1.2);
}

void DataGraph::ZoomOut_Click() {
    zoom(0.8);
}

void DataGraph::CancelZoom_Click() {
    core::SharedState& state = core::state();
    state.Config.ScaleCustom = static_cast<std::int16_t>(m_view.ScaleShown);
    m_view.CancelZoomOffered = false;
    ArrangeGraph();
    applyTrendScale();
    m_course.redraw();
    m_surface->ScrollToCursor(state.Run.SampleCount, m_view.CursorSample);
}

// --- Screenshots

bool DataGraph::saveWindowPicture(const QString& path) {
    return saveScreenshot(*this, path);
}

bool DataGraph::saveGraphPicture(const QString& path, const QSize& sizePx) {
    return m_surface->trend().picture(sizePx).save(path, "PNG");
}

} // namespace kvo::forms
