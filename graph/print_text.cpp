#include "graph/print_text.h"

#include <algorithm>
#include <array>
#include <string>

namespace kvo::graph {
namespace {

using platform::Orientation;
using platform::Printed;
using platform::PrintJob;
using platform::PrintResult;
using platform::TextSide;

constexpr float fontPoints = 8;
// In parts of the font's height: six digits and a point then fit into a column.
constexpr float digitWidth = 0.46F;

constexpr std::array<float, 3> rules{4, 9, 10};
constexpr float namesY = 5;
constexpr float columnRulesEnd = 284;
constexpr float beforeColumn = 1.1F; // of its rule
constexpr float footY = 285;
constexpr platform::Colour ruleColour = platform::black;
constexpr platform::Colour columnRuleColour = 0xC0C0C0;

// All letters are narrowed alike until the widest text of every column fits into its room.
float narrowedDigits(const PrintJob& job, const PrintTable& table) {
    std::vector<std::string_view> widest = namesOf(table.header);
    widest.resize(table.columns.size());
    for (const auto& line : table.lines) {
        for (const PrintCell& cell : line) {
            std::string_view& one = widest[static_cast<std::size_t>(cell.column)];
            if (cell.text.size() > one.size()) one = cell.text;
        }
    }
    float part = 1;
    for (std::size_t c = 0; c < widest.size(); ++c) {
        const float width = job.textWidth(widest[c]);
        if (width > 0) part = std::min(part, table.columns[c].room / width);
    }
    return digitWidth * part;
}

// A caption that is too long is printed smaller; the table under it is not.
void printCaption(PrintJob& job, std::string_view caption) {
    constexpr float step = 0.97F; // letters do not shrink quite evenly
    constexpr float leastPoints = 1;
    for (float points = fontPoints * step; job.textWidth(caption) > tableWidth; points *= step) {
        if (points < leastPoints) break;
        job.surface().setFontSize(points);
    }
    job.printAt(0, 0, caption, TextSide::left);
    job.surface().setFontSize(fontPoints);
}

void setUpPage(PrintJob& job, std::string_view caption, const PrintTable& table) {
    platform::Surface& paper = job.surface();
    printCaption(job, caption);
    for (const float y : rules) paper.line(0, y, tableWidth, y, ruleColour);
    const auto names = namesOf(table.header);
    for (std::size_t c = 0; c < names.size(); ++c) {
        const float x = table.columns[c].x;
        job.printAt(x, namesY, names[c], TextSide::left);
        if (c == 0) continue;
        // A second sample of a line begins with the first name again.
        const platform::Colour colour = names[c] == names[0] ? ruleColour : columnRuleColour;
        paper.line(x - beforeColumn, rules[0], x - beforeColumn, columnRulesEnd, colour);
    }
    job.printAt(0, footY, "Page: " + std::to_string(job.page()), TextSide::left);
}

void printLine(PrintJob& job, const PrintTable& table, std::size_t line, int r) {
    for (const PrintCell& cell : table.lines[line]) {
        const float x = table.columns[static_cast<std::size_t>(cell.column)].x;
        job.printAt(x, printedLineY(r), cell.text, TextSide::left);
    }
}

} // namespace

int pagesOf(const PrintTable& table) {
    const int lines = static_cast<int>(table.lines.size());
    return std::max(1, (lines + linesAPage - 1) / linesAPage);
}

PrintResult PrintText(
    PrintJob& job, std::string_view caption, const PrintTable& table, PrintProgress& progress) {
    const int pagesBefore = job.page() - 1;
    platform::Surface& paper = job.surface();
    job.setFrame({});
    paper.setScale(0, 0, tableWidth, tableHeight);
    paper.setDrawStyle(0);
    paper.setDrawWidth(1);
    paper.setForeColor(platform::black);
    paper.setFontSize(fontPoints);
    job.setDigitWidth(digitWidth);
    job.setDigitWidth(narrowedDigits(job, table));
    int r = 0;
    setUpPage(job, caption, table);
    for (std::size_t line = 0; line < table.lines.size(); ++line) {
        // The next page is begun by a line that stands on it, so that none stays empty.
        if (r == linesAPage) {
            if (!progress.goesOn(job.page(), pagesBefore + pagesOf(table)))
                return {Printed::cancelled, {}};
            if (auto turned = job.newPage(Orientation::portrait); !turned) return turned;
            setUpPage(job, caption, table);
            r = 0;
        }
        printLine(job, table, line, ++r);
    }
    job.whilePrinting(
        [&progress](int pagesDone, int allPages) { return progress.goesOn(pagesDone, allPages); });
    return job.endDoc();
}

} // namespace kvo::graph
