#include "core/own_file.h"

#include "core/analog_tables.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/run_times.h"
#include "core/vehicle_setup.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <memory>

namespace kvo::core {
namespace {

using testing::MemoryFiles;

TEST(OwnFile, ThatIsMissingIsCreatedEmptyWithoutAWord) {
    MemoryFiles files;
    std::string unread = "from before";
    EXPECT_TRUE(readOrCreate("/kvo/VSetup.Dat", files, &unread).empty());
    EXPECT_EQ(unread, "");
    EXPECT_TRUE(files.exists("/kvo/VSetup.Dat"));
}

TEST(OwnFile, ThatIsThereIsRead) {
    MemoryFiles files;
    files.put("/kvo/VSetup.Dat", {7});
    std::string unread = "from before";
    EXPECT_EQ(readOrCreate("/kvo/VSetup.Dat", files, &unread), platform::Bytes{7});
    EXPECT_EQ(unread, "");
    EXPECT_EQ(readOrCreate("/kvo/VSetup.Dat", files), platform::Bytes{7});
}

TEST(OwnFile, ThatCannotBeReadNowIsToldAndLeft) {
    using Failure = MemoryFiles::Failure;
    for (const Failure how : {Failure::diskError, Failure::notPermitted, Failure::notReady}) {
        MemoryFiles files;
        files.put("/kvo/VSetup.Dat", {7});
        files.failReads("/kvo/VSetup.Dat", how);
        std::string unread;
        EXPECT_TRUE(readOrCreate("/kvo/VSetup.Dat", files, &unread).empty());
        EXPECT_NE(unread, "");
        EXPECT_EQ(files.writes(), 0);
    }
}

// Each of the program's own files on a disk that fails at every read.
TEST(OwnFile, OfEachKindIsLeftWhereItCannotBeRead) {
    MemoryFiles files;
    const platform::Bytes content{1, 2, 3};
    const std::string paths[] = {"/kvo/Data/KvoData.Ini", "/kvo/KvoTimes", "/kvo/VSetup.Dat",
        "/kvo/Analog3.Dat", "/kvo/Data/26111514.52i"};
    for (const std::string& path : paths) files.put(path, content);
    files.failReads("/kvo", MemoryFiles::Failure::diskError);

    EXPECT_NE(readOrCreateRunIndex("/kvo", files).unread, "");
    EXPECT_NE(LoadTimesTable("/kvo", files).unread, "");
    std::string unread;
    LoadVehicleSetup("/kvo", files, &unread);
    EXPECT_NE(unread, "");
    const auto tables = std::make_unique<AnalogTables>();
    EXPECT_NE(LoadAnalogTable("/kvo", "Analog3.Dat", 3, *tables, files), "");
    unread.clear();
    LoadRunInfo(paths[4], {}, files, &unread);
    EXPECT_NE(unread, "");
    LoadRunTimes(paths[4], files);
    EXPECT_EQ(files.writes(), 0) << "what is there is not taken for missing";
}

} // namespace
} // namespace kvo::core
