#include "library/import.h"

#include "core/run_file.h"
#include "core/run_records.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace kvo::library {
namespace {

using platform::Reply;
using testing::MemoryFiles;
using testing::ScriptedDialogs;

constexpr int importRowsOf23 = 1213;

class RecordingImportView : public ImportView {
public:
    std::vector<std::string> shownFiles;
    std::vector<int> percents;
    int cleared = 0;
    int runsShown = 0;
    std::function<void()> onProgress;

    void showFile(const std::string& name, int number, int files) override {
        shownFiles.push_back(name + " " + std::to_string(number) + "/" + std::to_string(files));
    }
    void setProgress(int row, int rows) override {
        percents.push_back(row * 100 / rows);
        if (onProgress) onProgress();
    }
    void clearProgress() override { ++cleared; }
    void showRuns() override { ++runsShown; }
};

// A disk whose next writes of runs fail, while it still deletes.
class RefusingFiles : public MemoryFiles {
public:
    int refusals = 0;
    platform::WriteResult write(const std::string& path, const platform::Bytes& content) override {
        if (refusals == 0 || !path.starts_with("/kvo/Data"))
            return MemoryFiles::write(path, content);
        --refusals;
        return {false, "The disk is full.", platform::FileFailure::full};
    }
};

platform::Bytes asBytes(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string importText(int rows, const std::string& analog = "104 ") {
    std::string text = "23 VRN old program\r\n4 2 1 13 8249 53 49 8488 11628 2.11 3327 18.15 6885 "
                       "17.21 4380 4.18 \r\n";
    for (int i = 1; i <= rows; ++i)
        text += std::to_string(i) + " 6555 9236 440 7380 29 101 102 103 " + analog +
                "105 106 107 77 \r\n";
    text += "2.7\r\n1.9\r\n1.5\r\n1.2\r\n1\r\n";
    for (int n = 1; n <= 8; ++n) text += "Name\r\n";
    for (int n = 1; n <= 8; ++n) text += "1 2.5 -3 \r\n";
    return text;
}

platform::Bytes importedRunFile(const std::string& line) {
    core::ByteWriter writer;
    core::encodeHeaderLine(writer, line);
    writer.fillTo(3 * core::runRecordWidth);
    return writer.take();
}

class ImportCourse : public ::testing::Test {
protected:
    ImportCourse() {
        EXPECT_TRUE(files.makeFolder("/kvo/Data"));
        EXPECT_TRUE(files.makeFolder("/disk"));
        import.Data_File();
    }
    ~ImportCourse() override { EXPECT_EQ(dialogs.problems(), ""); }

    // A file on the disk to import from, made on that day of November 2026.
    void put(const std::string& name, const std::string& content, int day = 15) {
        put(name, asBytes(content), day);
    }
    void put(const std::string& name, const platform::Bytes& content, int day = 15) {
        files.put("/disk/" + name, content);
        files.setCreatedOn("/disk/" + name, {2026, 11, day, 9, 30, 0});
    }
    void expectDate(const std::string& name, Reply reply = Reply::yes) {
        dialogs.expectBoxTitled("File Date for [ " + name + " ]", reply);
    }
    void expectText(const std::string& name, const std::string& number) {
        expectDate(name);
        dialogs.expectInputTitled("VRN Dos Import", number);
    }
    ImportedBatch dos(const std::vector<std::string>& names) {
        return import.Butten_Import(ImportMode::dos, "/disk", names);
    }
    ImportedBatch windows(const std::vector<std::string>& names) {
        return import.Butten_Import(ImportMode::windows, "/disk", names);
    }
    std::vector<core::RunIndexEntry> index() const {
        return core::readRunIndex("/kvo/Data/KvoData.Ini", files);
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const auto& entry : index()) all.push_back(entry.Description);
        return all;
    }
    std::string header(const std::string& name) const {
        const auto file = files.read("/kvo/Data/" + name);
        if (!file) return "no file";
        return core::decodeHeaderLine(core::runRecord(*file, 1)).value_or("no line");
    }

    RefusingFiles files;
    ScriptedDialogs dialogs;
    RecordingImportView view;
    core::AppConfig config;
    std::string folder = "/kvo";
    RunList runs;
    Import import{{config, folder, runs}, view, dialogs, files};
};

// --- Dates

TEST(ImportDate, isDayMonthAndYear) {
    const auto isDate = [](const char* text, int day, int month, int year) {
        const auto date = typedDate(text);
        return date && date->day == day && date->month == month && date->year == year;
    };
    EXPECT_TRUE(isDate("08-07-2009", 8, 7, 2009));
    EXPECT_TRUE(isDate(" 8/7/2009 ", 8, 7, 2009));
    EXPECT_TRUE(isDate("8.7.09", 8, 7, 2009));
    EXPECT_TRUE(isDate("8 July 2009", 8, 7, 2009));
    EXPECT_TRUE(isDate("08-jul-1998", 8, 7, 1998));
    EXPECT_TRUE(isDate("1-1-80", 1, 1, 1980));
    EXPECT_TRUE(isDate("1-1-79", 1, 1, 2079));
    EXPECT_TRUE(isDate("29-02-2028", 29, 2, 2028));
    EXPECT_TRUE(isDate("29-02-2000", 29, 2, 2000));
}

TEST(ImportDate, isRefusedWhereThereIsNoSuchDay) {
    for (const char* text : {"", "tomorrow", "08-07", "8-7-2009-1", "31-04-2026", "29-02-2027",
             "29-02-1900", "00-07-2009", "8-13-2009", "8-0-2009", "2009-07-08", "8-7-209",
             "8-7-1899", "8-ju-2009", "8-julio-2009", "-8-7-2009x", "8--2009", "8-7-99999999999"})
        EXPECT_FALSE(typedDate(text)) << text;
}

// --- Files of this program

TEST_F(ImportCourse, aRunFileIsCopiedUnderItsDateWithItsNotes) {
    put("25010109.12d",
        importedRunFile("25 VRN23 Ver 1.3 128k Serial No 7  Date:Wed 01 Jan 2025 Run: 4 Test#"));
    put("25010109.12i", "notes");
    dialogs.expectBox("This File was created on: Sun 15 Nov 2026\nIs this the date of the Run ?",
        36, "File Date for [ 25010109.12d ]", Reply::yes);
    const ImportedBatch batch = windows({"25010109.12d"});
    EXPECT_EQ(batch.imported, 1);
    EXPECT_EQ(batch.files, 1);
    EXPECT_EQ(batch.written, (std::vector<std::string>{"/kvo/Data/26111500.12d"}));
    EXPECT_EQ(files.read("/kvo/Data/26111500.12d"), files.read("/disk/25010109.12d"));
    EXPECT_EQ(files.read("/kvo/Data/26111500.12i"), asBytes("notes"));
    EXPECT_EQ(index(),
        (std::vector<core::RunIndexEntry>{{"26111500.12d", "Wed 01 Jan 2025 Run: 4 Test"}}));
    EXPECT_EQ(runs.rowCount(), 1);
    EXPECT_EQ(view.runsShown, 2);
}

TEST_F(ImportCourse, aDateThatIsNotTheFilesIsAskedUntilItIsOne) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    expectDate("a.12d", Reply::no);
    dialogs.expectInput("What is the correct date ?", "Run Date", "15-11-2026", "yesterday");
    dialogs.expectBox(
        " You need to enter the date as DD-MM-YYYY \n 8 July 2009 (08-07-2009)\n Please "
        "try again.",
        0, "Run Date");
    dialogs.expectInput("What is the correct date ?", "Run Date", "15-11-2026", "08-07-2009");
    EXPECT_EQ(windows({"a.12d"}).imported, 1);
    EXPECT_TRUE(files.exists("/kvo/Data/09070800.12d"));
}

