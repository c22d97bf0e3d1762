#include "guide/command_pages.h"

#include <algorithm>
#include <utility>

namespace kvo::guide {

namespace {

// Without the mark of the letter, and of a menu without the state that it bears in brackets.
std::string plainCaption(const CommandRow& row) {
    std::string plain;
    for (std::size_t i = 0; i < row.caption.size(); ++i) {
        if (row.caption[i] == '&' && ++i == row.caption.size()) break; // of "&&" the second stays
        plain += row.caption[i];
    }
    if (row.isMenu) plain.resize(std::min(plain.find('('), plain.size()));
    while (plain.ends_with(' ') || plain.ends_with('.')) plain.pop_back();
    return plain;
}

// A text in a cell of a table, with what Markdown would read as a sign of its own.
std::string cell(const std::string& text) {
    std::string marked;
    for (const char c : text) {
        if (std::string_view("\\`*_{}[]<>#+-!|&~").find(c) != std::string_view::npos)
            marked += '\\';
        marked += c;
    }
    return marked;
}

class Page {
public:
    explicit Page(const std::string& title) : m_text("# " + title + "\n") {}
    void table(const std::string& heading, const std::string& first, const std::string& second) {
        m_text += "\n## " + heading + "\n\n| " + first + " | " + second + " |\n|---|---|\n";
    }
    void row(const std::string& first, const std::string& second) {
        m_text += "| " + cell(first) + " | " + cell(second) + " |\n";
    }
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

void addOtherKeys(Page& page, const std::string& window) {
    for (const OtherKey& key : otherKeys())
        if (key.window == window) page.row(key.keys, key.does);
}

constexpr const char* keyColumn = "Key";
constexpr const char* doesColumn = "What it does";

} // namespace

const std::vector<OtherKey>& otherKeys() {
    static const std::vector<OtherKey> keys{
        {"Every window", "F1", "the chapter of the guide on this window"},
        {"Every window", "Alt and the underlined letter", "the menu, button or box of that letter"},
        {"Every window", "Tab, Shift+Tab", "to the next control, to the one before"},
        {"Every window", "Space", "presses the button that has the focus, or ticks the box"},
        {"Every window", "Return", "presses the button that is marked"},
        {"Every window", "Escape", "leaves a form or a menu without saving"},
        {"Every window", "Alt+F4", "closes the window"},
        {"The graph", "Left, Right", "the cursor by 0.01 s"},
        {"The graph", "Alt+Left, Alt+Right", "the cursor by 0.1 s"},
        {"The graph", "Ctrl+Left, Ctrl+Right", "the cursor by 0.5 s"},
        {"The graph", "Shift+Left, Shift+Right", "the cursor by 1 s"},
        {"The graph", "Up, Down, PgUp, PgDown", "the part of an enlarged graph that is in view"},
        {"The graph", "Space, on a channel's button", "the channel on and off"},
        {"The graph", "C, on a channel's button", "the channel's colour"},
        {"Pit run", "F", "freezes the numbers, and lets them go on"},
        {"Choosing a run", "letters and digits", "find a run by a part of its title"},
        {"Choosing a run", "Ctrl+F", "to the line for words to find"},
        {"Choosing a run", "Up, Down, PgUp, PgDown, in that line", "walk through the list"},
        {"Choosing a run", "Escape, in that line", "empties it"},
        {"Choosing a run", "Return", "opens the chosen run"},
        {"Choosing a run", "F2, Menu", "changes the description of the chosen run"},
        {"The times of the newest runs", "Left, Right", "the line by 0.01 s"},
        {"The times of the newest runs", "Alt+Left, Alt+Right", "the line by 0.1 s"},
        {"The times of the newest runs", "Ctrl+Left, Ctrl+Right", "the line by 0.5 s"},
        {"The times of the newest runs", "Shift+Left, Shift+Right", "the line by 1 s"},
        {"The times of the newest runs", "Space, on a label", "opens the run in the graph"},
        {"The setup", "Ctrl+Tab, Ctrl+Shift+Tab", "to the next tab, to the one before"},
        {"Copying, mailing and importing", "Ctrl+A", "selects all files of the list"},
        {"Copying, mailing and importing", "Return, in a list of folders", "opens the folder"},
        {"Copying, mailing and importing", "Backspace, in the folder window", "goes up"},
        {"This help", "Ctrl+F", "to the box for a word to find"},
        {"This help", "F3, Shift+F3", "the next place of the word, the one before"},
        {"This help", "Alt+Left, Alt+Right", "back to the page before, and forward again"},
        {"This help", "Escape", "closes the help"},
    };
    return keys;
}

std::string pathOf(const CommandRow& row, const std::vector<CommandRow>& rows) {
    std::string path = plainCaption(row);
    std::string menu = row.menu;
    while (!menu.empty()) {
        const auto above = std::ranges::find_if(
            rows, [&menu](const CommandRow& other) { return other.control == menu; });
        if (above == rows.end()) break;
        path.insert(0, plainCaption(*above) + (path.empty() ? "" : ", "));
        menu = above->menu;
    }
    return path;
}

std::string keyboardPage(const std::vector<WindowCommands>& windows) {
    Page page("Keyboard");
    std::vector<std::string> told;
    const auto begin = [&](const std::string& window) {
        told.push_back(window);
        page.table(window, keyColumn, doesColumn);
        addOtherKeys(page, window);
    };
    begin("Every window");
    for (const WindowCommands& window : windows) {
        begin(window.window);
        for (const CommandRow& row : window.rows)
            if (!row.shortcut.empty()) page.row(row.shortcut, pathOf(row, window.rows));
    }
    for (const OtherKey& key : otherKeys())
        if (std::ranges::find(told, key.window) == told.end()) begin(key.window);
    return page.text();
}

std::string commandsPage(const std::vector<WindowCommands>& windows) {
    Page page("Commands");
    for (const WindowCommands& window : windows) {
        page.table(window.window, "Command", keyColumn);
        std::string before;
        for (const CommandRow& row : window.rows) {
            if (row.isMenu) continue;
            const std::string path = pathOf(row, window.rows);
            if (path != std::exchange(before, path)) page.row(path, row.shortcut);
        }
    }
    return page.text();
}

} // namespace kvo::guide
