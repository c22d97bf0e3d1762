#include "library/run_facts.h"

#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace kvo::library {
namespace {

using core::RunIndexEntry;
using Rows = std::vector<RunIndexEntry>;
using Numbers = std::vector<int>;

std::string factsName(int i) {
    char name[32];
    std::snprintf(name, sizeof name, "261115%02d.%02dd", i / 60, i % 60);
    return name;
}

class RunFactsTest : public ::testing::Test {
protected:
    void fill(int count) {
        rows.clear();
        for (int i = 0; i < count; ++i) {
            rows.push_back({factsName(i), "Sun 15 Nov 2026 Run: " + std::to_string(i)});
            note(i, "7." + std::to_string(i), "Note " + std::to_string(i));
        }
        facts.setRows(rows, "/kvo");
    }
    void note(int i, const std::string& elapsed, const std::string& notes) {
        core::RunInfo info;
        info.Info_Text = notes;
        info.Text_ET = elapsed;
        info.Text_Mph = " 185.2";
        const std::string run = "/kvo/Data/" + factsName(i);
        core::ByteWriter writer;
        core::encodeHeaderLine(writer, "25 VRN25  Date:Sun 15 Nov 2026 Run: 1#");
        writer.fillTo(core::runRecordWidth);
        files.put(run, writer.take());
        ASSERT_TRUE(core::SaveRunInfo("/kvo", core::infoFilePath(run), run, info, files));
    }
    Numbers read(int count) { return facts.read(count, files); }