TEST_F(ImportCourse, aBlankDateEndsTheFileAndTheOthersGoOn) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    put("b.13d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 5#"));
    expectDate("a.12d", Reply::no);
    dialogs.expectInputTitled("Run Date", "  ");
    expectDate("b.13d");
    EXPECT_EQ(
        windows({"a.12d", "b.13d"}).written, (std::vector<std::string>{"/kvo/Data/26111500.13d"}));
    EXPECT_EQ(texts(), std::vector<std::string>{"Wed 01 Jan 2025 Run: 5"});
    EXPECT_EQ(view.shownFiles, (std::vector<std::string>{"a.12d 1/2", "b.13d 2/2"}));
}

TEST_F(ImportCourse, aMissingFileAndOneThatIsNoRunAreNamed) {
    put("empty.12d", "");
    put("zeros.12d", platform::Bytes(200, 0));
    dialogs.expectBox("File Not Found", 0, "gone.12d");
    for (const char* name : {"empty.12d", "zeros.12d"}) {
        expectDate(name);
        dialogs.expectBoxTitled("Kvo").contains = std::string(name) + "\nIt is no run";
    }
    EXPECT_EQ(windows({"gone.12d", "empty.12d", "zeros.12d"}).imported, 0);
    EXPECT_TRUE(index().empty());
    EXPECT_FALSE(files.exists("/kvo/Data/26111500.12d"));
}

