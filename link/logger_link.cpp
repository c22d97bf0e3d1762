#include "link/logger_link.h"

#include "core/basic/numbers.h"

namespace kvo::link {
namespace {

constexpr int replyTurns = 8000;
constexpr std::string_view lineSettings = "9600,N,8,1";
constexpr const char* communicationsError = "Communications Error";

} // namespace

LoggerLink::LoggerLink(
    platform::SerialPort& port, platform::Yield& yield, platform::Dialogs& dialogs)
    : m_line(port, yield), m_dialogs(dialogs) {}

bool LoggerLink::lineGone() const {
    return m_hadLine && !m_line.portOpen();
}

std::string LoggerLink::portText(int portNumber) const {
    const std::string device = m_line.deviceOf(portNumber);
    return "Port " + std::to_string(portNumber) + ": " + (device.empty() ? "no device" : device);
}

void LoggerLink::tryPort(int portNumber) {
    if (!m_line.portOpen()) {
        m_line.setCommPort(portNumber);
        m_line.setPortOpen(true);
    }
    m_hadLine = m_line.portOpen();
}

void LoggerLink::OpenLoggerPort(int portNumber) {
    // One that a form left open under another number is not the port that the setup names now.
    if (m_line.commPort() != portNumber) CloseLoggerPort();
    if (!m_line.portOpen()) m_line.setCommPort(portNumber);
    m_line.setSettings(lineSettings);
    m_line.setInputLen(0);
    tryPort(portNumber);
    ReportCommEvent();
    if (m_line.inBufferCount() >= 1) m_line.input();
    m_line.countAnew();
    if (m_line.portOpen()) return;
    LinkFailed = -1;
    std::string text =
        "Error Opening Com" + std::to_string(portNumber) + "\r\rPlease fix and try again!";
    if (const std::string reason = m_line.openErrorText(); !reason.empty()) text += "\r\r" + reason;
    m_dialogs.messageBox(text, platform::boxStyle::critical, communicationsError);
}

// Required: the numbers are this program's own, not those that the port's maker gives.
std::string commEventText(int commEvent) {
    switch (commEvent) {
    case 1001:
        return "Break Received";
    case 1002:
        return "CTS Timeout";
    case 1003:
        return "DSR Timeout";
    case 1005:
        return "Overrun Error";
    case 1006:
        return "Carrier Detect Timeout";
    case 1007:
        return "Receive Buffer Overflow";
    case 1009:
        return "Transmit Buffer Full";
    default:
        return {};
    }
}

void LoggerLink::ReportCommEvent() {
    const std::string text = commEventText(m_line.commEvent());
    if (text.empty()) return;
    m_dialogs.messageBox(text, platform::boxStyle::warning, communicationsError);
}

void LoggerLink::CloseLoggerPort() {
    if (m_line.portOpen()) m_line.setPortOpen(false);
}

void LoggerLink::SendCommand(std::uint8_t count) {
    const std::string one(1, static_cast<char>(CommandByte));
    for (int i = 0; i < count; ++i) {
        m_line.output(one);
        while (m_line.portOpen() && m_line.outBufferCount() != 0)
            m_line.turns(platform::turnsPerMillisecond);
    }
}

void LoggerLink::ReadReply() {
    for (int turn = 0;; turn += m_line.turns(replyTurns - turn)) {
        if (m_line.inBufferCount() >= 1) {
            if (const std::string got = m_line.input(); !got.empty()) {
                ReplyByte = static_cast<std::uint8_t>(got.front());
                return;
            }
        }
        // The look after the last turn keeps a machine that was asleep from losing a reply that is
        // already there. A port that never opened costs the whole wait, one that was lost nothing.
        if (turn >= replyTurns || lineGone()) break;
    }
    ++MissedReplies;
    // Required: without a data type, as before the first header, silence sets no flag.
    if (Header.DataType > 0) LinkFailed = -1;
}

void LoggerLink::RequestByte() {
    SendCommand(1);
    ReadReply();
}

void LoggerLink::RequestWord() {
    RequestByte();
    const std::int32_t high = ReplyByte;
    RequestByte();
    WordValue = high * 256 + ReplyByte;
}

void LoggerLink::RequestRpm() {
    RequestByte();
    const std::int32_t high = ReplyByte;
    RequestByte();
    const double seconds = (high * 256 + ReplyByte) * tickSeconds;
    // Required: an rpm that does not fit 16 bits leaves that of the period before.
    if (seconds > 0)
        core::keepOnFailure(RpmValue, core::CInt(60 / seconds * static_cast<double>(RpmScale)));
    else
        RpmValue = 0;
}

void LoggerLink::ReadLoggerHeader() {
    const auto readByte = [this](std::uint8_t& field) {
        RequestByte();
        field = static_cast<std::uint8_t>(ReplyByte);
    };
    const auto readRpm = [this](std::int16_t& field) {
        RequestRpm();
        field = RpmValue;
    };
    const auto readTime = [this](float& field) {
        RequestWord();
        field = static_cast<float>(WordValue / 100.0);
    };
    core::RunHeader& run = Header.RunHeader;
    CommandByte = command::nextByte;
    RpmScale = 1.0F;
    RequestByte(); // thrown away
    readByte(Header.DataType);
    readByte(Header.LoggerModel);
    readByte(Header.LoggerVersion);
    readByte(Header.LoggerMemory);
    readByte(run.EnginePickups);
    readByte(run.InputPickups);
    readByte(run.OutputPickups);
    readByte(run.FrontWheelPickups);
    RequestWord();
    Header.LoggerSerial = static_cast<std::int16_t>(WordValue); // from 32768 up it wraps
    readRpm(run.RecordOnRpm);
    readByte(run.CrankGearTeeth);
    readByte(run.BasketGearTeeth);
    readRpm(run.PreStartRpm);
    readRpm(run.ShiftLightRpm1);
    readTime(run.ShiftLightTime1);
    readRpm(run.ShiftLightRpm2);
    readTime(run.ShiftLightTime2);
    readRpm(run.ShiftLightRpm3);
    readTime(run.ShiftLightTime3);
    readRpm(run.ShiftLightRpm4);
    readTime(run.ShiftLightTime4);
}

bool LoggerLink::greetLogger() {
    CommandByte = command::areYouThere;
    SendCommand(1);
    ReadReply();
    return ReplyByte == loggerIsHere;
}

std::string noReplyText() {
    return "The On Board Computer has not replied. Possible reasons are:\r\n\r\n"
           "    (1)..Plug into incorrect IBM Comm Port.\r\n"
           "    (2)..Download cable not plugged into On Board Computer.\r\n"
           "    (3)..Download cable not plugged into the IBM Comm Port plug.\r\n"
           "    (4)..On Board Computer not Swiched on.";
}

void LoggerLink::reportNoReply(const std::string& title) {
    m_dialogs.beep();
    CloseLoggerPort();
    m_dialogs.messageBox(noReplyText(), platform::boxStyle::critical, title);
}

} // namespace kvo::link
