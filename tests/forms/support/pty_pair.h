#pragma once
// A raw pseudo-terminal whose other side the test holds: the far end of a serial cable.
#include <string>

namespace kvo::testing {

class PtyPair {
public:
    PtyPair();
    ~PtyPair();
    PtyPair(const PtyPair&) = delete;
    PtyPair& operator=(const PtyPair&) = delete;

    const std::string& devicePath() const { return m_path; }
    // To the program.
    void send(const std::string& bytes);
    // All that the program has sent so far; waits at most this long for at least `atLeast` bytes.
    std::string receive(std::size_t atLeast, int timeoutMs = 2000);
    // The cable is pulled.
    void hangUp();

private:
    int m_master = -1;
    int m_slave = -1;
    std::string m_path;
};

} // namespace kvo::testing
