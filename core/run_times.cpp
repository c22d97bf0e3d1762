#include "core/run_times.h"

#include "core/backup.h"
#include "core/basic/byte_reader.h"
#include "core/basic/byte_writer.h"
#include "core/basic/numbers.h"
#include "core/own_file.h"
#include "core/paths.h"
#include "core/run_index.h"

#include <utility>
#include <vector>

namespace kvo::core {

namespace {

constexpr std::size_t timesWidth = 44;
constexpr std::size_t labelWidth = 30;
constexpr std::size_t fullTable = 25;

std::string timesPath(const std::string& appFolder, const platform::Files& files) {
    return joined(appFolder, "KvoTimes", files);
}

// All whole records.
std::vector<TimedRun> readTable(const platform::Bytes& file) {
    std::vector<TimedRun> table;
    ByteReader reader(file);
    while (reader.left() >= timesWidth) {
        TimedRun run;
        keepOnFailure(run.Key, reader.i32le());
        run.Label = rightTrimmed(reader.text(labelWidth).value_or(""));
        for (std::int16_t* time :
            {&run.Time60, &run.Time330, &run.Time660, &run.Time1000, &run.TimeET}) {
            keepOnFailure(*time, reader.i16le());
        }
        table.push_back(std::move(run));
    }
    return table;
}

platform::Bytes encodeTable(const std::vector<TimedRun>& table) {
    ByteWriter writer(table.size() * timesWidth);
    for (const TimedRun& run : table) {
        writer.i32le(run.Key);
        writer.text(run.Label, labelWidth);
        for (const std::int16_t time :
            {run.Time60, run.Time330, run.Time660, run.Time1000, run.TimeET}) {
            writer.i16le(time);
        }
    }
    return writer.take();
}

// Hundredths of a second, cut from the product as it comes: "4.35" gives 434.
void takeTime(std::int16_t& field, const std::string& text) {
    keepOnFailure(field, CInt(Fix(Val(text) * 100)));
}

void fill(TimedRun& run, const std::string& label, const TypedTimes& times) {
    run.Label = label;
    takeTime(run.Time60, times.Text_60FootTime);
    takeTime(run.Time330, times.Text_330FootTime);
    takeTime(run.Time660, times.Text_660FootTime);
    takeTime(run.Time1000, times.Text_1000FootTime);
    takeTime(run.TimeET, times.Text_ET);
}

// Date and run of a header line: 30 characters behind its first ":", up to a "#".
std::string dateAndRun(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon != std::string_view::npos) line.remove_prefix(colon + 1);
    line = line.substr(0, labelWidth);
    return std::string(line.substr(0, line.find('#')));
}

std::string withoutDayName(const std::string& text) {
    const std::size_t blank = text.find(' ');
    return blank == std::string::npos ? text : text.substr(blank + 1);
}

// The first `count` records by ascending key, each compared with every later one and exchanged.
void sortFirst(std::vector<TimedRun>& table, std::size_t count) {
    for (std::size_t i = 0; i + 1 < count; ++i) {
        for (std::size_t j = i + 1; j < count; ++j) {
            if (table[i].Key > table[j].Key) std::swap(table[i], table[j]);
        }
    }
}

// Adds a run that the table does not have; false where it is older than a full table.
bool addRun(std::vector<TimedRun>& table, const TimedRun& run) {
    // Required: a table counts as full one early, when its next record would be the 25th.
    if (table.size() + 1 < fullTable) {
        table.push_back(run);
        sortFirst(table, table.size());
        return true;
    }
    if (run.Key <= table.front().Key) return false;
    // Record 25 may be missing; then the copy of record 24 stands in its place too.
    if (table.size() < fullTable) table.push_back(table.back());
    for (std::size_t i = 1; i < fullTable; ++i) table[i - 1] = table[i];
    table[fullTable - 1] = run;
    sortFirst(table, fullTable);
    return true;
}

} // namespace

RunTimesTable LoadTimesTable(const std::string& appFolder, platform::Files& files) {
    const std::string path = timesPath(appFolder, files);
    RunTimesTable table;
    const platform::Bytes file = readOrCreate(path, files, &table.unread);
    table.RunTimesCount = 1;
    for (TimedRun& run : readTable(file)) {
        if (table.RunTimesCount > table.entries.size) break;
        table.entries[table.RunTimesCount++] = std::move(run);
    }
    // The last entry may be filled by a read that does not meet the end.
    if (table.RunTimesCount > table.entries.size) table.RunTimesCount = table.entries.size;
    return table;
}

platform::WriteResult updateTimesTable(const std::string& appFolder, std::string_view runHeaderLine,
    const TypedTimes& times, platform::Files& files) {
    const std::string path = timesPath(appFolder, files);
    const auto file = files.readOrReason(path);
    if (!file && file.failure != platform::FileFailure::notFound)
        return {false, file.message, file.failure};
    std::vector<TimedRun> table = readTable(file.content.value_or(platform::Bytes{}));
    const std::string text = dateAndRun(runHeaderLine);
    const std::int32_t key = RunDateKey(text);
    const std::string label = padded(withoutDayName(text), labelWidth);
    bool found = false;
    for (TimedRun& run : table) {
        if (run.Key != key) continue;
        fill(run, label, times);
        found = true;
        break;
    }
    if (!found) {
        TimedRun run;
        run.Key = key;
        fill(run, label, times);
        if (!addRun(table, run)) return {};
    }
    return replaceKept(appFolder, path, encodeTable(table), files);
}

} // namespace kvo::core
