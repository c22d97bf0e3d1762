// 300 names that lead elsewhere, or try to, in every place where a name or a text comes in: rows of
// the list, files in the folder and on a disk to import from, header lines, titles, notes. No call
// may change anything but what lies in the program's folder and in the one that the user chose.
#include "core/backup.h"
#include "core/config.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/tidy_folder.h"
#include "library/chooser_list.h"
#include "library/copy_job.h"
#include "library/import.h"
#include "library/mail_files.h"
#include "library/run_list.h"
#include "library/unlisted_runs.h"
#include "platform/os/os_files.h"
#include "tests/faults/file_house.h"
#include "tests/faults/proof.h"
#include "tests/faults/system_calls.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <set>

namespace kvo::faults {
namespace {

namespace fs = std::filesystem;

// --- The names

std::vector<std::string> hostileNames() {
    const std::string nul("\0", 1);
    const std::vector<std::string> inner{"..", "../..", "../../..", ".", "/", "//", "\\", "..\\..",
        "../Outside", "../../Outside", "..\\Outside", "/etc", "/tmp", "C:", "C:\\",
        "\\\\host\\share", "~", "$HOME", "`id`", "$(id)", "%TEMP%", "CON", "NUL", "COM1", "LPT9",
        "aux", "*", "?", "|", ";", "&", "<", ">", "\"", "'", " ", "  ", "\t", "\n", "\r\n", "\x01",
        "\x1B[2J", "\x7F", "\x80", "\xC0\xAF", "\xE2\x80\xAE", "\xFF", "\xC3\xA4", "%2e%2e%2f",
        "%s%n", nul, "-rf", "--", ".", "...", "..d", "KvoData.Ini", "Kvo.Cfg", ".Kvo.Cfg.1-1.new"};
    std::set<std::string> names{"", std::string(80, 'a'), std::string(80, '/'),
        std::string(80, '.'), std::string(300, 'x') + ".52d", std::string(5000, 'y')};
    for (const std::string& part : inner) {
        names.insert(part);
        names.insert(part + "/canary");
        names.insert("../../Outside/" + part);
        names.insert("26111514.52d" + part);
        names.insert(part + "26111514.52d");
        names.insert(part + "/x.52d"); // what the last twelve characters may be
    }
    std::vector<std::string> result(names.begin(), names.end());
    result.resize(std::min<std::size_t>(result.size(), 300));
    return result;
}

// --- What is watched

// Whatever changes something elsewhere is remembered and refused.
class Fence : public Watch {
public:
    explicit Fence(const std::string& root)
        : m_allowed{root + "/App/", root + "/Target/", root + "/Mail/"} {}
    int before(SystemCall& call) override {
        const bool syncs = call.kind == CallKind::syncFile || call.kind == CallKind::syncFolder;
        if (!call.modifies() || syncs) return 0;
        ++changes;
        for (const std::string& path : {call.path, call.to}) {
            if (path.empty() || isInside(path, call)) continue;
            trespass = call.name + (" " + path);
            return EACCES;
        }
        return 0;
    }
    long changes = 0;
    std::string trespass;

private:
    bool isInside(const std::string& path, const SystemCall& call) const {
        std::error_code error;
        // Rights are changed through a link; every other call works on the name itself.
        const bool follows = call.kind == CallKind::change;
        const fs::path place = fs::path(path);
        const fs::path real =
            follows ? fs::weakly_canonical(place, error)
                    : fs::weakly_canonical(place.parent_path(), error) / place.filename();
        for (const std::string& folder : m_allowed)
            if (real.string().starts_with(folder)) return true;
        return false;
    }
    std::vector<std::string> m_allowed;
};

class NoMail : public platform::Mail {
public:
    explicit NoMail(std::string folder) : m_folder(std::move(folder)) {}
    platform::MailResult compose(const platform::MailDraft&, const RefusedLater&) override {
        return {};
    }
    std::string folderForCopies() override { return m_folder; }

private:
    std::string m_folder;
};

// --- The places where a name comes in

struct Place {
    const char* name;
    void (*run)(Work&, const std::string& name);
};

core::RunIndexEntry rowOf(const std::string& name) {
    return {name.substr(0, 80), "Sun 15 Nov 2026 Run: 1"};
}

// The list holds the name alone, as a file of the user's may.
void listOnly(Work& work, const std::string& name) {
    platform::Bytes index(240, ' ');
    std::copy_n(name.begin(), std::min<std::size_t>(80, name.size()), index.begin());
    const std::string description = "Sun 15 Nov 2026 Run: 1";
    std::copy(description.begin(), description.end(), index.begin() + 80);
    (void)work.files.write(core::indexPath(work.app(), work.files), index);
}

core::ChosenRun chosen(Work& work, library::RunList& runs, const std::string& name) {
    listOnly(work, name);
    (void)runs.read(work.app(), work.files);
    runs.choose(0);
    return runs.chosenRun(work.app(), work.files);
}

void openListed(Work& work, const std::string& name) {
    library::RunList runs;
    const auto run = chosen(work, runs, name);
    const auto open = std::make_unique<core::OpenRun>();
    if (core::LoadRun(run.path, *open, work.files))
        (void)core::SaveRun(*open, work.app(), work.files);
    (void)core::LoadOverlayRun(run.path, *open, work.files);
}

void noteListed(Work& work, const std::string& name) {
    library::RunList runs;
    const auto run = chosen(work, runs, name);
    core::RunInfo info;
    info.Info_Text = name;
    info.Text_ET = "7.9";
    (void)core::LoadRunInfo(core::infoFilePath(run.path), {}, work.files);
    (void)core::SaveRunInfo(work.app(), core::infoFilePath(run.path), run.path, info, work.files);
}

void describeListed(Work& work, const std::string& name) {
    library::RunList runs;
    (void)chosen(work, runs, name);
    core::OpenRun none;
    (void)runs.renameChosen(work.app(), "3 " + name, none, work.files);
}

void deleteListed(Work& work, const std::string& name) {
    library::RunList runs;
    (void)chosen(work, runs, name);
    (void)runs.deleteChosen(work.app(), work.files);
}

void copyListed(Work& work, const std::string& name) {
    NoView view;
    library::CopyJob job(work.app(), work.files, work.dialogs, view);
    (void)job.copy({rowOf(name)}, {0}, work.root + "/Target");
}

void mailListed(Work& work, const std::string& name) {
    NoMail mail(work.root + "/Mail");
    (void)library::SendFile({work.app(), {rowOf(name), rowOf("26111414.00d")}, name, {"1.0.0", ""}},
        work.files, mail, {});
}

void addListed(Work& work, const std::string& name) {
    (void)core::AddRunToIndex(work.app(), {name, name}, core::IndexOrder::sorted, work.files);
    (void)core::removeFromIndex(work.app(), rowOf(name), work.files);
}

void importNamed(Work& work, const std::string& name) {
    const core::AppConfig config = configOf(name);
    const std::string app = work.app();
    for (const auto mode : {library::ImportMode::windows, library::ImportMode::dos}) {
        library::RunList runs;
        NoView view;
        library::Import import({config, app, runs}, view, work.dialogs, work.files);
        (void)import.Butten_Import(
            mode, work.root + "/Elsewhere", {name, "25010109.12d" + name, "run.014"});
    }
}

void titled(Work& work, const std::string& name) {
    const auto run = runOf(3);
    const std::string text = core::runText(name, platform::DateTime{2026, 11, 15, 14, 52, 0});
    run->path = work.data("26111514.52d");
    (void)core::SaveRun(*run, {{3, 5, 2, 1225}, text, configOf(name)}, work.app(), work.files);
    (void)core::AddRunToIndex(
        work.app(), core::indexEntryOf(run->path, text), core::IndexOrder::asItIs, work.files);
    (void)core::SaveConfig(work.app(), configOf(name), work.files);
}

// A run whose header line holds the name where the text of its run stands, with times.
void inHeaderLine(Work& work, const std::string& name) {
    const auto run = runOf(3);
    run->path = work.data("26111516.00d");
    run->headerLine = ("25 VRN3 Date:" + name + "#").substr(0, 82);
    (void)core::SaveRun(*run, work.app(), work.files);
    core::RunInfo info;
    info.Text_ET = "7.9";
    (void)core::SaveRunInfo(work.app(), core::infoFilePath(run->path), run->path, info, work.files);
    library::offerUnlistedRuns(work.app(), work.files, work.dialogs);
}

// Links and files of that name in the folders, where the system lets there be one.
void inFolders(Work& work, const std::string& name) {
    std::error_code error;
    const bool plain = !name.empty() && name != "." && name != ".." && name.size() < 200 &&
                       name.find('/') == std::string::npos && name.find('\0') == std::string::npos;
    if (plain) {
        for (const char* folder : {"/Data/", "/Backup/", "/"})
            (void)work.files.write(work.app() + folder + name, {1, 2, 3});
    }
    fs::create_symlink("../../Outside/canary", work.data("26111517.00d"), error);
    fs::create_symlink("../../Outside/none", work.data("26111517.00i"), error);
    fs::create_symlink("../../Outside", work.data("26111518.00d"), error);
    library::offerUnlistedRuns(work.app(), work.files, work.dialogs);
    core::tidyFolder(work.app(), {2099, 1, 1, 0, 0, 0}, work.files);
    for (const char* link : {"26111517.00d", "26111518.00d"}) {
        openListed(work, link);
        noteListed(work, link);
        describeListed(work, link);
        const auto run = runOf(3);
        run->path = work.data(link);
        (void)core::SaveRun(*run, work.app(), work.files);
        (void)core::SaveImportedRun(*run, work.app(), work.files);
        copyListed(work, link);
        deleteListed(work, link);
    }
}

constexpr std::array places{Place{"a run opened", openListed}, Place{"notes", noteListed},
    Place{"a description", describeListed}, Place{"a delete", deleteListed},
    Place{"a copy", copyListed}, Place{"a mail", mailListed}, Place{"a new row", addListed},
    Place{"an import", importNamed}, Place{"a title", titled}, Place{"a header line", inHeaderLine},
    Place{"files and links", inFolders}};

class HostileNames {
public:
    explicit HostileNames(Proof& proof) : m_proof(proof), m_start(usualDisk()) {
        m_start["Outside/"];
        m_start["Outside/canary"] = {7, 7, 7};
        m_start["canary"] = {8};
    }

