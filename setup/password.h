#pragma once
// The frame "Log In Password" of the setup form: who may choose a new password, and what a save
// refuses. The password itself is kept readable in Kvo.Cfg.
#include "core/config_record.h"

#include <string>

namespace kvo::setup {

struct PasswordFrame {
    bool Check_Password = false;
    bool Check_Password_Enabled = true;
    std::string OPassword; // the old one
    std::string NPassword; // the new one
    std::string VPassword; // the new one again
    bool OPassword_Shown = false;
    bool newShown = false;  // NPassword and VPassword
    bool newEnabled = true; // the same two
    friend bool operator==(const PasswordFrame&, const PasswordFrame&) = default;
};

// With a password in force the old one must be typed first; else the boxes for a new one show.
PasswordFrame loadPassword(const core::AppConfig& config);
// A change of OPassword: the stored password, to the letter, gives the rest of the frame free.
void OPassword_Change(PasswordFrame& frame, const core::AppConfig& config);
// Takes a new password. Gives the text of a critical box where it is refused: the configuration is
// then as it was; empty if the save may go on.
std::string takePassword(const PasswordFrame& frame, core::AppConfig& config);

} // namespace kvo::setup
