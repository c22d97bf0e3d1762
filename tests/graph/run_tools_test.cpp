#include "graph/run_tools.h"

#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include "core/run_records.h"
#include "core/shared_state.h"

#include <gtest/gtest.h>

using namespace kvo;
using namespace kvo::graph;
using platform::Reply;

namespace {

constexpr const char* eg = "\nEg. 150 = 1.5 Seconds\n       786 = 7.86 Seconds";
constexpr const char* again = "Not a valid time. Please try again or Cancal!\n";

struct Tools : ::testing::Test {
    Tools() {
        state.AppFolder = "/kvo";
        state.Run.path = "/kvo/Data/26111514.52d";
        state.Run.DataType = 12;
        state.Run.SampleCount = 2520;
        state.Run.headerLine = "12 VRN35";
        state.Run.image.tail.TimeOffset = 160;
        state.Run.image.tail.GearCount = 2;
        state.Run.image.tail.GearRatio6 = 1;
        for (int gear = 1; gear <= 5; ++gear) {
            state.Run.image.setup.GearRatio[gear] = 7.0F - static_cast<float>(gear);
        }
        for (int i = 1; i <= core::maxSamples; ++i) state.Run.image.samples[i].OutputRpm = 1001;
    }
    ~Tools() override { EXPECT_EQ(dialogs.problems(), ""); }
    void expectShift(const std::string& question, const std::string& answer) {
        dialogs.expectInput(question + eg, "Time", "", answer);
    }
    // The gear whose ratio made the input speed of a sample.
    int gearAt(int i) const { return 7 - state.Run.image.samples[i].InputRpm / 1001; }
    std::string headerInFile() const {
        const auto file = files.read(state.Run.path);
        return file ? core::decodeHeaderLine(core::runRecord(*file, 1)).value_or("-") : "-";
    }
    ToolPlace place() { return {state.Config.Gears, state.AppFolder, dialogs, files}; }
    ToolResult redo() { return Mnu_RedoClutch(state.Run, place()); }
    ToolResult offset() { return Mnu_TimeOffset(state.Run, place()); }
    void expectOffsetBox(Reply reply) { dialogs.expectBoxTitled("Info", reply); }

    core::SharedState state;
    kvo::testing::MemoryFiles files;
    kvo::testing::ScriptedDialogs dialogs;
};

} // namespace

TEST_F(Tools, RedoClutchTellsWhatItDoes) {
    dialogs.expectBox(
        "This Function will Synthetically derive the Input Shaft RPM.\n"
        "You will be asked to enter the time, in hundredths of a second that each gear\n"
        "(only if you have more than one gear)change occurred. If you have not written the \n"
        "times down , then press Cancel to escape, then go through the graph and find what \n"
        "you believe to be the gear change points. Dont worry if it is not correct, you \n"
        "may do this as many times as you wish.\n\n"
        "It also requires that the gear ratios, exact to three decimal places be entered\n"
        "in the Kvo Software Setup Menu. This should already have been done\n"
        "                              Do you want to enter the times now ?",
        4 + 32, "Info", Reply::no);
    EXPECT_FALSE(redo().changed);
    EXPECT_EQ(files.writes(), 0);
}

TEST_F(Tools, TwoGearsShiftAtTheTimeFromTimeZero) {
    dialogs.expectBoxTitled("Info", Reply::yes);
    expectShift("1-2 Shift time in hundredths of a second ?", "150");
    const ToolResult result = redo();
    EXPECT_TRUE(result.changed);
    EXPECT_TRUE(result.written);
    EXPECT_EQ(result.shiftPoints, (std::vector<int>{310}));
    EXPECT_EQ(gearAt(1), 1);
    EXPECT_EQ(gearAt(310), 1);
    EXPECT_EQ(gearAt(311), 2);
    EXPECT_EQ(gearAt(2520), 2);
    EXPECT_EQ(headerInFile(), state.Run.headerLine);
    EXPECT_FALSE(dialogs.hourglass());
    // The input word of the first sample in the file: record 3, from byte 4 on.
    const auto file = files.read(state.Run.path);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->at(2 * 84 + 4) + 256 * file->at(2 * 84 + 5), 6006);
}

TEST_F(Tools, OneGearIsAskedNoTime) {
    state.Run.image.tail.GearCount = 1;
    const std::string text = "As you only have one gear this will be applied to the entire run\n"
                             " and no Shift time is required.\n"
                             "                    Do you wish to continue ?";
    dialogs.expectBoxTitled("Info", Reply::yes);
    dialogs.expectBox(text, 4 + 32, "Info", Reply::no);
    EXPECT_FALSE(redo().changed);
    dialogs.expectBoxTitled("Info", Reply::yes);
    dialogs.expectBox(text, 4 + 32, "Info", Reply::yes);
    EXPECT_TRUE(redo().changed);
    for (const int i : {1, 160, 2520}) EXPECT_EQ(gearAt(i), 1) << i;
}

