// The rules of the serial port on Windows, over a line that the test plays.
#include "platform/os/comm_port.h"

#include <gtest/gtest.h>

#include <map>

namespace kvo::platform_os {
namespace {

using platform::PortError;

// What all lines of a test share: the system with its ports.
struct PlayedSystem {
    std::map<std::string, std::uint32_t> errors; // of the ports that do not open; others are free
    std::string coming;                          // in the driver
    std::string gone;                            // all that was sent
    bool slow = false;                           // sends nothing on its own
    bool lost = false;
    bool there = true;
    CommSettings settings;
    int opened = 0;
    int closed = 0;
};

class PlayedLine : public CommLine {
public:
    explicit PlayedLine(PlayedSystem& system) : m_system(system) {}
    std::unique_ptr<CommLine> another() const override {
        return std::make_unique<PlayedLine>(m_system);
    }
    std::string target(const std::string& name) const override {
        return name == "COM3" || name == "COM4" ? "VCP" + name.substr(3) : std::string();
    }
    std::uint32_t open(const std::string& name, const CommSettings& settings) override {
        const auto error = m_system.errors.find(name);
        if (error != m_system.errors.end()) return error->second;
        m_system.settings = settings;
        m_system.coming.clear();
        ++m_system.opened;
        m_open = true;
        return 0;
    }
    void close() override {
        if (m_open) ++m_system.closed;
        m_open = false;
        m_going.clear();
    }
    bool receive(std::string& bytes, std::size_t most) override {
        const std::size_t count = std::min(m_system.coming.size(), most - bytes.size());
        bytes += m_system.coming.substr(0, count);
        m_system.coming.erase(0, count);
        return !m_system.lost;
    }
    bool send(std::string_view bytes) override {
        EXPECT_TRUE(m_going.empty()) << "one at a time";
        m_going = bytes;
        return !m_system.lost;
    }
    std::optional<bool> sent() override {
        if (m_system.lost) return {};
        if (m_system.slow) return false;
        m_system.gone += m_going;
        m_going.clear();
        return true;
    }
    bool isThere() override { return m_system.there && !m_system.lost; }
    std::vector<void*> wakeHandles() const override { return {}; }
    std::string words(std::uint32_t error) const override {
        return error == 31 ? "It does not work" : "?";
    }

private:
    PlayedSystem& m_system;
    std::string m_going;
    bool m_open = false;
};

struct CommPortTest : ::testing::Test {
    PlayedSystem system;
    CommPort port{std::make_unique<PlayedLine>(system)};
    void open(int number = 3) {
        port.setCommPort(number);
        port.setPortOpen(true);
        ASSERT_TRUE(port.portOpen());
    }
};

TEST_F(CommPortTest, BytesPassUnchangedBothWays) {
    std::string all;
    for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
    port.setSettings("19200,E,7,2");
    open();
    EXPECT_EQ(system.settings.baud, 19200);
    EXPECT_EQ(system.settings.parity, 'E');
    EXPECT_EQ(system.settings.dataBits, 7);
    EXPECT_EQ(system.settings.stopBits, 2);
    port.output(all);
    EXPECT_EQ(port.outBufferCount(), 0);
    EXPECT_EQ(system.gone, all);
    system.coming = all;
    EXPECT_EQ(port.inBufferCount(), 256);
    port.setInputLen(1);
    EXPECT_EQ(port.input(), std::string(1, '\0'));
    port.setInputLen(54);
    EXPECT_EQ(port.input(), all.substr(1, 54));
    port.setInputLen(0);
    EXPECT_EQ(port.input(), all.substr(55));
    EXPECT_EQ(port.input(), "");
}

TEST_F(CommPortTest, SettingsThatAreNoneChangeNothing) {
    for (const char* none : {"", "9600", "9600,N,8", "9600,,8,1", "9600,N,8,1,x"}) {
        port.setSettings(none);
        open();
        EXPECT_EQ(system.settings.baud, 9600) << none;
        EXPECT_EQ(system.settings.parity, 'N') << none;
        port.setPortOpen(false);
    }
}

TEST_F(CommPortTest, WhoWaitsForABatchIsNotWokenByEachByte) {
    open();
    EXPECT_FALSE(port.takeEvents());
    system.coming = "a";
    EXPECT_TRUE(port.takeEvents());
    EXPECT_FALSE(port.takeEvents()) << "nothing new";
    port.setInputLen(3);
    system.coming = "b";
    EXPECT_FALSE(port.takeEvents());
    system.coming = "c";
    EXPECT_TRUE(port.takeEvents());
    EXPECT_EQ(port.input(), "abc");
}

TEST_F(CommPortTest, WhatWaitsToGoFollowsInItsOrder) {
    open();
    system.slow = true;
    port.output("ab");
    port.output("cd");
    port.output("e");
    EXPECT_EQ(port.outBufferCount(), 5);
    EXPECT_FALSE(port.takeEvents());
    system.slow = false;
    EXPECT_FALSE(port.takeEvents()) << "two are gone, three follow";
    EXPECT_EQ(system.gone, "ab");
    EXPECT_TRUE(port.takeEvents());
    EXPECT_EQ(system.gone, "abcde");
    EXPECT_EQ(port.outBufferCount(), 0);
}

TEST_F(CommPortTest, AFloodingLineStaysInsideTheBuffer) {
    open();
    system.coming = std::string(3000, 'g');
    EXPECT_EQ(port.inBufferCount(), 1024);
    EXPECT_EQ(port.inBufferCount(), 1024);
    EXPECT_EQ(system.coming.size(), 3000U - 1024);
    EXPECT_EQ(port.input().size(), 1024U);
    EXPECT_EQ(port.inBufferCount(), 1024);
}

TEST_F(CommPortTest, ALineThatIsLostIsToldOnceAndThenSilent) {
    int opens = 0;
    int closes = 0;
    port.whenOpened = [&](bool isOpen) { ++(isOpen ? opens : closes); };
    open();
    system.coming = "rest";
    port.output("x");
    system.lost = true;
    EXPECT_TRUE(port.takeEvents());
    EXPECT_FALSE(port.portOpen());
    EXPECT_FALSE(port.takeEvents());
    EXPECT_EQ(port.inBufferCount(), 0);
    port.output("still safe");
    EXPECT_EQ(port.outBufferCount(), 0);
    EXPECT_EQ(port.input(), "");
    port.setPortOpen(false);
    EXPECT_EQ(opens, 1);
    EXPECT_EQ(closes, 1);
    EXPECT_EQ(system.opened, 1);
    EXPECT_EQ(system.closed, 1);
    system.lost = false;
    open();
    EXPECT_EQ(port.outBufferCount(), 0);
}

// An adapter that was pulled while nothing is under way.
TEST_F(CommPortTest, ALineThatDoesNotTellIsAskedFor) {
    open();
    system.there = false;
    EXPECT_TRUE(port.takeEvents());
    EXPECT_FALSE(port.portOpen());
}

// Whichever call finds it out.
TEST_F(CommPortTest, ALostLineIsFoundByEachCall) {
    for (int way = 0; way < 4; ++way) {
        open();
        system.slow = true;
        port.output("x");
        system.lost = true;
        if (way == 0) port.input();
        if (way == 1) port.inBufferCount();
        if (way == 2) port.outBufferCount();
        if (way == 3) port.output("y");
        EXPECT_FALSE(port.portOpen()) << way;
        system = PlayedSystem();
    }
}

TEST_F(CommPortTest, SaysByNumberWhyAPortDoesNotOpen) {
    const std::pair<std::uint32_t, PortError> rows[] = {{2, PortError::missing},
        {3, PortError::missing}, {20, PortError::missing}, {55, PortError::missing},
        {123, PortError::missing}, {5, PortError::busy}, {32, PortError::busy},
        {170, PortError::busy}, {31, PortError::other}, {87, PortError::other}};
    for (const auto& [error, told] : rows) {
        system.errors["COM3"] = error;
        port.setCommPort(3);
        port.setPortOpen(true);
        EXPECT_FALSE(port.portOpen()) << error;
        EXPECT_EQ(port.openError(), told) << error;
        EXPECT_NE(port.openErrorText().find(" 3"), std::string::npos) << port.openErrorText();
        EXPECT_EQ(port.openErrorText().find("in use") != std::string::npos, told == PortError::busy)
            << port.openErrorText();
    }
    system.errors["COM3"] = 31;
    port.setPortOpen(true);
    EXPECT_EQ(port.openErrorText(), "Port 3, COM3, cannot be opened: It does not work (31).");
    system.errors.clear();
    port.setPortOpen(true);
    EXPECT_EQ(port.openError(), PortError::none);
    EXPECT_EQ(port.openErrorText(), "");
}

TEST_F(CommPortTest, ANumberWithoutPortIsMissing) {
    for (const int number : {0, 17}) {
        port.setCommPort(number);
        port.setPortOpen(true);
        EXPECT_FALSE(port.portOpen());
        EXPECT_EQ(port.openError(), PortError::missing);
        EXPECT_EQ(port.deviceOf(number), "");
    }
    EXPECT_EQ(system.opened, 0);
    EXPECT_EQ(port.deviceOf(16), "COM16");
}

TEST_F(CommPortTest, TheNumberStaysWhileThePortIsOpen) {
    open(3);
    port.setCommPort(4);
    EXPECT_EQ(port.commPort(), 3);
    port.setPortOpen(true);
    EXPECT_EQ(system.opened, 1) << "it is open already";
}

TEST_F(CommPortTest, EveryPortSaysWhatIsBehindItAndWhetherItIsFree) {
    for (int number = 1; number <= 16; ++number) system.errors["COM" + std::to_string(number)] = 2;
    system.errors.erase("COM3");
    system.errors["COM5"] = 5;
    system.errors["COM4"] = 31;
    open(3);
    const auto states = port.portStates();
    ASSERT_EQ(states.size(), 16U);
    EXPECT_EQ(states[0], (platform::PortState{"", PortError::missing}));
    EXPECT_EQ(states[2], (platform::PortState{"VCP3", PortError::busy})) << "by itself";
    EXPECT_EQ(states[3], (platform::PortState{"VCP4", PortError::other}));
    EXPECT_EQ(states[4], (platform::PortState{"COM5", PortError::busy}));
    EXPECT_TRUE(port.portOpen());
    port.setPortOpen(false);
    EXPECT_EQ(port.portStates()[2], (platform::PortState{"VCP3", PortError::none}));
    EXPECT_EQ(system.opened, system.closed);
}

} // namespace
} // namespace kvo::platform_os
