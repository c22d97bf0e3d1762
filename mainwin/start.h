#pragma once
// The start of the program: from the processor test to the main window.
namespace kvo::forms {

// Opens every door between the forms. The forms themselves are made when they are first asked for.
void openDoors();

// The services must be in place. False when the program is to end: the processor was refused or the
// login was cancelled. Otherwise the main window stands.
bool startProgram();

} // namespace kvo::forms
