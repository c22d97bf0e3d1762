#include "guide/forms/help_key.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace kvo::forms {

HelpKey::HelpKey(QObject* parent, Show show) : QObject(parent), m_show(std::move(show)) {
    qApp->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !object->isWidgetType()) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
    std::vector<std::string> names;
    for (auto* place = static_cast<QWidget*>(object); place != nullptr;
         place = place->parentWidget()) {
        names.push_back(place->objectName().toStdString());
    }
    m_show(names);
    return true;
}

} // namespace kvo::forms
