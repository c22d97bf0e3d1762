#include "platform/qt/qt_settings.h"

#include "platform/qt/text.h"

#include <QStringList>

namespace kvo::platform_qt {

QtSettings::QtSettings()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Kvo"),
          QStringLiteral("Kvo")) {}

// Another program of the same user may have written them meanwhile.
std::vector<std::string> QtSettings::list(const std::string& name) const {
    m_settings.sync();
    std::vector<std::string> values;
    const QStringList kept = m_settings.value(QString::fromStdString(name)).toStringList();
    for (const QString& value : kept) values.push_back(typedPath(value));
    return values;
}

void QtSettings::setList(const std::string& name, const std::vector<std::string>& values) {
    QStringList kept;
    for (const std::string& value : values) kept << shownPath(value);
    m_settings.setValue(QString::fromStdString(name), kept);
    m_settings.sync();
}

} // namespace kvo::platform_qt
