// SetupOBC over a line that needs no time: what it shows of a logger, what it takes, and what goes
// over the wire.
#include "link/forms/setup_obc.h"

#include "link/forms/logger_line.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/obc_rig.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <memory>
#include <optional>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::SetupOBC;
using kvo::platform::Reply;
using kvo::simulator::Fault;

namespace {

QLabel& label(const char* name) {
    return control<QLabel>(form<SetupOBC>(), name);
}
QLineEdit& box(const char* name) {
    return control<QLineEdit>(form<SetupOBC>(), name);
}
QComboBox& pickups(int list) {
    return control<QComboBox>(
        form<SetupOBC>(), qPrintable(QStringLiteral("ComboPPR(%1)").arg(list)));
}
QPushButton& button(const char* name) {
    return control<QPushButton>(form<SetupOBC>(), name);
}
void typeInto(QLineEdit& edit, const QString& text) {
    QCOMPARE(userClick(&edit), QString());
    QTRY_VERIFY(edit.hasFocus());
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    edit.insert(text); // as a paste, for what keys cannot type
}
void clickSave() {
    QCOMPARE(userClick(&button("SaveSetup")), QString());
}

} // namespace

class SetupObcTest : public QObject {
    Q_OBJECT

    struct Line {
        Line(TestProgram& program, platform::Bytes stream, Fault fault)
            : logger(std::move(stream)), faulty(logger, fault), line(faulty),
              link(line, line, program.dialogs) {
            forms::useLoggerLink(&link);
        }
        ~Line() { forms::useLoggerLink(nullptr); }
        std::string header() const {
            return {logger.stream().begin() + 1, logger.stream().begin() + 33};
        }
        simulator::ModelLogger logger;
        simulator::FaultyEnd faulty;
        VirtualLine line;
        link::LoggerLink link;
    };
    std::unique_ptr<TestProgram> m_program;
    std::optional<Line> m_line;

    ScriptedDialogs& dialogs() { return m_program->dialogs; }
    void expectQuestion(Reply reply = Reply::yes) {
        dialogs().expectBox(
            obcQuestion, platform::boxStyle::yesNo + platform::boxStyle::warning, "Kvo", reply);
    }
    void expectClosing() { dialogs().expectBox(obcClosing, platform::boxStyle::critical, "Kvo"); }
    void connectLogger(int type, Fault fault = {}) {
        m_line.emplace(*m_program, headerStream(type), fault);
    }
    // Opens the form as the main window does and runs the script inside.
    void inTheForm(std::function<void()> script) {
        onModal([script = std::move(script)](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("SetupOBC"));
            script();
            if (isLoaded<SetupOBC>()) form<SetupOBC>().close();
        });
        form<SetupOBC>().configure([] { return true; });
        QVERIFY(!isLoaded<SetupOBC>());
    }
    std::string sentBehindTheHeader() const { return m_line->line.everythingSent().substr(34); }

