#include "platform/qt/commands.h"

#include "platform/qt/icons.h"
#include "platform/qt/spoken_action.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <cassert>
#include <string>
#include <utility>

namespace kvo::platform_qt {

namespace {

bool isInBar(const Commands::MenuEntry& row) {
    return std::string_view(row.menu).empty();
}

bool pressesCommand(const Commands::ToolEntry& row) {
    return !std::string_view(row.presses).empty();
}

} // namespace

// --- Making

void Commands::addMenus(QMenuBar& bar, std::vector<MenuEntry> entries) {
    m_items.reserve(entries.size());
    for (MenuEntry& row : entries) addItem(bar, std::move(row));
    enableAll();
}

void Commands::addItem(QMenuBar& bar, MenuEntry row) {
    assert(find(row.control) == nullptr);
    QWidget* place = &bar;
    if (!isInBar(row)) place = &menu(row.menu);
    if (row.options.line) {
        auto* line = new QAction(place);
        line->setSeparator(true);
        place->addAction(line);
    }
    const auto caption = QLatin1String(row.caption);
    const auto name = QLatin1String(row.control);
    Item item{std::move(row)};
    if (item.row.options.subMenu) {
        assert(!item.row.routine);
        item.menu = new QMenu(caption, place);
        item.menu->setObjectName(name);
        item.action = item.menu->menuAction();
    } else {
        item.action = new QAction(caption, place);
        item.action->setObjectName(name);
        item.action->setCheckable(item.row.options.checkable);
        if (*item.row.options.spoken != '\0')
            setSpokenName(*item.action, QLatin1String(item.row.options.spoken));
        item.action->setShortcut(QKeySequence(QLatin1String(item.row.options.shortcut)));
        if (item.row.routine)
            QObject::connect(item.action, &QAction::triggered, place, item.row.routine);
    }
    place->addAction(item.action);
    m_items.push_back(std::move(item));
}

QToolBar* Commands::addKeys(QWidget& window, std::vector<ToolEntry> entries) {
    assert(m_toolbar.isNull());
    m_toolbar = new QToolBar(QStringLiteral("Commands"), &window);
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setMovable(false);
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_keys.reserve(entries.size());
    for (ToolEntry& row : entries) addKey(std::move(row));
    enableAll();
    return m_toolbar;
}

void Commands::addKey(ToolEntry row) {
    assert(findKey(row.key) == nullptr && !(pressesCommand(row) && row.routine));
    if (row.line) m_toolbar->addSeparator();
    QAction* action = m_toolbar->addAction(drawnIcon(row.icon), QLatin1String(row.caption));
    action->setObjectName(QLatin1String("Key_") + QLatin1String(row.key));
    action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
    QObject::connect(
        action, &QAction::triggered, m_toolbar, [this, text = row.key] { press(text); });
    if (pressesCommand(row)) {
        const QAction& pressed = command(row.presses);
        action->setEnabled(pressed.isEnabled());
        QObject::connect(&pressed, &QAction::enabledChanged, action, &QAction::setEnabled);
    }
    auto* button = qobject_cast<QToolButton*>(m_toolbar->widgetForAction(action));
    button->setObjectName(QLatin1String(row.key));
    button->setFocusPolicy(Qt::TabFocus); // reachable without a mouse
    m_keys.push_back({std::move(row), action});
}

// --- Looking up

const Commands::Item* Commands::find(std::string_view control) const {
    const auto found = std::ranges::find_if(
        m_items, [control](const Item& item) { return item.row.control == control; });
    return found == m_items.end() ? nullptr : &*found;
}

const Commands::Key* Commands::findKey(std::string_view text) const {
    const auto found =
        std::ranges::find_if(m_keys, [text](const Key& key) { return key.row.key == text; });
    return found == m_keys.end() ? nullptr : &*found;
}

QAction& Commands::command(std::string_view control) const {
    const Item* item = find(control);
    assert(item != nullptr && item->menu == nullptr);
    return *item->action;
}

QMenu& Commands::menu(std::string_view control) const {
    const Item* item = find(control);
    assert(item != nullptr && item->menu != nullptr);
    return *item->menu;
}

QAction& Commands::key(std::string_view text) const {
    const Key* key = findKey(text);
    assert(key != nullptr);
    return *key->action;
}

QToolBar& Commands::toolbar() const {
    assert(!m_toolbar.isNull());
    return *m_toolbar;
}

// --- Running and enabling

void Commands::press(std::string_view text) const {
    const Key* key = findKey(text);
    if (key == nullptr || !key->action->isEnabled()) return;
    if (pressesCommand(key->row))
        command(key->row.presses).trigger();
    else
        key->row.routine();
}

void Commands::setMet(Needs met) {
    m_met = met;
    enableAll();
}

void Commands::allowWriting(bool on) {
    m_mayWrite = on;
    enableAll();
}

void Commands::setMenusEnabled(std::initializer_list<std::string_view> controls, bool on) {
    for (const std::string_view control : controls) {
        assert(find(control) != nullptr);
        for (Item& item : m_items)
            if (item.row.control == control) item.switchedOff = !on;
    }
    enableAll();
}

void Commands::check(std::string_view array, int index) const {
    const std::string prefix = std::string(array) + '(';
    const std::string chosen = prefix + std::to_string(index) + ')';
    bool known = false;
    for (const Item& item : m_items) {
        const std::string_view control = item.row.control;
        if (!control.starts_with(prefix)) continue;
        assert(item.row.options.checkable);
        item.action->setChecked(control == chosen);
        known = true;
    }
    assert(known);
    (void)known;
}

bool Commands::hasEnabledRow(std::string_view menu) const {
    return std::ranges::any_of(m_items,
        [menu](const Item& item) { return item.row.menu == menu && item.action->isEnabled(); });
}

bool Commands::mayRun(const Item& item) const {
    if (item.switchedOff || !isMet(item.row.options.needs)) return false;
    if (item.row.options.writes && !m_mayWrite) return false;
    if (item.menu == nullptr) return static_cast<bool>(item.row.routine);
    // A menu whose commands are all disabled is not worth opening; the bar stays as it is.
    return isInBar(item.row) || hasEnabledRow(item.row.control);
}

// From the last row to the first, since the rows of a menu follow it. A key that presses a command
// hears of it by itself.
void Commands::enableAll() {
    for (auto item = m_items.rbegin(); item != m_items.rend(); ++item)
        item->action->setEnabled(mayRun(*item));
    for (const Key& key : m_keys) {
        if (!pressesCommand(key.row))
            key.action->setEnabled(key.row.routine && isMet(key.row.needs));
    }
}

} // namespace kvo::platform_qt
