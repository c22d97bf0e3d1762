#pragma once
// The logger's serial port on Windows: COMn is port n. Polled, as the link uses it. A line that is
// lost (adapter pulled, driver gone) closes the port once and from then on reads as a silent line.
#include "platform/os/comm_line.h"
#include "platform/serial_port.h"

namespace kvo::platform_os {

class CommPort : public platform::WatchedPort {
public:
    explicit CommPort(std::unique_ptr<CommLine> line) : m_line(std::move(line)) {}
    ~CommPort() override { closePort(); }
    CommPort(const CommPort&) = delete;
    CommPort& operator=(const CommPort&) = delete;

    std::vector<platform::PortState> portStates() const override;
    void setCommPort(int number) override;
    int commPort() const override { return m_number; }
    std::string deviceOf(int number) const override;
    void setSettings(std::string_view settings) override;
    void setInputLen(int bytes) override { m_inputLen = bytes; }
    int inputLen() const override { return m_inputLen; }
    void setPortOpen(bool open) override;
    bool portOpen() const override { return m_open; }
    int inBufferCount() override;
    int outBufferCount() override;
    void output(std::string_view bytes) override;
    std::string input() override;
    int commEvent() const override { return 0; }
    platform::PortError openError() const override { return m_openError; }
    std::string openErrorText() const override { return m_openErrorText; }

    std::vector<void*> wakeHandles() const override { return m_line->wakeHandles(); }
    bool takeEvents() override;

private:
    void openPort();
    void closePort();
    void receive();
    bool sendMore();

    std::unique_ptr<CommLine> m_line;
    CommSettings m_settings;
    std::string m_received;
    std::string m_unsent;    // behind what is being sent
    std::size_t m_going = 0; // bytes that are being sent
    int m_number = 1;
    int m_inputLen = 0;
    bool m_open = false;
    platform::PortError m_openError = platform::PortError::none;
    std::string m_openErrorText;
};

} // namespace kvo::platform_os
