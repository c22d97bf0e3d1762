#pragma once
// The serial port as the logger link uses it: polled, 9600,N,8,1, no handshake.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::platform {

// Why a port did not open, in the order of what a user can do about it.
enum class PortError { none, missing, busy, notPermitted, other };

// Port numbers go from 1 to this.
inline constexpr int portNumbers = 16;

// What stands behind a port number, and why it would not open now; `none` where it is free.
struct PortState {
    std::string device; // the system's own text, with what a link leads to; empty where none is
    PortError error = PortError::missing;
    friend bool operator==(const PortState&, const PortState&) = default;
};

class SerialPort {
public:
    virtual ~SerialPort() = default;
    // The states of all ports, from number 1 on. A port that this one has open is busy.
    virtual std::vector<PortState> portStates() const = 0;
    // Selects the port by number, 1 to 16; only while it is closed.
    virtual void setCommPort(int number) = 0;
    virtual int commPort() const = 0;
    // The device behind a port number, in the system's own text; empty where there is none.
    virtual std::string deviceOf(int number) const = 0;
    // "9600,N,8,1"
    virtual void setSettings(std::string_view settings) = 0;
    // How many bytes one input() removes; 0 means all that is there.
    virtual void setInputLen(int bytes) = 0;
    virtual int inputLen() const = 0;
    // A failed open leaves portOpen() false and never throws. Bytes that were in the driver before
    // the open are dropped. A port that is lost closes itself once.
    virtual void setPortOpen(bool open) = 0;
    virtual bool portOpen() const = 0;
    virtual int inBufferCount() = 0;
    virtual int outBufferCount() = 0;
    virtual void output(std::string_view bytes) = 0;
    // At most inputLen() bytes, oldest first; empty if nothing is there.
    virtual std::string input() = 0;
    // Number of the last communication event, 0 for none.
    virtual int commEvent() const = 0;
    // Why the last open failed, and words for the user, UTF-8 (device, reason, what to do).
    virtual PortError openError() const = 0;
    virtual std::string openErrorText() const = 0;
};

// A serial port whose events the window system is to wait for: on Windows, which has no descriptors
// for it.
class WatchedPort : public SerialPort {
public:
    // The system's handles that are signalled where something happened on the line, or none: the
    // same for as long as the port lives, open or not.
    virtual std::vector<void*> wakeHandles() const = 0;
    // Takes what happened, and finds out whether the line is still there. True where who waits is
    // to be woken: as many bytes are there as one input() takes, all bytes went, or the line was
    // lost.
    virtual bool takeEvents() = 0;
    // Called when the port has been opened and when it has been closed or lost.
    std::function<void(bool open)> whenOpened;
};

} // namespace kvo::platform
