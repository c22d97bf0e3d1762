// VrnWin32: menus, toolbar, sizes, and the commands that are its own.
#include "calc/engine.h"
#include "calc/forms/conversions.h"
#include "core/forms/doors.h"
#include "core/run_index.h"
#include "graph/forms/data_graph.h"
#include "library/forms/time_graph.h"
#include "library/run_list.h"
#include "link/forms/download_data.h"
#include "link/forms/logger_line.h"
#include "link/forms/pit_run.h"
#include "mainwin/about.h"
#include "mainwin/main_window.h"
#include "mainwin/splash.h"
#include "mainwin/start.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/main_window.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::About;
using kvo::forms::DataGraph;
using kvo::forms::DownloadData;
using kvo::forms::PitRun;
using kvo::forms::TimeGraph;
using kvo::forms::VrnWin32;

namespace {

// Caption and control name of every item below a menu, submenus in brackets.
QStringList itemsOf(const QMenu& menu) {
    QStringList items;
    const auto actions = menu.actions();
    for (const QAction* action : actions) {
        if (action->isSeparator() || !action->isVisible()) continue;
        if (action->menu() != nullptr) {
            items << action->text() + QLatin1String(" [") + itemsOf(*action->menu()).join(", ") +
                         "]";
        } else {
            items << action->text() + QLatin1String(" = ") + action->objectName();
        }
    }
    return items;
}

} // namespace

class MainWindowTest : public QObject, private testing::MainWindow {
    Q_OBJECT

private slots:
    void init() { open(); }
    void cleanup() { QCOMPARE(closeAndTell(), QString()); }

    void everyMenuStandsAsNamed() {
        QStringList bar;
        const auto actions = form<VrnWin32>().menuBar()->actions();
        for (const QAction* action : actions) bar << action->menu()->objectName();
        QCOMPARE(bar, QStringList({"Mnu_File", "Mnu_Communications", "VrnTools", "Mnu_Setup",
                          "Mnu_HelpList"}));
        QCOMPARE(itemsOf(menu("Mnu_File")),
            QStringList({"&Open Data File = Mnu_ViewRun", "&Time Graph = Mnu_TimeGraph",
                "&Delete Data File/s = Mnu_DeleteRun", "&Enter Run Info... = Mnu_EnterRunInfo",
                "&Copy Data File/s = Mnu_copydata(0)",
                "Email Data File/s (Requires internet) = Mnu_copydata(1)",
                "&Import Data File/s [Kvo  File/s = Mnu_Import(0), Vrn Dos File/s = Mnu_Import(1)]",
                "Open &Folder... = Mnu_OpenFolder", "&Recent Folders []", "Recent R&uns []",
                "E&xit = Mnu_Exit"}));
        QCOMPARE(itemsOf(menu("Mnu_Communications")),
            QStringList({"&Download Data = Mnu_DownloadData", "&Pit Run = Mnu_PitRun"}));
        QCOMPARE(itemsOf(menu("VrnTools")),
            QStringList({"&Compression Ratio = Compression", "&Engine Displacement = Displacement",
                "&Horsepower [from &Cylinder Head CFM = MnuCFM, from 1/4 Mile &ET = MnuMileEt, "
                "from 1/4 Mile &Mph = MnuMileMph]",
                "&Piston Speed = Mnu_PistonSpeen", "&Rpm to Mph = Speed",
                "&Tyre Diameter = Mnu_TDiameter",
                "&Metric / Imperial Conversions = MnuConversions"}));
        QCOMPARE(
            itemsOf(menu("Mnu_Setup")), QStringList({"Setup Software = Mnu_SetupSoftware",
                                            "Configure &On Board Computer = Mnu_ConfigureComputer",
                                            "Edit Vehicle Setup Defaults = Mnu_EditVSetup"}));
        QCOMPARE(itemsOf(menu("Mnu_HelpList")),
            QStringList({"&Index = Mnu_Help(1)", "&Keyboard = Mnu_Help(2)",
                "&Commands = Mnu_Help(3)", "&Using Help = Mnu_Help(4)",
                "Check for KVO Update = Mnu_UpDate", "&About KVO = Mnu_AboutVrn"}));
    }

