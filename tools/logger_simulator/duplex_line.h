#pragma once
// The time a serial line takes: both directions at once, a byte after the other in each. The caller
// has the clock; all times are milliseconds on it and never go back. Nothing sleeps here.
#include "tools/logger_simulator/line_end.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace kvo::simulator {

// 10 bits a byte at 9600 baud.
inline constexpr double byteTimeMs = 10.0 / 9.6;

class DuplexLine {
public:
    // Not paced: a reply is there as soon as it was asked for.
    DuplexLine(LineEnd& far, bool paced);

    // A byte leaves this end at `nowMs`.
    void send(std::uint8_t byte, double nowMs);
    // Lets everything happen that is due up to `nowMs`.
    void advance(double nowMs);
    // What has arrived at this end, oldest first; it is taken out.
    std::string takeArrived();
    // When the next thing will happen, nothing if nothing is under way.
    std::optional<double> nextEventMs();
    // The far end has hung up and all it had sent is here.
    bool hungUp() const { return m_hungUp; }
    // How many bytes are on their way to the far end.
    int sending() const { return static_cast<int>(m_requests.size()); }

private:
    struct Request {
        std::uint8_t byte;
        double arrivesMs;
    };
    void startReply();

    LineEnd& m_far;
    double m_byteMs;
    double m_nowMs = 0;
    double m_requestEndMs = 0;
    double m_replyEndMs = 0;
    std::deque<Request> m_requests;
    std::optional<std::uint8_t> m_reply; // on the line now
    std::string m_arrived;
    bool m_hungUp = false;
};

} // namespace kvo::simulator
