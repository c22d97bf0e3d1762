#include "graph/run_tools.h"

#include "core/basic/numbers.h"
#include "core/data_types.h"
#include "core/run_file.h"
#include "platform/text.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvo::graph {

namespace {

using core::CStr;
using core::OpenRun;
using platform::Dialogs;
using platform::Reply;

constexpr int questionStyle = platform::boxStyle::yesNo + platform::boxStyle::question;
constexpr const char* line = "\n";
constexpr int mostShifts = 5;

std::string redoQuestion() {
    return std::string("This Function will Synthetically derive the Input Shaft RPM.") + line +
           "You will be asked to enter the time, in hundredths of a second that each gear" + line +
           "(only if you have more than one gear)change occurred. If you have not written the " +
           line +
           "times down , then press Cancel to escape, then go through the graph and find what " +
           line +
           "you believe to be the gear change points. Dont worry if it is not correct, you " +
           line + "may do this as many times as you wish." + line + line +
           "It also requires that the gear ratios, exact to three decimal places be entered" +
           line + "in the Kvo Software Setup Menu. This should already have been done" + line +
           "                              Do you want to enter the times now ?";
}

std::string oneGearQuestion() {
    return std::string("As you only have one gear this will be applied to the entire run") + line +
           " and no Shift time is required." + line +
           "                    Do you wish to continue ?";
}

// The question of a shift, 1 to 5; `again` after an answer of 0.
std::string shiftQuestion(int shift, bool again) {
    // Required: the second try of the last shift bears the text of the one before.
    const int named = again && shift == mostShifts ? shift - 1 : shift;
    const std::string gears = CStr(named) + "-" + CStr(named + 1);
    const char* example =
        named == mostShifts ? "       801 = 8.01 Seconds" : "       786 = 7.86 Seconds";
    return (again ? std::string("Not a valid time. Please try again or Cancal!") + line + gears +
                        " Shift time in hundredth of a second ?"
                  : gears + " Shift time in hundredths of a second ?") +
           line + "Eg. 150 = 1.5 Seconds" + line + example;
}

// The sample at which a shift happens; an empty answer ends the tool.
std::optional<int> askShift(const OpenRun& run, Dialogs& dialogs, int shift) {
    for (bool again = false;; again = true) {
        const std::string answer = dialogs.inputBox(shiftQuestion(shift, again), "Time", "");
        if (answer.empty()) return std::nullopt;
        const double time = core::Val(answer);
        if (time != 0) return core::CInt(time + run.image.tail.TimeOffset);
    }
}

bool isAsked(int shift, int gearCount) {
    return shift == mostShifts ? gearCount == mostShifts + 1 : gearCount > shift;
}

// All shift points; none where the tool ends.
std::optional<std::vector<int>> askShiftPoints(
    const OpenRun& run, Dialogs& dialogs, int gearCount) {
    std::vector<int> points;
    if (gearCount == 1) {
        if (dialogs.messageBox(oneGearQuestion(), questionStyle, "Info") != Reply::yes) {
            return std::nullopt;
        }
        points.push_back(run.SampleCount);
    }
    for (int shift = 1; shift <= mostShifts; ++shift) {
        if (!isAsked(shift, gearCount)) continue;
        const auto point = askShift(run, dialogs, shift);
        if (!point) return std::nullopt;
        points.push_back(*point);
    }
    return points;
}

// The input speed of a sample: each gear that was reached overwrites the one before. False where a
// speed does not fit.
bool deriveInput(core::RunImage& image, int i, int gearCount, const std::vector<int>& points) {
    core::RunSample& row = image.samples[i];
    const auto assign = [&row](float ratio) {
        return core::keepOnFailure(
            row.InputRpm, core::CInt(core::Fix(static_cast<double>(row.OutputRpm) * ratio)));
    };
    const auto behind = [&](int shift) {
        const auto k = static_cast<std::size_t>(shift - 1);
        return i > (k < points.size() ? points[k] : 0);
    };
    if (!assign(image.setup.GearRatio[behind(1) ? 2 : 1])) return false;
    for (int gear = 3; gear <= 5; ++gear) {
        if (gearCount < gear || !behind(gear - 1)) continue;
        if (!assign(image.setup.GearRatio[gear])) return false;
    }
    return gearCount != 6 || !behind(5) || assign(image.tail.GearRatio6);
}

std::string offsetQuestion() {
    return std::string("This Function will RESET the time zero for this run.") + line +
           "You will be asked to enter the time (in hundredths of a second) you believe" + line +
           "the run started." + line + line + "Note:    You can add or subtract time." + line +
           line + "Dont worry if it is not correct, you may do this as many times as you wish." +
           line + line + "                      Do you want to enter the time now ?";
}

std::string offsetPrompt(const OpenRun& run, int base) {
    return std::string("Enter Time.") + line + "In hundredths of a second." + line + line +
           "The current offset is:  " + CStr(run.image.tail.TimeOffset - base) + line + line +
           "Range:   -" + CStr(base - 1) + "  To  " + CStr(static_cast<int>(run.SampleCount));
}

// The new TimeOffset of an answer; nothing for an invalid time.
std::optional<std::int16_t> offsetOf(const std::string& answer, const OpenRun& run, int base) {
    const auto typed = core::strictNumber(answer);
    if (!typed) return std::nullopt;
    const auto time = core::CInt(*typed);
    if (!time || *time > run.SampleCount || *time + base < 1) return std::nullopt;
    return core::CInt(*time + base);
}

// Asks until there is a valid time; none where the tool ends.
std::optional<std::int16_t> askOffset(const OpenRun& run, Dialogs& dialogs, int base) {
    constexpr int retryStyle = platform::boxStyle::retryCancel + platform::boxStyle::critical;
    for (;;) {
        if (dialogs.messageBox(offsetQuestion(), questionStyle, "Info") != Reply::yes) {
            return std::nullopt;
        }
        const std::string answer =
            dialogs.inputBox(offsetPrompt(run, base), "Graph Time Offset", "");
        if (answer.empty()) return std::nullopt;
        if (const auto offset = offsetOf(answer, run, base)) return offset;
        const std::string text = "Invalid Time    ( " + platform::fromFile(answer) + " )";
        if (dialogs.messageBox(text, retryStyle, "Graph Time Offset") != Reply::retry) {
            return std::nullopt;
        }
    }
}

// The file keeps all rows of its type, also where the window shows fewer.
void writeRun(const OpenRun& run, const ToolPlace& place, ToolResult& result) {
    result.changed = true;
    result.written = core::SaveRun(run, place.appFolder, place.files);
}

} // namespace

