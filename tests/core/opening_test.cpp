#include "core/opening.h"

#include "core/basic/byte_writer.h"
#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

platform::Bytes runOf(const std::string& line) {
    ByteWriter writer(100);
    encodeHeaderLine(writer, line);
    return writer.take();
}

struct Opening : ::testing::Test {
    Opening() {
        EXPECT_TRUE(files.makeFolder("/kvo"));
        EXPECT_TRUE(files.makeFolder("/kvo/Data"));
        files.put("/kvo/Data/26111514.52d", runOf("32 VRN35 Date:x#"));
        files.put("/stick/26111514.52d", runOf("32 VRN35 Date:x#"));
        files.put("/kvo/Kvo.Cfg", {1, 2, 3});
        files.put("/kvo/Data/99.txt", runOf("99 bottles"));
    }
    testing::MemoryFiles files;
};

TEST_F(Opening, APathNamesAFolderARunOrNothing) {
    EXPECT_EQ(thingAt("/kvo", "/kvo/Data", files), OpenedThing::folder);
    EXPECT_EQ(thingAt("/kvo/Data/26111514.52d", "/kvo/Data", files), OpenedThing::ownRun);
    EXPECT_EQ(thingAt("/kvo/Data/26111514.52d", "/other/Data", files), OpenedThing::runElsewhere);
    EXPECT_EQ(thingAt("/stick/26111514.52d", "/kvo/Data", files), OpenedThing::runElsewhere);
    EXPECT_EQ(thingAt("/kvo/Kvo.Cfg", "/kvo/Data", files), OpenedThing::noRun);
    EXPECT_EQ(thingAt("/kvo/Data/99.txt", "/kvo/Data", files), OpenedThing::noRun);
    EXPECT_EQ(thingAt("/kvo/Data/none.52d", "/kvo/Data", files), OpenedThing::nothing);
    files.failReads("/stick", testing::MemoryFiles::Failure::notPermitted);
    EXPECT_EQ(thingAt("/stick/26111514.52d", "/kvo/Data", files), OpenedThing::noRun);
}

TEST_F(Opening, TheFolderOfTheRunsCountsInAnyCase) {
    files.put("/kvo/DATA/26111514.53d", runOf("32 VRN35 Date:x#"));
    files.put("/KVO/Data/26111514.54d", runOf("32 VRN35 Date:x#"));
    EXPECT_EQ(thingAt("/kvo/DATA/26111514.53d", "/kvo/Data", files), OpenedThing::ownRun);
    EXPECT_EQ(thingAt("/KVO/Data/26111514.54d", "/kvo/Data", files), OpenedThing::runElsewhere);
}

TEST_F(Opening, ARunBelongsToTheFolderAroundItsData) {
    EXPECT_EQ(folderOfRun("/home/me/runs/Data/26111514.52d"), "/home/me/runs");
    EXPECT_EQ(folderOfRun("/home/me/runs/DATA/26111514.52d"), "/home/me/runs");
    EXPECT_EQ(folderOfRun("/stick/26111514.52d"), "");
    EXPECT_EQ(folderOfRun("26111514.52d"), "");
}

TEST_F(Opening, TheLastTenAreRememberedNewestFirst) {
    std::vector<std::string> list;
    for (int i = 1; i <= 12; ++i) list = withRecent(list, "/" + std::to_string(i));
    ASSERT_EQ(list.size(), 10U);
    EXPECT_EQ(list.front(), "/12");
    EXPECT_EQ(list.back(), "/3");
    list = withRecent(list, "/5");
    EXPECT_EQ(list.size(), 10U);
    EXPECT_EQ(list[0], "/5");
    EXPECT_EQ(list[1], "/12");
    EXPECT_EQ(std::count(list.begin(), list.end(), "/5"), 1);
    list = withoutRecent(list, "/12");
    EXPECT_EQ(list.size(), 9U);
    EXPECT_EQ(withoutRecent(list, "/none"), list);
}

} // namespace
} // namespace kvo::core
