// PitRun over a line that needs no time: what each type shows, live values, silence, and every way
// out of a run.
#include "link/forms/pit_run.h"

#include "core/basic/plain_number.h"
#include "core/forms/doors.h"
#include "link/forms/logger_line.h"
#include "link/forms/range_bar.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/pit_rig.h"

#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>
#include <QToolTip>

#include <memory>
#include <optional>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::PitRun;
using kvo::simulator::Fault;

namespace {

constexpr int second = 1000 * platform::turnsPerMillisecond;

QLabel& label(const char* name) {
    return control<QLabel>(form<PitRun>(), name);
}
QLabel& label(const char* name, int i) {
    return label(qPrintable(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i)));
}
QPushButton& pitStartButton() {
    return control<QPushButton>(form<PitRun>(), "Command1");
}
QPushButton& cancelButton() {
    return control<QPushButton>(form<PitRun>(), "BTN_Ok");
}
QPushButton& freezeButton() {
    return control<QPushButton>(form<PitRun>(), "But_Freeze");
}
forms::RangeBar& rangeBar(const char* name) {
    return dynamic_cast<forms::RangeBar&>(control<QWidget>(form<PitRun>(), name));
}
QString status() {
    return label("Label_Status").text();
}
// Places of all labels that change, in the window.
QList<QRect> places() {
    QList<QRect> all;
    for (const char* name : {"LineNumber", "ERpm", "CRpm", "PRpm", "Mph", "Label_Status"})
        all << label(name).geometry();
    for (int i = 1; i <= 8; ++i) all << label("Analog", i).geometry() << label("T", i).geometry();
    return all << form<PitRun>().geometry();
}

} // namespace

class PitRunTest : public QObject {
    Q_OBJECT

    struct Line {
        Line(TestProgram& program, int type, Fault fault)
            : logger(platform::Bytes{0, static_cast<std::uint8_t>(type)}), faulty(logger, fault),
              line(faulty), link(line, line, program.dialogs) {
            forms::useLoggerLink(&link);
        }
        ~Line() { forms::useLoggerLink(nullptr); }
        simulator::ModelLogger logger;
        simulator::FaultyEnd faulty;
        VirtualLine line;
        link::LoggerLink link;
    };
    std::unique_ptr<TestProgram> m_program;
    std::optional<Line> m_line;
    int m_mainShown = 0;

    ScriptedDialogs& dialogs() { return m_program->dialogs; }
    void expectNote() { dialogs().expectBox(resetNote, platform::boxStyle::critical, "Info"); }
    void connectLogger(int type, Fault fault = {}) {
        m_program->state.Config = pitConfig(type);
        m_line.emplace(*m_program, type, fault);
        // A Stop that does not come must not hang the test.
        m_line->line.at(600 * second, [this] { m_line->link.LinkFailed = -1; });
    }
    static void open() {
        form<PitRun>().show();
        QVERIFY(QTest::qWaitForWindowActive(&form<PitRun>()));
    }
    // Runs `what` at a turn of the wait for frames, in which the program keeps its forms.
    void at(int turn, std::function<void()> what) {
        m_line->line.at(turn, [what = std::move(what)] {
            const Waiting waiting;
            what();
        });
    }
    static void click(QPushButton& button) { QCOMPARE(userClick(&button), QString()); }
    void runUntil(int turn) {
        expectNote();
        at(turn, [] { click(pitStartButton()); });
        click(pitStartButton());
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_mainShown = 0;
        forms::doors().showMainWindow = [this] { ++m_mainShown; };
    }
    void cleanup() {
        const QString problems = modalComplaints() + QString::fromStdString(dialogs().problems());
        unloadAllForms();
        m_line.reset();
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void everyTypeShowsItsChannels_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("analogs");
        QTest::addColumn<bool>("exhausts");
        QTest::newRow("12") << 12 << 4 << false;
        QTest::newRow("17") << 17 << 8 << false;
        QTest::newRow("20") << 20 << 6 << true;
        QTest::newRow("23") << 23 << 8 << true;
        QTest::newRow("25") << 25 << 8 << true;
        QTest::newRow("32") << 32 << 8 << true;
        QTest::newRow("43") << 43 << 8 << true;
    }
    void everyTypeShowsItsChannels() {
        QFETCH(int, type);
        QFETCH(int, analogs);
        QFETCH(bool, exhausts);
        connectLogger(type);
        m_program->state.Config.AnalogName[2] = "Oil Prs ";
        m_program->state.Config.Analog_Check[3] = 0;
        m_line->link.LinkFailed = 0;
        open();
        for (int i = 1; i <= 8; ++i) {
            const bool there = i <= analogs && i != 3;
            QCOMPARE(label("Analog", i).isVisible(), there);
            QCOMPARE(label("Text_Analog", i).isVisible(), there);
            QCOMPARE(label("T", i).isVisible(), exhausts);
            QCOMPARE(label("Text_T", i).isVisible(), exhausts);
        }
        QCOMPARE(label("Temps_Label").isVisible(), exhausts);
        QCOMPARE(label("Text_Analog", 2).text(), QStringLiteral("Oil Prs "));
        QCOMPARE(pitStartButton().text(), QStringLiteral("&Start"));
        QVERIFY(pitStartButton().isEnabled());
        QCOMPARE(cancelButton().text(), QStringLiteral("Cancel"));
        QCOMPARE(label("Label_Port").text(), QStringLiteral("Port 1: /dev/virtual"));
        QCOMPARE(status(), QString());
        QCOMPARE(m_line->link.LinkFailed, std::int16_t{-1});
    }

