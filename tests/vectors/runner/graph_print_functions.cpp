// Golden vectors of the printed table: what a print job gets, page by page.
#include "graph/print_text.h"
#include "graph_functions.h"
#include "tests/support/scripted_printer.h"

#include <stdexcept>

namespace kvo::vectors {

using namespace kvo::graph;

namespace {

class NeverCancelled : public PrintProgress {
public:
    bool goesOn(int, int) override { return true; }
};

// The texts of a page in the order of its cells, without those above and below the lines.
std::vector<testing::PrintedText> cellsOfLine(const testing::PrintedPage& page, int r) {
    std::vector<testing::PrintedText> cells;
    for (const testing::PrintedText& text : page.texts) {
        if (text.y == printedLineY(r)) cells.push_back(text);
    }
    return cells;
}

// A cell that is expected to be empty may be left out.
Json lineJson(const std::vector<testing::PrintedText>& cells, int page, const Json& expected) {
    Json got = Json::array();
    auto next = cells.begin();
    for (const Json& cell : expected) {
        const bool isThere = next != cells.end() && next->x == cell.at(1).get<float>();
        if (!isThere && cell.at(3) == "") {
            got.push_back(cell);
        } else if (next != cells.end()) {
            got.push_back({page, next->x, next->y, next->text});
            ++next;
        }
    }
    for (; next != cells.end(); ++next) got.push_back({page, next->x, next->y, next->text});
    return got;
}

Json printedText(const Case& c) {
    const auto made = graphCase(c);
    core::SharedState& state = made->state;
    const PrintTable table = makePrintTable(channels::viewOfRun(state.Run), state.AnalogPicture);
    testing::ScriptedPrinter printer;
    NeverCancelled progress;
    const auto start = printer.begin({});
    if (!PrintText(*start.job, "", table, progress)) return Json{{"error", true}};
    const auto& pages = printer.documents.at(0)->pages;
    int lastPageLines = 0;
    while (lastPageLines < linesAPage && !cellsOfLine(pages.back(), lastPageLines + 1).empty())
        ++lastPageLines;
    const int lineCount = (static_cast<int>(pages.size()) - 1) * linesAPage + lastPageLines;
    Json got{{"header", std::string(table.header)}, {"lineCount", lineCount},
        {"pages", pages.size()}, {"lastPageLines", lastPageLines}};
    for (const auto& [key, expected] : c.expected.at("lines").items()) {
        const int line = std::stoi(key) - 1;
        const int page = line / linesAPage;
        got["lines"][key] =
            lineJson(cellsOfLine(pages.at(static_cast<std::size_t>(page)), line % linesAPage + 1),
                page + 1, expected);
    }
    return got;
}

} // namespace

void addGraphPrinting() {
    add("PrintText", printedText);
}

} // namespace kvo::vectors
