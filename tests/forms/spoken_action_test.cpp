// Menu entries whose caption is a sign, as assistive tools find them.
#include "platform/qt/spoken_action.h"

#include "tests/forms/support/form_test_main.h"

#include <QAccessible>
#include <QAction>
#include <QMenu>

using namespace kvo::platform_qt;

class SpokenActionTest : public QObject {
    Q_OBJECT

    static QAccessibleInterface* entry(QMenu& menu, int index) {
        return QAccessible::queryAccessibleInterface(&menu)->child(index);
    }

private slots:
    void anEntryIsReadByItsName() {
        QMenu menu;
        auto* back = new QAction(QStringLiteral("<<<<"), &menu);
        auto* plain = new QAction(QStringLiteral("&Info"), &menu);
        menu.addAction(back);
        menu.addAction(plain);
        setSpokenName(*back, QStringLiteral("Previous"));
        back->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_B));
        QAccessibleInterface* spoken = entry(menu, 0);
        QCOMPARE(spoken->text(QAccessible::Name), QStringLiteral("Previous"));
        QVERIFY(!spoken->text(QAccessible::Accelerator).isEmpty());
        QCOMPARE(spoken->role(), QAccessible::MenuItem);
        QCOMPARE(entry(menu, 1)->text(QAccessible::Name), QStringLiteral("Info"));
        QCOMPARE(back->text(), QStringLiteral("<<<<"));
        QCOMPARE(spoken->parent(), QAccessible::queryAccessibleInterface(&menu));
        QCOMPARE(QAccessible::queryAccessibleInterface(&menu)->indexOfChild(spoken), 0);
        QCOMPARE(spoken->childCount(), 0);
    }

    void itCanBePressedWhereItIsEnabled() {
        QMenu menu;
        auto* back = new QAction(QStringLiteral("<<<<"), &menu);
        menu.addAction(back);
        setSpokenName(*back, QStringLiteral("Previous"));
        int pressed = 0;
        connect(back, &QAction::triggered, &menu, [&] { ++pressed; });
        QAccessibleInterface* spoken = entry(menu, 0);
        QAccessibleActionInterface* actions = spoken->actionInterface();
        QVERIFY(actions != nullptr);
        QCOMPARE(actions->actionNames(), QStringList{QAccessibleActionInterface::pressAction()});
        actions->doAction(QAccessibleActionInterface::pressAction());
        actions->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(pressed, 1);
        QVERIFY(!spoken->state().disabled);
        back->setEnabled(false);
        QVERIFY(spoken->state().disabled);
        QVERIFY(actions->actionNames().isEmpty());
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(pressed, 1);
    }

    void itIsWhereTheMenuShowsIt() {
        QMenu menu;
        auto* back = new QAction(QStringLiteral("<<<<"), &menu);
        menu.addAction(back);
        setSpokenName(*back, QStringLiteral("Previous"));
        QAccessibleInterface* spoken = entry(menu, 0);
        QVERIFY(spoken->state().invisible);
        menu.popup(QPoint(40, 50));
        QVERIFY(!spoken->state().invisible);
        QVERIFY(QRect(menu.mapToGlobal(QPoint()), menu.size()).contains(spoken->rect()));
        menu.setActiveAction(back);
        QVERIFY(spoken->state().focused);
        menu.close();
    }
};

KVO_FORM_TEST_MAIN(SpokenActionTest)
#include "spoken_action_test.moc"
