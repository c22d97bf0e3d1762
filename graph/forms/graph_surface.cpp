#include "graph/forms/graph_surface.h"

#include "graph/forms/ruler_strip.h"
#include "graph/view.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/plain_scroll_bar.h"
#include "platform/qt/text.h"

#include <QCoreApplication>
#include <QFrame>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace kvo::forms {

using namespace platform_qt;

GraphSurface::GraphSurface(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("GraphSurface"));
    Frame1 = new QFrame(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    speakGraph();
    Trend = new SpokenSurface(Frame1);
    Trend->setObjectName(QStringLiteral("Trend"));
    Trend->setAccessibleName(QStringLiteral("Graph"));
    m_heights = named(new RulerStrip(Qt::Vertical, Frame1), "RulerHeights");
    m_heights->setAccessibleName(QStringLiteral("Ruler of rpm and mph"));
    m_times = named(new RulerStrip(Qt::Horizontal, Frame1), "RulerTimes");
    m_times->setAccessibleName(QStringLiteral("Ruler of times"));
    HScroll = named(new PlainScrollBar(Qt::Horizontal, this), "HScroll");
    HScroll->setAccessibleName(QStringLiteral("Scroll along the run"));
    VScroll = named(new PlainScrollBar(Qt::Vertical, this), "VScroll");
    VScroll->setAccessibleName(QStringLiteral("Scroll up and down"));
    for (QScrollBar* bar : {HScroll, VScroll}) {
        bar->hide();
        connect(bar, &QScrollBar::valueChanged, this, &GraphSurface::HScroll_Change);
    }
}

// --- Sizes

std::optional<int> GraphSurface::ArrangeGraph(
    int setting, int customScaleLow, int customScaleHigh) {
    if (setting != graph::scaleCustom) return Graph_scale(setting);
    const graph::CustomArrangement custom = graph::arrangeCustom(
        graph::formSize(room()), graph::innerSize(room(), true), customScaleLow, customScaleHigh);
    setTrendSize(custom.trend);
    setFrame(custom.frame, true);
    reapplyScrollBars();
    return graph::scaleCustom;
}

std::optional<int> GraphSurface::Graph_scale(int setting, double factor) {
    // A zoom that was stored has no size to grow from while the window opens and finds its own.
    if (m_trendSize.width <= 0 || (!m_settled && setting == graph::scaleZoomed))
        setTrendSize(graph::wholeRoom(room()));
    const graph::GraphScaling scaling = graph::Graph_scale(setting, graph::formSize(room()),
        graph::innerSize(room(), setting != graph::scaleFull), m_trendSize, factor);
    if (scaling.trend) setTrendSize(*scaling.trend);
    setFrame(scaling.frame, scaling.scrollBars);
    if (scaling.scrollBars) reapplyScrollBars();
    if (scaling.openCustomDialog || scaling.disableScaleMenu) return std::nullopt;
    return setting;
}

void GraphSurface::resizeTo(int scaleShown) {
    const bool full = scaleShown == graph::scaleFull;
    const graph::ResizeArrangement arrangement =
        graph::arrangeResize(scaleShown, graph::formSize(room()), graph::innerSize(room(), !full));
    if (arrangement.trend) setTrendSize(*arrangement.trend);
    setFrame(arrangement.frame, !full);
    if (!full) reapplyScrollBars();
}

void GraphSurface::setTrendSize(const graph::Size& twips) {
    m_trendSize = twips;
    const auto side = [](double length) {
        return qRound(qBound(1.0, length / twipsPerPixel, double{QWIDGETSIZE_MAX}));
    };
    Trend->resize(side(twips.width), side(twips.height));
}

void GraphSurface::setFrame(const graph::Box& box, bool scrollBars) {
    m_frame = box;
    QRect frame(0, 0, width(), height());
    if (scrollBars) {
        frame.adjust(0, 0, -graph::scrollBarWidthPx, -graph::scrollBarWidthPx);
        HScroll->setGeometry(0, frame.bottom() + 1, frame.width(), graph::scrollBarWidthPx);
        VScroll->setGeometry(frame.right() + 1, 0, graph::scrollBarWidthPx, frame.height());
    }
    Frame1->setGeometry(frame);
    for (QScrollBar* bar : {HScroll, VScroll}) bar->setVisible(scrollBars);
    if (scrollBars) return;
    const QSignalBlocker noHorizontal(HScroll);
    const QSignalBlocker noVertical(VScroll);
    for (QScrollBar* bar : {HScroll, VScroll}) bar->setRange(0, 0);
    Trend->move(0, 0);
    placeRulers();
}

// --- Scrolling

