#pragma once
// The pages of the help that list the keys and the commands. They are made from the tables that the
// menus and the toolbars are made from, and so name what there is.
#include <string>
#include <vector>

namespace kvo::guide {

// A row of the tables of a window: the control name of its menu (empty in the bar itself, and for a
// key of the toolbar that presses no command of the menus), its caption with the mark of its
// letter, its own control name and its shortcut (empty for none).
struct CommandRow {
    std::string menu;
    std::string caption;
    std::string control;
    std::string shortcut;
    bool isMenu = false;
};

// All rows of a window, and what the window is called.
struct WindowCommands {
    std::string window;
    std::vector<CommandRow> rows;
};

// A key that is no command of a menu.
struct OtherKey {
    const char* window;
    const char* keys;
    const char* does;
};
const std::vector<OtherKey>& otherKeys();

// The way to a command through the menus, as it reads there: "File, Print, Screen". A row whose
// caption is only known later, such as that of a recent run, has the way of its menu.
std::string pathOf(const CommandRow& row, const std::vector<CommandRow>& rows);

// Markdown: every shortcut of the windows, and the other keys, in a table a window. The windows
// come as they are given, those that have other keys alone behind them.
std::string keyboardPage(const std::vector<WindowCommands>& windows);
// Markdown: every command of the windows with its shortcut; rows of one menu that have no captions
// yet are one.
std::string commandsPage(const std::vector<WindowCommands>& windows);

} // namespace kvo::guide
