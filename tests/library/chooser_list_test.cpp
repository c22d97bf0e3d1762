#include "library/chooser_list.h"

#include "core/run_index.h"
#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::library {
namespace {

using core::RunIndexEntry;

class ChooserList : public ::testing::Test {
protected:
    void SetUp() override {
        rows = {{"26111514.52d", "Sun 15 Nov 2026 Run: 1 First pass"},
            {"26111515.10d", "Sun 15 Nov 2026 Run: 2 Second"},
            {"26111609.01d", "Mon 16 Nov 2026 Run: 1 Third"}};
        ASSERT_TRUE(files.makeFolder("/kvo/Data"));
        ASSERT_TRUE(core::writeRunIndex(folder, rows, files));
        for (const RunIndexEntry& row : rows) {
            putRun(
                row.FileName, "25 VRN23 Ver 1.3 128k Serial No 7  Date:" + row.Description + "#");
        }
    }
    void putRun(const std::string& name, const std::string& line) {
        core::ByteWriter writer;
        core::encodeHeaderLine(writer, line);
        writer.fillTo(core::runRecordWidth);
        writer.text("what follows stays", core::runRecordWidth);
        files.put("/kvo/Data/" + name, writer.take());
    }
    std::vector<RunIndexEntry> onDisk() const {
        return core::readRunIndex(core::indexPath(folder, files), files);
    }
    std::string headerOnDisk(const std::string& name) const {
        const auto file = files.read("/kvo/Data/" + name);
        return file ? core::decodeHeaderLine(core::runRecord(*file, 1)).value_or("?") : "none";
    }

    // The run in the window, where it is this file of the folder.
    static core::OpenRun openOn(const std::string& name) {
        core::OpenRun run;
        run.path = "/kvo/Data/" + name;
        run.headerLine = "as it was";
        return run;
    }

    const std::string folder = "/kvo";
    testing::MemoryFiles files;
    std::vector<RunIndexEntry> rows;
};

TEST_F(ChooserList, fillsFromTheIndexInItsOrder) {
    EXPECT_EQ(core::readOrCreateRunIndex(folder, files).entries, rows);
}

TEST_F(ChooserList, createsAMissingIndexEmpty) {
    testing::MemoryFiles fresh;
    EXPECT_TRUE(core::readOrCreateRunIndex(folder, fresh).entries.empty());
    ASSERT_TRUE(fresh.read("/kvo/Data/KvoData.Ini"));
    EXPECT_TRUE(fresh.read("/kvo/Data/KvoData.Ini")->empty());
}

TEST_F(ChooserList, formsThePathFromTheLastTwelveCharacters) {
    EXPECT_EQ(dataFilePath(folder, "26111514.52d   ", files), "/kvo/Data/26111514.52d");
    EXPECT_EQ(dataFilePath(folder, "xx26111514.52d", files), "/kvo/Data/26111514.52d");
}

// The index is a file's text, the path is the system's own.
TEST_F(ChooserList, namesAFileOnTheDiskInItsOwnLetters) {
    EXPECT_EQ(dataFilePath(folder, "M\xfcller15.52d", files), "/kvo/Data/M\xc3\xbcller15.52d");
}

TEST_F(ChooserList, cutsAPathFirstAndThenLooksAtTheName) {
    for (const char* name : {"C:\\KVO\\Data\\26111514.52d", "/media/stick/Data/26111514.52d   ",
             "../../26111514.52d", "Backup/../26111514.52d"})
        EXPECT_EQ(dataFilePath(folder, name, files), "/kvo/Data/26111514.52d") << name;
}

TEST_F(ChooserList, refusesNamesThatLeaveTheFolder) {
    for (const std::string& name : {std::string("../../Kvo.Cfg"), std::string("..\\Kvo.Cfg"),
             std::string("Data/Kvo.Cfg"), std::string("a\0b", 3), std::string("26111514\n52d"),
             std::string("KVO/COM1.1514.5d"), std::string("26111514.52/"), std::string("   ")})
        EXPECT_EQ(dataFilePath(folder, name, files), "") << name;
    // Cut, this is a name like any other.
    EXPECT_EQ(dataFilePath(folder, "AUX/26111514.52d", files), "/kvo/Data/26111514.52d");
}

TEST_F(ChooserList, opensOnTheLastChoiceElseOnTheNewestRun) {
    EXPECT_EQ(rowToOpenOn(rows, "26111515.10d"), 1u);
    EXPECT_EQ(rowToOpenOn(rows, ""), 2u);
    EXPECT_EQ(rowToOpenOn(rows, "gone"), 2u);
    std::swap(rows[0], rows[2]);
    EXPECT_EQ(rowToOpenOn(rows, ""), 0u);
    EXPECT_EQ(rowToOpenOn({}, "26111515.10d"), std::nullopt);
}

TEST_F(ChooserList, tellsTheCenturyOfTwoDigitYears) {
    const auto newestOf = [](const std::vector<const char*>& names) {
        std::vector<RunIndexEntry> list;
        for (const char* name : names) list.push_back({name, "a run"});
        return *rowToOpenOn(list, "");
    };
    EXPECT_EQ(newestOf({"99123123.59d", "26111514.52d", "00010100.00d"}), 1u);
    EXPECT_EQ(newestOf({"80010100.00d", "79123123.59d"}), 1u);
    EXPECT_EQ(newestOf({"80010100.00d", "99010100.00d", "81010100.00d"}), 1u);
    EXPECT_EQ(newestOf({"D:\\Data\\26111514.51d", "26111514.50d", "D:\\Data\\99111514.52d"}), 0u);
    EXPECT_EQ(newestOf({"", "z", "notes.txt", "80010100.00d"}), 3u);
}

TEST_F(ChooserList, deletesRunInfoAndRowAndKeepsTheOrder) {
    files.put("/kvo/Data/26111515.10i", {1, 2, 3});
    ASSERT_TRUE(DeleteFile(folder, rows, 1, files));
    EXPECT_FALSE(files.exists("/kvo/Data/26111515.10d"));
    EXPECT_FALSE(files.exists("/kvo/Data/26111515.10i"));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].FileName, "26111514.52d");
    EXPECT_EQ(rows[1].FileName, "26111609.01d");
    EXPECT_EQ(onDisk(), rows);
    EXPECT_EQ(files.list("/kvo/Backup").size(), 3u) << "run, info file and the index before";
}

