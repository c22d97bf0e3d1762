#pragma once
// What a download asks of the form it runs under. The form reads and writes controls; the course of
// the download is plain code in link/.
#include <string>

namespace kvo::link {

class DownloadView {
public:
    virtual ~DownloadView() = default;
    // Text_Display; shown at once.
    virtual void setText_Display(const std::string& text) = 0;
    virtual void setProgressMax(int maximum) = 0;
    virtual void setProgress(int value) = 0;
    // Command_Send and Cancel_Command go: from here on there is no way to cancel.
    virtual void hideButtons() = 0;
    // The form goes. The session still runs to its end and must not touch the form afterwards.
    virtual void unload() = 0;
    // The software setup form, modal, when the configuration is missing or corrupt.
    virtual void showSoftwareSetup() = 0;
    // Shows the data graph, not modal, on the run file that was just written, under this caption.
    virtual void showFreshRun(const std::string& path, const std::string& caption) = 0;
    // The list of runs is read again, since the index has a new run; that file is its choice.
    virtual void refreshChooser(const std::string& fileName) = 0;
};

} // namespace kvo::link
