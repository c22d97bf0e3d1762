#pragma once
// The serial session with the logger: one byte asks, one byte answers. Everything that speaks to a
// logger - download, live display, configuration, port search - goes through this one record, which
// lives as long as the program: a time-out leaves what the last reply had put there, and callers
// rely on that. No clock: waits count turns (platform/yield.h).
#include "link/header.h"
#include "link/line_record.h"
#include "platform/dialogs.h"
#include "platform/serial_port.h"
#include "platform/yield.h"

#include <cstdint>
#include <string>

namespace kvo::link {

inline constexpr double tickSeconds = 4e-06; // period counts are in these
// At one pulse a revolution and a period of t seconds a wheel of D inches does D / t x this / 200
// mph.
inline constexpr double wheelConstant = 35.69991652;

// What the computer sends.
namespace command {
inline constexpr std::uint8_t areYouThere = 0x51;        // "Q", answered by "?"
inline constexpr std::uint8_t nextByte = 0x44;           // "D", the next byte of the stream
inline constexpr std::uint8_t startConfiguration = 0x53; // "S"
inline constexpr std::uint8_t startPitRun = 0x50;        // "P"
inline constexpr std::uint8_t stopPitRun = 0x70;         // "p"
} // namespace command
inline constexpr std::int32_t loggerIsHere = 0x3F; // "?"

class LoggerLink {
public:
    LoggerLink(platform::SerialPort& port, platform::Yield& yield, platform::Dialogs& dialogs);

    std::uint8_t CommandByte = 0; // what SendCommand sends; stays set
    std::int32_t ReplyByte = 0;   // last reply, 0 to 255; a time-out leaves it
    std::int32_t WordValue = 0;   // result of RequestWord, 0 to 65535
    std::int16_t RpmValue = 0;    // result of RequestRpm; keeps its value where one does not fit
    float RpmScale = 0;           // factor in RequestRpm
    std::int16_t LinkFailed = 0;  // 0 or -1: time-out, failed open, Cancel, stop of a pit run
    int MissedReplies = 0;        // time-outs of ReadReply so far, also those that set no flag
    LoggerHeader Header;

    // Opens port 1 to 16 at 9600 8N1 and drops what was waiting; another one that is open is closed
    // first. A port that does not open is told to the user and leaves LinkFailed at -1.
    void OpenLoggerPort(int portNumber);
    // Shows what the port's last communication event means, if it is one of those with a text.
    void ReportCommEvent();
    // Closes the port if it is open.
    void CloseLoggerPort();

    // Sends CommandByte `count` times, each one as the output buffer has run empty. That wait has
    // no bound but ends when the port is gone.
    void SendCommand(std::uint8_t count);
    // Waits up to 8000 turns for one reply into ReplyByte. On a time-out ReplyByte stays and
    // LinkFailed becomes -1 if a data type is known. A port that was lost is a time-out at once.
    void ReadReply();
    void RequestByte(); // SendCommand(1), ReadReply()
    void RequestWord(); // two exchanges, high byte first, into WordValue
    void RequestRpm();  // two exchanges, a period count, into RpmValue
    // The throw-away byte and the 32 bytes of the header.
    void ReadLoggerHeader();

    // "Q"; true if a logger answered. A stale 0x3F counts as an answer.
    bool greetLogger();
    // Beep, closed port and the list of possible reasons under `title`.
    void reportNoReply(const std::string& title);

    // "Port 1: /dev/ttyUSB0", or that there is no device behind the number.
    std::string portText(int portNumber) const;

    // Opens the port for a search: no message, no flag.
    void tryPort(int portNumber);
    // True once the port that was opened last is closed or lost.
    bool lineGone() const;

    platform::SerialPort& port() { return m_line; }
    platform::Yield& yield() { return m_line; }
    // Notes what passes on the line, where a session wants it.
    LineRecorder& recorder() { return m_line; }

private:
    LineRecorder m_line; // the port and its waits
    platform::Dialogs& m_dialogs;
    bool m_hadLine = false; // the last attempt to open succeeded
};

// Text for a communication event number; empty for one without a text.
std::string commEventText(int commEvent);
// The five lines that tell why a logger may not have replied.
std::string noReplyText();

} // namespace kvo::link