TEST_F(ImportCourse, aNameThatNoListCouldHoldIsRefused) {
    put("a.-12", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    expectDate("a.-12");
    dialogs.expectBoxTitled("Kvo").contains = "a.-12\nIt cannot be named";
    EXPECT_EQ(windows({"a.-12"}).imported, 0);
}

TEST_F(ImportCourse, aRunThatIsThereIsAskedAboutAndKeptInBackup) {
    const auto old = importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 3 old#");
    const auto fresh = importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#");
    files.put("/kvo/Data/26111500.12d", old);
    put("a.12d", fresh);
    const std::string question =
        "(26111500.12d)  File already in Data Base.\n            Do you want "
        "to overwrite it?";
    expectDate("a.12d");
    dialogs.expectBox(question, 52, "WARNING", Reply::no);
    EXPECT_EQ(windows({"a.12d"}).imported, 0);
    EXPECT_EQ(files.read("/kvo/Data/26111500.12d"), old);
    expectDate("a.12d");
    dialogs.expectBox(question, 52, "WARNING", Reply::yes);
    EXPECT_EQ(windows({"a.12d"}).imported, 1);
    EXPECT_EQ(files.read("/kvo/Data/26111500.12d"), fresh);
    EXPECT_EQ(files.read("/kvo/Backup/26111500.12d.0001"), old);
}

TEST_F(ImportCourse, twoFilesOfOneDateAndNumberCollide) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    put("b.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 5#"));
    expectDate("a.12d");
    expectDate("b.12d");
    dialogs.expectBoxTitled("WARNING", Reply::no);
    EXPECT_EQ(windows({"a.12d", "b.12d"}).imported, 1);
}

TEST_F(ImportCourse, aRunWithoutItsNotesIsInAndIsTold) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    put("a.12i", "notes");
    files.failReads("/disk/a.12i", MemoryFiles::Failure::diskError);
    expectDate("a.12d");
    dialogs.expectBoxTitled("Kvo").contains = "a.12d\nThe run is imported, but not its notes.";
    EXPECT_EQ(windows({"a.12d"}).imported, 1);
    EXPECT_EQ(index().size(), 1U);
}

// --- Text files

TEST_F(ImportCourse, aTextRunIsWrittenUnderItsNumber) {
    put("run.012", importText(importRowsOf23));
    expectDate("run.012");
    dialogs.expectInput(
        "RUN.012\nSun 15 Nov 2026\nEnter Run Number for: ", "VRN Dos Import", "012", " 7 Final ");
    EXPECT_EQ(dos({"run.012"}).imported, 1);
    EXPECT_EQ(header("26111500.12d"), "23 VRN old program Date:Sun 15 Nov 2026 Run: 7 Final#");
    EXPECT_EQ(index(),
        (std::vector<core::RunIndexEntry>{{"26111500.12d", "Sun 15 Nov 2026 Run: 7 Final"}}));
    EXPECT_EQ(files.read("/kvo/Data/26111500.12d")->size(), (importRowsOf23 + 4) * 84U);
    EXPECT_EQ(view.percents.front(), 0);
    EXPECT_EQ(view.percents.back(), 100);
    EXPECT_LE(view.percents.size(), 103U);
    EXPECT_EQ(view.cleared, 1);
}

TEST_F(ImportCourse, theRunNumberMustBeANumberAboveZero) {
    put("run.012", importText(importRowsOf23));
    expectDate("run.012");
    for (const char* wrong : {"Final 7", "0 Final", "-1"}) {
        dialogs.expectInputTitled("VRN Dos Import", wrong);
        dialogs.expectBoxTitled("Error").contains =
            "You must enter a number first then the description.";
    }
    dialogs.expectInputTitled("VRN Dos Import", "8");
    EXPECT_EQ(dos({"run.012"}).imported, 1);
    EXPECT_EQ(texts(), std::vector<std::string>{"Sun 15 Nov 2026 Run: 8"});
}

TEST_F(ImportCourse, aBlankRunNumberWritesNothing) {
    put("run.012", importText(importRowsOf23));
    const auto old = importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 3 old#");
    files.put("/kvo/Data/26111500.12d", old);
    expectDate("run.012");
    dialogs.expectBoxTitled("WARNING", Reply::yes);
    dialogs.expectInputTitled("VRN Dos Import", "");
    EXPECT_EQ(dos({"run.012"}).imported, 0);
    // What was to be overwritten stays until the new run is ready.
    EXPECT_EQ(files.read("/kvo/Data/26111500.12d"), old);
    EXPECT_TRUE(index().empty());
}

TEST_F(ImportCourse, aTextThatIsNoRunIsToldAndTheOthersGoOn) {
    put("letter.012", "Dear Sir\r\nplease\r\n");
    put("run.013", importText(importRowsOf23));
    expectDate("letter.012");
    dialogs.expectBox("/DISK/LETTER.012\n    Is not a VRN Dos Data File", 16, "Kvo");
    expectText("run.013", "1");
    EXPECT_EQ(dos({"letter.012", "run.013"}).imported, 1);
    EXPECT_FALSE(files.exists("/kvo/Data/26111500.12d"));
}

