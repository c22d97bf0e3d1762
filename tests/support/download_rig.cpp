#include "tests/support/download_rig.h"

#include <algorithm>

namespace kvo::testing {

using namespace platform;

link::DownloadInput inputOf(core::SharedState& state) {
    return {state.Config, state.ConfigKnown, state.AppFolder, state.Run, state.Tables};
}

bool RecordingView::saw(const std::string& event) const {
    return count(event) > 0;
}

int RecordingView::count(const std::string& event) const {
    return static_cast<int>(std::count(events.begin(), events.end(), event));
}

DownloadRig::DownloadRig(int dataType, bool fast, simulator::Fault fault, bool paced)
    : layout(*simulator::wireLayout(dataType)), logger(dataType), faulty(logger, fault),
      line(faulty, paced), clock({2026, 11, 15, 14, 52, 7}),
      state(std::make_unique<core::SharedState>()), link(line, line, dialogs) {
    config.CommPort = 1;
    config.Date_Prompt = 1;
    config.SpeedWheel_Prompt = 1;
    config.Wheel = 25;
    config.Engine_Correction = config.Clutch_Correction = 1;
    config.Pinion_Correction = config.Speed_Correction = 1;
    config.Text_Magnify.fill(1);
    config.CheckBits[0] = fast ? std::int16_t{0} : std::int16_t{-1};
    config.CheckBits[1] = fast ? std::int16_t{-1} : std::int16_t{0};
    state->AppFolder = "/kvo";
    state->Config = config;
    saveConfig();
    newForm();
}

void DownloadRig::newForm() {
    view = std::make_unique<RecordingView>();
    session = std::make_unique<link::DownloadSession>(
        link, inputOf(*state), *view, dialogs, clock, files);
}

void DownloadRig::saveConfig() {
    files.put("/kvo/Kvo.Cfg", core::encodeConfig(config));
}

void DownloadRig::expectSave(const std::string& suggestion, const std::string& title) {
    dialogs.expectInput("Enter Run Number?\r\n\r\nThis can be just a number (1) or number\r\n"
                        "and information (1 Western Nationals).",
        "Run Title", suggestion, title);
    expectSavedBox();
}

void DownloadRig::expectSavedBox(Reply wanted) {
    dialogs.expectBox("The On Board Computer Data is now saved to Disk.\r\n\r\n"
                      "You can now SWICH OFF The On Board Computer.\r\n\r\n\r\n"
                      "         Do you want to View this download now ?",
        boxStyle::yesNo, "Download Saved", wanted);
}

int DownloadRig::wireByte(int i, int position) const {
    return logger.stream()[static_cast<std::size_t>(33 + (i - 1) * size() + position - 1)];
}

std::vector<core::RunIndexEntry> DownloadRig::index() const {
    return core::readRunIndex(indexFile, files);
}

int DownloadRig::wireWord(int i, int position) const {
    return wireByte(i, position) * 256 + wireByte(i, position + 1);
}

} // namespace kvo::testing
