// What a download leaves on disk: title, run file and index, and what the user hears where one of
// them cannot be written.
#include "core/run_index.h"
#include "core/run_records.h"
#include "link/download_session.h"
#include "tests/support/download_rig.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

using namespace platform;
using testing::DownloadRig;
using testing::MemoryFiles;

void putIndex(DownloadRig& rig, const std::vector<std::string>& descriptions) {
    std::vector<core::RunIndexEntry> entries;
    for (const auto& text : descriptions) entries.push_back({"26010101.01d", text});
    ASSERT_TRUE(core::writeRunIndex("/kvo", entries, rig.files));
}

TEST(DownloadSaving, TheTitleIsSuggestedFromTheLastRecord) {
    const std::pair<const char*, const char*> rows[] = {{"Sun 15 Nov 2026 Run: 2 fast", " 3 "},
        {"Sat 14 Nov 2026 Run: 2", "1 "}, {"no such word", "1 "}};
    for (const auto& [last, suggested] : rows) {
        DownloadRig rig(8);
        putIndex(rig, {"Sun 15 Nov 2026 Run: 8", last});
        rig.expectSave(suggested);
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        ASSERT_EQ(rig.index().size(), 3U);
        EXPECT_EQ(rig.index()[2].Description, "Sun 15 Nov 2026 Run: 1"); // at the end, unsorted
    }
}

// The suggestion as it stands is what most users accept.
TEST(DownloadSaving, TheTenthRunOfADayIsNotTheFirstOne) {
    DownloadRig rig(8);
    putIndex(rig, {"Sun 15 Nov 2026 Run: 1", "Sun 15 Nov 2026 Run: 9"});
    rig.expectSave(" 10 ", " 10 ");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.state->Run.headerLine.ends_with("Date:Sun 15 Nov 2026 Run: 10 #"));
    ASSERT_EQ(rig.index().size(), 3U);
    EXPECT_EQ(rig.index()[2].Description, "Sun 15 Nov 2026 Run: 10");
    EXPECT_EQ(core::RunDateKey(rig.index()[2].Description), 20111510);
}

TEST(DownloadSaving, LeadingBlanksTakeNoRoomOfALongTitle) {
    DownloadRig rig(8);
    rig.expectSave("1 ", "   7" + std::string(199, 'x'));
    rig.click();
    EXPECT_EQ(rig.index()[0].Description, "Sun 15 Nov 2026 Run: 7" + std::string(129, 'x'));
}

TEST(DownloadSaving, ATitleWithoutANumberComesBack) {
    DownloadRig rig(8);
    for (const char* title : {"abc", "0", "-1", "Western 3", "   "})
        rig.dialogs.expectInputTitled("Run Title", title);
    rig.expectSave("1 ", "2 Western Nationals");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.index()[0].Description, "Sun 15 Nov 2026 Run: 2 Western Nationals");
}

TEST(DownloadSaving, ALongTitleIsStoredWith130Characters) {
    DownloadRig rig(8);
    rig.expectSave("1 ", "7" + std::string(199, 'x'));
    rig.click();
    EXPECT_EQ(rig.index()[0].Description, "Sun 15 Nov 2026 Run: 7" + std::string(129, 'x'));
    EXPECT_TRUE(rig.state->Run.headerLine.ends_with(" Run: 7" + std::string(19, 'x') + "#"));
}

TEST(DownloadSaving, AnEmptyTitleAsksBeforeTheRunIsGivenUp) {
    DownloadRig rig(8);
    const char* question = "NO DATA will be Saved to Disk.\r\n\r\nDo You Wish To Continue";
    const int style = boxStyle::yesNo + boxStyle::warning;
    rig.dialogs.expectInputTitled("Run Title", "");
    rig.dialogs.expectBox(question, style, "Data Warning", Reply::no);
    rig.dialogs.expectInputTitled("Run Title", "");
    rig.dialogs.expectBox(question, style, "Data Warning", Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.view->unloaded);
    EXPECT_FALSE(rig.files.folderExists("/kvo/Data"));
    EXPECT_EQ(rig.view->touchedAfterUnload, 0);
}

TEST(DownloadSaving, YesShowsTheGraphOnTheRunThatWasSaved) {
    DownloadRig rig(8);
    rig.dialogs.expectInputTitled("Run Title", "4 test");
    rig.expectSavedBox(Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.view->events.back(),
        std::string("graph: ") + DownloadRig::runPath + ":  Date:Sun 15 Nov 2026 Run: 4 test");
    EXPECT_EQ(rig.view->touchedAfterUnload, 0);
}

TEST(DownloadSaving, NoShowsNoGraph) {
    DownloadRig rig(8);
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.view->events,
        (std::vector<std::string>{"buttons hidden", DownloadRig::chosen, "unloaded"}));
    EXPECT_EQ(rig.dialogs.beeps(), 1);
}

