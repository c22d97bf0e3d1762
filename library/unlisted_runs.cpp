#include "library/unlisted_runs.h"

#include "core/basic/format.h"
#include "core/data_types.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_records.h"
#include "library/chooser_list.h"
#include "library/import.h"
#include "platform/text.h"

#include <algorithm>
#include <optional>
#include <set>

namespace kvo::library {

namespace {

namespace boxStyle = platform::boxStyle;

// "26111514.52d", and as "26111514.52D" where it comes from a system that knows no case. The list
// has one byte a character, and all that make such a name are ASCII.
bool isRunName(const std::string& name) {
    constexpr std::size_t length = 12;
    constexpr std::size_t point = 8;
    const auto plain = [](char c) { return c > ' ' && c < '\x7F'; };
    return name.size() == length && name[point] == '.' && (name.back() | 0x20) == 'd' &&
           std::all_of(name.begin(), name.end(), plain) && core::isSafeBaseName(name);
}

// Room for all rows of the type and the two blocks that every run has behind them; a longer run
// that was overwritten may have left its end behind it.
bool holdsItsRows(std::size_t size, const core::DataTypeFacts& type) {
    constexpr std::size_t besidesRows = 4;
    constexpr std::size_t longest = (core::maxSamples + besidesRows + 1) * core::runRecordWidth;
    const auto rows = static_cast<std::size_t>(std::max(type.rows, type.importRows));
    return rows > 0 && size >= (rows + besidesRows) * core::runRecordWidth && size <= longest;
}

// The date in front of a name.
std::string describedByName(const std::string& name) {
    const std::string date = name.substr(4, 2) + "-" + name.substr(2, 2) + "-" + name.substr(0, 2);
    const auto day = typedDate(date);
    const std::string of = day ? core::Format(*day, "ddd dd mmm yyyy") + " " : std::string();
    return of + "Run: 1 " + name;
}

std::optional<core::RunIndexEntry> rowOfFile(
    const std::string& name, const std::string& path, const platform::Files& files) {
    const auto file = files.read(path);
    if (!file) return {};
    const auto line = core::decodeHeaderLine(core::runRecord(*file, 1));
    if (!line) return {};
    const core::DataTypeFacts* type = core::dataTypeFacts(core::typeInFront(*line));
    if (type == nullptr || !holdsItsRows(file->size(), *type)) return {};
    std::string description =
        line->find(':') == std::string::npos ? std::string() : descriptionOfRunFile(*line);
    if (description.empty()) description = describedByName(name);
    return core::RunIndexEntry{name, std::move(description)};
}

// As files are found: whatever their case.
std::set<std::string> listedPaths(
    const std::string& appFolder, const platform::Bytes& index, const platform::Files& files) {
    std::set<std::string> paths;
    for (const core::RunIndexEntry& row : core::runIndexOf(index))
        paths.insert(core::upperCased(dataFilePath(appFolder, row.FileName, files)));
    return paths;
}

} // namespace

std::vector<core::RunIndexEntry> unlistedRuns(
    const std::string& appFolder, const platform::Files& files) {
    const std::string folder = core::dataFolder(appFolder, files);
    const std::string indexPath = core::indexPath(appFolder, files);
    const auto index = files.readOrReason(indexPath);
    if (!index && index.failure != platform::FileFailure::notFound) return {};
    if (!files.writable(folder) || !files.replaceable(indexPath)) return {};
    const auto listed = listedPaths(appFolder, index.content.value_or(platform::Bytes{}), files);
    std::vector<core::RunIndexEntry> runs;
    for (const std::string& name : files.list(folder)) {
        const std::string path = core::joined(folder, name, files);
        if (!isRunName(name) || listed.contains(core::upperCased(path))) continue;
        if (files.linksElsewhere(path)) continue;
        if (auto row = rowOfFile(name, path, files)) runs.push_back(std::move(*row));
    }
    return runs;
}

std::string unlistedRunsText(const std::vector<core::RunIndexEntry>& runs) {
    constexpr std::size_t mostNamed = 10;
    std::string text = runs.size() == 1 ? "A run lies in the Data folder that is not in the list:\n"
                                        : std::to_string(runs.size()) +
                                              " runs lie in the Data folder that are not in the "
                                              "list:\n";
    for (std::size_t i = 0; i < std::min(runs.size(), mostNamed); ++i)
        text += "\n" + runs[i].FileName + "   " + platform::fromFile(runs[i].Description);
    if (runs.size() > mostNamed)
        text += "\nand " + std::to_string(runs.size() - mostNamed) + " more";
    return text + "\n\nDo you want to add " + (runs.size() == 1 ? "it" : "them") + " to the list?";
}

void offerUnlistedRuns(
    const std::string& appFolder, platform::Files& files, platform::Dialogs& dialogs) {
    const auto runs = unlistedRuns(appFolder, files);
    if (runs.empty()) return;
    const auto wanted = dialogs.messageBox(
        unlistedRunsText(runs), boxStyle::yesNo + boxStyle::question, "Runs Not Listed");
    if (wanted != platform::Reply::yes) return;
    const auto added = core::AddRunsToIndex(appFolder, runs, core::IndexOrder::asItIs, files);
    if (!added) dialogs.messageBox(added.message, boxStyle::warning, "Run index");
}

} // namespace kvo::library
