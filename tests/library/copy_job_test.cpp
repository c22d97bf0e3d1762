#include "library/copy_job.h"

#include "platform/os/os_files.h"
#include "tests/contract/temporary_folder.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace kvo::library {
namespace {

using core::RunIndexEntry;
using platform::Reply;
using testing::MemoryFiles;
using Failure = MemoryFiles::Failure;

constexpr const char* noRoom = "  Insufficent Room To Copy File  ";
const std::string one = "26111514.52d";
const std::string two = "26111515.10d";
const std::string three = "26111609.01d";

// What the form would show, call by call.
class RecordingCopyView : public CopyView {
public:
    void showDestination(const std::string& folder) override { destination = folder; }
    void moveTo(std::size_t row) override { calls.push_back("row " + std::to_string(row)); }
    void lockControls(bool on) override { calls.emplace_back(on ? "lock" : "unlock"); }
    void showProgress(const std::string& text) override { calls.push_back(text); }
    void hideProgress() override { calls.emplace_back("hide"); }
    void deselect(std::size_t row) override { calls.push_back("off " + std::to_string(row)); }
    std::string destination;
    std::vector<std::string> calls;
};

class CopyJobTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const RunIndexEntry& row : rows) files.put("/kvo/Data/" + row.FileName, {1, 2, 3});
        files.put("/kvo/Data/26111514.52i", {7});
        ASSERT_TRUE(files.makeFolder("/stick"));
    }
    void TearDown() override { EXPECT_EQ(dialogs.problems(), ""); }

    int copy(const std::vector<std::size_t>& selected, const std::string& to = "/stick") {
        return CopyJob("/kvo", files, dialogs, view).copy(rows, selected, to);
    }
    void expectPlain(const std::string& text) { dialogs.expectBox(text, 0, "Kvo"); }
    void expectCount(int count) {
        expectPlain(" " + std::to_string(count) + "        Files Copyed to Disk        ");
    }
    testing::ScriptedDialogs::Expected& expectCreate(const std::string& path, Reply reply) {
        return dialogs.expectBox(
            path + "\r\rDo you wont to create it?", 4, "Path Not Found", reply);
    }
    void expectReplace(Reply reply) { dialogs.expectBoxTitled("File Exists", reply); }

    MemoryFiles files;
    testing::ScriptedDialogs dialogs;
    RecordingCopyView view;
    std::vector<RunIndexEntry> rows{{one, "Sun 15 Nov 2026 Run: 1"},
        {two, "Sun 15 Nov 2026 Run: 2"}, {three, "Mon 16 Nov 2026 Run: 1"}};
};

TEST_F(CopyJobTest, copiesARunAndItsInfoFileAndShowsEachStep) {
    dialogs.expectBox(" 1        Files Copyed to Disk        ", 0, "Kvo").whileShown = [this] {
        EXPECT_FALSE(dialogs.hourglass());
    };
    EXPECT_EQ(copy({0}), 1);
    EXPECT_EQ(files.read("/stick/26111514.52d"), (platform::Bytes{1, 2, 3}));
    EXPECT_EQ(files.read("/stick/26111514.52i"), platform::Bytes{7});
    EXPECT_EQ(view.calls,
        (std::vector<std::string>{"row 0", "lock",
            "      COPYING        26111514.52D   to  /STICK/",
            "      COPYING     26111514.52i  to   /stick/", "off 0", "hide", "unlock"}));
    EXPECT_FALSE(dialogs.hourglass());
}

TEST_F(CopyJobTest, aRunWithoutAnInfoFileIsCopiedWithoutABox) {
    expectCount(1);
    EXPECT_EQ(copy({1}), 1);
    EXPECT_EQ(files.list("/stick"), std::vector<std::string>{two});
}

TEST_F(CopyJobTest, aSeparatorAtTheEndMakesNoDifference) {
    expectCount(2);
    EXPECT_EQ(copy({1, 2}, "/stick/"), 2);
    EXPECT_TRUE(files.exists("/stick/" + two));
    EXPECT_EQ(view.calls[2], "      COPYING        26111515.10D   to  /STICK/");
    EXPECT_EQ(view.destination, "/stick");
    // One is taken off, and no more: what is left is told as it is.
    expectCreate("/new/", Reply::no);
    EXPECT_EQ(copy({1}, "/new//"), 0);
    EXPECT_EQ(withoutFinalSeparator("/", files), "/");
    EXPECT_EQ(withoutFinalSeparator("C:/", files), "C:/");
    EXPECT_EQ(withoutFinalSeparator("/a/", files), "/a");
    EXPECT_EQ(withoutFinalSeparator("/a//", files), "/a/");
    EXPECT_EQ(withoutFinalSeparator("", files), "");
}

