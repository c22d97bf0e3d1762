#pragma once
// Message boxes, input boxes and the other questions that stop the program until the user answers.
// All texts and titles are UTF-8, paths among them; what comes from a file goes through fromFile()
// of platform/text.h.
#include "platform/draw/colour.h"

#include <optional>
#include <string>

namespace kvo::platform {

// A style is the sum of one value of each group.
namespace boxStyle {
inline constexpr int ok = 0;
inline constexpr int okCancel = 1;
inline constexpr int yesNoCancel = 3;
inline constexpr int yesNo = 4;
inline constexpr int retryCancel = 5;
inline constexpr int critical = 16;
inline constexpr int question = 32;
inline constexpr int warning = 48;
inline constexpr int information = 64;
inline constexpr int secondDefault = 256;
} // namespace boxStyle

// A file that is to be saved. The suggestion is a whole path, UTF-8 like the rest.
struct FileQuestion {
    std::string title;
    std::string kind; // "Comma separated values (*.csv)"
    std::string suggestion;
};

enum class Reply { ok, cancel, retry, yes, no };

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Shows text under title and waits. Line ends in the text are CR, LF or CR LF. Closing a box
    // without an answer counts as its least committing button (Cancel, else No, else OK).
    virtual Reply messageBox(const std::string& text, int style, const std::string& title) = 0;
    // Asks for a text that goes on behind `preset`; Cancel gives an empty answer. Preset and answer
    // are a file's text.
    virtual std::string inputBox(
        const std::string& prompt, const std::string& title, const std::string& preset) = 0;
    // Colour dialog that starts from a colour; nothing on Cancel.
    virtual std::optional<Colour> chooseColour(std::optional<Colour> start) = 0;
    // Asks for a folder to save to; nothing on Cancel.
    virtual std::optional<std::string> chooseFolder(
        const std::string& title, const std::string& start) = 0;
    // Asks where to save a file; nothing on Cancel. Whether one that is there already may be
    // replaced is left to whoever asks. Where nobody can be asked nothing is chosen.
    virtual std::optional<std::string> chooseFile(const FileQuestion&) { return {}; }
    virtual void beep() = 0;
    // The hourglass on all windows while work goes on.
    virtual void setHourglass(bool on) = 0;
};

} // namespace kvo::platform
