#pragma once
// The files of a program that may come to look at its folder only, because another program has it:
// from then on whatever would change something in it is refused. Elsewhere, for an export or a
// copy, all goes on.
#include "platform/files.h"

namespace kvo::platform {

class LookOnlyFiles : public Files {
public:
    // `below` does the work and outlives this.
    explicit LookOnlyFiles(Files& below) : m_below(below) {}
    // From here on the folder is only looked at; there is no separator behind it.
    void lookOnlyAt(const std::string& folder) { m_folder = folder; }
    // From here on everything is, on all disks of a system that has several roots.
    void lookOnly() { m_everywhere = true; }

    ReadResult readOrReason(const std::string& path) const override;
    ReadResult readAsNamed(const std::string& path) const override;
    WriteResult write(const std::string& path, const Bytes& content) override;
    WriteResult createEmpty(const std::string& path) override;
    WriteResult replaceable(const std::string& path) const override;
    bool linksElsewhere(const std::string& path) const override;
    std::optional<DateTime> createdOn(const std::string& path) const override;
    bool exists(const std::string& path) const override;
    bool folderExists(const std::string& path) const override;
    WriteResult enterable(const std::string& folder) const override;
    WriteResult writable(const std::string& folder) const override;
    WriteResult makeFolder(const std::string& path) override;
    WriteResult remove(const std::string& path) override;
    std::vector<std::string> list(const std::string& folder) const override;
    std::optional<std::vector<std::string>> folders(const std::string& folder) const override;
    char separator() const override;

private:
    bool isInside(const std::string& path) const;
    // Refused as a file that is marked read-only is: what may fail without a word there may here.
    static WriteResult refused(const std::string& path);

    Files& m_below;
    std::string m_folder; // empty while none is named
    bool m_everywhere = false;
};

} // namespace kvo::platform
