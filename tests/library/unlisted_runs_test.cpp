#include "library/unlisted_runs.h"

#include "core/run_records.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace kvo::library {
namespace {

using core::RunIndexEntry;
using platform::Reply;
using testing::MemoryFiles;
using Rows = std::vector<RunIndexEntry>;

constexpr int yesNoQuestion = 4 + 32;

// A file of a run whose header line is `line`, with room for so many records.
platform::Bytes fileOfRun(const std::string& line, std::size_t records) {
    core::ByteWriter writer;
    core::encodeHeaderLine(writer, line);
    writer.fillTo(records * core::runRecordWidth);
    return writer.take();
}

platform::Bytes runOf25(const std::string& text = " Date:Sun 15 Nov 2026 Run: 1 Final#") {
    return fileOfRun("25 VRN5 Ver 1.4 128k Serial No 1225" + text, 1217);
}

class UnlistedRuns : public ::testing::Test {
protected:
    void put(const std::string& name, platform::Bytes content = runOf25()) {
        files.put("/kvo/Data/" + name, std::move(content));
    }
    Rows found() const { return unlistedRuns("/kvo", files); }
    Rows listed() const { return core::readRunIndex("/kvo/Data/KvoData.Ini", files); }
    void list(const Rows& rows) { ASSERT_TRUE(core::writeRunIndex("/kvo", rows, files)); }
    void offer() { offerUnlistedRuns("/kvo", files, dialogs); }

