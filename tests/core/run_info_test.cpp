#include "core/run_info.h"

#include "core/run_file.h"
#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <memory>

namespace kvo::core {
namespace {

using testing::MemoryFiles;

constexpr const char* ownRun = "/kvo/Data/26111514.52d";
constexpr const char* infoPath = "/kvo/Data/26111514.52i";
constexpr const char* timesPath = "/kvo/KvoTimes";

RunInfo someInfo() {
    RunInfo info;
    info.Info_Text = "notes  ";
    info.Text_AirTemp = "21";
    info.Text_60FootTime = "1.05";
    info.Text_330FootTime = "3.10";
    info.Text_660FootTime = "4.95";
    info.Text_660FootSpeed = "170.1";
    info.Text_1000FootTime = "6.50";
    info.Text_ET = "7.75";
    info.Text_Mph = "181.2";
    info.setup[1] = {"Clutch", "5 plates"};
    info.setup[25] = {"Last", "line"};
    return info;
}

struct Disk {
    MemoryFiles files;
    Disk() {
        ByteWriter writer;
        encodeHeaderLine(writer, "25 VRN35 Ver 1.2 128k Serial No 7  Date:Sun 15 Nov 2026 Run: 3#");
        writer.fillTo(84);
        files.put(ownRun, writer.take());
    }
    InfoWriteResult save(const RunInfo& info) {
        return SaveRunInfo("/kvo", infoPath, ownRun, info, files);
    }
};

TEST(InfoFile, IsNamedAsTheRunWithAnI) {
    EXPECT_EQ(infoFilePath(ownRun), infoPath);
    EXPECT_EQ(infoFilePath(std::string(ownRun) + "   "), infoPath);
    EXPECT_EQ(infoFilePath(""), "");
}

TEST(InfoFile, ComesBackAsSaved) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    EXPECT_EQ(disk.files.read(infoPath)->size(), 61U * 400);
    const RunInfo info = LoadRunInfo(infoPath, {}, disk.files);
    EXPECT_EQ(info.Info_Text, "notes");
    EXPECT_EQ(info.Text_AirTemp, "21");
    EXPECT_EQ(info.Text_Humidity, "");
    EXPECT_EQ(info.Text_ET, "7.75");
    EXPECT_EQ(info.Text_Mph, "181.2");
    EXPECT_EQ(info.setup[1].Name, "Clutch");
    EXPECT_EQ(info.setup[1].Value, "5 plates");
    EXPECT_EQ(info.setup[25].Value, "line");
}

// Record n of the file, as its text.
std::string recordText(const platform::Bytes& file, std::size_t n) {
    const std::size_t start = (n - 1) * 400;
    const std::size_t length = file[start] + 256U * file[start + 1];
    return {reinterpret_cast<const char*>(file.data()) + start + 2, length};
}

TEST(InfoFile, EachTextHasItsOwnRecord) {
    Disk disk;
    RunInfo info;
    std::vector<std::string*> texts{&info.Info_Text, &info.Text_AirTemp, &info.Text_Barometric,
        &info.Text_Humidity, &info.Text_60FootTime, &info.Text_330FootTime, &info.Text_660FootTime,
        &info.Text_660FootSpeed, &info.Text_1000FootTime, &info.Text_ET, &info.Text_Mph};
    for (VehicleSetupLine& line : info.setup) {
        texts.push_back(&line.Name);
        texts.push_back(&line.Value);
    }
    ASSERT_EQ(texts.size(), 61U);
    for (std::size_t n = 1; n <= texts.size(); ++n) *texts[n - 1] = "text " + std::to_string(n);
    ASSERT_TRUE(disk.save(info));
    const platform::Bytes file = disk.files.read(infoPath).value();
    for (std::size_t n = 1; n <= texts.size(); ++n)
        EXPECT_EQ(recordText(file, n), "text " + std::to_string(n));
    const RunInfo back = LoadRunInfo(infoPath, {}, disk.files);
    EXPECT_EQ(back.Text_AirTemp, "text 2");
    EXPECT_EQ(back.Text_Barometric, "text 3");
    EXPECT_EQ(back.Text_Humidity, "text 4");
    EXPECT_EQ(back.Text_60FootTime, "text 5");
    EXPECT_EQ(back.Text_330FootTime, "text 6");
    EXPECT_EQ(back.Text_660FootTime, "text 7");
    EXPECT_EQ(back.Text_660FootSpeed, "text 8");
    EXPECT_EQ(back.Text_1000FootTime, "text 9");
    EXPECT_EQ(back.Text_ET, "text 10");
    EXPECT_EQ(back.Text_Mph, "text 11");
    for (int i = 1; i <= 25; ++i) {
        EXPECT_EQ(back.setup[i].Name, "text " + std::to_string(10 + 2 * i));
        EXPECT_EQ(back.setup[i].Value, "text " + std::to_string(11 + 2 * i));
    }
}

TEST(SaveRunInfo, GivesTheTableEachTimeInItsOwnField) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    EXPECT_EQ(LoadTimesTable("/kvo", disk.files).entries[1],
        (TimedRun{20111503, "15 Nov 2026 Run: 3", 105, 310, 495, 650, 775}));
}

