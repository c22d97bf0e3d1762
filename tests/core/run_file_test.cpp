#include "core/run_file.h"

#include "core/basic/byte_writer.h"
#include "core/data_types.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace kvo::core {
namespace {

using platform::Bytes;
using testing::MemoryFiles;

constexpr const char* runPath = "/kvo/Data/26111514.52d";
constexpr const char* infoOfRun = "/kvo/Data/26111514.52i";
constexpr const char* name = "26111514.52d";

struct Bench {
    MemoryFiles files;
    std::unique_ptr<OpenRun> run = std::make_unique<OpenRun>();
    std::unique_ptr<OpenRun> overlay = std::make_unique<OpenRun>();

    LoadOutcome load(const Bytes& file) {
        files.put(runPath, file);
        return LoadRun(runPath, *run, files);
    }
    LoadOutcome loadOverlay(const Bytes& file) {
        files.put(runPath, file);
        return LoadOverlayRun(runPath, *overlay, files);
    }
    platform::WriteResult save() { return SaveRun(*run, "/kvo", files); }
    Bytes saved() const { return files.read(runPath).value_or(Bytes{}); }
};

RunSample sampleOf(int i) {
    RunSample s;
    s.Index = static_cast<std::int16_t>(i);
    s.EngineRpm = static_cast<std::int16_t>(3 * i - 20000);
    s.InputRpm = static_cast<std::int16_t>(i * 2);
    s.OutputRpm = static_cast<std::int16_t>(-i);
    s.SpeedRaw = 100000 - i;
    s.Status = static_cast<std::uint8_t>(i);
    for (int c = 1; c <= 8; ++c) {
        s.Analog[c] = static_cast<std::uint8_t>(i + c);
        s.Exhaust[c] = static_cast<std::uint8_t>(i * c);
    }
    s.Aux = -i * 1000;
    return s;
}

// A whole run of a type in memory, with a number in every field.
std::unique_ptr<OpenRun> runOf(int type, int rows) {
    auto run = std::make_unique<OpenRun>();
    run->path = runPath;
    run->DataType = static_cast<std::uint8_t>(type);
    run->SampleCount = static_cast<std::uint16_t>(rows);
    run->headerLine = std::to_string(type) + " VRN35 Ver 1.2 128k Serial No 7  Date:x#";
    run->image.header.EnginePickups = 3;
    run->image.header.CrankGearTeeth = 40;
    run->image.header.RecordOnRpm = -2;
    run->image.header.ShiftLightTime4 = 1.5F;
    for (int i = 1; i <= rows; ++i) run->image.samples[i] = sampleOf(i);
    for (int g = 1; g <= 5; ++g) run->image.setup.GearRatio[g] = static_cast<float>(g) / 2;
    for (int c = 1; c <= 8; ++c) {
        run->image.setup.AnalogName[c] = "Name  " + std::to_string(c) + " ";
        run->image.analog.AnalogDecimals[c] = 1;
        run->image.analog.AnalogScale[c] = static_cast<float>(c) / 4;
        run->image.analog.AnalogOffset[c] = -1;
        run->image.tail.AnalogTypes[c] = 2;
    }
    run->image.analog.PinionTeeth = 10;
    run->image.tail.reserved[2] = 0xAB;
    run->image.tail.GearCount = 3;
    run->image.tail.GearRatio6 = 9;
    run->image.tail.TimeOffset = 140;
    return run;
}

// What a save makes of it.
Bytes bytesOf(const OpenRun& run) {
    MemoryFiles files;
    EXPECT_TRUE(SaveRun(run, "/kvo", files));
    return files.read(runPath).value_or(Bytes{});
}

Bytes fileOf(int type, int rows) {
    return bytesOf(*runOf(type, rows));
}

// Record 1 with this text, and blanks behind it for as many records.
Bytes lineFile(const std::string& line, std::size_t records = 4) {
    ByteWriter writer;
    writer.u16le(static_cast<std::uint16_t>(line.size()));
    writer.characters(line);
    writer.fillTo(records * runRecordWidth);
    return writer.take();
}

// Everything of both runs, row by row.
void expectSame(const OpenRun& run, const OpenRun& before) {
    EXPECT_EQ(run.path, before.path);
    EXPECT_EQ(run.infoPath, before.infoPath);
    EXPECT_EQ(run.headerLine, before.headerLine);
    EXPECT_EQ(run.DataType, before.DataType);
    EXPECT_EQ(run.SampleCount, before.SampleCount);
    EXPECT_EQ(run.PeakSpeedRaw, before.PeakSpeedRaw);
    EXPECT_EQ(run.image.header, before.image.header);
    EXPECT_TRUE(run.image.samples == before.image.samples);
    EXPECT_EQ(run.image.setup, before.image.setup);
    EXPECT_EQ(run.image.analog, before.image.analog);
    EXPECT_EQ(run.image.tail, before.image.tail);
    EXPECT_EQ(run.times, before.times);
}

// A bench whose main run and overlay have something in every field.
struct FullBench : Bench {
    FullBench() {
        RunInfo info;
        info.Text_ET = "8.50";
        EXPECT_TRUE(SaveRunInfo("/kvo", infoOfRun, runPath, info, files).notesDone);
        EXPECT_TRUE(load(fileOf(25, 1213)));
        EXPECT_TRUE(loadOverlay(fileOf(20, 2048)));
        runBefore = std::make_unique<OpenRun>(*run);
        overlayBefore = std::make_unique<OpenRun>(*overlay);
    }
    std::unique_ptr<OpenRun> runBefore;
    std::unique_ptr<OpenRun> overlayBefore;
};

TEST(RunFile, ComesBackByteForByteForEveryType) {
    for (const int type : {8, 12, 17, 20, 25, 32, 43}) {
        const int rows = dataTypeFacts(type)->rows;
        const Bytes file = fileOf(type, rows);
        EXPECT_EQ(file.size(), (static_cast<std::size_t>(rows) + 4) * 84 + 20) << type;
        Bench bench;
        const LoadOutcome outcome = bench.load(file);
        ASSERT_TRUE(outcome) << type;
        EXPECT_EQ(outcome.DataType, type);
        EXPECT_EQ(bench.run->image.samples[rows], sampleOf(rows)) << type;
        EXPECT_EQ(bench.run->image.tail.reserved[3], 0);
        ASSERT_TRUE(bench.save()) << type;
        EXPECT_EQ(bench.saved(), file) << type;
    }
}

TEST(LoadRun, FillsTheWholeImage) {
    const auto run = runOf(25, 1213);
    Bench bench;
    ASSERT_TRUE(bench.load(fileOf(25, 1213)));
    const OpenRun& state = *bench.run;
    EXPECT_EQ(state.DataType, 25);
    EXPECT_EQ(state.SampleCount, 1213);
    EXPECT_EQ(state.headerLine, run->headerLine);
    EXPECT_EQ(state.PeakSpeedRaw, 99999);
    EXPECT_EQ(state.image.header, run->image.header);
    EXPECT_EQ(state.image.setup, run->image.setup);
    EXPECT_EQ(state.image.analog, run->image.analog);
    EXPECT_EQ(state.image.tail, run->image.tail);
}

TEST(LoadRun, KnowsItsFilesAndItsTimes) {
    Bench bench;
    RunInfo info;
    info.Text_60FootTime = "1.05";
    info.Text_ET = "8.50";
    ASSERT_TRUE(SaveRunInfo("/kvo", infoOfRun, runPath, info, bench.files).notesDone);
    bench.files.put(runPath, fileOf(32, 1360));
    ASSERT_TRUE(LoadRun(std::string(runPath) + "   ", *bench.run, bench.files));
    EXPECT_EQ(bench.run->path, runPath);
    EXPECT_EQ(bench.run->infoPath, infoOfRun);
    EXPECT_EQ(bench.run->times.Text_60FootTime, "1.05");
    EXPECT_EQ(bench.run->times.Text_ET, "8.50");
}

TEST(LoadRun, TakesNoTimesOfTheRunBeforeAndMakesAMissingInfoFile) {
    FullBench bench;
    ASSERT_EQ(bench.run->times.Text_ET, "8.50");
    const std::string other = "/kvo/Data/26111515.10d";
    bench.files.put(other, fileOf(25, 1213));
    ASSERT_TRUE(LoadRun(other, *bench.run, bench.files));
    EXPECT_EQ(bench.run->path, other);
    EXPECT_EQ(bench.run->times, TrackTimes{});
    EXPECT_EQ(bench.files.read("/kvo/Data/26111515.10i"), Bytes{});
}

TEST(LoadRun, AMissingFileLeavesTheRunAsItWas) {
    FullBench bench;
    const LoadOutcome outcome = LoadRun("/kvo/Data/gone.52d", *bench.run, bench.files);
    EXPECT_EQ(outcome.result, LoadResult::missing);
    expectSame(*bench.run, *bench.runBefore);
    EXPECT_FALSE(bench.files.exists("/kvo/Data/gone.52i")) << "no info file of a run that is none";
}

TEST(LoadMessage, TellsOfAMissingFile) {
    const LoadMessage message = loadMessage(LoadResult::missing, std::string(runPath) + "   ");
    EXPECT_EQ(message.text, std::string("File no Found                  \n") + runPath);
    EXPECT_EQ(message.style, 416);
    EXPECT_FALSE(message.beep);
}

TEST(LoadMessage, TellsOfAFileThatIsNoRun) {
    const LoadMessage message = loadMessage(LoadResult::notARun, std::string(runPath) + " ");
    EXPECT_EQ(message.text,
        "/KVO/DATA/26111514.52D\n\nIs Corrupt or Not a Kvo Data File\nand can't be lodded.");
    EXPECT_EQ(message.style, 48);
    EXPECT_TRUE(message.beep);
}

TEST(LoadMessage, HasItsOwnWordsForTheOverlay) {
    const LoadMessage missing =
        overlayLoadMessage(LoadResult::missing, std::string(runPath) + "  ");
    EXPECT_EQ(missing.text, std::string(" File no Found\n") + runPath);
    EXPECT_EQ(missing.style, 416);
    EXPECT_FALSE(missing.beep);
    const LoadMessage notARun = overlayLoadMessage(LoadResult::notARun, runPath);
    EXPECT_EQ(notARun.text, "Not a Kvo Data File");
    EXPECT_EQ(notARun.style, 48);
    EXPECT_FALSE(notARun.beep);
}

TEST(LoadRun, RejectsWhatIsNoRun) {
    FullBench bench;
    const std::pair<const char*, int> lines[] = {{"99 VRN35 Ver", 99}, {"23 VRN", 23},
        {"29 VRN", 29}, {"", 0}, {"VRN35 25 ", 0}, {"25VRN35", 0}, {"-25 x", 0}, {"281 VRN", 0},
        {"1e1 x", 1}};
    for (const auto& [line, type] : lines) {
        const LoadOutcome outcome = bench.load(lineFile(line));
        EXPECT_EQ(outcome.result, LoadResult::notARun) << line;
        EXPECT_FALSE(outcome) << line;
        EXPECT_EQ(outcome.DataType, type) << line;
        expectSame(*bench.run, *bench.runBefore);
    }
}

TEST(LoadRun, TakesTheNumberInFrontOfALetter) {
    Bench bench;
    EXPECT_TRUE(bench.load(lineFile("12VRN35 Ver")));
    EXPECT_EQ(bench.run->DataType, 12);
    EXPECT_EQ(bench.run->SampleCount, 2520);
}

TEST(LoadRun, AnEmptyFileNeverPassesForTheRunBefore) {
    FullBench bench;
    const LoadOutcome outcome = bench.load(Bytes{});
    EXPECT_EQ(outcome.result, LoadResult::notARun);
    EXPECT_EQ(outcome.DataType, 0);
    expectSame(*bench.run, *bench.runBefore);
}

TEST(LoadRun, ALengthThatCrossesTheRecordIsAFailedRead) {
    Bytes file = fileOf(25, 1213);
    file[0] = 83;
    Bench bench;
    const LoadOutcome outcome = bench.load(file);
    EXPECT_EQ(outcome.result, LoadResult::notARun);
    EXPECT_EQ(outcome.DataType, 0);
    EXPECT_EQ(bench.run->headerLine, "");
    // A read that fails leaves the line before, and with it the type.
    bench.run->headerLine = "25 the line before";
    EXPECT_TRUE(bench.load(file));
    EXPECT_EQ(bench.run->headerLine, "25 the line before");
}

TEST(LoadRun, AShortFileKeepsStaleRowsAndTakesNoSpeedFromThem) {
    Bench bench;
    bench.load(fileOf(20, 2048));
    const auto other = runOf(20, 2048);
    for (int i = 1; i <= 2048; ++i) other->image.samples[i].SpeedRaw = i;
    Bytes file = bytesOf(*other);
    file.resize(12 * 84 + 32); // ten rows and all but a byte of the eleventh
    bench.load(file);
    EXPECT_EQ(bench.run->SampleCount, 2048);
    EXPECT_EQ(bench.run->PeakSpeedRaw, 10);
    EXPECT_EQ(bench.run->image.samples[10].SpeedRaw, 10);
    EXPECT_EQ(bench.run->image.samples[11], sampleOf(11));
    EXPECT_EQ(bench.run->image.samples[2048], sampleOf(2048));
    EXPECT_EQ(bench.run->image.setup.GearRatio[1], 0.5F);
}

TEST(LoadRun, AShorterTypeLeavesTheRowsBehindIt) {
    Bench bench;
    bench.load(fileOf(20, 2048));
    bench.load(fileOf(25, 1213));
    EXPECT_EQ(bench.run->SampleCount, 1213);
    EXPECT_EQ(bench.run->image.samples[2048], sampleOf(2048));
}

TEST(LoadRun, AFileCutAtAnyByteIsReadAsFarAsItGoes) {
    const Bytes whole = fileOf(25, 1213);
    const std::size_t rows = 2U * 84;
    const std::size_t blocks = (2U + 1213) * 84;
    for (std::size_t length = 1; length <= whole.size(); ++length) {
        // Between the first rows and the last every row is as any other.
        if (length > rows + 200 && length < blocks - 100) length = blocks - 100;
        Bench bench;
        bench.run->headerLine = "25 ";
        const auto end = whole.begin() + static_cast<std::ptrdiff_t>(length);
        ASSERT_TRUE(bench.load({whole.begin(), end})) << length;
        const RunImage& image = bench.run->image;
        EXPECT_EQ(image.header.CrankGearTeeth, length < 84 + 34 ? 0 : 40) << length;
        EXPECT_EQ(image.samples[1].Index, length < rows + 33 ? 0 : 1) << length;
        EXPECT_EQ(image.samples[2].Index, length < rows + 84 + 33 ? 0 : 2) << length;
        EXPECT_EQ(image.setup.GearRatio[2], length < blocks + 84 ? 0 : 1) << length;
        EXPECT_EQ(image.analog.PinionTeeth, length < blocks + 168 ? 0 : 10) << length;
        EXPECT_EQ(image.tail.TimeOffset, length < blocks + 188 ? 80 : 140) << length;
    }
}

TEST(LoadRun, ATimeOffsetBelowOneIsNeverHonoured) {
    for (const int type : {8, 25, 43}) {
        for (const int offset : {0, -1, -32768}) {
            const auto run = runOf(type, dataTypeFacts(type)->rows);
            run->image.tail.TimeOffset = static_cast<std::int16_t>(offset);
            Bench bench;
            bench.load(bytesOf(*run));
            EXPECT_EQ(bench.run->image.tail.TimeOffset, type == 25 ? 80 : 160);
            ASSERT_TRUE(bench.save());
            const Bytes saved = bench.saved();
            EXPECT_EQ(saved[saved.size() - 2], type == 25 ? 80 : 160) << "a save stores it";
        }
    }
}

TEST(LoadRun, ARunWithoutATailTakesNothingFromTheRunBefore) {
    Bytes file = fileOf(25, 1213);
    Bench bench;
    bench.load(file);
    ASSERT_EQ(bench.run->image.tail.GearCount, 3);
    file.resize(file.size() - 20);
    bench.load(file);
    EXPECT_EQ(bench.run->image.tail.GearCount, 0);
    EXPECT_EQ(bench.run->image.tail.GearRatio6, 0);
    EXPECT_EQ(bench.run->image.tail.TimeOffset, 80);
}

TEST(LoadRun, CarriesAnyBitsOfTheBlocks) {
    const auto run = runOf(25, 1213);
    run->image.analog.AnalogScale[1] = std::numeric_limits<float>::quiet_NaN();
    run->image.analog.CrownTeeth = -std::numeric_limits<float>::infinity();
    run->image.setup.AnalogName[1] = std::string("a\0\x01\xff\n\r\tz", 8);
    const Bytes file = bytesOf(*run);
    Bench bench;
    bench.load(file);
    EXPECT_EQ(bench.run->image.setup.AnalogName[1], std::string("a\0\x01\xff\n\r\tz", 8));
    ASSERT_TRUE(bench.save());
    EXPECT_EQ(bench.saved(), file);
}

TEST(LoadOverlayRun, FillsAnImageOfItsOwn) {
    FullBench bench;
    EXPECT_EQ(bench.overlay->path, runPath);
    EXPECT_EQ(bench.overlay->infoPath, infoOfRun);
    EXPECT_EQ(bench.overlay->headerLine, runOf(20, 2048)->headerLine);
    EXPECT_EQ(bench.overlay->DataType, 20);
    EXPECT_EQ(bench.overlay->SampleCount, 2048);
    EXPECT_EQ(bench.overlay->image.samples[2048], sampleOf(2048));
    EXPECT_EQ(bench.overlay->image.tail, runOf(20, 2048)->image.tail);
    EXPECT_EQ(bench.overlay->PeakSpeedRaw, 0) << "the scale of the speed is the run's";
    EXPECT_EQ(bench.overlay->times, TrackTimes{}) << "and so are the times";
}

TEST(LoadOverlayRun, TakesTheBlocksOfAType32ForRows) {
    const Bytes file = fileOf(32, 1360);
    Bench bench;
    bench.loadOverlay(file);
    const auto setup = runRecord(file, 1363);
    RunSample taken;
    ASSERT_TRUE(decode(setup, taken));
    EXPECT_EQ(bench.overlay->image.samples[1361], taken);
    EXPECT_EQ(bench.overlay->image.samples[1363], RunSample{}) << "20 bytes are no row";
    EXPECT_EQ(bench.overlay->image.setup, RunSetupBlock{}) << "read past the end";
    EXPECT_EQ(bench.overlay->image.tail.TimeOffset, 160);
}

TEST(LoadOverlayRun, HasOneRowMoreOfType17) {
    Bench bench;
    bench.loadOverlay(fileOf(17, 1724));
    RunSample taken;
    ASSERT_TRUE(decode(runRecord(bench.saved(), 1727), taken));
    EXPECT_EQ(bench.overlay->image.samples[1725], taken);
}

TEST(LoadOverlayRun, AMissingFileLeavesTheOverlayAsItWas) {
    FullBench bench;
    const LoadOutcome outcome = LoadOverlayRun("/kvo/Data/gone.52d", *bench.overlay, bench.files);
    EXPECT_EQ(outcome.result, LoadResult::missing);
    expectSame(*bench.overlay, *bench.overlayBefore);
}

TEST(LoadOverlayRun, RejectsWhatIsNoRun) {
    FullBench bench;
    const std::pair<const char*, int> lines[] = {
        {"99 VRN35", 99}, {"23 VRN", 23}, {"29 VRN", 29}, {"", 0}, {"65561 x", 0}};
    for (const auto& [line, type] : lines) {
        const LoadOutcome outcome = bench.loadOverlay(lineFile(line));
        EXPECT_EQ(outcome.result, LoadResult::notARun) << line;
        EXPECT_EQ(outcome.DataType, type) << line;
        expectSame(*bench.overlay, *bench.overlayBefore);
    }
}

TEST(LoadOverlayRun, AShortFileShowsNothingOfTheOverlayBefore) {
    Bench bench;
    bench.loadOverlay(fileOf(25, 1213));
    Bytes file = fileOf(25, 1213);
    file.resize(100 * 84);
    EXPECT_TRUE(bench.loadOverlay(file));
    EXPECT_EQ(bench.overlay->image.samples[98], sampleOf(98));
    EXPECT_EQ(bench.overlay->image.samples[99], RunSample{});
    EXPECT_EQ(bench.overlay->image.setup, RunSetupBlock{});
    EXPECT_EQ(bench.overlay->image.tail.GearCount, 0);
}

// A run that was just downloaded, and its logger.
struct Downloaded : Bench {
    LoggerIdentity logger{35, 3, 2, 7};
    std::string RunText = " Date:Sun 15 Nov 2026 Run: 1 First#";
    AppConfig Config;

