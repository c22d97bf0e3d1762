#pragma once
// The course of one download from the click on "Start Download" to the saved run: greeting, wheel
// dialogue, header, transfer, decoding, title, run file, index, and the offer to view it. Any
// button may be pressed inside its waits.
#include "core/analog_tables.h"
#include "core/config_record.h"
#include "core/open_run.h"
#include "core/run_index.h"
#include "link/download.h"
#include "link/download_view.h"
#include "link/logger_link.h"
#include "link/raw_session.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <memory>
#include <optional>
#include <string>

namespace kvo::link {

// Unless the configuration has it off: asks the user to see that today's date is right, ahead of
// showing the download form.
void showDateCheck(
    const core::AppConfig& config, platform::Dialogs& dialogs, const platform::Clock& clock);

// What a download works on. All of it must outlive the session.
struct DownloadInput {
    core::AppConfig& Config;
    bool& ConfigKnown; // becomes true where the configuration is read anew
    const std::string& AppFolder;
    core::OpenRun& Run; // takes the download; on failure it is no run any more
    core::AnalogTables& Tables;
};

// One for each time the form is shown, made as the form loads (the data type becomes 0, the period
// arrays start empty). It must live until Command_Send_Click has returned, also where that has
// unloaded the form; after view.unload() it does not touch the view but for showDataGraph and
// refreshChooser, which are about other windows.
class DownloadSession {
public:
    DownloadSession(LoggerLink& link, const DownloadInput& input, DownloadView& view,
        platform::Dialogs& dialogs, const platform::Clock& clock, platform::Files& files);

    // A click that comes while one is at work does nothing.
    void Command_Send_Click();
    // Ends the session and unloads the form, also from inside a wait; nothing is reported.
    void Cancel_Command_Click();
    // True from the click to its end.
    bool running() const { return m_running; }
    // Bytes too many behind the last transfer; negative: too few.
    int surplus() const { return m_surplus; }
    // What a replay begins with in place of empty arrays.
    void startWith(const PulsePeriods& periods) { m_periods = periods; }

private:
    void run();
    void openPort();
    void noteStart();
    platform::WriteResult keepRaw(const std::string& title, const platform::DateTime& moment);
    bool startSession();
    bool startAgain();
    bool fetch();
    bool wantsAgain();
    void readConfig();
    void askWheel();
    void giveWheelBack();
    bool takeDataType(bool headerCame);
    void transfer();
    bool askTitle(std::string& title);
    std::string suggestedTitle() const;
    void save(const std::string& title);
    void tellUnkept(const platform::WriteResult& raw);
    bool saveRunFile(const std::string& name, const std::string& runText);
    bool chooseOtherPlace(const std::string& name);
    void addToIndex(const core::RunIndexEntry& entry);
    void offerView(const std::string& runText);
    void show(const std::string& text);
    void unloadView();

    LoggerLink& m_link;
    DownloadInput m_in;
    DownloadView& m_view;
    platform::Dialogs& m_dialogs;
    const platform::Clock& m_clock;
    platform::Files& m_files;
    PulsePeriods m_periods;
    std::unique_ptr<DownloadStart> m_start; // nothing where the memory does not hold it
    int m_surplus = 0;
    std::optional<float> m_wheelOfFile; // while a typed one stands in the configuration
    bool m_running = false;
    bool m_cancelled = false;
    bool m_unloaded = false;
};

} // namespace kvo::link
