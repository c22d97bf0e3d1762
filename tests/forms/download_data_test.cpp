// DownloadData over a line that needs no time: what the form shows and allows while a run comes in,
// for every type of logger and every fault of the line.
#include "core/forms/doors.h"
#include "core/run_index.h"
#include "link/forms/download_data.h"
#include "link/forms/logger_line.h"
#include "tests/forms/support/download_window.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>

#include <memory>
#include <optional>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::DownloadData;
using kvo::platform::Reply;
using kvo::simulator::Fault;

namespace {

constexpr const char* indexFile = "/kvo/Data/KvoData.Ini";
constexpr int critical = platform::boxStyle::critical;

QPushButton& cancelButton() {
    return control<QPushButton>(form<DownloadData>(), "Cancel_Command");
}
QProgressBar& progressBar() {
    return control<QProgressBar>(form<DownloadData>(), "ProgressBar1");
}
QString display() {
    return control<QLabel>(form<DownloadData>(), "Text_Display").text();
}

} // namespace

class DownloadDataTest : public QObject {
    Q_OBJECT

    struct Line {
        Line(TestProgram& program, int type, Fault fault)
            : logger(type), faulty(logger, fault), line(faulty), link(line, line, program.dialogs) {
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
    QStringList m_calls; // of other forms

    void connectLogger(int type, bool fast = true, Fault fault = {}) {
        core::AppConfig& config = m_program->state.Config;
        config.CheckBits = {
            static_cast<std::int16_t>(fast ? 0 : -1), static_cast<std::int16_t>(fast ? -1 : 0)};
        config.Date_Prompt = 1;
        config.SpeedWheel_Prompt = 1;
        config.Wheel = 22;
        config.Engine_Correction = config.Clutch_Correction = 1;
        config.Pinion_Correction = config.Speed_Correction = 1;
        m_program->putConfig();
        m_line.emplace(*m_program, type, fault);
    }
    // Shows the form as the main window does and runs the script inside.
    void inTheForm(std::function<void()> script) {
        onModal([script = std::move(script)](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("DownloadData"));
            script();
        });
        showModal(form<DownloadData>());
        QVERIFY(!isLoaded<DownloadData>());
    }
    // Runs `what` at a turn of the link's wait, in which the program's own yield keeps forms.
    void whileWaiting(int turn, std::function<void()> what) {
        m_line->line.at(turn, [what = std::move(what)] {
            const Waiting waiting;
            what();
        });
    }
    static void clickSend() { QCOMPARE(userClick(&sendButton()), QString()); }
    ScriptedDialogs& dialogs() { return m_program->dialogs; }
    void expectSaved(Reply view = Reply::no) {
        dialogs().expectInputTitled("Run Title", "7 Final");
        dialogs().expectBoxTitled("Download Saved", view);
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_calls.clear();
        forms::doors().refreshChooser = [this](const std::string& file) {
            m_calls << QStringLiteral("chooser: ") + QString::fromStdString(file);
        };
    }
    void cleanup() {
        const QString problems = modalComplaints() + QString::fromStdString(dialogs().problems());
        unloadAllForms();
        m_line.reset();
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void itOpensReady() {
        connectLogger(25);
        forms::loggerLink().Header.DataType = 32;
        inTheForm([] {
            QCOMPARE(display(), QStringLiteral("Plug In Download Cable and Start Download"));
            QCOMPARE(
                control<QLabel>(form<DownloadData>(), "Percent").text(), QStringLiteral("100%"));
            QCOMPARE(sendButton().text(), QStringLiteral("&Start Download"));
            QCOMPARE(cancelButton().text(), QStringLiteral("Cancel"));
            QCOMPARE(progressBar().value(), 0);
            QCOMPARE(control<QLabel>(form<DownloadData>(), "Label_Port").text(),
                QStringLiteral("Port 1: /dev/virtual"));
            QCOMPARE(forms::loggerLink().Header.DataType, std::uint8_t{0});
            QCOMPARE(userClick(&cancelButton()), QString());
            QVERIFY(!isLoaded<DownloadData>());
        });
        QVERIFY(!m_line->line.portOpen());
    }

    // An adapter may be plugged in while the form stands.
    void thePortIsLookedAtAnew() {
        connectLogger(25);
        m_line->line.plugInto(5);
        QString atTheEnd;
        dialogs().expectInputTitled("Run Title", "7 Final");
        dialogs().expectBoxTitled("Download Saved", Reply::no).whileShown = [&atTheEnd] {
            atTheEnd = control<QLabel>(form<DownloadData>(), "Label_Port").text();
        };
        inTheForm([this] {
            QCOMPARE(control<QLabel>(form<DownloadData>(), "Label_Port").text(),
                QStringLiteral("Port 1: no device"));
            m_line->line.plugInto(1);
            clickSend();
        });
        QCOMPARE(atTheEnd, QStringLiteral("Port 1: /dev/virtual"));
    }

    void theEndOfADownloadLooksAtThePort() {
        connectLogger(25, true, {Fault::Kind::silent, 0});
        dialogs().expectBoxTitled("Download Error !");
        inTheForm([this] {
            whileWaiting(100, [this] { m_line->line.plugInto(5); });
            clickSend();
            QCOMPARE(control<QLabel>(form<DownloadData>(), "Label_Port").text(),
                QStringLiteral("Port 1: no device"));
            QCOMPARE(userClick(&cancelButton()), QString());
        });
    }

    void everyTypeComesInBothWays_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("fast");
        QTest::addColumn<int>("rows");
        const std::initializer_list<std::pair<int, int>> types{
            {8, 2520}, {12, 2520}, {17, 1724}, {20, 2048}, {25, 1213}, {32, 1360}, {43, 1360}};
        for (const auto& [type, rows] : types) {
            for (const bool fast : {true, false}) {
                QTest::addRow("type %d, %s", type, fast ? "fast" : "safe") << type << fast << rows;
            }
        }
    }
    void everyTypeComesInBothWays() {
        QFETCH(int, type);
        QFETCH(bool, fast);
        QFETCH(int, rows);
        connectLogger(type, fast);
        if (type == 43) dialogs().expectBoxTitled("Warning");
        dialogs().expectInputTitled("Run Title", "7 Final").whileShown = [rows, fast] {
            QCOMPARE(display(), QStringLiteral("Download Compleat"));
            QVERIFY(sendButton().isHidden() && cancelButton().isHidden());
            QCOMPARE(progressBar().maximum(), rows);
            // The fast mode ends with the pair in front of a batch that is never read.
            const int last = fast ? (rows % 2 == 0 ? rows - 3 : rows - 2) : rows;
            QCOMPARE(progressBar().value(), last);
        };
        dialogs().expectBoxTitled("Download Saved", Reply::no).whileShown = [] {
            QCOMPARE(display(), QString());
        };
        inTheForm([] { clickSend(); });
        QVERIFY(m_program->files.exists(downloadedRun));
        QCOMPARE(int{m_program->state.Run.SampleCount}, rows);
        const auto index = core::readRunIndex(indexFile, m_program->files);
        QCOMPARE(index.size(), std::size_t{1});
        QCOMPARE(index[0].Description, std::string("Sun 15 Nov 2026 Run: 7 Final"));
        QVERIFY(!m_line->line.portOpen());
        QVERIFY(!dialogs().hourglass());
    }

