// What a hand feels: moving the cursor, scrolling an enlarged surface, opening the chooser on a
// long index, and the start of the program.
#include "bench/first_paint.h"
#include "bench/parts.h"
#include "bench/run.h"
#include "bench/silent_dialogs.h"
#include "bench/timing.h"
#include "bench/trend_image.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "graph/forms/data_graph.h"
#include "library/forms/load_file.h"
#include "platform/os/os_files.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/surface_widget.h"
#include "platform/services.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QScrollBar>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace kvo::bench {
namespace {

using namespace platform_qt;

constexpr int rounds = 11;
constexpr int runType = 8; // the type with the most rows
constexpr int runRows = 2520;
constexpr int indexEntries = 100'000;

void demand(const platform::WriteResult& result) {
    if (result) return;
    std::fprintf(stderr, "kvo_bench: %s\n", result.message.c_str());
    std::exit(2);
}

// The services of a program that works in `folder`, with a run of all channels as if it had just
// been downloaded there.
class Program {
public:
    Program() {
        platform::services() = {};
        platform::services().files = &m_files;
        platform::services().dialogs = &m_dialogs;
        core::SharedState& state = core::state();
        state = *std::make_unique<core::SharedState>();
        fillRun(state, runType, runRows, true);
        state.AppFolder = m_folder.path();
        state.Run.path = m_folder.path() + "/Data/26111610.05d";
        demand(saveFresh(state, m_files));
    }
    ~Program() {
        unloadAllForms();
        platform::services() = {};
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    platform::Files& files() { return m_files; }
    const std::string& folder() const { return m_folder.path(); }

private:
    ScratchFolder m_folder;
    platform_os::OsFiles m_files;
    SilentDialogs m_dialogs;
};

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
    const auto seconds = medianSeconds({move, [&] { graph.repaint(); }}, rounds);
    table.add("cursor move, all values", "repainting the window", seconds[0], seconds[1], 0.15);
}

void measureScroll(Table& table) {
    const Program program;
    auto& graph = shownGraph();
    constexpr int quarter = 2; // four windows wide and high
    graph.Mnu_ScaleItem_Click(quarter);
    QApplication::processEvents();
    auto& bar = control<QScrollBar>(graph, "HScroll");
    int step = 1;
    const auto scroll = [&] {
        if (bar.value() + step > bar.maximum() || bar.value() + step < bar.minimum()) step = -step;
        bar.setValue(bar.value() + step);
        QApplication::processEvents();
    };
    TrendImage whole(core::state(), false, 7680, 4320);
    const auto seconds = medianSeconds({scroll, [&] { whole.redraw(); }}, rounds);
    table.add("scroll step, 1/4 screen", "redrawing 7680x4320", seconds[0], seconds[1], 0.1);
}

std::vector<core::RunIndexEntry> longIndex() {
    std::vector<core::RunIndexEntry> entries;
    entries.reserve(indexEntries);
    for (int i = 0; i < indexEntries; ++i) {
        char name[16];
        std::snprintf(name, sizeof name, "%08d.%02dd", i / 60, i % 60);
        entries.push_back({name, "Mon 16 Nov 2026 Run: " + std::to_string(i % 99 + 1)});
    }
    return entries;
}

// Against the list that a toolkit makes of the same texts.
void measureChooser(Table& table) {
    Program program;
    const auto entries = longIndex();
    demand(core::writeRunIndex(program.folder(), entries, program.files()));
    auto& chooser = form<forms::LoadFile>();
    const auto ready = [&] {
        QStringList texts;
        for (const auto& entry : entries) texts << QString::fromLatin1(entry.Description.c_str());
        QListWidget list;
        list.addItems(texts);
        list.ensurePolished();
        keep(list);
    };
    const auto seconds = medianSeconds({[&] { chooser.Data_File(); }, ready}, rounds);
    table.add("chooser, 100,000 runs", "a list of the texts alone", seconds[0], seconds[1], 2.0);
}

void measureStart(Table& table) {
    const auto ours = firstPaint(Starter::program);
    const auto minimal = firstPaint(Starter::minimal);
    if (!ours || !minimal) {
        table.skip("start", "the measuring program cannot start itself");
        return;
    }
    table.add("start to first paint", "a minimal program", ours->seconds, minimal->seconds, 2.0);
    table.addRatio(
        "memory at first paint", "a minimal program", ours->residentKb / minimal->residentKb, 2.0);
}

} // namespace

void measureWindow(Table& table) {
    measureCursor(table);
    measureScroll(table);
    measureChooser(table);
    measureStart(table);
}

} // namespace kvo::bench
