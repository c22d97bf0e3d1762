// OsFolderLock on Windows. Its holder keeps the file open, for nobody else to write, and the system
// deletes it with him, however he ends; a file that can be opened for writing has no holder.
#include "platform/os/os_folder_lock.h"

#ifdef _WIN32

#include "platform/os/file_date.h"
#include "platform/os/lock_text.h"
#include "platform/os/os_clock.h"
#include "platform/os/windows_api.h"
#include "platform/system_path.h"

#include <array>
#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <share.h>
#include <sys/stat.h>

namespace kvo::platform_os {
namespace {

std::string ownHost() {
    std::array<wchar_t, 256> name{};
    auto length = static_cast<DWORD>(name.size());
    if (GetComputerNameExW(ComputerNamePhysicalDnsHostname, name.data(), &length) == FALSE)
        return {};
    return platform::narrowText({name.data(), length});
}

std::string ownProgram() {
    std::array<wchar_t, 4096> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size() - 1));
    return platform::pathText(std::filesystem::path(path.data()).stem());
}

// The whole text of a lock, which its holder must not be kept from deleting meanwhile.
std::string contentOf(const std::filesystem::path& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::array<char, 4096> text{};
    DWORD length = 0;
    ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &length, nullptr);
    CloseHandle(file);
    return {text.data(), length};
}

platform::FolderHolder holderIn(const std::filesystem::path& path) {
    const LockText text = lockTextIn(contentOf(path));
    platform::FolderHolder holder;
    holder.process = text.process;
    holder.program = text.program;
    holder.host = text.host;
    holder.here = holder.host.empty() || holder.host == ownHost();
    if (const auto since = createdAt(path)) holder.since = localTime(*since);
    return holder;
}

// A lock that a cut of the power has left here; one of another machine stays, as its holder may
// live.
bool removeLeftOver(const std::filesystem::path& path) {
    if (!holderIn(path).here) return false;
    const int file =
        _wsopen(path.c_str(), _O_WRONLY | _O_BINARY | _O_TEMPORARY | _O_NOINHERIT, _SH_DENYRW);
    return file >= 0 && _close(file) == 0;
}

} // namespace

OsFolderLock::~OsFolderLock() {
    if (m_file >= 0) _close(m_file);
}

bool OsFolderLock::create(const std::string& path) {
    m_file = _wsopen(platform::systemPath(path).c_str(),
        _O_RDWR | _O_CREAT | _O_EXCL | _O_BINARY | _O_TEMPORARY | _O_NOINHERIT, _SH_DENYWR,
        _S_IREAD | _S_IWRITE);
    if (m_file < 0) return false;
    m_path = path;
    const std::string text = linesOf({_getpid(), ownProgram(), ownHost(), {}, {}});
    // One that is not whole names nobody, and keeps others out all the same.
    (void)!_write(m_file, text.data(), static_cast<unsigned>(text.size()));
    return true;
}

std::optional<platform::FolderHolder> OsFolderLock::take(const std::string& folder) {
    if (m_file >= 0) return {};
    const std::string path = folder + "\\Kvo.lock";
    if (create(path) || errno != EEXIST) return {};
    const std::filesystem::path place = platform::systemPath(path);
    if (removeLeftOver(place) && create(path)) return {};
    return holderIn(place);
}

} // namespace kvo::platform_os

#endif
