#include "library/run_list.h"

#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::library {
namespace {

using core::RunIndexEntry;

const std::string first = "26111514.52d";
const std::string second = "26111515.10d";
const std::string newest = "26111609.01d";

class RunListTest : public ::testing::Test {
protected:
    void SetUp() override {
        write({{newest, "Mon 16 Nov 2026 Run: 1 Third"}, {first, "Sun 15 Nov 2026 Run: 1 First"},
            {second, "Sun 15 Nov 2026 Run: 2 Second"}});
        list.read("/kvo", files);
    }
    void write(const std::vector<RunIndexEntry>& rows) {
        ASSERT_TRUE(files.makeFolder("/kvo/Data"));
        ASSERT_TRUE(core::writeRunIndex("/kvo", rows, files));
        for (const RunIndexEntry& row : rows) {
            core::ByteWriter writer;
            core::encodeHeaderLine(writer, "25 VRN25  Date:" + row.Description + "#");
            writer.fillTo(core::runRecordWidth);
            files.put("/kvo/Data/" + row.FileName, writer.take());
        }
    }
    // Puts a run in front of all others, as an import that sorts the index does.
    void importRun() {
        auto rows = list.rows();
        rows.insert(rows.begin(), {"26111710.00d", "Tue 17 Nov 2026 Run: 1 Imported"});
        write(rows);
    }
    std::size_t rowsOnDisk() const {
        return core::readRunIndex(core::indexPath("/kvo", files), files).size();
    }

    testing::MemoryFiles files;
    RunList list;
};

TEST_F(RunListTest, opensOnTheNewestRun) {
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.chosenRow(), 0);
    EXPECT_EQ(list.chosen(), (RunIndexEntry{newest, "Mon 16 Nov 2026 Run: 1 Third"}));
}

TEST_F(RunListTest, aMissingIndexIsAnEmptyListWithoutAChoice) {
    testing::MemoryFiles fresh;
    RunList empty;
    empty.read("/kvo", fresh);
    EXPECT_EQ(empty.rowCount(), 0);
    EXPECT_EQ(empty.chosenRow(), -1);
    EXPECT_EQ(empty.chosen(), RunIndexEntry{});
    EXPECT_TRUE(fresh.exists("/kvo/Data/KvoData.Ini"));
    EXPECT_FALSE(empty.canStep(1));
    EXPECT_FALSE(empty.canStep(0));
}

TEST_F(RunListTest, theChoiceStaysOnItsRunWhenTheIndexIsReadAgain) {
    list.choose(1);
    importRun();
    list.read("/kvo", files);
    EXPECT_EQ(list.rowCount(), 4);
    EXPECT_EQ(list.chosenRow(), 2);
    EXPECT_EQ(list.chosen().FileName, first);
}

TEST_F(RunListTest, theChoiceThatIsNotTakenStaysToo) {
    list.choose(2);
    list.take();
    list.choose(1);
    list.read("/kvo", files);
    EXPECT_EQ(list.chosen().FileName, first);
}

TEST_F(RunListTest, withoutAChoiceItOpensOnTheRunThatWasTakenLast) {
    list.choose(2);
    list.take();
    list.choose(-1);
    importRun();
    list.read("/kvo", files);
    EXPECT_EQ(list.chosen().FileName, second);
}

TEST_F(RunListTest, aRunThatIsGoneGivesTheChoiceToTheNewest) {
    list.choose(1);
    list.take();
    write({{second, "Sun 15 Nov 2026 Run: 2 Second"}, {newest, "Mon 16 Nov 2026 Run: 1 Third"}});
    list.read("/kvo", files);
    EXPECT_EQ(list.chosenRow(), 1);
    EXPECT_EQ(list.chosen().FileName, newest);
}

TEST_F(RunListTest, theFileOfADownloadBecomesTheChoice) {
    list.choose(1);
    const RunIndexEntry fresh{"26111600.00d", "Mon 16 Nov 2026 Run: 2 Fresh"};
    ASSERT_TRUE(core::AddRunToIndex("/kvo", fresh, core::IndexOrder::asItIs, files));
    list.read("/kvo", files);
    list.chooseFile(fresh.FileName);
    EXPECT_EQ(list.chosenRow(), 3);
    EXPECT_EQ(list.chosen(), fresh);
    list.read("/kvo", files);
    EXPECT_EQ(list.chosen(), fresh);
}

TEST_F(RunListTest, aFileThatIsNotListedLeavesTheChoice) {
    list.choose(1);
    list.chooseFile("26010101.01d");
    EXPECT_EQ(list.chosenRow(), 1);
    list.chooseFile("");
    EXPECT_EQ(list.chosenRow(), 1);
}

TEST_F(RunListTest, anyNumberThatIsNoRowIsNoChoice) {
    for (const int row : {-1, -7, 3, 1000}) {
        list.choose(1);
        list.choose(row);
        EXPECT_EQ(list.chosenRow(), -1) << row;
        EXPECT_EQ(list.chosen(), RunIndexEntry{}) << row;
    }
}

