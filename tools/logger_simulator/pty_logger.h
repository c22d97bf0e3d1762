#pragma once
// A line end on a real pseudo-terminal, served by a thread of its own: any program can open
// device() as its serial port. Paced, it takes the time of 9600 baud in both directions at once,
// against an absolute schedule that does not drift. Systems without pseudo-terminals refuse to
// start.
#include "tools/logger_simulator/line_end.h"

#include <functional>
#include <memory>
#include <string>

namespace kvo::simulator {

class PtyLogger {
public:
    // `end` is touched by the thread alone between start() and stop().
    PtyLogger(LineEnd& end, bool paced);
    PtyLogger(const PtyLogger&) = delete;
    PtyLogger& operator=(const PtyLogger&) = delete;
    ~PtyLogger();

    // False, with errorText(), where no pseudo-terminal is to be had.
    [[nodiscard]] bool start();
    // Ends the thread and closes the device.
    void stop();
    // False before the start and after the far end has hung up.
    bool running() const;
    const std::string& device() const;
    const std::string& errorText() const;
    // Runs `what` on the thread, between two bytes.
    void post(std::function<void()> what);

private:
    class Body;
    std::unique_ptr<Body> m_body;
};

} // namespace kvo::simulator
