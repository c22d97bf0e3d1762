#include "graph/forms/shown_trend.h"

#include "graph/forms/channel_panel.h"
#include "graph/forms/graph_surface.h"
#include "platform/qt/text.h"

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int mostProgress = 1000000000;

} // namespace

platform::Surface& ShownTrend::trend() {
    return m_surface.surface();
}

void ShownTrend::setTrendHourglass(bool on) {
    if (on) {
        m_surface.trend().setCursor(Qt::WaitCursor);
    } else {
        m_surface.trend().unsetCursor();
    }
}

void ShownTrend::showLoading(const std::string& text, const std::string& file) {
    m_panel.readOuts().startLoading(shownMessage(text), shownPath(file));
}

void ShownTrend::hideLoading() {
    m_panel.readOuts().endLoading();
}

void ShownTrend::setProgressMax(double max) {
    m_panel.readOuts().setProgressMax(static_cast<int>(qBound(1.0, max, double{mostProgress})));
}

void ShownTrend::setProgressValue(double value) {
    m_panel.readOuts().setProgress(static_cast<int>(qBound(0.0, value, double{mostProgress})));
}

void ShownTrend::showLabels(const graph::LabelVisibility& labels) {
    m_panel.showLabels(labels);
}

bool ShownTrend::clutchLabelVisible() const {
    return m_panel.clutchLabelVisible();
}

void ShownTrend::setOverlayLabelColour(int channel, std::int32_t colour) {
    m_panel.showOverlayColour(channel, static_cast<platform::Colour>(colour));
}

} // namespace kvo::forms
