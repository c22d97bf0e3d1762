// Every byte of five run files with every value, and every length of them, through what opens a
// run: as main run, as overlay. The bytes of the settings, the first rows, the last one and the
// blocks change one by one; those of all rows besides, a column of all rows at a time, each row by
// another value, so that every byte of the file has had every value. The count is the number of
// values a byte is given; the short form takes few of them, and few of the lengths.
#include "core/data_types.h"
#include "core/default_config.h"
#include "core/run_file.h"
#include "proof.h"
#include "tests/fuzz/lookers.h"
#include "tests/support/memory_files.h"
#include "tools/logger_simulator/model_run.h"
#include "tools/logger_simulator/run_model.h"

#include <array>
#include <memory>

using namespace kvo;

namespace {

constexpr std::size_t width = 84;     // of a record
constexpr std::size_t shownRows = 36; // whose bytes change one by one; all rows are read alike

platform::Bytes runFile(int type) {
    const core::DataTypeFacts* facts = core::dataTypeFacts(type);
    auto run = std::make_unique<core::OpenRun>();
    run->path = "/kvo/Data/26111514.52d";
    run->DataType = static_cast<std::uint8_t>(type);
    run->SampleCount = static_cast<std::uint16_t>(facts->rows);
    simulator::fillRun(run->image, type, facts->rows, facts->timeOffset, 1U);
    testing::MemoryFiles files;
    const core::LoggerIdentity logger;
    const std::string text = " Date:Sun 15 Nov 2026 Run: 1#";
    const core::AppConfig config = core::defaultConfig();
    if (!core::SaveRun(*run, {logger, text, config}, "/kvo", files)) std::exit(2);
    return *files.read(run->path);
}

void open(const platform::Bytes& file) {
    fuzz::lookAtRun(file);
    fuzz::lookAtOverlay(file);
}

// The places of a byte that are worth trying one by one: record by record, all that the reader
// looks at but the rows behind the first ones, which it takes as it takes those.
bool isTried(std::size_t at, std::size_t size) {
    constexpr std::size_t blocks = 4 * width; // the last row among them
    return at < (2 + shownRows) * width || at + blocks >= size;
}

// The same byte of all rows at once. Gives how many files that were.
std::int64_t sweepColumns(platform::Bytes file, int rows, int values) {
    const platform::Bytes before = file;
    std::int64_t cases = 0;
    for (std::size_t column = 0; column < width; ++column)
        for (int value = 0; value < values; ++value, ++cases) {
            for (int row = 0; row < rows; ++row) {
                const std::size_t at = (2 + static_cast<std::size_t>(row)) * width + column;
                file[at] = static_cast<std::uint8_t>(before[at] + value + row);
            }
            open(file);
            for (int row = 0; row < rows; ++row) {
                const std::size_t at = (2 + static_cast<std::size_t>(row)) * width + column;
                file[at] = before[at];
            }
        }
    return cases;
}

// One byte after another, of those that are tried alone.
std::int64_t sweepBytes(const platform::Bytes& full, int values, bool whole) {
    // The head alone, so that a case is not the reading of all rows; then the blocks in place.
    platform::Bytes head(full.begin(), full.begin() + (2 + shownRows) * width);
    platform::Bytes behind = full;
    std::int64_t cases = 0;
    for (std::size_t at = 0; at < full.size(); at += whole ? 1 : 5) {
        if (!isTried(at, full.size())) continue;
        platform::Bytes& file = at < head.size() ? head : behind;
        const std::uint8_t before = file[at];
        for (int i = 0; i < values; ++i, ++cases) {
            file[at] = static_cast<std::uint8_t>(before + 1 + i * (whole ? 1 : 85));
            open(file);
        }
        file[at] = before;
    }
    return cases;
}

} // namespace

int main(int argc, char* argv[]) {
    const faults::Options options = faults::optionsOf(argc, argv);
    faults::Proof proof(options);
    const bool whole = options.count > 0;
    const int values = static_cast<int>(std::min<std::int64_t>(whole ? options.count : 3, 256));
    std::int64_t cases = 0;
    for (const int type : {8, 17, 20, 25, 43}) {
        const platform::Bytes full = runFile(type);
        cases += sweepBytes(full, values, whole);
        cases += sweepColumns(full, core::dataTypeFacts(type)->rows, whole ? values : 1);
        for (std::size_t length = 0; length <= full.size(); length += whole ? 1 : 199, ++cases)
            open(platform::Bytes(full.begin(), full.begin() + static_cast<std::ptrdiff_t>(length)));
        auto run = std::make_unique<core::OpenRun>();
        testing::MemoryFiles files;
        files.put("/kvo/Data/26111514.52d", full);
        proof.check(core::LoadRun("/kvo/Data/26111514.52d", *run, files).result ==
                            core::LoadResult::loaded &&
                        run->DataType == type,
            "the whole file of type " + std::to_string(type) + " is not read");
    }
    return proof.end(
        "every byte x " + std::to_string(values) + " values and every length of 5 run files", cases,
        "files", "none ends a reader");
}
