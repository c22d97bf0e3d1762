// A day of live display, its time sped: the memory in use does not grow.
#include "platform/unanswered_dialogs.h"
#include "tests/faults/heap_in_use.h"
#include "tests/faults/proof.h"
#include "tests/support/pit_rig.h"

namespace {

using namespace kvo;
using namespace kvo::faults;

constexpr long minuteTurns = 60'000L * platform::turnsPerMillisecond;
constexpr long mostGrowth = 1'000'000; // bytes

// Counts the frames, and keeps none.
class CountingView : public link::PitRunView {
public:
    long frames = 0;
    long silences = 0;
    void setCommand1(const std::string&) override {}
    void applyLayout(const link::PitRunLayout&) override {}
    void showReadings(const link::PitRunReadings&) override { ++frames; }
    void setStatus(const std::string& text) override {
        if (!text.empty()) ++silences;
    }
    void unload() override {}
};

struct Day {
    explicit Day(int type) : rig(type), line(rig.logger, true), link(line, line, dialogs) {}
    testing::PitRig rig;
    testing::VirtualLine line;
    platform::UnansweredDialogs dialogs;
    link::LoggerLink link;
    CountingView view;
    std::int64_t atFirst = 0;
    std::int64_t most = 0;
};

// From Start to Stop. Gives how many bytes more are in use than a minute behind the start.
std::int64_t growthOf(int type, long minutes, long& frames) {
    Day day(type);
    link::PitRunSession session(day.link, {day.rig.config, day.rig.folder, day.rig.tables},
        day.view, day.dialogs, day.rig.files);
    session.Form_Load();
    for (long minute = 1; minute <= minutes + 1; ++minute) {
        day.line.at(minute * minuteTurns, [&day, minute] {
            const std::int64_t now = bytesInUse();
            if (minute == 1) day.atFirst = now;
            day.most = std::max(day.most, now);
        });
    }
    day.line.at((minutes + 1) * minuteTurns + 1, [&session] { session.Command1_Click(); });
    session.Command1_Click();
    frames += day.view.frames;
    return day.view.frames > minutes * 1000 ? day.most - day.atFirst : mostGrowth;
}

} // namespace

// --count: minutes of display.
int main(int argc, char* argv[]) {
    const Options options = optionsOf(argc, argv);
    constexpr std::int64_t shortForm = 10;
    const std::int64_t minutes = options.count > 0 ? options.count : shortForm;
    Proof proof(options);
    long frames = 0;
    std::string found;
    for (const int type : {25, 43}) {
        const std::int64_t grown = growthOf(type, static_cast<long>(minutes), frames);
        proof.check(grown < mostGrowth,
            "type " + std::to_string(type) + " grew by " + std::to_string(grown) + " bytes");
        found += "type " + std::to_string(type) + " grew by " + std::to_string(grown) + " bytes, ";
    }
    return proof.end(
        "live display, time sped", minutes, "minutes", found + std::to_string(frames) + " frames");
}
