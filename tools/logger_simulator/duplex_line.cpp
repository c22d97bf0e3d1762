#include "tools/logger_simulator/duplex_line.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kvo::simulator {

DuplexLine::DuplexLine(LineEnd& far, bool paced) : m_far(far), m_byteMs(paced ? byteTimeMs : 0) {}

void DuplexLine::send(std::uint8_t byte, double nowMs) {
    if (m_hungUp) return;
    m_requestEndMs = std::max(m_requestEndMs, nowMs) + m_byteMs;
    m_requests.push_back({byte, m_requestEndMs + m_far.lateMs()});
}

void DuplexLine::startReply() {
    if (m_reply || m_hungUp) return;
    const auto out = m_far.next();
    if (!out) {
        m_hungUp = m_far.hungUp();
        return;
    }
    m_reply = out->value;
    m_replyEndMs = std::max(m_replyEndMs, m_nowMs) + (out->asked ? m_byteMs : byteTimeMs);
}

void DuplexLine::advance(double nowMs) {
    constexpr double never = std::numeric_limits<double>::infinity();
    for (;;) {
        startReply();
        if (m_hungUp) break;
        const double request = m_requests.empty() ? never : m_requests.front().arrivesMs;
        const double reply = m_reply ? m_replyEndMs : never;
        if (std::min(request, reply) > nowMs) break;
        m_nowMs = std::max(m_nowMs, std::min(request, reply));
        if (reply <= request) {
            m_arrived.push_back(static_cast<char>(*m_reply));
            m_reply.reset();
        } else {
            m_far.receive(m_requests.front().byte);
            m_requests.pop_front();
        }
    }
    m_nowMs = std::max(m_nowMs, nowMs);
}

std::string DuplexLine::takeArrived() {
    return std::exchange(m_arrived, {});
}

std::optional<double> DuplexLine::nextEventMs() {
    startReply();
    if (m_hungUp) return std::nullopt;
    std::optional<double> next;
    if (!m_requests.empty()) next = m_requests.front().arrivesMs;
    if (m_reply) next = next ? std::min(*next, m_replyEndMs) : m_replyEndMs;
    return next;
}

} // namespace kvo::simulator
