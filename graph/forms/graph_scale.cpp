#include "graph/forms/graph_scale.h"

#include "core/data_types.h"
#include "core/shared_state.h"
#include "graph/forms/graph_surface.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"

namespace kvo::forms {

using platform_qt::Hourglass;

namespace {

constexpr double zoomInFactor = 1.2;
constexpr double zoomOutFactor = 0.8;

} // namespace

// A setting that Mnu_Scale names from now on; none where it goes on naming the one before.
void GraphScale::takeScale(std::optional<int> setting) {
    if (setting) m_view.ScaleShown = *setting;
    m_window.showState();
}

void GraphScale::applyTrendScale() {
    const core::DataTypeFacts* facts = core::dataTypeFacts(core::state().Run.DataType);
    if (facts != nullptr && facts->rightEdge) m_window.setScaleRight(*facts->rightEdge);
}

void GraphScale::ArrangeGraph() {
    const core::AppConfig& config = core::state().Config;
    takeScale(
        m_surface.ArrangeGraph(config.ScaleCustom, config.CustomScaleLow, config.CustomScaleHigh));
}

void GraphScale::showFull() {
    takeScale(m_surface.Graph_scale(graph::scaleFull));
}

void GraphScale::redraw(std::optional<int> setting) {
    takeScale(setting);
    applyTrendScale();
    m_course.redraw();
}

void GraphScale::choose(int item) {
    const Hourglass busy(*platform::services().dialogs);
    m_view.zooms.clear();
    redraw(m_surface.Graph_scale(item));
}

void GraphScale::chooseCustom(const std::optional<graph::Size>& size) {
    const Hourglass busy(*platform::services().dialogs);
    m_view.zooms.clear();
    if (size) m_surface.setTrendSize(*size);
    m_surface.Graph_scale(graph::scaleCustom);
    redraw(size ? std::optional(graph::scaleCustom) : std::nullopt);
}

// --- Zoom

graph::ZoomPlace GraphScale::place() const {
    return {core::state().Config.ScaleCustom, m_view.ScaleShown, m_surface.trendSize(),
        m_surface.scrollValues()};
}

void GraphScale::grow(double factor) {
    m_view.zooms.add(place());
    m_surface.surface().setAutoRedraw(true);
    core::state().Config.ScaleCustom = graph::scaleZoomed;
    redraw(m_surface.Graph_scale(graph::scaleZoomed, factor));
}

void GraphScale::offerCancel() {
    m_view.CancelZoomOffered = true;
    m_window.showState();
}

void GraphScale::zoom(double factor) {
    const Hourglass busy(*platform::services().dialogs);
    grow(factor);
    ScrollToCursor();
    offerCancel();
}

void GraphScale::ZoomIn() {
    zoom(zoomInFactor);
}

void GraphScale::ZoomOut() {
    zoom(zoomOutFactor);
}

void GraphScale::zoomAbout(int direction, const QPointF& global) {
    const Hourglass busy(*platform::services().dialogs);
    const graph::SeenPlace seen = m_surface.seenAt(global);
    grow(direction > 0 ? zoomInFactor : zoomOutFactor);
    m_surface.keepInPlace(seen);
    offerCancel();
}

void GraphScale::fitWhole() {
    if (core::state().Config.ScaleCustom == graph::scaleFull) return;
    const Hourglass busy(*platform::services().dialogs);
    m_view.zooms.add(place());
    m_view.CancelZoomOffered = false;
    core::state().Config.ScaleCustom = graph::scaleFull;
    redraw(m_surface.Graph_scale(graph::scaleFull));
}

void GraphScale::stepBack() {
    const auto before = m_view.zooms.takeBack();
    if (!before) return;
    const Hourglass busy(*platform::services().dialogs);
    const bool full = before->setting == graph::scaleFull;
    core::state().Config.ScaleCustom = static_cast<std::int16_t>(before->setting);
    m_view.CancelZoomOffered = before->setting == graph::scaleZoomed;
    if (!full) m_surface.setTrendSize(before->trend);
    m_surface.Graph_scale(full ? graph::scaleFull : graph::scaleZoomed);
    redraw(before->scaleShown);
    m_surface.scrollTo(before->scroll);
}

void GraphScale::CancelZoom() {
    m_view.zooms.clear();
    core::state().Config.ScaleCustom = static_cast<std::int16_t>(m_view.ScaleShown);
    m_view.CancelZoomOffered = false;
    ArrangeGraph();
    applyTrendScale();
    m_course.redraw();
    ScrollToCursor();
}

void GraphScale::ScrollToCursor() {
    m_surface.ScrollToCursor(core::state().Run.SampleCount, m_view.CursorSample);
}

} // namespace kvo::forms
