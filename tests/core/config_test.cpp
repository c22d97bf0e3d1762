#include "core/basic/byte_writer.h"
#include "core/config.h"
#include "tests/support/memory_files.h"
#include "tests/support/record_fields.h"

#include <gtest/gtest.h>

#include <limits>

namespace kvo::core {
namespace {

using testing::MemoryFiles;

constexpr const char* configPath = "/kvo/Kvo.Cfg";

// A file whose byte at offset i is a number that i tells, with this password in its place.
platform::Bytes numbered(const std::string& password) {
    platform::Bytes file;
    const auto add = [&file](std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            file.push_back(static_cast<std::uint8_t>(1 + file.size() * 7 % 251));
        }
    };
    add(612);
    file.push_back(static_cast<std::uint8_t>(password.size() & 0xFFU));
    file.push_back(static_cast<std::uint8_t>(password.size() >> 8U));
    file.insert(file.end(), password.begin(), password.end());
    add(123);
    return file;
}

TEST(Config, IsCarriedByteForByte) {
    for (const std::string& password :
        {std::string(), std::string("secret"), std::string(700, 'x')}) {
        const platform::Bytes file = numbered(password);
        AppConfig config;
        ASSERT_TRUE(decodeConfig(file, config));
        EXPECT_EQ(encodeConfig(config), file) << "the reserved bytes too";
        EXPECT_EQ(config.Password, password);
    }
}

TEST(Config, Is737BytesWithABlankPassword) {
    EXPECT_EQ(encodeConfig(AppConfig{}).size(), 737U);
}

TEST(Config, MovesWhatStandsBehindThePassword) {
    AppConfig config;
    config.Vehicle_Type = 77;
    EXPECT_EQ(encodeConfig(config)[616], 77);
    config.Password = std::string(20, 'p');
    const platform::Bytes file = encodeConfig(config);
    EXPECT_EQ(file[636], 77);
    EXPECT_EQ(file[612], 20);
    EXPECT_EQ(file[613], 0);
    EXPECT_EQ(file.size(), 757U);
}

using ConfigFields = testing::RecordFields<AppConfig>;

void addColours(ConfigFields& fields) {
    fields.array("reserved0", 0, &AppConfig::reserved0);
    fields.field("EngineColour", 4, &AppConfig::EngineColour);
    fields.field("InputColour", 8, &AppConfig::InputColour);
    fields.field("OutputColour", 12, &AppConfig::OutputColour);
    fields.field("ClutchColour", 16, &AppConfig::ClutchColour);
    fields.field("MphColour", 20, &AppConfig::MphColour);
    fields.array("AnalogColour", 24, &AppConfig::AnalogColour);
    fields.array("ExhaustColour", 56, &AppConfig::ExhaustColour);
    fields.field("SlipColour", 88, &AppConfig::SlipColour);
    fields.field("RatioColour", 92, &AppConfig::RatioColour);
    fields.field("RoCoSColour", 96, &AppConfig::RoCoSColour);
    fields.text("Driver", 100, 25, &AppConfig::Driver);
    fields.field("DriverNo", 125, &AppConfig::DriverNo);
    fields.texts("AnalogName", 127, 8, &AppConfig::AnalogName);
    fields.array("AnalogScale", 191, &AppConfig::AnalogScale);
    fields.array("AnalogOffset", 223, &AppConfig::AnalogOffset);
}

void addVehicle(ConfigFields& fields) {
    fields.field("CommPort", 255, &AppConfig::CommPort);
    fields.field("Gears", 257, &AppConfig::Gears);
    fields.field("First_Ratio", 259, &AppConfig::First_Ratio);
    fields.field("Second_Ratio", 267, &AppConfig::Second_Ratio);
    fields.field("Third_Ratio", 275, &AppConfig::Third_Ratio);
    fields.field("Forth_Ratio", 283, &AppConfig::Forth_Ratio);
    fields.field("Fifth_Ratio", 291, &AppConfig::Fifth_Ratio);
    fields.field("Weight_F", 299, &AppConfig::Weight_F);
    fields.field("Wheel", 303, &AppConfig::Wheel);
    fields.field("Pinion_F", 307, &AppConfig::Pinion_F);
    fields.field("Crown_F", 311, &AppConfig::Crown_F);
    fields.field("Engine_Correction", 315, &AppConfig::Engine_Correction);
    fields.field("Clutch_Correction", 319, &AppConfig::Clutch_Correction);
    fields.field("Pinion_Correction", 323, &AppConfig::Pinion_Correction);
    fields.field("EngineVisible", 327, &AppConfig::EngineVisible);
    fields.field("InputVisible", 329, &AppConfig::InputVisible);
    fields.field("OutputVisible", 331, &AppConfig::OutputVisible);
    fields.field("RoCoSVisible", 333, &AppConfig::RoCoSVisible);
    fields.field("RatioVisible", 335, &AppConfig::RatioVisible);
    fields.field("SlipVisible", 337, &AppConfig::SlipVisible);
    fields.array("AnalogVisible", 339, &AppConfig::AnalogVisible);
    fields.array("ExhaustVisible", 355, &AppConfig::ExhaustVisible);
    fields.field("MphVisible", 371, &AppConfig::MphVisible);
    fields.array("reserved373", 373, &AppConfig::reserved373);
}

void addLogger(ConfigFields& fields) {
    fields.array("Decimals", 543, &AppConfig::Decimals);
    fields.array("reserved551", 551, &AppConfig::reserved551);
    fields.field("ClutchVisible", 555, &AppConfig::ClutchVisible);
    fields.field("RWheel", 557, &AppConfig::RWheel);
    fields.field("MaxRpm", 565, &AppConfig::MaxRpm);
    fields.field("G_Res", 566, &AppConfig::G_Res);
    fields.array("Analog_Type", 567, &AppConfig::Analog_Type);
    fields.field("FlowRange", 575, &AppConfig::FlowRange);
    fields.field("Speed_Correction", 579, &AppConfig::Speed_Correction);
    fields.field("LoggerDataType", 583, &AppConfig::LoggerDataType);
    fields.array("Analog_Check", 585, &AppConfig::Analog_Check);
    fields.field("Exhaust", 593, &AppConfig::Exhaust);
    fields.field("ScaleCustom", 595, &AppConfig::ScaleCustom);
    fields.field("GraphBackColour", 597, &AppConfig::GraphBackColour);
    fields.field("Sixth_Ratio", 601, &AppConfig::Sixth_Ratio);
    fields.field("Date_Prompt", 609, &AppConfig::Date_Prompt);
    fields.field("SpeedWheel_Prompt", 610, &AppConfig::SpeedWheel_Prompt);
    fields.field("Check_Password", 611, &AppConfig::Check_Password);
}

// `s` is the offset of the first byte behind the password.
void addGraph(ConfigFields& fields, std::size_t s) {
    fields.field("CustomScaleLow", s, &AppConfig::CustomScaleLow);
    fields.field("CustomScaleHigh", s + 1, &AppConfig::CustomScaleHigh);
    fields.field("Vehicle_Type", s + 2, &AppConfig::Vehicle_Type);
    fields.field("Fuel_Combo", s + 3, &AppConfig::Fuel_Combo);
    fields.array("reservedS4", s + 4, &AppConfig::reservedS4);
    fields.array("reservedS10", s + 10, &AppConfig::reservedS10);
    fields.array("Sensor_Combo", s + 11, &AppConfig::Sensor_Combo);
    fields.field("TyreGrowthVisible", s + 19, &AppConfig::TyreGrowthVisible);
    fields.field("TyreGrowthColour", s + 21, &AppConfig::TyreGrowthColour);
    fields.field("GridStyle", s + 25, &AppConfig::GridStyle);
    fields.field("OverlayStyle", s + 26, &AppConfig::OverlayStyle);
    fields.field("OverlayColours", s + 27, &AppConfig::OverlayColours);
    fields.array("ComboScale", s + 28, &AppConfig::ComboScale);
    fields.array("Text_Magnify", s + 53, &AppConfig::Text_Magnify);
    fields.array("AnalogRangeLow", s + 78, &AppConfig::AnalogRangeLow);
    fields.array("SmoothOption", s + 94, &AppConfig::SmoothOption);
    fields.array("CheckBits", s + 119, &AppConfig::CheckBits);
}

TEST(Config, HasItsFieldsAtTheirOffsets) {
    for (const std::string& password : {std::string(), std::string("secret")}) {
        ConfigFields fields;
        addColours(fields);
        addVehicle(fields);
        addLogger(fields);
        fields.leaveOut(612, 2 + password.size());
        addGraph(fields, 614 + password.size());
        AppConfig base;
        base.Driver = std::string(25, ' '); // as they come back from a file
        base.AnalogName.fill(std::string(8, ' '));
        base.Text_Magnify.fill(1);
        base.Password = password;
        fields.check(base, encodeConfig, decodeConfig);
    }
}

TEST(Config, CutsATextThatIsTooLong) {
    AppConfig config;
    config.Driver = std::string(40, 'd');
    config.AnalogName[8] = "Oil pressure";
    AppConfig again;
    ASSERT_TRUE(decodeConfig(encodeConfig(config), again));
    EXPECT_EQ(again.Driver, std::string(25, 'd'));
    EXPECT_EQ(again.AnalogName[8], "Oil pres");
}

TEST(Config, MagnificationOfZeroBecomesOne) {
    AppConfig config;
    config.Text_Magnify[3] = 9;
    AppConfig again;
    ASSERT_TRUE(decodeConfig(encodeConfig(config), again));
    EXPECT_EQ(again.Text_Magnify[0], 1);
    EXPECT_EQ(again.Text_Magnify[24], 1);
    EXPECT_EQ(again.Text_Magnify[3], 9);
}

TEST(Config, TakesWhatLiesInFrontOfACutAndKeepsTheRest) {
    const platform::Bytes file = numbered("secret");
    AppConfig whole;
    ASSERT_TRUE(decodeConfig(file, whole));
    for (std::size_t length = 0; length < file.size(); ++length) {
        const platform::Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
        AppConfig config;
        config.EngineColour = -5;
        config.LoggerDataType = -6;
        config.Vehicle_Type = 66;
        config.CheckBits[1] = -7;
        ASSERT_FALSE(decodeConfig(cut, config)) << length;
        EXPECT_EQ(config.EngineColour, length < 8 ? -5 : whole.EngineColour) << length;
        EXPECT_EQ(config.LoggerDataType, length < 585 ? -6 : whole.LoggerDataType) << length;
        EXPECT_EQ(config.Vehicle_Type, length < 623 ? 66 : whole.Vehicle_Type) << length;
        EXPECT_EQ(config.CheckBits[1], -7) << length;
        for (const std::uint8_t magnify : config.Text_Magnify) EXPECT_NE(magnify, 0) << length;
    }
}

TEST(Config, APasswordLongerThanTheFileEndsTheRead) {
    platform::Bytes file = numbered("");
    file[612] = 0xFF;
    file[613] = 0xFF;
    AppConfig config;
    config.Password = "old";
    config.CustomScaleLow = 44;
    EXPECT_FALSE(decodeConfig(file, config));
    EXPECT_EQ(config.Password, "old");
    EXPECT_EQ(config.CustomScaleLow, 44);
}

TEST(Config, ALongerFileIsTaken) {
    platform::Bytes file = numbered("");
    file.resize(5000, 9);
    AppConfig config;
    EXPECT_TRUE(decodeConfig(file, config));
}

TEST(Config, CarriesNumbersThatAreNone) {
    AppConfig config;
    config.Wheel = std::numeric_limits<float>::quiet_NaN();
    config.First_Ratio = std::numeric_limits<double>::infinity();
    AppConfig again;
    ASSERT_TRUE(decodeConfig(encodeConfig(config), again));
    EXPECT_EQ(encodeConfig(again).at(303), encodeConfig(config).at(303));
    EXPECT_EQ(again.First_Ratio, config.First_Ratio);
}

constexpr const char* missing =
    "      Kvo.CfgG file not foundYou will have to fix the Setup before downloading data. ";
constexpr const char* corrupt =
    "\n    Your Kvo.Cfg file is CORRUPT\n\nYou Will have to Setup Kvo again. \n";

TEST(LoadConfig, AMissingFileHasItsMessage) {
    AppConfig config;
    const ConfigRead read = LoadConfig("/kvo", config, MemoryFiles{});
    EXPECT_FALSE(read.whole());
    EXPECT_EQ(read.message, missing);
    EXPECT_EQ(config, AppConfig{});
}

TEST(LoadConfig, AnEmptyFileIsCorrupt) {
    MemoryFiles files;
    files.put(configPath, {});
    AppConfig config;
    EXPECT_EQ(LoadConfig("/kvo", config, files).message, corrupt);
}

TEST(LoadConfig, ACutFileIsCorruptAndKeepsWhatWasRead) {
    MemoryFiles files;
    platform::Bytes file = numbered("");
    AppConfig whole;
    ASSERT_TRUE(decodeConfig(file, whole));
    file.resize(600);
    files.put(configPath, file);
    AppConfig config;
    EXPECT_EQ(LoadConfig("/kvo", config, files).message, corrupt);
    EXPECT_EQ(config.Driver, whole.Driver);
}

TEST(LoadConfig, AGoodFileHasNoMessage) {
    MemoryFiles files;
    files.put(configPath, numbered("secret"));
    AppConfig config;
    EXPECT_TRUE(LoadConfig("/kvo", config, files).whole());
    EXPECT_EQ(config.Password, "secret");
}

TEST(SaveConfig, KeepsACopyOfWhatItReplaces) {
    MemoryFiles files;
    AppConfig config;
    ASSERT_TRUE(SaveConfig("/kvo", config, files));
    config.Gears = 5;
    ASSERT_TRUE(SaveConfig("/kvo", config, files));
    AppConfig again;
    ASSERT_TRUE(decodeConfig(files.read(configPath).value(), again));
    EXPECT_EQ(again.Gears, 5);
    ASSERT_TRUE(decodeConfig(files.read("/kvo/Backup/Kvo.Cfg.0001").value(), again));
    EXPECT_EQ(again.Gears, 0);
}

TEST(SaveConfig, LeavesAReadOnlyFileInSilenceAndWithoutACopy) {
    MemoryFiles files;
    files.put(configPath, numbered("old"));
    files.failWrites(configPath, MemoryFiles::Failure::readOnly);
    EXPECT_TRUE(SaveConfig("/kvo", AppConfig{}, files));
    EXPECT_EQ(files.read(configPath), numbered("old"));
    EXPECT_FALSE(files.folderExists("/kvo/Backup"));
}

TEST(SaveConfig, TellsEveryOtherFailureAndLeavesTheOldFile) {
    for (const char* place : {configPath, "/kvo/Backup"}) {
        for (const auto how : {MemoryFiles::Failure::fullDisk, MemoryFiles::Failure::notPermitted,
                 MemoryFiles::Failure::diskError}) {
            MemoryFiles files;
            files.put(configPath, numbered("old"));
            files.failWrites(place, how);
            const auto saved = SaveConfig("/kvo", AppConfig{}, files);
            EXPECT_FALSE(saved);
            EXPECT_FALSE(saved.message.empty());
            EXPECT_EQ(files.read(configPath), numbered("old"));
        }
    }
}

} // namespace
} // namespace kvo::core
