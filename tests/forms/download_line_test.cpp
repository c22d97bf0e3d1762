// A whole download as a user makes it: real windows and boxes, the real port, a logger at the other
// end of a pseudo-terminal.
#include "core/run_index.h"
#include "link/forms/download_data.h"
#include "link/forms/logger_line.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_yield.h"
#include "tests/forms/support/download_window.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"
#include "tools/logger_simulator/pty_logger.h"

#include <QAction>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <ctime>
#include <memory>
#include <optional>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::DownloadData;
using kvo::forms::VrnWin32;
using kvo::simulator::Fault;

namespace {

double cpuMilliseconds() {
    // Of this thread: the logger has one of its own.
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

} // namespace

class DownloadLineTest : public QObject {
    Q_OBJECT

    struct Cable {
        Cable(const std::string& folder, int type, Fault fault)
            : logger(type), faulty(logger, fault), far(faulty, false),
              port([folder] { return folder; }), yield(port), link(port, yield, dialogs) {
            started = far.start();
            QFile::remove(linkPath(folder));
            QFile::link(QString::fromStdString(far.device()), linkPath(folder));
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
        static QString linkPath(const std::string& folder) {
            return QString::fromStdString(folder + "/COM1");
        }
        simulator::ModelLogger logger;
        simulator::FaultyEnd faulty;
        simulator::PtyLogger far;
        QtDialogs dialogs;
        QtSerialPort port;
        QtYield yield;
        link::LoggerLink link;
        bool started = false;
    };
    QTemporaryDir m_folder;
    std::unique_ptr<TestProgram> m_program;
    std::optional<Cable> m_cable;

    void connectLogger(int type, bool fast, Fault fault = {}) {
        core::AppConfig& config = m_program->state.Config;
        config.CheckBits = {
            static_cast<std::int16_t>(fast ? 0 : -1), static_cast<std::int16_t>(fast ? -1 : 0)};
        config.Wheel = 22;
        config.Engine_Correction = config.Clutch_Correction = 1;
        config.Pinion_Correction = config.Speed_Correction = 1;
        m_program->putConfig();
        m_cable.emplace(m_folder.path().toStdString(), type, fault);
        QVERIFY(m_cable->started);
    }
    // What a user does from the menu up to the click on Start Download.
    void startDownload() {
        auto& window = form<VrnWin32>();
        window.show();
        answerBox("Date: Sunday, 15 November 2026", "OK");
        onModal([](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("DownloadData"));
            QCOMPARE(userClick(&sendButton()), QString());
            if (isLoaded<DownloadData>()) form<DownloadData>().close();
        });
    }
    void sayTheWheelIsRight() { answerBox("Front Wheel Dimeter", "Yes"); }
    void run() { control<QAction>(form<VrnWin32>(), "Mnu_DownloadData").trigger(); }

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

    void aRunComesOverTheWire_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("fast");
        for (const int type : {8, 12, 17, 20, 25, 32, 43})
            QTest::addRow("type %d, fast", type) << type << true;
        QTest::newRow("type 25, safe") << 25 << false;
        QTest::newRow("type 8, safe") << 8 << false;
    }
    void aRunComesOverTheWire() {
        QFETCH(int, type);
        QFETCH(bool, fast);
        connectLogger(type, fast);
        startDownload();
        sayTheWheelIsRight();
        if (type == 43) answerBox("Warning", "OK");
        onModal([](QWidget* modal) {
            QCOMPARE(modal->windowTitle(), QStringLiteral("Run Title"));
            QTest::keyClick(modal, Qt::Key_Return); // the suggested title
        });
        answerBox("Download Saved", "No");
        run();
        QVERIFY(m_program->files.exists(downloadedRun));
        const auto index = core::readRunIndex("/kvo/Data/KvoData.Ini", m_program->files);
        QCOMPARE(QString::fromStdString(index.at(0).Description),
            QStringLiteral("Sun 15 Nov 2026 Run: 1"));
        QVERIFY(m_program->state.Run.PeakSpeedRaw > 0);
        QVERIFY(!isLoaded<DownloadData>());
        QVERIFY(!m_cable->port.portOpen());
    }

