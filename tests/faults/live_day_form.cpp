// A day of live display in its form, painted frame by frame, its time sped: the memory in use does
// not grow.
#include "core/forms/doors.h"
#include "core/shared_state.h"
#include "link/forms/logger_line.h"
#include "link/forms/pit_run.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"
#include "platform/unanswered_dialogs.h"
#include "tests/faults/heap_in_use.h"
#include "tests/faults/proof.h"
#include "tests/support/pit_rig.h"

#include <QApplication>
#include <QPushButton>

#include <algorithm>
#include <clocale>
#include <fstream>
#include <unistd.h>

namespace {

using namespace kvo;
using namespace kvo::faults;

constexpr long minuteTurns = 60'000L * platform::turnsPerMillisecond;
constexpr long mostGrowth = 1'000'000; // bytes

// Bytes of the program that are in memory.
std::int64_t residentBytes() {
    std::ifstream file("/proc/self/statm");
    std::int64_t all = 0;
    std::int64_t resident = 0;
    file >> all >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

// The window system has its turn in each wait, as with the real port.
class PaintingYield : public platform::Yield {
public:
    explicit PaintingYield(platform::Yield& inner) : m_inner(inner) {}
    int turns(int limit) override {
        const int gone = m_inner.turns(limit);
        QCoreApplication::processEvents();
        return gone;
    }

private:
    platform::Yield& m_inner;
};

struct Growth {
    std::int64_t used = 0;
    std::int64_t resident = 0;
};

// From Start to Stop: what is more than a few minutes behind the start, when everything has been
// painted once.
Growth growthOf(int type, long minutes) {
    constexpr long warmUp = 3;
    testing::PitRig rig(type);
    testing::VirtualLine line(rig.logger, true);
    PaintingYield yield(line);
    platform::UnansweredDialogs dialogs;
    link::LoggerLink link(line, yield, dialogs);
    platform::services() = {};
    platform::services().files = &rig.files;
    platform::services().dialogs = &dialogs;
    forms::useLoggerLink(&link);
    forms::doors().showMainWindow = [] {};
    core::state().Config = rig.config;
    auto& window = platform_qt::form<forms::PitRun>();
    window.show();
    auto& button = platform_qt::control<QPushButton>(window, "Command1");
    Growth atFirst;
    Growth most;
    for (long minute = warmUp; minute <= minutes + warmUp; ++minute)
        line.at(minute * minuteTurns, [&, minute] {
            const Growth now{bytesInUse(), residentBytes()};
            if (minute == warmUp) atFirst = now;
            most.used = std::max(most.used, now.used - atFirst.used);
            most.resident = std::max(most.resident, now.resident - atFirst.resident);
        });
    line.at((minutes + warmUp) * minuteTurns + 1, [&button] { button.click(); });
    button.click();
    platform_qt::unloadAllForms();
    forms::useLoggerLink(nullptr);
    platform::services() = {};
    return most;
}

} // namespace

// --count: minutes of display.
int main(int argc, char* argv[]) {
    const Options options = optionsOf(argc, argv);
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    constexpr std::int64_t shortForm = 1;
    const std::int64_t minutes = options.count > 0 ? options.count : shortForm;
    Proof proof(options);
    const Growth grown = growthOf(25, static_cast<long>(minutes));
    proof.check(grown.used < mostGrowth, "grew by " + std::to_string(grown.used) + " bytes");
    return proof.end("live display in its form, time sped", minutes, "minutes",
        "grew by " + std::to_string(grown.used) + " bytes in use, " +
            std::to_string(grown.resident) + " resident");
}
