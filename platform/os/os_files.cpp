#include "platform/os/os_files.h"

#include "platform/memory.h"
#include "platform/os/file_date.h"
#include "platform/os/os_clock.h"
#include "platform/system_path.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <new>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kvo::platform_os {

namespace fs = std::filesystem;
using platform::Bytes;
using platform::FileFailure;
using platform::pathText;
using platform::ReadResult;
using platform::systemPath;
using platform::WriteResult;

namespace {

// No file of this program comes near it; a larger one is none of ours.
constexpr std::uintmax_t largestFile = std::uintmax_t{1} << 30U;

bool sameButForCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [&](char x, char y) { return lower(x) == lower(y); });
}

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

// The entry of `folder` that has this name in another case, the first in order; empty if none has,
// and where the folder cannot be listed, which `error` says as an errno: then nobody knows.
#ifndef _WIN32
// Asked for every name that is new, in a folder that may hold years of runs: by the system's own
// list, which makes no path of each entry.
fs::path inAnotherCase(const fs::path& folder, const std::string& name, int& error) {
    std::string best;
    DIR* const entries = ::opendir(folder.empty() ? "." : folder.c_str());
    if (entries == nullptr) {
        error = errno;
        return {};
    }
    errno = 0; // the end of the list sets none
    while (const dirent* entry = ::readdir(entries)) {
        const std::string_view found(entry->d_name);
        if (sameButForCase(found, name) && (best.empty() || found < best)) best = found;
        errno = 0;
    }
    error = errno;
    ::closedir(entries);
    return best.empty() || error != 0 ? fs::path() : folder / systemPath(best);
}
#else
fs::path inAnotherCase(const fs::path& folder, const std::string& name, int& error) {
    std::error_code why;
    std::string best;
    const fs::path shown = folder.empty() ? fs::path(".") : folder;
    for (fs::directory_iterator it(shown, why), end; !why && it != end; it.increment(why)) {
        std::string entry = pathText(it->path().filename());
        if (sameButForCase(entry, name) && (best.empty() || entry < best)) best = std::move(entry);
    }
    error = why ? errnoOf(why) : 0;
    return best.empty() || error != 0 ? fs::path() : folder / systemPath(best);
}
#endif

struct Place {
    fs::path path;
    // Why nobody can tell whether it is there in another case, an errno; 0 where that is known. Who
    // made a new file then might put an empty list beside a full one.
    int error = 0;
};

// The path as it stands on the disk: each part in the case that is there. What is not there at all
// stays as it was given, with all that would lie in it.
Place found(const std::string& path) {
    const fs::path given = systemPath(path);
    if (isThere(given)) return {given, 0};
    Place result;
    bool known = true;
    for (const fs::path& part : given) {
        fs::path next = result.path / part;
        if (known && !isThere(next)) {
            int error = 0;
            fs::path other = inAnotherCase(result.path, pathText(part), error);
            // In what is no folder there is nothing, in any case.
            if (error != ENOENT && error != ENOTDIR) result.error = error;
            known = !other.empty();
            if (known) next = std::move(other);
        }
        result.path = std::move(next);
    }
    return result;
}

bool isFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool isFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

// Whether the file is marked as not to be written. Asked of the marks and not of the system, which
// lets an administrator write everything.
bool isReadOnly(const fs::file_status& status) {
    constexpr fs::perms anyWrite =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    return (status.permissions() & anyWrite) == fs::perms::none;
}

#ifdef _WIN32
constexpr int toWrite = 2;
constexpr int toEnter = 1;
#else
constexpr int toWrite = W_OK;
constexpr int toEnter = X_OK;
#endif

// Whether the file or folder belongs to somebody who does not let this user do that with it.
bool isForbidden(const fs::path& path, int what) {
#ifdef _WIN32
    (void)path;
    (void)what;
    return false;
#else
    return ::faccessat(AT_FDCWD, path.c_str(), what, AT_EACCESS) != 0 && errno == EACCES;
#endif
}

