// Files on the real disk, and what they do when the disk fails at any step.
#include "platform/os/os_clock.h"
#include "platform/os/os_files.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <fstream>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kvo::platform_os {
namespace {

namespace fs = std::filesystem;
using platform::Bytes;
using platform::FileFailure;
using testing::TemporaryFolder;

// A disk on which one step fails, or that takes only part of what it is given.
class FailingDisk : public DiskWriter {
public:
    enum class Step { none, create, write, sync, size, close, rename };
    Step failing = Step::none;
    int reason = ENOSPC;
    std::size_t mostAtOnce = static_cast<std::size_t>(-1);
    std::size_t room = static_cast<std::size_t>(-1);
    bool silentlyFull = false; // says that all went, and keeps nothing

    int create(const fs::path& path) override {
        return fails(Step::create) ? -1 : DiskWriter::create(path);
    }
    std::int64_t write(int file, std::span<const std::uint8_t> bytes) override {
        if (fails(Step::write)) return -1;
        if (silentlyFull) return static_cast<std::int64_t>(bytes.size());
        const std::size_t taken = std::min({bytes.size(), mostAtOnce, room});
        room -= taken;
        if (taken == 0) errno = ENOSPC;
        return taken == 0 ? -1 : DiskWriter::write(file, bytes.first(taken));
    }
    bool sync(int file) override { return !fails(Step::sync) && DiskWriter::sync(file); }
    std::int64_t size(int file) override { return fails(Step::size) ? -1 : DiskWriter::size(file); }
    bool close(int file) override {
        const bool closed = DiskWriter::close(file);
        return !fails(Step::close) && closed;
    }
    bool rename(const fs::path& from, const fs::path& to) override {
        return !fails(Step::rename) && DiskWriter::rename(from, to);
    }

private:
    bool fails(Step step) {
        if (failing != step) return false;
        errno = reason;
        return true;
    }
};

#ifdef _WIN32

// Rights are no bits there, and pipes no files: tests/windows/skipped.txt names these tests.
class OrdinaryUser {
public:
    OrdinaryUser() {}
};

int mkfifo(const char*, int) {
    return -1;
}

#else

// Somebody who is no administrator, for as long as it lives.
class OrdinaryUser {
public:
    OrdinaryUser() {
        constexpr uid_t nobody = 65534;
        if (m_self == 0 && seteuid(nobody) != 0) ADD_FAILURE() << "stays administrator";
    }
    ~OrdinaryUser() {
        if (m_self == 0 && seteuid(0) != 0) ADD_FAILURE() << "is not administrator again";
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    uid_t m_self = geteuid();
};

#endif

const Bytes before{1, 2, 3};
const Bytes after(5000, 9);

TEST(OsFiles, KeepTheOldFileWhereAnyStepFails) {
    using Step = FailingDisk::Step;
    for (const Step step :
        {Step::create, Step::write, Step::sync, Step::size, Step::close, Step::rename}) {
        TemporaryFolder folder;
        ASSERT_TRUE(OsFiles().write(folder / "run", before));
        FailingDisk disk;
        disk.failing = step;
        OsFiles files(disk);
        const auto result = files.write(folder / "run", after);
        EXPECT_FALSE(result) << static_cast<int>(step);
        EXPECT_NE(result.message.find("full"), std::string::npos) << result.message;
        EXPECT_NE(result.message.find(folder / "run"), std::string::npos) << result.message;
        EXPECT_EQ(files.read(folder / "run"), before);
        EXPECT_EQ(files.list(folder.path().string()).size(), 1U) << "nothing is left beside it";
    }
}

TEST(OsFiles, KeepTheOldFileOnADiskThatFillsUp) {
    TemporaryFolder folder;
    ASSERT_TRUE(OsFiles().write(folder / "run", before));
    FailingDisk disk;
    disk.room = 4999;
    EXPECT_FALSE(OsFiles(disk).write(folder / "run", after));
    disk.room = 0;
    EXPECT_FALSE(OsFiles(disk).write(folder / "run", after));
    EXPECT_EQ(OsFiles().read(folder / "run"), before);
    disk.room = 5000;
    EXPECT_TRUE(OsFiles(disk).write(folder / "run", after));
    EXPECT_EQ(OsFiles().read(folder / "run"), after);
}

TEST(OsFiles, BelieveTheSizeAndNotTheWords) {
    TemporaryFolder folder;
    FailingDisk disk;
    disk.silentlyFull = true;
    EXPECT_FALSE(OsFiles(disk).write(folder / "run", after));
    EXPECT_FALSE(OsFiles().exists(folder / "run"));
}

TEST(OsFiles, GoOnAfterAShortWrite) {
    TemporaryFolder folder;
    FailingDisk disk;
    disk.mostAtOnce = 7;
    EXPECT_TRUE(OsFiles(disk).write(folder / "run", after));
    EXPECT_EQ(OsFiles().read(folder / "run"), after);
}

struct ErrorCase {
    int error;
    FileFailure failure;
    const char* words;
};
constexpr ErrorCase writeErrors[] = {
    {ENOSPC, FileFailure::full, "The disk is full."},
#ifdef EDQUOT
    {EDQUOT, FileFailure::full, "share of the disk"},
#endif
    {EACCES, FileFailure::notPermitted, "not permitted"},
    {EPERM, FileFailure::notPermitted, "not permitted"},
    {EROFS, FileFailure::notPermitted, "only be read"},
    {ENOENT, FileFailure::noSuchPath, "folder is not there"},
    {ENOTDIR, FileFailure::noSuchPath, "folder is not there"},
#ifdef ENOMEDIUM
    {ENOMEDIUM, FileFailure::notReady, "not ready"},
#endif
    {ENODEV, FileFailure::notReady, "not ready"},
#ifdef ESTALE
    {ESTALE, FileFailure::notReady, "not ready"},
#endif
    {EIO, FileFailure::other, "reports an error"},
    {ENAMETOOLONG, FileFailure::other, "name too long"},
};

TEST(OsFiles, SayWhyForEachCause) {
    TemporaryFolder folder;
    FailingDisk disk;
    OsFiles files(disk);
    for (const auto step : {FailingDisk::Step::create, FailingDisk::Step::rename}) {
        disk.failing = step;
        for (const ErrorCase& each : writeErrors) {
            disk.reason = each.error;
            const auto result = files.write(folder / "a", before);
            EXPECT_EQ(result.failure, each.failure) << result.message;
            EXPECT_NE(result.message.find(each.words), std::string::npos) << result.message;
        }
    }
}

TEST(OsFiles, LeaveNoHalfCopy) {
    using Step = FailingDisk::Step;
    TemporaryFolder folder;
    ASSERT_TRUE(OsFiles().write(folder / "run", after));
    ASSERT_TRUE(OsFiles().write(folder / "copy", before));
    for (const Step step : {Step::create, Step::write, Step::sync, Step::size, Step::rename}) {
        FailingDisk disk;
        disk.failing = step;
        EXPECT_EQ(OsFiles(disk).copy(folder / "run", folder / "copy").failure, FileFailure::full);
        EXPECT_EQ(OsFiles(disk).copy(folder / "run", folder / "new").failure, FileFailure::full);
        EXPECT_EQ(OsFiles().read(folder / "copy"), before);
        EXPECT_EQ(OsFiles().list(folder.path().string()).size(), 2U);
    }
}

TEST(OsFiles, CreateAnEmptyFileOnlyWhereThereIsNone) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.createEmpty(folder / "KvoTimes"));
    EXPECT_EQ(files.read(folder / "KvoTimes"), Bytes{});
    ASSERT_TRUE(files.write(folder / "KvoTimes", {1, 2}));
    EXPECT_TRUE(files.createEmpty(folder / "KvoTimes"));
    EXPECT_TRUE(files.createEmpty(folder / "KVOTIMES"));
    EXPECT_EQ(files.read(folder / "KvoTimes"), (Bytes{1, 2}));
    EXPECT_EQ(files.list(folder.path().string()).size(), 1U);
    EXPECT_EQ(files.createEmpty(folder / "none/KvoTimes").failure, FileFailure::noSuchPath);
}

