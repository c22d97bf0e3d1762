#pragma once
// Faults of the field, each by its name: what a cable, a plug or a tired logger does to the bytes.
#include "tools/logger_simulator/line_end.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::simulator {

struct Fault {
    enum class Kind {
        none,
        silent,        // never answers
        wrongGreeting, // answers "Q" with something else
        stopAfter,     // answers n bytes, then no more
        drop,          // byte n of the answers is lost
        twice,         // byte n of the answers comes twice
        garble,        // byte n of the answers is turned over
        late,          // every answer comes n milliseconds late
        hangUpAt,      // the cable is pulled out behind byte n of the answers
        flood          // from the first request on, endless garbage; with n behind n requests
    };
    Kind kind = Kind::none;
    long n = 0; // answers are counted from 1
};

// "silent", "wrong-greeting", "stop-after=N", "drop=N", "double=N", "garble=N", "late=MS",
// "hangup-at=N", "flood"; nothing for any other text.
std::optional<Fault> parseFault(std::string_view text);
// The names, for the help text, with "=N" where a number belongs to it.
std::vector<std::string> faultNames();

// Another line end seen through a fault.
class FaultyEnd : public LineEnd {
public:
    FaultyEnd(LineEnd& inner, Fault fault) : m_inner(inner), m_fault(fault) {}

    void receive(std::uint8_t byte) override;
    std::optional<OutgoingByte> next() override;
    double lateMs() const override;
    bool hungUp() const override;
    // Answers that have gone out or were lost.
    long answered() const { return m_count; }

private:
    LineEnd& m_inner;
    Fault m_fault;
    long m_count = 0;
    long m_requests = 0;
    bool m_greeting = false; // the next answer is that to a "Q"
    bool m_flooding = false;
    std::uint32_t m_garbage = 1;
    std::optional<OutgoingByte> m_again; // comes before the next answer
};

} // namespace kvo::simulator