WriteResult failure(const fs::path& path, const Cause& cause) {
    return {false, pathText(path) + "\ncould not be written.\n" + cause.words, cause.failure};
}

WriteResult refusal(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::directory) {
        return failure(path, {FileFailure::other, "There is a folder of this name."});
    }
    if (status.type() != fs::file_type::regular) {
        if (!isThere(path)) return {};
        return failure(path, {FileFailure::other, "What is there is no plain file."});
    }
    if (isReadOnly(status)) {
        return failure(path, {FileFailure::readOnly, "The file is marked as read-only."});
    }
    if (isForbidden(path, toWrite)) {
        return failure(
            path, {FileFailure::notPermitted,
                      "It belongs to somebody else, and you are not permitted to write it."});
    }
    return {};
}

WriteResult notDeleted(const fs::path& path, int error) {
    const Cause cause = causeOfWrite(error);
    return {false, pathText(path) + "\ncould not be deleted.\n" + cause.words, cause.failure};
}

ReadResult unread(const fs::path& path, const Cause& cause) {
    return {{}, pathText(path) + "\ncould not be read.\n" + cause.words, cause.failure};
}

ReadResult readWhole(const fs::path& path, std::size_t size) {
    std::filebuf file;
    errno = 0;
    if (!file.open(path, std::ios::in | std::ios::binary)) {
        return unread(path, causeOfRead(errno == 0 ? EIO : errno));
    }
    Bytes content(size);
    errno = 0;
    const std::streamsize got = file.sgetn(
        reinterpret_cast<char*>(content.data()), static_cast<std::streamsize>(content.size()));
    if (got != static_cast<std::streamsize>(content.size())) {
        return unread(path, causeOfRead(errno == 0 ? EIO : errno));
    }
    return {std::move(content), {}, {}};
}

// A name beside the target that nothing else uses.
fs::path temporaryBeside(const fs::path& target, int attempt) {
#ifdef _WIN32
    const long process = _getpid();
#else
    const long process = ::getpid();
#endif
    fs::path name = ".";
    name += target.filename();
    name += "." + std::to_string(process) + "-" + std::to_string(attempt) + ".new";
    return target.parent_path() / name;
}

// Only plain files: opening a pipe or a device could wait for ever.
ReadResult readPlace(const Place& at) {
    const fs::path& place = at.path;
    if (at.error != 0) return unread(place, causeOfRead(at.error));
    std::error_code error;
    const fs::file_type type = fs::status(place, error).type();
    if (type == fs::file_type::not_found) return unread(place, causeOfRead(ENOENT));
    if (type == fs::file_type::none) return unread(place, causeOfRead(errnoOf(error)));
    if (type == fs::file_type::directory) {
        return unread(place, {FileFailure::other, "It is a folder."});
    }
    if (type != fs::file_type::regular) {
        return unread(place, {FileFailure::other, "It is no plain file."});
    }
    const std::uintmax_t size = fs::file_size(place, error);
    if (error) return unread(place, causeOfRead(errnoOf(error)));
    constexpr const char* tooLarge = "It is too large for a file of this program.";
    if (size > largestFile) return unread(place, {FileFailure::other, tooLarge});
    try {
        return readWhole(place, static_cast<std::size_t>(size));
    } catch (const std::bad_alloc&) {
        return unread(place, {FileFailure::noMemory, platform::noMemoryReason});
    } catch (const std::ios_base::failure&) {
        return unread(place, causeOfRead(EIO));
    }
}

} // namespace

ReadResult OsFiles::readOrReason(const std::string& path) const {
    return readPlace(found(path));
}

ReadResult OsFiles::readAsNamed(const std::string& path) const {
    const fs::path given = systemPath(path);
    const Place folder = found(pathText(given.parent_path()));
    return readPlace({folder.path / given.filename(), folder.error});
}

