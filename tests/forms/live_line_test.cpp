// Pit run and configuration as a user does them: real windows and boxes, the real port, a logger at
// the other end of a pseudo-terminal.
#include "link/forms/logger_line.h"
#include "link/forms/pit_run.h"
#include "link/forms/setup_obc.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_yield.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/obc_rig.h"
#include "tests/support/pit_rig.h"
#include "tools/logger_simulator/pty_logger.h"

#include <QAction>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>

#include <atomic>
#include <ctime>
#include <memory>
#include <optional>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::PitRun;
using kvo::forms::SetupOBC;
using kvo::forms::VrnWin32;
using kvo::simulator::Fault;

namespace {

double cpuMilliseconds() {
    // Of this thread: the logger has one of its own.
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

QPushButton& startButton() {
    return control<QPushButton>(form<PitRun>(), "Command1");
}
QString sample() {
    return control<QLabel>(form<PitRun>(), "LineNumber").text();
}

// Counts how often it was closed while it was open.
class CountingPort : public QtSerialPort {
public:
    using QtSerialPort::QtSerialPort;
    void setPortOpen(bool open) override {
        if (!open && portOpen()) ++closings;
        QtSerialPort::setPortOpen(open);
    }
    int closings = 0;
};

} // namespace

class LiveLineTest : public QObject {
    Q_OBJECT

    struct Cable {
        Cable(const std::string& folder, int type, Fault fault)
            : logger(headerStream(type)), faulty(logger, fault), far(faulty, false),
              port([folder] { return folder; }), yield(port), link(port, yield, dialogs) {
            started = far.start();
            const QString path = QString::fromStdString(folder + "/COM1");
            QFile::remove(path);
            QFile::link(QString::fromStdString(far.device()), path);
            platform::Services& services = platform::services();
            services.dialogs = &dialogs;
            services.port = &port;
            services.yield = &yield;
            forms::useLoggerLink(&link);
        }
        ~Cable() {
            platform::services().dialogs = nullptr;
            forms::useLoggerLink(nullptr);
        }
        // Whether the logger still streams, when it has taken all that was sent.
        bool streams() {
            for (int round = 0; round < 2; ++round) {
                std::atomic<bool> done = false;
                far.post([&done] { done = true; });
                while (!done && far.running()) QTest::qWait(1);
            }
            far.stop();
            return logger.inPitRun();
        }
        simulator::ModelLogger logger;
        simulator::FaultyEnd faulty;
        simulator::PtyLogger far;
        QtDialogs dialogs;
        CountingPort port;
        QtYield yield;
        link::LoggerLink link;
        bool started = false;
    };
    QTemporaryDir m_folder;
    std::unique_ptr<TestProgram> m_program;
    std::optional<Cable> m_cable;

    void connectLogger(int type, Fault fault = {}) {
        m_program->state.Config = pitConfig(type);
        m_cable.emplace(m_folder.path().toStdString(), type, fault);
        QVERIFY(m_cable->started);
    }
    static void command(const char* name) { control<QAction>(form<VrnWin32>(), name).trigger(); }
    void openPitRun() {
        form<VrnWin32>().show();
        command("Mnu_PitRun");
        QVERIFY(QTest::qWaitForWindowActive(&form<PitRun>()));
    }
    // Presses Start, and Stop so much later.
    void runFor(int milliseconds) {
        answerBox("Info", "OK");
        QTimer::singleShot(milliseconds, [] { QCOMPARE(userClick(&startButton()), QString()); });
        QCOMPARE(userClick(&startButton()), QString());
        QCOMPARE(startButton().text(), QStringLiteral("&Start"));
        QVERIFY(!m_cable->port.portOpen());
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        forms::openDoors();
    }
    void cleanup() {
        const QString problems = modalComplaints();
        unloadAllForms();
        m_cable.reset();
        m_program.reset();
        QCOMPARE(problems, QString());
    }

