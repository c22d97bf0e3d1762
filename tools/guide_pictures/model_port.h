#pragma once
// A serial port with a modelled logger behind it, and the waits of who speaks to it. Time is
// counted and not waited for: what is seen at a moment of a download is the same every time.
#include "platform/serial_port.h"
#include "platform/yield.h"
#include "tools/logger_simulator/duplex_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::guide_pictures {

class ModelPort : public platform::SerialPort, public platform::Yield {
public:
    // Plugs in a logger of a data type, switched on. From now on `what` is waited for: it is called
    // once, that many seconds later on the line, inside a wait for the logger.
    void plugIn(int dataType, double seconds, std::function<void()> what);

    std::vector<platform::PortState> portStates() const override;
    void setCommPort(int number) override { m_number = number; }
    int commPort() const override { return m_number; }
    std::string deviceOf(int number) const override;
    void setSettings(std::string_view) override {}
    void setInputLen(int bytes) override { m_inputLen = bytes; }
    int inputLen() const override { return m_inputLen; }
    void setPortOpen(bool open) override;
    bool portOpen() const override { return m_open; }
    int inBufferCount() override;
    int outBufferCount() override { return 0; }
    void output(std::string_view bytes) override;
    std::string input() override;
    int commEvent() const override { return 0; }
    platform::PortError openError() const override { return platform::PortError::none; }
    std::string openErrorText() const override { return {}; }

    int turns(int limit) override;

private:
    double milliseconds() const;
    void catchUp();

    std::optional<simulator::ModelLogger> m_logger;
    std::optional<simulator::DuplexLine> m_line;
    std::function<void()> m_what;
    long m_turnOfWhat = 0;
    std::string m_buffer;
    int m_number = 1;
    int m_inputLen = 0;
    long m_turns = 0;
    bool m_open = false;
};

} // namespace kvo::guide_pictures
