#pragma once
// A program folder in memory, a modelled logger on a virtual line and the course of a download over
// them, ready for a test to break something.
#include "core/config.h"
#include "core/shared_state.h"
#include "link/download_session.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kvo::testing {

// What a download works on in a program's state, which must outlive it.
link::DownloadInput inputOf(core::SharedState& state);

// Notes what the session asks of the form, and holds it to its word that an unloaded form is left
// alone.
class RecordingView : public link::DownloadView {
public:
    std::vector<std::string> texts;
    // "buttons hidden", "unloaded", "graph: PATH: CAPTION", "chooser: NAME", "setup"
    std::vector<std::string> events;
    int progressMax = 0;
    int progress = 0;
    bool unloaded = false;
    int touchedAfterUnload = 0;
    std::function<void(int)> onProgress;

    void setText_Display(const std::string& text) override {
        touch();
        texts.push_back(text);
    }
    void setProgressMax(int maximum) override {
        touch();
        progressMax = maximum;
    }
    void setProgress(int value) override {
        touch();
        progress = value;
        if (onProgress) onProgress(value);
    }
    void hideButtons() override {
        touch();
        events.emplace_back("buttons hidden");
    }
    void unload() override {
        touch();
        unloaded = true;
        events.emplace_back("unloaded");
    }
    void showSoftwareSetup() override { events.emplace_back("setup"); }
    void showFreshRun(const std::string& path, const std::string& caption) override {
        events.push_back("graph: " + path + ": " + caption);
    }
    void refreshChooser(const std::string& fileName) override {
        events.push_back("chooser: " + fileName);
    }

    bool saw(const std::string& event) const;
    int count(const std::string& event) const;

private:
    void touch() {
        if (unloaded) ++touchedAfterUnload;
    }
};

struct DownloadRig {
    // The run file of the first download on the rig's clock, the choice of it, and the index.
    static constexpr const char* runPath = "/kvo/Data/26111514.52d";
    static constexpr const char* chosen = "chooser: 26111514.52d";
    static constexpr const char* indexFile = "/kvo/Data/KvoData.Ini";

    explicit DownloadRig(
        int dataType, bool fast = true, simulator::Fault fault = {}, bool paced = false);

    // The form is loaded anew, as for a second download; the link and the state live on.
    void newForm();
    // Writes the configuration to the program's folder.
    void saveConfig();
    // The answers of a download that is saved and not looked at.
    void expectSave(const std::string& suggestion = "1 ", const std::string& title = "1");
    void expectSavedBox(platform::Reply view = platform::Reply::no);
    void click() { session->Command_Send_Click(); }

    int size() const { return layout.sampleBytes; }
    // Byte of sample i (from 1) at a position (from 1), as it lies in the logger.
    int wireByte(int i, int position) const;
    int wireWord(int i, int position) const;
    std::vector<core::RunIndexEntry> index() const;

    simulator::WireLayout layout;
    simulator::ModelLogger logger;
    simulator::FaultyEnd faulty;
    VirtualLine line;
    MemoryFiles files;
    ScriptedDialogs dialogs;
    FixedClock clock;
    std::unique_ptr<core::SharedState> state;
    core::AppConfig config; // what is in Kvo.Cfg
    link::LoggerLink link;
    std::unique_ptr<RecordingView> view;
    std::unique_ptr<link::DownloadSession> session;
};

} // namespace kvo::testing