TEST_F(ChooserList, deletingTheLastRunLeavesAnEmptyIndex) {
    while (!rows.empty()) ASSERT_TRUE(DeleteFile(folder, rows, 0, files));
    EXPECT_TRUE(files.read("/kvo/Data/KvoData.Ini")->empty());
}

TEST_F(ChooserList, deletingARowWhoseFileIsGoneTakesTheRowOff) {
    ASSERT_TRUE(files.remove("/kvo/Data/26111515.10d"));
    ASSERT_TRUE(DeleteFile(folder, rows, 1, files));
    EXPECT_EQ(onDisk().size(), 2u);
}

TEST_F(ChooserList, deletingAHostileRowTouchesNoFile) {
    files.put("/kvo/Kvo.Cfg", {1});
    rows[1].FileName = "../Kvo.Cfg";
    ASSERT_TRUE(core::writeRunIndex(folder, rows, files));
    ASSERT_TRUE(DeleteFile(folder, rows, 1, files));
    EXPECT_TRUE(files.exists("/kvo/Kvo.Cfg"));
    EXPECT_EQ(rows.size(), 2u);
}

TEST_F(ChooserList, deletingARowThatHoldsAPathDeletesItsRun) {
    rows[1].FileName = "C:\\KVO\\Data\\26111515.10d";
    ASSERT_TRUE(core::writeRunIndex(folder, rows, files));
    ASSERT_TRUE(DeleteFile(folder, rows, 1, files));
    EXPECT_FALSE(files.exists("/kvo/Data/26111515.10d"));
    EXPECT_EQ(onDisk().size(), 2u);
}

TEST_F(ChooserList, renamingAHostileRowTouchesNoFile) {
    files.put("/kvo/Kvo.Cfg", {1});
    rows[1].FileName = "../Kvo.Cfg";
    ASSERT_TRUE(core::writeRunIndex(folder, rows, files));
    core::OpenRun none; // without a path, as the row is
    const auto result = editDescription(folder, rows, 1, "5 Semi final", none, files);
    EXPECT_EQ(result.message, "The list of runs names no file that can be this run's.");
    EXPECT_EQ(none.headerLine, "");
    EXPECT_EQ(files.read("/kvo/Kvo.Cfg"), platform::Bytes{1});
}

