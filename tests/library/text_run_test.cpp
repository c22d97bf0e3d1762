#include "library/text_run.h"

#include "core/run_file.h"
#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace kvo::library {
namespace {

using core::OpenRun;

class TextRun : public ::testing::Test {
protected:
    TextRun() {
        config.RWheel = 31.5;
        config.Crown_F = 49;
        config.Pinion_F = 15;
        config.AnalogScale.fill(2.5F);
        config.Decimals.fill(2);
        config.Analog_Type.fill(3);
    }
    static std::string header(int type) {
        return std::to_string(type) +
               " VRN old program\r\n"
               "4 2 1 13 8249 53 49 8488 11628 2.11 3327 18.15 6885 17.21 4380 4.18 \r\n";
    }
    // Row i of a type with `analogs` tokens and perhaps exhausts.
    static std::string row(int i, int analogs, bool exhausts) {
        std::string line = std::to_string(i) + " 6555 9236 440 7380 29 ";
        for (int k = 1; k <= analogs; ++k) line += std::to_string(100 + k) + ' ';
        line += "77 ";
        for (int e = 1; exhausts && e <= 8; ++e) line += std::to_string(200 + e) + ' ';
        return line + "\r\n";
    }
    static std::string rows(int count, int analogs, bool exhausts) {
        std::string text;
        for (int i = 1; i <= count; ++i) text += row(i, analogs, exhausts);
        return text;
    }
    static std::string behind() {
        std::string text = "2.7\r\n1.9\r\n1.5\r\n1.2\r\n1\r\n";
        for (int n = 1; n <= 8; ++n) text += "Name too long " + std::to_string(n) + "\r\n";
        for (int n = 1; n <= 8; ++n) text += "1 " + std::to_string(n) + ".5 -3 \r\n";
        return text;
    }
    TextRunOutcome read(const std::string& text, const RowProgress& progress = {}) {
        return readTextRun(text, config, *run, progress);
    }
    const core::RunSample& sample(int i) const { return run->image.samples[i]; }

