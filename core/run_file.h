#pragma once
// Run files: 84-byte records, read as main run or overlay, and written. Layout in
// docs/file-formats.md.
#include "core/shared_state.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <string>

namespace kvo::core {

// What a load shows while it works; the graph window implements it.
class RunLoadView {
public:
    virtual ~RunLoadView() = default;
    virtual void setCaption(const std::string& caption) = 0;           // window caption, main run
    virtual void appendOverlayCaption(const std::string& caption) = 0; // "    Overlay File: " ...
    virtual void setScaleRight(int right) = 0; // trend scale (0, 1100)-(right, 0)
    virtual void setAnalogCaption(int channel, const std::string& caption) = 0;
    virtual void showProgress(bool on) = 0;
    virtual void loadRunTimes() = 0; // fills the time boxes from the info file
};

// A view that shows nothing.
class NoRunLoadView : public RunLoadView {
public:
    void setCaption(const std::string&) override {}
    void appendOverlayCaption(const std::string&) override {}
    void setScaleRight(int) override {}
    void setAnalogCaption(int, const std::string&) override {}
    void showProgress(bool) override {}
    void loadRunTimes() override {}
};

// Reads state.DataFilePath as the main run. `chosenName` is what the caption names. On failure
// LoadStatus is -1 and a message was shown; what was read up to there stays.
void LoadRun(SharedState& state, const std::string& chosenName, const platform::Files& files,
    platform::Dialogs& dialogs, RunLoadView& view);
// The same for the overlay image. SampleCount, PeakSpeedRaw and RunHeaderLine stay.
void LoadOverlayRun(SharedState& state, const std::string& chosenName, const platform::Files& files,
    platform::Dialogs& dialogs, RunLoadView& view);
// Reads the header line of state.DataFilePath into RunHeaderLine, which stays where there is none.
void ReadHeaderLine(SharedState& state, const platform::Files& files);
// Writes the main run to state.DataFilePath (SaveMode 0: a fresh run that takes the setup of the
// configuration and prepares RunIndexBuffer(1); -1: a changed run). On failure nothing on disk has
// changed and the run is still in memory.
[[nodiscard]] platform::WriteResult SaveRun(SharedState& state, platform::Files& files);

// The text of record 1 for a fresh run; at most 82 characters.
std::string headerLine(const SharedState& state);

} // namespace kvo::core
