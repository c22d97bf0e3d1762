// The scripts of link_scripts with the program's own port on a pseudo-terminal: nothing hangs, no
// descriptor stays open, no wrong run passes unsaid, and the next download is right.
#include "tests/faults/link_port.h"
#include "tests/faults/proof.h"

#include <QCoreApplication>

#include <clocale>
#include <unistd.h>

namespace {

using namespace kvo;
using namespace kvo::faults;

constexpr int speed = 10; // of a session with faults; the next one has all the time it needs

struct TerminalTally {
    long told = 0;
    long asked = 0;
    long right = 0;
    long silent = 0; // wrong, as many bytes as were asked for: required
    long unknown = 0;
};

void judge(const Outcome& outcome, const Station& station, const std::string& name, Proof& proof,
    TerminalTally& tally) {
    if (!proof.check(outcome.broken.empty(), name + ":" + outcome.broken)) return;
    if (outcome.run)
        proof.check(replayed(outcome) == outcome.run, name + ": its bytes give another run");
    if (outcome.typeUnknown)
        ++tally.unknown;
    else if (outcome.failureTold)
        ++tally.told;
    else if (outcome.asked > 0)
        ++tally.asked;
    else if (outcome.run == station.good)
        ++tally.right;
    else if (station.end.given() == station.end.asked())
        ++tally.silent;
    else
        proof.fault(name + ": wrong and not told");
}

std::vector<ScriptedFault> someScript(Random& random, const DownloadingProgram& program) {
    std::vector<ScriptedFault> script;
    for (int left = 1 + upTo(random, 3); left > 0; --left) {
        script.push_back(someFault(random, program.answers(), program.batch()));
        if (script.back().what == Wrong::late) script.back().amount /= speed;
    }
    return script;
}

// The logger is plugged in for the length of one session.
Outcome session(RealPort& real, Station& station, bool again) {
    simulator::PtyLogger pty(station.end, false);
    if (!pty.start()) throw std::runtime_error(pty.errorText());
    real.plugIn(pty.device());
    const Outcome outcome = station.program.download(again);
    pty.stop();
    return outcome;
}

} // namespace

int main(int argc, char* argv[]) {
    const Options options = optionsOf(argc, argv);
    const QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    constexpr std::int64_t shortForm = 4;
    const std::int64_t count = options.count > 0 ? options.count : shortForm;
    Proof proof(options);
    RealPort real;
    const auto stations = allStations(real);
    TerminalTally tally;
    session(real, *stations[0], false); // whatever is opened once and for all
    const long before = openDescriptors();
    for (std::int64_t i = 0; i < count; ++i) {
        alarm(300); // a hang ends the program
        Random random(options.seed * 1'000'003U + static_cast<std::uint32_t>(i));
        Station& station =
            *stations[static_cast<std::size_t>(upTo(random, static_cast<int>(stations.size())))];
        const auto script = someScript(random, station.program);
        std::string name = "session " + std::to_string(i) + " " + station.name();
        for (const ScriptedFault& fault : script) name += " " + nameOf(fault);
        station.end.begin(script, static_cast<std::uint32_t>(i));
        real.yield.factor = speed;
        judge(session(real, station, upTo(random, 4) == 0), station, name, proof, tally);
        real.yield.factor = 1;
        station.logger.powerUp();
        station.end.begin({}, 0);
        const Outcome next = session(real, station, false);
        proof.check(next.broken.empty() && next.run == station.good,
            name + ": the next download is not right" + next.broken);
        proof.check(openDescriptors() == before, name + ": a descriptor is left open");
    }
    const auto text = [](long number, const char* what) {
        return std::to_string(number) + " " + what;
    };
    return proof.end("faults on a pseudo-terminal, the real port", count, "sessions",
        "0 hung; " + text(openDescriptors() - before, "descriptors left; ") +
            text(tally.told, "told as failed, ") + text(tally.asked, "asked, ") +
            text(tally.right, "right, ") + text(tally.unknown, "of an unknown type, ") +
            text(tally.silent, "wrong as no count shows (required silent)"));
}
