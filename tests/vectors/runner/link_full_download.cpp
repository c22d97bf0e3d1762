// Golden vectors of the whole download: from the click to the run file and the index.
#include "link_functions.h"

#include "core/run_index.h"
#include "core/run_records.h"
#include "link/download_session.h"
#include "tests/support/fixed_clock.h"

#include <stdexcept>

namespace kvo::vectors {
namespace {

class DownloadForm : public link::DownloadView {
public:
    void setText_Display(const std::string&) override {}
    void setProgressMax(int) override {}
    void setProgress(int) override {}
    void hideButtons() override {}
    void unload() override {}
    void showSoftwareSetup() override { throw std::runtime_error("the configuration is refused"); }
    void showFreshRun(const std::string&, const std::string&) override {}
    void refreshChooser(const std::string&) override {}
};

platform::DateTime momentOfList(const Json& list) {
    platform::DateTime moment;
    moment.year = list[0].get<int>();
    moment.month = list[1].get<int>();
    moment.day = list[2].get<int>();
    moment.hour = list[3].get<int>();
    moment.minute = list[4].get<int>();
    moment.second = list[5].get<int>();
    return moment;
}

void putInput(const Case& c, testing::MemoryFiles& files) {
    files.put(
        folderOfDownloads + "/Kvo.Cfg", fileBytes(c.files / c.in.at("config").get<std::string>()));
    for (const auto& [name, source] : c.in.at("tables").items())
        files.put(folderOfDownloads + "/" + name, fileBytes(c.files / source.get<std::string>()));
}

void answer(const Case& c, AnsweringDialogs& dialogs) {
    dialogs.onBox = [](const std::string& text, const std::string& title) {
        if (title == "Front Wheel Dimeter" || title == "Download Saved") return platform::Reply::no;
        if (title == "Warning") return platform::Reply::ok;
        throw std::runtime_error("unexpected box: " + text);
    };
    dialogs.onInput = [&c](const std::string& title) {
        return textOf(title == "Run Title" ? c.in.at("title") : c.in.at("wheel_typed"));
    };
}

core::SharedState& pressStart(Bench& bench, platform::Clock& clock, testing::MemoryFiles& files) {
    core::SharedState& state = *bench.state;
    state.AppFolder = folderOfDownloads;
    state.Config.CommPort = 1;
    DownloadForm form;
    link::DownloadSession session(bench.link,
        {state.Config, state.ConfigKnown, state.AppFolder, state.Run, state.Tables}, form,
        bench.dialogs, clock, files);
    session.Command_Send_Click();
    return state;
}

} // namespace

platform::Bytes payloads(const platform::Bytes& file, int rows, bool withTail) {
    platform::Bytes all;
    const auto take = [&](int record, std::size_t width) {
        const auto bytes = core::runRecord(file, static_cast<std::size_t>(record));
        if (bytes.size() < width) throw std::runtime_error("a record is short");
        all.insert(all.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(width));
    };
    take(1, 2 + static_cast<std::size_t>(file.at(0) + 256 * file.at(1)));
    take(2, core::runHeaderWidth);
    for (int i = 1; i <= rows; ++i) take(2 + i, core::runSampleWidth);
    take(rows + 3, core::runRecordWidth);
    take(rows + 4, core::runRecordWidth);
    if (withTail) take(rows + 5, core::runTailWidth);
    return all;
}

Json fullDownload(const Case& c, const PressStart& press) {
    testing::MemoryFiles files;
    putInput(c, files);
    simulator::ModelLogger logger(fileBytes(c.files / c.in.at("stream").get<std::string>()));
    Bench bench(logger);
    answer(c, bench.dialogs);
    testing::FixedClock clock(momentOfList(c.in.at("clock")));
    const core::SharedState& state = press(bench, clock, files);

    const auto run = files.read(state.Run.path);
    const auto index = files.read(folderOfDownloads + "/Data/KvoData.Ini");
    if (!run || !index) throw std::runtime_error("no run file or no index");
    const auto entries = core::readRunIndex(folderOfDownloads + "/Data/KvoData.Ini", files);
    const platform::Bytes payload = payloads(*run, state.Run.SampleCount);
    Json out{{"file_name", state.Run.path.substr(state.Run.path.rfind('/') + 1)},
        {"header_line", toJson(core::decodeHeaderLine(core::runRecord(*run, 1)).value_or(""))},
        {"payload_sha256", sha256(payload)}, {"payload_length", payload.size()},
        {"records", (run->size() + core::runRecordWidth - 1) / core::runRecordWidth},
        {"SampleCount", state.Run.SampleCount}, {"TimeOffset", state.Run.image.tail.TimeOffset},
        {"PeakSpeedRaw", state.Run.PeakSpeedRaw},
        {"Description", toJson(entries.empty() ? std::string() : entries.back().Description)},
        {"index_record", toJson(std::string(index->begin(), index->end()))},
        {"rows", Json::array()}};
    for (const auto& row : c.expected.at("rows"))
        out["rows"].push_back(rowFields(state.Run.image, row.at("i").get<int>()));
    trimRight(c.expected, "Description");
    return out;
}

// Where there are windows, the real form comes first (download_forms.cpp).
void addFullDownload() {
    add("FullDownload", [](const Case& c) { return fullDownload(c, pressStart); });
}

} // namespace kvo::vectors
