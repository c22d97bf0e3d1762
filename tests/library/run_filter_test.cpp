#include "library/run_filter.h"

#include <gtest/gtest.h>

namespace kvo::library {
namespace {

using Words = std::vector<std::string>;

TEST(RunFilter, MakesCapitalsSmall) {
    EXPECT_EQ(folded("Run: 12 AZ az [@`{"), "run: 12 az az [@`{");
    EXPECT_EQ(folded("M\xDCLLER \xC0\xDE \x8A\x8C\x8E\x9F"), "m\xFCller \xE0\xFE \x9A\x9C\x9E\xFF");
    // Signs among the letters, and letters without a capital.
    EXPECT_EQ(folded("\xD7\xDF\xF7\xBF"), "\xD7\xDF\xF7\xBF");
    EXPECT_EQ(folded(""), "");
}

TEST(RunFilter, TakesALineApart) {
    EXPECT_EQ(filterWords("  Nov   2026\tFinal "), (Words{"nov", "2026", "final"}));
    EXPECT_EQ(filterWords("one"), (Words{"one"}));
    EXPECT_EQ(filterWords("a\xA0"
                          "b"),
        (Words{"a", "b"}));
    EXPECT_EQ(filterWords("   "), Words{});
    EXPECT_EQ(filterWords(""), Words{});
}

TEST(RunFilter, KnowsANarrowerLine) {
    EXPECT_TRUE(isNarrower({"final"}, {"fin"}));
    EXPECT_TRUE(isNarrower({"semifinal", "2026"}, {"fin"}));
    EXPECT_TRUE(isNarrower({"a"}, {}));
    EXPECT_FALSE(isNarrower({"fin"}, {"final"}));
    EXPECT_FALSE(isNarrower({"final"}, {"fin", "2026"}));
    EXPECT_FALSE(isNarrower({}, {"a"}));
}

} // namespace
} // namespace kvo::library
