#pragma once
// The menus and the toolbar of a window, made from its tables: one engine for all windows. A row
// says where a command stands, what it runs and what it needs; the engine alone decides what is
// enabled. Control names become object names, and an item of a control array is named "Name(i)".
#include <QPointer>

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;
class QPainter;
class QToolBar;
class QWidget;

namespace kvo::platform_qt {

// What a row needs to be enabled, a bit each. The window gives its bits their meaning: a run, an
// overlay, a row behind the one that is shown.
using Needs = unsigned;

// What a row of a window W runs: one of its event routines, or one that serves several rows and is
// told which by its argument. An empty routine belongs to a command whose form does not exist yet.
template <class W> class Routine {
public:
    constexpr Routine() = default;
    constexpr Routine(std::nullptr_t) {}
    constexpr Routine(void (W::*plain)()) : m_plain(plain) {}
    constexpr Routine(void (W::*indexed)(int), int index) : m_indexed(indexed), m_index(index) {}

    // The routine bound to its window; empty where there is none.
    std::function<void()> on(W& window) const {
        if (m_plain != nullptr) return [&window, plain = m_plain] { (window.*plain)(); };
        if (m_indexed == nullptr) return {};
        return [&window, indexed = m_indexed, index = m_index] { (window.*indexed)(index); };
    }

private:
    void (W::*m_plain)() = nullptr;
    void (W::*m_indexed)(int) = nullptr;
    int m_index = 0;
};

struct MenuOptions {
    Needs needs = 0;
    bool subMenu = false; // the row is a menu of its own
    bool line = false;    // a line is drawn above it
    bool checkable = false;
    bool writes = false; // it changes runs or settings: disabled where the folder is only looked at
    const char* shortcut = "";
    const char* spoken = ""; // its name for assistive tools, where the caption is a sign
};

// The menu of the rows that stand in the bar itself.
inline constexpr const char* menuBarItself = "";

// A row of the menus: the control name of the menu it stands in, which an earlier row has made, its
// caption, its own control name, and what it runs.
template <class W> struct MenuRow {
    const char* menu;
    const char* caption;
    const char* control;
    Routine<W> routine{};
    MenuOptions options{};
};

template <class W> struct KeyOptions {
    Routine<W> routine{}; // for a key that presses no command
    Needs needs = 0;      // of that routine
    bool line = false;    // a line is drawn in front of it
    const char* shortcut = "";
};

// A key of the toolbar: the text it is known by, its caption, the control name of the command that
// it presses ("" for a key with a routine of its own), and its icon.
template <class W> struct ToolRow {
    const char* key;
    const char* caption;
    const char* presses;
    void (*icon)(QPainter&);
    KeyOptions<W> options{};
};

// A row of either table as a list of all commands tells it. A key that presses a command of the
// menus is told only where it has a shortcut of its own.
struct CommandRow {
    const char* menu; // empty for a key of the toolbar
    const char* caption;
    const char* control;
    const char* shortcut;
    bool isMenu = false;
};

// The rows of the menus, and behind them those of the toolbar that the menus do not have.
template <class W>
std::vector<CommandRow> commandRows(
    std::span<const MenuRow<W>> menus, std::span<const ToolRow<W>> keys) {
    std::vector<CommandRow> rows;
    for (const MenuRow<W>& row : menus) {
        const MenuOptions& more = row.options;
        rows.push_back({row.menu, row.caption, row.control, more.shortcut, more.subMenu});
    }
    for (const ToolRow<W>& key : keys) {
        const bool alone = std::string_view(key.presses).empty();
        if (alone || !std::string_view(key.options.shortcut).empty())
            rows.push_back({"", key.caption, key.key, key.options.shortcut});
    }
    return rows;
}

// The engine. A row of the menus is enabled when it has a routine, its needs are met and it is not
// switched off; a sub menu when its own needs are met and a row of it is enabled; a menu of the bar
// always opens, unless its needs or a switch say otherwise. A key follows the command it presses.
// A window never enables a row by hand: the next change of needs would undo it.
class Commands {
public:
    // What a row is once its routine knows its window.
    struct MenuEntry {
        const char* menu;
        const char* caption;
        const char* control;
        std::function<void()> routine;
        MenuOptions options;
    };
    struct ToolEntry {
        const char* key;
        const char* caption;
        const char* presses;
        void (*icon)(QPainter&);
        std::function<void()> routine;
        Needs needs;
        bool line;
        const char* shortcut;
    };

