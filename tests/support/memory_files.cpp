#include "tests/support/memory_files.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace kvo::testing {
namespace {

using platform::FileFailure;

struct Kind {
    FileFailure failure;
    const char* words;
};

// In the order of MemoryFiles::Failure.
constexpr std::array kinds{Kind{FileFailure::full, "No space left on device"},
    Kind{FileFailure::readOnly, "Permission denied"},
    Kind{FileFailure::notPermitted, "Operation not permitted"},
    Kind{FileFailure::notReady, "No medium found"}, Kind{FileFailure::noSuchPath, "No such folder"},
    Kind{FileFailure::noMemory, "Cannot allocate memory"},
    Kind{FileFailure::other, "Input/output error"}};

const Kind& kindOf(MemoryFiles::Failure how) {
    return kinds[static_cast<std::size_t>(how)];
}

platform::WriteResult refused(const std::string& path, MemoryFiles::Failure how) {
    return {false, path + ": " + kindOf(how).words, kindOf(how).failure};
}

// What the marks and rights of a file refuse, without a try.
bool showsBefore(MemoryFiles::Failure how) {
    return how == MemoryFiles::Failure::readOnly || how == MemoryFiles::Failure::notPermitted;
}

bool sameIgnoringCase(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

} // namespace

void MemoryFiles::failWrites(const std::string& prefix, Failure how, int times) {
    m_failures.push_back({prefix, how, times});
}

MemoryFiles::Map::const_iterator MemoryFiles::find(const std::string& path) const {
    const auto exact = m_files.find(path);
    if (exact != m_files.end()) return exact;
    return std::find_if(m_files.begin(), m_files.end(),
        [&](const auto& entry) { return sameIgnoringCase(entry.first, path); });
}

platform::ReadResult MemoryFiles::readAsNamed(const std::string& path) const {
    ++m_namedReads;
    if (m_files.contains(path)) return readOrReason(path);
    return {{}, path + ": No such file", FileFailure::notFound};
}

std::int64_t MemoryFiles::bytes() const {
    std::int64_t all = 0;
    for (const auto& [path, content] : m_files)
        all += static_cast<std::int64_t>(content.capacity());
    return all;
}

platform::ReadResult MemoryFiles::readOrReason(const std::string& path) const {
    const auto found = find(path);
    if (found == m_files.end()) {
        return {{}, path + ": No such file", FileFailure::notFound};
    }
    for (const auto& [prefix, how] : m_unreadable) {
        if (found->first.rfind(prefix, 0) != 0) continue;
        return {{}, path + ": " + kindOf(how).words, kindOf(how).failure};
    }
    return {found->second, {}, {}};
}

platform::WriteResult MemoryFiles::createEmpty(const std::string& path) {
    return exists(path) ? platform::WriteResult{} : write(path, {});
}

platform::WriteResult MemoryFiles::replaceable(const std::string& path) const {
    if (!exists(path)) return {};
    for (const auto& place : m_failures) {
        if (path.rfind(place.prefix, 0) == 0 && place.times != 0 && showsBefore(place.how))
            return refused(path, place.how);
    }
    return {};
}

std::optional<platform::DateTime> MemoryFiles::createdOn(const std::string& path) const {
    const auto found = find(path);
    if (found == m_files.end()) return {};
    const auto date = m_dates.find(found->first);
    return date == m_dates.end() ? platform::DateTime{2026, 11, 15, 12, 0, 0} : date->second;
}

platform::WriteResult MemoryFiles::refusal(const std::string& path) {
    for (auto& place : m_failures) {
        if (path.rfind(place.prefix, 0) != 0 || place.times == 0) continue;
        if (place.times > 0) --place.times;
        return refused(path, place.how);
    }
    return {};
}

platform::WriteResult MemoryFiles::write(const std::string& path, const platform::Bytes& content) {
    ++m_writes;
    if (auto failed = refusal(path); !failed) return failed;
    if (path.empty() || path.ends_with('/'))
        return {false, path + ": No such folder", FileFailure::noSuchPath};
    const auto found = find(path);
    platform::Bytes copy = content; // first: a write for which there is no memory leaves nothing
    m_files[found == m_files.end() ? path : found->first] = std::move(copy);
    return {};
}

bool MemoryFiles::folderExists(const std::string& path) const {
    if (m_folders.count(path) > 0) return true;
    return std::any_of(m_files.begin(), m_files.end(),
        [&](const auto& entry) { return entry.first.rfind(path + "/", 0) == 0; });
}

platform::WriteResult MemoryFiles::enterable(const std::string& folder) const {
    for (const auto& [prefix, how] : m_unreadable) {
        if (folder.rfind(prefix, 0) == 0) return refused(folder, how);
    }
    if (folderExists(folder)) return {};
    if (exists(folder)) return {false, folder + ": Not a folder", FileFailure::other};
    return {false, folder + ": No such folder", FileFailure::noSuchPath};
}

platform::WriteResult MemoryFiles::writable(const std::string& folder) const {
    if (!folderExists(folder)) return {false, folder + ": No such folder", FileFailure::noSuchPath};
    for (const auto& place : m_failures) {
        if (folder.rfind(place.prefix, 0) == 0 && place.times != 0 && showsBefore(place.how))
            return refused(folder, place.how);
    }
    return {};
}

platform::WriteResult MemoryFiles::makeFolder(const std::string& path) {
    if (auto failed = refusal(path); !failed) return failed;
    m_folders.insert(path);
    return {};
}

platform::WriteResult MemoryFiles::remove(const std::string& path) {
    ++m_removes;
    if (auto failed = refusal(path); !failed) return failed;
    const auto found = find(path);
    if (found == m_files.end()) return {false, path + ": No such file", FileFailure::notFound};
    m_files.erase(found);
    return {};
}

std::vector<std::string> MemoryFiles::list(const std::string& folder) const {
    std::vector<std::string> names;
    if (!m_answers) return names;
    for (const auto& entry : m_files) {
        const std::string& path = entry.first;
        if (path.rfind(folder + "/", 0) != 0) continue;
        const std::string name = path.substr(folder.size() + 1);
        if (name.find('/') == std::string::npos) names.push_back(name);
    }
    return names;
}

std::optional<std::vector<std::string>> MemoryFiles::folders(const std::string& folder) const {
    for (const auto& [prefix, how] : m_unreadable) {
        if (folder.rfind(prefix, 0) == 0) return {};
    }
    const std::string above = folder == "/" ? folder : folder + "/";
    std::set<std::string> names;
    const auto add = [&](const std::string& path, bool isFolder) {
        if (path.size() <= above.size() || path.rfind(above, 0) != 0) return;
        const std::size_t end = path.find('/', above.size());
        if (end == std::string::npos && !isFolder) return;
        names.insert(path.substr(above.size(), end - above.size()));
    };
    for (const std::string& path : m_folders) add(path, true);
    for (const auto& entry : m_files) add(entry.first, false);
    if (names.empty() && folder != "/" && !folderExists(folder)) return {};
    return std::vector<std::string>(names.begin(), names.end());
}

} // namespace kvo::testing
