// Reading and writing a run of the longest type, and the index of 100,000 runs. Everything lies in
// memory where the system has a folder there, so that the ratios are those of the work and not of a
// disk that hides it.
#include "bench/bare_files.h"
#include "bench/parts.h"
#include "bench/run.h"
#include "bench/timing.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_records.h"
#include "platform/os/os_files.h"

#include <cstring>
#include <memory>

namespace kvo::bench {
namespace {

constexpr int rounds = 21;
constexpr int runType = 8; // the type with the most rows
constexpr int runRows = 2520;
constexpr std::size_t recordBytes = 84;
constexpr int indexEntries = 100'000;

void demand(const platform::WriteResult& result) {
    if (result) return;
    std::fprintf(stderr, "kvo_bench: %s\n", result.message.c_str());
    std::exit(2);
}

// The bytes of a file into memory of their own, as the least that a reader must do.
void bareCopy(const std::string& path, platform::Bytes& kept) {
    const platform::Bytes content = bareRead(path);
    kept.resize(content.size());
    std::memcpy(kept.data(), content.data(), content.size());
    keep(kept);
}

// What stands in the file's place: written beside it, synced, renamed.
void bareReplace(const std::string& path, const platform::Bytes& content) {
    bareWrite(path + ".new", content);
    if (std::rename((path + ".new").c_str(), path.c_str()) != 0) std::exit(2);
}

// A run read as its format suggests at first sight: a read a record, then that record's fields.
void readRunByRecord(const std::string& path, core::RunImage& run) {
    const platform::Bytes content = readByRecord(path, recordBytes);
    for (std::size_t i = 1; i <= runRows; ++i)
        core::decode(core::runRecord(content, i + 2), run.samples[static_cast<int>(i)]);
    keep(run);
}

std::unique_ptr<core::SharedState> stateIn(const ScratchFolder& folder) {
    auto state = std::make_unique<core::SharedState>();
    fillRun(*state, runType, runRows, true);
    state->AppFolder = folder.path();
    state->Run.path = folder.path() + "/Data/26111610.05d";
    return state;
}

std::vector<core::RunIndexEntry> manyEntries() {
    std::vector<core::RunIndexEntry> entries;
    entries.reserve(indexEntries);
    const char* const months[] = {
        "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    for (int i = 0; i < indexEntries; ++i) {
        const int day = 1 + i * 7 % 28;
        const std::string dayText = (day < 10 ? "0" : "") + std::to_string(day);
        entries.push_back({"26111610.05d", "Mon " + dayText + " " + months[i * 5 % 12] +
                                               " 2026 Run: " + std::to_string(i % 90 + 1) + " "});
    }
    return entries;
}

} // namespace

void measureFiles(Table& table) {
    const ScratchFolder folder;
    platform_os::OsFiles files;
    const auto state = stateIn(folder);
    demand(saveFresh(*state, files));
    const std::string path = state->Run.path;
    const std::string peerPath = folder.path() + "/peer";
    const platform::Bytes content = bareRead(path);
    platform::Bytes kept;

    const auto read = medianSeconds(
        {{[&] { keep(core::LoadRun(path, state->Run, files).result); }},
            {[&] { readRunByRecord(path, state->Run.image); }}, {[&] { bareCopy(path, kept); }}},
        rounds);
    table.add("read a run", "one read a record", read[0], read[1], Goal{0.1, "0.03"});
    table.add("read a run", "the bare copy", read[0], read[2], Goal{3, "1.5"});

    const auto write =
        medianSeconds({{[&] { demand(core::SaveRun(state->Run, folder.path(), files)); }},
                          {[&] { writeByRecord(peerPath, content, recordBytes); }},
                          {[&] { bareReplace(peerPath, content); }}},
            rounds);
    table.add("write a run", "one write a record", write[0], write[1], {});
    table.add("write a run", "the bare write", write[0], write[2], Goal{3.5, "3.9"});
}

void measureIndex(Table& table) {
    const ScratchFolder folder;
    platform_os::OsFiles files;
    const core::RunIndexEntry added{"26111610.05d", "Mon 16 Nov 2026 Run: 1 "};
    demand(files.makeFolder(folder.path() + "/Data"));
    const std::string path = core::indexPath(folder.path(), files);
    demand(core::writeRunIndex(folder.path(), manyEntries(), files));
    const platform::Bytes start = bareRead(path);
    const std::string peerPath = folder.path() + "/peer";
    bareWrite(peerPath, start);

    const auto seconds = medianSeconds(
        {{[&] {
             demand(core::AddRunToIndex(folder.path(), added, core::IndexOrder::sorted, files));
         }},
            {[&] { bareReplace(peerPath, bareRead(peerPath)); }}},
        7);
    table.add("index of 100,000, run added and sorted", "the bare read and write", seconds[0],
        seconds[1], Goal{3, "1.6"});
}

} // namespace kvo::bench
