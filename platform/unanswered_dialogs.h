#pragma once
// Dialogs where nobody sits in front of the program: every question counts as closed at once. A
// tool that wants to say or count what would have been asked overrides that question.
#include "platform/dialogs.h"

namespace kvo::platform {

class UnansweredDialogs : public Dialogs {
public:
    Reply messageBox(const std::string&, int, const std::string&) override { return Reply::ok; }
    std::string inputBox(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    std::optional<Colour> chooseColour(std::optional<Colour>) override { return {}; }
    std::optional<std::string> chooseFolder(const std::string&, const std::string&) override {
        return {};
    }
    void beep() override {}
    void setHourglass(bool) override {}
};

} // namespace kvo::platform
