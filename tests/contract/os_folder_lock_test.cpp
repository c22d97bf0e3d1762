// The lock of a folder between programs: what it says, who is kept out, and what is taken over.
#include "platform/os/os_folder_lock.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#if defined(__unix__) || defined(__APPLE__)
#include <atomic>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#endif

namespace kvo::platform_os {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

class FolderLock : public ::testing::Test {
protected:
    testing::TemporaryFolder m_folder;
    const std::string m_place = m_folder.path().string();
    const fs::path m_file = fs::path(m_place) / "Kvo.lock";

    std::string content() const {
        std::ifstream file(m_file, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void put(const std::string& text) const { std::ofstream(m_file, std::ios::binary) << text; }
    // The lines of a lock that this program has taken.
    std::array<std::string, 5> ownLines() const {
        OsFolderLock lock;
        EXPECT_FALSE(lock.take(m_place));
        std::ifstream file(m_file);
        std::array<std::string, 5> lines;
        for (std::string& line : lines) std::getline(file, line);
        return lines;
    }
};

TEST_F(FolderLock, TheFirstTakesTheFolderAndTheSecondLearnsWhoHasIt) {
    OsFolderLock first;
    OsFolderLock second;
    ASSERT_FALSE(first.take(m_place));
    EXPECT_FALSE(first.take(m_place)); // its own already
    const auto holder = second.take(m_place);
    ASSERT_TRUE(holder);
    EXPECT_GT(holder->process, 0);
    EXPECT_FALSE(holder->program.empty());
    EXPECT_FALSE(holder->host.empty());
    EXPECT_TRUE(holder->here);
    EXPECT_GE(holder->since.year, 2026);
}

TEST_F(FolderLock, AProgramThatEndsLeavesTheFolderFree) {
    {
        OsFolderLock first;
        EXPECT_FALSE(first.take(m_place));
        EXPECT_TRUE(fs::exists(m_file));
    }
    EXPECT_FALSE(fs::exists(m_file));
    OsFolderLock second;
    EXPECT_FALSE(second.take(m_place));
}

TEST_F(FolderLock, AFolderThatCannotHaveALockIsNotHeld) {
    OsFolderLock lock;
    EXPECT_FALSE(lock.take(m_place + "/not/there"));
}

TEST_F(FolderLock, AFolderOfAnotherScriptIsLocked) {
    const fs::path folder = fs::path(m_place) / fs::path(u8"Übung ガレージ");
    fs::create_directory(folder);
    const std::u8string name = folder.u8string();
    OsFolderLock lock;
    EXPECT_FALSE(lock.take(std::string(name.begin(), name.end())));
    EXPECT_TRUE(fs::exists(folder / "Kvo.lock"));
}

// Elsewhere nobody can read or change the file of a lock that is held.
#if defined(__unix__) || defined(__APPLE__)

TEST_F(FolderLock, TheHolderIsWhoWroteTheFile) {
    const auto [process, program, host, machine, start] = ownLines();
    OsFolderLock first;
    OsFolderLock second;
    ASSERT_FALSE(first.take(m_place));
    const auto holder = second.take(m_place);
    ASSERT_TRUE(holder);
    EXPECT_EQ(std::to_string(holder->process), process);
    EXPECT_EQ(holder->program, program);
    EXPECT_EQ(holder->host, host);
}

// A lock is as old as its program: neither its age nor a refused attempt takes it away.
TEST_F(FolderLock, AnOldLockOfALivingProgramHolds) {
    OsFolderLock first;
    ASSERT_FALSE(first.take(m_place));
    fs::last_write_time(m_file, fs::file_time_type::clock::now() - std::chrono::hours(9 * 24));
    for (int attempt = 0; attempt < 2; ++attempt) {
        OsFolderLock second;
        EXPECT_TRUE(second.take(m_place));
    }
    EXPECT_TRUE(fs::exists(m_file));
}

TEST_F(FolderLock, OneOfADeadProgramIsTakenOver) {
    const auto [process, program, host, machine, start] = ownLines();
    const std::string here = host + '\n' + machine + '\n' + start + '\n';
    // A number that no process has, one that another program has, and another start.
    for (const std::string& text : {"4194305\nkvo\n" + here, process + "\nanother_program\n" + here,
             process + "\n\n" + host + '\n' + machine + "\nan-earlier-start\n"}) {
        put(text);
        OsFolderLock lock;
        EXPECT_FALSE(lock.take(m_place)) << text;
        EXPECT_EQ(content().substr(0, process.size() + 1), process + '\n');
    }
}

// Nobody here can know of one on another machine.
TEST_F(FolderLock, OneThatNobodyKnowsOfStays) {
    const std::string text = "4194305\nkvo\npit-laptop\nanother-machine\nx\n";
    put(text);
    OsFolderLock lock;
    const auto holder = lock.take(m_place);
    ASSERT_TRUE(holder);
    EXPECT_EQ(content(), text);
    EXPECT_FALSE(holder->here);
}

// As after a power cut or on a full disk: nobody is named, or only the front of a number.
TEST_F(FolderLock, OneThatIsNotWholeIsTakenOver) {
    const std::string process = ownLines()[0];
    for (const std::string& text :
        {std::string(), std::string(30, '\0'), process, "4194305\nkvo\npit-lap"s}) {
        put(text);
        OsFolderLock lock;
        EXPECT_FALSE(lock.take(m_place)) << text;
        EXPECT_EQ(content().substr(0, process.size() + 1), process + '\n');
    }
}

// The disk took nothing of its text, or it is just about to be written.
TEST_F(FolderLock, OneThatIsNotWholeStaysWhileItsProgramLives) {
    put("");
    const int living = open(m_file.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(living, LOCK_EX | LOCK_NB), 0);
    {
        OsFolderLock lock;
        const auto holder = lock.take(m_place);
        ASSERT_TRUE(holder);
        EXPECT_EQ(holder->process, 0);
        EXPECT_TRUE(holder->here);
    }
    EXPECT_TRUE(fs::exists(m_file));
    close(living);
    OsFolderLock next;
    EXPECT_FALSE(next.take(m_place));
}

TEST_F(FolderLock, OfManyThatTakeALeftOverOneOnlyOneHasIt) {
    for (int round = 0; round < 100; ++round) {
        put("");
        std::array<OsFolderLock, 4> locks;
        std::atomic<int> holders = 0;
        std::vector<std::thread> starts;
        for (OsFolderLock& lock : locks)
            starts.emplace_back([&] { holders += lock.take(m_place) ? 0 : 1; });
        for (std::thread& start : starts) start.join();
        ASSERT_EQ(holders, 1) << round;
    }
}

TEST_F(FolderLock, TheEndOfAProgramLeavesTheLockOfAnother) {
    OsFolderLock second;
    {
        OsFolderLock first;
        ASSERT_FALSE(first.take(m_place));
        fs::remove(m_file); // by hand, as the user is told for a program that nobody reaches
        ASSERT_FALSE(second.take(m_place));
    }
    EXPECT_TRUE(fs::exists(m_file));
    OsFolderLock third;
    EXPECT_TRUE(third.take(m_place));
}

TEST_F(FolderLock, OneOfAKilledProgramIsTakenOver) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        auto* lock = new OsFolderLock;
        _exit(lock->take(m_place) ? 1 : 0); // as a kill: no destructor runs
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(fs::exists(m_file));
    OsFolderLock next;
    EXPECT_FALSE(next.take(m_place));
}

#endif

} // namespace
} // namespace kvo::platform_os
