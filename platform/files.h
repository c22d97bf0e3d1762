#pragma once
// Files as the logic sees them: whole files in, whole files out, every write checked to its last
// byte. Paths are in the system's own form, UTF-8; a path that is not found exactly is looked up
// without regard to case, since files come from systems that do not care.
#include "platform/bytes.h"
#include "platform/clock.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvo::platform {

// Why something could not be done with a file or folder.
enum class FileFailure {
    notFound,     // what was to be read or deleted is not there
    full,         // no room on the disk, or the user's share of it is used up
    notReady,     // the drive or the connection to it is not there now
    noSuchPath,   // the folder that was to be written in is not there
    notPermitted, // by the owner's rights, or the whole disk can only be read
    readOnly,     // the file itself is marked as read-only
    noMemory,     // for its content
    other
};

// What became of a write. `message` is for the user, UTF-8, and names the path and the reason; it
// and `failure` say something only where it is not done.
struct WriteResult {
    bool done = true;
    std::string message;
    FileFailure failure = FileFailure::other;
    explicit operator bool() const { return done; }
};

// What was read: the whole content, or why there is none, told as in WriteResult.
struct ReadResult {
    std::optional<Bytes> content;
    std::string message;
    FileFailure failure = FileFailure::other;
    explicit operator bool() const { return content.has_value(); }
};

class Files {
public:
    virtual ~Files() = default;
    // The whole content. Only what the system says is not there fails as notFound.
    [[nodiscard]] virtual ReadResult readOrReason(const std::string& path) const = 0;
    // The whole content, for whom the reason makes no difference.
    [[nodiscard]] std::optional<Bytes> read(const std::string& path) const {
        return readOrReason(path).content;
    }
    // The same, but under this very name alone: nobody looks whether another case of it is there.
    // For who asks for a file of each run, of which many are not there.
    [[nodiscard]] virtual ReadResult readAsNamed(const std::string& path) const {
        return readOrReason(path);
    }
    // Replaces the file with `content`, or leaves what was there as it was: written beside it,
    // flushed, synced, its size read back, then renamed. A read-only file is not replaced.
    [[nodiscard]] virtual WriteResult write(const std::string& path, const Bytes& content) = 0;
    // Makes an empty file. Where something of that name is there already, even something that came
    // this very moment, it stays as it is, and that counts as done.
    [[nodiscard]] virtual WriteResult createEmpty(const std::string& path) = 0;
    // Whether what is there now refuses to be replaced or deleted, and why. A path where there is
    // nothing refuses nothing; what only the disk can refuse shows at the write.
    [[nodiscard]] virtual WriteResult replaceable(const std::string& path) const = 0;
    // Whether the name is a link to something outside of the folder that it stands in. A write goes
    // through a link, so whoever writes what a stranger has named asks first.
    virtual bool linksElsewhere(const std::string& path) const = 0;
    // Copies a whole file as a write does: on failure the target is as it was.
    [[nodiscard]] WriteResult copy(const std::string& from, const std::string& to) {
        ReadResult source = readOrReason(from);
        if (!source) return {false, std::move(source.message), source.failure};
        return write(to, *source.content);
    }
    // When the file was made, in local time; where the file system does not know it, when it was
    // changed last. Nothing where there is no file.
    [[nodiscard]] virtual std::optional<DateTime> createdOn(const std::string& path) const = 0;
    virtual bool exists(const std::string& path) const = 0;
    virtual bool folderExists(const std::string& path) const = 0;
    // Whether the folder can be gone into, and why not: noSuchPath only where the system says that
    // it is not there.
    [[nodiscard]] virtual WriteResult enterable(const std::string& folder) const = 0;
    // Whether the rights of the folder and of its disk let files be made and deleted in it; done
    // too where nobody can tell before a try.
    [[nodiscard]] virtual WriteResult writable(const std::string& folder) const = 0;
    [[nodiscard]] virtual WriteResult makeFolder(const std::string& path) = 0;
    [[nodiscard]] virtual WriteResult remove(const std::string& path) = 0;
    // Base names of the plain files in a folder, sorted; empty if there is no such folder.
    virtual std::vector<std::string> list(const std::string& folder) const = 0;
    // Base names of the folders in a folder, sorted; nothing where it is none or cannot be read.
    virtual std::optional<std::vector<std::string>> folders(const std::string& folder) const = 0;
    // The separator of this system.
    virtual char separator() const = 0;
};

} // namespace kvo::platform