    // Required: they are hidden, and written all the same.
    void aType20WritesTheInputsThatItHides() {
        connectLogger(20);
        open();
        runUntil(second);
        for (const int input : {7, 8}) {
            QVERIFY(!label("Analog", input).isVisible());
            QVERIFY(!label("Text_Analog", input).isVisible());
            QVERIFY(!label("Analog", input).text().isEmpty());
        }
    }

    void aTypeWithoutAPitRunIsToldAndCannotStart() {
        connectLogger(8);
        dialogs().expectBox("This is not available for your data loger type",
            platform::boxStyle::critical, "Pit Run Canceled");
        open();
        QCOMPARE(userClick(&pitStartButton()), QStringLiteral("disabled"));
        QVERIFY(label("Analog", 8).isVisible());
        QVERIFY(label("T", 8).isVisible());
        click(cancelButton());
        QVERIFY(!isLoaded<PitRun>());
        QCOMPARE(m_mainShown, 1);
        QCOMPARE(m_line->line.bytesSent(), 0);
    }

    void whatIsNeverDrivenStandsThere() {
        connectLogger(25);
        open();
        const QStringList captions{
            "Trans Brake", "Wide Open Throttle", "Shift Light", "Dyna Two Step"};
        for (int i = 0; i < 4; ++i) QCOMPARE(label("StatusLabel", i).text(), captions[i]);
        QVERIFY(label("FlowMeter").isVisible());
        runUntil(second);
        for (int i = 0; i < 4; ++i) QCOMPARE(label("StatusLabel", i).text(), captions[i]);
    }

    void valuesComeLive() {
        connectLogger(25);
        m_program->state.Config.Analog_Type[1] = 1;
        m_program->state.Config.Analog_Type[7] = 9; // of no kind: the label stays as it was
        open();
        label("Analog", 7).setText(QStringLiteral("before"));
        QStringList numbers;
        at(second, [] { QCOMPARE(pitStartButton().text(), QStringLiteral("&Stop")); });
        for (int frame = 0; frame < 3; ++frame) {
            // A byte behind the frame, and a little.
            const double ms = (28 * (frame + 1) + 1) * simulator::byteTimeMs + 1;
            at(static_cast<int>(ms * platform::turnsPerMillisecond),
                [&numbers] { numbers << label("LineNumber").text(); });
        }
        runUntil(2 * second);
        QCOMPARE(numbers, QStringList({" 0", " 1", " 2"}));
        QVERIFY(qAbs(label("ERpm").text().toInt() - 2100) < 3500);
        QCOMPARE(label("CRpm").text(), QStringLiteral("0"));
        QCOMPARE(label("PRpm").text(), QStringLiteral("0"));
        QCOMPARE(label("Mph").text(), QStringLiteral("0"));
        QVERIFY(label("Analog", 1).text().startsWith(QLatin1Char(' '))); // a temperature
        QCOMPARE(label("Analog", 4).text(), QStringLiteral("174"));
        QCOMPARE(label("Analog", 7).text(), QStringLiteral("before"));
        QVERIFY(label("T", 8).text().toInt() > 250);
        QCOMPARE(pitStartButton().text(), QStringLiteral("&Start"));
        QCOMPARE(m_line->line.closings(), 1);
    }

