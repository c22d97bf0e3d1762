#include "model_port.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kvo::guide_pictures {

namespace {

constexpr int loggerAt = 1;

} // namespace

void ModelPort::plugIn(int dataType, double seconds, std::function<void()> what) {
    m_line.reset();
    m_logger.emplace(dataType);
    m_line.emplace(*m_logger, true);
    m_turns = 0;
    m_buffer.clear();
    m_what = std::move(what);
    m_turnOfWhat = std::lround(seconds * 1000 * platform::turnsPerMillisecond);
}

double ModelPort::milliseconds() const {
    return static_cast<double>(m_turns) / platform::turnsPerMillisecond;
}

void ModelPort::catchUp() {
    if (!m_line) return;
    m_line->advance(milliseconds());
    const std::string arrived = m_line->takeArrived();
    if (m_open) m_buffer += arrived;
}

std::string ModelPort::deviceOf(int number) const {
    return number == loggerAt ? "/dev/ttyUSB0" : std::string();
}

std::vector<platform::PortState> ModelPort::portStates() const {
    std::vector<platform::PortState> states(platform::portNumbers);
    states[loggerAt - 1] = {deviceOf(loggerAt), platform::PortError::none};
    return states;
}

void ModelPort::setPortOpen(bool open) {
    m_open = open;
    catchUp();
    m_buffer.clear();
}

int ModelPort::inBufferCount() {
    catchUp();
    return static_cast<int>(m_buffer.size());
}

void ModelPort::output(std::string_view bytes) {
    if (!m_open || !m_line) return;
    for (const char byte : bytes) m_line->send(static_cast<std::uint8_t>(byte), milliseconds());
}

std::string ModelPort::input() {
    const std::size_t wanted =
        m_inputLen == 0 ? m_buffer.size() : static_cast<std::size_t>(m_inputLen);
    std::string taken = m_buffer.substr(0, wanted);
    m_buffer.erase(0, taken.size());
    return taken;
}

int ModelPort::turns(int limit) {
    long next = m_turns + limit;
    if (const auto due = m_line ? m_line->nextEventMs() : std::nullopt)
        next = std::min(next, std::lround(std::ceil(*due * platform::turnsPerMillisecond)));
    if (m_what) next = std::min(next, m_turnOfWhat);
    const long gone = std::max(next - m_turns, 1L);
    m_turns += gone;
    catchUp();
    if (m_what && m_turns >= m_turnOfWhat) std::exchange(m_what, nullptr)();
    return static_cast<int>(gone);
}

} // namespace kvo::guide_pictures
