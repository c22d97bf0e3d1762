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

LockText textOf(const std::string& path) {
    std::ifstream file(path);
    return lockTextIn({std::istreambuf_iterator<char>(file), {}});
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

// A lock whose program has died; while somebody else takes it over at the same time it stays.
bool removeDead(const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool removed =
        flock(file, LOCK_EX | LOCK_NB) == 0 && isDead(textOf(path)) && unlink(path.c_str()) == 0;
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
    unlink(m_path.c_str());
    close(m_file);
}

bool OsFolderLock::create(const std::string& path) {
    m_file = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (m_file < 0) return false;
    m_path = path;
    (void)flock(m_file, LOCK_EX | LOCK_NB); // says to others that it is in use
    const std::string text = linesOf(ownText());
    // One that is not whole names nobody, and keeps others out all the same.
    (void)!write(m_file, text.data(), text.size());
    return true;
}

std::optional<platform::FolderHolder> OsFolderLock::take(const std::string& folder) {
    if (m_file >= 0) return {};
    const std::string path = folder + "/Kvo.lock";
    if (create(path) || errno != EEXIST) return {};
    const LockText text = textOf(path);
    if (isDead(text) && removeDead(path) && create(path)) return {};
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
