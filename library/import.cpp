#include "library/import.h"

#include "core/backup.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "library/text_run.h"
#include "platform/memory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <new>
#include <utility>

namespace kvo::library {
namespace {

namespace boxStyle = platform::boxStyle;
using platform::DateTime;
using platform::Reply;

constexpr const char* longDate = "ddd dd mmm yyyy";
constexpr std::size_t importNameLength = 12; // what the index and the chooser keep of a name
constexpr std::size_t longestIndexText = 160;
// What a batch that is killed may leave out of the index. A write of it takes longer with every run
// that is in it, so it is not written behind each of a hundred runs that come in at once.
constexpr std::size_t mostUnlisted = 25;
constexpr std::chrono::seconds longestUnlisted{2};

std::string trimmedBothSides(std::string_view text) {
    return core::rightTrimmed(core::leftTrimmed(text));
}

// As the index will give it back.
std::string asListed(std::string_view description) {
    return core::rightTrimmed(description.substr(0, longestIndexText));
}

// --- Dates

std::optional<int> wholeNumber(std::string_view text) {
    int number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return whole && number >= 0 ? std::optional(number) : std::nullopt;
}

char lowerCased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::optional<int> monthOf(std::string_view text) {
    constexpr std::array<std::string_view, 12> names{"january", "february", "march", "april", "may",
        "june", "july", "august", "september", "october", "november", "december"};
    constexpr std::size_t shortest = 3;
    if (const auto number = wholeNumber(text)) return number;
    if (text.size() < shortest) return std::nullopt;
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), lowerCased);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i].starts_with(lower)) return static_cast<int>(i) + 1;
    }
    return std::nullopt;
}

std::optional<int> yearOf(std::string_view text) {
    constexpr int firstYear = 1900;
    constexpr int lastYear = 2099;
    const auto number = wholeNumber(text);
    if (!number) return std::nullopt;
    if (text.size() == 2) return *number >= 80 ? 1900 + *number : 2000 + *number;
    return *number >= firstYear && *number <= lastYear ? number : std::nullopt;
}

int daysOf(int month, int year) {
    constexpr std::array<int, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return days[static_cast<std::size_t>(month - 1)] + (month == 2 && leap ? 1 : 0);
}

std::vector<std::string_view> partsOfDate(std::string_view text) {
    constexpr std::string_view between = "-/. ";
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t begin = text.find_first_not_of(between);
        if (begin == std::string_view::npos) return parts;
        const std::size_t end = std::min(text.find_first_of(between, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        text.remove_prefix(end);
    }
}

} // namespace

std::optional<DateTime> typedDate(std::string_view text) {
    const auto parts = partsOfDate(text);
    if (parts.size() != 3) return std::nullopt;
    const auto day = wholeNumber(parts[0]);
    const auto month = monthOf(parts[1]);
    const auto year = yearOf(parts[2]);
    if (!day || !month || !year || *month < 1 || *month > 12) return std::nullopt;
    if (*day < 1 || *day > daysOf(*month, *year)) return std::nullopt;
    return DateTime{*year, *month, *day};
}

std::string descriptionOfRunFile(std::string_view headerLine) {
    const std::size_t colon = headerLine.find(':');
    if (colon != std::string_view::npos) headerLine.remove_prefix(colon + 1);
    return core::rightTrimmed(headerLine.substr(0, headerLine.find('#')));
}

Import::Import(
    const ImportInput& input, ImportView& view, platform::Dialogs& dialogs, platform::Files& files)
    : m_in(input), m_view(view), m_dialogs(dialogs), m_files(files) {}

void Import::Data_File() {
    const std::string unread = m_in.runs.read(m_in.AppFolder, m_files);
    std::unordered_set<std::string> known;
    for (const core::RunIndexEntry& row : m_in.runs.rows()) known.insert(row.Description);
    m_known.swap(known);
    m_view.showRuns();
    if (!unread.empty()) m_dialogs.messageBox(unread, boxStyle::critical, "Run index");
}

ImportedBatch Import::Butten_Import(
    ImportMode mode, const std::string& folder, const std::vector<std::string>& names) {
    if (m_running) return {};
    m_running = true;
    m_cancelled = false;
    m_listedAt = m_in.now();
    ImportedBatch batch;
    platform::withinMemory(
        m_dialogs, "import these files", [&] { importFiles(mode, folder, names, batch); });
    batch.cancelled = m_cancelled;
    batch.written = std::exchange(m_written, {});
    platform::withinMemory(m_dialogs, "list the imported runs", [&] {
        addRunsToIndex();
        Data_File();
    });
    m_running = false;
    return batch;
}