TEST(OsFiles, TellALinkThatLeadsOutOfItsFolder) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.makeFolder(folder / "Data"));
    ASSERT_TRUE(files.write(folder / "secret", before));
    ASSERT_TRUE(files.write(folder / "Data/run", before));
    const auto link = [&](const char* to, const char* name) {
        fs::create_symlink(to, folder / (std::string("Data/") + name));
        return files.linksElsewhere(folder / (std::string("Data/") + name));
    };
    EXPECT_TRUE(link("../secret", "up"));
    EXPECT_TRUE(link("../nothing", "nowhere"));
    EXPECT_TRUE(link("up", "over another link"));
    EXPECT_TRUE(link("ring", "ring"));
    EXPECT_FALSE(link("run", "beside"));
    EXPECT_FALSE(files.linksElsewhere(folder / "Data/run"));
    EXPECT_FALSE(files.linksElsewhere(folder / "Data/none"));
}

TEST(OsFiles, TellAMissingFolderFromAMissingFile) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.write(folder / "run", before));
    EXPECT_EQ(files.copy(folder / "none", folder / "copy").failure, FileFailure::notFound);
    EXPECT_EQ(files.copy(folder / "run", folder / "none/run").failure, FileFailure::noSuchPath);
    EXPECT_EQ(files.write(folder / "run/inside", before).failure, FileFailure::noSuchPath);
    EXPECT_EQ(files.makeFolder(folder / "run/inside").failure, FileFailure::noSuchPath);
    EXPECT_EQ(files.enterable(folder / "run/inside").failure, FileFailure::noSuchPath);
}

