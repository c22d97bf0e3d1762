// The checks of names, lengths, tests and data types, each with breaches planted.
#include "source_check.h"

#include <gtest/gtest.h>

#include <fstream>

namespace kvo::structure {
namespace {

const char* const tableText = "platform | platform | | |\n"
                              "core | core | platform | |\n"
                              "graph | graph | core platform | |\n"
                              "platform_qt | platform/qt | platform | Qt |\n"
                              "graph_forms | graph/forms | graph core | Qt |\n"
                              "simulator | tools | core | system |\n";
const char* const namesText = "# a comment\n"
                              "core::state | core graph | hand it in\n"
                              "state()     | core graph | hand it in\n"
                              "files->     | *_forms    | call a function\n";

std::vector<std::string> texts(const std::vector<Breach>& breaches) {
    std::vector<std::string> result;
    for (const Breach& breach : breaches) result.push_back(breach.text());
    return result;
}

std::vector<std::string> namesIn(const std::string& file, const std::string& text) {
    return texts(nameBreaches(readTable(tableText), readNames(namesText), {{file, text}}));
}

using Texts = std::vector<std::string>;

TEST(NameCheck, SaysWhereWhatAndWhatInstead) {
    EXPECT_EQ(namesIn("graph/view.cpp", "int x;\nint y = state().Y;\n"),
        Texts{"graph/view.cpp:2: state() is not for graph: hand it in"});
}

TEST(NameCheck, FindsEveryWayToUseAName) {
    for (const char* text : {"auto& s = core::state();", "using core::state;", "f(&state());",
             "return state();", "x = *state( ).p;", "kvo::core ::state"})
        EXPECT_FALSE(namesIn("graph/view.cpp", text).empty()) << text;
    for (const char* text : {"services().files->exists(x);", "services.files->exists(x);"})
        EXPECT_FALSE(namesIn("graph/forms/window.cpp", text).empty()) << text;
}

TEST(NameCheck, LeavesOtherUsesAlone) {
    for (const char* text :
        {"SharedState& state();", "State state();", "link.state();", "p->state();", "f(state);",
            "// core::state()", "text = \"core::state()\";", "my_state();", "state(1);"})
        EXPECT_EQ(namesIn("core/x.cpp", text), Texts{}) << text;
    EXPECT_EQ(namesIn("graph/forms/window.cpp", "f(*services().files, core::state());"), Texts{});
    EXPECT_EQ(namesIn("tests/x.cpp", "core::state();"), Texts{});
    EXPECT_EQ(namesIn("graph/main.cpp", "core::state();"), Texts{});
}

TEST(NameCheck, RefusesALayerThatIsNotThere) {
    EXPECT_EQ(texts(nameBreaches(readTable(tableText), readNames("x | graph gone* | y\n"), {})),
        Texts{"tools/names.txt: gone* is no layer"});
}

TEST(LengthCheck, MeasuresFunctionsAndFiles) {
    const auto function = [](int lines) {
        std::string text = "int f() {\n";
        for (int i = 2; i < lines; ++i) text += "    g();\n";
        return text + "}\n";
    };
    const auto file = [](int lines) {
        std::string text;
        for (int i = 0; i < lines; ++i) text += "int x;\n";
        return text;
    };
    EXPECT_EQ(texts(lengthBreaches({{"a.cpp", function(60)}, {"b.h", file(600)}})), Texts{});
    EXPECT_EQ(texts(lengthBreaches({{"a.cpp", function(61)}, {"b.h", file(601)}})),
        (Texts{"a.cpp:f:1: 61 lines in a function", "b.h: 601 lines in a file"}));
}

TEST(ClassCheck, FindsClassesOfTooManyMembers) {
    const auto body = [](int functions, int data) {
        std::string text = " C {\npublic:\n    C();\n    ~C();\n";
        for (int i = 0; i < functions; ++i) text += "    void f(int a, int b) const;\n";
        for (int i = 0; i < data; ++i) text += "    int m_x = 0;\n";
        return text + "};\n";
    };
    EXPECT_EQ(texts(classBreaches({{"a.h", "class" + body(30, 30)}, {"b.h", "struct" + body(0, 99)},
                  {"tests/c.h", "class" + body(99, 0)}, {"d.cpp", "class" + body(99, 0)}})),
        Texts{});
    EXPECT_EQ(texts(classBreaches({{"a.h", "class" + body(30, 31)}, {"b.h", "struct" + body(1, 60)},
                  {"c.h", "class Outer {\n    class" + body(61, 0) + "};\n"}})),
        (Texts{"a.h:C:1: 61 members of a class", "b.h:C:1: 61 members of a class",
            "c.h:C:2: 61 members of a class"}));
}

TEST(TestCheck, WantsATestFileForEachUnit) {
    const auto table = readTable(tableText);
    const Sources sources = {{"core/basic/numbers.cpp", ""}, {"core/records.h", ""},
        {"graph/view.cpp", ""}, {"graph/forms/window.cpp", ""}, {"platform/draw/raster.cpp", ""},
        {"platform/qt/text.cpp", ""}, {"graph/main.cpp", ""}, {"tools/x.cpp", ""}};
    EXPECT_EQ(texts(testBreaches(table, sources)),
        (Texts{"core/basic/numbers.cpp: has no tests/core/numbers_test.cpp",
            "graph/forms/window.cpp: has no tests/forms/window_test.cpp",
            "graph/view.cpp: has no tests/graph/view_test.cpp",
            "platform/draw/raster.cpp: has no tests/contract/raster_test.cpp",
            "platform/qt/text.cpp: has no tests/forms/text_test.cpp"}));
    Sources tested = sources;
    for (const char* test :
        {"core/numbers", "forms/window", "graph/view", "contract/raster", "forms/text"})
        tested["tests/" + std::string(test) + "_test.cpp"] = "";
    EXPECT_EQ(texts(testBreaches(table, tested)), Texts{});
}

TEST(DataTypeCheck, FindsComparisonsWithATypesNumber) {
    const auto found = [](const std::string& text) {
        return dataTypeBreaches({{"graph/view.cpp", text}}).size();
    };
    EXPECT_EQ(found("if (type == 25) f();\n"), 1U);
    EXPECT_EQ(found("if (type ==8) f();\n"), 1U);
    EXPECT_EQ(found("if (a ==  43 || b == 20) f();\n"), 1U);
    for (const char* text : {"if (type != 25) f();\n", "if (input.dataType >= 23) f();\n",
             "if (run.DataType <20) f();\n", "if (view.labelType() > 17) f();\n",
             "if (25 > run.DataType) f();\n", "if (32 != overlayType) f();\n",
             "switch (run.DataType) {\ncase 8:\n    f();\n}\n"})
        EXPECT_EQ(found(text), 1U) << text;
    EXPECT_EQ(found("for (int n = 1; n <= 8; ++n) f(type, n);\nx = y >> 8;\n"), 0U);
    EXPECT_EQ(found("FromOne<int, 8> Analog_Type;\n"), 0U);
    EXPECT_EQ(found("if (type >= 230 || type != 7) f();\n"), 0U);
    EXPECT_EQ(found("switch (day) {\ncase 8:\n    f();\n}\n"), 0U);
    EXPECT_EQ(found("if (type == 250 || n == 7 || n != 8) f();\n"), 0U);
    EXPECT_EQ(found("// type == 25\ntext = \"== 25\";\n"), 0U);
    EXPECT_EQ(found("if (type == 25) f(); // Required: no other type.\n"), 0U);
    EXPECT_EQ(found("// Required: no other type.\nif (type == 25) f();\n"), 0U);
    EXPECT_EQ(found("// Required: no other type.\n\nif (type == 25) f();\n"), 1U);
    EXPECT_EQ(texts(dataTypeBreaches(
                  {{"core/data_types.cpp", "x == 25"}, {"tests/core/x_test.cpp", "x == 25"},
                      {"bench/x.cpp", "x == 25"}, {"core/other.cpp", "  x == 25;"}})),
        Texts{"core/other.cpp:1: compares with a data type's number: x == 25;"});
}

TEST(Exceptions, TakeTheirBreachesAwayAndNoOthers) {
    const auto list = readExceptions("# a comment\n\nlengths | a.cpp:f | a table\n");
    EXPECT_EQ(texts(withoutExceptions(
                  {{"a.cpp:f", 3, "x"}, {"a.cpp:f", 9, "x"}, {"b.cpp", 0, "y"}}, "lengths", list)),
        Texts{"b.cpp: y"});
    EXPECT_EQ(
        texts(withoutExceptions({{"a.cpp:f", 3, "x"}}, "names", list)), Texts{"a.cpp:f:3: x"});
}

TEST(Exceptions, MustBeNeededAndReasoned) {
    EXPECT_EQ(texts(withoutExceptions({}, "tests", readExceptions("tests | a.cpp | why\n"))),
        Texts{"a.cpp: is no exception any more"});
    EXPECT_EQ(texts(withoutExceptions({{"a.cpp", 0, ""}}, "tests", readExceptions("tests|a.cpp"))),
        Texts{"a.cpp: is excepted unreasoned"});
}

TEST(Tree, IsReadButForBuildsAndHiddenFolders) {
    const std::filesystem::path root =
        std::filesystem::path(testing::TempDir()) / "kvo_structure_tree";
    std::filesystem::remove_all(root);
    for (const char* file :
        {"core/a.h", "core/basic/b.cpp", "build/dev/c.cpp", ".git/d.h", "docs/e.txt"}) {
        std::filesystem::create_directories((root / file).parent_path());
        std::ofstream(root / file) << "text";
    }
    EXPECT_EQ(readTree(root), (Sources{{"core/a.h", "text"}, {"core/basic/b.cpp", "text"}}));
    std::filesystem::remove_all(root);
}

} // namespace
} // namespace kvo::structure