    void valuesComeLive_data() {
        QTest::addColumn<int>("type");
        for (const int type : {12, 17, 20, 25, 32, 43}) QTest::addRow("type %d", type) << type;
    }
    void valuesComeLive() {
        QFETCH(int, type);
        connectLogger(type);
        openPitRun();
        QStringList samples;
        QTimer look;
        connect(&look, &QTimer::timeout, [&samples] {
            if (samples.isEmpty() || samples.last() != sample()) samples << sample();
        });
        look.start(5);
        const double before = cpuMilliseconds();
        runFor(1000);
        const double used = cpuMilliseconds() - before;
        QVERIFY2(used < 500, qPrintable(QString::number(used))); // it does not spin
        QVERIFY2(samples.size() > 5, qPrintable(samples.join(',')));
        for (qsizetype i = 2; i < samples.size(); ++i)
            QVERIFY(samples[i].toInt() > samples[i - 1].toInt());
        QCOMPARE(m_cable->port.closings, 1);
        QVERIFY(!m_cable->streams());
        form<PitRun>().close();
        QVERIFY(form<VrnWin32>().isVisible());
    }

    void everyFaultRunsUntilStop_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("byte");
        QTest::newRow("silent") << static_cast<int>(Fault::Kind::silent) << 0;
        QTest::newRow("stops") << static_cast<int>(Fault::Kind::stopAfter) << 100;
        QTest::newRow("pulled") << static_cast<int>(Fault::Kind::hangUpAt) << 100;
        QTest::newRow("pulled at once") << static_cast<int>(Fault::Kind::hangUpAt) << 1;
        QTest::newRow("floods") << static_cast<int>(Fault::Kind::flood) << 0;
    }
    void everyFaultRunsUntilStop() {
        QFETCH(int, kind);
        QFETCH(int, byte);
        connectLogger(25, {static_cast<Fault::Kind>(kind), byte});
        openPitRun();
        const double before = cpuMilliseconds();
        runFor(700);
        const double used = cpuMilliseconds() - before;
        QVERIFY2(used < 400, qPrintable(QString::number(used)));
        QVERIFY(m_cable->port.closings <= 1); // a line that is lost closes itself
        form<PitRun>().close();
        QVERIFY(form<VrnWin32>().isVisible());
    }

    void silenceIsSaidInPlainWords() {
        connectLogger(25, {Fault::Kind::hangUpAt, 300});
        openPitRun();
        QString said;
        QTimer look;
        connect(&look, &QTimer::timeout, [&said] {
            const QString now = control<QLabel>(form<PitRun>(), "Label_Status").text();
            if (!now.isEmpty()) said = now;
        });
        look.start(20);
        // A machine that does other work may show a later second first.
        const QRegularExpression plain(QStringLiteral("^No data from the logger for [2-9] s$"));
        runFor(4000);
        QVERIFY2(plain.match(said).hasMatch(), qPrintable(said));
    }

    void anotherProgramFindsThePortInUse() {
        connectLogger(25);
        openPitRun();
        platform::PortError error = platform::PortError::none;
        QtSerialPort other([this] { return m_folder.path().toStdString(); });
        QTimer::singleShot(200, [&] {
            other.setCommPort(1);
            other.setPortOpen(true);
            error = other.openError();
        });
        runFor(500);
        QCOMPARE(error, platform::PortError::busy);
        QVERIFY(!other.portOpen());
        QVERIFY(!sample().isEmpty());
    }

    void cancelWhileLiveStopsAndComesBack() {
        connectLogger(25);
        openPitRun();
        answerBox("Info", "OK");
        QTimer::singleShot(300, [] {
            QCOMPARE(userClick(&control<QPushButton>(form<PitRun>(), "BTN_Ok")), QString());
        });
        QCOMPARE(userClick(&startButton()), QString());
        QVERIFY(!isLoaded<PitRun>());
        QVERIFY(form<VrnWin32>().isVisible());
        QCOMPARE(m_cable->port.closings, 1);
        QVERIFY(!m_cable->streams());
    }

