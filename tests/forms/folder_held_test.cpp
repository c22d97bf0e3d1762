// A folder that another program has: the question at the start, and what is left of the program
// when it only looks.
#include "core/config.h"
#include "core/forms/doors.h"
#include "core/run_index.h"
#include "library/forms/info.h"
#include "library/forms/load_file.h"
#include "mainwin/folder_held.h"
#include "mainwin/main_window.h"
#include "mainwin/splash.h"
#include "mainwin/start.h"
#include "platform/qt/application.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::VrnWin32;

class FolderHeldTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<TestProgram> m_program;

    static platform::FolderHolder holder() {
        return {"kvo", "pit-laptop", 4711, {2026, 11, 21, 9, 5, 0}, true};
    }
    static void press(const char* button) {
        onModal([button](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("FolderHeld"));
            QCOMPARE(userClick(&control<QPushButton>(*modal, button)), QString());
        });
    }
    static void shortenSplash() {
        onModal([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("frmSplash"));
            control<QTimer>(*modal, "Timer1").start(1);
        });
    }
    std::string inFolder(const char* name) const { return currentFolder() + "/" + name; }
    void startToLook() {
        m_program->folderLock.holders = {holder()};
        press("Look_Only");
        shortenSplash();
        QVERIFY(forms::startProgram());
    }

