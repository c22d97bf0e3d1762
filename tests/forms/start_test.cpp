// The start of the program, from the configuration to the main window.
#include "core/config.h"
#include "core/default_config.h"
#include "core/run_index.h"
#include "core/run_records.h"
#include "mainwin/main_window.h"
#include "mainwin/splash.h"
#include "mainwin/start.h"
#include "platform/qt/application.h"
#include "platform/qt/text.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolBar>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::frmSplash;
using kvo::forms::VrnWin32;

class StartTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<TestProgram> m_program;

    // The configuration as the file has it; what stands in memory must come from there.
    void putConfig(const std::string& password) {
        core::AppConfig& config = m_program->state.Config;
        config.Password = password;
        config.Check_Password = password.empty() ? 0 : 1;
        config.Driver = "Somebody";
        m_program->files.put(currentFolder() + "/Kvo.Cfg", core::encodeConfig(config));
        config = core::AppConfig();
    }
    // The setup form comes up next; the user presses that button of it.
    static void inTheSetup(const char* button, const char* driver = "") {
        onModal([button, driver](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("SetupSoftware"));
            QVERIFY(!isLoaded<frmSplash>());
            QTest::keyClicks(&control<QLineEdit>(*modal, "Driver"), QLatin1String(driver));
            QCOMPARE(userClick(&control<QPushButton>(*modal, button)), QString());
        });
    }
    // The timer of the splash form does not take its three seconds.
    static void shortenSplash() {
        onModal([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("frmSplash"));
            QVERIFY(!isLoaded<VrnWin32>());
            control<QTimer>(*modal, "Timer1").start(1);
        });
    }

