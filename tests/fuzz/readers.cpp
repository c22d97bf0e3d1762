#include "readers.h"

#include "core/basic/numbers.h"
#include "core/config.h"
#include "core/data_types.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "core/run_times.h"
#include "library/text_run.h"
#include "tests/support/memory_files.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace kvo::fuzz {

using platform::Bytes;

namespace {

constexpr const char* runPath = "/kvo/Data/26111514.52d";

// Not assert: it must hold in a build without assertions too.
void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

// The key of an entry as it stands in the file, padded.
std::int32_t keyOf(const core::RunIndexEntry& entry) {
    return core::RunDateKey(core::padded(entry.Description, 160));
}

void checkLoaded(const core::OpenRun& run, const core::LoadOutcome& outcome) {
    require(run.DataType == outcome.DataType, "a type that the run does not have");
    require(run.SampleCount <= core::maxSamples, "more samples than rows");
    require(run.image.tail.TimeOffset >= 1, "a time offset below 1");
    require(run.path == runPath, "a run of another file");
}

bool isSameRun(const core::OpenRun& a, const core::OpenRun& b) {
    for (int i = 1; i <= core::maxSamples; ++i)
        if (!(a.image.samples[i] == b.image.samples[i])) return false;
    return a.headerLine == b.headerLine && a.DataType == b.DataType &&
           a.SampleCount == b.SampleCount && a.image.header == b.image.header &&
           a.image.setup == b.image.setup && a.image.analog == b.image.analog &&
           a.image.tail == b.image.tail;
}

void checkMainRun(const core::OpenRun& run, testing::MemoryFiles& files) {
    require(SaveRun(run, "/kvo", files).done, "a run that was loaded is not saved");
    const Bytes saved = files.read(runPath).value_or(Bytes{});
    require(SaveRun(run, "/kvo", files).done, "a run is not saved twice");
    require(files.read(runPath) == saved, "a second save differs");
}

} // namespace

void readConfig(Input file) {
    core::AppConfig config;
    const bool whole = core::decodeConfig(Bytes(file.begin(), file.end()), config);
    const Bytes encoded = core::encodeConfig(config);
    core::AppConfig again;
    require(core::decodeConfig(encoded, again), "what was written is not read");
    require(core::encodeConfig(again) == encoded, "what was read is not written");
    require(!whole || encoded.size() <= file.size(), "a whole record is longer than its file");
}

void readRun(Input file) {
    // Both are large; they are made once, and begin each time as the run before has left them.
    static const auto run = std::make_unique<core::OpenRun>();
    static const auto overlay = std::make_unique<core::OpenRun>();
    testing::MemoryFiles files;
    files.put(runPath, Bytes(file.begin(), file.end()));
    if (const auto outcome = LoadOverlayRun(runPath, *overlay, files)) {
        checkLoaded(*overlay, outcome);
    }
    const std::string lineBefore = run->headerLine;
    const auto outcome = LoadRun(runPath, *run, files);
    if (outcome) {
        checkLoaded(*run, outcome);
        checkMainRun(*run, files);
    } else {
        require(run->headerLine == lineBefore, "a file that was refused left its line");
    }
}

void readIndex(Input file) {
    const core::RunIndexEntry added{"26111514.52d", "Sun 15 Nov 2026 Run: 1"};
    testing::MemoryFiles files;
    const std::string path = core::indexPath("/kvo", files);
    files.put(path, Bytes(file.begin(), file.end()));
    const std::size_t before = core::readRunIndex(path, files).size();
    require(
        AddRunToIndex("/kvo", added, core::IndexOrder::sorted, files).done, "a run is not added");
    const auto entries = core::readRunIndex(path, files);
    require(entries.size() == before + 1, "records were lost or made");
    for (std::size_t i = 1; i < entries.size(); ++i) {
        require(keyOf(entries[i - 1]) >= keyOf(entries[i]), "the index is not sorted");
    }
    for (const auto& entry : entries) {
        (void)core::isSafeBaseName(entry.FileName);
        (void)core::suggestTitle(entry.Description, {2026, 11, 15, 0, 0, 0});
        (void)core::indexDescription(entry.Description);
    }
    if (!entries.empty()) require(writeRunIndex("/kvo", entries, files).done, "not rewritten");
}

void readInfo(Input file) {
    constexpr const char* infoPath = "/kvo/Data/26111514.52i";
    testing::MemoryFiles files;
    files.put(infoPath, Bytes(file.begin(), file.end()));
    (void)core::LoadRunTimes(infoPath, files);
    const core::RunInfo info = core::LoadRunInfo(infoPath, {}, files);
    require(SaveRunInfo("/kvo", infoPath, runPath, info, files).notesDone, "notes are not saved");
    const Bytes saved = files.read(infoPath).value_or(Bytes{});
    const core::RunInfo again = core::LoadRunInfo(infoPath, {}, files);
    require(SaveRunInfo("/kvo", infoPath, runPath, again, files).notesDone, "nor saved again");
    require(files.read(infoPath) == saved, "what was written is not read");
}

void readTimes(Input file) {
    testing::MemoryFiles files;
    files.put("/kvo/KvoTimes", Bytes(file.begin(), file.end()));
    const int count = core::LoadTimesTable("/kvo", files).RunTimesCount;
    require(count >= 1 && count <= 26, "a count that the table does not have");
    require(core::updateTimesTable(
                "/kvo", "25 x Date:Sun 15 Nov 2026 Run: 3#", {"1", "2", "3", "4", "5"}, files)
                .done,
        "a run is not added");
    require(core::LoadTimesTable("/kvo", files).RunTimesCount >= count, "records were lost");
}

void readText(Input file) {
    // Made once, and fresh again each time.
    static const auto fresh = std::make_unique<const core::OpenRun>();
    static const auto run = std::make_unique<core::OpenRun>();
    static const auto again = std::make_unique<core::OpenRun>();
    *run = *fresh;
    *again = *fresh;
    const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    const library::TextRunOutcome outcome = library::readTextRun(text, {}, *run);
    const library::TextRunOutcome second = library::readTextRun(text, {}, *again);
    require(outcome.known == second.known && outcome.corrupt == second.corrupt, "differs twice");
    require(isSameRun(*run, *again), "another run the second time");
    require(!outcome.stopped, "stopped by nobody");
    if (!outcome.known) return require(isSameRun(*run, *fresh), "a refused text left something");
    const core::DataTypeFacts* facts = core::dataTypeFacts(run->DataType);
    require(facts != nullptr && facts->importRows > 0, "a type that has no text");
    require(run->SampleCount >= 1 && run->SampleCount <= facts->importRows, "rows of no type");
    require(outcome.corrupt || run->SampleCount == facts->importRows, "a silent end");
    run->path = runPath;
    run->headerLine = library::importHeaderLine(run->headerLine, "Sun 15 Nov 2026 Run: 1");
    testing::MemoryFiles files;
    require(SaveImportedRun(*run, "/kvo", files).done, "a text run is not saved");
    const std::size_t records = static_cast<std::size_t>(facts->importRows) + 4;
    require(files.read(runPath)->size() == records * core::runRecordWidth, "a run of odd length");
}

Reader readerNamed(std::string_view name) {
    if (name == "config") return readConfig;
    if (name == "run") return readRun;
    if (name == "index") return readIndex;
    if (name == "info") return readInfo;
    if (name == "times") return readTimes;
    if (name == "text") return readText;
    return nullptr;
}

} // namespace kvo::fuzz
