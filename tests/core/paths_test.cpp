// Paths below the program's folder, with the separator of the system that the files are on.
#include "core/paths.h"

#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

using testing::MemoryFiles;

TEST(Paths, AreJoinedByOneSeparator) {
    const MemoryFiles files;
    EXPECT_EQ(joined("/kvo", "Kvo.Cfg", files), "/kvo/Kvo.Cfg");
    EXPECT_EQ(joined("/kvo/", "Kvo.Cfg", files), "/kvo/Kvo.Cfg");
    EXPECT_EQ(joined("", "Kvo.Cfg", files), "/Kvo.Cfg");
    EXPECT_EQ(dataFolder("/kvo", files), "/kvo/Data");
}

TEST(Paths, EndInABaseName) {
    EXPECT_EQ(baseName("/kvo/Data/26111514.52d"), "26111514.52d");
    EXPECT_EQ(baseName("C:\\kvo\\Data\\26111514.52d"), "26111514.52d");
    EXPECT_EQ(baseName("/kvo\\a/b"), "b");
    EXPECT_EQ(baseName("26111514.52d"), "26111514.52d");
    EXPECT_EQ(baseName("/kvo/"), "");
    EXPECT_EQ(baseName(""), "");
}

} // namespace
} // namespace kvo::core
