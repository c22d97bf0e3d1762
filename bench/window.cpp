// What a hand feels outside of the graph: opening the chooser on a long index, typing in its
// filter, and the start of the program.
#include "bench/first_paint.h"
#include "bench/parts.h"
#include "bench/program.h"
#include "bench/timing.h"
#include "core/forms/doors.h"
#include "core/run_index.h"
#include "library/forms/load_file.h"
#include "platform/qt/form_kit.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>

#include <cstdio>
#include <vector>

namespace kvo::bench {
namespace {

using namespace platform_qt;

constexpr int rounds = 11;
constexpr int indexEntries = 100'000;

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

// Shown, painted and put away again.
void showOnce(QWidget& window) {
    window.show();
    QApplication::processEvents();
    window.hide();
}

// Against the list that a toolkit makes of the same texts.
void measureFirstPaint(
    Table& table, forms::LoadFile& chooser, const std::vector<core::RunIndexEntry>& entries) {
    const auto bareList = [&](bool alikeRows) {
        return [&, alikeRows] {
            QStringList texts;
            for (const auto& entry : entries)
                texts << QString::fromLatin1(entry.Description.c_str());
            QListWidget list;
            list.setUniformItemSizes(alikeRows);
            list.addItems(texts);
            list.resize(chooser.size());
            showOnce(list);
        };
    };
    const auto seconds =
        medianSeconds({{[&] { showOnce(chooser); }}, {bareList(false)}, {bareList(true)}}, rounds);
    table.add("chooser of 100,000 runs, to first paint", "a list of the texts alone", seconds[0],
        seconds[1], Goal{1.5, "-"});
    // It measures one row for all and reads no file.
    table.add("chooser of 100,000 runs, to first paint", "the same, its rows alike", seconds[0],
        seconds[2], {});
}

// The first key looks through all runs and finds all, and so has the most to show.
void measureFilterKey(Table& table, forms::LoadFile& chooser) {
    chooser.show();
    auto& filter = control<QLineEdit>(chooser, "Text_Filter");
    const auto empty = [&] {
        filter.clear();
        QApplication::processEvents();
    };
    const auto key = [&](const char* text) {
        return [&filter, text] {
            filter.setText(QLatin1String(text));
            QApplication::processEvents();
        };
    };
    const auto seconds = medianSeconds({{key("u"), empty}, {key("99"), empty}}, rounds);
    table.add("filter of 100,000 runs, a key that finds all", "a frame at 60 a second", seconds[0],
        frameSeconds, Goal{1, "-"});
    table.add("filter of 100,000 runs, a word that finds few", "a frame at 60 a second", seconds[1],
        frameSeconds, Goal{1, "-"});
    chooser.hide();
}

void measureChooser(Table& table) {
    Program program;
    forms::doors().runPreview = [](const std::string&, int, int) { return core::RunPicture{}; };
    const auto entries = longIndex();
    demand(core::writeRunIndex(program.folder(), entries, program.files()));
    auto& chooser = form<forms::LoadFile>();
    measureFirstPaint(table, chooser, entries);
    measureFilterKey(table, chooser);
}

void measureStart(Table& table) {
    const auto ours = firstPaint(Starter::program);
    const auto minimal = firstPaint(Starter::minimal);
    if (!ours || !minimal) {
        table.skip("start", "the measuring program cannot start itself");
        return;
    }
    table.add("start to first paint", "a minimal program", ours->seconds, minimal->seconds,
        Goal{1.3, "1.14"});
    table.addRatio("memory at first paint", "a minimal program",
        ours->residentKb / minimal->residentKb, Goal{1.3, "1.08"});
}

} // namespace

void measureWindow(Table& table) {
    measureChooser(table);
    measureStart(table);
}

} // namespace kvo::bench
