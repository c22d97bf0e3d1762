// The search for the logger's port.
#include "link/find_port.h"

#include "tests/support/scripted_dialogs.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <gtest/gtest.h>

#include <numeric>

namespace kvo::link {
namespace {

using namespace platform;

struct List : PortListView {
    void selectComPort(int entry) override { selected = entry; }
    void showPort(int port) override { shown.push_back(port); }
    bool stopped() const override { return static_cast<int>(shown.size()) >= stopAfter; }
    void searchIsOver() override { ++ends; }
    int selected = -1;
    std::vector<int> shown;
    int stopAfter = 99;
    int ends = 0;
};

struct FindPortTest : ::testing::Test {
    FindPortTest() {
        line.onOpen = [this](int port) { opened.push_back(port); };
    }
    void expectStart(Reply reply) {
        dialogs.expectBox("Plug in the Logger Download Cable and Turn the Logger ON\r\n\r\n"
                          "                        Dow you want to continue ?",
            boxStyle::yesNo, "Find Logger Comm Port !", reply);
    }
    void expectFound(int port, Reply reply) {
        auto& entry = dialogs.expectBox("Do you want to use this Comm Port?", boxStyle::yesNo,
            "Logger Found on Comm Port: " + std::to_string(port), reply);
        entry.whileShown = [this] { EXPECT_FALSE(dialogs.hourglass()); };
    }
    void expectNotFound() {
        dialogs.expectBox(
            "Check that the Logger is Powered up and the Download Cable is Plugged In.\r\n\r\n\r\n"
            "If this is already Dune try switching the Logger Off for 10 seconds\r\n"
            "then bask ON or Try a different Comm Port on your PC. ",
            boxStyle::critical, "CANT FIND THE LOGGER");
    }

    simulator::ModelLogger logger{25};
    testing::VirtualLine line{logger};
    testing::ScriptedDialogs dialogs;
    LoggerLink link{line, line, dialogs};
    List list;
    std::vector<int> opened;
};

TEST_F(FindPortTest, NoEndsItBeforeAnyPort) {
    expectStart(Reply::no);
    FindLoggerPort(link, dialogs, list);
    EXPECT_TRUE(opened.empty());
    EXPECT_EQ(list.selected, -1);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, SelectsThePortThatTheUserTakes) {
    line.plugInto(4);
    expectStart(Reply::yes);
    expectFound(4, Reply::yes);
    FindLoggerPort(link, dialogs, list);
    EXPECT_EQ(opened, (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(list.selected, 3);
    EXPECT_FALSE(line.portOpen());
    EXPECT_FALSE(dialogs.hourglass());
    EXPECT_EQ(line.inputLens(), (std::vector<int>{0, 1}));
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, NoGoesOnToTheLastPort) {
    line.plugInto(2);
    expectStart(Reply::yes);
    expectFound(2, Reply::no);
    expectNotFound();
    FindLoggerPort(link, dialogs, list);
    EXPECT_EQ(opened.size(), 16U);
    EXPECT_EQ(list.selected, -1);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, SixteenSilentPortsCostFourSeconds) {
    line.plugInto(99);
    link.Header.DataType = 25; // a flag that silence sets is not looked at
    expectStart(Reply::yes);
    expectNotFound();
    FindLoggerPort(link, dialogs, list);
    EXPECT_EQ(line.milliseconds(), 4000);
    EXPECT_EQ(link.LinkFailed, -1);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, APortThatDoesNotOpenCostsOneTimeOutAndNoMessage) {
    line.failToOpen(1, PortError::busy, "in use");
    line.plugInto(2);
    expectStart(Reply::yes);
    expectFound(2, Reply::yes);
    FindLoggerPort(link, dialogs, list);
    EXPECT_EQ(list.selected, 1);
    EXPECT_EQ(line.milliseconds(), 250);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, ShowsEachPortAndTheEndOnce) {
    line.plugInto(99);
    expectStart(Reply::yes);
    dialogs.expectBoxTitled("CANT FIND THE LOGGER").whileShown = [this] {
        EXPECT_EQ(list.ends, 1);
        EXPECT_FALSE(dialogs.hourglass());
    };
    FindLoggerPort(link, dialogs, list);
    std::vector<int> all(16);
    std::iota(all.begin(), all.end(), 1);
    EXPECT_EQ(list.shown, all);
    EXPECT_EQ(list.ends, 1);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, ShowsNothingWhereTheUserSaysNo) {
    expectStart(Reply::no);
    FindLoggerPort(link, dialogs, list);
    EXPECT_TRUE(list.shown.empty());
    EXPECT_EQ(list.ends, 0);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, StopsBetweenTwoPortsWithoutAWord) {
    line.plugInto(9);
    list.stopAfter = 3;
    expectStart(Reply::yes);
    FindLoggerPort(link, dialogs, list);
    EXPECT_EQ(opened, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(list.selected, -1);
    EXPECT_EQ(list.ends, 1);
    EXPECT_FALSE(dialogs.hourglass());
    EXPECT_FALSE(line.portOpen());
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, AStopAtTheLastPortIsWithoutAWordToo) {
    line.plugInto(99);
    list.stopAfter = 16;
    expectStart(Reply::yes);
    FindLoggerPort(link, dialogs, list);
    EXPECT_EQ(opened.size(), 16U);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(FindPortTest, AStaleReplyPassesForPort1) {
    line.plugInto(7);
    link.ReplyByte = 0x3F;
    expectStart(Reply::yes);
    expectFound(1, Reply::yes);
    FindLoggerPort(link, dialogs, list);
    EXPECT_EQ(list.selected, 0);
    EXPECT_EQ(link.ReplyByte, 0x3F);
    EXPECT_EQ(dialogs.problems(), "");
}

} // namespace
} // namespace kvo::link
