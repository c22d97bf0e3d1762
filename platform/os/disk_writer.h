#pragma once
// The steps of a write, one call each, so that every one is checked and a test can let any of them
// fail. A failed step leaves its reason in errno.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

namespace kvo::platform_os {

class DiskWriter {
public:
    virtual ~DiskWriter() = default;
    // Creates a file that must not be there yet; -1 on failure.
    virtual int create(const std::filesystem::path& path);
    // How many of the bytes went; -1 on failure.
    virtual std::int64_t write(int file, std::span<const std::uint8_t> bytes);
    // Waits until what was written lies on the disk.
    virtual bool sync(int file);
    // The size that the system tells of the file; -1 on failure.
    virtual std::int64_t size(int file);
    virtual bool close(int file);
    // Puts a file into the place of another, in one step.
    virtual bool rename(const std::filesystem::path& from, const std::filesystem::path& to);
    // Waits until the names in a folder lie on the disk, where a system can do that.
    virtual void syncFolder(const std::filesystem::path& folder);
};

} // namespace kvo::platform_os
