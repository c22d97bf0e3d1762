#pragma once
// A disk in memory, with '/' as its separator, whose reads and writes can be made to fail.
#include "platform/files.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace kvo::testing {

class MemoryFiles : public platform::Files {
public:
    // What is wrong with a place; each fails with a kind and words of its own.
    enum class Failure {
        fullDisk,
        readOnly,
        notPermitted,
        notReady,
        noFolder,
        noMemory,
        diskError
    };
    // Writes below `prefix` fail from now on, `times` times; -1: until it is allowed again.
    void failWrites(const std::string& prefix, Failure how, int times = -1);
    void allowWrites() { m_failures.clear(); }
    // Files and folders below `prefix` are there, and cannot be read or gone into.
    void failReads(const std::string& prefix, Failure how) { m_unreadable[prefix] = how; }
    // Whether a file is there, and which are, is answered as if there were none: the disk fails.
    void failQuestions() { m_answers = false; }
    // The file is a link that leads out of its folder.
    void leadAway(const std::string& path) { m_links.insert(path); }
    void allowReads() { m_unreadable.clear(); }
    void setCreatedOn(const std::string& path, const platform::DateTime& date) {
        m_dates[path] = date;
    }
    // Puts a file there, whatever may fail.
    void put(const std::string& path, platform::Bytes content) {
        m_files[path] = std::move(content);
    }
    // Of all files together.
    std::int64_t bytes() const;
    int writes() const { return m_writes; }
    int removes() const { return m_removes; }
    // Files that were asked for under their very name.
    int namedReads() const { return m_namedReads; }

    platform::ReadResult readOrReason(const std::string& path) const override;
    platform::ReadResult readAsNamed(const std::string& path) const override;
    platform::WriteResult write(const std::string& path, const platform::Bytes& content) override;
    platform::WriteResult createEmpty(const std::string& path) override;
    bool linksElsewhere(const std::string& path) const override { return m_links.contains(path); }
    platform::WriteResult replaceable(const std::string& path) const override;
    // The date that was set, else one and the same for all files.
    std::optional<platform::DateTime> createdOn(const std::string& path) const override;
    bool exists(const std::string& path) const override {
        return m_answers && find(path) != m_files.end();
    }
    bool folderExists(const std::string& path) const override;
    platform::WriteResult enterable(const std::string& folder) const override;
    platform::WriteResult writable(const std::string& folder) const override;
    platform::WriteResult makeFolder(const std::string& path) override;
    platform::WriteResult remove(const std::string& path) override;
    std::vector<std::string> list(const std::string& folder) const override;
    std::optional<std::vector<std::string>> folders(const std::string& folder) const override;
    char separator() const override { return '/'; }

private:
    struct FailingPlace {
        std::string prefix;
        Failure how;
        int times;
    };
    using Map = std::map<std::string, platform::Bytes>;
    Map::const_iterator find(const std::string& path) const;
    platform::WriteResult refusal(const std::string& path);

    Map m_files;
    std::set<std::string> m_folders;
    std::set<std::string> m_links;
    std::map<std::string, platform::DateTime> m_dates;
    std::map<std::string, Failure> m_unreadable;
    std::vector<FailingPlace> m_failures;
    int m_writes = 0;
    int m_removes = 0;
    mutable int m_namedReads = 0;
    bool m_answers = true;
};

} // namespace kvo::testing
