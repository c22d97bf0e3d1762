#include "graph/export_file.h"

#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

using namespace kvo;
using namespace kvo::graph;
using kvo::testing::MemoryFiles;
using kvo::testing::ScriptedDialogs;

namespace {

struct ExportFile : ::testing::Test {
    ~ExportFile() override { EXPECT_EQ(dialogs.problems(), ""); }
    ScriptedDialogs dialogs;
    MemoryFiles files;
    std::string folder = "/home/me";
    std::optional<std::string> ask() {
        return askExportPath(csvForm, "Run 3", folder, dialogs, files);
    }
};

constexpr const char* replaceQuestion = "x.csv\nis there already. Do you want to replace it?";

} // namespace

TEST_F(ExportFile, TheNameIsTheRunsTitle) {
    EXPECT_EQ(exportName("32 VRN35 Date:Wed 05 Jun 2024 Run: 3 Second round#", "x.32d"),
        "Wed 05 Jun 2024 Run_ 3 Second round");
    EXPECT_EQ(exportName("32 Date:  a/b\\c:*?\"<>|  \xD6l #", "x"), "a_b_c_______ \xC3\x96l");
    EXPECT_EQ(exportName("32 Date:..hidden #", "x"), "hidden");
    EXPECT_EQ(exportName("32 Date:  #", "24060512.32d"), "24060512.32d");
    EXPECT_EQ(exportName("", "24060512.32d"), "24060512.32d");
}

TEST_F(ExportFile, AnExtensionIsAddedOnce) {
    EXPECT_EQ(withExtension("/a/run", ".csv"), "/a/run.csv");
    EXPECT_EQ(withExtension("/a/run.CSV", ".csv"), "/a/run.CSV");
    // So no export takes the place of a run.
    EXPECT_EQ(withExtension("/kvo/Data/24060512.32d", ".csv"), "/kvo/Data/24060512.32d.csv");
}

TEST_F(ExportFile, ItIsAskedWhereTo) {
    dialogs.expectFile("Export as CSV", "/home/me/Run 3.csv", "/elsewhere/x");
    EXPECT_EQ(ask(), "/elsewhere/x.csv");
    EXPECT_EQ(folder, "/elsewhere");
    dialogs.expectFile("Export as CSV", "/elsewhere/Run 3.csv", std::nullopt);
    EXPECT_EQ(ask(), std::nullopt);
    EXPECT_EQ(folder, "/elsewhere");
}

TEST_F(ExportFile, NothingIsReplacedWithoutAQuestion) {
    files.put("/home/me/x.csv", {1});
    dialogs.expectFile("Export as CSV", "/home/me/Run 3.csv", "/home/me/x");
    dialogs.expectBox(replaceQuestion, 4 + 48 + 256, "Export as CSV", platform::Reply::no);
    // A No asks for another name.
    dialogs.expectFile("Export as CSV", "/home/me/x.csv", std::nullopt);
    EXPECT_EQ(ask(), std::nullopt);
    dialogs.expectFile("Export as CSV", "/home/me/Run 3.csv", "/home/me/x.csv");
    dialogs.expectBox(replaceQuestion, 4 + 48 + 256, "Export as CSV", platform::Reply::yes);
    EXPECT_EQ(ask(), "/home/me/x.csv");
    EXPECT_EQ(files.read("/home/me/x.csv"), platform::Bytes{1});
}

TEST_F(ExportFile, AFailureIsToldAndLeavesWhatWasThere) {
    files.put("/home/me/x.csv", {1});
    files.failWrites("/home/me", MemoryFiles::Failure::fullDisk);
    dialogs.expectBoxTitled("Export as CSV").contains = "/home/me/x.csv";
    writeExport(csvForm, "/home/me/x.csv", {2}, dialogs, files);
    EXPECT_EQ(files.read("/home/me/x.csv"), platform::Bytes{1});
    files.allowWrites();
    writeExport(csvForm, "/home/me/x.csv", {2}, dialogs, files);
    EXPECT_EQ(files.read("/home/me/x.csv"), platform::Bytes{2});
}