    void theTableOfAChannelIsReadFromTheFolder() {
        connectLogger(12);
        m_program->state.Config.Analog_Type[4] = 2;
        core::AnalogTables onDisk;
        onDisk[4].fill(13.7333333333333);
        QVERIFY(core::SaveAnalogTable("/kvo", "Analog4.Dat", 4, onDisk, m_program->files).done);
        open();
        runUntil(second);
        QCOMPARE(label("Analog", 4).text(), QStringLiteral("13.7333333333333"));
        const QFontMetrics metrics(label("Analog", 4).font());
        QVERIFY(metrics.horizontalAdvance(label("Analog", 4).text()) <=
                label("Analog", 4).contentsRect().width());
    }

    // A table from 0 to 0.9 reads a little beside 0 at count 26.
    void theReadingsOfATableKeepTheirPoint() {
        connectLogger(12);
        auto& config = m_program->state.Config;
        config.Analog_Type[4] = 2;
        core::AnalogTables onDisk;
        std::array<double, 256>& table = onDisk[4];
        const std::array<double, 5> readings{
            -1.11022302462516E-16, 0.035, 13.7333333333333, -2, 255.5};
        for (std::size_t raw = 0; raw < table.size(); ++raw) table[raw] = readings[raw % 5];
        QVERIFY(core::SaveAnalogTable("/kvo", "Analog4.Dat", 4, onDisk, m_program->files).done);
        open();
        link::PitRunView& view = form<PitRun>();
        QLabel& cell = label("Analog", 4);
        const QStringList beginnings{"-0.00000000000", "0.035", "13.7333333333333", "-2", "255.5"};
        QList<int> points;
        for (std::size_t i = 0; i < readings.size(); ++i) {
            link::PitRunReadings frame;
            frame.Analog[4] = core::plainNumber(readings[i]);
            view.showReadings(frame);
            QVERIFY2(cell.text().startsWith(beginnings[static_cast<qsizetype>(i)]),
                qPrintable(cell.text()));
            QVERIFY(QString::fromStdString(*frame.Analog[4]).startsWith(cell.text()));
            const QFontMetrics& metrics = cell.fontMetrics();
            const int right = cell.width() - cell.frameWidth() - cell.margin() - cell.indent();
            const int width = metrics.horizontalAdvance(cell.text());
            QVERIFY(right - width >= cell.frameWidth());
            const QString behind = cell.text().section(QLatin1Char('.'), 1);
            const bool hasPoint = cell.text().contains(QLatin1Char('.'));
            points << right - (hasPoint ? metrics.horizontalAdvance(QLatin1Char('.') + behind) : 0);
        }
        for (const int point : points)
            QVERIFY2(qAbs(point - points[0]) <= 1, qPrintable(QString::number(point)));
    }

    void digitsDoNotJump() {
        connectLogger(32, {Fault::Kind::flood, 0}); // garbage: the widest numbers there are
        open();
        const QList<QRect> before = places();
        QList<QRect> during;
        at(second, [&during] { during = places(); });
        runUntil(4 * second);
        QCOMPARE(during, before);
        QCOMPARE(places(), before);
        for (const char* name : {"LineNumber", "ERpm", "CRpm", "PRpm", "Mph"})
            for (const int digit : {0, 1, 8})
                QCOMPARE(label(name).fontMetrics().horizontalAdvance(QString::number(digit)),
                    label(name).fontMetrics().horizontalAdvance(QStringLiteral("7")));
    }