TEST_F(CopyJobTest, withoutASelectionNothingIsAskedButThat) {
    dialogs.expectBox("No File's Selected.", 16, "File Error");
    EXPECT_EQ(copy({}, ""), 0);
    EXPECT_TRUE(files.list("/stick").empty());
}

TEST_F(CopyJobTest, withoutADestinationNothingIsCopied) {
    dialogs.expectBox("No Destination Path Entered.", 16, "Error");
    EXPECT_EQ(copy({0}, ""), 0);
    EXPECT_EQ(view.calls, (std::vector<std::string>{"hide", "unlock"}));
}

TEST_F(CopyJobTest, aMissingFolderIsMadeAfterAYes) {
    expectCreate("/stick/new/Runs", Reply::yes);
    expectCount(1);
    EXPECT_EQ(copy({0}, "/stick/new/Runs/"), 1);
    EXPECT_TRUE(files.exists("/stick/new/Runs/" + one));
    EXPECT_TRUE(files.folderExists("/stick/new"));
}

TEST_F(CopyJobTest, theFolderIsMadeBeforeAnythingIsCopied) {
    files.failWrites("/stick/new/" + two, Failure::diskError);
    expectCreate("/stick/new", Reply::yes);
    expectPlain("        Error Copying File       ");
    EXPECT_EQ(copy({1}, "/stick/new/"), 0);
    EXPECT_TRUE(files.folderExists("/stick/new"));
}

TEST_F(CopyJobTest, aNoLeavesTheFormAsItWas) {
    expectCreate("/gone", Reply::no).whileShown = [this] { EXPECT_FALSE(dialogs.hourglass()); };
    EXPECT_EQ(copy({0, 1}, "/gone"), 0);
    EXPECT_EQ(view.calls, (std::vector<std::string>{"hide", "unlock"}));
    EXPECT_FALSE(files.folderExists("/gone"));
}

TEST_F(CopyJobTest, aFolderThatGoesInTheMiddleIsAskedForAndANoEndsWithoutACount) {
    files.failWrites("/stick/" + two, Failure::noFolder);
    expectCreate("/stick", Reply::no);
    EXPECT_EQ(copy({0, 1, 2}), 1);
    EXPECT_FALSE(files.exists("/stick/" + three));
    EXPECT_EQ(view.calls.back(), "unlock");
    // The row it stopped at and those behind it stay selected.
    EXPECT_EQ(std::count(view.calls.begin(), view.calls.end(), "off 1"), 0);
}

// The file that met it is not tried again; what comes behind it finds the folder.
TEST_F(CopyJobTest, aFolderThatGoesInTheMiddleIsMadeAgainAfterAYes) {
    files.put("/kvo/Data/26111515.10i", {8});
    files.failWrites("/stick/" + two, Failure::noFolder, 1);
    expectCreate("/stick", Reply::yes);
    expectCount(2);
    EXPECT_EQ(copy({0, 1, 2}), 2);
    EXPECT_EQ(files.list("/stick"),
        (std::vector<std::string>{"26111514.52d", "26111514.52i", "26111515.10i", three}));
    EXPECT_EQ(std::count(view.calls.begin(), view.calls.end(), "off 1"), 1);
}

TEST_F(CopyJobTest, aFolderThatCannotBeEnteredIsToldByItsKindAndTheJobGoesOn) {
    for (const auto& [how, text] : {std::pair{Failure::notReady, "       Disk Not Ready      "},
             std::pair{Failure::notPermitted, "        Error Copying File       "}}) {
        files.failReads("/stick", how);
        files.allowWrites();
        files.failWrites("/stick", how);
        expectPlain(text); // the folder
        expectPlain(text); // the run; it has no notes
        EXPECT_EQ(copy({1}), 0);
    }
}

TEST_F(CopyJobTest, aFileInThePlaceOfTheFolderIsNoMissingPath) {
    files.put("/list.txt", {1});
    files.failWrites("/list.txt", Failure::diskError);
    expectPlain("        Error Copying File       ");
    expectPlain("        Error Copying File       ");
    EXPECT_EQ(copy({1}, "/list.txt"), 0);
    EXPECT_EQ(files.read("/list.txt"), platform::Bytes{1});
}

TEST_F(CopyJobTest, theRootOfADiskHasItsSeparatorOnce) {
    ASSERT_TRUE(files.makeFolder("/"));
    expectCount(1);
    EXPECT_EQ(copy({1}, "/"), 1);
    EXPECT_EQ(view.calls[2], "      COPYING        26111515.10D   to  /");
    EXPECT_EQ(view.calls[3], "      COPYING     26111515.10i  to   /");
}

