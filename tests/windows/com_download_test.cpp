// The whole download over the serial port of Windows. A simulated logger is at its other end: its
// data type is in KVO_COM_TYPE, the port's number in KVO_COM_PORT; KVO_COM_CUT says that the cable
// is pulled in the middle of the transfer.
#include "platform/os/comm_port.h"
#include "platform/os/windows_api.h"
#include "platform/yield.h"
#include "tests/support/download_rig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace kvo::link {
namespace {

using testing::DownloadRig;
using Clock = std::chrono::steady_clock;

int numberOf(const char* variable) {
    const char* text = std::getenv(variable);
    return text == nullptr ? 0 : std::atoi(text);
}

// Sleeps on the port's handles, as the event loop of the windows does.
class HandleYield : public platform::Yield {
public:
    explicit HandleYield(platform::WatchedPort& port) : m_port(port) {}
    int turns(int limit) override {
        const auto start = Clock::now();
        const auto turnsGone = [&] {
            const std::chrono::duration<double, std::milli> gone = Clock::now() - start;
            return static_cast<int>(gone.count() * platform::turnsPerMillisecond);
        };
        const std::vector<void*> handles = m_port.wakeHandles();
        while (turnsGone() < limit) {
            const int left = (limit - turnsGone()) / platform::turnsPerMillisecond + 1;
            WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE,
                static_cast<DWORD>(std::min(left, 50)));
            ++wakes;
            if (m_port.takeEvents()) break;
        }
        return std::clamp(turnsGone(), 1, limit);
    }
    long wakes = 0;

private:
    platform::WatchedPort& m_port;
};

struct ComDownload : ::testing::Test {
    ComDownload() {
        rig.state->Config.CommPort =
            static_cast<decltype(rig.state->Config.CommPort)>(numberOf("KVO_COM_PORT"));
        session = std::make_unique<DownloadSession>(
            link, testing::inputOf(*rig.state), *rig.view, rig.dialogs, rig.clock, rig.files);
        if (type == 43) rig.dialogs.expectBoxTitled("Warning");
        port.whenOpened = [this](bool open) { closes += open ? 0 : 1; };
    }
    const int type = numberOf("KVO_COM_TYPE");
    DownloadRig rig{type};
    platform_os::CommPort port{platform_os::makeCommLine()};
    HandleYield yield{port};
    LoggerLink link{port, yield, rig.dialogs};
    std::unique_ptr<DownloadSession> session;
    int closes = 0;
};

TEST_F(ComDownload, IsTheRunThatTheVirtualLineBrings) {
    if (numberOf("KVO_COM_CUT") != 0) GTEST_SKIP() << "the cable is pulled";
    rig.expectSave();
    session->Command_Send_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_FALSE(port.portOpen());
    DownloadRig same(type);
    if (type == 43) same.dialogs.expectBoxTitled("Warning");
    same.expectSave();
    same.click();
    const auto wanted = same.files.read(DownloadRig::runPath);
    ASSERT_TRUE(wanted);
    EXPECT_EQ(rig.files.read(DownloadRig::runPath), wanted);
    EXPECT_LT(yield.wakes, 20000) << "a wait spins";
}

TEST_F(ComDownload, ACableThatIsPulledIsToldAndClosed) {
    if (numberOf("KVO_COM_CUT") == 0) GTEST_SKIP() << "the cable holds";
    rig.dialogs.expectBoxTitled("Download Error");
    const auto start = Clock::now();
    session->Command_Send_Click();
    const std::chrono::duration<double> took = Clock::now() - start;
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_FALSE(port.portOpen());
    EXPECT_EQ(closes, 1);
    EXPECT_LT(yield.wakes, 20000) << "a lost line spins";
    EXPECT_FALSE(rig.files.folderExists("/kvo/Data"));
    RecordProperty("seconds", std::to_string(took.count()));
}

// A port that is not there, by the number of the system.
TEST(ComPort, ThatIsMissingSaysSo) {
    platform_os::CommPort port(platform_os::makeCommLine());
    port.setCommPort(16);
    port.setPortOpen(true);
    EXPECT_FALSE(port.portOpen());
    EXPECT_EQ(port.openError(), platform::PortError::missing) << port.openErrorText();
    EXPECT_NE(port.openErrorText().find("number 16"), std::string::npos) << port.openErrorText();
}

TEST(ComPort, TellsThePortsThatThereAre) {
    if (numberOf("KVO_COM_CUT") != 0) GTEST_SKIP() << "its port has gone";
    platform_os::CommPort port(platform_os::makeCommLine());
    const auto states = port.portStates();
    ASSERT_EQ(states.size(), 16U);
    const auto number = static_cast<std::size_t>(numberOf("KVO_COM_PORT"));
    EXPECT_EQ(states.at(number - 1).error, platform::PortError::none);
    EXPECT_NE(states.at(number - 1).device, "");
    EXPECT_EQ(states[15], platform::PortState());
}

} // namespace
} // namespace kvo::link