TEST_F(RunListTest, stepsToBothEndsAndNoFurther) {
    list.choose(0);
    EXPECT_FALSE(list.canStep(-1));
    list.step(-1);
    EXPECT_EQ(list.chosenRow(), 0);
    EXPECT_TRUE(list.canStep(1));
    list.step(1);
    list.step(1);
    EXPECT_EQ(list.chosenRow(), 2);
    EXPECT_FALSE(list.canStep(1));
    list.step(1);
    EXPECT_EQ(list.chosenRow(), 2);
    EXPECT_TRUE(list.canStep(-2));
    EXPECT_FALSE(list.canStep(-3));
    list.step(-2);
    EXPECT_EQ(list.chosenRow(), 0);
}

TEST_F(RunListTest, withoutAChoiceThereIsNoStep) {
    list.choose(-1);
    for (const int rows : {-1, 1, 2}) {
        EXPECT_FALSE(list.canStep(rows));
        list.step(rows);
        EXPECT_EQ(list.chosenRow(), -1);
    }
}

TEST_F(RunListTest, givesTheChoiceWithThePathsOfItsFiles) {
    list.choose(2);
    const core::ChosenRun chosen = list.chosenRun("/kvo", files);
    EXPECT_EQ(chosen.path, "/kvo/Data/26111515.10d");
    EXPECT_EQ(chosen.infoPath, "/kvo/Data/26111515.10i");
    EXPECT_EQ(chosen.fileName, second);
    EXPECT_EQ(chosen.description, "Sun 15 Nov 2026 Run: 2 Second");
}

TEST_F(RunListTest, aDeleteLeavesNoChoice) {
    files.put("/kvo/Data/26111514.52i", {1});
    list.choose(1);
    ASSERT_TRUE(list.deleteChosen("/kvo", files));
    EXPECT_EQ(list.rowCount(), 2);
    EXPECT_EQ(list.chosenRow(), -1);
    EXPECT_EQ(rowsOnDisk(), 2U);
    EXPECT_FALSE(files.exists("/kvo/Data/26111514.52d"));
    EXPECT_FALSE(files.exists("/kvo/Data/26111514.52i"));
    ASSERT_TRUE(list.deleteChosen("/kvo", files)) << "without a choice it deletes none";
    EXPECT_EQ(rowsOnDisk(), 2U);
}

TEST_F(RunListTest, aListThatThereIsNoMemoryForStaysAsItWas) {
    list.choose(1);
    files.failReads("/kvo/Data/KvoData.Ini", testing::MemoryFiles::Failure::noMemory);
    EXPECT_EQ(list.read("/kvo", files), "Not enough memory to read the list of runs.");
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.chosenRow(), 1);
}

TEST_F(RunListTest, aDeleteThatFailsKeepsTheRowAndTheChoice) {
    list.choose(1);
    files.failWrites("/kvo/Backup", testing::MemoryFiles::Failure::fullDisk);
    EXPECT_FALSE(list.deleteChosen("/kvo", files));
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.chosenRow(), 1);
    EXPECT_TRUE(files.exists("/kvo/Data/26111514.52d"));
}

TEST_F(RunListTest, aNewTextReachesTheOpenRunWhereItIsTheSameFile) {
    core::OpenRun open;
    open.path = "/kvo/Data/26111514.52d";
    open.headerLine = "before";
    list.choose(1);
    ASSERT_TRUE(list.renameChosen("/kvo", "7 Finals", open, files));
    EXPECT_EQ(list.chosen().Description, "Sun 15 Nov 2026 Run: 7 Finals");
    EXPECT_EQ(list.chosenRow(), 1);
    EXPECT_EQ(open.headerLine, "25 VRN25  Date:Sun 15 Nov 2026 Run: 7 Finals#");
    const auto file = files.read(open.path).value();
    EXPECT_EQ(core::decodeHeaderLine(core::runRecord(file, 1)), open.headerLine);
}

TEST_F(RunListTest, aNewTextOfAnotherFileLeavesTheOpenRun) {
    core::OpenRun open;
    open.path = "/kvo/Data/26111514.52d";
    open.headerLine = "before";
    list.choose(2);
    ASSERT_TRUE(list.renameChosen("/kvo", "7 Finals", open, files));
    EXPECT_EQ(list.chosen().Description, "Sun 15 Nov 2026 Run: 7 Finals");
    EXPECT_EQ(open.headerLine, "before");
    list.choose(-1);
    ASSERT_TRUE(list.renameChosen("/kvo", "8 None", open, files)) << "no choice, no new text";
    EXPECT_EQ(list.rows()[2].Description, "Sun 15 Nov 2026 Run: 7 Finals");
}

} // namespace
} // namespace kvo::library
