#include "tests/forms/support/pty_pair.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace kvo::testing {

PtyPair::PtyPair() : m_master(::posix_openpt(O_RDWR | O_NOCTTY)) {
    ::grantpt(m_master);
    ::unlockpt(m_master);
    m_path = ::ptsname(m_master);
    m_slave = ::open(m_path.c_str(), O_RDWR | O_NOCTTY);
    termios settings{};
    ::tcgetattr(m_slave, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(m_slave, TCSANOW, &settings);
}

PtyPair::~PtyPair() {
    hangUp();
}

void PtyPair::send(const std::string& bytes) {
    if (::write(m_master, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        std::abort();
}

std::string PtyPair::receive(std::size_t atLeast, int timeoutMs) {
    std::string all;
    while (all.size() < atLeast) {
        pollfd line{m_master, POLLIN, 0};
        if (::poll(&line, 1, timeoutMs) <= 0) break;
        std::array<char, 512> part{};
        const ssize_t count = ::read(m_master, part.data(), part.size());
        if (count <= 0) break;
        all.append(part.data(), static_cast<std::size_t>(count));
    }
    return all;
}

void PtyPair::hangUp() {
    if (m_slave >= 0) ::close(m_slave);
    if (m_master >= 0) ::close(m_master);
    m_slave = m_master = -1;
}

} // namespace kvo::testing
