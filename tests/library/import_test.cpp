#include "library/import.h"

#include "core/run_file.h"
#include "core/run_info.h"
#include "core/run_times.h"
#include "tests/library/import_course.h"

#include <memory>

namespace kvo::library {
namespace {

using platform::Reply;
using testing::MemoryFiles;

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

TEST_F(ImportCourse, aFileThatThereIsNoMemoryForIsNamedAndTheOthersGoOn) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    put("b.13d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 5#"));
    expectDate("a.12d");
    dialogs.expectBox("a.12d\nThere is not enough memory.\n\nGo on with the next file?", 49, "Kvo");
    expectDate("b.13d");
    int shown = 0;
    files.onRead = [&shown](const std::string& path) {
        if (path == "/disk/a.12d" && ++shown == 1) throw std::bad_alloc();
    };
    EXPECT_EQ(windows({"a.12d", "b.13d"}).imported, 1);
    EXPECT_FALSE(import.running());
    EXPECT_EQ(texts(), (std::vector<std::string>{"Wed 01 Jan 2025 Run: 5"}));
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

TEST_F(ImportCourse, theSecondOfTwoThatCollideMayTakeThePlaceOfTheFirst) {
    const auto first = importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#");
    const auto second = importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 5#");
    put("a.12d", first);
    put("b.12d", second);
    expectDate("a.12d");
    expectDate("b.12d");
    dialogs.expectBoxTitled("WARNING", Reply::yes);
    EXPECT_EQ(windows({"a.12d", "b.12d"}).imported, 2);
    EXPECT_EQ(files.read("/kvo/Data/26111500.12d"), second);
    EXPECT_EQ(files.read("/kvo/Backup/26111500.12d.0001"), first);
    EXPECT_EQ(index(), (std::vector<core::RunIndexEntry>{{"26111500.12d", "Wed 01 Jan 2025 Run: 5"},
                           {"26111500.12d", "Wed 01 Jan 2025 Run: 4"}}));
}

TEST_F(ImportCourse, aFileThatGoesDuringItsQuestionIsNotFound) {
    put("a.12d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 4#"));
    put("b.13d", importedRunFile("25 x Date:Wed 01 Jan 2025 Run: 5#"));
    auto& question = dialogs.expectBoxTitled("File Date for [ a.12d ]", Reply::yes);
    question.whileShown = [this] { EXPECT_TRUE(files.remove("/disk/a.12d")); };
    dialogs.expectBox("File Not Found", 0, "a.12d");
    expectDate("b.13d");
    EXPECT_EQ(windows({"a.12d", "b.13d"}).imported, 1);
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
    const std::string prompt = "RUN.012\nSun 15 Nov 2026\nEnter Run Number for: ";
    for (const char* wrong : {"Final 7", "0 Final", "-1"}) {
        dialogs.expectInput(prompt, "VRN Dos Import", "012", wrong);
        dialogs.expectBox("You must enter a number first then the description.\n\n"
                          "1 Western Nationals\nor just\n1",
            0, "Error");
    }
    dialogs.expectInput(prompt, "VRN Dos Import", "012", "8");
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

// Required: the type is taken here, and refused where a run is opened.
TEST_F(ImportCourse, aRunOfType23IsImportedAndThenNotOpened) {
    put("run.012", importText(importRowsOf23));
    expectText("run.012", "1");
    EXPECT_EQ(dos({"run.012"}).imported, 1);
    const auto run = std::make_unique<core::OpenRun>();
    const auto outcome = core::LoadRun("/kvo/Data/26111500.12d", *run, files);
    EXPECT_FALSE(outcome);
    EXPECT_EQ(outcome.DataType, 23);
}

TEST_F(ImportCourse, aLongFirstLineIsCutAndTheRunHasItsTimesAllTheSame) {
    constexpr int importRowsOf20 = 2048;
    std::string text = importText(importRowsOf20);
    text.replace(0, 2, "20");
    text.insert(text.find("\r\n"), std::string(18, 'x'));
    put("run.012", text);
    expectText("run.012", "7 " + std::string(60, 'T'));
    EXPECT_EQ(dos({"run.012"}).imported, 1);
    const std::string line = header("26111500.12d");
    EXPECT_EQ(line.size(), 82U);
    EXPECT_EQ(line.find('#'), std::string::npos);
    EXPECT_EQ(texts(), std::vector<std::string>{"Sun 15 Nov 2026 Run: 7 " + std::string(60, 'T')});
    const auto run = std::make_unique<core::OpenRun>();
    const std::string path = "/kvo/Data/26111500.12d";
    ASSERT_TRUE(core::LoadRun(path, *run, files));
    EXPECT_EQ(run->headerLine, line);
    core::RunInfo info = core::LoadRunInfo(core::infoFilePath(path), {}, files);
    info.Text_ET = "8.5";
    ASSERT_TRUE(core::SaveRunInfo("/kvo", core::infoFilePath(path), path, info, files));
    const auto table = core::LoadTimesTable("/kvo", files);
    ASSERT_EQ(table.RunTimesCount, 2);
    EXPECT_EQ(table.entries[1].Label, "15 Nov 2026 Run: 7 TTTTTTT");
    EXPECT_EQ(table.entries[1].TimeET, 850);
}

// Between a delete and a write the power may fail, and the list still names the run.
TEST_F(ImportCourse, aRunThatIsOverwrittenIsNeverGoneMeanwhile) {
    put("run.012", importText(importRowsOf23));
    files.put("/kvo/Data/26111500.12d", platform::Bytes(300000, 7));
    files.failQuestions(); // and it is asked for all the same
    expectDate("run.012");
    dialogs.expectBoxTitled("WARNING", Reply::yes);
    dialogs.expectInputTitled("VRN Dos Import", "1");
    EXPECT_EQ(dos({"run.012"}).imported, 1);
    EXPECT_EQ(files.removes(), 0);
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

TEST(ImportDescription, standsBehindTheFirstColonUpToTheNumberSign) {
    EXPECT_EQ(descriptionOfRunFile("25 x Date:Wed 01 Jan 2025 Run: 4 a:b#c"),
        "Wed 01 Jan 2025 Run: 4 a:b");
    EXPECT_EQ(descriptionOfRunFile("25 x Date:Wed 01"), "Wed 01");
    EXPECT_EQ(descriptionOfRunFile("25 x#y"), "25 x");
    EXPECT_EQ(descriptionOfRunFile("#a:b#"), "b");
}

} // namespace
} // namespace kvo::library
