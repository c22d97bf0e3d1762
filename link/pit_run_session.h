#pragma once
// The course of a pit run from Start to Stop: opens the port, starts the stream, shows every frame
// that comes, and stops it again. Any button may be pressed inside its waits.
#include "core/analog_tables.h"
#include "core/config_record.h"
#include "link/logger_link.h"
#include "link/pit_run.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <string>

namespace kvo::link {

// What a pit run asks of the form that it runs under.
class PitRunView {
public:
    virtual ~PitRunView() = default;
    // Caption of Command1: "Start" or "Stop".
    virtual void setCommand1(const std::string& caption) = 0;
    // What of the form is there, and whether Command1 is enabled.
    virtual void applyLayout(const PitRunLayout& layout) = 0;
    virtual void showReadings(const PitRunReadings& readings) = 0;
    // The form's status line; empty while all is well.
    virtual void setStatus(const std::string& text) = 0;
    // The form goes, and the main window comes back.
    virtual void unload() = 0;
};

// What a pit run works on. All of it must outlive the session.
struct PitRunInput {
    const core::AppConfig& Config;
    const std::string& AppFolder;
    core::AnalogTables& Tables; // takes the tables of the channels that go through one
};

// One for each time the form is loaded. It must live until Command1_Click has returned, also where
// that has unloaded the form.
class PitRunSession {
public:
    PitRunSession(LoggerLink& link, const PitRunInput& input, PitRunView& view,
        platform::Dialogs& dialogs, platform::Files& files);

    // Lays the form out for the data type; one without a pit run is told.
    void Form_Load();
    // Start or Stop, by what the button says.
    void Command1_Click();
    // Leaves the form, stopping first.
    void BTN_Ok_Click();
    // True from Start to Stop: the button says "Stop".
    bool running() const { return m_running; }

private:
    void start();
    void stop();
    void PollFrames();
    void showFrame(const std::string& frame);
    void showSilence();
    void ShowResetNote();
    void setRunning(bool running);
    void leave();

    LoggerLink& m_link;
    PitRunInput m_in;
    PitRunView& m_view;
    platform::Dialogs& m_dialogs;
    platform::Files& m_files;
    bool m_canRun = false;
    bool m_running = false;
    bool m_stopping = false;
    bool m_leaving = false;
    bool m_unloaded = false;
    long m_turnsSinceFrame = 0;
    long m_silenceShown = 0; // seconds, 0 none
};

// "No data from the logger for 3 s"
std::string silenceText(long seconds);

} // namespace kvo::link
