#include "core/run_index.h"

#include "core/basic/numbers.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>

namespace kvo::core {
namespace {

using testing::MemoryFiles;

constexpr const char* indexPath = "/kvo/Data/KvoData.Ini";

struct Index {
    MemoryFiles files;

    platform::WriteResult add(
        const std::string& description, IndexOrder order = IndexOrder::sorted) {
        return AddRunToIndex("/kvo", {"26111514.52d", description}, order, files);
    }
    std::vector<std::string> descriptions() const {
        std::vector<std::string> texts;
        for (const auto& entry : readRunIndex(indexPath, files)) texts.push_back(entry.Description);
        return texts;
    }
};

TEST(RunDateKey, IsCenturyMonthDayAndRun) {
    EXPECT_EQ(RunDateKey("Sun 15 Nov 2026 Run: 3"), 20111503);
    EXPECT_EQ(RunDateKey("Thu 05 Nov 2026 Run: 12"), 20110512);
    EXPECT_EQ(RunDateKey("Sat 15 Nov 1997 Run: 3"), 19111503);
}

TEST(RunDateKey, DoesNotKnowTheYear) {
    EXPECT_EQ(RunDateKey("Sun 15 Nov 2026 Run: 3"), RunDateKey("Mon 15 Nov 2027 Run: 3"));
    EXPECT_GT(RunDateKey("Thu 31 Dec 2026 Run: 1"), RunDateKey("Tue 01 Jun 2027 Run: 1"));
}

TEST(RunDateKey, TakesTwoCharactersOfTheRun) {
    EXPECT_EQ(RunDateKey("Sun 15 Nov 2026 Run: 123"), 20111512);
    EXPECT_EQ(RunDateKey("Sun 15 Nov 2026 Run: 4 Western 9"), 20111504);
}

TEST(RunDateKey, ReadsFromFixedPlacesWhereATextIsMissing) {
    EXPECT_EQ(RunDateKey(""), 0);
    EXPECT_EQ(RunDateKey(" "), 0);
    EXPECT_EQ(RunDateKey("abc"), 0);
    EXPECT_EQ(RunDateKey(std::string(160, ' ')), 0);
    EXPECT_EQ(RunDateKey("xxx 15 Nov 2026"), 20111500 + 15) << "Run: missing: from character 5";
}

TEST(RunDateKey, TakesAnyBytes) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (int length = byte(random) % 40; length > 0; --length) {
            text += static_cast<char>(i % 2 == 0 ? byte(random) : "0 9.-Run: J"[byte(random) % 11]);
        }
        EXPECT_LE(RunDateKey(text), 999999999) << text;
    }
}

TEST(RunFileName, IsTheMomentOfSaving) {
    EXPECT_EQ(runFileName({2026, 11, 15, 14, 52, 59}), "26111514.52d");
    EXPECT_EQ(runFileName({2000, 1, 1, 0, 0, 0}), "00010100.00d");
}

TEST(RunText, TakesOneHundredAndThirtyCharactersOfTheTitle) {
    const platform::DateTime day{2026, 11, 15, 0, 0, 0};
    EXPECT_EQ(runText("1 First", day), " Date:Sun 15 Nov 2026 Run: 1 First#");
    EXPECT_EQ(runText(std::string(200, 'x'), day),
        " Date:Sun 15 Nov 2026 Run: " + std::string(130, 'x') + "#");
}

TEST(IndexDescription, RunsToTheFirstHash) {
    EXPECT_EQ(indexDescription(" Date:Sun 15 Nov 2026 Run: 1 #2#"), "Sun 15 Nov 2026 Run: 1 ");
    EXPECT_EQ(indexDescription(" Date:no hash"), "");
    EXPECT_EQ(indexDescription("#"), "");
    EXPECT_EQ(indexDescription(""), "");
    EXPECT_EQ(indexDescription(" Date:#"), "");
}

