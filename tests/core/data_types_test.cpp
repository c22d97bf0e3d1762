// The table of the data types, every value of it: where two readers or two tables differ for one
// type, they do so on purpose.
#include "core/data_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace kvo::core {
namespace {

const std::vector<int> allTypes{8, 12, 17, 20, 23, 25, 29, 32, 43};

struct Row {
    int type;
    int value;
};

// One column, in the order of the types.
std::vector<int> column(int DataTypeFacts::*field) {
    std::vector<int> values;
    for (const int type : allTypes) values.push_back(dataTypeFacts(type)->*field);
    return values;
}

std::vector<int> column(std::optional<int> DataTypeFacts::*field) {
    std::vector<int> values;
    for (const int type : allTypes) values.push_back((dataTypeFacts(type)->*field).value_or(-1));
    return values;
}

using Values = std::vector<int>;

TEST(DataTypes, AreNineInAscendingOrder) {
    Values types;
    for (const DataTypeFacts& facts : dataTypes()) types.push_back(facts.type);
    EXPECT_EQ(types, allTypes);
    for (const int type : allTypes) {
        ASSERT_NE(dataTypeFacts(type), nullptr);
        EXPECT_EQ(dataTypeFacts(type)->type, type);
    }
}

TEST(DataTypes, KnowNoOtherNumber) {
    for (int type = -300; type <= 300; ++type) {
        const bool known = std::find(allTypes.begin(), allTypes.end(), type) != allTypes.end();
        EXPECT_EQ(dataTypeFacts(type) != nullptr, known) << type;
    }
}

//                                        8     12    17    20   23    25   29    32    43
TEST(DataTypes, HaveRowsForEachOfTheThreeReaders) {
    EXPECT_EQ(
        column(&DataTypeFacts::rows), (Values{2520, 2520, 1724, 2048, 0, 1213, 0, 1360, 1360}));
    EXPECT_EQ(column(&DataTypeFacts::overlayRows),
        (Values{2520, 2520, 1725, 2048, 0, 1213, 0, 1860, 1860}));
    EXPECT_EQ(column(&DataTypeFacts::importRows),
        (Values{2520, 2520, 1724, 2048, 1213, 1213, 0, 1360, 1360}));
}

TEST(DataTypes, HaveAnalogNumbersInAnImportedRow) {
    EXPECT_EQ(column(&DataTypeFacts::importAnalogTokens), (Values{4, 4, 8, 7, 7, 8, 0, 11, 11}));
}

TEST(DataTypes, HaveATimeZero) {
    EXPECT_EQ(
        column(&DataTypeFacts::timeOffset), (Values{160, 160, 160, 160, 80, 80, 80, 160, 160}));
    EXPECT_EQ(column(&DataTypeFacts::printedTimeBase),
        (Values{160, 160, 160, 160, 81, 81, 81, 160, 160}));
}

TEST(DataTypes, PrintTwoSamplesALineWhereThereAreFourAnalogs) {
    EXPECT_EQ(column(&DataTypeFacts::printedSamplesALine), (Values{2, 2, 1, 1, 1, 1, 1, 1, 1}));
}

TEST(DataTypes, HaveAnalogsAndExhausts) {
    using enum Exhausts;
    EXPECT_EQ(column(&DataTypeFacts::analogs), (Values{4, 4, 8, 6, 8, 8, 8, 8, 8}));
    const std::vector<Exhausts> exhausts{none, none, none, timeShared, none, own, none, own, own};
    for (std::size_t i = 0; i < allTypes.size(); ++i) {
        EXPECT_EQ(dataTypeFacts(allTypes[i])->exhausts, exhausts[i]) << allTypes[i];
        EXPECT_EQ(exhaustsOf(allTypes[i]), exhausts[i]) << allTypes[i];
        EXPECT_EQ(analogsOf(allTypes[i]), dataTypeFacts(allTypes[i])->analogs) << allTypes[i];
    }
}

TEST(DataTypes, LeaveTheLabelsOfImportedTypesAlone) {
    for (const int type : allTypes) {
        EXPECT_EQ(dataTypeFacts(type)->setsLabels, type != 23 && type != 29) << type;
    }
}

TEST(DataTypes, HaveTheEdgesAndTheCursorOfTheGraph) {
    EXPECT_EQ(column(&DataTypeFacts::rightEdge),
        (Values{2521, 2521, 1725, 2049, 1214, 1214, -1, 1361, 1361}));
    EXPECT_EQ(column(&DataTypeFacts::freshRightEdge),
        (Values{2442, 2442, 1725, 2049, 1214, 1214, -1, 1361, 1361}));
    EXPECT_EQ(
        column(&DataTypeFacts::startCursor), (Values{160, 160, 160, 160, 80, 80, -1, 160, 160}));
    EXPECT_FALSE(dataTypeFacts(29)->rightEdge);
    EXPECT_FALSE(dataTypeFacts(29)->freshRightEdge);
    EXPECT_FALSE(dataTypeFacts(29)->startCursor);
}

// A number that is no type draws as the types around it do.
TEST(DataTypes, ANumberThatIsNoneHasAnalogsButNoExhausts) {
    for (const Row& row : {Row{-1, 4}, Row{0, 4}, Row{9, 4}, Row{16, 4}, Row{18, 8}, Row{21, 8},
             Row{44, 8}, Row{255, 8}}) {
        EXPECT_EQ(analogsOf(row.type), row.value) << row.type;
        EXPECT_EQ(exhaustsOf(row.type), Exhausts::none) << row.type;
    }
}

} // namespace
} // namespace kvo::core
