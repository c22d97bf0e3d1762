#include "core/backup.h"
#include "core/paths.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

using platform::Bytes;
using testing::MemoryFiles;

constexpr const char* folder = "/kvo";
constexpr const char* run = "/kvo/Data/26111514.52d";

TEST(Backup, KeepsEveryStateThatIsReplaced) {
    MemoryFiles files;
    for (const Bytes& state : {Bytes{1}, Bytes{2}, Bytes{3}}) {
        ASSERT_TRUE(replaceKept(folder, run, state, files));
    }
    EXPECT_EQ(files.read(run), Bytes{3});
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0001"), Bytes{1});
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0002"), Bytes{2});
    EXPECT_FALSE(files.exists("/kvo/Backup/26111514.52d.0003"));
}

TEST(Backup, KeepsNothingOfAFileThatIsOnlyContinued) {
    MemoryFiles files;
    files.put(run, {1, 2});
    ASSERT_TRUE(replaceKept(folder, run, Bytes{1, 2, 3}, files));
    ASSERT_TRUE(replaceKept(folder, run, Bytes{1, 2, 3}, files));
    EXPECT_TRUE(files.list("/kvo/Backup").empty());
}

// A disk that counts how often it is asked for the run.
class CountingFiles : public MemoryFiles {
public:
    platform::ReadResult readOrReason(const std::string& path) const override {
        reads += path == run ? 1 : 0;
        return MemoryFiles::readOrReason(path);
    }
    mutable int reads = 0;
};

TEST(Backup, LeavesWhatLiesBehindTheNewBeginning) {
    CountingFiles files;
    files.put(run, {1, 2, 3, 4});
    ASSERT_TRUE(replaceBeginningKept(folder, run, Bytes{1, 9}, files));
    EXPECT_EQ(files.reads, 1) << "the old file holds both the rest and what is kept";
    EXPECT_EQ(files.read(run), (Bytes{1, 9, 3, 4}));
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0001"), (Bytes{1, 2, 3, 4}));
}

TEST(Backup, GivesAShorterFileItsNewBeginningAlone) {
    CountingFiles files;
    files.put(run, {1, 2});
    ASSERT_TRUE(replaceBeginningKept(folder, run, Bytes{1, 2, 3}, files));
    EXPECT_EQ(files.read(run), (Bytes{1, 2, 3}));
    EXPECT_TRUE(files.list("/kvo/Backup").empty());
    ASSERT_TRUE(replaceBeginningKept(folder, "/kvo/Data/new", Bytes{5}, files));
    EXPECT_EQ(files.read("/kvo/Data/new"), Bytes{5});
}

TEST(Backup, WritesOverNoCopyWhereTheFolderCannotBeListed) {
    MemoryFiles files;
    files.failQuestions();
    files.put("/kvo/Backup/26111514.52d.0001", {1});
    files.put("/kvo/Backup/26111514.52d.0002", {2});
    files.put(run, {3});
    ASSERT_TRUE(keepCopy(folder, run, files));
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0001"), Bytes{1});
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0002"), Bytes{2});
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0003"), Bytes{3});
}

TEST(Backup, KeepsNothingWhereItCannotTellWhetherACopyIsThere) {
    MemoryFiles files;
    files.failQuestions();
    files.put("/kvo/Backup/26111514.52d.0001", {1});
    files.put("/kvo/Backup/26111514.52d.0002", {2});
    files.failReads("/kvo/Backup/26111514.52d.0002", MemoryFiles::Failure::diskError);
    files.put(run, {3});
    EXPECT_FALSE(removeKept(folder, run, files));
    EXPECT_EQ(files.read(run), Bytes{3});
}

TEST(Backup, DeletesAFileThatIsThereHoweverTheDiskIsAsked) {
    MemoryFiles files;
    files.failQuestions();
    files.put(run, {1});
    ASSERT_TRUE(removeKept(folder, run, files));
    EXPECT_FALSE(files.read(run));
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0001"), Bytes{1});
}

TEST(Backup, DoesNotKeepTheSameStateTwice) {
    MemoryFiles files;
    files.put(run, {1});
    ASSERT_TRUE(keepCopy(folder, run, files));
    ASSERT_TRUE(keepCopy(folder, run, files));
    EXPECT_EQ(files.list("/kvo/Backup").size(), 1U);
}

TEST(Backup, CountsOnlyTheCopiesOfItsOwnFile) {
    MemoryFiles files;
    files.put(run, {1});
    files.put("/kvo/Backup/26111514.52d.0007", {9});
    files.put("/kvo/Backup/26111514.52d.9x99", {9});
    files.put("/kvo/Backup/26111514.52d.0099.txt", {9});
    files.put("/kvo/Backup/26111514.53d.0050", {9});
    files.put("/kvo/Backup/26111514.52d.99999999999999", {9});
    ASSERT_TRUE(keepCopy(folder, run, files));
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0008"), Bytes{1});
}

