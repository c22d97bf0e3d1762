#include "tools/logger_simulator/model_logger.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kvo::simulator {
namespace {

constexpr std::uint8_t here = '?';
constexpr std::uint8_t thrownAway = 0x00;
constexpr int openingSteps = 8;
constexpr std::size_t headerBytes = 32;
constexpr int defaultType = 25;

// The engine in the pits: it idles, and somebody blips the throttle every few seconds.
Moment pitMoment(std::uint16_t counter) {
    const double t = counter / 100.0;
    const double blip = std::pow(std::max(0.0, std::sin(t * 2.1)), 6);
    Moment moment;
    moment.engineRpm = 2100 + 3400 * blip + 25 * std::sin(t * 31);
    const auto raw = [](double value) { return static_cast<std::uint8_t>(value); };
    moment.analog = {raw(90 + 90 * blip), raw(24 + 40 * blip), raw(40 + 120 * blip), 174, 64,
        raw(10 + 150 * blip), raw(std::min(190.0, 80 + t)), 124};
    for (std::size_t c = 0; c < moment.exhaust.size(); ++c)
        moment.exhaust[c] = raw(70 + std::min(60.0, t) + 2.0 * static_cast<double>(c));
    return moment;
}

} // namespace

ModelLogger::ModelLogger(int dataType, std::uint32_t seed)
    : m_layout(wireLayout(dataType).value_or(*wireLayout(defaultType))) {
    const HeaderBytes header = makeHeader(m_layout, vehicleFor(m_layout.dataType));
    m_stream.push_back(thrownAway);
    m_stream.insert(m_stream.end(), header.begin(), header.end());
    const platform::Bytes samples = memoryImage(m_layout, seed);
    m_stream.insert(m_stream.end(), samples.begin(), samples.end());
}

ModelLogger::ModelLogger(platform::Bytes stream)
    : m_layout(wireLayout(stream.size() > 1 ? stream[1] : 0).value_or(*wireLayout(defaultType))),
      m_stream(std::move(stream)) {}

void ModelLogger::powerUp() {
    if (m_written) takeSettings(*m_written);
    m_written.reset();
    m_position = 0;
    m_replies.clear();
    m_opening = -1;
    m_receiving.clear();
    m_pitRun = false;
    m_pitBytes.clear();
}

void ModelLogger::takeSettings(const HeaderBytes& settings) {
    if (m_stream.size() > headerBytes)
        std::copy(settings.begin(), settings.end(), m_stream.begin() + 1);
}

// The opening "0" to "7", then 32 settings, each byte echoed. A byte out of order ends the write.
bool ModelLogger::configurationStep(std::uint8_t byte) {
    if (m_opening < 0) return false;
    if (m_opening < openingSteps) {
        if (byte != '0' + m_opening) {
            m_opening = -1;
            return false;
        }
        ++m_opening;
        reply(byte);
        return true;
    }
    m_receiving.push_back(byte);
    reply(byte);
    if (m_receiving.size() == headerBytes) {
        m_written.emplace();
        std::copy(m_receiving.begin(), m_receiving.end(), m_written->begin());
        m_receiving.clear();
        m_opening = -1;
        if (onWritten) onWritten(*m_written);
    }
    return true;
}

void ModelLogger::command(std::uint8_t byte) {
    switch (byte) {
    case 'Q':
        m_pitRun = false;
        m_pitBytes.clear();
        m_position = 0;
        reply(here);
        break;
    case 'D':
        reply(m_position < m_stream.size() ? m_stream[m_position] : fillerByte);
        ++m_position;
        break;
    case 'S':
        m_opening = 0;
        m_receiving.clear();
        break;
    case 'P':
        m_pitRun = true;
        break;
    case 'p':
        m_pitRun = false;
        m_pitBytes.clear();
        break;
    default:
        break;
    }
}

void ModelLogger::receive(std::uint8_t byte) {
    if (!configurationStep(byte)) command(byte);
}

void ModelLogger::nextPitFrame() {
    const Moment moment = pitMoment(m_pitCounter);
    const platform::Bytes frame =
        pitFrame(m_layout, vehicleFor(m_layout.dataType), moment, m_pitCounter);
    m_pitBytes.assign(frame.begin(), frame.end());
    ++m_pitCounter;
}

std::optional<OutgoingByte> ModelLogger::next() {
    std::deque<std::uint8_t>* from = &m_replies;
    if (m_replies.empty()) {
        if (!m_pitRun) return std::nullopt;
        if (m_pitBytes.empty()) nextPitFrame();
        from = &m_pitBytes;
    }
    const OutgoingByte out{from->front(), from == &m_replies};
    from->pop_front();
    return out;
}

} // namespace kvo::simulator