TEST_F(ImportCourse, aCorruptTextIsToldAndImported) {
    put("run.012", importText(importRowsOf23, "256 "));
    put("short.013", importText(10).substr(0, 400));
    expectDate("run.012");
    dialogs.expectBox("This file is corrupt but still can be imported.", 48, "WARNING");
    dialogs.expectInputTitled("VRN Dos Import", "1");
    expectDate("short.013");
    dialogs.expectBox("This file is corrupt but still can be imported.", 48, "WARNING");
    dialogs.expectInputTitled("VRN Dos Import", "2");
    EXPECT_EQ(dos({"run.012", "short.013"}).imported, 2);
    EXPECT_EQ(
        texts(), (std::vector<std::string>{"Sun 15 Nov 2026 Run: 2", "Sun 15 Nov 2026 Run: 1"}));
}

TEST_F(ImportCourse, aShorterRunLeavesNothingOfTheOneItOverwrites) {
    put("run.012", importText(importRowsOf23));
    files.put("/kvo/Data/26111500.12d", platform::Bytes(300000, 7));
    expectDate("run.012");
    dialogs.expectBoxTitled("WARNING", Reply::yes);
    dialogs.expectInputTitled("VRN Dos Import", "1");
    EXPECT_EQ(dos({"run.012"}).imported, 1);
    EXPECT_EQ(files.read("/kvo/Data/26111500.12d")->size(), (importRowsOf23 + 4) * 84U);
    EXPECT_EQ(files.read("/kvo/Backup/26111500.12d.0001")->size(), 300000U);
}

TEST_F(ImportCourse, aRunOfAListedDescriptionIsNotListedAgain) {
    ASSERT_TRUE(
        core::writeRunIndex("/kvo", {{"26111500.99d", "Sun 15 Nov 2026 Run: 7 Final"}}, files));
    import.Data_File();
    put("run.012", importText(importRowsOf23));
    expectText("run.012", "7 Final");
    EXPECT_EQ(dos({"run.012"}).imported, 1);
    EXPECT_TRUE(files.exists("/kvo/Data/26111500.12d"));
    EXPECT_EQ(index().size(), 1U);
    // The list is that from before the batch.
    put("run.013", importText(importRowsOf23));
    put("run.014", importText(importRowsOf23));
    expectText("run.013", "8");
    expectText("run.014", "8");
    EXPECT_EQ(dos({"run.013", "run.014"}).imported, 2);
    EXPECT_EQ(index().size(), 3U);
}

// --- Batches

TEST_F(ImportCourse, aBatchWritesTheIndexOnceAndSortsIt) {
    ASSERT_TRUE(core::writeRunIndex("/kvo", {{"26111500.99d", "Sun 15 Nov 2026 Run: 9"}}, files));
    import.Data_File();
    std::vector<std::string> names;
    for (int i = 10; i < 40; ++i) {
        names.push_back("run.0" + std::to_string(i));
        put(names.back(), importText(1), 10 + i % 7);
        expectDate(names.back());
        dialogs.expectBoxTitled("WARNING");
        dialogs.expectInputTitled("VRN Dos Import", std::to_string(i));
    }
    const int before = files.writes();
    EXPECT_EQ(dos(names).imported, 30);
    EXPECT_EQ(files.writes(), before + 31);
    ASSERT_EQ(index().size(), 31U);
    for (std::size_t i = 1; i < index().size(); ++i) {
        EXPECT_GE(
            core::RunDateKey(index()[i - 1].Description), core::RunDateKey(index()[i].Description));
    }
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

TEST_F(ImportCourse, anUnreadableFileIsNamed) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    files.failReads("/disk/a.12d", MemoryFiles::Failure::notPermitted);
    expectDate("a.12d");
    dialogs.expectBoxTitled("Kvo").contains = "a.12d\n";
    EXPECT_EQ(windows({"a.12d"}).imported, 0);
}

TEST(ImportDescription, standsBehindTheFirstColonUpToTheNumberSign) {
    EXPECT_EQ(descriptionOfRunFile("25 x Date:Wed 01 Jan 2025 Run: 4 a:b#c"),
        "Wed 01 Jan 2025 Run: 4 a:b");
    EXPECT_EQ(descriptionOfRunFile("25 x Date:Wed 01"), "Wed 01");
    EXPECT_EQ(descriptionOfRunFile("25 x#y"), "25 x");
    EXPECT_EQ(descriptionOfRunFile("#a:b#"), "b");
}

} // namespace
} // namespace kvo::library
