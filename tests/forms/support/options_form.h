#pragma once
// Visible_Options as a test works with it: opened from the menu of the graph, its controls by name
// and number, and what a user does to them.
#include "setup/forms/visible_options.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/user_click.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QList>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include <functional>

namespace kvo::testing {

// The graph window with the form over it.
class OptionsWindow : public GraphWindow {
protected:
    static constexpr QRgb engineColour = 0xFFFF4040; // of the model runs

    static QByteArray nameOf(const char* array, int index) {
        return QByteArray(array) + '(' + QByteArray::number(index) + ')';
    }

    template <class W> static W& item(const char* array, int index) {
        return platform_qt::control<W>(
            platform_qt::form<forms::Visible_Options>(), nameOf(array, index).constData());
    }

    static QCheckBox& box(int index) { return item<QCheckBox>("Check1", index); }
    static QLineEdit& magnify(int channel) { return item<QLineEdit>("Text_Magnify", channel); }
    static QComboBox& raise(int channel) { return item<QComboBox>("ComboScale", channel); }
    static QPushButton& button(const char* name) {
        return platform_qt::control<QPushButton>(platform_qt::form<forms::Visible_Options>(), name);
    }
    static QPushButton& apply() { return button("Command1(1)"); }

    static void click(QWidget& widget) { QCOMPARE(userClick(&widget), QString()); }
    // A click on the box itself, which its caption may not reach.
    static void tick(int index) {
        QCOMPARE(userClick(&box(index), {8, box(index).height() / 2}), QString());
    }
    static void goTo(int tab) {
        auto& tabs =
            platform_qt::control<QTabBar>(platform_qt::form<forms::Visible_Options>(), "TabStrip1");
        QCOMPARE(userClick(&tabs, tabs.tabRect(tab).center()), QString());
    }
    static void type(QLineEdit& into, const QString& text) {
        into.setFocus();
        into.selectAll();
        if (text.isEmpty()) QTest::keyClick(&into, Qt::Key_Delete);
        QTest::keyClicks(&into, text);
    }
    static void pick(QComboBox& list, int index) {
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Home);
        for (int i = 0; i < index; ++i) QTest::keyClick(&list, Qt::Key_Down);
    }

    // The indexes of an array's controls that a user sees now.
    template <class W> static QList<int> seen(const char* array, int first, int last) {
        QList<int> indexes;
        for (int i = first; i <= last; ++i)
            if (item<W>(array, i).isVisible()) indexes << i;
        return indexes;
    }

    static QList<int> from(int first, int last) {
        QList<int> indexes;
        for (int i = first; i <= last; ++i) indexes << i;
        return indexes;
    }

    // Opens the form from the menu; what `script` leaves open is left by Cancel.
    void options(std::function<void()> script) {
        onModal([script](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("Visible_Options"));
            script();
            if (platform_qt::isLoaded<forms::Visible_Options>()) click(button("Command2"));
        });
        command("Mnu_Options").trigger();
        QVERIFY(!platform_qt::isLoaded<forms::Visible_Options>());
    }
};

} // namespace kvo::testing
