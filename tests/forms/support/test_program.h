#pragma once
// The services of the program as doubles, with a fresh shared state and an unread list of runs, for
// as long as the object lives. All doors between the forms are shut: a test opens those it scripts,
// or openDoors() opens them as the program does. That to a run's picture alone is open, and gives
// none.
#include "core/shared_state.h"
#include "platform/browser.h"
#include "platform/folder_lock.h"
#include "platform/look_only_files.h"
#include "platform/mail.h"
#include "platform/serial_port.h"
#include "platform/services.h"
#include "platform/yield.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/scripted_printer.h"

#include <map>
#include <string>
#include <vector>

namespace kvo::testing {

class RecordingBrowser : public platform::Browser {
public:
    bool open(const std::string& address) override {
        opened.push_back(address);
        return succeeds;
    }
    std::vector<std::string> opened;
    bool succeeds = true;
};

// A mail program that takes every draft, or answers as a test wants.
class RecordingMail : public platform::Mail {
public:
    platform::MailResult compose(
        const platform::MailDraft& draft, const RefusedLater& later) override {
        drafts.push_back(draft);
        refusedLater = later;
        return result;
    }
    std::string folderForCopies() override { return folder; }
    std::string folder = "/copies/1";
    std::vector<platform::MailDraft> drafts;
    RefusedLater refusedLater; // of the last draft
    platform::MailResult result;
};

// A folder that is held by the programs of a list, one after another, and then is free.
class ScriptedLock : public platform::FolderLock {
public:
    std::optional<platform::FolderHolder> take(const std::string& folder) override {
        taken.push_back(folder);
        return taken.size() > holders.size() ? std::nullopt
                                             : std::optional(holders[taken.size() - 1]);
    }
    std::vector<platform::FolderHolder> holders;
    std::vector<std::string> taken;
};

class ScriptedShowRequests : public platform::ShowRequests {
public:
    bool askToShow(const platform::FolderHolder& holder, const std::string& run) override {
        asked.push_back(holder.process);
        askedRun = run;
        return hears;
    }
    void whenAsked(std::function<void(const std::string&)> show) override { ask = std::move(show); }
    bool hears = true;
    std::vector<std::int64_t> asked;
    std::string askedRun;
    std::function<void(const std::string& run)> ask; // what another program does with this one
};

// What is remembered of the user, in memory.
class MemorySettings : public platform::Settings {
public:
    std::vector<std::string> list(const std::string& name) const override {
        const auto found = lists.find(name);
        return found == lists.end() ? std::vector<std::string>() : found->second;
    }
    void setList(const std::string& name, const std::vector<std::string>& values) override {
        lists[name] = values;
    }
    std::map<std::string, std::vector<std::string>> lists;
};

struct TestProgram {
    TestProgram();
    ~TestProgram();
    TestProgram(const TestProgram&) = delete;
    TestProgram& operator=(const TestProgram&) = delete;

    // Puts the configuration into the program's folder, as the program reads it anew.
    void putConfig();

    MemoryFiles files;
    platform::LookOnlyFiles guardedFiles{files};
    ScriptedLock folderLock;
    ScriptedShowRequests showRequests;
    FixedClock clock{platform::DateTime{2026, 11, 15, 14, 42, 0}}; // a Sunday
    ScriptedDialogs dialogs;
    RecordingBrowser browser;
    ScriptedPrinter printer;
    RecordingMail mail;
    MemorySettings settings;
    std::vector<std::vector<std::string>> startedAnew; // with these words
    bool startsAnew = true;
    core::SharedState& state = core::state();
};

// A picture file of one colour.
platform::Bytes pictureFile(int width, int height, unsigned colour);

} // namespace kvo::testing