TEST_F(ChooserList, aDeleteThatCannotKeepACopyTakesNothingOff) {
    files.failWrites("/kvo/Backup", testing::MemoryFiles::Failure::fullDisk);
    EXPECT_FALSE(DeleteFile(folder, rows, 1, files));
    EXPECT_EQ(rows.size(), 3u);
    EXPECT_TRUE(files.exists("/kvo/Data/26111515.10d"));
}

// Somebody else has downloaded a run and taken one off since the list was shown.
TEST_F(ChooserList, aDeleteKeepsTheRowsThatItDoesNotKnow) {
    const RunIndexEntry fresh{"26111611.00d", "Mon 16 Nov 2026 Run: 2 From next door"};
    ASSERT_TRUE(core::removeFromIndex(folder, rows[0], files));
    ASSERT_TRUE(core::AddRunToIndex(folder, fresh, core::IndexOrder::asItIs, files));
    const std::vector<RunIndexEntry> left{rows[2], fresh};
    ASSERT_TRUE(DeleteFile(folder, rows, 1, files));
    EXPECT_EQ(onDisk(), left);
}

TEST_F(ChooserList, anEditKeepsTheRowsThatItDoesNotKnow) {
    const RunIndexEntry fresh{"26111611.00d", "Mon 16 Nov 2026 Run: 2 From next door"};
    ASSERT_TRUE(core::AddRunToIndex(folder, fresh, core::IndexOrder::asItIs, files));
    core::OpenRun run = openOn("x");
    ASSERT_TRUE(editDescription(folder, rows, 2, "4 Mine", run, files));
    std::vector<RunIndexEntry> all = rows;
    all.push_back(fresh);
    EXPECT_EQ(onDisk(), all);
}

TEST_F(ChooserList, anEditOfARowThatIsGoneIsRefused) {
    ASSERT_TRUE(core::removeFromIndex(folder, rows[1], files));
    const auto before = rows;
    core::OpenRun run = openOn("x");
    EXPECT_FALSE(editDescription(folder, rows, 1, "4 Mine", run, files));
    EXPECT_EQ(rows, before);
    EXPECT_EQ(onDisk().size(), 2u);
    EXPECT_EQ(headerOnDisk("26111515.10d").find("Mine"), std::string::npos);
}

TEST_F(ChooserList, anIndexThatCannotBeReadNowIsLeftByEveryWriter) {
    const auto index = files.read("/kvo/Data/KvoData.Ini");
    files.failReads("/kvo/Data/KvoData.Ini", testing::MemoryFiles::Failure::diskError);
    core::OpenRun run = openOn("x");
    EXPECT_FALSE(core::AddRunToIndex(folder, rows[0], core::IndexOrder::sorted, files));
    EXPECT_FALSE(DeleteFile(folder, rows, 0, files));
    EXPECT_FALSE(editDescription(folder, rows, 0, "4 Mine", run, files));
    EXPECT_NE(core::readOrCreateRunIndex(folder, files).unread, "");
    files.allowReads();
    EXPECT_EQ(files.read("/kvo/Data/KvoData.Ini"), index);
}

TEST_F(ChooserList, offersThePartBehindTheFirstColon) {
    EXPECT_EQ(editableDescription("Sun 15 Nov 2026 Run: 1 First: pass "), "1 First: pass");
    EXPECT_EQ(editableDescription("no colon"), "no colon");
    EXPECT_EQ(editableDescription(""), "");
}

TEST_F(ChooserList, takesOnlyTextsThatStartWithANumberAboveZero) {
    EXPECT_EQ(changedDescription("Sun 15 Nov 2026 Run: 1 First", "   7 New"),
        "Sun 15 Nov 2026 Run: 7 New");
    EXPECT_EQ(changedDescription("Sun 15 Nov 2026 Run: 1 First", "0 New"), std::nullopt);
    EXPECT_EQ(changedDescription("Sun 15 Nov 2026 Run: 1 First", "New"), std::nullopt);
    EXPECT_EQ(changedDescription("Sun 15 Nov 2026 Run: 1 First", ""), std::nullopt);
    EXPECT_EQ(changedDescription("Run:", "1" + std::string(300, 'x'))->size(), 160u);
}