    Downloaded() {
        run->path = runPath;
        run->DataType = 25;
        run->SampleCount = 1213;
    }
    std::string line() const { return headerLine(run->DataType, logger, RunText); }
    platform::WriteResult saveFresh() {
        return SaveRun(*run, {logger, RunText, Config}, "/kvo", files);
    }
};

TEST(HeaderLine, SaysWhoTookTheRun) {
    Downloaded run;
    EXPECT_EQ(run.line(), "25 VRN35 Ver 1.2 128k Serial No 7  Date:Sun 15 Nov 2026 Run: 1 First#");
    run.logger.LoggerSerial = -7;
    run.logger.LoggerMemory = 4;
    run.logger.LoggerVersion = 11;
    EXPECT_EQ(run.line(), "25 VRN35 Ver  k Serial No-7  Date:Sun 15 Nov 2026 Run: 1 First#");
}

TEST(HeaderLine, LosesTheTailOfALongText) {
    Downloaded run;
    run.RunText = std::string(47, 'x') + "#";
    EXPECT_TRUE(run.line().ends_with(" " + std::string(47, 'x') + "#"));
    run.RunText = std::string(48, 'x') + "#";
    EXPECT_TRUE(run.line().ends_with(" " + std::string(47, 'x') + "#"));
    run.RunText = std::string(300, 'x');
    EXPECT_TRUE(run.line().ends_with(" " + std::string(47, 'x') + "#"));
}

TEST(HeaderLine, NeverLeavesItsRecord) {
    Downloaded run;
    run.run->DataType = 255;
    run.logger.LoggerModel = 255;
    run.logger.LoggerVersion = 10;
    run.logger.LoggerMemory = 3;
    run.logger.LoggerSerial = -32768;
    run.RunText = std::string(48, 'x');
    EXPECT_EQ(run.line().size(), 82U);
    ASSERT_TRUE(run.saveFresh());
    EXPECT_EQ(run.saved()[0], 82);
}

TEST(SaveRun, AFreshRunKeepsTheSetupOfItsDay) {
    Downloaded run;
    AppConfig& config = run.Config;
    config.First_Ratio = 2.5;
    config.Fifth_Ratio = 0.1;
    config.Sixth_Ratio = 6.5;
    config.AnalogName[3] = "Oil";
    config.AnalogScale[3] = 0.5F;
    config.AnalogOffset[3] = -2;
    config.Decimals[3] = 2;
    config.Analog_Type[3] = 2;
    config.RWheel = 33.5;
    config.Crown_F = 41;
    config.Pinion_F = 9;
    ASSERT_TRUE(run.saveFresh());
    config = {};
    Bench again;
    again.load(run.saved());
    const RunImage& image = again.run->image;
    EXPECT_EQ(image.setup.GearRatio[1], 2.5F);
    EXPECT_EQ(image.setup.GearRatio[5], 0.1F);
    EXPECT_EQ(image.tail.GearRatio6, 6.5F);
    EXPECT_EQ(image.setup.AnalogName[3], "Oil     ");
    EXPECT_EQ(image.analog.AnalogScale[3], 0.5F);
    EXPECT_EQ(image.analog.AnalogOffset[3], -2);
    EXPECT_EQ(image.analog.AnalogDecimals[3], 2);
    EXPECT_EQ(image.tail.AnalogTypes[3], 2);
    EXPECT_EQ(image.analog.RearWheelDiameter, 33.5F);
    EXPECT_EQ(image.analog.CrownTeeth, 41);
    EXPECT_EQ(image.analog.PinionTeeth, 9);
}

TEST(SaveRun, AChangedRunKeepsItsLineAndItsSetup) {
    Bench bench;
    const Bytes file = fileOf(25, 1213);
    bench.load(file);
    ASSERT_TRUE(bench.save());
    EXPECT_EQ(bench.saved(), file);
}

TEST(SaveRun, ARatioBeyondASingleKeepsWhatTheRunHeld) {
    Downloaded run;
    run.run->image.setup.GearRatio[1] = 3;
    run.Config.First_Ratio = 1e300;
    ASSERT_TRUE(run.saveFresh());
    EXPECT_EQ(run.run->image.setup.GearRatio[1], 3);
}

TEST(IndexEntry, IsTheEndOfThePathAndTheTextWithoutItsDateWord) {
    const Downloaded run;
    const RunIndexEntry entry = indexEntryOf(run.run->path, run.RunText);
    EXPECT_EQ(entry.FileName, name);
    EXPECT_EQ(entry.Description, "Sun 15 Nov 2026 Run: 1 First");
    EXPECT_EQ(indexEntryOf("short.1d", run.RunText).FileName, "short.1d");
}

TEST(SaveRun, AFreshRunTakesItsHeaderLine) {
    Downloaded run;
    run.run->headerLine = "8 of the run before";
    ASSERT_TRUE(run.saveFresh());
    EXPECT_EQ(run.run->headerLine, run.line());
    EXPECT_EQ(decodeHeaderLine(runRecord(run.saved(), 1)), run.line());
}

// Of types 8 and 12 a download shows 2441 samples; a tool that changes the run saves them all.
TEST(SaveRun, AChangedRunKeepsTheRowsThatAreNotShown) {
    Bench bench;
    const Bytes file = fileOf(8, 2520);
    bench.load(file);
    bench.run->SampleCount = 2441;
    ASSERT_TRUE(bench.save());
    EXPECT_EQ(bench.saved(), file);
}

TEST(SaveRun, MakesTheFolderOfTheRuns) {
    Downloaded run;
    EXPECT_FALSE(run.files.folderExists("/kvo/Data"));
    ASSERT_TRUE(run.saveFresh());
    EXPECT_TRUE(run.files.folderExists("/kvo/Data"));
}

TEST(SaveRun, LeavesWhatStandsBehindTheLastRecord) {
    Bench bench;
    Bytes file = fileOf(25, 1213);
    const std::size_t written = file.size();
    file.resize(written + 100, 0xEE);
    bench.load(file);
    bench.run->image.samples[1].Status = 0x5A;
    ASSERT_TRUE(bench.save());
    ASSERT_EQ(bench.saved().size(), written + 100);
    EXPECT_EQ(bench.saved()[written], 0xEE);
    EXPECT_EQ(bench.saved()[2 * 84 + 12], 0x5A);
}

TEST(SaveRun, KeepsACopyOfTheRunItReplaces) {
    Downloaded run;
    const Bytes old = fileOf(20, 2048);
    run.files.put(runPath, old);
    ASSERT_TRUE(run.saveFresh());
    EXPECT_EQ(run.files.read("/kvo/Backup/26111514.52d.0001"), old);
}

TEST(SaveRun, TellsOfAFullDiskAndTheRunStaysInMemory) {
    Downloaded run;
    run.run->image.samples[5] = sampleOf(5);
    run.files.failWrites("/kvo", MemoryFiles::Failure::fullDisk);
    const auto saved = run.saveFresh();
    EXPECT_FALSE(saved);
    EXPECT_FALSE(saved.message.empty());
    EXPECT_FALSE(run.files.exists(runPath));
    EXPECT_EQ(run.run->image.samples[5], sampleOf(5));
    run.files.allowWrites();
    ASSERT_TRUE(run.saveFresh()) << "and can be saved again";
    Bench again;
    again.load(run.saved());
    EXPECT_EQ(again.run->image.samples[5], sampleOf(5));
}

TEST(SaveRun, ACountBeyondTheArrayWritesTheArray) {
    Downloaded run;
    run.run->SampleCount = 65535;
    ASSERT_TRUE(run.saveFresh());
    EXPECT_EQ(run.saved().size(), 2524U * 84 + 20);
}

} // namespace
} // namespace kvo::core
