// The channels of the graph window: toggles, colours and the background.
#include "core/forms/doors.h"
#include "graph/forms/channel_panel.h"
#include "platform/qt/form_kit.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphChannelsTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    void looksOff(const char* name) {
        const auto& label = part<ValueLabel>(name);
        QVERIFY2(!label.isEnabled(), name);
        QCOMPARE(label.backgroundRole(), QPalette::Button);
    }

    void looksOn(const char* name, QColor ground) {
        const auto& label = part<ValueLabel>(name);
        QVERIFY2(label.isEnabled(), name);
        QCOMPARE(label.backgroundRole(), QPalette::Window);
        QCOMPARE(label.palette().color(QPalette::Window), ground);
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void toggleSwitchesAChannel() {
        DataGraph& graph = open(32);
        const std::size_t all = kept().size();
        press("Label10(0)");
        QCOMPARE(int(state().Config.EngineVisible), 0);
        QCOMPARE(kept().size(), all - 1);
        QVERIFY(!part<QLabel>("Rpm").isEnabled());
        QVERIFY(!part<ChannelToggle>("Label10(0)").isChecked());
        QCOMPARE(int(form<DataGraph>().view().GraphDirty), -1);
        const std::uint32_t generation = kept().generation();
        press("Label10(0)");
        QCOMPARE(int(state().Config.EngineVisible), -1);
        QCOMPARE(kept().size(), all);
        QCOMPARE(kept().generation(), generation); // drawn on top, not anew
        QVERIFY(part<QLabel>("Rpm").isEnabled());
        QCOMPARE(trend().surface().upper().size(), 1U);
        QVERIFY(graph.focusWidget() == &trend());
    }

    void everyChannelHasAToggleThatWorks() {
        open(43);
        for (int channel = 0; channel < channels::channelCount; ++channel) {
            const bool car = state().Config.Vehicle_Type == 1;
            if (car && channel == channels::clutchChannel) continue;
            const channels::ControlName& name = channels::channelFacts(channel).toggle;
            QByteArray object(name.name.data(), static_cast<qsizetype>(name.name.size()));
            if (name.index >= 0) object += "(" + QByteArray::number(name.index) + ")";
            press(object);
            QVERIFY2(!channels::channelOn(state().Config, channel), object);
        }
        // What is left are the grid and the bars.
        QVERIFY(kept().size() < 60);
    }

    void channelTakesAColourByDoubleClick() {
        open(32);
        dialogs().expectColour(0x00FF00U);
        QTest::mouseDClick(&part<QWidget>("Rpm"), Qt::LeftButton);
        QCOMPARE(state().Config.EngineColour, 0x00FF00);
        QCOMPARE(part<QLabel>("Rpm").palette().color(QPalette::WindowText), QColor(0, 255, 0));
        dialogs().expectColour(std::nullopt);
        QTest::mouseDClick(&part<QWidget>("Rpm"), Qt::LeftButton);
        QCOMPARE(state().Config.EngineColour, 0x00FF00);
        dialogs().expectColour(0U);
        dialogs().expectBox("You can't have the same colour as the graph background.",
            platform::boxStyle::critical, "Error");
        QTest::mouseDClick(&part<QWidget>("Rpm"), Qt::LeftButton);
        QCOMPARE(state().Config.EngineColour, 0x00FF00);
    }

    void backgroundTurnsAnEqualChannelAround() {
        open(32);
        const std::int32_t engine = state().Config.EngineColour;
        dialogs().expectColour(static_cast<platform::Colour>(engine));
        command("Graph_Colour_Invert").trigger();
        QCOMPARE(state().Config.GraphBackColour, engine);
        QCOMPARE(state().Config.EngineColour, 0xFFFFFF);
        QCOMPARE(part<QLabel>("Rpm").palette().color(QPalette::WindowText), QColor(Qt::white));
        dialogs().expectColour(0xFFFFFFU);
        command("Graph_Colour_Invert").trigger();
        QCOMPARE(state().Config.EngineColour, 0);
        QCOMPARE(trend().surface().backColor(), 0xFFFFFFU);
    }

    void coloursAreSavedWithTheWindow() {
        DataGraph& graph = open(32);
        dialogs().expectColour(0x00FF00U);
        QTest::mouseDClick(&part<QWidget>("Rpm"), Qt::LeftButton);
        QCOMPARE(int(view().GraphDirty), -1);
        graph.close();
        QCOMPARE(savedConfig().EngineColour, 0x00FF00);
    }

    void theBackgroundIsSavedWithTheWindow() {
        DataGraph& graph = open(32);
        chooseBackground(0x404040U);
        QCOMPARE(int(view().GraphDirty), -1);
        graph.close();
        QCOMPARE(savedConfig().GraphBackColour, 0x404040);
    }

    void anOffChannelKeepsTheGroundOfTheDesktop() {
        open(32);
        press("Label10(0)");
        for (const char* name : {"Rpm", "OverlayRpm"}) looksOff(name);
        chooseBackground(0x404040U);
        for (const char* name : {"Rpm", "OverlayRpm"}) looksOff(name);
        for (const char* name : {"InputRpm", "OverlayInputRpm", "Exhaust(8)"})
            looksOn(name, QColor(0x40, 0x40, 0x40));
        press("Label10(0)");
        for (const char* name : {"Rpm", "OverlayRpm"}) looksOn(name, QColor(0x40, 0x40, 0x40));
    }

    void aWindowOpensWithTheChannelsAsTheyAreStored() {
        testing::storeModelRun(state(), files(), 32);
        state().Config.EngineVisible = 0;
        state().Config.ExhaustVisible[8] = 0;
        openFresh();
        for (const char* name : {"Rpm", "Exhaust(8)"}) looksOff(name);
        QVERIFY(!part<ChannelToggle>("Label10(0)").isChecked());
        looksOn("InputRpm", Qt::black);
        QCOMPARE(part<QWidget>("InputRpm").palette().color(QPalette::WindowText),
            QColor(0x40, 0xFF, 0x40));
    }

    void aDoubleClickDrawsTheChannelOnTop() {
        DataGraph& graph = open(32);
        const std::size_t all = kept().size();
        dialogs().expectColour(0x123456U);
        QTest::mouseDClick(&part<QWidget>("InputRpm"), Qt::LeftButton);
        QCOMPARE(kept().size(), all + 1);
        QVERIFY(pixels(qRgb(0x56, 0x34, 0x12)) > 1000);
        QCOMPARE(onTop(), 1U);
        // A channel that is off takes its colour and draws it another time.
        press("Label10(2)");
        dialogs().expectColour(0x345678U);
        graph.channels().Value_DblClick(channels::inputChannel);
        QCOMPARE(kept().size(), all - 1);
        QCOMPARE(state().Config.InputColour, 0x345678);
    }
};

KVO_FORM_TEST_MAIN(GraphChannelsTest)
#include "graph_channels_test.moc"