    // Two items of one menu never share the letter that chooses them.
    void everyLetterChoosesOneItem() {
        QStringList letters;
        for (const QMenu* menu : form<VrnWin32>().findChildren<QMenu*>()) {
            for (const QAction* action : menu->actions()) {
                const qsizetype mark = action->text().indexOf(QLatin1Char('&'));
                if (mark < 0) continue;
                letters << menu->objectName() + action->text()[mark + 1].toUpper();
            }
        }
        for (const QAction* action : form<VrnWin32>().menuBar()->actions())
            letters << action->text()[action->text().indexOf(QLatin1Char('&')) + 1].toUpper();
        QVERIFY(letters.size() > 25);
        QCOMPARE(letters.removeDuplicates(), 0);
    }

    void theToolbarHasItsKeysInOrderAndTakesTheFocus() {
        QStringList keys;
        const auto actions = control<QToolBar>(form<VrnWin32>(), "Toolbar1").actions();
        auto& bar = control<QToolBar>(form<VrnWin32>(), "Toolbar1");
        for (QAction* action : actions) {
            if (action->isSeparator()) continue;
            QWidget* button = bar.widgetForAction(action);
            keys << button->objectName();
            QVERIFY(button->focusPolicy() & Qt::TabFocus);
            QVERIFY(!action->icon().isNull());
        }
        QCOMPARE(keys, QStringList({"OpenDataFile", "TimeGraph", "DownloadData", "PitRun",
                           "EnterRunInfo", "CopyData", "DeleteData", "Help"}));
    }

    void captionVersionAndPicture() {
        m_program->files.put("/kvo/Kvocar.dll", pictureFile(300, 100, 0xFF0000));
        VrnWin32& window = shownWindow();
        QCOMPARE(window.windowTitle(), QStringLiteral("DATA ACQUISITION SYSTEM"));
        QCOMPARE(control<QLabel>(window, "Label_Version").text(),
            QStringLiteral("Version " KVO_VERSION));
        auto& logo = control<QLabel>(window, "Logo");
        const QWidget* inner = logo.parentWidget();
        QCOMPARE(logo.size(), QSize(300, 100));
        QCOMPARE(logo.x(), (inner->width() - 300) / 2);
        QCOMPARE(logo.y(), (inner->height() - 100) / 2);
    }

    void theMotorcycleHasItsOwnPicture() {
        m_program->state.Config.Vehicle_Type = 0;
        m_program->files.put("/kvo/Kvobike.dll", pictureFile(123, 45, 0x00FF00));
        QCOMPARE(control<QLabel>(shownWindow(), "Logo").size(), QSize(123, 45));
    }

    void aPictureLargerThanTheWindowIsShownSmallerAndCentred() {
        m_program->files.put("/kvo/Kvocar.dll", pictureFile(2000, 1000, 0xFF0000));
        VrnWin32& window = shownWindow();
        window.resize(640, 480);
        auto& logo = control<QLabel>(window, "Logo");
        const QWidget* inner = logo.parentWidget();
        QVERIFY(logo.width() <= inner->width() && logo.height() <= inner->height());
        QCOMPARE(logo.width(), logo.height() * 2);
        QCOMPARE(logo.x(), (inner->width() - logo.width()) / 2);
    }

    void theVersionFrameNeedsAHighWindow() {
        VrnWin32& window = shownWindow();
        auto& frame = control<QFrame>(window, "Frame_Version");
        const QWidget* inner = frame.parentWidget();
        window.resize(1000, 795); // 11925 twips
        QVERIFY(frame.isVisible());
        QCOMPARE(frame.y(), inner->height() - 150); // 2250 twips
        QVERIFY(frame.geometry().bottom() < inner->height());
        window.resize(1000, 794);
        QVERIFY(!frame.isVisible());
        window.resize(900, 900);
        QVERIFY(frame.isVisible());
        QCOMPARE(frame.y(), inner->height() - 150);
        QCOMPARE(control<QFrame>(window, "Line1").width(), inner->width());
    }

