#include "core/backup.h"

#include "core/paths.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace kvo::core {

namespace {

constexpr std::size_t leastDigits = 4;

// The number of a copy of `name`, 0 for any other file.
int copyNumber(std::string_view file, std::string_view name) {
    if (!file.starts_with(name) || file.size() < name.size() + 1 + leastDigits) return 0;
    if (file[name.size()] != '.') return 0;
    const std::string_view digits = file.substr(name.size() + 1);
    int number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc() && result.ptr == digits.data() + digits.size() ? number : 0;
}

std::string copyName(const std::string& name, int number) {
    std::string digits = std::to_string(number);
    if (digits.size() < leastDigits) digits.insert(0, leastDigits - digits.size(), '0');
    return name + "." + digits;
}

std::string backupFolder(const std::string& appFolder, const platform::Files& files) {
    return joined(appFolder, "Backup", files);
}

platform::WriteResult makeBackupFolder(const std::string& folder, platform::Files& files) {
    if (files.folderExists(folder)) return {};
    return files.makeFolder(folder);
}

platform::WriteResult keepContent(const std::string& appFolder, const std::string& path,
    const platform::Bytes& content, platform::Files& files) {
    const std::string folder = backupFolder(appFolder, files);
    if (auto made = makeBackupFolder(folder, files); !made) return made;
    const std::string name = baseName(path);
    int newest = 0;
    for (const std::string& file : files.list(folder)) {
        newest = std::max(newest, copyNumber(file, name));
    }
    if (newest > 0 && files.read(joined(folder, copyName(name, newest), files)) == content)
        return {};
    // A list of the folder that broke off names too few of them; no copy is ever written over.
    for (int number = newest + 1;; ++number) {
        const std::string copy = joined(folder, copyName(name, number), files);
        const auto there = files.readOrReason(copy);
        if (there) continue;
        if (there.failure == platform::FileFailure::notFound) return files.write(copy, content);
        return {false, there.message, there.failure};
    }
}

// A file that is there and cannot be read cannot be kept either.
platform::WriteResult notKept(const platform::ReadResult& old) {
    return {
        false, old.message + "\nSo no copy of it can be kept, and it stays as it is.", old.failure};
}

// Runs come from anywhere, and a folder of them may hold links: what lies in Data/ is never written
// through one that leads out of it.
platform::WriteResult mayReplace(
    const std::string& appFolder, const std::string& path, const platform::Files& files) {
    const bool ofData = joined(dataFolder(appFolder, files), baseName(path), files) == path;
    if (ofData && files.linksElsewhere(path)) {
        return {false,
            path + "\ncould not be written.\nIt is a link that leads out of the Data folder.",
            platform::FileFailure::notPermitted};
    }
    return files.replaceable(path);
}

// `old` is what a read of the file gave.
platform::WriteResult replace(const std::string& appFolder, const std::string& path,
    const platform::ReadResult& old, const platform::Bytes& content, platform::Files& files) {
    if (!old && old.failure != platform::FileFailure::notFound) return notKept(old);
    const bool extended = old && old.content->size() <= content.size() &&
                          std::equal(old.content->begin(), old.content->end(), content.begin());
    if (old && !extended) {
        if (auto kept = keepContent(appFolder, path, *old.content, files); !kept) return kept;
    }
    return files.write(path, content);
}

} // namespace

platform::WriteResult keepCopy(
    const std::string& appFolder, const std::string& path, platform::Files& files) {
    const auto old = files.readOrReason(path);
    if (old) return keepContent(appFolder, path, *old.content, files);
    if (old.failure == platform::FileFailure::notFound) return {};
    return notKept(old);
}

platform::WriteResult replaceKept(const std::string& appFolder, const std::string& path,
    const platform::Bytes& content, platform::Files& files) {
    if (auto refused = mayReplace(appFolder, path, files); !refused) return refused;
    return replace(appFolder, path, files.readOrReason(path), content, files);
}

platform::WriteResult replaceBeginningKept(const std::string& appFolder, const std::string& path,
    platform::Bytes content, platform::Files& files) {
    if (auto refused = mayReplace(appFolder, path, files); !refused) return refused;
    const auto old = files.readOrReason(path);
    if (old && old.content->size() > content.size()) {
        const auto behind = old.content->begin() + static_cast<std::ptrdiff_t>(content.size());
        content.insert(content.end(), behind, old.content->end());
    }
    return replace(appFolder, path, old, content, files);
}

platform::WriteResult keepText(const std::string& appFolder, const std::string& stem,
    const std::string& text, platform::Files& files) {
    const std::string folder = backupFolder(appFolder, files);
    if (auto made = makeBackupFolder(folder, files); !made) return made;
    const platform::Bytes content(text.begin(), text.end());
    for (int number = 1;; ++number) {
        const std::string tail = number == 1 ? "" : "-" + std::to_string(number);
        const std::string path = joined(folder, stem + tail + ".txt", files);
        const auto there = files.readOrReason(path);
        if (there && *there.content == content) return {};
        if (!there && there.failure == platform::FileFailure::notFound)
            return files.write(path, content);
        if (!there) return {false, there.message, there.failure};
    }
}

platform::WriteResult removeKept(
    const std::string& appFolder, const std::string& path, platform::Files& files) {
    if (auto refused = files.replaceable(path); !refused) return refused;
    const auto old = files.readOrReason(path);
    if (!old)
        return old.failure == platform::FileFailure::notFound ? platform::WriteResult{}
                                                              : notKept(old);
    auto kept = keepContent(appFolder, path, *old.content, files);
    return kept ? files.remove(path) : kept;
}

} // namespace kvo::core
