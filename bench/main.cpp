// Measures the program against its peers and limits, and prints one table.
#include "bench/first_paint.h"
#include "bench/parts.h"
#include "platform/os/heap.h"
#include "tools/command_line/command_line.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#ifdef KVO_WITH_QT
#include <QApplication>
#endif

namespace {

using namespace kvo::bench;

const std::vector<std::pair<std::string, void (*)(Table&)>> parts{{"files", measureFiles},
    {"index", measureIndex}, {"graph", measureGraph}, {"graph-window", measureGraphWindow},
    {"window", measureWindow}, {"printing", measurePrinting}, {"library", measureLibrary},
    {"export", measureExport}, {"download", measureDownload}, {"pit-run", measurePitRun}};

const kvo::command_line::Syntax syntax{"kvo_bench [PART...]",
    "Measures the named parts, all of them if none is named, and prints one\n"
    "table. Parts: files index graph graph-window window printing library export download\n"
    "pit-run.\n"
    "The exit code is 1 when a goal is missed.\n",
    0, parts.size()};

bool isPart(const std::string& name) {
    return std::any_of(
        parts.begin(), parts.end(), [&](const auto& part) { return part.first == name; });
}

} // namespace

int main(int argc, char** argv) {
#ifdef KVO_WITH_QT
    if (const auto starter = askedStart(argc, argv)) return runStart(*starter, argc, argv);
#endif
    kvo::platform_os::keepFreedMemory(); // as the program does
    const auto arguments = kvo::command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    const std::vector<std::string>& wanted = arguments.operands;
    for (const std::string& name : wanted)
        if (!isPart(name)) return misuse(syntax, "no part is called " + name);
#ifdef KVO_WITH_QT
    const QApplication application(argc, argv);
#endif
    std::setlocale(LC_NUMERIC, "C");
    Table table;
    for (const auto& [name, measure] : parts)
        if (wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end()) {
            std::fprintf(stderr, "measuring: %s\n", name.c_str());
            measure(table);
        }
    table.print();
    return table.broken() == 0 ? 0 : 1;
}