TEST_F(Tools, TheCountOfGearsComesFromTheRunElseFromTheSetup) {
    state.Run.image.tail.GearCount = 0;
    state.Config.Gears = 3;
    dialogs.expectBoxTitled("Info", Reply::yes);
    expectShift("1-2 Shift time in hundredths of a second ?", "100");
    expectShift("2-3 Shift time in hundredths of a second ?", "200");
    EXPECT_TRUE(redo().changed);
    EXPECT_EQ(gearAt(361), 3);
}

TEST_F(Tools, SixGearsAskFiveTimes) {
    state.Run.image.tail.GearCount = 6;
    dialogs.expectBoxTitled("Info", Reply::yes);
    for (int shift = 1; shift <= 4; ++shift) {
        expectShift(std::to_string(shift) + "-" + std::to_string(shift + 1) +
                        " Shift time in hundredths of a second ?",
            std::to_string(100 * shift));
    }
    dialogs.expectInput("5-6 Shift time in hundredths of a second ?\nEg. 150 = 1.5 Seconds\n"
                        "       801 = 8.01 Seconds",
        "Time", "", "500");
    EXPECT_TRUE(redo().changed);
    EXPECT_EQ(gearAt(260), 1);
    EXPECT_EQ(gearAt(261), 2);
    EXPECT_EQ(gearAt(560), 4);
    EXPECT_EQ(gearAt(660), 5);
    EXPECT_EQ(gearAt(661), 6);
}

TEST_F(Tools, SevenGearsAreNotAskedForTheSixth) {
    state.Run.image.tail.GearCount = 7;
    dialogs.expectBoxTitled("Info", Reply::yes);
    for (int shift = 1; shift <= 4; ++shift) {
        dialogs.expectInputTitled("Time", std::to_string(100 * shift));
    }
    EXPECT_TRUE(redo().changed);
    EXPECT_EQ(gearAt(2520), 5);
}

TEST_F(Tools, ZeroAsksAgainAndCancelEnds) {
    dialogs.expectBoxTitled("Info", Reply::yes);
    expectShift("1-2 Shift time in hundredths of a second ?", "0");
    expectShift(std::string(again) + "1-2 Shift time in hundredth of a second ?", "soon");
    expectShift(std::string(again) + "1-2 Shift time in hundredth of a second ?", "");
    EXPECT_FALSE(redo().changed);
    EXPECT_EQ(state.Run.image.samples[1].InputRpm, 0);
}

TEST_F(Tools, TheSecondTryOfTheLastShiftNamesTheOneBefore) {
    state.Run.image.tail.GearCount = 6;
    dialogs.expectBoxTitled("Info", Reply::yes);
    for (int shift = 1; shift <= 4; ++shift) dialogs.expectInputTitled("Time", "100");
    dialogs.expectInputTitled("Time", "0");
    expectShift(std::string(again) + "4-5 Shift time in hundredth of a second ?", "500");
    EXPECT_TRUE(redo().changed);
}

TEST_F(Tools, NegativeAndLateTimesAreTaken) {
    dialogs.expectBoxTitled("Info", Reply::yes);
    expectShift("1-2 Shift time in hundredths of a second ?", "-150");
    EXPECT_EQ(redo().shiftPoints, (std::vector<int>{10}));
    EXPECT_EQ(gearAt(11), 2);
    dialogs.expectBoxTitled("Info", Reply::yes);
    expectShift("1-2 Shift time in hundredths of a second ?", "9000");
    EXPECT_TRUE(redo().changed);
    EXPECT_EQ(gearAt(2520), 1);
}

TEST_F(Tools, ATimeBeyondSixteenBitsEndsTheTool) {
    dialogs.expectBoxTitled("Info", Reply::yes);
    expectShift("1-2 Shift time in hundredths of a second ?", "99999");
    EXPECT_FALSE(redo().changed);
}

TEST_F(Tools, ASpeedBeyondSixteenBitsEndsTheToolWithoutWriting) {
    state.Run.image.samples[100].OutputRpm = 32000;
    dialogs.expectBoxTitled("Info", Reply::yes);
    dialogs.expectInputTitled("Time", "150");
    EXPECT_FALSE(redo().changed);
    EXPECT_EQ(gearAt(99), 1);
    EXPECT_EQ(state.Run.image.samples[101].InputRpm, 0);
    EXPECT_EQ(files.writes(), 0);
    EXPECT_FALSE(dialogs.hourglass());
}

