#pragma once
// A program with its folder in memory that downloads from a logger: what link_scripts and
// link_terminal put their faults to. The runs are cut to a few samples, so that a download is a
// matter of some hundred bytes.
#include "core/config.h"
#include "core/shared_state.h"
#include "link/download_session.h"
#include "link/replay.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/memory_files.h"
#include "tools/logger_simulator/wire_layout.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace kvo::faults {

inline constexpr int samplesOfRun = 12;

// The user: takes every run, and downloads a doubtful one again where `again` says so.
class ObedientUser : public platform::Dialogs {
public:
    bool again = false;
    bool failureTold = false; // that nothing was downloaded
    int asked = 0;            // that bytes were too many or too few
    bool other = false;       // anything that has no place in a download

    platform::Reply messageBox(const std::string&, int, const std::string& title) override {
        if (title == "Download Error" || title == "Download Error !" ||
            title == "Communications Error")
            failureTold = true;
        else if (title == "Download Check")
            return ++asked == 1 && again ? platform::Reply::yes : platform::Reply::no;
        else if (title != "Download Saved" && title != "Warning")
            other = true;
        return platform::Reply::no;
    }
    std::string inputBox(const std::string&, const std::string&, const std::string&) override {
        return "1";
    }
    std::optional<platform::Colour> chooseColour(std::optional<platform::Colour>) override {
        return {};
    }
    std::optional<std::string> chooseFolder(const std::string&, const std::string&) override {
        return {};
    }
    void beep() override {}
    void setHourglass(bool) override {}
};

// Cuts each run short as the transfer is about to begin.
class ShortRuns : public link::DownloadView {
public:
    ShortRuns(core::OpenRun& run, int samples) : m_run(run), m_samples(samples) {}
    bool unloaded = false;
    void setText_Display(const std::string&) override {}
    void setProgressMax(int) override { m_run.SampleCount = static_cast<std::uint16_t>(m_samples); }
    void setProgress(int) override {}
    void hideButtons() override {}
    void unload() override { unloaded = true; }
    void showSoftwareSetup() override {}
    void showFreshRun(const std::string&, const std::string&) override {}
    void refreshChooser(const std::string&) override {}

private:
    core::OpenRun& m_run;
    int m_samples;
};

// A wait that does not go on for ever: past its turns it throws.
class BoundedYield : public platform::Yield {
public:
    explicit BoundedYield(platform::Yield& inner) : m_inner(inner) {}
    long left = 0;
    int turns(int limit) override {
        const int gone = m_inner.turns(limit);
        left -= std::max(gone, 1); // a wait of no time counts too
        if (left < 0) throw std::runtime_error("endless");
        return gone;
    }

private:
    platform::Yield& m_inner;
};

struct Outcome {
    std::optional<platform::Bytes> run; // that was saved
    std::optional<platform::Bytes> raw;
    std::string broken; // what must never be; empty else
    bool failureTold = false;
    int asked = 0;
    bool typeUnknown = false; // required: the form stays, without a word
};

// The run that the bytes of the download give.
inline std::optional<platform::Bytes> replayed(const Outcome& outcome) {
    std::string why;
    const auto raw = outcome.raw ? link::decodeRawSession(*outcome.raw, why) : nullptr;
    return raw == nullptr ? std::nullopt : link::replayDownload(*raw).runFile;
}

// One program at one logger, from download to download.
class DownloadingProgram {
public:
    DownloadingProgram(const simulator::WireLayout& wire, bool inFastMode,
        platform::SerialPort& port, platform::Yield& yield)
        : type(wire.dataType), fast(inFastMode), m_port(port), m_yield(yield),
          m_link(port, m_yield, m_user), m_clock({2026, 11, 15, 14, 52, 7}) {
        core::AppConfig config;
        config.CommPort = 1;
        config.Date_Prompt = config.SpeedWheel_Prompt = 1;
        config.Wheel = 25;
        config.Engine_Correction = config.Clutch_Correction = 1;
        config.Pinion_Correction = config.Speed_Correction = 1;
        config.Text_Magnify.fill(1);
        config.CheckBits = {inFastMode ? std::int16_t{0} : std::int16_t{-1},
            inFastMode ? std::int16_t{-1} : std::int16_t{0}};
        m_state->Config = config;
        m_config = core::encodeConfig(config);
        m_state->AppFolder = "/kvo";
        m_recordSize = wire.sampleBytes;
    }

    // Answers of a whole session: the greeting, the byte that is thrown away, header and samples.
    // The safe mode asks for 32 of a type 43 sample's 44 bytes.
    int answers() const { return 2 + 32 + samples * (type == 43 && !fast ? 32 : m_recordSize); }
    int batch() const { return fast ? 2 * m_recordSize : 1; }

    Outcome download(bool again) {
        constexpr long mostTurns = 4'000'000; // two minutes of the line
        m_files = std::make_unique<testing::MemoryFiles>();
        m_files->put("/kvo/Kvo.Cfg", m_config);
        m_user = {};
        m_user.again = again;
        m_yield.left = mostTurns;
        ShortRuns view(m_state->Run, samples);
        link::DownloadSession session(m_link,
            {m_state->Config, m_state->ConfigKnown, m_state->AppFolder, m_state->Run,
                m_state->Tables},
            view, m_user, m_clock, *m_files);
        Outcome outcome;
        try {
            session.Command_Send_Click();
        } catch (const std::exception& failure) {
            outcome.broken = failure.what();
        }
        outcome.failureTold = m_user.failureTold;
        outcome.asked = m_user.asked;
        outcome.run = m_files->read("/kvo/Data/26111514.52d");
        outcome.raw = m_files->read("/kvo/Backup/26111514.52d.raw");
        // Of a type that it does not know the form says nothing, and stays for the user to leave.
        outcome.typeUnknown = !view.unloaded && !m_user.failureTold && !outcome.run;
        if (m_port.portOpen() && !outcome.typeUnknown) outcome.broken += " port open";
        if (!view.unloaded) session.Cancel_Command_Click();
        if (m_port.portOpen()) outcome.broken += " port open behind Cancel";
        if (m_user.other) outcome.broken += " a box of another kind";
        if (!outcome.run && !outcome.failureTold && !outcome.typeUnknown)
            outcome.broken += " neither a run nor a word";
        return outcome;
    }

    const int type;
    const bool fast;
    int samples = samplesOfRun; // of its runs

private:
    platform::SerialPort& m_port;
    BoundedYield m_yield;
    ObedientUser m_user;
    link::LoggerLink m_link;
    testing::FixedClock m_clock;
    std::unique_ptr<testing::MemoryFiles> m_files;
    std::unique_ptr<core::SharedState> m_state = std::make_unique<core::SharedState>();
    platform::Bytes m_config;
    int m_recordSize = 0;
};

} // namespace kvo::faults