TEST(AddRunToIndex, AFirstDownloadLeavesOneRecord) {
    Index index;
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 1", IndexOrder::asItIs));
    const auto file = index.files.read(indexPath).value();
    ASSERT_EQ(file.size(), 240U);
    EXPECT_EQ(std::string(file.begin(), file.begin() + 14), "26111514.52d  ");
    EXPECT_EQ(std::string(file.begin() + 80, file.begin() + 104), "Sun 15 Nov 2026 Run: 1  ");
}

TEST(AddRunToIndex, ADownloadGoesToTheEnd) {
    Index index;
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 1", IndexOrder::asItIs));
    ASSERT_TRUE(index.add("Sat 14 Nov 2026 Run: 1", IndexOrder::asItIs));
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 2", IndexOrder::asItIs));
    EXPECT_EQ(index.descriptions(), (std::vector<std::string>{"Sun 15 Nov 2026 Run: 1",
                                        "Sat 14 Nov 2026 Run: 1", "Sun 15 Nov 2026 Run: 2"}));
}

TEST(AddRunToIndex, AnImportSortsTheWholeIndexNewestFirst) {
    Index index;
    for (const char* text : {"Sun 15 Nov 2026 Run: 9", "Sat 14 Nov 2026 Run: 1"}) {
        ASSERT_TRUE(index.add(text, IndexOrder::asItIs));
    }
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 10"));
    EXPECT_EQ(index.descriptions(), (std::vector<std::string>{"Sun 15 Nov 2026 Run: 10",
                                        "Sun 15 Nov 2026 Run: 9", "Sat 14 Nov 2026 Run: 1"}));
}

TEST(AddRunToIndex, EqualKeysStayInTheirOrder) {
    Index index;
    const std::vector<std::string> same{"Sun 15 Nov 2026 Run: 1 a", "Sun 15 Nov 2026 Run: 1 b",
        "Mon 15 Nov 2027 Run: 1 c", "Sun 15 Nov 2026 Run: 1 d"};
    for (const std::string& text : same) ASSERT_TRUE(index.add(text));
    EXPECT_EQ(index.descriptions(), same);
}

// The order is that of comparing every record with every later one and exchanging them.
TEST(AddRunToIndex, OrdersAsAnExchangeOfPairsDoes) {
    Index index;
    std::vector<std::string> expected;
    std::mt19937 random(3);
    for (int i = 0; i < 60; ++i) {
        const int day = 10 + i % 20;
        expected.push_back("Sun " + std::to_string(day) + (i % 3 == 0 ? " Nov" : " Mar") +
                           " 2026 Run: " + std::to_string(1 + i / 20));
    }
    std::shuffle(expected.begin(), expected.end(), random);
    for (const std::string& text : expected) ASSERT_TRUE(index.add(text, IndexOrder::asItIs));
    expected.emplace_back("Sun 09 Jun 2026 Run: 1");
    ASSERT_TRUE(index.add(expected.back()));
    for (std::size_t i = 0; i + 1 < expected.size(); ++i) {
        for (std::size_t j = i + 1; j < expected.size(); ++j) {
            if (RunDateKey(expected[j]) > RunDateKey(expected[i])) {
                std::swap(expected[i], expected[j]);
            }
        }
    }
    EXPECT_EQ(index.descriptions(), expected);
}

TEST(AddRunToIndex, CompletesARecordThatWasCutShort) {
    Index index;
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 1", IndexOrder::asItIs));
    platform::Bytes file = index.files.read(indexPath).value();
    file.resize(100);
    index.files.put(indexPath, file);
    EXPECT_EQ(index.descriptions(), std::vector<std::string>{"Sun 15 Nov 2026 Run:"});
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 2", IndexOrder::asItIs));
    EXPECT_EQ(index.files.read(indexPath)->size(), 480U);
    EXPECT_EQ(index.descriptions().back(), "Sun 15 Nov 2026 Run: 2");
}

TEST(AddRunToIndex, TellsOfAFullDiskAndLeavesTheIndex) {
    Index index;
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 1", IndexOrder::asItIs));
    index.files.failWrites("/kvo", MemoryFiles::Failure::fullDisk);
    const auto added = index.add("Sun 15 Nov 2026 Run: 2", IndexOrder::asItIs);
    EXPECT_FALSE(added);
    EXPECT_FALSE(added.message.empty());
    EXPECT_EQ(index.descriptions().size(), 1U);
}

