#pragma once
// What the files of the link's golden vectors share: a link with a modelled logger at its far end.
#include "core/shared_state.h"
#include "link/download.h"
#include "link/logger_link.h"
#include "platform/clock.h"
#include "tests/support/memory_files.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"
#include "vector_tools.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kvo::vectors {

// Dialogs that a line of input answers: every box by `onBox` (OK without it), every input box by
// `onInput`.
class AnsweringDialogs : public platform::Dialogs {
public:
    std::function<platform::Reply(const std::string& text, const std::string& title)> onBox;
    std::function<std::string(const std::string& title)> onInput;
    std::vector<std::string> texts; // of the boxes

    platform::Reply messageBox(const std::string& text, int, const std::string& title) override {
        texts.push_back(text);
        return onBox ? onBox(text, title) : platform::Reply::ok;
    }
    std::string inputBox(
        const std::string&, const std::string& title, const std::string&) override {
        return onInput ? onInput(title) : std::string();
    }
    std::optional<platform::Colour> chooseColour(std::optional<platform::Colour>) override {
        return std::nullopt;
    }
    std::optional<std::string> chooseFolder(const std::string&, const std::string&) override {
        return std::nullopt;
    }
    void beep() override {}
    void setHourglass(bool) override {}
};

// A link over a virtual line, on port 1.
class Bench {
    std::unique_ptr<simulator::ModelLogger> m_logger;
    std::unique_ptr<simulator::FaultyEnd> m_faulty;

public:
    // A logger that gives a stream, the port open.
    explicit Bench(platform::Bytes stream, simulator::Fault fault = {});
    // Anything else, the port closed.
    explicit Bench(simulator::LineEnd& far);

    testing::VirtualLine line;
    AnsweringDialogs dialogs;
    std::unique_ptr<core::SharedState> state;
    link::LoggerLink link;
};

// A row of the run under the names of its fields, with its number as "i".
Json rowFields(const core::RunImage& run, int i);
// CRC-32 over rows 1 to count as they lie packed in a run file.
std::uint32_t rowsCrc(const core::RunImage& run, int count);

// Rows and periods before the transfer, made from the number k; fields that the run's type leaves
// alone are zero. 0: all zero.
void presetRun(int k, core::OpenRun& run, link::PulsePeriods& periods);
// A run file's payloads one behind the other: record 1 with its length word, the others at their
// widths.
platform::Bytes payloads(const platform::Bytes& file, int rows, bool withTail = true);

// Runs one line of FullDownload: `press` presses Start Download of a form on a fresh program in
// `folderOfDownloads` and gives the state that the run ended in.
using PressStart = std::function<core::SharedState&(
    Bench& bench, platform::Clock& clock, testing::MemoryFiles& files)>;
inline const std::string folderOfDownloads = "/kvo";
Json fullDownload(const Case& c, const PressStart& press);

void addFullDownload();
void addLinkPitFunctions();

} // namespace kvo::vectors
