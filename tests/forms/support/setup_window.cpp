#include "tests/forms/support/setup_window.h"

#include "core/config.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "tests/forms/support/user_click.h"

#include <QApplication>
#include <QTabBar>
#include <QTest>

#include <stdexcept>

namespace kvo::testing {

using namespace platform_qt;
using forms::SetupSoftware;

void SetupWindow::begin() {
    m_program = std::make_unique<TestProgram>();
    m_program->state.Config = core::defaultConfig();
    forms::doors().loadLogo = [] {};
}

QString SetupWindow::end() {
    unload<SetupSoftware>();
    const QString problems =
        modalComplaints() + QString::fromStdString(m_program->dialogs.problems());
    m_program.reset();
    return problems;
}

SetupSoftware& SetupWindow::open(Tab tab) {
    auto& setup = form<SetupSoftware>();
    setup.show();
    setup.activateWindow();
    if (!QTest::qWaitForWindowActive(&setup)) qWarning("the setup form did not come up");
    if (tab != general) goTo(tab);
    return setup;
}

void SetupWindow::goTo(Tab tab) {
    auto& tabs = part<QTabBar>("TabStrip1");
    QCOMPARE(userClick(&tabs, tabs.tabRect(tab).center()), QString());
}

void SetupWindow::press(const char* name) {
    auto& widget = part<QWidget>(name);
    // A tick box may be wider than what it says; its box is at its left.
    const auto* button = qobject_cast<QAbstractButton*>(&widget);
    const bool ticks = button != nullptr && button->isCheckable();
    const QPoint place = ticks ? QPoint(8, widget.height() / 2) : QPoint(-1, -1);
    QCOMPARE(userClick(&widget, place), QString());
}

void SetupWindow::type(const char* name, const QString& letters) {
    QCOMPARE(userClick(&box(name)), QString());
    box(name).selectAll();
    if (letters.isEmpty()) QTest::keyClick(&box(name), Qt::Key_Delete);
    for (const QChar letter : letters) {
        QTest::sendKeyEvent(
            QTest::Click, &box(name), Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
}

void SetupWindow::pick(const char* name, int entry) {
    QComboBox& box = list(name);
    QVERIFY(box.isVisible() && box.isEnabled());
    box.setFocus();
    for (int i = 0; i < box.count() && box.currentIndex() < entry; ++i)
        QTest::keyClick(&box, Qt::Key_Down);
    for (int i = 0; i < box.count() && box.currentIndex() > entry; ++i)
        QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.currentIndex(), entry);
    leave();
}

void SetupWindow::leave() {
    if (QWidget* there = QApplication::focusWidget()) QTest::keyClick(there, Qt::Key_Tab);
}

core::AppConfig SetupWindow::saved() {
    const auto file = m_program->files.read("/kvo/Kvo.Cfg");
    core::AppConfig config;
    if (!file || !core::decodeConfig(*file, config)) throw std::runtime_error("no Kvo.Cfg");
    return config;
}

} // namespace kvo::testing
