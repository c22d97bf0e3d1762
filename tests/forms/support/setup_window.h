#pragma once
// The setup form as a test works with it: opened modeless on a configuration, its controls by name,
// and what a user does in it.
#include "core/config_record.h"
#include "platform/qt/form_kit.h"
#include "setup/forms/setup_software.h"
#include "tests/forms/support/test_program.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <memory>
#include <string>

namespace kvo::testing {

// A test class inherits it beside QObject, and calls begin() in init() and end() in cleanup().
class SetupWindow {
protected:
    enum Tab { general, graph, dataLogger };

    void begin();
    // Takes the form away. What went wrong in scripted dialogs; empty where all is well.
    QString end();

    TestProgram& program() { return *m_program; }
    ScriptedDialogs& dialogs() { return m_program->dialogs; }
    core::AppConfig& config() { return m_program->state.Config; }

    // The form on the configuration of the state, in front and with the keys.
    forms::SetupSoftware& open(Tab tab = general);
    bool isOpen() const { return platform_qt::isLoaded<forms::SetupSoftware>(); }
    void goTo(Tab tab);

    template <class W> W& part(const char* name) {
        return platform_qt::control<W>(platform_qt::form<forms::SetupSoftware>(), name);
    }
    QLineEdit& box(const char* name) { return part<QLineEdit>(name); }
    QComboBox& list(const char* name) { return part<QComboBox>(name); }
    QCheckBox& tick(const char* name) { return part<QCheckBox>(name); }
    // Without the mark of its key.
    QString text(const char* label) { return part<QLabel>(label).text().remove('&'); }
    bool isShown(const char* name) { return !part<QWidget>(name).isHidden(); }

    // As a user: clicks where a person could click, types over what is in a box. Each fails the
    // test where a user could not.
    void press(const char* name);
    void type(const char* name, const QString& letters);
    // Picks an entry by the keys alone, past those on the way, and leaves the list.
    void pick(const char* name, int entry);
    // Tab: the focus goes on.
    void leave();

    // The file as it is on the disk; the test ends where it does not load.
    core::AppConfig saved();

private:
    std::unique_ptr<TestProgram> m_program;
};

} // namespace kvo::testing