    core::AppConfig config;
    std::unique_ptr<OpenRun> run = std::make_unique<OpenRun>();
};

TEST_F(TextRun, AWholeFileIsReadWithoutAWord) {
    const auto outcome = read(header(25) + rows(1213, 8, true) + behind());
    EXPECT_TRUE(outcome.known);
    EXPECT_FALSE(outcome.corrupt);
    EXPECT_EQ(run->headerLine, "25 VRN old program");
    EXPECT_EQ(run->SampleCount, 1213);
    EXPECT_EQ(run->image.header.RecordOnRpm, 8249);
    EXPECT_EQ(run->image.header.ShiftLightTime4, 4.18F);
    EXPECT_EQ(sample(1213).Index, 1213);
    EXPECT_EQ(sample(1).SpeedRaw, 7380);
    EXPECT_EQ(sample(1).Status, 29);
    EXPECT_EQ(sample(1).Analog[8], 108);
    EXPECT_EQ(sample(1).Aux, 77);
    EXPECT_EQ(sample(1).Exhaust[8], 208);
    EXPECT_EQ(run->image.setup.GearRatio[1], 2.7F);
    EXPECT_EQ(run->image.setup.AnalogName[8], "Name too");
    EXPECT_EQ(run->image.analog.AnalogScale[8], 8.5F);
    EXPECT_EQ(run->image.analog.AnalogDecimals[1], 1);
    EXPECT_EQ(run->image.analog.AnalogOffset[1], -3);
    EXPECT_EQ(run->image.analog.RearWheelDiameter, 31.5F);
    EXPECT_EQ(run->image.tail.AnalogTypes[1], 3);
}

TEST_F(TextRun, LinesMayEndInAnyWayAndTheLastInNone) {
    const std::string dos = header(25) + rows(1213, 8, true) + behind();
    for (const char* end : {"\n", "\r"}) {
        std::string text;
        for (const char c : dos) {
            if (c == '\n')
                text += end;
            else if (c != '\r')
                text += c;
        }
        text.pop_back();
        *run = {};
        EXPECT_FALSE(read(text).corrupt);
        EXPECT_EQ(run->SampleCount, 1213);
        EXPECT_EQ(run->image.analog.AnalogScale[8], 8.5F);
    }
}

TEST_F(TextRun, TokensBeyondTheEighthArePassedOverWhateverTheyHold) {
    std::string text = header(43);
    for (int i = 1; i <= 1360; ++i)
        text += "1 2 3 4 5 6 11 12 13 14 15 16 17 18 x 1e308 -1 9 1 2 3 4 5 6 7 8 \n";
    EXPECT_FALSE(read(text + behind()).corrupt);
    EXPECT_EQ(sample(7).Analog[8], 18);
    EXPECT_EQ(sample(7).Aux, 9);
    EXPECT_EQ(sample(7).Exhaust[1], 1);
}

TEST_F(TextRun, AnAnalogOf256ClearsTheFirstOfItsRow) {
    run->image.samples[1].Analog[3] = 9;
    const auto outcome = read(header(8) + "1 0 0 0 0 0 50 255 256 60 0 \n");
    EXPECT_TRUE(outcome.corrupt);
    EXPECT_EQ(sample(1).Analog[1], 0);
    EXPECT_EQ(sample(1).Analog[2], 255);
    EXPECT_EQ(sample(1).Analog[3], 9);
    EXPECT_EQ(sample(1).Analog[4], 60);
}

TEST_F(TextRun, AnExhaustOf256ClearsItsOwnPlace) {
    run->image.samples[1].Exhaust[3] = 9;
    (void)read(header(25) + "1 0 0 0 0 0 1 2 3 4 5 6 7 8 0 11 12 256 14 15 16 17 18 \n");
    EXPECT_EQ(sample(1).Exhaust[3], 0);
    EXPECT_EQ(sample(1).Exhaust[4], 14);
    EXPECT_EQ(sample(1).Analog[1], 1);
}

TEST_F(TextRun, WhatDoesNotFitIsNotedAndItsFieldStays) {
    run->image.samples[1].EngineRpm = 5;
    run->image.samples[1].InputRpm = 6;
    run->image.samples[1].SpeedRaw = 7;
    run->image.samples[1].Analog[1] = 8;
    const auto outcome = read(header(8) + "1 32768 x 4 3000000000 1 -1 2 3 4 0 \n");
    EXPECT_TRUE(outcome.corrupt);
    EXPECT_EQ(sample(1).EngineRpm, 5);
    EXPECT_EQ(sample(1).InputRpm, 6);
    EXPECT_EQ(sample(1).SpeedRaw, 7);
    EXPECT_EQ(sample(1).Analog[1], 8);
    EXPECT_EQ(sample(1).OutputRpm, 4);
}

TEST_F(TextRun, AFileThatEndsInsideTheRowsTakesTheAnalogsOfTheConfiguration) {
    const auto outcome = read(header(12) + rows(10, 4, false));
    EXPECT_TRUE(outcome.known);
    EXPECT_TRUE(outcome.corrupt);
    EXPECT_EQ(run->SampleCount, 10);
    EXPECT_EQ(run->image.analog.AnalogScale[1], 2.5F);
    EXPECT_EQ(run->image.analog.AnalogDecimals[8], 2);
    EXPECT_EQ(run->image.analog.CrownTeeth, 49);
    EXPECT_EQ(run->image.analog.PinionTeeth, 15);
    EXPECT_EQ(run->image.tail.AnalogTypes[8], 3);
}

TEST_F(TextRun, TwentyLinesBehindTheRowsAreTooFew) {
    std::string lines = behind();
    lines.erase(lines.rfind("1 8.5"));
    EXPECT_FALSE(read(header(25) + rows(1213, 8, true) + lines).corrupt);
    EXPECT_EQ(run->image.analog.AnalogScale[1], 2.5F);
    EXPECT_EQ(run->image.setup.GearRatio[5], 1);
}

TEST_F(TextRun, NamesThatNeverCameAreBlank) {
    (void)read(header(25) + rows(1213, 8, true) + "2.7\n1.9\n1.5\n1.2\n1\nBoost\n");
    EXPECT_EQ(run->image.setup.AnalogName[1], "Boost   ");
    EXPECT_EQ(run->image.setup.AnalogName[2], "        ");
    EXPECT_EQ(run->image.setup.AnalogName[8], "        ");
    // So in the file: blanks behind the ratios.
    testing::MemoryFiles files;
    run->path = "/kvo/Data/26111514.52d";
    ASSERT_TRUE(core::SaveImportedRun(*run, "/kvo", files));
    const platform::Bytes file = *files.read(run->path);
    const auto record = core::runRecord(file, 1213 + 3);
    const std::string names(record.begin() + 20, record.begin() + 84);
    EXPECT_EQ(names, "Boost" + std::string(59, ' '));
}

TEST_F(TextRun, WhatIsNoRunOfThatProgramIsLeftAlone) {
    for (const std::string& text :
        {std::string(), std::string("hello"), header(7) + row(1, 4, false),
            header(29) + row(1, 8, false), std::string("25VRN\r\n1\r\n1\r\n"), header(25),
            std::string("25 \r\n"), std::string("\0\0\0\0", 4),
            std::string("\xFF\xFE"
                        "2\0005\0 \0",
                8)}) {
        run->DataType = 1;
        run->SampleCount = 7;
        EXPECT_FALSE(read(text).known) << text;
        EXPECT_EQ(run->DataType, 1);
        EXPECT_EQ(run->SampleCount, 7);
    }
}

TEST_F(TextRun, HostileRowsAreReadToTheirEnd) {
    const std::string rubbish[] = {std::string(1000000, '9') + "\n", std::string(100, ' ') + "\n",
        std::string("\0 1 \0 2", 7) + "\n", "1e308 1e308 1e308 1e308 1e308 1e308 1e308 \n", "\n"};
    for (const std::string& line : rubbish) {
        *run = {};
        std::string text = header(8);
        for (int i = 0; i < 3; ++i) text += line;
        const auto outcome = read(text);
        EXPECT_TRUE(outcome.known);
        EXPECT_TRUE(outcome.corrupt);
        EXPECT_EQ(run->SampleCount, 3);
        EXPECT_EQ(sample(1).Analog[1], 0);
    }
}

TEST_F(TextRun, HostileFilesAreReadOrRefusedWhole) {
    const std::string whole = header(25) + rows(1213, 8, true) + behind();
    const auto replaced = [](std::string text, std::string_view from, std::string_view to) {
        for (std::size_t at = text.find(from); at != std::string::npos;
             at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
        return text;
    };
    const std::string_view zero("\0", 1);
    std::string wide;
    for (const char c : whole) wide += {c, '\0'};
    struct {
        const char* what;
        std::string text;
        bool known;
        bool corrupt;
        int rows;
    } const files[] = {
        {"no line end", replaced(whole, "\r\n", ""), false, false, 0},
        {"wide letters", wide, false, false, 0},
        {"wide letters with their mark", "\xFF\xFE" + wide, false, false, 0},
        {"zeros for blanks", replaced(whole, " ", zero), false, false, 0},
        {"zeros for digits", replaced(whole, "77", zero), true, true, 1213},
        {"zeros for line ends", replaced(whole, "\r\n", zero), false, false, 0},
        {"letters for digits", replaced(whole, "6555", "much"), true, true, 1213},
        {"an exponent", replaced(whole, "6555", "1e308"), true, true, 1213},
        {"hundreds of digits", replaced(whole, "6555", std::string(400, '9')), true, true, 1213},
        {"thirty tokens", replaced(whole, "208 \r\n", "208 1 2 3 4 5 6 7 \r\n"), true, false, 1213},
        {"carriage returns alone", replaced(whole, "\r\n", "\r"), true, false, 1213},
        {"two line ends for one", replaced(whole, "\r\n", "\r\r\n"), true, true, 1213},
        {"rubbish behind", whole + std::string(100000, 'x'), true, false, 1213},
    };
    for (const auto& file : files) {
        *run = {};
        const auto outcome = read(file.text);
        EXPECT_EQ(outcome.known, file.known) << file.what;
        EXPECT_EQ(outcome.corrupt, file.corrupt) << file.what;
        EXPECT_EQ(run->SampleCount, file.rows) << file.what;
    }
}

TEST_F(TextRun, ALineOf100MegabytesIsOneRow) {
    std::string text = header(8) + "1 ";
    text.append(100'000'000, '9');
    const auto outcome = read(text);
    EXPECT_TRUE(outcome.known);
    EXPECT_TRUE(outcome.corrupt);
    EXPECT_EQ(run->SampleCount, 1);
    EXPECT_EQ(sample(1).Index, 1);
    EXPECT_EQ(sample(1).EngineRpm, 0);
}

TEST_F(TextRun, TheCallerSeesEachRowAndMayEndIt) {
    int told = 0;
    const auto outcome = read(header(8) + rows(100, 4, false), [&](int done, int all) {
        EXPECT_EQ(done, ++told);
        EXPECT_EQ(all, 2520);
        return done < 7;
    });
    EXPECT_TRUE(outcome.stopped);
    EXPECT_EQ(told, 7);
}

TEST(SaveImportedRun, HasAllRowsOfItsTypeAndNoTailBlock) {
    testing::MemoryFiles files;
    auto run = std::make_unique<OpenRun>();
    run->path = "/kvo/Data/26111514.52d";
    run->DataType = 23;
    run->SampleCount = 5;
    run->headerLine = "23 VRN Date:Sun 15 Nov 2026 Run: 1#";
    run->image.tail.TimeOffset = 81;
    run->image.samples[5].EngineRpm = 4242;
    ASSERT_TRUE(core::SaveImportedRun(*run, "/kvo", files));
    const platform::Bytes file = *files.read(run->path);
    // Header line, settings, rows and two blocks, the last one only as long as its payload.
    EXPECT_EQ(file.size(), (2U + 1213U + 1U) * 84U + 84U);
    core::RunSample row;
    ASSERT_TRUE(core::decode(core::runRecord(file, 7), row));
    EXPECT_EQ(row.EngineRpm, 4242);
    EXPECT_EQ(core::decodeHeaderLine(core::runRecord(file, 1)), run->headerLine);
}

TEST(ImportTexts, NameDescriptionAndHeaderLine) {
    EXPECT_EQ(importName({2026, 11, 15, 0, 0, 0}, "RUN.012"), "26111500.12d");
    EXPECT_EQ(importName({2026, 1, 5, 0, 0, 0}, "RUN.999"), "26010509.99d");
    EXPECT_EQ(importName({2026, 1, 5, 0, 0, 0}, "x"), "26010500.00d");
    const std::string description = importDescription("Sun 15 Nov 2026", "12 First");
    EXPECT_EQ(description, "Sun 15 Nov 2026 Run: 12 First");
    EXPECT_EQ(importHeaderLine("8 VRN", description), "8 VRN Date:Sun 15 Nov 2026 Run: 12 First#");
    EXPECT_EQ(importHeaderLine(std::string(90, 'x'), description), std::string(82, 'x'));
}

} // namespace
} // namespace kvo::library
