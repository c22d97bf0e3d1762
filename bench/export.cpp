// Taking runs along: a table of a run, and the list of ten thousand by the program without a
// window. Files are measured where they would lie, with the disk's own time.
#include "bench/bare_files.h"
#include "bench/parts.h"
#include "bench/run.h"
#include "bench/timing.h"
#include "channels/run_view.h"
#include "core/run_index.h"
#include "graph/export_csv.h"
#include "platform/os/os_files.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace kvo::bench {
namespace {

namespace fs = std::filesystem;

constexpr int exportRounds = 21;
constexpr int listedRuns = 10'000;
constexpr int longestType = 8;
constexpr int longestRows = 2520;

class ExportFolder {
public:
    ExportFolder() {
        m_path = (fs::temp_directory_path() / "kvo-bench-XXXXXX").string();
        if (mkdtemp(m_path.data()) == nullptr) std::abort();
    }
    ~ExportFolder() {
        std::error_code error;
        fs::remove_all(m_path, error);
    }
    ExportFolder(const ExportFolder&) = delete;
    ExportFolder& operator=(const ExportFolder&) = delete;
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

void measureCsv(Table& table) {
    const ExportFolder folder;
    platform_os::OsFiles files;
    const auto state = std::make_unique<core::SharedState>();
    fillRun(*state, longestType, longestRows, true);
    const channels::RunView run = channels::viewOfRun(state->Run);
    const auto make = [&] { return graph::runAsCsv(run, state->Config, graph::wholeRun(run), {}); };
    const platform::Bytes content = make();
    const auto write = [&](const char* name, const platform::Bytes& bytes) {
        if (!files.write(folder.path() + name, bytes)) std::exit(2);
    };
    const auto seconds = medianWallSeconds(
        {{[&] { write("/ours.csv", make()); }}, {[&] { write("/peer.csv", content); }}},
        exportRounds);
    table.add("CSV of a run", "writing its bytes", seconds[0], seconds[1], Goal{3, "-"});
}

// The bytes that a file has in front, as the least that a list of runs by their files would read.
void firstRecord(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    unsigned char record[84];
    if (file == nullptr || std::fread(record, 1, sizeof record, file) != sizeof record)
        std::exit(2);
    keep(record);
    std::fclose(file);
}

void measureList(Table& table) {
    const ExportFolder folder;
    platform_os::OsFiles files;
    fs::create_directory(folder.path() + "/Data");
    std::vector<core::RunIndexEntry> runs;
    std::vector<std::string> paths;
    for (int i = 0; i < listedRuns; ++i) {
        char name[16];
        std::snprintf(name, sizeof name, "2611%04d.%02dd", i / 100, i % 100);
        runs.push_back({name, "Mon 16 Nov 2026 Run: " + std::to_string(i + 1)});
        paths.push_back(folder.path() + "/Data/" + name);
        std::FILE* file = std::fopen(paths.back().c_str(), "wb");
        const platform::Bytes record(84, ' ');
        if (file == nullptr || std::fwrite(record.data(), 1, 84, file) != 84) std::exit(2);
        std::fclose(file);
    }
    if (!core::writeRunIndex(folder.path(), runs, files)) std::exit(2);
    const std::string command =
        std::string(KVO_CLI_PROGRAM) + " list " + folder.path() + " >/dev/null";
    const auto seconds = medianWallSeconds({{[&] {
                                                if (std::system(command.c_str()) != 0) std::exit(2);
                                            }},
                                               {[&] {
                                                   for (const auto& path : paths) firstRecord(path);
                                               }}},
        exportRounds);
    table.add("kvo-cli list of 10,000 runs", "reading their first records", seconds[0], seconds[1],
        Goal{2, "-"});
}

} // namespace

void measureExport(Table& table) {
    measureCsv(table);
    measureList(table);
}

} // namespace kvo::bench
