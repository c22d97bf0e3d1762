#pragma once
// The logger's serial port on QSerialPort, on every system but Windows, which has a body of its own
// in platform/os. Polled, as the link uses it; a signal wakes the yield
// when something happens on it. A line that is lost (adapter pulled, other side gone) closes the
// port once and from then on reads as a silent line.
#include "platform/qt/port_activity.h"
#include "platform/serial_port.h"

#include <QSerialPort>
#include <QTimer>

#include <functional>
#include <string>
#include <vector>

namespace kvo::platform_qt {

class QtSerialPort : public PortActivity, public platform::SerialPort {
public:
    // Gives the program's folder, in which links named COM1 to COM16 stand for port numbers.
    using FolderSource = std::function<std::string()>;
    explicit QtSerialPort(FolderSource programFolder);

    void setCommPort(int number) override;
    int commPort() const override { return m_number; }
    std::string deviceOf(int number) const override;
    std::vector<platform::PortState> portStates() const override;
    void setSettings(std::string_view settings) override;
    void setInputLen(int bytes) override { m_inputLen = bytes; }
    int inputLen() const override { return m_inputLen; }
    void setPortOpen(bool open) override;
    bool portOpen() const override { return m_port.isOpen(); }
    int inBufferCount() override;
    int outBufferCount() override;
    void output(std::string_view bytes) override;
    std::string input() override;
    int commEvent() const override { return 0; }
    platform::PortError openError() const override { return m_openError; }
    std::string openErrorText() const override { return m_openErrorText; }

    // Asks the system whether the other side is gone, for lines that do not tell by themselves;
    // closes the port if so.
    void pollHangUp();

private:
    void openPort();
    void closePort();
    void explainFailedOpen(const QString& device);
    void errorHappened(QSerialPort::SerialPortError error);
    std::size_t sendAtOnce(std::string_view bytes);
    void lose();
    void bytesCame();

    FolderSource m_programFolder;
    QSerialPort m_port;
    QTimer m_watch; // looks for a hang-up while the port is open
    int m_number = 1;
    int m_inputLen = 0;
    bool m_opening = false;
    platform::PortError m_openError = platform::PortError::none;
    std::string m_openErrorText;
};

} // namespace kvo::platform_qt
