#include "library/found_runs.h"

#include "core/run_info.h"
#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::library {
namespace {

using core::RunIndexEntry;
using Numbers = std::vector<int>;

class FoundRunsTest : public ::testing::Test {
protected:
    void SetUp() override {
        rows = {{"26111609.01d", "Mon 16 Nov 2026 Run: 1 Final"},
            {"26111514.52d", "Sun 15 Nov 2026 Run: 1 First pass"},
            {"25111515.10d", "Sat 15 Nov 2025 Run: 10 Semi FINAL"},
            {"26111515.10d", "Sun 15 Nov 2026 Run: 9 Second"}, {"older.d", "no date"}};
        note(0, "7.90", "170", "cold");
        note(1, "", "", "spun at the FINAL tree");
        note(2, "10.2", "99.5", "");
        note(3, "7.10", "", "cold track");
        take();
    }
    void note(std::size_t row, const std::string& elapsed, const std::string& speed,
        const std::string& notes) {
        core::RunInfo info;
        info.Info_Text = notes;
        info.Text_ET = elapsed;
        info.Text_Mph = speed;
        const std::string run = "/kvo/Data/" + rows[row].FileName;
        core::ByteWriter writer;
        core::encodeHeaderLine(writer, "25 VRN25  Date:" + rows[row].Description + "#");
        writer.fillTo(core::runRecordWidth);
        files.put(run, writer.take());
        ASSERT_TRUE(core::SaveRunInfo("/kvo", core::infoFilePath(run), run, info, files));
    }
    void take() {
        facts.setRows(rows, "/kvo");
        found.setRows(rows);
    }
    void readAll() {
        facts.wantAll(true);
        facts.read(100, files);
    }
    Numbers shown() const {
        Numbers all;
        for (int place = 0; place < found.count(); ++place) all.push_back(found.rowAt(place));
        return all;
    }
    Numbers filtered(const char* line) {
        found.filterBy(line);
        return shown();
    }
    Numbers sorted(RunOrder order) {
        found.sortBy(order);
        return shown();
    }

