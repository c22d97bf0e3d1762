// The logger's own settings without a line: what is shown, what is in range, what is sent.
#include "link/obc_setup.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

LoggerHeader sampleHeader(int model = 25) {
    LoggerHeader header;
    header.DataType = 25;
    header.LoggerModel = static_cast<std::uint8_t>(model);
    header.LoggerVersion = 5;
    header.LoggerMemory = 1;
    header.LoggerSerial = 1225;
    header.RunHeader = {1, 2, 3, 12, 3000, 62, 98, 5200, 8640, 0.5F, 8700, 2, 8800, 4.25F, 8900, 6};
    return header;
}

ObcValues zeros() {
    ObcValues values;
    values.texts.fill("0");
    values[ObcBox::Label_GR1] = values[ObcBox::Label_GR2] = "1";
    return values;
}

int byteAt(const ObcBytes& got, int position) {
    return got.bytes[static_cast<std::size_t>(position - 1)];
}
int wordAt(const ObcBytes& got, int position) {
    return byteAt(got, position) * 256 + byteAt(got, position + 1);
}

TEST(ObcSetup, ShowsTheHeader) {
    const ObcShown shown = obcShown(sampleHeader());
    EXPECT_EQ(shown.Label_DataType, "25");
    EXPECT_EQ(shown.Label_Model, "25");
    EXPECT_EQ(shown.Label_Ver, "1.4");
    EXPECT_EQ(shown.Label_MemType, "32k");
    EXPECT_EQ(shown.Label_S_No, "1225");
    EXPECT_TRUE(shown.ShiftLightFrame);
    EXPECT_EQ(shown.values.texts, (std::array<std::string, obcBoxCount>{"3000", "62", "98", "5200",
                                      "8640", "8700", "8800", "8900", "2", "4.25", "6"}));
    EXPECT_EQ(shown.values.ComboPPR, (std::array<int, 4>{0, 1, 2, 11}));
}

TEST(ObcSetup, VersionsAndMemoriesOutsideTheirCodesLeaveTheLabels) {
    for (const int version : {0, 11, 255}) {
        LoggerHeader header = sampleHeader();
        header.LoggerVersion = static_cast<std::uint8_t>(version);
        EXPECT_FALSE(obcShown(header).Label_Ver) << version;
    }
    for (const int memory : {0, 5, 255}) {
        LoggerHeader header = sampleHeader();
        header.LoggerMemory = static_cast<std::uint8_t>(memory);
        EXPECT_FALSE(obcShown(header).Label_MemType) << memory;
    }
    LoggerHeader header = sampleHeader();
    header.LoggerVersion = 10;
    header.LoggerMemory = 4;
    EXPECT_EQ(obcShown(header).Label_Ver, "1.9");
    EXPECT_EQ(obcShown(header).Label_MemType, "60k");
}

TEST(ObcSetup, Model22AndThoseAbove25HaveNoShiftLights) {
    for (const int model : {0, 8, 21, 23, 25}) {
        EXPECT_TRUE(obcShown(sampleHeader(model)).ShiftLightFrame) << model;
    }
    for (const int model : {22, 26, 43, 255}) {
        const ObcShown shown = obcShown(sampleHeader(model));
        EXPECT_FALSE(shown.ShiftLightFrame) << model;
        EXPECT_EQ(shown.values.texts, (std::array<std::string, obcBoxCount>{"3000", "62", "98", "0",
                                          "0", "0", "0", "0", "0", "0", "0"}));
        const ObcBytes sent = obcBytes(shown.values, sampleHeader(model));
        for (int position = 15; position <= 32; ++position) EXPECT_EQ(byteAt(sent, position), 0);
    }
}

TEST(ObcSetup, ACodeAboveItsListIsItsLastEntryAndZeroIsNone) {
    LoggerHeader header = sampleHeader();
    header.RunHeader.EnginePickups = header.RunHeader.InputPickups = 5;
    header.RunHeader.OutputPickups = 0;
    header.RunHeader.FrontWheelPickups = 200;
    EXPECT_EQ(obcShown(header).values.ComboPPR, (std::array<int, 4>{3, 3, -1, 17}));
}

