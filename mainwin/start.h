#pragma once
// The start of the program: from the processor test to the main window.
namespace kvo::forms {

// The services must be in place. False when the program is to end: the processor was refused or the
// login was cancelled. Otherwise the main window stands.
bool startProgram();

} // namespace kvo::forms
