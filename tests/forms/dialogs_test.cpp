// The real message and input boxes: what they say, which buttons they have, what keys do.
#include "platform/qt/qt_dialogs.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/user_click.h"

#include <QColorDialog>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::platform::Colour;
using kvo::platform::Reply;
namespace style = kvo::platform::boxStyle;

namespace {

QStringList buttonTexts(const QMessageBox& box) {
    QStringList texts;
    for (const QMessageBox::StandardButton which : {QMessageBox::Ok, QMessageBox::Cancel,
             QMessageBox::Yes, QMessageBox::No, QMessageBox::Retry}) {
        if (box.button(which) != nullptr)
            texts << box.button(which)->text().remove(QLatin1Char('&'));
    }
    return texts;
}

} // namespace

class DialogsTest : public QObject {
    Q_OBJECT

    QtDialogs m_dialogs;

private slots:
    void cleanup() { QCOMPARE(modalComplaints(), QString()); }

    void theStyleChoosesButtonsIconAndDefault_data() {
        QTest::addColumn<int>("styleNumber");
        QTest::addColumn<QStringList>("buttons");
        QTest::addColumn<int>("icon");
        QTest::addColumn<QString>("preset");
        QTest::addColumn<int>("escapeReply");
        const auto ok = static_cast<int>(Reply::ok);
        const auto cancel = static_cast<int>(Reply::cancel);
        const auto no = static_cast<int>(Reply::no);
        QTest::newRow("plain") << 0 << QStringList{"OK"} << int(QMessageBox::NoIcon) << "OK" << ok;
        QTest::newRow("critical") << 16 << QStringList{"OK"} << int(QMessageBox::Critical) << "OK"
                                  << ok;
        QTest::newRow("warning, ok cancel")
            << 49 << QStringList{"OK", "Cancel"} << int(QMessageBox::Warning) << "OK" << cancel;
        QTest::newRow("question") << 36 << QStringList{"Yes", "No"} << int(QMessageBox::Question)
                                  << "Yes" << no;
        QTest::newRow("question with a way out") << 35 << QStringList{"Cancel", "Yes", "No"}
                                                 << int(QMessageBox::Question) << "Yes" << cancel;
        QTest::newRow("information, second default") << 64 + 4 + 256 << QStringList{"Yes", "No"}
                                                     << int(QMessageBox::Information) << "No" << no;
        QTest::newRow("retry") << 21 << QStringList{"Cancel", "Retry"} << int(QMessageBox::Critical)
                               << "Retry" << cancel;
    }
    void theStyleChoosesButtonsIconAndDefault() {
        QFETCH(int, styleNumber);
        QFETCH(int, escapeReply);
        onModal([](QWidget* modal) {
            QFETCH(QStringList, buttons);
            QFETCH(int, icon);
            QFETCH(QString, preset);
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box != nullptr);
            QCOMPARE(buttonTexts(*box), buttons);
            QCOMPARE(static_cast<int>(box->icon()), icon);
            const auto* kind = box->findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"));
            const bool spoken = kind != nullptr && !kind->accessibleName().isEmpty();
            QCOMPARE(spoken, icon != QMessageBox::NoIcon);
            QCOMPARE(box->defaultButton()->text().remove(QLatin1Char('&')), preset);
            QTest::keyClick(box, Qt::Key_Escape);
        });
        QCOMPARE(static_cast<int>(m_dialogs.messageBox("t", styleNumber, "T")), escapeReply);
    }

    void everyAnswerComesBack() {
        answerBox("Q", "Yes");
        QCOMPARE(m_dialogs.messageBox("", style::yesNo, "Q"), Reply::yes);
        answerBox("Q", "No");
        QCOMPARE(m_dialogs.messageBox("", style::yesNo, "Q"), Reply::no);
        answerBox("Q", "Retry");
        QCOMPARE(m_dialogs.messageBox("", style::retryCancel, "Q"), Reply::retry);
        answerBox("Q", "Cancel");
        QCOMPARE(m_dialogs.messageBox("", style::okCancel, "Q"), Reply::cancel);
        answerBox("Q", "No");
        QCOMPARE(m_dialogs.messageBox("", style::yesNoCancel, "Q"), Reply::no);
        answerBox("Q", "OK");
        QCOMPARE(m_dialogs.messageBox("", style::ok, "Q"), Reply::ok);
    }

    void enterTakesTheDefault() {
        onModal([](QWidget* box) { QTest::keyClick(box, Qt::Key_Return); });
        QCOMPARE(m_dialogs.messageBox("", style::yesNo | style::secondDefault, "Q"), Reply::no);
    }

    void textsAreShownAsTheyStand() {
        answerBox(QStringLiteral("Caf\u00e9 & <b>"), "OK", [](const QMessageBox& box) {
            QCOMPARE(box.text(), QStringLiteral("one\ntwo\n\n    <b>three</b> \u20ac"));
            QCOMPARE(box.textFormat(), Qt::PlainText);
        });
        m_dialogs.messageBox("one\rtwo\r\n\n    <b>three</b> \xe2\x82\xac", 0, "Caf\xc3\xa9 & <b>");
    }

    void aLongLineIsNotTornApart() {
        const std::string line = "    (3)..Download cable not plugged into the IBM Comm Port plug.";
        onModal([&line](QWidget* box) {
            auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
            QVERIFY(label != nullptr);
            const int lineWidth =
                label->fontMetrics().horizontalAdvance(QString::fromStdString(line));
            QVERIFY(label->width() >= lineWidth);
            QVERIFY(label->height() < label->fontMetrics().lineSpacing() * 4);
            QTest::keyClick(box, Qt::Key_Return);
        });
        m_dialogs.messageBox("first\r\n" + line, style::critical, "Download Error !");
    }

    void aTextWiderThanTheScreenWraps() {
        onModal([](QWidget* box) {
            QVERIFY(box->width() < 1600);
            QTest::keyClick(box, Qt::Key_Return);
        });
        m_dialogs.messageBox(
            std::string(400, 'w') + " " + std::string(150, 'm') + " end of words", 0, "T");
    }

    void aBoxWithoutTitleCarriesTheProgramsName() {
        answerBox("Kvo", "OK");
        m_dialogs.messageBox("text", 0, "");
    }

    void inputGoesOnBehindThePreset() {
        onModal([](QWidget* box) {
            auto* edit = box->findChild<QLineEdit*>(QStringLiteral("InputText"));
            QCOMPARE(edit->text(), QStringLiteral("1 "));
            QVERIFY(edit->hasFocus());
            QVERIFY(!edit->hasSelectedText());
            QCOMPARE(edit->cursorPosition(), 2);
            QTest::keyClicks(edit, QStringLiteral("Caf"));
            edit->insert(QStringLiteral("\u00e9")); // no key of a test keyboard makes it
            QTest::keyClick(edit, Qt::Key_Return);
        });
        QCOMPARE(
            m_dialogs.inputBox("Enter Run Number?", "Run Title", "1 "), std::string("1 Caf\xe9"));
    }

    void aCaretThatWasMovedStaysWhenTheFocusComesBack() {
        onModal([](QWidget* box) {
            auto* edit = box->findChild<QLineEdit*>(QStringLiteral("InputText"));
            QTest::keyClick(edit, Qt::Key_Home);
            for (int i = 0; i < 3; ++i) QTest::keyClick(box->focusWidget(), Qt::Key_Tab);
            QVERIFY(edit->hasFocus());
            QVERIFY(!edit->hasSelectedText());
            QTest::keyClicks(edit, QStringLiteral("2"));
            QTest::keyClick(edit, Qt::Key_Return);
        });
        QCOMPARE(m_dialogs.inputBox("p", "Run Title", "1 "), std::string("21 "));
    }

    void cancelledInputIsEmpty() {
        answerInput("Run Title", "5", false);
        QCOMPARE(m_dialogs.inputBox("p", "Run Title", "1 "), std::string());
        onModal([](QWidget* box) { QTest::keyClick(box, Qt::Key_Escape); });
        QCOMPARE(m_dialogs.inputBox("p", "Run Title", "1 "), std::string());
    }

    void coloursHaveRedInTheLowestByte() {
        onModal([](QWidget* modal) {
            auto* dialog = qobject_cast<QColorDialog*>(modal);
            QVERIFY(dialog != nullptr);
            QCOMPARE(dialog->currentColor(), QColor(1, 2, 3));
            dialog->setCurrentColor(QColor(255, 128, 0));
            dialog->accept();
        });
        QCOMPARE(m_dialogs.chooseColour(Colour{0x030201}), std::optional<Colour>(0x0080FF));
        onModal([](QWidget* modal) { qobject_cast<QDialog*>(modal)->reject(); });
        QCOMPARE(m_dialogs.chooseColour(std::nullopt), std::optional<Colour>());
    }

    void aFolderIsChosenOrNot() {
        const QTemporaryDir folder;
        onModal([](QWidget* modal) { QMetaObject::invokeMethod(modal, "accept"); });
        QCOMPARE(m_dialogs.chooseFolder("Save To", folder.path().toStdString()),
            std::optional<std::string>(folder.path().toStdString()));
        onModal([](QWidget* modal) { qobject_cast<QDialog*>(modal)->reject(); });
        QCOMPARE(m_dialogs.chooseFolder("Save To", "/"), std::optional<std::string>());
    }

    // The suggestion stands there, and one that is there already is not asked about twice.
    void aFileIsChosenOrNot() {
        const QTemporaryDir folder;
        const std::string path = folder.filePath(QStringLiteral("run.csv")).toStdString();
        QFile there(folder.filePath(QStringLiteral("run.csv")));
        QVERIFY(there.open(QIODevice::WriteOnly));
        const platform::FileQuestion question{"Export", "Table (*.csv)", path};
        onModal([](QWidget* modal) {
            QCOMPARE(modal->windowTitle(), QStringLiteral("Export"));
            auto* edit = modal->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            QCOMPARE(edit->text(), QStringLiteral("run.csv"));
            QMetaObject::invokeMethod(modal, "accept");
        });
        QCOMPARE(m_dialogs.chooseFile(question), std::optional<std::string>(path));
        onModal([](QWidget* modal) { qobject_cast<QDialog*>(modal)->reject(); });
        QCOMPARE(m_dialogs.chooseFile(question), std::optional<std::string>());
    }

    void theHourglassIsOneForAllWhoAsk() {
        m_dialogs.setHourglass(true);
        m_dialogs.setHourglass(true);
        QVERIFY(QApplication::overrideCursor() != nullptr);
        m_dialogs.setHourglass(false);
        QVERIFY(QApplication::overrideCursor() == nullptr);
        m_dialogs.setHourglass(false);
    }

    // A box over a form that is unloaded meanwhile must not be left pointing at it.
    void aParentThatGoesTakesNothingDown() {
        auto* parent = new QWidget;
        parent->show();
        parent->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(parent));
        onModal([parent](QWidget*) { delete parent; });
        QCOMPARE(m_dialogs.messageBox("t", style::yesNo, "T"), Reply::no);
    }
};

KVO_FORM_TEST_MAIN(DialogsTest)
#include "dialogs_test.moc"
