#pragma once
// A folder of the program with runs, notes and settings in it, all that the program does to files
// as a table of operations, and what must hold of the folder whatever becomes of one of them.
#include "core/config_record.h"
#include "core/open_run.h"
#include "library/copy_job.h"
#include "library/import.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kvo::faults {

// Files by their paths below the whole; a folder ends with "/" and is empty.
using Disk = std::map<std::string, platform::Bytes>;

// Says Yes and OK, gives up where it may, and keeps what it was asked and told.
class AnsweringDialogs : public platform::Dialogs {
public:
    std::vector<std::string> boxes;
    platform::Reply messageBox(
        const std::string& text, int style, const std::string& title) override;
    std::string inputBox(
        const std::string& prompt, const std::string& title, const std::string& preset) override;
    std::optional<platform::Colour> chooseColour(std::optional<platform::Colour> start) override {
        return start;
    }
    std::optional<std::string> chooseFolder(const std::string&, const std::string&) override {
        return {};
    }
    void beep() override {}
    void setHourglass(bool) override {}
};

// What an operation works with.
struct Work {
    platform::Files& files;
    std::string root; // of the whole: App/, Elsewhere/ with runs to import, Target/, Mail/
    std::string app() const { return root + "/App"; }
    std::string data(const std::string& name) const { return app() + "/Data/" + name; }

    AnsweringDialogs dialogs;
    std::string shown; // what was read, as the user sees it
};

struct Operation {
    const char* name;
    // False where a failure was told by the result itself.
    std::function<bool(Work&)> run;
    // Changes the usual start.
    std::function<void(Disk&)> prepare = {};
    // Why its failures are not told; empty for all that are.
    const char* silent = "";
};

const std::vector<Operation>& operations();

// The usual start, and that of an operation.
const Disk& usualDisk();
Disk startOf(const Operation& operation);

core::AppConfig configOf(const std::string& driver);
// A run of type 25 whose rows begin with `first`.
std::unique_ptr<core::OpenRun> runOf(int first);

// What an operation left, and what the user learnt.
struct Outcome {
    Disk disk;
    bool done = true;
    std::vector<std::string> boxes;
    std::string shown;
    bool told(const Outcome& whole) const { return !done || boxes != whole.boxes; }
};

// What is wrong with the files that an operation left half done: each is as it was or as it is when
// all went well (`whole`), lists hold rows of both, what the operation keeps in Backup/ is kept
// before it is gone. Empty: nothing.
std::string damage(const Disk& start, const Disk& now, const Outcome& whole);
// The same, and that a failure was told.
std::string broken(
    const Operation& operation, const Disk& start, const Outcome& now, const Outcome& whole);
// What is wrong after the next start on such a folder: every row can be opened that could before,
// every run is listed, nothing is left over.
std::string brokenNextStart(platform::Files& files, const std::string& root, const Disk& start);

// --- On a real disk, in memory where the system has one

// A folder of its own, gone with the object.
class Sandbox {
public:
    Sandbox();
    explicit Sandbox(std::string folder) : m_root(std::move(folder)), m_own(false) {}
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;
    const std::string& root() const { return m_root; }
    // Makes it hold that and nothing else.
    void put(const Disk& disk) const;
    Disk disk() const;

private:
    std::string m_root;
    bool m_own = true;
};

// The outcome of an operation on the disk that is there now.
Outcome runOn(const Operation& operation, platform::Files& files, const Sandbox& sandbox);

// A form of an import or a copy that shows nothing.
class NoView : public library::ImportView, public library::CopyView {
public:
    void showFile(const std::string&, int, int) override {}
    void setProgress(int, int) override {}
    void clearProgress() override {}
    void showRuns() override {}
    void showDestination(const std::string&) override {}
    void moveTo(std::size_t) override {}
    void lockControls(bool) override {}
    void showProgress(const std::string&) override {}
    void hideProgress() override {}
    void deselect(std::size_t) override {}
};

} // namespace kvo::faults
