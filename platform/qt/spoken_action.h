#pragma once
// A command of a menu whose caption is a sign, as "<<<<": assistive tools read a name in its place.
#include <QString>

class QAction;

namespace kvo::platform_qt {

// From now on the entry of a QMenu that is the action's parent is read aloud by this name.
void setSpokenName(QAction& action, const QString& name);

} // namespace kvo::platform_qt
