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

// Which of the eight analog rows are on view.
std::string shownAnalogs(const SetupRows& rows) {
    std::string shown;
    for (int n = 1; n <= 8; ++n)
        if (rows.analog[n]) shown += std::to_string(n);
    return shown;
}

bool wholeRow(const SetupRows& rows, int n, bool shown) {
    const int channel = channels::analogChannel(n);
    return rows.analog[n] == shown && rows.options.Label_Magnify_Analog_Text[n] == shown &&
           rowOf(rows.options.Label_Magnify, channel) == shown &&
           rowOf(rows.options.Text_Magnify, channel) == shown;
}

TEST(ModelRoutine, ShowsTheInputsOfTheModel) {
    const char* const analogs[] = {
        "1234", "1234", "12345678", "123456", "12345678", "12345678", "12345678"};
    for (int before = 0; before < 7; ++before) {
        for (int model = 0; model < 7; ++model) {
            SetupRows rows;
            D_Modal_Change(rows, before);
            D_Modal_Change(rows, model);
            EXPECT_EQ(shownAnalogs(rows), analogs[model]);
            EXPECT_EQ(rows.FrameExhaust, model >= 3);
            for (int n = 1; n <= 8; ++n) {
                const bool shown = rows.analog[n];
                EXPECT_TRUE(wholeRow(rows, n, shown)) << n;
                EXPECT_FALSE(rowOf(rows.options.ComboScale, channels::analogChannel(n))) << n;
            }
        }
    }
}

TEST(ModelRoutine, ShowsARaiseOnItsTabOnly) {
    const int sixth = channels::analogChannel(6);
    SetupRows rows;
    rows.TabStrip2 = RowsTab::raise;
    D_Modal_Change(rows, 3);
    EXPECT_TRUE(rowOf(rows.options.ComboScale, sixth));
    EXPECT_TRUE(rowOf(rows.options.Text_Magnify, sixth)) << "on either tab";
    EXPECT_FALSE(rowOf(rows.options.ComboScale, channels::analogChannel(7)));
    rows.TabStrip2 = RowsTab::magnify;
    D_Modal_Change(rows, 4);
    EXPECT_TRUE(rowOf(rows.options.ComboScale, sixth)) << "left as it was";
    D_Modal_Change(rows, 0);
    EXPECT_FALSE(rowOf(rows.options.ComboScale, sixth));
}

TEST(ModelRoutine, WithoutASelectionShowsTheExhaustsAndLeavesTheRows) {
    SetupRows rows;
    D_Modal_Change(rows, 0);
    SetupRows expected = rows;
    expected.FrameExhaust = true;
    D_Modal_Change(rows, -1);
    EXPECT_EQ(rows, expected);
}

TEST(VehicleRoutine, ACarHasNoClutchRow) {
    const int clutch = channels::clutchChannel;
    SetupRows rows;
    rows.TabStrip2 = RowsTab::raise;
    rowOf(rows.options.Text_Magnify, clutch) = true;
    rowOf(rows.options.ComboScale, clutch) = true;
    Vehicle_Type_Change(rows, car);
    EXPECT_FALSE(rowOf(rows.options.Label_Magnify, clutch));
    EXPECT_FALSE(rowOf(rows.options.Text_Magnify, clutch));
    EXPECT_FALSE(rowOf(rows.options.ComboScale, clutch));
    Vehicle_Type_Change(rows, motorcycle);
    EXPECT_TRUE(rowOf(rows.options.Label_Magnify, clutch));
    EXPECT_TRUE(rowOf(rows.options.ComboScale, clutch));
    EXPECT_FALSE(rowOf(rows.options.Text_Magnify, clutch)) << "not touched";
    rows.TabStrip2 = RowsTab::magnify;
    Vehicle_Type_Change(rows, car);
    Vehicle_Type_Change(rows, motorcycle);
    EXPECT_FALSE(rowOf(rows.options.ComboScale, clutch));
}

TEST(VehicleRoutine, WordsTheCaptions) {
    EXPECT_EQ(vehicleCaptions(car).Label_DriverNumber, "Driver Name:");
    EXPECT_EQ(vehicleCaptions(car).Pinion_Label, "Pinion Correction:");
    EXPECT_EQ(vehicleCaptions(car).Weight_Label, "Vehicle Weight:");
    EXPECT_EQ(vehicleCaptions(car).Pteeth_Label, "Pinion:");
    EXPECT_EQ(vehicleCaptions(car).Cteeth_Label, "Crown Wheel:");
    EXPECT_EQ(vehicleCaptions(motorcycle).Label_DriverNumber, "Rider Name:");
    EXPECT_EQ(vehicleCaptions(motorcycle).Pinion_Label, "Output Correction:");
    EXPECT_EQ(vehicleCaptions(motorcycle).Weight_Label, "Bike Weight:");
    EXPECT_EQ(vehicleCaptions(motorcycle).Pteeth_Label, "Output Sprocket:");
    EXPECT_EQ(vehicleCaptions(motorcycle).Cteeth_Label, "Rear Wheel Sprocket:");
    EXPECT_EQ(vehicleCaptions(-1).Label_DriverNumber, "Rider Name:");
}

} // namespace
} // namespace kvo::setup
