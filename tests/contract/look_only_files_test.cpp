// A folder that is only looked at.
#include "platform/look_only_files.h"

#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::testing {
namespace {

TEST(LookOnlyFiles, PassEverythingOnUntilAFolderIsNamed) {
    MemoryFiles disk;
    platform::LookOnlyFiles files(disk);
    EXPECT_TRUE(files.write("/kvo/a", {1}));
    EXPECT_TRUE(files.remove("/kvo/a"));
    EXPECT_TRUE(files.replaceable("/kvo/a"));
}

TEST(LookOnlyFiles, RefuseWhatWouldChangeTheFolder) {
    MemoryFiles disk;
    disk.put("/kvo/a", {1, 2});
    platform::LookOnlyFiles files(disk);
    files.lookOnlyAt("/kvo");
    const auto told = files.write("/kvo/a", {3});
    EXPECT_FALSE(told);
    EXPECT_EQ(told.failure, platform::FileFailure::readOnly);
    EXPECT_EQ(told.message, "/kvo/a: this folder is open for looking only.");
    EXPECT_FALSE(files.write("/kvo/Data/b", {3}));
    EXPECT_FALSE(files.createEmpty("/kvo/c"));
    EXPECT_FALSE(files.makeFolder("/kvo/Backup"));
    EXPECT_FALSE(files.remove("/kvo/a"));
    EXPECT_FALSE(files.replaceable("/kvo/a"));
    EXPECT_FALSE(files.writable("/kvo"));
    EXPECT_FALSE(files.copy("/kvo/a", "/kvo/b"));
    EXPECT_EQ(disk.read("/kvo/a"), (platform::Bytes{1, 2}));
    EXPECT_FALSE(disk.exists("/kvo/b"));
}

TEST(LookOnlyFiles, LeaveOtherFoldersAsTheyAre) {
    MemoryFiles disk;
    disk.put("/kvo/a", {1, 2});
    platform::LookOnlyFiles files(disk);
    files.lookOnlyAt("/kvo");
    EXPECT_TRUE(files.copy("/kvo/a", "/usb/a"));
    EXPECT_TRUE(files.write("/kvo2/a", {3}));
    EXPECT_TRUE(files.makeFolder("/kvo2/Data"));
    EXPECT_EQ(files.read("/kvo/a"), (platform::Bytes{1, 2}));
    EXPECT_EQ(files.readAsNamed("/kvo/a").content, (platform::Bytes{1, 2}));
    EXPECT_FALSE(files.readAsNamed("/kvo/A"));
    EXPECT_TRUE(files.exists("/kvo/a"));
    EXPECT_EQ(files.list("/kvo"), disk.list("/kvo"));
}

TEST(LookOnlyFiles, MayNameEverything) {
    MemoryFiles disk;
    platform::LookOnlyFiles files(disk);
    files.lookOnly();
    for (const char* path : {"/a", "C:\\runs\\a", "a", ""}) {
        EXPECT_EQ(files.write(path, {3}).failure, platform::FileFailure::readOnly) << path;
        EXPECT_FALSE(files.makeFolder(path)) << path;
    }
    EXPECT_TRUE(disk.list("/").empty());
}

// A folder at the root of a disk ends with its separator.
TEST(LookOnlyFiles, ARootIsAFolderToo) {
    MemoryFiles disk;
    platform::LookOnlyFiles files(disk);
    files.lookOnlyAt("/");
    EXPECT_FALSE(files.write("/a", {3}));
}

} // namespace
} // namespace kvo::testing