TEST(Backup, GoesOnBehindTenThousandCopies) {
    MemoryFiles files;
    files.put(run, {1});
    files.put("/kvo/Backup/26111514.52d.9999", {9});
    ASSERT_TRUE(keepCopy(folder, run, files));
    files.put(run, {2});
    ASSERT_TRUE(keepCopy(folder, run, files));
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.10000"), Bytes{1});
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.10001"), Bytes{2});
}

TEST(Backup, ReplacesNothingThatItCouldNotKeep) {
    MemoryFiles files;
    files.put(run, {1});
    files.failWrites("/kvo/Backup", MemoryFiles::Failure::fullDisk);
    const auto replaced = replaceKept(folder, run, Bytes{2}, files);
    EXPECT_FALSE(replaced);
    EXPECT_FALSE(replaced.message.empty());
    EXPECT_FALSE(removeKept(folder, run, files));
    EXPECT_EQ(files.read(run), Bytes{1});
}

TEST(Backup, MakesNoCopyOfAFileThatRefusesToBeReplaced) {
    for (const auto how : {MemoryFiles::Failure::readOnly, MemoryFiles::Failure::notPermitted}) {
        MemoryFiles files;
        files.put(run, {1});
        files.failWrites(run, how);
        EXPECT_FALSE(replaceKept(folder, run, Bytes{2}, files));
        EXPECT_FALSE(removeKept(folder, run, files));
        EXPECT_EQ(files.read(run), Bytes{1});
        EXPECT_FALSE(files.folderExists("/kvo/Backup"));
    }
}

TEST(Backup, ReplacesNothingThatItCannotRead) {
    MemoryFiles files;
    files.put(run, {1});
    files.failReads(run, MemoryFiles::Failure::diskError);
    for (const auto& result : {keepCopy(folder, run, files),
             replaceKept(folder, run, Bytes{2}, files), removeKept(folder, run, files)}) {
        EXPECT_FALSE(result);
        EXPECT_NE(result.message.find("Input/output error\nSo no copy"), std::string::npos)
            << result.message;
    }
    EXPECT_TRUE(files.exists(run));
    EXPECT_EQ(files.writes(), 0);
}

TEST(Backup, KeepsWhatIsDeleted) {
    MemoryFiles files;
    files.put(run, {1});
    ASSERT_TRUE(removeKept(folder, run, files));
    EXPECT_FALSE(files.exists(run));
    EXPECT_EQ(files.read("/kvo/Backup/26111514.52d.0001"), Bytes{1});
    EXPECT_TRUE(removeKept(folder, run, files)) << "a file that is gone is no failure";
}

TEST(Backup, KeepsTextsThatWereInNoFile) {
    MemoryFiles files;
    for (const char* text : {"a", "b", "a", "c"})
        ASSERT_TRUE(keepText(folder, "Logger 7", text, files)) << text;
    EXPECT_EQ(files.list("/kvo/Backup"),
        (std::vector<std::string>{"Logger 7-2.txt", "Logger 7-3.txt", "Logger 7.txt"}));
    EXPECT_EQ(files.read("/kvo/Backup/Logger 7.txt"), Bytes{'a'});
    EXPECT_EQ(files.read("/kvo/Backup/Logger 7-3.txt"), Bytes{'c'});
}

TEST(Backup, ATextThatCannotBeKeptIsToldAndTakesNoPlace) {
    MemoryFiles files;
    files.put("/kvo/Backup/Logger 7.txt", {'a'});
    files.failReads("/kvo/Backup/Logger 7.txt", MemoryFiles::Failure::diskError);
    const auto kept = keepText(folder, "Logger 7", "b", files);
    EXPECT_FALSE(kept);
    EXPECT_NE(kept.message, "");
    EXPECT_EQ(files.list("/kvo/Backup").size(), 1U);
}

TEST(Paths, HaveOneSeparatorBetweenTheirParts) {
    const MemoryFiles files;
    EXPECT_EQ(joined("/kvo", "a", files), "/kvo/a");
    EXPECT_EQ(joined("/", "a", files), "/a");
    EXPECT_EQ(baseName("/kvo/Data/a.d"), "a.d");
    EXPECT_EQ(baseName("C:\\Kvo\\a.d"), "a.d");
    EXPECT_EQ(baseName("a.d"), "a.d");
    EXPECT_EQ(dataFolder("/kvo", files), "/kvo/Data");
}

TEST(ReplaceKept, NeverWritesThroughALinkOutOfData) {
    MemoryFiles files;
    for (const char* path : {run, "/kvo/Kvo.Cfg"}) {
        files.put(path, {1});
        files.leadAway(path);
    }
    EXPECT_FALSE(replaceKept("/kvo", run, {2}, files));
    EXPECT_FALSE(replaceBeginningKept("/kvo", run, {2}, files));
    EXPECT_EQ(files.read(run), platform::Bytes{1});
    EXPECT_TRUE(files.list("/kvo/Backup").empty());
    // The setup may lie where its user wants it.
    EXPECT_TRUE(replaceKept("/kvo", "/kvo/Kvo.Cfg", {2}, files));
}

} // namespace
} // namespace kvo::core
