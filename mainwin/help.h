#pragma once
// The help inside the program: which page of it comes, and what its pages list.
#include "core/forms/doors.h"
#include "guide/command_pages.h"

#include <string>
#include <vector>

namespace kvo::forms {

// The menus and toolbars of the program, with the names that its windows have for the user.
std::vector<guide::WindowCommands> allCommands();

void showHelp(HelpPage page);
// The chapter for a place, by the object names from its control outwards.
void showHelpOf(const std::vector<std::string>& names);

// From here on F1 shows the chapter for the window that has the focus.
void takeHelpKey();

} // namespace kvo::forms
