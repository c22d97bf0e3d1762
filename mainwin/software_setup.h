#pragma once
// The way to the software setup form for those who need it in the middle of something else: the
// start of the program and a download, when the configuration is missing or corrupt.
namespace kvo::forms {

// Shows the software setup form, modal. This version of the program has none: the user was told
// what is wrong, and the program goes on with what could be read.
void showSoftwareSetup();

} // namespace kvo::forms