TEST(InfoFile, CutsATextThatWouldLeaveItsRecord) {
    Disk disk;
    RunInfo info = someInfo();
    info.Info_Text = std::string(1000, 'n');
    ASSERT_TRUE(disk.save(info));
    const RunInfo again = LoadRunInfo(infoPath, {}, disk.files);
    EXPECT_EQ(again.Info_Text, std::string(398, 'n'));
    EXPECT_EQ(again.Text_AirTemp, "21");
}

TEST(InfoFile, AnEmptyTextLeavesTheDefault) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    VehicleSetup defaults;
    defaults[1] = {"Name 1", "Value 1"};
    defaults[2] = {"Name 2", "Value 2"};
    const RunInfo info = LoadRunInfo(infoPath, defaults, disk.files);
    EXPECT_EQ(info.setup[1].Name, "Clutch");
    EXPECT_EQ(info.setup[2].Name, "Name 2");
    EXPECT_EQ(info.setup[2].Value, "Value 2");
}

TEST(InfoFile, IsCreatedByLooking) {
    MemoryFiles files;
    EXPECT_EQ(LoadRunTimes(infoPath, files).Text_ET, "");
    EXPECT_EQ(files.read(infoPath), platform::Bytes{});
    MemoryFiles readOnly;
    readOnly.failWrites("/kvo", MemoryFiles::Failure::readOnly);
    EXPECT_EQ(LoadRunInfo(infoPath, {}, readOnly).Info_Text, "");
}

TEST(InfoFile, GivesTheTimesOfTheGraph) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    const TrackTimes times = LoadRunTimes(infoPath, disk.files);
    EXPECT_EQ(times.Text_60FootTime, "1.05");
    EXPECT_EQ(times.Text_330FootTime, "3.10");
    EXPECT_EQ(times.Text_660FootTime, "4.95");
    EXPECT_EQ(times.Text_660FootSpeed, "170.1");
    EXPECT_EQ(times.Text_1000FootTime, "6.50");
    EXPECT_EQ(times.Text_ET, "7.75");
}

TEST(InfoFile, AFileCutOrWithWrongLengthsGivesEmptyTexts) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    platform::Bytes file = disk.files.read(infoPath).value();
    file[9 * 400] = 0xFF; // the length of the elapsed time
    file[9 * 400 + 1] = 0xFF;
    disk.files.put(infoPath, file);
    EXPECT_EQ(LoadRunTimes(infoPath, disk.files).Text_ET, "");
    EXPECT_EQ(LoadRunTimes(infoPath, disk.files).Text_1000FootTime, "6.50");
    file.resize(8 * 400 + 5); // in the middle of the 1000 foot time
    disk.files.put(infoPath, file);
    EXPECT_EQ(LoadRunTimes(infoPath, disk.files).Text_1000FootTime, "");
    EXPECT_EQ(LoadRunTimes(infoPath, disk.files).Text_660FootSpeed, "170.1");
}

TEST(SaveRunInfo, OnlyARunWithAnElapsedTimeEntersTheTable) {
    Disk disk;
    RunInfo info = someInfo();
    info.Text_ET = "";
    ASSERT_TRUE(disk.save(info));
    EXPECT_TRUE(disk.files.exists(infoPath));
    EXPECT_FALSE(disk.files.exists(timesPath));
    info.Text_ET = "0";
    ASSERT_TRUE(disk.save(info));
    EXPECT_EQ(LoadTimesTable("/kvo", disk.files).entries[1],
        (TimedRun{20111503, "15 Nov 2026 Run: 3", 105, 310, 495, 650, 0}));
}

