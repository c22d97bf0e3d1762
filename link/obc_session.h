#pragma once
// The course of a configuration of the On Board Computer: greeting, header, form, range checks, and
// the write of all 32 bytes. The port stays open for as long as the form is up.
#include "link/logger_link.h"
#include "link/obc_setup.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <functional>
#include <string>

namespace kvo::link {

// What the course asks of the form.
class ObcView {
public:
    virtual ~ObcView() = default;
    virtual void showHeader(const ObcShown& shown) = 0;
    // The form's status line; empty while all is well.
    virtual void setStatus(const std::string& text) = 0;
    // What the user has put in.
    virtual ObcValues values() const = 0;
    virtual void setText(ObcBox box, const std::string& text) = 0;
    virtual void focus(ObcBox box) = 0;
    // While the write is under way the form takes no click.
    virtual void setWriting(bool writing) = 0;
    virtual void unload() = 0;
};

// One for each time the form is loaded. It must live until the call that is under way has returned,
// also where that has unloaded the form.
class ObcSession {
public:
    ObcSession(LoggerLink& link, const std::string& appFolder, ObcView& view,
        platform::Dialogs& dialogs, const platform::Clock& clock, platform::Files& files);

    // Greets the logger on a port and reads its header. True: the form may be shown, on an open
    // port. False: the user knows why, or does not want it any more, which `wanted` tells; the port
    // is closed.
    bool Mnu_ConfigureComputer(int commPort, const std::function<bool()>& wanted);
    // Fills the fields from the header.
    void Form_Load();
    void SaveSetup_Click();
    // The port stays open until the next session opens or closes it.
    void CancelSetup_Click();
    bool writing() const { return m_writing; }

private:
    void save();
    bool Range_Check(const ObcValues& values);
    void Error_Msg(const std::string& field);
    void endSave(ObcBox box, const std::string& why);
    void tellLostLine(const std::string& what);
    bool keepOldSettings();
    void write(const ObcBytes& settings);

    LoggerLink& m_link;
    const std::string& m_appFolder;
    ObcView& m_view;
    platform::Dialogs& m_dialogs;
    const platform::Clock& m_clock;
    platform::Files& m_files;
    bool m_readWhole = true;
    platform::DateTime m_readOn;
    bool m_saving = false;
    bool m_writing = false;
    bool m_lostInWrite = false;
    bool m_unloaded = false;
};

} // namespace kvo::link