    // The program is told to end in the middle of a pit run: it stops the logger and goes.
    void theMainWindowIsClosedWhileLive() {
        connectLogger(25);
        openPitRun();
        answerBox("Info", "OK");
        bool wasLive = false;
        QTimer::singleShot(0, [] { QCOMPARE(userClick(&startButton()), QString()); });
        QTimer::singleShot(400, [this, &wasLive] {
            wasLive = m_cable->port.portOpen();
            form<VrnWin32>().close();
        });
        QTimer::singleShot(30000, qApp, [] { QApplication::exit(7); });
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(wasLive);
        QVERIFY(!isLoaded<PitRun>());
        QCOMPARE(m_cable->port.closings, 1);
        QVERIFY(!m_cable->streams());
    }

    void theMainWindowIsClosedWhileTheHeaderIsRead() {
        connectLogger(25, {Fault::Kind::stopAfter, 3});
        form<VrnWin32>().show();
        bool formCame = false;
        QTimer::singleShot(0, [&formCame] {
            command("Mnu_ConfigureComputer");
            formCame = isLoaded<SetupOBC>();
        });
        QElapsedTimer clock;
        QTimer::singleShot(600, [&clock] {
            clock.start();
            form<VrnWin32>().close();
        });
        QTimer::singleShot(30000, qApp, [] { QApplication::exit(7); });
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY2(clock.elapsed() < 6000, "the waits that were left take eight seconds");
        QVERIFY(!formCame);
        QCOMPARE(m_cable->port.closings, 1);
    }

    void theSettingsAreReadWrittenAndReadAgain() {
        connectLogger(25);
        form<VrnWin32>().show();
        onModal([](QWidget* modal) {
            auto& rpm = control<QLineEdit>(*modal, "Label_RoRpm");
            QCOMPARE(rpm.text(), QStringLiteral("3000"));
            rpm.selectAll();
            QTest::keyClicks(&rpm, QStringLiteral("2500"));
            answerBox("Kvo", "Yes");
            answerBox("Kvo", "OK");
            QCOMPARE(userClick(&control<QPushButton>(*modal, "SaveSetup")), QString());
        });
        command("Mnu_ConfigureComputer");
        QVERIFY(!isLoaded<SetupOBC>());
        QVERIFY(!m_cable->port.portOpen());
        m_cable->far.post([this] { m_cable->logger.powerUp(); });
        onModal([](QWidget* modal) {
            QCOMPARE(control<QLineEdit>(*modal, "Label_RoRpm").text(), QStringLiteral("2500"));
            modal->close();
        });
        command("Mnu_ConfigureComputer");
        QVERIFY(m_cable->port.portOpen()); // Required: Cancel leaves it open
        // And the next session takes it over.
        command("Mnu_PitRun");
        runFor(300);
        QVERIFY(!sample().isEmpty());
        QCOMPARE(m_cable->port.closings, 2);
    }

    // The port number was changed while the form's port was left open.
    void aPortLeftOpenIsNotTakenForAnotherNumber() {
        connectLogger(25);
        form<VrnWin32>().show();
        onModal([](QWidget* modal) { modal->close(); });
        command("Mnu_ConfigureComputer");
        QVERIFY(m_cable->port.portOpen());
        m_program->state.Config.CommPort = 2;
        command("Mnu_PitRun");
        bool told = false;
        answerBox("Communications Error", "OK", [&told](const QMessageBox& box) {
            told = box.text().startsWith(QLatin1String("Error Opening Com2"));
        });
        QVERIFY(QTest::qWaitForWindowActive(&form<PitRun>()));
        QCOMPARE(userClick(&startButton()), QString());
        QVERIFY(told);
        QVERIFY(!m_cable->port.portOpen());
        QCOMPARE(m_cable->port.closings, 1);
        QCOMPARE(startButton().text(), QStringLiteral("&Start"));
    }
};

KVO_FORM_TEST_MAIN(LiveLineTest)
#include "live_line_test.moc"
