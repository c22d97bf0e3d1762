#pragma once
// A run as a picture on Trend: the grid, the switch bars and a polyline a channel, of the run and
// of the overlay. The arithmetic yields values into buffers that are kept from picture to picture;
// the routines of TrendDrawing walk them onto a surface.
#include "core/shared_state.h"
#include "graph/derived.h"
#include "graph/view.h"
#include "platform/surface.h"

#include <array>
#include <cstdint>
#include <optional>
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
    // LoadingFrame with LoadingText and LoadingFile; the form is refreshed at once.
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

// --- Values
// ----------------------------------------------------------------------------------------

// Which run a curve is made of, and how it lies on the surface.
struct CurveSource {
    const core::RunImage* image = nullptr;        // rows, analog types, tyre setup
    const core::RunHeader* drive = nullptr;       // primary drive
    const core::RunHeader* clutchDrive = nullptr; // primary drive of the clutch channel
    int sampleCount = 0; // rows gone through, 0 to 65535; rows past the array read as zeros
    int step = 1;        // samples a point
    int dataType = 0;    // 20: time-shared exhausts
    int shiftX = 0;      // added to the sample number
    int rpmScale = 0;    // rpm a unit
    double mphScale = 0; // units a mph
};
// Fills `points` with the targets of the polyline of a channel. Gives how many samples were
// visited. A run-time failure ends the curve: the points made before it stay.
int makeCurve(const CurveSource& source, const core::AppConfig& config, int channel,
    std::vector<platform::Point>& points);

// Height of a channel's value v on the surface; nothing where it is no single (a run-time failure).
std::optional<float> curveHeight(
    const core::AppConfig& config, int channel, double v, int rpmScale, double mphScale);
// The magnification that counts: the default where 0 is stored.
int magnification(const core::AppConfig& config, int channel);

// Vertical units a mph for the run's largest SpeedRaw.
double mphScaleFor(std::int32_t peakSpeedRaw);

// One step of the grid: a line, or a text whose position is set as told.
struct GridMark {
    enum class Kind { line, text };
    Kind kind = Kind::line;
    std::optional<float> x; // text: CurrentX, nothing: not set
    float y = 0;            // text: CurrentY; line: y1
    float x1 = 0;
    float x2 = 0;
    float y2 = 0;
    std::string text;
};
// Nothing is made for an rpmScale below 1 (a run-time failure).
void makeGrid(const core::AppConfig& config, int rpmScale, double mphScale, int timeOffset,
    int sampleCount, int dataType, float scaleWidth, std::vector<GridMark>& marks);

// The eight bars in the order of the bits of a bar mask: Dyna, Shift, Throttle, Brake of the run,
// then of the overlay.
inline constexpr int barCount = 8;
std::array<platform::Bar, barCount> switchBars(const GraphView& view);
// One mask a sample from 1 on: which bars have a box from i - 1 to i.
void makeSwitchMasks(const core::RunImage& run, const core::RunImage* overlay, int sampleCount,
    std::vector<std::uint8_t>& masks);

// Value given to ProgressBar1.Max.
double progressMax(const core::AppConfig& config, int dataType, int sampleCount);
double overlayProgressMax(const core::AppConfig& config, int overlayDataType, int sampleCount);

// --- Routines
// --------------------------------------------------------------------------------------

class TrendDrawing {
public:
    // All three must outlive the drawing.
    TrendDrawing(core::SharedState& state, GraphView& view, TrendHost& host);

    // The whole picture. False where the surface has no memory for its size; nothing is drawn then.
    [[nodiscard]] bool DrawTrend();
    // All curves of the overlay, with the loading panel.
    void OverLayDraw();
    void DrawGrid();
    void DrawSwitches();
    // Gives channels and switches colours that differ from the background, draws what changed, and
    // sets the surface's background. Label colours are the form's, from the configuration after it.
    void Change_Colour();
    // The Draw or ODraw routine of a channel, 0 to 24.
    void drawChannel(int channel);
    void drawOverlayChannel(int channel);

    void DrawEngine() { drawChannel(engineChannel); }
    void DrawClutch() { drawChannel(clutchChannel); }
    void DrawInput() { drawChannel(inputChannel); }
    void DrawPinion() { drawChannel(outputChannel); }
    void DrawMph() { drawChannel(mphChannel); }
    void DrawSlip() { drawChannel(slipChannel); }
    void DrawRatio() { drawChannel(ratioChannel); }
    void DrawRoCoS() { drawChannel(rocosChannel); }
    void DrawTyreGrowth() { drawChannel(tyreGrowthChannel); }
    void DrawAnalog(int n) { drawChannel(analogChannel(n)); }
    void DrawExhaust(int n) { drawChannel(exhaustChannel(n)); }
    void ODrawEngine() { drawOverlayChannel(engineChannel); }
    void ODrawClutch() { drawOverlayChannel(clutchChannel); }
    void ODrawInput() { drawOverlayChannel(inputChannel); }
    void ODrawPinion() { drawOverlayChannel(outputChannel); }
    void ODrawMph() { drawOverlayChannel(mphChannel); }
    void ODrawSlip() { drawOverlayChannel(slipChannel); }
    void ODrawRatio() { drawOverlayChannel(ratioChannel); }
    void ODrawRoCoS() { drawOverlayChannel(rocosChannel); }
    void ODrawTyreGrowth() { drawOverlayChannel(tyreGrowthChannel); }
    void ODrawAnalog(int n) { drawOverlayChannel(analogChannel(n)); }
    void ODrawExhaust(int n) { drawOverlayChannel(exhaustChannel(n)); }

private:
    void applyMagnifyDefault(int channel);
    void drawPoints(std::int32_t colour, int visited);
    bool isDrawn(int channel) const;
    CurveSource mainSource() const;
    CurveSource overlaySource() const;

    core::SharedState& m_state;
    GraphView& m_view;
    TrendHost& m_host;
    std::vector<platform::Point> m_points;
    std::vector<GridMark> m_marks;
    std::vector<std::uint8_t> m_masks;
};

} // namespace kvo::graph