TEST_F(CopyJobTest, aFolderThatCannotBeMadeIsAskedForAgain) {
    files.failWrites("/no", Failure::noFolder);
    expectCreate("/no/way", Reply::yes);
    expectCreate("/no/way", Reply::no);
    EXPECT_EQ(copy({0, 1}, "/no/way"), 0);
}

TEST_F(CopyJobTest, aFullDiskGivesABoxAFileAndACountOfThoseThatWent) {
    files.failWrites("/stick/" + one, Failure::fullDisk);
    files.failWrites("/stick/" + three, Failure::fullDisk);
    expectPlain(noRoom);
    expectPlain(noRoom);
    expectCount(1);
    EXPECT_EQ(copy({0, 1, 2}), 1);
    EXPECT_EQ(files.list("/stick"), (std::vector<std::string>{"26111514.52i", two}));
    EXPECT_FALSE(dialogs.hourglass());
}

TEST_F(CopyJobTest, threeFilesOnAFullDiskGiveThreeBoxesAndNoCount) {
    files.failWrites("/stick", Failure::fullDisk);
    ASSERT_TRUE(files.remove("/kvo/Data/26111514.52i"));
    for (int i = 0; i < 3; ++i) expectPlain(noRoom);
    EXPECT_EQ(copy({0, 1, 2}), 0);
    EXPECT_TRUE(files.list("/stick").empty());
}

TEST_F(CopyJobTest, aFailedInfoFileIsToldAndItsRunCounts) {
    files.failWrites("/stick/26111514.52i", Failure::fullDisk);
    expectPlain(noRoom);
    expectCount(1);
    EXPECT_EQ(copy({0}), 1);
}

TEST_F(CopyJobTest, eachKindOfFailureHasItsBox) {
    const std::vector<std::pair<Failure, std::string>> kinds{{Failure::fullDisk, noRoom},
        {Failure::notReady, "       Disk Not Ready      "},
        {Failure::notPermitted, "        Error Copying File       "},
        {Failure::diskError, "        Error Copying File       "}};
    for (const auto& [how, text] : kinds) {
        files.allowWrites();
        files.failWrites("/stick", how);
        expectPlain(text);
        EXPECT_EQ(copy({1}), 0) << text;
    }
    ASSERT_TRUE(files.remove("/kvo/Data/" + two));
    expectPlain("26111515.10d Not Found      ");
    EXPECT_EQ(copy({1}), 0);
    files.failReads("/kvo/Data/" + three, Failure::diskError);
    expectPlain("        Error Copying File       ");
    EXPECT_EQ(copy({2}), 0);
}

TEST_F(CopyJobTest, anInfoFileThatCannotBeReadIsTold) {
    files.failReads("/kvo/Data/26111514.52i", Failure::notReady);
    expectPlain("       Disk Not Ready      ");
    expectCount(1);
    EXPECT_EQ(copy({0}), 1);
}

TEST_F(CopyJobTest, whatIsThereAndTheSameIsNotWrittenAgain) {
    expectCount(1);
    copy({0});
    const int before = files.writes();
    expectCount(1);
    EXPECT_EQ(copy({0}), 1);
    EXPECT_EQ(files.writes(), before);
    // The runs' own folder is such a place for all of them.
    expectCount(3);
    EXPECT_EQ(copy({0, 1, 2}, "/kvo/Data"), 3);
    EXPECT_EQ(files.writes(), before);
}

TEST_F(CopyJobTest, whatIsThereIsAskedForHoweverTheDiskAnswers) {
    files.failQuestions();
    files.put("/stick/" + one, {9});
    dialogs.expectBoxTitled("File Exists", Reply::no);
    EXPECT_EQ(copy({0}), 0);
    EXPECT_EQ(files.read("/stick/" + one), platform::Bytes{9});
}

TEST_F(CopyJobTest, whatIsThereAndDiffersIsReplacedAfterAQuestionOnly) {
    files.put("/stick/" + one, {9});
    files.put("/stick/26111514.52i", {9});
    dialogs.expectBox("/stick/26111514.52d\nis there already, and it is another file.\n\n"
                      "Do you want to replace it?",
        4 + 48 + 256, "File Exists", Reply::no);
    EXPECT_EQ(copy({0}), 0);
    EXPECT_EQ(files.read("/stick/" + one), platform::Bytes{9});
    EXPECT_EQ(files.read("/stick/26111514.52i"), platform::Bytes{9}); // its notes stay with it
    expectReplace(Reply::yes);
    expectReplace(Reply::no);
    expectCount(1);
    EXPECT_EQ(copy({0}), 1);
    EXPECT_EQ(files.read("/stick/" + one), (platform::Bytes{1, 2, 3}));
    EXPECT_EQ(files.read("/stick/26111514.52i"), platform::Bytes{9});
}

