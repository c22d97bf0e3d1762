#pragma once
// A modelled logger on a virtual line and the course of a pit run over them.
#include "link/pit_run_session.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"

#include <functional>
#include <string>
#include <vector>

namespace kvo::testing {

// The note that comes with every stop.
inline const std::string resetNote = "NOTE:   The On Board Computer WILL NOT record a run\r\n"
                                     "unless Reset (Switched Off then On again).\r\n\r\n"
                                     "This is not required to start a pit run again.";

// Notes what the course asks of the form, and holds it to its word that a form that is gone is left
// alone.
class RecordingPitView : public link::PitRunView {
public:
    std::string caption = "Start";
    std::vector<std::string> captions;
    link::PitRunLayout layout;
    std::vector<link::PitRunReadings> readings;
    std::vector<std::string> statuses; // as they changed
    int statusCalls = 0;
    bool unloaded = false;
    int touchedAfterUnload = 0;
    std::function<void()> onReadings;

    void setCommand1(const std::string& text) override {
        touch();
        caption = text;
        captions.push_back(text);
    }
    void applyLayout(const link::PitRunLayout& given) override { layout = given; }
    void showReadings(const link::PitRunReadings& given) override {
        touch();
        readings.push_back(given);
        if (onReadings) onReadings();
    }
    void setStatus(const std::string& text) override {
        touch();
        ++statusCalls;
        if (statuses.empty() ? !text.empty() : statuses.back() != text) statuses.push_back(text);
    }
    void unload() override {
        touch();
        unloaded = true;
    }

private:
    void touch() {
        if (unloaded) ++touchedAfterUnload;
    }
};

// A vehicle of which every channel is in use and every value is its raw byte.
inline core::AppConfig pitConfig(int dataType) {
    core::AppConfig config;
    config.CommPort = 1;
    config.LoggerDataType = static_cast<std::int16_t>(dataType);
    config.Wheel = 25;
    config.Engine_Correction = config.Clutch_Correction = 1;
    config.Pinion_Correction = config.Speed_Correction = 1;
    config.Analog_Check.fill(1);
    config.AnalogScale.fill(1);
    config.AnalogName.fill("Sensor  ");
    return config;
}

struct PitRig {
    // The logger's memory is empty: a pit run never asks for it.
    explicit PitRig(int dataType, simulator::Fault fault = {})
        : logger(platform::Bytes{0, static_cast<std::uint8_t>(dataType)}), faulty(logger, fault),
          line(faulty), config(pitConfig(dataType)), link(line, line, dialogs),
          session(link, {config, folder, tables}, view, dialogs, files) {
        // A run that nothing stops must not hang its test.
        line.at(200L * 1000 * platform::turnsPerMillisecond, [this] {
            link.LinkFailed = -1;
            link.CloseLoggerPort();
        });
    }

    void expectNote() { dialogs.expectBox(resetNote, platform::boxStyle::critical, "Info"); }
    // Presses Start, and Stop as soon as that turn has come.
    void runUntil(long turn) {
        expectNote();
        line.at(turn, [this] { session.Command1_Click(); });
        session.Command1_Click();
    }

    simulator::ModelLogger logger;
    simulator::FaultyEnd faulty;
    VirtualLine line;
    MemoryFiles files;
    ScriptedDialogs dialogs;
    core::AppConfig config;
    core::AnalogTables tables;
    std::string folder = "/kvo";
    link::LoggerLink link;
    RecordingPitView view;
    link::PitRunSession session;
};

} // namespace kvo::testing
