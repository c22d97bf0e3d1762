// The setup form on its ways into the program: from the menu, under a download, and between a
// download and the graph.
#include "core/config.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "core/run_index.h"
#include "graph/forms/data_graph.h"
#include "link/forms/download_data.h"
#include "link/forms/port_search.h"
#include "setup/forms/setup_software.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/main_window.h"
#include "tests/forms/support/user_click.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::DataGraph;
using kvo::forms::DownloadData;
using kvo::forms::SetupSoftware;
using kvo::forms::VrnWin32;
using kvo::platform::Reply;

class SetupCourseTest : public QObject, private MainWindow {
    Q_OBJECT

    ScriptedDialogs& dialogs() { return m_program->dialogs; }
    core::AppConfig& config() { return m_program->state.Config; }
    core::AppConfig saved() {
        core::AppConfig file;
        const auto bytes = m_program->files.read("/kvo/Kvo.Cfg");
        if (!bytes || !core::decodeConfig(*bytes, file)) qFatal("no Kvo.Cfg");
        return file;
    }
    static void press(const char* name) {
        QCOMPARE(userClick(&control<QPushButton>(form<SetupSoftware>(), name)), QString());
    }
    static void goToDataLogger() {
        auto& tabs = control<QTabBar>(form<SetupSoftware>(), "TabStrip1");
        QCOMPARE(userClick(&tabs, tabs.tabRect(2).center()), QString());
    }
    static void type(const char* name, const char* text) {
        auto& box = control<QLineEdit>(form<SetupSoftware>(), name);
        QCOMPARE(userClick(&box), QString());
        box.selectAll();
        QTest::keyClicks(&box, QLatin1String(text));
    }
    // The setup form comes up next; the script presses the button that ends it.
    static void inTheSetup(std::function<void()> script) {
        onModal([script = std::move(script)](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("SetupSoftware"));
            script();
        });
    }
    void shortTransfer() {
        config().Date_Prompt = 1;
        config().SpeedWheel_Prompt = 1;
        config().LoggerDataType = 25;
    }

