// Text boxes of the option forms: selection, letters, and the checks on leaving.
#include "setup/forms/checked_box.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>

using namespace kvo;
using namespace kvo::testing;
using kvo::setup::BoxCheck;

class CheckedBoxTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;
    std::unique_ptr<QDialog> m_window;
    QLineEdit* m_first = nullptr;
    QLineEdit* m_second = nullptr;
    QPushButton* m_button = nullptr;

    // Refuses all that is longer than three letters.
    static BoxCheck atMostThree(std::string_view text) {
        if (text.size() <= 3) return {std::string(text)};
        return {"no", true, true};
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_window = std::make_unique<QDialog>();
        m_first = new QLineEdit;
        m_second = new QLineEdit;
        m_button = new QPushButton(QStringLiteral("Press"));
        m_button->setFocusPolicy(Qt::TabFocus);
        auto* all = new QVBoxLayout(m_window.get());
        for (QWidget* part : {static_cast<QWidget*>(m_first), static_cast<QWidget*>(m_second),
                 static_cast<QWidget*>(m_button)}) {
            all->addWidget(part);
        }
        for (QLineEdit* box : {m_first, m_second}) {
            forms::selectOnFocus(box);
            platform_qt::onlyFileLetters(box);
            forms::checkOnLeave(box, atMostThree);
        }
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_first->setFocus();
    }
    void cleanup() {
        m_window.reset();
        const std::string problems = m_program->dialogs.problems();
        m_program.reset();
        QVERIFY2(problems.empty(), problems.c_str());
    }

    void aTextThatIsAllowedLetsTheFocusGo() {
        QTest::keyClicks(m_first, QStringLiteral("abc"));
        QTest::keyClick(m_first, Qt::Key_Tab);
        QVERIFY(m_second->hasFocus());
        QCOMPARE(m_first->text(), QStringLiteral("abc"));
        QCOMPARE(m_program->dialogs.beeps(), 0);
    }

    void aRefusedTextIsResetWithABeepAndTheFocusComesBack() {
        QTest::keyClicks(m_first, QStringLiteral("abcd"));
        QTest::keyClick(m_first, Qt::Key_Tab);
        QVERIFY(m_first->hasFocus());
        QCOMPARE(m_first->text(), QStringLiteral("no"));
        QCOMPARE(m_first->selectedText(), QStringLiteral("no"));
        QCOMPARE(m_program->dialogs.beeps(), 1);
        QTest::keyClick(m_first, Qt::Key_Tab);
        QVERIFY(m_second->hasFocus());
    }

    // Each would send the focus to the other for ever.
    void twoBadTextsDoNotFightForTheFocus() {
        m_first->setText(QStringLiteral("abcd"));
        m_second->setText(QStringLiteral("efgh"));
        QCOMPARE(userClick(m_second), QString());
        QVERIFY(m_first->hasFocus());
        QCOMPARE(m_first->text(), QStringLiteral("no"));
        QCOMPARE(m_second->text(), QStringLiteral("efgh"));
        QCOMPARE(m_program->dialogs.beeps(), 1);
    }

    void aWindowThatGoesBehindAnotherIsNotLeft() {
        m_first->setText(QStringLiteral("abcd"));
        QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(m_first, &away);
        QCOMPARE(m_first->text(), QStringLiteral("abcd"));
        QCOMPARE(m_program->dialogs.beeps(), 0);
    }

    void aButtonThatTakesNoFocusAsksFirst() {
        m_first->setText(QStringLiteral("abcd"));
        QCOMPARE(userClick(m_button), QString());
        QCOMPARE(m_first->text(), QStringLiteral("abcd"));
        QVERIFY(!forms::mayLeaveBox(*m_window));
        QCOMPARE(m_first->text(), QStringLiteral("no"));
        QVERIFY(m_first->hasFocus());
        QVERIFY(forms::mayLeaveBox(*m_window));
        m_button->setFocus();
        QVERIFY(forms::mayLeaveBox(*m_window));
        QCOMPARE(m_program->dialogs.beeps(), 1);
    }

    void theWholeTextIsSelectedAsTheFocusComes() {
        m_second->setText(QStringLiteral("xyz"));
        QTest::keyClick(m_first, Qt::Key_Tab);
        QCOMPARE(m_second->selectedText(), QStringLiteral("xyz"));
        m_first->setText(QStringLiteral("abc"));
        QCOMPARE(userClick(m_first), QString());
        QCOMPARE(m_first->selectedText(), QStringLiteral("abc"));
        // A second click puts the caret, as everywhere.
        QCOMPARE(userClick(m_first), QString());
        QCOMPARE(m_first->selectedText(), QString());
    }

    void lettersThatNoFileHoldsAreNotTyped() {
        for (const QChar letter : QString::fromUtf8("aЖé€?"))
            QTest::sendKeyEvent(
                QTest::Click, m_first, Qt::Key_unknown, QString(letter), Qt::NoModifier);
        QCOMPARE(m_first->text(), QString::fromUtf8("aé€?"));
        m_second->setFocus();
        QApplication::clipboard()->setText(QString::fromUtf8("x日本y"));
        m_second->paste();
        QCOMPARE(m_second->text(), QStringLiteral("x??y"));
    }
};

KVO_FORM_TEST_MAIN(CheckedBoxTest)
#include "checked_box_test.moc"
