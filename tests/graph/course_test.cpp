// The course of the graph window without a window: what it asks for, in which order, and what is in
// memory behind each command.
#include "graph/course.h"

#include "core/config.h"
#include "core/data_types.h"
#include "core/paths.h"
#include "core/run_info.h"
#include "core/shared_state.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"
#include "tools/logger_simulator/model_run.h"
#include "tools/logger_simulator/run_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <optional>

using namespace kvo;
using namespace kvo::graph;
using platform::Reply;

namespace {

// Notes what the course asks for; the chooser answers with what the test has put there.
class RecordingWindow : public CourseView {
public:
    std::vector<std::string> calls;
    std::vector<std::string> chooserTitles;
    std::optional<core::ChosenRun> answer;
    std::function<void()> whileDeleting;
    bool withoutMemory = false; // to draw

    std::optional<core::ChosenRun> chooseRun(const std::string& title) override {
        chooserTitles.push_back(title);
        return answer;
    }
    void chooseRunsToDelete() override {
        if (whileDeleting) whileDeleting();
    }
    void showState() override { calls.emplace_back("state"); }
    void emptyLabels() override { calls.emplace_back("empty"); }
    void emptyOverlayLabels() override { calls.emplace_back("empty overlay"); }
    void clearSurface() override { calls.emplace_back("clear"); }
    void setScaleRight(int right) override { calls.push_back("scale " + std::to_string(right)); }
    void showChannelsForType(int type) override {
        calls.push_back("channels " + std::to_string(type));
    }
    void drawTrend() override {
        if (withoutMemory) throw std::bad_alloc();
        calls.push_back(bar("draw"));
    }
    void overLayDraw() override {
        if (withoutMemory) throw std::bad_alloc();
        calls.push_back(bar("overlay"));
    }
    void timeLine() override { calls.push_back("line " + std::to_string(view->CursorSample)); }

    std::string bar(const std::string& name) const {
        return view->LoadingBar == -1 ? name + " loading" : name;
    }
    // The calls but those that only show the state.
    std::vector<std::string> drawn() {
        std::vector<std::string> all;
        std::copy_if(calls.begin(), calls.end(), std::back_inserter(all),
            [](const std::string& call) { return call != "state"; });
        calls.clear();
        return all;
    }
    const GraphView* view = nullptr;
};

struct CourseOnRuns : ::testing::Test {
    CourseOnRuns() {
        state->AppFolder = "/kvo";
        state->ConfigKnown = true;
        window.view = &view;
        store(1, 32);
        store(2, 32);
        store(3, 25);
        runs.read("/kvo", files);
    }
    // The run of a number, 1 to 9: its file, its info file and its line in the index.
    void store(int number, int type) {
        core::OpenRun run;
        const core::DataTypeFacts* facts = core::dataTypeFacts(type);
        run.path = pathOf(number);
        run.DataType = static_cast<std::uint8_t>(type);
        run.SampleCount = static_cast<std::uint16_t>(facts->rows);
        simulator::fillRun(
            run.image, type, facts->rows, facts->timeOffset, static_cast<std::uint32_t>(number));
        const core::LoggerIdentity logger;
        const std::string text =
            " Date:Wed 05 Jun 2024 Run: " + std::to_string(number) + " Second round#";
        core::AppConfig config;
        config.AnalogName[1] = "Name " + std::to_string(number);
        ASSERT_TRUE(core::SaveRun(run, {logger, text, config}, "/kvo", files));
        ASSERT_TRUE(core::AddRunToIndex(
            "/kvo", core::indexEntryOf(run.path, text), core::IndexOrder::asItIs, files));
        core::RunInfo info;
        info.Text_ET = "7." + std::to_string(number);
        ASSERT_TRUE(core::SaveRunInfo("/kvo", core::infoFilePath(run.path), run.path, info, files));
    }
    static std::string pathOf(int number) {
        return "/kvo/Data/24060512.3" + std::to_string(number) + "d";
    }
    core::ChosenRun chosen(int number) {
        const std::string path = pathOf(number);
        runs.chooseFile(core::baseName(path));
        const std::string padded = core::baseName(path) + "   "; // no caption shows the blanks
        return {path, core::infoFilePath(path), padded, "described"};
    }
    void load(int number) {
        window.answer = chosen(number);
        course.Mnu_LoadData();
    }
    void overlay(int number) {
        window.answer = chosen(number);
        course.Mnu_Overlay();
    }
    int engineAt(int sample) const { return state->Run.image.samples[sample].EngineRpm; }

