// The disk fills up during every operation on files: with any number of bytes left, counted at the
// writes, and on a small disk of the system's own where it gives one.
#include "platform/os/os_files.h"
#include "tests/faults/file_house.h"
#include "tests/faults/proof.h"
#include "tests/faults/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <fstream>

#include <fcntl.h>
#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>
#endif
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kvo::faults {
namespace {

constexpr long kilobyte = 1024;
constexpr long mostFree = 272 * kilobyte;
constexpr long enough = 2048 * kilobyte;

// Takes so many bytes, the last write of them cut short.
class RoomLeft : public Watch {
public:
    explicit RoomLeft(long room) : m_room(static_cast<std::size_t>(room)) {}
    int before(SystemCall& call) override {
        if (call.kind != CallKind::write) return 0;
        if (m_room == 0) return ENOSPC;
        call.bytes = call.bytes.first(std::min(call.bytes.size(), m_room));
        m_room -= call.bytes.size();
        return 0;
    }

private:
    std::size_t m_room;
};

class FullDisk {
public:
    FullDisk(Proof& proof, const Sandbox& sandbox) : m_proof(proof), m_sandbox(sandbox) {}

    // With 0, `step`, ... bytes left. `fill` leaves them and gives what sees to it meanwhile.
    template <typename Fill> void sweep(long step, const Fill& fill) {
        for (const Operation& operation : operations()) {
            const Disk start = startOf(operation);
            const auto outcome = [&](long room) {
                Outcome result;
                fill(
                    room, [&] { m_sandbox.put(start); },
                    [&] { result = runOn(operation, m_files, m_sandbox); });
                result.disk = m_sandbox.disk();
                return result;
            };
            const Outcome whole = outcome(enough);
            for (long room = 0; room <= mostFree; room += step) {
                const Outcome now = outcome(room);
                ++m_cases;
                if (now.told(whole)) ++m_told;
                const std::string wrong = broken(operation, start, now, whole);
                m_proof.check(wrong.empty(), std::string(operation.name) + ", " +
                                                 std::to_string(room) + " bytes left: " + wrong);
            }
        }
    }
    long cases() const { return m_cases; }
    long told() const { return m_told; }

private:
    Proof& m_proof;
    const Sandbox& m_sandbox;
    platform_os::OsFiles m_files;
    long m_cases = 0;
    long m_told = 0;
};

int countedBytes(const Options& options) {
    Proof proof(options);
    const Sandbox sandbox;
    FullDisk disk(proof, sandbox);
    const long step =
        options.count > 0 ? mostFree / static_cast<long>(options.count) : 8 * kilobyte;
    disk.sweep(step, [&](long room, const auto& put, const auto& run) {
        put();
        RoomLeft left(room);
        const Watched watched(left, sandbox.root());
        run();
    });
    return proof.end("full disk, 0 to 272 kB left, counted", disk.cases(), "fillings",
        std::to_string(disk.told()) + " told");
}

#ifdef __linux__

void say(const char* path, const std::string& text) {
    std::ofstream(path) << text;
}

// A disk of 8 MB over `folder`, seen by this process alone. False where the system gives none.
bool mountSmallDisk(const std::string& folder) {
    const std::string user = std::to_string(::getuid());
    const std::string group = std::to_string(::getgid());
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) {
        say("/proc/self/setgroups", "deny");
        say("/proc/self/uid_map", "0 " + user + " 1");
        say("/proc/self/gid_map", "0 " + group + " 1");
    } else if (::unshare(CLONE_NEWNS) != 0) {
        return false;
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=8m") == 0;
}

// Leaves so many bytes on the disk of that folder, by a file that takes the others.
void leave(const std::string& folder, long room) {
    const std::string path = folder + "/ballast";
    struct statvfs facts {};
    (void)::statvfs(folder.c_str(), &facts);
    const auto free = static_cast<long>(facts.f_bavail * facts.f_bsize);
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (::posix_fallocate(file, 0, std::max(1L, free - room)) != 0)
        std::fputs("no ballast\n", stderr);
    (void)::close(file);
}

constexpr int noDisk = 77;

int smallDisk(const Options& options, const std::string& folder) {
    if (!mountSmallDisk(folder)) return noDisk;
    Proof proof(options);
    const Sandbox sandbox(folder + "/box");
    (void)::mkdir((folder + "/box").c_str(), 0700);
    FullDisk disk(proof, sandbox);
    const long page = 4 * kilobyte;
    disk.sweep(
        options.count > 0 ? page : 4 * page, [&](long room, const auto& put, const auto& run) {
            (void)::unlink((folder + "/ballast").c_str());
            put();
            leave(folder, room);
            run();
        });
    return proof.end("full disk, 0 to 272 kB left, a disk in memory", disk.cases(), "fillings",
        std::to_string(disk.told()) + " told");
}

int onSmallDisk(const Options& options) {
    const Sandbox place; // what is mounted goes with the process
    const pid_t child = ::fork();
    if (child == 0) {
        const int result = smallDisk(options, place.root());
        std::fflush(stdout);
        ::_exit(result);
    }
    int status = 0;
    (void)::waitpid(child, &status, 0);
    const int result = WIFEXITED(status) ? WEXITSTATUS(status) : 1;
    if (result == noDisk) std::printf("This system gives no small disk to try.\n");
    return result == noDisk ? 0 : result;
}

#endif

} // namespace
} // namespace kvo::faults

int main(int argc, char* argv[]) {
    using namespace kvo::faults;
    const Options options = optionsOf(argc, argv);
    const int counted = countedBytes(options);
    std::fflush(stdout);
#ifdef __linux__
    const int small = onSmallDisk(options);
    return counted != 0 ? counted : small;
#else
    return counted;
#endif
}
