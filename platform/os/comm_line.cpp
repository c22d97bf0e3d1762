#include "platform/os/comm_line.h"

#include "platform/os/windows_api.h"
#include "platform/system_path.h"

#ifdef _WIN32

#include <algorithm>
#include <array>

namespace kvo::platform_os {
namespace {

// The driver's own queues, in which bytes lie while the program does other work: seconds of the
// line.
constexpr DWORD driverQueueBytes = 4096;

// An operation under way, and the event that tells of its end.
class Overlap {
public:
    Overlap() { m_record.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr); }
    ~Overlap() { CloseHandle(m_record.hEvent); }
    Overlap(const Overlap&) = delete;
    Overlap& operator=(const Overlap&) = delete;

    enum class State { done, underWay, lost };

    void* event() const { return m_record.hEvent; }
    bool isUnderWay() const { return m_underWay; }

    // What a call that was given begin() has returned: whether it is done, and how much of it.
    OVERLAPPED* begin() {
        const HANDLE event = m_record.hEvent;
        m_record = OVERLAPPED{};
        m_record.hEvent = event;
        ResetEvent(event);
        return &m_record;
    }
    State begun(HANDLE line, BOOL returned, DWORD& count) {
        if (returned == FALSE && GetLastError() != ERROR_IO_PENDING) return ended(State::lost);
        m_underWay = true;
        return look(line, FALSE, count);
    }
    // Where it stands now; `wait` only for what cannot take long.
    State look(HANDLE line, BOOL wait, DWORD& count) {
        if (GetOverlappedResult(line, &m_record, &count, wait) != FALSE) return ended(State::done);
        return GetLastError() == ERROR_IO_INCOMPLETE ? State::underWay : ended(State::lost);
    }
    // Its memory is the driver's until then.
    void breakOff(HANDLE line) {
        DWORD count = 0;
        if (m_underWay && CancelIoEx(line, &m_record) != FALSE) look(line, TRUE, count);
        ended(State::lost);
    }

private:
    // The event is taken back: who waits on it would else be woken without end.
    State ended(State state) {
        m_underWay = false;
        ResetEvent(m_record.hEvent);
        return state;
    }

    OVERLAPPED m_record{};
    bool m_underWay = false;
};

BYTE parityNumber(char letter) {
    switch (letter) {
    case 'E':
        return EVENPARITY;
    case 'O':
        return ODDPARITY;
    case 'M':
        return MARKPARITY;
    case 'S':
        return SPACEPARITY;
    default:
        return NOPARITY;
    }
}

bool apply(HANDLE line, const CommSettings& settings) {
    DCB block{};
    block.DCBlength = sizeof block;
    if (GetCommState(line, &block) == FALSE) return false;
    block.BaudRate = static_cast<DWORD>(settings.baud);
    block.ByteSize = static_cast<BYTE>(settings.dataBits);
    block.Parity = parityNumber(settings.parity);
    block.StopBits = settings.stopBits == 2 ? TWOSTOPBITS : ONESTOPBIT;
    block.fBinary = TRUE;
    block.fParity = settings.parity == 'N' ? FALSE : TRUE;
    block.fOutxCtsFlow = FALSE;
    block.fOutxDsrFlow = FALSE;
    block.fDsrSensitivity = FALSE;
    block.fOutX = FALSE;
    block.fInX = FALSE;
    block.fErrorChar = FALSE;
    block.fNull = FALSE;
    block.fAbortOnError = FALSE;            // a byte that is damaged stops nothing
    block.fDtrControl = DTR_CONTROL_ENABLE; // both lines stand, as other systems have them
    block.fRtsControl = RTS_CONTROL_ENABLE;
    if (SetCommState(line, &block) == FALSE) return false;
    // A read ends with its last byte, however long that takes: one byte is asked for, and others
    // only where they are there.
    COMMTIMEOUTS timeouts{};
    return SetCommTimeouts(line, &timeouts) != FALSE;
}

class WindowsCommLine : public CommLine {
public:
    ~WindowsCommLine() override { closeLine(); }

    std::unique_ptr<CommLine> another() const override {
        return std::make_unique<WindowsCommLine>();
    }

    std::string target(const std::string& name) const override {
        std::array<wchar_t, 512> found{};
        const DWORD length = QueryDosDeviceW(
            platform::wideText(name).c_str(), found.data(), static_cast<DWORD>(found.size() - 1));
        if (length == 0) return {};
        const std::string device = platform::narrowText(found.data());
        return device.substr(device.rfind('\\') + 1);
    }

