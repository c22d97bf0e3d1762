#pragma once
// The window's side of the drawing where there is no window: on paper, and in a small picture.
#include "graph/drawing.h"

namespace kvo::graph {

class WindowlessHost : public TrendHost {
public:
    WindowlessHost(platform::Surface& surface, bool clutchLabelVisible)
        : m_surface(surface), m_clutchLabelVisible(clutchLabelVisible) {}
    platform::Surface& trend() override { return m_surface; }
    bool clutchLabelVisible() const override { return m_clutchLabelVisible; }
    void setTrendHourglass(bool) override {}
    void showLoading(const std::string&, const std::string&) override {}
    void hideLoading() override {}
    void setProgressMax(double) override {}
    void setProgressValue(double) override {}
    void showLabels(const LabelVisibility&) override {}
    void setOverlayLabelColour(int, std::int32_t) override {}

private:
    platform::Surface& m_surface;
    bool m_clutchLabelVisible;
};

} // namespace kvo::graph
