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

#if defined(__unix__) || defined(__APPLE__)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace kvo::platform_os {
namespace {

namespace fs = std::filesystem;

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

// Nobody here can know of one on another machine, nor of one that names nobody.
TEST_F(FolderLock, OneThatNobodyKnowsOfStays) {
    for (const std::string text : {"4194305\nkvo\npit-laptop\nanother-machine\nx\n", ""}) {
        put(text);
        OsFolderLock lock;
        const auto holder = lock.take(m_place);
        ASSERT_TRUE(holder);
        EXPECT_EQ(content(), text);
        EXPECT_EQ(holder->here, text.empty());
    }
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
