#pragma once
// The editor of an analog input as a test works with it: a program with tables on its disk, the
// setup form on its tab of the channels, the editor's controls by name, and what the user types.
#include "core/config_record.h"
#include "platform/bytes.h"
#include "platform/qt/form_kit.h"
#include "setup/analog_setup.h"
#include "setup/forms/analog_curve_view.h"
#include "setup/forms/setup_software.h"
#include "tests/forms/support/test_program.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringList>

#include <memory>
#include <string>

namespace kvo::testing {

// A test class inherits it beside QObject, and calls begin() in init() and end() in cleanup().
class AnalogWindow {
protected:
    void begin();
    // Takes the form away. What went wrong in scripted dialogs; empty where all is well.
    QString end();

    TestProgram& program() { return *m_program; }
    core::AppConfig& config() { return m_program->state.Config; }
    MemoryFiles& files() { return m_program->files; }
    ScriptedDialogs& dialogs() { return m_program->dialogs; }

    template <class W> static W& part(const char* name) {
        return platform_qt::control<W>(platform_qt::form<forms::SetupSoftware>(), name);
    }
    static QLineEdit& box(const char* name) { return part<QLineEdit>(name); }
    static QComboBox& list(const char* name) { return part<QComboBox>(name); }
    static QLineEdit& point(int number);
    static QPushButton& channelButton(int channel);
    static QFrame& frame() { return part<QFrame>("Analog_Setup"); }
    static forms::AnalogCurveView& curveView() { return part<forms::AnalogCurveView>("Curve"); }
    // What the curve reads at a count.
    static double drawn(int count);
    // What every control of the frame holds, on view or not; the ten points are the last.
    static QStringList controls();
    static QStringList listed(const char* name);

    // What a user does; each fails the test where a user could not.
    static void click(const char* button);
    static void showForm();
    static void open(int channel);
    // What is typed takes the place of what the box holds.
    static void type(QLineEdit& edit, const QString& text);
    static void typePoints(int step);
    static void pick(const char* name, int index);
    static void pickKind(int kind);

    // Files of tables; a table that is put reads `step` times each count.
    platform::Bytes tableFile(int channel);
    void putTable(int channel, double step);

    // The box that says that a number does not fit.
    void expectRefusal(const std::string& caption);

private:
    std::unique_ptr<TestProgram> m_program;
};

} // namespace kvo::testing