    void theTextTellsHowFarItIs() {
        connectLogger(25);
        QString halfWay;
        m_line->line.onSend = [&halfWay](std::uint8_t) {
            if (isLoaded<DownloadData>() && progressBar().maximum() == 1213 &&
                progressBar().value() == 607)
                halfWay = display();
        };
        expectSaved();
        inTheForm([] { clickSend(); });
        QCOMPARE(halfWay, QStringLiteral("Downloading data from the On Board Computer.   50%"));
    }

    void theTransferCannotBeLeft() {
        connectLogger(25);
        bool tried = false;
        m_line->line.onSend = [this, &tried](std::uint8_t) {
            if (tried || !isLoaded<DownloadData>() || progressBar().value() < 400) return;
            tried = true;
            auto& window = form<DownloadData>();
            QTest::keyClick(&window, Qt::Key_Escape);
            QTest::keyClick(&window, Qt::Key_Return);
            window.close();
            QCOMPARE(userClick(&cancelButton()), QStringLiteral("hidden"));
            QCOMPARE(userClick(&sendButton()), QStringLiteral("hidden"));
            QVERIFY(window.isVisible());
            QCOMPARE(m_line->link.LinkFailed, std::int16_t{0});
        };
        expectSaved();
        inTheForm([] { clickSend(); });
        QVERIFY(tried);
        QVERIFY(m_program->files.exists(downloadedRun));
    }

    void cancelWorksWhileTheLoggerIsAwaited_data() {
        QTest::addColumn<int>("how");
        QTest::newRow("button") << 0;
        QTest::newRow("escape") << 1;
        QTest::newRow("close") << 2;
    }
    void cancelWorksWhileTheLoggerIsAwaited() {
        QFETCH(int, how);
        connectLogger(25, true, {Fault::Kind::silent, 0});
        whileWaiting(4000, [how] {
            if (how == 0) QCOMPARE(userClick(&cancelButton()), QString());
            if (how == 1) QTest::keyClick(&form<DownloadData>(), Qt::Key_Escape);
            if (how == 2) form<DownloadData>().close();
            QVERIFY(!isLoaded<DownloadData>());
        });
        inTheForm([] { clickSend(); });
        QVERIFY(!m_line->line.portOpen());
        QVERIFY(dialogs().titles().empty());
    }

