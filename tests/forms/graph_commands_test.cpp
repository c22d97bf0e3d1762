// What the menus and the toolbar of the graph window open and change.
#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_info.h"
#include "library/run_list.h"
#include "platform/qt/form_kit.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphCommandsTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    // What the user does in the info form: times are typed and saved.
    void infoTakes(const core::RunInfo& info, std::string& caption) {
        doors().showInfo = [&, info](const std::string& path, const std::string& title) {
            caption = title;
            QVERIFY(!menuEnabled("Mnu_File"));
            QVERIFY(core::SaveRunInfo("/kvo", core::infoFilePath(path), path, info, files()).done);
        };
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void resolutionThinsTheCurves() {
        DataGraph& graph = open(32);
        const std::size_t fine = kept().memory();
        command("Resolution(8)").trigger();
        QCOMPARE(int(state().Config.G_Res), 8);
        QCOMPARE(
            part<QMenu>("Mnu_Resolution").title(), QStringLiteral("&Graph Resolution (Low)  "));
        QVERIFY(command("Resolution(8)").isChecked());
        QVERIFY(!command("Resolution(1)").isChecked());
        QVERIFY(kept().memory() <= fine);
        QCOMPARE(int(form<DataGraph>().view().GraphDirty), -1);
        QCOMPARE(trend().surface().upper().size(), 1U);
        Q_UNUSED(graph);
    }

    void whoOnlyLooksHasNoCommandThatWrites() {
        state().LookOnly = true;
        const DataGraph& graph = open(32);
        for (const char* name : {"Mnu_DeleteRun", "Mnu_ImportFiles(0)", "Mnu_ImportFiles(1)",
                 "Mnu_RedoClutch", "Mnu_TimeOffset"})
            QVERIFY2(!command(name).isEnabled(), name);
        for (const char* name : {"Mnu_LoadData", "Mnu_Overlay", "Mnu_Info", "Mnu_Statistics"})
            QVERIFY2(command(name).isEnabled(), name);
        QVERIFY(graph.windowTitle().endsWith(QStringLiteral(" - looking only")));
    }

    void aboutComesUpFromTheGraph() {
        open(32);
        testing::onModal([](QWidget* about) { pressIn(about, "Command1"); });
        command("Mnu_GraphFile").trigger();
        QVERIFY(menuEnabled("Mnu_File"));
        QVERIFY(menuEnabled("Mnu_Scale"));
    }

    void statisticsComeUpOnTheRun() {
        DataGraph& graph = open(32);
        testing::onModal([this, &graph](QWidget* statistics) {
            QCOMPARE(
                statistics->windowTitle(), QStringLiteral(" Statistics For : ") +
                                               QString::fromStdString(graph.caption()).mid(10));
            QCOMPARE(control<QLabel>(*statistics, "Txt_A(2)").text(),
                QString::fromStdString(state().Run.image.setup.AnalogName[2]));
            pressIn(statistics, "BUT_Close");
        });
        part<QToolButton>("Statistics").click();
        QVERIFY(menuEnabled("Mnu_File"));
    }

    void theConvertorComesOverTheWindow() {
        DataGraph& graph = open(32);
        bool asked = false;
        doors().openConversions = [&] {
            asked = true;
            QVERIFY(graph.isVisible());
            QVERIFY(!menuEnabled("Mnu_File"));
        };
        command("Convertor_Mnu").trigger();
        QVERIFY(asked);
        QVERIFY(menuEnabled("Mnu_File"));
    }

    void bothItemsOfTheImportOpenItsFormInTheirMode() {
        open(32);
        for (const char* item : {"Mnu_ImportFiles(0)", "Mnu_ImportFiles(1)"}) {
            QString caption;
            testing::onModal([&](QWidget* modal) {
                caption = modal->windowTitle();
                QVERIFY(!menuEnabled("Mnu_File"));
                pressIn(modal, "Butten_Cancel");
            });
            command(item).trigger();
            QCOMPARE(caption, item[16] == '0' ? QStringLiteral("Import Windows Data")
                                              : QStringLiteral("Import VRN Dos Data"));
            QVERIFY(menuEnabled("Mnu_File"));
        }
    }

    void helpOpensTheChapterOfTheGraphAndTheListOfKeys() {
        open(32);
        std::vector<forms::HelpPage> asked;
        forms::doors().showHelp = [&asked](forms::HelpPage page) { asked.push_back(page); };
        command("Mnu_HelpItem").trigger();
        command("Mnu_Keyboard").trigger();
        QCOMPARE(asked, (std::vector{forms::HelpPage::graph, forms::HelpPage::keyboard}));
    }

    void timesTypedInTheInfoStandInTheBoxes() {
        store(32, 1);
        openByChooser(taking(1));
        core::RunInfo info;
        const std::vector<std::pair<const char*, std::string core::RunInfo::*>> times{
            {"Text_60FootTime", &core::RunInfo::Text_60FootTime},
            {"Text_330FootTime", &core::RunInfo::Text_330FootTime},
            {"Text_660FootTime", &core::RunInfo::Text_660FootTime},
            {"Text_660FootSpeed", &core::RunInfo::Text_660FootSpeed},
            {"Text_1000FootTime", &core::RunInfo::Text_1000FootTime},
            {"Text_ET", &core::RunInfo::Text_ET}};
        for (const auto& [name, member] : times) info.*member = std::string("1.") + name[5];
        info.Text_ET = "7.31";
        std::string caption;
        infoTakes(info, caption);
        command("Mnu_Info").trigger();
        QCOMPARE(caption, "Info For :  " + core::baseName(pathOf(1)));
        QVERIFY(menuEnabled("Mnu_File"));
        for (const auto& [name, member] : times) QCOMPARE(text(name).toStdString(), info.*member);
        info.Text_ET = "7.44";
        infoTakes(info, caption);
        press("Info");
        QCOMPARE(text("Text_ET"), QStringLiteral("7.44"));
    }

    void theInfoIsOfTheRunUnderAnOverlay() {
        for (const int number : {1, 2}) store(32, number);
        openOverlaid();
        std::string caption;
        infoTakes({}, caption);
        command("Mnu_Info").trigger();
        QCOMPARE(caption, "Info For :  " + core::baseName(pathOf(2)) + "    ");
    }

    void timesTypedFromTheStatisticsStandInTheBoxes() {
        open(32);
        doors().showStatistics = [this](const GraphTexts&) { state().Run.times.Text_ET = "9.9"; };
        command("Mnu_Statistics").trigger();
        QCOMPARE(text("Text_ET"), QStringLiteral("9.9"));
    }

    // The window must not write back the rows that the file had before.
    void anImportOverTheShownRunIsShownAtOnce() {
        for (const int number : {1, 2}) store(32, number);
        openByChooser(taking(1));
        const auto imports = [this](int number, int rpm) {
            core::OpenRun other = loaded(pathOf(number));
            other.image.samples[500].EngineRpm = static_cast<std::int16_t>(rpm);
            other.path = pathOf(number);
            QVERIFY(core::SaveRun(other, state().AppFolder, files()));
        };
        const std::uint32_t before = kept().generation();
        doors().importRuns = [&](bool) {
            imports(2, 6666);
            return std::vector<std::string>{pathOf(2)};
        };
        command("Mnu_ImportFiles(0)").trigger();
        QCOMPARE(kept().generation(), before); // it is not on the graph
        doors().importRuns = [&](bool) {
            imports(1, 7777);
            return std::vector<std::string>{pathOf(2), pathOf(1)};
        };
        command("Mnu_ImportFiles(0)").trigger();
        QVERIFY(kept().generation() != before);
        QVERIFY(menuEnabled("Mnu_File"));
        clickAt(500);
        QCOMPARE(text("Rpm"), QStringLiteral("7777"));
    }
};

KVO_FORM_TEST_MAIN(GraphCommandsTest)
#include "graph_commands_test.moc"
