#pragma once
// Message boxes, input boxes and the desktop's other questions in real windows. All are modal to
// the whole program; texts are shown as plain text with their line ends and leading blanks.
#include "platform/dialogs.h"

namespace kvo::platform_qt {

class QtDialogs : public platform::Dialogs {
public:
    platform::Reply messageBox(
        const std::string& text, int style, const std::string& title) override;
    std::string inputBox(
        const std::string& prompt, const std::string& title, const std::string& preset) override;
    std::optional<platform::Colour> chooseColour(std::optional<platform::Colour> start) override;
    std::optional<std::string> chooseFolder(
        const std::string& title, const std::string& start) override;
    std::optional<std::string> chooseFile(const platform::FileQuestion& question) override;
    void beep() override;
    void setHourglass(bool on) override;

private:
    bool m_hourglass = false;
};

} // namespace kvo::platform_qt
