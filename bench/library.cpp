// What comes and goes by the hundred: an import of text runs, a copy of runs to another disk, and
// the time graph. Files are measured where they would lie, with the disk's own time, since each is
// synced before the next: the peers read, write and sync the same bytes and do nothing else.
#include "bench/bare_files.h"
#include "bench/parts.h"
#include "bench/program.h"
#include "bench/timing.h"
#include "core/run_file.h"
#include "core/run_times.h"
#include "library/copy_job.h"
#include "library/forms/time_graph.h"
#include "library/import.h"
#include "platform/qt/form_kit.h"

#include <QApplication>

#include <cstdio>
#include <filesystem>

namespace kvo::bench {
namespace {

namespace fs = std::filesystem;
using namespace platform_qt;

constexpr int fileRounds = 5;
constexpr int files = 100;
constexpr int textType = 25;
constexpr int textRows = 1213;
constexpr int timedRuns = 25;

// A folder on the disk, not in memory; it goes with the object.
class DiskFolder {
public:
    DiskFolder() {
        std::error_code error;
        m_path = (fs::temp_directory_path(error) / "kvo-bench-XXXXXX").string();
        if (!mkdtemp(m_path.data())) std::abort();
    }
    ~DiskFolder() {
        std::error_code error;
        fs::remove_all(m_path, error);
    }
    DiskFolder(const DiskFolder&) = delete;
    DiskFolder& operator=(const DiskFolder&) = delete;
    std::string operator/(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

void makeAnew(const std::string& folder) {
    fs::remove_all(folder);
    fs::create_directories(folder);
}

// "file.000" to "file.099": what an import makes their names from.
std::string numbered(const char* stem, int i) {
    char name[32];
    std::snprintf(name, sizeof name, "%s%03d", stem, i);
    return name;
}

platform::Bytes textRun() {
    std::string text = std::to_string(textType) +
                       " older program\r\n"
                       "4 2 1 13 8249 53 49 8488 11628 2.11 3327 18.15 6885 17.21 4380 4.18 \r\n";
    for (int i = 1; i <= textRows; ++i) {
        text += std::to_string(i) + " 6555 9236 440 7380 29 ";
        for (int k = 1; k <= 17; ++k) text += std::to_string((i * k) % 256) + ' ';
        text += "\r\n";
    }
    text += "2.7\r\n1.9\r\n1.5\r\n1.2\r\n1\r\n";
    for (int n = 1; n <= 8; ++n) text += "Name\r\n";
    for (int n = 1; n <= 8; ++n) text += "1 2.5 -3 \r\n";
    return {text.begin(), text.end()};
}

// Says yes to every date and takes every number as it is offered.
class AgreeingDialogs : public platform::UnansweredDialogs {
public:
    platform::Reply messageBox(const std::string&, int, const std::string&) override {
        return platform::Reply::yes;
    }
    std::string inputBox(
        const std::string&, const std::string&, const std::string& preset) override {
        return preset == "000" ? "100" : preset; // a run's number is above 0
    }
};

class NoImportView : public library::ImportView {
public:
    void showFile(const std::string&, int, int) override {}
    void setProgress(int, int) override {}
    void clearProgress() override {}
    void showRuns() override {}
};

void syncedReplace(const std::string& path, const platform::Bytes& content) {
    bareWrite(path + ".new", content);
    if (std::rename((path + ".new").c_str(), path.c_str()) != 0) std::exit(2);
    syncFolder(fs::path(path).parent_path().string());
}

void measureImport(Table& table) {
    const DiskFolder disk;
    platform_os::OsFiles system;
    const std::string from = disk / "older";
    const std::string app = disk / "app";
    const std::string peer = disk / "peer";
    makeAnew(from);
    std::vector<std::string> names;
    for (int i = 0; i < files; ++i) {
        names.push_back(numbered("RUN.", i));
        bareWrite(from + "/" + names.back(), textRun());
    }
    AgreeingDialogs dialogs;
    NoImportView view;
    library::RunList runs;
    core::AppConfig config;
    const auto import = [&] {
        library::Import course({config, app, runs}, view, dialogs, system);
        if (course.Butten_Import(library::ImportMode::dos, from, names).imported == files) return;
        std::fprintf(stderr, "kvo_bench: not every text run was imported\n");
        std::exit(2);
    };
    makeAnew(app + "/Data");
    import();
    const auto made = fs::directory_iterator(app + "/Data");
    platform::Bytes runFile;
    for (const auto& entry : made)
        if (entry.path().extension().string().ends_with("d"))
            runFile = bareRead(entry.path().string());
    const auto bare = [&] {
        for (const std::string& name : names) {
            keep(bareRead(from + "/" + name));
            syncedReplace(peer + "/" + name, runFile);
        }
    };
    const auto seconds = medianWallSeconds(
        {{import, [&] { makeAnew(app + "/Data"); }}, {bare, [&] { makeAnew(peer); }}}, fileRounds);
    table.add("import of 100 text runs", "reading and writing the bytes", seconds[0], seconds[1],
        Goal{3, "-"});
}

class NoCopyView : public library::CopyView {
public:
    void showDestination(const std::string&) override {}
    void moveTo(std::size_t) override {}
    void lockControls(bool) override {}
    void showProgress(const std::string&) override {}
    void hideProgress() override {}
    void deselect(std::size_t) override {}
};

void measureCopy(Table& table) {
    const DiskFolder disk;
    platform_os::OsFiles system;
    core::SharedState& state = core::state();
    state.AppFolder = disk / "app";
    makeAnew(state.AppFolder + "/Data");
    std::vector<core::RunIndexEntry> runs;
    std::vector<std::size_t> all;
    for (int i = 0; i < files; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "26111610.%02dd", i);
        state.Run.path = state.AppFolder + "/Data/" + name;
        demand(saveFresh(state, system));
        runs.push_back({name, core::indexDescription(benchRunText)});
        all.push_back(static_cast<std::size_t>(i));
    }
    const std::string target = disk / "target";
    const std::string peer = disk / "peer";
    AgreeingDialogs dialogs;
    NoCopyView view;
    const auto copy = [&] {
        library::CopyJob job(state.AppFolder, system, dialogs, view);
        if (job.copy(runs, all, target) == files) return;
        std::fprintf(stderr, "kvo_bench: not every run was copied\n");
        std::exit(2);
    };
    const auto bare = [&] {
        for (const core::RunIndexEntry& run : runs)
            syncedReplace(
                peer + "/" + run.FileName, bareRead(state.AppFolder + "/Data/" + run.FileName));
    };
    const auto seconds = medianWallSeconds(
        {{copy, [&] { makeAnew(target); }}, {bare, [&] { makeAnew(peer); }}}, fileRounds);
    table.add(
        "copy of 100 runs", "reading, writing and syncing", seconds[0], seconds[1], Goal{1.3, "-"});
}

// 25 runs with all their times, from the first line to the painted window.
void measureTimeGraph(Table& table) {
    Program program;
    for (int i = 1; i <= timedRuns; ++i) {
        const std::string header = "3235.0 Date:Mon 16 Nov 2026 Run: " + std::to_string(i) + " #";
        const core::TypedTimes times{"1.1" + std::to_string(i % 10), "3.0" + std::to_string(i % 10),
            "5.0", "6.4", "7." + std::to_string(10 + i)};
        demand(core::updateTimesTable(program.folder(), header, times, program.files()));
    }
    auto& graph = form<forms::TimeGraph>();
    graph.resize(1366, 700);
    graph.showTable(true);
    QApplication::processEvents();
    const auto draw = [&] {
        graph.showTable(true); // an open one reads its times anew
        graph.repaint();
        QApplication::processEvents();
    };
    const auto seconds = medianSeconds({{draw}}, 11);
    table.add("time graph of 25 runs, file to picture", "a frame at 60 a second", seconds[0],
        frameSeconds, Goal{1, "-"});
}

} // namespace

void measureLibrary(Table& table) {
    measureImport(table);
    measureCopy(table);
    measureTimeGraph(table);
}

} // namespace kvo::bench
