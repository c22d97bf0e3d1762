#include "core/run_index.h"

#include "core/backup.h"
#include "core/basic/byte_writer.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/paths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>
#include <numeric>
#include <optional>
#include <span>

namespace kvo::core {

namespace {

constexpr std::size_t fileNameWidth = 80;
constexpr std::size_t descriptionWidth = 160;
constexpr std::size_t entryWidth = fileNameWidth + descriptionWidth;
constexpr std::string_view datePicture = "ddd dd mmm yyyy";

// Place of a text, counted from 1; 0 where it is not found.
std::size_t placeOf(std::string_view part, std::string_view text) {
    const std::size_t at = text.find(part);
    return at == std::string_view::npos ? 0 : at + 1;
}

// `length` characters from `place`, counted from 1; what is there of them.
std::string_view middle(std::string_view text, std::size_t place, std::size_t length) {
    if (place > text.size()) return {};
    return text.substr(place - 1, length);
}

std::string_view monthNumber(std::string_view name) {
    constexpr std::array<std::string_view, 12> names{
        "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    constexpr std::array<std::string_view, 12> numbers{
        "01", "02", "03", "04", "05", "06", "07", "08", "09", "10", "11", "12"};
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) return name;
    return numbers[static_cast<std::size_t>(found - names.begin())];
}

platform::Bytes encoded(std::span<const RunIndexEntry> entries) {
    ByteWriter writer;
    for (const RunIndexEntry& entry : entries) {
        writer.text(entry.FileName, fileNameWidth);
        writer.text(entry.Description, descriptionWidth);
    }
    return writer.take();
}

// Blanks behind a record that was cut short, so that whole records follow it.
void completeLastRecord(platform::Bytes& index) {
    const std::size_t behind = index.size() % entryWidth;
    if (behind != 0) index.resize(index.size() + entryWidth - behind, ' ');
}

std::string_view textAt(const platform::Bytes& index, std::size_t offset, std::size_t width) {
    return {reinterpret_cast<const char*>(index.data()) + offset, width};
}

RunIndexEntry entryAt(const platform::Bytes& index, std::size_t offset) {
    return {rightTrimmed(textAt(index, offset, fileNameWidth)),
        rightTrimmed(textAt(index, offset + fileNameWidth, descriptionWidth))};
}

// Where the first record of a file begins; nothing where it has none.
std::optional<std::size_t> placeOfFile(const platform::Bytes& index, const std::string& fileName) {
    for (std::size_t at = 0; at < index.size(); at += entryWidth)
        if (entryAt(index, at).FileName == fileName) return at;
    return {};
}

// Where the record of a row begins; nothing where there is no such row.
std::optional<std::size_t> placeOfRow(const platform::Bytes& index, const RunIndexEntry& row) {
    for (std::size_t at = 0; at < index.size(); at += entryWidth)
        if (entryAt(index, at) == row) return at;
    return {};
}

platform::WriteResult makeDataFolder(const std::string& appFolder, platform::Files& files) {
    const std::string folder = dataFolder(appFolder, files);
    if (files.folderExists(folder)) return {};
    return files.makeFolder(folder);
}

// An index that is read, and the records behind it; not put together, since the whole may be large.
struct LongerIndex {
    platform::Bytes records;
    platform::Bytes added;

    std::size_t readCount() const { return records.size() / entryWidth; }
    std::size_t count() const { return readCount() + added.size() / entryWidth; }
    // Record i, counted from 0.
    std::span<const std::uint8_t> record(std::size_t i) const {
        return i < readCount()
                   ? std::span(records).subspan(i * entryWidth, entryWidth)
                   : std::span(added).subspan((i - readCount()) * entryWidth, entryWidth);
    }
    std::int32_t key(std::size_t i) const {
        const auto text = record(i).subspan(fileNameWidth);
        return RunDateKey({reinterpret_cast<const char*>(text.data()), text.size()});
    }
};

// The places of the records, newest first. Keys are taken once; records with equal keys stay in
// their order.
std::vector<std::size_t> newestFirst(const LongerIndex& index) {
    std::vector<std::int32_t> keys(index.count());
    for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = index.key(i);
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
        [&](std::size_t a, std::size_t b) { return keys[a] > keys[b]; });
    return order;
}

platform::Bytes inOrder(const LongerIndex& index, bool sorted) {
    platform::Bytes result;
    result.reserve(index.count() * entryWidth);
    const auto take = [&](std::span<const std::uint8_t> record) {
        result.insert(result.end(), record.begin(), record.end());
    };
    if (sorted) {
        for (const std::size_t i : newestFirst(index)) take(index.record(i));
    } else {
        take(index.records);
        take(index.added);
    }
    return result;
}

bool isDeviceName(std::string_view name) {
    std::string stem(name.substr(0, name.find('.')));
    stem = rightTrimmed(stem);
    for (char& c : stem) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    if (stem == "CON" || stem == "PRN" || stem == "AUX" || stem == "NUL") return true;
    return stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")) &&
           stem[3] >= '0' && stem[3] <= '9';
}

} // namespace

std::int32_t RunDateKey(std::string_view description) {
    // Required: a text that is not found counts as found at place 0, and the year is the century.
    const std::string_view day = middle(description, placeOf(" ", description) + 1, 2);
    const std::string_view month = middle(description, placeOf(day, description) + 3, 3);
    const std::string_view year = middle(description, placeOf(month, description) + 4, 2);
    const std::string_view run = middle(description, placeOf("Run: ", description) + 5, 2);
    std::string date(year);
    date += monthNumber(month);
    date += day;
    // At most seven digits and two, so it always fits.
    return CLng(Val(date) * 100 + Val(run)).value_or(0);
}

