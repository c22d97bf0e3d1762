#pragma once
// A serial port on a device of a POSIX system, with the wait that belongs to it: enough to run the
// link over a real pseudo-terminal without a window system.
#if defined(__unix__)
#include "platform/serial_port.h"
#include "platform/yield.h"

#include <functional>
#include <string>

namespace kvo::testing {

class PosixSerialPort : public platform::SerialPort, public platform::Yield {
public:
    explicit PosixSerialPort(std::string device) : m_device(std::move(device)) {}
    PosixSerialPort(const PosixSerialPort&) = delete;
    PosixSerialPort& operator=(const PosixSerialPort&) = delete;
    ~PosixSerialPort() override { close(); }

    // Gives back once the far end has done all that it was asked for. Where it is set, only a wait
    // in which the far end had its turn and said nothing counts as time: on a machine with much
    // other work a thread may not run for longer than a logger may take.
    std::function<void()> letFarEndRun;
    // How often the port was lost; once at most for each open.
    int losses() const { return m_losses; }
    long wakes() const { return m_wakes; }

    void setCommPort(int number) override { m_number = number; }
    int commPort() const override { return m_number; }
    std::vector<platform::PortState> portStates() const override { return {}; }
    std::string deviceOf(int) const override { return m_device; }
    void setSettings(std::string_view) override {}
    void setInputLen(int bytes) override { m_inputLen = bytes; }
    int inputLen() const override { return m_inputLen; }
    void setPortOpen(bool open) override;
    bool portOpen() const override { return m_descriptor >= 0; }
    int inBufferCount() override;
    int outBufferCount() override;
    void output(std::string_view bytes) override;
    std::string input() override;
    int commEvent() const override { return 0; }
    platform::PortError openError() const override { return m_error; }
    std::string openErrorText() const override { return {}; }

    int turns(int limit) override;

private:
    void close();
    void lose();
    bool waitForBytes(int milliseconds);

    std::string m_device;
    std::string m_buffer;
    platform::PortError m_error = platform::PortError::none;
    int m_descriptor = -1;
    int m_number = 1;
    int m_inputLen = 0;
    int m_losses = 0;
    long m_wakes = 0;
};

} // namespace kvo::testing
#endif