private slots:
    void init() {
        QVERIFY(QDir::setCurrent(m_folder.path()));
        m_program = std::make_unique<TestProgram>();
    }
    void cleanup() {
        const QString problems =
            modalComplaints() + QString::fromStdString(m_program->dialogs.problems());
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void theWorkingFolderIsTheProgramsFolder() {
        putConfig("");
        shortenSplash();
        QVERIFY(forms::startProgram());
        QCOMPARE(QDir(QString::fromStdString(m_program->state.AppFolder)).canonicalPath(),
            QDir(m_folder.path()).canonicalPath());
        QVERIFY(!m_program->state.AppFolder.ends_with('/'));
        QVERIFY(m_program->state.Config.Driver.starts_with("Somebody"));
        QVERIFY(m_program->state.ConfigKnown);
        QVERIFY(!isLoaded<frmSplash>());
        QVERIFY(form<VrnWin32>().isVisible());
        QCOMPARE(m_program->files.writes(), 0); // a start never writes
        QCOMPARE(m_program->settings.lists["folders"],
            std::vector<std::string>{
                typedPath(QDir::toNativeSeparators(QDir(m_folder.path()).canonicalPath()))});
    }

    void leftoversOfAKilledWriteAreClearedAway() {
        putConfig("");
        const std::string old = currentFolder() + "/.Kvo.Cfg.12-0.new";
        m_program->files.put(old, {1});
        m_program->files.setCreatedOn(old, {2026, 11, 1, 12, 0, 0});
        shortenSplash();
        QVERIFY(forms::startProgram());
        QVERIFY(!m_program->files.exists(old));
    }

    // A run whose row was lost with the power.
    void aRunThatIsNotInTheListIsOfferedOverTheMainWindow() {
        putConfig("");
        core::ByteWriter run;
        core::encodeHeaderLine(run, "25 VRN5 Date:Sun 15 Nov 2026 Run: 7 Final#");
        run.fillTo(1217 * core::runRecordWidth);
        m_program->files.put(currentFolder() + "/Data/26111514.52d", run.take());
        auto& question =
            m_program->dialogs.expectBoxTitled("Runs Not Listed", platform::Reply::yes);
        question.contains = "26111514.52d   Sun 15 Nov 2026 Run: 7 Final";
        question.whileShown = [] {
            QVERIFY(form<VrnWin32>().isVisible());
            QVERIFY(!form<VrnWin32>().findChild<QToolBar*>()->isEnabled());
        };
        shortenSplash();
        QVERIFY(forms::startProgram());
        QTRY_COMPARE(
            core::readRunIndex(currentFolder() + "/Data/KvoData.Ini", m_program->files).size(), 1U);
        QVERIFY(form<VrnWin32>().findChild<QToolBar*>()->isEnabled());
    }

    void noRunIsOfferedWhereTheLoginFailed() {
        putConfig("secret");
        core::ByteWriter run;
        core::encodeHeaderLine(run, "25 VRN5 Date:Sun 15 Nov 2026 Run: 7 Final#");
        run.fillTo(1217 * core::runRecordWidth);
        m_program->files.put(currentFolder() + "/Data/26111514.52d", run.take());
        onModal([](QWidget* modal) {
            QCOMPARE(userClick(&control<QPushButton>(*modal, "cmdCancel")), QString());
        });
        QVERIFY(!forms::startProgram());
        QCoreApplication::processEvents();
    }

    void aCancelledLoginEndsTheProgramBeforeTheMainWindow() {
        putConfig("secret");
        onModal([](QWidget* modal) {
            QCOMPARE(userClick(&control<QPushButton>(*modal, "cmdCancel")), QString());
        });
        QVERIFY(!forms::startProgram());
        QVERIFY(!isLoaded<VrnWin32>());
        QVERIFY(!isLoaded<frmSplash>());
    }

    void thePasswordOfTheFileLetsIn() {
        putConfig("secret");
        onModal([](QWidget* modal) {
            QTest::keyClicks(&control<QLineEdit>(*modal, "txtPassword"), "secret");
            QTest::keyClick(modal, Qt::Key_Return);
        });
        QVERIFY(forms::startProgram());
        QVERIFY(form<VrnWin32>().isVisible());
    }

    void aMissingConfigurationIsToldAndTheProgramGoesOn() {
        m_program->dialogs.expectBox("      Kvo.CfgG file not found"
                                     "You will have to fix the Setup before downloading data. ",
            16, "Kvo");
        inTheSetup("CancelSetup");
        shortenSplash();
        QVERIFY(forms::startProgram());
        QCOMPARE(m_program->dialogs.beeps(), 1);
        QVERIFY(form<VrnWin32>().isVisible());
        // What is in memory is what a new installation ships, and nobody may save it unasked.
        QVERIFY(m_program->state.Config == core::defaultConfig());
        QVERIFY(!m_program->state.ConfigKnown);
    }

    // All that an empty folder needs is one Save, and the next start asks for nothing.
    void aFirstUserSavesTheSetupAndIsAskedNoMore() {
        m_program->dialogs.expectBoxTitled("Kvo").contains = "Kvo.CfgG file not found";
        inTheSetup("SaveSetup", "Ann");
        shortenSplash();
        QVERIFY(forms::startProgram());
        QVERIFY(form<VrnWin32>().isVisible());
        QVERIFY(m_program->state.ConfigKnown);
        core::AppConfig wanted = core::defaultConfig();
        wanted.Driver = "Ann                      ";
        core::AppConfig file;
        QVERIFY(core::decodeConfig(*m_program->files.read(currentFolder() + "/Kvo.Cfg"), file));
        core::AppConfig padded;
        QVERIFY(core::decodeConfig(core::encodeConfig(wanted), padded));
        QVERIFY(file == padded);
        unloadAllForms();
        m_program->state = core::SharedState();
        shortenSplash();
        QVERIFY(forms::startProgram());
        QVERIFY(m_program->state.ConfigKnown);
        QVERIFY(m_program->state.Config == padded);
    }

    void aCorruptConfigurationIsToldAndWhatCouldBeReadStays() {
        putConfig("");
        auto file = *m_program->files.read(currentFolder() + "/Kvo.Cfg");
        file.resize(300);
        m_program->files.put(currentFolder() + "/Kvo.Cfg", file);
        m_program->dialogs.expectBoxTitled("Kvo").contains = "Your Kvo.Cfg file is CORRUPT";
        onModal([](QWidget* modal) {
            QCOMPARE(control<QLineEdit>(*modal, "Driver").text(), QStringLiteral("Somebody"));
            QTest::keyClick(modal, Qt::Key_Escape);
        });
        shortenSplash();
        QVERIFY(forms::startProgram());
        QVERIFY(m_program->state.Config.Driver.starts_with("Somebody"));
        // Behind the cut at byte 300 the shipped values stand.
        QCOMPARE(m_program->state.Config.RWheel, core::defaultConfig().RWheel);
        QVERIFY(!m_program->state.ConfigKnown);
    }
};

KVO_FORM_TEST_MAIN(StartTest)
#include "start_test.moc"
