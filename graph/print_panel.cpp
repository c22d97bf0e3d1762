#include "graph/print_panel.h"

#include "channels/channels.h"
#include "graph/paper_surface.h"
#include "graph/view.h"

#include <algorithm>

namespace kvo::graph {
namespace {

using platform::Colour;
using platform::TextSide;

constexpr std::size_t mostRows = 5; // below a heading, as on the screen
constexpr float mostPoints = 8;
constexpr float lineSpacing = 1.12F;
constexpr float pad = 0.003F;      // of the page's width
constexpr float leastGap = 0.012F; // between two columns
constexpr float mostGap = 0.035F;
constexpr float pageRatio = 1.44F; // width to height of a landscape page, about
constexpr Colour faint = 0x808080; // of a channel that is off

Colour asColour(std::int32_t stored) {
    return static_cast<Colour>(stored);
}

} // namespace

PrintedPanel::PrintedPanel(
    platform::PrintJob& job, const PanelTexts& panel, const core::AppConfig& config)
    : m_job(job), m_panel(panel), m_config(config), m_points(mostPoints) {
    makeColumns();
    const float width = measure();
    if (width <= 1) return;
    m_points = mostPoints / width;
    measure();
}

// A group of more cells than rows takes two columns of about the same height.
void PrintedPanel::makeColumns() {
    for (const PanelGroup& group : m_panel.groups) {
        const std::size_t count = group.cells.size();
        const std::size_t columns = std::max<std::size_t>((count + mostRows - 1) / mostRows, 1);
        const std::size_t rows = std::max<std::size_t>((count + columns - 1) / columns, 1);
        for (std::size_t i = 0; i < count; ++i) {
            if (i % rows == 0) {
                m_columns.emplace_back();
                if (i == 0) m_columns.back().heading = &group.heading;
            }
            m_columns.back().cells.push_back(&group.cells[i]);
        }
    }
}

float PrintedPanel::measure() {
    m_job.surface().setFontSize(m_points);
    m_line = m_job.lineHeight() * lineSpacing;
    float all = leastGap * static_cast<float>(std::max<std::size_t>(m_columns.size(), 1) - 1);
    for (Column& column : m_columns) {
        column.value = column.name = column.overlay = m_job.textWidth("0000");
        for (const PanelCell* cell : column.cells) {
            column.name = std::max(column.name, m_job.textWidth(cell->name));
            column.value = std::max(column.value, m_job.textWidth(cell->value));
            column.overlay = std::max(column.overlay, m_job.textWidth(cell->overlay));
        }
        all += widthOf(column);
    }
    return all;
}

float PrintedPanel::squareSide() const {
    return m_line * 0.62F;
}

float PrintedPanel::widthOf(const Column& column) const {
    const float square = squareSide() / pageRatio + pad;
    const float overlay = m_panel.hasSecond() ? column.overlay + 3 * pad : 0;
    return square + column.name + column.value + 4 * pad + overlay;
}

float PrintedPanel::height() const {
    std::size_t rows = 0;
    for (const Column& column : m_columns) rows = std::max(rows, column.cells.size());
    return m_line * static_cast<float>(rows + 2); // the time and the headings
}

void PrintedPanel::print(float top) const {
    platform::Surface& page = m_job.surface();
    page.setFontSize(m_points);
    page.setForeColor(platform::black);
    m_job.printAt(0, top, m_panel.time, TextSide::left);
    if (!m_panel.pointer.empty()) {
        const float behindTime = m_job.textWidth(m_panel.time) + mostGap;
        m_job.printAt(behindTime, top, m_panel.pointer, TextSide::left);
    }
    float used = 0;
    for (const Column& column : m_columns) used += widthOf(column);
    const float between = static_cast<float>(std::max<std::size_t>(m_columns.size(), 2) - 1);
    const float room = std::clamp((1 - used) / between, leastGap / 2, mostGap);
    float x = 0;
    for (const Column& column : m_columns) {
        printColumn(column, x, top + m_line);
        x += widthOf(column) + room;
    }
}

void PrintedPanel::printColumn(const Column& column, float x, float top) const {
    m_job.surface().setForeColor(platform::black);
    if (column.heading != nullptr) m_job.printAt(x, top, *column.heading, TextSide::left);
    float y = top + m_line;
    for (const PanelCell* cell : column.cells) {
        printCell(column, *cell, x, y);
        y += m_line;
    }
}

void PrintedPanel::printCell(const Column& column, const PanelCell& cell, float x, float y) const {
    const bool isChannel = cell.channel >= 0;
    if (isChannel) printSquare(cell, x, y);
    m_job.surface().setForeColor(cell.on ? platform::black : faint);
    const float nameX = isChannel ? x + squareSide() / pageRatio + pad : x;
    m_job.printAt(nameX, y, cell.name, TextSide::left);
    const float valueX = nameX + column.name + pad;
    const Colour colour =
        isChannel ? asColour(channels::channelColour(m_config, cell.channel)) : platform::black;
    printValue(cell, cell.value, colour, valueX, column.value + 2 * pad, y);
    if (!isChannel || !m_panel.hasSecond()) return;
    const Colour second =
        m_panel.differences ? colour : asColour(overlayColour(m_config, cell.channel));
    printValue(
        cell, cell.overlay, second, valueX + column.value + 3 * pad, column.overlay + 2 * pad, y);
}

// The colour of the curve, in a border since it may be the paper's own.
void PrintedPanel::printSquare(const PanelCell& cell, float x, float y) const {
    platform::Surface& page = m_job.surface();
    const float top = y + (m_line / lineSpacing - squareSide()) / 2;
    const float right = x + squareSide() / pageRatio;
    const float bottom = top + squareSide();
    if (cell.on) {
        page.box(x, top, right, bottom,
            inkOf(asColour(channels::channelColour(m_config, cell.channel))));
    }
    const Colour border = cell.on ? platform::black : faint;
    page.line(x, top, right, top, border);
    page.lineTo(right, bottom, border);
    page.lineTo(x, bottom, border);
    page.lineTo(x, top, border);
}

// On the ground of the graph, as on the screen, where the channel is on.
void PrintedPanel::printValue(const PanelCell& cell, const std::string& text, Colour colour,
    float left, float width, float y) const {
    const bool onGround = cell.channel >= 0 && cell.on && !m_job.whitePaper();
    platform::Surface& page = m_job.surface();
    if (onGround) {
        page.box(left, y, left + width, y + m_line * 0.94F, asColour(m_config.GraphBackColour));
    }
    page.setForeColor(!cell.on ? faint : inkOf(colour));
    m_job.printAt(left + width - pad, y, text, TextSide::right);
}

Colour PrintedPanel::inkOf(Colour colour) const {
    return m_job.whitePaper() ? readableOnWhite(colour) : colour;
}

} // namespace kvo::graph
