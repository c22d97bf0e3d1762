#include "tests/support/virtual_line.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kvo::testing {

VirtualLine::VirtualLine(simulator::LineEnd& far, bool paced)
    : m_far(far), m_paced(paced), m_line(std::in_place, far, paced) {}

void VirtualLine::replug() {
    m_line.emplace(m_far, m_paced);
}

void VirtualLine::failToOpen(int port, platform::PortError why, std::string text) {
    m_failures[port] = {why, std::move(text)};
}

void VirtualLine::at(long turn, std::function<void()> what) {
    m_callbacks.emplace(turn, std::move(what));
}

void VirtualLine::close() {
    if (m_open) ++m_closings;
    m_open = false;
}

void VirtualLine::vanish() {
    close();
    m_vanishAt = -1;
}

double VirtualLine::milliseconds() const {
    return static_cast<double>(m_turns) / platform::turnsPerMillisecond;
}

void VirtualLine::setInputLen(int bytes) {
    m_inputLen = bytes;
    m_inputLens.push_back(bytes);
}

std::vector<platform::PortState> VirtualLine::portStates() const {
    std::vector<platform::PortState> states;
    for (int number = 1; number <= platform::portNumbers; ++number) {
        platform::PortState state{deviceOf(number), platform::PortError::missing};
        if (!state.device.empty()) state.error = platform::PortError::none;
        if (const auto failure = m_failures.find(number); failure != m_failures.end())
            state.error = failure->second.why;
        if (m_open && number == m_port) state.error = platform::PortError::busy;
        states.push_back(state);
    }
    return states;
}

void VirtualLine::setPortOpen(bool open) {
    if (!open) return close();
    if (onOpen) onOpen(m_port);
    const auto failure = m_failures.find(m_port);
    m_open = failure == m_failures.end();
    m_openError = m_open ? platform::PortError::none : failure->second.why;
    m_openErrorText = m_open ? std::string() : failure->second.text;
    if (!m_open) return;
    catchUp();
    m_buffer = std::exchange(m_oldBytes, {});
}

void VirtualLine::catchUp() {
    m_line->advance(milliseconds());
    std::string arrived = m_line->takeArrived();
    if (m_vanishAt >= 0 && m_received + static_cast<long>(arrived.size()) >= m_vanishAt) {
        arrived.resize(static_cast<std::size_t>(m_vanishAt - m_received));
        m_received = m_vanishAt;
        m_buffer += arrived;
        vanish();
        return;
    }
    m_received += static_cast<long>(arrived.size());
    if (m_open) m_buffer += arrived;
    if (m_line->hungUp()) vanish();
}

int VirtualLine::inBufferCount() {
    catchUp();
    return static_cast<int>(m_buffer.size());
}

int VirtualLine::outBufferCount() {
    return m_jammed && m_open ? 1 : 0;
}

void VirtualLine::output(std::string_view bytes) {
    if (!m_open) return;
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        ++m_sent;
        m_everythingSent.push_back(c);
        if (onSend) onSend(byte);
        if (m_port == m_pluggedInto && !m_jammed) m_line->send(byte, milliseconds());
    }
}

std::string VirtualLine::input() {
    const std::size_t wanted =
        m_inputLen == 0 ? m_buffer.size() : static_cast<std::size_t>(m_inputLen);
    const std::string taken = m_buffer.substr(0, wanted);
    m_buffer.erase(0, taken.size());
    return taken;
}

long VirtualLine::turnOfNextEvent() {
    long next = std::numeric_limits<long>::max();
    if (const auto due = m_line->nextEventMs())
        next = static_cast<long>(std::ceil(*due * platform::turnsPerMillisecond));
    if (!m_callbacks.empty()) next = std::min(next, m_callbacks.begin()->first);
    return next;
}

int VirtualLine::turns(int limit) {
    ++m_yields;
    const long next = std::max(turnOfNextEvent(), m_turns + 1);
    const long gone = std::min(static_cast<long>(limit), next - m_turns);
    m_turns += gone;
    catchUp();
    while (!m_callbacks.empty() && m_callbacks.begin()->first <= m_turns) {
        const auto what = m_callbacks.begin()->second;
        m_callbacks.erase(m_callbacks.begin());
        what();
    }
    return static_cast<int>(gone);
}

} // namespace kvo::testing
