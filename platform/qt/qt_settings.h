#pragma once
// The user's settings where the desktop keeps those of its programs.
#include "platform/settings.h"

#include <QSettings>

namespace kvo::platform_qt {

class QtSettings : public platform::Settings {
public:
    QtSettings();
    // In a file of its own.
    explicit QtSettings(const QString& path) : m_settings(path, QSettings::IniFormat) {}
    std::vector<std::string> list(const std::string& name) const override;
    void setList(const std::string& name, const std::vector<std::string>& values) override;

private:
    mutable QSettings m_settings;
};

} // namespace kvo::platform_qt