    std::unique_ptr<core::SharedState> state = std::make_unique<core::SharedState>();
    kvo::testing::MemoryFiles files;
    kvo::testing::ScriptedDialogs dialogs;
    GraphView view;
    RecordingWindow window;
    library::RunList runs;
    Course course{
        {state->Config, state->ConfigKnown, state->AppFolder, state->Run, state->Overlay, runs},
        view, window, dialogs, files};
};

using Calls = std::vector<std::string>;

} // namespace

TEST_F(CourseOnRuns, AWindowWithoutARunHasNoSamplesWhateverWasInMemory) {
    state->Run.SampleCount = 1213;
    state->Run.times.Text_ET = "7.31";
    view.OverlayLoaded = -1;
    course.openEmpty();
    EXPECT_FALSE(course.hasRun());
    EXPECT_EQ(state->Run.SampleCount, 0);
    EXPECT_EQ(state->Run.times, core::TrackTimes{});
    EXPECT_FALSE(course.overlayLoaded());
    EXPECT_EQ(course.caption(), "Data Graph");
    state->Config.AnalogName[2] = "Fuel    ";
    EXPECT_EQ(course.analogCaption(2), "Fuel    ");
    EXPECT_STREQ(course.overlayCommand(), "&Overlay Data File");
}

TEST_F(CourseOnRuns, ALoadEmptiesDrawsAndPutsTheCursorOnTimeZero) {
    view.CursorSample = 900;
    load(3);
    EXPECT_EQ(window.chooserTitles, (Calls{"Load Data File"}));
    EXPECT_EQ(
        window.drawn(), (Calls{"empty", "scale 1214", "channels 25", "draw loading", "line 80"}));
    EXPECT_EQ(view.LoadingBar, 0);
    EXPECT_EQ(course.caption(), "Data File: 24060512.33d");
    EXPECT_EQ(state->Run.path, pathOf(3));
    EXPECT_EQ(state->Run.infoPath, "/kvo/Data/24060512.33i");
    EXPECT_EQ(state->Run.times.Text_ET, "7.3");
    EXPECT_EQ(course.analogCaption(1), "Name 3  ");
    EXPECT_STREQ(course.overlayCommand(), "Overlay Data File");
    EXPECT_FALSE(dialogs.hourglass());
}

TEST_F(CourseOnRuns, NoChoiceChangesNothing) {
    load(1);
    window.drawn();
    window.answer.reset();
    course.Mnu_LoadData();
    EXPECT_EQ(window.drawn(), Calls{});
    EXPECT_EQ(state->Run.path, pathOf(1));
    course.Mnu_Overlay();
    // The line and the focus come back behind a cancelled chooser too.
    EXPECT_EQ(window.drawn(), (Calls{"line 160"}));
    EXPECT_FALSE(course.overlayLoaded());
}

