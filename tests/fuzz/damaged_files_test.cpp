// The readers on some thousand files that are damaged, the same ones in each build; the sanitizer
// build watches their memory.
#include "core/config.h"
#include "mutations.h"
#include "readers.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace kvo::fuzz {
namespace {

platform::Bytes fileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return platform::Bytes(std::istreambuf_iterator<char>(file), {});
}

platform::Bytes indexOf(int records) {
    platform::Bytes index;
    for (int i = 0; i < records; ++i) {
        std::string record = "26111514.52d";
        record.resize(80, ' ');
        record += "Sun " + std::to_string(10 + i % 20) + " Nov 2026 Run: " + std::to_string(i);
        record.resize(240, ' ');
        index.insert(index.end(), record.begin(), record.end());
    }
    return index;
}

void readDamaged(Reader reader, const platform::Bytes& file, unsigned count) {
    reader(file);
    for (unsigned number = 0; number < count; ++number) {
        SCOPED_TRACE(number);
        reader(damaged(file, number));
    }
}

TEST(DamagedFiles, OfTheConfiguration) {
    readDamaged(readConfig, fileBytes(KVO_TEST_DATA "/../packaging/Kvo.Cfg"), 5000);
}

TEST(DamagedFiles, OfRuns) {
    const std::filesystem::path folder = KVO_TEST_DATA "/vectors/core/files";
    int runs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        readDamaged(readRun, fileBytes(entry.path()), 40);
        ++runs;
    }
    EXPECT_GT(runs, 10);
}

TEST(DamagedFiles, OfTheIndex) {
    readDamaged(readIndex, indexOf(40), 1500);
    readDamaged(readIndex, {}, 50);
}

TEST(DamagedFiles, OfNotesAndTimes) {
    platform::Bytes info(61U * 400);
    for (std::size_t record = 0; record < 61; ++record) {
        info[record * 400] = 5;
        for (std::size_t i = 2; i < 7; ++i) info[record * 400 + i] = 'x';
    }
    readDamaged(readInfo, info, 300);
    platform::Bytes times(25U * 44, ' ');
    for (std::size_t run = 0; run < 25; ++run) times[run * 44] = static_cast<std::uint8_t>(run);
    readDamaged(readTimes, times, 3000);
}

TEST(DamagedFiles, OfTextRuns) {
    int texts = 0;
    for (const auto& entry :
        std::filesystem::directory_iterator(KVO_TEST_DATA "/fuzz/corpus/text")) {
        readDamaged(readText, fileBytes(entry.path()), 100);
        ++texts;
    }
    EXPECT_GT(texts, 10);
    readDamaged(readText, {}, 50);
}

TEST(DamagedFiles, AreDamagedAlikeEachTime) {
    const platform::Bytes file = indexOf(3);
    EXPECT_EQ(damaged(file, 5), damaged(file, 5));
    int differing = 0;
    for (unsigned number = 0; number < 100; ++number) differing += damaged(file, number) != file;
    EXPECT_GT(differing, 90);
}

} // namespace
} // namespace kvo::fuzz