TEST(ObcSetup, TheListsOfPickups) {
    const std::vector<std::string> few{"1", "2", "3", "4"};
    EXPECT_EQ(pickupEntries(enginePickups), few);
    EXPECT_EQ(pickupEntries(inputPickups), few);
    EXPECT_EQ(pickupEntries(outputPickups), (std::vector<std::string>{"2", "4", "6", "8"}));
    EXPECT_EQ(pickupEntries(frontWheelPickups).size(), 18U);
    EXPECT_EQ(pickupEntries(frontWheelPickups).back(), "18");
}

TEST(ObcSetup, Ranges) {
    using enum ObcBox;
    using enum RangeResult;
    const struct {
        ObcBox box;
        const char* text;
        RangeResult result;
    } rows[] = {{Label_RoRpm, "0", ok}, {Label_RoRpm, "65000", ok}, {Label_RoRpm, "65000.9", ok},
        {Label_RoRpm, "65001", outOfRange}, {Label_RoRpm, "-1", outOfRange},
        {Label_RoRpm, " 3000 ", ok}, {Label_RoRpm, "", notANumber},
        {Label_RoRpm, "3000x", notANumber}, {Label_MR4, "abc", notANumber},
        {Label_GR1, "0", outOfRange}, {Label_GR1, "255", ok}, {Label_GR1, "256", outOfRange},
        {Label_GR1, "300", outOfRange}, {Label_GR1, "12 teeth", ok},
        {Label_GR2, "teeth", outOfRange}, {Label_GR2, "0.5", ok}, {Label_MT2, "654.99", ok},
        {Label_MT2, "655", outOfRange}, {Label_MT3, "-0.01", outOfRange},
        {Label_MT4, "2 s", notANumber}};
    for (const auto& row : rows) {
        EXPECT_EQ(checkRange(row.box, row.text), row.result) << row.text;
    }
}

TEST(ObcSetup, TheBytesStandInTheOrderOfTheHeader) {
    LoggerHeader header = sampleHeader();
    const ObcBytes sent = obcBytes(obcShown(header).values, header);
    EXPECT_FALSE(sent.failed);
    EXPECT_EQ(std::vector<int>(sent.bytes.begin(), sent.bytes.begin() + 8),
        (std::vector<int>{25, 25, 5, 1, 1, 2, 3, 12}));
    EXPECT_EQ(wordAt(sent, 9), 1225);
    EXPECT_EQ(wordAt(sent, 11), 5000); // 3000 rpm
    EXPECT_EQ(byteAt(sent, 13), 62);
    EXPECT_EQ(byteAt(sent, 14), 98);
    EXPECT_EQ(wordAt(sent, 15), 2884);
    EXPECT_EQ(wordAt(sent, 17), 1736);
    EXPECT_EQ(wordAt(sent, 19), 0); // the time without a box
    EXPECT_EQ(wordAt(sent, 21), 1724);
    EXPECT_EQ(wordAt(sent, 23), 200);
    EXPECT_EQ(wordAt(sent, 25), 1704);
    EXPECT_EQ(wordAt(sent, 27), 425);
    EXPECT_EQ(wordAt(sent, 29), 1685);
    EXPECT_EQ(wordAt(sent, 31), 600);
}

TEST(ObcSetup, PeriodsAndHundredthsAreCut) {
    ObcValues values = zeros();
    const auto periodOf = [&](const char* rpm) {
        values[ObcBox::Label_RoRpm] = rpm;
        return wordAt(obcBytes(values, {}), 11);
    };
    EXPECT_EQ(periodOf("458"), 32751);
    EXPECT_EQ(periodOf("65000"), 230);
    EXPECT_EQ(periodOf("0"), 0);
    EXPECT_EQ(periodOf("0.9"), 0);
    values[ObcBox::Label_MT2] = "1.15"; // 114.99999999999999
    values[ObcBox::Label_MT4] = "654.99";
    EXPECT_EQ(wordAt(obcBytes(values, {}), 23), 114);
    EXPECT_EQ(wordAt(obcBytes(values, {}), 31), 65499);
}

