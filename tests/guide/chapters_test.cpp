// The chapters of the guide, and that each window has one.
#include "guide/chapters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

using namespace kvo::guide;

namespace {

const std::filesystem::path tree = std::filesystem::path(KVO_TEST_DATA).parent_path();

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string userGuide() {
    return contentOf(tree / "docs" / "user-guide.md");
}

// What an expression finds in a text, by its first group.
std::vector<std::string> found(const std::string& text, const std::string& expression) {
    const std::regex wanted(expression);
    std::vector<std::string> all;
    for (std::sregex_iterator match(text.begin(), text.end(), wanted), end; match != end; ++match)
        all.push_back((*match)[1]);
    return all;
}

bool hasAnchor(const std::vector<Chapter>& chapters, const std::string& anchor) {
    return std::ranges::any_of(
        chapters, [&](const Chapter& chapter) { return chapter.anchor == anchor; });
}

// Names that a class gives itself which are no windows, but parts of one.
const std::set<std::string> parts{
    "Frame3", "GraphSurface", "Graph", "Data_Logger", "Edit_Gears", "General"};

} // namespace

TEST(Chapters, AnchorsAreMadeOfTheHeading) {
    EXPECT_EQ(anchorOf("Pit run"), "pit-run");
    EXPECT_EQ(anchorOf("The logger's own settings"), "the-loggers-own-settings");
    EXPECT_EQ(anchorOf("Kvo_1, A-Z & 9 (all)"), "kvo_1-a-z--9-all");
    EXPECT_EQ(anchorOf(""), "");
}

TEST(Chapters, HeadingsAreLinesThatBeginWithTheirMarks) {
    EXPECT_EQ(chaptersOf("# One\ntext # no\n#none\n\n### Two b\r\n```\n# code\n```\n#\n#### Last"),
        (std::vector<Chapter>{{1, "One", "one"}, {3, "Two b", "two-b"}, {4, "Last", "last"}}));
    EXPECT_TRUE(chaptersOf("").empty());
    EXPECT_TRUE(chaptersOf("####### too deep\n####").empty());
}

TEST(Chapters, TheInnermostPlaceThatIsKnownCounts) {
    EXPECT_EQ(anchorFor({"Text_Name", "Analog_Setup", "SetupSoftware"}), "analog-inputs");
    EXPECT_EQ(anchorFor({"Text_Name", "General", "SetupSoftware"}), "setting-up");
    EXPECT_EQ(
        anchorFor({"qt_msgbox_label", "MessageBox", "TimeGraph"}), "the-times-of-the-newest-runs");
    EXPECT_EQ(anchorFor({"", "InputBox"}), "");
    EXPECT_EQ(anchorFor({}), "");
}

TEST(Chapters, EachOfTheTableIsAHeadingOfTheGuide) {
    const auto chapters = chaptersOf(userGuide());
    ASSERT_GT(chapters.size(), 25U);
    for (const WindowChapter& row : windowChapters()) {
        EXPECT_TRUE(std::ranges::any_of(
            chapters, [&](const Chapter& chapter) { return chapter.title == row.title; }))
            << row.window << ": no chapter " << row.title;
    }
}

TEST(Chapters, NoTwoHaveOneAnchor) {
    std::set<std::string> anchors;
    for (const Chapter& chapter : chaptersOf(userGuide()))
        EXPECT_TRUE(anchors.insert(chapter.anchor).second) << chapter.title;
}

// A window is a class that names itself.
TEST(Chapters, EachWindowHasARow) {
    std::size_t windows = 0;
    for (const char* folder : {"mainwin", "graph/forms", "link/forms", "library/forms",
             "setup/forms", "calc/forms", "guide/forms"}) {
        for (const auto& file : std::filesystem::directory_iterator(tree / folder)) {
            if (file.path().extension() != ".cpp") continue;
            for (const std::string& name : found(contentOf(file.path()),
                     "(?:^|\\n)    setObjectName\\(QStringLiteral\\(\"(\\w+)\"\\)\\)")) {
                ++windows;
                const bool known = parts.contains(name) || !anchorFor({name}).empty();
                EXPECT_TRUE(known) << name << " of " << file.path() << " has no chapter";
            }
        }
    }
    EXPECT_GT(windows, 24U);
}

TEST(Chapters, EachLinkOfTheGuideGoesSomewhere) {
    const std::string text = userGuide();
    const auto chapters = chaptersOf(text);
    const auto links = found(text, "[^!]\\[[^\\]]*\\]\\(([^)]*)\\)");
    EXPECT_GT(links.size(), 5U);
    for (const std::string& link : links) {
        if (link.starts_with("#"))
            EXPECT_TRUE(hasAnchor(chapters, link.substr(1))) << link;
        else
            EXPECT_EQ(link, "file-formats.md"); // the one page beside it that is in the program
    }
}
