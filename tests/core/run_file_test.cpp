#include "core/data_types.h"
#include "core/run_file.h"
#include "core/run_records.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace kvo::core {
namespace {

using platform::Bytes;
using testing::MemoryFiles;
using testing::ScriptedDialogs;

constexpr const char* path = "/kvo/Data/26111514.52d";
constexpr const char* name = "26111514.52d";

// What a load showed, in its order.
class RecordingView : public RunLoadView {
public:
    std::vector<std::string> shown;
    void setCaption(const std::string& caption) override { shown.push_back("caption " + caption); }
    void appendOverlayCaption(const std::string& caption) override {
        shown.push_back("overlay " + caption);
    }
    void setScaleRight(int right) override { shown.push_back("scale " + std::to_string(right)); }
    void setAnalogCaption(int channel, const std::string& caption) override {
        shown.push_back("analog " + std::to_string(channel) + " " + caption);
    }
    void showProgress(bool on) override { shown.push_back(on ? "progress" : "no progress"); }
    void loadRunTimes() override { shown.push_back("times"); }
};

struct Bench {
    MemoryFiles files;
    ScriptedDialogs dialogs;
    RecordingView view;
    std::unique_ptr<SharedState> state = std::make_unique<SharedState>();

    Bench() {
        state->AppFolder = "/kvo";
        state->DataFilePath = path;
    }
    void load(const Bytes& file) {
        files.put(path, file);
        state->LoadStatus = 0;
        LoadRun(*state, name, files, dialogs, view);
    }
    void loadOverlay(const Bytes& file) {
        files.put(path, file);
        state->LoadStatus = 0;
        LoadOverlayRun(*state, name, files, dialogs, view);
    }
    Bytes saved() const { return files.read(path).value_or(Bytes{}); }
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
std::unique_ptr<SharedState> runOf(int type, int rows) {
    auto state = std::make_unique<SharedState>();
    state->AppFolder = "/kvo";
    state->DataFilePath = path;
    state->SaveMode = -1;
    state->SampleCount = static_cast<std::uint16_t>(rows);
    state->RunHeaderLine = std::to_string(type) + " VRN35 Ver 1.2 128k Serial No 7  Date:x#";
    state->Run.header.EnginePickups = 3;
    state->Run.header.CrankGearTeeth = 40;
    state->Run.header.RecordOnRpm = -2;
    state->Run.header.ShiftLightTime4 = 1.5F;
    for (int i = 1; i <= rows; ++i) state->Run.samples[i] = sampleOf(i);
    for (int g = 1; g <= 5; ++g) state->Run.setup.GearRatio[g] = static_cast<float>(g) / 2;
    for (int c = 1; c <= 8; ++c) {
        state->Run.setup.AnalogName[c] = "Name  " + std::to_string(c) + " ";
        state->Run.analog.AnalogDecimals[c] = 1;
        state->Run.analog.AnalogScale[c] = static_cast<float>(c) / 4;
        state->Run.analog.AnalogOffset[c] = -1;
        state->Run.tail.AnalogTypes[c] = 2;
    }
    state->Run.analog.PinionTeeth = 10;
    state->Run.tail.reserved[2] = 0xAB;
    state->Run.tail.GearCount = 3;
    state->Run.tail.GearRatio6 = 9;
    state->Run.tail.TimeOffset = 140;
    return state;
}

Bytes fileOf(int type, int rows) {
    const auto state = runOf(type, rows);
    MemoryFiles files;
    EXPECT_TRUE(SaveRun(*state, files));
    return files.read(path).value_or(Bytes{});
}

// Record 1 with this text, and blanks behind it for as many records.
Bytes lineFile(const std::string& line, std::size_t records = 4) {
    ByteWriter writer;
    writer.u16le(static_cast<std::uint16_t>(line.size()));
    writer.characters(line);
    writer.fillTo(records * runRecordWidth);
    return writer.take();
}

TEST(DataTypes, TheTwoReadersDifferAsTold) {
    struct Row {
        int type;
        int rows;
        int overlay;
        int import;
        int timeOffset;
    };
    for (const Row& row : {Row{8, 2520, 2520, 2520, 160}, Row{12, 2520, 2520, 2520, 160},
             Row{17, 1724, 1725, 1724, 160}, Row{20, 2048, 2048, 2048, 160},
             Row{25, 1213, 1213, 1213, 80}, Row{32, 1360, 1860, 1360, 160},
             Row{43, 1360, 1860, 1360, 160}, Row{23, 0, 0, 1213, 80}, Row{29, 0, 0, 0, 80}}) {
        const auto facts = dataTypeFacts(row.type);
        ASSERT_TRUE(facts) << row.type;
        EXPECT_EQ(facts->rows, row.rows) << row.type;
        EXPECT_EQ(facts->overlayRows, row.overlay) << row.type;
        EXPECT_EQ(facts->importRows, row.import) << row.type;
        EXPECT_EQ(facts->timeOffset, row.timeOffset) << row.type;
    }
    for (const int type : {0, 1, 9, 99, 255, -8}) EXPECT_FALSE(dataTypeFacts(type)) << type;
}

TEST(RunFile, ComesBackByteForByteForEveryType) {
    for (const int type : {8, 12, 17, 20, 25, 32, 43}) {
        const int rows = dataTypeFacts(type)->rows;
        const Bytes file = fileOf(type, rows);
        EXPECT_EQ(file.size(), (static_cast<std::size_t>(rows) + 4) * 84 + 20) << type;
        Bench bench;
        bench.load(file);
        ASSERT_EQ(bench.state->LoadStatus, 0) << type;
        EXPECT_EQ(bench.state->Run.samples[rows], sampleOf(rows)) << type;
        EXPECT_EQ(bench.state->Run.tail.reserved[3], 0);
        bench.state->SaveMode = -1;
        ASSERT_TRUE(SaveRun(*bench.state, bench.files)) << type;
        EXPECT_EQ(bench.saved(), file) << type;
    }
}

TEST(LoadRun, FillsTheWholeImage) {
    const auto run = runOf(25, 1213);
    Bench bench;
    bench.load(fileOf(25, 1213));
    const SharedState& state = *bench.state;
    EXPECT_EQ(state.DataType, 25);
    EXPECT_EQ(state.SampleCount, 1213);
    EXPECT_EQ(state.RunHeaderLine, run->RunHeaderLine);
    EXPECT_EQ(state.PeakSpeedRaw, 99999);
    EXPECT_EQ(state.Run.header, run->Run.header);
    EXPECT_EQ(state.Run.setup, run->Run.setup);
    EXPECT_EQ(state.Run.analog, run->Run.analog);
    EXPECT_EQ(state.Run.tail, run->Run.tail);
    EXPECT_EQ(bench.dialogs.problems(), "");
    EXPECT_FALSE(bench.dialogs.hourglass());
}

TEST(LoadRun, ShowsItsStepsInTheirOrder) {
    Bench bench;
    bench.load(fileOf(32, 1360));
    const std::vector<std::string> expected{"caption Data File: 26111514.52d", "scale 1361",
        "progress", "analog 1 Name  1 ", "analog 2 Name  2 ", "analog 3 Name  3 ",
        "analog 4 Name  4 ", "analog 5 Name  5 ", "analog 6 Name  6 ", "analog 7 Name  7 ",
        "analog 8 Name  8 ", "no progress", "times"};
    EXPECT_EQ(bench.view.shown, expected);
}

TEST(LoadRun, TellsOfAMissingFile) {
    Bench bench;
    bench.dialogs.expectBox(std::string("File no Found                  \n") + path, 416, "Kvo");
    bench.state->DataFilePath = std::string(path) + "   ";
    LoadRun(*bench.state, name, bench.files, bench.dialogs, bench.view);
    EXPECT_EQ(bench.state->LoadStatus, -1);
    EXPECT_TRUE(bench.view.shown.empty());
    EXPECT_EQ(bench.dialogs.problems(), "");
}

TEST(LoadRun, RejectsWhatIsNoRun) {
    for (const char* line : {"99 VRN35 Ver", "23 VRN", "29 VRN", "", "VRN35 25 ", "25VRN35",
             "-25 x", "281 VRN", "1e1 x"}) {
        Bench bench;
        bench.dialogs.expectBox(
            "/KVO/DATA/26111514.52D\n\nIs Corrupt or Not a Kvo Data File\nand can't be lodded.", 48,
            "Kvo");
        bench.load(lineFile(line));
        EXPECT_EQ(bench.state->LoadStatus, -1) << line;
        EXPECT_EQ(bench.dialogs.beeps(), 1) << line;
        EXPECT_EQ(bench.dialogs.problems(), "") << line;
    }
}

TEST(LoadRun, TakesTheNumberInFrontOfALetter) {
    Bench bench;
    bench.load(lineFile("12VRN35 Ver"));
    EXPECT_EQ(bench.state->LoadStatus, 0);
    EXPECT_EQ(bench.state->DataType, 12);
    EXPECT_EQ(bench.state->SampleCount, 2520);
}

TEST(LoadRun, AnEmptyFileNeverPassesForTheRunBefore) {
    Bench bench;
    bench.load(fileOf(25, 1213));
    bench.dialogs.expectBoxTitled("Kvo");
    bench.load(Bytes{});
    EXPECT_EQ(bench.state->LoadStatus, -1);
    EXPECT_EQ(bench.state->DataType, 0);
    EXPECT_EQ(bench.state->Run.samples[7], sampleOf(7)) << "nothing of it was read";
    EXPECT_EQ(bench.dialogs.problems(), "");
}

TEST(LoadRun, ALengthThatCrossesTheRecordIsAFailedRead) {
    Bytes file = fileOf(25, 1213);
    file[0] = 83;
    Bench bench;
    bench.dialogs.expectBoxTitled("Kvo");
    bench.load(file);
    EXPECT_EQ(bench.state->LoadStatus, -1);
    EXPECT_EQ(bench.state->RunHeaderLine, "");
    EXPECT_EQ(bench.dialogs.problems(), "");
}

TEST(LoadRun, AShortFileKeepsStaleRowsAndTakesNoSpeedFromThem) {
    Bench bench;
    bench.load(fileOf(20, 2048));
    const auto other = runOf(20, 2048);
    for (int i = 1; i <= 2048; ++i) other->Run.samples[i].SpeedRaw = i;
    MemoryFiles files;
    ASSERT_TRUE(SaveRun(*other, files));
    Bytes file = files.read(path).value();
    file.resize(12 * 84 + 32); // ten rows and all but a byte of the eleventh
    bench.load(file);
    EXPECT_EQ(bench.state->SampleCount, 2048);
    EXPECT_EQ(bench.state->PeakSpeedRaw, 10);
    EXPECT_EQ(bench.state->Run.samples[10].SpeedRaw, 10);
    EXPECT_EQ(bench.state->Run.samples[11], sampleOf(11));
    EXPECT_EQ(bench.state->Run.samples[2048], sampleOf(2048));
    EXPECT_EQ(bench.state->Run.setup.GearRatio[1], 0.5F);
}

TEST(LoadRun, AShorterTypeLeavesTheRowsBehindIt) {
    Bench bench;
    bench.load(fileOf(20, 2048));
    bench.load(fileOf(25, 1213));
    EXPECT_EQ(bench.state->SampleCount, 1213);
    EXPECT_EQ(bench.state->Run.samples[2048], sampleOf(2048));
}

TEST(LoadRun, AFileCutAtAnyByteIsReadAsFarAsItGoes) {
    const Bytes whole = fileOf(25, 1213);
    const std::size_t rows = 2U * 84;
    const std::size_t blocks = (2U + 1213) * 84;
    for (std::size_t length = 1; length <= whole.size(); ++length) {
        // Between the first rows and the last every row is as any other.
        if (length > rows + 200 && length < blocks - 100) length = blocks - 100;
        Bench bench;
        bench.state->RunHeaderLine = "25 ";
        bench.load({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        const SharedState& state = *bench.state;
        ASSERT_EQ(state.LoadStatus, 0) << length;
        EXPECT_EQ(state.Run.header.CrankGearTeeth, length < 84 + 34 ? 0 : 40) << length;
        EXPECT_EQ(state.Run.samples[1].Index, length < rows + 33 ? 0 : 1) << length;
        EXPECT_EQ(state.Run.samples[2].Index, length < rows + 84 + 33 ? 0 : 2) << length;
        EXPECT_EQ(state.Run.setup.GearRatio[2], length < blocks + 84 ? 0 : 1) << length;
        EXPECT_EQ(state.Run.analog.PinionTeeth, length < blocks + 168 ? 0 : 10) << length;
        EXPECT_EQ(state.Run.tail.TimeOffset, length < blocks + 188 ? 80 : 140) << length;
    }
}

TEST(LoadRun, ATimeOffsetBelowOneIsNeverHonoured) {
    for (const int type : {8, 25, 43}) {
        for (const int offset : {0, -1, -32768}) {
            const auto run = runOf(type, dataTypeFacts(type)->rows);
            run->Run.tail.TimeOffset = static_cast<std::int16_t>(offset);
            MemoryFiles files;
            ASSERT_TRUE(SaveRun(*run, files));
            Bench bench;
            bench.load(files.read(path).value());
            EXPECT_EQ(bench.state->Run.tail.TimeOffset, type == 25 ? 80 : 160);
            bench.state->SaveMode = -1;
            ASSERT_TRUE(SaveRun(*bench.state, bench.files));
            const Bytes saved = bench.saved();
            EXPECT_EQ(saved[saved.size() - 2], type == 25 ? 80 : 160) << "a save stores it";
        }
    }
}

TEST(LoadRun, ARunWithoutATailTakesNothingFromTheRunBefore) {
    Bytes file = fileOf(25, 1213);
    Bench bench;
    bench.load(file);
    ASSERT_EQ(bench.state->Run.tail.GearCount, 3);
    file.resize(file.size() - 20);
    bench.load(file);
    EXPECT_EQ(bench.state->Run.tail.GearCount, 0);
    EXPECT_EQ(bench.state->Run.tail.GearRatio6, 0);
    EXPECT_EQ(bench.state->Run.tail.TimeOffset, 80);
}

TEST(LoadRun, CarriesAnyBitsOfTheBlocks) {
    const auto run = runOf(25, 1213);
    run->Run.analog.AnalogScale[1] = std::numeric_limits<float>::quiet_NaN();
    run->Run.analog.CrownTeeth = -std::numeric_limits<float>::infinity();
    run->Run.setup.AnalogName[1] = std::string("a\0\x01\xff\n\r\tz", 8);
    MemoryFiles files;
    ASSERT_TRUE(SaveRun(*run, files));
    const Bytes file = files.read(path).value();
    Bench bench;
    bench.load(file);
    EXPECT_EQ(bench.view.shown.at(3), "analog 1 a");
    bench.state->SaveMode = -1;
    ASSERT_TRUE(SaveRun(*bench.state, bench.files));
    EXPECT_EQ(bench.saved(), file);
}

TEST(LoadOverlayRun, LeavesTheMainRunAlone) {
    Bench bench;
    bench.load(fileOf(25, 1213));
    bench.view.shown.clear();
    const auto before = std::make_unique<SharedState>(*bench.state);
    bench.loadOverlay(fileOf(20, 2048));
    EXPECT_EQ(bench.state->LoadStatus, 0);
    EXPECT_EQ(bench.state->OverlayDataType, 20);
    EXPECT_EQ(bench.state->Overlay.samples[2048], sampleOf(2048));
    EXPECT_EQ(bench.state->DataType, 25);
    EXPECT_EQ(bench.state->SampleCount, 1213);
    EXPECT_EQ(bench.state->PeakSpeedRaw, before->PeakSpeedRaw);
    EXPECT_EQ(bench.state->RunHeaderLine, before->RunHeaderLine);
    EXPECT_EQ(bench.state->Run.tail, before->Run.tail);
    ASSERT_FALSE(bench.view.shown.empty());
    EXPECT_EQ(bench.view.shown[0], "overlay     Overlay File: 26111514.52d");
    EXPECT_EQ(bench.view.shown[1], "progress") << "the scale is not touched";
    EXPECT_EQ(bench.view.shown.back(), "no progress") << "nor the times";
}

TEST(LoadOverlayRun, TakesTheBlocksOfAType32ForRows) {
    const Bytes file = fileOf(32, 1360);
    Bench bench;
    bench.loadOverlay(file);
    const auto setup = runRecord(file, 1363);
    RunSample taken;
    ASSERT_TRUE(decode(setup, taken));
    EXPECT_EQ(bench.state->Overlay.samples[1361], taken);
    EXPECT_EQ(bench.state->Overlay.samples[1363], RunSample{}) << "20 bytes are no row";
    EXPECT_EQ(bench.state->Overlay.setup, RunSetupBlock{}) << "read past the end";
    EXPECT_EQ(bench.state->Overlay.tail.TimeOffset, 160);
}

TEST(LoadOverlayRun, HasOneRowMoreOfType17) {
    Bench bench;
    bench.loadOverlay(fileOf(17, 1724));
    RunSample taken;
    ASSERT_TRUE(decode(runRecord(bench.saved(), 1727), taken));
    EXPECT_EQ(bench.state->Overlay.samples[1725], taken);
}

TEST(LoadOverlayRun, TellsOfAMissingFile) {
    Bench bench;
    bench.dialogs.expectBox(std::string(" File no Found\n") + path, 416, "Kvo");
    LoadOverlayRun(*bench.state, name, bench.files, bench.dialogs, bench.view);
    EXPECT_EQ(bench.state->LoadStatus, -1);
    EXPECT_EQ(bench.dialogs.problems(), "");
}

TEST(LoadOverlayRun, RejectsWhatIsNoRun) {
    for (const char* line : {"99 VRN35", "23 VRN", "29 VRN", "", "65561 x"}) {
        Bench bench;
        bench.state->RunHeaderLine = "25 the main run";
        bench.dialogs.expectBox("Not a Kvo Data File", 48, "Kvo");
        bench.loadOverlay(lineFile(line));
        EXPECT_EQ(bench.state->LoadStatus, -1) << line;
        EXPECT_EQ(bench.dialogs.problems(), "") << line;
    }
}

TEST(LoadOverlayRun, AShortFileKeepsTheRowsOfTheOverlayBefore) {
    Bench bench;
    bench.loadOverlay(fileOf(25, 1213));
    Bytes file = fileOf(25, 1213);
    file.resize(100 * 84);
    bench.loadOverlay(file);
    EXPECT_EQ(bench.state->LoadStatus, 0);
    EXPECT_EQ(bench.state->Overlay.samples[1213], sampleOf(1213));
    EXPECT_EQ(bench.state->Overlay.tail.GearCount, 0);
}

struct FreshRun : Bench {
    FreshRun() {
        state->DataType = 25;
        state->SampleCount = 1213;
        state->LoggerModel = 35;
        state->LoggerVersion = 3;
        state->LoggerMemory = 2;
        state->LoggerSerial = 7;
        state->RunText = " Date:Sun 15 Nov 2026 Run: 1 First#";
    }
};

TEST(HeaderLine, SaysWhoTookTheRun) {
    FreshRun run;
    EXPECT_EQ(headerLine(*run.state),
        "25 VRN35 Ver 1.2 128k Serial No 7  Date:Sun 15 Nov 2026 Run: 1 First#");
    run.state->LoggerSerial = -7;
    run.state->LoggerMemory = 4;
    run.state->LoggerVersion = 11;
    EXPECT_EQ(
        headerLine(*run.state), "25 VRN35 Ver  k Serial No-7  Date:Sun 15 Nov 2026 Run: 1 First#");
}

TEST(HeaderLine, LosesTheTailOfALongText) {
    FreshRun run;
    run.state->RunText = std::string(47, 'x') + "#";
    EXPECT_TRUE(headerLine(*run.state).ends_with(" " + std::string(47, 'x') + "#"));
    run.state->RunText = std::string(48, 'x') + "#";
    EXPECT_TRUE(headerLine(*run.state).ends_with(" " + std::string(47, 'x') + "#"));
    run.state->RunText = std::string(300, 'x');
    EXPECT_TRUE(headerLine(*run.state).ends_with(" " + std::string(47, 'x') + "#"));
}

TEST(HeaderLine, NeverLeavesItsRecord) {
    FreshRun run;
    run.state->DataType = 255;
    run.state->LoggerModel = 255;
    run.state->LoggerVersion = 10;
    run.state->LoggerMemory = 3;
    run.state->LoggerSerial = -32768;
    run.state->RunText = std::string(48, 'x');
    EXPECT_EQ(headerLine(*run.state).size(), 82U);
    ASSERT_TRUE(SaveRun(*run.state, run.files));
    EXPECT_EQ(run.saved()[0], 82);
}

TEST(SaveRun, AFreshRunKeepsTheSetupOfItsDay) {
    FreshRun run;
    AppConfig& config = run.state->Config;
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
    ASSERT_TRUE(SaveRun(*run.state, run.files));
    config = {};
    Bench again;
    again.load(run.saved());
    const RunImage& image = again.state->Run;
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
    bench.state->Config.First_Ratio = 9;
    bench.state->RunText = "other";
    bench.state->SaveMode = -1;
    ASSERT_TRUE(SaveRun(*bench.state, bench.files));
    EXPECT_EQ(bench.saved(), file);
    EXPECT_EQ(bench.state->RunIndexBuffer[1], RunIndexEntry{});
}

TEST(SaveRun, ARatioBeyondASingleKeepsWhatTheRunHeld) {
    FreshRun run;
    run.state->Run.setup.GearRatio[1] = 3;
    run.state->Config.First_Ratio = 1e300;
    ASSERT_TRUE(SaveRun(*run.state, run.files));
    EXPECT_EQ(run.state->Run.setup.GearRatio[1], 3);
}

TEST(SaveRun, PreparesTheEntryOfTheIndex) {
    FreshRun run;
    ASSERT_TRUE(SaveRun(*run.state, run.files));
    EXPECT_EQ(run.state->RunIndexBuffer[1].FileName, name);
    EXPECT_EQ(run.state->RunIndexBuffer[1].Description, "Sun 15 Nov 2026 Run: 1 First");
}

TEST(SaveRun, MakesTheFolderOfTheRuns) {
    FreshRun run;
    EXPECT_FALSE(run.files.folderExists("/kvo/Data"));
    ASSERT_TRUE(SaveRun(*run.state, run.files));
    EXPECT_TRUE(run.files.folderExists("/kvo/Data"));
}

TEST(SaveRun, LeavesWhatStandsBehindTheLastRecord) {
    Bench bench;
    Bytes file = fileOf(25, 1213);
    const std::size_t written = file.size();
    file.resize(written + 100, 0xEE);
    bench.load(file);
    bench.state->SaveMode = -1;
    bench.state->Run.samples[1].Status = 0x5A;
    ASSERT_TRUE(SaveRun(*bench.state, bench.files));
    ASSERT_EQ(bench.saved().size(), written + 100);
    EXPECT_EQ(bench.saved()[written], 0xEE);
    EXPECT_EQ(bench.saved()[2 * 84 + 12], 0x5A);
}

TEST(SaveRun, KeepsACopyOfTheRunItReplaces) {
    FreshRun run;
    const Bytes old = fileOf(20, 2048);
    run.files.put(path, old);
    ASSERT_TRUE(SaveRun(*run.state, run.files));
    EXPECT_EQ(run.files.read("/kvo/Backup/26111514.52d.0001"), old);
}

TEST(SaveRun, TellsOfAFullDiskAndTheRunStaysInMemory) {
    FreshRun run;
    run.state->Run.samples[5] = sampleOf(5);
    run.files.failWrites("/kvo", MemoryFiles::Failure::fullDisk);
    const auto saved = SaveRun(*run.state, run.files);
    EXPECT_FALSE(saved);
    EXPECT_FALSE(saved.message.empty());
    EXPECT_FALSE(run.files.exists(path));
    EXPECT_EQ(run.state->Run.samples[5], sampleOf(5));
    run.files.allowWrites();
    ASSERT_TRUE(SaveRun(*run.state, run.files)) << "and can be saved again";
    Bench again;
    again.load(run.saved());
    EXPECT_EQ(again.state->Run.samples[5], sampleOf(5));
}

TEST(SaveRun, ACountBeyondTheArrayWritesTheArray) {
    FreshRun run;
    run.state->SampleCount = 65535;
    ASSERT_TRUE(SaveRun(*run.state, run.files));
    EXPECT_EQ(run.saved().size(), 2524U * 84 + 20);
}

} // namespace
} // namespace kvo::core
