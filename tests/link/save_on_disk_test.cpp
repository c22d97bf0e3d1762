// The end of a download on a real disk that is full or may not be written: the user is told why,
// nothing is left half written, and the run is saved by the next try.
#include "core/run_index.h"
#include "platform/os/os_files.h"
#include "tests/contract/temporary_folder.h"
#include "tests/support/download_rig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <fstream>

namespace kvo::link {
namespace {

using platform::Reply;
using testing::DownloadRig;
using testing::TemporaryFolder;

constexpr const char* runName = "Data/26111514.52d";

// A disk with so much room left.
class SmallDisk : public platform_os::DiskWriter {
public:
    std::size_t room = static_cast<std::size_t>(-1);

    std::int64_t write(int file, std::span<const std::uint8_t> bytes) override {
        const std::size_t taken = std::min(bytes.size(), room);
        room -= taken;
        errno = ENOSPC;
        return taken == 0 ? -1 : DiskWriter::write(file, bytes.first(taken));
    }
};

class SaveOnDisk : public ::testing::Test {
protected:
    SaveOnDisk() {
        rig.state->AppFolder = folder.path().string();
        EXPECT_TRUE(files.write(folder / "Kvo.Cfg", core::encodeConfig(rig.config)));
        session = std::make_unique<DownloadSession>(
            rig.link, testing::inputOf(*rig.state), *rig.view, rig.dialogs, rig.clock, files);
        rig.dialogs.expectInputTitled("Run Title", "1");
    }
    void expectSavedWhole() {
        EXPECT_EQ(rig.dialogs.problems(), "");
        const auto file = files.read(folder / runName);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->size(), static_cast<std::size_t>((1213 + 4) * 84 + 20));
        const auto index = core::readRunIndex(folder / "Data/KvoData.Ini", files);
        ASSERT_EQ(index.size(), 1U);
        EXPECT_EQ(index[0].Description, "Sun 15 Nov 2026 Run: 1");
        EXPECT_EQ(files.list(folder / "Data").size(), 2U) << "and nothing besides";
    }

    TemporaryFolder folder;
    SmallDisk disk;
    platform_os::OsFiles files{disk};
    DownloadRig rig{25};
    std::unique_ptr<DownloadSession> session;
};

TEST_F(SaveOnDisk, AFullDiskIsToldAndWhenThereIsRoomTheRunIsSaved) {
    disk.room = 50000; // half of the run
    auto& box = rig.dialogs.expectBoxTitled("Run Not Saved", Reply::retry);
    box.contains = "The disk is full";
    box.whileShown = [this] {
        EXPECT_TRUE(files.list(folder / "Data").empty()) << "no half of a run";
        disk.room = static_cast<std::size_t>(-1);
    };
    rig.expectSavedBox();
    session->Command_Send_Click();
    expectSavedWhole();
}

TEST_F(SaveOnDisk, ADiskThatIsFullBehindTheRunLeavesItAndItsIndexWhole) {
    disk.room = (1213 + 4) * 84 + 20 + 100;
    auto& box = rig.dialogs.expectBoxTitled("Run Not Listed", Reply::retry);
    box.contains = "The disk is full";
    box.whileShown = [this] { disk.room = static_cast<std::size_t>(-1); };
    rig.expectSavedBox();
    session->Command_Send_Click();
    expectSavedWhole();
}

TEST_F(SaveOnDisk, AFolderOfRunsThatCannotBeMadeIsTold) {
    std::ofstream(folder / "Data") << "in the way";
    auto& box = rig.dialogs.expectBoxTitled("Run Not Saved", Reply::retry);
    box.contains = "There is a file of this name";
    box.whileShown = [this] { EXPECT_TRUE(files.remove(folder / "Data")); };
    rig.expectSavedBox();
    session->Command_Send_Click();
    expectSavedWhole();
}

TEST_F(SaveOnDisk, ARunOfTheSameMinuteIsKeptBeforeItIsReplaced) {
    const platform::Bytes former(300, 7);
    EXPECT_TRUE(files.makeFolder(folder / "Data"));
    EXPECT_TRUE(files.write(folder / runName, former));
    rig.expectSavedBox();
    session->Command_Send_Click();
    expectSavedWhole();
    EXPECT_EQ(files.read(folder / "Backup/26111514.52d.0001"), former);
}

} // namespace
} // namespace kvo::link
