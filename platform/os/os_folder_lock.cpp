#include "platform/os/os_folder_lock.h"

#if defined(__unix__) || defined(__APPLE__)

#include "platform/os/lock_text.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kvo::platform_os {
namespace {

std::string firstLineOf(const char* path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

std::string hostName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : std::string();
}

// The name of the program that has a number; empty where nobody may know it.
std::string programOf(std::int64_t process) {
    std::array<char, 4096> path{};
    const std::string link = "/proc/" + std::to_string(process) + "/exe";
    const auto length = readlink(link.c_str(), path.data(), path.size() - 1);
    if (length <= 0) return {};
    std::string name(path.data(), static_cast<std::size_t>(length));
    return name.substr(name.rfind('/') + 1);
}

LockText ownText() {
    return {getpid(), programOf(getpid()), hostName(), firstLineOf("/etc/machine-id"),
        firstLineOf("/proc/sys/kernel/random/boot_id")};
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Whether the open file is the one that has this name now.
bool isAt(int file, const std::string& path) {
    struct stat open {};
    struct stat named {};
    return fstat(file, &open) == 0 && stat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

bool isHere(const LockText& text) {
    const LockText own = ownText();
    if (!text.machine.empty() && !own.machine.empty()) return text.machine == own.machine;
    return text.host.empty() || text.host == own.host;
}

// Whether the program that has written it is known to have ended.
bool isDead(const LockText& text) {
    if (text.process <= 0 || !isHere(text)) return false;
    if (!text.start.empty() && text.start != ownText().start) return true;
    if (kill(static_cast<pid_t>(text.process), 0) != 0 && errno == ESRCH) return true;
    const std::string program = programOf(text.process);
    return !program.empty() && !text.program.empty() && program != text.program;
}

// One that is not whole names nobody: its program was killed, or the power failed, as it was
// written. A living one holds the file all the same, whatever the disk took of its text.
bool isLeftOver(const std::string& content) {
    return !isWholeLock(content) || isDead(lockTextIn(content));
}

// Removes a lock that nobody has any more; true too where it went by itself. While its program
// lives, and while somebody else takes it over at the same time, it stays. What is removed is what
// was looked at: another file of this name is held by whoever made it in between.
bool removeLeftOver(const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0) return errno == ENOENT;
    const bool removed = flock(file, LOCK_EX | LOCK_NB) == 0 && isAt(file, path) &&
                         isLeftOver(contentOf(path)) && unlink(path.c_str()) == 0;
    close(file);
    return removed;
}

platform::DateTime changedOn(const std::string& path) {
    struct stat facts {};
    std::tm local{};
    if (stat(path.c_str(), &facts) != 0 || localtime_r(&facts.st_mtime, &local) == nullptr)
        return {};
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
        local.tm_sec};
}

} // namespace

OsFolderLock::~OsFolderLock() {
    if (m_file < 0) return;
    // Somebody may have deleted it by hand, and another program have made its own.
    if (isAt(m_file, m_path)) unlink(m_path.c_str());
    close(m_file);
}

// False with EEXIST where somebody else has one.
bool OsFolderLock::create(const std::string& path) {
    m_file = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (m_file < 0) return false;
    m_path = path;
    // Says to others that it is in use. Somebody who looked before that took the empty file for a
    // left over one, holds it for the moment in which it is removed, and has the folder then.
    (void)flock(m_file, LOCK_EX);
    if (!isAt(m_file, path)) {
        close(m_file);
        m_file = -1;
        errno = EEXIST;
        return false;
    }
    const std::string text = linesOf(ownText());
    // One that is not whole names nobody, and keeps others out all the same.
    (void)!write(m_file, text.data(), text.size());
    (void)fsync(m_file);
    return true;
}

std::optional<platform::FolderHolder> OsFolderLock::take(const std::string& folder) {
    if (m_file >= 0) return {};
    const std::string path = folder + "/Kvo.lock";
    // Any other failure means that there can be no lock: nobody may write here, or the disk is full
    // or ill. The folder opens all the same, and what is written there tells why it fails.
    if (create(path) || errno != EEXIST) return {};
    if (removeLeftOver(path) && (create(path) || errno != EEXIST)) return {};
    const LockText text = lockTextIn(contentOf(path));
    return platform::FolderHolder{
        text.program, text.host, text.process, changedOn(path), isHere(text)};
}

} // namespace kvo::platform_os

#elif !defined(_WIN32)

namespace kvo::platform_os {

OsFolderLock::~OsFolderLock() = default;

bool OsFolderLock::create(const std::string&) {
    return true;
}

// A system without these calls has no such lock.
std::optional<platform::FolderHolder> OsFolderLock::take(const std::string&) {
    return {};
}

} // namespace kvo::platform_os

#endif
