#include "tests/faults/system_calls.h"

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kvo::faults {

namespace {

struct Opened {
    std::string path;
    bool folder = false;
};

Watch* watching = nullptr;
std::string watchedFolder;

// What was opened below the folder, by its descriptor.
std::map<int, Opened>& openedFiles() {
    static std::map<int, Opened> all;
    return all;
}

template <typename Function> Function* realOne(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool isBelow(const std::string& path) {
    if (watchedFolder == "/") return true;
    return path.compare(0, watchedFolder.size(), watchedFolder) == 0 &&
           (path.size() == watchedFolder.size() || path[watchedFolder.size()] == '/');
}

std::string absolute(int folder, const char* path) {
    if (path == nullptr) return {};
    if (*path == '/') return path;
    const auto at = openedFiles().find(folder);
    if (at != openedFiles().end()) return at->second.path + "/" + path;
    char* const here = ::get_current_dir_name();
    std::string result = std::string(here == nullptr ? "" : here) + "/" + path;
    std::free(here);
    return result;
}

// A watch never sees the calls that it makes itself.
class Away {
public:
    Away() : m_watch(watching) { watching = nullptr; }
    ~Away() { watching = m_watch; }
    Away(const Away&) = delete;
    Away& operator=(const Away&) = delete;
    Watch* operator->() const { return m_watch; }

private:
    Watch* m_watch;
};

// `make` is made unless the watch refuses it; `failed` is what the call gives then.
template <typename Result, typename Make>
Result watched(SystemCall call, Result failed, const Make& make) {
    if (watching == nullptr || !(isBelow(call.path) || (!call.to.empty() && isBelow(call.to))))
        return make(call);
    int refused = 0;
    {
        const Away away;
        refused = away->before(call);
    }
    if (refused != 0) {
        errno = refused;
        return failed;
    }
    const Result result = make(call);
    if (result != failed) {
        const int kept = errno;
        {
            const Away away;
            away->after(call);
        }
        errno = kept;
    }
    return result;
}

template <typename Result, typename Make>
Result watchedFile(const char* name, CallKind kind, int file, Result failed, const Make& make) {
    const auto at = openedFiles().find(file);
    if (watching == nullptr || at == openedFiles().end()) return make(SystemCall());
    SystemCall call{name, kind, at->second.path, {}, file, {}};
    if (kind == CallKind::syncFile && at->second.folder) call.kind = CallKind::syncFolder;
    return watched(std::move(call), failed, make);
}

int openedAs(int file, const std::string& path, int flags) {
    if (file >= 0 && watching != nullptr && isBelow(path))
        openedFiles()[file] = {path, (flags & O_DIRECTORY) != 0};
    return file;
}

int openWatched(int folder, const char* path, int flags, mode_t mode) {
    static auto* const real = realOne<int(int, const char*, int, ...)>("openat");
    const bool writes = (flags & (O_CREAT | O_WRONLY | O_RDWR | O_TRUNC)) != 0;
    const std::string whole = watching == nullptr ? std::string() : absolute(folder, path);
    int made = -1;
    SystemCall call{"open", writes ? CallKind::create : CallKind::openRead, whole, {}, -1, {}};
    const auto make = [&](const SystemCall&) {
        made = openedAs(real(folder, path, flags, mode), whole, flags);
        return made;
    };
    if (watching == nullptr) return make(call);
    return watched(std::move(call), -1, make);
}

template <typename Make>
auto watchedPath(const char* name, CallKind kind, const char* path, const Make& make) {
    using Result = decltype(make());
    if (watching == nullptr) return make();
    return watched(SystemCall{name, kind, absolute(AT_FDCWD, path), {}, -1, {}}, Result(-1),
        [&](const SystemCall&) { return make(); });
}

} // namespace

Watched::Watched(Watch& watch, std::string folder) {
    watchedFolder = std::move(folder);
    openedFiles().clear();
    watching = &watch;
}

Watched::~Watched() {
    watching = nullptr;
}

} // namespace kvo::faults

// --- The C library's names

using namespace kvo::faults;

namespace {

mode_t modeOf(int flags, va_list& rest) {
    return (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeOf(flags, rest);
    va_end(rest);
    return openWatched(AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeOf(flags, rest);
    va_end(rest);
    return openWatched(folder, path, flags, mode);
}

FILE* fopen64(const char* path, const char* how) {
    static auto* const real = realOne<FILE*(const char*, const char*)>("fopen64");
    if (watching == nullptr) return real(path, how);
    const std::string whole = absolute(AT_FDCWD, path);
    const CallKind kind = how[0] == 'r' && how[1] != '+' ? CallKind::openRead : CallKind::create;
    return watched(SystemCall{"fopen", kind, whole, {}, -1, {}}, static_cast<FILE*>(nullptr),
        [&](const SystemCall&) {
            FILE* const file = real(path, how);
            if (file != nullptr) (void)openedAs(fileno(file), whole, 0);
            return file;
        });
}

int fclose(FILE* file) {
    static auto* const real = realOne<int(FILE*)>("fclose");
    const int number = fileno(file);
    bool made = false;
    const int result = watchedFile("fclose", CallKind::close, number, -1, [&](const SystemCall&) {
        made = true;
        return real(file);
    });
    const int kept = errno;
    if (!made) (void)real(file);
    errno = kept;
    openedFiles().erase(number);
    return result;
}

int close(int file) {
    static auto* const real = realOne<int(int)>("close");
    bool made = false;
    const int result = watchedFile("close", CallKind::close, file, -1, [&](const SystemCall&) {
        made = true;
        return real(file);
    });
    const int kept = errno;
    if (!made) (void)real(file); // a close that fails has let go of the descriptor all the same
    errno = kept;
    openedFiles().erase(file);
    return result;
}

ssize_t write(int file, const void* bytes, size_t size) {
    static auto* const real = realOne<ssize_t(int, const void*, size_t)>("write");
    const auto at = openedFiles().find(file);
    if (watching == nullptr || at == openedFiles().end()) return real(file, bytes, size);
    SystemCall call{"write", CallKind::write, at->second.path, {}, file,
        {static_cast<const std::uint8_t*>(bytes), size}};
    return watched(std::move(call), static_cast<ssize_t>(-1), [&](const SystemCall& allowed) {
        return real(file, allowed.bytes.data(), allowed.bytes.size());
    });
}

ssize_t read(int file, void* bytes, size_t size) {
    static auto* const real = realOne<ssize_t(int, void*, size_t)>("read");
    return watchedFile("read", CallKind::read, file, static_cast<ssize_t>(-1),
        [&](const SystemCall&) { return real(file, bytes, size); });
}

int fsync(int file) {
    static auto* const real = realOne<int(int)>("fsync");
    return watchedFile(
        "fsync", CallKind::syncFile, file, -1, [&](const SystemCall&) { return real(file); });
}

int fstat(int file, struct stat* facts) noexcept {
    static auto* const real = realOne<int(int, struct stat*)>("fstat");
    return watchedFile(
        "fstat", CallKind::look, file, -1, [&](const SystemCall&) { return real(file, facts); });
}

int fchmod(int file, mode_t mode) noexcept {
    static auto* const real = realOne<int(int, mode_t)>("fchmod");
    return watchedFile(
        "fchmod", CallKind::change, file, -1, [&](const SystemCall&) { return real(file, mode); });
}

int stat(const char* path, struct stat* facts) noexcept {
    static auto* const real = realOne<int(const char*, struct stat*)>("stat");
    return watchedPath("stat", CallKind::look, path, [&] { return real(path, facts); });
}

int lstat(const char* path, struct stat* facts) noexcept {
    static auto* const real = realOne<int(const char*, struct stat*)>("lstat");
    return watchedPath("lstat", CallKind::look, path, [&] { return real(path, facts); });
}

int statx(int folder, const char* path, int flags, unsigned mask, struct statx* facts) noexcept {
    static auto* const real = realOne<int(int, const char*, int, unsigned, struct statx*)>("statx");
    return watchedPath(
        "statx", CallKind::look, path, [&] { return real(folder, path, flags, mask, facts); });
}

int faccessat(int folder, const char* path, int mode, int flags) noexcept {
    static auto* const real = realOne<int(int, const char*, int, int)>("faccessat");
    return watchedPath(
        "faccessat", CallKind::look, path, [&] { return real(folder, path, mode, flags); });
}

ssize_t readlink(const char* path, char* target, size_t size) noexcept {
    static auto* const real = realOne<ssize_t(const char*, char*, size_t)>("readlink");
    return watchedPath("readlink", CallKind::look, path, [&] { return real(path, target, size); });
}

char* realpath(const char* path, char* resolved) noexcept {
    static auto* const real = realOne<char*(const char*, char*)>("realpath");
    if (watching == nullptr) return real(path, resolved);
    return watched(SystemCall{"realpath", CallKind::look, absolute(AT_FDCWD, path), {}, -1, {}},
        static_cast<char*>(nullptr), [&](const SystemCall&) { return real(path, resolved); });
}

int rename(const char* from, const char* to) noexcept {
    static auto* const real = realOne<int(const char*, const char*)>("rename");
    if (watching == nullptr) return real(from, to);
    return watched(SystemCall{"rename", CallKind::rename, absolute(AT_FDCWD, from),
                       absolute(AT_FDCWD, to), -1, {}},
        -1, [&](const SystemCall&) { return real(from, to); });
}

int remove(const char* path) noexcept {
    static auto* const real = realOne<int(const char*)>("remove");
    return watchedPath("remove", CallKind::remove, path, [&] { return real(path); });
}

int unlink(const char* path) noexcept {
    static auto* const real = realOne<int(const char*)>("unlink");
    return watchedPath("unlink", CallKind::remove, path, [&] { return real(path); });
}

int mkdir(const char* path, mode_t mode) noexcept {
    static auto* const real = realOne<int(const char*, mode_t)>("mkdir");
    return watchedPath("mkdir", CallKind::makeFolder, path, [&] { return real(path, mode); });
}

int fchmodat(int folder, const char* path, mode_t mode, int flags) noexcept {
    static auto* const real = realOne<int(int, const char*, mode_t, int)>("fchmodat");
    return watchedPath(
        "fchmodat", CallKind::change, path, [&] { return real(folder, path, mode, flags); });
}

int truncate(const char* path, off_t size) noexcept {
    static auto* const real = realOne<int(const char*, off_t)>("truncate");
    return watchedPath("truncate", CallKind::change, path, [&] { return real(path, size); });
}

int symlink(const char* target, const char* path) noexcept {
    static auto* const real = realOne<int(const char*, const char*)>("symlink");
    return watchedPath("symlink", CallKind::change, path, [&] { return real(target, path); });
}

int link(const char* from, const char* to) noexcept {
    static auto* const real = realOne<int(const char*, const char*)>("link");
    return watchedPath("link", CallKind::change, to, [&] { return real(from, to); });
}

DIR* opendir(const char* path) {
    static auto* const real = realOne<DIR*(const char*)>("opendir");
    if (watching == nullptr) return real(path);
    const std::string whole = absolute(AT_FDCWD, path);
    return watched(SystemCall{"opendir", CallKind::openRead, whole, {}, -1, {}},
        static_cast<DIR*>(nullptr), [&](const SystemCall&) {
            DIR* const folder = real(path);
            if (folder != nullptr) (void)openedAs(dirfd(folder), whole, O_DIRECTORY);
            return folder;
        });
}

// The end of a folder is no failure, and errno tells the two apart.
struct dirent* readdir(DIR* folder) {
    static auto* const real = realOne<struct dirent*(DIR*)>("readdir");
    return watchedFile("readdir", CallKind::read, dirfd(folder),
        static_cast<struct dirent*>(nullptr), [&](const SystemCall&) { return real(folder); });
}

int closedir(DIR* folder) {
    static auto* const real = realOne<int(DIR*)>("closedir");
    openedFiles().erase(dirfd(folder));
    return real(folder);
}

} // extern "C"
