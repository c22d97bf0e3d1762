#pragma once
// One serial line of Windows as CommPort drives it, so that a test can be the line. No step waits
// for the far end. A step that fails otherwise than in words gives a number of the system's.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::platform_os {

// "9600,N,8,1" in parts.
struct CommSettings {
    int baud = 9600;
    char parity = 'N'; // N, E, O, M, S
    int dataBits = 8;
    int stopBits = 1;
};

class CommLine {
public:
    virtual ~CommLine() = default;
    // A closed one of the same kind.
    virtual std::unique_ptr<CommLine> another() const = 0;
    // What the system has behind the name of a port, "COM3"; empty where there is no such port, or
    // where it does not say.
    virtual std::string target(const std::string& name) const = 0;
    // Opens a line and drops what is in its driver: 0, or the system's number for why it does not.
    virtual std::uint32_t open(const std::string& name, const CommSettings& settings) = 0;
    // Breaks off what is under way.
    virtual void close() = 0;
    // Puts what has come behind `bytes`, up to `most` in all, and has itself be told of more where
    // there is room for it. False: the line is lost.
    [[nodiscard]] virtual bool receive(std::string& bytes, std::size_t most) = 0;
    // Begins to send; only while nothing is being sent. False: the line is lost.
    [[nodiscard]] virtual bool send(std::string_view bytes) = 0;
    // Whether all that was given has been sent; nothing where the line is lost.
    [[nodiscard]] virtual std::optional<bool> sent() = 0;
    // Whether the line is still there.
    virtual bool isThere() = 0;
    // As platform::WatchedPort has them.
    virtual std::vector<void*> wakeHandles() const = 0;
    // The system's words for one of its numbers, UTF-8, without a full stop.
    virtual std::string words(std::uint32_t error) const = 0;
};

// The line by the system's own calls; nothing on a system that has none of these.
std::unique_ptr<CommLine> makeCommLine();

} // namespace kvo::platform_os
