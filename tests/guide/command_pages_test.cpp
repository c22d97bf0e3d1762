// The pages that list keys and commands.
#include "guide/command_pages.h"

#include <gtest/gtest.h>

using namespace kvo::guide;

namespace {

const std::vector<CommandRow> rows{
    {"", "&File", "Mnu_File", "", true},
    {"Mnu_File", "&Open...", "Mnu_Open", "Ctrl+O"},
    {"Mnu_File", "I&mport", "Mnu_ImportMenu", "", true},
    {"Mnu_ImportMenu", "Screen && Data", "Mnu_Import(0)", ""},
    {"", "&Graph Scale(Full)  ", "Mnu_Scale", "", true},
    {"Mnu_Scale", "Mail (Requires internet)", "Mnu_Mail", "F"},
    {"", "Zoom In", "ZoomIn", "Ctrl++"},
};

bool has(const std::string& page, const std::string& text) {
    return page.find(text) != std::string::npos;
}

} // namespace

TEST(CommandPages, APathGoesThroughTheMenus) {
    EXPECT_EQ(pathOf(rows[1], rows), "File, Open");
    EXPECT_EQ(pathOf(rows[3], rows), "File, Import, Screen & Data");
    EXPECT_EQ(pathOf(rows[5], rows), "Graph Scale, Mail (Requires internet)");
    EXPECT_EQ(pathOf(rows[6], rows), "Zoom In");
    EXPECT_EQ(pathOf({"Gone", "Last&", "X", ""}, rows), "Last");
}

TEST(CommandPages, EveryShortcutIsOnTheKeyboardPage) {
    const std::string page = keyboardPage({{"The graph", rows}});
    EXPECT_TRUE(
        page.starts_with("# Keyboard\n\n## Every window\n\n| Key | What it does |\n|---|---|\n"));
    EXPECT_TRUE(has(page, "## The graph\n\n| Key | What it does |\n|---|---|\n| Left, Right | "));
    EXPECT_TRUE(has(page, "| Ctrl\\+O | File, Open |\n"));
    EXPECT_TRUE(has(page, "| F | Graph Scale, Mail (Requires internet) |\n"));
    EXPECT_TRUE(has(page, "| Ctrl\\+\\+ | Zoom In |\n"));
    EXPECT_FALSE(has(page, "Screen"));
}

// Also of windows without a menu, once each.
TEST(CommandPages, EveryOtherKeyIsOnTheKeyboardPage) {
    const std::string page = keyboardPage({{"The graph", rows}});
    for (const OtherKey& key : otherKeys()) {
        const std::string heading = "## " + std::string(key.window) + "\n";
        EXPECT_TRUE(has(page, heading)) << heading;
        EXPECT_EQ(page.find(heading), page.rfind(heading)) << heading;
        EXPECT_TRUE(has(page, std::string("| ") + key.does + " |\n")) << key.does;
    }
    EXPECT_LT(page.find("## The graph"), page.find("## Choosing a run"));
}

TEST(CommandPages, EveryCommandIsOnTheirPageAndNoMenu) {
    EXPECT_EQ(commandsPage({{"The graph", rows}}),
        "# Commands\n\n## The graph\n\n| Command | Key |\n|---|---|\n"
        "| File, Open | Ctrl\\+O |\n"
        "| File, Import, Screen \\& Data |  |\n"
        "| Graph Scale, Mail (Requires internet) | F |\n"
        "| Zoom In | Ctrl\\+\\+ |\n");
}

// What was open last is not known here.
TEST(CommandPages, RowsWithoutCaptionsAreThatOfTheirMenu) {
    std::vector<CommandRow> recent{
        {"", "&File", "Mnu_File", "", true}, {"Mnu_File", "Recent R&uns", "Mnu_Recent", "", true}};
    for (const char* control : {"One", "Two", "Three"})
        recent.push_back({"Mnu_Recent", "", control, ""});
    EXPECT_EQ(pathOf(recent.back(), recent), "File, Recent Runs");
    EXPECT_EQ(commandsPage({{"W", recent}}),
        "# Commands\n\n## W\n\n| Command | Key |\n|---|---|\n| File, Recent Runs |  |\n");
}

TEST(CommandPages, SignsOfMarkdownAreLetters) {
    const std::string page = commandsPage({{"W", {{"", "<<<< a|b *c_", "X", "["}}}});
    EXPECT_TRUE(has(page, "| \\<\\<\\<\\< a\\|b \\*c\\_ | \\[ |\n"));
}
