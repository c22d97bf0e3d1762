#include "graph/layout.h"

#include "core/basic/numbers.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace kvo::graph {
namespace {

constexpr double twipsPerPixel = 15;
constexpr double barWidth = scrollBarWidthPx;
constexpr double barRoom = 15; // what Frame1 gives up for the vertical bar
constexpr double toolbarRoom = toolbarHeightPx;
constexpr double panelRoom = 129;     // toolbar and label panels together
constexpr double outsideTrend = 3200; // twips of the form's height that are not Trend's
constexpr int outsideTrendPx = 213;   // the same in pixels
constexpr int lowestSurfacePx = 160;
constexpr int cellMarginPx = 2;    // between value and overlay, and above and below both together
constexpr int behindCaptionPx = 4; // of a toggle
constexpr int beforeNumberPx = 5;  // of a value with the label's margins
constexpr int readOutGapPx = 12;
constexpr int loadingBarPx = 180;
// Twips that one step of a scroll bar moves Trend.
constexpr double horizontalStep = 8;
constexpr double verticalStep = 4;
// Of a frame's pixels, what the ends of the bars leave for it.
constexpr double frameToHScroll = 1.8820614;
constexpr double frameToVScroll = 3.53;

Box wideFrame(const Size& inner) {
    return {0, toolbarRoom, inner.width, inner.height - panelRoom};
}

Box narrowFrame(const Size& inner) {
    return {0, toolbarRoom, inner.width - barRoom, inner.height - panelRoom};
}

Box verticalBar(const Box& frame) {
    return {frame.width, toolbarRoom, barWidth, frame.height - toolbarRoom};
}

// Whole numbers as CInt rounds them, but as wide as a scroll bar holds them: a surface of many
// windows passes 32767.
int rounded(double value) {
    return core::CLng(value).value_or(0);
}

} // namespace

const char* scaleCaption(int setting) {
    constexpr std::array<const char*, 4> captions{"&Graph Scale(Full)  ", "&Graph Scale(1/2)  ",
        "&Graph Scale(1/4)  ", "&Graph Scale(Custom)"};
    assert(setting >= scaleFull && setting <= scaleCustom);
    return captions[static_cast<std::size_t>(setting)];
}

int openedSidePx(int screenPx) {
    return screenPx * 9 / 10;
}

int surfaceHeightPx(int innerHeightPx, int aboveInnerPx, int panelNeedsPx) {
    const int panel = std::max(panelNeedsPx, outsideTrendPx - aboveInnerPx - toolbarHeightPx);
    return std::max(lowestSurfacePx, innerHeightPx - toolbarHeightPx - panel);
}

Size formSize(const Room& room) {
    return {room.widthPx * twipsPerPixel, room.heightPx * twipsPerPixel + outsideTrend};
}

Size innerSize(const Room& room, bool scrollBars) {
    if (!scrollBars) return {room.widthPx * 1.0, room.heightPx + panelRoom};
    constexpr double seenOfWidth = frameToHScroll * horizontalStep / twipsPerPixel;
    constexpr double seenOfHeight = frameToVScroll * verticalStep / twipsPerPixel;
    return {(room.widthPx - barWidth) / seenOfWidth + barRoom,
        (room.heightPx - barWidth) / seenOfHeight + panelRoom};
}

Size innerTwips(const Room& room) {
    const Size inner = innerSize(room, false);
    return {inner.width * twipsPerPixel, inner.height * twipsPerPixel};
}

Size wholeRoom(const Room& room) {
    return {room.widthPx * twipsPerPixel, room.heightPx * twipsPerPixel};
}

GraphScaling Graph_scale(
    int setting, const Size& form, const Size& inner, const Size& trend, double factor) {
    GraphScaling scaling;
    switch (setting) {
    case scaleFull:
        scaling.trend = Size{form.width, form.height - outsideTrend};
        break;
    case scaleHalf:
        scaling.trend = Size{form.width * 2, form.height * 2};
        break;
    case scaleQuarter:
        scaling.trend = Size{form.width * 4, form.height * 4};
        break;
    case scaleCustom:
        scaling.openCustomDialog = true;
        break;
    case scaleZoomed:
        scaling.trend = Size{trend.width * factor, trend.height * factor};
        scaling.disableScaleMenu = true;
        break;
    default:
        break;
    }
    scaling.scrollBars = setting != scaleFull;
    scaling.frame = scaling.scrollBars ? narrowFrame(inner) : wideFrame(inner);
    scaling.vScroll = verticalBar(scaling.frame);
    return scaling;
}

CustomArrangement arrangeCustom(
    const Size& form, const Size& inner, int customScaleLow, int customScaleHigh) {
    CustomArrangement custom;
    custom.trend = {
        (form.width - 265) * customScaleLow, (form.height - outsideTrend) * customScaleHigh};
    custom.frame = narrowFrame(inner);
    custom.hScrollMax = rounded(custom.trend.width / 8 - 1899);
    custom.vScrollMax = rounded(custom.trend.height / 4 - 2182);
    return custom;
}

ResizeArrangement arrangeResize(int setting, const Size& form, const Size& inner) {
    ResizeArrangement arrangement;
    if (setting == scaleFull) {
        arrangement.frame = wideFrame(inner);
        // Required: 30 twips narrower than what Graph_scale gives.
        arrangement.trend = Size{form.width - 30, form.height - outsideTrend};
    } else {
        arrangement.frame = narrowFrame(inner);
    }
    arrangement.vScroll = verticalBar(arrangement.frame);
    return arrangement;
}

