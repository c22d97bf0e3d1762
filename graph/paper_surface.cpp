#include "graph/paper_surface.h"

#include "platform/draw/contrast.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kvo::graph {
namespace {

using platform::Colour;

constexpr Colour gridOnWhite = 0xC0C0C0;
// Relative luminance, 0 to 1, that has a contrast of 3 to 1 to white: (1 + 0.05) / (0.3 + 0.05).
constexpr double mostLuminance = 0.3;
constexpr int greySpread = 32; // the channels of a grey differ by less

using Channels = std::array<int, 3>; // red, green, blue

Channels channelsOf(Colour colour) {
    return {static_cast<int>(colour & 0xFFU), static_cast<int>(colour >> 8U & 0xFFU),
        static_cast<int>(colour >> 16U & 0xFFU)};
}

Colour colourOf(const Channels& c) {
    return static_cast<Colour>(c[0]) | static_cast<Colour>(c[1]) << 8U |
           static_cast<Colour>(c[2]) << 16U;
}

} // namespace

Colour readableOnWhite(Colour colour) {
    const Channels c = channelsOf(colour);
    const double luminance = platform::luminance(colour);
    if (luminance <= mostLuminance) return colour;
    const auto [least, most] = std::minmax_element(c.begin(), c.end());
    if (*most - *least < greySpread) return colourOf({255 - c[0], 255 - c[1], 255 - c[2]});
    Channels darker{};
    for (std::size_t i = 0; i < c.size(); ++i)
        darker[i] =
            platform::channelOfLight(platform::lightOfChannel(c[i]) * mostLuminance / luminance);
    return colourOf(darker);
}

Colour PaperSurface::inkOf(Colour colour) const {
    return m_look.whitePaper ? readableOnWhite(colour) : colour;
}

Colour PaperSurface::lineColour(Colour colour) const {
    return m_look.whitePaper && colour == m_look.gridColour ? gridOnWhite : inkOf(colour);
}

void PaperSurface::setBackColor(Colour colour) {
    m_page.setBackColor(m_look.whitePaper ? platform::white : colour);
}

void PaperSurface::setScale(float left, float top, float right, float bottom) {
    m_scaleWidth = right - left;
    const float height = bottom - top;
    const SurfacePart& part = m_look.part;
    m_page.setScale(left + m_scaleWidth * part.left, top + height * part.top,
        left + m_scaleWidth * part.right, top + height * part.bottom);
}

// The grid and the line of the cursor come as single lines, curves as a polyline: a curve of the
// grid's colour is still a curve.
void PaperSurface::line(float x1, float y1, float x2, float y2, Colour colour) {
    m_page.line(x1, y1, x2, y2, lineColour(colour));
}

void PaperSurface::lineTo(float x, float y, Colour colour) {
    m_page.lineTo(x, y, inkOf(colour));
}

void PaperSurface::polyline(std::span<const platform::Point> points, Colour colour) {
    m_page.polyline(points, inkOf(colour));
}

void PaperSurface::box(float x1, float y1, float x2, float y2, Colour colour) {
    m_page.box(x1, y1, x2, y2, inkOf(colour));
}

void PaperSurface::boxes(std::span<const std::uint8_t> masks, std::span<const platform::Bar> bars) {
    std::vector<platform::Bar> inked(bars.begin(), bars.end());
    for (platform::Bar& bar : inked) bar.colour = inkOf(bar.colour);
    m_page.boxes(masks, inked);
}

} // namespace kvo::graph