TEST(SaveRunInfo, MakesUpNoEntryForARunWithoutALine) {
    Disk disk;
    disk.files.put(ownRun, {});
    const auto withoutALine = disk.save(someInfo());
    EXPECT_FALSE(withoutALine) << "the times are not saved, and that is told";
    EXPECT_TRUE(withoutALine.notesDone);
    EXPECT_NE(withoutALine.message.find(ownRun), std::string::npos);
    EXPECT_TRUE(disk.files.exists(infoPath));
    EXPECT_FALSE(disk.files.exists(timesPath));
    ASSERT_TRUE(disk.files.remove(ownRun));
    EXPECT_FALSE(disk.save(someInfo()));
    EXPECT_FALSE(disk.files.exists(timesPath));
}

TEST(SaveRunInfo, TellsThatTheRunCannotBeReadNow) {
    Disk disk;
    disk.files.failReads(ownRun, MemoryFiles::Failure::diskError);
    const auto saved = disk.save(someInfo());
    EXPECT_FALSE(saved);
    EXPECT_TRUE(saved.notesDone);
    EXPECT_EQ(LoadRunInfo(infoPath, {}, disk.files).Info_Text, "notes");
    EXPECT_FALSE(disk.files.exists(timesPath));
}

TEST(SaveRunInfo, LeavesATableThatCannotBeReadNow) {
    Disk disk;
    disk.files.put(timesPath, {1, 2, 3});
    disk.files.failReads(timesPath, MemoryFiles::Failure::notReady);
    const auto saved = disk.save(someInfo());
    EXPECT_FALSE(saved);
    EXPECT_TRUE(saved.notesDone);
    EXPECT_EQ(saved.failure, platform::FileFailure::notReady);
}

TEST(RunNotesOfAList, AreReadFromTheirRecords) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    const RunNotes notes = readRunNotes(infoPath, disk.files);
    EXPECT_EQ(notes.Info_Text, "notes");
    EXPECT_EQ(notes.times.Text_60FootTime, "1.05");
    EXPECT_EQ(notes.times.Text_660FootSpeed, "170.1");
    EXPECT_EQ(notes.times.Text_ET, "7.75");
    EXPECT_EQ(notes.Text_Mph, "181.2");
}

TEST(RunNotesOfAList, AreFoundUnderACapitalToo) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    disk.files.put("/kvo/Data/26111515.10I", *disk.files.read(infoPath));
    EXPECT_EQ(readRunNotes("/kvo/Data/26111515.10i", disk.files).Info_Text, "notes");
}

TEST(RunNotesOfAList, CreateNothing) {
    Disk disk;
    EXPECT_EQ(readRunNotes(infoPath, disk.files).Info_Text, "");
    EXPECT_FALSE(disk.files.exists(infoPath));
    EXPECT_EQ(disk.files.writes(), 0);
    disk.files.put(infoPath, {200, 0, 'a'}); // cut, and longer than its record
    EXPECT_EQ(readRunNotes(infoPath, disk.files).Info_Text, "");
    EXPECT_EQ(readRunNotes("", disk.files).Text_Mph, "");
}

TEST(LoadRunAlone, ReadsTheRunAndMakesNoInfoFile) {
    Disk disk;
    const auto run = std::make_unique<OpenRun>();
    run->times.Text_ET = "7.75";
    ASSERT_TRUE(LoadRunAlone(ownRun, *run, disk.files));
    EXPECT_EQ(run->SampleCount, 1213);
    EXPECT_EQ(run->path, ownRun);
    EXPECT_EQ(run->times, TrackTimes{});
    EXPECT_EQ(disk.files.writes(), 0);
    EXPECT_FALSE(disk.files.exists(infoPath));
    EXPECT_EQ(LoadRunAlone("/none", *run, disk.files).result, LoadResult::missing);
}

TEST(SaveRunInfo, KeepsACopyOfTheNotesItReplaces) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    const auto before = disk.files.read(infoPath);
    RunInfo info = someInfo();
    info.Info_Text = "other notes";
    ASSERT_TRUE(disk.save(info));
    EXPECT_EQ(disk.files.read("/kvo/Backup/26111514.52i.0001"), before);
}

TEST(SaveRunInfo, TellsOfAFullDiskAndLeavesTheNotes) {
    Disk disk;
    ASSERT_TRUE(disk.save(someInfo()));
    disk.files.failWrites("/kvo", MemoryFiles::Failure::fullDisk);
    RunInfo info = someInfo();
    info.Info_Text = "other notes";
    EXPECT_FALSE(disk.save(info).notesDone);
    EXPECT_EQ(LoadRunInfo(infoPath, {}, disk.files).Info_Text, "notes");
}

} // namespace
} // namespace kvo::core