    void cancelWorksWhileTheHeaderComes() {
        connectLogger(25, true, {Fault::Kind::stopAfter, 12});
        whileWaiting(9000, [] { QCOMPARE(userClick(&cancelButton()), QString()); });
        inTheForm([] { clickSend(); });
        QVERIFY(!m_program->files.exists(downloadedRun));
        QVERIFY(dialogs().titles().empty());
    }

    void aSecondClickWhileOneIsAtWorkDoesNothing() {
        connectLogger(25, true, {Fault::Kind::silent, 0});
        whileWaiting(1000, [] { QCOMPARE(userClick(&sendButton()), QString()); });
        dialogs().expectBox(link::noReplyText(), critical, "Download Error !");
        inTheForm([] {
            clickSend();
            QVERIFY(isLoaded<DownloadData>());
            form<DownloadData>().close();
        });
        QCOMPARE(m_line->line.everythingSent(), std::string("Q"));
    }

    void noReplyLeavesTheFormForAnotherTry() {
        connectLogger(25);
        m_line->line.plugInto(2); // the cable is in the wrong plug
        dialogs().expectBox(link::noReplyText(), critical, "Download Error !").whileShown = [this] {
            QVERIFY(!m_line->line.portOpen());
        };
        expectSaved();
        inTheForm([this] {
            clickSend();
            QVERIFY(sendButton().isVisible() && cancelButton().isVisible());
            m_line->line.plugInto(1);
            clickSend();
        });
        QVERIFY(m_program->files.exists(downloadedRun));
    }

    void aWrongGreetingIsNoLogger() {
        connectLogger(25, true, {Fault::Kind::wrongGreeting, 0});
        dialogs().expectBox(link::noReplyText(), critical, "Download Error !");
        inTheForm([] {
            clickSend();
            QVERIFY(isLoaded<DownloadData>());
            QTest::keyClick(&form<DownloadData>(), Qt::Key_Escape);
        });
        QCOMPARE(dialogs().beeps(), 1);
    }

    void aLoggerThatStopsEndsTheForm_data() {
        QTest::addColumn<bool>("fast");
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("byte");
        QTest::newRow("fast, stops") << true << static_cast<int>(Fault::Kind::stopAfter) << 9000;
        QTest::newRow("safe, stops") << false << static_cast<int>(Fault::Kind::stopAfter) << 9000;
        QTest::newRow("fast, loses a byte") << true << static_cast<int>(Fault::Kind::drop) << 9000;
        QTest::newRow("fast, pulled") << true << static_cast<int>(Fault::Kind::hangUpAt) << 9000;
        QTest::newRow("safe, pulled") << false << static_cast<int>(Fault::Kind::hangUpAt) << 9000;
        QTest::newRow("fast, header only")
            << true << static_cast<int>(Fault::Kind::stopAfter) << 34;
        QTest::newRow("safe, header only")
            << false << static_cast<int>(Fault::Kind::stopAfter) << 34;
    }
    void aLoggerThatStopsEndsTheForm() {
        QFETCH(bool, fast);
        QFETCH(int, kind);
        QFETCH(int, byte);
        connectLogger(25, fast, {static_cast<Fault::Kind>(kind), byte});
        dialogs().expectBox(
            "The On Board Computer Stopped Responding\r\n           Fix and try again!", critical,
            "Download Error");
        inTheForm([] {
            clickSend();
            QVERIFY(!isLoaded<DownloadData>());
        });
        QVERIFY(!m_program->files.exists(downloadedRun));
        QVERIFY(!m_program->files.exists(indexFile));
        QVERIFY(!m_line->line.portOpen());
        QCOMPARE(dialogs().beeps(), 1);
    }

    void garbageNeverEndsAsARun() {
        connectLogger(25, true, {Fault::Kind::flood, 0});
        dialogs().expectBox(link::noReplyText(), critical, "Download Error !");
        inTheForm([] {
            clickSend();
            form<DownloadData>().close();
        });
        QVERIFY(!m_program->files.exists(downloadedRun));
    }

    void aPortThatDoesNotOpenLeavesTheForm() {
        connectLogger(25);
        m_line->line.failToOpen(1, platform::PortError::busy, "Port 1 is in use.");
        auto& box = dialogs().expectBoxTitled("Communications Error");
        box.style = critical;
        box.contains = "Error Opening Com";
        inTheForm([] {
            clickSend();
            QVERIFY(sendButton().isVisible());
            QCOMPARE(userClick(&cancelButton()), QString());
        });
        QCOMPARE(m_line->line.everythingSent(), std::string());
    }

