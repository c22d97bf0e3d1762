#pragma once
// The logger's own settings as a user edits them: what the form shows of a header, which values are
// in range, and the bytes that a save sends.
#include "link/header.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kvo::link {

// The text boxes of the form, in the order in which they are checked.
enum class ObcBox {
    Label_RoRpm,
    Label_GR1,
    Label_GR2,
    Label_PreStartRPM,
    Label_MR1,
    Label_MR2,
    Label_MR3,
    Label_MR4,
    Label_MT2,
    Label_MT3,
    Label_MT4
};
inline constexpr int obcBoxCount = 11;

// What a box holds: rpm, gear teeth, or seconds.
enum class ObcKind { rpm, teeth, seconds };

struct ObcBoxFacts {
    ObcBox box;
    const char* control;
    ObcKind kind;
    const char* message; // what Error_Msg is told where the value is out of range
};
// All boxes, in their order.
std::span<const ObcBoxFacts> obcBoxes();

// The four lists of pickups per revolution.
enum ObcPickups { enginePickups, inputPickups, outputPickups, frontWheelPickups };
// Their entries.
std::vector<std::string> pickupEntries(int list);

// What a user can edit.
struct ObcValues {
    std::array<std::string, obcBoxCount> texts;
    std::array<int, 4> ComboPPR{}; // positions from 0, -1 for none
    std::string& operator[](ObcBox box) { return texts[static_cast<std::size_t>(box)]; }
    const std::string& operator[](ObcBox box) const { return texts[static_cast<std::size_t>(box)]; }
};

// What the form shows of a header. Nothing for a label that stays as it was.
struct ObcShown {
    std::string Label_DataType;
    std::string Label_Model;
    std::optional<std::string> Label_Ver;
    std::optional<std::string> Label_MemType;
    std::string Label_S_No;
    bool ShiftLightFrame = true;
    ObcValues values;
};
ObcShown obcShown(const LoggerHeader& header);

// The header's own value of a box, as text.
std::string obcDefault(ObcBox box, const LoggerHeader& header);

enum class RangeResult {
    ok,
    outOfRange,
    notANumber // a run-time failure of the form: the check goes no further
};
RangeResult checkRange(ObcBox box, const std::string& text);

// The 32 bytes of a save, in the order of the header; or the box whose value has no bytes, at which
// a save ends before anything is sent. The values have passed the range check.
struct ObcBytes {
    std::array<std::uint8_t, 32> bytes{};
    std::optional<ObcBox> failed;
};
ObcBytes obcBytes(const ObcValues& values, const LoggerHeader& header);

// The settings as read, for people: a short text with the serial number and the date.
std::string obcBackupText(const LoggerHeader& header, const std::string& readOn, bool readWhole);

} // namespace kvo::link
