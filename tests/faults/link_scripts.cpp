// Downloads over a line on which one to three things go wrong, on a clock of turns: whatever comes
// of it, the user is told of every run whose bytes were not as many as were asked for, nothing goes
// on for ever, the port is closed, and the next download of the same program is right.
#include "tests/faults/link_program.h"
#include "tests/faults/link_script.h"
#include "tests/faults/proof.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <chrono>

namespace {

using namespace kvo;
using namespace kvo::faults;

// What came of the cases, by name.
struct Tally {
    long told = 0;      // that it failed
    long asked = 0;     // whether to download again
    long again = 0;     // of these downloaded again
    long right = 0;     // the run is right
    long unknown = 0;   // another type stood in the header: required to be silent
    long flipped = 0;   // wrong, with as many bytes as asked for: cannot be seen
    long cancelled = 0; // the same, where bytes came and went
};

struct Bench {
    Bench(const simulator::WireLayout& wire, bool fast)
        : logger(wire.dataType, 7), end(logger), line(end, true), program(wire, fast, line, line) {
        end.begin({}, 0);
        good = program.download(false).run;
    }
    // Long enough for all that is under way; nobody listens.
    void settle(bool cut) {
        end.begin({}, 0);
        if (cut) line.replug();
        constexpr int longest = 4 * 32000;
        for (int gone = 0; gone < longest;) gone += line.turns(longest - gone);
        logger.powerUp();
    }

    simulator::ModelLogger logger;
    ScriptedEnd end;
    testing::VirtualLine line;
    DownloadingProgram program;
    std::optional<platform::Bytes> good;
};

bool changesCount(const ScriptedFault& fault) {
    return fault.what != Wrong::flipped && fault.what != Wrong::wrongType &&
           fault.what != Wrong::late;
}

void judge(const Outcome& outcome, const Bench& bench, const std::vector<ScriptedFault>& script,
    const std::string& name, Proof& proof, Tally& tally) {
    if (!proof.check(outcome.broken.empty(), name + ":" + outcome.broken)) return;
    if (outcome.typeUnknown) {
        ++tally.unknown;
    } else if (outcome.failureTold) {
        ++tally.told;
        proof.check(!outcome.run, name + ": told as failed, and saved");
    } else if (outcome.asked > 0) {
        ++tally.asked;
    } else if (outcome.run == bench.good) {
        ++tally.right;
    } else if (bench.end.given() != bench.end.asked()) {
        proof.fault(name + ": wrong and not told, " + std::to_string(bench.end.asked()) +
                    " asked, " + std::to_string(bench.end.given()) + " came");
    } else if (std::any_of(script.begin(), script.end(), changesCount)) {
        ++tally.cancelled;
    } else {
        ++tally.flipped;
    }
    if (outcome.run)
        proof.check(replayed(outcome) == outcome.run, name + ": its bytes give another run");
}

void tryCase(
    std::vector<std::unique_ptr<Bench>>& benches, std::uint32_t seed, Proof& proof, Tally& tally) {
    Random random(seed);
    Bench& bench =
        *benches[static_cast<std::size_t>(upTo(random, static_cast<int>(benches.size())))];
    std::vector<ScriptedFault> script;
    bool cut = false;
    std::string name = "case " + std::to_string(seed) + " type " +
                       std::to_string(bench.program.type) +
                       (bench.program.fast ? " fast" : " safe");
    for (int left = 1 + upTo(random, 3); left > 0; --left) {
        script.push_back(someFault(random, bench.program.answers(), bench.program.batch()));
        cut = cut || script.back().what == Wrong::cut;
        name += " " + nameOf(script.back());
    }
    bench.end.begin(script, seed);
    const bool again = upTo(random, 4) == 0;
    const Outcome outcome = bench.program.download(again);
    if (again && outcome.asked > 0) ++tally.again;
    judge(outcome, bench, script, name, proof, tally);
    bench.settle(cut);
    const Outcome next = bench.program.download(false);
    proof.check(next.broken.empty() && next.asked == 0 && next.run == bench.good,
        name + ": the next download is not right" + next.broken);
    bench.settle(false);
}

} // namespace

int main(int argc, char* argv[]) {
    const Options options = optionsOf(argc, argv);
    constexpr std::int64_t shortForm = 1500;
    const std::int64_t count = options.count > 0 ? options.count : shortForm;
    Proof proof(options);
    const auto begin = std::chrono::steady_clock::now();
    std::vector<std::unique_ptr<Bench>> benches;
    for (const auto& wire : simulator::wireLayouts)
        for (const bool fast : {true, false}) {
            benches.push_back(std::make_unique<Bench>(wire, fast));
            proof.check(benches.back()->good.has_value(), "no good run");
        }
    Tally tally;
    for (std::int64_t i = 0; i < count; ++i)
        tryCase(benches, options.seed * 1'000'003U + static_cast<std::uint32_t>(i), proof, tally);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    const auto text = [](long number, const char* what) {
        return std::to_string(number) + " " + what;
    };
    return proof.end("faults on the line, 7 types, both modes", count, "scripts",
        text(tally.told, "told as failed, ") + text(tally.asked, "asked (") +
            text(tally.again, "downloaded again), ") + text(tally.right, "right, ") +
            text(tally.unknown, "of an unknown type (required silent), ") +
            text(tally.flipped, "flipped (required silent), ") +
            text(tally.cancelled, "cancelled out in count (required silent); ") +
            text(static_cast<long>(static_cast<double>(count) / time.count()), "a second"));
}
