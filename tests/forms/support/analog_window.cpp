#include "tests/forms/support/analog_window.h"

#include "core/analog_tables.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "core/paths.h"
#include "tests/forms/support/user_click.h"

#include <QTabBar>
#include <QTest>

namespace kvo::testing {

using namespace platform_qt;
using forms::SetupSoftware;

void AnalogWindow::begin() {
    m_program = std::make_unique<TestProgram>();
    config() = core::defaultConfig();
    config().LoggerDataType = 43; // all eight channels
    forms::doors().loadLogo = [] {};
}

QString AnalogWindow::end() {
    unload<SetupSoftware>();
    const QString problems =
        QString::fromStdString(m_program->dialogs.problems()) + modalComplaints();
    m_program.reset();
    return problems;
}

QLineEdit& AnalogWindow::point(int number) {
    return box(qPrintable(QStringLiteral("Text9(%1)").arg(number)));
}

QPushButton& AnalogWindow::channelButton(int channel) {
    return part<QPushButton>(qPrintable(QStringLiteral("AnalogSetup(%1)").arg(channel)));
}

double AnalogWindow::drawn(int count) {
    return curveView().curve()->values[static_cast<std::size_t>(count)];
}

QStringList AnalogWindow::controls() {
    QStringList held;
    for (const char* name : {"Analog", "RangeText1", "AFactor", "Zero"}) held << box(name).text();
    for (const char* name : {"Analog_Type", "Decimals", "Sensor_Combo", "Fuel_Combo"})
        held << QString::number(list(name).currentIndex());
    held << QString::number(part<QCheckBox>("SmoothOption").isChecked() ? 1 : 0);
    for (int number = 1; number <= setup::tablePoints; ++number) held << point(number).text();
    return held;
}

QStringList AnalogWindow::listed(const char* name) {
    QStringList texts;
    for (int i = 0; i < list(name).count(); ++i) texts << list(name).itemText(i);
    return texts;
}

void AnalogWindow::click(const char* button) {
    QCOMPARE(userClick(&part<QPushButton>(button)), QString());
}

void AnalogWindow::showForm() {
    auto& setup = form<SetupSoftware>();
    if (setup.isVisible()) return;
    setup.show();
    QVERIFY(QTest::qWaitForWindowActive(&setup));
    auto& tabs = part<QTabBar>("TabStrip1");
    QCOMPARE(userClick(&tabs, tabs.tabRect(2).center()), QString());
}

void AnalogWindow::open(int channel) {
    showForm();
    QCOMPARE(userClick(&channelButton(channel)), QString());
    QVERIFY(frame().isVisible());
}

void AnalogWindow::type(QLineEdit& edit, const QString& text) {
    QVERIFY(edit.isVisible());
    edit.setFocus();
    QTest::keySequence(&edit, QKeySequence::SelectAll);
    QTest::keyClick(&edit, Qt::Key_Delete);
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, QString(letter), Qt::NoModifier);
}

void AnalogWindow::typePoints(int step) {
    for (int number = 1; number <= setup::tablePoints; ++number)
        type(point(number), QString::number(number * step));
}

void AnalogWindow::pick(const char* name, int index) {
    QComboBox& combo = list(name);
    QVERIFY2(combo.isVisible(), name);
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(&combo, Qt::Key_Down);
    QCOMPARE(combo.currentIndex(), index);
}

void AnalogWindow::pickKind(int kind) {
    pick("Analog_Type", kind);
    QCoreApplication::processEvents(); // the frame finds its size
}

platform::Bytes AnalogWindow::tableFile(int channel) {
    return files().read("/kvo/" + core::analogTableName(channel)).value_or(platform::Bytes{});
}

void AnalogWindow::putTable(int channel, double step) {
    core::AnalogTables tables;
    for (std::size_t count = 0; count < 256; ++count)
        tables[channel][count] = step * static_cast<double>(count);
    QVERIFY(
        core::SaveAnalogTable("/kvo", core::analogTableName(channel), channel, tables, files()));
}

void AnalogWindow::expectRefusal(const std::string& caption) {
    dialogs().expectBox("The text of \"" + caption +
                            "\" is not a number that can be saved.\n\nCorrect it and try again. "
                            "Nothing has been changed.",
        platform::boxStyle::critical, core::programName);
}

} // namespace kvo::testing