ScrollPlace scrollPlace(const Size& trend, const Size& frame, int hValue, int vValue) {
    ScrollPlace place;
    place.hScrollMax = rounded(trend.width / horizontalStep - frame.width * frameToHScroll);
    place.vScrollMax = rounded(trend.height / verticalStep - frame.height * frameToVScroll);
    place.trendLeft = -hValue * horizontalStep;
    place.trendTop = -vValue * verticalStep;
    return place;
}

ScrollSteps scrollSteps(int frameWidthPx, int frameHeightPx) {
    constexpr int singlesAPage = 20;
    ScrollSteps steps;
    steps.hPage = static_cast<int>(frameWidthPx * twipsPerPixel / horizontalStep);
    steps.vPage = static_cast<int>(frameHeightPx * twipsPerPixel / verticalStep);
    steps.hSingle = steps.hPage / singlesAPage + 1;
    steps.vSingle = steps.vPage / singlesAPage + 1;
    return steps;
}

ScrollValues scrollToKeep(const Size& trend, const SeenPlace& place) {
    const auto value = [](double at, double seenPx, double step) {
        return rounded((at - seenPx * twipsPerPixel) / step);
    };
    return {value(place.along * trend.width, place.frameXPx, horizontalStep),
        value(place.down * trend.height, place.frameYPx, verticalStep)};
}

std::optional<int> ScrollToCursor(int hScrollMax, int sampleCount, int cursorSample) {
    if (sampleCount == 0 || cursorSample == 0) return std::nullopt;
    const double quotient = static_cast<double>(sampleCount) / cursorSample;
    return core::CLng(hScrollMax / quotient);
}

// --- The panel under the surface

int panelColumns(int channelCount, int rows) {
    return (channelCount + rows - 1) / rows;
}

int panelWidthPx(int columns, int groups, int cellPx, std::optional<int> timesPx) {
    const int times = timesPx ? groupGapPx + *timesPx : 0;
    return columns * cellPx + (columns - groups) * columnGapPx + groups * groupGapPx + times +
           2 * sideMarginPx;
}

int groupWidthPx(int columns, int cellPx) {
    return columns * cellPx + (columns - 1) * columnGapPx;
}

int toggleWidthPx(int textPx) {
    return squareSidePx + 2 * squareGapPx + textPx + behindCaptionPx;
}

int cellWidthPx(int togglePx, int valuePx, bool withOverlay) {
    const int number = valuePx + beforeNumberPx;
    return togglePx + (withOverlay ? 2 * number + cellMarginPx : number);
}

CellPlaces cellPlaces(int widthPx, int heightPx, int togglePx, bool withOverlay) {
    const int room = widthPx - togglePx;
    const int line = heightPx - cellMarginPx;
    const int half = (room - cellMarginPx) / 2;
    return {{0, 0, togglePx, heightPx},
        {togglePx, cellMarginPx / 2, withOverlay ? half : room, line},
        {togglePx + room - half, cellMarginPx / 2, half, line}};
}

bool pointerHasLabel(int windowWidthTwips) {
    return windowWidthTwips >= widestWithToolTip;
}

namespace {

// The titles from the right end, in what the other texts leave them.
void placeTitles(ReadOutPlaces& places, int widthPx, int heightPx, const ReadOutWidths& texts) {
    const int left =
        places.pointer.left + (texts.pointerPx > 0 ? texts.pointerPx + readOutGapPx : 0);
    const bool both = texts.overlayTitlePx > 0;
    const int room = std::max(0, widthPx - left - (both ? readOutGapPx : 0));
    const int half = both ? room / 2 : room;
    const int overlay = std::min(texts.overlayTitlePx, std::max(half, room - texts.runTitlePx));
    const int run = std::min(texts.runTitlePx, room - overlay);
    const int runLeft = widthPx - overlay - (both ? readOutGapPx : 0) - run;
    places.runTitle = {runLeft, 0, run, heightPx};
    places.overlayTitle = {widthPx - overlay, 0, overlay, heightPx};
    const int behindPointer = run > 0 ? runLeft - readOutGapPx : widthPx;
    places.pointer.width = std::max(0, behindPointer - places.pointer.left);
}

} // namespace

ReadOutPlaces readOutPlaces(int widthPx, int heightPx, const ReadOutWidths& texts) {
    ReadOutPlaces places;
    const int between = texts.timePx + readOutGapPx;
    places.time = {0, 0, texts.timePx, heightPx};
    places.between = {between, 0, texts.betweenPx, heightPx};
    places.pointer.left = texts.betweenPx > 0 ? between + texts.betweenPx + readOutGapPx : between;
    places.pointer.height = heightPx;
    placeTitles(places, widthPx, heightPx, texts);
    const int file = texts.loadingTextPx + readOutGapPx;
    const int bar = file + texts.loadingFilePx + readOutGapPx;
    const int loading = bar + loadingBarPx;
    places.loading = {widthPx - loading, 0, loading, heightPx};
    places.loadingText = {0, 0, texts.loadingTextPx, heightPx};
    places.loadingFile = {file, 0, texts.loadingFilePx, heightPx};
    places.progress = {bar, 2, loadingBarPx, heightPx - 4};
    return places;
}

} // namespace kvo::graph
