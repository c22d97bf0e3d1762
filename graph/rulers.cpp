#include "graph/rulers.h"

#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "graph/view.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kvo::graph {
namespace {

using platform::PixelRect;
using platform::PixelScale;

constexpr float timesTop = 1026; // where the surface's own times stand
constexpr int rpmOfALine = 1000;
constexpr int samplesOfALine = 100;
constexpr std::array rpmSteps{10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000};
constexpr std::array sampleSteps{1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000};
// Lines of text that a step finer than the grid's must leave from tick to tick.
constexpr int linesOfFineHeights = 5;
constexpr int linesOfFineTimes = 6;

struct RulerPlaces {
    const RulerScales& scales;
    const RulerRoom& room;
    const RulerLetters& letters;
    PixelScale pixels;
    int gapPx; // between a text and what is beside it

    int x(double sample) const { return pixels.x(static_cast<float>(sample)) - room.scrolledTo.x; }
    int y(double height) const { return pixels.y(static_cast<float>(height)) - room.scrolledTo.y; }
    platform::Point userAt(int frameX, int frameY) const {
        return pixels.user(frameX + room.scrolledTo.x, frameY + room.scrolledTo.y);
    }
};

std::string rpmText(const RulerScales& scales, int rpm) {
    const double height = static_cast<double>(rpm) / scales.grid.rpmScale;
    if (height <= bangAbove) return core::CStr(rpm) + " Rpm";
    return rpm % rpmOfALine == 0 ? "Bang" : "";
}

// As the grid has it, but with a decimal between its lines, where whole numbers would come twice.
std::string mphText(const RulerScales& scales, int rpm, int step) {
    const double height = static_cast<double>(rpm) / scales.grid.rpmScale;
    if (step < rpmOfALine) return core::Format(height / scales.grid.mphScale, "##0.0") + " Mph";
    const auto mph = core::intDivRounded(height, scales.grid.mphScale);
    return mph ? core::CStr(*mph) + " Mph" : "";
}

std::string timeText(int samples, int step) {
    const char* picture = step >= samplesOfALine ? "##0" : step >= 10 ? "##0.0" : "##0.00";
    return core::Format(samples / 100.0, picture) + " s";
}

// A step of the grid's lines, or more, has room for its text; one between them leaves much more.
int heightStep(const RulerPlaces& places) {
    const RulerScales& scales = places.scales;
    const double rpmPx = std::abs(places.pixels.y(0) - places.pixels.y(trendTop)) /
                         static_cast<double>(trendTop) / scales.grid.rpmScale;
    const int linePx = places.letters.linePx;
    const int lines = scales.withRpm && scales.withMph ? 2 : 1;
    for (const int step : rpmSteps) {
        const int least =
            step < rpmOfALine ? linesOfFineHeights * linePx : lines * linePx + places.gapPx;
        if (step * rpmPx >= least) return step;
    }
    return rpmSteps.back();
}

// The widest that its texts get, wherever the surface is scrolled to.
int heightsWidthPx(const RulerPlaces& places, int step) {
    const RulerScales& scales = places.scales;
    const auto rpmAt = [&](float height) {
        return static_cast<int>(height) * scales.grid.rpmScale;
    };
    int width = 0;
    if (scales.withRpm) width = places.letters.widthPx(rpmText(scales, rpmAt(bangAbove)));
    if (scales.withMph)
        width = std::max(width, places.letters.widthPx(mphText(scales, rpmAt(gridTop), step)));
    return width + 2 * places.gapPx;
}

Ruler makeHeights(const RulerPlaces& places, int topPx) {
    Ruler ruler;
    const RulerScales& scales = places.scales;
    if (places.room.scrolledTo.x <= 0 || (!scales.withRpm && !scales.withMph)) return ruler;
    const int step = heightStep(places);
    ruler.ground = {0, topPx, heightsWidthPx(places, step), places.room.heightPx};
    const auto rpmAt = [&](int frameY) {
        return static_cast<double>(places.userAt(0, frameY).y) * scales.grid.rpmScale;
    };
    const auto add = [&](const std::string& text, int top) {
        if (text.empty() || top < topPx || top + places.letters.linePx > ruler.ground.bottom)
            return;
        const int left = ruler.ground.right - places.gapPx - places.letters.widthPx(text);
        ruler.texts.push_back({{left, top}, text});
    };
    int rpm = std::max(1, static_cast<int>(rpmAt(places.room.heightPx) / step)) * step;
    for (; rpm <= rpmAt(topPx) + step; rpm += step) {
        const double height = static_cast<double>(rpm) / scales.grid.rpmScale;
        if (height > gridTop) break;
        const int at = places.y(height);
        if (at >= topPx && at < ruler.ground.bottom) ruler.ticks.push_back(at);
        if (scales.withMph) add(mphText(scales, rpm, step), at - places.letters.linePx);
        if (scales.withRpm) add(rpmText(scales, rpm), at + 1);
    }
    return ruler;
}

int timeStep(const RulerPlaces& places) {
    const double samplePx = std::abs(places.pixels.x(10000) - places.pixels.x(0)) / 10000.0;
    for (const int step : sampleSteps) {
        const int widest = places.letters.widthPx(timeText(places.scales.grid.sampleCount, step));
        const int least = widest + 2 * places.gapPx;
        const int fine = std::max(least, linesOfFineTimes * places.letters.linePx);
        if (step * samplePx >= (step < samplesOfALine ? fine : least)) return step;
    }
    return sampleSteps.back();
}

int timesHeightPx(const RulerPlaces& places) {
    return places.letters.linePx + 2 * places.gapPx;
}

bool timesScrolledOut(const RulerPlaces& places) {
    return places.y(timesTop) < 0;
}

Ruler makeTimes(const RulerPlaces& places, int leftPx) {
    Ruler ruler;
    ruler.ground = {0, 0, places.room.widthPx, timesHeightPx(places)};
    const int step = timeStep(places);
    const GridInput& grid = places.scales.grid;
    const double first = static_cast<double>(places.userAt(0, 0).x) - grid.timeOffset;
    int time = std::max(0, static_cast<int>(first / step)) * step;
    for (; time <= grid.sampleCount - grid.timeOffset; time += step) {
        const int at = places.x(grid.timeOffset + time);
        if (at >= places.room.widthPx) break;
        if (at < leftPx) continue;
        ruler.ticks.push_back(at);
        const std::string text = timeText(time, step);
        const int width = places.letters.widthPx(text);
        const int left = at - width / 2;
        if (left < leftPx || left + width > places.room.widthPx) continue;
        ruler.texts.push_back({{left, places.gapPx}, text});
    }
    return ruler;
}

} // namespace

RulerScales rulerScales(const core::AppConfig& config, const GridInput& grid) {
    return {grid, gridBearsRpm(config), gridBearsMph(config)};
}

Rulers makeRulers(const RulerScales& scales, const RulerRoom& room, const RulerLetters& letters) {
    Rulers rulers;
    const bool drawn = scales.grid.sampleCount > 0 && scales.grid.rpmScale > 0;
    if (!drawn || room.widthPx <= 0 || room.heightPx <= 0) return rulers;
    const platform::UserScale user{0, trendTop, scales.grid.scaleWidth, 0};
    const RulerPlaces places{
        scales, room, letters, PixelScale(user, room.surface), std::max(1, letters.linePx / 4)};
    const bool withTimes = timesScrolledOut(places);
    rulers.heights = makeHeights(places, withTimes ? timesHeightPx(places) : 0);
    if (withTimes) rulers.times = makeTimes(places, rulers.heights.ground.right);
    return rulers;
}

} // namespace kvo::graph
