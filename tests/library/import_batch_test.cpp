// The import of many files: what is asked and listed on the way, Cancel, and what goes wrong in the
// middle.
#include "tests/library/import_course.h"

#include <chrono>
#include <functional>

namespace kvo::library {
namespace {

using platform::Reply;
using testing::MemoryFiles;

TEST_F(ImportCourse, aBatchWritesTheIndexOnceAndSortsIt) {
    ASSERT_TRUE(core::writeRunIndex("/kvo", {{"26111500.99d", "Sun 15 Nov 2026 Run: 9"}}, files));
    import.Data_File();
    std::vector<std::string> names;
    for (int i = 10; i < 30; ++i) {
        names.push_back("run.0" + std::to_string(i));
        put(names.back(), importText(1), 10 + i % 7);
        expectDate(names.back());
        dialogs.expectBoxTitled("WARNING");
        dialogs.expectInputTitled("VRN Dos Import", std::to_string(i));
    }
    const int before = files.writes();
    const int readBefore = files.reads["/kvo/Data/KvoData.Ini"];
    EXPECT_EQ(dos(names).imported, 20);
    EXPECT_EQ(files.writes(), before + 21);
    // Once for the new rows, once for the list.
    EXPECT_EQ(files.reads["/kvo/Data/KvoData.Ini"], readBefore + 2);
    ASSERT_EQ(index().size(), 21U);
    for (std::size_t i = 1; i < index().size(); ++i) {
        EXPECT_GE(
            core::RunDateKey(index()[i - 1].Description), core::RunDateKey(index()[i].Description));
    }
}

// A batch that is killed in a question leaves few of its runs out of the index.
TEST_F(ImportCourse, aLongBatchIsListedOnItsWay) {
    const auto unlistedAtQuestion = [this](int i) {
        const std::string name = "a." + std::to_string(i) + "d";
        put(name, importedRunFile("25 x Date:Wed 01 Jan 2025 Run: " + std::to_string(i) + "#"));
        auto& question = dialogs.expectBoxTitled("File Date for [ " + name + " ]", Reply::yes);
        question.whileShown = [this, i] { EXPECT_EQ(index().size(), i < 35 ? 0U : 25U) << i; };
        return name;
    };
    std::vector<std::string> names;
    for (int i = 10; i < 40; ++i) names.push_back(unlistedAtQuestion(i));
    const int before = files.writes();
    EXPECT_EQ(windows(names).imported, 30);
    EXPECT_EQ(files.writes(), before + 32);
    EXPECT_EQ(index().size(), 30U);
    EXPECT_EQ(texts().front(), "Wed 01 Jan 2025 Run: 39");
}

TEST_F(ImportCourse, aRunThatTookTheUserAWhileIsListedBeforeTheNextQuestion) {
    for (const char* name : {"a.12d", "b.13d", "c.14d"})
        put(name, importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    const auto ask = [this](const char* name, std::size_t listed, int seconds) {
        const std::string title = std::string("File Date for [ ") + name + " ]";
        dialogs.expectBoxTitled(title, Reply::yes).whileShown = [this, listed, seconds] {
            EXPECT_EQ(index().size(), listed);
            time += std::chrono::seconds(seconds);
        };
    };
    ask("a.12d", 0, 2);
    ask("b.13d", 1, 1); // and so on from the last writing
    ask("c.14d", 1, 0);
    EXPECT_EQ(windows({"a.12d", "b.13d", "c.14d"}).imported, 3);
    EXPECT_EQ(index().size(), 3U);
}

TEST_F(ImportCourse, anIndexThatCannotBeWrittenOnTheWayIsToldAtTheEnd) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    put("b.13d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 5#"));
    files.failWrites("/kvo/Data/KvoData.Ini", MemoryFiles::Failure::fullDisk);
    auto& question = dialogs.expectBoxTitled("File Date for [ a.12d ]", Reply::yes);
    question.whileShown = [this] { time += std::chrono::seconds(9); };
    expectDate("b.13d");
    auto& box = dialogs.expectBoxTitled("Run index", Reply::retry);
    box.whileShown = [this] { files.allowWrites(); };
    EXPECT_EQ(windows({"a.12d", "b.13d"}).imported, 2);
    EXPECT_EQ(index().size(), 2U);
}

TEST_F(ImportCourse, cancelInAQuestionForTheDateEndsTheBatch) {
    for (const char* name : {"a.12d", "b.13d", "c.14d"})
        put(name, importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    const std::string text =
        "This File was created on: Sun 15 Nov 2026\nIs this the date of the Run ?";
    dialogs.expectBox(text, 35, "File Date for [ a.12d ]", Reply::yes);
    dialogs.expectBox(text, 35, "File Date for [ b.13d ]", Reply::cancel);
    const ImportedBatch batch = windows({"a.12d", "b.13d", "c.14d"});
    EXPECT_TRUE(batch.cancelled);
    EXPECT_EQ(batch.imported, 1);
    EXPECT_EQ(
        index(), (std::vector<core::RunIndexEntry>{{"26111500.12d", "Wed 01 Jan 2025 Run: 4"}}));
    // The last of a batch has none behind it that a Cancel would spare.
    dialogs.expectBox(text, 35, "File Date for [ b.13d ]", Reply::yes);
    dialogs.expectBox(text, 36, "File Date for [ c.14d ]", Reply::yes);
    EXPECT_EQ(windows({"b.13d", "c.14d"}).imported, 2);
}

TEST_F(ImportCourse, cancelBetweenTwoFilesKeepsWhatIsImported) {
    put("run.012", importText(importRowsOf23));
    put("run.013", importText(importRowsOf23));
    expectText("run.012", "1");
    view.onProgress = [this] {
        if (view.shownFiles.size() == 2) import.Cancel();
    };
    const ImportedBatch batch = dos({"run.012", "run.013", "run.014"});
    EXPECT_TRUE(batch.cancelled);
    EXPECT_EQ(batch.imported, 1);
    EXPECT_EQ(view.shownFiles.size(), 2U);
    EXPECT_EQ(texts(), std::vector<std::string>{"Sun 15 Nov 2026 Run: 1"});
}

TEST_F(ImportCourse, cancelInsideAFileLeavesNoHalfRun) {
    put("run.012", importText(importRowsOf23));
    put("run.013", importText(importRowsOf23));
    expectText("run.012", "1");
    expectDate("run.013");
    view.onProgress = [this] {
        if (view.shownFiles.size() == 2 && view.percents.back() == 50) import.Cancel();
    };
    const ImportedBatch batch = dos({"run.012", "run.013", "run.014"});
    EXPECT_TRUE(batch.cancelled);
    EXPECT_EQ(batch.imported, 1);
    EXPECT_EQ(view.percents.back(), 50);
    EXPECT_FALSE(files.exists("/kvo/Data/26111500.13d"));
    EXPECT_EQ(index().size(), 1U);
    EXPECT_FALSE(import.running());
    // The next batch goes its whole way.
    view.onProgress = {};
    expectText("run.013", "2");
    EXPECT_EQ(dos({"run.013"}).imported, 1);
}

TEST_F(ImportCourse, aBatchAtWorkIsNotStartedTwice) {
    put("run.012", importText(importRowsOf23));
    expectText("run.012", "1");
    view.onProgress = [this] {
        EXPECT_TRUE(import.running());
        EXPECT_EQ(dos({"run.012"}).files, 0);
    };
    EXPECT_EQ(dos({"run.012"}).imported, 1);
}

TEST_F(ImportCourse, aFullDiskPutsTheOldRunBackAndNamesTheFile) {
    const auto old = importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 3 old#");
    files.put("/kvo/Data/26111500.12d", old);
    put("run.012", importText(importRowsOf23));
    put("run.013", importText(importRowsOf23));
    expectDate("run.012");
    dialogs.expectBoxTitled("WARNING", Reply::yes);
    auto& input = dialogs.expectInputTitled("VRN Dos Import", "1");
    input.whileShown = [this] { files.refusals = 1; };
    auto& box = dialogs.expectBoxTitled("Kvo", Reply::ok);
    box.contains = "run.012\nThe disk is full.";
    box.style = 49;
    expectText("run.013", "2");
    EXPECT_EQ(dos({"run.012", "run.013"}).imported, 1);
    EXPECT_EQ(files.read("/kvo/Data/26111500.12d"), old);
    EXPECT_EQ(texts(), std::vector<std::string>{"Sun 15 Nov 2026 Run: 2"});
}

TEST_F(ImportCourse, aFailureCanEndTheBatch) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    files.failWrites("/kvo/Data", MemoryFiles::Failure::fullDisk);
    expectDate("a.12d");
    dialogs.expectBoxTitled("Kvo", Reply::cancel);
    const ImportedBatch batch = windows({"a.12d", "b.12d"});
    EXPECT_TRUE(batch.cancelled);
    EXPECT_EQ(view.shownFiles.size(), 1U);
    files.allowWrites();
}

TEST_F(ImportCourse, anIndexThatCannotBeWrittenIsTriedAgain) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    put("b.13d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 5#"));
    files.failWrites("/kvo/Data/KvoData.Ini", MemoryFiles::Failure::fullDisk);
    expectDate("a.12d");
    dialogs.expectBoxTitled("Run index", Reply::retry).style = 53;
    dialogs.expectBoxTitled("Run index", Reply::cancel);
    EXPECT_EQ(windows({"a.12d"}).imported, 1);
    EXPECT_TRUE(index().empty());
    // The next batch takes it along.
    files.allowWrites();
    expectDate("b.13d");
    EXPECT_EQ(windows({"b.13d"}).imported, 1);
    EXPECT_EQ(index().size(), 2U);
}

TEST_F(ImportCourse, anIndexThatCannotBeWrittenIsTriedAgainAtTheClose) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    files.failWrites("/kvo/Data/KvoData.Ini", MemoryFiles::Failure::fullDisk);
    expectDate("a.12d");
    dialogs.expectBoxTitled("Run index", Reply::cancel);
    EXPECT_EQ(windows({"a.12d"}).imported, 1);
    EXPECT_TRUE(index().empty());
    files.allowWrites();
    import.close();
    EXPECT_EQ(index().size(), 1U);
    import.close();
    EXPECT_EQ(index().size(), 1U);
}

TEST_F(ImportCourse, anUnreadableFileIsNamed) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    files.failReads("/disk/a.12d", MemoryFiles::Failure::notPermitted);
    expectDate("a.12d");
    dialogs.expectBoxTitled("Kvo").contains = "a.12d\n";
    EXPECT_EQ(windows({"a.12d"}).imported, 0);
}

} // namespace
} // namespace kvo::library
