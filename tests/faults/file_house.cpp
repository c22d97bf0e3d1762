#include "tests/faults/file_house.h"

#include "core/backup.h"
#include "core/config.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/tidy_folder.h"
#include "library/unlisted_runs.h"
#include "platform/clock.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>

namespace kvo::faults {

namespace fs = std::filesystem;
using platform::Bytes;
using platform::Reply;

Reply AnsweringDialogs::messageBox(const std::string& text, int style, const std::string& title) {
    boxes.push_back(title + ": " + text);
    // The date of an imported file is typed, so that its name is the same every day.
    if (title.starts_with("File Date")) return Reply::no;
    switch (style & 7) {
    case platform::boxStyle::yesNo:
    case platform::boxStyle::yesNoCancel:
        return Reply::yes;
    case platform::boxStyle::retryCancel:
        return Reply::cancel;
    default:
        return Reply::ok;
    }
}

std::string AnsweringDialogs::inputBox(
    const std::string&, const std::string& title, const std::string&) {
    boxes.push_back(title);
    return title == "Run Date" ? "14-11-2026" : "3 Typed";
}

// --- What must hold

namespace {

constexpr std::size_t rowWidth = 240;
constexpr std::size_t timesRowWidth = 44;

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::size_t rowsOf(const std::string& path) {
    if (path == "App/Data/KvoData.Ini") return rowWidth;
    return path == "App/KvoTimes" ? timesRowWidth : 0;
}

std::multiset<Bytes> rowsIn(const Bytes& content, std::size_t width) {
    std::multiset<Bytes> rows;
    for (std::size_t at = 0; at + width <= content.size(); at += width) {
        const auto begin = content.begin() + static_cast<std::ptrdiff_t>(at);
        rows.insert(Bytes(begin, begin + static_cast<std::ptrdiff_t>(width)));
    }
    return rows;
}

// Whole rows, each of them an old or a new one, and all that are in both.
bool isListBetween(const Bytes& now, const Bytes& a, const Bytes& b, std::size_t width) {
    if (now.size() % width != 0) return false;
    const auto rows = rowsIn(now, width);
    const auto before = rowsIn(a, width);
    const auto behind = rowsIn(b, width);
    return std::all_of(rows.begin(), rows.end(), [&](const Bytes& row) {
        return before.contains(row) || behind.contains(row);
    }) && std::all_of(before.begin(), before.end(), [&](const Bytes& row) {
        return !behind.contains(row) || rows.contains(row);
    });
}

// An empty file says no more than one that is not there.
const Bytes& contentOf(const Disk& disk, const std::string& path) {
    static const Bytes none;
    const auto at = disk.find(path);
    return at == disk.end() ? none : at->second;
}

bool isBackup(const std::string& path) {
    return path.starts_with("App/Backup/") && !path.ends_with('/');
}

bool isKept(const Disk& disk, const Bytes& content) {
    return std::any_of(disk.begin(), disk.end(),
        [&](const auto& file) { return isBackup(file.first) && file.second == content; });
}

// A copy is a whole one of what stood there or came there.
bool isWholeCopy(
    const std::string& path, const Bytes& content, const Disk& start, const Outcome& whole) {
    const auto isIt = [&](const auto& file) { return file.second == content; };
    return contentOf(start, path) == content || std::any_of(start.begin(), start.end(), isIt) ||
           std::any_of(whole.disk.begin(), whole.disk.end(), isIt);
}

std::set<std::string> pathsOf(const Disk& a, const Disk& b, const Disk& c) {
    std::set<std::string> paths;
    for (const Disk* disk : {&a, &b, &c})
        for (const auto& file : *disk) paths.insert(file.first);
    return paths;
}

std::string wrongFile(
    const std::string& path, const Disk& start, const Disk& now, const Outcome& whole) {
    const Bytes& content = contentOf(now, path);
    const Bytes& before = contentOf(start, path);
    const Bytes& behind = contentOf(whole.disk, path);
    if (core::isWriteLeftover(nameOf(path))) return {};
    if (isBackup(path)) {
        if (!now.contains(path))
            return start.contains(path) && whole.disk.contains(path) ? path + " is gone" : "";
        return isWholeCopy(path, content, start, whole) ? "" : path + " is no whole copy";
    }
    const std::size_t width = rowsOf(path);
    const bool fits = content == before || content == behind ||
                      (width != 0 && isListBetween(content, before, behind, width));
    if (!fits) return path + " is neither as it was nor as it should be";
    if (content != before && isKept(whole.disk, before) && !isKept(now, before))
        return path + " is changed, and its copy is not there";
    return {};
}

} // namespace

std::string damage(const Disk& start, const Disk& now, const Outcome& whole) {
    for (const std::string& path : pathsOf(start, now, whole.disk))
        if (std::string wrong = wrongFile(path, start, now, whole); !wrong.empty()) return wrong;
    return {};
}

std::string broken(
    const Operation& operation, const Disk& start, const Outcome& now, const Outcome& whole) {
    if (std::string wrong = damage(start, now.disk, whole); !wrong.empty()) return wrong;
    if (now.told(whole) || *operation.silent != '\0') return {};
    for (const std::string& path : pathsOf(start, now.disk, whole.disk)) {
        if (path.ends_with('/') || core::isWriteLeftover(nameOf(path))) continue;
        if (contentOf(now.disk, path) != contentOf(whole.disk, path))
            return path + " is not as it should be, and nobody was told";
    }
    return now.shown == whole.shown ? "" : "less is shown, and nobody was told";
}

std::string brokenNextStart(platform::Files& files, const std::string& root, const Disk& start) {
    const std::string app = root + "/App";
    core::tidyFolder(app, {2099, 1, 1, 0, 0, 0}, files);
    for (const std::string folder : {"", "/Data", "/Backup"})
        for (const std::string& name : files.list(app + folder))
            if (core::isWriteLeftover(name)) return name + " is left over";
    AnsweringDialogs dialogs;
    library::offerUnlistedRuns(app, files, dialogs);
    if (!library::unlistedRuns(app, files).empty()) return "a run is not listed";
    const core::ReadIndex index = core::readOrCreateRunIndex(app, files);
    if (!index.unread.empty()) return "the list cannot be read";
    for (const core::RunIndexEntry& row : index.entries) {
        const std::string path = app + "/Data/" + row.FileName;
        if (start.contains("App/Data/" + row.FileName) && !files.exists(path) &&
            !files.exists(app + "/Backup/" + row.FileName + ".0001"))
            return row.FileName + " is listed and lost";
        const auto run = std::make_unique<core::OpenRun>();
        if (files.exists(path) && row.FileName.front() == '2' &&
            core::LoadRun(path, *run, files).DataType == 0)
            return row.FileName + " cannot be opened";
    }
    core::AppConfig config;
    if (!core::LoadConfig(app, config, files).whole()) return "the setup cannot be read";
    return core::LoadTimesTable(app, files).unread;
}

// --- On a real disk

Sandbox::Sandbox() {
    const fs::path memory = "/dev/shm";
    std::error_code error;
    const fs::path above = fs::is_directory(memory, error) ? memory : fs::temp_directory_path();
    m_root = (above / "kvo-faults-XXXXXX").string();
    if (mkdtemp(m_root.data()) == nullptr) throw std::runtime_error("no folder to work in");
}

Sandbox::~Sandbox() {
    std::error_code error;
    if (m_own) fs::remove_all(m_root, error);
}

void Sandbox::put(const Disk& wanted) const {
    const Disk there = disk();
    for (auto file = there.rbegin(); file != there.rend(); ++file)
        if (!wanted.contains(file->first) || isBackup(file->first) ||
            fs::is_symlink(m_root + "/" + file->first))
            fs::remove_all(m_root + "/" + file->first);
    for (const auto& [path, content] : wanted) {
        const auto at = there.find(path);
        // Copies are made anew, so that the dates of their making stay in the order of their
        // numbers.
        if (at != there.end() && at->second == content && !isBackup(path)) continue;
        if (path.ends_with('/')) {
            fs::create_directories(m_root + "/" + path);
            continue;
        }
        std::ofstream file(m_root + "/" + path, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(content.data()),
            static_cast<std::streamsize>(content.size()));
        if (!file.flush()) throw std::runtime_error(path + " cannot be put there");
    }
}

Disk Sandbox::disk() const {
    Disk result;
    for (const auto& entry : fs::recursive_directory_iterator(m_root)) {
        std::string path = entry.path().string().substr(m_root.size() + 1);
        if (entry.is_symlink()) {
            const std::string target = fs::read_symlink(entry.path()).string();
            result[path] = Bytes(target.begin(), target.end());
        } else if (entry.is_directory()) {
            result[path + "/"];
        } else if (entry.is_regular_file()) {
            Bytes& content = result[path];
            content.resize(entry.file_size());
            std::ifstream file(entry.path(), std::ios::binary);
            file.read(reinterpret_cast<char*>(content.data()),
                static_cast<std::streamsize>(content.size()));
        }
    }
    return result;
}

Outcome runOn(const Operation& operation, platform::Files& files, const Sandbox& sandbox) {
    Work work{files, sandbox.root(), {}, {}};
    Outcome outcome;
    outcome.done = operation.run(work);
    outcome.boxes = std::move(work.dialogs.boxes);
    outcome.shown = std::move(work.shown);
    return outcome;
}

} // namespace kvo::faults
