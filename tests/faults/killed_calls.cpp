// The program is killed at every system call of every operation on files, in front of it and, at a
// write, with half of it done; then it starts again. The short form takes every second call; any
// count takes all.
#include "platform/os/os_files.h"
#include "tests/faults/file_house.h"
#include "tests/faults/proof.h"
#include "tests/faults/system_calls.h"

#include <sys/wait.h>
#include <unistd.h>

namespace kvo::faults {
namespace {

constexpr int killed = 9;

class LastCall : public Watch {
public:
    explicit LastCall(long which) : m_which(which) {}
    int before(SystemCall& call) override {
        if (m_cut) ::_exit(killed);
        if (++m_seen < m_which) return 0;
        if (call.bytes.size() < 2) ::_exit(killed);
        call.bytes = call.bytes.first(call.bytes.size() / 2);
        m_cut = true; // what follows a half of a write is the end
        return 0;
    }

private:
    long m_which;
    long m_seen = 0;
    bool m_cut = false;
};

class Kills {
public:
    Kills(Proof& proof, bool all) : m_proof(proof), m_stride(all ? 1 : 2) {}

    void killAll(const Operation& operation) {
        const Disk start = startOf(operation);
        m_sandbox.put(start);
        Outcome whole = runOn(operation, m_files, m_sandbox);
        whole.disk = m_sandbox.disk();
        for (long n = 1;; n += m_stride) {
            m_sandbox.put(start);
            if (!killAt(operation, n)) return;
            ++m_kills;
            const std::string which =
                std::string(operation.name) + ", killed at call " + std::to_string(n) + ": ";
            const std::string wrong = damage(start, m_sandbox.disk(), whole);
            m_proof.check(wrong.empty(), which + wrong);
            const std::string later = brokenNextStart(m_files, m_sandbox.root(), start);
            m_proof.check(later.empty(), which + later);
        }
    }
    long kills() const { return m_kills; }

private:
    // False where the operation ended before that call.
    bool killAt(const Operation& operation, long n) {
        const pid_t child = ::fork();
        if (child == 0) {
            LastCall last(n);
            {
                const Watched watched(last, m_sandbox.root());
                (void)runOn(operation, m_files, m_sandbox);
            }
            ::_exit(0);
        }
        int status = 0;
        (void)::waitpid(child, &status, 0);
        const bool wasKilled = WIFEXITED(status) && WEXITSTATUS(status) == killed;
        m_proof.check(wasKilled || status == 0,
            std::string(operation.name) + " ended by itself, call " + std::to_string(n));
        return wasKilled;
    }

    Proof& m_proof;
    Sandbox m_sandbox;
    platform_os::OsFiles m_files;
    long m_stride;
    long m_kills = 0;
};

} // namespace
} // namespace kvo::faults

int main(int argc, char* argv[]) {
    using namespace kvo::faults;
    const Options options = optionsOf(argc, argv);
    Proof proof(options);
    Kills kills(proof, options.count > 0);
    for (const Operation& operation : operations()) kills.killAll(operation);
    return proof.end("killed at every n-th system call of " + std::to_string(operations().size()) +
                         " operations, then started again",
        kills.kills(), "kills", "each start lists every run");
}