    void theWidestValuesFitTheirCells() {
        connectLogger(25);
        for (std::string& name : m_program->state.Config.AnalogName) name = "WWWWWWWW";
        open();
        const auto fits = [](QLabel& cell, const char* text) {
            return cell.fontMetrics().horizontalAdvance(QLatin1String(text)) <=
                   cell.contentsRect().width() - 2 * cell.margin();
        };
        QVERIFY(fits(label("LineNumber"), " 65535"));
        QVERIFY(fits(label("ERpm"), "15000000"));
        QVERIFY(fits(label("Mph"), "1004060.15"));
        QVERIFY(fits(label("Analog", 1), "-0.12345678901234"));
        QVERIFY(fits(label("T", 1), "1868"));
        // Whole on the smallest screen there is.
        const QSize least = form<PitRun>().minimumSizeHint();
        QVERIFY2(least.width() <= 960 && least.height() <= 500,
            qPrintable(QString::number(least.height())));
    }

    void barsShowWhereANumberStands() {
        connectLogger(25);
        open();
        QCOMPARE(rangeBar("Bar_ERpm").place(), 0.0);
        QList<double> places;
        double smallest = 1e9;
        double largest = 0;
        for (int i = 1; i <= 40; ++i)
            at(i * second / 20, [&] {
                const double rpm = label("ERpm").text().toDouble();
                smallest = qMin(smallest, rpm);
                largest = qMax(largest, rpm);
                places << rangeBar("Bar_ERpm").place();
            });
        QString tip;
        at(2 * second + 1, [&tip] {
            QHelpEvent asks(
                QEvent::ToolTip, {3, 3}, rangeBar("Bar_ERpm").mapToGlobal(QPoint(3, 3)));
            QCoreApplication::sendEvent(&rangeBar("Bar_ERpm"), &asks);
            tip = QToolTip::text();
        });
        runUntil(2 * second + 2);
        QVERIFY(largest > smallest);
        QVERIFY(*std::max_element(places.begin(), places.end()) > 0.5);
        QVERIFY(*std::min_element(places.begin(), places.end()) < 0.5);
        for (const double place : places) QVERIFY(place >= 0 && place <= 1);
        QVERIFY2(
            tip.startsWith(QLatin1String("Smallest ")) && tip.contains(QLatin1String(", largest ")),
            qPrintable(tip));
        QCOMPARE(rangeBar("Bar_T(1)").accessibleName(),
            QStringLiteral("Exhaust 1, from smallest to largest"));
        QVERIFY(rangeBar("Bar_Analog(1)").isVisible());
    }

    void aBarGoesWithItsNumber() {
        connectLogger(12);
        open();
        QVERIFY(rangeBar("Bar_Mph").isVisible());
        QVERIFY(!rangeBar("Bar_Analog(5)").isVisible());
        QVERIFY(!rangeBar("Bar_T(1)").isVisible());
    }

    void theNumbersStandStillByOneKey() {
        connectLogger(25);
        open();
        QVERIFY(!freezeButton().isEnabled());
        QStringList numbers;
        const auto note = [&numbers] { numbers << label("LineNumber").text(); };
        at(second, [&] {
            QTest::keyClick(&form<PitRun>(), Qt::Key_F);
            QVERIFY(freezeButton().isChecked());
            QCOMPARE(label("Label_Freeze").text(),
                QStringLiteral("The numbers stand still - F lets them go on"));
            note();
        });
        at(3 * second, [&] {
            note();
            QCOMPARE(status(), QString()); // the logger goes on
            QTest::keyClick(&form<PitRun>(), Qt::Key_F);
            QCOMPARE(label("Label_Freeze").text(), QString());
            note();
        });
        at(4 * second, note);
        runUntil(4 * second + 1);
        QCOMPARE(numbers[1], numbers[0]);
        QVERIFY(numbers[2].toInt() > numbers[1].toInt() + 20); // at once
        QVERIFY(numbers[3].toInt() > numbers[2].toInt());
        QVERIFY(!freezeButton().isEnabled());
    }

