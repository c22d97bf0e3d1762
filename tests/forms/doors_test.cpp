// The page on which forms call one another: shut until it is opened, and opened whole.
#include "core/forms/doors.h"
#include "core/run_index.h"
#include "graph/forms/data_graph.h"
#include "library/forms/load_file.h"
#include "library/forms/run_statistics.h"
#include "library/run_list.h"
#include "mainwin/about.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "platform/qt/form_kit.h"
#include "setup/forms/setup_software.h"
#include "setup/forms/visible_options.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/own_process.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

#include <array>
#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::Doors;
using kvo::forms::doors;

namespace {

constexpr std::size_t doorCount = sizeof(Doors) / sizeof(forms::Door<void()>);

// A door that is added and stands in no line here counts as shut.
std::array<bool, doorCount> openOnes() {
    const Doors& all = doors();
    // clang-format off
    return {
        all.hideMainWindow.isOpen(),
        all.showMainWindow.isOpen(),
        all.EnableMainMenus.isOpen(),
        all.mainMenusEnabled.isOpen(),
        all.showDataGraph.isOpen(),
        all.showFreshRun.isOpen(),
        all.showChosenRun.isOpen(),
        all.raiseGraph.isOpen(),
        all.showTimeGraph.isOpen(),
        all.chooseRun.isOpen(),
        all.chooseRunsToDelete.isOpen(),
        all.refreshChooser.isOpen(),
        all.runPreview.isOpen(),
        all.importRuns.isOpen(),
        all.copyRuns.isOpen(),
        all.mailRuns.isOpen(),
        all.browseFolder.isOpen(),
        all.showStatistics.isOpen(),
        all.showVisibleOptions.isOpen(),
        all.redrawGraph.isOpen(),
        all.keepGraphOptions.isOpen(),
        all.chooseCustomScale.isOpen(),
        all.downloadData.isOpen(),
        all.showPitRun.isOpen(),
        all.configureComputer.isOpen(),
        all.showSoftwareSetup.isOpen(),
        all.loadLogo.isOpen(),
        all.findLoggerPort.isOpen(),
        all.describePorts.isOpen(),
        all.showInfo.isOpen(),
        all.editVehicleSetup.isOpen(),
        all.showCalculator.isOpen(),
        all.showConversions.isOpen(),
        all.openConversions.isOpen(),
        all.openDropped.isOpen(),
        all.rememberRun.isOpen(),
        all.endProgram.isOpen(),
        all.showAbout.isOpen(),
        all.showHelp.isOpen(),
    };
    // clang-format on
}

} // namespace

class DoorsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;