    void menusAndToolbarAreSwitchedTogether() {
        shownWindow();
        QVERIFY(menusEnabled());
        forms::EnableMainMenus(false);
        QVERIFY(menusDisabled());
        forms::EnableMainMenus(true);
        QVERIFY(menusEnabled());
        {
            const forms::MainMenusDisabled off;
            QVERIFY(menusDisabled());
        }
        QVERIFY(menusEnabled());
        QVERIFY(command("Mnu_Help(1)").isEnabled());
        QVERIFY(control<QToolButton>(form<VrnWin32>(), "Help").isEnabled());
        QVERIFY(command("Mnu_DownloadData").isEnabled());
        QVERIFY(control<QToolButton>(form<VrnWin32>(), "DownloadData").isEnabled());
    }

    void switchingWithoutAMainWindowDoesNothing() {
        QVERIFY(!isLoaded<VrnWin32>());
        forms::EnableMainMenus(false);
        QVERIFY(!isLoaded<VrnWin32>());
    }

    void aboutShowsNameAndVersionAndCloses() {
        shownWindow();
        for (const bool byKey : {false, true}) {
            onModal([byKey](QWidget* modal) {
                QVERIFY(menusDisabled());
                QCOMPARE(modal->objectName(), QStringLiteral("About"));
                QCOMPARE(control<QLabel>(*modal, "Label_Version").text(),
                    QStringLiteral("Version " KVO_VERSION));
                if (byKey)
                    QTest::keyClick(modal, Qt::Key_Escape);
                else
                    QCOMPARE(userClick(&control<QPushButton>(*modal, "Command1")), QString());
            });
            command("Mnu_AboutVrn").trigger();
            QVERIFY(!isLoaded<About>());
            QVERIFY(menusEnabled());
        }
    }

    void openingADataFileTakesTheMainWindowsPlace() {
        VrnWin32& window = shownWindow();
        bool asked = false;
        onModal([&asked](QWidget* modal) {
            asked = modal->objectName() == QLatin1String("LoadFile");
            modal->close();
        });
        command("Mnu_ViewRun").trigger();
        QTRY_VERIFY(asked);
        QTRY_VERIFY(isLoaded<DataGraph>() && form<DataGraph>().isVisible());
        QVERIFY(!window.isVisible());
        QVERIFY(menusEnabled());
        QTRY_VERIFY(QApplication::activeModalWidget() == nullptr);
        form<DataGraph>().close();
        QVERIFY(!isLoaded<DataGraph>());
        QVERIFY(window.isVisible());
    }

    void deletingRunsOpensTheChooserForIt() {
        shownWindow();
        onModal([](QWidget* modal) {
            QCOMPARE(modal->windowTitle(), QStringLiteral("Delete File"));
            QCOMPARE(control<QPushButton>(*modal, "BTN_Ok").text(), QStringLiteral("Delete"));
            QVERIFY(menusDisabled());
            modal->close();
        });
        command("Mnu_DeleteRun").trigger();
        QVERIFY(menusEnabled());
    }

    void everyCalculatorOpensOnItsSum() {
        shownWindow();
        for (const calc::EngineSum& sum : calc::engineSums()) {
            const std::string menu(sum.menu);
            onModal([&sum](QWidget* modal) {
                QCOMPARE(modal->windowTitle().toStdString(), std::string(sum.title));
                QVERIFY(menusDisabled());
                modal->close();
            });
            command(menu.c_str()).trigger();
            QVERIFY(menusEnabled());
        }
    }

    void theConvertorTakesTheMainWindowsPlace() {
        VrnWin32& window = shownWindow();
        command("MnuConversions").trigger();
        QVERIFY(form<forms::Conversions>().isVisible());
        QVERIFY(!form<forms::Conversions>().isModal());
        QVERIFY(!window.isVisible());
        QVERIFY(menusEnabled());
        form<forms::Conversions>().close();
        QVERIFY(!isLoaded<forms::Conversions>());
        QVERIFY(window.isVisible());
    }