    void whatStandsStillStaysSoBehindTheStopAndNoLongerAtAStart() {
        connectLogger(25);
        open();
        at(second, [] { click(freezeButton()); });
        runUntil(2 * second);
        const QString stood = label("LineNumber").text();
        QVERIFY(freezeButton().isChecked());
        QVERIFY(freezeButton().isEnabled());
        click(freezeButton());
        QVERIFY(label("LineNumber").text() != stood);
        QVERIFY(!freezeButton().isEnabled());
        bool frozenAtStart = true;
        at(3 * second, [] { click(freezeButton()); });
        runUntil(4 * second);
        at(5 * second, [&frozenAtStart] { frozenAtStart = freezeButton().isChecked(); });
        runUntil(6 * second);
        QVERIFY(!frozenAtStart);
    }

    void silenceIsSaidAndClearsItself() {
        connectLogger(25);
        open();
        QStringList said;
        at(second, [this] { m_line->logger.receive('p'); }); // it falls silent
        at(2 * second, [&said] { said << status(); });
        at(3 * second + 6400, [&said] { said << status(); });
        at(4 * second + 6400, [&said] {
            said << status();
            QCOMPARE(pitStartButton().text(), QStringLiteral("&Stop"));
            QVERIFY(!label("ERpm").text().isEmpty());
        });
        at(5 * second, [this] { m_line->logger.receive('P'); });
        at(6 * second, [&said] { said << status(); });
        runUntil(7 * second);
        QCOMPARE(said, QStringList({"", "No data from the logger for 2 s",
                           "No data from the logger for 3 s", ""}));
    }

    // A run that was stopped in a silence leaves nothing of it to the next one.
    void aSecondRunBeginsWithoutTheSilenceOfTheFirst() {
        connectLogger(25);
        open();
        at(second, [this] { m_line->logger.receive('p'); });
        QString inTheFirst;
        at(5 * second, [&inTheFirst] { inTheFirst = status(); });
        runUntil(6 * second);
        QVERIFY(inTheFirst.startsWith(QLatin1String("No data from the logger for")));
        QStringList inTheSecond;
        QStringList samples;
        for (const int ms : {40, 500, 1500}) {
            at(6 * second + ms * platform::turnsPerMillisecond, [&] {
                inTheSecond << status();
                samples << label("LineNumber").text();
            });
        }
        runUntil(8 * second);
        QCOMPARE(inTheSecond, QStringList({"", "", ""}));
        QVERIFY(samples[2].toInt() > samples[1].toInt());
    }

    // An adapter may be plugged in while the form stands, and pulled out in the run.
    void thePortIsLookedAtAnew() {
        connectLogger(25);
        m_line->line.plugInto(5);
        open();
        QCOMPARE(label("Label_Port").text(), QStringLiteral("Port 1: no device"));
        m_line->line.plugInto(1);
        QString during;
        at(second, [&] {
            during = label("Label_Port").text();
            m_line->line.plugInto(5);
        });
        runUntil(second + 100);
        QCOMPARE(during, QStringLiteral("Port 1: /dev/virtual"));
        QCOMPARE(label("Label_Port").text(), QStringLiteral("Port 1: no device"));
    }

    void stopClearsTheWordOnSilence() {
        connectLogger(25, {Fault::Kind::silent, 0});
        open();
        QString said;
        at(3 * second, [&said] { said = status(); });
        runUntil(4 * second);
        QCOMPARE(said, QStringLiteral("No data from the logger for 2 s"));
        QCOMPARE(status(), QString());
    }

    void aPortThatDoesNotOpenLeavesItIdle() {
        connectLogger(25);
        m_line->line.failToOpen(1, platform::PortError::busy);
        open();
        dialogs().expectBoxTitled("Communications Error");
        click(pitStartButton());
        QCOMPARE(pitStartButton().text(), QStringLiteral("&Start"));
        QCOMPARE(m_line->line.bytesSent(), 0);
    }

