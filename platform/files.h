#pragma once
// Files as the logic sees them: whole files in, whole files out, every write checked to its last
// byte. Paths are in the system's own form; a path that is not found exactly is looked up without
// regard to case, since files come from systems that do not care.
#include "platform/bytes.h"

#include <optional>
#include <string>
#include <vector>

namespace kvo::platform {

// What became of a write. `message` is for the user and names the path and the reason.
struct WriteResult {
    bool done = true;
    std::string message;
    explicit operator bool() const { return done; }
};

class Files {
public:
    virtual ~Files() = default;
    // The whole content, or nothing if it cannot be opened or read.
    [[nodiscard]] virtual std::optional<Bytes> read(const std::string& path) const = 0;
    // Replaces the file with `content`, or leaves what was there as it was: written beside it,
    // flushed, synced, its size read back, then renamed. A read-only file is not replaced.
    [[nodiscard]] virtual WriteResult write(const std::string& path, const Bytes& content) = 0;
    virtual bool exists(const std::string& path) const = 0;
    virtual bool folderExists(const std::string& path) const = 0;
    [[nodiscard]] virtual WriteResult makeFolder(const std::string& path) = 0;
    [[nodiscard]] virtual WriteResult remove(const std::string& path) = 0;
    // Base names of the plain files in a folder, sorted; empty if there is no such folder.
    virtual std::vector<std::string> list(const std::string& folder) const = 0;
    // The separator of this system.
    virtual char separator() const = 0;
};

} // namespace kvo::platform
