// What a hand feels in the graph window: the cursor under an arrow key, scrolling and zooming, a
// channel switched off and on, another run.
#include "bench/parts.h"
#include "bench/program.h"
#include "bench/timing.h"
#include "bench/trend_image.h"
#include "core/forms/doors.h"
#include "graph/forms/data_graph.h"
#include "library/run_list.h"
#include "platform/qt/form_kit.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

namespace kvo::bench {
namespace {

using namespace platform_qt;

constexpr int rounds = 11;

forms::DataGraph& shownGraph() {
    auto& graph = form<forms::DataGraph>();
    graph.openFresh(core::state().Run.path, benchRunText);
    graph.setWindowState(Qt::WindowNoState);
    graph.resize(1920, 1080);
    graph.show();
    QApplication::processEvents();
    return graph;
}

void pressArrow(QWidget& trend, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&trend, &press);
    QApplication::processEvents();
}

void measureCursor(Table& table) {
    const Program program;
    auto& graph = shownGraph();
    auto& trend = control<QWidget>(graph, "Trend");
    bool right = true;
    const auto move = [&] {
        pressArrow(trend, right ? Qt::Key_Right : Qt::Key_Left);
        right = !right;
    };
    const auto seconds = medianSeconds({{move}, {[&] { graph.repaint(); }}}, rounds);
    table.add("cursor move, all values", "repainting the window", seconds[0], seconds[1],
        Goal{0.15, "0.12"});
}

void measureScroll(Table& table) {
    const Program program;
    auto& graph = shownGraph();
    constexpr int quarter = 2; // four windows wide and high
    graph.commands().Mnu_ScaleItem_Click(quarter);
    QApplication::processEvents();
    auto& bar = control<QScrollBar>(graph, "HScroll");
    int step = 1;
    const auto scroll = [&] {
        if (bar.value() + step > bar.maximum() || bar.value() + step < bar.minimum()) step = -step;
        bar.setValue(bar.value() + step);
        QApplication::processEvents();
    };
    TrendImage whole(core::state(), false, 7680, 4320);
    const auto seconds = medianSeconds({{scroll}, {[&] { whole.redraw(); }}}, rounds);
    table.add("scroll step, 1/4 screen", "redrawing 7680x4320", seconds[0], seconds[1],
        Goal{0.04, "0.14"});
}

// Back and forward between two runs, from the file to the picture.
void measureOpen(Table& table) {
    Program program;
    auto& graph = shownGraph();
    library::runList().read(program.folder(), program.files());
    library::runList().choose(0);
    int direction = 1;
    const auto open = [&] {
        graph.commands().GraphChange_Click(direction);
        QApplication::processEvents();
        direction = 1 - direction;
    };
    const auto seconds = medianSeconds({{open}, {[&] { graph.repaint(); }}}, rounds);
    table.add("open a run, file to picture", "repainting the window", seconds[0], seconds[1],
        Goal{5, "9"});
}

// As the key's repeat has it: a step, then whatever the event loop has to do. The surface stays
// between two and four windows wide; the window that is repainted beside it is not enlarged.
void measureZoom(Table& table) {
    const Program program;
    auto& graph = shownGraph();
    const auto& trend = control<QWidget>(graph, "Trend");
    const auto step = [&](bool in) {
        in ? graph.commands().ZoomIn_Click() : graph.commands().ZoomOut_Click();
        QApplication::processEvents();
    };
    bool in = true;
    const auto zoom = [&] {
        if (trend.width() > 4 * graph.width()) in = false;
        if (trend.width() < 2.5 * graph.width()) in = true;
        step(in);
    };
    const auto enlarge = [&] {
        while (trend.width() < 2 * graph.width()) step(true);
    };
    const auto makeWhole = [&] {
        if (trend.width() <= graph.width()) return;
        graph.commands().CancelZoom_Click();
        QApplication::processEvents();
    };
    const auto seconds =
        medianSeconds({{zoom, enlarge}, {[&] { graph.repaint(); }, makeWhole}}, rounds);
    table.add(
        "zoom step, key held down", "repainting the window", seconds[0], seconds[1], Goal{4, "9"});
}

// A command that draws all anew, up to the painted window: a second run costs its curves, while
// ground, read-outs and panel are there once.
void measureOverlay(Table& table) {
    Program program;
    auto& graph = shownGraph();
    library::runList().read(program.folder(), program.files());
    library::runList().choose(0);
    forms::doors().chooseRun = [&](const std::string&, const std::string&) {
        return library::runList().chosenRun(program.folder(), program.files());
    };
    const auto overlay = [&](bool on) {
        if ((graph.view().OverlayLoaded != 0) == on) return;
        graph.commands().Mnu_Overlay_Click();
        QApplication::processEvents();
    };
    const auto redraw = [&] {
        graph.takeOptions();
        QApplication::processEvents();
    };
    const auto seconds = medianSeconds(
        {{redraw, [&] { overlay(true); }}, {redraw, [&] { overlay(false); }}}, rounds);
    table.add("redraw with an overlay", "one without", seconds[0], seconds[1], Goal{1.6, "-"});
}

void measureChannel(Table& table) {
    const Program program;
    auto& graph = shownGraph();
    constexpr int channel = channels::inputChannel;
    const auto turn = [&](bool on) {
        if (channels::channelOn(core::state().Config, channel) == on) return;
        graph.channels().Toggle_Click(channel);
        QApplication::processEvents();
    };
    const auto seconds =
        medianSeconds({{[&] { turn(false); }, [&] { turn(true); }},
                          {[&] { turn(true); }, [&] { turn(false); }}, {[&] { graph.repaint(); }}},
            rounds);
    table.add("channel off", "repainting the window", seconds[0], seconds[2], Goal{2.5, "3.0"});
    table.add("channel on", "repainting the window", seconds[1], seconds[2], Goal{0.9, "-"});
}

} // namespace

void measureGraphWindow(Table& table) {
    measureCursor(table);
    measureScroll(table);
    measureZoom(table);
    measureOverlay(table);
    measureChannel(table);
    measureOpen(table);
}

} // namespace kvo::bench
