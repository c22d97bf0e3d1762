#include "graph/transient.h"

#include "graph/view.h"

namespace kvo::graph {
namespace {

constexpr int solidStyle = 0;
constexpr int averageStyle = 2;
constexpr int timeLineStyle = 4;
constexpr int referenceStyle = 1;
constexpr float wordSize = 25;    // points
constexpr float wordHeight = 600; // units of the surface
constexpr double halfTheWord = 137;

void upright(platform::Surface& trend, float x, platform::Colour colour) {
    trend.line(x, trendTop, x, 0, colour);
}

// Drawn over the picture and not into it.
void beginOnTop(platform::Surface& trend, std::int32_t graphBackColour, const Marks& marks) {
    trend.setAutoRedraw(false);
    trend.refresh();
    if (!marks.reference) return;
    trend.setDrawStyle(referenceStyle);
    upright(trend, static_cast<float>(*marks.reference), referenceColour(graphBackColour));
}

} // namespace

platform::Colour referenceColour(std::int32_t graphBackColour) {
    constexpr int light = 128000; // thousandths of the lightness that an eye sees
    const auto back = static_cast<platform::Colour>(graphBackColour);
    const auto part = [back](unsigned shift) { return static_cast<int>(back >> shift & 0xFFU); };
    const bool isLight = 299 * part(0) + 587 * part(8) + 114 * part(16) >= light;
    return isLight ? platform::black : platform::white;
}

platform::Colour timeLineColour(std::int32_t graphBackColour) {
    // Required: compared with the number 12, not with the colour of that number.
    constexpr int lightRed = 12;
    constexpr int red = 4;
    return platform::paletteColour(graphBackColour == lightRed ? red : lightRed);
}

void drawTimeLine(
    platform::Surface& trend, int sample, std::int32_t graphBackColour, const Marks& marks) {
    const platform::Colour colour = timeLineColour(graphBackColour);
    beginOnTop(trend, graphBackColour, marks);
    if (marks.averageFrom) {
        trend.setDrawStyle(averageStyle);
        upright(trend, static_cast<float>(*marks.averageFrom), colour);
    }
    trend.setDrawStyle(timeLineStyle);
    upright(trend, static_cast<float>(sample), colour);
    trend.setDrawStyle(solidStyle);
}

void drawAverageStart(
    platform::Surface& trend, float x, std::int32_t graphBackColour, const Marks& marks) {
    beginOnTop(trend, graphBackColour, marks);
    trend.setDrawStyle(averageStyle);
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