void Import::importFiles(ImportMode mode, const std::string& folder,
    const std::vector<std::string>& names, ImportedBatch& batch) {
    batch.files = static_cast<int>(names.size());
    for (int i = 0; i < batch.files && !m_cancelled; ++i) {
        const std::string& name = names[static_cast<std::size_t>(i)];
        m_view.showFile(name, i + 1, batch.files);
        m_view.setProgress(0, 1);
        if (m_cancelled) break;
        const Source source{core::joined(folder, name, m_files), name, i + 1 == batch.files};
        if (importWithinMemory(mode, source)) ++batch.imported;
        addRunsWhenDue();
    }
    m_view.clearProgress();
}

// A file that there is not enough memory for is named like any other that fails.
bool Import::importWithinMemory(ImportMode mode, const Source& source) {
    try {
        return importFile(mode, source);
    } catch (const std::bad_alloc&) {
    }
    failed(source, platform::noMemoryReason);
    return false;
}

bool Import::importFile(ImportMode mode, const Source& source) {
    const auto date = askDate(source);
    if (!date) return false;
    Target target;
    target.name = importName(*date, source.name);
    target.path = core::joined(core::dataFolder(m_in.AppFolder, m_files), target.name, m_files);
    target.dateText = core::Format(*date, longDate);
    if (target.name.size() != importNameLength) {
        failed(source, "It cannot be named after its date and the end of its name.");
        return false;
    }
    if (!mayUse(target)) return false;
    // Room in front of the write: a run that is in is entered without more memory.
    m_written.reserve(m_written.size() + 1);
    m_fresh.reserve(m_fresh.size() + 1);
    std::string path = target.path;
    const bool done =
        mode == ImportMode::windows ? WinImport(source, target) : DosImport(source, target);
    if (done) m_written.push_back(std::move(path));
    return done;
}

// --- Questions

std::optional<DateTime> Import::askDate(const Source& source) {
    const auto created = m_files.createdOn(source.path);
    if (!created) {
        m_dialogs.messageBox("File Not Found", boxStyle::ok, source.name);
        return std::nullopt;
    }
    const std::string question = "This File was created on: " + core::Format(*created, longDate) +
                                 "\nIs this the date of the Run ?";
    // Files that follow would ask anew, so the batch can be ended here.
    const int buttons = source.last ? boxStyle::yesNo : boxStyle::yesNoCancel;
    const Reply reply = m_dialogs.messageBox(
        question, buttons + boxStyle::question, "File Date for [ " + source.name + " ]");
    if (reply == Reply::yes) return created;
    if (reply == Reply::no) return askCorrectDate(*created);
    Cancel();
    return std::nullopt;
}

std::optional<DateTime> Import::askCorrectDate(const DateTime& created) {
    while (true) {
        const std::string answer = m_dialogs.inputBox(
            "What is the correct date ?", "Run Date", core::Format(created, "dd-mm-yyyy"));
        if (trimmedBothSides(answer).empty()) return std::nullopt;
        if (const auto date = typedDate(answer)) return date;
        m_dialogs.messageBox(" You need to enter the date as DD-MM-YYYY \n"
                             " 8 July 2009 (08-07-2009)\n Please try again.",
            boxStyle::ok, "Run Date");
    }
}

// A run that is there is replaced once the new one is ready, so that nothing is lost by a file that
// turns out to be no run.
bool Import::mayUse(const Target& target) {
    // What cannot be read now may be there all the same.
    const auto old = m_files.readOrReason(target.path);
    if (!old && old.failure == platform::FileFailure::notFound) return true;
    const std::string question = "(" + target.name + ")  File already in Data Base.\n" +
                                 "            Do you want to overwrite it?";
    return m_dialogs.messageBox(question, boxStyle::yesNo + boxStyle::warning, "WARNING") ==
           Reply::yes;
}

std::optional<std::string> Import::askRunNumber(const Source& source, const Target& target) {
    constexpr std::size_t numbered = 3;
    const std::string prompt =
        core::upperCased(source.name) + "\n" + target.dateText + "\nEnter Run Number for: ";
    const std::string offered =
        source.name.substr(source.name.size() - std::min(source.name.size(), numbered));
    while (true) {
        const std::string answer =
            trimmedBothSides(m_dialogs.inputBox(prompt, "VRN Dos Import", offered));
        if (answer.empty()) return std::nullopt;
        if (core::Val(answer) > 0) return answer;
        m_dialogs.messageBox("You must enter a number first then the description.\n\n"
                             "1 Western Nationals\nor just\n1",
            boxStyle::ok, "Error");
    }
}

void Import::failed(const Source& source, const std::string& reason) {
    const std::string text = source.name + "\n" + reason;
    if (source.last) {
        m_dialogs.messageBox(text, boxStyle::warning, core::programName);
        return;
    }
    const Reply reply = m_dialogs.messageBox(text + "\n\nGo on with the next file?",
        boxStyle::okCancel + boxStyle::warning, core::programName);
    if (reply == Reply::cancel) Cancel();
}

