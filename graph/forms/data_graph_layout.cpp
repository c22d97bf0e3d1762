// Where everything in the graph window stands, and how large Trend is.
#include "graph/forms/data_graph.h"

#include "core/basic/numbers.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"

#include <QAction>
#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>
#include <initializer_list>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int toolbarHeight = 34;
constexpr int scrollBarWidth = 17;
constexpr int lowestSurface = 160;
constexpr int panelRows = 5;
// What the rules take off the form's height for everything but the surface, and off the inner
// height for everything but Frame1.
constexpr int outsideTrendTwips = 3200;
constexpr int outsideTrend = 213;
constexpr int outsideFrame = 129;
constexpr int frameNarrowed = 15; // what Frame1 gives up for the vertical bar
// Twips that one step of a scroll bar moves Trend.
constexpr double horizontalStep = 8;
constexpr double verticalStep = 4;

struct Group {
    const char* heading;
    int columns;
    std::initializer_list<int> channels;
};

// One row of the panel from left to right; a group is filled column by column.
const std::array<Group, 4>& groups() {
    using namespace channels;
    static const std::array<Group, 4> all{{
        {"Rpm", 1, {engineChannel, clutchChannel, inputChannel, outputChannel}},
        {"Derived", 1, {slipChannel, ratioChannel, mphChannel, rocosChannel, tyreGrowthChannel}},
        {"Analog", 2,
            {analogChannel(1), analogChannel(2), analogChannel(3), analogChannel(4),
                analogChannel(5), analogChannel(6), analogChannel(7), analogChannel(8)}},
        {"Exhaust Temps Deg F", 2,
            {exhaustChannel(1), exhaustChannel(2), exhaustChannel(3), exhaustChannel(4),
                exhaustChannel(5), exhaustChannel(6), exhaustChannel(7), exhaustChannel(8)}},
    }};
    return all;
}

struct TimeBox {
    const char* caption;
    const char* control;
};
constexpr std::array<TimeBox, 6> timeBoxes{
    {{"60 ft", "Text_60FootTime"}, {"330 ft", "Text_330FootTime"}, {"660 ft", "Text_660FootTime"},
        {"660 mph", "Text_660FootSpeed"}, {"1000 ft", "Text_1000FootTime"}, {"ET", "Text_ET"}}};

