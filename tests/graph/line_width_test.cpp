#include "graph/line_width.h"

#include <gtest/gtest.h>

#include <map>

using namespace kvo;
using namespace kvo::graph;

namespace {

struct KeptTexts : platform::Settings {
    std::vector<std::string> list(const std::string& name) const override {
        const auto found = lists.find(name);
        return found == lists.end() ? std::vector<std::string>() : found->second;
    }
    void setList(const std::string& name, const std::vector<std::string>& values) override {
        lists[name] = values;
    }
    std::map<std::string, std::vector<std::string>> lists;
};

} // namespace

TEST(LineWidth, IsOnePixelUntilAnotherIsKept) {
    KeptTexts settings;
    EXPECT_EQ(keptLineWidth(settings), 1);
    for (const int width : {3, 2, 1}) {
        keepLineWidth(settings, width);
        EXPECT_EQ(keptLineWidth(settings), width);
    }
}

TEST(LineWidth, WhatIsNoneCountsForNothing) {
    KeptTexts settings;
    for (const char* text : {"0", "4", "-1", "", "wide", "2 ", "22"}) {
        settings.setList("LineWidth", {text});
        EXPECT_EQ(keptLineWidth(settings), 1) << text;
    }
}
