#include "core/start.h"

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

using testing::ScriptedDialogs;

const char* const oldProcessorText =
    "Your Computer CPU is a :486\r\n\r\nThis Software Requires PENTIUM 233MMX or Better to run "
    "Properly\r\n\r\n            Do You want to try and run KVO anyway ?";

TEST(Processor, A586OrLaterIsNotSpokenOf) {
    ScriptedDialogs dialogs;
    EXPECT_TRUE(processorSuffices(586, dialogs));
    EXPECT_TRUE(processorSuffices(686, dialogs));
    EXPECT_EQ(dialogs.problems(), "");
    EXPECT_EQ(dialogs.beeps(), 0);
}

TEST(Processor, AnOlderOneMayBeTriedAnyway) {
    ScriptedDialogs dialogs;
    dialogs.expectBox(oldProcessorText, 4, "Processor Requirement !", platform::Reply::yes);
    EXPECT_TRUE(processorSuffices(486, dialogs));
    dialogs.expectBox(oldProcessorText, 4, "Processor Requirement !", platform::Reply::no);
    EXPECT_FALSE(processorSuffices(486, dialogs));
    EXPECT_EQ(dialogs.problems(), "");
    EXPECT_EQ(dialogs.beeps(), 2);
}

TEST(Login, NeedsASwitchAndAPassword) {
    AppConfig config;
    config.Password = "x";
    EXPECT_FALSE(loginNeeded(config));
    config.Check_Password = 1;
    EXPECT_TRUE(loginNeeded(config));
    config.Password = "   ";
    EXPECT_FALSE(loginNeeded(config));
}

TEST(Login, BlanksAtTheRightEndDoNotCount) {
    AppConfig config;
    config.Password = "pass word ";
    EXPECT_TRUE(passwordMatches(config, "pass word"));
    EXPECT_TRUE(passwordMatches(config, "pass word   "));
    EXPECT_FALSE(passwordMatches(config, " pass word"));
    EXPECT_FALSE(passwordMatches(config, "Pass word"));
    EXPECT_FALSE(passwordMatches(config, ""));
}

TEST(Vehicle, OneIsTheCarAndAllElseAMotorcycle) {
    AppConfig config;
    EXPECT_EQ(vehiclePictureName(config), "Kvobike.dll");
    config.Vehicle_Type = 1;
    EXPECT_EQ(vehiclePictureName(config), "Kvocar.dll");
    config.Vehicle_Type = 2;
    EXPECT_EQ(vehiclePictureName(config), "Kvobike.dll");
}

} // namespace
} // namespace kvo::core