TEST_F(ChooserList, anEditReachesListIndexAndRunFile) {
    const auto before = *files.read("/kvo/Data/26111515.10d");
    core::OpenRun open = openOn("26111515.10d");
    ASSERT_TRUE(editDescription(folder, rows, 1, " 3 " + std::string(60, 'y'), open, files));
    EXPECT_EQ(rows[1].Description, "Sun 15 Nov 2026 Run: 3 " + std::string(60, 'y'));
    EXPECT_EQ(onDisk(), rows);
    // 41 characters of the new text, then the line is cut to what its record holds.
    const std::string whole = "25 VRN23 Ver 1.3 128k Serial No 7  Date:Sun 15 Nov 2026 Run: 3 " +
                              std::string(39, 'y') + "#";
    EXPECT_EQ(open.headerLine, whole.substr(0, 82));
    EXPECT_EQ(headerOnDisk("26111515.10d"), open.headerLine);
    const auto after = *files.read("/kvo/Data/26111515.10d");
    ASSERT_EQ(after.size(), before.size());
    EXPECT_TRUE(std::equal(after.begin() + 84, after.end(), before.begin() + 84));
}

TEST_F(ChooserList, aShortEditKeepsTheHash) {
    core::OpenRun open = openOn("26111514.52d");
    ASSERT_TRUE(editDescription(folder, rows, 0, "12 Finals", open, files));
    const std::string line =
        "25 VRN23 Ver 1.3 128k Serial No 7  Date:Sun 15 Nov 2026 Run: 12 Finals#";
    EXPECT_EQ(open.headerLine, line);
    EXPECT_EQ(headerOnDisk("26111514.52d"), line);
}

TEST_F(ChooserList, anEditOfAnotherFileLeavesTheLineOfTheOpenRun) {
    core::OpenRun open = openOn("26111514.52d");
    ASSERT_TRUE(editDescription(folder, rows, 1, "12 Finals", open, files));
    EXPECT_EQ(open.headerLine, "as it was");
    EXPECT_EQ(headerOnDisk("26111515.10d"),
        "25 VRN23 Ver 1.3 128k Serial No 7  Date:Sun 15 Nov 2026 Run: 12 Finals#");
}

TEST_F(ChooserList, aRefusedEditChangesNothing) {
    core::OpenRun open = openOn("26111515.10d");
    ASSERT_TRUE(editDescription(folder, rows, 1, "0 nothing", open, files));
    EXPECT_EQ(open.headerLine, "as it was");
    EXPECT_EQ(rows[1].Description, "Sun 15 Nov 2026 Run: 2 Second");
    EXPECT_EQ(headerOnDisk("26111515.10d"),
        "25 VRN23 Ver 1.3 128k Serial No 7  Date:Sun 15 Nov 2026 Run: 2 Second#");
}

TEST_F(ChooserList, aFileWithoutAHeaderLineTakesNoneOfAnotherRun) {
    const platform::Bytes damaged(core::runRecordWidth, 0xFF); // a length past the record
    for (const platform::Bytes& content : {damaged, platform::Bytes{}}) {
        files.put("/kvo/Data/26111515.10d", content);
        core::OpenRun open = openOn("26111515.10d");
        open.headerLine = "32 VRN32 Ver 1.3 128k Serial No 7  Date:Mon Run: 1 Third#";
        const std::string before = open.headerLine;
        const auto result = editDescription(folder, rows, 1, "5 Semi final", open, files);
        EXPECT_FALSE(result);
        EXPECT_EQ(result.message, "/kvo/Data/26111515.10d has no header line.");
        EXPECT_EQ(open.headerLine, before);
        EXPECT_EQ(files.read("/kvo/Data/26111515.10d"), content);
    }
}

TEST_F(ChooserList, anIndexThatCannotBeWrittenLeavesTheRow) {
    files.failWrites("/kvo/Data", testing::MemoryFiles::Failure::readOnly);
    core::OpenRun open = openOn("26111515.10d");
    EXPECT_FALSE(editDescription(folder, rows, 1, "5 New", open, files));
    EXPECT_EQ(open.headerLine, "as it was");
    EXPECT_EQ(rows[1].Description, "Sun 15 Nov 2026 Run: 2 Second");
}

} // namespace
} // namespace kvo::library
