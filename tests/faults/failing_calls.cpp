// Every system call of every operation on files fails, once and from then on, in each way that a
// disk, a share or a process that has too many files open lets it fail.
#include "platform/os/os_files.h"
#include "tests/faults/file_house.h"
#include "tests/faults/proof.h"
#include "tests/faults/system_calls.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <exception>

namespace kvo::faults {
namespace {

constexpr std::array kinds{ENOSPC, EIO, EACCES, EROFS, EMFILE, ESTALE};

class FailingCall : public Watch {
public:
    FailingCall(long which, int kind, bool fromThenOn)
        : m_which(which), m_kind(kind), m_fromThenOn(fromThenOn) {}
    int before(SystemCall& call) override {
        const bool fails = ++m_seen == m_which || (m_fromThenOn && m_seen > m_which);
        if (m_seen == m_which) name = call.name + (" " + call.path);
        return fails ? m_kind : 0;
    }
    bool reached() const { return m_seen >= m_which; }
    std::string name; // of the call that failed first

private:
    long m_which;
    int m_kind;
    bool m_fromThenOn;
    long m_seen = 0;
};

class FailingCalls {
public:
    FailingCalls(Proof& proof, bool all) : m_proof(proof), m_all(all) {}

    void tryAll(const Operation& operation) {
        m_start = startOf(operation);
        m_sandbox.put(m_start);
        m_whole = runOn(operation, m_files, m_sandbox);
        m_whole.disk = m_sandbox.disk();
        m_proof.check(m_whole.done, std::string(operation.name) + " fails where nothing does");
        for (long n = 1;; ++n) {
            const bool reached = m_all ? tryAllKinds(operation, n) : tryInTurn(operation, n);
            if (!reached) return;
        }
    }
    long points() const { return m_points; }
    long told() const { return m_told; }

private:
    bool tryAllKinds(const Operation& operation, long n) {
        bool reached = false;
        for (const int kind : kinds) {
            reached = tryOne(operation, n, kind, false);
            tryOne(operation, n, kind, true);
        }
        return reached;
    }
    // The short form goes through the kinds in turn, once and from then on.
    bool tryInTurn(const Operation& operation, long n) {
        const auto turn = static_cast<std::size_t>(n);
        return tryOne(operation, n, kinds[turn / 2 % kinds.size()], turn % 2 == 0);
    }
    bool tryOne(const Operation& operation, long n, int kind, bool fromThenOn) {
        m_sandbox.put(m_start);
        FailingCall failing(n, kind, fromThenOn);
        const std::string which = std::string(operation.name) + ", call " + std::to_string(n) +
                                  (fromThenOn ? " and on, " : ", ") + std::strerror(kind);
        Outcome now;
        try {
            const Watched watched(failing, m_sandbox.root());
            now = runOn(operation, m_files, m_sandbox);
        } catch (const std::exception& thrown) {
            m_proof.fault(which + ": " + failing.name + ": thrown: " + thrown.what());
            return true;
        }
        if (!failing.reached()) return false;
        ++m_points;
        if (now.told(m_whole)) ++m_told;
        now.disk = m_sandbox.disk();
        if (const auto wrong = broken(operation, m_start, now, m_whole); !wrong.empty())
            m_proof.fault(which + ": " + failing.name + ": " + wrong);
        return true;
    }

    Proof& m_proof;
    bool m_all;
    Sandbox m_sandbox;
    platform_os::OsFiles m_files;
    Disk m_start;
    Outcome m_whole;
    long m_points = 0;
    long m_told = 0;
};

} // namespace
} // namespace kvo::faults

int main(int argc, char* argv[]) {
    using namespace kvo::faults;
    const Options options = optionsOf(argc, argv);
    Proof proof(options);
    FailingCalls calls(proof, options.count > 0);
    for (const Operation& operation : operations()) calls.tryAll(operation);
    return proof.end("every n-th system call of " + std::to_string(operations().size()) +
                         " operations fails, once and from then on",
        calls.points(), "failures", std::to_string(calls.told()) + " told");
}