TEST(ObcSetup, APeriodOfMoreThan16BitsHasNoBytes) {
    for (const char* rpm : {"1", "457", "229"}) {
        ObcValues values = zeros();
        values[ObcBox::Label_MR3] = rpm;
        EXPECT_EQ(obcBytes(values, {}).failed, ObcBox::Label_MR3) << rpm;
    }
    ObcValues values = zeros();
    values[ObcBox::Label_MR1] = values[ObcBox::Label_PreStartRPM] = "300";
    EXPECT_EQ(obcBytes(values, {}).failed, ObcBox::Label_PreStartRPM);
}

TEST(ObcSetup, TeethAreRoundedToTheEven) {
    ObcValues values = zeros();
    values[ObcBox::Label_GR1] = "0.5";
    values[ObcBox::Label_GR2] = "61.5 teeth";
    const ObcBytes sent = obcBytes(values, {});
    EXPECT_EQ(byteAt(sent, 13), 0);
    EXPECT_EQ(byteAt(sent, 14), 62);
    values[ObcBox::Label_GR2] = "255.5"; // in range, and 256
    EXPECT_EQ(obcBytes(values, {}).failed, ObcBox::Label_GR2);
}

TEST(ObcSetup, ANegativeSerialNumberIsThe16BitsThatItCameFrom) {
    LoggerHeader header = sampleHeader();
    header.LoggerSerial = -2;
    EXPECT_EQ(wordAt(obcBytes(zeros(), header), 9), 0xFFFE);
}

TEST(ObcSetup, NoSelectionIsSentAsZero) {
    ObcValues values = zeros();
    values.ComboPPR = {-1, 3, -1, 17};
    const ObcBytes sent = obcBytes(values, sampleHeader());
    EXPECT_EQ(byteAt(sent, 5), 0);
    EXPECT_EQ(byteAt(sent, 6), 4);
    EXPECT_EQ(byteAt(sent, 8), 18);
}

TEST(ObcSetup, TheBackupNamesEverySetting) {
    const std::string text = obcBackupText(sampleHeader(), "Sunday, 15 November 2026 14:42", true);
    EXPECT_EQ(text, "Settings of the On Board Computer, as read before new ones were written\r\n"
                    "Date: Sunday, 15 November 2026 14:42\r\n"
                    "Serial Number: 1225\r\n"
                    "Data Type: 25\r\n"
                    "Model: 25\r\n"
                    "Software Version code: 5\r\n"
                    "Memory Type code: 1\r\n"
                    "Engine Digital Pickups code: 1\r\n"
                    "Input Shaft Pickups code: 2\r\n"
                    "Output Shaft Pickups code: 3\r\n"
                    "Front Wheel Pickups code: 12\r\n"
                    "Record on RPM: 3000\r\n"
                    "Motorcycle Crankshaft Reduction Gear teeth: 62\r\n"
                    "Motorcycle Clutch Basket Reduction Gear teeth: 98\r\n"
                    "Pre Launch RPM threshold: 5200\r\n"
                    "Shift Light threshold 1: 8640 RPM @ 0.5 sec.\r\n"
                    "Shift Light threshold 2: 8700 RPM @ 2 sec.\r\n"
                    "Shift Light threshold 3: 8800 RPM @ 4.25 sec.\r\n"
                    "Shift Light threshold 4: 8900 RPM @ 6 sec.\r\n");
    const std::string part = obcBackupText(sampleHeader(), "today", false);
    EXPECT_NE(part.find("some of these are not its own"), std::string::npos);
}

} // namespace
} // namespace kvo::link
