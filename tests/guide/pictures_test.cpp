// The pictures of the documents: each that is named is there and in the program, and none lies
// there for nothing. That they show today's windows is looked at by guide_pictures --compare.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;

const fs::path picturesTree = fs::path(KVO_TEST_DATA).parent_path();

std::string textOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Names behind pictures/, by the document that shows them.
std::map<std::string, std::set<std::string>> namedPictures() {
    const std::regex shown(R"(!\[[^\]]+\]\((?:docs/)?pictures/([^)]*)\))");
    std::map<std::string, std::set<std::string>> all;
    for (const char* document : {"README.md", "docs/user-guide.md", "docs/architecture.md"}) {
        const std::string text = textOf(picturesTree / document);
        for (std::sregex_iterator each(text.begin(), text.end(), shown), end; each != end; ++each)
            all[document].insert((*each)[1]);
    }
    return all;
}

std::set<std::string> storedPictures() {
    std::set<std::string> all;
    for (const auto& file : fs::directory_iterator(picturesTree / "docs" / "pictures"))
        all.insert(file.path().filename().string());
    return all;
}

unsigned numberAt(const std::string& png, std::size_t place) {
    unsigned value = 0;
    for (std::size_t i = place; i < place + 4; ++i)
        value = value << 8 | static_cast<unsigned char>(png.at(i));
    return value;
}

} // namespace

TEST(Pictures, EachThatIsNamedIsThere) {
    const auto stored = storedPictures();
    for (const auto& [document, pictures] : namedPictures()) {
        for (const std::string& picture : pictures)
            EXPECT_TRUE(stored.contains(picture)) << document << " names " << picture;
    }
    EXPECT_GE(namedPictures()["docs/user-guide.md"].size(), 10U);
}

TEST(Pictures, EachThatIsThereIsNamed) {
    std::set<std::string> named;
    for (const auto& [document, pictures] : namedPictures())
        named.insert(pictures.begin(), pictures.end());
    for (const std::string& picture : storedPictures())
        EXPECT_TRUE(named.contains(picture)) << "nothing shows docs/pictures/" << picture;
}

TEST(Pictures, EachOfTheGuideIsInTheProgram) {
    const std::string resources = textOf(picturesTree / "guide" / "forms" / "guide.qrc");
    const auto guide = namedPictures()["docs/user-guide.md"];
    for (const std::string& picture : guide) {
        const std::string row =
            "<file alias=\"pictures/" + picture + "\">../../docs/pictures/" + picture + "</file>";
        EXPECT_NE(resources.find(row), std::string::npos) << row;
    }
    const std::regex each("alias=\"pictures/");
    EXPECT_EQ(std::distance(std::sregex_iterator(resources.begin(), resources.end(), each), {}),
        static_cast<std::ptrdiff_t>(guide.size()));
}

// Large enough to be read, small enough for the program and the repository.
TEST(Pictures, AreSmallPngFiles) {
    for (const std::string& picture : storedPictures()) {
        if (picture.ends_with(".svg")) continue;
        const std::string png = textOf(picturesTree / "docs" / "pictures" / picture);
        ASSERT_GT(png.size(), 1000U) << picture;
        EXPECT_LE(png.size(), 80'000U) << picture;
        EXPECT_EQ(png.substr(1, 3), "PNG") << picture;
        constexpr std::size_t sizeAt = 16;
        for (const std::size_t side : {sizeAt, sizeAt + 4}) {
            EXPECT_GE(numberAt(png, side), 100U) << picture;
            EXPECT_LE(numberAt(png, side), 1200U) << picture;
        }
    }
}

// Whoever does not see a picture is told what it shows.
TEST(Pictures, EachHasWordsUnderIt) {
    const std::string text = textOf(picturesTree / "docs" / "user-guide.md");
    const std::regex shown(R"(!\[[^\]]+\]\([^)]*\)\n\n\*[^*\n][^\n]*\*\n)");
    const auto captioned = std::distance(std::sregex_iterator(text.begin(), text.end(), shown), {});
    EXPECT_EQ(captioned, static_cast<std::ptrdiff_t>(namedPictures()["docs/user-guide.md"].size()));
}
