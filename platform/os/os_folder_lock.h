#pragma once
// The lock of a folder by the system alone, for programs without a window. Its file is the one that
// the windows' lock has, in the same form, so that each kind keeps the other out.
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
    // There is no window to show, and none to ask for one.
    bool askToShow(const platform::FolderHolder&) override { return false; }
    void whenAsked(std::function<void()>) override {}

private:
    bool create(const std::string& path);

    int m_file = -1;
    std::string m_path; // of the lock that is held
};

} // namespace kvo::platform_os
