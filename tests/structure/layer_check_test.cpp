// The check itself: what it must find, planted, and what it must leave alone.
#include "layer_check.h"

#include <gtest/gtest.h>

namespace kvo::structure {
namespace {

const char* const tableText =
    "# a comment\n"
    "platform | platform | | |\n"
    "core | core | platform | |\n"
    "graph | graph | core platform | |\n"
    "link | link | core platform | |\n"
    "platform_os | platform/os | platform | system |\n"
    "platform_qt | platform/qt | platform | system Qt |\n"
    "forms | graph/forms mainwin | platform core graph link platform_qt | "
    "Qt | platform/files.h QSerialPort* cmath\n";

const Sources sound = {
    {"platform/files.h", "#pragma once\n#include <string>\n"},
    {"platform/os/disk.cpp", "#include \"platform/files.h\"\n#include <sys/stat.h>\n"},
    {"platform/qt/port.cpp", "#include <QSerialPort>\n#include <termios.h>\n"},
    {"core/run.h", "#include \"platform/files.h\"\n#include <cmath>\n"},
    {"mainwin/main.cpp", "#include \"mainwin/window.h\"\n#include <QApplication>\n"},
    {"graph/view.h", "#include \"core/run.h\"\n"},
    {"link/session.h", "#include \"core/run.h\"\n"},
    {"graph/forms/data_graph.cpp", "#include \"graph/view.h\"\n#include <QWidget>\n"
                                   "#include \"data_graph.moc\"\n"},
    {"mainwin/window.h", "#include \"graph/view.h\"\n#include \"link/session.h\"\n"},
};

std::vector<std::string> breachesWith(const std::string& file, const std::string& line) {
    Sources sources = sound;
    sources[file] += line + "\n";
    return breaches(readTable(tableText), sources);
}

TEST(LayerCheck, LeavesASoundTreeAlone) {
    EXPECT_EQ(breaches(readTable(tableText), sound), std::vector<std::string>{});
}

TEST(LayerCheck, NamesFileLineAndHeaderOfABreach) {
    EXPECT_EQ(breachesWith("core/run.h", "#include \"graph/view.h\"").at(0),
        "core/run.h:3: graph/view.h belongs to graph, which core may not use");
}

struct Planted {
    const char* what;
    const char* file;
    const char* line;
};

class LayerCheckFinds : public testing::TestWithParam<Planted> {};

TEST_P(LayerCheckFinds, ThePlantedBreach) {
    EXPECT_FALSE(breachesWith(GetParam().file, GetParam().line).empty()) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(Each, LayerCheckFinds,
    testing::Values(Planted{"upwards", "platform/files.h", "#include \"core/run.h\""},
        Planted{"sideways", "graph/view.h", "#include \"link/session.h\""},
        Planted{"logic knows a form", "link/session.h", "#include \"mainwin/window.h\""},
        Planted{"a form in a subfolder", "graph/view.h", "#include \"graph/forms/data_graph.h\""},
        Planted{"Qt in logic", "graph/view.h", "#include <QString>"},
        Planted{"Qt by its module's folder", "graph/view.h", "#include <QtCore/QString>"},
        Planted{"the system in logic", "link/session.h", "#include <unistd.h>"},
        Planted{"the system by folder", "core/run.h", "  #  include <sys/stat.h> // why not"},
        Planted{"a forbidden header of ours", "mainwin/window.h", "#include \"platform/files.h\""},
        Planted{"a forbidden header of Qt", "mainwin/window.h", "#include <QSerialPortInfo>"},
        Planted{"arithmetic in a form", "mainwin/window.h", "#include <cmath>"},
        Planted{"Qt where only the system is allowed", "platform/os/disk.cpp", "#include <QFile>"},
        Planted{"a path that is not from the root", "graph/view.h", "#include \"../core/run.h\""},
        Planted{"a header that is not there", "graph/view.h", "#include \"core/gone.h\""},
        Planted{"a circle", "core/run.h", "#include \"core/run.h\""}));

TEST(LayerCheck, WantsASourcesOwnHeaderFirst) {
    Sources sources = sound;
    sources["graph/view.cpp"] = "#include \"graph/view.h\"\n#include \"core/run.h\"\n";
    EXPECT_EQ(breaches(readTable(tableText), sources), std::vector<std::string>{});
    for (const char* text : {"#include \"core/run.h\"\n#include \"graph/view.h\"\n", ""}) {
        sources["graph/view.cpp"] = text;
        EXPECT_EQ(breaches(readTable(tableText), sources),
            std::vector<std::string>{"graph/view.cpp: does not include graph/view.h first"});
    }
}

TEST(LayerCheck, FindsACircleOfThree) {
    Sources sources = sound;
    sources["core/a.h"] = "#include \"core/b.h\"\n";
    sources["core/b.h"] = "#include \"core/c.h\"\n";
    sources["core/c.h"] = "#include \"core/a.h\"\n";
    const auto found = breaches(readTable(tableText), sources);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], "headers in a circle: core/a.h -> core/b.h -> core/c.h -> core/a.h");
}

TEST(LayerCheck, FindsACircleOfUnitsThroughTheirSources) {
    Sources sources = sound;
    sources["core/a.cpp"] = "#include \"core/a.h\"\n#include \"core/b.h\"\n";
    sources["core/b.cpp"] = "#include \"core/b.h\"\n";
    sources["core/a.h"] = sources["core/b.h"] = "#pragma once\n";
    EXPECT_EQ(breaches(readTable(tableText), sources), std::vector<std::string>{});
    sources["core/b.cpp"] += "#include \"core/a.h\"\n";
    const auto found = breaches(readTable(tableText), sources);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], "units in a circle: core/a -> core/b -> core/a");
}

