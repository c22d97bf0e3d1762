#pragma once
// What can go wrong on the way between logger and computer, as a script for one session: each fault
// at one of the logger's answers, or at one of the computer's requests.
#include "tools/logger_simulator/line_end.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace kvo::faults {

enum class Wrong {
    lost,        // `amount` answers in a row do not arrive
    doubled,     // the answer comes twice
    gained,      // `amount` bytes of noise come in front of it
    flipped,     // bits of it are turned over
    late,        // it and all behind it come `amount` milliseconds later
    cut,         // the cable is out
    silence,     // from here on nothing comes
    wrongType,   // the header says another data type
    askedTwice,  // the request arrives twice
    askedInVain, // the request does not arrive
    kinds
};

struct ScriptedFault {
    Wrong what = Wrong::lost;
    long at = 1; // number of the answer or request, the one to "Q" is 1
    int amount = 1;
};

using Random = std::mt19937;

inline int upTo(Random& random, int most) { // 0 to most - 1
    return static_cast<int>(random() % static_cast<unsigned>(most));
}

inline std::string nameOf(const ScriptedFault& fault) {
    static const char* const names[] = {"lost", "doubled", "gained", "flipped", "late", "cut",
        "silence", "wrongType", "askedTwice", "askedInVain"};
    return names[static_cast<int>(fault.what)] + std::string("(") + std::to_string(fault.at) + "," +
           std::to_string(fault.amount) + ")";
}

// One fault of a session with so many answers: the header and the end are its weak points.
inline ScriptedFault someFault(Random& random, int answers, int batch) {
    static const int pauses[] = {3, 40, 200, 240, 260, 290, 310, 900, 1100, 2500};
    ScriptedFault fault;
    fault.what = static_cast<Wrong>(upTo(random, static_cast<int>(Wrong::kinds)));
    const int place = upTo(random, 10);
    if (place < 3)
        fault.at = 1 + upTo(random, 36);
    else if (place < 5)
        fault.at = answers - upTo(random, std::min(answers, 2 * batch + 2));
    else
        fault.at = 1 + upTo(random, answers);
    if (fault.what == Wrong::late) fault.amount = pauses[upTo(random, 10)];
    if (fault.what == Wrong::lost || fault.what == Wrong::gained)
        fault.amount = upTo(random, 3) == 0 ? 1 + upTo(random, 100) : 1;
    if (fault.what == Wrong::flipped) fault.amount = 1 + upTo(random, 255);
    if (fault.what == Wrong::wrongType) fault.amount = upTo(random, 10);
    return fault;
}

// The logger at the far end of a line on which the script happens. Answers are counted from the
// greeting of the first session on, so that a download that is asked for again is whole.
class ScriptedEnd : public simulator::LineEnd {
public:
    explicit ScriptedEnd(simulator::LineEnd& inner) : m_inner(inner) {}

    void begin(std::vector<ScriptedFault> script, std::uint32_t noise) {
        m_script = std::move(script);
        m_random.seed(noise);
        m_answers = m_requests = m_sent = m_given = 0;
        m_lateMs = 0;
        m_losing = 0;
        m_cut = m_silent = false;
        m_waiting.clear();
    }
    // Bytes that have gone out on the line, and requests that were put on it at the other end.
    long given() const { return m_given; }
    long asked() const { return m_sent; }
    void countAnew() { m_given = m_sent = 0; }

    void receive(std::uint8_t byte) override {
        ++m_requests;
        int times = 1;
        for (const ScriptedFault& fault : m_script) {
            if (fault.at != m_requests) continue;
            if (fault.what == Wrong::askedTwice) times = 2;
            if (fault.what == Wrong::askedInVain) times = 0;
        }
        for (int i = 0; i < times; ++i) m_inner.receive(byte);
    }
    std::optional<simulator::OutgoingByte> next() override {
        if (m_cut) return {};
        while (m_waiting.empty()) {
            auto out = m_inner.next();
            if (!out) return {};
            answer(*out);
            if (m_cut || m_silent) return {};
        }
        ++m_given;
        const std::uint8_t value = m_waiting.front();
        m_waiting.pop_front();
        return simulator::OutgoingByte{value, true};
    }
    // Asked once for each byte that leaves the other end.
    double lateMs() const override {
        ++m_sent;
        for (const ScriptedFault& fault : m_script)
            if (fault.what == Wrong::late && fault.at == m_sent) return fault.amount;
        return 0;
    }
    bool hungUp() const override { return m_cut && m_waiting.empty(); }

private:
    void answer(simulator::OutgoingByte out) {
        static const std::uint8_t types[] = {8, 12, 17, 20, 25, 32, 43, 0, 23, 99};
        constexpr long typeAnswer = 3;
        ++m_answers;
        bool twice = false;
        for (const ScriptedFault& fault : m_script) {
            if (fault.what == Wrong::wrongType && m_answers == typeAnswer)
                out.value = types[fault.amount];
            if (fault.at != m_answers) continue;
            if (fault.what == Wrong::lost) m_losing = fault.amount;
            if (fault.what == Wrong::doubled) twice = true;
            if (fault.what == Wrong::flipped)
                out.value = static_cast<std::uint8_t>(out.value ^ fault.amount);
            for (int i = 0; fault.what == Wrong::gained && i < fault.amount; ++i)
                m_waiting.push_back(static_cast<std::uint8_t>(m_random()));
            if (fault.what == Wrong::cut) m_cut = true;
            if (fault.what == Wrong::silence) m_silent = true;
        }
        if (m_losing > 0 || m_silent || m_cut) {
            --m_losing;
            if (m_silent) m_waiting.clear();
            return;
        }
        m_waiting.push_back(out.value);
        if (twice) m_waiting.push_back(out.value);
    }

    simulator::LineEnd& m_inner;
    std::vector<ScriptedFault> m_script;
    std::deque<std::uint8_t> m_waiting;
    Random m_random;
    long m_answers = 0;
    long m_requests = 0;
    mutable long m_sent = 0;
    long m_given = 0;
    double m_lateMs = 0;
    int m_losing = 0;
    bool m_cut = false;
    bool m_silent = false;
};

} // namespace kvo::faults