private slots:
    void init() {
        open();
        config() = core::defaultConfig();
        form<VrnWin32>().show();
    }
    void cleanup() { QCOMPARE(closeAndTell(), QString()); }

    void theMenuReadsTheFileAfreshAndSwitchesTheMenusOff() {
        m_program->putConfig();
        config().Driver = "Left in memory";
        m_program->state.ConfigKnown = false;
        bool seen = false;
        inTheSetup([&] {
            seen = true;
            QVERIFY(menusDisabled());
            QCOMPARE(control<QLineEdit>(form<SetupSoftware>(), "Driver").text(), QString());
            press("CancelSetup");
        });
        command("Mnu_SetupSoftware").trigger();
        QVERIFY(seen);
        QVERIFY(menusEnabled());
        QVERIFY(!isLoaded<SetupSoftware>());
        QVERIFY(m_program->state.ConfigKnown);
    }

    void whatWasSavedIsInTheNextSetup() {
        m_program->putConfig();
        inTheSetup([] {
            type("Driver", "First");
            press("SaveSetup");
        });
        command("Mnu_SetupSoftware").trigger();
        inTheSetup([] {
            QCOMPARE(control<QLineEdit>(form<SetupSoftware>(), "Driver").text(),
                QStringLiteral("First"));
            type("Driver", "Second");
            press("CancelSetup");
        });
        command("Mnu_SetupSoftware").trigger();
        QVERIFY(saved().Driver.starts_with("First "));
        QVERIFY(config().Driver.starts_with("First "));
    }

    // What a Save took that was refused, or whose file could not be written, lives as long as the
    // form: no later writer of the configuration finds it.
    void whatWasNotSavedIsNotLeftToAnother_data() {
        QTest::addColumn<QString>("weight");
        QTest::addColumn<bool>("fullDisk");
        QTest::newRow("a number that does not fit") << QString(40, QLatin1Char('9')) << false;
        QTest::newRow("a full disk") << QStringLiteral("2000") << true;
    }
    void whatWasNotSavedIsNotLeftToAnother() {
        QFETCH(QString, weight);
        QFETCH(bool, fullDisk);
        m_program->putConfig();
        const auto before = m_program->files.read("/kvo/Kvo.Cfg");
        dialogs().expectBoxTitled("Kvo").contains = fullDisk ? "NOT be saved" : "Weight";
        inTheSetup([&] {
            type("Driver", "Nobody");
            control<QCheckBox>(form<SetupSoftware>(), "Check_Password").setChecked(true);
            type("NPassword", "dropped");
            type("VPassword", "dropped");
            goToDataLogger();
            type("Weight_F", qPrintable(weight));
            if (fullDisk) m_program->files.failWrites("/kvo", MemoryFiles::Failure::fullDisk, 1);
            press("SaveSetup");
            press("CancelSetup");
        });
        command("Mnu_SetupSoftware").trigger();
        QCOMPARE(config().Password, std::string());
        form<DataGraph>().show();
        forms::doors().keepGraphOptions();
        form<DataGraph>().close();
        QVERIFY(m_program->files.read("/kvo/Kvo.Cfg") == before);
    }

    // The picture of the vehicle is that of the setup that counts.
    void aSaveWithoutAFileShowsTheOldVehicleAgain() {
        m_program->files.put("/kvo/Kvocar.dll", pictureFile(80, 20, 0xFF0000));
        m_program->files.put("/kvo/Kvobike.dll", pictureFile(50, 30, 0x00FF00));
        dialogs().expectBoxTitled("Kvo").contains = "Kvo.CfgG file not found";
        dialogs().expectBoxTitled("Kvo").contains = "NOT be saved";
        m_program->state.ConfigKnown = false;
        inTheSetup([&] {
            control<QComboBox>(form<SetupSoftware>(), "Vehicle_Type").setCurrentIndex(0);
            m_program->files.failWrites("/kvo", MemoryFiles::Failure::fullDisk, 1);
            press("SaveSetup");
            press("CancelSetup");
        });
        command("Mnu_SetupSoftware").trigger();
        QCOMPARE(control<QLabel>(form<VrnWin32>(), "Logo").size(), QSize(80, 20));
    }

    // The message leads into the form, and the command does not show it a second time.
    void withoutAFileTheMenuTellsItAndShowsTheFormOnce() {
        dialogs().expectBoxTitled("Kvo").contains = "Kvo.CfgG file not found";
        inTheSetup([] { press("SaveSetup"); });
        command("Mnu_SetupSoftware").trigger();
        QVERIFY(m_program->files.exists("/kvo/Kvo.Cfg"));
        QVERIFY(menusEnabled());
        inTheSetup([] { press("CancelSetup"); });
        command("Mnu_SetupSoftware").trigger();
    }

    void theMainWindowShowsTheVehicleThatWasSaved() {
        m_program->files.put("/kvo/Kvocar.dll", pictureFile(80, 20, 0xFF0000));
        m_program->files.put("/kvo/Kvobike.dll", pictureFile(50, 30, 0x00FF00));
        m_program->putConfig();
        forms::doors().loadLogo();
        auto& logo = control<QLabel>(form<VrnWin32>(), "Logo");
        QCOMPARE(logo.size(), QSize(80, 20));
        inTheSetup([] {
            control<QComboBox>(form<SetupSoftware>(), "Vehicle_Type").setCurrentIndex(0);
            press("SaveSetup");
        });
        command("Mnu_SetupSoftware").trigger();
        QCOMPARE(logo.size(), QSize(50, 30));
    }

    void theSearchRunsOverTheForm() {
        m_program->putConfig();
        m_line->line.plugInto(3);
        dialogs().expectBoxTitled("Find Logger Comm Port !", Reply::yes);
        dialogs().expectBoxTitled("Logger Found on Comm Port: 3", Reply::yes).whileShown = [] {
            // Nothing of the form can be reached in the middle of a search.
            QVERIFY(
                !userClick(&control<QPushButton>(form<SetupSoftware>(), "SaveSetup")).isEmpty());
        };
        inTheSetup([] {
            press("But_FindComm");
            QCOMPARE(control<QComboBox>(form<SetupSoftware>(), "ComPort").currentText(),
                QStringLiteral("COM3"));
            press("SaveSetup");
        });
        command("Mnu_SetupSoftware").trigger();
        QCOMPARE(saved().CommPort, 3);
        QVERIFY(!m_line->line.portOpen());
    }

    void theListOfPortsAsksTheRealPort() {
        m_program->putConfig();
        inTheSetup([] {
            auto& ports = control<QComboBox>(form<SetupSoftware>(), "ComPort");
            ports.showPopup();
            QCOMPARE(ports.itemData(0, Qt::ToolTipRole).toString(),
                QStringLiteral("COM1: /dev/virtual, free"));
            QCOMPARE(
                ports.itemData(1, Qt::ToolTipRole).toString(), QStringLiteral("COM2: no device"));
            ports.hidePopup();
            press("CancelSetup");
        });
        command("Mnu_SetupSoftware").trigger();
    }

    // Without a file a download leads into the setup, and then goes on with it.
    void aDownloadWithoutAFileGoesOnAfterTheSetup() {
        shortTransfer();
        dialogs().expectBoxTitled("Kvo").contains = "Kvo.CfgG file not found";
        dialogs().expectInputTitled("Run Title", "7 Final");
        dialogs().expectBoxTitled("Download Saved", Reply::no);
        onModal([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("DownloadData"));
            inTheSetup([] {
                type("Driver", "At the track");
                press("SaveSetup");
            });
            QCOMPARE(
                userClick(&control<QPushButton>(form<DownloadData>(), "Command_Send")), QString());
        });
        forms::doors().downloadData();
        QVERIFY(saved().Driver.starts_with("At the track"));
        QVERIFY(m_program->files.exists("/kvo/Data/26111514.42d"));
    }

    // The search has closed the port of the download, which tells so and ends.
    void aSearchUnderADownloadEndsTheDownloadInWords() {
        shortTransfer();
        m_line->line.plugInto(2);
        config().CommPort = 2;
        dialogs().expectBoxTitled("Kvo").contains = "Kvo.CfgG file not found";
        dialogs().expectBoxTitled("Find Logger Comm Port !", Reply::yes);
        dialogs().expectBoxTitled("Logger Found on Comm Port: 2", Reply::yes);
        dialogs().expectBoxTitled("Download Error");
        onModal([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("DownloadData"));
            inTheSetup([] {
                press("But_FindComm");
                press("SaveSetup");
            });
            QCOMPARE(
                userClick(&control<QPushButton>(form<DownloadData>(), "Command_Send")), QString());
        });
        forms::doors().downloadData();
        QCOMPARE(saved().CommPort, 2);
        QVERIFY(!m_line->line.portOpen());
    }

    void setupAfterADownloadAndTheGraphAfterTheSetup() {
        shortTransfer();
        m_program->putConfig();
        dialogs().expectInputTitled("Run Title", "7 Final");
        dialogs().expectBoxTitled("Download Saved", Reply::no);
        onModal([](QWidget*) {
            QCOMPARE(
                userClick(&control<QPushButton>(form<DownloadData>(), "Command_Send")), QString());
        });
        forms::doors().downloadData();
        forms::doors().chooseRun = [](const std::string&, const std::string&) {
            core::ChosenRun run;
            run.path = "/kvo/Data/26111514.42d";
            run.infoPath = "/kvo/Data/26111514.42i";
            run.fileName = "26111514.42d";
            return std::optional(run);
        };
        for (const bool car : {false, true}) {
            inTheSetup([car] {
                control<QComboBox>(form<SetupSoftware>(), "Vehicle_Type").setCurrentIndex(car);
                press("SaveSetup");
            });
            command("Mnu_SetupSoftware").trigger();
            command("Mnu_ViewRun").trigger();
            QTRY_VERIFY(isLoaded<DataGraph>() && form<DataGraph>().isVisible());
            // A car has no clutch in the graph.
            QCOMPARE(control<QLabel>(form<DataGraph>(), "Clutch").isHidden(), car);
            form<DataGraph>().close();
            QVERIFY(form<VrnWin32>().isVisible());
        }
    }
};

KVO_FORM_TEST_MAIN(SetupCourseTest)
#include "setup_course_test.moc"