TEST_F(Tools, CountsPastTheArrayStayInside) {
    state.Run.SampleCount = 65535;
    state.Run.image.tail.GearCount = 1;
    state.Run.image.samples[2520].OutputRpm = 32000; // ends the tool before the file is written
    dialogs.expectBoxTitled("Info", Reply::yes);
    dialogs.expectBoxTitled("Info", Reply::yes);
    EXPECT_FALSE(redo().changed);
    EXPECT_EQ(gearAt(2519), 1);
}

TEST_F(Tools, AFailedWriteIsTold) {
    files.failWrites("/kvo", kvo::testing::MemoryFiles::Failure::fullDisk);
    dialogs.expectBoxTitled("Info", Reply::yes);
    dialogs.expectInputTitled("Time", "150");
    const ToolResult result = redo();
    EXPECT_TRUE(result.changed);
    EXPECT_FALSE(result.written);
    EXPECT_NE(result.written.message, "");
    EXPECT_EQ(gearAt(1), 1); // is still in memory
}

TEST_F(Tools, TimeOffsetTellsWhatItDoes) {
    dialogs.expectBox(
        "This Function will RESET the time zero for this run.\n"
        "You will be asked to enter the time (in hundredths of a second) you believe\n"
        "the run started.\n\nNote:    You can add or subtract time.\n\n"
        "Dont worry if it is not correct, you may do this as many times as you wish."
        "\n\n                      Do you want to enter the time now ?",
        4 + 32, "Info", Reply::no);
    EXPECT_FALSE(offset().changed);
}

TEST_F(Tools, TimeOffsetShowsWhereItStands) {
    state.Run.image.tail.TimeOffset = 175;
    expectOffsetBox(Reply::yes);
    dialogs.expectInput("Enter Time.\nIn hundredths of a second.\n\nThe current offset is:  15\n\n"
                        "Range:   -159  To  2520",
        "Graph Time Offset", "", "");
    EXPECT_FALSE(offset().changed);
    EXPECT_EQ(state.Run.image.tail.TimeOffset, 175);
}

TEST_F(Tools, TimeOffsetMovesTimeZeroFromItsBase) {
    struct Row {
        int type;
        const char* answer;
        int expected;
    };
    for (const Row& row : {Row{12, "20", 180}, Row{12, "-159", 1}, Row{43, "0", 160},
             Row{25, "20", 100}, Row{29, "-79", 1}, Row{12, "2520", 2680}}) {
        state.Run.DataType = static_cast<std::uint8_t>(row.type);
        expectOffsetBox(Reply::yes);
        dialogs.expectInputTitled("Graph Time Offset", row.answer);
        EXPECT_TRUE(offset().changed);
        EXPECT_EQ(state.Run.image.tail.TimeOffset, row.expected);
        EXPECT_EQ(headerInFile(), state.Run.headerLine);
    }
}

TEST_F(Tools, InvalidTimesAskWhetherToRetry) {
    for (const char* answer : {"2521", "-160", "soon", "99999"}) {
        expectOffsetBox(Reply::yes);
        dialogs.expectInputTitled("Graph Time Offset", answer);
        auto& box = dialogs.expectBoxTitled("Graph Time Offset", Reply::cancel);
        box.text = std::string("Invalid Time    ( ") + answer + " )";
        EXPECT_FALSE(offset().changed) << answer;
        EXPECT_EQ(state.Run.image.tail.TimeOffset, 160);
    }
}

TEST_F(Tools, AnInvalidTimeReadsAsItWasTyped) {
    expectOffsetBox(Reply::yes);
    dialogs.expectInputTitled("Graph Time Offset", "fr\xfch 5\x80");
    auto& box = dialogs.expectBoxTitled("Graph Time Offset", Reply::cancel);
    box.text = "Invalid Time    ( fr\xc3\xbch 5\xe2\x82\xac )";
    EXPECT_FALSE(offset().changed);
}

TEST_F(Tools, RetryStartsFromTheFirstBox) {
    expectOffsetBox(Reply::yes);
    dialogs.expectInputTitled("Graph Time Offset", "5000");
    dialogs.expectBoxTitled("Graph Time Offset", Reply::retry);
    expectOffsetBox(Reply::yes);
    dialogs.expectInputTitled("Graph Time Offset", "10");
    EXPECT_TRUE(offset().changed);
    EXPECT_EQ(state.Run.image.tail.TimeOffset, 170);
}
