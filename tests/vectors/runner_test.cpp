// The runner of the golden vectors must not let a wrong line pass.
#include "runner/runner.h"
#include "runner/vector_tools.h"
#include "tests/contract/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>

namespace kvo::vectors {
namespace {

Json parsed(const char* text) {
    return Json::parse(text);
}

bool agree(const char* expected, const char* got, double tolerance = 0) {
    return !compare(parsed(expected), parsed(got), tolerance);
}

TEST(Compare, TakesNumbersExactly) {
    EXPECT_TRUE(agree("1", "1.0"));
    EXPECT_TRUE(agree("0.0", "-0.0"));
    EXPECT_FALSE(agree("0.1", "0.10000000000000002"));
    EXPECT_TRUE(agree("0.1", "0.10000000000000002", 1e-9));
    EXPECT_FALSE(agree("1", "2", 0.5));
    EXPECT_FALSE(agree("1", "2", 5)) << "a tolerance is for floating values only";
    EXPECT_FALSE(agree("1", "\"1\""));
    EXPECT_FALSE(agree("1", "true"));
    EXPECT_FALSE(compare(Json(1.0), Json(std::numeric_limits<double>::quiet_NaN()), 1e9)
                     .value_or(Difference{})
                     .path.empty());
}

TEST(Compare, LeavesOutTheKeysThatAreNotExpected) {
    EXPECT_TRUE(agree(R"({"a":1})", R"({"a":1,"b":2})"));
    EXPECT_TRUE(agree(R"({"a":{"x":1}})", R"({"a":{"x":1,"y":2}})"));
    EXPECT_FALSE(agree(R"({"a":1,"b":2})", R"({"a":1})"));
    EXPECT_FALSE(agree(R"({"a":null})", R"({"a":1})"));
    EXPECT_TRUE(agree(R"({"a":null})", R"({"a":null})"));
}

TEST(Compare, TakesListsWhole) {
    EXPECT_TRUE(agree("[1,[2,3]]", "[1,[2,3]]"));
    EXPECT_FALSE(agree("[1,2]", "[1,2,3]"));
    EXPECT_FALSE(agree("[1,2]", "[2,1]"));
    const auto difference =
        compare(parsed(R"({"a":[1,{"b":2}]})"), parsed(R"({"a":[1,{"b":3}]})"), 0);
    ASSERT_TRUE(difference);
    EXPECT_EQ(difference->path, "out.a[1].b");
}

struct RunOfLines {
    testing::TemporaryFolder folder;
    std::ostringstream report;
    int with(const std::string& lines) {
        std::ofstream(folder / "lines.jsonl") << lines;
        return runVectors(folder.path(), report);
    }
    bool says(const std::string& text) const {
        return report.str().find(text) != std::string::npos;
    }
};

// A function of this test: gives back what it got.
void addEcho() {
    static const bool once = [] {
        add("Echo", [](const Case& c) { return c.in; });
        add("Throws", [](const Case&) -> Json { throw std::runtime_error("on purpose"); });
        add(
            "Two",
            [](const Case&) {
                return Json{{"which", 1}};
            },
            [](const Json& in) { return in.contains("first"); });
        add("Two", [](const Case&) { return Json{{"which", 2}}; });
        return true;
    }();
    (void)once;
}

TEST(Runner, CountsWhatPasses) {
    addEcho();
    RunOfLines run;
    EXPECT_EQ(run.with(R"({"id":"1","fn":"Echo","in":{"a":1},"out":{"a":1}})"
                       "\r\n\n"
                       R"({"id":"2","fn":"Echo","in":{"a":1.5},"out":{"a":1},"tol":0.5})"),
        0);
    EXPECT_TRUE(run.says("Echo 2/2\n")) << run.report.str();
    EXPECT_TRUE(run.says("2 passed, 0 failed\n"));
}

TEST(Runner, ShowsTheFirstThreeMismatches) {
    addEcho();
    RunOfLines run;
    std::string lines;
    for (int i = 1; i <= 5; ++i) {
        lines += R"({"id":"E-)" + std::to_string(i) +
                 R"(","fn":"Echo","why":"wrong","in":{"a":1},"out":{"a":2}})" + "\n";
    }
    EXPECT_EQ(run.with(lines), 1);
    EXPECT_TRUE(run.says("Echo 0/5\n"));
    EXPECT_TRUE(run.says("E-3 (wrong)"));
    EXPECT_FALSE(run.says("E-4"));
    EXPECT_TRUE(run.says("expected: 2"));
    EXPECT_TRUE(run.says("got:      1"));
    EXPECT_TRUE(run.says("0 passed, 5 failed\n"));
}

TEST(Runner, ABrokenLineCostsThatLineOnly) {
    addEcho();
    for (const char* broken : {"{", "null", "[]", "17", "{}", R"({"fn":"Echo"})",
             R"({"fn":"Echo","in":{}})", R"({"fn":"Throws","in":{},"out":{}})",
             R"({"fn":"Nobody knows","in":{},"out":{}})", R"({"fn":7,"in":{},"out":{}})",
             R"({"fn":"Echo","in":{},"out":{},"tol":"x"})", "\xff\xfe"}) {
        RunOfLines run;
        EXPECT_EQ(run.with(std::string(broken) + "\n" +
                           R"({"id":"2","fn":"Echo","in":{"a":1},"out":{"a":1}})"),
            1)
            << broken;
        EXPECT_TRUE(run.says("1 passed, 1 failed\n")) << run.report.str();
    }
}

TEST(Runner, AFolderWithoutALineFails) {
    RunOfLines run;
    EXPECT_EQ(runVectors(run.folder.path(), run.report), 1);
    EXPECT_EQ(runVectors(run.folder / "missing", run.report), 1);
    EXPECT_TRUE(run.says("0 passed, 0 failed\n"));
}

TEST(Runner, TakesTheFunctionThatFitsTheLine) {
    addEcho();
    RunOfLines run;
    EXPECT_EQ(run.with(R"({"fn":"Two","in":{"first":1},"out":{"which":1}})"
                       "\n"
                       R"({"fn":"Two","in":{},"out":{"which":2}})"),
        0)
        << run.report.str();
}

TEST(VectorTools, TextsAreBytes) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    EXPECT_EQ(textOf(toJson(all)), all);
    EXPECT_EQ(toJson("\xb0").get<std::string>(), "\xc2\xb0");
    EXPECT_ANY_THROW((void)textOf(Json("\u20ac")));
}

TEST(VectorTools, SumsAreTheCommonOnes) {
    const std::string check = "123456789";
    const platform::Bytes bytes(check.begin(), check.end());
    EXPECT_EQ(crc32(bytes), 0xCBF43926U);
    EXPECT_EQ(sha256({}), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256(platform::Bytes(200, 'a')).size(), 64U);
    const std::string abc = "abc";
    EXPECT_EQ(sha256(platform::Bytes(abc.begin(), abc.end())),
        "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(VectorTools, HexIsStrict) {
    EXPECT_EQ(hexOf(bytesOfHex("00ff7a")), "00ff7a");
    EXPECT_ANY_THROW((void)bytesOfHex("0"));
    EXPECT_ANY_THROW((void)bytesOfHex("0g"));
}

} // namespace
} // namespace kvo::vectors
