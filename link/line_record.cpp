#include "link/line_record.h"

#include <algorithm>
#include <new>

namespace kvo::link {
namespace {

// Far beyond what a download asks for; only a line that is flooded gets there.
constexpr std::size_t mostEvents = 500'000;
constexpr std::size_t mostBytes = 1'000'000;
// The longest download needs no more, so that noting costs no copies.
constexpr std::size_t usualBytes = 64'000;

} // namespace

std::int64_t LineRecord::arrived() const {
    std::uint64_t all = 0;
    for (const LineEvent& event : events)
        if (event.kind == LineEvent::Kind::arrived) all += event.bytes;
    return static_cast<std::int64_t>(all);
}

std::int64_t LineRecord::arrivedUnasked() const {
    std::uint64_t all = 0;
    for (const LineEvent& event : events)
        if (event.kind == LineEvent::Kind::arrived && event.sent == 0) all += event.bytes;
    return static_cast<std::int64_t>(all);
}

void LineRecorder::begin() {
    m_record = {};
    m_turns = 0;
    m_waiting = 0;
    m_hadPort = m_port.portOpen();
    m_sendingOut = false;
    m_whole = true;
    m_on = true;
    try {
        m_record.events.reserve(usualBytes);
        m_record.sent.reserve(usualBytes);
        m_record.came.reserve(usualBytes);
    } catch (const std::bad_alloc&) {
        m_whole = false;
    }
}

const LineRecord* LineRecorder::end() {
    m_on = false;
    return m_whole ? &m_record : nullptr;
}

// The download is worth more than the note of it: where the memory is short only that ends.
void LineRecorder::note(LineEvent::Kind kind, std::size_t bytes) {
    if (!m_on) return;
    if (!m_whole || m_record.events.size() >= mostEvents) {
        m_whole = false;
        return;
    }
    try {
        m_record.events.push_back({kind, m_turns, static_cast<std::uint32_t>(m_record.sent.size()),
            static_cast<std::uint32_t>(bytes)});
    } catch (const std::bad_alloc&) {
        m_whole = false;
    }
}

void LineRecorder::forget() {
    m_on = false;
    m_whole = false;
    m_record = {};
}

void LineRecorder::keep(std::string& where, std::string_view bytes) {
    if (!m_on) return;
    if (!m_whole || where.size() + bytes.size() > mostBytes) {
        m_whole = false;
        return;
    }
    try {
        where.append(bytes);
    } catch (const std::bad_alloc&) {
        m_whole = false;
    }
}

void LineRecorder::notice(int waiting) {
    const auto now = static_cast<std::size_t>(std::max(waiting, 0));
    if (now > m_waiting) {
        note(LineEvent::Kind::arrived, now - m_waiting);
        m_surplus += static_cast<int>(now - m_waiting);
    }
    m_waiting = now;
}

void LineRecorder::noticeLoss() {
    if (!m_hadPort || m_port.portOpen()) return;
    notice(m_port.inBufferCount());
    note(LineEvent::Kind::lost, m_waiting);
    m_hadPort = false;
}

void LineRecorder::takeRest() {
    notice(m_port.inBufferCount());
    while (m_waiting > 0) {
        const std::string rest = m_port.input();
        if (rest.empty()) break;
        keep(m_record.came, rest);
        m_waiting -= std::min(m_waiting, rest.size());
    }
    m_waiting = 0;
}

void LineRecorder::setPortOpen(bool open) {
    if (m_on && !open && m_port.portOpen()) takeRest();
    m_port.setPortOpen(open);
    m_hadPort = m_port.portOpen();
    m_waiting = 0;
}

int LineRecorder::inBufferCount() {
    const int waiting = m_port.inBufferCount();
    notice(waiting);
    noticeLoss();
    return waiting;
}

int LineRecorder::outBufferCount() {
    const int sending = m_port.outBufferCount();
    if (sending == 0 && m_sendingOut) note(LineEvent::Kind::sentOut, 0);
    m_sendingOut = sending != 0;
    return sending;
}

void LineRecorder::output(std::string_view bytes) {
    keep(m_record.sent, bytes);
    m_surplus -= static_cast<int>(bytes.size());
    m_port.output(bytes);
    noticeLoss();
}

std::string LineRecorder::input() {
    std::string bytes = m_port.input();
    if (bytes.size() > m_waiting) notice(static_cast<int>(bytes.size()));
    m_waiting -= bytes.size();
    keep(m_record.came, bytes);
    return bytes;
}

int LineRecorder::turns(int limit) {
    const int gone = m_yield.turns(limit);
    m_turns += static_cast<std::uint32_t>(std::max(gone, 0));
    noticeLoss();
    return gone;
}

// The next thing that happens, if all that was sent before it has been sent.
const LineEvent* ReplayedLine::nextEvent() const {
    if (m_next == m_record.events.size()) return nullptr;
    const LineEvent& next = m_record.events[m_next];
    return next.sent <= m_sent ? &next : nullptr;
}

void ReplayedLine::catchUp() {
    for (const LineEvent* next = nextEvent(); next != nullptr && next->turn <= m_turns;
         next = nextEvent()) {
        ++m_next;
        if (next->kind == LineEvent::Kind::arrived) {
            // What arrived and was lost with the port is in no record; nobody read it.
            const std::string came =
                m_record.came.substr(std::min(m_taken, m_record.came.size()), next->bytes);
            m_taken += came.size();
            m_buffer += came;
        } else if (next->kind == LineEvent::Kind::lost) {
            m_buffer.resize(std::min<std::size_t>(m_buffer.size(), next->bytes));
            m_open = false;
        }
    }
}

int ReplayedLine::inBufferCount() {
    catchUp();
    return static_cast<int>(m_buffer.size());
}

int ReplayedLine::outBufferCount() {
    catchUp();
    const LineEvent* next = nextEvent();
    return m_open && next != nullptr && next->kind == LineEvent::Kind::sentOut ? 1 : 0;
}

void ReplayedLine::output(std::string_view bytes) {
    m_sent += bytes.size();
    catchUp();
}

std::string ReplayedLine::input() {
    catchUp();
    const std::size_t wanted =
        m_inputLen == 0 ? m_buffer.size() : static_cast<std::size_t>(m_inputLen);
    std::string taken = m_buffer.substr(0, wanted);
    m_buffer.erase(0, taken.size());
    return taken;
}

int ReplayedLine::turns(int limit) {
    catchUp();
    auto gone = static_cast<std::uint32_t>(std::max(limit, 1));
    if (const LineEvent* next = nextEvent())
        gone = std::clamp<std::uint32_t>(next->turn - m_turns, 1, gone);
    m_turns += gone;
    catchUp();
    return static_cast<int>(gone);
}

} // namespace kvo::link
