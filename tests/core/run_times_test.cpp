#include "core/basic/byte_writer.h"
#include "core/run_index.h"
#include "core/run_times.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

using testing::MemoryFiles;

constexpr const char* tablePath = "/kvo/KvoTimes";

std::string lineOf(const std::string& dateAndRun) {
    return "25 VRN35 Ver 1.2 128k Serial No 7  Date:" + dateAndRun + "#";
}

// Day 1 to 28 of a month, so that keys ascend with it.
std::string runOf(int day, const char* month = "Jan") {
    return std::string("Sun ") + (day < 10 ? "0" : "") + std::to_string(day) + " " + month +
           " 2026 Run: 1";
}

const TypedTimes someTimes{"1.05", "3.10", "4.95", "6.50", "7.75"};

struct Table {
    MemoryFiles files;
    void add(const std::string& dateAndRun, const TypedTimes& times = someTimes) {
        EXPECT_TRUE(updateTimesTable("/kvo", lineOf(dateAndRun), times, files));
    }
    std::size_t count() const {
        return files.read(tablePath).value_or(platform::Bytes{}).size() / 44;
    }
    RunTimesTable load() { return LoadTimesTable("/kvo", files); }
};

TEST(TimesTable, KeepsARunByItsKey) {
    Table table;
    table.add("Sun 15 Nov 2026 Run: 3 First");
    const RunTimesTable loaded = table.load();
    EXPECT_EQ(loaded.RunTimesCount, 2);
    EXPECT_EQ(loaded.entries[1],
        (TimedRun{20111503, "15 Nov 2026 Run: 3 First", 105, 310, 495, 650, 775}));
    EXPECT_EQ(loaded.entries[2], TimedRun{}) << "the read that met the end left it blank";
}

TEST(TimesTable, ARecordHasItsFieldsAtTheirOffsets) {
    Table table;
    table.add("Sun 15 Nov 2026 Run: 3", {"1", "2.5", "4", "6", "8"});
    ByteWriter expected;
    expected.i32le(20111503);
    expected.text("15 Nov 2026 Run: 3", 30);
    for (const int time : {100, 250, 400, 600, 800})
        expected.i16le(static_cast<std::int16_t>(time));
    EXPECT_EQ(table.files.read(tablePath), expected.bytes());
    EXPECT_EQ(expected.size(), 44U);
    EXPECT_EQ(table.load().entries[1],
        (TimedRun{20111503, "15 Nov 2026 Run: 3", 100, 250, 400, 600, 800}));
}

TEST(TimesTable, SavingTwiceChangesInPlace) {
    Table table;
    table.add("Sun 15 Nov 2026 Run: 3");
    table.add("Mon 16 Nov 2026 Run: 1");
    table.add("Sun 15 Nov 2026 Run: 3 b", {"2", "4", "6", "8", "10"});
    EXPECT_EQ(table.count(), 2U);
    EXPECT_EQ(table.load().entries[1],
        (TimedRun{20111503, "15 Nov 2026 Run: 3 b", 200, 400, 600, 800, 1000}));
}

TEST(TimesTable, CutsTheProduct) {
    Table table;
    table.add(runOf(1), {"4.35", "1.057", "-0.019", "abc", "1,5"});
    const TimedRun run = table.load().entries[1];
    EXPECT_EQ(run.Time60, 434);
    EXPECT_EQ(run.Time330, 105);
    EXPECT_EQ(run.Time660, -1);
    EXPECT_EQ(run.Time1000, 0);
    EXPECT_EQ(run.TimeET, 100);
}

TEST(TimesTable, ATimeBeyondTheFieldLeavesIt) {
    Table table;
    table.add(runOf(1), {"327.68", "327.67", "1", "99999999999", "5"});
    EXPECT_EQ(table.load().entries[1].Time60, 0) << "0 in a new record";
    EXPECT_EQ(table.load().entries[1].Time330, 32767);
    EXPECT_EQ(table.load().entries[1].Time1000, 0);
    table.add(runOf(1), {"1", "400", "400", "2", "5"});
    EXPECT_EQ(table.load().entries[1].Time60, 100);
    EXPECT_EQ(table.load().entries[1].Time330, 32767) << "what the record held";
    EXPECT_EQ(table.load().entries[1].Time660, 100);
}

