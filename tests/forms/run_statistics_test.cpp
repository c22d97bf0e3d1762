// Statistics: its labels, its print, and a range that fails.
#include "core/run_info.h"
#include "library/forms/run_statistics.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QLabel>
#include <QPushButton>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::Statistics;

class RunStatisticsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;
    forms::GraphTexts m_texts;

    static QString label(const char* name) {
        return control<QLabel>(form<Statistics>(), name).text();
    }
    static bool visible(const char* name) {
        return control<QLabel>(form<Statistics>(), name).isVisible();
    }
    static void click(const char* name) {
        QCOMPARE(userClick(&control<QPushButton>(form<Statistics>(), name)), QString());
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        core::SharedState& state = m_program->state;
        state.Run.SampleCount = 1213;
        state.Run.DataType = 25;
        state.Run.headerLine = "25 VRN25  Date:Sun 15 Nov 2026 Run: 1 Final #";
        state.Run.image.tail.TimeOffset = 80;
        state.Config.Weight_F = 2000;
        for (int i = 1; i <= core::maxSamples; ++i) {
            core::RunSample& row = state.Run.image.samples[i];
            row.EngineRpm = static_cast<std::int16_t>(i);
            row.SpeedRaw = 20 * i;
            row.Exhaust[1] = 100;
            row.Analog[1] = 7;
        }
        m_texts = {};
        m_texts.caption = "Data File: 26111514.52d";
        m_texts.times.Text_ET = "8.5";
        m_texts.times.Text_60FootTime = "1.05";
        m_texts.analogNames[1] = "Oil & P ";
    }
    void cleanup() {
        unload<Statistics>();
        const std::string problems = m_program->dialogs.problems();
        QVERIFY2(problems.empty(), problems.c_str());
        m_program.reset();
        QCOMPARE(modalComplaints(), QString());
    }

    void fillsItsLabels() {
        onModal([](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral(" Statistics For :  26111514.52d"));
            QCOMPARE(label("ET60"), QStringLiteral("1.05"));
            QCOMPARE(label("Et"), QStringLiteral("8.5"));
            QCOMPARE(label("Mph_Max"), QStringLiteral("85.00"));
            QCOMPARE(label("Horsepower"), QStringLiteral("643"));
            QCOMPARE(label("Range"), QStringLiteral("0.00 to 7.70 s"));
            QCOMPARE(label("Rpm_Min"), QStringLiteral(" 80"));
            QCOMPARE(label("Rpm_Max"), QStringLiteral(" 850"));
            QCOMPARE(label("Txt_A(1)"), QStringLiteral("Oil & P "));
            QCOMPARE(label("E_Max(1)"), QStringLiteral(" 400"));
            QCOMPARE(label("Txt_E(8)"), QStringLiteral("Exhaust 8:"));
            QVERIFY(visible("A_Max(8)"));
            QVERIFY(visible("E_Max(8)"));
            click("BUT_Close");
        });
        form<Statistics>().showRun(m_texts);
        QVERIFY(!isLoaded<Statistics>());
    }

    void hidesTheRowsThatTheLoggerDoesNotHave() {
        m_program->state.Run.DataType = 20;
        onModal([](QWidget*) {
            QVERIFY(visible("A_Max(6)"));
            QVERIFY(!visible("A_Max(7)"));
            QVERIFY(!visible("Txt_A(8)"));
            QVERIFY(visible("E_Max(1)"));
            click("BUT_Close");
        });
        form<Statistics>().showRun(m_texts);
    }

    void opensOnARangeOfNoWidthWithWhatItHas() {
        m_texts.times.Text_ET = "0.80";
        onModal([](QWidget*) {
            QCOMPARE(label("Rpm_Max"), QStringLiteral(" 80"));
            QCOMPARE(label("Rpm_Ave"), QString());
            click("BUT_Close");
        });
        form<Statistics>().showRun(m_texts);
    }

    // Closed by Escape it goes as by its button: no figure of this run is there with the next one.
    void escapeTakesItAway() {
        const auto escape = [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); };
        onModal([&](QWidget* dialog) {
            QCOMPARE(label("Horsepower"), QStringLiteral("643"));
            escape(dialog);
        });
        form<Statistics>().showRun(m_texts);
        QVERIFY(!isLoaded<Statistics>());
        m_texts.times.Text_ET.clear();
        onModal([&](QWidget* dialog) {
            QCOMPARE(label("Horsepower"), QString());
            escape(dialog);
        });
        form<Statistics>().showRun(m_texts);
    }

    // Times typed in the info change the range, and with it the figures.
    void theInfoIsEditedFromHere() {
        core::OpenRun& run = m_program->state.Run;
        run.path = "/kvo/Data/26111514.52d";
        run.infoPath = core::infoFilePath(run.path);
        core::RunInfo info;
        int opened = 0;
        forms::doors().showInfo = [&](const std::string& path, const std::string& caption) {
            ++opened;
            QCOMPARE(path, run.path);
            QCOMPARE(caption, std::string("Info For :  26111514.52d"));
            QVERIFY(
                core::SaveRunInfo("/kvo", run.infoPath, path, info, m_program->files).notesDone);
        };
        onModal([&](QWidget*) {
            info.Text_ET = "9.5";
            click("Buttin_Info");
            QCOMPARE(label("Et"), QStringLiteral("9.5"));
            QCOMPARE(label("ET60"), QString());
            QCOMPARE(label("Rpm_Max"), QStringLiteral(" 950"));
            QCOMPARE(label("Range"), QStringLiteral("0.00 to 8.70 s"));
            QCOMPARE(run.times.Text_ET, std::string("9.5"));
            info.Text_ET.clear();
            click("Buttin_Info");
            QCOMPARE(label("Horsepower"), QString());
            click("BUT_Close");
        });
        form<Statistics>().showRun(m_texts);
        QCOMPARE(opened, 2);
    }

    void printsAPictureOfItself() {
        onModal([](QWidget*) {
            click("Print_Button");
            click("BUT_Close");
        });
        form<Statistics>().showRun(m_texts);
        QCOMPARE(m_program->printer.documents.size(), std::size_t(1));
        const PrintedDocument& document = *m_program->printer.documents[0];
        QCOMPARE(document.request.documentName, std::string(" Statistics For :  26111514.52d"));
        QVERIFY(!document.request.offersWhitePaper);
        QCOMPARE(document.pages.size(), std::size_t(1));
        QCOMPARE(document.pages[0].images.size(), std::size_t(1));
        QVERIFY(document.pages[0].images[0].widthPx > 100);
        QCOMPARE(document.pages[0].texts.at(0).text, std::string("Sun 15 Nov 2026 Run: 1 Final"));
        QCOMPARE(document.state, JobState::ended);
    }

    void tellsThatItCouldNotPrint() {
        m_program->printer.failingPage = 1;
        for (int i = 0; i < 2; ++i) {
            m_program->dialogs.expectBox(
                "The Statistics could not be printed. ", platform::boxStyle::ok, "Run Statistics");
        }
        onModal([this](QWidget*) {
            click("Print_Button");
            m_program->printer.answer = platform::Printed::failed;
            click("Print_Button");
            m_program->printer.answer = platform::Printed::cancelled; // is no failure
            click("Print_Button");
            click("BUT_Close");
        });
        form<Statistics>().showRun(m_texts);
    }
};

KVO_FORM_TEST_MAIN(RunStatisticsTest)
#include "run_statistics_test.moc"
