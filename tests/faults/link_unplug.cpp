// The cable is pulled out at every byte of the header and every 37th of the data: the port closes,
// the user is told, and nothing is left that uses the processor.
#include "tests/faults/link_port.h"
#include "tests/faults/proof.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <clocale>
#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {

using namespace kvo;
using namespace kvo::faults;
using Moment = std::chrono::steady_clock::time_point;

constexpr double mostCloseMs = 50;
constexpr double mostCore = 0.01;
constexpr int wholeRun = 1213; // of the type whose runs are not cut short

// Gives so many answers, then the cable is out.
class PulledEnd : public simulator::LineEnd {
public:
    PulledEnd(simulator::LineEnd& inner, long answers) : m_inner(inner), m_left(answers) {}
    void receive(std::uint8_t byte) override { m_inner.receive(byte); }
    std::optional<simulator::OutgoingByte> next() override {
        if (m_left == 0) return {};
        const auto out = m_inner.next();
        if (out) --m_left;
        return out;
    }
    bool hungUp() const override {
        if (m_left > 0) return false;
        if (!m_told) m_when = std::chrono::steady_clock::now();
        m_told = true;
        return true;
    }
    bool wasPulled() const { return m_told; }
    Moment pulled() const { return m_when; }

private:
    simulator::LineEnd& m_inner;
    long m_left;
    mutable bool m_told = false;
    mutable Moment m_when;
};

// What one pull led to.
struct Pull {
    double closeMs = 0;
    double core = 0; // of one, afterwards
    bool isGood() const { return closeMs <= mostCloseMs && core <= mostCore; }
};

// How much of a core the program takes for so long, with nothing to do.
double idleCore(int milliseconds) {
    const double used = processorSeconds();
    QElapsedTimer clock;
    clock.start();
    bool over = false;
    QTimer::singleShot(milliseconds, [&over] { over = true; });
    while (!over) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return (processorSeconds() - used) / (static_cast<double>(clock.nsecsElapsed()) * 1e-9);
}

std::string nameOf(const Station& station, long answers) {
    return station.name() + " pulled behind byte " + std::to_string(answers);
}

// Nothing where the machine was so busy that the far end did not come to its pull: the session gave
// up on a logger that was silent for too long, and this was no try.
std::optional<Pull> pullAt(
    RealPort& real, Station& station, long answers, int watchMs, Proof& proof) {
    const std::string name = nameOf(station, answers);
    station.logger.powerUp();
    PulledEnd end(station.logger, answers);
    simulator::PtyLogger pty(end, false);
    if (!pty.start()) throw std::runtime_error(pty.errorText());
    real.plugIn(pty.device());
    std::optional<Moment> closed;
    const auto watch = QObject::connect(&real.port, &platform_qt::QtSerialPort::activity, [&] {
        if (!closed && !real.port.portOpen()) closed = std::chrono::steady_clock::now();
    });
    const Outcome outcome = station.program.download(false);
    QObject::disconnect(watch);
    // Closed by the program, which gave up the wait for a reply, where not by the port itself.
    if (!closed) closed = std::chrono::steady_clock::now();
    proof.check(outcome.broken.empty() && !outcome.typeUnknown, name + ":" + outcome.broken);
    const double core = idleCore(watchMs);
    pty.stop();
    if (!end.wasPulled() || end.pulled() > *closed) return {};
    proof.check(outcome.failureTold || outcome.asked > 0, name + ": not told");
    const std::chrono::duration<double, std::milli> took = *closed - end.pulled();
    return Pull{std::max(0.0, took.count()), core};
}

std::vector<long> places(const Station& station, bool all) {
    constexpr long greetingAndHeader = 34;
    constexpr long stride = 37;
    std::vector<long> answers;
    for (long n = 1; n <= greetingAndHeader; ++n)
        if (all || n == 1 || n == 20) answers.push_back(n);
    for (long n = greetingAndHeader + 1; n < station.program.answers(); n += stride)
        if (all || n < greetingAndHeader + 2) answers.push_back(n);
    return answers;
}

struct Cut {
    Station* station = nullptr;
    long answers = 0;
    Pull pull = {};
};

// Where all stations are cut, in the order of the pulls; at most `most` of them.
std::vector<Cut> cuts(
    const std::vector<std::unique_ptr<Station>>& stations, bool all, std::int64_t most) {
    std::vector<Cut> result;
    for (const auto& station : stations) {
        if (station->program.type == 25)
            station->program.samples = all ? wholeRun : samplesOfRun;
        else if (!all)
            continue;
        for (const long answers : places(*station, all)) {
            if (all && static_cast<std::int64_t>(result.size()) >= most) break;
            result.push_back({station.get(), answers});
        }
    }
    return result;
}

void pull(RealPort& real, Cut& cut, int watchMs, Proof& proof) {
    constexpr int mostTries = 20;
    alarm(300); // a hang ends the program
    std::optional<Pull> done;
    for (int tries = 0; tries < mostTries && !done; ++tries)
        done = pullAt(real, *cut.station, cut.answers, watchMs, proof);
    proof.check(done.has_value(), cut.station->name() + ": the logger never came to its pull");
    cut.pull = done.value_or(Pull{});
}

std::string lateWords(const Cut& cut) {
    char late[80];
    std::snprintf(late, sizeof late, ": closed after %.1f ms, then %.2f %% of a core",
        cut.pull.closeMs, cut.pull.core * 100);
    return nameOf(*cut.station, cut.answers) + late;
}

// Pulls what was late up to three times more, when all others are done, and tells of it: what the
// machine did meanwhile does not come back at the same byte, a delay of the program's own does.
// Gives the number of such pulls.
long pullLateAgain(RealPort& real, std::vector<Cut>& all, int watchMs, Proof& proof) {
    constexpr int rounds = 3;
    long again = 0;
    for (int round = 0; round < rounds; ++round) {
        for (Cut& cut : all) {
            if (cut.pull.isGood()) continue;
            std::printf("%s\n", lateWords(cut).c_str());
            pull(real, cut, watchMs, proof);
            ++again;
        }
    }
    for (const Cut& cut : all) proof.check(cut.pull.isGood(), lateWords(cut));
    return again;
}

std::string middleAndMost(std::vector<double> values, double factor) {
    if (values.empty()) return "none";
    std::sort(values.begin(), values.end());
    char text[64];
    std::snprintf(text, sizeof text, "%.2f median, %.2f at most",
        values[values.size() / 2] * factor, values.back() * factor);
    return text;
}

} // namespace

int main(int argc, char* argv[]) {
    const Options options = optionsOf(argc, argv);
    const QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    const bool all = options.count > 0;
    Proof proof(options);
    RealPort real;
    const auto stations = allStations(real);
    const int watchMs = all ? 100 : 30;
    std::vector<Cut> done = cuts(stations, all, options.count);
    for (Cut& cut : done) pull(real, cut, watchMs, proof);
    // The short form runs beside other tests and judges no times.
    const long again = all ? pullLateAgain(real, done, watchMs, proof) : 0;
    std::vector<double> closeMs;
    std::vector<double> core;
    for (const Cut& cut : done) {
        closeMs.push_back(cut.pull.closeMs);
        core.push_back(cut.pull.core);
    }
    return proof.end("unplugged at every byte of the header and every 37th of the data",
        static_cast<std::int64_t>(done.size()), "cuts",
        "closed in ms: " + middleAndMost(closeMs, 1) +
            "; after it % of a core: " + middleAndMost(core, 100) + "; " + std::to_string(again) +
            " pulled once more, as the machine had other work");
}
