// The serial port and the wait, over a real pseudo-terminal.
#include "platform/qt/open_failure.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_yield.h"
#include "platform/qt/serial_devices.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/pty_pair.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <ctime>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace kvo::platform_qt;
using kvo::platform::PortError;
using kvo::testing::PtyPair;

namespace {

double cpuMilliseconds() {
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

class SerialPortTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::string folder() const { return m_folder.path().toStdString(); }
    void linkPort(int number, const std::string& device) {
        const QString link = m_folder.filePath(QStringLiteral("COM%1").arg(number));
        QFile::remove(link);
        QVERIFY(QFile::link(QString::fromStdString(device), link));
    }

private slots:
    void bytesPassUnchangedBothWays() {
        PtyPair far;
        linkPort(1, far.devicePath());
        QtSerialPort port([this] { return folder(); });
        QtYield yield(port);
        port.setCommPort(1);
        port.setSettings("9600,N,8,1");
        port.setPortOpen(true);
        QVERIFY(port.portOpen());
        std::string all;
        for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
        port.output(all);
        QCOMPARE(far.receive(256), all);
        QCOMPARE(port.outBufferCount(), 0);
        far.send(all);
        while (port.inBufferCount() < 256) QVERIFY(yield.turns(8000) < 8000);
        port.setInputLen(1);
        QCOMPARE(port.input(), std::string(1, '\0'));
        port.setInputLen(54);
        QCOMPARE(port.input(), all.substr(1, 54));
        port.setInputLen(0);
        QCOMPARE(port.input(), all.substr(55));
        QCOMPARE(port.input(), std::string());
    }

    void bytesFromBeforeTheOpenAreDropped() {
        PtyPair far;
        linkPort(2, far.devicePath());
        far.send("old");
        QtSerialPort port([this] { return folder(); });
        QtYield yield(port);
        port.setCommPort(2);
        port.setPortOpen(true);
        QVERIFY(port.portOpen());
        yield.turns(640);
        QCOMPARE(port.inBufferCount(), 0);
    }

    void everyPortSaysWhatIsBehindItAndWhetherItIsFree() {
        PtyPair free, taken;
        linkPort(1, free.devicePath());
        linkPort(2, taken.devicePath());
        linkPort(3, "/dev/not_there");
        QtSerialPort other([this] { return folder(); });
        other.setCommPort(2);
        other.setPortOpen(true);
        QVERIFY(other.portOpen());
        QtSerialPort port([this] { return folder(); });
        const auto states = port.portStates();
        QCOMPARE(states.size(), std::size_t(16));
        const auto behind = [this](int number, const std::string& device) {
            return m_folder.filePath(QStringLiteral("COM%1").arg(number)).toStdString() + " (" +
                   device + ")";
        };
        QVERIFY(
            (states[0] == kvo::platform::PortState{behind(1, free.devicePath()), PortError::none}));
        QVERIFY((
            states[1] == kvo::platform::PortState{behind(2, taken.devicePath()), PortError::busy}));
        QVERIFY((states[2] ==
                 kvo::platform::PortState{behind(3, "/dev/not_there"), PortError::missing}));
        QVERIFY(!port.portOpen());
        QVERIFY(other.portOpen());
        QVERIFY(other.portStates()[1].error == PortError::busy); // by itself
        for (int number = 1; number <= 3; ++number)
            QFile::remove(m_folder.filePath(QStringLiteral("COM%1").arg(number)));
    }

    void aWaitSleepsAndCountsByTheClock() {
        PtyPair far;
        linkPort(1, far.devicePath());
        QtSerialPort port([this] { return folder(); });
        QtYield yield(port);
        port.setPortOpen(true);
        QElapsedTimer clock;
        const double cpuBefore = cpuMilliseconds();
        clock.start();
        QCOMPARE(yield.turns(8000), 8000);
        const qint64 wall = clock.elapsed();
        QVERIFY2(wall >= 245 && wall < 400, qPrintable(QString::number(wall)));
        QVERIFY(cpuMilliseconds() - cpuBefore < 50);
    }

    void aWaitEndsAtOnceWhenAByteComes() {
        PtyPair far;
        linkPort(1, far.devicePath());
        QtSerialPort port([this] { return folder(); });
        QtYield yield(port);
        port.setPortOpen(true);
        QTimer::singleShot(50, [&far] { far.send("x"); });
        const int passed = yield.turns(32000);
        QVERIFY2(passed >= 1500 && passed < 5000, qPrintable(QString::number(passed)));
        QCOMPARE(port.inBufferCount(), 1);
    }

    void aWaitForABatchIsNotWokenByEachByte() {
        PtyPair far;
        linkPort(1, far.devicePath());
        QtSerialPort port([this] { return folder(); });
        QtYield yield(port);
        port.setPortOpen(true);
        port.setInputLen(3);
        QTimer::singleShot(20, [&far] { far.send("a"); });
        QTimer::singleShot(40, [&far] { far.send("b"); });
        QTimer::singleShot(60, [&far] { far.send("c"); });
        QVERIFY(yield.turns(32000) < 32000);
        QCOMPARE(port.inBufferCount(), 3);
        QCOMPARE(port.input(), std::string("abc"));
    }

    void aPulledCableClosesOnceAndNeverSpins() {
        PtyPair far;
        linkPort(1, far.devicePath());
        QtSerialPort port([this] { return folder(); });
        QtYield yield(port);
        port.setPortOpen(true);
        QSignalSpy activity(&port, &QtSerialPort::activity);
        QTimer::singleShot(20, [&far] { far.hangUp(); });
        const double cpuBefore = cpuMilliseconds();
        int left = 16000;
        while (left > 0) left -= yield.turns(left);
        QVERIFY(!port.portOpen());
        QCOMPARE(activity.count(), 1);
        QVERIFY2(cpuMilliseconds() - cpuBefore < 100, "the wait spins on a lost line");
        QCOMPARE(port.inBufferCount(), 0);
        port.output("still safe");
        QCOMPARE(port.outBufferCount(), 0);
        QCOMPARE(port.input(), std::string());
        port.setPortOpen(false);
    }

    void aLineThatDoesNotTellIsFoundByPolling() {
        PtyPair far;
        linkPort(1, far.devicePath());
        QtSerialPort port([this] { return folder(); });
        port.setPortOpen(true);
        port.pollHangUp();
        QVERIFY(port.portOpen());
        far.hangUp();
        port.pollHangUp();
        QVERIFY(!port.portOpen());
    }

    void aFloodingLineStaysInsideTheBuffer() {
        PtyPair far;
        linkPort(1, far.devicePath());
        QtSerialPort port([this] { return folder(); });
        QtYield yield(port);
        port.setPortOpen(true);
        far.send(std::string(3000, 'g'));
        const double cpuBefore = cpuMilliseconds();
        int left = 6400;
        while (left > 0) left -= yield.turns(left);
        QCOMPARE(port.inBufferCount(), 1024);
        QVERIFY(cpuMilliseconds() - cpuBefore < 80);
        port.setInputLen(0);
        QCOMPARE(port.input().size(), std::size_t{1024});
        while (port.inBufferCount() < 1024) QVERIFY(yield.turns(8000) < 8000);
    }

    void aMissingPortSaysSo() {
        QtSerialPort port([this] { return folder(); });
        linkPort(7, "/dev/no-such-device");
        port.setCommPort(7);
        port.setPortOpen(true);
        QVERIFY(!port.portOpen());
        QCOMPARE(port.openError(), PortError::missing);
        QVERIFY(port.openErrorText().find("/dev/no-such-device") != std::string::npos);
    }

    void aPortInUseSaysSo() {
        PtyPair far;
        linkPort(1, far.devicePath());
        QtSerialPort first([this] { return folder(); });
        first.setPortOpen(true);
        QVERIFY(first.portOpen());
        QtSerialPort second([this] { return folder(); });
        second.setPortOpen(true);
        QVERIFY(!second.portOpen());
        QCOMPARE(second.openError(), PortError::busy);
        QVERIFY(second.openErrorText().find("in use") != std::string::npos);
    }

    void aDeviceThatIsNoLineSaysSo() {
        linkPort(3, "/dev/null");
        QtSerialPort port([this] { return folder(); });
        port.setCommPort(3);
        port.setPortOpen(true);
        QVERIFY(!port.portOpen());
        QCOMPARE(port.openError(), PortError::other);
    }

    // A device that belongs to a group names the group to join. As root everything is permitted, so
    // the test looks with the eyes of somebody else.
    void aPortThatIsNotPermittedNamesTheGroup() {
        if (::geteuid() != 0) QSKIP("only root can give a file to a group");
        const group* owner = ::getgrnam("dialout");
        if (owner == nullptr) QSKIP("there is no such group here");
        const gid_t gid = owner->gr_gid;
        constexpr uid_t nobody = 65534;
        const QString device = m_folder.filePath(QStringLiteral("ttyTest"));
        QFile file(device);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(::fchown(file.handle(), 0, gid), 0);
        QCOMPARE(::fchmod(file.handle(), S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP), 0);
        QCOMPARE(::chmod(qPrintable(m_folder.path()), 0755), 0);
        QCOMPARE(::setreuid(nobody, 0), 0);
        const OpenFailure failure =
            explainOpenFailure(4, device, QStringLiteral("Permission denied"));
        QCOMPARE(::fchmod(file.handle(), S_IRUSR | S_IWUSR), 0);
        const OpenFailure hopeless =
            explainOpenFailure(4, device, QStringLiteral("Permission denied"));
        QCOMPARE(::setreuid(0, 0), 0);
        QCOMPARE(failure.error, PortError::notPermitted);
        QVERIFY2(failure.text.contains(QLatin1String("\"dialout\"")), qPrintable(failure.text));
        QCOMPARE(hopeless.error, PortError::notPermitted);
        QVERIFY(!hopeless.text.contains(QLatin1String("dialout")));
    }

    void aNumberWithoutDeviceIsMissing() {
        const kvo::platform_qt::OpenFailure failure = explainOpenFailure(16, {}, {});
        QCOMPARE(failure.error, PortError::missing);
        QVERIFY(failure.text.contains(QLatin1String("number 16")));
    }

    void usbAdaptersComeFirstInNaturalOrder() {
        std::vector<SerialDevice> devices{{QStringLiteral("/dev/ttyS1"), false},
            {QStringLiteral("/dev/ttyUSB10"), true}, {QStringLiteral("/dev/ttyS0"), false},
            {QStringLiteral("/dev/ttyUSB2"), true}, {QStringLiteral("/dev/ttyACM0"), true}};
        sortSerialDevices(devices);
        QStringList paths;
        for (const SerialDevice& device : devices) paths << device.path;
        QCOMPARE(paths, QStringList({QStringLiteral("/dev/ttyACM0"), QStringLiteral("/dev/ttyUSB2"),
                            QStringLiteral("/dev/ttyUSB10"), QStringLiteral("/dev/ttyS0"),
                            QStringLiteral("/dev/ttyS1")}));
        const QTemporaryDir empty;
        QCOMPARE(deviceOfPort(2, empty.path(), devices), QStringLiteral("/dev/ttyUSB2"));
        QCOMPARE(deviceOfPort(6, empty.path(), devices), QString());
        QCOMPARE(deviceOfPort(0, empty.path(), devices), QString());
        QCOMPARE(deviceOfPort(17, empty.path(), devices), QString());
        QVERIFY(QFile::link(QStringLiteral("/dev/pts/99"), empty.filePath(QStringLiteral("COM2"))));
        QCOMPARE(deviceOfPort(2, empty.path(), devices), empty.filePath(QStringLiteral("COM2")));
    }
};

KVO_FORM_TEST_MAIN(SerialPortTest)
#include "serial_port_test.moc"
