#pragma once
// The graph's picture in an image, made the way the graph window makes it, but without a window.
#include "bench/qcustomplot_peer.h"
#include "core/shared_state.h"
#include "graph/drawing.h"
#include "platform/draw/display_list.h"

#include <QImage>
#include <QRect>

namespace kvo::bench {

class TrendImage : private graph::TrendHost {
public:
    // `state` must outlive the picture. With `overlay` its overlay is drawn too; the curves are
    // `lineWidthPx` wide.
    TrendImage(
        core::SharedState& state, bool overlay, int widthPx, int heightPx, int lineWidthPx = 1);

    // From the rows to the pixels: grid, curves, and those of the overlay where there is one.
    void redraw();
    // Nothing but the ground.
    void clear(QImage& image) const;
    void clear() { clear(m_image); }
    // The switch bars alone, on what stands there.
    void drawBars();
    // The same bars with one fillRect of QPainter for each sample and switch.
    void fillBars(QImage& target);

    const QImage& image() const { return m_image; }
    // The points of every curve of the last redraw.
    const Curves& curves() const { return m_surface.curves; }

private:
    // Keeps the curves too, so that others can draw the same.
    class Surface : public platform::DisplayListSurface {
    public:
        void polyline(std::span<const platform::Point> points, platform::Colour colour) override;
        bool keeps = true;
        Curves curves;
    };
    void paint();

    platform::Surface& trend() override { return m_surface; }
    void setTrendHourglass(bool) override {}
    void showLoading(const std::string&, const std::string&) override {}
    void hideLoading() override {}
    void setProgressMax(double) override {}
    void setProgressValue(double) override {}
    void showLabels(const graph::LabelVisibility&) override {}
    bool clutchLabelVisible() const override { return true; }
    void setOverlayLabelColour(int, std::int32_t) override {}

    core::SharedState& m_state;
    graph::GraphView m_view;
    Surface m_surface;
    graph::TrendDrawing m_drawing;
    QImage m_image;
};

} // namespace kvo::bench
