#include "setup/analog_setup.h"

#include "core/basic/numbers.h"
#include "setup/sensor_models.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>

namespace kvo::setup {
namespace {

using testing::MemoryFiles;

// The setup form around the editor: what it hands in, and the captions of its buttons.
class AnalogSetup : public ::testing::Test {
protected:
    void open(int channel) {
        AnalogSetup_Click(
            m_editor, channel, m_captions[channel], m_config, "/kvo", *m_tables, m_files);
    }
    AnalogSave ok() {
        AnalogSave save = Command2_Click(m_editor, m_config, "/kvo", *m_tables, m_files);
        if (save.taken()) m_captions[m_editor.channel] = save.caption;
        return save;
    }
    void pick(int kind) {
        m_editor.Analog_Type = kind;
        Analog_Type_Click(m_editor);
    }
    void typeFactor(const char* text) {
        m_editor.AFactor = text;
        AFactor_Change(m_editor);
    }
    void typePoints(int step) {
        for (int point = 1; point <= tablePoints; ++point)
            m_editor.Text9[point] = std::to_string(point * step);
    }
    platform::Bytes file(int channel) {
        return m_files.read("/kvo/" + core::analogTableName(channel)).value_or(platform::Bytes{});
    }
    // A file in which each count reads `step` times itself.
    void putTable(int channel, double step) {
        core::AnalogTables tables;
        for (std::size_t count = 0; count < 256; ++count)
            tables[channel][count] = step * static_cast<double>(count);
        ASSERT_TRUE(core::SaveAnalogTable(
            "/kvo", core::analogTableName(channel), channel, tables, m_files));
    }

