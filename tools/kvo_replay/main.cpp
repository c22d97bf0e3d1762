// Decodes a download again from the bytes that came, as they are kept in Backup/, and says what is
// to be seen of them.
#include "core/basic/format.h"
#include "core/paths.h"
#include "link/replay.h"
#include "platform/os/os_files.h"
#include "platform/yield.h"
#include "tools/command_line/command_line.h"

#include <cstdio>
#include <iostream>
#include <string>

using namespace kvo;

namespace {

const command_line::Syntax& syntax() {
    static const command_line::Syntax replaySyntax{"kvo_replay FILE [--out FOLDER]",
        "Decodes the download in FILE, a raw session of the folder Backup (...d.raw), and says "
        "what\n"
        "came of the logger. The run is the same to the last bit as the one that was saved.\n"
        "  --out FOLDER  writes the run file there; one that is there already stays\n",
        1, 1, {}, {"--out"}};
    return replaySyntax;
}

int refused(const std::string& why) {
    std::cerr << "kvo_replay: " << why << '\n';
    return 1;
}

const char* modeOf(const link::RawSession& session) {
    constexpr std::size_t fastMode = 1;
    return session.Config.CheckBits[fastMode] != 0 ? "fast" : "safe";
}

// "2 too many", "as many as were asked for"
std::string surplusText(std::int64_t surplus) {
    if (surplus == 0) return "as many as were asked for";
    return std::to_string(surplus < 0 ? -surplus : surplus) +
           (surplus < 0 ? " too few" : " too many");
}

void describe(const link::RawSession& session, const link::Replay& replay) {
    const link::LineRecord& line = session.line;
    const std::int64_t came = line.arrived() - line.arrivedUnasked();
    std::cout << "download:     " << core::Format(session.moment, "yyyy-mm-dd hh:nn") << ", "
              << (session.saved ? "saved as " + replay.runName : "not saved") << '\n';
    if (!session.title.empty()) std::cout << "title:        " << session.title << '\n';
    std::cout << "logger:       data type " << static_cast<int>(session.DataType) << ", "
              << session.SampleCount << " samples, " << modeOf(session) << " mode\n"
              << "time:         "
              << core::Format(replay.turns / (1000.0 * platform::turnsPerMillisecond), "0.0")
              << " s of waiting for the line\n"
              << "bytes before: " << line.arrivedUnasked() << " that nobody had asked for\n"
              << "expected:     " << line.expected() << " bytes, one for each that was sent\n"
              << "came:         " << came << " bytes, " << surplusText(came - line.expected())
              << '\n';
    for (const link::LineEvent& event : line.events)
        if (event.kind == link::LineEvent::Kind::lost)
            std::cout << "line lost:    behind byte " << event.sent << " that was sent\n";
    for (const std::string& told : replay.told) std::cout << "told:         " << told << '\n';
}

int write(const link::Replay& replay, const std::string& folder, platform::Files& files) {
    if (auto there = files.enterable(folder); !there) return refused(there.message);
    const std::string path = core::joined(folder, replay.runName, files);
    if (files.exists(path)) return refused(path + " is there already, and stays as it is");
    if (auto written = files.write(path, *replay.runFile); !written)
        return refused(written.message);
    std::cout << "written:      " << path << '\n';
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    const auto arguments = command_line::read(syntax(), argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    platform_os::OsFiles files;
    const std::string& path = arguments.operands[0];
    const auto file = files.readOrReason(path);
    if (!file) return refused(file.message);
    std::string why;
    const auto session = link::decodeRawSession(*file.content, why);
    if (session == nullptr) return refused(path + " " + why);
    const link::Replay replay = link::replayDownload(*session);
    describe(*session, replay);
    if (!replay.runFile) {
        std::cout << "run:          none, the download fails\n";
        return session->saved ? 1 : 0;
    }
    std::cout << "run:          " << replay.runFile->size() << " bytes\n";
    return arguments.has("--out") ? write(replay, arguments.options.at("--out"), files) : 0;
}