    void theNoteStandsBeforeTheCaptionChanges() {
        connectLogger(25);
        open();
        dialogs().expectBoxTitled("Info").whileShown = [this] {
            QCOMPARE(pitStartButton().text(), QStringLiteral("&Stop"));
            QVERIFY(!m_line->line.portOpen());
        };
        at(second, [] { click(pitStartButton()); });
        click(pitStartButton());
        QCOMPARE(pitStartButton().text(), QStringLiteral("&Start"));
        QCOMPARE(dialogs().beeps(), 1);
        QVERIFY(form<PitRun>().isVisible());
    }

    void everyWayOutOfARunStopsItFirst_data() {
        QTest::addColumn<int>("how");
        QTest::newRow("Cancel") << 0;
        QTest::newRow("Escape") << 1;
        QTest::newRow("the window's button") << 2;
    }
    void everyWayOutOfARunStopsItFirst() {
        QFETCH(int, how);
        connectLogger(25);
        open();
        expectNote();
        at(second, [how] {
            if (how == 0) click(cancelButton());
            if (how == 1) QTest::keyClick(&form<PitRun>(), Qt::Key_Escape);
            if (how == 2) form<PitRun>().close();
            QVERIFY(!isLoaded<PitRun>());
        });
        click(pitStartButton());
        QCOMPARE(m_line->line.everythingSent(), std::string("Pp"));
        QCOMPARE(m_line->line.closings(), 1);
        QCOMPARE(m_mainShown, 1);
    }

    void leavingWhileIdleHasNoNote() {
        connectLogger(25);
        open();
        form<PitRun>().close();
        QVERIFY(!isLoaded<PitRun>());
        QCOMPARE(m_mainShown, 1);
        QCOMPARE(m_line->line.bytesSent(), 0);
    }

    void everythingWorksFromTheKeyboard() {
        connectLogger(25);
        open();
        QVERIFY(pitStartButton().isDefault());
        expectNote();
        at(second, [] {
            QTest::keyClick(&form<PitRun>(), Qt::Key_S, Qt::AltModifier);
            QTRY_COMPARE(
                pitStartButton().text(), QStringLiteral("&Start")); // it is let go in a while
        });
        QTest::keyClick(&form<PitRun>(), Qt::Key_Return);
        QCOMPARE(m_line->line.everythingSent(), std::string("Pp"));
        pitStartButton().setFocus();
        QTest::keyClick(&form<PitRun>(), Qt::Key_Tab);
        QVERIFY(cancelButton().hasFocus());
        QTest::keyClick(&cancelButton(), Qt::Key_Space);
        QVERIFY(!isLoaded<PitRun>());
    }

    // With KVO_PICTURES naming a folder: what the form looks like, on a light and a dark desktop.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        const QPalette light = QApplication::palette();
        const QPalette dark(QColor(0x35, 0x37, 0x3b), QColor(0x2b, 0x2d, 0x30));
        for (const int type : {12, 20, 25, 43}) {
            connectLogger(type, {Fault::Kind::stopAfter, 400});
            QApplication::setPalette(type == 20 ? dark : light);
            for (int c = 1; c <= 8; ++c)
                m_program->state.Config.AnalogName[c] = c == 2 ? "Oil Prs " : "WWWWWWWW";
            open();
            at(4 * second, [type, folder] {
                QVERIFY(saveScreenshot(
                    form<PitRun>(), QStringLiteral("%1/pit-%2.png").arg(folder).arg(type)));
            });
            runUntil(4 * second + 1);
            unloadAllForms();
        }
        QApplication::setPalette(light);
        connectLogger(25);
        open();
        at(2 * second, [folder] {
            click(freezeButton());
            QVERIFY(saveScreenshot(form<PitRun>(), folder + QStringLiteral("/pit-frozen.png")));
        });
        runUntil(2 * second + 1);
    }
};

KVO_FORM_TEST_MAIN(PitRunTest)
#include "pit_run_test.moc"