TEST(OsFiles, NeverReplaceAReadOnlyFileEvenForAnAdministrator) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.write(folder / "Kvo.Cfg", before));
    fs::permissions(folder / "Kvo.Cfg", fs::perms::owner_read);
    const auto result = files.write(folder / "Kvo.Cfg", after);
    EXPECT_FALSE(result);
    EXPECT_NE(result.message.find("read-only"), std::string::npos);
    EXPECT_EQ(files.read(folder / "Kvo.Cfg"), before);
    EXPECT_FALSE(files.remove(folder / "Kvo.Cfg"));
    EXPECT_TRUE(files.exists(folder / "Kvo.Cfg"));
}

TEST(OsFiles, RefuseWhatIsNoPlainFile) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.makeFolder(folder / "Data"));
    EXPECT_FALSE(files.write(folder / "Data", before));
    EXPECT_FALSE(files.remove(folder / "Data"));
    const auto asFile = files.readOrReason(folder / "Data");
    EXPECT_EQ(asFile.failure, FileFailure::other);
    EXPECT_NE(asFile.message.find("It is a folder."), std::string::npos) << asFile.message;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto pipe = files.readOrReason(folder / "pipe"); // and does not wait for a writer
    EXPECT_EQ(pipe.failure, FileFailure::other);
    EXPECT_NE(pipe.message.find("no plain file"), std::string::npos) << pipe.message;
    EXPECT_FALSE(files.write(folder / "pipe", before));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    ASSERT_TRUE(files.write(folder / "file", before));
    EXPECT_FALSE(files.makeFolder(folder / "file"));
    EXPECT_FALSE(files.write("/dev/full", before));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(OsFiles, TellOfAFolderThatIsNotThere) {
    TemporaryFolder folder;
    const auto result = OsFiles().write(folder / "none/run", before);
    EXPECT_FALSE(result);
    EXPECT_NE(result.message.find("folder is not there"), std::string::npos) << result.message;
}

TEST(OsFiles, PutTheNameOfANewFolderOnTheDisk) {
    class Noting : public DiskWriter {
    public:
        void syncFolder(const fs::path& folder) override { synced.push_back(folder); }
        std::vector<fs::path> synced;
    };
    TemporaryFolder folder;
    Noting disk;
    OsFiles files(disk);
    ASSERT_TRUE(files.makeFolder(folder / "Backup"));
    EXPECT_EQ(disk.synced, std::vector<fs::path>{folder.path()});
}

