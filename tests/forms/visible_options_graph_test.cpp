// What the graph makes of Visible_Options: at once, with an overlay, while zoomed, and after a long
// way of changes the same picture as by the same settings from the start.
#include "channels/channels.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/options_form.h"

#include <random>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::testing;
using namespace kvo::platform_qt;

class VisibleOptionsGraphTest : public QObject, private testing::OptionsWindow {
    Q_OBJECT

    QImage panelPicture() {
        QCoreApplication::processEvents(); // the layout
        return part<QWidget>("Frame3").grab().toImage();
    }

    // One change that a user could make, and Apply.
    static void changeSomething(std::mt19937& random) {
        const auto below = [&random](int count) {
            return static_cast<int>(random() % static_cast<unsigned>(count));
        };
        const auto oneOf = [&below](const QList<int>& indexes) {
            return indexes.at(below(static_cast<int>(indexes.size())));
        };
        const int tab = below(4);
        goTo(tab);
        if (tab == 1) {
            if (below(8) == 0) return click(button("Command3"));
            const int channel = oneOf(seen<QLineEdit>("Text_Magnify", 0, 24));
            return type(magnify(channel), QString::number(below(51)));
        }
        if (tab == 2) {
            if (below(8) == 0) return click(button("Command3"));
            return pick(raise(oneOf(seen<QComboBox>("ComboScale", 0, 24))), below(11));
        }
        if (tab == 0 && below(6) == 0) {
            auto& all = item<QPushButton>(below(2) ? "EGTCommand" : "AnalogCommand", below(2));
            if (all.isVisible()) return click(all);
        }
        tick(oneOf(seen<QCheckBox>("Check1", tab == 0 ? 0 : 25, tab == 0 ? 24 : 49)));
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void aChannelIsDrawnLargerAndHigher() {
        testing::storeModelRun(state(), files(), 32);
        onlyChannel(channels::slipChannel);
        openFresh();
        const QImage before = picture();
        options([this, &before] {
            goTo(1);
            type(magnify(4), QStringLiteral("5"));
            click(apply());
            const QImage larger = picture();
            QVERIFY(larger != before);
            goTo(2);
            pick(raise(4), 10);
            click(apply());
            const QImage higher = picture();
            QVERIFY(higher != larger);
            QVERIFY(pixels(0xFFFF60FF, 1) > 0);
        });
    }

    void theOverlayIsDrawnAnewToo() {
        store(32, 1);
        store(32, 2);
        openOverlaid();
        QVERIFY(part<QLabel>("OverlayRpm").isEnabled());
        const auto strokes = [this] { return pixels(engineColour, 1); };
        const int both = strokes();
        options([&] {
            tick(0);
            click(apply());
            QCOMPARE(strokes(), 0);
            QVERIFY(!part<QLabel>("OverlayRpm").isEnabled());
            tick(0);
            click(apply());
            QCOMPARE(strokes(), both);
        });
        command("Mnu_Overlay").trigger();
        QVERIFY(strokes() < both);
    }

    void aZoomStaysAsItIs() {
        DataGraph& graph = open(32);
        for (int i = 0; i < 3; ++i) graph.commands().ZoomIn_Click();
        const QRect place = trend().geometry();
        options([&] {
            tick(0);
            wipe();
            click(apply());
            QCOMPARE(trend().geometry(), place);
            QCOMPARE(onTop(), 1U);
            QCOMPARE(pixels(engineColour, 1), 0);
        });
        QCOMPARE(int(state().Config.ScaleCustom), 4);
        QVERIFY(!menuEnabled("Mnu_Scale"));
        graph.commands().CancelZoom_Click();
        QVERIFY(menuEnabled("Mnu_Scale"));
    }

    void thePictureIsThatOfAFreshStart_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("seed");
        QTest::newRow("32") << 32 << 1;
        QTest::newRow("20") << 20 << 2;
        QTest::newRow("12") << 12 << 3;
    }
    void thePictureIsThatOfAFreshStart() {
        QFETCH(int, type);
        QFETCH(int, seed);
        store(type, 1);
        store(type, 2);
        openOverlaid();
        std::mt19937 random(static_cast<unsigned>(seed));
        for (int session = 0; session < 4; ++session) {
            options([&random] {
                for (int change = 0; change < 25; ++change) {
                    changeSomething(random);
                    if (apply().isEnabled()) click(apply());
                }
            });
        }
        const QImage walked = picture();
        const QImage walkedPanel = panelPicture();
        const core::AppConfig config = state().Config;
        QCOMPARE(end(), QString());
        begin();
        store(type, 1);
        store(type, 2);
        QVERIFY(config != state().Config);
        state().Config = config;
        openOverlaid();
        QCOMPARE(state().Config, config);
        QCOMPARE(picture(), walked);
        QCOMPARE(panelPicture(), walkedPanel);
    }
};

KVO_FORM_TEST_MAIN(VisibleOptionsGraphTest)
#include "visible_options_graph_test.moc"
