#pragma once
// Nobody sits in front of a measuring: a question ends it.
#include "platform/unanswered_dialogs.h"

#include <cstdio>
#include <cstdlib>

namespace kvo::bench {

class SilentDialogs : public platform::UnansweredDialogs {
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
};

} // namespace kvo::bench
