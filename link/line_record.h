#pragma once
// What a line did in one session, noted where the link meets the port: every byte that was sent,
// every byte that came, and when. Given back in the same order and at the same turns, the program
// does the same again to the last bit.
#include "platform/serial_port.h"
#include "platform/yield.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvo::link {

struct LineEvent {
    enum class Kind : std::uint8_t {
        arrived, // `bytes` more wait in the receive buffer
        sentOut, // the output buffer has run empty, which was waited for
        lost     // the port has closed by itself, and `bytes` can still be read
    };
    Kind kind = Kind::arrived;
    std::uint32_t turn = 0; // of all waits since the begin
    std::uint32_t sent = 0; // bytes that had been sent by then
    std::uint32_t bytes = 0;
    friend bool operator==(const LineEvent&, const LineEvent&) = default;
};

struct LineRecord {
    std::string sent;
    std::string came; // what was read, and at the end what was left
    std::vector<LineEvent> events;

    // Bytes that arrived, also where nobody read them; those that nobody had asked for, before the
    // first byte was sent; and those that should have come: one for each that was sent.
    std::int64_t arrived() const;
    std::int64_t arrivedUnasked() const;
    std::int64_t expected() const { return static_cast<std::int64_t>(sent.size()); }
    friend bool operator==(const LineRecord&, const LineRecord&) = default;
};

// The port and its waits as they are, with a count of the bytes, and a note of what passes while
// one is wanted.
class LineRecorder : public platform::SerialPort, public platform::Yield {
public:
    LineRecorder(platform::SerialPort& port, platform::Yield& yield)
        : m_port(port), m_yield(yield) {}

    // Counts from here on.
    void countAnew() { m_surplus = 0; }
    // Bytes that arrived less bytes that were sent; a logger gives one for each, and below 0 some
    // are missing.
    int surplus() const { return m_surplus; }

    // Forgets what was noted and notes from here on; before the port is opened.
    void begin();
    // The note so far; nothing is noted any more. Nothing where it became too much for a download,
    // or the memory did not hold it.
    const LineRecord* end();
    // Gives the memory of it back.
    void forget();

    std::vector<platform::PortState> portStates() const override { return m_port.portStates(); }
    void setCommPort(int number) override { m_port.setCommPort(number); }
    int commPort() const override { return m_port.commPort(); }
    std::string deviceOf(int number) const override { return m_port.deviceOf(number); }
    void setSettings(std::string_view settings) override { m_port.setSettings(settings); }
    void setInputLen(int bytes) override { m_port.setInputLen(bytes); }
    int inputLen() const override { return m_port.inputLen(); }
    // What waits as the port is closed is noted too.
    void setPortOpen(bool open) override;
    bool portOpen() const override { return m_port.portOpen(); }
    int inBufferCount() override;
    int outBufferCount() override;
    void output(std::string_view bytes) override;
    std::string input() override;
    int commEvent() const override { return m_port.commEvent(); }
    platform::PortError openError() const override { return m_port.openError(); }
    std::string openErrorText() const override { return m_port.openErrorText(); }

    int turns(int limit) override;

private:
    void note(LineEvent::Kind kind, std::size_t bytes);
    void keep(std::string& where, std::string_view bytes);
    void notice(int waiting);
    void noticeLoss();
    void takeRest();

    platform::SerialPort& m_port;
    platform::Yield& m_yield;
    LineRecord m_record;
    std::uint32_t m_turns = 0;
    std::size_t m_waiting = 0; // bytes in the receive buffer, as far as noted
    int m_surplus = 0;
    bool m_on = false;
    bool m_whole = false;
    bool m_hadPort = false;
    bool m_sendingOut = false;
};

// The line of a record: it brings the same bytes as soon as the same was sent and the same turns
// are gone, at once as far as the clock on the wall goes.
class ReplayedLine : public platform::SerialPort, public platform::Yield {
public:
    // `record` must outlive it.
    explicit ReplayedLine(const LineRecord& record) : m_record(record) {}

    std::vector<platform::PortState> portStates() const override { return {}; }
    void setCommPort(int number) override { m_number = number; }
    int commPort() const override { return m_number; }
    std::string deviceOf(int) const override { return {}; }
    void setSettings(std::string_view) override {}
    void setInputLen(int bytes) override { m_inputLen = bytes; }
    int inputLen() const override { return m_inputLen; }
    void setPortOpen(bool open) override { m_open = open; }
    bool portOpen() const override { return m_open; }
    int inBufferCount() override;
    int outBufferCount() override;
    void output(std::string_view bytes) override;
    std::string input() override;
    int commEvent() const override { return 0; }
    platform::PortError openError() const override { return platform::PortError::none; }
    std::string openErrorText() const override { return {}; }

    int turns(int limit) override;
    std::uint32_t turnsGone() const { return m_turns; }

private:
    void catchUp();
    const LineEvent* nextEvent() const;

    const LineRecord& m_record;
    std::size_t m_next = 0;
    std::size_t m_taken = 0; // of the bytes that came
    std::uint32_t m_turns = 0;
    std::size_t m_sent = 0;
    std::string m_buffer;
    int m_number = 0;
    int m_inputLen = 0;
    bool m_open = false;
};

} // namespace kvo::link
