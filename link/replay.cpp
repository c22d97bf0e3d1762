#include "link/replay.h"

#include "core/basic/numbers.h"
#include "core/config.h"
#include "core/run_index.h"
#include "core/shared_state.h"
#include "link/download_session.h"

#include <map>

namespace kvo::link {
namespace {

using platform::FileFailure;
using platform::Reply;

// A disk that is there for the length of a replay.
class PassingFiles : public platform::Files {
public:
    std::map<std::string, platform::Bytes> content;

    platform::ReadResult readOrReason(const std::string& path) const override {
        const auto found = content.find(path);
        if (found == content.end()) return {{}, path, FileFailure::notFound};
        return {found->second, {}, {}};
    }
    platform::WriteResult write(const std::string& path, const platform::Bytes& bytes) override {
        content[path] = bytes;
        return {};
    }
    platform::WriteResult createEmpty(const std::string& path) override {
        content.try_emplace(path);
        return {};
    }
    platform::WriteResult replaceable(const std::string&) const override { return {}; }
    bool linksElsewhere(const std::string&) const override { return false; }
    platform::WriteResult writable(const std::string&) const override { return {}; }
    std::optional<platform::DateTime> createdOn(const std::string&) const override { return {}; }
    bool exists(const std::string& path) const override { return content.contains(path); }
    bool folderExists(const std::string&) const override { return true; }
    platform::WriteResult enterable(const std::string&) const override { return {}; }
    platform::WriteResult makeFolder(const std::string&) override { return {}; }
    platform::WriteResult remove(const std::string& path) override {
        content.erase(path);
        return {};
    }
    std::vector<std::string> list(const std::string&) const override { return {}; }
    std::optional<std::vector<std::string>> folders(const std::string&) const override {
        return {};
    }
    char separator() const override { return '/'; }
};

class PassingClock : public platform::Clock {
public:
    explicit PassingClock(const platform::DateTime& moment) : m_moment(moment) {}
    platform::DateTime now() const override { return m_moment; }

private:
    platform::DateTime m_moment;
};

// The user of that time: the wheel was right, the run is kept as it came, and nobody looks at it.
class PassingUser : public platform::Dialogs {
public:
    PassingUser(const std::string& title, std::vector<std::string>& told)
        : m_title(title), m_told(told) {}

    Reply messageBox(const std::string& text, int, const std::string& title) override {
        if (title == "Front Wheel Dimeter") return Reply::yes;
        if (title != "Download Saved") m_told.push_back(title + ": " + text);
        return Reply::no;
    }
    std::string inputBox(const std::string&, const std::string&, const std::string&) override {
        return m_title;
    }
    std::optional<platform::Colour> chooseColour(std::optional<platform::Colour>) override {
        return {};
    }
    std::optional<std::string> chooseFolder(const std::string&, const std::string&) override {
        return {};
    }
    void beep() override {}
    void setHourglass(bool) override {}

private:
    std::string m_title;
    std::vector<std::string>& m_told;
};

class PassingView : public DownloadView {
public:
    PassingView(core::OpenRun& run, std::uint16_t samples) : m_run(run), m_samples(samples) {}
    void setText_Display(const std::string&) override {}
    // The file says how many rows its run has.
    void setProgressMax(int) override { m_run.SampleCount = m_samples; }
    void setProgress(int) override {}
    void hideButtons() override {}
    void unload() override {}
    void showSoftwareSetup() override {}
    void showFreshRun(const std::string&, const std::string&) override {}
    void refreshChooser(const std::string&) override {}

private:
    core::OpenRun& m_run;
    std::uint16_t m_samples;
};

std::string titleOf(const RawSession& session) {
    return core::Val(session.title) > 0 ? session.title : "1";
}

// Memory as the download found it.
void putBack(const DownloadStart& start, LoggerLink& link, core::OpenRun& run) {
    link.ReplyByte = start.ReplyByte;
    link.WordValue = start.WordValue;
    link.RpmValue = start.RpmValue;
    link.Header.DataType = start.DataType;
    run.image.samples = start.samples;
    run.image.setup = start.setup;
    run.image.analog = start.analog;
}

} // namespace

Replay replayDownload(const RawSession& session) {
    Replay replay;
    replay.runName = core::runFileName(session.moment);
    PassingFiles files;
    files.content["/Kvo.Cfg"] = core::encodeConfig(session.Config);
    PassingUser user(titleOf(session), replay.told);
    const PassingClock clock(session.moment);
    ReplayedLine line(session.line);
    LoggerLink link(line, line, user);
    const auto state = std::make_unique<core::SharedState>();
    state->Config = session.Config;
    state->Tables = session.Tables;
    PassingView view(state->Run, session.SampleCount);
    DownloadSession download(link,
        {state->Config, state->ConfigKnown, state->AppFolder, state->Run, state->Tables}, view,
        user, clock, files);
    putBack(session.start, link, state->Run);
    download.startWith(session.start.periods);
    download.Command_Send_Click();
    replay.surplus = download.surplus();
    replay.turns = line.turnsGone();
    const auto run = files.content.find("/Data/" + replay.runName);
    if (run != files.content.end()) replay.runFile = run->second;
    return replay;
}

} // namespace kvo::link