private slots:
    void init() {
        QVERIFY(QDir::setCurrent(m_folder.path()));
        m_program = std::make_unique<TestProgram>();
        m_program->files.put(inFolder("Kvo.Cfg"), core::encodeConfig(m_program->state.Config));
    }
    void cleanup() {
        const QString problems =
            modalComplaints() + QString::fromStdString(m_program->dialogs.problems());
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void aFreeFolderIsTakenWithoutAWord() {
        shortenSplash();
        QVERIFY(forms::startProgram());
        QCOMPARE(m_program->folderLock.taken, std::vector<std::string>{currentFolder()});
        QVERIFY(!m_program->state.LookOnly);
        QCOMPARE(form<VrnWin32>().windowTitle(), QStringLiteral("DATA ACQUISITION SYSTEM"));
        QVERIFY(form<VrnWin32>().commands().command("Mnu_DownloadData").isEnabled());
    }

    void theQuestionSaysWhoHasTheFolder() {
        m_program->folderLock.holders = {holder()};
        onModal([](QWidget* modal) {
            QCOMPARE(control<QLabel>(*modal, "Label_Holder").text(),
                QStringLiteral("Another Kvo has had this folder open since 2026-11-21 09:05 "
                               "(kvo, process 4711 on pit-laptop)."));
            QCOMPARE(control<QLabel>(*modal, "Label_Folder").text(),
                QDir::toNativeSeparators(QDir::currentPath()));
            QVERIFY(!control<QLabel>(*modal, "Label_Unreached").isVisible());
            QVERIFY(control<QPushButton>(*modal, "Show_Other").hasFocus());
            QTest::keyClick(modal, Qt::Key_Escape);
        });
        QVERIFY(!forms::startProgram());
        QVERIFY(!isLoaded<VrnWin32>());
        QCOMPARE(m_program->files.writes(), 0);
    }

    void aHolderOnAnotherComputerCannotBeShown() {
        m_program->folderLock.holders = {holder()};
        m_program->folderLock.holders[0].here = false;
        onModal([](QWidget* modal) {
            QVERIFY(!control<QPushButton>(*modal, "Show_Other").isEnabled());
            QVERIFY(control<QLabel>(*modal, "Label_Unreached").text().contains("Kvo.lock"));
            QCOMPARE(userClick(&control<QPushButton>(*modal, "Leave")), QString());
        });
        QVERIFY(!forms::startProgram());
    }

    void showingTheOtherWindowEndsThisStart() {
        m_program->folderLock.holders = {holder()};
        press("Show_Other");
        QVERIFY(!forms::startProgram("/runs/Data/26111514.52d"));
        QCOMPARE(m_program->showRequests.asked, std::vector<std::int64_t>{4711});
        QCOMPARE(m_program->showRequests.askedRun, std::string("/runs/Data/26111514.52d"));
        QVERIFY(!isLoaded<VrnWin32>());
    }

    void aHolderThatDoesNotHearIsAskedAboutAgain() {
        m_program->folderLock.holders = {holder(), holder()};
        m_program->showRequests.hears = false;
        press("Show_Other");
        onModal([](QWidget* modal) {
            QCOMPARE(control<QLabel>(*modal, "Label_Unreached").text(),
                QStringLiteral("That window could not be reached."));
            QTest::keyClick(modal, Qt::Key_Escape);
        });
        QVERIFY(!forms::startProgram());
    }

    void aFolderThatCameFreeMeanwhileIsTaken() {
        m_program->folderLock.holders = {holder()};
        m_program->showRequests.hears = false;
        press("Show_Other");
        shortenSplash();
        QVERIFY(forms::startProgram());
        QVERIFY(!m_program->state.LookOnly);
    }

    void whoIsAskedShowsItsWindow() {
        shortenSplash();
        QVERIFY(forms::startProgram());
        auto& window = form<VrnWin32>();
        window.showMinimized();
        m_program->showRequests.ask({});
        QVERIFY(!window.isMinimized());
    }

    void whoIsAskedForARunOpensIt() {
        shortenSplash();
        QVERIFY(forms::startProgram());
        m_program->dialogs.expectBoxTitled("Open").contains = "is not there.";
        const std::size_t boxes = m_program->dialogs.titles().size();
        m_program->showRequests.ask(inFolder("Data/26111514.52d"));
        QTRY_COMPARE(m_program->dialogs.titles().size(), boxes + 1);
    }

    void lookingDisablesEveryCommandThatWrites() {
        startToLook();
        const auto& commands = form<VrnWin32>().commands();
        for (const char* name :
            {"Mnu_DeleteRun", "Mnu_Import(0)", "Mnu_Import(1)", "Mnu_DownloadData",
                "Mnu_SetupSoftware", "Mnu_ConfigureComputer", "Mnu_EditVSetup"})
            QVERIFY2(!commands.command(name).isEnabled(), name);
        for (const char* name : {"DownloadData", "DeleteData"})
            QVERIFY2(!commands.key(name).isEnabled(), name);
        for (const char* name : {"Mnu_ViewRun", "Mnu_TimeGraph", "Mnu_EnterRunInfo",
                 "Mnu_copydata(0)", "Mnu_PitRun", "Mnu_AboutVrn"})
            QVERIFY2(commands.command(name).isEnabled(), name);
        // A modal command that comes back does not enable them again.
        forms::EnableMainMenus(false);
        forms::EnableMainMenus(true);
        QVERIFY(!commands.command("Mnu_DownloadData").isEnabled());
        QCOMPARE(form<VrnWin32>().windowTitle(),
            QStringLiteral("DATA ACQUISITION SYSTEM - looking only"));
    }

    void lookingWritesNothingInTheFolder() {
        const std::string leftover = inFolder(".Kvo.Cfg.12-0.new");
        m_program->files.put(leftover, {1});
        m_program->files.setCreatedOn(leftover, {2026, 11, 1, 12, 0, 0});
        startToLook();
        QVERIFY(m_program->files.exists(leftover));
        platform::Files& files = *platform::services().files;
        QVERIFY(!files.write(inFolder("KvoData.Ini"), {1}));
        QVERIFY(files.write("/elsewhere.csv", {1}));
        // The graph keeps its options without a word, as with a read-only file.
        QVERIFY(core::SaveConfig(currentFolder(), m_program->state.Config, files));
        QCOMPARE(m_program->files.writes(), 1);
    }

    void lookingDoesNotAskForASetup() {
        QVERIFY(m_program->files.remove(inFolder("Kvo.Cfg")));
        m_program->folderLock.holders = {holder()};
        m_program->dialogs.expectBoxTitled("Kvo").contains = "Kvo.CfgG file not found";
        press("Look_Only");
        shortenSplash();
        QVERIFY(forms::startProgram());
    }

    void lookingLeavesTheChooserAndTheInfoReadable() {
        QVERIFY(core::AddRunToIndex(currentFolder(), {"26112109.05d", "Final"},
            core::IndexOrder::sorted, m_program->files));
        startToLook();
        forms::LoadFile& chooser = form<forms::LoadFile>();
        chooser.setCaptions(QStringLiteral("Load"), {}, QStringLiteral("Choose"));
        QCOMPARE(chooser.windowTitle(), QStringLiteral("Choose - looking only"));
        chooser.Data_File();
        auto& rows = control<QTreeView>(chooser, "Files_List");
        rows.setCurrentIndex(rows.model()->index(0, 0));
        QCOMPARE(control<QLineEdit>(chooser, "Discription").text(), QStringLiteral("Final"));
        QVERIFY(!control<QPushButton>(chooser, "BTN_Edit").isEnabled());
        QTest::keyClick(&rows, Qt::Key_F2); // asks nothing
        QVERIFY(!rows.toolTip().contains("F2"));
        forms::Info& info = form<forms::Info>();
        for (const auto* box : info.findChildren<QLineEdit*>()) QVERIFY(box->isReadOnly());
        onModal([&info](QWidget*) {
            QVERIFY(info.windowTitle().endsWith("- looking only"));
            auto& notes = control<QPlainTextEdit>(info, "Info_Text");
            QTest::keyClicks(&notes, "fast");
            QTest::keyClick(&notes, Qt::Key_Return);
            QCOMPARE(notes.toPlainText(), QString());
            QVERIFY(!control<QPushButton>(info, "Save_Info").isEnabled());
            info.close(); // nothing has changed, and nothing is asked
        });
        info.editRun(inFolder("Data/26112109.05d"), "Info For : x");
    }
};

KVO_FORM_TEST_MAIN(FolderHeldTest)
#include "folder_held_test.moc"
