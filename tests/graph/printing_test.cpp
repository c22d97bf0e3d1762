#include "graph/printing.h"

#include "core/shared_state.h"
#include "tests/support/recording_surface.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/scripted_printer.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

using namespace kvo;
using namespace kvo::graph;
using kvo::testing::JobState;
using platform::Orientation;
using platform::Printed;

namespace {

class Watching : public PrintProgress {
public:
    bool goesOn(int pagesDone, int allPages) override {
        all = allPages;
        return ++asked != stopAtQuestion && pagesDone != stopAt;
    }
    int stopAt = -1;
    int stopAtQuestion = -1;
    int asked = 0;
    int all = 0;
};

// A run of three pages of table.
struct PrintingTest : ::testing::Test {
    PrintingTest() {
        core::OpenRun& run = state->Run;
        run.DataType = 32;
        run.SampleCount = 3 * linesAPage;
        run.headerLine = "32 VRN32  Date:Wed 05 Jun 2024 Run: 3 M\xfcller#";
        run.image.header.CrankGearTeeth = 1;
        run.image.header.BasketGearTeeth = 1;
        for (int i = 1; i <= run.SampleCount; ++i) run.image.samples[i].EngineRpm = 4000;
        state->Config.EngineVisible = -1;
        state->Config.G_Res = 1;
    }
    void print(int item) {
        const PictureInput input{state->Config, state->Run, state->Overlay, view, onTop,
            {0, 1100, 205, 0}, {}, true, "The caption", {}};
        Mnu_Print(item, input, state->AnalogPicture, {printer, dialogs, window, progress});
    }
    void expectFailure(int item) {
        static const std::array<const char*, 3> words{
            "Error Printing Graph. ", "Error Printing Text. ", "Error Printing Graph & Text. "};
        dialogs.expectBox(words[static_cast<std::size_t>(item)], platform::boxStyle::ok, "Kvo");
    }
    void TearDown() override {
        EXPECT_EQ(dialogs.problems(), "");
        // The pointer of the surface is as it was.
        ASSERT_FALSE(window.hourglass.empty());
        EXPECT_TRUE(window.hourglass.front());
        EXPECT_FALSE(window.hourglass.back());
    }
    const kvo::testing::PrintedDocument& document() { return *printer.documents.back(); }
    std::unique_ptr<core::SharedState> state = std::make_unique<core::SharedState>();
    GraphView view;
    platform::DisplayList onTop;
    kvo::testing::ScriptedPrinter printer;
    kvo::testing::ScriptedDialogs dialogs;
    kvo::testing::RecordingHost window;
    Watching progress;
};

} // namespace

TEST_F(PrintingTest, TheScreenIsOneLandscapePage) {
    print(printScreen);
    ASSERT_EQ(printer.documents.size(), 1U);
    EXPECT_EQ(document().state, JobState::ended);
    EXPECT_EQ(document().request.documentName, "Wed 05 Jun 2024 Run: 3 M\xc3\xbcller");
    EXPECT_TRUE(document().request.offersWhitePaper);
    ASSERT_EQ(document().pages.size(), 1U);
    EXPECT_EQ(document().request.firstPage, Orientation::landscape);
}

TEST_F(PrintingTest, TheDataArePortraitPages) {
    printer.beforePage = [this] { EXPECT_EQ(window.hourglass, std::vector<bool>{true}); };
    print(printData);
    ASSERT_EQ(printer.documents.size(), 1U);
    EXPECT_EQ(document().state, JobState::ended);
    EXPECT_FALSE(document().request.offersWhitePaper);
    ASSERT_EQ(document().pages.size(), 3U);
    for (const auto& page : document().pages) {
        EXPECT_EQ(page.orientation, Orientation::portrait);
        EXPECT_EQ(page.texts.at(0).text, "The caption");
    }
    EXPECT_EQ(progress.all, 3);
}

TEST_F(PrintingTest, BothAreOneDocumentAfterOneQuestion) {
    print(printScreenAndData);
    ASSERT_EQ(printer.documents.size(), 1U);
    EXPECT_EQ(document().state, JobState::ended);
    EXPECT_TRUE(document().request.offersWhitePaper);
    ASSERT_EQ(document().pages.size(), 4U);
    EXPECT_EQ(document().pages[0].orientation, Orientation::landscape);
    EXPECT_EQ(document().pages[0].texts.at(0).text, "Wed 05 Jun 2024 Run: 3 M\xfcller");
    for (std::size_t i = 1; i < 4; ++i)
        EXPECT_EQ(document().pages[i].orientation, Orientation::portrait);
    EXPECT_EQ(progress.all, 4);
}

TEST_F(PrintingTest, CancelInTheQuestionEndsItWithoutAWord) {
    printer.answer = Printed::cancelled;
    for (const int item : {printScreen, printData, printScreenAndData}) print(item);
    EXPECT_TRUE(printer.documents.empty());
}

TEST_F(PrintingTest, APrinterThatDoesNotBeginIsTold) {
    printer.answer = Printed::failed;
    for (const int item : {printScreen, printData, printScreenAndData}) {
        expectFailure(item);
        print(item);
    }
}

TEST_F(PrintingTest, AFailureAtEveryPageOfEveryItemIsToldAndLeavesNoDocument) {
    for (const auto& [item, pages] :
        {std::pair{printScreen, 1}, {printData, 3}, {printScreenAndData, 4}}) {
        for (int page = 1; page <= pages; ++page) {
            printer.failingPage = page;
            expectFailure(item);
            print(item);
            EXPECT_EQ(document().state, JobState::killed) << item << " " << page;
            EXPECT_EQ(document().pages.size(), static_cast<std::size_t>(page));
            EXPECT_EQ(dialogs.problems(), "");
        }
    }
}

TEST_F(PrintingTest, TheUserCancelsBetweenPagesWithoutAWord) {
    for (const int item : {printData, printScreenAndData}) {
        progress.stopAt = 2;
        print(item);
        EXPECT_EQ(document().state, JobState::killed);
        EXPECT_EQ(document().pages.size(), 2U);
    }
}

TEST_F(PrintingTest, ThePrinterIsCancelledBetweenItsPagesWithoutAWord) {
    printer.asksWhilePrinting = true;
    for (const int item : {printData, printScreenAndData}) {
        progress.asked = 0;
        print(item);
        EXPECT_EQ(document().state, JobState::ended);
        // Once a page that is laid out, once a page that is printed.
        const int pages = item == printData ? 3 : 4;
        EXPECT_EQ(progress.asked, 2 + pages - 1);
        progress.stopAtQuestion = progress.asked;
        progress.asked = 0;
        print(item);
        EXPECT_EQ(document().state, JobState::killed);
        progress.stopAtQuestion = -1;
    }
}

TEST_F(PrintingTest, ATableThatCannotBeMadeIsToldBeforeAnyQuestion) {
    state->Run.image.header.BasketGearTeeth = 0;
    for (const int item : {printData, printScreenAndData}) {
        expectFailure(item);
        print(item);
    }
    EXPECT_TRUE(printer.documents.empty());
    print(printScreen);
    EXPECT_EQ(document().state, JobState::ended);
}
