#pragma once
// A disk in memory under the paths of the system that the tests run on. The disk's own have a '/'
// between their parts and no drive; on Windows the forms tell and are told "C:\kvo" for its "/kvo".
#include "platform/files.h"
#include "tests/support/memory_files.h"

#include <string>

namespace kvo::testing {

// A whole path of the disk, as this system writes it; on the drive of the current folder.
std::string hostPath(const std::string& memoryPath);
// The way back. What lies on another drive keeps the drive's name.
std::string memoryPath(const std::string& hostPath);

class HostFiles : public platform::Files {
public:
    // `memory` outlives this.
    explicit HostFiles(MemoryFiles& memory) : m_memory(memory) {}

    platform::ReadResult readOrReason(const std::string& path) const override;
    platform::ReadResult readAsNamed(const std::string& path) const override;
    platform::WriteResult write(const std::string& path, const platform::Bytes& content) override;
    platform::WriteResult createEmpty(const std::string& path) override;
    platform::WriteResult replaceable(const std::string& path) const override;
    bool linksElsewhere(const std::string& path) const override;
    std::optional<platform::DateTime> createdOn(const std::string& path) const override;
    bool exists(const std::string& path) const override;
    bool folderExists(const std::string& path) const override;
    platform::WriteResult enterable(const std::string& folder) const override;
    platform::WriteResult writable(const std::string& folder) const override;
    platform::WriteResult makeFolder(const std::string& path) override;
    platform::WriteResult remove(const std::string& path) override;
    std::vector<std::string> list(const std::string& folder) const override;
    std::optional<std::vector<std::string>> folders(const std::string& folder) const override;
    char separator() const override;

private:
    MemoryFiles& m_memory;
};

} // namespace kvo::testing
