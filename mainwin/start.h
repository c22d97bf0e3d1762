#pragma once
// The start of the program: from the processor test to the main window.
#include <string>

namespace kvo::forms {

// Opens every door between the forms. The forms themselves are made when they are first asked for.
void openDoors();

// The services must be in place. False when the program is to end: the processor was refused, the
// login was cancelled, or another program has the folder. That one is asked to open `run`, where
// the user goes there; a whole path, or empty. Otherwise the main window stands.
bool startProgram(const std::string& run = {});

} // namespace kvo::forms
