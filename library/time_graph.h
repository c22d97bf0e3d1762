#pragma once
// The time graph: one row a timed run with a mark for each of its five times on one axis, and the
// line that reads the axis. Drawn on any surface.
#include "core/run_index.h"
#include "core/run_times.h"
#include "library/run_list.h"
#include "platform/clock.h"
#include "platform/draw/surface.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::library {

// The axis in hundredths of a second, and its rows: the numbers in row 0, a run in each below.
inline constexpr int timeAxisEnd = 1900;
inline constexpr int timeAxisRows = 31;

// One of the five times as it is drawn, by the number of its colour in the palette.
struct TimeKind {
    std::int16_t core::TimedRun::*time;
    std::string_view caption; // in front of its value in a label's tool tip, blanks and all
    std::string_view name;    // in the legend
    int colour;
};
// In the order in which they are drawn.
const std::array<TimeKind, 5>& timeKinds();

struct TimeMark {
    int time = 0; // hundredths of a second
    int colour = 0;
    std::string_view name;
};
// What stands over the graph on paper: what it is, and the day of the printing.
std::string printedHeading(const platform::DateTime& today);
// A label of the graph with the marks of its row.
struct TimedRow {
    int row = 0; // from 1, the entry of the table
    std::string label;
    std::string toolTip;
    std::vector<TimeMark> marks; // without the times that are 0
};

// The rows of a table, at most 25.
std::vector<TimedRow> timedRows(const core::RunTimesTable& table);

// Sets the scale of the surface and draws rules, seconds and the marks of all rows.
void drawTimeGraph(platform::Surface& graph, const std::vector<TimedRow>& rows);

// Draws the line at x on top of the kept picture; the one before goes.
void GraphLine(platform::Surface& graph, int x);
// What Time_Label shows of the line at x.
std::string timeOfLine(int x);
// Where the line goes from x by an arrow key: by 1, with Shift 100, else with Ctrl 50, else with
// Alt 10. Nothing outside the axis: the line stays, and the program beeps.
std::optional<int> movedLine(int x, bool right, bool shift, bool ctrl, bool alt);
// The nearest place of the axis to a position on the surface; nothing outside it.
std::optional<int> lineAt(double x);

// The marks under the line, as words: "ET 7.77: 03 Jan 2026 Run: 1"; empty where there is none
// within `reach` hundredths.
std::string marksAt(const std::vector<TimedRow>& rows, int x, int reach);
// The mark of one row under a position on the surface, in the same words.
std::string markUnder(const std::vector<TimedRow>& rows, double x, double y, int reach);

// Whether the label of that row opens a run.
bool opensRun(const core::RunTimesTable& table, int row);
// The file of the run that a row stands for: the one entry of the index with its date and number;
// nothing where there is none or more than one.
std::optional<std::string> fileOfTimedRun(
    const core::TimedRun& run, const std::vector<core::RunIndexEntry>& index);
// Reads the list of runs anew and makes that run its choice; nothing where there is no such one.
std::optional<core::ChosenRun> chooseTimedRun(
    const core::TimedRun& run, RunList& runs, const std::string& appFolder, platform::Files& files);

} // namespace kvo::library
