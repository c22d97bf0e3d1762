#include "graph/transient.h"

#include "graph/view.h"

namespace kvo::graph {
namespace {

constexpr int solidStyle = 0;
constexpr int averageStyle = 2;
constexpr int timeLineStyle = 4;
constexpr float wordSize = 25;    // points
constexpr float wordHeight = 600; // units of the surface
constexpr double halfTheWord = 137;

// Drawn over the picture and not into it.
void beginOnTop(platform::Surface& trend, int style) {
    trend.setAutoRedraw(false);
    trend.refresh();
    trend.setDrawStyle(style);
}

void upright(platform::Surface& trend, float x, platform::Colour colour) {
    trend.line(x, trendTop, x, 0, colour);
}

} // namespace

platform::Colour timeLineColour(std::int32_t graphBackColour) {
    // Required: compared with the number 12, not with the colour of that number.
    constexpr int lightRed = 12;
    constexpr int red = 4;
    return platform::paletteColour(graphBackColour == lightRed ? red : lightRed);
}

void drawTimeLine(platform::Surface& trend, int sample, std::int32_t graphBackColour) {
    beginOnTop(trend, timeLineStyle);
    upright(trend, static_cast<float>(sample), timeLineColour(graphBackColour));
    trend.setDrawStyle(solidStyle);
}

void drawAverageStart(platform::Surface& trend, float x, std::int32_t graphBackColour) {
    beginOnTop(trend, averageStyle);
    upright(trend, x, timeLineColour(graphBackColour));
    trend.setDrawStyle(solidStyle);
}

void drawAverage(platform::Surface& trend, float from, float to, std::int32_t graphBackColour) {
    const platform::Colour colour = timeLineColour(graphBackColour);
    trend.setAutoRedraw(false);
    trend.setDrawStyle(averageStyle);
    trend.line(from, trendTop, to, 0, colour);
    trend.line(from, 0, to, trendTop, colour);
    upright(trend, to, colour);
    trend.setDrawStyle(solidStyle);
    trend.setForeColor(colour);
    trend.setCurrentX(static_cast<float>((static_cast<double>(from) + to) / 2 - halfTheWord));
    trend.setCurrentY(wordHeight);
    trend.setFontSize(wordSize);
    trend.print("AVERAGE");
    trend.setFontSize(trendPoints);
}

} // namespace kvo::graph
