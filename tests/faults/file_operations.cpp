// The table of all that the program does to files.
#include "core/analog_tables.h"
#include "core/backup.h"
#include "core/config.h"
#include "core/data_types.h"
#include "core/default_config.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/run_times.h"
#include "core/tidy_folder.h"
#include "core/vehicle_setup.h"
#include "library/chooser_list.h"
#include "library/copy_job.h"
#include "library/import.h"
#include "library/mail_files.h"
#include "library/run_list.h"
#include "library/unlisted_runs.h"
#include "tests/faults/file_house.h"
#include "tests/support/memory_files.h"

namespace kvo::faults {

namespace {

using core::RunIndexEntry;

constexpr const char* firstRun = "26111414.00d";
constexpr const char* secondRun = "26111514.10d";
constexpr const char* freshRun = "26111514.52d";
constexpr const char* importedRun = "26111400.14d"; // of the text
constexpr core::LoggerIdentity logger{3, 5, 2, 1225};

std::string descriptionOf(const std::string& run) {
    return run == firstRun ? "Sat 14 Nov 2026 Run: 1 First" : "Sun 15 Nov 2026 Run: 1 Second";
}

std::vector<RunIndexEntry> listedRuns() {
    return {{firstRun, descriptionOf(firstRun)}, {secondRun, descriptionOf(secondRun)},
        {"26101010.10d", "Sat 10 Oct 2026 Run: 4 On another disk"}};
}

core::RunInfo notesOf(const std::string& notes, const std::string& time) {
    core::RunInfo info;
    info.Info_Text = notes;
    info.Text_60FootTime = "1.10";
    info.Text_ET = time;
    info.setup[1] = {"Clutch", "12"};
    return info;
}

core::VehicleSetup setupOf(const std::string& value) {
    core::VehicleSetup setup;
    setup[1] = {"Clutch", value};
    return setup;
}

std::string importText() {
    std::string text = "23 VRN old program\r\n4 2 1 13 8249 53 49 8488 11628 2.11 3327 18.15 6885 "
                       "17.21 4380 4.18 \r\n";
    for (int i = 1; i <= 1213; ++i)
        text += std::to_string(i) + " 6555 9236 440 7380 29 101 102 103 104 105 106 107 77 \r\n";
    text += "2.7\r\n1.9\r\n1.5\r\n1.2\r\n1\r\n";
    for (int n = 1; n <= 8; ++n) text += "Name\r\n";
    for (int n = 1; n <= 8; ++n) text += "1 2.5 -3 \r\n";
    return text;
}

// --- The operations

bool saveFresh(Work& work) {
    static const auto run = runOf(7);
    const std::string text = core::runText("2 Final", platform::DateTime{2026, 11, 15, 14, 52, 0});
    run->path = work.data(freshRun);
    if (!core::SaveRun(*run, {logger, text, configOf("Ann")}, work.app(), work.files)) return false;
    return core::AddRunToIndex(
        work.app(), core::indexEntryOf(run->path, text), core::IndexOrder::asItIs, work.files)
        .done;
}

bool saveChanged(Work& work) {
    const auto run = runOf(9);
    run->path = work.data(firstRun);
    run->headerLine = "25 VRN3 Ver 1.4 128k Serial No 1225  Date:" + descriptionOf(firstRun) + "#";
    return core::SaveRun(*run, work.app(), work.files).done;
}

bool saveNotes(Work& work, const char* time) {
    const std::string run = work.data(firstRun);
    return core::SaveRunInfo(
        work.app(), core::infoFilePath(run), run, notesOf("New notes", time), work.files)
        .done;
}

bool addRows(Work& work, core::IndexOrder order) {
    const std::vector<RunIndexEntry> rows{
        {"26111300.01d", "Fri 13 Nov 2026 Run: 1"}, {"26111600.02d", "Mon 16 Nov 2026 Run: 2"}};
    return core::AddRunsToIndex(work.app(), rows, order, work.files).done;
}

bool deleteRun(Work& work) {
    auto rows = listedRuns();
    return library::DeleteFile(work.app(), rows, 0, work.files).done;
}

bool changeDescription(Work& work) {
    auto rows = listedRuns();
    core::OpenRun none;
    return library::editDescription(work.app(), rows, 1, "5 Changed", none, work.files).done;
}

bool saveTable(Work& work) {
    core::AnalogTables tables;
    for (auto& entry : tables[1]) entry = 12.5;
    return core::SaveAnalogTable(work.app(), core::analogTableName(1), 1, tables, work.files).done;
}

bool importRuns(Work& work, library::ImportMode mode, const std::vector<std::string>& names) {
    const core::AppConfig config = configOf("Ann");
    const std::string app = work.app();
    library::RunList runs;
    NoView view;
    library::Import import(
        {config, app, runs, [] { return std::chrono::steady_clock::time_point(); }}, view,
        work.dialogs, work.files);
    import.Data_File();
    (void)import.Butten_Import(mode, work.root + "/Elsewhere", names);
    return true; // boxes tell
}

bool copyRuns(Work& work) {
    NoView view;
    library::CopyJob job(work.app(), work.files, work.dialogs, view);
    (void)job.copy(listedRuns(), {0, 1}, work.root + "/Target");
    return true;
}

class NoMail : public platform::Mail {
public:
    explicit NoMail(std::string folder) : m_folder(std::move(folder)) {}
    platform::MailResult compose(const platform::MailDraft&, const RefusedLater&) override {
        return {};
    }
    std::string folderForCopies() override { return m_folder; }

private:
    std::string m_folder;
};

bool mailRuns(Work& work) {
    NoMail mail(work.root + "/Mail");
    auto rows = listedRuns();
    rows.pop_back();
    const auto sent =
        library::SendFile({work.app(), rows, "Look", {"1.0.0", ""}}, work.files, mail, {});
    return bool(sent.result);
}

bool openRun(Work& work, const char* name) {
    const auto run = std::make_unique<core::OpenRun>();
    const auto outcome = core::LoadRun(work.data(name), *run, work.files);
    work.shown = run->headerLine + std::to_string(run->image.samples[1000].EngineRpm);
    return bool(outcome);
}

bool openOverlay(Work& work) {
    const auto run = std::make_unique<core::OpenRun>();
    const auto outcome = core::LoadOverlayRun(work.data(secondRun), *run, work.files);
    work.shown = run->headerLine + std::to_string(run->image.samples[1000].EngineRpm);
    return bool(outcome);
}

bool showList(Work& work) {
    library::RunList runs;
    const std::string unread = runs.read(work.app(), work.files);
    for (const RunIndexEntry& row : runs.rows()) work.shown += row.FileName + row.Description;
    return unread.empty();
}

bool showNotes(Work& work) {
    std::string unread;
    const auto setup = core::LoadVehicleSetup(work.app(), work.files, &unread);
    bool all = unread.empty();
    const auto info =
        core::LoadRunInfo(core::infoFilePath(work.data(firstRun)), setup, work.files, &unread);
    work.shown = info.Info_Text + setup[1].Value;
    return all && unread.empty();
}

bool showTimes(Work& work) {
    const auto table = core::LoadTimesTable(work.app(), work.files);
    work.shown = std::to_string(table.RunTimesCount) + table.entries[1].Label;
    return table.unread.empty();
}

bool loadSettings(Work& work) {
    core::AppConfig config;
    core::AnalogTables tables;
    const bool whole = core::LoadConfig(work.app(), config, work.files).whole();
    const auto unread =
        core::LoadAnalogTable(work.app(), core::analogTableName(1), 1, tables, work.files);
    work.shown = config.Driver + std::to_string(tables[1][7]);
    return whole && unread.empty();
}

bool printToFile(Work& work) {
    return work.files.write(work.root + "/Target/graph.pdf", platform::Bytes(60000, 'p')).done;
}

bool offerRuns(Work& work) {
    library::offerUnlistedRuns(work.app(), work.files, work.dialogs);
    return true;
}

bool keepSettings(Work& work) {
    return core::keepText(work.app(), "Logger 1225 2026-11-15", "Serial 1225\n", work.files).done;
}

bool tidy(Work& work) {
    core::tidyFolder(work.app(), {2099, 1, 1, 0, 0, 0}, work.files);
    return true;
}

// --- Starts

void without(Disk& disk, const std::string& prefix) {
    std::erase_if(disk, [&](const auto& file) { return file.first.starts_with(prefix); });
}

// A longer run in the place of the imported one, and in the list.
void asImported(Disk& disk) {
    platform::Bytes& run = disk[std::string("App/Data/") + importedRun];
    run = disk[std::string("App/Data/") + firstRun];
    run.resize(run.size() + 10000);
    platform::Bytes& index = disk["App/Data/KvoData.Ini"];
    std::string row = importedRun;
    row.resize(80, ' ');
    row += "Sat 14 Nov 2026 Run: 9";
    row.resize(240, ' ');
    index.insert(index.end(), row.begin(), row.end());
}

void asFresh(Disk& disk) {
    disk[std::string("App/Data/") + freshRun] = disk[std::string("App/Data/") + firstRun];
}

} // namespace

const std::vector<Operation>& operations() {
    using core::IndexOrder;
    using library::ImportMode;
    static const char* const noWord = "the start clears away what nobody will miss";
    static const std::vector<Operation> all{
        {"save a download", saveFresh},
        {"save the first download", saveFresh,
            [](Disk& disk) { without(disk, "App/Data/"), without(disk, "App/Backup/"); }},
        {"save a download of the same minute", saveFresh, asFresh},
        {"save a changed run", saveChanged, [](Disk& disk) { without(disk, "App/Backup/"); }},
        {"save notes and times", [](Work& work) { return saveNotes(work, "7.80"); }},
        {"save notes", [](Work& work) { return saveNotes(work, ""); }},
        {"add rows, sorted", [](Work& work) { return addRows(work, IndexOrder::sorted); }},
        {"add rows", [](Work& work) { return addRows(work, IndexOrder::asItIs); }},
        {"take a row off",
            [](Work& work) {
                return core::removeFromIndex(work.app(), listedRuns()[1], work.files).done;
            }},
        {"describe a row",
            [](Work& work) {
                return core::describeInIndex(work.app(), listedRuns()[1], "Run: 6", work.files)
                    .done;
            }},
        {"delete a run", deleteRun, [](Disk& disk) { without(disk, "App/Backup/"); }},
        {"change a description", changeDescription},
        {"save the setup",
            [](Work& work) {
                return core::SaveConfig(work.app(), configOf("Eve"), work.files).done;
            }},
        {"save a table", saveTable},
        {"save the vehicle's setup",
            [](Work& work) {
                return core::SaveVehicleSetup(work.app(), setupOf("14"), work.files).done;
            }},
        {"import runs",
            [](Work& work) {
                return importRuns(work, ImportMode::windows, {"25010109.12d", "25010109.13d"});
            }},
        {"import a text over a run",
            [](Work& work) { return importRuns(work, ImportMode::dos, {"run.014"}); }, asImported},
        {"copy runs", copyRuns},
        {"mail runs", mailRuns},
        {"print to a file", printToFile},
        {"keep a logger's settings", keepSettings},
        {"clear the folder", tidy, {}, noWord},
        {"open a run", [](Work& work) { return openRun(work, secondRun); }},
        {"open a run with notes", [](Work& work) { return openRun(work, firstRun); }},
        {"open an overlay", openOverlay},
        {"show the list", showList},
        {"show the list of an empty folder", showList,
            [](Disk& disk) { without(disk, "App/Data/"); }},
        {"show notes", showNotes},
        {"show times", showTimes},
        {"load the settings", loadSettings},
        {"offer unlisted runs", offerRuns, asFresh},
    };
    return all;
}

core::AppConfig configOf(const std::string& driver) {
    core::AppConfig config = core::defaultConfig();
    config.Driver = driver;
    return config;
}

std::unique_ptr<core::OpenRun> runOf(int first) {
    auto run = std::make_unique<core::OpenRun>();
    run->DataType = 25;
    run->SampleCount = 1213;
    for (int i = 1; i <= 1213; ++i) {
        run->image.samples[i].Index = static_cast<std::int16_t>(i);
        run->image.samples[i].EngineRpm = static_cast<std::int16_t>(first * 1000 + i);
    }
    return run;
}

const Disk& usualDisk() {
    static const Disk made = [] {
        testing::MemoryFiles files;
        Work work{files, "", {}, {}};
        bool done = true;
        int first = 0;
        for (const char* name : {firstRun, secondRun, "25010109.12d", "25010109.13d"}) {
            const auto run = runOf(++first);
            const bool own = first <= 2;
            run->path = own ? work.data(name) : std::string("/Elsewhere/") + name;
            run->headerLine = "25 VRN3 Ver 1.4 128k Serial No 1225  Date:" +
                              (own ? descriptionOf(name) : "Wed 01 Jan 2025 Run: 4") + "#";
            done = done && core::SaveRun(*run, work.app(), files);
        }
        done = done && core::SaveRunInfo(work.app(), core::infoFilePath(work.data(firstRun)),
                           work.data(firstRun), notesOf("Old notes", "7.90"), files);
        done = done && core::writeRunIndex(work.app(), listedRuns(), files);
        done = done && core::SaveConfig(work.app(), configOf("Bob"), files);
        done = done && core::SaveVehicleSetup(work.app(), setupOf("12"), files);
        files.put("/App/Analog1.Dat", platform::Bytes(2048, 1));
        files.put("/App/Backup/Kvo.Cfg.0001", {1, 2, 3});
        files.put("/App/Backup/Kvo.Cfg.0002", {1, 2, 4});
        files.put("/App/.Kvo.Cfg.12-0.new", {1});
        files.put("/Elsewhere/25010109.12i", platform::Bytes(400, 0));
        const std::string text = importText();
        files.put("/Elsewhere/run.014", platform::Bytes(text.begin(), text.end()));
        Disk disk;
        for (const char* folder :
            {"App/", "App/Data/", "App/Backup/", "Elsewhere/", "Target/", "Mail/"}) {
            disk[folder];
            const std::string at = std::string("/") + folder;
            for (const std::string& name : files.list(at.substr(0, at.size() - 1)))
                disk[folder + name] = *files.read(at + name);
        }
        if (!done) disk.clear();
        return disk;
    }();
    return made;
}

Disk startOf(const Operation& operation) {
    Disk disk = usualDisk();
    if (operation.prepare) operation.prepare(disk);
    return disk;
}

} // namespace kvo::faults
