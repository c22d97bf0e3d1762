#include "library/time_graph.h"

#include "core/basic/format.h"
#include "core/basic/numbers.h"

#include <cmath>
#include <cstdlib>

namespace kvo::library {
namespace {

using core::TimedRun;
using platform::paletteColour;

constexpr int mostRows = 25;
constexpr int hundredthsASecond = 100;
constexpr int markWidth = 3; // its colour is told apart on any screen
constexpr int dashDotDot = 4;
constexpr int brown = 6;

double seconds(int hundredths) {
    return static_cast<double>(hundredths) / hundredthsASecond;
}

bool onAxis(int x) {
    return x >= 0 && x <= timeAxisEnd;
}

TimedRow rowOf(const TimedRun& run, int row) {
    TimedRow made{row, std::string(core::leftTrimmed(core::rightTrimmed(run.Label))), {}, {}};
    for (const TimeKind& kind : timeKinds()) {
        const int time = run.*kind.time;
        made.toolTip += std::string(kind.caption) + core::CStr(seconds(time));
        if (time != 0) made.marks.push_back({time, kind.colour, kind.name});
    }
    return made;
}

} // namespace

const std::array<TimeKind, 5>& timeKinds() {
    static constexpr std::array<TimeKind, 5> kinds{{
        {&TimedRun::Time60, "60 Time:", "60 foot", 13},
        {&TimedRun::Time330, "         330 Time:", "330 foot", 10},
        {&TimedRun::Time660, "          660 Time:", "660 foot", 12},
        {&TimedRun::Time1000, "          1000 Time:", "1000 foot", 11},
        {&TimedRun::TimeET, "           ET:", "ET", 9},
    }};
    return kinds;
}

std::vector<TimedRow> timedRows(const core::RunTimesTable& table) {
    std::vector<TimedRow> rows;
    for (int i = 1; i < table.RunTimesCount && i <= mostRows; ++i) {
        rows.push_back(rowOf(table.entries[i], i));
    }
    return rows;
}

void drawTimeGraph(platform::Surface& graph, const std::vector<TimedRow>& rows) {
    graph.setAutoRedraw(true);
    graph.setScale(0, 0, timeAxisEnd, timeAxisRows);
    graph.cls();
    for (int row = 1; row <= mostRows; ++row) {
        const auto y = static_cast<float>(row);
        graph.line(0, y, graph.scaleWidth(), y, platform::black);
    }
    for (int t = hundredthsASecond; t <= timeAxisEnd; t += hundredthsASecond) {
        const auto x = static_cast<float>(t);
        graph.setCurrentY(0);
        graph.setCurrentX(x - 10);
        graph.print(core::Str(seconds(t)));
        graph.line(x, 1, x, timeAxisRows, platform::black);
    }
    graph.setDrawWidth(markWidth);
    for (const TimedRow& row : rows) {
        const auto y = static_cast<float>(row.row);
        for (const TimeMark& mark : row.marks) {
            const auto x = static_cast<float>(mark.time);
            graph.line(x, y, x, y + 1, paletteColour(mark.colour));
        }
    }
    graph.setDrawWidth(1);
}

void GraphLine(platform::Surface& graph, int x) {
    const auto at = static_cast<float>(x);
    graph.setAutoRedraw(false);
    graph.refresh();
    graph.setDrawStyle(dashDotDot);
    graph.line(at, 0, at, timeAxisRows, paletteColour(brown));
    graph.setDrawStyle(0);
}

std::string timeOfLine(int x) {
    return core::Format(seconds(x), "##0.00");
}

std::optional<int> movedLine(int x, bool right, bool shift, bool ctrl, bool alt) {
    const int step = shift ? 100 : ctrl ? 50 : alt ? 10 : 1;
    const int moved = right ? x + step : x - step;
    return onAxis(moved) ? std::optional(moved) : std::nullopt;
}

std::optional<int> lineAt(double x) {
    if (!(x >= 0 && x <= timeAxisEnd)) return std::nullopt;
    return static_cast<int>(std::nearbyint(x));
}

std::string marksAt(const std::vector<TimedRow>& rows, int x, int reach) {
    std::string text;
    for (const TimedRow& row : rows) {
        for (const TimeMark& mark : row.marks) {
            if (std::abs(mark.time - x) > reach) continue;
            if (!text.empty()) text += "    ";
            text += std::string(mark.name) + ' ' + timeOfLine(mark.time) + ": " + row.label;
        }
    }
    return text;
}

std::string markUnder(const std::vector<TimedRow>& rows, double x, double y, int reach) {
    const auto at = lineAt(x);
    for (const TimedRow& row : rows) {
        if (at && row.row == static_cast<int>(std::floor(y))) return marksAt({row}, *at, reach);
    }
    return {};
}

bool opensRun(const core::RunTimesTable& table, int row) {
    // Required: the label of the last run opens none.
    return table.RunTimesCount > row + 1;
}

std::optional<std::string> fileOfTimedRun(
    const TimedRun& run, const std::vector<core::RunIndexEntry>& index) {
    std::optional<std::string> found;
    for (const core::RunIndexEntry& entry : index) {
        if (core::RunDateKey(entry.Description) != run.Key) continue;
        if (found) return std::nullopt;
        found = entry.FileName;
    }
    return found;
}

std::optional<core::ChosenRun> chooseTimedRun(
    const TimedRun& run, RunList& runs, const std::string& appFolder, platform::Files& files) {
    runs.read(appFolder, files);
    const auto file = fileOfTimedRun(run, runs.rows());
    if (!file) return std::nullopt;
    runs.chooseFile(*file);
    runs.take();
    return runs.chosenRun(appFolder, files);
}

std::string printedHeading(const platform::DateTime& today) {
    return "Times of the newest runs, printed on " + core::Format(today, "ddd dd mmm yyyy");
}

} // namespace kvo::library
