#include "tools/logger_simulator/faults.h"

#include <array>
#include <charconv>
#include <utility>

namespace kvo::simulator {
namespace {

struct FaultName {
    const char* name;
    Fault::Kind kind;
    const char* number; // what n is called, nothing where the fault has none
};

constexpr std::array<FaultName, 9> names{{
    {"silent", Fault::Kind::silent, nullptr},
    {"wrong-greeting", Fault::Kind::wrongGreeting, nullptr},
    {"stop-after", Fault::Kind::stopAfter, "N"},
    {"drop", Fault::Kind::drop, "N"},
    {"double", Fault::Kind::twice, "N"},
    {"garble", Fault::Kind::garble, "N"},
    {"late", Fault::Kind::late, "MS"},
    {"hangup-at", Fault::Kind::hangUpAt, "N"},
    {"flood", Fault::Kind::flood, nullptr},
}};

constexpr std::uint8_t wrongAnswer = '!';

} // namespace

std::optional<Fault> parseFault(std::string_view text) {
    const auto equals = text.find('=');
    const std::string_view name = text.substr(0, equals);
    for (const auto& entry : names) {
        if (name != entry.name) continue;
        if ((entry.number != nullptr) != (equals != std::string_view::npos)) return std::nullopt;
        if (entry.number == nullptr) return Fault{entry.kind, 0};
        const std::string_view digits = text.substr(equals + 1);
        Fault fault{entry.kind, 0};
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), fault.n);
        if (result.ec != std::errc() || result.ptr != digits.data() + digits.size() || fault.n < 0)
            return std::nullopt;
        return fault;
    }
    return std::nullopt;
}

std::vector<std::string> faultNames() {
    std::vector<std::string> all;
    all.reserve(std::size(names));
    for (const auto& entry : names)
        all.push_back(std::string(entry.name) +
                      (entry.number == nullptr ? std::string() : std::string("=") + entry.number));
    return all;
}

void FaultyEnd::receive(std::uint8_t byte) {
    if (m_fault.kind == Fault::Kind::flood && ++m_requests > m_fault.n) m_flooding = true;
    m_greeting = byte == 'Q';
    m_inner.receive(byte);
}

double FaultyEnd::lateMs() const {
    return m_fault.kind == Fault::Kind::late ? static_cast<double>(m_fault.n) : m_inner.lateMs();
}

bool FaultyEnd::hungUp() const {
    return m_inner.hungUp() || (m_fault.kind == Fault::Kind::hangUpAt && m_count >= m_fault.n);
}

std::optional<OutgoingByte> FaultyEnd::next() {
    using Kind = Fault::Kind;
    if (m_flooding) {
        m_garbage = m_garbage * 1664525U + 1013904223U;
        return OutgoingByte{static_cast<std::uint8_t>(m_garbage >> 24), false};
    }
    if (hungUp()) return std::nullopt;
    if (m_again) return std::exchange(m_again, std::nullopt);
    auto out = m_inner.next();
    if (!out || m_fault.kind == Kind::silent) return std::nullopt;
    if (m_fault.kind == Kind::stopAfter && m_count >= m_fault.n) return std::nullopt;
    ++m_count;
    if (m_fault.kind == Kind::wrongGreeting && m_greeting) out->value = wrongAnswer;
    m_greeting = false;
    if (m_count != m_fault.n) return out;
    if (m_fault.kind == Kind::drop) return next();
    if (m_fault.kind == Kind::twice) m_again = out;
    if (m_fault.kind == Kind::garble) out->value = static_cast<std::uint8_t>(~out->value);
    return out;
}

} // namespace kvo::simulator
