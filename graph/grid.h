#pragma once
// What stands behind the curves, as values: the grid with its numbers, and the bars of the
// switches.
#include "channels/run_view.h"
#include "core/config_record.h"
#include "core/records.h"
#include "graph/view.h"
#include "platform/draw/surface.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvo::graph {

// Vertical units a mph for the run's largest SpeedRaw.
double mphScaleFor(std::int32_t peakSpeedRaw);

// The lines go up to a height, 0 to 1100; above another one they bear a word instead of the rpm.
inline constexpr float gridTop = 1050;
inline constexpr float bangAbove = 980;
// Whether the lines bear rpm and mph: not where a curve of them is raised.
bool gridBearsRpm(const core::AppConfig& config);
bool gridBearsMph(const core::AppConfig& config);

// One step of the grid: a line from (x1, y1) to (x2, y2), or a text at (x1, y1). A text without its
// own x goes where the surface stands.
struct GridMark {
    enum class Kind { line, text };
    Kind kind = Kind::line;
    bool setsX = true; // of a text
    float x1 = 0;
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    std::string text;
};

struct GridInput {
    int rpmScale = 0;    // rpm a unit
    double mphScale = 0; // units a mph
    int timeOffset = 0;  // sample
    int sampleCount = 0;
    int dataType = 0;
    float scaleWidth = 0;
};
// The marks in order of drawing. A scale of 0 is a run-time failure: the marks made before it stay.
void makeGrid(const core::AppConfig& config, const GridInput& input, std::vector<GridMark>& marks);
platform::Colour gridColour(const core::AppConfig& config);
// Of the grid's texts.
platform::Colour gridTextColour(const core::AppConfig& config);

// The bars in the order of the bits of a mask: Dyna, Shift, Throttle, Brake of the run, then of the
// overlay.
inline constexpr int switchBarCount = 8;
std::array<platform::Bar, switchBarCount> switchBars(const GraphView& view);
// One mask a sample from 1 on: which bars have a box from i - 1 to i. Where the overlay has no
// sample it has no bar.
void makeSwitchMasks(const channels::ShownRuns& runs, std::vector<std::uint8_t>& masks);

} // namespace kvo::graph
