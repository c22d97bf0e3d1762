#include "library/folder_check.h"

#include "core/config.h"
#include "core/data_types.h"
#include "core/default_config.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_records.h"
#include "core/tidy_folder.h"
#include "library/chooser_list.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <set>

namespace kvo::library {
namespace {

constexpr std::size_t infoRecord = 400;
constexpr std::size_t infoRecords = 61;
constexpr std::size_t longestInfoText = 398;
constexpr std::size_t indexRecord = 240;
constexpr std::size_t blocksBehindRows = 2; // the tail block may be missing
constexpr std::size_t recordsBeforeRows = 2;

// Files of whole records up to a number of them.
struct KnownFile {
    std::string_view name; // capitals
    std::size_t record;
    std::size_t most;
};
constexpr std::array<KnownFile, 2> knownFiles{{{"KVOTIMES", 44, 26}, {"VSETUP.DAT", 34, 25}}};
constexpr std::size_t tableBytes = 256 * 8;

bool endsAs(const std::string& name, char last) {
    constexpr std::size_t length = 12;
    constexpr std::size_t point = 8;
    return name.size() == length && name[point] == '.' && (name.back() | 0x20) == last;
}

bool isAnalogTable(const std::string& upper) {
    return upper.size() == 11 && upper.starts_with("ANALOG") && upper[6] >= '1' &&
           upper[6] <= '8' && upper.ends_with(".DAT");
}

std::string configDamage(const platform::Bytes& content) {
    core::AppConfig config = core::defaultConfig();
    return core::decodeConfig(content, config) ? std::string()
                                               : "It is cut short, or no setup at all.";
}

std::string indexDamage(const platform::Bytes& content) {
    if (content.size() % indexRecord == 0) return {};
    return "Its last line is cut short.";
}

std::string lengthDamage(const std::string& upper, const platform::Bytes& content) {
    if (isAnalogTable(upper)) {
        const bool whole = content.empty() || content.size() == tableBytes;
        return whole
                   ? std::string()
                   : "A table has 2048 bytes, and this one " + std::to_string(content.size()) + ".";
    }
    for (const KnownFile& one : knownFiles) {
        if (one.name != upper) continue;
        if (content.size() % one.record != 0) return "Its last record is cut short.";
        if (content.size() > one.record * one.most) return "It has too many records.";
    }
    return {};
}

// What is wrong with a file by its name; of a name that says nothing, nothing.
std::string damageOf(
    const std::string& folder, const std::string& name, const platform::Bytes& content) {
    const std::string upper = core::upperCased(name);
    if (folder == "Data") {
        if (upper == "KVODATA.INI") return indexDamage(content);
        if (endsAs(name, 'd')) return runDamage(content);
        return endsAs(name, 'i') ? infoDamage(content) : std::string();
    }
    if (!folder.empty()) return {}; // copies of whatever was there
    return upper == "KVO.CFG" ? configDamage(content) : lengthDamage(upper, content);
}

class Checker {
public:
    Checker(const std::string& appFolder, const platform::Files& files)
        : m_appFolder(appFolder), m_files(files) {}

    FolderFindings check() {
        for (const char* folder : {"", "Data", "Backup"}) checkFiles(folder);
        checkList();
        return std::move(m_found);
    }

private:
    void checkFiles(const std::string& folder) {
        const std::string path =
            folder.empty() ? m_appFolder : core::joined(m_appFolder, folder, m_files);
        if (std::string reason = whyUnlisted(path, m_files); !reason.empty()) {
            m_found.damaged.push_back({folder, std::move(reason)});
            return;
        }
        for (const std::string& name : m_files.list(path)) {
            const std::string shown = folder.empty() ? name : core::joined(folder, name, m_files);
            if (core::isWriteLeftover(name)) {
                m_found.notes.push_back({shown, "A write that was cut off has left it behind."});
                continue;
            }
            const auto content = m_files.readOrReason(core::joined(path, name, m_files));
            ++m_found.files;
            std::string reason =
                content ? damageOf(folder, name, *content.content) : content.message;
            if (!reason.empty()) m_found.damaged.push_back({shown, std::move(reason)});
            if (folder == "Data" && endsAs(name, 'd')) m_runs[core::upperCased(name)] = name;
            if (folder == "Data" && endsAs(name, 'i') && content)
                noteFewTexts(shown, content.content->size());
        }
    }

