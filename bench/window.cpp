// What a hand feels outside of the graph: opening the chooser on a long index, and the start of the
// program.
#include "bench/first_paint.h"
#include "bench/parts.h"
#include "bench/program.h"
#include "bench/timing.h"
#include "core/run_index.h"
#include "library/forms/load_file.h"
#include "platform/qt/form_kit.h"

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
    const auto seconds = medianSeconds({{[&] { chooser.Data_File(); }}, {ready}}, rounds);
    table.add("chooser, 100,000 runs", "a list of the texts alone", seconds[0], seconds[1],
        Goal{2.0, "-"});
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
