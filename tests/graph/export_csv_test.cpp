#include "graph/export_csv.h"

#include "channels/channels.h"
#include "core/setup_kinds.h"
#include "tests/support/graph_calls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;

namespace {

// A run whose rows go through what a logger can write, the odd values too.
struct ExportCsv : ::testing::Test {
    void open(int type, int rows) {
        core::OpenRun& run = state->Run;
        run.DataType = static_cast<std::uint8_t>(type);
        run.SampleCount = static_cast<std::uint16_t>(rows);
        core::RunImage& image = run.image;
        image.header.CrankGearTeeth = 53;
        image.header.BasketGearTeeth = 49;
        image.tail.TimeOffset = 5;
        image.analog.RearWheelDiameter = 33.5F;
        image.analog.CrownTeeth = 42;
        image.analog.PinionTeeth = 17;
        for (int n = 1; n <= 8; ++n) {
            image.analog.AnalogScale[n] = 0.37F * static_cast<float>(n);
            image.analog.AnalogOffset[n] = static_cast<float>(-n);
            image.analog.AnalogDecimals[n] = static_cast<std::uint8_t>(n % 3);
            image.tail.AnalogTypes[n] = static_cast<std::uint8_t>(n % 5);
            image.setup.AnalogName[n] = "Name " + std::to_string(n) + "  ";
        }
        for (int i = 1; i <= rows; ++i) fill(image.samples[i], i);
    }
    static void fill(core::RunSample& row, int i) {
        row.Index = static_cast<std::int16_t>(i);
        row.EngineRpm = static_cast<std::int16_t>(i * 37 % 12000 - 20);
        row.InputRpm = static_cast<std::int16_t>(i * 53 % 9000);
        row.OutputRpm = static_cast<std::int16_t>(i % 7 == 0 ? 0 : i * 29 % 8000);
        row.SpeedRaw = i % 11 == 0 ? 0 : i * 41;
        row.Status = static_cast<std::uint8_t>(i * 13 % 128);
        for (int n = 1; n <= 8; ++n) {
            row.Analog[n] = static_cast<std::uint8_t>(i * n % 256);
            row.Exhaust[n] = static_cast<std::uint8_t>(i * (n + 3) % 256);
        }
    }
    RunView run() const { return viewOfRun(state->Run); }
    std::string csv(SampleStretch stretch, CsvLook look = {}) {
        const platform::Bytes bytes = runAsCsv(run(), state->Config, stretch, look);
        return {bytes.begin(), bytes.end()};
    }
    std::string csv() { return csv(wholeRun(run())); }

    static std::vector<std::string> split(const std::string& text, const std::string& at) {
        std::vector<std::string> parts;
        std::size_t begin = 0;
        for (std::size_t end; (end = text.find(at, begin)) != std::string::npos;) {
            parts.push_back(text.substr(begin, end - begin));
            begin = end + at.size();
        }
        parts.push_back(text.substr(begin));
        return parts;
    }
    // The cells of a table without quotes; its lines end with CR LF, the last one too.
    static std::vector<std::vector<std::string>> cells(const std::string& text) {
        std::vector<std::vector<std::string>> all;
        for (const std::string& line : split(text, "\r\n")) all.push_back(split(line, ","));
        EXPECT_EQ(all.back(), std::vector<std::string>{""});
        all.pop_back();
        return all;
    }
    std::vector<std::string> header() { return cells(csv({1, 0})).front(); }
    // The cell of a column in the line of a sample of the whole run.
    std::string cell(const std::string& column, int sample) {
        const auto all = cells(csv());
        for (std::size_t c = 0; c < all.front().size(); ++c)
            if (all.front()[c] == column) return all.at(static_cast<std::size_t>(sample)).at(c);
        return "no such column";
    }