    void browseOpensTheFolderDialogue() {
        shownWindow();
        onModal([](QWidget* copy) {
            onModal([](QWidget* modal) {
                QCOMPARE(modal->objectName(), QStringLiteral("Browser"));
                modal->close();
            });
            QCOMPARE(userClick(&control<QPushButton>(*copy, "But_Browse")), QString());
            copy->close();
        });
        command("Mnu_copydata(0)").trigger();
        QVERIFY(menusEnabled());
    }

    void theUpdateQuestionOpensThePageOnYesOnly() {
        shownWindow();
        const std::string text =
            " Please Note that both Internet Explorer and an Internet connection\r\n"
            " are needed to established this check.\r\n\r\n"
            "Do you want to check for a newer version of Kvo Now ?";
        m_program->dialogs.expectBox(text, 68, "Kvo UpDate Check", platform::Reply::no);
        command("Mnu_UpDate").trigger();
        QVERIFY(m_program->browser.opened.empty());
        m_program->browser.succeeds = false; // ends without a word
        m_program->dialogs.expectBox(text, 68, "Kvo UpDate Check", platform::Reply::yes)
            .whileShown = [] { QVERIFY(menusDisabled()); };
        command("Mnu_UpDate").trigger();
        QCOMPARE(m_program->browser.opened.size(), std::size_t{1});
        QVERIFY(menusEnabled());
    }

