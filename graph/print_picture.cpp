#include "graph/print_picture.h"

#include "core/basic/numbers.h"
#include "core/run_title.h"
#include "graph/drawing.h"
#include "graph/paper_surface.h"
#include "graph/windowless_host.h"

#include <algorithm>
#include <string_view>

namespace kvo::graph {
namespace {

using platform::PageFrame;
using platform::PrintJob;
using platform::TextSide;

constexpr float titlePoints = 12;
constexpr float captionPoints = 8;
constexpr float graphPoints = 6.5F;
constexpr float gap = 0.008F; // of the page's height, between its parts

// A text across the page, smaller where it is too long. Gives where the next one begins.
float printAcross(PrintJob& job, float y, std::string_view text, float points) {
    job.surface().setFontSize(points);
    const float width = job.textWidth(text);
    if (width > 1) job.surface().setFontSize(points / width);
    job.printAt(0, y, text, TextSide::left);
    return y + job.lineHeight();
}

// The window's caption without the word that a download has in front of its title.
std::string captionBelow(std::string_view caption) {
    constexpr std::string_view date = " Date:";
    if (caption.starts_with(date)) caption.remove_prefix(date.size());
    return core::rightTrimmed(caption);
}

// The run's title, and the window's caption where it says more.
float printTitle(PrintJob& job, const PictureInput& input) {
    job.surface().setForeColor(platform::black);
    const std::string title = core::rightTrimmed(core::titleOf(input.run.headerLine));
    const std::string caption = captionBelow(input.caption);
    float y = 0;
    if (!title.empty()) y = printAcross(job, y, title, titlePoints);
    if (!caption.empty() && caption != title) y = printAcross(job, y, caption, captionPoints);
    return y + gap;
}

void drawGraph(PrintJob& job, const PictureInput& input, const PageFrame& frame) {
    job.setFrame(frame);
    // The drawing puts right what is not set; on paper that must not change the window's own.
    core::AppConfig config = input.config;
    GraphView view = input.view;
    view.LineWidthPx = 1; // the width is the screen's
    PaperSurface paper(job.surface(), {job.whitePaper(), graph::gridColour(config), input.part});
    WindowlessHost host(paper, input.clutchLabelVisible);
    paper.setScale(input.scale.left, input.scale.top, input.scale.right, input.scale.bottom);
    paper.setBackColor(static_cast<platform::Colour>(config.GraphBackColour));
    paper.setFontSize(graphPoints);
    TrendDrawing drawing(config, input.run, input.overlay, view, host);
    // A page has always room.
    if (drawing.DrawTrend() && view.OverlayLoaded != 0) drawing.OverLayDraw();
    input.onTop.drawOn(paper);
}

void drawBorder(PrintJob& job, const PageFrame& frame) {
    platform::Surface& page = job.surface();
    page.setDrawStyle(0);
    page.line(frame.left, frame.top, frame.right, frame.top, platform::black);
    for (const platform::Point& corner : {platform::Point{frame.right, frame.bottom},
             {frame.left, frame.bottom}, {frame.left, frame.top}})
        page.lineTo(corner.x, corner.y, platform::black);
}

void wholePage(PrintJob& job) {
    job.setFrame({});
    job.surface().setScale(0, 0, 1, 1);
}

} // namespace

void printPicture(PrintJob& job, const PictureInput& input) {
    wholePage(job);
    job.setDigitWidth(0);
    const float top = printTitle(job, input);
    const PrintedPanel panel(job, input.panel, input.config);
    const PageFrame frame{0, top, 1, std::max(top + gap, 1 - panel.height() - gap)};
    drawGraph(job, input, frame);
    wholePage(job);
    drawBorder(job, frame);
    panel.print(frame.bottom + gap);
}

} // namespace kvo::graph
