#pragma once
// Every system call that this program makes on files below a folder, seen before it is made: it can
// be counted, refused, cut short, or be the last one of its process. The C library's names are
// taken over, so that the calls of the C++ library are seen as well.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace kvo::faults {

enum class CallKind {
    look,     // stat, access, readlink: asks about a name
    openRead, // opens a file or folder that is there
    read,     // reads content or names
    close,
    create, // opens a file that is made by it, or may be written
    write,
    syncFile,
    syncFolder,
    rename,
    remove, // a file or an empty folder
    makeFolder,
    change // rights, length, links
};

struct SystemCall {
    const char* name = "";
    CallKind kind = CallKind::look;
    std::string path;                    // absolute
    std::string to;                      // of a rename or link
    int file = -1;                       // its descriptor, where it has one
    std::span<const std::uint8_t> bytes; // of a write; may be cut shorter
    bool modifies() const { return kind >= CallKind::create; }
};

class Watch {
public:
    virtual ~Watch() = default;
    // 0 lets the call be made; an errno is what it fails with instead.
    virtual int before(SystemCall& call) = 0;
    // A call that succeeded.
    virtual void after(const SystemCall& call) { (void)call; }
};

// The calls on what lies below `folder` ("/" for all) go by `watch` for as long as this lives.
class Watched {
public:
    Watched(Watch& watch, std::string folder);
    ~Watched();
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;
};

} // namespace kvo::faults
