#include "tools/logger_simulator/serve.h"

#include "tools/logger_simulator/model_logger.h"
#include "tools/logger_simulator/pty_logger.h"
#include "tools/logger_simulator/state_file.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#if defined(__unix__)
#include <csignal>

namespace kvo::simulator {
namespace {

namespace fs = std::filesystem;

// The link from the program's port name to the device, gone again at the end.
class PortLink {
public:
    ~PortLink() {
        std::error_code ignored;
        if (m_made) fs::remove(m_path, ignored);
    }

    bool make(const std::string& path, const std::string& device) {
        std::error_code failure;
        if (fs::is_symlink(fs::symlink_status(path, failure))) fs::remove(path, failure);
        fs::create_symlink(device, path, failure);
        if (failure) {
            std::fprintf(stderr, "%s: %s\n", path.c_str(), failure.message().c_str());
            return false;
        }
        m_path = path;
        m_made = true;
        return true;
    }

private:
    std::string m_path;
    bool m_made = false;
};

std::unique_ptr<ModelLogger> makeLogger(const Options& options) {
    if (options.streamPath.empty())
        return std::make_unique<ModelLogger>(options.dataType, options.seed);
    std::ifstream file(options.streamPath, std::ios::binary);
    platform::Bytes stream{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (stream.empty()) {
        std::fprintf(stderr, "%s: cannot be read or is empty\n", options.streamPath.c_str());
        return nullptr;
    }
    return std::make_unique<ModelLogger>(std::move(stream));
}

// Shows the settings of the time before, and keeps those that are written from now on. False where
// there are some that cannot be read.
bool keepState(ModelLogger& logger, const std::string& path) {
    if (path.empty()) return true;
    std::string error;
    if (const auto settings = readState(path, error)) logger.takeSettings(*settings);
    if (!error.empty()) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return false;
    }
    logger.onWritten = [path](const HeaderBytes& settings) {
        std::string failure;
        if (!writeState(path, settings, failure)) std::fprintf(stderr, "%s\n", failure.c_str());
    };
    return true;
}

sigset_t watchedSignals() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGHUP);
    sigaddset(&set, SIGUSR1);
    return set;
}

// Until a signal says so or the simulated cable is pulled out.
void serveUntilToldToEnd(PtyLogger& pty, ModelLogger& logger, const sigset_t& signals) {
    const timespec quarterSecond{0, 250000000};
    while (pty.running()) {
        const int got = sigtimedwait(&signals, nullptr, &quarterSecond);
        if (got == SIGUSR1)
            pty.post([&logger] { logger.powerUp(); });
        else if (got > 0)
            return;
    }
    std::puts("The cable has been pulled out.");
}

} // namespace

int serve(const Options& options) {
    const auto logger = makeLogger(options);
    if (!logger || !keepState(*logger, options.statePath)) return 1;
    FaultyEnd end(*logger, options.fault);
    const sigset_t signals = watchedSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr); // the thread inherits it; the wait below takes them
    PtyLogger pty(end, options.paced);
    if (!pty.start()) {
        std::fprintf(stderr, "%s\n", pty.errorText().c_str());
        return 1;
    }
    PortLink link;
    if (!options.linkPath.empty() && !link.make(options.linkPath, pty.device())) return 1;
    std::printf("%s\n", pty.device().c_str());
    std::fflush(stdout);
    serveUntilToldToEnd(pty, *logger, signals);
    return 0;
}

} // namespace kvo::simulator

#else

namespace kvo::simulator {

int serve(const Options&) {
    std::fputs("This system has no pseudo-terminals to put a logger on.\n", stderr);
    return 1;
}

} // namespace kvo::simulator

#endif
