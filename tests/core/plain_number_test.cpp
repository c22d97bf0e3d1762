// Numbers as the boxes show them.
#include "core/basic/plain_number.h"

#include "core/basic/numbers.h"

#include <gtest/gtest.h>

#include <limits>

namespace kvo::core {
namespace {

TEST(PlainNumber, IsWhatTheNumberIsWrittenAs) {
    EXPECT_EQ(plainNumber(2350.5F), "2350.5");
    EXPECT_EQ(plainNumber(33.1F), "33.1");
    EXPECT_EQ(plainNumber(33.1), "33.1");
    EXPECT_EQ(plainNumber(0.0), "0");
    EXPECT_EQ(plainNumber(-4.25), "-4.25");
}

TEST(PlainNumber, HasNoExponent) {
    EXPECT_EQ(plainNumber(12345678.0F), "12345678");
    EXPECT_EQ(plainNumber(1e20), "100000000000000000000");
    EXPECT_EQ(plainNumber(0.000001), "0.000001");
    EXPECT_EQ(plainNumber(-1e-7F), "-0.0000001");
}

TEST(PlainNumber, OfTheLargestAndTheSmallestIsReadAgain) {
    const double largest = std::numeric_limits<double>::max();
    const double smallest = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(Val(plainNumber(largest)), largest);
    EXPECT_EQ(Val(plainNumber(smallest)), smallest);
}

TEST(PlainNumber, OfWhatIsNoNumberIsZero) {
    EXPECT_EQ(plainNumber(std::numeric_limits<double>::quiet_NaN()), "0");
    EXPECT_EQ(plainNumber(-std::numeric_limits<float>::infinity()), "0");
}

} // namespace
} // namespace kvo::core
