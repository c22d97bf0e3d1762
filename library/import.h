#pragma once
// The import of runs from elsewhere: files of this program from another folder or disk, and text
// files of the older program. The files of a batch are asked about one after another. The index is
// written when the batch ends, whatever ends it, and on the way after every 25th run and behind a
// run for which the user took a while, so that a batch that is killed leaves few runs out of it.
#include "core/config_record.h"
#include "core/open_run.h"
#include "core/run_index.h"
#include "library/run_list.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kvo::library {

enum class ImportMode { windows, dos };

// What the course asks of its form.
class ImportView {
public:
    virtual ~ImportView() = default;
    // The file in work, counted from 1, and how many there are.
    virtual void showFile(const std::string& name, int number, int files) = 0;
    // How far that file is. Lets events run: Cancel may be pressed in it.
    virtual void setProgress(int row, int rows) = 0;
    virtual void clearProgress() = 0;
    // The list of runs was read anew.
    virtual void showRuns() = 0;
};

// What an import works on. All of it must outlive the import.
struct ImportInput {
    const core::AppConfig& Config;
    const std::string& AppFolder;
    RunList& runs;
    // Says when runs that are not in the index yet have waited long enough.
    std::function<std::chrono::steady_clock::time_point()> now = &std::chrono::steady_clock::now;
};

struct ImportedBatch {
    int imported = 0;
    int files = 0; // that were selected
    bool cancelled = false;
    std::vector<std::string> written; // paths of the run files, in their order
};

class Import {
public:
    Import(const ImportInput& input, ImportView& view, platform::Dialogs& dialogs,
        platform::Files& files);

    // Fills the list of known runs from the index.
    void Data_File();
    // Imports these files of a folder. One that fails is named, and the others go on. A call that
    // comes while a batch is at work does nothing.
    ImportedBatch Butten_Import(
        ImportMode mode, const std::string& folder, const std::vector<std::string>& names);
    // Ends the batch, also from inside a file: nothing of that file is kept.
    void Cancel() { m_cancelled = true; }
    bool running() const { return m_running; }
    // The form closes: runs that the index could not take are tried once more.
    void close() { addRunsToIndex(); }

private:
    // A file on its way in.
    struct Source {
        std::string path;
        std::string name;
        bool last = false; // none comes behind it
    };
    struct Target {
        std::string path;
        std::string name;
        std::string dateText;
    };

    void importFiles(ImportMode mode, const std::string& folder,
        const std::vector<std::string>& names, ImportedBatch& batch);
    bool importWithinMemory(ImportMode mode, const Source& source);
    bool importFile(ImportMode mode, const Source& source);
    std::optional<platform::DateTime> askDate(const Source& source);
    std::optional<platform::DateTime> askCorrectDate(const platform::DateTime& created);
    bool mayUse(const Target& target);
    std::optional<platform::Bytes> read(const Source& source);
    bool WinImport(const Source& source, const Target& target);
    bool copyInfo(const Source& source, const Target& target);
    bool DosImport(const Source& source, const Target& target);
    bool SaveImport(const Source& source, const Target& target, core::OpenRun& run);
    std::optional<std::string> askRunNumber(const Source& source, const Target& target);
    platform::WriteResult writeIndex();
    void addRunsWhenDue();
    void addRunsToIndex();
    bool makeDataFolder(const Source& source);
    void failed(const Source& source, const std::string& reason);

    ImportInput m_in;
    ImportView& m_view;
    platform::Dialogs& m_dialogs;
    platform::Files& m_files;
    std::unordered_set<std::string> m_known;          // descriptions of Data_Files_List
    std::vector<core::RunIndexEntry> m_fresh;         // imported, and not in the index yet
    std::vector<std::string> m_written;               // by the batch at hand
    std::chrono::steady_clock::time_point m_listedAt; // the index was written, or the batch began
    bool m_running = false;
    bool m_cancelled = false;
};

// A date as the user writes it: day, month and year with "-", "/", "." or a blank between them, the
// month as a number or by the first letters of its English name, the year with four digits or with
// two (1980 to 2079). Nothing where there is no such day.
std::optional<platform::DateTime> typedDate(std::string_view text);

// What the index says of an imported file of this program: its header line behind the first ":" up
// to the "#".
std::string descriptionOfRunFile(std::string_view headerLine);

} // namespace kvo::library
