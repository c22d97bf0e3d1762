// Info: a run's notes, times and setup through its boxes, the setup's defaults, and the
// question on the way out.
#include "library/forms/info.h"

#include "core/config.h"
#include "core/forms/doors.h"
#include "core/run_times.h"
#include "core/run_title.h"
#include "library/forms/notes_edit.h"
#include "platform/qt/text.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QAction>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QMimeData>
#include <QPalette>
#include <QPushButton>

#include <functional>
#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::Info;
using kvo::forms::NotesEdit;

namespace {

constexpr const char* closingQuestion =
    " You have Changed the Info\r\n Do you wont to save your changes";

const QStringList infoBoxes{"Text_AirTemp", "Text_Barometric", "Text_Humidity", "Text_60FootTime",
    "Text_330FootTime", "Text_660FootTime", "Text_660FootSpeed", "Text_1000FootTime", "Text_ET",
    "Text_Mph"};

QString setupPairName(const char* array, int i) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(i);
}

} // namespace

class InfoTest : public QObject {
    Q_OBJECT

    enum class Way { button, escape, close };
    std::unique_ptr<TestProgram> m_program;
    std::string m_run;

    MemoryFiles& files() { return m_program->files; }
    static QLineEdit& box(const QString& name) {
        return control<QLineEdit>(form<Info>(), qPrintable(name));
    }
    static NotesEdit& notes() { return control<NotesEdit>(form<Info>(), "Info_Text"); }
    static bool isShown(const char* name) {
        return control<QWidget>(form<Info>(), name).isVisible();
    }
    static QString text(const char* label) { return control<QLabel>(form<Info>(), label).text(); }
    static void press(const char* name) {
        QCOMPARE(userClick(&control<QPushButton>(form<Info>(), name)), QString());
    }
    static void type(const QString& name, const QString& letters) {
        QCOMPARE(userClick(&box(name)), QString());
        box(name).selectAll();
        QTest::keyClick(&box(name), Qt::Key_Delete);
        QTest::keyClicks(&box(name), letters);
    }
    static void leave(Way way = Way::button) {
        if (way == Way::button) press("Exit_Info");
        if (way == Way::escape) QTest::keyClick(&form<Info>(), Qt::Key_Escape);
        if (way == Way::close) form<Info>().close();
    }
    // The form on the run, or on the defaults; the script leaves it.
    void opened(const std::function<void()>& script, bool defaults = false) {
        bool ran = false;
        onModal([&](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("Info"));
            script();
            ran = true;
        });
        if (defaults)
            form<Info>().editSetupDefaults();
        else
            form<Info>().editRun(m_run, "Info For: a run");
        QVERIFY(ran);
        QVERIFY(!isLoaded<Info>());
    }
    core::RunInfo stored() { return core::LoadRunInfo(core::infoFilePath(m_run), {}, files()); }
    core::VehicleSetup storedDefaults() { return core::LoadVehicleSetup("/kvo", files()); }
    core::RunTimesTable table() { return core::LoadTimesTable("/kvo", files()); }
    static core::VehicleSetup someSetup(const std::string& word) {
        core::VehicleSetup setup;
        for (int i = 1; i <= core::VehicleSetup::size; ++i)
            setup[i] = {word + std::to_string(i), std::to_string(100 + i)};
        return setup;
    }
    void expectQuestion(platform::Reply reply) {
        m_program->dialogs.expectBox(closingQuestion, 4, "Kvo", reply);
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_program->state.ConfigKnown = true;
        storeModelRun(m_program->state, files(), 25);
        m_run = m_program->state.Run.path;
    }
    void cleanup() {
        const QString problems =
            modalComplaints() + QString::fromStdString(m_program->dialogs.problems());
        unloadAllForms();
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void everyTextGoesToItsControlAndBack() {
        core::RunInfo info;
        info.Info_Text = "Wind from behind\r\n\r\nNew \xA0tyres \x80";
        info.Text_AirTemp = "21";
        info.Text_Barometric = "1013";
        info.Text_Humidity = "40 %";
        info.Text_60FootTime = "1.05";
        info.Text_330FootTime = "3.1";
        info.Text_660FootTime = "4.9";
        info.Text_660FootSpeed = "150";
        info.Text_1000FootTime = "6.4";
        info.Text_ET = "7.7";
        info.Text_Mph = "180";
        info.setup = someSetup("Line ");
        QVERIFY(core::SaveRunInfo("/kvo", core::infoFilePath(m_run), m_run, info, files()).done);
        const auto before = files().read(core::infoFilePath(m_run));
        opened([&] {
            QCOMPARE(form<Info>().windowTitle(), QStringLiteral("Info For: a run"));
            QCOMPARE(notes().fileText(), info.Info_Text);
            const QStringList shownTexts{
                "21", "1013", "40 %", "1.05", "3.1", "4.9", "150", "6.4", "7.7", "180"};
            for (qsizetype i = 0; i < infoBoxes.size(); ++i)
                QCOMPARE(box(infoBoxes[i]).text(), shownTexts[i]);
            for (int i = 1; i <= 25; ++i) {
                QCOMPARE(
                    box(setupPairName("InfoText", i)).text(), QStringLiteral("Line %1").arg(i));
                QCOMPARE(box(setupPairName("Text", i)).text(), QString::number(100 + i));
            }
            press("Save_Info");
            QCOMPARE(text("Label_Status"), QStringLiteral("Saved."));
            leave();
        });
        QVERIFY(files().read(core::infoFilePath(m_run)) == before);
    }

    void whatIsTypedIsStoredAndEntersTheTable() {
        opened([&] {
            QCOMPARE(userClick(&notes()), QString());
            QTest::keyClicks(&notes(), "First");
            QTest::keyClick(&notes(), Qt::Key_Return);
            QTest::keyClicks(&notes(), "second");
            for (qsizetype i = 0; i < infoBoxes.size(); ++i)
                type(infoBoxes[i], QStringLiteral("%1.25").arg(i + 1));
            press("Command1");
            type("InfoText(25)", "Fuel");
            type("Text(25)", "C16");
            press("Save_Info");
            leave(); // nothing is asked behind a save
        });
        const core::RunInfo info = stored();
        QCOMPARE(info.Info_Text, std::string("First\r\nsecond"));
        QCOMPARE(info.Text_AirTemp, std::string("1.25"));
        QCOMPARE(info.Text_Humidity, std::string("3.25"));
        QCOMPARE(info.Text_660FootSpeed, std::string("7.25"));
        QCOMPARE(info.Text_Mph, std::string("10.25"));
        QCOMPARE(info.setup[25].Name, std::string("Fuel"));
        QCOMPARE(info.setup[25].Value, std::string("C16"));
        const core::RunTimesTable times = table();
        QCOMPARE(times.RunTimesCount, 2);
        QCOMPARE(int(times.entries[1].Time60), 425);
        QCOMPARE(int(times.entries[1].Time1000), 825);
        QCOMPARE(int(times.entries[1].TimeET), 925);
    }

    void aTimeWithACommaCountsUpToIt() {
        opened([&] {
            type("Text_ET", "8,95");
            press("Save_Info");
            leave();
        });
        QCOMPARE(stored().Text_ET, std::string("8,95"));
        QCOMPARE(int(table().entries[1].TimeET), 800);
    }

    void notesWithoutAnElapsedTimeLeaveTheTable() {
        opened([&] {
            type("Text_60FootTime", "1.1");
            press("Save_Info");
            leave();
        });
        QCOMPARE(stored().Text_60FootTime, std::string("1.1"));
        QCOMPARE(table().RunTimesCount, 1);
    }

    void aNewRunStartsFromTheDefaultsAndKeepsThem() {
        QVERIFY(core::SaveVehicleSetup("/kvo", someSetup("Old "), files()).done);
        opened([&] {
            QCOMPARE(box("InfoText(1)").text(), QStringLiteral("Old 1"));
            QCOMPARE(box("Text(25)").text(), QStringLiteral("125"));
            press("Save_Info");
            leave();
        });
        QVERIFY(core::SaveVehicleSetup("/kvo", someSetup("New "), files()).done);
        opened([&] {
            QCOMPARE(box("InfoText(1)").text(), QStringLiteral("Old 1"));
            leave();
        });
    }

    void noKeyNoQuestion() {
        for (const Way way : {Way::button, Way::escape, Way::close}) {
            opened([way] { leave(way); });
            opened([way] { leave(way); }, true);
        }
        QVERIFY(m_program->dialogs.titles().empty());
    }

    void everyWayOutAsksForWhatWasChanged() {
        for (const Way way : {Way::button, Way::escape, Way::close}) {
            expectQuestion(platform::Reply::no);
            opened([way] {
                type("Text_ET", "9.9");
                leave(way);
            });
            QCOMPARE(stored().Text_ET, std::string());
        }
        for (const Way way : {Way::button, Way::escape, Way::close}) {
            const QString time = QStringLiteral("8.%1").arg(static_cast<int>(way));
            expectQuestion(platform::Reply::yes);
            opened([way, &time] {
                type("Text_ET", time);
                leave(way);
            });
            QCOMPARE(stored().Text_ET, time.toStdString());
        }
    }

    void everyBoxCountsAsAChange() {
        QStringList names = infoBoxes;
        for (int i = 1; i <= 25; ++i)
            names << setupPairName("InfoText", i) << setupPairName("Text", i);
        for (const QString& name : names) {
            expectQuestion(platform::Reply::no);
            opened([&name] {
                box(name).insert(QStringLiteral("x"));
                leave();
            });
        }
        expectQuestion(platform::Reply::no);
        opened([] {
            QTest::keyClicks(&notes(), "x");
            leave();
        });
    }

    // A change behind a save is a change again.
    void theQuestionIsOfTheLastSave() {
        expectQuestion(platform::Reply::no);
        opened([] {
            type("Text_ET", "7.1");
            press("Save_Info");
            QCOMPARE(text("Label_Status"), QStringLiteral("Saved."));
            type("Text_ET", "7.2");
            QCOMPARE(text("Label_Status"), QString());
            leave();
        });
        QCOMPARE(stored().Text_ET, std::string("7.1"));
    }

    void aFullDiskLosesNothing() {
        files().failWrites("/kvo", MemoryFiles::Failure::fullDisk);
        opened([&] {
            const auto told = [&] {
                m_program->dialogs.expectBoxTitled("Kvo").contains =
                    "The info could NOT be saved to Disk.";
            };
            type("Text_ET", "7.1");
            told();
            press("Save_Info");
            QCOMPARE(text("Label_Status"), QString());
            for (const Way way : {Way::button, Way::close}) {
                expectQuestion(platform::Reply::yes);
                told();
                leave(way);
                QVERIFY(form<Info>().isVisible());
                QCOMPARE(box("Text_ET").text(), QStringLiteral("7.1"));
            }
            files().allowWrites();
            expectQuestion(platform::Reply::yes);
            leave();
        });
        QCOMPARE(m_program->dialogs.beeps(), 3);
        QCOMPARE(stored().Text_ET, std::string("7.1"));
    }

    void theListComesAndGoes() {
        opened([] {
            const auto caption = [] {
                return control<QPushButton>(form<Info>(), "Command1").text();
            };
            QVERIFY(!isShown("Frame1"));
            QVERIFY(!isShown("But_SaveInfoNames"));
            QCOMPARE(caption(), QStringLiteral("View   &Vehicle Setup"));
            press("Command1");
            QVERIFY(isShown("Frame1"));
            QVERIFY(isShown("Text_ET"));
            QCOMPARE(caption(), QStringLiteral("Hide   &Vehicle Setup"));
            press("Command1");
            QVERIFY(!isShown("Frame1"));
            QCOMPARE(caption(), QStringLiteral("View   &Vehicle Setup"));
            leave();
        });
    }

    void theDefaultsAreTheListAlone() {
        QVERIFY(core::SaveVehicleSetup("/kvo", someSetup("Line "), files()).done);
        opened(
            [] {
                QCOMPARE(form<Info>().windowTitle(), QStringLiteral("Edit Vehicle Setup Defaults"));
                QVERIFY(isShown("Frame1"));
                QVERIFY(isShown("But_SaveInfoNames"));
                for (const char* name :
                    {"Info_Text", "Text_ET", "Text_AirTemp", "Command1", "PrintGraph", "Save_Info"})
                    QVERIFY2(!isShown(name), name);
                QCOMPARE(box("InfoText(25)").text(), QStringLiteral("Line 25"));
                type("InfoText(1)", "abcdefghijklmnopqrstu");
                QCOMPARE(box("InfoText(1)").text(), QStringLiteral("abcdefghijklmnopq"));
                type("Text(1)", "v1");
                press("But_SaveInfoNames");
                leave();
            },
            true);
        QCOMPARE(storedDefaults()[1].Name, std::string("abcdefghijklmnopq"));
        QCOMPARE(storedDefaults()[1].Value, std::string("v1"));
        QCOMPARE(storedDefaults()[25].Name, std::string("Line 25"));
        QVERIFY(files().exists("/kvo/Kvo.Cfg"));
    }

    void theDefaultsAreAskedForToo() {
        expectQuestion(platform::Reply::yes);
        opened(
            [] {
                type("Text(2)", "two");
                leave();
            },
            true);
        QCOMPARE(storedDefaults()[2].Value, std::string("two"));
        QVERIFY(!files().exists(core::infoFilePath(m_run)));
    }

    void aConfigurationThatWasNotReadIsNotWrittenOver() {
        m_program->state.ConfigKnown = false;
        opened(
            [] {
                press("But_SaveInfoNames");
                leave();
            },
            true);
        QVERIFY(!files().exists("/kvo/Kvo.Cfg"));
        QVERIFY(files().exists("/kvo/VSetup.Dat"));
    }

    // --- The notes

    void theNotesTakeWhatTheRecordHolds() {
        expectQuestion(platform::Reply::yes);
        opened([&] {
            QApplication::clipboard()->setText(
                QString(396, QLatin1Char('a')) + QStringLiteral("\nbc"));
            notes().paste();
            QCOMPARE(notes().fileText(), std::string(396, 'a') + "\r\n");
            QCOMPARE(text("Label_Room"), QStringLiteral("398 of 398"));
            QCOMPARE(m_program->dialogs.beeps(), 1);
            QTest::keyClicks(&notes(), "x");
            QTest::keyClick(&notes(), Qt::Key_Return);
            QCOMPARE(notes().fileText().size(), std::size_t{398});
            QCOMPARE(m_program->dialogs.beeps(), 3);
            QTest::keyClick(&notes(), Qt::Key_Backspace);
            QTest::keyClicks(&notes(), "y"); // no room for half of a line end
            QTest::keyClick(&notes(), Qt::Key_Return);
            QCOMPARE(notes().fileText(), std::string(396, 'a') + "y");
            notes().selectAll();
            QTest::keyClicks(&notes(), "new");
            QCOMPARE(notes().fileText(), std::string("new"));
            leave();
        });
        QCOMPARE(stored().Info_Text, std::string("new"));
    }

    void theNotesTakeTheLettersOfAFile() {
        expectQuestion(platform::Reply::no);
        opened([] {
            QKeyEvent foreign(
                QEvent::KeyPress, 0, Qt::NoModifier, QString(QStringLiteral("\u0416")));
            QApplication::sendEvent(&notes(), &foreign);
            QCOMPARE(notes().fileText(), std::string());
            QApplication::clipboard()->setText(
                QStringLiteral("\u20ac\u00fc\u0416\U0001F600\u2028end"));
            notes().paste();
            QCOMPARE(notes().fileText(), std::string("\x80\xFC??\r\nend"));
            QTest::keyClick(&notes(), Qt::Key_Z, Qt::ControlModifier); // undone, not written
            QCOMPARE(notes().fileText(), std::string());
            QInputMethodEvent composed;
            composed.setCommitString(QStringLiteral("\u00e9"));
            QApplication::sendEvent(&notes(), &composed);
            QCOMPARE(notes().fileText(), std::string("\xE9"));
            leave();
        });
    }

    void aBoxTakesTheLettersOfAFile() {
        expectQuestion(platform::Reply::no);
        opened([] {
            box("Text_AirTemp").insert(QStringLiteral("20 \u00b0C"));
            QCOMPARE(box("Text_AirTemp").text(), QStringLiteral("20 \u00b0C"));
            box("Text_AirTemp").insert(QStringLiteral("\u0416"));
            QCOMPARE(box("Text_AirTemp").text(), QStringLiteral("20 \u00b0C"));
            leave();
        });
    }

    // --- Keys, print, convertor

    void tabLeadsThroughTheForm() {
        opened([] {
            notes().setFocus();
            for (const QString& name : infoBoxes) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                QCOMPARE(QApplication::focusWidget()->objectName(), name);
            }
            press("Command1");
            box("InfoText(1)").setFocus();
            for (int i = 1; i <= 25; ++i) {
                QCOMPARE(QApplication::focusWidget()->objectName(), setupPairName("InfoText", i));
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                QCOMPARE(QApplication::focusWidget()->objectName(), setupPairName("Text", i));
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            leave();
        });
    }

    void everyLetterLeadsToOneControl() {
        opened([] {
            QStringList letters{QStringLiteral("T")}; // of the menu
            const auto add = [&letters](const QString& caption) {
                const qsizetype mark = caption.indexOf(QLatin1Char('&'));
                if (mark >= 0) letters << caption.mid(mark + 1, 1).toUpper();
            };
            for (const auto* label : form<Info>().findChildren<QLabel*>()) add(label->text());
            for (const auto* button : form<Info>().findChildren<QPushButton*>())
                if (button->isVisible()) add(button->text());
            QVERIFY(letters.size() > 14);
            QCOMPARE(letters.removeDuplicates(), 0);
            leave();
        });
    }

    void printsAPictureOfItself() {
        opened([this] {
            press("PrintGraph");
            m_program->printer.answer = platform::Printed::failed;
            m_program->dialogs.expectBox("The Info could not be printed. ", 0, "Kvo");
            press("PrintGraph");
            m_program->printer.answer = platform::Printed::cancelled; // is no failure
            press("PrintGraph");
            leave();
        });
        QCOMPARE(m_program->printer.documents.size(), std::size_t(1));
        const PrintedDocument& document = *m_program->printer.documents[0];
        QCOMPARE(document.request.documentName, std::string("Info For: a run"));
        QCOMPARE(document.pages[0].images.size(), std::size_t(1));
        const std::string title = core::titleOfFile(m_run, files());
        QVERIFY(title.find("Run: ") != std::string::npos);
        QCOMPARE(document.pages[0].texts.at(0).text, title);
        QCOMPARE(document.state, JobState::ended);
    }

    void theMenuOpensTheConvertor() {
        int opens = 0;
        forms::doors().openConversions = [&opens] { ++opens; };
        opened([] {
            auto& command = control<QAction>(form<Info>(), "Convertor_Mnu");
            QCOMPARE(command.text(), QStringLiteral("Unit &Convertor"));
            command.trigger();
            leave();
        });
        opened(
            [] {
                control<QAction>(form<Info>(), "Convertor_Mnu").trigger();
                leave();
            },
            true);
        QCOMPARE(opens, 2);
    }

    void isWholeOnASmallScreen() {
        opened([] {
            press("Command1");
            QApplication::processEvents();
            QVERIFY(form<Info>().minimumSizeHint().width() <= 950);
            QVERIFY(form<Info>().minimumSizeHint().height() <= 510);
            leave();
        });
    }

    // With KVO_PICTURES naming a folder: what the form looks like.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        QVERIFY(core::SaveVehicleSetup("/kvo", someSetup("Main jet size "), files()).done);
        const QPalette light = QApplication::palette();
        const QPalette dark(QColor(0x35, 0x37, 0x3b), QColor(0x2b, 0x2d, 0x30));
        for (const bool isDark : {false, true}) {
            QApplication::setPalette(isDark ? dark : light);
            const auto save = [&](const char* name) {
                QApplication::processEvents();
                QVERIFY(saveScreenshot(form<Info>(),
                    QStringLiteral("%1/%2-%3.png")
                        .arg(folder, name, isDark ? QString("dark") : QString("light"))));
            };
            opened([&] {
                notes().setFileText("Head wind.\r\nNew tyres, 8 psi.");
                for (const QString& name : infoBoxes) type(name, "1013.25");
                press("Save_Info");
                save("info");
                press("Command1");
                save("info-setup");
                form<Info>().resize(1600, 900);
                save("info-large");
                leave();
            });
            opened(
                [&] {
                    save("info-defaults");
                    leave();
                },
                true);
        }
        QApplication::setPalette(light);
    }
};

KVO_FORM_TEST_MAIN(InfoTest)
#include "info_test.moc"
