#include "tools/logger_simulator/pty_logger.h"

#include <utility>

#if defined(__unix__)
#include "tools/logger_simulator/duplex_line.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <vector>
#if defined(__linux__)
#include <sys/prctl.h>
#endif

namespace kvo::simulator {
namespace {

void closeAndForget(int& descriptor) {
    if (descriptor >= 0) ::close(descriptor);
    descriptor = -1;
}

timespec toTimespec(double ms) {
    const double whole = std::floor(ms / 1000);
    timespec time{};
    time.tv_sec = static_cast<time_t>(whole);
    time.tv_nsec = static_cast<long>((ms - whole * 1000) * 1e6);
    return time;
}

} // namespace

class PtyLogger::Body {
public:
    Body(LineEnd& end, bool paced) : m_line(end, paced) {}
    ~Body() { stop(); }

    bool start() {
        if (!openDevice()) {
            errorText += std::strerror(errno);
            closeAll();
            return false;
        }
        m_stop = false;
        running = true;
        m_thread = std::thread([this] { serve(); });
        return true;
    }

    void stop() {
        m_stop = true;
        wake();
        if (m_thread.joinable()) m_thread.join();
        closeAll();
    }

    void post(std::function<void()> what) {
        {
            const std::lock_guard lock(m_mutex);
            m_posted.push_back(std::move(what));
        }
        wake();
    }

    std::string device;
    std::string errorText;
    std::atomic<bool> running = false;

private:
    bool openDevice() {
        errorText = "No pseudo-terminal: ";
        m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
        if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) return false;
        std::array<char, 128> name{};
        if (::ptsname_r(m_master, name.data(), name.size()) != 0) return false;
        device = name.data();
        // Held open, so that the far side can close its port and come back.
        m_slave = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios settings{};
        if (m_slave < 0 || ::tcgetattr(m_slave, &settings) != 0) return false;
        ::cfmakeraw(&settings);
        ::cfsetspeed(&settings, B9600);
        if (::tcsetattr(m_slave, TCSANOW, &settings) != 0) return false;
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return false;
        m_wakeRead = ends[0];
        m_wakeWrite = ends[1];
        errorText.clear();
        return true;
    }

    void closeAll() {
        running = false;
        closeAndForget(m_slave);
        closeAndForget(m_master);
        closeAndForget(m_wakeRead);
        closeAndForget(m_wakeWrite);
    }

    void wake() const {
        if (m_wakeWrite >= 0) [[maybe_unused]]
            const auto written = ::write(m_wakeWrite, "w", 1);
    }

    double nowMs() const {
        const std::chrono::duration<double, std::milli> since =
            std::chrono::steady_clock::now() - m_start;
        return since.count();
    }

    void serve() {
#if defined(__linux__)
        ::prctl(PR_SET_TIMERSLACK, 1000UL, 0UL, 0UL, 0UL); // wake to the microsecond
#endif
        while (!m_stop) {
            waitForNext();
            runPosted();
            takeRequests();
            m_line.advance(nowMs());
            giveReplies();
            if (!m_line.hungUp()) continue;
            closeAndForget(m_slave);
            closeAndForget(m_master);
            break;
        }
        running = false;
    }

    void waitForNext() {
        std::array<pollfd, 2> watched{{{m_master, POLLIN, 0}, {m_wakeRead, POLLIN, 0}}};
        timespec limit{};
        const timespec* wait = nullptr;
        if (const auto due = m_line.nextEventMs()) {
            limit = toTimespec(std::max(0.0, *due - nowMs()));
            wait = &limit;
        }
        ::ppoll(watched.data(), watched.size(), wait, nullptr);
        std::array<char, 64> drained{};
        if ((watched[1].revents & POLLIN) != 0)
            while (::read(m_wakeRead, drained.data(), drained.size()) > 0) {
            }
    }

    void runPosted() {
        std::vector<std::function<void()>> todo;
        {
            const std::lock_guard lock(m_mutex);
            todo.swap(m_posted);
        }
        for (const auto& what : todo) what();
    }

    void takeRequests() {
        std::array<std::uint8_t, 4096> bytes{};
        const auto count = ::read(m_master, bytes.data(), bytes.size());
        const double now = nowMs();
        for (ssize_t k = 0; k < count; ++k) m_line.send(bytes[static_cast<std::size_t>(k)], now);
    }

    // What nobody takes is lost, as on any line without a handshake.
    void giveReplies() {
        const std::string arrived = m_line.takeArrived();
        if (arrived.empty()) return;
        [[maybe_unused]] const auto written = ::write(m_master, arrived.data(), arrived.size());
    }

    DuplexLine m_line;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::thread m_thread;
    std::atomic<bool> m_stop = false;
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_posted;
    int m_master = -1;
    int m_slave = -1;
    int m_wakeRead = -1;
    int m_wakeWrite = -1;
};

} // namespace kvo::simulator

#else

namespace kvo::simulator {

class PtyLogger::Body {
public:
    Body(LineEnd&, bool) {}
    bool start() { return false; }
    void stop() {}
    void post(const std::function<void()>& what) { what(); }

    std::string device;
    std::string errorText = "This system has no pseudo-terminals.";
    bool running = false;
};

} // namespace kvo::simulator

#endif

namespace kvo::simulator {

PtyLogger::PtyLogger(LineEnd& end, bool paced) : m_body(std::make_unique<Body>(end, paced)) {}
PtyLogger::~PtyLogger() = default;
bool PtyLogger::start() {
    return m_body->start();
}
void PtyLogger::stop() {
    m_body->stop();
}
bool PtyLogger::running() const {
    return m_body->running;
}
const std::string& PtyLogger::device() const {
    return m_body->device;
}
const std::string& PtyLogger::errorText() const {
    return m_body->errorText;
}
void PtyLogger::post(std::function<void()> what) {
    m_body->post(std::move(what));
}

} // namespace kvo::simulator
