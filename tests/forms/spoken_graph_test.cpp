// What assistive tools are told of the graph window: the surface as a chart, every value with its
// channel, and the value at the cursor on every move.
#include "graph/forms/spoken_graph.h"

#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QAccessible>
#include <QCheckBox>
#include <QMenu>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

namespace {

// Counts how often the cursor's time is asked for, as it is for every event.
class CountingVoice : public GraphVoice {
public:
    QString spokenName() const override { return {}; }
    QString spokenValue() const override { return {}; }
    double spokenTime() const override { return ++asked; }
    double firstTime() const override { return 0; }
    double lastTime() const override { return 0; }
    void goToTime(double) override {}
    mutable int asked = 0;
};

QString grouped(int number) {
    return QLocale(QLocale::English).toString(number);
}

} // namespace

class SpokenGraphTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    QAccessibleInterface* of(const char* name) {
        return QAccessible::queryAccessibleInterface(&part<QWidget>(name));
    }
    QString nameOf(const char* name) { return of(name)->text(QAccessible::Name); }
    QString value() { return of("Trend")->text(QAccessible::Value); }

private slots:
    void init() { begin(); }
    void cleanup() {
        QAccessible::setActive(false);
        QCOMPARE(end(), QString());
    }

    void theSurfaceIsAChartWithTheRunsTitle() {
        for (const int number : {1, 2}) store(32, number);
        openByChooser(cancelling());
        QCOMPARE(of("Trend")->role(), QAccessible::Chart);
        QCOMPARE(nameOf("Trend"), QStringLiteral("Graph"));
        QCOMPARE(value(), QString());
        testing::onModal(taking(2));
        command("Mnu_LoadData").trigger();
        QCOMPARE(nameOf("Trend"),
            QStringLiteral("Graph of ") + part<QLabel>("RunTitle").accessibleName());
        QVERIFY(nameOf("Trend").contains(QLatin1String("Run:")));
        overlay(1);
        QVERIFY(nameOf("Trend").contains(QLatin1String(", overlay ")));
    }

    void itsValueIsTimeAndValuesAtTheCursor() {
        open(32);
        clickAt(260);
        const QString engine = grouped(state().Run.image.samples[260].EngineRpm);
        QVERIFY2(value().startsWith(QStringLiteral("Time: 1.00 sec. Engine %1 rpm. ").arg(engine)),
            qPrintable(value()));
        QVERIFY(value().contains(QStringLiteral(". Mph ") + text("Mph")));
        QCOMPARE(of("Trend")->text(QAccessible::Description), value());
        // A channel that is off is not read.
        QVERIFY(value().contains(QLatin1String("Exhaust 8 ")));
        part<QCheckBox>("Label9(8)").click();
        QVERIFY(!value().contains(QLatin1String("Exhaust 8 ")));
        QTest::keyClick(&trend(), Qt::Key_R);
        QVERIFY(value().startsWith(
            QStringLiteral("Time: 1.00 sec. Reference: 0.00 sec. Engine %1 rpm, difference 0. ")
                .arg(engine)));
    }

    void itsTimeIsANumberThatCanBeSet() {
        open(32);
        QAccessibleValueInterface* time = of("Trend")->valueInterface();
        QVERIFY(time != nullptr);
        QCOMPARE(time->currentValue().toDouble(), 0.0);
        QCOMPARE(time->minimumValue().toDouble(), -1.59);
        QCOMPARE(time->maximumValue().toDouble(), 12.0);
        QCOMPARE(time->minimumStepSize().toDouble(), 0.01);
        time->setCurrentValue(2.5);
        QCOMPARE(int(view().CursorSample), 410);
        QCOMPARE(text("LoggerTime"), QStringLiteral("Time: 2.50 sec"));
        time->setCurrentValue(99);
        QCOMPARE(int(view().CursorSample), 1360);
        QCOMPARE(dialogs().beeps(), 0);
    }

    void withoutARunThereIsNoTime() {
        store(32, 1);
        openByChooser(cancelling());
        QAccessibleValueInterface* time = of("Trend")->valueInterface();
        QCOMPARE(time->currentValue().toDouble(), 0.0);
        QCOMPARE(time->maximumValue().toDouble(), 0.0);
        time->setCurrentValue(2.5);
        QCOMPARE(int(view().CursorSample), 0);
    }

    void everyMoveIsTold() {
        open(32);
        auto& surface = part<SpokenSurface>("Trend");
        GraphVoice* const own = surface.voice();
        CountingVoice voice;
        surface.setVoice(&voice);
        QTest::keyClick(&trend(), Qt::Key_Right);
        QCOMPARE(voice.asked, 0); // nobody listens
        QAccessible::setActive(true);
        QTest::keyClick(&trend(), Qt::Key_Right);
        QCOMPARE(voice.asked, 1);
        clickAt(300);
        QCOMPARE(voice.asked, 2);
        QAccessible::setActive(false);
        clickAt(400);
        QCOMPARE(voice.asked, 2);
        surface.setVoice(own);
    }

    void everyValueIsTiedToItsChannel() {
        for (const int number : {1, 2}) store(32, number);
        openByChooser(taking(2));
        clickAt(260);
        const auto number = [](const core::OpenRun& run) {
            return grouped(run.image.samples[260].EngineRpm);
        };
        const QString own = QStringLiteral("Engine %1 rpm").arg(number(state().Run));
        QCOMPARE(nameOf("Rpm"), own);
        QCOMPARE(of("Rpm")->text(QAccessible::Value), text("Rpm"));
        QVERIFY(of("OverlayRpm")->state().invisible); // it lies below the value
        QCOMPARE(
            nameOf("Exhaust(3)"), QStringLiteral("Exhaust 3 %1 degrees").arg(text("Exhaust(3)")));
        overlay(1);
        clickAt(260);
        QVERIFY(!of("OverlayRpm")->state().invisible);
        const QString other = number(state().Overlay);
        QCOMPARE(nameOf("Rpm"), own + QStringLiteral(", overlay ") + other);
        QCOMPARE(nameOf("OverlayRpm"), QStringLiteral("Engine, overlay %1 rpm").arg(other));
        state().Run.times.Text_ET = "7.31";
        command("Mnu_Overlay").trigger();
        QCOMPARE(nameOf("Text_ET"), QStringLiteral("ET 7.31"));
        QCOMPARE(nameOf("Text_330FootTime"), QStringLiteral("330 ft no value"));
    }

    void backAndForwardHaveNames() {
        open(32);
        const auto& menu = part<QMenu>("Mnu_File");
        QAccessibleInterface* entries =
            QAccessible::queryAccessibleInterface(&part<QMenu>("Mnu_File"));
        QStringList names;
        for (int i = 0; i < entries->childCount(); ++i)
            names << entries->child(i)->text(QAccessible::Name);
        QVERIFY2(
            names.contains(QLatin1String("Previous")), qPrintable(names.join(QLatin1Char(' '))));
        QVERIFY(names.contains(QLatin1String("Next")));
        QVERIFY(!names.contains(QLatin1String("<<<<")));
        QCOMPARE(menu.actions().indexOf(&command("GraphChange(0)")),
            qsizetype(names.indexOf(QLatin1String("Previous"))));
        QCOMPARE(command("GraphChange(0)").text(), QStringLiteral("<<<<"));
        QCOMPARE(command("GraphChange(1)").text(), QStringLiteral(">>>>"));
    }
};

KVO_FORM_TEST_MAIN(SpokenGraphTest)
#include "spoken_graph_test.moc"
