#include "graph/layout.h"

#include "core/basic/numbers.h"

namespace kvo::graph {
namespace {

constexpr double barWidth = 17;
constexpr double barRoom = 15;     // what Frame1 gives up for the vertical bar
constexpr double toolbarRoom = 34; // above Frame1
constexpr double panelRoom = 129;  // toolbar and label panels together

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

GraphScaling Graph_scale(
    int setting, const Size& form, const Size& inner, const Size& trend, double factor) {
    GraphScaling scaling;
    switch (setting) {
    case scaleFull:
        scaling.trend = Size{form.width, form.height - 3200};
        scaling.caption = captionFull;
        break;
    case scaleHalf:
        scaling.trend = Size{form.width * 2, form.height * 2};
        scaling.caption = captionHalf;
        break;
    case scaleQuarter:
        scaling.trend = Size{form.width * 4, form.height * 4};
        scaling.caption = captionQuarter;
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
    custom.trend = {(form.width - 265) * customScaleLow, (form.height - 3200) * customScaleHigh};
    custom.frame = narrowFrame(inner);
    custom.hScrollMax = rounded(custom.trend.width / 8 - 1899);
    custom.vScrollMax = rounded(custom.trend.height / 4 - 2182);
    custom.caption = captionCustom;
    return custom;
}

ResizeArrangement arrangeResize(
    const std::string& scaleCaption, const Size& form, const Size& inner) {
    ResizeArrangement arrangement;
    if (scaleCaption == captionFull) {
        arrangement.frame = wideFrame(inner);
        // Required: 30 twips narrower than what Graph_scale gives.
        arrangement.trend = Size{form.width - 30, form.height - 3200};
    } else {
        arrangement.frame = narrowFrame(inner);
    }
    arrangement.vScroll = verticalBar(arrangement.frame);
    return arrangement;
}

ScrollPlace scrollPlace(const Size& trend, const Size& frame, int hValue, int vValue) {
    ScrollPlace place;
    place.hScrollMax = rounded(trend.width / 8 - frame.width * 1.8820614);
    place.vScrollMax = rounded(trend.height / 4 - frame.height * 3.53);
    place.trendLeft = -hValue * 8.0;
    place.trendTop = -vValue * 4.0;
    return place;
}

std::optional<int> ScrollToCursor(int hScrollMax, int sampleCount, int cursorSample) {
    if (sampleCount == 0 || cursorSample == 0) return std::nullopt;
    const double quotient = static_cast<double>(sampleCount) / cursorSample;
    return core::CLng(hScrollMax / quotient);
}

} // namespace kvo::graph
