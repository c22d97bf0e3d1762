#include "setup/password.h"

#include <gtest/gtest.h>

namespace kvo::setup {
namespace {

core::AppConfig withPassword(const char* password, std::uint8_t check = 1) {
    core::AppConfig config;
    config.Password = password;
    config.Check_Password = check;
    return config;
}

PasswordFrame typed(bool check, const char* newOne, const char* again) {
    PasswordFrame frame;
    frame.Check_Password = check;
    frame.NPassword = newOne;
    frame.VPassword = again;
    return frame;
}

TEST(Password, InForceAsksForTheOldOne) {
    const PasswordFrame frame = loadPassword(withPassword("secret"));
    EXPECT_TRUE(frame.Check_Password);
    EXPECT_FALSE(frame.Check_Password_Enabled);
    EXPECT_TRUE(frame.OPassword_Shown);
    EXPECT_FALSE(frame.newShown);
    EXPECT_EQ(frame.OPassword + frame.NPassword + frame.VPassword, "");
}

TEST(Password, NotInForceShowsTheBoxesForANewOne) {
    for (const auto& config :
        {withPassword("secret", 0), withPassword(""), withPassword("   "), core::AppConfig()}) {
        const PasswordFrame frame = loadPassword(config);
        EXPECT_FALSE(frame.Check_Password);
        EXPECT_TRUE(frame.Check_Password_Enabled);
        EXPECT_FALSE(frame.OPassword_Shown);
        EXPECT_TRUE(frame.newShown);
        EXPECT_TRUE(frame.newEnabled);
    }
}

TEST(Password, TheOldOneGivesTheFrameFree) {
    const core::AppConfig config = withPassword("Secret ");
    PasswordFrame frame = loadPassword(config);
    frame.NPassword = "x";
    for (const char* wrong : {"", "Secret", "secret ", "Secret  "}) {
        frame.OPassword = wrong;
        OPassword_Change(frame, config);
        EXPECT_FALSE(frame.newEnabled) << wrong;
        EXPECT_FALSE(frame.Check_Password_Enabled) << wrong;
        EXPECT_EQ(frame.NPassword, "x");
    }
    frame.OPassword = "Secret ";
    OPassword_Change(frame, config);
    EXPECT_TRUE(frame.newEnabled);
    EXPECT_TRUE(frame.Check_Password_Enabled);
    EXPECT_EQ(frame.NPassword, "");
    EXPECT_FALSE(frame.newShown) << "the boxes stay out of sight";
    frame.OPassword = "Secret x";
    OPassword_Change(frame, config);
    EXPECT_FALSE(frame.newEnabled);
    EXPECT_TRUE(frame.Check_Password_Enabled);
}

TEST(Password, TwoEqualOnesAreTakenWithoutTheirTrailingBlanks) {
    core::AppConfig config = withPassword("old");
    EXPECT_EQ(takePassword(typed(true, " new  ", " new"), config), "");
    EXPECT_EQ(config.Password, " new");
}

TEST(Password, ABlankOneIsRefused) {
    core::AppConfig config = withPassword("old");
    EXPECT_EQ(takePassword(typed(true, "", "  "), config),
        "You can't have a blank password\n\nRe-Enter your Password and try again.");
    EXPECT_EQ(config.Password, "old");
}

TEST(Password, TwoThatDifferAreRefusedAndShown) {
    core::AppConfig config = withPassword("old");
    EXPECT_EQ(takePassword(typed(true, "one ", "One"), config),
        "The passwords you entered are not the same.\n\none \nOne\n\n"
        "Re-Enter your Password and try again.");
    EXPECT_EQ(config.Password, "old");
}

TEST(Password, WithoutItsCheckStaysAsItIs) {
    core::AppConfig config = withPassword("old");
    EXPECT_EQ(takePassword(typed(false, "one", "two"), config), "");
    EXPECT_EQ(config.Password, "old");
}

} // namespace
} // namespace kvo::setup