    Commands() = default;
    Commands(const Commands&) = delete;
    Commands& operator=(const Commands&) = delete;

    // Fills the menu bar. The rows and the window outlive the engine.
    template <class W>
    void makeMenus(
        QMenuBar& bar, W& window, std::type_identity_t<std::span<const MenuRow<W>>> rows) {
        std::vector<MenuEntry> entries;
        for (const MenuRow<W>& row : rows) {
            entries.push_back(
                {row.menu, row.caption, row.control, row.routine.on(window), row.options});
        }
        addMenus(bar, std::move(entries));
    }

    // Makes "Toolbar1" with a key a row, after the menus; its place and look are the window's. The
    // routines are the window's own, or those of an object that lives as long.
    template <class W>
    QToolBar* makeToolbar(W& window, std::type_identity_t<std::span<const ToolRow<W>>> rows) {
        return makeToolbar(window, window, rows);
    }
    template <class W>
    QToolBar* makeToolbar(
        QWidget& parent, W& window, std::type_identity_t<std::span<const ToolRow<W>>> rows) {
        std::vector<ToolEntry> entries;
        for (const ToolRow<W>& row : rows) {
            const KeyOptions<W>& more = row.options;
            entries.push_back({row.key, row.caption, row.presses, row.icon, more.routine.on(window),
                more.needs, more.line, more.shortcut});
        }
        return addKeys(parent, std::move(entries));
    }

    // By control name, and a key by its text. A name that no row has is an error of the program.
    QAction& command(std::string_view control) const;
    QMenu& menu(std::string_view control) const;
    QAction& key(std::string_view text) const;
    QToolBar& toolbar() const;

    // Runs what a key runs, as a click on it does. The text is compared as it is; one that no key
    // has, or that of a disabled key, runs no command.
    void press(std::string_view text) const;
    // The needs that are met from now on; all others are not.
    void setMet(Needs met);
    // Whether the rows that write may run at all; they may until it is said.
    void allowWriting(bool on);
    // Switches menus and commands, on top of what their needs say.
    void setMenusEnabled(std::initializer_list<std::string_view> controls, bool on);
    // Checks the item "array(index)" and no other of its control array; none where there is no such
    // index.
    void check(std::string_view array, int index) const;

private:
    struct Item {
        MenuEntry row;
        QMenu* menu = nullptr;     // of a sub menu and of a menu of the bar
        QAction* action = nullptr; // what is enabled: the command, or the menu's entry
        bool switchedOff = false;
    };
    struct Key {
        ToolEntry row;
        QAction* action = nullptr;
    };

    void addMenus(QMenuBar& bar, std::vector<MenuEntry> entries);
    void addItem(QMenuBar& bar, MenuEntry row);
    QToolBar* addKeys(QWidget& window, std::vector<ToolEntry> entries);
    void addKey(ToolEntry row);
    const Item* find(std::string_view control) const;
    const Key* findKey(std::string_view text) const;
    bool isMet(Needs needs) const { return (needs & ~m_met) == 0; }
    bool mayRun(const Item& item) const;
    bool hasEnabledRow(std::string_view menu) const;
    void enableAll();

    std::vector<Item> m_items;
    std::vector<Key> m_keys;
    QPointer<QToolBar> m_toolbar;
    Needs m_met = 0;
    bool m_mayWrite = true;
};

} // namespace kvo::platform_qt
