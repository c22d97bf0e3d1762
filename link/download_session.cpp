#include "link/download_session.h"

#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/config.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "link/decode.h"
#include "platform/memory.h"

#include <cstdlib>
#include <new>

namespace kvo::link {

using platform::Reply;
namespace boxStyle = platform::boxStyle;

void showDateCheck(
    const core::AppConfig& config, platform::Dialogs& dialogs, const platform::Clock& clock) {
    if (config.Date_Prompt == 1) return;
    const std::string date = "Date: " + core::Format(clock.now(), "dddd, d mmmm yyyy");
    dialogs.messageBox(date + "\r\n"
                              " If this DATE is Not Correct. Please Fix Before Downloading!\r\n"
                              "As it is used for Dating the Download Files ?",
        boxStyle::warning, date);
}

DownloadSession::DownloadSession(LoggerLink& link, const DownloadInput& input, DownloadView& view,
    platform::Dialogs& dialogs, const platform::Clock& clock, platform::Files& files)
    : m_link(link), m_in(input), m_view(view), m_dialogs(dialogs), m_clock(clock), m_files(files) {
    m_link.Header.DataType =
        0; // disarms the failure flag of ReadReply until a header has been read
}

void DownloadSession::unloadView() {
    if (m_unloaded) return;
    m_unloaded = true;
    m_view.unload();
}

void DownloadSession::show(const std::string& text) {
    if (!m_unloaded) m_view.setText_Display(text);
}

void DownloadSession::Cancel_Command_Click() {
    m_cancelled = true;
    m_link.LinkFailed = -1;
    m_link.CloseLoggerPort();
    unloadView();
}

void DownloadSession::Command_Send_Click() {
    if (m_running || m_unloaded) return;
    m_running = true;
    run();
    m_link.recorder().forget();
    m_start.reset();
    giveWheelBack();
    m_running = false;
}

void DownloadSession::run() {
    if (!startSession()) return;
    if (m_in.Config.SpeedWheel_Prompt != 1) askWheel();
    if (m_cancelled) return;
    bool came = fetch();
    while (came && wantsAgain()) {
        if (!startAgain()) return;
        came = fetch();
    }
    std::string title;
    if (came && askTitle(title))
        save(title);
    else
        (void)keepRaw({}, m_clock.now());
}

// What is in memory as the line opens, and from here on what passes on it.
void DownloadSession::noteStart() {
    m_link.recorder().begin();
    m_start = std::unique_ptr<DownloadStart>(new (std::nothrow) DownloadStart);
    if (m_start == nullptr) return;
    m_start->ReplyByte = m_link.ReplyByte;
    m_start->WordValue = m_link.WordValue;
    m_start->RpmValue = m_link.RpmValue;
    m_start->DataType = m_link.Header.DataType;
    m_start->samples = m_in.Run.image.samples;
    m_start->setup = m_in.Run.image.setup;
    m_start->analog = m_in.Run.image.analog;
    m_start->periods = m_periods;
}

// The bytes of the last transfer as a file of its own, from which the run can be made again. An
// empty title: it became no run. What came before a data type was known, or was cut short by the
// user, is nothing to look at.
platform::WriteResult DownloadSession::keepRaw(
    const std::string& title, const platform::DateTime& moment) {
    const LineRecord* line = m_link.recorder().end();
    if (m_cancelled || line == nullptr || m_start == nullptr || m_in.Run.SampleCount == 0)
        return {};
    return platform::writtenWithinMemory(rawSessionName(moment, !title.empty()), [&] {
        const auto raw = std::make_unique<RawSession>();
        raw->moment = moment;
        raw->saved = !title.empty();
        raw->title = title;
        raw->DataType = m_in.Run.DataType;
        raw->SampleCount = m_in.Run.SampleCount;
        raw->surplus = m_surplus;
        raw->Config = m_in.Config;
        raw->Tables = m_in.Tables;
        raw->start = *m_start;
        raw->line = *line;
        return keepRawSession(*raw, m_in.AppFolder, m_files);
    });
}

// Header and rows, and what becomes of the raw values. False: the session is over, and the user
// knows why.
bool DownloadSession::fetch() {
    const int missed = m_link.MissedReplies;
    m_link.ReadLoggerHeader();
    if (m_cancelled || !takeDataType(m_link.MissedReplies == missed)) return false;
    m_view.hideButtons();
    m_view.setProgressMax(m_in.Run.SampleCount);
    transfer();
    if (m_cancelled) return false;
    show("Now checked data for errors");
    convertPulses(m_in.Run, m_in.Config, m_periods);
    const std::string unread =
        convertAnalogTables(m_in.Run, m_in.Config, m_in.Tables, m_in.AppFolder, m_files);
    m_link.CloseLoggerPort();
    if (m_link.LinkFailed == -1) return false;
    if (!unread.empty())
        m_dialogs.messageBox(unread + tableUnread, boxStyle::critical, core::programName);
    return true;
}

// The protocol has no checksum: only the count of the bytes tells that one was lost or came twice.
bool DownloadSession::wantsAgain() {
    if (m_surplus == 0) return false;
    const int bytes = std::abs(m_surplus);
    const std::string text =
        std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes") + " too " +
        (m_surplus > 0 ? "many" : "few") +
        " came from the On Board Computer.\r\n\r\n"
        "The run may be shifted from some point on. The On Board Computer still has it.\r\n\r\n"
        "Do you want to download it again?\r\nNo keeps the run as it came.";
    return m_dialogs.messageBox(text, boxStyle::yesNo + boxStyle::warning, "Download Check") ==
           Reply::yes;
}

// The buttons of the form are gone by now, so where nobody answers any more it goes too.
bool DownloadSession::startAgain() {
    openPort();
    const bool opened = m_link.LinkFailed != -1;
    const bool answered = opened && m_link.greetLogger();
    if (opened && !answered && !m_cancelled) m_link.reportNoReply("Download Error !");
    if (!answered) unloadView();
    return answered && !m_cancelled;
}

void DownloadSession::openPort() {
    noteStart();
    m_link.LinkFailed = 0;
    m_link.OpenLoggerPort(m_in.Config.CommPort);
    m_link.port().setInputLen(1);
}

// Up to an answered "Q". False: the session is over, and the user knows why.
bool DownloadSession::startSession() {
    openPort();
    readConfig();
    if (m_link.LinkFailed == -1) return false;
    const bool answered = m_link.greetLogger();
    if (m_cancelled) return false;
    if (!answered) m_link.reportNoReply("Download Error !");
    return answered;
}

// A file of no use leads into the setup, and the download goes on with what it says.
void DownloadSession::readConfig() {
    const core::ConfigRead read = core::LoadConfig(m_in.AppFolder, m_in.Config, m_files);
    if (read.whole()) {
        m_in.ConfigKnown = true;
        return;
    }
    m_dialogs.beep();
    m_dialogs.messageBox(read.message, boxStyle::critical, core::programName);
    m_view.showSoftwareSetup();
}

void DownloadSession::askWheel() {
    core::AppConfig& config = m_in.Config;
    const auto wheel = static_cast<double>(config.Wheel);
    const Reply correct = m_dialogs.messageBox(
        "It is Essential that the Diameter of the Front Wheel is Entered.\r\n\r\n"
        "    So the speed calculations are correct from the Download.\r\n"
        "    The Front Wheel is ( " +
            core::Format(wheel, "#0.0 ") +
            ")inches in diameter.\r\n\r\n"
            "    Is this Correct?",
        boxStyle::yesNo, "Front Wheel Dimeter");
    if (correct == Reply::yes) return;
    // It holds for this download only: see giveWheelBack.
    m_wheelOfFile = config.Wheel;
    config.Wheel = static_cast<float>(core::Val(m_dialogs.inputBox(
        "Enter the new Wheel Diameter", "New Wheel Diameter", core::Format(wheel, "#0.0"))));
}

// A wheel that was typed never reaches the file, also not with the next thing that is saved there.
void DownloadSession::giveWheelBack() {
    if (m_wheelOfFile) m_in.Config.Wheel = *m_wheelOfFile;
    m_wheelOfFile.reset();
}

// False for a data type without a download. Required: then the form stays with its buttons and the
// port stays open, in silence. A logger that fell silent in its header, so that a stale reply
// stands for its type, is told like one that falls silent later.
bool DownloadSession::takeDataType(bool headerCame) {
    m_in.Run.DataType = m_link.Header.DataType;
    m_in.Run.image.header = m_link.Header.RunHeader;
    const auto type = prepareDownload(m_in.Run);
    if (!type && !headerCame) {
        Download(m_link, m_in.Run, m_periods, m_view, m_dialogs).reportFailure();
        m_unloaded = true;
    }
    if (!type) return false;
    if (type->notAllChannels)
        m_dialogs.messageBox(
            "Please note this software will not support all the channels on your logger.\r\n"
            "The program HJN.EXE supports all of them.",
            boxStyle::warning, "Warning");
    return !m_cancelled;
}

void DownloadSession::transfer() {
    Download download(
        m_link, m_in.Run, m_periods, m_view, m_dialogs, [this] { return m_cancelled; });
    constexpr std::size_t fastMode = 1; // the second of the pair of options
    if (m_in.Config.CheckBits[fastMode] != 0)
        download.DownloadFast();
    else
        download.DownloadSafe();
    m_surplus = m_link.LinkFailed != -1 ? download.surplusBytes() : 0;
    if (m_link.LinkFailed != -1) return;
    // A byte that was lost in the header is a failed transfer too, though the fast mode goes by its
    // batches alone; without a word the form would stand there without its buttons.
    download.reportFailure();
    m_unloaded = true;
}

std::string DownloadSession::suggestedTitle() const {
    const auto entries = core::readRunIndex(core::indexPath(m_in.AppFolder, m_files), m_files);
    return core::suggestTitle(
        entries.empty() ? std::string() : entries.back().Description, m_clock.now());
}

// False: the user gives the run up, and the form is gone.
bool DownloadSession::askTitle(std::string& title) {
    do {
        show("Download Compleat");
        title = m_dialogs.inputBox("Enter Run Number?\r\n\r\n"
                                   "This can be just a number (1) or number\r\n"
                                   "and information (1 Western Nationals).",
            "Run Title", suggestedTitle());
        if (!title.empty()) continue;
        const Reply giveUp =
            m_dialogs.messageBox("NO DATA will be Saved to Disk.\r\n\r\nDo You Wish To Continue",
                boxStyle::yesNo + boxStyle::warning, "Data Warning");
        if (giveUp == Reply::yes) {
            unloadView();
            return false;
        }
    } while (
        !(core::Val(title) > 0)); // a title that starts with a word is refused without a message
    // With the blank of the suggestion in front, the date key would take one digit of a run number
    // of two, and run 10 would pass for run 1.
    title = std::string(core::leftTrimmed(title));
    return true;
}

void DownloadSession::save(const std::string& title) {
    show("The Data Is now being Saved to Disk. Please wait!");
    m_dialogs.setHourglass(true);
    const platform::DateTime now = m_clock.now();
    const std::string name = core::runFileName(now);
    const std::string runText = core::runText(title, now);
    m_in.Run.path = core::joined(core::dataFolder(m_in.AppFolder, m_files), name, m_files);
    const bool saved = saveRunFile(name, runText);
    const platform::WriteResult raw = keepRaw(saved ? title : std::string(), now);
    if (saved)
        offerView(runText);
    else
        unloadView();
    if (saved) tellUnkept(raw);
}

// The run is whole on the disk, and a word about a copy that nobody needs would only shake the
// trust in it; of a doubtful one the bytes are what helps.
void DownloadSession::tellUnkept(const platform::WriteResult& raw) {
    if (raw || m_surplus == 0) return;
    m_dialogs.messageBox(
        "The bytes of this download could not be kept in Backup.\r\n" + raw.message,
        boxStyle::information, "Download Check");
}

// Writes the run, into another folder if the user chooses one, and the index. False: the user was
// asked until they gave up, and nothing on disk says otherwise. The run is still in memory.
bool DownloadSession::saveRunFile(const std::string& name, const std::string& runText) {
    const std::string ownPlace = m_in.Run.path;
    for (;;) {
        m_dialogs.setHourglass(true);
        const platform::WriteResult written =
            core::SaveRun(m_in.Run, {m_link.Header, runText, m_in.Config}, m_in.AppFolder, m_files);
        m_dialogs.setHourglass(false);
        if (written) break;
        const Reply again = m_dialogs.messageBox(
            "The run could NOT be saved to Disk.\r\n" + written.message +
                "\r\n\r\nThe run is still in memory. Retry, or Cancel to choose another folder.",
            boxStyle::retryCancel + boxStyle::critical, "Run Not Saved");
        if (again != Reply::retry && !chooseOtherPlace(name)) return false;
    }
    if (m_in.Run.path == ownPlace) {
        addToIndex(core::indexEntryOf(m_in.Run.path, runText));
    } else {
        m_dialogs.messageBox(
            "The run is saved as\r\n" + m_in.Run.path + "\r\n\r\nIt is not in the list of runs.",
            boxStyle::warning, "Run Saved Elsewhere");
    }
    m_view.refreshChooser(core::baseName(m_in.Run.path));
    return true;
}

// False: the user does not want the run saved at all. A folder or a change of mind are a new try.
bool DownloadSession::chooseOtherPlace(const std::string& name) {
    const auto folder = m_dialogs.chooseFolder("Save the run in another folder", m_in.AppFolder);
    if (folder) {
        m_in.Run.path = core::joined(*folder, name, m_files);
        return true;
    }
    const Reply giveUp = m_dialogs.messageBox(
        "The run is NOT saved. The On Board Computer still has it until the next run.\r\n\r\n"
        "Do you want to leave it unsaved?",
        boxStyle::yesNo + boxStyle::warning + boxStyle::secondDefault, "Run Not Saved");
    return giveUp != Reply::yes;
}

void DownloadSession::addToIndex(const core::RunIndexEntry& entry) {
    for (;;) {
        const platform::WriteResult written =
            core::AddRunToIndex(m_in.AppFolder, entry, core::IndexOrder::asItIs, m_files);
        if (written) return;
        const Reply again = m_dialogs.messageBox(
            "The run is saved as\r\n" + m_in.Run.path +
                "\r\nbut it could NOT be added to the list of runs.\r\n" + written.message,
            boxStyle::retryCancel + boxStyle::critical, "Run Not Listed");
        if (again != Reply::retry) return;
    }
}

void DownloadSession::offerView(const std::string& runText) {
    show("");
    m_dialogs.beep();
    const Reply wanted =
        m_dialogs.messageBox("The On Board Computer Data is now saved to Disk.\r\n\r\n"
                             "You can now SWICH OFF The On Board Computer.\r\n\r\n\r\n"
                             "         Do you want to View this download now ?",
            boxStyle::yesNo, "Download Saved");
    if (wanted != Reply::yes) {
        unloadView();
        return;
    }
    m_dialogs.setHourglass(true);
    std::string caption = runText;
    caption.pop_back(); // the "#"
    unloadView();
    m_view.showFreshRun(m_in.Run.path, caption);
    m_dialogs.setHourglass(false);
}

} // namespace kvo::link