std::optional<Cause> OsFiles::fill(int file, const Bytes& content) {
    std::span<const std::uint8_t> rest(content);
    while (!rest.empty()) {
        errno = 0;
        const std::int64_t written = m_writer.write(file, rest);
        if (written <= 0) return causeOfWrite(errno == 0 ? ENOSPC : errno);
        rest = rest.subspan(std::min(rest.size(), static_cast<std::size_t>(written)));
    }
    errno = 0;
    if (!m_writer.sync(file)) return causeOfWrite(errno == 0 ? EIO : errno);
    // A full disk may take the bytes without a word; what it holds of them is the proof.
    if (m_writer.size(file) != static_cast<std::int64_t>(content.size()))
        return causeOfWrite(ENOSPC);
    return {};
}

WriteResult OsFiles::replace(const fs::path& target, const Bytes& content) {
    constexpr int mostAttempts = 100;
    fs::path temporary;
    int file = -1;
    for (int attempt = 0; file < 0 && attempt < mostAttempts; ++attempt) {
        temporary = temporaryBeside(target, attempt);
        errno = 0;
        file = m_writer.create(temporary);
        if (file < 0 && errno != EEXIST) return failure(target, causeOfWrite(errno));
    }
    if (file < 0) return failure(target, causeOfWrite(EEXIST));
    std::error_code error;
    if (isFile(target)) {
        fs::permissions(temporary, fs::status(target, error).permissions(), error);
    }
    std::optional<Cause> why = fill(file, content);
    errno = 0;
    if (!m_writer.close(file) && !why) why = causeOfWrite(errno == 0 ? EIO : errno);
    errno = 0;
    if (!why && !m_writer.rename(temporary, target)) why = causeOfWrite(errno == 0 ? EIO : errno);
    if (why) {
        fs::remove(temporary, error);
        return failure(target, *why);
    }
    m_writer.syncFolder(target.has_parent_path() ? target.parent_path() : fs::path("."));
    return {};
}

WriteResult OsFiles::write(const std::string& path, const Bytes& content) {
    auto [target, unlisted] = found(path);
    if (unlisted != 0) return failure(target, causeOfWrite(unlisted));
    // A name that was refused is no path; a file beside it would come to lie just anywhere.
    if (!target.has_filename()) return failure(target, causeOfWrite(ENOENT));
    if (auto refused = refusal(target); !refused) return refused;
    // A link stays a link: what it points to is replaced.
    std::error_code error;
    if (fs::is_symlink(target, error)) {
        fs::path real = fs::weakly_canonical(target, error);
        if (!error) target = std::move(real);
    }
    return replace(target, content);
}

WriteResult OsFiles::createEmpty(const std::string& path) {
    const auto [place, unlisted] = found(path);
    if (unlisted != 0) return failure(place, causeOfWrite(unlisted));
    if (!place.has_filename()) return failure(place, causeOfWrite(ENOENT));
    errno = 0;
    const int file = m_writer.create(place); // exclusively: never over something
    if (file < 0 && errno == EEXIST) return {};
    if (file < 0) return failure(place, causeOfWrite(errno));
    errno = 0;
    if (!m_writer.close(file)) return failure(place, causeOfWrite(errno == 0 ? EIO : errno));
    return {};
}

bool OsFiles::linksElsewhere(const std::string& path) const {
    const fs::path place = found(path).path;
    std::error_code error;
    if (!fs::is_symlink(place, error)) return false;
    const fs::path folder = place.has_parent_path() ? place.parent_path() : fs::path(".");
    const fs::path home = fs::weakly_canonical(folder, error);
    const fs::path target = error ? fs::path() : fs::canonical(place, error);
    // What cannot be told leads away: to nothing, in a ring, through a folder that is closed.
    return error || target.parent_path() != home;
}

WriteResult OsFiles::replaceable(const std::string& path) const {
    const auto [place, unlisted] = found(path);
    return unlisted != 0 ? failure(place, causeOfWrite(unlisted)) : refusal(place);
}

