#pragma once
// Who has a folder. Two programs that write in one would take each other's runs, so the first holds
// it for as long as it runs, and a later one learns who that is.
#include "platform/clock.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvo::platform {

struct FolderHolder {
    std::string program; // the name of its executable
    std::string host;
    std::int64_t process = 0;
    DateTime since;
    bool here = true; // on this machine
};

class FolderLock {
public:
    virtual ~FolderLock() = default;
    // Takes the folder until this object goes. Nothing where it is taken, and where a folder cannot
    // have a lock, since nobody may write in it or the disk is full or fails; else who holds it.
    // The lock of a program that has died on this machine is taken over, and one that names nobody.
    [[nodiscard]] virtual std::optional<FolderHolder> take(const std::string& folder) = 0;
};

} // namespace kvo::platform
