#pragma once
// A serial port and its waits without hardware, clock or sleep: time is counted in turns. What is
// at the other end is a LineEnd, for instance a modelled logger. Buttons can be pressed at a turn,
// and the port can fail to open or vanish.
#include "platform/serial_port.h"
#include "platform/yield.h"
#include "tools/logger_simulator/duplex_line.h"
#include "tools/logger_simulator/line_end.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kvo::testing {

class VirtualLine : public platform::SerialPort, public platform::Yield {
public:
    // `far` is at port 1 unless it is moved; a paced line takes 1.0417 ms a byte and direction.
    explicit VirtualLine(simulator::LineEnd& far, bool paced = false);

    // Moves the cable to another port, 1 to 16.
    void plugInto(int port) { m_pluggedInto = port; }
    // From now on this port does not open.
    void failToOpen(int port, platform::PortError why, std::string text = {});
    // Bytes that wait in the driver as the port opens.
    void setOldBytes(std::string bytes) { m_oldBytes = std::move(bytes); }
    void setCommEvent(int number) { m_commEvent = number; }
    // Calls `what` as soon as turn `turn` has come, counted from the making of the line; inside the
    // wait, as a click would come.
    void at(long turn, std::function<void()> what);
    // The port vanishes after so many bytes have been received from it, counted from now.
    void vanishAfterBytes(long bytes) { m_vanishAt = m_received + bytes; }
    void vanish();
    // The cable is in again; what was under way on the line is gone.
    void replug();
    // The output buffer never runs empty: a device that takes nothing.
    void jamOutput(bool jam) { m_jammed = jam; }
    // Called for every byte that is sent and every port that an open was tried on.
    std::function<void(std::uint8_t)> onSend;
    std::function<void(int)> onOpen;

    long turnsGone() const { return m_turns; }
    long yields() const { return m_yields; }
    // How often an open port was closed, or was lost.
    int closings() const { return m_closings; }
    long bytesSent() const { return m_sent; }
    const std::string& everythingSent() const { return m_everythingSent; }
    double milliseconds() const;

    void setCommPort(int number) override { m_port = number; }
    int commPort() const override { return m_port; }
    std::vector<platform::PortState> portStates() const override;
    std::string deviceOf(int number) const override {
        return number == m_pluggedInto ? "/dev/virtual" : std::string();
    }
    void setSettings(std::string_view settings) override { m_settings = settings; }
    const std::string& settings() const { return m_settings; }
    void setInputLen(int bytes) override;
    int inputLen() const override { return m_inputLen; }
    // Every value that InputLen took, in order.
    const std::vector<int>& inputLens() const { return m_inputLens; }
    void setPortOpen(bool open) override;
    bool portOpen() const override { return m_open; }
    int inBufferCount() override;
    int outBufferCount() override;
    void output(std::string_view bytes) override;
    std::string input() override;
    int commEvent() const override { return m_commEvent; }
    platform::PortError openError() const override { return m_openError; }
    std::string openErrorText() const override { return m_openErrorText; }

    int turns(int limit) override;

private:
    struct Failure {
        platform::PortError why;
        std::string text;
    };
    void catchUp();
    void close();
    long turnOfNextEvent();

    simulator::LineEnd& m_far;
    bool m_paced;
    std::optional<simulator::DuplexLine> m_line;
    std::map<int, Failure> m_failures;
    std::multimap<long, std::function<void()>> m_callbacks;
    std::string m_buffer;
    std::string m_oldBytes;
    std::string m_settings;
    std::string m_everythingSent;
    std::vector<int> m_inputLens;
    platform::PortError m_openError = platform::PortError::none;
    std::string m_openErrorText;
    int m_pluggedInto = 1;
    int m_port = 1;
    int m_inputLen = 0;
    int m_commEvent = 0;
    long m_turns = 0;
    long m_yields = 0;
    int m_closings = 0;
    long m_sent = 0;
    long m_received = 0;
    long m_vanishAt = -1;
    bool m_open = false;
    bool m_jammed = false;
};

} // namespace kvo::testing