std::optional<platform::DateTime> OsFiles::createdOn(const std::string& path) const {
    const auto moment = createdAt(found(path).path);
    if (!moment) return {};
    return localTime(*moment);
}

bool OsFiles::exists(const std::string& path) const {
    return isThere(found(path).path);
}

bool OsFiles::folderExists(const std::string& path) const {
    return isFolder(found(path).path);
}

WriteResult OsFiles::enterable(const std::string& folder) const {
    const Place at = found(folder);
    const fs::path& place = at.path;
    const auto refused = [&place](FileFailure failure, const std::string& words) {
        return WriteResult{false, pathText(place) + "\n" + words, failure};
    };
    std::error_code error;
    const fs::file_type type = fs::status(place, error).type();
    if (at.error != 0 || type == fs::file_type::none) {
        const Cause cause = causeOfRead(at.error != 0 ? at.error : errnoOf(error));
        return refused(cause.failure, "could not be opened.\n" + cause.words);
    }
    if (type == fs::file_type::not_found) return refused(FileFailure::noSuchPath, "is not there.");
    if (type != fs::file_type::directory) return refused(FileFailure::other, "is no folder.");
    if (isForbidden(place, toEnter)) {
        return refused(
            FileFailure::notPermitted, "belongs to somebody else, and is closed to you.");
    }
    return {};
}

WriteResult OsFiles::writable(const std::string& folder) const {
    const auto [place, unlisted] = found(folder);
    if (unlisted != 0) return failure(place, causeOfWrite(unlisted));
    std::error_code error;
    const fs::file_type type = fs::status(place, error).type();
    if (type != fs::file_type::directory)
        return failure(place, causeOfWrite(type == fs::file_type::none ? errnoOf(error) : ENOENT));
#ifndef _WIN32
    if (::faccessat(AT_FDCWD, place.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        return failure(place, causeOfWrite(errno));
#endif
    return {};
}

WriteResult OsFiles::makeFolder(const std::string& path) {
    const auto [place, unlisted] = found(path);
    if (unlisted != 0) return failure(place, causeOfWrite(unlisted));
    if (isFolder(place)) return {};
    if (isThere(place)) {
        return failure(place, {FileFailure::other, "There is a file of this name."});
    }
    std::error_code error;
    fs::create_directories(place, error);
    if (error) return failure(place, causeOfWrite(errnoOf(error)));
    // What is written into it is safe only where its own name is.
    m_writer.syncFolder(place.has_parent_path() ? place.parent_path() : fs::path("."));
    return {};
}

WriteResult OsFiles::remove(const std::string& path) {
    const auto [place, unlisted] = found(path);
    if (unlisted != 0) return notDeleted(place, unlisted);
    std::error_code error;
    const fs::file_type type = fs::symlink_status(place, error).type();
    if (type == fs::file_type::not_found)
        return {false, pathText(place) + "\nis not there.", FileFailure::notFound};
    if (type == fs::file_type::none) return notDeleted(place, errnoOf(error));
    if (auto refused = refusal(place); !refused) {
        refused.message.replace(refused.message.find("written"), 7, "deleted");
        return refused;
    }
    if (!fs::remove(place, error) || error) return notDeleted(place, errnoOf(error));
    return {};
}

std::vector<std::string> OsFiles::list(const std::string& folder) const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(found(folder).path, error), end; !error && it != end;
         it.increment(error)) {
        std::error_code unknown;
        if (it->is_regular_file(unknown)) names.push_back(pathText(it->path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<std::vector<std::string>> OsFiles::folders(const std::string& folder) const {
    std::error_code error;
    fs::directory_iterator it(found(folder).path, error);
    if (error) return {};
    std::vector<std::string> names;
    for (const fs::directory_iterator end; !error && it != end; it.increment(error)) {
        std::error_code unknown;
        if (it->is_directory(unknown)) names.push_back(pathText(it->path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

char OsFiles::separator() const {
    return static_cast<char>(fs::path::preferred_separator);
}

} // namespace kvo::platform_os
