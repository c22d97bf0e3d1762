// The sets of colours of the graph window, chosen as a user does.
#include "core/default_config.h"
#include "graph/colour_schemes.h"
#include "graph/forms/channel_cell.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/user_click.h"

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphColoursTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    void ask(platform::Reply reply) {
        dialogs().expectBox("Some colours of the graph were chosen by hand. Replace them all?",
            platform::boxStyle::yesNo + platform::boxStyle::question, "Colours", reply);
    }
    // The window of a run in the usual colours, behind those of the test's own folder.
    void openDark() {
        open(32);
        ask(platform::Reply::yes);
        command("Mnu_Colours(0)").trigger();
    }
    QList<bool> checks() {
        QList<bool> all;
        for (const char* name : {"Mnu_Colours(0)", "Mnu_Colours(1)", "Mnu_Colours(2)"})
            all << command(name).isChecked();
        return all;
    }
    void key(Qt::Key one) {
        form<DataGraph>().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form<DataGraph>()));
        QTest::keyClick(&trend(), one, Qt::ControlModifier);
    }
    QColor ground() { return QColor::fromRgb(picture().pixel(700, 1)); }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void daylightIsDrawnAtOnceAndKept() {
        openDark();
        QCOMPARE(checks(), (QList<bool>{true, false, false}));
        command("Mnu_Colours(1)").trigger();
        QCOMPARE(ground(), QColor(Qt::white));
        QCOMPARE(checks(), (QList<bool>{false, true, false}));
        QCOMPARE(part<QLabel>("Rpm").palette().color(QPalette::Window), QColor(Qt::white));
        QCOMPARE(part<QLabel>("Rpm").palette().color(QPalette::WindowText), QColor(0xEB0000));
        QVERIFY(pixels(QColor(0xEB0000).rgb()) > 100);
        QCOMPARE(onTop(), 1U); // the time line stands again
        form<DataGraph>().close();
        QCOMPARE(graph::schemeOf(savedConfig()), graph::ColourScheme::daylight);
    }

    void theKeysChooseThem() {
        openDark();
        key(Qt::Key_2);
        QCOMPARE(graph::schemeOf(state().Config), graph::ColourScheme::daylight);
        key(Qt::Key_3);
        QCOMPARE(graph::schemeOf(state().Config), graph::ColourScheme::colourBlind);
        QCOMPARE(checks(), (QList<bool>{false, false, true}));
        key(Qt::Key_1);
        QCOMPARE(graph::schemeOf(state().Config), graph::ColourScheme::dark);
        QCOMPARE(ground(), QColor(Qt::black));
    }

    void coloursChosenByHandAreAskedFor() {
        openDark();
        dialogs().expectColour(0x123456);
        emit part<ValueLabel>("Rpm").doubleClicked();
        QCOMPARE(checks(), (QList<bool>{false, false, false}));
        ask(platform::Reply::no);
        command("Mnu_Colours(1)").trigger();
        QCOMPARE(int(state().Config.EngineColour), 0x123456);
        QCOMPARE(ground(), QColor(Qt::black));
        QCOMPARE(checks(), (QList<bool>{false, false, false}));
        ask(platform::Reply::yes);
        command("Mnu_Colours(1)").trigger();
        QCOMPARE(graph::schemeOf(state().Config), graph::ColourScheme::daylight);
        QCOMPARE(ground(), QColor(Qt::white));
    }

    void aGroundOfOnesOwnCountsToo() {
        openDark();
        chooseBackground(0x303030);
        QCOMPARE(checks(), (QList<bool>{false, false, false}));
        ask(platform::Reply::yes);
        command("Mnu_Colours(0)").trigger();
        QCOMPARE(checks(), (QList<bool>{true, false, false}));
        QCOMPARE(ground(), QColor(Qt::black));
    }

    void oneChangesAColourAfterwards() {
        openDark();
        command("Mnu_Colours(1)").trigger();
        dialogs().expectColour(0x123456);
        emit part<ValueLabel>("Rpm").doubleClicked();
        QCOMPARE(int(state().Config.EngineColour), 0x123456);
        QCOMPARE(int(state().Config.GraphBackColour), 0xFFFFFF);
    }

    void anOverlayTakesThemToo() {
        store(32, 1);
        store(32, 2);
        openOverlaid();
        ask(platform::Reply::yes);
        command("Mnu_Colours(1)").trigger();
        QCOMPARE(
            part<QLabel>("OverlayRpm").palette().color(QPalette::WindowText), QColor(0xEB0000));
        QCOMPARE(ground(), QColor(Qt::white));
    }

    void withoutARunTheyHold() {
        openByChooser(cancelling());
        ask(platform::Reply::yes);
        command("Mnu_Colours(1)").trigger();
        QCOMPARE(trend().surface().backColor(), platform::white);
        QCOMPARE(checks(), (QList<bool>{false, true, false}));
    }

    // --- How wide the curves are

    void curvesOfTwoAndThreePixels() {
        openDark();
        onlyChannel(channels::engineChannel);
        command("Mnu_LineWidth(1)").trigger(); // drawn anew: no other curve lies on it
        const QRgb engine = QColor(0xFF4444).rgb();
        const int thin = pixels(engine);
        QTest::keyClick(&trend(), Qt::Key_2);
        QCOMPARE(view().LineWidthPx, 2);
        QVERIFY(command("Mnu_LineWidth(2)").isChecked());
        const int two = pixels(engine);
        QVERIFY(two > thin * 4 / 3);
        command("Mnu_LineWidth(3)").trigger();
        QVERIFY(pixels(engine) > two);
        QCOMPARE(onTop(), 1U);
        QTest::keyClick(&trend(), Qt::Key_1);
        QCOMPARE(pixels(engine), thin);
        QVERIFY(command("Mnu_LineWidth(1)").isChecked());
    }

    void theWidthIsTheUsersAndNotTheFolders() {
        open(32);
        command("Mnu_LineWidth(3)").trigger();
        QCOMPARE(int(view().GraphDirty), 0);
        QCOMPARE(program().settings.list("LineWidth"), std::vector<std::string>{"3"});
        unload<DataGraph>();
        open(32);
        QCOMPARE(view().LineWidthPx, 3);
        QVERIFY(command("Mnu_LineWidth(3)").isChecked());
    }

    // With KVO_PICTURES naming a folder: what the sets look like.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        store(32, 1);
        store(32, 2);
        DataGraph& graph = openOverlaid({1366, 768});
        state().Config.OverlayStyle = 2;
        for (const int scheme : {0, 1, 2}) {
            if (scheme == 0) ask(platform::Reply::yes);
            command(qPrintable(QStringLiteral("Mnu_Colours(%1)").arg(scheme))).trigger();
            QVERIFY(graph.saveWindowPicture(
                QStringLiteral("%1/colours-%2.png").arg(folder).arg(scheme)));
        }
    }
};

KVO_FORM_TEST_MAIN(GraphColoursTest)
#include "graph_colours_test.moc"
