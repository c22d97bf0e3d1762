#include "tests/fuzz/lookers.h"

#include "core/analog_tables.h"
#include "core/basic/numbers.h"
#include "core/config.h"
#include "core/data_types.h"
#include "core/run_file.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "core/run_times.h"
#include "core/vehicle_setup.h"
#include "library/chooser_list.h"
#include "library/text_run.h"
#include "link/decode.h"
#include "link/download.h"
#include "link/replay.h"
#include "platform/unanswered_dialogs.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace kvo::fuzz {
namespace {

using platform::Bytes;

void mustHold(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

// A disk with one file, whatever it is called. Nothing is written on it.
class OneFile : public platform::Files {
public:
    explicit OneFile(Input content) : m_content(content) {}
    platform::ReadResult readOrReason(const std::string&) const override {
        return {Bytes(m_content.begin(), m_content.end()), {}, {}};
    }
    platform::WriteResult write(const std::string&, const Bytes&) override { return no(); }
    platform::WriteResult createEmpty(const std::string&) override { return no(); }
    platform::WriteResult replaceable(const std::string&) const override { return {}; }
    bool linksElsewhere(const std::string&) const override { return false; }
    std::optional<platform::DateTime> createdOn(const std::string&) const override { return {}; }
    bool exists(const std::string&) const override { return true; }
    bool folderExists(const std::string&) const override { return true; }
    platform::WriteResult enterable(const std::string&) const override { return {}; }
    platform::WriteResult writable(const std::string&) const override { return {}; }
    platform::WriteResult makeFolder(const std::string&) override { return no(); }
    platform::WriteResult remove(const std::string&) override { return no(); }
    std::vector<std::string> list(const std::string&) const override { return {}; }
    std::optional<std::vector<std::string>> folders(const std::string&) const override {
        return {};
    }
    char separator() const override { return '/'; }

private:
    static platform::WriteResult no() {
        mustHold(false, "a reader that writes");
        return {};
    }
    Input m_content;
};

void checkRun(const core::OpenRun& run, const core::LoadOutcome& outcome) {
    mustHold(run.DataType == outcome.DataType, "a type that the run does not have");
    mustHold(run.SampleCount <= core::maxSamples, "more samples than rows");
    mustHold(run.image.tail.TimeOffset >= 1, "a time offset below 1");
}

// The line to a logger that answers every byte with what comes next of the input. No time goes by:
// a wait is over at once.
class FedLine : public platform::SerialPort, public platform::Yield {
public:
    explicit FedLine(Input bytes) : m_bytes(bytes) {}
    std::vector<platform::PortState> portStates() const override { return {}; }
    void setCommPort(int number) override { m_port = number; }
    int commPort() const override { return m_port; }
    std::string deviceOf(int) const override { return {}; }
    void setSettings(std::string_view) override {}
    void setInputLen(int bytes) override { m_inputLen = bytes; }
    int inputLen() const override { return m_inputLen; }
    void setPortOpen(bool open) override { m_open = open; }
    bool portOpen() const override { return m_open; }
    int inBufferCount() override { return static_cast<int>(m_waiting); }
    int outBufferCount() override { return 0; }
    void output(std::string_view bytes) override {
        m_waiting += std::min(bytes.size(), m_bytes.size() - m_waiting);
    }
    std::string input() override {
        const std::size_t wanted =
            m_inputLen > 0 ? static_cast<std::size_t>(m_inputLen) : m_waiting;
        const Input taken = m_bytes.first(std::min(wanted, m_waiting));
        m_bytes = m_bytes.subspan(taken.size());
        m_waiting -= taken.size();
        return std::string(taken.begin(), taken.end());
    }
    int commEvent() const override { return 0; }
    platform::PortError openError() const override { return platform::PortError::none; }
    std::string openErrorText() const override { return {}; }
    int turns(int limit) override { return limit; }

private:
    Input m_bytes;
    std::size_t m_waiting = 0;
    int m_port = 1;
    int m_inputLen = 0;
    bool m_open = false;
};

class NoView : public link::DownloadView {
public:
    void setText_Display(const std::string&) override {}
    void setProgressMax(int) override {}
    void setProgress(int) override {}
    void hideButtons() override {}
    void unload() override {}
    void showSoftwareSetup() override {}
    void showFreshRun(const std::string&, const std::string&) override {}
    void refreshChooser(const std::string&) override {}
};

} // namespace

void lookAtRun(Input file) {
    static const auto run = std::make_unique<core::OpenRun>();
    OneFile files(file);
    if (const auto outcome = LoadRun("/kvo/Data/26111514.52d", *run, files))
        checkRun(*run, outcome);
}

void lookAtOverlay(Input file) {
    static const auto overlay = std::make_unique<core::OpenRun>();
    OneFile files(file);
    if (const auto outcome = LoadOverlayRun("/kvo/Data/26111514.52d", *overlay, files))
        checkRun(*overlay, outcome);
}

void lookAtIndex(Input file) {
    const OneFile files(file);
    const auto entries = core::readRunIndex("/kvo/Data/KvoData.Ini", files);
    mustHold(entries.size() == (file.size() + 239) / 240, "records were lost or made");
    (void)library::rowToOpenOn(entries, "26111514.52d");
    for (const auto& entry : entries) {
        (void)core::RunDateKey(entry.Description);
        (void)core::suggestTitle(entry.Description, {2026, 11, 15, 0, 0, 0});
        const std::string path = library::dataFilePath("/kvo", entry.FileName, files);
        mustHold(path.empty() || path.starts_with("/kvo/Data/"), "a path that leaves the folder");
        mustHold(path.find("..") == std::string::npos, "a path that leaves the folder by dots");
    }
}

void lookAtConfig(Input file) {
    static core::AppConfig config;
    const bool whole = core::decodeConfig(Bytes(file.begin(), file.end()), config);
    mustHold(!whole || file.size() >= core::encodeConfig(config).size(), "a record made up");
}

void lookAtInfo(Input file) {
    OneFile files(file);
    static const core::VehicleSetup defaults;
    const core::RunInfo info = core::LoadRunInfo("/kvo/Data/26111514.52i", defaults, files);
    const core::TrackTimes times = core::LoadRunTimes("/kvo/Data/26111514.52i", files);
    mustHold(info.Text_ET == times.Text_ET, "two elapsed times");
}

void lookAtTimes(Input file) {
    OneFile files(file);
    const int count = core::LoadTimesTable("/kvo", files).RunTimesCount;
    mustHold(count >= 1 && count <= 26, "a count that the table does not have");
}

void lookAtTable(Input file) {
    static const auto tables = std::make_unique<core::AnalogTables>();
    OneFile files(file);
    const int channel = file.empty() ? 1 : 1 + file[0] % 8;
    (void)core::LoadAnalogTable("/kvo", "Analog1.Dat", channel, *tables, files);
    for (unsigned raw = 0; raw < 256; ++raw)
        for (const float scale : {0.0F, 1.0F, -0.5F})
            (void)core::applyAnalogTable((*tables)[channel], scale, static_cast<std::uint8_t>(raw));
}

void lookAtSetup(Input file) {
    OneFile files(file);
    for (const auto& line : core::LoadVehicleSetup("/kvo", files))
        mustHold(line.Name.size() <= 17 && line.Value.size() <= 17, "a text that is too long");
}

void lookAtText(Input file) {
    static const auto run = std::make_unique<core::OpenRun>();
    static const core::AppConfig config;
    const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    const library::TextRunOutcome outcome = library::readTextRun(text, config, *run);
    if (!outcome.known) return;
    const core::DataTypeFacts* facts = core::dataTypeFacts(run->DataType);
    mustHold(facts != nullptr && facts->importRows > 0, "a type that has no text");
    mustHold(run->SampleCount >= 1 && run->SampleCount <= facts->importRows, "rows of no type");
}

void lookAtSerial(Input bytes) {
    static const auto run = std::make_unique<core::OpenRun>();
    static const auto periods = std::make_unique<link::PulsePeriods>();
    static const core::AppConfig config;
    const bool fast = !bytes.empty() && bytes[0] % 2 != 0;
    FedLine line(bytes.subspan(bytes.empty() ? 0 : 1));
    platform::UnansweredDialogs dialogs;
    NoView view;
    link::LoggerLink logger(line, line, dialogs);
    logger.OpenLoggerPort(1);
    if (!logger.greetLogger()) return;
    logger.ReadLoggerHeader();
    if (logger.LinkFailed != 0) return;
    run->DataType = logger.Header.DataType;
    run->image.header = logger.Header.RunHeader;
    if (!link::prepareDownload(*run)) return;
    mustHold(run->SampleCount <= core::maxSamples, "more samples than rows");
    link::Download download(logger, *run, *periods, view, dialogs);
    fast ? download.DownloadFast() : download.DownloadSafe();
    if (logger.LinkFailed == 0) link::convertPulses(*run, config, *periods);
}

void lookAtRaw(Input file) {
    Bytes session(file.begin(), file.end());
    constexpr std::size_t sumBytes = 4;
    if (session.size() >= sumBytes) {
        const std::size_t content = session.size() - sumBytes;
        const std::uint32_t sum = link::rawSessionSum(Input(session).first(content));
        for (unsigned i = 0; i < sumBytes; ++i)
            session[content + i] = static_cast<std::uint8_t>(sum >> (8 * i));
    }
    std::string why;
    const auto read = link::decodeRawSession(session, why);
    mustHold((read == nullptr) == !why.empty(), "a refusal without a word");
    if (read == nullptr) return;
    mustHold(read->SampleCount <= core::maxSamples, "more samples than rows");
    const link::Replay replay = link::replayDownload(*read);
    const std::size_t rows = std::size_t{read->SampleCount} + 4;
    mustHold(!replay.runFile || replay.runFile->size() >= rows * core::runRecordWidth,
        "a run that lacks rows");
}

Reader lookerNamed(std::string_view name) {
    struct Row {
        std::string_view name;
        Reader reader;
    };
    for (const Row& row : {Row{"run", lookAtRun}, Row{"overlay", lookAtOverlay},
             Row{"index", lookAtIndex}, Row{"config", lookAtConfig}, Row{"info", lookAtInfo},
             Row{"times", lookAtTimes}, Row{"table", lookAtTable}, Row{"setup", lookAtSetup},
             Row{"text", lookAtText}, Row{"serial", lookAtSerial}, Row{"raw", lookAtRaw}})
        if (row.name == name) return row.reader;
    return nullptr;
}

} // namespace kvo::fuzz
