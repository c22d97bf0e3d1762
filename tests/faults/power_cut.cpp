// The power fails at any moment of every operation on files, on a disk that forgets what was not
// synced: content is there in part, and names that were made, changed or taken away may be so or
// not, in any order. What such a disk holds is read as the next start does.
#include "core/tidy_folder.h"
#include "platform/os/os_files.h"
#include "tests/faults/file_house.h"
#include "tests/faults/proof.h"
#include "tests/faults/system_calls.h"
#include "tests/support/memory_files.h"

#include <algorithm>
#include <random>

namespace kvo::faults {
namespace {

using platform::Bytes;

struct Step {
    CallKind kind = CallKind::create;
    std::string path; // below the whole
    std::string to;
    Bytes bytes;
};

class Recorder : public Watch {
public:
    explicit Recorder(std::string root) : m_root(std::move(root) + "/") {}
    int before(SystemCall&) override { return 0; }
    void after(const SystemCall& call) override {
        if (!call.modifies() || call.kind == CallKind::change) return;
        steps.push_back({call.kind, below(call.path), below(call.to),
            Bytes(call.bytes.begin(), call.bytes.end())});
    }
    std::vector<Step> steps;

private:
    std::string below(const std::string& path) const {
        return path.starts_with(m_root) ? path.substr(m_root.size()) : path;
    }
    std::string m_root;
};

std::string folderOf(const std::string& path) {
    const std::size_t end = path.find_last_of('/', path.size() - 2);
    return end == std::string::npos ? std::string() : path.substr(0, end);
}

// A disk with names and contents apart, at a moment of a recording.
class ForgetfulDisk {
public:
    explicit ForgetfulDisk(const Disk& start) {
        for (const auto& [path, content] : start) {
            m_durable[path] = static_cast<int>(m_contents.size());
            m_contents.push_back({content, content.size()});
        }
        m_now = m_durable;
    }

    void take(const Step& step) {
        switch (step.kind) {
        case CallKind::create:
            return name({step.path, {}, fresh()});
        case CallKind::makeFolder:
            return name({step.path + "/", {}, fresh()});
        case CallKind::remove:
            return name({step.path, {}, gone});
        case CallKind::rename:
            return name({step.to, step.path, m_now.at(step.path)});
        case CallKind::write: {
            Bytes& bytes = contentNow(step.path).bytes;
            bytes.insert(bytes.end(), step.bytes.begin(), step.bytes.end());
            return;
        }
        case CallKind::syncFile:
            contentNow(step.path).synced = contentNow(step.path).bytes.size();
            return;
        case CallKind::syncFolder:
            return syncFolder(step.path);
        default:
            return;
        }
    }

    // What the power cut leaves of it.
    template <typename Random> Disk afterCut(Random& random) const {
        Names names = m_durable;
        std::vector<Change> changes = m_pending;
        std::shuffle(changes.begin(), changes.end(), random);
        for (const Change& change : changes)
            if (random() % 2 == 0) apply(change, names);
        Disk disk;
        for (const auto& [path, content] : names) {
            if (content == gone || !hasFolders(names, path)) continue;
            disk[path] = m_contents[static_cast<std::size_t>(content)].afterCut(random);
        }
        return disk;
    }

private:
    static constexpr int gone = -1;
    struct Content {
        Bytes bytes;
        std::size_t synced = 0;
        template <typename Random> Bytes afterCut(Random& random) const {
            const std::size_t open = bytes.size() - synced;
            if (open == 0) return bytes;
            std::size_t length = synced;
            const auto how = random() % 4;
            if (how == 1) length = bytes.size();
            if (how >= 2) length = synced + random() % open;
            Bytes left(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
            if (how == 3) left.resize(bytes.size(), 0); // the length is there, the content is not
            return left;
        }
    };
    using Names = std::map<std::string, int>;
    struct Change {
        std::string path;
        std::string from;
        int content;
    };