TEST(AddRunToIndex, WritesOnceWhateverTheLength) {
    Index index;
    platform::Bytes file;
    for (int i = 0; i < 100000; ++i) {
        std::string record = padded("26111514.52d", 80);
        record += padded(
            "Sun " + std::to_string(10 + i * 7 % 20) + " Nov 2026 Run: " + std::to_string(i % 97),
            160);
        file.insert(file.end(), record.begin(), record.end());
    }
    index.files.put(indexPath, std::move(file));
    const int before = index.files.writes();
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 1"));
    // Exchanging pairs of so many records would take hours; a second is far beyond the need.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(index.files.writes(), before + 1);
    EXPECT_EQ(index.files.read(indexPath)->size(), 100001U * 240);
}

TEST(RunIndex, ARecordIsAFileNameAndADescription) {
    Index index;
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 1"));
    const platform::Bytes file = index.files.read(indexPath).value();
    ASSERT_EQ(file.size(), 240U);
    EXPECT_EQ(std::string(file.begin(), file.begin() + 80), padded("26111514.52d", 80));
    EXPECT_EQ(std::string(file.begin() + 80, file.end()), padded("Sun 15 Nov 2026 Run: 1", 160));
    const auto entries = readRunIndex(indexPath, index.files);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0], (RunIndexEntry{"26111514.52d", "Sun 15 Nov 2026 Run: 1"}));
    ASSERT_TRUE(writeRunIndex("/kvo", entries, index.files));
    EXPECT_EQ(index.files.read(indexPath), file);
}

TEST(RunIndex, IsEmptyWhereThereIsNone) {
    EXPECT_TRUE(readRunIndex(indexPath, MemoryFiles{}).empty());
}

TEST(RunIndex, CarriesAnyByte) {
    MemoryFiles files;
    std::string odd = "a";
    for (int byte = 0; byte < 60; ++byte) odd += static_cast<char>(byte * 4);
    odd += "z";
    ASSERT_TRUE(writeRunIndex("/kvo", {{"../../etc", odd}, {"b", ""}}, files));
    const auto entries = readRunIndex(indexPath, files);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].FileName, "../../etc");
    EXPECT_EQ(entries[0].Description, odd);
}

// The run's file is gone by then, and a row without one helps nobody.
TEST(RunIndex, ARowThatIsDescribedAnewMeanwhileIsTakenOffAllTheSame) {
    MemoryFiles files;
    const std::vector<RunIndexEntry> rows{{"a", "1"}, {"b", "2 new"}, {"b", "2 other"}, {"c", "3"}};
    ASSERT_TRUE(writeRunIndex("/kvo", rows, files));
    const auto listed = [&] { return readRunIndex("/kvo/Data/KvoData.Ini", files); };
    ASSERT_TRUE(removeFromIndex("/kvo", {"b", "2 other"}, files)); // the very row goes first
    EXPECT_EQ(listed(), (std::vector<RunIndexEntry>{rows[0], rows[1], rows[3]}));
    ASSERT_TRUE(removeFromIndex("/kvo", {"b", "2"}, files));
    EXPECT_EQ(listed(), (std::vector<RunIndexEntry>{rows[0], rows[3]}));
    ASSERT_TRUE(removeFromIndex("/kvo", {"b", "2"}, files));
    EXPECT_EQ(listed().size(), 2U);
}

TEST(RunIndex, IsKeptWhenItIsRewritten) {
    MemoryFiles files;
    ASSERT_TRUE(writeRunIndex("/kvo", {{"a", "one"}, {"b", "two"}}, files));
    ASSERT_TRUE(writeRunIndex("/kvo", {{"b", "two"}}, files));
    EXPECT_EQ(readRunIndex(indexPath, files).size(), 1U);
    EXPECT_EQ(readRunIndex("/kvo/Backup/KvoData.Ini.0001", files).size(), 2U);
}