    void everyFaultEndsInWordsAndNeverInASpin_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("byte");
        QTest::addColumn<QString>("title");
        const auto row = [](const char* name, Fault::Kind kind, int byte, const char* title) {
            QTest::newRow(name) << static_cast<int>(kind) << byte << QString::fromLatin1(title);
        };
        row("silent", Fault::Kind::silent, 0, "Download Error !");
        row("wrong greeting", Fault::Kind::wrongGreeting, 0, "Download Error !");
        row("stops in the data", Fault::Kind::stopAfter, 5000, "Download Error");
        row("loses a byte", Fault::Kind::drop, 5000, "Download Error");
        row("pulled in the data", Fault::Kind::hangUpAt, 5000, "Download Error");
        row("pulled in the header", Fault::Kind::hangUpAt, 20, "Download Error");
        row("floods", Fault::Kind::flood, 0, "Download Error !");
    }
    void everyFaultEndsInWordsAndNeverInASpin() {
        QFETCH(int, kind);
        QFETCH(int, byte);
        QFETCH(QString, title);
        connectLogger(25, true, {static_cast<Fault::Kind>(kind), byte});
        startDownload();
        if (title == QLatin1String("Download Error")) sayTheWheelIsRight();
        answerBox(title, "OK");
        const double cpuBefore = cpuMilliseconds();
        run();
        const double used = cpuMilliseconds() - cpuBefore;
        QVERIFY2(used < 700, qPrintable(QString::number(used)));
        QVERIFY(!m_program->files.exists(downloadedRun));
        QVERIFY(!isLoaded<DownloadData>());
        QVERIFY(!m_cable->port.portOpen());
        QVERIFY(control<QAction>(form<VrnWin32>(), "Mnu_DownloadData").isEnabled());
    }

    void aMissingPortIsToldWithItsDevice() {
        connectLogger(25, true);
        QFile::remove(Cable::linkPath(m_folder.path().toStdString()));
        QFile::link(
            QStringLiteral("/dev/no-such-line"), Cable::linkPath(m_folder.path().toStdString()));
        startDownload();
        answerBox("Communications Error", "OK", [](const QMessageBox& box) {
            QVERIFY(box.text().startsWith(QLatin1String("Error Opening Com")));
            QCOMPARE(box.icon(), QMessageBox::Critical);
        });
        run();
    }

    // A person may press Cancel while the program waits for an answer.
    void cancelRunsInsideTheWait() {
        connectLogger(25, true, {Fault::Kind::silent, 0});
        auto& window = form<VrnWin32>();
        window.show();
        m_program->state.Config.Date_Prompt = 1;
        onModal([this](QWidget*) {
            bool clicked = false;
            QTimer::singleShot(100, [&clicked] {
                clicked = userClick(&control<QPushButton>(form<DownloadData>(), "Cancel_Command"))
                              .isEmpty();
            });
            QElapsedTimer clock;
            clock.start();
            QCOMPARE(userClick(&sendButton()), QString());
            QVERIFY(clicked);
            QVERIFY(clock.elapsed() < 1000);
            QVERIFY(!m_cable->port.portOpen());
        });
        run();
        QVERIFY(!isLoaded<DownloadData>());
    }

    void theWindowIsPaintedDuringATransfer() {
        connectLogger(25, true);
        startDownload();
        sayTheWheelIsRight();
        int ticks = 0;
        QTimer ticking;
        connect(&ticking, &QTimer::timeout, [&ticks] { ++ticks; });
        ticking.start(5);
        answerInput("Run Title", "3");
        answerBox("Download Saved", "No");
        run();
        QVERIFY(ticks > 5);
        QVERIFY(m_program->files.exists(downloadedRun));
    }
};

KVO_FORM_TEST_MAIN(DownloadLineTest)
#include "download_line_test.moc"
