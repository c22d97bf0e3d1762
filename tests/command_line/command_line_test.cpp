#include "tools/command_line/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kvo::command_line {
namespace {

class CommandLine : public ::testing::Test {
protected:
    Arguments typed(const std::vector<std::string>& words) {
        out.str("");
        err.str("");
        return read(syntax, words, out, err);
    }
    const Syntax syntax{"draw FOLDER [RUN]", "Draws runs.\n", 1, 2, {"--surface"}, {"--size"}};
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(CommandLine, ReadsOperandsSwitchesAndValuesInAnyOrder) {
    const auto arguments = typed({"--size", "7x5", "here", "--surface", "run"});
    EXPECT_EQ(arguments.exitCode, std::nullopt);
    EXPECT_EQ(arguments.operands, (std::vector<std::string>{"here", "run"}));
    EXPECT_TRUE(arguments.has("--surface"));
    EXPECT_EQ(arguments.options.at("--size"), "7x5");
    EXPECT_EQ(out.str() + err.str(), "");
    EXPECT_FALSE(typed({"here"}).has("--surface"));
}

TEST_F(CommandLine, AValueMayLookLikeAnOptionAndTheLaterOneHolds) {
    const auto arguments = typed({"--size", "--surface", "--size", "-1", "here"});
    EXPECT_EQ(arguments.exitCode, std::nullopt);
    EXPECT_EQ(arguments.options.at("--size"), "-1");
    EXPECT_FALSE(arguments.has("--surface"));
}

TEST_F(CommandLine, ADashOrNothingIsAnOperand) {
    EXPECT_EQ(typed({"-", ""}).operands, (std::vector<std::string>{"-", ""}));
}

TEST_F(CommandLine, HelpWinsOverEverythingElse) {
    for (const char* word : {"--help", "-h"}) {
        EXPECT_EQ(typed({"--what", word, "a", "b", "c"}).exitCode, 0);
        EXPECT_EQ(out.str(), "usage: draw FOLDER [RUN]\n\nDraws runs.\n");
        EXPECT_EQ(err.str(), "");
    }
}

TEST_F(CommandLine, MisuseIsToldWithTheUsage) {
    const std::pair<std::vector<std::string>, const char*> rows[] = {
        {{"--what", "here"}, "there is no option --what"},
        {{"here", "-x"}, "there is no option -x"},
        {{"--surface=1", "here"}, "there is no option --surface=1"},
        {{"here", "--size"}, "--size wants a value"},
        {{}, "an argument is missing"},
        {{"--surface"}, "an argument is missing"},
        {{"a", "b", "c"}, "that is one argument too many"},
    };
    for (const auto& [words, what] : rows) {
        EXPECT_EQ(typed(words).exitCode, 2) << what;
        EXPECT_EQ(err.str(), std::string("draw: ") + what + "\nusage: draw FOLDER [RUN]\n");
        EXPECT_EQ(out.str(), "");
    }
}

TEST_F(CommandLine, TheProgramsNameIsNoArgument) {
    const char* const words[] = {"/bin/draw", "here"};
    EXPECT_EQ(read(syntax, 2, words).operands, (std::vector<std::string>{"here"}));
    const Syntax nothingNeeded{"draw", "", 0, 0};
    EXPECT_EQ(read(nothingNeeded, 1, words).exitCode, std::nullopt);
    EXPECT_EQ(read(nothingNeeded, 0, words).exitCode, std::nullopt);
}

} // namespace
} // namespace kvo::command_line
