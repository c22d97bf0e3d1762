#pragma once
// The files of this machine. A write goes to a file beside the target, is checked to its last byte,
// synced, and only then put into the target's place: after a failure or a power cut the old file is
// there whole, or the new one. Names are found whatever their case, an exact one first.
#include "platform/files.h"
#include "platform/os/disk_writer.h"
#include "platform/os/file_failure.h"

namespace kvo::platform_os {

class OsFiles : public platform::Files {
public:
    OsFiles() : m_writer(m_ownWriter) {}
    // Writes go through `writer`, which must outlive this.
    explicit OsFiles(DiskWriter& writer) : m_writer(writer) {}
    OsFiles(const OsFiles&) = delete;
    OsFiles& operator=(const OsFiles&) = delete;

    platform::ReadResult readOrReason(const std::string& path) const override;
    platform::ReadResult readAsNamed(const std::string& path) const override;
    platform::WriteResult write(const std::string& path, const platform::Bytes& content) override;
    platform::WriteResult createEmpty(const std::string& path) override;
    bool linksElsewhere(const std::string& path) const override;
    platform::WriteResult replaceable(const std::string& path) const override;
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
    platform::WriteResult replace(
        const std::filesystem::path& target, const platform::Bytes& content);
    // Why not all of `content` lies in the open file; nothing where it does.
    std::optional<Cause> fill(int file, const platform::Bytes& content);

    DiskWriter m_ownWriter;
    DiskWriter& m_writer;
};

} // namespace kvo::platform_os