    testing::MemoryFiles files;
    std::vector<RunIndexEntry> rows;
    RunFacts facts;
    FoundRuns found{facts};
};

const Numbers asListed{0, 1, 2, 3, 4};

TEST_F(FoundRunsTest, ShowsTheListAsItIsAtFirst) {
    EXPECT_EQ(shown(), asListed);
    EXPECT_FALSE(found.isFiltered());
    EXPECT_FALSE(found.needsFacts());
    EXPECT_EQ(found.placeOf(3), 3);
    EXPECT_EQ(found.placeOf(5), -1);
    EXPECT_EQ(found.placeOf(-1), -1);
    EXPECT_EQ(found.rowAt(-1), -1);
    EXPECT_EQ(found.rowAt(5), -1);
    EXPECT_EQ(found.summary(), "5 runs");
}

TEST_F(FoundRunsTest, WithoutAListThereIsNothing) {
    const RunFacts noFacts;
    FoundRuns none(noFacts);
    EXPECT_EQ(none.count(), 0);
    none.filterBy("a");
    none.sortBy(RunOrder::newestFirst);
    EXPECT_EQ(none.count(), 0);
    EXPECT_EQ(none.rowAt(0), -1);
    EXPECT_EQ(none.findTyped(0, "a"), std::nullopt);
    EXPECT_EQ(none.summary(), "0 of 0 runs");
}

TEST_F(FoundRunsTest, FindsEachWordInTitleAndDate) {
    EXPECT_EQ(filtered("final"), (Numbers{0, 2}));
    EXPECT_EQ(filtered("final 2026"), Numbers{0});
    EXPECT_EQ(filtered("2026 FINAL nov"), Numbers{0});
    EXPECT_EQ(filtered("final second"), Numbers{});
    EXPECT_EQ(filtered("  "), asListed);
    EXPECT_TRUE(found.summary() == "5 runs") << found.summary();
}

// Two descriptions side by side are no text.
TEST_F(FoundRunsTest, FindsNoWordAcrossTwoRows) {
    EXPECT_EQ(filtered("finalsun"), Numbers{});
}

TEST_F(FoundRunsTest, FindsWordsInNotesOnceTheyAreRead) {
    EXPECT_EQ(filtered("final"), (Numbers{0, 2}));
    EXPECT_TRUE(found.needsFacts());
    readAll();
    EXPECT_EQ(shown(), (Numbers{0, 2})); // the view decides when rows come
    EXPECT_TRUE(found.refresh());
    EXPECT_EQ(shown(), (Numbers{0, 1, 2}));
    EXPECT_FALSE(found.refresh());
    // One word in the title, the other in the notes.
    EXPECT_EQ(filtered("cold second"), Numbers{3});
    EXPECT_EQ(filtered("cold"), (Numbers{0, 3}));
}

// What a longer line looks among must have the rows whose notes came since.
TEST_F(FoundRunsTest, ALongerLineFindsWhatWasReadSince) {
    EXPECT_EQ(filtered("col"), Numbers{});
    readAll();
    EXPECT_EQ(filtered("cold"), (Numbers{0, 3}));
    EXPECT_EQ(filtered("cold tr"), Numbers{3});
    EXPECT_EQ(filtered("cold"), (Numbers{0, 3}));
}

TEST_F(FoundRunsTest, TypingLetterByLetterFindsWhatTheWholeLineDoes) {
    readAll();
    const std::string line = "nov 15 FIN";
    for (std::size_t length = 1; length <= line.size(); ++length)
        found.filterBy(line.substr(0, length));
    const Numbers typed = shown();
    FoundRuns whole(facts);
    whole.setRows(rows);
    whole.filterBy(line);
    EXPECT_EQ(typed, (Numbers{1, 2}));
    EXPECT_EQ(whole.count(), 2);
}

TEST_F(FoundRunsTest, SortsByDayAndNumberWithTheYear) {
    EXPECT_EQ(sorted(RunOrder::newestFirst), (Numbers{0, 3, 1, 2, 4}));
    EXPECT_FALSE(found.needsFacts());
    EXPECT_EQ(sorted(RunOrder::oldestFirst), (Numbers{2, 1, 3, 0, 4}));
    EXPECT_EQ(found.placeOf(3), 2);
    EXPECT_EQ(sorted(RunOrder::asListed), asListed);
}

TEST_F(FoundRunsTest, SortsByWhatIsKnownAndLeavesTheRestBehind) {
    EXPECT_EQ(sorted(RunOrder::shortestTime), asListed);
    EXPECT_TRUE(found.needsFacts());
    readAll();
    EXPECT_TRUE(found.refresh());
    EXPECT_EQ(shown(), (Numbers{3, 0, 2, 1, 4}));
    EXPECT_EQ(sorted(RunOrder::longestTime), (Numbers{2, 0, 3, 1, 4}));
    EXPECT_EQ(sorted(RunOrder::highestSpeed), (Numbers{0, 2, 1, 3, 4}));
    EXPECT_EQ(sorted(RunOrder::lowestSpeed), (Numbers{2, 0, 1, 3, 4}));
}

TEST_F(FoundRunsTest, AFilterKeepsTheOrder) {
    found.sortBy(RunOrder::oldestFirst);
    EXPECT_EQ(filtered("nov"), (Numbers{2, 1, 3, 0}));
    EXPECT_EQ(filtered("nov 2026"), (Numbers{1, 3, 0}));
    EXPECT_EQ(found.placeOf(0), 2);
    EXPECT_EQ(found.placeOf(2), -1);
    EXPECT_EQ(sorted(RunOrder::newestFirst), (Numbers{0, 3, 1}));
    EXPECT_EQ(filtered(""), (Numbers{0, 3, 1, 2, 4}));
}

TEST_F(FoundRunsTest, TakesAChangedListUnderFilterAndOrder) {
    found.sortBy(RunOrder::newestFirst);
    found.filterBy("final");
    rows.erase(rows.begin());
    rows[0].Description = "Sun 15 Nov 2026 Run: 1 Final too";
    take();
    EXPECT_EQ(shown(), (Numbers{0, 1}));
}

TEST_F(FoundRunsTest, FindsTypedTextAnywhereAndWraps) {
    EXPECT_EQ(found.findTyped(0, "SECOND"), 3);
    EXPECT_EQ(found.findTyped(4, "second"), 3);
    EXPECT_EQ(found.findTyped(1, "run: 1 fi"), 1);
    EXPECT_EQ(found.findTyped(2, "run: 1 fi"), 0);
    EXPECT_EQ(found.findTyped(0, "fourth"), std::nullopt);
    EXPECT_EQ(found.findTyped(0, ""), std::nullopt);
}

TEST_F(FoundRunsTest, FindsTypedTextAmongWhatItShows) {
    found.sortBy(RunOrder::oldestFirst);
    found.filterBy("2026");
    EXPECT_EQ(found.findTyped(0, "semi"), std::nullopt);
    EXPECT_EQ(found.findTyped(0, "final"), 2);
}

TEST_F(FoundRunsTest, SaysHowManyItShowsAndHowFarItHasRead) {
    found.filterBy("final");
    EXPECT_EQ(found.summary(), "2 of 5 runs; notes and times read: 0");
    facts.wantAll(true);
    facts.read(2, files);
    EXPECT_EQ(found.summary(), "2 of 5 runs; notes and times read: 2");
    facts.read(9, files);
    EXPECT_EQ(found.summary(), "2 of 5 runs");
    rows.resize(1);
    take();
    found.filterBy("");
    EXPECT_EQ(found.summary(), "1 run");
}

TEST(DayAndNumber, TellsEachDayFromTheNext) {
    const auto earlier = [](const char* a, const char* b) {
        return dayAndNumber(a) < dayAndNumber(b);
    };
    EXPECT_TRUE(earlier("Sat 31 Jan 2026 Run: 1", "Sun 01 Feb 2026 Run: 1"));
    EXPECT_TRUE(earlier("Thu 31 Dec 2026 Run: 1", "Fri 01 Jan 2027 Run: 1"));
    EXPECT_TRUE(earlier("Sun 15 Nov 2026 Run: 9", "Sun 15 Nov 2026 Run: 10 a"));
    EXPECT_TRUE(earlier("Sun 15 Nov 2026 Run: 123456", "Mon 16 Nov 2026 Run: 1"));
    EXPECT_EQ(dayAndNumber("Sun 15 Nov 2026"), 20261115000);
    EXPECT_EQ(dayAndNumber("Sun 15 Nov 2026 Run: -4"), 20261115000);
    for (const char* none :
        {"", "Sun", "Sun 15 Nov 202", "Sun 15 Foo 2026", "Sun x5 Nov 2026", "Sun 15 Nov 2o26"})
        EXPECT_EQ(dayAndNumber(none), 0) << none;
}

TEST(RunOrders, GoRoundWithClicksOnAHeading) {
    using enum RunOrder;
    EXPECT_EQ(orderAfterClick(RunColumn::run, asListed), newestFirst);
    EXPECT_EQ(orderAfterClick(RunColumn::run, newestFirst), oldestFirst);
    EXPECT_EQ(orderAfterClick(RunColumn::run, oldestFirst), asListed);
    EXPECT_EQ(orderAfterClick(RunColumn::elapsedTime, oldestFirst), shortestTime);
    EXPECT_EQ(orderAfterClick(RunColumn::elapsedTime, shortestTime), longestTime);
    EXPECT_EQ(orderAfterClick(RunColumn::speed, longestTime), highestSpeed);
    EXPECT_EQ(orderAfterClick(RunColumn::speed, highestSpeed), lowestSpeed);
    EXPECT_EQ(orderAfterClick(RunColumn::speed, lowestSpeed), asListed);
}

TEST(RunOrders, SayTheirColumnAndTheirWay) {
    EXPECT_FALSE(orderMark(RunOrder::asListed));
    EXPECT_EQ(orderMark(RunOrder::newestFirst)->column, RunColumn::run);
    EXPECT_TRUE(orderMark(RunOrder::newestFirst)->falls);
    EXPECT_EQ(orderMark(RunOrder::shortestTime)->column, RunColumn::elapsedTime);
    EXPECT_FALSE(orderMark(RunOrder::shortestTime)->falls);
    EXPECT_STREQ(runOrderCaption(RunOrder::asListed), "As in the list");
    EXPECT_STREQ(runOrderCaption(RunOrder::lowestSpeed), "Lowest speed first");
}

} // namespace
} // namespace kvo::library