    void tryAll(const std::string& name) {
        for (const Place& place : places) {
            m_sandbox.put(m_start);
            Fence fence(m_sandbox.root());
            std::string shown;
            for (const char c : name.substr(0, 60))
                shown +=
                    c > ' ' && c < '\x7F' ? std::string(1, c) : "<" + std::to_string(c & 255) + ">";
            const std::string which = std::string(place.name) + " of " + shown + ": ";
            Work work{m_files, m_sandbox.root(), {}, {}};
            try {
                const Watched watched(fence, "/");
                place.run(work, name);
            } catch (const std::exception& thrown) {
                m_proof.fault(which + "thrown: " + thrown.what());
            }
            ++m_cases;
            m_changes += fence.changes;
            m_proof.check(fence.trespass.empty(), which + fence.trespass);
            const Disk now = m_sandbox.disk();
            m_proof.check(
                outsideOf(now) == outsideOf(m_start), which + "something outside changed");
        }
    }
    long cases() const { return m_cases; }
    long changes() const { return m_changes; }

private:
    static Disk outsideOf(Disk disk) {
        std::erase_if(disk, [](const auto& file) {
            return file.first.starts_with("App/") || file.first.starts_with("Target/") ||
                   file.first.starts_with("Mail/");
        });
        return disk;
    }

    Proof& m_proof;
    Disk m_start;
    Sandbox m_sandbox;
    platform_os::OsFiles m_files;
    long m_cases = 0;
    long m_changes = 0;
};

} // namespace
} // namespace kvo::faults

int main(int argc, char* argv[]) {
    using namespace kvo::faults;
    const Options options = optionsOf(argc, argv);
    Proof proof(options);
    HostileNames all(proof);
    const auto names = hostileNames();
    // The short form takes every fifth name, another one for each seed.
    const std::size_t step = options.count > 0 ? 1 : 5;
    std::size_t tried = 0;
    for (std::size_t i = options.seed % step; i < names.size(); i += step, ++tried)
        all.tryAll(names[i]);
    return proof.end(
        std::to_string(tried) + " hostile names in " + std::to_string(places.size()) + " places",
        all.cases(), "cases",
        std::to_string(all.changes()) + " changing calls, all of them watched");
}
