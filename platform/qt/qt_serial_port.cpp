#include "platform/qt/qt_serial_port.h"

#include "platform/qt/open_failure.h"
#include "platform/qt/serial_devices.h"
#include "platform/qt/text.h"

#include <QByteArray>
#include <QFileInfo>
#include <QList>

#include <algorithm>

#include <poll.h>
#include <unistd.h>

namespace kvo::platform_qt {
namespace {

// The buffer that the link counts on. Past it bytes wait in the driver, so a flooding line cannot
// fill the memory.
constexpr qint64 receiveBufferBytes = 1024;
constexpr int hangUpPollMs = 50;

QSerialPort::Parity parityOf(char letter) {
    switch (letter) {
    case 'E':
        return QSerialPort::EvenParity;
    case 'O':
        return QSerialPort::OddParity;
    case 'M':
        return QSerialPort::MarkParity;
    case 'S':
        return QSerialPort::SpaceParity;
    default:
        return QSerialPort::NoParity;
    }
}

// The lock file sees by the real name alone that another program has the device.
QString realName(const QString& device) {
    const QString real = QFileInfo(device).canonicalFilePath();
    return real.isEmpty() ? device : real;
}

platform::PortError openErrorOf(int number, const QString& device) {
    if (device.isEmpty()) return platform::PortError::missing;
    QSerialPort trial(realName(device));
    if (trial.open(QIODevice::ReadWrite)) return platform::PortError::none;
    return explainOpenFailure(number, device, trial.errorString()).error;
}

} // namespace

QtSerialPort::QtSerialPort(FolderSource programFolder) : m_programFolder(std::move(programFolder)) {
    m_port.setReadBufferSize(receiveBufferBytes);
    m_watch.setInterval(hangUpPollMs);
    connect(&m_watch, &QTimer::timeout, this, &QtSerialPort::pollHangUp);
    connect(&m_port, &QSerialPort::errorOccurred, this, &QtSerialPort::errorHappened);
    connect(&m_port, &QSerialPort::readyRead, this, &QtSerialPort::bytesCame);
    connect(&m_port, &QSerialPort::bytesWritten, this, &QtSerialPort::activity);
}

void QtSerialPort::setCommPort(int number) {
    if (!m_port.isOpen()) m_number = number;
}

void QtSerialPort::setSettings(std::string_view settings) {
    const QList<QByteArray> parts =
        QByteArray(settings.data(), static_cast<qsizetype>(settings.size())).split(',');
    if (parts.size() != 4 || parts[1].isEmpty()) return;
    m_port.setBaudRate(parts[0].toInt());
    m_port.setParity(parityOf(parts[1][0]));
    m_port.setDataBits(static_cast<QSerialPort::DataBits>(parts[2].toInt()));
    m_port.setStopBits(parts[3] == "2" ? QSerialPort::TwoStop : QSerialPort::OneStop);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
}

void QtSerialPort::setPortOpen(bool open) {
    if (open == m_port.isOpen()) return;
    if (open)
        openPort();
    else
        closePort();
}

void QtSerialPort::closePort() {
    m_watch.stop();
    m_port.close();
}

std::string QtSerialPort::deviceOf(int number) const {
    return deviceOfPort(number, shownPath(m_programFolder()), serialDevices()).toStdString();
}

// Each device is opened for a moment, which is the one way to learn whether that goes.
std::vector<platform::PortState> QtSerialPort::portStates() const {
    const QString folder = shownPath(m_programFolder());
    const std::vector<SerialDevice> devices = serialDevices();
    std::vector<platform::PortState> states;
    for (int number = 1; number <= platform::portNumbers; ++number) {
        const QString device = deviceOfPort(number, folder, devices);
        const bool own = m_port.isOpen() && number == m_number;
        states.push_back({withTarget(device).toStdString(),
            own ? platform::PortError::busy : openErrorOf(number, device)});
    }
    return states;
}

void QtSerialPort::openPort() {
    m_openError = platform::PortError::none;
    m_openErrorText.clear();
    const QString device = deviceOfPort(m_number, shownPath(m_programFolder()), serialDevices());
    m_port.setPortName(realName(device));
    m_opening = true;
    const bool opened = !device.isEmpty() && m_port.open(QIODevice::ReadWrite);
    m_opening = false;
    if (!opened) return explainFailedOpen(device);
    m_port.clear(); // what the driver kept from before is nobody's answer
    m_watch.start();
}

void QtSerialPort::explainFailedOpen(const QString& device) {
    const OpenFailure failure = explainOpenFailure(m_number, device, m_port.errorString());
    m_openError = failure.error;
    m_openErrorText = failure.text.toStdString();
    m_port.clearError();
}

int QtSerialPort::inBufferCount() {
    return m_port.isOpen() ? static_cast<int>(m_port.bytesAvailable()) : 0;
}

int QtSerialPort::outBufferCount() {
    return m_port.isOpen() ? static_cast<int>(m_port.bytesToWrite()) : 0;
}

void QtSerialPort::output(std::string_view bytes) {
    if (!m_port.isOpen()) return;
    const std::string_view rest = bytes.substr(sendAtOnce(bytes));
    if (rest.empty()) return;
    m_port.write(rest.data(), static_cast<qint64>(rest.size()));
    if (m_port.isOpen()) m_port.flush(); // else they would wait for the next event loop
}

// Straight to the driver what it takes now, which is all but always everything: through the port's
// own buffer each byte would cost a turn of the event loop more. Gives the bytes that went.
std::size_t QtSerialPort::sendAtOnce(std::string_view bytes) {
    if (m_port.bytesToWrite() > 0) return 0; // behind what waits already
    const ssize_t sent = ::write(static_cast<int>(m_port.handle()), bytes.data(), bytes.size());
    return sent > 0 ? static_cast<std::size_t>(sent) : 0;
}

std::string QtSerialPort::input() {
    if (!m_port.isOpen()) return {};
    const qint64 wanted = m_inputLen > 0 ? m_inputLen : m_port.bytesAvailable();
    return m_port.read(wanted).toStdString();
}

// Who waits for a batch is not woken for each byte of it.
void QtSerialPort::bytesCame() {
    if (m_port.bytesAvailable() >= std::max(m_inputLen, 1)) emit activity();
}

void QtSerialPort::errorHappened(QSerialPort::SerialPortError error) {
    // NoError comes with every open, TimeoutError is no loss; while opening, open() itself tells.
    const bool harmless =
        error == QSerialPort::NoError || error == QSerialPort::TimeoutError || m_opening;
    if (!harmless) lose();
}

void QtSerialPort::pollHangUp() {
    if (!m_port.isOpen()) return;
    pollfd line{static_cast<int>(m_port.handle()), 0, 0};
    if (::poll(&line, 1, 0) > 0 && (line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) lose();
}

// A lost port reports its error without end while it is open, so it is closed at once.
void QtSerialPort::lose() {
    if (!m_port.isOpen()) return;
    closePort();
    emit activity();
}

} // namespace kvo::platform_qt