    // The older program's notes may end early; a cut between two texts looks like that too.
    void noteFewTexts(const std::string& shown, std::size_t bytes) {
        const std::size_t texts = (bytes + infoRecord - 1) / infoRecord;
        if (texts == 0 || texts >= infoRecords) return;
        m_found.notes.push_back({shown,
            "It has " + std::to_string(texts) + " of " + std::to_string(infoRecords) + " texts."});
    }

    void checkList() {
        const std::string path = core::indexPath(m_appFolder, m_files);
        const auto content = m_files.readOrReason(path);
        if (!content) {
            if (!m_runs.empty() && content.failure == platform::FileFailure::notFound)
                m_found.notes.push_back({"Data", "There is no list of the runs."});
            return;
        }
        const std::string index = core::joined("Data", core::baseName(path), m_files);
        std::set<std::string> listed;
        for (const core::RunIndexEntry& row : core::runIndexOf(*content.content)) {
            const std::string run = dataFilePath(m_appFolder, row.FileName, m_files);
            const std::string name = core::baseName(run);
            listed.insert(core::upperCased(name));
            if (run.empty()) {
                m_found.damaged.push_back(
                    {index, "A line names no run file: " + platform::fromFile(row.Description)});
            } else if (!m_files.exists(run)) {
                m_found.damaged.push_back(
                    {core::joined("Data", name, m_files), "It is in the list, and not there."});
            }
        }
        for (const auto& [upper, run] : m_runs)
            if (!listed.contains(upper))
                m_found.notes.push_back(
                    {core::joined("Data", run, m_files), "It is not in the list."});
    }

    const std::string& m_appFolder;
    const platform::Files& m_files;
    FolderFindings m_found;
    std::map<std::string, std::string> m_runs; // names by their capitals
};

} // namespace

std::string whyUnlisted(const std::string& folder, const platform::Files& files) {
    if (files.folders(folder)) return {};
    const auto entered = files.enterable(folder);
    if (entered) return folder + "\ncannot be listed.";
    return entered.failure == platform::FileFailure::noSuchPath ? std::string() : entered.message;
}

std::string runDamage(const platform::Bytes& content) {
    const auto line = core::decodeHeaderLine(core::runRecord(content, 1));
    if (!line) return "Nothing stands in its first record.";
    const core::DataTypeFacts* type = core::dataTypeFacts(core::typeInFront(*line));
    const int rows = type == nullptr ? 0 : std::max(type->rows, type->importRows);
    if (rows == 0) return "No data type that Kvo knows stands in front of it.";
    const auto needed = static_cast<std::size_t>(rows) + recordsBeforeRows + blocksBehindRows;
    if (content.size() < needed * core::runRecordWidth) {
        return "It is cut short: " + std::to_string(content.size()) + " bytes of " +
               std::to_string(needed * core::runRecordWidth) + ".";
    }
    core::RunSample row;
    for (int i = 1; i <= rows; ++i) {
        const auto record = static_cast<std::size_t>(i) + recordsBeforeRows;
        if (core::decode(core::runRecord(content, record), row) && row.Index == i) continue;
        return "Sample " + std::to_string(i) + " bears the number " + std::to_string(row.Index) +
               ".";
    }
    return {};
}

std::string infoDamage(const platform::Bytes& content) {
    if (content.size() > infoRecord * infoRecords) return "It has too many records.";
    for (std::size_t start = 0; start < content.size(); start += infoRecord) {
        const std::size_t there = std::min(infoRecord, content.size() - start);
        if (there < 2) return "It is cut short.";
        const std::size_t length = content[start] + std::size_t{256} * content[start + 1];
        if (length > longestInfoText || length + 2 > there)
            return "Text " + std::to_string(start / infoRecord + 1) + " is cut short or damaged.";
    }
    return {};
}

FolderFindings checkFolder(const std::string& appFolder, const platform::Files& files) {
    return Checker(appFolder, files).check();
}

} // namespace kvo::library
