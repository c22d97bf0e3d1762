#include "graph/forms/graph_scale.h"

#include "core/data_types.h"
#include "core/shared_state.h"
#include "graph/forms/graph_surface.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"

namespace kvo::forms {

using platform_qt::Hourglass;

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
    redraw(m_surface.Graph_scale(item));
}

void GraphScale::chooseCustom(const std::optional<graph::Size>& size) {
    const Hourglass busy(*platform::services().dialogs);
    if (size) m_surface.setTrendSize(*size);
    m_surface.Graph_scale(graph::scaleCustom);
    redraw(size ? std::optional(graph::scaleCustom) : std::nullopt);
}

void GraphScale::zoom(double factor) {
    const Hourglass busy(*platform::services().dialogs);
    m_surface.surface().setAutoRedraw(true);
    core::state().Config.ScaleCustom = graph::scaleZoomed;
    redraw(m_surface.Graph_scale(graph::scaleZoomed, factor));
    ScrollToCursor();
    m_view.CancelZoomOffered = true;
    m_window.showState();
}

void GraphScale::ZoomIn() {
    zoom(1.2);
}

void GraphScale::ZoomOut() {
    zoom(0.8);
}

void GraphScale::CancelZoom() {
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
