#include "graph/print_text.h"

#include "tests/support/scripted_printer.h"

#include <gtest/gtest.h>

using namespace kvo;
using namespace kvo::graph;
using kvo::testing::JobState;
using kvo::testing::PrintedPage;
using kvo::testing::PrintedText;
using kvo::testing::ScriptedPrinter;
using platform::Orientation;
using platform::Printed;

namespace {

// Counts how it is asked, and stops at a page.
class StoppingProgress : public PrintProgress {
public:
    explicit StoppingProgress(int stopAt = -1) : m_stopAt(stopAt) {}
    bool goesOn(int pagesDone, int allPages) override {
        asked.emplace_back(pagesDone, allPages);
        return pagesDone != m_stopAt;
    }
    std::vector<std::pair<int, int>> asked;

private:
    int m_stopAt;
};

// Lines with the cell "n" at x = 11, two names above.
PrintTable tableOf(int lines) {
    PrintTable table;
    table.header = " Time   Eng";
    table.columns = {{0, 10}, {11, 10}};
    for (int n = 1; n <= lines; ++n) table.lines.push_back({{1, std::to_string(n)}});
    return table;
}

std::vector<PrintedText> textsAt(const PrintedPage& page, float y) {
    std::vector<PrintedText> found;
    for (const PrintedText& text : page.texts) {
        if (text.y == y) found.push_back(text);
    }
    return found;
}

struct PrintTextTest : ::testing::Test {
    platform::PrintResult print(const PrintTable& table) {
        const auto start = printer.begin({"x"});
        return PrintText(*start.job, caption, table, progress);
    }
    const kvo::testing::PrintedDocument& document() { return *printer.documents.back(); }
    std::string caption = "The caption";
    ScriptedPrinter printer;
    StoppingProgress progress;
};

} // namespace

TEST_F(PrintTextTest, APageIsSetUpAboveItsLines) {
    ASSERT_TRUE(print(tableOf(2)));
    EXPECT_EQ(document().state, JobState::ended);
    ASSERT_EQ(document().pages.size(), 1U);
    const PrintedPage& page = document().pages[0];
    const auto one = [&page](float y) { return textsAt(page, y).at(0); };
    EXPECT_EQ(one(0).text, "The caption");
    EXPECT_EQ(one(0).x, 0);
    ASSERT_EQ(textsAt(page, 5).size(), 2U);
    EXPECT_EQ(textsAt(page, 5)[0].text, "Time");
    EXPECT_EQ(textsAt(page, 5)[1].text, "Eng");
    EXPECT_EQ(textsAt(page, 5)[1].x, 11);
    EXPECT_EQ(one(11).text, "1");
    EXPECT_EQ(one(11).x, 11);
    EXPECT_EQ(one(15).text, "2");
    EXPECT_EQ(one(285).text, "Page: 1");
    EXPECT_EQ(page.texts.size(), 6U);
    EXPECT_EQ(page.frames, std::vector<platform::PageFrame>{{}});
}

TEST_F(PrintTextTest, ALongCaptionIsPrintedSmallerAndNothingElse) {
    caption = std::string(300, 'x');
    ASSERT_TRUE(print(tableOf(1)));
    for (const PrintedText& text : document().pages[0].texts) {
        const float width = text.text == caption ? 300 * text.points / 8 : 0;
        EXPECT_EQ(text.points == 8, width == 0) << text.text;
        EXPECT_LE(width, 240);
        EXPECT_TRUE(width == 0 || width >= 230);
    }
    caption.resize(240);
    ASSERT_TRUE(print(tableOf(1)));
    EXPECT_EQ(textsAt(document().pages[0], 0).at(0).points, 8);
}

