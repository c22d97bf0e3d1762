#pragma once
// A logger: its header, a run in its memory, and the answer to every command. It knows no line and
// no clock; a line (duplex_line.h, pty_logger.h) carries its bytes.
#include "platform/bytes.h"
#include "tools/logger_simulator/line_end.h"
#include "tools/logger_simulator/memory_image.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>

namespace kvo::simulator {

// What a read behind the end of the memory brings: erased cells.
inline constexpr std::uint8_t fillerByte = 0xFF;

class ModelLogger : public LineEnd {
public:
    // A logger of data type 8, 12, 17, 20, 25, 32 or 43 (any other: a 25) with one run in memory.
    explicit ModelLogger(int dataType, std::uint32_t seed = 1);
    // A logger that gives this recorded stream: one byte that is thrown away, 32 header bytes,
    // samples.
    explicit ModelLogger(platform::Bytes stream);

    // What a download brings, from the byte that is thrown away on.
    const platform::Bytes& stream() const { return m_stream; }
    // Switched off and on: settings that were written take effect, the live display ends.
    void powerUp();
    // True while settings wait for the next power-up.
    bool configurationWaits() const { return m_written.has_value(); }
    // Called with the settings of each whole write, as soon as its last byte is there.
    std::function<void(const HeaderBytes&)> onWritten;
    // What the header says, as after a power-up with these settings.
    void takeSettings(const HeaderBytes& settings);
    bool inPitRun() const { return m_pitRun; }

    void receive(std::uint8_t byte) override;
    std::optional<OutgoingByte> next() override;

private:
    void command(std::uint8_t byte);
    bool configurationStep(std::uint8_t byte);
    void reply(std::uint8_t byte) { m_replies.push_back(byte); }
    void nextPitFrame();

    WireLayout m_layout;
    platform::Bytes m_stream;
    std::size_t m_position = 0;
    std::deque<std::uint8_t> m_replies;
    int m_opening = -1;          // step of the opening of a configuration write, -1: none
    platform::Bytes m_receiving; // settings that have come so far
    std::optional<HeaderBytes> m_written;
    bool m_pitRun = false;
    std::uint16_t m_pitCounter = 0;
    std::deque<std::uint8_t> m_pitBytes;
};

} // namespace kvo::simulator