    void anUnknownLoggerLeavesTheFormInSilence() {
        connectLogger(25);
        m_line.reset();
        platform::Bytes stream(2000, 0);
        stream[1] = 99; // the data type behind the byte that is thrown away
        simulator::ModelLogger stranger(stream);
        VirtualLine line(stranger);
        link::LoggerLink logger(line, line, dialogs());
        forms::useLoggerLink(&logger);
        inTheForm([&line] {
            clickSend();
            QVERIFY(sendButton().isVisible() && cancelButton().isVisible());
            QVERIFY(line.portOpen()); // Required: nothing closes it but Cancel
            QCOMPARE(userClick(&cancelButton()), QString());
        });
        QVERIFY(!line.portOpen());
        forms::useLoggerLink(nullptr);
    }

    void theWheelIsAskedForBeforeTheTransfer() {
        connectLogger(25);
        m_program->state.Config.SpeedWheel_Prompt = 0;
        m_program->putConfig();
        dialogs().expectBoxTitled("Front Wheel Dimeter", Reply::no).whileShown = [this] {
            QVERIFY(cancelButton().isVisible());
            QVERIFY(m_line->line.portOpen());
        };
        dialogs().expectInputTitled("New Wheel Diameter", "24.5");
        expectSaved();
        const std::int32_t before = m_program->state.Run.PeakSpeedRaw;
        inTheForm([] { clickSend(); });
        QVERIFY(m_program->state.Run.PeakSpeedRaw > before);
        QCOMPARE(m_program->state.Config.Wheel, 22.0F); // the typed one was for this download
    }

    void aMissingConfigurationIsToldAndTheDownloadGoesOn() {
        connectLogger(25);
        QVERIFY(static_cast<bool>(m_program->files.remove("/kvo/Kvo.Cfg")));
        dialogs().expectBoxTitled("Kvo").contains = "Kvo.CfgG file not found";
        expectSaved();
        forms::doors().showSoftwareSetup = [this] { m_calls << QStringLiteral("setup"); };
        inTheForm([] { clickSend(); });
        QCOMPARE(m_calls, QStringList({"setup", "chooser: 26111514.42d"}));
        QVERIFY(m_program->files.exists(downloadedRun));
    }

    void aYesOpensTheRunInTheGraph() {
        connectLogger(25);
        expectSaved(Reply::yes);
        forms::doors().showFreshRun = [this](const std::string& path, const std::string& caption) {
            m_calls << QStringLiteral("graph: ") + QString::fromStdString(path + " as" + caption);
            QVERIFY(!isLoaded<DownloadData>());
            QVERIFY(dialogs().hourglass());
        };
        inTheForm([] { clickSend(); });
        QCOMPARE(
            m_calls, QStringList({"chooser: 26111514.42d",
                         "graph: /kvo/Data/26111514.42d as Date:Sun 15 Nov 2026 Run: 7 Final"}));
        QVERIFY(!dialogs().hourglass());
    }

    void withoutATitleNothingIsSaved() {
        connectLogger(25);
        dialogs().expectInputTitled("Run Title", "");
        dialogs().expectBoxTitled("Data Warning", Reply::no);
        dialogs().expectInputTitled("Run Title", "abc");
        dialogs().expectInputTitled("Run Title", "0");
        dialogs().expectInputTitled("Run Title", "");
        dialogs().expectBoxTitled("Data Warning", Reply::yes);
        inTheForm([] { clickSend(); });
        QVERIFY(!m_program->files.exists(downloadedRun));
        QCOMPARE(int{m_program->state.Run.SampleCount}, 1213);
    }

    void aFullDiskIsToldAndSavingTriedAgain() {
        connectLogger(25);
        m_program->files.failWrites("/kvo/Data", MemoryFiles::Failure::fullDisk, 1);
        dialogs().expectInputTitled("Run Title", "7 Final");
        dialogs().expectBoxTitled("Run Not Saved", Reply::retry);
        dialogs().expectBoxTitled("Download Saved", Reply::no);
        inTheForm([] { clickSend(); });
        QVERIFY(m_program->files.exists(downloadedRun));
    }

    void theFormIsFreshEachTime() {
        connectLogger(25);
        expectSaved();
        inTheForm([] { clickSend(); });
        inTheForm([] {
            QVERIFY(sendButton().isVisible());
            QCOMPARE(progressBar().value(), 0);
            form<DownloadData>().close();
        });
    }

    void everythingWorksFromTheKeyboard() {
        connectLogger(25);
        expectSaved();
        inTheForm([] {
            QVERIFY(sendButton().hasFocus() || sendButton().isDefault());
            QTest::keyClick(&form<DownloadData>(), Qt::Key_Return);
        });
        QVERIFY(m_program->files.exists(downloadedRun));
        expectSaved();
        inTheForm([] { QTest::keyClick(&form<DownloadData>(), Qt::Key_S, Qt::AltModifier); });
    }
};

KVO_FORM_TEST_MAIN(DownloadDataTest)
#include "download_data_test.moc"