private slots:
    void init() { m_program = std::make_unique<TestProgram>(); }
    void cleanup() {
        const QString problems =
            modalComplaints() + QString::fromStdString(m_program->dialogs.problems());
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void everyDoorIsShutUntilTheProgramOpensIt() {
        forms::doors().runPreview = {}; // which alone is open in every test
        for (const bool open : openOnes()) QVERIFY(!open);
        forms::openDoors();
        for (const bool open : openOnes()) QVERIFY(open);
        QCOMPARE(forms::doors().runPreview("/none", 9, 9).problem,
            std::string("The file of this run cannot be read."));
        TestProgram another; // each test begins with shut doors
        forms::doors().runPreview = {};
        for (const bool open : openOnes()) QVERIFY(!open);
    }

    void aDoorGivesOnWhatItIsGiven() {
        doors().chooseRun = [](const std::string& button, const std::string& title) {
            core::ChosenRun run;
            run.description = button + '/' + title;
            return std::optional(run);
        };
        QCOMPARE(doors().chooseRun("Load", "Load Data File")->description,
            std::string("Load/Load Data File"));
    }

    void aShutDoorEndsTheProgramByItsName() {
        if (isOwnProcess()) doors().showAbout();
        const QString told = abortInOwnProcess();
        QVERIFY2(
            told.contains(QLatin1String("The door showAbout was never opened.")), qPrintable(told));
    }

    void theMainWindowsDoorsAreHarmlessWithoutOne() {
        forms::openDoors();
        doors().hideMainWindow();
        doors().showMainWindow();
        doors().EnableMainMenus(false);
        doors().loadLogo();
        QVERIFY(!isLoaded<forms::VrnWin32>());
        auto& window = form<forms::VrnWin32>();
        doors().showMainWindow();
        QVERIFY(window.isVisible());
        doors().EnableMainMenus(false);
        QVERIFY(!window.commands().menu("Mnu_File").menuAction()->isEnabled());
        doors().EnableMainMenus(true);
        QVERIFY(window.commands().menu("Mnu_File").menuAction()->isEnabled());
        doors().hideMainWindow();
        QVERIFY(!window.isVisible());
    }

    void modalFormsComeAndGo() {
        forms::openDoors();
        const auto comes = [](const char* name) {
            onModal([name](QWidget* modal) {
                QCOMPARE(modal->objectName(), QLatin1String(name));
                modal->close();
            });
        };
        comes("About");
        doors().showAbout();
        comes("SetupSoftware");
        doors().showSoftwareSetup();
        QVERIFY(!isLoaded<forms::SetupSoftware>());
        comes("LoadFile");
        QVERIFY(!doors().chooseRun("Take", "Load Overlay File").has_value());
        QCOMPARE(form<forms::LoadFile>().windowTitle(), QStringLiteral("Load Overlay File"));
        QCOMPARE(
            control<QPushButton>(form<forms::LoadFile>(), "BTN_Ok").text(), QStringLiteral("Take"));
        comes("LoadFile");
        doors().chooseRunsToDelete("Delete File");
        QCOMPARE(form<forms::LoadFile>().windowTitle(), QStringLiteral("Delete File"));
    }

    // A run that was saved elsewhere, or not listed, is the choice of no row: back and forward of
    // the graph do not go on from the one before.
    void aFreshRunThatIsNotListedLeavesNoChoice() {
        forms::openDoors();
        QVERIFY(m_program->files.makeFolder("/kvo/Data").done);
        const std::vector<core::RunIndexEntry> rows{
            {"26111514.52d", "Sun 15 Nov 2026 Run: 1"}, {"26111515.10d", "Sun 15 Nov 2026 Run: 2"}};
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
        doors().refreshChooser(rows[0].FileName);
        QCOMPARE(library::runList().chosenRow(), 0);
        doors().refreshChooser("26111516.00d");
        QCOMPARE(library::runList().chosenRow(), -1);
        QVERIFY(!library::runList().canStep(1));
    }

    void theChooserGivesTheRunAndAFreshOneIsItsChoice() {
        forms::openDoors();
        QVERIFY(m_program->files.makeFolder("/kvo/Data").done);
        const std::vector<core::RunIndexEntry> rows{
            {"26111514.52d", "Sun 15 Nov 2026 Run: 1"}, {"26111515.10d", "Sun 15 Nov 2026 Run: 2"}};
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
        doors().refreshChooser(rows[0].FileName);
        onModal([](QWidget* modal) {
            QTest::keyClick(&control<QPushButton>(*modal, "BTN_Ok"), Qt::Key_Space);
        });
        const auto run = doors().chooseRun("Load", "Load Data File");
        QVERIFY(run.has_value());
        QCOMPARE(run->path, std::string("/kvo/Data/26111514.52d"));
        QCOMPARE(run->infoPath, std::string("/kvo/Data/26111514.52i"));
        QCOMPARE(run->fileName, rows[0].FileName);
        QCOMPARE(run->description, rows[0].Description);
    }

    void theOptionsOfTheGraphAreHarmlessWithoutOne() {
        forms::openDoors();
        doors().redrawGraph();
        doors().keepGraphOptions();
        QVERIFY(!isLoaded<forms::DataGraph>());
        onModal([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("Visible_Options"));
            QCOMPARE(control<QCheckBox>(*modal, "Check1(9)").text(), QStringLiteral("Boost"));
            QTest::keyClick(&control<QPushButton>(*modal, "Command1(0)"), Qt::Key_Space);
        });
        core::FromOne<std::string, 8> names;
        names[2] = "Boost";
        doors().showVisibleOptions(names);
        QVERIFY(!isLoaded<forms::Visible_Options>());
        onModal([](QWidget* modal) { modal->close(); });
        QVERIFY(!doors().chooseCustomScale({1000, 1000}).has_value());
    }

    void theStatisticsTakeTheGraphsTexts() {
        forms::openDoors();
        forms::GraphTexts texts;
        texts.times.Text_60FootTime = "1.234";
        onModal([](QWidget* modal) {
            QCOMPARE(control<QLabel>(*modal, "ET60").text(), QStringLiteral("1.234"));
            modal->close();
        });
        doors().showStatistics(texts);
        QVERIFY(!isLoaded<forms::Statistics>());
    }
};

KVO_FORM_TEST_MAIN(DoorsTest)
#include "doors_test.moc"
