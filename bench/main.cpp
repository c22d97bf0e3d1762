// kvo_bench [PART...]: measures and prints one table; exit 1 when a goal is missed.
#include "bench/first_paint.h"
#include "bench/parts.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#ifdef KVO_WITH_QT
#include <QApplication>
#endif

int main(int argc, char** argv) {
#ifdef KVO_WITH_QT
    if (const auto starter = kvo::bench::askedStart(argc, argv))
        return kvo::bench::runStart(*starter, argc, argv);
    const QApplication application(argc, argv);
#endif
    std::setlocale(LC_NUMERIC, "C");
    using namespace kvo::bench;
    const std::vector<std::pair<std::string, std::function<void(Table&)>>> parts{
        {"files", measureFiles}, {"index", measureIndex}, {"graph", measureGraph},
        {"graph-window", measureGraphWindow}, {"window", measureWindow},
        {"download", measureDownload}};
    const std::vector<std::string> wanted(argv + 1, argv + argc);
    const auto isNamed = [&](const std::string& name) {
        return std::find(wanted.begin(), wanted.end(), name) != wanted.end();
    };
    for (const std::string& name : wanted)
        if (std::none_of(
                parts.begin(), parts.end(), [&](auto& part) { return part.first == name; })) {
            std::fprintf(stderr, "kvo_bench: no part is called %s\n", name.c_str());
            return 2;
        }
    Table table;
    for (const auto& [name, measure] : parts)
        if (wanted.empty() || isNamed(name)) {
            std::fprintf(stderr, "measuring: %s\n", name.c_str());
            measure(table);
        }
    table.print();
    return table.broken() == 0 ? 0 : 1;
}
