// Paths with letters of any script, from the program to the disk and back.
#include "platform/system_path.h"

#include "platform/os/os_files.h"
#include "platform/text.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace kvo::platform {
namespace {

// "Juergl" with a letter of Polish, "Uebung", "garage" in Japanese, a flag beyond the first 65,536.
constexpr const char* names[] = {"J\xc3\xbcrg\xc5\x82",
    ("\xc3\x9c"
     "bung"),
    "\xe3\x82\xac\xe3\x83\xac\xe3\x83\xbc\xe3\x82\xb8", "\xf0\x9f\x8f\x81 day"};

TEST(SystemPath, GivesBackWhatItGot) {
    for (const char* name : names) EXPECT_EQ(pathText(systemPath(name)), name);
    EXPECT_TRUE(systemPath("").empty());
    EXPECT_EQ(pathText(systemPath("a") / systemPath(names[0])).substr(2), names[0]);
}

#ifndef _WIN32
TEST(SystemPath, LeavesBytesThatAreNoUtf8AsTheyAre) {
    EXPECT_EQ(systemPath("M\xfcller").native(), "M\xfcller");
    EXPECT_EQ(pathText(std::filesystem::path("M\xfcller")), "M\xfcller");
}
#endif

// A name that the system lists is the name that it finds.
TEST(SystemPath, NamesFoldersAndFilesOfAnyScript) {
    const testing::TemporaryFolder folder;
    platform_os::OsFiles files;
    for (const char* name : names) {
        const std::string place = folder / name;
        ASSERT_TRUE(files.makeFolder(place)) << name;
        const std::string path = place + files.separator() + name + ".52d";
        ASSERT_TRUE(files.write(path, {1, 2})) << path;
        EXPECT_EQ(files.read(path), (Bytes{1, 2})) << path;
        EXPECT_EQ(files.readAsNamed(path).content, (Bytes{1, 2})) << path;
        EXPECT_EQ(files.list(place), std::vector<std::string>{std::string(name) + ".52d"});
        EXPECT_TRUE(files.createdOn(path));
        EXPECT_TRUE(files.enterable(place));
        ASSERT_TRUE(files.copy(path, place + files.separator() + "copy"));
        ASSERT_TRUE(files.remove(path));
        EXPECT_FALSE(files.exists(path));
    }
    std::vector<std::string> all(std::begin(names), std::end(names));
    std::sort(all.begin(), all.end());
    EXPECT_EQ(files.folders(pathText(folder.path())), all);
}

TEST(SystemPath, IsFoundWhateverTheCaseOfItsPlainLetters) {
    const testing::TemporaryFolder folder;
    platform_os::OsFiles files;
    for (const char* name : names) {
        ASSERT_TRUE(files.makeFolder(folder / name));
        ASSERT_TRUE(files.write((folder / name) + files.separator() + "KVO.CFG", {7}));
        EXPECT_EQ(files.read((folder / name) + files.separator() + "Kvo.Cfg"), Bytes{7}) << name;
    }
}

TEST(SystemPath, StandsInMessagesAsUtf8) {
    const testing::TemporaryFolder folder;
    platform_os::OsFiles files;
    for (const char* name : names) {
        const std::string path = folder / name;
        for (const std::string& told : {files.readOrReason(path).message,
                 files.remove(path).message, files.enterable(path).message,
                 files.write(path + files.separator() + "run", {1}).message}) {
            EXPECT_TRUE(isUtf8(told)) << told;
            EXPECT_NE(told.find(name), std::string::npos) << told;
        }
    }
}

} // namespace
} // namespace kvo::platform