    std::unique_ptr<core::SharedState> state = std::make_unique<core::SharedState>();
    GraphView view;
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(ExportCsv, TheLineOfNamesSaysTheUnits) {
    open(17, 3);
    EXPECT_EQ(header(),
        (Names{"Time (s)", "Engine (rpm)", "Clutch (rpm)", "Input (rpm)", "Output (rpm)",
            "Slip (%)", "Ratio", "Speed (mph)", "RoCoS (g)", "Tyre Growth (in)", "Name 1 (Deg C)",
            "Name 2", "Name 3", "Name 4", "Name 5", "Name 6 (Deg C)", "Name 7", "Name 8",
            "Trans Brake", "Wide Open Throttle", "Shift Light", "Dyna 2 Step"}));
}

TEST_F(ExportCsv, ATypeHasItsOwnColumns) {
    const std::map<int, std::pair<int, bool>> columns{{8, {4, false}}, {12, {4, false}},
        {17, {8, false}}, {20, {6, true}}, {25, {8, true}}, {32, {8, true}}, {43, {8, true}}};
    for (const auto& [type, facts] : columns) {
        open(type, 2);
        const Names names = header();
        const auto count = [&names](const std::string& front) {
            return std::count_if(names.begin(), names.end(),
                [&front](const std::string& name) { return name.starts_with(front); });
        };
        EXPECT_EQ(count("Name "), facts.first) << type;
        EXPECT_EQ(count("Exhaust "), facts.second ? 8 : 0) << type;
        EXPECT_EQ(count("Clutch"), 1) << type;
    }
    state->Config.Vehicle_Type = core::car;
    EXPECT_EQ(header()[2], "Input (rpm)");
}

TEST_F(ExportCsv, TemperaturesAreInTheUnitOfTheWindow) {
    open(32, 2);
    state->Run.image.samples[1].Exhaust[1] = 100;
    EXPECT_EQ(cell("Exhaust 1 (Deg C)", 1), "400");
    state->Config.Exhaust = core::flagOn;
    EXPECT_EQ(cell("Exhaust 1 (Deg F)", 1), "752");
    EXPECT_EQ(header()[10], "Name 1 (Deg F)");
}

// Every cell of every type against what the labels show at the same sample.
TEST_F(ExportCsv, ValuesAreThoseOfTheReadOuts) {
    for (const int type : {8, 12, 17, 20, 25, 32, 43}) {
        open(type, 700);
        const auto all = cells(csv());
        ASSERT_EQ(all.size(), 701U);
        std::vector<int> shown;
        for (const int channel : labelOrder()) {
            const ChannelFacts& facts = channelFacts(channel);
            const bool analog = facts.kind == ChannelKind::analog;
            const bool exhaust = facts.kind == ChannelKind::exhaust;
            const int analogs = type == 20 ? 6 : type < 17 ? 4 : 8;
            if ((!analog || facts.number <= analogs) && (!exhaust || type > 17))
                shown.push_back(channel);
        }
        ASSERT_EQ(all[0].size(), shown.size() + 5) << type;
        std::map<int, std::string> labels;
        for (int i = 1; i <= 700; ++i) {
            const ReadOutTexts texts = kvo::testing::timeLineTexts(*state, view, i);
            for (const LabelText& one : texts.labels) labels[one.channel] = one.text;
            for (const LabelText& one : texts.emptied) labels[one.channel].clear();
            const std::vector<std::string>& line = all[static_cast<std::size_t>(i)];
            ASSERT_EQ("Time: " + line[0] + " sec", texts.loggerTime) << type;
            for (std::size_t c = 0; c < shown.size(); ++c) {
                std::string wanted = labels[shown[c]];
                if (wanted == "N/A") wanted.clear();
                if (wanted.ends_with(" in")) wanted.resize(wanted.size() - 3);
                ASSERT_EQ(line[c + 1], wanted)
                    << "type " << type << ", sample " << i << ", " << channelFacts(shown[c]).name;
            }
        }
    }
}

TEST_F(ExportCsv, SwitchesAreOneAndNought) {
    open(32, 2);
    state->Run.image.samples[1].Status = core::TransBrake | core::ShiftLight | 0x70;
    state->Run.image.samples[2].Status = core::WideOpenThrottle | core::Dyna2Step;
    const std::string names[] = {"Trans Brake", "Wide Open Throttle", "Shift Light", "Dyna 2 Step"};
    const char* const first[] = {"1", "0", "1", "0"};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(cell(names[i], 1), first[i]);
        EXPECT_NE(cell(names[i], 2), first[i]);
    }
}

TEST_F(ExportCsv, WithoutBasketTeethClutchAndSlipAloneAreEmpty) {
    open(32, 20);
    state->Run.image.header.BasketGearTeeth = 0;
    EXPECT_EQ(cell("Clutch (rpm)", 16), "");
    EXPECT_EQ(cell("Slip (%)", 16), "");
    EXPECT_EQ(cell("Engine (rpm)", 16), "572");
    EXPECT_NE(cell("Speed (mph)", 16), "");
    EXPECT_NE(cell("Name 2", 16), "");
}

TEST_F(ExportCsv, ValuesThatCannotBeFormedAreEmpty) {
    open(32, 40);
    state->Run.image.analog.AnalogScale[2] = 3e38F;
    state->Run.image.tail.AnalogTypes[4] = 9;
    state->Run.image.samples[20].OutputRpm = 0;
    for (const char* column : {"Name 2", "Name 4", "Ratio", "Tyre Growth (in)"})
        EXPECT_EQ(cell(column, 20), "") << column;
    EXPECT_EQ(cell("RoCoS (g)", 1), "");
}

TEST_F(ExportCsv, ExhaustsThatTakeTurnsKeepWhatTheyHad) {
    open(20, 20);
    for (int i = 1; i <= 20; ++i) {
        core::RunSample& row = state->Run.image.samples[i];
        row.Status = static_cast<std::uint8_t>(i < 10 ? 0x00 : 0x10); // exhaust 1, then 2
        row.Analog[7] = static_cast<std::uint8_t>(i);
    }
    EXPECT_EQ(cell("Exhaust 1 (Deg C)", 9), "36");
    EXPECT_EQ(cell("Exhaust 1 (Deg C)", 20), "36");
    EXPECT_EQ(cell("Exhaust 2 (Deg C)", 9), "");
    EXPECT_EQ(cell("Exhaust 2 (Deg C)", 12), "48");
    // A stretch says the same as the whole run does there.
    EXPECT_EQ(cells(csv({15, 16}))[1], cells(csv())[15]);
}

TEST_F(ExportCsv, AStretchHasItsOwnLinesAndTheTimesOfTheRun) {
    open(32, 100);
    const auto all = cells(csv());
    const auto some = cells(csv({40, 60}));
    ASSERT_EQ(some.size(), 22U);
    EXPECT_EQ(some[0], all[0]);
    for (std::size_t i = 1; i < some.size(); ++i) EXPECT_EQ(some[i], all[i + 39]);
    EXPECT_EQ(some[1][0], "0.35");
    EXPECT_EQ(cells(csv({1, 0})).size(), 1U);
}

TEST_F(ExportCsv, WhatIsInViewLiesBetweenItsEdges) {
    open(32, 1360);
    const platform::UserScale scale{0, 1100, 1361, 0};
    EXPECT_EQ(stretchInView(run(), scale, {}), (SampleStretch{1, 1360}));
    EXPECT_EQ(
        stretchInView(run(), {0, 1100, 100, 0}, {0.5F, 0, 0.75F, 1}), (SampleStretch{50, 75}));
    EXPECT_EQ(
        stretchInView(run(), {0, 1100, 100, 0}, {0.505F, 0, 0.755F, 1}), (SampleStretch{51, 75}));
    EXPECT_TRUE(stretchInView(run(), {0, 1100, 100, 0}, {0.502F, 0, 0.508F, 1}).empty());
    // A view beyond the last sample, as of a download that has less rows than its scale.
    EXPECT_EQ(
        stretchInView(run(), {0, 1100, 2000, 0}, {0.5F, 0, 1, 1}), (SampleStretch{1000, 1360}));
    EXPECT_TRUE(stretchInView(run(), {0, 1100, 2000, 0}, {0.75F, 0, 1, 1}).empty());
}

TEST_F(ExportCsv, ADecimalCommaBringsTheSemicolon) {
    EXPECT_EQ(csvLookOf(U','), (CsvLook{',', ';'}));
    EXPECT_EQ(csvLookOf(U'.'), (CsvLook{'.', ','}));
    EXPECT_EQ(csvLookOf(U'\u066B'), (CsvLook{'.', ','}));
    open(25, 300);
    std::string pointed = csv();
    std::string commas = csv(wholeRun(run()), {',', ';'});
    for (char& c : pointed) c = c == ',' ? ';' : c == '.' ? ',' : c;
    EXPECT_EQ(commas, pointed);
}

TEST_F(ExportCsv, NoCellIsAFormula) {
    EXPECT_EQ(csvCell("Oil", ','), "Oil");
    EXPECT_EQ(csvCell("", ','), "");
    for (const std::string front : {"=", "+", "-", "@", "\t", "\r"})
        EXPECT_EQ(csvCell(front + "1", ','), "\"'" + front + "1\"");
    EXPECT_EQ(csvCell("a=b", ','), "a=b");
    EXPECT_EQ(csvCell("a,b", ','), "\"a,b\"");
    EXPECT_EQ(csvCell("a,b", ';'), "a,b");
    EXPECT_EQ(csvCell("a;b", ';'), "\"a;b\"");
    EXPECT_EQ(csvCell("5\" pipe", ','), "\"5\"\" pipe\"");
    EXPECT_EQ(csvCell("=\"x\"", ','), "\"'=\"\"x\"\"\"");
    EXPECT_EQ(csvCell("two\nlines", ','), "\"two\nlines\"");
    open(32, 1);
    state->Run.image.setup.AnalogName[2] = "=1+2";
    state->Run.image.setup.AnalogName[3] = std::string("Oil\0xyz", 7);
    state->Run.image.setup.AnalogName[4] = std::string(8, '\0');
    const Names names = header();
    EXPECT_EQ(names[11], "\"'=1+2\"");
    EXPECT_EQ(names[12], "Oil");
    EXPECT_EQ(names[13], "Analog 4");
    // Numbers below nought stay numbers.
    EXPECT_EQ(cell("Time (s)", 1), "-0.04");
}

TEST_F(ExportCsv, OnlyANameBeyondAsciiBringsTheMark) {
    open(32, 1);
    EXPECT_TRUE(csv().starts_with("Time (s),"));
    state->Run.image.setup.AnalogName[2] = "\xD6l";
    EXPECT_TRUE(csv().starts_with("\xEF\xBB\xBFTime (s),"));
    EXPECT_EQ(header()[11], "\xC3\x96l");
}

// Whatever a file holds: every line has as many cells as there are names.
TEST_F(ExportCsv, NoRunBreaksTheTable) {
    unsigned seed = 7;
    const auto byte = [&seed] {
        seed = seed * 1664525U + 1013904223U;
        return static_cast<std::uint8_t>(seed >> 24U);
    };
    const float odd[] = {std::numeric_limits<float>::quiet_NaN(),
        std::numeric_limits<float>::infinity(), -3e38F, 1e-40F};
    for (int round = 0; round < 60; ++round) {
        const int types[] = {8, 12, 17, 20, 25, 32, 43, 23, 29, 99};
        open(types[round % 10], 40);
        core::RunImage& image = state->Run.image;
        image.tail.TimeOffset = static_cast<std::int16_t>(byte() * 256 + byte());
        image.header.CrankGearTeeth = byte();
        image.header.BasketGearTeeth = static_cast<std::uint8_t>(byte() % 3);
        image.analog.CrownTeeth = odd[byte() % 4];
        image.analog.PinionTeeth = odd[byte() % 4];
        for (int n = 1; n <= 8; ++n) {
            image.tail.AnalogTypes[n] = byte();
            image.analog.AnalogScale[n] = odd[byte() % 4];
            image.analog.AnalogOffset[n] = odd[byte() % 4];
            image.analog.AnalogDecimals[n] = byte();
            for (char& c : image.setup.AnalogName[n]) c = static_cast<char>(byte());
        }
        for (int i = 1; i <= 40; ++i) {
            core::RunSample& row = image.samples[i];
            row.Index = static_cast<std::int16_t>(byte() * 256 + byte());
            row.EngineRpm = static_cast<std::int16_t>(byte() * 256 + byte());
            row.OutputRpm = static_cast<std::int16_t>(byte() * 256 + byte());
            row.SpeedRaw = static_cast<std::int32_t>(seed);
            row.Status = byte();
        }
        int cellsOfLine = 1;
        int cellsOfNames = 0;
        bool quoted = false;
        for (const char c : csv()) {
            if (c == '"') quoted = !quoted;
            if (!quoted && c == ',') ++cellsOfLine;
            if (quoted || c != '\n') continue;
            if (cellsOfNames == 0) cellsOfNames = cellsOfLine;
            ASSERT_EQ(cellsOfLine, cellsOfNames) << "type " << types[round % 10];
            cellsOfLine = 1;
        }
        ASSERT_FALSE(quoted);
    }
}
