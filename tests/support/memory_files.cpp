#include "tests/support/memory_files.h"

#include <algorithm>
#include <cctype>

namespace kvo::testing {
namespace {

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

std::optional<platform::Bytes> MemoryFiles::read(const std::string& path) const {
    const auto found = find(path);
    if (found == m_files.end()) return std::nullopt;
    return found->second;
}

platform::WriteResult MemoryFiles::refusal(const std::string& path) {
    for (auto& place : m_failures) {
        if (path.rfind(place.prefix, 0) != 0 || place.times == 0) continue;
        if (place.times > 0) --place.times;
        return {false, path + (place.how == Failure::fullDisk ? ": No space left on device"
                                                              : ": Permission denied")};
    }
    return {};
}

platform::WriteResult MemoryFiles::write(const std::string& path, const platform::Bytes& content) {
    ++m_writes;
    if (auto refused = refusal(path); !refused) return refused;
    const auto found = find(path);
    m_files[found == m_files.end() ? path : found->first] = content;
    return {};
}

bool MemoryFiles::folderExists(const std::string& path) const {
    if (m_folders.count(path) > 0) return true;
    return std::any_of(m_files.begin(), m_files.end(),
        [&](const auto& entry) { return entry.first.rfind(path + "/", 0) == 0; });
}

platform::WriteResult MemoryFiles::makeFolder(const std::string& path) {
    if (auto refused = refusal(path); !refused) return refused;
    m_folders.insert(path);
    return {};
}

platform::WriteResult MemoryFiles::remove(const std::string& path) {
    if (auto refused = refusal(path); !refused) return refused;
    const auto found = find(path);
    if (found == m_files.end()) return {false, path + ": No such file"};
    m_files.erase(found);
    return {};
}

std::vector<std::string> MemoryFiles::list(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& entry : m_files) {
        const std::string& path = entry.first;
        if (path.rfind(folder + "/", 0) != 0) continue;
        const std::string name = path.substr(folder.size() + 1);
        if (name.find('/') == std::string::npos) names.push_back(name);
    }
    return names;
}

} // namespace kvo::testing