    AnalogEditor m_editor;
    core::AppConfig m_config;
    core::FromOne<std::string, 8> m_captions;
    std::unique_ptr<core::AnalogTables> m_tables = std::make_unique<core::AnalogTables>();
    MemoryFiles m_files;
};

TEST_F(AnalogSetup, EachKindShowsItsFields) {
    EXPECT_EQ(analogKinds[0], "Custum Input");
    EXPECT_EQ(analogKinds[4], "KVO Pressure Sensor");
    EXPECT_EQ(fuelList[0], "Unleaded Petrol");
    EXPECT_EQ(fuelList[4], "Lambda");
    const AnalogParts nothing;
    EXPECT_EQ(analogParts(customInput), (AnalogParts{true, true, true, false, false, false}));
    EXPECT_EQ(analogParts(exhaustInput), nothing);
    EXPECT_EQ(analogParts(mappedInput), (AnalogParts{false, true, true, true, false, false}));
    EXPECT_EQ(analogParts(lambdaInput), (AnalogParts{false, false, false, false, false, true}));
    EXPECT_EQ(analogParts(pressureInput), (AnalogParts{false, true, true, false, true, false}));
    EXPECT_EQ(analogParts(-1), nothing);
    EXPECT_EQ(analogParts(5), nothing);
}

TEST_F(AnalogSetup, OpensOnTheChannelsSettings) {
    m_captions[3] = "Oil";
    m_config.Analog_Type[3] = 4;
    m_config.AnalogRangeLow[3] = -50;
    m_config.AnalogScale[3] = 200.0F / 255;
    m_config.Decimals[3] = 2;
    m_config.AnalogOffset[3] = -1.5F;
    m_config.SmoothOption[19] = 1;
    m_config.Sensor_Combo[3] = 13;
    m_config.Fuel_Combo = 2;
    putTable(3, 2);
    open(3);
    EXPECT_EQ(m_editor.channel, 3);
    EXPECT_EQ(Txt_Analog(3), "Analog 3 Name:");
    EXPECT_EQ(m_editor.Analog, "Oil");
    EXPECT_EQ(m_editor.Analog_Type, 4);
    EXPECT_EQ(m_editor.RangeText1, "-50");
    EXPECT_EQ(m_editor.AFactor, "150");
    EXPECT_EQ(m_editor.Decimals, 2);
    EXPECT_EQ(m_editor.Zero, "-1.5");
    EXPECT_TRUE(m_editor.SmoothOption);
    EXPECT_EQ(m_editor.Sensor_Combo, 13);
    EXPECT_EQ(m_editor.Fuel_Combo, 2);
    EXPECT_EQ(m_editor.Text9[1], "50");
    EXPECT_EQ(m_editor.Text9[10], "510") << "the file's, and not AFactor's";
    EXPECT_EQ((*m_tables)[1][2], 4) << "row 1 holds the file of whichever channel";
    EXPECT_EQ((*m_tables)[3][2], 0);
}

TEST_F(AnalogSetup, AListThatHasNoSuchEntryStaysWhereItWas) {
    open(1);
    m_config.Analog_Type[2] = 5;
    m_config.Decimals[2] = 3;
    m_config.Sensor_Combo[2] = 23;
    m_config.Fuel_Combo = 255;
    m_editor.Analog_Type = 2;
    m_editor.Decimals = 1;
    m_editor.Sensor_Combo = 4;
    m_editor.Fuel_Combo = 3;
    open(2);
    EXPECT_EQ(m_editor.Analog_Type, 2);
    EXPECT_EQ(m_editor.Decimals, 1);
    EXPECT_EQ(m_editor.Sensor_Combo, 4);
    EXPECT_EQ(m_editor.Fuel_Combo, 3);
}

TEST_F(AnalogSetup, AScaleThatIsNoNumberLeavesItsBox) {
    m_config.AnalogScale[1] = 2;
    open(1);
    EXPECT_EQ(m_editor.AFactor, "510");
    for (const float scale : {std::numeric_limits<float>::max(),
             std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        m_config.AnalogScale[2] = scale;
        open(2);
        EXPECT_EQ(m_editor.AFactor, "510");
    }
    m_config.AnalogOffset[2] = std::numeric_limits<float>::quiet_NaN();
    open(2);
    EXPECT_EQ(m_editor.Zero, "0");
}

TEST_F(AnalogSetup, AMissingTableReadsZeroAndIsCreatedEmpty) {
    putTable(1, 3);
    open(1);
    open(2);
    EXPECT_TRUE(m_files.exists("/kvo/Analog2.Dat"));
    EXPECT_EQ(file(2), platform::Bytes{});
    for (int point = 1; point <= tablePoints; ++point) EXPECT_EQ(m_editor.Text9[point], "0");
    EXPECT_EQ((*m_tables)[1][9], 0) << "nothing is left of the channel before";
    open(2);
    EXPECT_EQ(m_editor.Text9[10], "0") << "nor when the file is there and empty";
}

TEST_F(AnalogSetup, AShortTableReadsZeroBehindItsEnd) {
    putTable(2, 3);
    platform::Bytes cut = file(2);
    cut.resize(100 * 8 + 3);
    m_files.put("/kvo/Analog2.Dat", cut);
    putTable(1, 7);
    open(1);
    open(2);
    EXPECT_EQ(m_editor.Text9[3], "228");
    EXPECT_EQ(m_editor.Text9[4], "0");
}

TEST_F(AnalogSetup, ReadingsThatABoxCannotReadAreWrittenOut) {
    core::AnalogTables tables;
    tables[1][25] = 0.00001;
    tables[1][51] = 1e20;
    tables[1][76] = std::numeric_limits<double>::quiet_NaN();
    tables[1][102] = -std::numeric_limits<double>::infinity();
    tables[1][127] = -2.5e-7;
    tables[1][153] = 1e300;
    ASSERT_TRUE(core::SaveAnalogTable("/kvo", "Analog1.Dat", 1, tables, m_files));
    open(1);
    EXPECT_EQ(m_editor.Text9[1], "0.00001");
    EXPECT_EQ(m_editor.Text9[2], "100000000000000000000");
    EXPECT_EQ(m_editor.Text9[3], "0");
    EXPECT_EQ(m_editor.Text9[4], "0");
    EXPECT_EQ(m_editor.Text9[5], "-0.00000025");
    EXPECT_EQ(core::Val(m_editor.Text9[6]), 1e300);
}

TEST_F(AnalogSetup, ALambdaSensorKeepsTheRawCount) {
    open(1);
    m_editor.RangeText1 = "-50";
    typeFactor("150");
    m_editor.Zero = "3";
    pick(exhaustInput);
    EXPECT_EQ(m_editor.AFactor, "150") << "no other kind touches the boxes";
    pick(lambdaInput);
    EXPECT_EQ(m_editor.RangeText1, "0");
    EXPECT_EQ(m_editor.AFactor, "255");
    EXPECT_EQ(m_editor.Zero, "0");
    EXPECT_EQ(m_editor.Text9[10], "255") << "as with every change of AFactor";
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(m_config.Analog_Type[1], 3);
    EXPECT_EQ(m_config.AnalogScale[1], 1);
    EXPECT_EQ(m_config.AnalogOffset[1], 0);
}

TEST_F(AnalogSetup, AFactorIsTheLastPoint) {
    open(1);
    typePoints(10);
    typeFactor("12x");
    EXPECT_EQ(m_editor.Text9[10], "12x");
    EXPECT_EQ(m_editor.Text9[9], "90");
}

TEST_F(AnalogSetup, OkTakesEverySetting) {
    open(8);
    m_editor.Analog = "Oil pressure";
    pick(customInput);
    m_editor.RangeText1 = "-50";
    typeFactor("150");
    m_editor.Decimals = 1;
    m_editor.Zero = "0.25";
    m_editor.SmoothOption = true;
    m_editor.Sensor_Combo = 22;
    m_editor.Fuel_Combo = 4;
    const AnalogSave save = ok();
    EXPECT_TRUE(save.taken()) << save.message;
    EXPECT_EQ(save.caption, "Oil pres");
    EXPECT_EQ(m_config.Analog_Type[8], 0);
    EXPECT_EQ(m_config.AnalogRangeLow[8], -50);
    EXPECT_EQ(m_config.AnalogScale[8], 200.0F / 255);
    EXPECT_EQ(m_config.Decimals[8], 1);
    EXPECT_EQ(m_config.AnalogOffset[8], 0.25F);
    EXPECT_EQ(m_config.SmoothOption[24], 1);
    EXPECT_EQ(m_config.Sensor_Combo[8], 22);
    EXPECT_EQ(m_config.Fuel_Combo, 4);
    EXPECT_EQ(m_config.AnalogName[8], "") << "names are the setup form's to save";
    open(8);
    EXPECT_EQ(m_editor.AFactor, "150");
    m_editor.SmoothOption = false;
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(m_config.SmoothOption[24], 0);
}

// A scale is a single, so its last digit may be another than the one that was typed.
TEST_F(AnalogSetup, AFactorOpensAsThePlainNumberOfASingle) {
    struct Row {
        const char* low;
        const char* typed;
        const char* shown;
    };
    for (const Row& row : {Row{"0", "9.24", "9.240001"}, Row{"0", "8.6", "8.599999"},
             Row{"300", "69", "68.99999"}, Row{"-50", "150", "150"}, Row{"0", "255", "255"},
             Row{"0", "0.00000001", "0.00000001"}, Row{"0", "0", "0"}, Row{"7", "-7", "-7"}}) {
        open(1);
        pick(customInput);
        m_editor.RangeText1 = row.low;
        typeFactor(row.typed);
        ASSERT_TRUE(ok().taken());
        const float scale = m_config.AnalogScale[1];
        open(1);
        EXPECT_EQ(m_editor.AFactor, row.shown) << row.typed;
        ASSERT_TRUE(ok().taken());
        EXPECT_FLOAT_EQ(m_config.AnalogScale[1], scale) << "a save without a change";
    }
}

TEST_F(AnalogSetup, NoOtherChannelChanges) {
    for (int c = 1; c <= 8; ++c) {
        m_config = {};
        open(c);
        m_editor.Analog_Type = 1;
        m_editor.Decimals = 2;
        m_editor.SmoothOption = true;
        m_editor.Sensor_Combo = 9;
        EXPECT_TRUE(ok().taken());
        core::AppConfig expected;
        expected.Analog_Type[c] = 1;
        expected.Decimals[c] = 2;
        expected.SmoothOption[static_cast<std::size_t>(16 + c)] = 1;
        expected.Sensor_Combo[c] = 9;
        EXPECT_EQ(m_config, expected) << c;
    }
}

TEST_F(AnalogSetup, AMinusInFrontOfNothingIsNothing) {
    open(1);
    pick(mappedInput);
    for (std::string& text : m_editor.Text9) text = "-0";
    m_editor.RangeText1 = m_editor.AFactor = m_editor.Zero = "-0";
    EXPECT_TRUE(ok().taken());
    EXPECT_FALSE(std::signbit(m_config.AnalogScale[1]));
    EXPECT_FALSE(std::signbit(m_config.AnalogOffset[1]));
    EXPECT_EQ(file(1), platform::Bytes(2048, 0));
    open(1);
    EXPECT_EQ(m_editor.AFactor, "0");
    EXPECT_EQ(m_editor.Zero, "0");
}

TEST_F(AnalogSetup, AFuelIsForAllChannels) {
    open(2);
    pick(lambdaInput);
    m_editor.Fuel_Combo = 3;
    EXPECT_TRUE(ok().taken());
    open(1);
    EXPECT_EQ(m_editor.Fuel_Combo, 3);
}

TEST_F(AnalogSetup, ASensorSetsTheRange) {
    for (int index = 0; index < 23; ++index) {
        open(1);
        pick(pressureInput);
        m_editor.Sensor_Combo = index;
        m_editor.RangeText1 = "-7";
        m_editor.AFactor = "1";
        EXPECT_TRUE(ok().taken());
        EXPECT_EQ(m_config.AnalogRangeLow[1], 0);
        EXPECT_EQ(
            m_config.AnalogScale[1], static_cast<float>(sensorModelAt(index)->atFiveVolts / 255))
            << index;
        EXPECT_EQ(m_editor.RangeText1, "0");
        EXPECT_EQ(m_editor.Text9[10], m_editor.AFactor);
    }
    EXPECT_EQ(m_editor.AFactor, "2000");
    open(1);
    m_editor.Sensor_Combo = -1;
    typeFactor("77");
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(m_config.AnalogScale[1], 77.0F / 255) << "without a sensor the range stays";
    EXPECT_EQ(m_config.Sensor_Combo[1], 22);
}

TEST_F(AnalogSetup, ASensorIsForItsKindAlone) {
    open(1);
    m_editor.Sensor_Combo = 3;
    typeFactor("90");
    for (const int kind : {customInput, exhaustInput, mappedInput}) {
        pick(kind);
        EXPECT_TRUE(ok().taken());
        EXPECT_EQ(m_config.AnalogScale[1], 90.0F / 255) << kind;
    }
}

TEST_F(AnalogSetup, AMappedInputWritesItsTable) {
    putTable(4, 0.5);
    open(4);
    (*m_tables)[1][0] = -3;
    pick(mappedInput);
    typePoints(25);
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(file(4).size(), 2048U);
    core::AnalogTables tables;
    core::LoadAnalogTable("/kvo", "Analog4.Dat", 4, tables, m_files);
    EXPECT_EQ(tables[4][0], -3);
    EXPECT_EQ(tables[4][1], 1);
    EXPECT_EQ(tables[4][26], 25);
    EXPECT_EQ(tables[4][255], 250);
    EXPECT_EQ(m_config.Analog_Type[4], 2);
    EXPECT_EQ(m_files.list("/kvo/Backup"), std::vector<std::string>{"Analog4.Dat.0001"});
}

TEST_F(AnalogSetup, TheGreaterTextIsTheScaleOfAMappedInput) {
    struct Row {
        const char* factor;
        const char* point;
        const char* taken;
    };
    for (const Row& row : {Row{"100", "90", "90"}, Row{"90", "100", "90"}, Row{"", "5", "5"},
             Row{"100", "100", "100"}, Row{"10", "100", "100"}, Row{"5", "", "5"},
             Row{"0", "-5", "0"}, Row{"100", "\xB0", "\xB0"}}) {
        open(1);
        pick(mappedInput);
        typePoints(1);
        m_editor.AFactor = row.factor;
        m_editor.Text9[10] = row.point;
        EXPECT_TRUE(ok().taken());
        EXPECT_EQ(m_editor.AFactor, row.taken) << row.factor << " and " << row.point;
        EXPECT_EQ(m_editor.Text9[10], row.point);
        EXPECT_EQ(m_config.AnalogScale[1], static_cast<float>(core::Val(row.taken) / 255));
    }
}

TEST_F(AnalogSetup, EveryOtherKindWritesTheTableThatWasRead) {
    putTable(2, 2);
    const platform::Bytes before = file(2);
    for (const int kind : {-1, customInput, exhaustInput, lambdaInput, pressureInput}) {
        open(2);
        m_editor.Analog_Type = kind;
        typePoints(99);
        EXPECT_TRUE(ok().taken());
        EXPECT_EQ(file(2), before) << kind;
    }
    open(5);
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(file(5), platform::Bytes(2048, 0));
    EXPECT_TRUE(m_files.list("/kvo/Backup").empty()) << "nothing was overwritten";
}

TEST_F(AnalogSetup, WithoutASelectionAFieldStays) {
    m_config.Analog_Type[1] = 9;
    m_config.Decimals[1] = 9;
    m_config.Sensor_Combo[1] = 99;
    m_config.Fuel_Combo = 99;
    const core::AppConfig before = m_config;
    open(1);
    EXPECT_EQ(m_editor.Analog_Type, -1);
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(m_config, before);
    m_editor.Zero = "4";
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(m_config.AnalogOffset[1], 4) << "every other field is taken";
}

TEST_F(AnalogSetup, ANumberThatDoesNotFitIsNamedAndNothingChanges) {
    const std::string huge(400, '9');
    struct Row {
        int kind;
        std::string AnalogEditor::*box;
        std::string text;
        std::string message;
        std::string control;
    };
    const std::string begin = "The text of \"";
    const std::string middle =
        "\" is not a number that can be saved.\n\nCorrect it and try again. ";
    const std::string end = "Nothing has been changed.";
    const std::string away = "It is on view with \"Custum Input\". ";
    for (const Row& row : {Row{0, &AnalogEditor::RangeText1, "32768",
                               begin + "Reading at 0 Volts:" + middle + end, "RangeText1"},
             Row{0, &AnalogEditor::RangeText1, "-32769",
                 begin + "Reading at 0 Volts:" + middle + end, "RangeText1"},
             Row{0, &AnalogEditor::AFactor, huge, begin + "Reading at 5 Volts:" + middle + end,
                 "AFactor"},
             Row{4, &AnalogEditor::Zero, "1" + std::string(39, '0'),
                 begin + "Number required to Zero Reading:" + middle + end, "Zero"},
             Row{1, &AnalogEditor::AFactor, huge,
                 begin + "Reading at 5 Volts:" + middle + away + end, "AFactor"},
             Row{1, &AnalogEditor::Zero, huge,
                 begin + "Number required to Zero Reading:" + middle + away + end, "Zero"}}) {
        putTable(1, 2);
        open(1);
        m_editor.Analog = "New";
        m_editor.Analog_Type = row.kind;
        m_editor.*row.box = row.text;
        const AnalogEditor entries = m_editor;
        const core::AppConfig before = m_config;
        const AnalogSave save = ok();
        EXPECT_FALSE(save.taken());
        EXPECT_EQ(save.message, row.message);
        EXPECT_EQ(save.control, row.control);
        EXPECT_EQ(m_config, before);
        EXPECT_EQ(m_captions[1], "");
        EXPECT_EQ(m_editor, entries);
    }
    m_editor.RangeText1 = "32767.4";
    m_editor.AFactor = m_editor.Zero = "0";
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(m_config.AnalogRangeLow[1], 32767);
}

TEST_F(AnalogSetup, AReadingThatNoTableHoldsIsNamed) {
    putTable(1, 2);
    const platform::Bytes before = file(1);
    open(1);
    pick(mappedInput);
    m_editor.Text9[6] = std::string(400, '9');
    m_editor.Text9[7] = "-" + m_editor.Text9[6];
    const AnalogSave save = ok();
    EXPECT_EQ(save.message, "The text of \"3.5 v =\" is not a number that can be saved.\n\nCorrect "
                            "it and try again. Nothing has been changed.");
    EXPECT_EQ(save.control, "Text9(7)");
    EXPECT_EQ(file(1), before);
    EXPECT_EQ((*m_tables)[1][51], 102);
    EXPECT_FALSE(mappedCurve(m_editor, (*m_tables)[1]));
}

TEST_F(AnalogSetup, AFileThatCannotBeWrittenIsToldAndNothingChanges) {
    putTable(1, 2);
    open(1);
    typeFactor("0");
    pick(mappedInput);
    typePoints(10);
    m_editor.Analog = "New";
    m_files.failWrites("/kvo/Analog1.Dat", MemoryFiles::Failure::fullDisk, 1);
    const core::AppConfig before = m_config;
    const AnalogEditor entries = m_editor;
    const platform::Bytes old = file(1);
    const AnalogSave save = ok();
    EXPECT_FALSE(save.taken());
    EXPECT_EQ(m_editor, entries) << "AFactor too, which the table's last point would replace";
    EXPECT_NE(save.message.find("Analog1.Dat"), std::string::npos) << save.message;
    EXPECT_EQ(m_config, before);
    EXPECT_EQ(file(1), old);
    EXPECT_EQ((*m_tables)[1][25], 50) << "so that a Cancel leaves what was read";
    EXPECT_TRUE(ok().taken()) << "with room made, the same entries are taken";
    EXPECT_EQ((*m_tables)[1][25], 10);
    EXPECT_EQ(m_captions[1], "New");
}

TEST_F(AnalogSetup, AProtectedTableIsInTheWayOfNoOtherSetting) {
    putTable(1, 2);
    m_files.failWrites("/kvo/Analog1.Dat", MemoryFiles::Failure::readOnly);
    open(1);
    pick(customInput);
    typeFactor("50");
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(m_config.AnalogScale[1], 50.0F / 255);
    pick(mappedInput);
    typePoints(10);
    EXPECT_FALSE(ok().taken());
}

TEST_F(AnalogSetup, TheCurveIsTheTableThatOkWouldWrite) {
    putTable(1, 2);
    open(1);
    pick(mappedInput);
    typePoints(10);
    const AnalogEditor entries = m_editor;
    const auto curve = mappedCurve(m_editor, (*m_tables)[1]);
    ASSERT_TRUE(curve);
    EXPECT_EQ(m_editor, entries) << "drawing changes nothing";
    EXPECT_EQ((*m_tables)[1][255], 510);
    EXPECT_EQ(curve->remark, "");
    EXPECT_TRUE(ok().taken());
    EXPECT_EQ(curve->values, (*m_tables)[1]);

    m_editor.RangeText1 = "-100";
    m_editor.Text9[10] = "300";
    m_editor.Text9[9] = "500";
    const auto wrong = mappedCurve(m_editor, (*m_tables)[1]);
    ASSERT_TRUE(wrong);
    EXPECT_FALSE(wrong->stored[229]);
    EXPECT_NE(wrong->remark.find("between 0 and 400"), std::string::npos) << wrong->remark;
    m_editor.AFactor = m_editor.Text9[10] = std::string(400, '9');
    EXPECT_FALSE(mappedCurve(m_editor, (*m_tables)[1])) << "no scale holds it";
}

// Settings at random, saved and opened again: the same controls, and a second save changes nothing.
TEST_F(AnalogSetup, WhatWasSavedComesBack) {
    std::mt19937 random(7);
    const auto upTo = [&](int most) { return static_cast<int>(random() % (most + 1U)); };
    const auto number = [&] { return core::CStr((upTo(20000) - 5000) / 10.0); };
    for (int turn = 0; turn < 2000; ++turn) {
        const int channel = 1 + upTo(7);
        open(channel);
        m_editor.Analog = std::string(static_cast<std::size_t>(upTo(8)), 'a');
        pick(upTo(4));
        if (m_editor.Analog_Type != lambdaInput) {
            m_editor.RangeText1 = std::to_string(upTo(600) - 300);
            typeFactor(number().c_str());
            m_editor.Zero = number();
        }
        m_editor.Decimals = upTo(2);
        m_editor.SmoothOption = upTo(1) != 0;
        m_editor.Sensor_Combo = upTo(22);
        m_editor.Fuel_Combo = upTo(4);
        for (int point = 1; point <= tablePoints; ++point) m_editor.Text9[point] = number();
        const bool mapped = m_editor.Analog_Type == mappedInput;
        ASSERT_TRUE(ok().taken());
        AnalogEditor saved = m_editor;
        const core::AppConfig config = m_config;
        const platform::Bytes table = file(channel);
        open(1 + channel % 8);
        open(channel);
        if (!mapped) saved.Text9 = m_editor.Text9;
        // The last of seven digits is the single's; all else is as it was typed.
        ASSERT_NEAR(core::Val(m_editor.AFactor), core::Val(saved.AFactor), 5e-4) << turn;
        saved.AFactor = m_editor.AFactor;
        ASSERT_EQ(m_editor, saved) << turn;
        ASSERT_TRUE(ok().taken());
        ASSERT_NEAR(m_config.AnalogScale[channel], config.AnalogScale[channel], 1e-5) << turn;
        m_config.AnalogScale[channel] = config.AnalogScale[channel];
        ASSERT_EQ(m_config, config) << turn;
        ASSERT_EQ(file(channel), table) << turn;
    }
}

} // namespace
} // namespace kvo::setup