TEST(TimesTable, TakesThirtyCharactersUpToAHash) {
    Table table;
    table.add("Sun 15 Nov 2026 Run: 12 Western Nationals");
    EXPECT_EQ(table.load().entries[1].Label, "15 Nov 2026 Run: 12 Wester");
    table.add("Sun 15 Nov 2026 Run: 13 a#b");
    EXPECT_EQ(table.load().entries[2].Label, "15 Nov 2026 Run: 13 a");
}

TEST(TimesTable, StaysInAscendingOrder) {
    Table table;
    for (const int day : {5, 3, 9, 1, 7, 2}) table.add(runOf(day));
    const RunTimesTable loaded = table.load();
    for (int i = 2; i < loaded.RunTimesCount; ++i) {
        EXPECT_LT(loaded.entries[i - 1].Key, loaded.entries[i].Key);
    }
    EXPECT_EQ(loaded.RunTimesCount, 7);
}

TEST(TimesTable, CountsAsFullWithTwentyFour) {
    Table table;
    for (int day = 1; day <= 24; ++day) table.add(runOf(day));
    EXPECT_EQ(table.count(), 24U);
    table.add(runOf(27));
    EXPECT_EQ(table.count(), 25U);
    const RunTimesTable loaded = table.load();
    EXPECT_EQ(loaded.entries[1].Key, RunDateKey(runOf(2))) << "the oldest is gone";
    EXPECT_EQ(loaded.entries[23].Key, RunDateKey(runOf(24)));
    EXPECT_EQ(loaded.entries[24].Key, RunDateKey(runOf(24))) << "and the 24th stands twice";
    EXPECT_EQ(loaded.entries[25].Key, RunDateKey(runOf(27)));
}

TEST(TimesTable, DropsARunOlderThanAll) {
    Table table;
    for (int day = 2; day <= 25; ++day) table.add(runOf(day));
    const auto before = table.files.read(tablePath);
    table.add(runOf(1));
    EXPECT_EQ(table.files.read(tablePath), before);
}

TEST(TimesTable, AFullTableLosesItsOldestForANewerRun) {
    Table table;
    for (int day = 2; day <= 27; ++day) table.add(runOf(day));
    EXPECT_EQ(table.count(), 25U);
    const std::int32_t oldest = table.load().entries[1].Key;
    table.add(runOf(10, "Feb"));
    EXPECT_EQ(table.count(), 25U);
    EXPECT_GT(table.load().entries[1].Key, oldest);
    EXPECT_EQ(table.load().entries[25].Key, RunDateKey(runOf(10, "Feb")));
}

TEST(TimesTable, AMissingFileIsCreatedEmpty) {
    Table table;
    const RunTimesTable loaded = table.load();
    EXPECT_EQ(loaded.RunTimesCount, 1);
    EXPECT_EQ(table.files.read(tablePath), platform::Bytes{});
}

TEST(TimesTable, GivesTwentySixEntriesAtMost) {
    Table table;
    ByteWriter writer;
    for (int i = 1; i <= 40; ++i) {
        writer.i32le(i);
        writer.text("run", 30);
        writer.fillTo(static_cast<std::size_t>(i) * 44);
    }
    table.files.put(tablePath, writer.take());
    const RunTimesTable loaded = table.load();
    EXPECT_EQ(loaded.RunTimesCount, 26);
    EXPECT_EQ(loaded.entries[26].Key, 26);
}

TEST(TimesTable, AFileCutAnywhereGivesItsWholeRecords) {
    Table table;
    for (const int day : {1, 2, 3}) table.add(runOf(day));
    const platform::Bytes whole = table.files.read(tablePath).value();
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        table.files.put(
            tablePath, {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        EXPECT_EQ(table.load().RunTimesCount, static_cast<int>(length / 44) + 1) << length;
    }
}

TEST(TimesTable, IsKeptBeforeARunGoesFromIt) {
    Table table;
    for (int day = 1; day <= 25; ++day) table.add(runOf(day));
    EXPECT_FALSE(table.files.list("/kvo/Backup").empty());
}

TEST(TimesTable, TellsOfAFullDisk) {
    Table table;
    table.files.failWrites("/kvo", MemoryFiles::Failure::fullDisk);
    EXPECT_FALSE(updateTimesTable("/kvo", lineOf(runOf(1)), someTimes, table.files));
}

} // namespace
} // namespace kvo::core
