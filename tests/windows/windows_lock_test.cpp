// The lock of a folder on Windows, where the system keeps it and not a number of a process.
#include "platform/os/os_folder_lock.h"
#include "tests/contract/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace kvo::platform_os {
namespace {

struct WindowsLock : ::testing::Test {
    testing::TemporaryFolder parent;
    const std::string folder = parent / "J\xc3\xbcrg\xc5\x82";
    const std::filesystem::path file = platform::systemPath(folder) / "Kvo.lock";
    WindowsLock() { std::filesystem::create_directory(platform::systemPath(folder)); }
};

TEST_F(WindowsLock, KeepsASecondOneOutAndGoesWithItsHolder) {
    {
        OsFolderLock first;
        EXPECT_FALSE(first.take(folder));
        EXPECT_FALSE(first.take(folder)) << "it has it already";
        for (int i = 0; i < 2; ++i) {
            OsFolderLock second;
            const auto holder = second.take(folder);
            ASSERT_TRUE(holder);
            EXPECT_GT(holder->process, 0);
            EXPECT_EQ(holder->program, "windows_tests");
            EXPECT_NE(holder->host, "");
            EXPECT_TRUE(holder->here);
            EXPECT_GT(holder->since.year, 2000);
        }
        EXPECT_TRUE(std::filesystem::exists(file));
    }
    EXPECT_FALSE(std::filesystem::exists(file));
    OsFolderLock third;
    EXPECT_FALSE(third.take(folder));
}

TEST_F(WindowsLock, TakesOverWhatACutOfThePowerHasLeft) {
    std::string own;
    {
        OsFolderLock lock;
        EXPECT_FALSE(lock.take(folder));
        OsFolderLock other;
        own = other.take(folder)->host;
    }
    std::ofstream(file) << "1\nkvo\n" << own << "\n\n\n";
    OsFolderLock lock;
    EXPECT_FALSE(lock.take(folder));
}

TEST_F(WindowsLock, LeavesTheLockOfAnotherMachine) {
    std::ofstream(file) << "1234\nkvo\npitlane\nabc\ndef\n";
    OsFolderLock lock;
    const auto holder = lock.take(folder);
    ASSERT_TRUE(holder);
    EXPECT_EQ(holder->host, "pitlane");
    EXPECT_EQ(holder->process, 1234);
    EXPECT_FALSE(holder->here);
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(WindowsLock, IsNotNeededWhereNothingCanBeWritten) {
    OsFolderLock lock;
    EXPECT_FALSE(lock.take(folder + "\\none"));
}

} // namespace
} // namespace kvo::platform_os
