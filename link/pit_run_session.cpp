#include "link/pit_run_session.h"

#include "core/basic/numbers.h"
#include "link/decode.h"

namespace kvo::link {
namespace {

namespace boxStyle = platform::boxStyle;

constexpr int notRunning = -1; // of LinkFailed
// How long a wait for the next frame sleeps at most: Stop may have been pressed, or the silence
// told.
constexpr int longestWait = 100 * platform::turnsPerMillisecond;
constexpr long turnsPerSecond = 1000L * platform::turnsPerMillisecond;
constexpr long silenceSeconds = 2;

} // namespace

std::string silenceText(long seconds) {
    return "No data from the logger for " + std::to_string(seconds) + " s";
}

PitRunSession::PitRunSession(LoggerLink& link, const PitRunInput& input, PitRunView& view,
    platform::Dialogs& dialogs, platform::Files& files)
    : m_link(link), m_in(input), m_view(view), m_dialogs(dialogs), m_files(files) {}

void PitRunSession::Form_Load() {
    m_link.LinkFailed = notRunning;
    const PitRunLayout layout = pitRunLayout(m_in.Config);
    m_canRun = layout.canRun;
    m_view.applyLayout(layout);
    if (!m_canRun)
        m_dialogs.messageBox("This is not available for your data loger type", boxStyle::critical,
            "Pit Run Canceled");
    const std::string unread = loadPitRunTables(m_in.Config, m_in.Tables, m_in.AppFolder, m_files);
    if (!unread.empty()) m_dialogs.messageBox(unread + tableUnread, boxStyle::critical, "Pit Run");
}

void PitRunSession::setRunning(bool running) {
    m_running = running;
    if (!m_unloaded) m_view.setCommand1(running ? "Stop" : "Start");
}

void PitRunSession::Command1_Click() {
    if (m_running)
        stop();
    else if (m_canRun && !m_unloaded)
        start();
    if (m_leaving) leave();
}

void PitRunSession::start() {
    m_link.LinkFailed = 0;
    m_link.OpenLoggerPort(m_in.Config.CommPort);
    if (m_link.LinkFailed == notRunning) return;
    m_link.port().setInputLen(pitRunType(m_in.Config.LoggerDataType)->frameBytes);
    setRunning(true);
    m_link.CommandByte = command::startPitRun;
    m_link.SendCommand(1);
    PollFrames();
}

// A second press while the last byte waits on a line that takes none ends that wait.
void PitRunSession::stop() {
    if (m_stopping) return m_link.CloseLoggerPort();
    m_stopping = true;
    m_link.LinkFailed = notRunning;
    m_link.CommandByte = command::stopPitRun;
    m_link.SendCommand(1);
    m_link.CloseLoggerPort();
    if (!m_unloaded) m_view.setStatus({});
    ShowResetNote();
    setRunning(false);
    m_stopping = false;
}

// Returns when the run was stopped, which happens inside its wait. Another session that begins in
// there clears the flag for itself, so the run goes by what its own button says too.
void PitRunSession::PollFrames() {
    m_turnsSinceFrame = 0;
    m_silenceShown = 0;
    while (m_running && m_link.LinkFailed != notRunning) {
        platform::SerialPort& port = m_link.port();
        if (const auto frame = takePitFrame(port)) showFrame(*frame);
        showSilence();
        const bool more = pitFramesToTake(port.inBufferCount(), port.inputLen()) > 0;
        m_turnsSinceFrame += m_link.yield().turns(more ? 1 : longestWait);
    }
}

// A frame cut short, as another session's way to read leaves it, says nothing.
void PitRunSession::showFrame(const std::string& frame) {
    const auto readings = decodePitFrame(frame, m_in.Config, m_in.Tables);
    if (!readings) return;
    m_turnsSinceFrame = 0;
    m_view.showReadings(*readings);
}

void PitRunSession::showSilence() {
    const long seconds = m_turnsSinceFrame / turnsPerSecond;
    const long shown = seconds >= silenceSeconds ? seconds : 0;
    if (shown == m_silenceShown) return;
    m_silenceShown = shown;
    m_view.setStatus(shown > 0 ? silenceText(shown) : std::string());
}

void PitRunSession::ShowResetNote() {
    m_dialogs.beep();
    m_dialogs.messageBox("NOTE:   The On Board Computer WILL NOT record a run\r\n"
                         "unless Reset (Switched Off then On again).\r\n\r\n"
                         "This is not required to start a pit run again.",
        boxStyle::critical, "Info");
}

void PitRunSession::BTN_Ok_Click() {
    m_leaving = true;
    if (m_running) stop();
    leave();
}

// Not while the stop is still at work further down: it leaves by itself when it is through.
void PitRunSession::leave() {
    if (m_unloaded || m_running) return;
    m_unloaded = true;
    m_view.unload();
}

} // namespace kvo::link
