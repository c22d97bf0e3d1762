#pragma once
// The program's own serial port on a pseudo-terminal, behind which a logger is plugged in and out.
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_yield.h"
#include "tests/contract/temporary_folder.h"
#include "tests/faults/link_program.h"
#include "tests/faults/link_script.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"
#include "tools/logger_simulator/pty_logger.h"

#include <algorithm>
#include <filesystem>
#include <memory>

namespace kvo::faults {

inline long openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

// Processor time of this process, seconds.
inline double processorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// Waits that go by faster than the clock: a logger that is silent for 250 ms is so for 25.
class SpedYield : public platform::Yield {
public:
    explicit SpedYield(platform::Yield& inner) : m_inner(inner) {}
    int factor = 1;
    int turns(int limit) override {
        const int gone = m_inner.turns(std::max(1, limit / factor));
        return std::min(limit, gone * factor);
    }

private:
    platform::Yield& m_inner;
};

struct RealPort {
    testing::TemporaryFolder folder;
    platform_qt::QtSerialPort port{[this] { return folder.path().string(); }};
    platform_qt::QtYield ownYield{port};
    SpedYield yield{ownYield};

    // Makes a device the port number 1.
    void plugIn(const std::string& device) {
        const std::filesystem::path name = folder.path() / "COM1";
        std::filesystem::remove(name);
        std::filesystem::create_symlink(device, name);
    }
};

// One type and mode: its logger, a program at the real port, and the run as a line in memory brings
// it.
struct Station {
    Station(const simulator::WireLayout& wire, bool fast, RealPort& real)
        : logger(wire.dataType, 7), end(logger), program(wire, fast, real.port, real.yield) {
        testing::VirtualLine line(end);
        end.begin({}, 0);
        good = DownloadingProgram(wire, fast, line, line).download(false).run;
    }
    std::string name() const {
        return "type " + std::to_string(program.type) + (program.fast ? " fast" : " safe");
    }

    simulator::ModelLogger logger;
    ScriptedEnd end;
    DownloadingProgram program;
    std::optional<platform::Bytes> good;
};

inline std::vector<std::unique_ptr<Station>> allStations(RealPort& real) {
    std::vector<std::unique_ptr<Station>> stations;
    for (const auto& wire : simulator::wireLayouts)
        for (const bool fast : {true, false})
            stations.push_back(std::make_unique<Station>(wire, fast, real));
    return stations;
}

} // namespace kvo::faults
