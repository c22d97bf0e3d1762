// What a list of ports says.
#include "link/port_list.h"

#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

using platform::PortError;

struct PortListTest : ::testing::Test {
    std::string lineOf(int port) {
        return describePorts(line).at(static_cast<std::size_t>(port - 1));
    }
    simulator::ModelLogger logger{25};
    testing::VirtualLine line{logger};
};

TEST_F(PortListTest, HasALineForEachNumberWithTheDeviceBehindIt) {
    line.plugInto(3);
    EXPECT_EQ(describePorts(line).size(), 16U);
    EXPECT_EQ(lineOf(1), "COM1: no device");
    EXPECT_EQ(lineOf(3), "COM3: /dev/virtual, free");
    EXPECT_EQ(lineOf(16), "COM16: no device");
}

TEST_F(PortListTest, SaysWhyAPortIsNotFree) {
    line.plugInto(2);
    line.failToOpen(2, PortError::busy);
    EXPECT_EQ(lineOf(2), "COM2: /dev/virtual, in use");
    line.failToOpen(2, PortError::notPermitted);
    EXPECT_EQ(lineOf(2), "COM2: /dev/virtual, not permitted");
    line.failToOpen(2, PortError::missing);
    EXPECT_EQ(lineOf(2), "COM2: /dev/virtual, not plugged in");
    line.failToOpen(2, PortError::other);
    EXPECT_EQ(lineOf(2), "COM2: /dev/virtual, does not open");
}

TEST_F(PortListTest, APortOfARunningSessionIsInUse) {
    line.setCommPort(1);
    line.setPortOpen(true);
    EXPECT_EQ(lineOf(1), "COM1: /dev/virtual, in use");
    EXPECT_TRUE(line.portOpen());
}

} // namespace
} // namespace kvo::link