TEST(LayerCheck, RefusesATableWithACircleOrAFolderClaimedTwice) {
    EXPECT_EQ(tableBreaches(readTable("a | a | b | |\nb | b | a | |\n")).size(), 1U);
    EXPECT_EQ(tableBreaches(readTable("a | a | a | |\n")).size(), 1U);
    EXPECT_EQ(tableBreaches(readTable("a | x | | |\nb | x | | |\n")).size(), 1U);
    EXPECT_EQ(tableBreaches(readTable(tableText)).size(), 0U);
}

TEST(LayerCheck, PutsASharedListInItsPlace) {
    const auto table = readTable("@forms = QFile cmath\na | a | | | math.h @forms\nb | b | | |\n");
    ASSERT_EQ(table.size(), 2U);
    EXPECT_EQ(table[0].never, (std::vector<std::string>{"math.h", "QFile", "cmath"}));
    EXPECT_EQ(table[1].never, std::vector<std::string>{});
    EXPECT_EQ(tableBreaches(table).size(), 0U);
    EXPECT_EQ(tableBreaches(readTable("a | a | | | @form\n@form = x\n")).size(), 1U);
}

TEST(LayerCheck, GivesAFileToTheLongestFolder) {
    const auto table = readTable(tableText);
    EXPECT_EQ(layerOf(table, "platform/qt/port.cpp")->name, "platform_qt");
    EXPECT_EQ(layerOf(table, "platform/files.h")->name, "platform");
    EXPECT_EQ(layerOf(table, "graph/forms/data_graph.cpp")->name, "forms");
    EXPECT_EQ(layerOf(table, "platformer/files.h"), nullptr);
}

TEST(LayerCheck, ReadsIncludesOnly) {
    const auto found = includesOf("// #include <a>\n#include <b>\n#define include \"c\"\n"
                                  "#include \"d/e.h\"\n");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].name, "b");
    EXPECT_TRUE(found[0].angled);
    EXPECT_EQ(found[1].name, "d/e.h");
    EXPECT_EQ(found[1].line, 4);
}

} // namespace
} // namespace kvo::structure
