#include "setup/models.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kvo::setup {
namespace {

TEST(Models, StandInTheOrderOfTheList) {
    std::vector<std::string> texts;
    std::vector<int> types;
    for (const ModelFacts& model : models()) {
        texts.emplace_back(model.text);
        types.push_back(model.type);
    }
    EXPECT_EQ(texts, (std::vector<std::string>{"VRN 8", "VRN 12", "VRN 17", "VRN 22 or KVO",
                         "VRN 23, 25", "VRN 32", "VRN 35, 43"}));
    EXPECT_EQ(types, (std::vector<int>{8, 12, 17, 20, 25, 32, 43}));
}

TEST(Models, AreFoundByIndexAndByType) {
    for (int index = 0; index < 7; ++index) EXPECT_EQ(modelIndex(modelAt(index)->type), index);
    for (const int unknown : {0, 22, 23, 29, 35, -1}) EXPECT_EQ(modelIndex(unknown), -1);
    EXPECT_EQ(modelAt(-1), nullptr);
    EXPECT_EQ(modelAt(7), nullptr);
}

} // namespace
} // namespace kvo::setup