ToolResult Mnu_RedoClutch(OpenRun& run, const ToolPlace& place) {
    ToolResult result;
    const int gearCount = run.image.tail.GearCount != 0 ? run.image.tail.GearCount : place.gears;
    if (place.dialogs.messageBox(redoQuestion(), questionStyle, "Info") != Reply::yes)
        return result;
    const auto points = askShiftPoints(run, place.dialogs, gearCount);
    if (!points) return result;
    result.shiftPoints = *points;
    place.dialogs.setHourglass(true);
    bool fits = true;
    for (int i = 1; fits && i <= run.SampleCount && i <= core::maxSamples; ++i) {
        fits = deriveInput(run.image, i, gearCount, *points);
    }
    if (fits) writeRun(run, place, result);
    place.dialogs.setHourglass(false);
    return result;
}

ToolResult Mnu_TimeOffset(OpenRun& run, const ToolPlace& place) {
    ToolResult result;
    const core::DataTypeFacts* facts = core::dataTypeFacts(run.DataType);
    if (facts == nullptr) return result;
    const auto offset = askOffset(run, place.dialogs, facts->timeOffset);
    if (!offset) return result;
    run.image.tail.TimeOffset = *offset;
    writeRun(run, place, result);
    return result;
}

} // namespace kvo::graph
