#pragma once
// What the drawing of a run works on in the graph window: the surface with its hourglass, the
// loading panel and the labels of the channels.
#include "graph/drawing.h"

namespace kvo::forms {

class ChannelPanel;
class GraphSurface;

class ShownTrend : public graph::TrendHost {
public:
    // Both must outlive it.
    ShownTrend(GraphSurface& surface, ChannelPanel& panel) : m_surface(surface), m_panel(panel) {}

    platform::Surface& trend() override;
    void setTrendHourglass(bool on) override;
    void showLoading(const std::string& text, const std::string& file) override;
    void hideLoading() override;
    void setProgressMax(double max) override;
    void setProgressValue(double value) override;
    void showLabels(const graph::LabelVisibility& labels) override;
    bool clutchLabelVisible() const override;
    void setOverlayLabelColour(int channel, std::int32_t colour) override;

private:
    GraphSurface& m_surface;
    ChannelPanel& m_panel;
};

} // namespace kvo::forms
