#pragma once
// A modelled logger on a virtual line and the course of its configuration over them.
#include "link/obc_session.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"

#include <functional>
#include <string>
#include <vector>

namespace kvo::testing {

inline const std::string obcQuestion =
    "    You have opted to save change to the on board computer.\r\n\r\n"
    "              Are you sure you want to do this?";
inline const std::string obcClosing = "Now turn the On Board Computer Off, then on again!\r\n\r\n"
                                      "This will reset the on board computer with the new setting.";

// The box of a field that is out of range.
inline std::string obcRangeBox(const std::string& field) {
    return field + "\r\nValue is out of range and has Been Set Back to Your Default.\r\n\r\n"
                   "                           Please try again";
}

// A form of plain values; it holds the course to its word that a form that is gone is left alone.
class RecordingObcView : public link::ObcView {
public:
    link::ObcShown shown;
    link::ObcValues boxes;
    std::vector<link::ObcBox> focused;
    std::vector<bool> writing;
    std::string status;
    bool unloaded = false;
    int touchedAfterUnload = 0;

    void showHeader(const link::ObcShown& given) override {
        touch();
        shown = given;
        boxes = given.values;
    }
    void setStatus(const std::string& text) override {
        touch();
        status = text;
    }
    link::ObcValues values() const override { return boxes; }
    void setText(link::ObcBox box, const std::string& text) override {
        touch();
        boxes[box] = text;
    }
    void focus(link::ObcBox box) override {
        touch();
        focused.push_back(box);
    }
    void setWriting(bool on) override {
        touch();
        writing.push_back(on);
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

// What a logger gives that has no run in its memory.
inline platform::Bytes headerStream(int dataType) {
    const auto layout = *simulator::wireLayout(dataType);
    const auto header = simulator::makeHeader(layout, simulator::vehicleFor(dataType));
    platform::Bytes stream{0};
    stream.insert(stream.end(), header.begin(), header.end());
    return stream;
}

struct ObcRig {
    explicit ObcRig(int dataType, simulator::Fault fault = {}, bool paced = false)
        : logger(headerStream(dataType)), faulty(logger, fault), line(faulty, paced),
          link(line, line, dialogs), session(link, folder, view, dialogs, clock, files) {}

    bool configure() {
        return session.Mnu_ConfigureComputer(1, [this] { return wanted; });
    }
    // The form is up: greeting, header, load.
    bool open() {
        const bool up = configure();
        if (up) session.Form_Load();
        return up;
    }
    void expectQuestion(platform::Reply reply = platform::Reply::yes) {
        dialogs.expectBox(
            obcQuestion, platform::boxStyle::yesNo + platform::boxStyle::warning, "Kvo", reply);
    }
    void expectClosing() { dialogs.expectBox(obcClosing, platform::boxStyle::critical, "Kvo"); }
    void expectRange(const std::string& field) {
        dialogs.expectBox(obcRangeBox(field), platform::boxStyle::warning, "Kvo");
    }
    // What the logger would give as its header.
    std::string header() const {
        return {logger.stream().begin() + 1, logger.stream().begin() + 33};
    }

    simulator::ModelLogger logger;
    simulator::FaultyEnd faulty;
    VirtualLine line;
    MemoryFiles files;
    ScriptedDialogs dialogs;
    FixedClock clock{platform::DateTime{2026, 11, 15, 14, 42, 7}}; // a Sunday
    std::string folder = "/kvo";
    link::LoggerLink link;
    RecordingObcView view;
    link::ObcSession session;
    bool wanted = true;
};

} // namespace kvo::testing
