#pragma once
// The lock of a folder: a file Kvo.lock with process, program, host, machine and the machine's
// start in it, a line each.
#include "platform/folder_lock.h"

#include <string>

namespace kvo::platform_os {

class OsFolderLock : public platform::FolderLock {
public:
    OsFolderLock() = default;
    ~OsFolderLock() override;
    OsFolderLock(const OsFolderLock&) = delete;
    OsFolderLock& operator=(const OsFolderLock&) = delete;

    std::optional<platform::FolderHolder> take(const std::string& folder) override;

private:
    bool create(const std::string& path);

    int m_file = -1;
    std::string m_path; // of the lock that is held
};

} // namespace kvo::platform_os
