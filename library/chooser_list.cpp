#include "library/chooser_list.h"

#include "core/backup.h"
#include "core/basic/byte_writer.h"
#include "core/basic/numbers.h"
#include "core/paths.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace kvo::library {

namespace {

constexpr std::size_t runNameLength = 12;
constexpr std::size_t longestDescription = 160;
constexpr std::size_t longestTitleInFile = 41;

// What counts of a row's file name: its last 12 characters, blanks behind them left out.
std::string runName(std::string_view fileName) {
    const std::string trimmed = core::rightTrimmed(fileName);
    return trimmed.substr(trimmed.size() - std::min(trimmed.size(), runNameLength));
}

// The name of a row's run with four digits of its year, so that names sort by their dates. A name
// without a year is older than all.
std::string datedName(const core::RunIndexEntry& row) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    std::string name = runName(row.FileName);
    if (name.size() < 2 || !isDigit(name[0]) || !isDigit(name[1])) return {};
    constexpr char firstDecadeOfLastCentury = '8';
    return name.insert(0, name[0] >= firstDecadeOfLastCentury ? "19" : "20");
}

// Up to and including the first ":"; a text without one counts as having it at place 0.
std::size_t lengthToColon(std::string_view description) {
    const std::size_t colon = description.find(':');
    return colon == std::string_view::npos ? 0 : colon + 1;
}

// The header line with a new title: what stands up to "Run:", a blank, 41 characters and "#".
std::string retitled(std::string_view line, std::string_view newText) {
    const std::size_t place = line.find("Run:");
    // A text that is not found counts as found at place 0, and 3 characters behind it are kept.
    const std::size_t kept = place == std::string_view::npos ? 3 : place + 4;
    std::string result(line.substr(0, kept));
    result += ' ';
    result += newText.substr(0, longestTitleInFile);
    result += '#';
    return result.substr(0, core::longestHeaderLine);
}

platform::WriteResult retitleRunFile(const std::string& appFolder, const std::string& path,
    std::string_view newText, core::OpenRun& openRun, platform::Files& files) {
    if (path.empty()) return {false, "The list of runs names no file that can be this run's."};
    auto read = files.readOrReason(path);
    if (!read) return {false, read.message, read.failure};
    auto& file = read.content;
    const auto line = core::decodeHeaderLine(core::runRecord(*file, 1));
    if (!line) return {false, path + " has no header line."};
    const std::string newLine = retitled(*line, newText);
    core::ByteWriter record;
    core::encodeHeaderLine(record, newLine);
    record.fillTo(core::runRecordWidth);
    if (file->size() < core::runRecordWidth) file->resize(core::runRecordWidth);
    std::copy(record.bytes().begin(), record.bytes().end(), file->begin());
    auto written = core::replaceKept(appFolder, path, *file, files);
    if (written && openRun.path == path) openRun.headerLine = newLine;
    return written;
}

} // namespace

std::string dataFilePath(
    const std::string& appFolder, std::string_view fileName, const platform::Files& files) {
    const std::string name = runName(fileName);
    if (!core::isSafeBaseName(name)) return {};
    return core::joined(core::dataFolder(appFolder, files), platform::fromFile(name), files);
}

std::optional<std::size_t> rowToOpenOn(
    const std::vector<core::RunIndexEntry>& rows, std::string_view lastChosenFile) {
    if (rows.empty()) return {};
    const auto last = std::find_if(rows.begin(), rows.end(), [&](const core::RunIndexEntry& row) {
        return !lastChosenFile.empty() && row.FileName == lastChosenFile;
    });
    if (last != rows.end()) return static_cast<std::size_t>(last - rows.begin());
    std::size_t newest = 0;
    std::string newestName = datedName(rows[0]);
    for (std::size_t row = 1; row < rows.size(); ++row) {
        std::string name = datedName(rows[row]);
        if (name <= newestName) continue;
        newest = row;
        newestName = std::move(name);
    }
    return newest;
}

platform::WriteResult DeleteFile(const std::string& appFolder,
    std::vector<core::RunIndexEntry>& rows, std::size_t row, platform::Files& files) {
    if (row >= rows.size()) return {};
    const core::RunIndexEntry gone = rows[row]; // first, so that no lack of memory comes between
    const std::string path = dataFilePath(appFolder, gone.FileName, files);
    if (!path.empty()) {
        for (const std::string& each : {path, core::infoFilePath(path)}) {
            if (auto removed = core::removeKept(appFolder, each, files); !removed) return removed;
        }
    }
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row));
    return core::removeFromIndex(appFolder, gone, files);
}

std::string editableDescription(std::string_view description) {
    return core::rightTrimmed(core::leftTrimmed(description.substr(lengthToColon(description))));
}

std::optional<std::string> changedDescription(
    std::string_view description, std::string_view newText) {
    const std::string_view text = core::leftTrimmed(newText);
    if (!(core::Val(text) > 0)) return {};
    std::string result(description.substr(0, lengthToColon(description)));
    result += ' ';
    result += text;
    return core::rightTrimmed(result.substr(0, longestDescription));
}

platform::WriteResult editDescription(const std::string& appFolder,
    std::vector<core::RunIndexEntry>& rows, std::size_t row, std::string_view newText,
    core::OpenRun& openRun, platform::Files& files) {
    if (row >= rows.size()) return {};
    const auto changed = changedDescription(rows[row].Description, newText);
    if (!changed) return {};
    if (auto written = core::describeInIndex(appFolder, rows[row], *changed, files); !written)
        return written;
    rows[row].Description = *changed;
    return retitleRunFile(appFolder, dataFilePath(appFolder, rows[row].FileName, files),
        core::leftTrimmed(newText), openRun, files);
}

} // namespace kvo::library
