#include "graph/printing.h"

#include "core/paths.h"
#include "core/run_title.h"
#include "platform/text.h"

#include <array>
#include <cassert>
#include <new>

namespace kvo::graph {
namespace {

using platform::Orientation;
using platform::Printed;
using platform::PrintJob;
using platform::PrintResult;

struct PrintItem {
    bool screen;
    bool data;
    const char* failure;
};
constexpr std::array<PrintItem, 3> items{{{true, false, "Error Printing Graph. "},
    {false, true, "Error Printing Text. "}, {true, true, "Error Printing Graph & Text. "}}};

class TrendHourglass {
public:
    explicit TrendHourglass(TrendHost& window) : m_window(window) {
        m_window.setTrendHourglass(true);
    }
    ~TrendHourglass() { m_window.setTrendHourglass(false); }
    TrendHourglass(const TrendHourglass&) = delete;
    TrendHourglass& operator=(const TrendHourglass&) = delete;

private:
    TrendHost& m_window;
};

PrintResult printPages(PrintJob& job, const PrintItem& item, const PictureInput& input,
    const PrintTable& table, PrintProgress& progress) {
    if (item.screen) printPicture(job, input);
    if (!item.data) return job.endDoc();
    if (item.screen) {
        if (auto turned = job.newPage(Orientation::portrait); !turned) return turned;
    }
    return PrintText(job, input.caption, table, progress);
}

PrintResult printDocument(const PrintItem& item, const PictureInput& input,
    std::string& analogPicture, const PrintPlace& place) try {
    PrintTable table;
    if (item.data) table = makePrintTable(channels::viewOfRun(input.run), analogPicture);
    if (table.failed) return {Printed::failed, "A value of the run cannot be worked out."};
    auto start = place.printer.begin({platform::fromFile(core::titleOf(input.run.headerLine)),
        item.screen ? Orientation::landscape : Orientation::portrait, item.screen});
    if (!start.result) return start.result;
    auto printed = printPages(*start.job, item, input, table, place.progress);
    if (!printed) start.job->kill();
    return printed;
} catch (const std::bad_alloc&) { // a job that was begun is killed as it goes
    return {Printed::failed, {}};
}

} // namespace

void Mnu_Print(
    int item, const PictureInput& input, std::string& analogPicture, const PrintPlace& place) {
    assert(item >= printScreen && item <= printScreenAndData);
    const PrintItem& chosen = items[static_cast<std::size_t>(item)];
    const TrendHourglass busy(place.window);
    const PrintResult result = printDocument(chosen, input, analogPicture, place);
    if (result.outcome != Printed::failed) return;
    place.dialogs.messageBox(chosen.failure, platform::boxStyle::ok, core::programName);
}

} // namespace kvo::graph