private slots:
    void init() { m_program = std::make_unique<TestProgram>(); }
    void cleanup() {
        const QString problems = modalComplaints() + QString::fromStdString(dialogs().problems());
        unloadAllForms();
        m_line.reset();
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void itShowsWhatTheLoggerSays_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("shiftLights");
        for (const int type : {8, 12, 17, 20, 25, 32, 43})
            QTest::addRow("type %d", type) << type << (type != 20 && type <= 25);
    }
    void itShowsWhatTheLoggerSays() {
        QFETCH(int, type);
        QFETCH(bool, shiftLights);
        connectLogger(type);
        inTheForm([type, shiftLights] {
            QCOMPARE(form<SetupOBC>().windowTitle(), QStringLiteral("Configure On Board Computer"));
            QCOMPARE(label("Label_DataType").text(), QString::number(type));
            QCOMPARE(label("Label_Model").text(), QString::number(type == 20 ? 22 : type));
            QCOMPARE(label("Label_Ver").text(), QStringLiteral("1.4"));
            QCOMPARE(label("Label_MemType").text(),
                type >= 32 ? QStringLiteral("60k") : QStringLiteral("32k"));
            QCOMPARE(label("Label_S_No").text(), QString::number(1200 + type));
            QCOMPARE(box("Label_RoRpm").text(), QStringLiteral("3000"));
            QVERIFY(box("Label_GR1").text().toInt() > 0);
            for (int list = 0; list < 4; ++list) QCOMPARE(pickups(list).currentIndex(), 0);
            QCOMPARE(
                control<QGroupBox>(form<SetupOBC>(), "ShiftLightFrame").isVisible(), shiftLights);
            QCOMPARE(
                box("Label_MT3").text(), shiftLights ? QStringLiteral("4") : QStringLiteral("0"));
            QCOMPARE(box("Label_MR4").text() == QStringLiteral("0"), !shiftLights);
            QVERIFY(!label("Label_Status").isVisible());
            QCOMPARE(box("Label_RoRpm").selectedText(), QStringLiteral("3000"));
        });
        QVERIFY(m_line->line.portOpen()); // Required: Cancel leaves it open
    }

    void theListsOfPickups() {
        connectLogger(25);
        inTheForm([] {
            const auto entries = [](int list) {
                QStringList all;
                for (int i = 0; i < pickups(list).count(); ++i) all << pickups(list).itemText(i);
                return all;
            };
            QCOMPARE(entries(0), QStringList({"1", "2", "3", "4"}));
            QCOMPARE(entries(1), QStringList({"1", "2", "3", "4"}));
            QCOMPARE(entries(2), QStringList({"2", "4", "6", "8"}));
            QCOMPARE(entries(3).size(), 18);
            QCOMPARE(entries(3).last(), QStringLiteral("18"));
        });
    }

    void whatIsTypedIsWrittenAndThereAtTheNextStart() {
        connectLogger(25);
        expectQuestion();
        expectClosing();
        inTheForm([] {
            typeInto(box("Label_RoRpm"), QStringLiteral("2500"));
            typeInto(box("Label_GR2"), QStringLiteral("98"));
            typeInto(box("Label_MT2"), QStringLiteral("1.15"));
            pickups(2).setFocus();
            QTest::keyClick(&pickups(2), Qt::Key_Down);
            QTest::keyClick(&pickups(2), Qt::Key_Down);
            clickSave();
            QVERIFY(!isLoaded<SetupOBC>());
        });
        QCOMPARE(sentBehindTheHeader().substr(0, 9), std::string("S01234567"));
        QCOMPARE(sentBehindTheHeader().size(), std::size_t{41});
        QVERIFY(!m_line->line.portOpen());
        QVERIFY(m_program->files.exists("/kvo/Backup/Logger 1225 2026-11-15.txt"));
        m_line->logger.powerUp();
        inTheForm([] {
            QCOMPARE(box("Label_RoRpm").text(), QStringLiteral("2500"));
            QCOMPARE(box("Label_GR2").text(), QStringLiteral("98"));
            QCOMPARE(box("Label_MT2").text(), QStringLiteral("1.14")); // cut
            QCOMPARE(pickups(2).currentText(), QStringLiteral("6"));
        });
    }

    void theEdgesOfTheRangesAreWritten() {
        connectLogger(25);
        expectQuestion();
        expectClosing();
        inTheForm([] {
            typeInto(box("Label_RoRpm"), QStringLiteral("458"));
            typeInto(box("Label_GR1"), QStringLiteral("255"));
            typeInto(box("Label_PreStartRPM"), QStringLiteral("0"));
            typeInto(box("Label_MR1"), QStringLiteral("65000"));
            typeInto(box("Label_MT2"), QStringLiteral("654.99"));
            clickSave();
            QVERIFY(!isLoaded<SetupOBC>());
        });
        const auto byte = [this](std::size_t at) {
            return static_cast<int>(static_cast<std::uint8_t>(sentBehindTheHeader().at(9 + at)));
        };
        const auto word = [&byte](std::size_t at) { return byte(at) * 256 + byte(at + 1); };
        QCOMPARE(word(10), 32751);
        QCOMPARE(byte(12), 255);
        QCOMPARE(word(14), 0);
        QCOMPARE(word(16), 230);
        QCOMPARE(word(18), 0);
        QCOMPARE(word(22), 65499);
        m_line->logger.powerUp();
        inTheForm([] {
            QCOMPARE(box("Label_RoRpm").text(), QStringLiteral("458"));
            QCOMPARE(box("Label_GR1").text(), QStringLiteral("255"));
            QCOMPARE(box("Label_PreStartRPM").text(), QStringLiteral("0"));
            // 230 is more rpm than 16 bits hold: what was read before it stays.
            QCOMPARE(box("Label_MR1").text(), QStringLiteral("0"));
            QCOMPARE(box("Label_MT2").text(), QStringLiteral("654.99"));
        });
    }

    void theHiddenFrameIsWrittenAsZeros() {
        connectLogger(32);
        expectQuestion();
        expectClosing();
        inTheForm([] { clickSave(); });
        QCOMPARE(sentBehindTheHeader().substr(9 + 14), std::string(18, '\0'));
    }

    void noLeavesTheFormAsItIs() {
        connectLogger(25);
        expectQuestion(Reply::no);
        inTheForm([] {
            typeInto(box("Label_RoRpm"), QStringLiteral("2500"));
            clickSave();
            QVERIFY(isLoaded<SetupOBC>());
            QCOMPARE(box("Label_RoRpm").text(), QStringLiteral("2500"));
        });
        QCOMPARE(sentBehindTheHeader(), std::string());
    }

    void twoFieldsOutOfRangeHaveTwoBoxes() {
        connectLogger(25);
        expectQuestion();
        dialogs().expectBox(
            obcRangeBox("Motorcycle Crankshaft Reduction Gear teeth. Range 1 to 255"),
            platform::boxStyle::warning, "Kvo");
        dialogs().expectBox(
            obcRangeBox("Shift Light threshhold changes sec"), platform::boxStyle::warning, "Kvo");
        inTheForm([] {
            typeInto(box("Label_GR1"), QStringLiteral("300"));
            typeInto(box("Label_MT3"), QStringLiteral("655"));
            clickSave();
            QVERIFY(isLoaded<SetupOBC>());
            QCOMPARE(box("Label_GR1").text(), QStringLiteral("1"));
            QCOMPARE(box("Label_MT3").text(), QStringLiteral("4"));
            QCOMPARE(box("Label_MT3").selectedText(), QStringLiteral("4"));
            QVERIFY(form<SetupOBC>().focusWidget() == &box("Label_MT3"));
        });
        QCOMPARE(sentBehindTheHeader(), std::string());
    }

    void whatCannotBeSentIsNamedAndStays_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "Label_RoRpm"
                               << "";
        QTest::newRow("words") << "Label_MR2"
                               << "fast";
        QTest::newRow("number and word") << "Label_MT4"
                                         << "2 s";
        QTest::newRow("below 458") << "Label_MR1"
                                   << "457";
        QTest::newRow("letters of no code page") << "Label_PreStartRPM" << QString(QChar(0x30ac));
        QTest::newRow("an exponent") << "Label_RoRpm"
                                     << "1e3";
        QTest::newRow("a comma") << "Label_MT2"
                                 << "1,5";
        QTest::newRow("255 and a half") << "Label_GR2"
                                        << "255.5";
    }
    void whatCannotBeSentIsNamedAndStays() {
        QFETCH(QString, name);
        QFETCH(QString, text);
        connectLogger(25);
        expectQuestion();
        dialogs().expectBoxTitled("Kvo").contains = "Nothing has been sent";
        inTheForm([&name, &text] {
            QLineEdit& edit = box(qPrintable(name));
            typeInto(edit, text);
            clickSave();
            QVERIFY(isLoaded<SetupOBC>());
            QCOMPARE(edit.text(), text);
            QVERIFY(form<SetupOBC>().focusWidget() == &edit);
        });
        QCOMPARE(sentBehindTheHeader(), std::string());
    }

    void hostileTextsAreOutOfRangeAndNothingWorse() {
        connectLogger(25);
        const QStringList texts{QString(40000, QLatin1Char('9')),
            QLatin1Char('-') + QString(400, QLatin1Char('1')),
            QStringLiteral("99999999999999999999")};
        inTheForm([this, &texts] {
            for (const QString& text : texts) {
                expectQuestion();
                dialogs().expectBoxTitled("Kvo").contains = "out of range";
                box("Label_RoRpm").setText(text);
                clickSave();
                QCOMPARE(box("Label_RoRpm").text(), QStringLiteral("3000"));
            }
        });
        QCOMPARE(sentBehindTheHeader(), std::string());
    }

    void everyBoxChoosesItsTextOnFocus() {
        connectLogger(25);
        inTheForm([] {
            for (const auto& facts : link::obcBoxes()) {
                QLineEdit& edit = box(facts.control);
                button("SaveSetup").setFocus();
                QCOMPARE(userClick(&edit), QString());
                QTRY_COMPARE(edit.selectedText(), edit.text());
            }
        });
    }

    void tabGoesFromTopToBottom() {
        connectLogger(25);
        inTheForm([] {
            QStringList order;
            box("Label_RoRpm").setFocus();
            for (int i = 0; i < 17; ++i) {
                order << QApplication::focusWidget()->objectName();
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            QCOMPARE(order, QStringList({"Label_RoRpm", "Label_GR1", "Label_GR2", "ComboPPR(0)",
                                "ComboPPR(1)", "ComboPPR(2)", "ComboPPR(3)", "Label_PreStartRPM",
                                "Label_MR1", "Label_MR2", "Label_MT2", "Label_MR3", "Label_MT3",
                                "Label_MR4", "Label_MT4", "SaveSetup", "CancelSetup"}));
        });
    }

    void everyLetterChoosesOneControl() {
        connectLogger(25);
        inTheForm([] {
            QStringList letters;
            const auto take = [&letters](const QString& caption) {
                const qsizetype mark = caption.indexOf(QLatin1Char('&'));
                if (mark >= 0) letters << caption.mid(mark + 1, 1).toUpper();
            };
            for (const QLabel* one : form<SetupOBC>().findChildren<QLabel*>())
                if (one->buddy() != nullptr) take(one->text());
            for (const QPushButton* one : form<SetupOBC>().findChildren<QPushButton*>())
                take(one->text());
            QVERIFY(letters.size() >= 13);
            QCOMPARE(letters.removeDuplicates(), 0);
        });
    }

    void returnInABoxIsNoSave() {
        connectLogger(25);
        inTheForm([] {
            box("Label_RoRpm").setFocus();
            QTest::keyClick(&box("Label_RoRpm"), Qt::Key_Return);
            QVERIFY(isLoaded<SetupOBC>());
        });
    }

    void everyWayOutIsCancel_data() {
        QTest::addColumn<int>("how");
        QTest::newRow("Cancel") << 0;
        QTest::newRow("Escape") << 1;
        QTest::newRow("the window's button") << 2;
    }
    void everyWayOutIsCancel() {
        QFETCH(int, how);
        connectLogger(25);
        inTheForm([how] {
            typeInto(box("Label_RoRpm"), QStringLiteral("2500"));
            if (how == 0) QCOMPARE(userClick(&button("CancelSetup")), QString());
            if (how == 1) QTest::keyClick(&form<SetupOBC>(), Qt::Key_Escape);
            if (how == 2) form<SetupOBC>().close();
            QVERIFY(!isLoaded<SetupOBC>());
        });
        QCOMPARE(sentBehindTheHeader(), std::string());
        QVERIFY(m_line->line.portOpen());
        // The next one finds the logger's own values again.
        inTheForm([] { QCOMPARE(box("Label_RoRpm").text(), QStringLiteral("3000")); });
    }

    // A silent logger makes the write last ten seconds.
    void aWriteCannotBeLeft() {
        connectLogger(25, {Fault::Kind::stopAfter, 34});
        expectQuestion();
        expectClosing();
        bool tried = false;
        inTheForm([this, &tried] {
            m_line->line.at(m_line->line.turnsGone() + 60000, [this, &tried] {
                const Waiting waiting;
                tried = true;
                QCOMPARE(userClick(&button("SaveSetup")), QStringLiteral("disabled"));
                QCOMPARE(userClick(&button("CancelSetup")), QStringLiteral("disabled"));
                QTest::keyClick(&form<SetupOBC>(), Qt::Key_Escape);
                form<SetupOBC>().close();
                QVERIFY(form<SetupOBC>().isVisible());
                QVERIFY(dialogs().hourglass());
            });
            clickSave();
        });
        QVERIFY(tried);
        QVERIFY(!dialogs().hourglass());
        QCOMPARE(m_line->line.closings(), 1);
    }

    void aCableThatWasPulledOutMeanwhileIsTold() {
        connectLogger(25);
        expectQuestion();
        dialogs().expectBoxTitled("Kvo").contains = "was lost";
        inTheForm([this] {
            typeInto(box("Label_RoRpm"), QStringLiteral("2500"));
            m_line->line.vanish();
            clickSave();
            QVERIFY(isLoaded<SetupOBC>());
            QCOMPARE(box("Label_RoRpm").text(), QStringLiteral("2500"));
        });
        QCOMPARE(sentBehindTheHeader(), std::string());
    }

    void aHeaderThatBreaksOffIsSaid() {
        connectLogger(25, {Fault::Kind::stopAfter, 12});
        inTheForm([] {
            QVERIFY(label("Label_Status").isVisible());
            QVERIFY(label("Label_Status").text().contains(QLatin1String("Cancel, and try again")));
        });
    }

    void withoutALoggerThereIsNoForm_data() {
        QTest::addColumn<int>("kind");
        QTest::newRow("silent") << static_cast<int>(Fault::Kind::silent);
        QTest::newRow("wrong greeting") << static_cast<int>(Fault::Kind::wrongGreeting);
        QTest::newRow("garbage") << static_cast<int>(Fault::Kind::flood);
    }
    void withoutALoggerThereIsNoForm() {
        QFETCH(int, kind);
        connectLogger(25, {static_cast<Fault::Kind>(kind), 0});
        dialogs().expectBox(link::noReplyText(), platform::boxStyle::critical, "Configure Error !");
        form<SetupOBC>().configure([] { return true; });
        QVERIFY(!isLoaded<SetupOBC>());
        QVERIFY(!m_line->line.portOpen());
    }

    void whatIsNotWantedAnyMoreDoesNotComeUp() {
        connectLogger(25);
        form<SetupOBC>().configure([] { return false; });
        QVERIFY(!isLoaded<SetupOBC>());
        QVERIFY(!m_line->line.portOpen());
    }

    // With KVO_PICTURES naming a folder: what the form looks like, on a light and a dark desktop.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        const QPalette light = QApplication::palette();
        const QPalette dark(QColor(0x35, 0x37, 0x3b), QColor(0x2b, 0x2d, 0x30));
        for (const int type : {25, 43, 12}) {
            connectLogger(type, {type == 12 ? Fault::Kind::stopAfter : Fault::Kind::none, 12});
            QApplication::setPalette(type == 25 ? dark : light);
            inTheForm([type, folder] {
                QVERIFY(saveScreenshot(
                    form<SetupOBC>(), QStringLiteral("%1/obc-%2.png").arg(folder).arg(type)));
            });
        }
        QApplication::setPalette(light);
    }
};

KVO_FORM_TEST_MAIN(SetupObcTest)
#include "setup_obc_test.moc"