TEST_F(CourseOnRuns, ARunThatThereIsNoMemoryForLeavesTheRunThatIsShown) {
    load(1);
    overlay(1);
    window.drawn();
    files.failReads(pathOf(3), kvo::testing::MemoryFiles::Failure::noMemory);
    dialogs.expectBox("Not enough memory to load\n" + pathOf(3), 16, "Kvo");
    load(3);
    EXPECT_EQ(state->Run.path, pathOf(1));
    EXPECT_EQ(course.caption(), "Data File: 24060512.31d");
    dialogs.expectBox("Not enough memory to load\n" + pathOf(3), 16, "Kvo");
    overlay(3);
    EXPECT_FALSE(course.overlayLoaded());
    files.allowReads();
    files.failReads("/kvo/Data/24060512.33i", kvo::testing::MemoryFiles::Failure::noMemory);
    dialogs.expectBox("Not enough memory to load\n" + pathOf(3), 16, "Kvo");
    load(3);
    EXPECT_EQ(state->Run.path, pathOf(1)) << "its track times are no empty ones";
    EXPECT_EQ(state->Run.times.Text_ET, "7.1");
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(CourseOnRuns, APictureThatThereIsNoMemoryForIsToldAndTheRunIsThere) {
    load(1);
    window.withoutMemory = true;
    dialogs.expectBox("Not enough memory to draw the whole picture.", 16, "Kvo");
    load(3);
    EXPECT_EQ(state->Run.path, pathOf(3));
    EXPECT_EQ(course.caption(), "Data File: 24060512.33d");
    EXPECT_EQ(view.LoadingBar, 0);
    dialogs.expectBox("Not enough memory to draw the whole picture.", 16, "Kvo");
    overlay(3);
    EXPECT_TRUE(course.overlayLoaded());
    EXPECT_EQ(view.LoadingBar, 0);
    EXPECT_FALSE(dialogs.hourglass());
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(CourseOnRuns, AFileThatDoesNotLoadLeavesTheRunThatIsShown) {
    load(1);
    window.drawn();
    const core::OpenRun before = state->Run;
    ASSERT_TRUE(files.remove(pathOf(3)));
    dialogs.expectBox("File no Found                  \n" + pathOf(3), 416, "Kvo");
    load(3);
    files.put(pathOf(3), {2, 0, '9', '9'});
    dialogs.expectBox("/KVO/DATA/24060512.33D\n\nIs Corrupt or Not a Kvo Data File\n"
                      "and can't be lodded.",
        48, "Kvo");
    load(3);
    EXPECT_EQ(dialogs.beeps(), 1);
    EXPECT_EQ(window.drawn(), Calls{});
    EXPECT_EQ(state->Run.path, before.path);
    EXPECT_EQ(state->Run.headerLine, before.headerLine);
    EXPECT_EQ(state->Run.DataType, 32);
    EXPECT_EQ(state->Run.SampleCount, 1360);
    EXPECT_EQ(state->Run.times, before.times);
    EXPECT_EQ(course.caption(), "Data File: 24060512.31d");
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(CourseOnRuns, ALoadThatFailsTakesTheOverlayOff) {
    for (const bool byTheList : {false, true}) {
        load(1);
        overlay(2);
        window.drawn();
        ASSERT_TRUE(files.remove(pathOf(3)) || byTheList);
        dialogs.expectBox("File no Found                  \n" + pathOf(3), 416, "Kvo");
        if (byTheList) {
            runs.chooseFile("24060512.32d");
            course.GraphChange(1);
        } else {
            load(3);
        }
        EXPECT_EQ(window.drawn(), (Calls{"draw", "line 160"}));
        EXPECT_FALSE(course.overlayLoaded());
        EXPECT_EQ(course.caption(), "Data File: 24060512.31d");
        EXPECT_STREQ(course.overlayCommand(), "Overlay Data File");
        EXPECT_STREQ(course.overlayKey(), "Overlay");
        EXPECT_EQ(course.analogCaption(1), "Name 1  ");
        EXPECT_EQ(dialogs.problems(), "");
    }
}

TEST_F(CourseOnRuns, BackAndForwardGoThroughTheList) {
    load(1);
    EXPECT_FALSE(course.canChange(0));
    EXPECT_TRUE(course.canChange(1));
    window.drawn();
    course.GraphChange(0);
    EXPECT_EQ(window.drawn(), Calls{});
    course.GraphChange(1);
    EXPECT_EQ(state->Run.path, pathOf(2));
    course.GraphChange(1);
    EXPECT_EQ(state->Run.path, pathOf(3));
    EXPECT_FALSE(course.canChange(1));
    course.GraphChange(0);
    EXPECT_EQ(state->Run.path, pathOf(2));
}

TEST_F(CourseOnRuns, AMissingNeighbourIsPassedOver) {
    load(1);
    ASSERT_TRUE(files.remove(pathOf(2)));
    dialogs.expectBox("File no Found                  \n" + pathOf(2), 416, "Kvo");
    course.GraphChange(1);
    EXPECT_EQ(state->Run.path, pathOf(1));
    course.GraphChange(1);
    EXPECT_EQ(state->Run.path, pathOf(3));
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(CourseOnRuns, ADownloadIsReadBackAndStandsInTheList) {
    store(4, 12);
    runs.read("/kvo", files);
    runs.chooseFile("24060512.34d");
    ASSERT_TRUE(course.openFresh(pathOf(4), " Date:Wed 05 Jun 2024 Run: 4 "));
    EXPECT_EQ(state->Run.SampleCount, 2441); // fewer than the file's rows
    EXPECT_EQ(view.CursorSample, 160);
    EXPECT_EQ(window.drawn(), (Calls{"clear", "empty", "scale 2442"}));
    EXPECT_EQ(course.caption(), " Date:Wed 05 Jun 2024 Run: 4 ");
    EXPECT_TRUE(course.canChange(0));
    EXPECT_FALSE(course.canChange(1));
    course.GraphChange(0);
    EXPECT_EQ(state->Run.path, pathOf(3));
}

TEST_F(CourseOnRuns, ADownloadBeginsAnewOverAnOverlay) {
    load(1);
    overlay(2);
    window.drawn();
    ASSERT_TRUE(course.openFresh(pathOf(2), " Date:Wed 05 Jun 2024 Run: 2 "));
    EXPECT_EQ(window.drawn(), (Calls{"clear", "empty", "scale 1361"}));
    EXPECT_FALSE(course.overlayLoaded());
    EXPECT_STREQ(course.overlayCommand(), "&Overlay Data File");
    EXPECT_STREQ(course.overlayKey(), "Overlay");
    EXPECT_EQ(course.caption(), " Date:Wed 05 Jun 2024 Run: 2 ");
}

TEST_F(CourseOnRuns, AFreshRunThatIsNotThereLeavesTheWindowEmpty) {
    dialogs.expectBox("File no Found                  \n/kvo/Data/24060512.39d", 416, "Kvo");
    EXPECT_FALSE(course.openFresh(pathOf(9), "x"));
    EXPECT_FALSE(course.hasRun());
    EXPECT_EQ(course.caption(), "Data Graph");
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(CourseOnRuns, AnOverlayComesAndGoes) {
    load(1);
    window.drawn();
    overlay(2);
    EXPECT_EQ(window.chooserTitles.back(), "Load Overlay File");
    EXPECT_EQ(window.drawn(), (Calls{"empty overlay", "overlay loading", "line 160"}));
    EXPECT_EQ(view.OverlayLoaded, -1);
    EXPECT_EQ(state->Run.path, pathOf(1));
    EXPECT_EQ(state->Overlay.path, pathOf(2));
    EXPECT_EQ(course.caption(), "Data File: 24060512.31d    Overlay File: 24060512.32d");
    EXPECT_STREQ(course.overlayCommand(), "Unload Overlay");
    EXPECT_STREQ(course.overlayKey(), "Unload");
    EXPECT_EQ(course.analogCaption(1), ""); // its names lie behind the end of its file
    course.redraw();
    EXPECT_EQ(window.drawn(), (Calls{"draw", "overlay", "line 160"}));
    course.Mnu_Overlay();
    EXPECT_EQ(window.chooserTitles.size(), 2U); // no chooser
    EXPECT_EQ(window.drawn(), (Calls{"draw", "line 160"}));
    EXPECT_EQ(view.OverlayLoaded, 0);
    EXPECT_EQ(course.caption(), "Data File: 24060512.31d");
    EXPECT_STREQ(course.overlayCommand(), "Overlay Data File");
    EXPECT_STREQ(course.overlayKey(), "Overlay");
    EXPECT_EQ(course.analogCaption(1), "Name 1  ");
}

TEST_F(CourseOnRuns, AnOverlayOfAnotherTypeIsAskedFor) {
    load(1);
    const auto ask = [this](Reply reply) {
        dialogs.expectBox("The Overlay File is a Different Data Type.\r\n\r\n"
                          "             Do you wont to Continue",
            platform::boxStyle::yesNo, "Overlay", reply);
    };
    window.drawn();
    ask(Reply::no);
    overlay(3);
    EXPECT_FALSE(course.overlayLoaded());
    EXPECT_EQ(course.caption(), "Data File: 24060512.31d");
    EXPECT_EQ(window.drawn(), (Calls{"line 160"}));
    ask(Reply::yes);
    overlay(3);
    EXPECT_TRUE(course.overlayLoaded());
    EXPECT_EQ(state->Overlay.DataType, 25);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(CourseOnRuns, ARefusedOverlayLeavesNoNameInTheCaption) {
    load(1);
    ASSERT_TRUE(files.remove(pathOf(2)));
    dialogs.expectBox(" File no Found\n" + pathOf(2), 416, "Kvo");
    overlay(2);
    EXPECT_EQ(course.caption(), "Data File: 24060512.31d");
    files.put(pathOf(2), {3, 0, '2', '3', ' '});
    dialogs.expectBox("Not a Kvo Data File", 48, "Kvo");
    overlay(2);
    EXPECT_EQ(course.caption(), "Data File: 24060512.31d");
    EXPECT_FALSE(course.overlayLoaded());
    EXPECT_EQ(dialogs.problems(), "");
}

// Each overlay is read into a fresh image: the shorter one shows none of the longer one's rows.
TEST_F(CourseOnRuns, AnOverlayKeepsNothingOfTheOneBefore) {
    load(1);
    overlay(2);
    EXPECT_EQ(state->Overlay.SampleCount, 1860);
    EXPECT_NE(state->Overlay.image.samples[1300], core::RunSample{});
    course.Mnu_Overlay();
    dialogs.expectBoxTitled("Overlay", Reply::yes);
    overlay(3);
    EXPECT_EQ(state->Overlay.SampleCount, 1213);
    EXPECT_EQ(state->Overlay.image.samples[1300], core::RunSample{});
    EXPECT_EQ(state->Overlay.image.setup.AnalogName[1], "Name 3  ");
}

TEST_F(CourseOnRuns, LoadsAndNeighboursTakeTheOverlayOff) {
    load(1);
    overlay(2);
    load(1);
    EXPECT_FALSE(course.overlayLoaded());
    overlay(2);
    runs.chooseFile("24060512.31d");
    course.GraphChange(1);
    EXPECT_FALSE(course.overlayLoaded());
    EXPECT_EQ(course.caption(), "Data File: 24060512.32d");
    EXPECT_STREQ(course.overlayCommand(), "Overlay Data File");
}

TEST_F(CourseOnRuns, AnotherRunAnOverlayAndADeleteTakeTheReferenceAway) {
    load(1);
    view.marks.reference = 300;
    files.failReads(pathOf(3), kvo::testing::MemoryFiles::Failure::noMemory);
    for (int i = 0; i < 2; ++i) dialogs.expectBoxTitled("Kvo");
    load(3);
    overlay(3);
    EXPECT_EQ(view.marks.reference, 300); // the run is still there, and without an overlay
    files.allowReads();
    overlay(2);
    EXPECT_EQ(view.marks, Marks{});
    course.Mnu_Overlay();
    view.marks.reference = 300;
    course.GraphChange(1);
    EXPECT_EQ(view.marks, Marks{});
    view.marks.reference = 300;
    window.whileDeleting = [this] { ASSERT_TRUE(files.remove(state->Run.path)); };
    course.Mnu_DeleteRun();
    EXPECT_EQ(view.marks, Marks{});
}

TEST_F(CourseOnRuns, DeletingTheShownRunTakesEverythingOfIt) {
    load(1);
    overlay(2);
    window.drawn();
    window.whileDeleting = [this] { ASSERT_TRUE(files.remove(pathOf(1))); };
    course.Mnu_DeleteRun();
    EXPECT_EQ(window.drawn(), (Calls{"clear", "empty", "line 160"}));
    EXPECT_FALSE(course.hasRun());
    EXPECT_FALSE(course.overlayLoaded());
    EXPECT_EQ(state->Run.SampleCount, 0);
    EXPECT_EQ(state->Run.times, core::TrackTimes{});
    EXPECT_EQ(course.caption(), "Data Graph");
    EXPECT_STREQ(course.overlayCommand(), "Overlay Data File");
}

TEST_F(CourseOnRuns, DeletingAnotherRunKeepsTheShownOneAndItsPlaceInTheList) {
    load(2);
    window.drawn();
    window.whileDeleting = [this] {
        runs.chooseFile("24060512.31d");
        ASSERT_TRUE(runs.deleteChosen("/kvo", files));
    };
    course.Mnu_DeleteRun();
    EXPECT_EQ(window.drawn(), Calls{});
    EXPECT_TRUE(course.hasRun());
    EXPECT_FALSE(course.canChange(0)); // it has become the first row
    EXPECT_TRUE(course.canChange(1));
}

TEST_F(CourseOnRuns, AToolRedrawsWithTheOverlayAndWritesItsOwnFile) {
    load(1);
    const auto other = files.read(pathOf(2));
    window.drawn();
    dialogs.expectBoxTitled("Info", Reply::yes);
    dialogs.expectInputTitled("Graph Time Offset", "100");
    course.Mnu_TimeOffset();
    EXPECT_EQ(window.drawn(), (Calls{"draw", "line 160"}));
    core::OpenRun again;
    ASSERT_TRUE(core::LoadRun(pathOf(1), again, files));
    EXPECT_EQ(again.image.tail.TimeOffset, 260);
    EXPECT_EQ(files.read(pathOf(2)), other);
}

TEST_F(CourseOnRuns, AToolThatCannotWriteSaysSo) {
    load(1);
    files.failWrites(pathOf(1), kvo::testing::MemoryFiles::Failure::fullDisk);
    dialogs.expectBoxTitled("Info", Reply::yes);
    dialogs.expectInputTitled("Graph Time Offset", "100");
    dialogs.expectBoxTitled("Kvo");
    course.Mnu_TimeOffset();
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(CourseOnRuns, WhatIsImportedOverTheShownRunIsShown) {
    course.takeImported({pathOf(1)});
    EXPECT_EQ(window.drawn(), Calls{});
    load(1);
    overlay(2);
    window.drawn();
    core::OpenRun other;
    ASSERT_TRUE(core::LoadRun(pathOf(1), other, files));
    other.image.samples[500].EngineRpm = 7777;
    ASSERT_TRUE(core::SaveRun(other, "/kvo", files));
    course.takeImported({pathOf(2), pathOf(3)});
    EXPECT_EQ(window.drawn(), Calls{});
    EXPECT_NE(engineAt(500), 7777);
    course.takeImported({pathOf(2), pathOf(1)});
    EXPECT_EQ(
        window.drawn(), (Calls{"empty", "scale 1361", "channels 32", "draw loading", "line 160"}));
    EXPECT_EQ(engineAt(500), 7777);
    EXPECT_EQ(course.caption(), "Data File: 24060512.31d");
    EXPECT_FALSE(course.overlayLoaded());
}

TEST_F(CourseOnRuns, ACloseSavesWhatWasChangedOfAConfigurationThatIsKnown) {
    load(1);
    course.close();
    EXPECT_FALSE(files.exists("/kvo/Kvo.Cfg"));
    EXPECT_EQ(state->Run.SampleCount, 0);
    view.GraphDirty = -1;
    state->ConfigKnown = false;
    course.close();
    // A record that was never loaded nor set up would seal the folder against the next start.
    EXPECT_FALSE(files.exists("/kvo/Kvo.Cfg"));
    state->ConfigKnown = true;
    course.close();
    EXPECT_TRUE(files.exists("/kvo/Kvo.Cfg"));
}
