#include "link/obc_session.h"

#include "core/backup.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/paths.h"

namespace kvo::link {
namespace {

using platform::Reply;
namespace boxStyle = platform::boxStyle;

constexpr std::uint8_t firstOpening = '0';
constexpr std::uint8_t lastOpening = '7';

const ObcBoxFacts& factsOf(ObcBox box) {
    return obcBoxes()[static_cast<std::size_t>(box)];
}

// Why a value that is in range has no bytes all the same.
const char* reasonFor(ObcBox box) {
    return factsOf(box).kind == ObcKind::rpm
               ? "The lowest value is 458, or 0 for none: slower pulses cannot be counted."
               : "The highest value is 255.";
}

} // namespace

ObcSession::ObcSession(LoggerLink& link, const std::string& appFolder, ObcView& view,
    platform::Dialogs& dialogs, const platform::Clock& clock, platform::Files& files)
    : m_link(link), m_appFolder(appFolder), m_view(view), m_dialogs(dialogs), m_clock(clock),
      m_files(files) {}

bool ObcSession::Mnu_ConfigureComputer(int commPort, const std::function<bool()>& wanted) {
    m_link.LinkFailed = 0;
    m_link.OpenLoggerPort(commPort);
    if (m_link.LinkFailed == -1) return false;
    // Required: InputLen stays 0, so a stray byte is lost and shifts nothing.
    const bool answered = m_link.greetLogger();
    if (answered && wanted()) {
        const int missed = m_link.MissedReplies;
        m_link.ReadLoggerHeader();
        m_readWhole = m_link.MissedReplies == missed;
        m_readOn = m_clock.now();
    }
    if (!wanted()) {
        m_link.CloseLoggerPort();
        return false;
    }
    if (!answered) m_link.reportNoReply("Configure Error !");
    return answered;
}

void ObcSession::Form_Load() {
    m_link.LinkFailed = 0;
    m_view.showHeader(obcShown(m_link.Header));
    // Required: the form comes up on whatever stood in the fields that were not answered.
    if (!m_readWhole)
        m_view.setStatus("The On Board Computer stopped answering while its settings were read. "
                         "Some of these values are not its own: Cancel, and try again.");
}

void ObcSession::Error_Msg(const std::string& field) {
    m_dialogs.messageBox(
        field + "\r\nValue is out of range and has Been Set Back to Your Default.\r\n\r\n"
                "                           Please try again",
        boxStyle::warning, core::programName);
    m_link.LinkFailed = -1;
}

// A save that cannot go on, with what was typed still there: in silence it would pass for done.
void ObcSession::endSave(ObcBox box, const std::string& why) {
    m_link.LinkFailed = 0;
    m_dialogs.messageBox(std::string(factsOf(box).message) + "\r\n" + why +
                             "\r\nNothing has been sent to the On Board Computer.\r\n\r\n"
                             "                           Please try again",
        boxStyle::warning, core::programName);
    m_view.focus(box);
}

// False: a text is no number, and the save is over.
bool ObcSession::Range_Check(const ObcValues& values) {
    for (const ObcBoxFacts& facts : obcBoxes()) {
        const RangeResult result = checkRange(facts.box, values[facts.box]);
        if (result == RangeResult::notANumber) {
            endSave(facts.box, "This is not a number.");
            return false;
        }
        if (result == RangeResult::ok) continue;
        Error_Msg(facts.message);
        m_view.setText(facts.box, obcDefault(facts.box, m_link.Header));
        m_view.focus(facts.box);
    }
    return true;
}

void ObcSession::SaveSetup_Click() {
    if (m_saving || m_unloaded) return;
    m_saving = true;
    m_dialogs.beep();
    const Reply sure =
        m_dialogs.messageBox("    You have opted to save change to the on board computer.\r\n\r\n"
                             "              Are you sure you want to do this?",
            boxStyle::yesNo + boxStyle::warning, core::programName);
    if (sure == Reply::yes) save();
    m_saving = false;
}

void ObcSession::save() {
    const ObcValues values = m_view.values();
    if (!Range_Check(values)) return;
    if (m_link.LinkFailed == -1) {
        m_link.LinkFailed = 0;
        return;
    }
    const ObcBytes settings = obcBytes(values, m_link.Header);
    if (settings.failed) return endSave(*settings.failed, reasonFor(*settings.failed));
    if (m_link.lineGone()) return tellLostLine("Nothing has been sent. Cancel, and try again.");
    if (!keepOldSettings()) return;
    write(settings);
    if (m_lostInWrite)
        tellLostLine("It may have some of the new settings: configure it again, and look.");
    m_dialogs.beep();
    m_dialogs.messageBox("Now turn the On Board Computer Off, then on again!\r\n\r\n"
                         "This will reset the on board computer with the new setting.",
        boxStyle::critical, core::programName);
    m_unloaded = true;
    m_view.unload();
}

// A cable that was pulled out is known, other than a logger that is only silent.
void ObcSession::tellLostLine(const std::string& what) {
    m_dialogs.messageBox("The line to the On Board Computer was lost.\r\n" + what,
        boxStyle::warning, core::programName);
}

// False: they could not be kept, and the user does not want to write without.
bool ObcSession::keepOldSettings() {
    const std::string stem = "Logger " + core::CStr(m_link.Header.LoggerSerial) + " " +
                             core::Format(m_readOn, "yyyy-mm-dd");
    const std::string text = obcBackupText(
        m_link.Header, core::Format(m_readOn, "dddd, d mmmm yyyy hh:nn"), m_readWhole);
    const auto kept = core::keepText(m_appFolder, stem, text, m_files);
    if (kept) return true;
    const Reply goOn = m_dialogs.messageBox(
        "The settings that the On Board Computer has now could NOT be kept in Backup.\r\n" +
            kept.message + "\r\n\r\nDo you want to write the new ones without a copy of the old?",
        boxStyle::yesNo + boxStyle::warning + boxStyle::secondDefault, core::programName);
    return goOn == Reply::yes;
}

// A logger that falls silent is not noticed: each byte then takes a time-out.
void ObcSession::write(const ObcBytes& settings) {
    m_writing = true;
    m_view.setWriting(true);
    m_dialogs.setHourglass(true);
    m_link.ReadReply(); // what waits is nobody's answer
    m_link.CommandByte = command::startConfiguration;
    m_link.SendCommand(1);
    for (std::uint8_t step = firstOpening; step <= lastOpening; ++step) {
        m_link.CommandByte = step;
        m_link.RequestByte();
    }
    for (const std::uint8_t setting : settings.bytes) {
        m_link.CommandByte = setting;
        m_link.RequestByte();
    }
    m_lostInWrite = m_link.lineGone();
    m_link.CloseLoggerPort();
    m_dialogs.setHourglass(false);
    m_writing = false;
}

void ObcSession::CancelSetup_Click() {
    if (m_writing || m_unloaded) return;
    m_unloaded = true;
    m_view.unload();
}

} // namespace kvo::link