    MemoryFiles files;
    testing::ScriptedDialogs dialogs;
};

TEST_F(UnlistedRuns, ARunThatNoRowNamesIsFoundAsItsFileSays) {
    put("26111514.52d");
    put("26111515.10d");
    list({{"26111514.52d", "another text"}});
    EXPECT_EQ(found(), (Rows{{"26111515.10d", "Sun 15 Nov 2026 Run: 1 Final"}}));
}

TEST_F(UnlistedRuns, AFolderWithoutAnIndexGivesAllInTheOrderOfTheirNames) {
    put("26111515.10d");
    put("26111514.52D");
    EXPECT_EQ(found(), (Rows{{"26111514.52D", "Sun 15 Nov 2026 Run: 1 Final"},
                           {"26111515.10d", "Sun 15 Nov 2026 Run: 1 Final"}}));
    EXPECT_FALSE(files.exists("/kvo/Data/KvoData.Ini"));
}

TEST_F(UnlistedRuns, ARowMayNameARunInAnotherCaseOrWithItsPath) {
    put("26111514.52D");
    put("26111515.10d");
    list({{"26111514.52d", "a"}, {"C:\\KVO\\DATA\\26111515.10D", "b"}});
    EXPECT_EQ(found(), Rows{});
}

TEST_F(UnlistedRuns, WhatIsNoRunIsNotFound) {
    put("26111514.52i");
    put("26111514.52");
    put("261115140.52d");
    put("26111514x52d");
    put("26111 14.52d");
    put("2611151\xC3\xA4.2d");
    put("..111514.52d");
    put("26111514.53d", {});
    put("26111514.54d", fileOfRun("26 VRN", 3000));         // no data type
    put("26111514.55d", fileOfRun("29 VRN Date:x#", 2520)); // one that nothing reads
    put("26111514.56d", fileOfRun("25 VRN Date:x#", 1216)); // cut short
    put("26111514.57d", fileOfRun("25 VRN Date:x#", 2526)); // longer than any run
    EXPECT_EQ(found(), Rows{});
}

TEST_F(UnlistedRuns, TheLengthIsThatOfItsTypeOrMore) {
    put("26111500.01d", fileOfRun("23 VRN old program Date:Sun 15 Nov 2026 Run: 3#", 1217));
    put("26111500.02d", fileOfRun("8 VRN1 Date:Sun 15 Nov 2026 Run: 4#", 2524));
    put("26111500.03d", fileOfRun("25 VRN5 Date:Sun 15 Nov 2026 Run: 5#", 2525));
    put("26111500.04d", fileOfRun("8 VRN1 Date:Sun 15 Nov 2026 Run: 4#", 2523));
    ASSERT_EQ(found().size(), 3U);
    EXPECT_EQ(found()[2].Description, "Sun 15 Nov 2026 Run: 5");
}

TEST_F(UnlistedRuns, ARunThatSaysNothingOfItselfIsDescribedByItsName) {
    put("26111514.52d", runOf25(""));
    put("99022514.52d", runOf25(" Date:#"));
    put("abcdefgh.ijd", runOf25(""));
    EXPECT_EQ(found(), (Rows{{"26111514.52d", "Sun 15 Nov 2026 Run: 1 26111514.52d"},
                           {"99022514.52d", "Thu 25 Feb 1999 Run: 1 99022514.52d"},
                           {"abcdefgh.ijd", "Run: 1 abcdefgh.ijd"}}));
}

TEST_F(UnlistedRuns, NothingIsFoundWhereTheListCannotBeReadOrWritten) {
    put("26111514.52d");
    list({});
    files.failReads("/kvo/Data/KvoData.Ini", MemoryFiles::Failure::diskError);
    EXPECT_EQ(found(), Rows{});
    files.allowReads();
    files.failWrites("/kvo", MemoryFiles::Failure::notPermitted);
    EXPECT_EQ(found(), Rows{});
    files.allowWrites();
    files.failWrites("/kvo/Data/KvoData.Ini", MemoryFiles::Failure::readOnly);
    EXPECT_EQ(found(), Rows{});
    files.allowWrites();
    EXPECT_EQ(found().size(), 1U);
}

TEST_F(UnlistedRuns, ARunThatCannotBeReadAndALinkThatLeadsAwayAreLeftOut) {
    put("26111514.52d");
    put("26111514.53d");
    files.failReads("/kvo/Data/26111514.52d", MemoryFiles::Failure::notPermitted);
    files.leadAway("/kvo/Data/26111514.53d");
    EXPECT_EQ(found(), Rows{});
}

TEST_F(UnlistedRuns, YesPutsThemAtTheEndOfTheListAsItIs) {
    list({{"26111513.00d", "Sun 15 Nov 2026 Run: 9"}, {"26111512.00d", "Sun 15 Nov 2026 Run: 2"}});
    put("26111514.52d");
    dialogs.expectBox("A run lies in the Data folder that is not in the list:\n\n"
                      "26111514.52d   Sun 15 Nov 2026 Run: 1 Final\n\n"
                      "Do you want to add it to the list?",
        yesNoQuestion, "Runs Not Listed", Reply::yes);
    offer();
    ASSERT_EQ(listed().size(), 3U);
    EXPECT_EQ(listed()[2].FileName, "26111514.52d");
    EXPECT_EQ(listed()[0].FileName, "26111513.00d");
    offer(); // asks for nothing any more
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(UnlistedRuns, NoLeavesTheListAsItIs) {
    put("26111514.52d");
    dialogs.expectBoxTitled("Runs Not Listed", Reply::no);
    offer();
    EXPECT_EQ(files.writes(), 0);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(UnlistedRuns, NothingIsAskedWhereAllAreListed) {
    put("26111514.52d");
    list({{"26111514.52d", "Sun 15 Nov 2026 Run: 1"}});
    offer();
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(UnlistedRuns, OfManyTheFirstTenAreNamed) {
    Rows runs;
    for (int i = 10; i <= 21; ++i)
        runs.push_back({"261115" + std::to_string(i) + ".00d", "M\xFCnchen"});
    const std::string text = unlistedRunsText(runs);
    EXPECT_EQ(
        text.find("12 runs lie in the Data folder that are not in the list:\n\n26111510.00d"), 0U);
    EXPECT_NE(text.find("\n26111519.00d   M\xC3\xBCnchen\nand 2 more\n\nDo you want to add them"),
        std::string::npos)
        << text;
    EXPECT_EQ(text.find("26111520"), std::string::npos);
    runs.resize(10);
    EXPECT_EQ(unlistedRunsText(runs).find("more"), std::string::npos);
}

TEST_F(UnlistedRuns, AListThatTheDiskRefusesIsTold) {
    put("26111514.52d");
    files.failWrites("/kvo/Data/KvoData.Ini", MemoryFiles::Failure::fullDisk);
    dialogs.expectBoxTitled("Runs Not Listed", Reply::yes);
    dialogs.expectBoxTitled("Run index").contains = "No space left";
    offer();
    EXPECT_EQ(dialogs.problems(), "");
}

} // namespace
} // namespace kvo::library