TEST_F(CopyJobTest, whatRefusesToBeReplacedIsNotAskedFor) {
    files.put("/stick/" + two, {9});
    files.failWrites("/stick/" + two, Failure::readOnly);
    expectPlain("        Error Copying File       ");
    EXPECT_EQ(copy({1}), 0);
    EXPECT_EQ(files.read("/stick/" + two), platform::Bytes{9});
}

TEST_F(CopyJobTest, aFailureWhileReplacingKeepsTheOldFile) {
    files.put("/stick/" + two, {9});
    files.failWrites("/stick/" + two, Failure::fullDisk);
    expectReplace(Reply::yes);
    expectPlain(noRoom);
    EXPECT_EQ(copy({1}), 0);
    EXPECT_EQ(files.read("/stick/" + two), platform::Bytes{9});
}

TEST_F(CopyJobTest, aRowWithAWholePathCopiesItsRunAndAHostileOneNothing) {
    rows[0].FileName = "C:\\KVO\\Data\\26111515.10d";
    rows[1].FileName = "../Kvo.Cfg";
    rows[2].FileName = "";
    files.put("/kvo/Kvo.Cfg", {5});
    expectPlain("../Kvo.Cfg Not Found      ");
    expectPlain(" Not Found      ");
    expectCount(1);
    EXPECT_EQ(copy({0, 1, 2}), 1);
    EXPECT_EQ(files.list("/stick"), std::vector<std::string>{two});
    EXPECT_EQ(view.calls[2], "      COPYING        C:\\KVO\\DATA\\26111515.10D   to  /STICK/");
}

TEST_F(CopyJobTest, lettersBeyondEnglishAreShownInCapitalsToo) {
    ASSERT_TRUE(files.makeFolder("/J\xC3\xBCrg\xC3\xB7z"));
    expectCount(1);
    EXPECT_EQ(copy({1}, "/J\xC3\xBCrg\xC3\xB7z"), 1);
    EXPECT_EQ(view.calls[2], "      COPYING        26111515.10D   to  /J\xC3\x9CRG\xC3\xB7Z/");
    EXPECT_EQ(view.calls[3], "      COPYING     26111515.10i  to   /J\xC3\xBCrg\xC3\xB7z/");
    EXPECT_TRUE(files.exists("/J\xC3\xBCrg\xC3\xB7z/" + two));
}

TEST_F(CopyJobTest, pathsAreMadeFromTheLeft) {
    EXPECT_TRUE(MakePath("/a/b/c/", files));
    for (const char* folder : {"/a", "/a/b", "/a/b/c"}) EXPECT_TRUE(files.folderExists(folder));
    EXPECT_TRUE(MakePath("/a/b/c", files)); // one that is there is no failure
    EXPECT_TRUE(MakePath("/new", files));
    files.failWrites("/a/x", Failure::notPermitted);
    EXPECT_FALSE(MakePath("/a/x/y", files));
}

// A disk that takes half of a file and is full then.
class HalfADisk : public platform_os::DiskWriter {
public:
    std::int64_t write(int file, std::span<const std::uint8_t> bytes) override {
        errno = ENOSPC;
        if (std::exchange(m_full, true)) return -1;
        return DiskWriter::write(file, bytes.first(bytes.size() / 2));
    }

private:
    bool m_full = false;
};

TEST(CopyJob, leavesNoPartOfAFileOnAFullDisk) {
    testing::TemporaryFolder folder;
    platform_os::OsFiles disk;
    ASSERT_TRUE(disk.makeFolder(folder / "Data"));
    ASSERT_TRUE(disk.makeFolder(folder / "stick"));
    ASSERT_TRUE(disk.write(folder / "Data/26111514.52d", platform::Bytes(5000, 1)));
    HalfADisk half;
    platform_os::OsFiles full(half);
    testing::ScriptedDialogs dialogs;
    RecordingCopyView view;
    dialogs.expectBox(noRoom, 0, "Kvo");
    CopyJob job(folder.path().string(), full, dialogs, view);
    EXPECT_EQ(job.copy({{one, "Sun 15 Nov 2026 Run: 1"}}, {0}, folder / "stick"), 0);
    EXPECT_TRUE(disk.list(folder / "stick").empty());
    EXPECT_EQ(dialogs.problems(), "");
}

} // namespace
} // namespace kvo::library
