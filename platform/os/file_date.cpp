#include "platform/os/file_date.h"

#include <sys/stat.h>

#ifdef __linux__
#include <fcntl.h>
#endif

namespace kvo::platform_os {

std::optional<std::time_t> createdAt(const std::filesystem::path& path) {
#if defined(__linux__)
    struct statx facts {};
    if (::statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME | STATX_MTIME, &facts) != 0) return {};
    const bool known = (facts.stx_mask & STATX_BTIME) != 0;
    return static_cast<std::time_t>(known ? facts.stx_btime.tv_sec : facts.stx_mtime.tv_sec);
#elif defined(_WIN32)
    struct _stat64 facts {};
    if (::_wstat64(path.c_str(), &facts) != 0) return {};
    return static_cast<std::time_t>(facts.st_ctime); // the making, on this system
#elif defined(__APPLE__)
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return {};
    return facts.st_birthtimespec.tv_sec;
#else
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return {};
    return facts.st_mtime;
#endif
}

} // namespace kvo::platform_os
