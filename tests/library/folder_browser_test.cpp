#include "library/folder_browser.h"

#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::library {
namespace {

using Names = std::vector<std::string>;

class FolderBrowserTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* folder :
            {"/media", "/media/stick", "/media/stick/Runs", "/media/.hidden", "/home", "/locked"}) {
            ASSERT_TRUE(files.makeFolder(folder));
        }
        files.put("/media/stick/a.10d", {1});
        files.put("/media/stick/.b", {1});
        files.failReads("/locked", testing::MemoryFiles::Failure::notPermitted);
    }
    testing::MemoryFiles files;
    FolderBrowser browser{files};
};

TEST_F(FolderBrowserTest, walksDownAndUp) {
    ASSERT_TRUE(browser.enter("/"));
    EXPECT_EQ(browser.folder(), "/");
    EXPECT_EQ(browser.rows(), (Names{"home", "locked", "media"})); // nothing is above it
    EXPECT_FALSE(browser.goUp());
    ASSERT_TRUE(browser.enterRow(2));
    EXPECT_EQ(browser.folder(), "/media");
    EXPECT_EQ(browser.rows(), (Names{"..", "stick"}));
    ASSERT_TRUE(browser.enterRow(1));
    EXPECT_EQ(browser.folder(), "/media/stick");
    EXPECT_EQ(browser.files(), Names{"a.10d"});
    ASSERT_TRUE(browser.enterRow(0));
    ASSERT_TRUE(browser.goUp());
    EXPECT_EQ(browser.folder(), "/");
}

TEST_F(FolderBrowserTest, staysWhereAFolderCannotBeRead) {
    ASSERT_TRUE(browser.enter("/media/stick/"));
    for (const char* folder : {"/locked", "/gone", ""}) {
        EXPECT_FALSE(browser.enter(folder)) << folder;
        EXPECT_EQ(browser.folder(), "/media/stick");
        EXPECT_EQ(browser.rows(), (Names{"..", "Runs"}));
    }
    EXPECT_FALSE(browser.enterRow(2));
    EXPECT_EQ(browser.folder(), "/media/stick");
}

TEST_F(FolderBrowserTest, beforeTheFirstFolderThereIsNothing) {
    EXPECT_EQ(browser.folder(), "");
    EXPECT_FALSE(browser.goUp());
    EXPECT_FALSE(browser.enterRow(0));
}

TEST_F(FolderBrowserTest, aFolderLiesOnTheNearestDrive) {
    const Names roots{"/", "/media/stick", "/home/jo"};
    EXPECT_EQ(driveOf(roots, "/media/stick/Runs", '/'), 1U);
    EXPECT_EQ(driveOf(roots, "/media/stick", '/'), 1U);
    EXPECT_EQ(driveOf(roots, "/media/stick2", '/'), 0U);
    EXPECT_EQ(driveOf(roots, "/", '/'), 0U);
    EXPECT_EQ(driveOf({"C:\\", "D:\\"}, "D:\\Runs", '\\'), 1U);
    EXPECT_FALSE(driveOf({"/media/stick", ""}, "/home", '/'));
}

// A disk whose roots have names.
class NamedDrives : public testing::MemoryFiles {
public:
    std::optional<Names> folders(const std::string& folder) const override {
        if (folder == "C:\\") return Names{"Runs"};
        if (folder == "C:\\Runs") return Names{};
        return {};
    }
    char separator() const override { return '\\'; }
};

TEST(RootFolder, IsASeparatorAloneOrOneBehindADrive) {
    for (const char* root : {"/", "\\", "C:\\", "C:/"}) EXPECT_TRUE(isRootFolder(root)) << root;
    for (const char* other : {"", "a", "a/", "C:", "a:b", "/ab", "C:/a"})
        EXPECT_FALSE(isRootFolder(other)) << other;
}

TEST(FolderBrowser, theRootOfANamedDriveIsTheTop) {
    const NamedDrives files;
    FolderBrowser browser(files);
    ASSERT_TRUE(browser.enter("C:\\Runs"));
    ASSERT_TRUE(browser.goUp());
    EXPECT_EQ(browser.folder(), "C:\\");
    EXPECT_EQ(browser.rows(), Names{"Runs"});
    EXPECT_FALSE(browser.goUp());
    ASSERT_TRUE(browser.enterRow(0));
    EXPECT_EQ(browser.folder(), "C:\\Runs");
}

} // namespace
} // namespace kvo::library