// The positions of the bars made good again after sizes have changed.
void GraphSurface::reapplyScrollBars() {
    const graph::Size frame{m_frame.width, m_frame.height};
    const graph::ScrollPlace range = graph::scrollPlace(m_trendSize, frame, 0, 0);
    const QSignalBlocker noHorizontal(HScroll);
    const QSignalBlocker noVertical(VScroll);
    HScroll->setMaximum(qMax(0, range.hScrollMax));
    VScroll->setMaximum(qMax(0, range.vScrollMax));
    // A bar that has become shorter has taken its value along.
    const graph::ScrollPlace place =
        graph::scrollPlace(m_trendSize, frame, HScroll->value(), VScroll->value());
    const graph::ScrollSteps steps = graph::scrollSteps(Frame1->width(), Frame1->height());
    HScroll->setPageStep(steps.hPage);
    VScroll->setPageStep(steps.vPage);
    HScroll->setSingleStep(steps.hSingle);
    VScroll->setSingleStep(steps.vSingle);
    Trend->move(qRound(place.trendLeft / twipsPerPixel), qRound(place.trendTop / twipsPerPixel));
    placeRulers();
}

void GraphSurface::HScroll_Change() {
    reapplyScrollBars();
    Trend->surface().refresh();
    emit scrolled();
}

void GraphSurface::showRulers(const graph::RulerScales& scales) {
    m_rulerScales = scales;
    placeRulers();
}

void GraphSurface::placeRulers() {
    const double ratio = devicePixelRatioF();
    const auto devicePx = [ratio](int px) { return qRound(px * ratio); };
    m_letters.setFont(RulerStrip::font(graph::trendPoints, ratio));
    const graph::Rulers rulers = graph::makeRulers(m_rulerScales,
        {Trend->deviceSize(), {-devicePx(Trend->x()), -devicePx(Trend->y())},
            devicePx(Frame1->width()), devicePx(Frame1->height())},
        {m_letters.linePx(), [&](const std::string& text) { return m_letters.widthPx(text); }});
    m_heights->showRuler(rulers.heights, Trend->surface().backColor());
    m_times->showRuler(rulers.times, Trend->surface().backColor());
}

void GraphSurface::ScrollToCursor(int sampleCount, int cursorSample) {
    if (const auto value = graph::ScrollToCursor(HScroll->maximum(), sampleCount, cursorSample))
        HScroll->setValue(*value);
}

graph::ScrollValues GraphSurface::scrollValues() const {
    return {HScroll->value(), VScroll->value()};
}

void GraphSurface::scrollTo(const graph::ScrollValues& values) {
    const graph::ScrollValues before = scrollValues();
    {
        const QSignalBlocker noHorizontal(HScroll);
        const QSignalBlocker noVertical(VScroll);
        HScroll->setValue(values.h);
        VScroll->setValue(values.v);
    }
    if (scrollValues() != before) HScroll_Change();
}

graph::SeenPlace GraphSurface::seenAt(const QPointF& global) const {
    const QPointF onTrend = Trend->mapFromGlobal(global);
    const QPointF inFrame = Frame1->mapFromGlobal(global);
    return {onTrend.x() / qMax(1, Trend->width()), onTrend.y() / qMax(1, Trend->height()),
        inFrame.x(), inFrame.y()};
}

void GraphSurface::keepInPlace(const graph::SeenPlace& place) {
    scrollTo(graph::scrollToKeep(m_trendSize, place));
}

bool GraphSurface::scrolls() const {
    return !VScroll->isHidden();
}

graph::SurfacePart GraphSurface::partInView() const {
    const QRectF seen(Frame1->rect().translated(-Trend->pos()) & Trend->rect());
    const auto part = [](qreal at, int length) { return static_cast<float>(at / qMax(1, length)); };
    return {part(seen.left(), Trend->width()), part(seen.top(), Trend->height()),
        part(seen.right(), Trend->width()), part(seen.bottom(), Trend->height())};
}

// The wheel scrolls, with Shift along the run, with Ctrl it zooms.
void GraphSurface::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        const int delta = event->angleDelta().y();
        if (delta != 0) emit zoomWanted(delta > 0 ? 1 : -1, event->globalPosition());
    } else if (scrolls()) {
        const bool along = event->modifiers().testFlag(Qt::ShiftModifier);
        QCoreApplication::sendEvent(along ? HScroll : VScroll, event);
    }
    event->accept();
}

bool GraphSurface::scrollByKey(int key) {
    if (!scrolls() || !Trend->hasFocus()) return false;
    struct ScrollKey {
        int key;
        QScrollBar* bar;
        QAbstractSlider::SliderAction action;
    };
    for (const ScrollKey& one :
        {ScrollKey{Qt::Key_Up, VScroll, QAbstractSlider::SliderSingleStepSub},
            ScrollKey{Qt::Key_Down, VScroll, QAbstractSlider::SliderSingleStepAdd},
            ScrollKey{Qt::Key_PageUp, HScroll, QAbstractSlider::SliderPageStepSub},
            ScrollKey{Qt::Key_PageDown, HScroll, QAbstractSlider::SliderPageStepAdd}}) {
        if (one.key != key) continue;
        one.bar->triggerAction(one.action);
        return true;
    }
    return false;
}

} // namespace kvo::forms