std::string runFileName(const platform::DateTime& moment) {
    return Format(moment, "yymmddhh.mm\\d");
}

std::string runText(std::string_view title, const platform::DateTime& moment) {
    return runText(title, Format(moment, datePicture));
}

std::string runText(std::string_view title, std::string_view date) {
    constexpr std::size_t longestTitle = 130;
    std::string text = " Date:";
    text += date;
    text += " Run: ";
    text += title.substr(0, longestTitle);
    text += '#';
    return text;
}

std::string indexDescription(std::string_view runText) {
    constexpr std::size_t first = 7;
    const std::size_t end = placeOf("#", runText);
    if (end < first) return {};
    return std::string(middle(runText, first, end - first));
}

std::string indexPath(const std::string& appFolder, const platform::Files& files) {
    return joined(dataFolder(appFolder, files), "KvoData.Ini", files);
}

std::vector<RunIndexEntry> runIndexOf(platform::Bytes index) {
    completeLastRecord(index);
    std::vector<RunIndexEntry> entries;
    entries.reserve(index.size() / entryWidth);
    for (std::size_t at = 0; at < index.size(); at += entryWidth)
        entries.push_back(entryAt(index, at));
    return entries;
}

std::vector<RunIndexEntry> readRunIndex(const std::string& path, const platform::Files& files) {
    return runIndexOf(files.read(path).value_or(platform::Bytes{}));
}

ReadIndex readOrCreateRunIndex(const std::string& appFolder, platform::Files& files) {
    const std::string path = indexPath(appFolder, files);
    ReadIndex index;
    auto file = files.readOrReason(path);
    if (file) {
        index.entries = runIndexOf(std::move(*file.content));
    } else if (file.failure == platform::FileFailure::noMemory) {
        throw std::bad_alloc(); // the list that there was is better than none
    } else if (file.failure != platform::FileFailure::notFound) {
        index.unread = file.message;
    } else if (makeDataFolder(appFolder, files)) {
        // A folder that cannot be made or written shows the same empty list.
        (void)files.createEmpty(path);
    }
    return index;
}

platform::WriteResult writeRunIndex(const std::string& appFolder,
    const std::vector<RunIndexEntry>& entries, platform::Files& files) {
    return replaceKept(appFolder, indexPath(appFolder, files), encoded(entries), files);
}

platform::WriteResult removeFromIndex(
    const std::string& appFolder, const RunIndexEntry& row, platform::Files& files) {
    const std::string path = indexPath(appFolder, files);
    auto index = files.readOrReason(path);
    if (!index) return {false, index.message, index.failure};
    completeLastRecord(*index.content);
    auto at = placeOfRow(*index.content, row);
    if (!at) at = placeOfFile(*index.content, row.FileName); // somebody else has described it
    if (!at) return {};                                      // or taken it off
    const auto begin = index.content->begin() + static_cast<std::ptrdiff_t>(*at);
    index.content->erase(begin, begin + static_cast<std::ptrdiff_t>(entryWidth));
    return replaceKept(appFolder, path, *index.content, files);
}

platform::WriteResult describeInIndex(const std::string& appFolder, const RunIndexEntry& row,
    const std::string& description, platform::Files& files) {
    const std::string path = indexPath(appFolder, files);
    auto index = files.readOrReason(path);
    if (!index) return {false, index.message, index.failure};
    completeLastRecord(*index.content);
    const auto at = placeOfRow(*index.content, row);
    if (!at) {
        return {false,
            path +
                "\nThe run does not stand in the list any more as it is shown. Open the list anew.",
            platform::FileFailure::notFound};
    }
    const RunIndexEntry changed{row.FileName, description};
    const platform::Bytes record = encoded({&changed, 1});
    const auto begin = index.content->begin() + static_cast<std::ptrdiff_t>(*at);
    // Its file name stays byte for byte: a row may hold a whole path.
    std::copy(record.begin() + fileNameWidth, record.end(), begin + fileNameWidth);
    return replaceKept(appFolder, path, *index.content, files);
}

platform::WriteResult AddRunToIndex(const std::string& appFolder, const RunIndexEntry& entry,
    IndexOrder order, platform::Files& files) {
    return AddRunsToIndex(appFolder, {&entry, 1}, order, files);
}

platform::WriteResult AddRunsToIndex(const std::string& appFolder,
    std::span<const RunIndexEntry> entries, IndexOrder order, platform::Files& files) {
    if (auto made = makeDataFolder(appFolder, files); !made) return made;
    const std::string path = indexPath(appFolder, files);
    auto old = files.readOrReason(path);
    if (!old && old.failure != platform::FileFailure::notFound)
        return {false, old.message, old.failure};
    LongerIndex index{old ? std::move(*old.content) : platform::Bytes{}, encoded(entries)};
    completeLastRecord(index.records);
    // Every record that was there is there again, so no copy of the old index is kept.
    return files.write(path, inOrder(index, order == IndexOrder::sorted));
}

std::string suggestTitle(std::string_view lastDescription, const platform::DateTime& today) {
    constexpr std::string_view firstOfTheDay = "1 ";
    const std::size_t place = placeOf("Run:", lastDescription);
    if (place < 2) return std::string(firstOfTheDay);
    if (lastDescription.substr(0, place - 2) != Format(today, datePicture)) {
        return std::string(firstOfTheDay);
    }
    return Str(Val(lastDescription.substr(place + 3)) + 1) + " ";
}

bool isSafeBaseName(std::string_view name) {
    if (name.empty() || name == "." || name.find("..") != std::string_view::npos) return false;
    const auto forbidden = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F || c == '/' || c == '\\' || c == ':';
    };
    return std::none_of(name.begin(), name.end(), forbidden) && !isDeviceName(name);
}

} // namespace kvo::core
