// The graph window with a second run over the first, and all its commands one behind another.
#include "core/config.h"
#include "core/data_types.h"
#include "core/paths.h"
#include "core/run_info.h"
#include "graph/forms/channel_cell.h"
#include "graph/forms/read_out_line.h"
#include "library/run_list.h"
#include "link/forms/download_data.h"
#include "link/forms/logger_line.h"
#include "mainwin/main_window.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <QPushButton>
#include <QToolButton>

#include <array>
#include <optional>
#include <vector>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;
using platform::Reply;

namespace {

constexpr std::array<int, 7> allTypes{8, 12, 17, 20, 25, 32, 43};
// Curves of an overlay on a motorcycle with every channel on.
int curvesOf(int type, int runType) {
    using enum core::Exhausts;
    const core::Exhausts kind = core::exhaustsOf(type);
    int exhausts = kind == none ? 0 : 8;
    // The run's type decides how they are read: no row of another type names more than the first.
    if (kind == own && core::exhaustsOf(runType) == timeShared) exhausts = 1;
    return 9 + core::analogsOf(type) + exhausts;
}

} // namespace

class DataGraphOverlayTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    // Run 2 of a type with run 1 of another type over it.
    DataGraph& overlaid(int runType, int overlayType) {
        store(overlayType, 1);
        store(runType, 2);
        return openOverlaid();
    }
    void storeAllTypes() {
        for (std::size_t i = 0; i < allTypes.size(); ++i)
            store(allTypes[i], static_cast<int>(i) + 1);
        state().Config.Vehicle_Type = 2;
        state().Config.OverlayColours = 1;
    }
    QString overlayText(const char* name, int n) {
        return text(QByteArray(name + QByteArray("(") + QByteArray::number(n) + ")").constData());
    }
    // Which of the labels have a text is the type's matter, which text the sample's.
    void labelsAreThoseOfTheOverlay(int sample) {
        const core::OpenRun& run = state().Overlay;
        const core::RunSample& row = run.image.samples[sample];
        QCOMPARE(text("OverlayRpm"), QString::number(row.EngineRpm));
        QCOMPARE(text("OverlayInputRpm"), QString::number(row.InputRpm));
        QCOMPARE(text("OverlayOutputRpm"), QString::number(row.OutputRpm));
        int exhausts = 0;
        for (int n = 1; n <= 8; ++n) {
            QCOMPARE(
                !overlayText("OverlayAnalog", n).isEmpty(), n <= core::analogsOf(run.DataType));
            if (!overlayText("OverlayExhaust", n).isEmpty()) ++exhausts;
        }
        const core::Exhausts kind = core::exhaustsOf(run.DataType);
        // A sample of a time-shared type names one.
        const int expected = kind == core::Exhausts::own ? 8 : kind == core::Exhausts::none ? 0 : 1;
        QCOMPARE(exhausts, expected);
    }
    struct Look {
        std::size_t operations;
        QMap<QString, QString> texts;
        QImage picture;
    };
    void connectLogger(int type) {
        state().Config.CommPort = 1;
        state().Config.CheckBits = {0, -1};
        state().Config.Date_Prompt = 1;
        state().Config.SpeedWheel_Prompt = 1;
        state().Config.Wheel = 22;
        program().putConfig();
        m_logger.emplace(type);
        m_line.emplace(*m_logger);
        m_link.emplace(*m_line, *m_line, dialogs());
        forms::useLoggerLink(&*m_link);
    }
    // The run comes over the wire and is looked at at once.
    void downloads() {
        auto& window = form<VrnWin32>();
        window.show();
        dialogs().expectInputTitled("Run Title", "7 Final");
        dialogs().expectBoxTitled("Download Saved", Reply::yes);
        testing::onModal([](QWidget*) {
            QCOMPARE(
                testing::userClick(&control<QPushButton>(form<DownloadData>(), "Command_Send")),
                QString());
        });
        control<QAction>(window, "Mnu_DownloadData").trigger();
        QVERIFY(isLoaded<DataGraph>());
        QVERIFY(!window.isVisible());
    }
    void deletesTheShownRun() {
        const QString name = QString::fromStdString(state().Run.path).right(12);
        dialogs().expectBoxTitled("Warning", Reply::yes);
        testing::onModal([name](QWidget* chooser) {
            QCOMPARE(QString::fromStdString(library::runList().chosen().FileName), name);
            pressIn(chooser, "BTN_Ok");
            pressIn(chooser, "BTN_Cancel");
        });
        command("Mnu_DeleteRun").trigger();
    }

    std::optional<simulator::ModelLogger> m_logger;
    std::optional<testing::VirtualLine> m_line;
    std::optional<link::LoggerLink> m_link;
    Look look() { return {kept().size(), texts(), trend().picture({400, 300})}; }