std::optional<platform::Bytes> Import::read(const Source& source) {
    auto file = m_files.readOrReason(source.path);
    if (file) return std::move(file.content);
    if (file.failure == platform::FileFailure::notFound) {
        m_dialogs.messageBox("File Not Found", boxStyle::ok, source.name);
    } else {
        failed(source, file.message);
    }
    return std::nullopt;
}

bool Import::makeDataFolder(const Source& source) {
    const std::string folder = core::dataFolder(m_in.AppFolder, m_files);
    if (m_files.folderExists(folder)) return true;
    const auto made = m_files.makeFolder(folder);
    if (!made) failed(source, made.message);
    return made.done;
}

// --- Files of this program

bool Import::WinImport(const Source& source, const Target& target) {
    const auto content = read(source);
    if (!content) return false;
    const auto line = core::decodeHeaderLine(core::runRecord(*content, 1));
    if (!line || line->empty()) {
        failed(source, "It is no run: nothing stands in its first record.");
        return false;
    }
    if (!makeDataFolder(source)) return false;
    core::RunIndexEntry entry{target.name, descriptionOfRunFile(*line)};
    const auto copied = core::replaceKept(m_in.AppFolder, target.path, *content, m_files);
    if (!copied) {
        failed(source, copied.message);
        return false;
    }
    m_fresh.push_back(std::move(entry));
    return copyInfo(source, target);
}

// The run is in also where its notes cannot be copied.
bool Import::copyInfo(const Source& source, const Target& target) {
    const auto copied = platform::writtenWithinMemory("The notes", [&]() -> platform::WriteResult {
        const auto info = m_files.readOrReason(core::infoFilePath(source.path));
        if (info)
            return core::replaceKept(
                m_in.AppFolder, core::infoFilePath(target.path), *info.content, m_files);
        if (info.failure == platform::FileFailure::notFound) return {};
        return {false, info.message, info.failure};
    });
    if (!copied) failed(source, "The run is imported, but not its notes.\n" + copied.message);
    return true;
}

// --- Text files of the older program

bool Import::DosImport(const Source& source, const Target& target) {
    const auto content = read(source);
    if (!content) return false;
    const std::string_view text(reinterpret_cast<const char*>(content->data()), content->size());
    const auto run = std::make_unique<core::OpenRun>();
    int percentShown = -1;
    const auto progress = [&](int row, int rows) {
        const int percent = row * 100 / rows;
        if (percent != std::exchange(percentShown, percent)) m_view.setProgress(row, rows);
        return !m_cancelled;
    };
    const TextRunOutcome outcome = readTextRun(text, m_in.Config, *run, progress);
    if (outcome.stopped) return false;
    if (!outcome.known) {
        m_view.clearProgress();
        m_dialogs.messageBox(core::upperCased(source.path) + "\n" + textRunRefusal,
            boxStyle::critical, core::programName);
        return false;
    }
    if (outcome.corrupt) {
        m_dialogs.messageBox(
            "This file is corrupt but still can be imported.", boxStyle::warning, "WARNING");
    }
    return SaveImport(source, target, *run);
}

bool Import::SaveImport(const Source& source, const Target& target, core::OpenRun& run) {
    const auto answer = askRunNumber(source, target);
    if (!answer) return false;
    const std::string description = importDescription(target.dateText, *answer);
    run.headerLine = importHeaderLine(run.headerLine, description);
    run.path = target.path;
    // Required: a run whose description is listed already is written and not listed again.
    const bool isListed = m_known.contains(asListed(description));
    core::RunIndexEntry entry{target.name, description};
    if (const auto saved = core::SaveImportedRun(run, m_in.AppFolder, m_files); !saved) {
        failed(source, saved.message);
        return false;
    }
    if (!isListed) m_fresh.push_back(std::move(entry));
    return true;
}

// --- The index

// In the middle of a batch a failure is not told: the end of it tries again, and asks.
void Import::addRunsWhenDue() {
    const auto now = m_in.now();
    if (m_fresh.size() < mostUnlisted && now - m_listedAt < longestUnlisted) return;
    m_listedAt = now;
    if (m_fresh.empty()) return;
    if (writeIndex()) m_fresh.clear();
}

platform::WriteResult Import::writeIndex() {
    return platform::writtenWithinMemory("The list of runs", [this] {
        return core::AddRunsToIndex(m_in.AppFolder, m_fresh, core::IndexOrder::sorted, m_files);
    });
}

void Import::addRunsToIndex() {
    while (!m_fresh.empty()) {
        const auto written = writeIndex();
        if (written) return m_fresh.clear();
        const Reply reply = m_dialogs.messageBox(
            written.message + "\n\nThe imported runs are in the Data folder, but not in the list.",
            boxStyle::retryCancel + boxStyle::warning, "Run index");
        if (reply != Reply::retry) return;
    }
}

} // namespace kvo::library