TEST(SuggestTitle, CountsTheRunsOfTheDay) {
    const platform::DateTime today{2026, 11, 15, 9, 0, 0};
    EXPECT_EQ(suggestTitle("", today), "1 ");
    EXPECT_EQ(suggestTitle("Sun 15 Nov 2026 Run: 1", today), " 2 ");
    EXPECT_EQ(suggestTitle("Sun 15 Nov 2026 Run:  2 ", today), " 3 ");
    EXPECT_EQ(suggestTitle("Sun 15 Nov 2026 Run: 12 4", today), " 13 ");
    EXPECT_EQ(suggestTitle("Sat 14 Nov 2026 Run: 7", today), "1 ");
}

TEST(SuggestTitle, IsOneWhereTheLastDescriptionSaysNothing) {
    const platform::DateTime today{2026, 11, 15, 9, 0, 0};
    for (const char* text : {"no such pattern", "Run:", " Run: 4", "Sun 15 Nov 2026", "R", " "}) {
        EXPECT_EQ(suggestTitle(text, today), "1 ") << text;
    }
}

TEST(SuggestTitle, AfterAnImportReadsTheOldestRun) {
    Index index;
    ASSERT_TRUE(index.add("Sat 14 Nov 2026 Run: 4", IndexOrder::asItIs));
    ASSERT_TRUE(index.add("Sun 15 Nov 2026 Run: 7"));
    EXPECT_EQ(suggestTitle(index.descriptions().back(), {2026, 11, 15, 0, 0, 0}), "1 ");
    EXPECT_EQ(suggestTitle(index.descriptions().back(), {2026, 11, 14, 0, 0, 0}), " 5 ");
}

TEST(SafeBaseName, RefusesWhatLeadsOutOfTheFolder) {
    EXPECT_TRUE(isSafeBaseName("26111514.52d"));
    EXPECT_TRUE(isSafeBaseName("My run (2).01d"));
    for (const char* name : {"", ".", "..", "../a", "a/b", "a\\b", "C:a", "a..b", "a\nb", "a\x7f",
             "CON", "con.52d", "Com1", "LPT9.txt", "NUL .d", "aux"}) {
        EXPECT_FALSE(isSafeBaseName(name)) << name;
    }
    EXPECT_FALSE(isSafeBaseName(std::string_view("a\0b", 3)));
    EXPECT_TRUE(isSafeBaseName("COMX.52d"));
    EXPECT_TRUE(isSafeBaseName("CONTROL.52d"));
}

// Many at once leave the index that one after another leaves, ties and all.
TEST(RunIndex, SeveralRunsAreAddedAsOneAfterAnother) {
    const std::vector<RunIndexEntry> fresh{{"26061512.01d", "Mon 15 Jun 2026 Run: 2 a"},
        {"26111512.02d", "Sun 15 Nov 2026 Run: 1"}, {"26061512.03d", "Mon 15 Jun 2026 Run: 2 b"},
        {"27061512.03d", "Tue 15 Jun 2027 Run: 2 c"}};
    for (const IndexOrder order : {IndexOrder::sorted, IndexOrder::asItIs}) {
        Index one;
        Index many;
        for (Index* index : {&one, &many}) {
            ASSERT_TRUE(index->add("Wed 01 Jul 2026 Run: 3", IndexOrder::asItIs));
            ASSERT_TRUE(index->add("Mon 15 Jun 2026 Run: 2 old", IndexOrder::asItIs));
        }
        for (const RunIndexEntry& entry : fresh)
            ASSERT_TRUE(AddRunToIndex("/kvo", entry, order, one.files));
        const int before = many.files.writes();
        ASSERT_TRUE(AddRunsToIndex("/kvo", fresh, order, many.files));
        EXPECT_EQ(many.files.writes(), before + 1);
        EXPECT_EQ(many.descriptions(), one.descriptions());
        EXPECT_EQ(many.descriptions().size(), 6U);
    }
}

} // namespace
} // namespace kvo::core
