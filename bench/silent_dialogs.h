#pragma once
// Nobody sits in front of a measuring: a question ends it.
#include "platform/dialogs.h"

#include <cstdio>
#include <cstdlib>

namespace kvo::bench {

class SilentDialogs : public platform::Dialogs {
public:
    platform::Reply messageBox(const std::string& text, int, const std::string&) override {
        std::fprintf(stderr, "kvo_bench: %s\n", text.c_str());
        std::exit(2);
    }
    std::string inputBox(
        const std::string& prompt, const std::string&, const std::string&) override {
        std::fprintf(stderr, "kvo_bench: %s\n", prompt.c_str());
        std::exit(2);
    }
    std::optional<platform::Colour> chooseColour(std::optional<platform::Colour>) override {
        return {};
    }
    std::optional<std::string> chooseFolder(const std::string&, const std::string&) override {
        return {};
    }
    void beep() override {}
    void setHourglass(bool) override {}
};

} // namespace kvo::bench