    int fresh() {
        m_contents.push_back({});
        return static_cast<int>(m_contents.size()) - 1;
    }
    Content& contentNow(const std::string& path) {
        return m_contents[static_cast<std::size_t>(m_now.at(path))];
    }
    static void apply(const Change& change, Names& names) {
        if (!change.from.empty()) names.erase(change.from);
        if (change.content == gone)
            names.erase(change.path);
        else
            names[change.path] = change.content;
    }
    void name(const Change& change) {
        apply(change, m_now);
        m_pending.push_back(change);
    }
    void syncFolder(const std::string& folder) {
        const auto isIn = [&](const Change& change) { return folderOf(change.path) == folder; };
        for (const Change& change : m_pending)
            if (isIn(change)) apply(change, m_durable);
        std::erase_if(m_pending, isIn);
    }
    static bool hasFolders(const Names& names, const std::string& path) {
        for (std::string above = folderOf(path); !above.empty(); above = folderOf(above))
            if (!names.contains(above + "/")) return false;
        return true;
    }

    Names m_durable; // what no cut takes away
    Names m_now;
    std::vector<Change> m_pending; // since the sync of its folder
    std::vector<Content> m_contents;
};

class PowerCuts {
public:
    PowerCuts(Proof& proof, std::uint32_t seed) : m_proof(proof), m_random(seed) {}

    void cut(const Operation& operation, long states) {
        const Disk start = startOf(operation);
        m_sandbox.put(start);
        Recorder recorder(m_sandbox.root());
        Outcome whole;
        {
            const Watched watched(recorder, m_sandbox.root());
            whole = runOn(operation, m_files, m_sandbox);
        }
        whole.disk = m_sandbox.disk();
        const auto& steps = recorder.steps;
        // In the order of the prefixes, so that the disk goes forward.
        ForgetfulDisk disk(start);
        const long moments = static_cast<long>(steps.size()) + 1;
        for (long moment = 0; moment < moments; ++moment) {
            if (moment > 0) disk.take(steps[static_cast<std::size_t>(moment - 1)]);
            const long here = states * (moment + 1) / moments - states * moment / moments;
            for (long i = 0; i < here; ++i)
                look(operation, moment == moments - 1, start, disk.afterCut(m_random), whole,
                    moment);
        }
    }
    long states() const { return m_states; }

private:
    void look(const Operation& operation, bool ended, const Disk& start, const Disk& now,
        const Outcome& whole, long moment) {
        ++m_states;
        const std::string which =
            std::string(operation.name) + ", cut behind step " + std::to_string(moment) + ": ";
        if (const auto wrong = damage(start, now, whole); !wrong.empty())
            return m_proof.fault(which + wrong);
        if (ended)
            for (const auto& [path, content] : whole.disk)
                if (!content.empty() && (!now.contains(path) || now.at(path) != content))
                    return m_proof.fault(which + path + " was saved and is not there");
        testing::MemoryFiles files;
        for (const auto& [path, content] : now)
            if (path.ends_with('/'))
                (void)files.makeFolder("/" + path.substr(0, path.size() - 1));
            else
                files.put("/" + path, content);
        if (const auto wrong = brokenNextStart(files, "", start); !wrong.empty())
            m_proof.fault(which + wrong);
    }

    Proof& m_proof;
    std::mt19937 m_random;
    Sandbox m_sandbox;
    platform_os::OsFiles m_files;
    long m_states = 0;
};

} // namespace
} // namespace kvo::faults

int main(int argc, char* argv[]) {
    using namespace kvo::faults;
    const Options options = optionsOf(argc, argv);
    Proof proof(options);
    PowerCuts cuts(proof, options.seed);
    const auto all = static_cast<long>(operations().size());
    const long states = options.count > 0 ? static_cast<long>(options.count) : 3100;
    for (const Operation& operation : operations()) cuts.cut(operation, (states + all - 1) / all);
    return proof.end("power cut in " + std::to_string(all) +
                         " operations, unsynced content and names forgotten in any order",
        cuts.states(), "states", "read as at a start");
}
