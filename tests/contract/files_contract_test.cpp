// What every body of Files must do: the real disk and the disk in memory that other tests stand on.
#include "platform/os/os_files.h"
#include "temporary_folder.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo {
namespace {

using platform::Bytes;
using platform::FileFailure;

struct OnDisk {
    testing::TemporaryFolder folder;
    platform_os::OsFiles files;
    std::string root() const { return folder.path().string(); }
    static void markReadOnly(const std::string& path) {
        std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    }
};

struct InMemory {
    testing::MemoryFiles files;
    std::string root() const { return "/kvo"; }
    void markReadOnly(const std::string& path) {
        files.failWrites(path, testing::MemoryFiles::Failure::readOnly);
    }
};

template <typename Body> class FilesContract : public ::testing::Test {
protected:
    std::string at(const std::string& name) const {
        return m_body.root() + m_body.files.separator() + name;
    }
    platform::Files& files() { return m_body.files; }
    std::string root() const { return m_body.root(); }
    void markReadOnly(const std::string& path) { m_body.markReadOnly(path); }

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

// What a refused name gives.
TYPED_TEST(FilesContract, WritesNothingWithoutAName) {
    for (const std::string& path : {std::string(), this->at("")}) {
        EXPECT_EQ(this->files().write(path, Bytes{1}).failure, FileFailure::noSuchPath) << path;
        EXPECT_FALSE(this->files().createEmpty(path)) << path;
    }
    EXPECT_TRUE(this->files().list(this->root()).empty());
}

TYPED_TEST(FilesContract, HasNothingForAMissingFile) {
    EXPECT_FALSE(this->files().exists(this->at("none")));
    EXPECT_FALSE(this->files().read(this->at("none")));
    EXPECT_FALSE(this->files().createdOn(this->at("none")));
    const auto removed = this->files().remove(this->at("none"));
    EXPECT_FALSE(removed);
    EXPECT_EQ(removed.failure, FileFailure::notFound);
    EXPECT_NE(removed.message.find(this->at("none")), std::string::npos) << removed.message;
}

TYPED_TEST(FilesContract, TellsThatAFileIsNotThere) {
    for (const std::string& path :
        {this->at("none"), this->at("none") + this->files().separator() + "run"}) {
        const auto result = this->files().readOrReason(path);
        EXPECT_FALSE(result);
        EXPECT_EQ(result.failure, FileFailure::notFound);
        EXPECT_NE(result.message.find(path), std::string::npos) << result.message;
    }
    ASSERT_TRUE(this->files().write(this->at("file"), Bytes{1}));
    EXPECT_EQ(this->files().readOrReason(this->at("file") + "/run").failure, FileFailure::notFound);
}

TYPED_TEST(FilesContract, ReadsWithOrWithoutTheReason) {
    ASSERT_TRUE(this->files().write(this->at("empty"), Bytes{}));
    const auto result = this->files().readOrReason(this->at("Empty"));
    EXPECT_TRUE(result);
    EXPECT_EQ(result.content, Bytes{});
    EXPECT_EQ(result.message, "");
    EXPECT_EQ(this->files().read(this->at("empty")), Bytes{});
}

TYPED_TEST(FilesContract, TellsWhetherAFolderCanBeEntered) {
    ASSERT_TRUE(this->files().makeFolder(this->at("Runs")));
    ASSERT_TRUE(this->files().write(this->at("file"), Bytes{1}));
    EXPECT_TRUE(this->files().enterable(this->at("Runs")));
    const auto missing = this->files().enterable(this->at("none"));
    EXPECT_FALSE(missing);
    EXPECT_EQ(missing.failure, FileFailure::noSuchPath);
    EXPECT_NE(missing.message.find(this->at("none")), std::string::npos) << missing.message;
    EXPECT_EQ(this->files().enterable(this->at("file") + "/in").failure, FileFailure::noSuchPath);
    const auto file = this->files().enterable(this->at("file"));
    EXPECT_FALSE(file);
    EXPECT_EQ(file.failure, FileFailure::other);
    EXPECT_FALSE(file.message.empty());
}

TYPED_TEST(FilesContract, TellsWhetherAFolderTakesFiles) {
    ASSERT_TRUE(this->files().makeFolder(this->at("Data")));
    ASSERT_TRUE(this->files().write(this->at("file"), Bytes{1}));
    EXPECT_TRUE(this->files().writable(this->at("Data")));
    for (const char* none : {"none", "file"}) {
        const auto asked = this->files().writable(this->at(none));
        EXPECT_FALSE(asked) << none;
        EXPECT_EQ(asked.failure, FileFailure::noSuchPath) << none;
        EXPECT_NE(asked.message.find(this->at(none)), std::string::npos) << asked.message;
    }
}

TYPED_TEST(FilesContract, RefusesToReplaceAReadOnlyFile) {
    const std::string path = this->at("Kvo.Cfg");
    EXPECT_TRUE(this->files().replaceable(path));
    ASSERT_TRUE(this->files().write(path, Bytes{1}));
    EXPECT_TRUE(this->files().replaceable(path));
    this->markReadOnly(path);
    const auto asked = this->files().replaceable(path);
    EXPECT_FALSE(asked);
    EXPECT_EQ(asked.failure, FileFailure::readOnly);
    EXPECT_FALSE(asked.message.empty());
    EXPECT_EQ(this->files().write(path, Bytes{2}).failure, FileFailure::readOnly);
    EXPECT_EQ(this->files().remove(path).failure, FileFailure::readOnly);
    EXPECT_EQ(this->files().read(path), Bytes{1});
}

TYPED_TEST(FilesContract, CopiesAWholeFile) {
    const Bytes content(100000, 7);
    ASSERT_TRUE(this->files().write(this->at("run"), content));
    ASSERT_TRUE(this->files().copy(this->at("RUN"), this->at("copy")));
    EXPECT_EQ(this->files().read(this->at("copy")), content);
    EXPECT_EQ(this->files().read(this->at("run")), content);
    ASSERT_TRUE(this->files().write(this->at("run"), Bytes{1}));
    ASSERT_TRUE(this->files().copy(this->at("run"), this->at("copy")));
    EXPECT_EQ(this->files().read(this->at("copy")), Bytes{1});
    ASSERT_TRUE(this->files().copy(this->at("run"), this->at("run")));
    EXPECT_EQ(this->files().read(this->at("run")), Bytes{1});
}

TYPED_TEST(FilesContract, LeavesTheTargetOfAFailedCopyAsItWas) {
    ASSERT_TRUE(this->files().write(this->at("run"), Bytes{1}));
    ASSERT_TRUE(this->files().write(this->at("copy"), Bytes{2}));
    const auto missing = this->files().copy(this->at("none"), this->at("copy"));
    EXPECT_FALSE(missing);
    EXPECT_EQ(missing.failure, FileFailure::notFound);
    EXPECT_NE(missing.message.find(this->at("none")), std::string::npos) << missing.message;
    this->markReadOnly(this->at("copy"));
    const auto refused = this->files().copy(this->at("run"), this->at("copy"));
    EXPECT_EQ(refused.failure, FileFailure::readOnly);
    EXPECT_NE(refused.message.find(this->at("copy")), std::string::npos) << refused.message;
    EXPECT_EQ(this->files().read(this->at("copy")), Bytes{2});
}

TYPED_TEST(FilesContract, KnowsADateOfEachFile) {
    ASSERT_TRUE(this->files().write(this->at("RUN"), Bytes{1}));
    const auto date = this->files().createdOn(this->at("run"));
    ASSERT_TRUE(date);
    EXPECT_GE(date->year, 2026);
    EXPECT_TRUE(date->month >= 1 && date->month <= 12);
    EXPECT_TRUE(date->day >= 1 && date->day <= 31);
}

TYPED_TEST(FilesContract, FindsANameInAnotherCase) {
    ASSERT_TRUE(this->files().write(this->at("KVO.CFG"), Bytes{1}));
    EXPECT_TRUE(this->files().exists(this->at("Kvo.Cfg")));
    EXPECT_EQ(this->files().read(this->at("kvo.cfg")), Bytes{1});
    ASSERT_TRUE(this->files().write(this->at("Kvo.Cfg"), Bytes{2}));
    EXPECT_EQ(this->files().read(this->at("KVO.CFG")), Bytes{2});
    EXPECT_EQ(this->files().list(this->root()).size(), 1U);
}

TYPED_TEST(FilesContract, ReadsUnderOneVeryName) {
    ASSERT_TRUE(this->files().write(this->at("RUN.52I"), Bytes{1, 2}));
    EXPECT_EQ(this->files().readAsNamed(this->at("RUN.52I")).content, (Bytes{1, 2}));
    const auto other = this->files().readAsNamed(this->at("RUN.52i"));
    EXPECT_FALSE(other);
    EXPECT_EQ(other.failure, FileFailure::notFound);
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

TYPED_TEST(FilesContract, ListsTheFoldersInAFolder) {
    using Names = std::vector<std::string>;
    EXPECT_FALSE(this->files().folders(this->at("Data")));
    const std::string inside = this->at("Data") + this->files().separator();
    for (const char* name : {"b", "a"}) ASSERT_TRUE(this->files().makeFolder(inside + name));
    ASSERT_TRUE(this->files().write(inside + "file", Bytes{1}));
    EXPECT_EQ(this->files().folders(this->at("Data")), (Names{"a", "b"}));
    EXPECT_EQ(this->files().folders(inside + "a"), Names{});
    EXPECT_FALSE(this->files().folders(inside + "file"));
}

} // namespace
} // namespace kvo