    testing::MemoryFiles files;
    Rows rows;
    RunFacts facts;
};

TEST_F(RunFactsTest, ReadsNothingThatNobodyWants) {
    fill(3);
    EXPECT_FALSE(facts.wantsMore());
    EXPECT_EQ(read(10), Numbers{});
    EXPECT_EQ(files.namedReads(), 0);
    EXPECT_EQ(facts.known(0), nullptr);
    EXPECT_FALSE(facts.allRead());
}

TEST_F(RunFactsTest, KnowsARowThatCameIntoView) {
    fill(3);
    facts.want(1);
    EXPECT_TRUE(facts.wantsMore());
    EXPECT_EQ(read(10), Numbers{1});
    EXPECT_FALSE(facts.wantsMore());
    ASSERT_NE(facts.known(1), nullptr);
    EXPECT_EQ(facts.known(1)->Text_ET, "7.1");
    EXPECT_EQ(facts.known(1)->Text_Mph, "185.2");
    EXPECT_EQ(facts.known(1)->notes, "note 1");
    EXPECT_EQ(facts.known(0), nullptr);
    EXPECT_EQ(facts.readCount(), 1);
}

TEST_F(RunFactsTest, ReadsTheRowsSeenLastFirstAndNoneTwice) {
    fill(4);
    for (const int row : {0, 1, 2, 1}) facts.want(row);
    EXPECT_EQ(read(2), (Numbers{2, 1}));
    facts.want(2);
    EXPECT_EQ(read(9), Numbers{0});
    EXPECT_EQ(files.namedReads(), 3);
}

TEST_F(RunFactsTest, ForgetsRowsThatWentByLongAgo) {
    rows.clear();
    for (int i = 0; i < 300; ++i) rows.push_back({factsName(i), "a"});
    facts.setRows(rows, "/kvo");
    for (int i = 0; i < 300; ++i) facts.want(i);
    const Numbers taken = read(1000);
    ASSERT_EQ(taken.size(), 200U);
    EXPECT_EQ(taken.front(), 299);
    EXPECT_EQ(taken.back(), 100);
}

TEST_F(RunFactsTest, ReadsAllRowsBehindThoseInView) {
    fill(4);
    facts.wantAll(true);
    facts.want(2);
    EXPECT_EQ(read(3), (Numbers{2, 0, 1}));
    EXPECT_TRUE(facts.wantsMore());
    EXPECT_EQ(read(3), Numbers{3});
    EXPECT_TRUE(facts.allRead());
    EXPECT_FALSE(facts.wantsMore());
}

TEST_F(RunFactsTest, LeavesTheRestWhereItIsWantedNoMore) {
    fill(4);
    facts.wantAll(true);
    read(1);
    EXPECT_FALSE(facts.wantsRowInView());
    facts.wantAll(false);
    EXPECT_FALSE(facts.wantsMore());
    EXPECT_EQ(read(9), Numbers{});
    facts.want(3);
    EXPECT_TRUE(facts.wantsRowInView());
    facts.wantAll(true);
    EXPECT_EQ(read(9), (Numbers{3, 1, 2}));
}

TEST_F(RunFactsTest, ReadsAFileOfTwoRowsOnce) {
    fill(2);
    rows.push_back(rows[0]);
    facts.setRows(rows, "/kvo");
    facts.wantAll(true);
    EXPECT_EQ(read(9).size(), 3U);
    EXPECT_EQ(files.namedReads(), 2);
    EXPECT_EQ(facts.known(2)->notes, "note 0");
}

TEST_F(RunFactsTest, KeepsWhatItKnowsWhenARowGoes) {
    fill(3);
    facts.wantAll(true);
    read(9);
    rows.erase(rows.begin());
    facts.setRows(rows, "/kvo");
    EXPECT_TRUE(facts.allRead());
    EXPECT_EQ(facts.known(0)->notes, "note 1");
    EXPECT_EQ(facts.known(2), nullptr);
    EXPECT_EQ(files.namedReads(), 3);
}

TEST_F(RunFactsTest, ReadsAnewAfterForgetting) {
    fill(1);
    facts.want(0);
    read(1);
    note(0, "8.00", "New");
    facts.forget();
    EXPECT_EQ(facts.known(0), nullptr);
    EXPECT_EQ(facts.readCount(), 0);
    facts.want(0);
    read(1);
    EXPECT_EQ(facts.known(0)->notes, "new");
}

// Rows without a file, with a damaged one, or with a name that is none.
TEST_F(RunFactsTest, KnowsNothingOfABadFileAndCreatesNone) {
    rows = {{"26111514.00d", "a"}, {"26111514.01d", "b"}, {"../Kvo.Cfg", "c"}, {"", "d"}};
    files.put("/kvo/Data/26111514.01i", {255, 255, 'x'});
    facts.setRows(rows, "/kvo");
    facts.wantAll(true);
    EXPECT_EQ(read(9).size(), 4U);
    for (int row = 0; row < 4; ++row) EXPECT_EQ(facts.known(row)->Text_ET, "") << row;
    EXPECT_EQ(files.writes(), 0);
}

TEST_F(RunFactsTest, RowsThatThereAreNotAreNeverWanted) {
    facts.want(0);
    EXPECT_FALSE(facts.wantsMore());
    fill(1);
    facts.want(-1);
    facts.want(1);
    EXPECT_FALSE(facts.wantsMore());
    EXPECT_EQ(facts.known(-1), nullptr);
}

using Lines = std::vector<std::string>;

TEST(PreviewLines, SayWhatIsKnown) {
    core::RunNotes notes;
    notes.Info_Text = "Slick track \r\nsecond line";
    notes.times = {"1.05", "3.10", "4.95", "142.5", "6.50", " 7.75 "};
    notes.Text_Mph = "181.2";
    EXPECT_EQ(previewLines(notes),
        (Lines{"60 foot: 1.05", "330 foot: 3.10", "660 foot: 4.95 at 142.5", "1000 foot: 6.50",
            "Elapsed time: 7.75 at 181.2", "Notes: Slick track"}));
}

TEST(PreviewLines, LeaveOutWhatIsNotKnown) {
    core::RunNotes notes;
    EXPECT_EQ(previewLines(notes), Lines{"No times and no notes yet."});
    notes.times.Text_660FootSpeed = "142.5";
    notes.times.Text_ET = "7.75";
    EXPECT_EQ(previewLines(notes), (Lines{"660 foot: at 142.5", "Elapsed time: 7.75"}));
    notes.Info_Text = std::string(151, 'a');
    EXPECT_EQ(previewLines(notes).back(), "Notes: " + std::string(150, 'a') + "...");
    notes.Info_Text = std::string(150, 'a');
    EXPECT_EQ(previewLines(notes).back(), "Notes: " + std::string(150, 'a'));
    notes.Info_Text = "\nsecond";
    EXPECT_EQ(previewLines(notes).size(), 2U);
}

} // namespace
} // namespace kvo::library