TEST_F(PrintTextTest, TheHeaderIsRuled) {
    ASSERT_TRUE(print(tableOf(1)));
    using Kind = kvo::testing::SurfaceOperation::Kind;
    std::vector<float> across;
    int down = 0;
    for (const auto& op : document().pages[0].operations) {
        if (op.kind == Kind::scale) {
            EXPECT_EQ(
                std::vector({op.x1, op.y1, op.x2, op.y2}), std::vector({0.F, 0.F, 240.F, 290.F}));
        }
        if (op.kind != Kind::line) continue;
        EXPECT_EQ(op.fontSize, 8);
        if (op.y1 == op.y2) {
            across.push_back(op.y1);
            EXPECT_EQ(op.x1, 0);
            EXPECT_EQ(op.x2, 240);
        } else {
            ++down;
            EXPECT_EQ(op.y1, 4);
            EXPECT_GT(op.y2, printedLineY(68));
            EXPECT_TRUE(op.x1 > 9.5F && op.x1 < 11) << op.x1;
        }
    }
    EXPECT_EQ(across, std::vector({4.F, 9.F, 10.F}));
    EXPECT_EQ(down, 1);
}

TEST_F(PrintTextTest, TheSixtyNinthLineOpensTheNextPage) {
    ASSERT_TRUE(print(tableOf(68)));
    EXPECT_EQ(document().pages.size(), 1U);
    EXPECT_EQ(textsAt(document().pages[0], 279).at(0).text, "68");
    EXPECT_TRUE(progress.asked.empty());
    ASSERT_TRUE(print(tableOf(69)));
    ASSERT_EQ(document().pages.size(), 2U);
    const PrintedPage& page = document().pages[1];
    EXPECT_EQ(page.orientation, Orientation::portrait);
    EXPECT_EQ(textsAt(page, 0).at(0).text, "The caption");
    EXPECT_EQ(textsAt(page, 11).at(0).text, "69");
    EXPECT_EQ(textsAt(page, 285).at(0).text, "Page: 2");
    EXPECT_EQ(page.texts.size(), 5U);
    EXPECT_EQ(progress.asked, (std::vector<std::pair<int, int>>{{1, 2}}));
}

TEST_F(PrintTextTest, ItGoesOnBehindAnotherPage) {
    const auto start = printer.begin({"x", Orientation::landscape});
    ASSERT_TRUE(start.job->newPage(Orientation::portrait));
    ASSERT_TRUE(PrintText(*start.job, "", tableOf(69), progress));
    ASSERT_EQ(document().pages.size(), 3U);
    EXPECT_EQ(textsAt(document().pages[1], 285).at(0).text, "Page: 2");
    EXPECT_EQ(textsAt(document().pages[2], 285).at(0).text, "Page: 3");
    EXPECT_EQ(progress.asked, (std::vector<std::pair<int, int>>{{2, 3}}));
}

TEST_F(PrintTextTest, DigitsAreNarrowedUntilTheWidestCellFits) {
    PrintTable table = tableOf(1);
    ASSERT_TRUE(print(table));
    EXPECT_FLOAT_EQ(textsAt(document().pages[0], 11).at(0).digitWidth, 0.46F);
    table.lines.push_back({{0, "1"}, {1, "12345678901234567890"}}); // 20 wide in the double
    ASSERT_TRUE(print(table));
    for (const PrintedText& text : document().pages[0].texts)
        EXPECT_FLOAT_EQ(text.digitWidth, 0.23F) << text.text;
}

TEST_F(PrintTextTest, AFailureAtAnyPageEndsItThere) {
    for (int page = 1; page <= 4; ++page) {
        printer.failingPage = page;
        const auto result = print(tableOf(3 * 68 + 1));
        EXPECT_EQ(result.outcome, Printed::failed) << page;
        EXPECT_EQ(result.message, "The printer is on fire.");
        EXPECT_EQ(document().state, JobState::failed);
        EXPECT_EQ(document().pages.size(), static_cast<std::size_t>(page));
    }
}

TEST_F(PrintTextTest, TheUserEndsItBetweenPages) {
    progress = StoppingProgress(2);
    EXPECT_EQ(print(tableOf(200)).outcome, Printed::cancelled);
    EXPECT_EQ(document().state, JobState::killed);
    EXPECT_EQ(document().pages.size(), 2U);
}
