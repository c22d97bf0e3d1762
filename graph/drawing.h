#pragma once
// A run as a picture on Trend: the grid, the switch bars and a polyline a channel, of the run and
// of the overlay. The arithmetic yields values into buffers that are kept from picture to picture;
// the routines of TrendDrawing walk them onto a surface.
#include "channels/run_view.h"
#include "core/config_record.h"
#include "graph/curves.h"
#include "graph/grid.h"
#include "graph/view.h"
#include "platform/draw/surface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvo::graph {

// What the drawing asks of the graph window.
class TrendHost {
public:
    virtual ~TrendHost() = default;
    virtual platform::Surface& trend() = 0;
    // The hourglass over the surface.
    virtual void setTrendHourglass(bool on) = 0;
    // LoadingFrame with LoadingText and LoadingFile, the last part of a path; the form is refreshed
    // at once.
    virtual void showLoading(const std::string& text, const std::string& file) = 0;
    virtual void hideLoading() = 0;
    // ProgressBar1. The value may pass the maximum a little: the bar then stands full.
    virtual void setProgressMax(double max) = 0;
    virtual void setProgressValue(double value) = 0;
    virtual void showLabels(const LabelVisibility& labels) = 0;
    virtual bool clutchLabelVisible() const = 0;
    // ForeColor of a channel's overlay label.
    virtual void setOverlayLabelColour(int channel, std::int32_t colour) = 0;
};

// Value given to ProgressBar1.Max by DrawTrend and by OverLayDraw.
double progressMax(const core::AppConfig& config, int dataType, int sampleCount);
double overlayProgressMax(const core::AppConfig& config, int overlayDataType, int sampleCount);

class TrendDrawing {
public:
    // What is handed in must outlive the drawing. Magnifications of 0 and a resolution that is not
    // set are put right in the configuration.
    TrendDrawing(core::AppConfig& config, const core::OpenRun& run, const core::OpenRun& overlay,
        GraphView& view, TrendHost& host);

    // The whole picture. False where the surface has no memory for its size; nothing is drawn then.
    [[nodiscard]] bool DrawTrend();
    // All curves of the overlay, with the loading panel.
    void OverLayDraw();
    void DrawGrid();
    // What the grid in the picture was drawn by.
    GridInput gridInput() const;
    void DrawSwitches();
    // Gives channels and switches colours that differ from the background, draws what changed, and
    // sets the surface's background. Label colours are the form's, from the configuration after it.
    void Change_Colour();
    // The Draw or ODraw routine of a channel, 0 to 24.
    void drawChannel(int channel);
    void drawOverlayChannel(int channel);
    // A channel on top of the picture as it is, of the run and of the overlay where there is one,
    // each in its own line style.
    void drawChannelAlone(int channel);

private:
    void drawRun();
    void drawOverlay();
    void endDrawing();
    void applyMagnifyDefault(int channel);
    void drawPoints(std::int32_t colour);
    void Ind_Line(int calls);
    bool isDrawn(int channel) const;
    int step() const;
    void makePoints(const channels::RunView& source, int channel);
    channels::RunView overlayView() const { return channels::viewOfOverlay(m_run, m_overlay); }

    core::AppConfig& m_config;
    const core::OpenRun& m_run;
    const core::OpenRun& m_overlay;
    GraphView& m_view;
    TrendHost& m_host;
    std::vector<platform::Point> m_points;
    std::vector<GridMark> m_marks;
    std::vector<std::uint8_t> m_masks;
};

} // namespace kvo::graph