private slots:
    void init() { begin(); }
    void cleanup() {
        const QString problems = end();
        forms::useLoggerLink(nullptr);
        m_link.reset();
        m_line.reset();
        m_logger.reset();
        QCOMPARE(problems, QString());
    }

    // The progress of a long load paints the window before it has had its next events.
    void valuesAreWholeAsSoonAsTheyStand() {
        for (const int width : {1024, 1366, 1920}) {
            store(32, 1);
            store(32, 2);
            DataGraph& graph = openByChooser(taking(2), {width, 768});
            onModal(taking(1));
            command("Mnu_Overlay").trigger();
            for (const auto* label : graph.findChildren<ValueLabel*>()) {
                if (!label->isVisible() || label->text().isEmpty()) continue;
                QVERIFY2(label->contentsRect().width() >=
                             label->fontMetrics().horizontalAdvance(label->text()),
                    qPrintable(label->objectName()));
            }
            unload<DataGraph>();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    void theBackgroundDrawsBothRunsAnew() {
        overlaid(32, 32);
        const std::size_t all = kept().size();
        const std::uint32_t before = kept().generation();
        chooseBackground(0x404040U);
        QVERIFY(kept().generation() != before);
        QCOMPARE(kept().size(), all);
        QCOMPARE(onTop(), 1U);
    }

    void aToggleWorksOnBothRuns() {
        overlaid(32, 32);
        const std::size_t all = kept().size();
        press("Label10(0)");
        QCOMPARE(kept().size(), all - 2);
        QCOMPARE(onTop(), 1U);
        for (const char* name : {"Rpm", "OverlayRpm"}) QVERIFY(!part<QWidget>(name).isEnabled());
        press("Label10(0)");
        QCOMPARE(kept().size(), all);
        QCOMPARE(onTop(), 1U);
        for (const char* name : {"Rpm", "OverlayRpm"}) QVERIFY(part<QWidget>(name).isEnabled());
    }

    void aDoubleClickDrawsTheOverlaysChannelToo() {
        overlaid(32, 32);
        const std::size_t all = kept().size();
        state().Config.OverlayColours = 1;
        dialogs().expectColour(0x123456U);
        QTest::mouseDClick(&part<QWidget>("InputRpm"), Qt::LeftButton);
        QCOMPARE(kept().size(), all + 2);
        QCOMPARE(part<QWidget>("OverlayInputRpm").palette().color(QPalette::WindowText),
            QColor(0xFF - 0x56, 0xFF - 0x34, 0xFF - 0x12));
    }

    // One channel alone has the same pixels drawn on top as in a picture from its beginning.
    void theOverlayKeepsItsLineStyle() {
        overlaid(32, 32);
        onlyChannel(channels::engineChannel);
        state().Config.OverlayColours = 1;
        command("Resolution(1)").trigger();
        const QImage solid = picture();
        state().Config.OverlayStyle = 2;
        command("Resolution(1)").trigger();
        const QImage dotted = picture();
        QVERIFY(dotted != solid);
        for (int i = 0; i < 2; ++i) press("Label10(0)");
        QCOMPARE(picture(), dotted);
        dialogs().expectColour(0x123456U);
        QTest::mouseDClick(&part<QWidget>("Rpm"), Qt::LeftButton);
        const QImage coloured = picture();
        command("Resolution(1)").trigger();
        QCOMPARE(picture(), coloured);
        QVERIFY(coloured != dotted);
    }

    void aDeleteEmptiesTheWindowAndTakesTheOverlayOff() {
        store(32, 1);
        store(32, 2);
        core::RunInfo info;
        info.Text_ET = "7.31";
        QVERIFY(core::SaveRunInfo(
            "/kvo", core::infoFilePath(state().Run.path), state().Run.path, info, files()));
        DataGraph& graph = openOverlaid();
        QCOMPARE(text("Text_ET"), QStringLiteral("7.31"));
        dialogs().expectBoxTitled("Warning", platform::Reply::yes);
        testing::onModal([](QWidget* chooser) {
            taking(2)(chooser);
            pressIn(chooser, "BTN_Cancel");
        });
        command("Mnu_DeleteRun").trigger();
        QVERIFY(!graph.hasRun());
        QCOMPARE(int(view().OverlayLoaded), 0);
        const QMap<QString, QString> shown = texts();
        for (auto label = shown.begin(); label != shown.end(); ++label)
            QVERIFY2(label.value().isEmpty(), qPrintable(label.key()));
        QCOMPARE(text("Text_ET"), QString());
        QCOMPARE(text("Label_DataChanel"), QString());
        QCOMPARE(dialogs().beeps(), 0);
        QCOMPARE(graph.windowTitle(), QStringLiteral("Data Graph"));
        QCOMPARE(command("Mnu_Overlay").text(), QStringLiteral("Overlay Data File"));
        QCOMPARE(part<QToolButton>("OverlayData").text(), QStringLiteral("Overlay"));
        QVERIFY(!command("Mnu_Overlay").isEnabled());
        QVERIFY(kept().empty());
        QCOMPARE(onTop(), 0U);
        // The panel is that of a window without an overlay again.
        QVERIFY(part<QWidget>("Text_ET").isVisible());
        testing::onModal(taking(1));
        command("Mnu_LoadData").trigger();
        QVERIFY(graph.hasRun());
        QCOMPARE(onTop(), 1U);
    }

    void aZoomAndItsEndDrawBothRuns() {
        DataGraph& graph = overlaid(32, 32);
        const std::size_t all = kept().size();
        for (const auto change : {&GraphCommands::ZoomIn_Click, &GraphCommands::ZoomOut_Click,
                 &GraphCommands::CancelZoom_Click}) {
            const std::uint32_t before = kept().generation();
            (graph.commands().*change)();
            QVERIFY(kept().generation() != before);
            QCOMPARE(kept().size(), all);
            QCOMPARE(onTop(), 1U);
        }
    }

    void aCancelledOverlayGivesLineAndKeysBack() {
        store(32, 1);
        store(32, 2);
        DataGraph& graph = openByChooser(taking(2));
        const std::string caption = graph.caption();
        part<QWidget>("ZoomIn").setFocus();
        testing::onModal([this](QWidget* chooser) {
            wipe();
            pressIn(chooser, "BTN_Cancel");
        });
        command("Mnu_Overlay").trigger();
        QCOMPARE(onTop(), 1U);
        QVERIFY(graph.focusWidget() == &trend());
        QCOMPARE(graph.caption(), caption);
        QVERIFY(command("Mnu_TimeOffset").isEnabled());
    }

    void anOverlayEndsBehindItsLastRow() {
        store(25, 1);
        store(32, 2);
        onlyChannel(channels::engineChannel);
        state().Config.OverlayColours = 1;
        state().Config.EngineColour = 0x302010;
        openOverlaid();
        const QRgb inverted = qRgb(0xFF - 0x10, 0xFF - 0x20, 0xFF - 0x30);
        // Its last row, 1213, lies 80 samples further right.
        QVERIFY(pixels(inverted, 1280) > 0);
        QCOMPARE(pixels(inverted, 1295), 0);
        clickAt(500);
        QCOMPARE(text("OverlayRpm"), QString::number(state().Overlay.image.samples[420].EngineRpm));
        clickAt(1300);
        QCOMPARE(text("Rpm"), QString::number(state().Run.image.samples[1300].EngineRpm));
        for (const QLabel* label : part<QWidget>("Frame3").findChildren<ValueLabel*>()) {
            if (label->objectName().startsWith(QLatin1String("Overlay")))
                QVERIFY2(label->text().isEmpty(), qPrintable(label->objectName()));
        }
    }

    void aShorterOverlayShowsNothingOfALongerOne() {
        store(25, 1);
        store(32, 2);
        store(43, 3);
        openByChooser(taking(2));
        overlay(3);
        clickAt(1300);
        QVERIFY(!text("OverlayRpm").isEmpty());
        command("Mnu_Overlay").trigger();
        overlay(1);
        QCOMPARE(text("OverlayRpm"), QString());
        QCOMPARE(text("OverlayExhaust(8)"), QString());
        QCOMPARE(part<ChannelToggle>("Text_Analog(1)").caption().trimmed(), QStringLiteral("Oil"));
    }

    void aRefusedOverlayLeavesNoNameBehind() {
        store(32, 1);
        store(32, 2);
        DataGraph& graph = openByChooser(taking(2));
        const QString title = graph.windowTitle();
        files().put("/kvo/Data/24060512.31d", {3, 0, '2', '3', ' '});
        dialogs().expectBox("Not a Kvo Data File", 48, "Kvo");
        testing::onModal(taking(1));
        command("Mnu_Overlay").trigger();
        QCOMPARE(graph.windowTitle(), title);
        QCOMPARE(part<QToolButton>("OverlayData").text(), QStringLiteral("Overlay"));
        QCOMPARE(onTop(), 1U);
        QVERIFY(part<QWidget>("Text_ET").isVisible());
    }

    void theLoadingPanelNamesTheFileThatItDraws() {
        overlaid(32, 32);
        QCOMPARE(text("LoadingText"), QStringLiteral("Overlaying:"));
        QCOMPARE(text("LoadingFile"), QStringLiteral("24060512.31d"));
        command("Resolution(4)").trigger();
        QCOMPARE(text("LoadingText"), QStringLiteral("Overlaying:"));
        QCOMPARE(text("LoadingFile"), QStringLiteral("24060512.31d"));
        command("Mnu_Overlay").trigger();
        QCOMPARE(text("LoadingText"), QStringLiteral("Loading:"));
        QCOMPARE(text("LoadingFile"), QStringLiteral("24060512.32d"));
        QVERIFY(!part<QWidget>("LoadingFrame").isVisible());
        // One that took long is taken away behind the drawing.
        auto& line = part<ReadOutLine>("ReadOuts");
        line.startLoading({}, {});
        QTest::qSleep(120);
        line.setProgress(1);
        QVERIFY(part<QWidget>("LoadingFrame").isVisible());
        command("Resolution(4)").trigger();
        QVERIFY(!part<QWidget>("LoadingFrame").isVisible());
    }

    // --- Every type with every other

    void everyTypeLiesOverEveryType_data() {
        QTest::addColumn<int>("number");
        for (std::size_t i = 0; i < allTypes.size(); ++i)
            QTest::addRow("%d", allTypes[i]) << static_cast<int>(i) + 1;
    }
    void everyTypeLiesOverEveryType() {
        QFETCH(int, number);
        storeAllTypes();
        openByChooser(taking(number));
        const int zero = state().Run.image.tail.TimeOffset;
        // The run's own bars are drawn another time with the overlay's.
        const std::size_t alone = kept().size();
        const QImage picture = trend().picture({400, 300});
        for (std::size_t i = 0; i < allTypes.size(); ++i) {
            overlay(static_cast<int>(i) + 1);
            QCOMPARE(kept().size(),
                alone + 1 + static_cast<std::size_t>(curvesOf(allTypes[i], state().Run.DataType)));
            const int own = state().Overlay.image.tail.TimeOffset;
            labelsAreThoseOfTheOverlay(own);
            // The engine's curve is found wherever the run's own curves leave room for it.
            int found = 0;
            for (int j = own + 100; j < own + 400; j += 20) {
                const int rpm = state().Overlay.image.samples[j].EngineRpm;
                pointAt(static_cast<float>(j - own + zero), static_cast<float>(rpm) / 10);
                const QString hit = QStringLiteral(" Overlay Engine Rpm = %1").arg(rpm);
                if (text("Label_DataChanel") == hit) ++found;
            }
            QVERIFY(found > 0 || static_cast<int>(i) + 1 == number);
            command("Mnu_Overlay").trigger();
            QCOMPARE(kept().size(), alone);
            QCOMPARE(trend().picture({400, 300}), picture);
        }
    }

    // Walks through every ordered pair of types; each overlay must look as if it were the first.
    void anOverlayTakesNothingFromTheOneBefore() {
        storeAllTypes();
        store(32, 8);
        state().Config.Vehicle_Type = 2;
        state().Config.OverlayColours = 1;
        std::vector<Look> first;
        for (int number = 1; number <= 7; ++number) {
            openByChooser(taking(8));
            overlay(number);
            first.push_back(look());
            unload<DataGraph>();
        }
        openByChooser(taking(8));
        std::vector<int> walk;
        for (int i = 1; i <= 7; ++i) {
            walk.push_back(i);
            for (int j = i + 1; j <= 7; ++j) walk.insert(walk.end(), {i, j});
        }
        walk.push_back(walk.front());
        for (const int number : walk) {
            overlay(number);
            const Look again = look();
            const Look& wanted = first[static_cast<std::size_t>(number - 1)];
            QCOMPARE(again.operations, wanted.operations);
            QCOMPARE(again.texts, wanted.texts);
            QCOMPARE(again.picture, wanted.picture);
            command("Mnu_Overlay").trigger();
        }
    }

    // --- All commands one behind another

private:
    void laysTheFreshRunOver(const std::string& fresh) {
        dialogs().expectBoxTitled("Overlay", Reply::yes);
        testing::onModal(takingFile(core::baseName(fresh)));
        press("OverlayData");
        QCOMPARE(state().Overlay.path, fresh);
        QVERIFY(!command("Mnu_TimeOffset").isEnabled());
        const std::size_t all = kept().size();
        press("Label10(2)");
        QCOMPARE(kept().size(), all - 2);
        press("ZoomIn");
        press("ZoomIn");
        QCOMPARE(kept().size(), all - 2);
        QVERIFY(part<QWidget>("HScroll").isVisible());
        press("CancelZoom");
        QVERIFY(!part<QWidget>("HScroll").isVisible());
        QCOMPARE(onTop(), 1U);
        press("OverlayData");
        QVERIFY(command("Mnu_TimeOffset").isEnabled());
    }

    // The next start finds what was left.
    void startsAgain() {
        unloadAllForms();
        state() = {};
        library::runList() = {};
        state().AppFolder = "/kvo";
        state().ConfigKnown = core::LoadConfig("/kvo", state().Config, files()).whole();
        QVERIFY(state().ConfigKnown);
        form<VrnWin32>().show();
        testing::onModal(taking(1));
        control<QAction>(form<VrnWin32>(), "Mnu_ViewRun").trigger();
        show();
        QCOMPARE(library::runList().rowCount(), 2);
        QCOMPARE(state().Run.path, pathOf(1));
        QCOMPARE(int(view().CursorSample), 260);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 0.00 sec"));
        QVERIFY(!part<QWidget>("InputRpm").isEnabled());
        QVERIFY(!part<ChannelToggle>("Label10(2)").isChecked());
        QVERIFY(part<ChannelToggle>("Label10(0)").isChecked());
        QVERIFY(!part<QToolButton>("CancelZoom").isEnabled());
        QCOMPARE(int(view().OverlayLoaded), 0);
    }

private slots:
    void aWholeEveningAtTheStrip() {
        store(32, 1);
        store(25, 2);
        connectLogger(25);
        downloads();
        if (QTest::currentTestFailed()) return;
        DataGraph& graph = show();
        const std::string fresh = state().Run.path;
        QCOMPARE(fresh, std::string("/kvo/Data/26111514.42d"));
        QCOMPARE(onTop(), 1U);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 0.00 sec"));
        // It is the last in the list.
        QVERIFY(!part<QToolButton>("NextData").isEnabled());
        press("PreviousData");
        QCOMPARE(state().Run.path, pathOf(1));

        laysTheFreshRunOver(fresh);
        if (QTest::currentTestFailed()) return;

        dialogs().expectBoxTitled("Info", Reply::yes);
        dialogs().expectInputTitled("Graph Time Offset", "100");
        command("Mnu_TimeOffset").trigger();
        QCOMPARE(int(loaded(pathOf(1)).image.tail.TimeOffset), 260);
        // The chooser's list was left on the overlay's row.
        QVERIFY(!part<QToolButton>("NextData").isEnabled());
        testing::onModal(takingFile(core::baseName(fresh)));
        press("LoadData");
        QCOMPARE(state().Run.path, fresh);
        deletesTheShownRun();
        QVERIFY(!graph.hasRun());
        QVERIFY(!files().exists(fresh));
        testing::onModal(taking(2));
        press("LoadData");
        QCOMPARE(state().Run.path, pathOf(2));
        QVERIFY(kept().size() > 40);
        graph.close();
        QVERIFY(form<VrnWin32>().isVisible());

        startsAgain();
    }

    // Its curves are drawn last and cover the run's, pixel for pixel.
    void aRunOverItselfLiesOnItsOwnCurves() {
        store(25, 1);
        state().Config.OverlayStyle = 0;
        state().Config.OverlayColours = 0;
        openByChooser(taking(1));
        wipe();
        const auto curves = [this] { // below the bars, which an overlay has its own of
            const QImage all = picture();
            return all.copy(0, 80, all.width(), all.height() - 80);
        };
        const QImage alone = curves();
        QVERIFY(pixels(platform::rgb32(
                    static_cast<platform::Colour>(state().Config.EngineColour))) > 500);
        overlay(1);
        wipe();
        QCOMPARE(curves(), alone);
        // The other way round it is seen.
        state().Config.OverlayColours = 1;
        command("Resolution(4)").trigger();
        wipe();
        QVERIFY(curves() != alone);
    }
};

KVO_FORM_TEST_MAIN(DataGraphOverlayTest)
#include "data_graph_overlay_test.moc"
