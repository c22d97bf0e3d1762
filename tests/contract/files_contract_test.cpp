// What every body of Files must do: the real disk and the disk in memory that other tests stand on.
#include "platform/os/os_files.h"
#include "temporary_folder.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo {
namespace {

using platform::Bytes;

struct OnDisk {
    testing::TemporaryFolder folder;
    platform_os::OsFiles files;
    std::string root() const { return folder.path().string(); }
};

struct InMemory {
    testing::MemoryFiles files;
    std::string root() const { return "/kvo"; }
};

template <typename Body> class FilesContract : public ::testing::Test {
protected:
    std::string at(const std::string& name) const {
        return m_body.root() + m_body.files.separator() + name;
    }
    platform::Files& files() { return m_body.files; }
    std::string root() const { return m_body.root(); }

private:
    Body m_body;
};
using Bodies = ::testing::Types<OnDisk, InMemory>;
TYPED_TEST_SUITE(FilesContract, Bodies);

TYPED_TEST(FilesContract, GivesBackWhatWasWritten) {
    const Bytes content{0, 1, 255, '\r', '\n', 26};
    ASSERT_TRUE(this->files().write(this->at("Kvo.Cfg"), content));
    EXPECT_EQ(this->files().read(this->at("Kvo.Cfg")), content);
    ASSERT_TRUE(this->files().write(this->at("Kvo.Cfg"), Bytes{7}));
    EXPECT_EQ(this->files().read(this->at("Kvo.Cfg")), Bytes{7});
    ASSERT_TRUE(this->files().write(this->at("Kvo.Cfg"), Bytes{}));
    EXPECT_EQ(this->files().read(this->at("Kvo.Cfg")), Bytes{});
}

TYPED_TEST(FilesContract, HasNothingForAMissingFile) {
    EXPECT_FALSE(this->files().exists(this->at("none")));
    EXPECT_FALSE(this->files().read(this->at("none")));
    const auto removed = this->files().remove(this->at("none"));
    EXPECT_FALSE(removed);
    EXPECT_FALSE(removed.message.empty());
}

TYPED_TEST(FilesContract, FindsANameInAnotherCase) {
    ASSERT_TRUE(this->files().write(this->at("KVO.CFG"), Bytes{1}));
    EXPECT_TRUE(this->files().exists(this->at("Kvo.Cfg")));
    EXPECT_EQ(this->files().read(this->at("kvo.cfg")), Bytes{1});
    ASSERT_TRUE(this->files().write(this->at("Kvo.Cfg"), Bytes{2}));
    EXPECT_EQ(this->files().read(this->at("KVO.CFG")), Bytes{2});
    EXPECT_EQ(this->files().list(this->root()).size(), 1U);
}

TYPED_TEST(FilesContract, RemovesAFile) {
    ASSERT_TRUE(this->files().write(this->at("a"), Bytes{1}));
    ASSERT_TRUE(this->files().remove(this->at("a")));
    EXPECT_FALSE(this->files().exists(this->at("a")));
}

TYPED_TEST(FilesContract, MakesFoldersAndListsTheirFiles) {
    EXPECT_FALSE(this->files().folderExists(this->at("Data")));
    EXPECT_TRUE(this->files().list(this->at("Data")).empty());
    ASSERT_TRUE(this->files().makeFolder(this->at("Data")));
    ASSERT_TRUE(this->files().makeFolder(this->at("Data")));
    EXPECT_TRUE(this->files().folderExists(this->at("Data")));
    const std::string inside = this->at("Data") + this->files().separator();
    ASSERT_TRUE(this->files().write(inside + "b", Bytes{1}));
    ASSERT_TRUE(this->files().write(inside + "a", Bytes{1}));
    EXPECT_EQ(this->files().list(this->at("Data")), (std::vector<std::string>{"a", "b"}));
}

} // namespace
} // namespace kvo