    std::uint32_t open(const std::string& name, const CommSettings& settings) override {
        closeLine();
        m_line = CreateFileW(platform::wideText("\\\\.\\" + name).c_str(),
            GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
        if (m_line == INVALID_HANDLE_VALUE) return GetLastError();
        SetupComm(m_line, driverQueueBytes, driverQueueBytes); // a driver may know better
        if (!apply(m_line, settings)) {
            const DWORD error = GetLastError();
            closeLine();
            return error == 0 ? ERROR_GEN_FAILURE : error;
        }
        PurgeComm(m_line, PURGE_RXABORT | PURGE_TXABORT | PURGE_RXCLEAR | PURGE_TXCLEAR);
        return 0;
    }

    void close() override { closeLine(); }

    bool receive(std::string& bytes, std::size_t most) override {
        while (m_reading.isUnderWay() || bytes.size() < most) {
            DWORD count = 0;
            const auto state =
                m_reading.isUnderWay() ? m_reading.look(m_line, FALSE, count) : readByte(count);
            if (state == Overlap::State::lost) return false;
            if (state == Overlap::State::underWay) return true;
            if (count == 0) return false; // a read without its byte: there is no line any more
            bytes += m_byte;
            if (!readWaiting(bytes, most)) return false;
        }
        return true;
    }

    bool send(std::string_view bytes) override {
        m_sending = bytes;
        DWORD count = 0;
        OVERLAPPED* const record = m_writing.begin();
        const BOOL returned = WriteFile(
            m_line, m_sending.data(), static_cast<DWORD>(m_sending.size()), nullptr, record);
        return m_writing.begun(m_line, returned, count) != Overlap::State::lost;
    }

    std::optional<bool> sent() override {
        DWORD count = 0;
        if (!m_writing.isUnderWay()) return true;
        const auto state = m_writing.look(m_line, FALSE, count);
        if (state == Overlap::State::lost) return {};
        return state == Overlap::State::done;
    }

    bool isThere() override {
        DWORD errors = 0;
        return ClearCommError(m_line, &errors, nullptr) != FALSE;
    }

    std::vector<void*> wakeHandles() const override {
        return {m_reading.event(), m_writing.event()};
    }

    std::string words(std::uint32_t error) const override {
        std::array<wchar_t, 512> text{};
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
            0, text.data(), static_cast<DWORD>(text.size() - 1), nullptr);
        std::string words = platform::narrowText(text.data());
        while (!words.empty() && std::string_view("\r\n. ").find(words.back()) != std::string::npos)
            words.pop_back();
        return words.empty() ? "the system gives no reason" : words;
    }

private:
    void closeLine() {
        if (m_line == INVALID_HANDLE_VALUE) return;
        m_reading.breakOff(m_line);
        m_writing.breakOff(m_line);
        CloseHandle(m_line);
        m_line = INVALID_HANDLE_VALUE;
    }

    Overlap::State readByte(DWORD& count) {
        OVERLAPPED* const record = m_reading.begin();
        const BOOL returned = ReadFile(m_line, &m_byte, 1, nullptr, record);
        return m_reading.begun(m_line, returned, count);
    }

    // What lies in the driver, behind a byte that has come; it is there, so nothing is waited for.
    bool readWaiting(std::string& bytes, std::size_t most) {
        DWORD errors = 0;
        COMSTAT queue{};
        if (ClearCommError(m_line, &errors, &queue) == FALSE) return false;
        std::array<char, 1024> block{};
        const std::size_t wanted =
            std::min({static_cast<std::size_t>(queue.cbInQue), block.size(), most - bytes.size()});
        if (wanted == 0) return true;
        DWORD count = 0;
        OVERLAPPED* const record = m_reading.begin();
        const BOOL returned =
            ReadFile(m_line, block.data(), static_cast<DWORD>(wanted), nullptr, record);
        auto state = m_reading.begun(m_line, returned, count);
        if (state == Overlap::State::underWay) state = m_reading.look(m_line, TRUE, count);
        if (state == Overlap::State::lost) return false;
        bytes.append(block.data(), count);
        return true;
    }

    HANDLE m_line = INVALID_HANDLE_VALUE;
    Overlap m_reading;
    Overlap m_writing;
    char m_byte = 0;
    std::string m_sending;
};

} // namespace

std::unique_ptr<CommLine> makeCommLine() {
    return std::make_unique<WindowsCommLine>();
}

} // namespace kvo::platform_os

#else

namespace kvo::platform_os {

std::unique_ptr<CommLine> makeCommLine() {
    return nullptr;
}

} // namespace kvo::platform_os

#endif