QLabel* headingLabel(const char* text) {
    auto* label = new QLabel(QLatin1String(text));
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

// --- Making the controls

void DataGraph::makeControls() {
    makeMenus();
    m_inner = named(new QWidget, "Inner");
    makeToolbar();
    makeSurface();
    Frame3 = new QFrame(m_inner);
    Frame3->setObjectName(QStringLiteral("Frame3"));
    m_readOuts = named(new ReadOutLine, "ReadOuts");
    auto* panels = row({});
    panels->setSpacing(14);
    for (int group = 0; group < static_cast<int>(groups().size()); ++group)
        makeGroup(*panels, group);
    panels->addStretch(1);
    panels->addWidget(makeTimes());
    auto* all = column({LayoutPart(m_readOuts), LayoutPart(panels, 1)});
    all->setContentsMargins(6, 3, 6, 3);
    all->setSpacing(3);
    Frame3->setLayout(all);
    setCentralWidget(m_inner);
    m_inner->installEventFilter(this);
    setTabOrders();
    const QSize room = screen()->availableSize();
    setMinimumSize(qMin(Frame3->minimumSizeHint().width(), room.width()), 420);
    resize(room.width() * 9 / 10, room.height() * 9 / 10);
    setWindowState(Qt::WindowMaximized);
}

void DataGraph::makeSurface() {
    Frame1 = new QFrame(m_inner);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Trend = new platform_qt::SurfaceWidget(Frame1);
    Trend->setObjectName(QStringLiteral("Trend"));
    Trend->setAccessibleName(QStringLiteral("Graph"));
    HScroll = named(new QScrollBar(Qt::Horizontal, m_inner), "HScroll");
    HScroll->setAccessibleName(QStringLiteral("Scroll along the run"));
    VScroll = named(new QScrollBar(Qt::Vertical, m_inner), "VScroll");
    VScroll->setAccessibleName(QStringLiteral("Scroll up and down"));
    for (QScrollBar* bar : {HScroll, VScroll}) bar->hide();
    connect(HScroll, &QScrollBar::valueChanged, this, &DataGraph::HScroll_Change);
    connect(VScroll, &QScrollBar::valueChanged, this, &DataGraph::VScroll_Change);
    connect(Trend, &platform_qt::SurfaceWidget::keyDown, this, &DataGraph::Trend_KeyDown);
    connect(Trend, &platform_qt::SurfaceWidget::mouseDown, this, &DataGraph::Trend_MouseDown);
    connect(Trend, &platform_qt::SurfaceWidget::mouseUp, this, &DataGraph::Trend_MouseUp);
    connect(Trend, &platform_qt::SurfaceWidget::mouseMoved, this, &DataGraph::Trend_MouseMove);
}

void DataGraph::makeGroup(QHBoxLayout& panels, int group) {
    const Group& facts = groups()[static_cast<std::size_t>(group)];
    auto* box = new QWidget;
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(0);
    QLabel* heading = headingLabel(facts.heading);
    if (group == 3) Label15 = named(heading, "Label15");
    grid->addWidget(heading, 0, 0, 1, facts.columns);
    for (const int channel : facts.channels) {
        auto* one = new ChannelCell(channels::channelFacts(channel), box);
        one->toggle->setStandIn(standIn(channel));
        one->toggle->setCaption(channelCaption(channel));
        m_cells[static_cast<std::size_t>(channel)] = one;
        connect(one->toggle, &QCheckBox::clicked, this, [this, channel] { Toggle_Click(channel); });
        connect(one->value, &ValueLabel::doubleClicked, this,
            [this, channel] { Value_DblClick(channel); });
        one->toggle->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(one->toggle, &QWidget::customContextMenuRequested, this,
            [this, channel, one](
                const QPoint& at) { channelMenu(channel, one->toggle->mapToGlobal(at)); });
    }
    for (int line = 1; line <= panelRows; ++line) grid->setRowStretch(line, 1);
    m_groups.push_back(box);
    placeCells(group);
    limitWidth(group);
    panels.addWidget(box, 10 * facts.columns);
}

// Cells that are as wide as they get leave the rest of the panel empty.
void DataGraph::limitWidth(int group) {
    const int columns = groups()[static_cast<std::size_t>(group)].columns;
    QWidget* box = m_groups[static_cast<std::size_t>(group)];
    const int gaps = (columns - 1) * static_cast<QGridLayout*>(box->layout())->horizontalSpacing();
    box->setMaximumWidth(columns * m_cells[0]->maximumWidth() + gaps);
}

// The channels that a run has stand one behind the other; the others leave no gap.
void DataGraph::placeCells(int group) {
    const Group& facts = groups()[static_cast<std::size_t>(group)];
    auto* grid = static_cast<QGridLayout*>(m_groups[static_cast<std::size_t>(group)]->layout());
    const int rows = static_cast<int>(facts.channels.size()) / facts.columns;
    const auto stands = [this](int channel) {
        const ChannelCell& one = cell(channel);
        return one.isHidden() == one.toggle->isHidden();
    };
    const bool placed = grid->count() > 1;
    if (placed && std::all_of(facts.channels.begin(), facts.channels.end(), stands)) return;
    int place = 0;
    for (const int channel : facts.channels) {
        ChannelCell& one = cell(channel);
        grid->removeWidget(&one);
        const bool shows = !one.toggle->isHidden();
        one.setVisible(shows);
        if (!shows) continue;
        grid->addWidget(&one, 1 + place % rows, place / rows);
        ++place;
    }
    m_groups[static_cast<std::size_t>(group)]->setVisible(place > 0);
}

// The run's times as its info file has them.
QWidget* DataGraph::makeTimes() {
    Frame_Times = named(new QWidget, "Frame_Times");
    auto* grid = new QGridLayout(Frame_Times);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(2);
    grid->addWidget(headingLabel("Times"), 0, 0, 1, 4);
    int place = 0;
    for (const TimeBox& box : timeBoxes) {
        auto* caption = new QLabel(QLatin1String(box.caption));
        auto* time = new ValueLabel(Frame_Times);
        time->setObjectName(QLatin1String(box.control));
        time->setBackgroundRole(QPalette::Base);
        time->setForegroundRole(QPalette::Text);
        const int room = time->fontMetrics().horizontalAdvance(QStringLiteral("000.000")) + 6;
        time->setFixedWidth(room);
        time->setMaximumHeight(m_cells[0]->maximumHeight());
        time->setContentsMargins(1, 1, 3, 1);
        grid->addWidget(caption, 1 + place % 3, place / 3 * 2);
        grid->addWidget(time, 1 + place % 3, place / 3 * 2 + 1);
        ++place;
    }
    for (int line = 1; line <= panelRows; ++line) grid->setRowStretch(line, 1);
    return Frame_Times;
}

// Toolbar, surface, then the channels as they stand in their groups.
void DataGraph::setTabOrders() {
    QWidget* last = nullptr;
    const auto next = [&last](QWidget* widget) {
        if (last != nullptr) QWidget::setTabOrder(last, widget);
        last = widget;
    };
    for (QToolButton* button : Toolbar1->findChildren<QToolButton*>()) {
        if (button->focusPolicy() == Qt::TabFocus) next(button);
    }
    next(Trend);
    for (const Group& group : groups()) {
        for (const int channel : group.channels) next(cell(channel).toggle);
    }
}

// --- Sizes

// The form and its inside as the rules measure them: what our menu, toolbar and panel take is to
// them what the form's height loses to everything but Trend.
graph::Size DataGraph::formSize() const {
    return {toTwips(m_inner->width()) * 1.0, toTwips(m_roomHeight) * 1.0 + outsideTrendTwips};
}

// With scroll bars the rules count on a part of Frame1 that is in view: 1.0038 of its width and
// 0.9413 of its height. It is measured so that the ends of Trend come just into view.
graph::Size DataGraph::innerSize(bool scrollBars) const {
    if (!scrollBars) return {m_inner->width() * 1.0, m_roomHeight * 1.0 + outsideFrame};
    constexpr double seenOfWidth = 1.8820614 * horizontalStep / twipsPerPixel;
    constexpr double seenOfHeight = 3.53 * verticalStep / twipsPerPixel;
    return {(m_inner->width() - scrollBarWidth) / seenOfWidth + frameNarrowed,
        (m_roomHeight - scrollBarWidth) / seenOfHeight + outsideFrame};
}

void DataGraph::placePanels() {
    const int width = m_inner->width();
    const int height = m_inner->height();
    const int aboveInner = m_inner->y();
    const int panel =
        qMax(Frame3->minimumSizeHint().height(), outsideTrend - aboveInner - toolbarHeight);
    m_roomHeight = qMax(lowestSurface, height - toolbarHeight - panel);
    Toolbar1->setGeometry(0, 0, width, toolbarHeight);
    Frame3->setGeometry(0, toolbarHeight + m_roomHeight, width, panel);
}

void DataGraph::setTrendSize(const graph::Size& twips) {
    m_trendSize = twips;
    const auto side = [](double length) {
        return qRound(qBound(1.0, length / twipsPerPixel, double{QWIDGETSIZE_MAX}));
    };
    Trend->resize(side(twips.width), side(twips.height));
}

void DataGraph::setFrame(const graph::Box& box, bool scrollBars) {
    m_frame = box;
    QRect frame(0, toolbarHeight, m_inner->width(), m_roomHeight);
    if (scrollBars) {
        frame.adjust(0, 0, -scrollBarWidth, -scrollBarWidth);
        HScroll->setGeometry(0, frame.bottom() + 1, frame.width(), scrollBarWidth);
        VScroll->setGeometry(frame.right() + 1, frame.top(), scrollBarWidth, frame.height());
    }
    Frame1->setGeometry(frame);
    for (QScrollBar* bar : {HScroll, VScroll}) bar->setVisible(scrollBars);
    if (scrollBars) return;
    const QSignalBlocker noHorizontal(HScroll);
    const QSignalBlocker noVertical(VScroll);
    for (QScrollBar* bar : {HScroll, VScroll}) bar->setRange(0, 0);
    Trend->move(0, 0);
}

void DataGraph::ArrangeGraph() {
    const core::AppConfig& config = core::state().Config;
    layout()->activate(); // also while the window is not shown yet
    placePanels();
    if (config.ScaleCustom != graph::scaleCustom) {
        Graph_scale(config.ScaleCustom);
        return;
    }
    const graph::CustomArrangement custom = graph::arrangeCustom(
        formSize(), innerSize(true), config.CustomScaleLow, config.CustomScaleHigh);
    setTrendSize(custom.trend);
    setFrame(custom.frame, true);
    HScroll->setMaximum(qMax(0, custom.hScrollMax));
    VScroll->setMaximum(qMax(0, custom.vScrollMax));
    menuNamed("Mnu_Scale")->setTitle(QString::fromStdString(custom.caption));
}

void DataGraph::Graph_scale(int setting, double factor) {
    // A zoom that was stored has no size to grow from while the window opens and finds its own.
    if (m_trendSize.width <= 0 || (!m_settled && setting == graph::scaleZoomed))
        setTrendSize({formSize().width, toTwips(m_roomHeight) * 1.0});
    applyScaling(setting, graph::Graph_scale(setting, formSize(),
                              innerSize(setting != graph::scaleFull), m_trendSize, factor));
}

void DataGraph::applyScaling(int setting, const graph::GraphScaling& scaling) {
    QMenu* menu = menuNamed("Mnu_Scale");
    if (scaling.trend) setTrendSize(*scaling.trend);
    if (scaling.caption) menu->setTitle(QString::fromStdString(*scaling.caption));
    if (scaling.disableScaleMenu) menu->menuAction()->setEnabled(false);
    for (int item = graph::scaleFull; item <= graph::scaleCustom; ++item) {
        QAction* action = command(qPrintable(QStringLiteral("Mnu_ScaleItem(%1)").arg(item)));
        action->setChecked(item == setting);
    }
    setFrame(scaling.frame, scaling.scrollBars);
    if (scaling.scrollBars) reapplyScrollBars();
}

void DataGraph::Form_Resize() {
    const Hourglass busy(*platform::services().dialogs);
    placePanels();
    const std::string caption = menuNamed("Mnu_Scale")->title().toStdString();
    const bool full = caption == graph::captionFull;
    const graph::ResizeArrangement arrangement =
        graph::arrangeResize(caption, formSize(), innerSize(!full));
    if (arrangement.trend) setTrendSize(*arrangement.trend);
    setFrame(arrangement.frame, !full);
    if (!full) reapplyScrollBars();
}

bool DataGraph::eventFilter(QObject* object, QEvent* event) {
    if (object == m_inner && event->type() == QEvent::Resize) {
        // The window finds its size on the screen first; an enlarged surface is measured by that.
        if (m_settled)
            Form_Resize();
        else
            ArrangeGraph();
    }
    return QMainWindow::eventFilter(object, event);
}

// --- Scrolling

// The positions of the bars made good again after sizes have changed.
void DataGraph::reapplyScrollBars() {
    const graph::Size frame{m_frame.width, m_frame.height};
    const graph::ScrollPlace range = graph::scrollPlace(m_trendSize, frame, 0, 0);
    const QSignalBlocker noHorizontal(HScroll);
    const QSignalBlocker noVertical(VScroll);
    HScroll->setMaximum(qMax(0, range.hScrollMax));
    VScroll->setMaximum(qMax(0, range.vScrollMax));
    // A bar that has become shorter has taken its value along.
    const graph::ScrollPlace place =
        graph::scrollPlace(m_trendSize, frame, HScroll->value(), VScroll->value());
    HScroll->setPageStep(static_cast<int>(toTwips(Frame1->width()) / horizontalStep));
    VScroll->setPageStep(static_cast<int>(toTwips(Frame1->height()) / verticalStep));
    HScroll->setSingleStep(HScroll->pageStep() / 20 + 1);
    VScroll->setSingleStep(VScroll->pageStep() / 20 + 1);
    Trend->move(qRound(place.trendLeft / twipsPerPixel), qRound(place.trendTop / twipsPerPixel));
}

void DataGraph::HScroll_Change() {
    reapplyScrollBars();
    Trend->surface().refresh();
    TimeLine();
}

void DataGraph::VScroll_Change() {
    HScroll_Change();
}

void DataGraph::ScrollToCursor() {
    const auto value =
        graph::ScrollToCursor(HScroll->maximum(), core::state().SampleCount, m_view.CursorSample);
    if (value) HScroll->setValue(*value);
}

// The wheel scrolls, with Shift along the run, with Ctrl it zooms.
void DataGraph::wheelEvent(QWheelEvent* event) {
    const bool overSurface =
        Frame1->geometry().contains(m_inner->mapFrom(this, event->position().toPoint()));
    if (!overSurface || !hasRun()) return event->ignore();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        if (event->angleDelta().y() > 0) ZoomIn_Click();
        if (event->angleDelta().y() < 0) ZoomOut_Click();
    } else if (VScroll->isVisible()) {
        const bool along = event->modifiers().testFlag(Qt::ShiftModifier);
        QCoreApplication::sendEvent(along ? HScroll : VScroll, event);
    }
    event->accept();
}

// Keys that Trend has no use for scroll an enlarged surface.
void DataGraph::keyPressEvent(QKeyEvent* event) {
    if (!VScroll->isVisible() || !Trend->hasFocus()) return QMainWindow::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Up:
        return VScroll->triggerAction(QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Down:
        return VScroll->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_PageUp:
        return HScroll->triggerAction(QAbstractSlider::SliderPageStepSub);
    case Qt::Key_PageDown:
        return HScroll->triggerAction(QAbstractSlider::SliderPageStepAdd);
    default:
        return QMainWindow::keyPressEvent(event);
    }
}

} // namespace kvo::forms