TEST(OsFiles, TellOfAFolderThatMayNotBeWritten) {
    constexpr fs::perms readable = fs::perms::owner_read | fs::perms::owner_exec |
                                   fs::perms::group_read | fs::perms::group_exec |
                                   fs::perms::others_read | fs::perms::others_exec;
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.makeFolder(folder / "Data"));
    ASSERT_TRUE(files.write(folder / "Data/old", before));
    fs::permissions(folder / "Data", readable);
    fs::permissions(folder.path(), readable);
    {
        const OrdinaryUser user;
        const auto result = files.write(folder / "Data/run", before);
        EXPECT_FALSE(result);
        EXPECT_NE(result.message.find("not permitted"), std::string::npos) << result.message;
        const auto foreign = files.write(folder / "Data/old", after);
        EXPECT_NE(foreign.message.find("somebody else"), std::string::npos) << foreign.message;
        EXPECT_EQ(foreign.failure, FileFailure::notPermitted);
        EXPECT_EQ(files.replaceable(folder / "Data/old").failure, FileFailure::notPermitted);
        EXPECT_EQ(files.remove(folder / "Data/old").failure, FileFailure::notPermitted);
        EXPECT_EQ(files.makeFolder(folder / "Backup").failure, FileFailure::notPermitted);
        EXPECT_EQ(files.writable(folder / "Data").failure, FileFailure::notPermitted);
        EXPECT_EQ(files.read(folder / "Data/old"), before);
    }
    fs::permissions(folder.path(), fs::perms::owner_all);
}

// What may not be looked at is not called missing.
TEST(OsFiles, TellOfAFileThatMayNotBeRead) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.makeFolder(folder / "Data"));
    ASSERT_TRUE(files.write(folder / "Data/run", before));
    ASSERT_TRUE(files.write(folder / "run", before));
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(folder / "run", fs::perms::owner_write);
    fs::permissions(folder / "Data", fs::perms::owner_write);
    const OrdinaryUser user;
    for (const char* name : {"run", "Data/run"}) {
        const auto result = files.readOrReason(folder / name);
        EXPECT_EQ(result.failure, FileFailure::notPermitted) << result.message;
        EXPECT_NE(result.message.find("not permitted to read"), std::string::npos);
    }
    const auto kept = files.remove(folder / "Data/run");
    EXPECT_EQ(kept.failure, FileFailure::notPermitted) << kept.message;
    EXPECT_NE(kept.message.find("could not be deleted"), std::string::npos) << kept.message;
    for (const char* closed : {"Data", "Data/more"})
        EXPECT_EQ(files.enterable(folder / closed).failure, FileFailure::notPermitted) << closed;
    EXPECT_TRUE(files.enterable(folder.path().string()));
}

// What lies there in another case cannot be told from what is not there, and is not covered by a
// new file; who knows the name as it stands goes on.
TEST(OsFiles, TellOfAFolderThatCannotBeListed) {
    constexpr auto unlisted = static_cast<fs::perms>(0333);
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.makeFolder(folder / "Data"));
    ASSERT_TRUE(files.write(folder / "Data/KVODATA.INI", before));
    fs::permissions(folder / "Data/KVODATA.INI", static_cast<fs::perms>(0666));
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(folder / "Data", unlisted);
    {
        const OrdinaryUser user;
        const std::string path = folder / "Data/KvoData.Ini";
        const auto refused = FileFailure::notPermitted;
        const auto unread = files.readOrReason(path);
        EXPECT_EQ(unread.failure, refused) << unread.message;
        EXPECT_FALSE(unread);
        for (const auto& result : {files.write(path, after), files.createEmpty(path),
                 files.replaceable(path), files.remove(path), files.makeFolder(path),
                 files.enterable(path), files.writable(path)}) {
            EXPECT_FALSE(result);
            EXPECT_EQ(result.failure, refused) << result.message;
        }
        EXPECT_EQ(files.readOrReason(folder / "Data/more/x").failure, refused);
        EXPECT_EQ(files.readAsNamed(path).failure, FileFailure::notFound);
        EXPECT_EQ(files.read(folder / "Data/KVODATA.INI"), before);
        EXPECT_TRUE(files.write(folder / "Data/KVODATA.INI", after));
    }
    fs::permissions(folder / "Data", fs::perms::owner_all);
    EXPECT_EQ(files.list(folder / "Data"), std::vector<std::string>{"KVODATA.INI"});
}

