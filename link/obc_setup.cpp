#include "link/obc_setup.h"

#include "core/basic/byte_writer.h"
#include "core/basic/numbers.h"
#include "core/run_file.h"
#include "link/logger_link.h"

#include <algorithm>

namespace kvo::link {
namespace {

constexpr double rpmBehindRange = 65001;
constexpr double teethBehindRange = 256;
constexpr double secondsBehindRange = 655;
constexpr double longestPeriod = 32767; // 16 bits with a sign

constexpr const char* changesRpm = "Shift Light threshhold changes. Range 0 to 65000";
constexpr const char* changesSeconds = "Shift Light threshhold changes sec";

constexpr std::array<ObcBoxFacts, obcBoxCount> boxes{{
    {ObcBox::Label_RoRpm, "Label_RoRpm", ObcKind::rpm, "Record on RPM. Range 0 to 65000"},
    {ObcBox::Label_GR1, "Label_GR1", ObcKind::teeth,
        "Motorcycle Crankshaft Reduction Gear teeth. Range 1 to 255"},
    {ObcBox::Label_GR2, "Label_GR2", ObcKind::teeth,
        "Motorcycle Clutch Bracket Reduction Gear teeth. Range 1 to 255"},
    {ObcBox::Label_PreStartRPM, "Label_PreStartRPM", ObcKind::rpm,
        "Pre Lounch RPM threshhold. Range 0 to 65000"},
    {ObcBox::Label_MR1, "Label_MR1", ObcKind::rpm, "Shift Light threshhold. Range 0 to 65000"},
    {ObcBox::Label_MR2, "Label_MR2", ObcKind::rpm, changesRpm},
    {ObcBox::Label_MR3, "Label_MR3", ObcKind::rpm, changesRpm},
    {ObcBox::Label_MR4, "Label_MR4", ObcKind::rpm, changesRpm},
    {ObcBox::Label_MT2, "Label_MT2", ObcKind::seconds, changesSeconds},
    {ObcBox::Label_MT3, "Label_MT3", ObcKind::seconds, changesSeconds},
    {ObcBox::Label_MT4, "Label_MT4", ObcKind::seconds, changesSeconds},
}};

ObcKind kindOf(ObcBox box) {
    return boxes[static_cast<std::size_t>(box)].kind;
}

// Model 22, and every one above 25, has its shift light elsewhere.
bool hasShiftLights(int model) {
    constexpr int without = 22;
    constexpr int lastWith = 25;
    return model != without && model <= lastWith;
}

bool isShiftLight(ObcBox box) {
    return box >= ObcBox::Label_PreStartRPM;
}

// A code, from 1, as a position of a list of so many entries: codes above it select the last entry,
// a 0 none.
int positionOf(int code, std::size_t entries) {
    return std::min(code, static_cast<int>(entries)) - 1;
}

// Nothing where 16 bits cannot hold the period.
std::optional<int> periodOf(double rpm) {
    if (rpm < 1) return 0;
    const double period = core::Fix(60 / (rpm * tickSeconds));
    if (period > longestPeriod) return std::nullopt;
    return static_cast<int>(period);
}

double numberIn(const ObcValues& values, ObcBox box) {
    const std::string& text = values[box];
    return kindOf(box) == ObcKind::teeth ? core::Val(text) : core::strictNumber(text).value_or(0);
}

// What a box puts on the wire; nothing where its value has no bytes.
std::optional<int> wireValue(const ObcValues& values, ObcBox box) {
    constexpr double hundredths = 100;
    const double number = numberIn(values, box);
    switch (kindOf(box)) {
    case ObcKind::rpm:
        return periodOf(number);
    case ObcKind::teeth:
        return core::CByte(number);
    default:
        return static_cast<int>(core::Fix(number * hundredths));
    }
}

} // namespace

std::span<const ObcBoxFacts> obcBoxes() {
    return boxes;
}

std::vector<std::string> pickupEntries(int list) {
    constexpr int longestList = 18;
    const int count = list == frontWheelPickups ? longestList : 4;
    const int step = list == outputPickups ? 2 : 1;
    std::vector<std::string> entries;
    for (int i = 1; i <= count; ++i) entries.push_back(std::to_string(i * step));
    return entries;
}

std::string obcDefault(ObcBox box, const LoggerHeader& header) {
    const core::RunHeader& run = header.RunHeader;
    switch (box) {
    case ObcBox::Label_RoRpm:
        return core::CStr(run.RecordOnRpm);
    case ObcBox::Label_GR1:
        return core::CStr(run.CrankGearTeeth);
    case ObcBox::Label_GR2:
        return core::CStr(run.BasketGearTeeth);
    case ObcBox::Label_PreStartRPM:
        return core::CStr(run.PreStartRpm);
    case ObcBox::Label_MR1:
        return core::CStr(run.ShiftLightRpm1);
    case ObcBox::Label_MR2:
        return core::CStr(run.ShiftLightRpm2);
    case ObcBox::Label_MR3:
        return core::CStr(run.ShiftLightRpm3);
    case ObcBox::Label_MR4:
        return core::CStr(run.ShiftLightRpm4);
    case ObcBox::Label_MT2:
        return core::CStr(run.ShiftLightTime2);
    case ObcBox::Label_MT3:
        return core::CStr(run.ShiftLightTime3);
    default:
        return core::CStr(run.ShiftLightTime4);
    }
}

ObcShown obcShown(const LoggerHeader& header) {
    ObcShown shown;
    shown.Label_DataType = core::CStr(header.DataType);
    shown.Label_Model = core::CStr(header.LoggerModel);
    const std::string version = core::loggerVersionText(header.LoggerVersion);
    if (!version.empty()) shown.Label_Ver = version;
    const std::string memory = core::loggerMemoryText(header.LoggerMemory);
    if (!memory.empty()) shown.Label_MemType = memory + "k";
    shown.Label_S_No = core::CStr(header.LoggerSerial);
    shown.ShiftLightFrame = hasShiftLights(header.LoggerModel);
    // Required: what is hidden reads 0, so that a save clears it.
    for (const ObcBoxFacts& facts : boxes) {
        const bool cleared = isShiftLight(facts.box) && !shown.ShiftLightFrame;
        shown.values[facts.box] = cleared ? "0" : obcDefault(facts.box, header);
    }
    const core::RunHeader& run = header.RunHeader;
    const std::array<int, 4> codes{
        run.EnginePickups, run.InputPickups, run.OutputPickups, run.FrontWheelPickups};
    for (std::size_t list = 0; list < codes.size(); ++list)
        shown.values.ComboPPR[list] =
            positionOf(codes[list], pickupEntries(static_cast<int>(list)).size());
    return shown;
}

RangeResult checkRange(ObcBox box, const std::string& text) {
    const auto within = [](bool ok) { return ok ? RangeResult::ok : RangeResult::outOfRange; };
    if (kindOf(box) == ObcKind::teeth) {
        const double teeth = core::Val(text);
        return within(teeth > 0 && teeth < teethBehindRange);
    }
    constexpr double hundredsOfDigits = 1e300; // too large to be read, and a number all the same
    const auto number = core::strictNumber(text);
    const double large = number ? 0 : core::Val(text);
    if (large > hundredsOfDigits || large < -hundredsOfDigits) return RangeResult::outOfRange;
    if (!number) return RangeResult::notANumber;
    const double behind = kindOf(box) == ObcKind::rpm ? rpmBehindRange : secondsBehindRange;
    return within(*number >= 0 && *number < behind);
}

ObcBytes obcBytes(const ObcValues& values, const LoggerHeader& header) {
    ObcBytes result;
    core::ByteWriter wire;
    const auto byte = [&wire](int value) { wire.u8(static_cast<std::uint8_t>(value)); };
    // High byte first; a negative serial number is the 16 bits that it came from.
    const auto word = [&wire](int value) { wire.u16be(static_cast<std::uint16_t>(value)); };
    const auto box = [&](ObcBox which) {
        const auto value = wireValue(values, which);
        if (!value && !result.failed) result.failed = which;
        return value.value_or(0);
    };
    for (const int code :
        {header.DataType, header.LoggerModel, header.LoggerVersion, header.LoggerMemory})
        byte(code);
    for (const int position : values.ComboPPR) byte(position + 1);
    word(header.LoggerSerial);
    word(box(ObcBox::Label_RoRpm));
    byte(box(ObcBox::Label_GR1));
    byte(box(ObcBox::Label_GR2));
    word(box(ObcBox::Label_PreStartRPM));
    word(box(ObcBox::Label_MR1));
    word(0); // Required: the time of the first threshold has no box and is cleared.
    word(box(ObcBox::Label_MR2));
    word(box(ObcBox::Label_MT2));
    word(box(ObcBox::Label_MR3));
    word(box(ObcBox::Label_MT3));
    word(box(ObcBox::Label_MR4));
    word(box(ObcBox::Label_MT4));
    std::copy(wire.bytes().begin(), wire.bytes().end(), result.bytes.begin());
    return result;
}

std::string obcBackupText(const LoggerHeader& header, const std::string& readOn, bool readWhole) {
    const core::RunHeader& run = header.RunHeader;
    std::string text;
    const auto line = [&text](const std::string& name, const std::string& value) {
        text += name + ": " + value + "\r\n";
    };
    const auto threshold = [&line](int number, int rpm, float seconds) {
        line("Shift Light threshold " + std::to_string(number),
            core::CStr(rpm) + " RPM @ " + core::CStr(seconds) + " sec.");
    };
    text = "Settings of the On Board Computer, as read before new ones were written\r\n";
    if (!readWhole)
        text += "The On Board Computer stopped answering: some of these are not its own.\r\n";
    line("Date", readOn);
    line("Serial Number", core::CStr(header.LoggerSerial));
    line("Data Type", core::CStr(header.DataType));
    line("Model", core::CStr(header.LoggerModel));
    line("Software Version code", core::CStr(header.LoggerVersion));
    line("Memory Type code", core::CStr(header.LoggerMemory));
    line("Engine Digital Pickups code", core::CStr(run.EnginePickups));
    line("Input Shaft Pickups code", core::CStr(run.InputPickups));
    line("Output Shaft Pickups code", core::CStr(run.OutputPickups));
    line("Front Wheel Pickups code", core::CStr(run.FrontWheelPickups));
    line("Record on RPM", core::CStr(run.RecordOnRpm));
    line("Motorcycle Crankshaft Reduction Gear teeth", core::CStr(run.CrankGearTeeth));
    line("Motorcycle Clutch Basket Reduction Gear teeth", core::CStr(run.BasketGearTeeth));
    line("Pre Launch RPM threshold", core::CStr(run.PreStartRpm));
    threshold(1, run.ShiftLightRpm1, run.ShiftLightTime1);
    threshold(2, run.ShiftLightRpm2, run.ShiftLightTime2);
    threshold(3, run.ShiftLightRpm3, run.ShiftLightTime3);
    threshold(4, run.ShiftLightRpm4, run.ShiftLightTime4);
    return text;
}

} // namespace kvo::link