TEST(DownloadSaving, NothingOfTheTailOfTheRunBeforeGetsIntoTheFile) {
    DownloadRig rig(8);
    core::RunTailBlock& before = rig.state->Run.image.tail;
    before.AnalogTypes.fill(3);
    before.reserved.fill(0xAB);
    before.GearCount = 5; // as a rework of the clutch leaves it
    before.GearRatio6 = 0.7F;
    before.TimeOffset = 300;
    rig.config.Sixth_Ratio = 1.25;
    rig.config.Analog_Type[1] = 1;
    rig.config.Analog_Type[8] = 4;
    rig.saveConfig();
    rig.expectSave();
    rig.click();
    const auto file = rig.files.read(DownloadRig::runPath);
    ASSERT_TRUE(file);
    core::RunTailBlock tail;
    ASSERT_TRUE(core::decode(core::runRecord(*file, 2520 + 5), tail));
    core::RunTailBlock fresh;
    fresh.AnalogTypes = rig.config.Analog_Type;
    fresh.GearRatio6 = 1.25F;
    fresh.TimeOffset = 160;
    EXPECT_EQ(tail, fresh);
}

// The link and the state live as long as the program.
TEST(DownloadSaving, NothingThatWasLeftBehindCountsInTheNextOne) {
    DownloadRig rig(8);
    rig.link.LinkFailed = -1; // by a transfer that failed
    // By a run that was read, perhaps changed and written back under its own line.
    rig.state->Run.headerLine = "25 VRN25 Ver 1.3 128k Serial No 7  Date:Sat 14 Nov 2026 Run: 9#";
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    const auto file = rig.files.read(DownloadRig::runPath);
    ASSERT_TRUE(file);
    const std::string line = core::decodeHeaderLine(core::runRecord(*file, 1)).value_or("");
    EXPECT_EQ(line.substr(0, 6), "8 VRN8");
    EXPECT_NE(line.find("Date:Sun 15 Nov 2026 Run: 1#"), std::string::npos);
    EXPECT_EQ(rig.index()[0].Description, "Sun 15 Nov 2026 Run: 1");
}

TEST(DownloadSaving, TwoDownloadsOfOneMinuteShareTheFile) {
    DownloadRig rig(8);
    rig.expectSave();
    rig.click();
    rig.newForm();
    rig.expectSave(" 2 ", "2");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.index().size(), 2U);
    EXPECT_EQ(rig.index()[1].FileName, rig.index()[0].FileName);
}

struct Refusal {
    MemoryFiles::Failure how;
    const char* words;
};
constexpr Refusal refusals[] = {{MemoryFiles::Failure::fullDisk, "No space left on device"},
    {MemoryFiles::Failure::readOnly, "Permission denied"}};

TEST(DownloadSaving, AFailedSaveIsToldAndTriedAgain) {
    for (const auto& refusal : refusals) {
        DownloadRig rig(8);
        rig.files.failWrites("/kvo/Data", refusal.how);
        rig.dialogs.expectInputTitled("Run Title", "1");
        auto& box = rig.dialogs.expectBoxTitled("Run Not Saved", Reply::retry);
        box.contains = refusal.words;
        box.style = boxStyle::retryCancel + boxStyle::critical;
        box.whileShown = [&] {
            EXPECT_FALSE(rig.dialogs.hourglass());
            EXPECT_FALSE(rig.files.exists(DownloadRig::runPath));
            rig.files.allowWrites();
        };
        rig.expectSavedBox();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_TRUE(rig.files.exists(DownloadRig::runPath));
        EXPECT_EQ(rig.index().size(), 1U);
    }
}

TEST(DownloadSaving, ARunCanBeSavedElsewhere) {
    DownloadRig rig(8);
    rig.files.failWrites("/kvo/", MemoryFiles::Failure::readOnly);
    rig.dialogs.expectInputTitled("Run Title", "1");
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::cancel);
    rig.dialogs.expectFolder("/stick");
    rig.dialogs.expectBoxTitled("Run Saved Elsewhere").contains = "/stick/26111514.52d";
    rig.expectSavedBox(Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.files.exists("/stick/26111514.52d"));
    EXPECT_TRUE(rig.index().empty());
    EXPECT_EQ(rig.view->events.back(), "graph: /stick/26111514.52d:  Date:Sun 15 Nov 2026 Run: 1");
}

TEST(DownloadSaving, GivingUpASaveIsNeverCalledSaved) {
    DownloadRig rig(8);
    rig.files.failWrites("/kvo/Data", MemoryFiles::Failure::fullDisk);
    rig.dialogs.expectInputTitled("Run Title", "1");
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::cancel);
    rig.dialogs.expectFolder(std::nullopt);
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::no); // no, do not leave it unsaved
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::cancel);
    rig.dialogs.expectFolder(std::nullopt);
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), ""); // so no box said that it was saved
    EXPECT_TRUE(rig.view->unloaded);
    EXPECT_FALSE(rig.dialogs.hourglass());
    EXPECT_GT(rig.state->Run.image.samples[700].EngineRpm, 0); // still in memory
    EXPECT_EQ(rig.view->events, (std::vector<std::string>{"buttons hidden", "unloaded"}));
}

TEST(DownloadSaving, AnIndexThatCannotBeWrittenIsTold) {
    for (const Reply answer : {Reply::retry, Reply::cancel}) {
        DownloadRig rig(8);
        rig.files.failWrites(DownloadRig::indexFile, MemoryFiles::Failure::fullDisk, 1);
        rig.dialogs.expectInputTitled("Run Title", "1");
        rig.dialogs.expectBoxTitled("Run Not Listed", answer).contains = DownloadRig::runPath;
        rig.expectSavedBox();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_TRUE(rig.files.exists(DownloadRig::runPath));
        EXPECT_EQ(rig.index().size(), answer == Reply::retry ? 1U : 0U);
    }
}

} // namespace
} // namespace kvo::link
