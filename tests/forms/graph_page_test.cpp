// The tab "Graph" of the setup form, through its real widgets in the form.
#include "setup/forms/graph_page.h"

#include "core/config.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "setup/forms/setup_software.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::SetupSoftware;

class GraphPageTest : public QObject {
    Q_OBJECT

    static constexpr int magnifyTab = 0;
    static constexpr int raiseTab = 1;

    template <class W> static W& part(const char* name) {
        return control<W>(form<SetupSoftware>(), name);
    }
    template <class W> static W& item(const char* array, int index) {
        return part<W>((QByteArray(array) + '(' + QByteArray::number(index) + ')').constData());
    }
    static QLineEdit& magnify(int channel) { return item<QLineEdit>("Text_Magnify", channel); }
    static QComboBox& raise(int channel) { return item<QComboBox>("ComboScale", channel); }

    static void click(const char* name) { QCOMPARE(userClick(&part<QWidget>(name)), QString()); }
    static void goTo(const char* strip, int tab) {
        auto& tabs = part<QTabBar>(strip);
        QCOMPARE(userClick(&tabs, tabs.tabRect(tab).center()), QString());
    }
    // Takes an entry of a list and leaves it, as the rules of model and vehicle want it.
    static void pick(const char* name, int index) {
        auto& list = part<QComboBox>(name);
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Home);
        for (int i = 0; i < index; ++i) QTest::keyClick(&list, Qt::Key_Down);
        QTest::keyClick(&list, Qt::Key_Tab);
        QCOMPARE(list.currentIndex(), index);
    }
    static void type(QLineEdit& into, const QString& text) {
        into.setFocus();
        into.selectAll();
        QTest::keyClicks(&into, text);
    }

    template <class W> static QList<int> seen(const char* array, int first, int last) {
        QList<int> indexes;
        for (int i = first; i <= last; ++i)
            if (item<W>(array, i).isVisible()) indexes << i;
        return indexes;
    }
    static QList<int> labels() { return seen<QLabel>("Label_Magnify", 0, 24); }
    static QList<int> magnified() { return seen<QLineEdit>("Text_Magnify", 0, 24); }
    static QList<int> raised() { return seen<QComboBox>("ComboScale", 0, 24); }
    static QList<int> from(int first, int last) {
        QList<int> indexes;
        for (int i = first; i <= last; ++i) indexes << i;
        return indexes;
    }

    std::unique_ptr<TestProgram> m_program;

    core::AppConfig& config() { return m_program->state.Config; }
    // The form on its tab "Graph", as the configuration has it.
    void open() {
        form<SetupSoftware>().show();
        QVERIFY(QTest::qWaitForWindowActive(&form<SetupSoftware>()));
        goTo("TabStrip1", 1);
    }
    core::AppConfig saved() {
        core::AppConfig read;
        if (!core::decodeConfig(*m_program->files.read("/kvo/Kvo.Cfg"), read)) qFatal("no file");
        return read;
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        config() = core::defaultConfig();
        config().Vehicle_Type = 0;
        forms::doors().loadLogo = [] {};
    }
    void cleanup() {
        unload<SetupSoftware>();
        const std::string problems = m_program->dialogs.problems();
        m_program.reset();
        QVERIFY2(problems.empty(), problems.c_str());
        QCOMPARE(modalComplaints(), QString());
    }

    // --- The lists

    void theListsShowAndTakeTheLook() {
        config().G_Res = 4;
        config().MaxRpm = 11;
        config().Exhaust = -1;
        config().GridStyle = 3;
        config().OverlayStyle = 4;
        config().OverlayColours = 1;
        open();
        QCOMPARE(part<QComboBox>("G_Res").currentText(), QStringLiteral("Med"));
        QCOMPARE(part<QComboBox>("MaxRpm").currentText(), QStringLiteral("17000"));
        QCOMPARE(part<QComboBox>("Exhaust").currentText(), QStringLiteral("Deg F"));
        QCOMPARE(part<QComboBox>("GridStyle").currentText(), QStringLiteral("Dash Dot Dash"));
        QCOMPARE(part<QComboBox>("OverlayStyle").currentText(), QStringLiteral("Dash Dot Dot"));
        QCOMPARE(
            part<QComboBox>("OverlayColours").currentText(), QStringLiteral("Invert of Graph"));
        pick("G_Res", 2);
        pick("MaxRpm", 0);
        pick("Exhaust", 0);
        pick("GridStyle", 1);
        pick("OverlayStyle", 0);
        pick("OverlayColours", 0);
        click("SaveSetup");
        const core::AppConfig now = saved();
        QCOMPARE(int(now.G_Res), 8);
        QCOMPARE(int(now.MaxRpm), 0);
        QCOMPARE(int(now.Exhaust), 0);
        QCOMPARE(int(now.GridStyle), 1);
        QCOMPARE(int(now.OverlayStyle), 0);
        QCOMPARE(int(now.OverlayColours), 0);
    }

    void whatNoListHasStaysAsItIs() {
        config().G_Res = 9;
        config().MaxRpm = 12;
        config().GridStyle = 5;
        config().ComboScale[7] = 255;
        open();
        QCOMPARE(part<QComboBox>("G_Res").currentText(), QStringLiteral("Low"));
        QCOMPARE(part<QComboBox>("MaxRpm").currentIndex(), -1);
        QCOMPARE(part<QComboBox>("GridStyle").currentIndex(), -1);
        QCOMPARE(raise(7).currentIndex(), -1);
        click("SaveSetup");
        const core::AppConfig now = saved();
        QCOMPARE(int(now.G_Res), 8);
        QCOMPARE(int(now.MaxRpm), 12);
        QCOMPARE(int(now.GridStyle), 5);
        QCOMPARE(int(now.ComboScale[7]), 255);
    }

    // --- The rows

    void theRowsShowAndTakeTheScales() {
        config().Text_Magnify[4] = 0;
        config().Text_Magnify[8] = 51;
        config().ComboScale[0] = 200;
        config().AnalogName[1] = "A & B   ";
        open();
        QCOMPARE(item<QLabel>("Label_Magnify", 0).text(), QStringLiteral("Eng. RPM"));
        QCOMPARE(item<QLabel>("Label_Magnify", 8).text(), QStringLiteral("A & B"));
        QCOMPARE(magnify(4).text(), QStringLiteral("0"));
        QCOMPARE(magnify(8).text(), QStringLiteral("50"));
        type(magnify(9), QStringLiteral("50"));
        type(magnify(10), QStringLiteral("2.5"));
        goTo("TabStrip2", raiseTab);
        QCOMPARE(raise(0).currentText(), QStringLiteral("10%"));
        pick("ComboScale(3)", 4);
        click("SaveSetup");
        const core::AppConfig now = saved();
        QCOMPARE(int(now.Text_Magnify[4]), 1);
        QCOMPARE(int(now.Text_Magnify[8]), 51);
        QCOMPARE(int(now.Text_Magnify[9]), 51);
        QCOMPARE(int(now.Text_Magnify[10]), 4); // 3.5 goes to the even number
        QCOMPARE(int(now.ComboScale[0]), 200);
        QCOMPARE(int(now.ComboScale[3]), 80);
    }

    void theTabsSwitchTheRowsOfTheModel_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("analogs");  // offered
        QTest::addColumn<int>("switched"); // of them
        QTest::addColumn<bool>("exhausts");
        QTest::newRow("8") << 8 << 4 << 4 << false;
        QTest::newRow("12") << 12 << 4 << 4 << false;
        QTest::newRow("17") << 17 << 8 << 8 << false;
        QTest::newRow("20") << 20 << 6 << 6 << true;
        QTest::newRow("25") << 25 << 8 << 8 << true;
        QTest::newRow("32") << 32 << 8 << 0 << true;
        QTest::newRow("43") << 43 << 8 << 0 << true;
    }
    void theTabsSwitchTheRowsOfTheModel() {
        QFETCH(int, type);
        QFETCH(int, analogs);
        QFETCH(int, switched);
        QFETCH(bool, exhausts);
        config().LoggerDataType = static_cast<std::int16_t>(type);
        open();
        const QList<int> offered = from(8, 7 + analogs);
        const QList<int> behind = (exhausts ? from(16, 23) : QList<int>()) + from(24, 24);
        const QList<int> all = from(0, 7) + offered + behind;
        const QList<int> none;
        for (int time = 0; time < 2; ++time) {
            goTo("TabStrip2", magnifyTab);
            QCOMPARE(labels(), all);
            QCOMPARE(magnified(), from(4, 6) + offered + behind);
            QCOMPARE(raised(), none);
            QCOMPARE(seen<QLabel>("Label_Magnify_Analog_Text", 1, 8), from(1, analogs));
            QCOMPARE(part<QGroupBox>("FrameExhaust").isVisible(), exhausts);
            goTo("TabStrip2", raiseTab);
            QCOMPARE(labels(), all);
            QCOMPARE(raised(), from(0, 7) + from(8, 7 + switched) + behind);
            QCOMPARE(magnified(), switched == 0 ? offered : none);
        }
    }

    void aCarHasNoClutchRow() {
        open();
        QVERIFY(labels().contains(1));
        goTo("TabStrip1", 0);
        pick("Vehicle_Type", 1);
        goTo("TabStrip1", 1);
        QVERIFY(!labels().contains(1));
        goTo("TabStrip2", raiseTab);
        QVERIFY(!raised().contains(1));
        goTo("TabStrip1", 0);
        pick("Vehicle_Type", 0);
        goTo("TabStrip1", 1);
        QVERIFY(labels().contains(1));
        QVERIFY(raised().contains(1));
    }

    // As the model changes, a magnification comes back beside its raise.
    void theModelTakesItsRowsOnEitherTab() {
        config().LoggerDataType = 25;
        open();
        goTo("TabStrip2", raiseTab);
        type(magnify(8), QStringLiteral("33")); // out of sight, but kept
        goTo("TabStrip1", 0);
        pick("D_Modal", 0);
        goTo("TabStrip1", 1);
        QCOMPARE(raised(), from(0, 11) + from(24, 24));
        QVERIFY(!part<QGroupBox>("FrameExhaust").isVisible());
        goTo("TabStrip1", 0);
        pick("D_Modal", 4);
        goTo("TabStrip1", 1);
        QCOMPARE(raised(), from(0, 24));
        QCOMPARE(magnified(), from(12, 15));
        QCOMPARE(magnify(8).text(), QStringLiteral("33"));
        goTo("TabStrip2", magnifyTab);
        QCOMPARE(raised(), QList<int>());
        QCOMPARE(magnified(), from(4, 6) + from(8, 24));
    }

    // --- Checks and defaults

    void aMagnificationOutOfRangeGoesBack() {
        open();
        int beeps = 0;
        for (const char* bad : {"51", "-1", "12abc", "abc"}) {
            type(magnify(5), QLatin1String(bad));
            QTest::keyClick(&magnify(5), Qt::Key_Tab);
            QCOMPARE(magnify(5).text(), QStringLiteral("0"));
            QVERIFY(magnify(5).hasFocus());
            QCOMPARE(m_program->dialogs.beeps(), ++beeps);
        }
        for (const char* held : {"TabStrip2", "Command3"}) {
            type(magnify(5), QStringLiteral("99"));
            if (held[0] == 'T')
                goTo(held, raiseTab);
            else
                click(held);
            QCOMPARE(magnify(5).text(), QStringLiteral("0"));
            QCOMPARE(part<QTabBar>("TabStrip2").currentIndex(), magnifyTab);
            QVERIFY(magnify(5).isVisible());
            QCOMPARE(m_program->dialogs.beeps(), ++beeps);
        }
    }

    // The boxes go one after another; none is judged but the one that the user was in.
    void aTabJudgesNoBoxThatTheUserWasNeverIn() {
        for (int i = 5; i <= 24; ++i) config().Text_Magnify[static_cast<std::size_t>(i)] = 200;
        open();
        type(magnify(4), QStringLiteral("7"));
        goTo("TabStrip2", raiseTab);
        QCOMPARE(part<QTabBar>("TabStrip2").currentIndex(), raiseTab);
        QCOMPARE(magnify(4).text(), QStringLiteral("7"));
        for (int i = 5; i <= 24; ++i) QCOMPARE(magnify(i).text(), QStringLiteral("199"));
        QCOMPARE(m_program->dialogs.beeps(), 0);
    }

    // The keys of the tabs go on working as the tab in view has gone.
    void theKeysOfTheTabsKeepTheFocus() {
        config().LoggerDataType = 25;
        open();
        part<QTabBar>("TabStrip2").setFocus();
        QTest::keyClick(&part<QTabBar>("TabStrip2"), Qt::Key_Right);
        QCOMPARE(part<QTabBar>("TabStrip2").currentIndex(), raiseTab);
        QVERIFY(part<QTabBar>("TabStrip2").hasFocus());
        QCOMPARE(magnified(), QList<int>());
    }

    void aClickOnTheTabInViewRunsItsRuleAgain() {
        config().LoggerDataType = 25;
        open();
        goTo("TabStrip2", raiseTab);
        goTo("TabStrip1", 0);
        pick("D_Modal", 0);
        pick("D_Modal", 4);
        goTo("TabStrip1", 1);
        QCOMPARE(magnified(), from(12, 15)); // the model shows them on either tab
        goTo("TabStrip2", raiseTab);
        QCOMPARE(magnified(), QList<int>());
        QCOMPARE(raised(), from(0, 24));
    }

    void restoreDefaultsChangesTheHalfInView() {
        config().Text_Magnify.fill(21);
        config().ComboScale.fill(60);
        const core::AppConfig before = config();
        open();
        click("Command3");
        QCOMPARE(magnify(4).text(), QStringLiteral("8"));
        QCOMPARE(magnify(5).text(), QStringLiteral("50"));
        QCOMPARE(magnify(24).text(), QStringLiteral("10"));
        QCOMPARE(raise(0).currentIndex(), 3);
        goTo("TabStrip2", raiseTab);
        magnify(4).setText(QStringLiteral("20"));
        click("Command3");
        QCOMPARE(magnify(4).text(), QStringLiteral("20"));
        QCOMPARE(raise(4).currentIndex(), 0);
        for (int n = 1; n <= 8; ++n) QCOMPARE(raise(15 + n).currentIndex(), n - 1);
        QCOMPARE(raise(24).currentIndex(), 3);
        QCOMPARE(config(), before);
        click("CancelSetup");
        QCOMPARE(config(), before);
    }

    // --- Looks

    void nothingIsCutAndNothingMoves() {
        for (int n = 1; n <= 8; ++n) config().AnalogName[n] = "WWWWWWWW";
        config().LoggerDataType = 25;
        open();
        auto& setup = form<SetupSoftware>();
        QCoreApplication::processEvents();
        const QSize size = setup.size();
        QVERIFY2(size.width() <= 960 && size.height() <= 500,
            qPrintable(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())));
        for (const int tab : {raiseTab, magnifyTab}) {
            goTo("TabStrip2", tab);
            QCoreApplication::processEvents();
            QCOMPARE(setup.size(), size);
            for (const QWidget* widget : part<QWidget>("Graph").findChildren<QWidget*>()) {
                const bool counts = qobject_cast<const QLabel*>(widget) != nullptr ||
                                    qobject_cast<const QComboBox*>(widget) != nullptr ||
                                    qobject_cast<const QPushButton*>(widget) != nullptr;
                if (!widget->isVisible() || !counts) continue;
                const QSize wanted = widget->minimumSizeHint();
                QVERIFY2(widget->width() >= wanted.width() && widget->height() >= wanted.height(),
                    qPrintable(widget->objectName()));
            }
        }
    }
};

KVO_FORM_TEST_MAIN(GraphPageTest)
#include "graph_page_test.moc"
