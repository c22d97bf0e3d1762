#include "platform/os/disk_writer.h"

#include "platform/os/windows_api.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kvo::platform_os {

#ifdef _WIN32

int DiskWriter::create(const std::filesystem::path& path) {
    return _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
        _S_IREAD | _S_IWRITE);
}

std::int64_t DiskWriter::write(int file, std::span<const std::uint8_t> bytes) {
    const auto length = static_cast<unsigned>(std::min<std::size_t>(bytes.size(), 1U << 30U));
    return _write(file, bytes.data(), length);
}

bool DiskWriter::sync(int file) {
    return _commit(file) == 0;
}

std::int64_t DiskWriter::size(int file) {
    return _filelengthi64(file);
}

bool DiskWriter::close(int file) {
    return _close(file) == 0;
}

bool DiskWriter::rename(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return true;
    }
    errno = GetLastError() == ERROR_ACCESS_DENIED ? EACCES : EIO;
    return false;
}

void DiskWriter::syncFolder(const std::filesystem::path&) {}

#else

int DiskWriter::create(const std::filesystem::path& path) {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

std::int64_t DiskWriter::write(int file, std::span<const std::uint8_t> bytes) {
    for (;;) {
        const auto written = ::write(file, bytes.data(), bytes.size());
        if (written >= 0 || errno != EINTR) return written;
    }
}

bool DiskWriter::sync(int file) {
    return ::fsync(file) == 0;
}

std::int64_t DiskWriter::size(int file) {
    struct stat facts {};
    return ::fstat(file, &facts) == 0 ? static_cast<std::int64_t>(facts.st_size) : -1;
}

bool DiskWriter::close(int file) {
    return ::close(file) == 0;
}

bool DiskWriter::rename(const std::filesystem::path& from, const std::filesystem::path& to) {
    return ::rename(from.c_str(), to.c_str()) == 0;
}

void DiskWriter::syncFolder(const std::filesystem::path& folder) {
    const int opened = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0) return;
    // The file is whole already; a system that cannot sync folders only risks the older one.
    (void)::fsync(opened);
    (void)::close(opened);
}

#endif

} // namespace kvo::platform_os
