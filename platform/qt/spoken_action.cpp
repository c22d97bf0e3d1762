#include "platform/qt/spoken_action.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QAction>
#include <QMenu>
#include <QVariant>
#include <QWindow>

namespace kvo::platform_qt {

namespace {

constexpr const char* spokenProperty = "spokenName";

// An entry of a menu as the toolkit has it, but for its name.
class SpokenEntry : public QAccessibleObject, public QAccessibleActionInterface {
public:
    SpokenEntry(QAction& action, QMenu& menu)
        : QAccessibleObject(&action), m_action(action), m_menu(menu) {}

    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(&m_menu);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QWindow* window() const override { return m_menu.windowHandle(); }
    QAccessible::Role role() const override { return QAccessible::MenuItem; }
    QString text(QAccessible::Text type) const override {
        if (type == QAccessible::Name) return m_action.property(spokenProperty).toString();
        if (type == QAccessible::Accelerator)
            return m_action.shortcut().toString(QKeySequence::NativeText);
        return {};
    }
    QRect rect() const override {
        const QRect own = m_menu.actionGeometry(&m_action);
        return {m_menu.mapToGlobal(own.topLeft()), own.size()};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = !m_menu.isVisible() || !m_action.isVisible();
        state.focused = m_menu.activeAction() == &m_action;
        state.focusable = true;
        state.disabled = !m_action.isEnabled();
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override {
        return m_action.isEnabled() ? QStringList{pressAction()} : QStringList();
    }
    void doAction(const QString& name) override {
        if (name == pressAction()) m_action.trigger();
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QAction& m_action;
    QMenu& m_menu;
};

QAccessibleInterface* entryOf(const QString&, QObject* object) {
    auto* action = qobject_cast<QAction*>(object);
    if (action == nullptr || !action->property(spokenProperty).isValid()) return nullptr;
    auto* menu = qobject_cast<QMenu*>(action->parent());
    return menu == nullptr ? nullptr : new SpokenEntry(*action, *menu);
}

} // namespace

void setSpokenName(QAction& action, const QString& name) {
    action.setProperty(spokenProperty, name);
    QAccessible::installFactory(entryOf);
}

} // namespace kvo::platform_qt