TEST(OsFiles, FindEachPartOfAPathWhateverItsCase) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.makeFolder(folder / "DATA"));
    ASSERT_TRUE(files.write(folder / "DATA/KVODATA.INI", before));
    EXPECT_TRUE(files.folderExists(folder / "Data"));
    EXPECT_EQ(files.read(folder / "Data/KvoData.Ini"), before);
    ASSERT_TRUE(files.write(folder / "Data/KvoData.Ini", after));
    EXPECT_EQ(files.list(folder / "data"), std::vector<std::string>{"KVODATA.INI"});
    // A new file goes into the folder that is there.
    ASSERT_TRUE(files.write(folder / "Data/new.txt", before));
    EXPECT_TRUE(fs::exists(folder / "DATA/new.txt"));
}

TEST(OsFiles, TakeTheExactNameFirst) {
    TemporaryFolder folder;
    for (const char* name : {"kvo.cfg", "KVO.CFG", "Kvo.Cfg"}) {
        std::ofstream(folder / name) << name;
    }
    const auto content = OsFiles().read(folder / "Kvo.Cfg");
    ASSERT_TRUE(content);
    EXPECT_EQ(std::string(content->begin(), content->end()), "Kvo.Cfg");
}

TEST(OsFiles, KeepALinkAndReplaceWhatItPointsTo) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.makeFolder(folder / "real"));
    ASSERT_TRUE(files.write(folder / "real/run", before));
    fs::create_symlink(folder / "real/run", folder / "link");
    ASSERT_TRUE(files.write(folder / "link", after));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(files.read(folder / "real/run"), after);
}

TEST(OsFiles, KeepThePermissionsOfTheFile) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.write(folder / "run", before));
    fs::permissions(folder / "run", fs::perms::owner_read | fs::perms::owner_write);
    ASSERT_TRUE(files.write(folder / "run", after));
    EXPECT_EQ(
        fs::status(folder / "run").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(OsFiles, DoNotTakeInAMonster) {
    TemporaryFolder folder;
    std::ofstream(folder / "huge") << 'x';
    fs::resize_file(folder / "huge", std::uintmax_t{1} << 40U); // a hole, it takes no room
    const auto result = OsFiles().readOrReason(folder / "huge");
    EXPECT_EQ(result.failure, FileFailure::other);
    EXPECT_NE(result.message.find("too large"), std::string::npos) << result.message;
}

std::time_t secondsOf(const platform::DateTime& local) {
    std::tm moment{};
    moment.tm_year = local.year - 1900;
    moment.tm_mon = local.month - 1;
    moment.tm_mday = local.day;
    moment.tm_hour = local.hour;
    moment.tm_min = local.minute;
    moment.tm_sec = local.second;
    moment.tm_isdst = -1;
    return std::mktime(&moment);
}

TEST(OsClock, TellsLocalTime) {
    const std::time_t earlier = std::time(nullptr);
    EXPECT_LE(std::abs(std::difftime(secondsOf(OsClock().now()), earlier)), 2);
}

TEST(OsFiles, TellWhenAFileWasMadeWhateverItsLastChange) {
    TemporaryFolder folder;
    OsFiles files;
    ASSERT_TRUE(files.write(folder / "run", before));
    const std::time_t made = std::time(nullptr);
    fs::last_write_time(folder / "run", fs::file_time_type::clock::now() - std::chrono::hours(72));
    const auto date = files.createdOn(folder / "run");
    ASSERT_TRUE(date);
    EXPECT_LE(std::abs(std::difftime(secondsOf(*date), made)), 2);
}

// The file system of the processes keeps no date of making.
TEST(OsFiles, TakeTheLastChangeWhereTheMakingIsNotKept) {
    const auto changed = fs::last_write_time("/proc/version");
    const auto age = fs::file_time_type::clock::now() - changed;
    const auto date = OsFiles().createdOn("/proc/version");
    ASSERT_TRUE(date);
    const double seconds = std::difftime(std::time(nullptr), secondsOf(*date));
    EXPECT_NEAR(seconds,
        static_cast<double>(std::chrono::duration_cast<std::chrono::seconds>(age).count()), 2);
}

} // namespace
} // namespace kvo::platform_os
