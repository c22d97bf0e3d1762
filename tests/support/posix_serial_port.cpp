#include "tests/support/posix_serial_port.h"

#if defined(__unix__)
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace kvo::testing {

void PosixSerialPort::close() {
    if (m_descriptor >= 0) ::close(m_descriptor);
    m_descriptor = -1;
}

void PosixSerialPort::lose() {
    if (m_descriptor < 0) return;
    ++m_losses;
    close();
}

void PosixSerialPort::setPortOpen(bool open) {
    if (!open) {
        close();
        return;
    }
    m_buffer.clear();
    m_descriptor = ::open(m_device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    m_error = portOpen() ? platform::PortError::none : platform::PortError::missing;
    termios settings{};
    if (!portOpen() || ::tcgetattr(m_descriptor, &settings) != 0) return;
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B9600);
    ::tcsetattr(m_descriptor, TCSANOW, &settings);
    ::tcflush(m_descriptor, TCIOFLUSH);
}

int PosixSerialPort::inBufferCount() {
    std::array<char, 4096> bytes{};
    while (m_descriptor >= 0) {
        const auto count = ::read(m_descriptor, bytes.data(), bytes.size());
        if (count > 0) {
            m_buffer.append(bytes.data(), static_cast<std::size_t>(count));
            continue;
        }
        if (count == 0 || (errno != EAGAIN && errno != EINTR)) lose();
        break;
    }
    return static_cast<int>(m_buffer.size());
}

// Nothing waits here: what was written is the kernel's.
int PosixSerialPort::outBufferCount() {
    return 0;
}

void PosixSerialPort::output(std::string_view bytes) {
    if (m_descriptor >= 0 && ::write(m_descriptor, bytes.data(), bytes.size()) < 0 &&
        errno != EAGAIN)
        lose();
}

std::string PosixSerialPort::input() {
    const std::size_t wanted =
        m_inputLen == 0 ? m_buffer.size() : static_cast<std::size_t>(m_inputLen);
    const std::string taken = m_buffer.substr(0, wanted);
    m_buffer.erase(0, taken.size());
    return taken;
}

// True where something happened on the line in that time.
bool PosixSerialPort::waitForBytes(int milliseconds) {
    pollfd line{m_descriptor, POLLIN, 0};
    const int happened = ::poll(&line, m_descriptor >= 0 ? 1 : 0, milliseconds);
    if ((line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0 && (line.revents & POLLIN) == 0)
        lose();
    return happened > 0;
}

int PosixSerialPort::turns(int limit) {
    using namespace std::chrono;
    ++m_wakes;
    const auto start = steady_clock::now();
    const bool happened = waitForBytes(std::max(1, limit / platform::turnsPerMillisecond));
    if (letFarEndRun) {
        if (happened) return 1;
        letFarEndRun();
        return waitForBytes(0) ? 1 : limit;
    }
    const auto gone = duration_cast<microseconds>(steady_clock::now() - start).count();
    const auto turns =
        static_cast<int>(std::min<long>(limit, gone * platform::turnsPerMillisecond / 1000));
    return std::max(1, turns);
}

} // namespace kvo::testing
#endif