    void theDateCheckComesAheadOfTheDownload() {
        shownWindow();
        m_program->state.Config.Date_Prompt = 0;
        const std::string text = "Date: Sunday, 15 November 2026\r\n"
                                 " If this DATE is Not Correct. Please Fix Before Downloading!\r\n"
                                 "As it is used for Dating the Download Files ?";
        auto& box = m_program->dialogs.expectBox(text, 48, "Date: Sunday, 15 November 2026");
        box.whileShown = [] {
            QVERIFY(menusDisabled());
            QVERIFY(!isLoaded<DownloadData>());
        };
        onModal([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("DownloadData"));
            QVERIFY(menusDisabled());
            QCOMPARE(userClick(&control<QPushButton>(*modal, "Cancel_Command")), QString());
        });
        command("Mnu_DownloadData").trigger();
        QVERIFY(!isLoaded<DownloadData>());
        QVERIFY(menusEnabled());
    }

    void theDateCheckCanBeSwitchedOff() {
        shownWindow();
        m_program->state.Config.Date_Prompt = 1;
        onModal([](QWidget* modal) { QTest::keyClick(modal, Qt::Key_Escape); });
        QCOMPARE(userClick(&control<QToolButton>(form<VrnWin32>(), "DownloadData")), QString());
        QVERIFY(!isLoaded<DownloadData>());
        QVERIFY(menusEnabled());
    }

    void aDownloadedRunIsTheGraphsAndTheChoosers() {
        VrnWin32& window = shownWindow();
        core::AppConfig& config = m_program->state.Config;
        config.CheckBits = {0, -1};
        config.Date_Prompt = config.SpeedWheel_Prompt = 1;
        config.Wheel = 22;
        m_program->putConfig();
        m_program->files.put("/kvo/Data/KvoData.Ini", {});
        const std::vector<core::RunIndexEntry> rows{{"26111417.00d", "Sat 14 Nov 2026 Run: 9"}};
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
        library::runList().read("/kvo", m_program->files);
        QCOMPARE(library::runList().chosen().FileName, rows[0].FileName); // the choice before
        m_program->dialogs.expectInputTitled("Run Title", "7 Final");
        m_program->dialogs.expectBoxTitled("Download Saved", platform::Reply::yes);
        onModal([](QWidget* modal) {
            QCOMPARE(userClick(&control<QPushButton>(*modal, "Command_Send")), QString());
        });
        command("Mnu_DownloadData").trigger();
        QVERIFY(isLoaded<DataGraph>() && form<DataGraph>().isVisible());
        QVERIFY(!window.isVisible());
        QVERIFY(form<DataGraph>().hasRun());
        QCOMPARE(
            form<DataGraph>().windowTitle(), QStringLiteral(" Date:Sun 15 Nov 2026 Run: 7 Final"));
        QCOMPARE(library::runList().chosen().FileName, std::string("26111514.42d"));
        QVERIFY(!m_program->dialogs.hourglass());
        form<DataGraph>().close();
        QVERIFY(window.isVisible());
    }

    void thePitRunTakesTheMainWindowsPlace_data() {
        QTest::addColumn<bool>("byMenu");
        QTest::newRow("menu") << true;
        QTest::newRow("toolbar") << false;
    }
    void thePitRunTakesTheMainWindowsPlace() {
        QFETCH(bool, byMenu);
        VrnWin32& window = shownWindow();
        m_program->state.Config.LoggerDataType = 25;
        if (byMenu)
            command("Mnu_PitRun").trigger();
        else
            QCOMPARE(userClick(&control<QToolButton>(window, "PitRun")), QString());
        QVERIFY(isLoaded<PitRun>() && form<PitRun>().isVisible());
        QVERIFY(!window.isVisible());
        QVERIFY(menusEnabled());
        QCOMPARE(m_line->line.bytesSent(), 0);
        form<PitRun>().close();
        QVERIFY(!isLoaded<PitRun>());
        QVERIFY(window.isVisible());
    }

    void theTimeGraphTakesTheMainWindowsPlace_data() { thePitRunTakesTheMainWindowsPlace_data(); }
    void theTimeGraphTakesTheMainWindowsPlace() {
        QFETCH(bool, byMenu);
        VrnWin32& window = shownWindow();
        if (byMenu)
            command("Mnu_TimeGraph").trigger();
        else
            QCOMPARE(userClick(&control<QToolButton>(window, "TimeGraph")), QString());
        QVERIFY(isLoaded<TimeGraph>() && form<TimeGraph>().isVisible());
        QVERIFY(!window.isVisible());
        QVERIFY(menusEnabled());
        form<TimeGraph>().close();
        QVERIFY(!isLoaded<TimeGraph>());
        QVERIFY(window.isVisible());
    }

    void bothItemsOfTheImportOpenItsFormInTheirMode() {
        VrnWin32& window = shownWindow();
        QStringList captions;
        for (const char* item : {"Mnu_Import(0)", "Mnu_Import(1)"}) {
            onModal([&captions](QWidget* modal) {
                captions << modal->windowTitle();
                QVERIFY(menusDisabled());
                QTest::keyClick(modal, Qt::Key_Escape);
            });
            command(item).trigger();
        }
        QCOMPARE(captions, QStringList({"Import Windows Data", "Import VRN Dos Data"}));
        QVERIFY(window.isVisible());
        QVERIFY(menusEnabled());
    }

    void theOnBoardComputerIsConfiguredOverTheMainWindow() {
        VrnWin32& window = shownWindow();
        bool came = false;
        m_line->line.at(1, [] { QVERIFY(menusDisabled()); });
        onModal([&came](QWidget* modal) {
            came = modal->objectName() == QLatin1String("SetupOBC");
            QVERIFY(menusDisabled());
            QCOMPARE(control<QLabel>(*modal, "Label_S_No").text(), QStringLiteral("1225"));
            modal->close();
        });
        command("Mnu_ConfigureComputer").trigger();
        QVERIFY(came);
        QVERIFY(window.isVisible());
        QVERIFY(menusEnabled());
        // Without a logger there is a message and no form.
        m_line->line.plugInto(2);
        m_line->link.CloseLoggerPort();
        m_line->link.ReplyByte = 0;
        m_program->dialogs.expectBoxTitled("Configure Error !").whileShown = [] {
            QVERIFY(menusDisabled());
        };
        command("Mnu_ConfigureComputer").trigger();
        QVERIFY(menusEnabled());
    }

    void toolbarKeysAreExact() {
        shownWindow();
        m_program->state.Config.Date_Prompt = 1;
        form<VrnWin32>().commands().press("downloaddata");
        form<VrnWin32>().commands().press("Download");
        form<VrnWin32>().commands().press("");
        form<VrnWin32>().commands().press("pitrun");
        form<VrnWin32>().commands().press("help");
        bool came = false;
        onModal([&came](QWidget* modal) {
            came = true;
            modal->close();
        });
        form<VrnWin32>().commands().press("DownloadData");
        QVERIFY(came);
    }

    void menusWorkFromTheKeyboard() {
        VrnWin32& window = shownWindow();
        m_program->state.Config.Date_Prompt = 1;
        bool came = false;
        onModal([&came](QWidget* modal) {
            came = modal->objectName() == QLatin1String("DownloadData");
            modal->close();
        });
        QTest::keyClick(&window, Qt::Key_C, Qt::AltModifier);
        QTRY_VERIFY(menu("Mnu_Communications").isVisible());
        QTest::keyClick(&menu("Mnu_Communications"), Qt::Key_D);
        QTRY_VERIFY(came);
    }

    void theToolbarIsReachedByTab() {
        VrnWin32& window = shownWindow();
        auto& button = control<QToolButton>(window, "DownloadData");
        for (int i = 0; i < 12 && !button.hasFocus(); ++i) QTest::keyClick(&window, Qt::Key_Tab);
        QVERIFY(button.hasFocus());
        m_program->state.Config.Date_Prompt = 1;
        bool came = false;
        onModal([&came](QWidget* modal) {
            came = true;
            modal->close();
        });
        QTest::keyClick(&button, Qt::Key_Space);
        QVERIFY(came);
    }

    // With KVO_PICTURES naming a folder: what the windows look like, on a light and a dark desktop.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        for (const char* name : {"Kvocar.dll", "Kvobike.dll"}) {
            QFile file(QStringLiteral(KVO_TEST_DATA "/../packaging/") + QLatin1String(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            m_program->files.put(std::string("/kvo/") + name, {bytes.begin(), bytes.end()});
        }
        const QPalette light = QApplication::palette();
        QPalette dark(QColor(0x35, 0x37, 0x3b), QColor(0x2b, 0x2d, 0x30));
        for (const bool isDark : {false, true}) {
            QApplication::setPalette(isDark ? dark : light);
            m_program->state.Config.Vehicle_Type = isDark ? 0 : 1;
            const QString look = isDark ? QStringLiteral("dark") : QStringLiteral("light");
            const auto save = [&](QWidget& window, const char* name) {
                window.show();
                QVERIFY(QTest::qWaitForWindowExposed(&window));
                QVERIFY(
                    saveScreenshot(window, QStringLiteral("%1/%2-%3.png").arg(folder, name, look)));
                window.hide();
            };
            save(form<VrnWin32>(), "main");
            save(form<forms::frmSplash>(), "splash");
            save(form<About>(), "about");
            save(form<DownloadData>(), "download");
            unloadAllForms();
        }
        QApplication::setPalette(light);
    }

    void theMainWindowTakesTheProgramAlong_data() {
        QTest::addColumn<bool>("byMenu");
        QTest::addColumn<bool>("othersFirst");
        QTest::newRow("Exit") << true << false;
        QTest::newRow("close") << false << false;
        QTest::newRow("Exit, with other windows in the memory") << true << true;
        QTest::newRow("close, with other windows in the memory") << false << true;
    }
    void theMainWindowTakesTheProgramAlong() {
        QFETCH(bool, byMenu);
        QFETCH(bool, othersFirst);
        VrnWin32& window = shownWindow();
        if (othersFirst) openingADataFileTakesTheMainWindowsPlace();
        m_program->state.AppFolder = QDir::tempPath().toStdString();
        QTimer::singleShot(0, &window, [byMenu, &window] {
            if (byMenu)
                command("Mnu_Exit").trigger();
            else
                window.close();
        });
        QTimer::singleShot(5000, qApp, [] { QApplication::exit(7); });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(QDir::current().canonicalPath(), QDir(QDir::tempPath()).canonicalPath());
    }
};

KVO_FORM_TEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
