// The n-th allocation of an operation fails, once or all from then on: what was loaded, listed and
// stored is as it was or is wholly new, the user is told, and the next try succeeds. The count is
// the last n; the short form takes every so-manieth.
#include "core/config.h"
#include "core/data_types.h"
#include "core/default_config.h"
#include "core/paths.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "core/shared_state.h"
#include "graph/course.h"
#include "graph/drawing.h"
#include "graph/printing.h"
#include "library/import.h"
#include "platform/draw/display_list.h"
#include "platform/memory.h"
#include "platform/unanswered_dialogs.h"
#include "proof.h"
#include "tests/support/memory_files.h"
#include "tests/support/recording_surface.h"
#include "tools/logger_simulator/model_run.h"
#include "tools/logger_simulator/run_model.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <functional>
#include <memory>

using namespace kvo;

namespace {

// Allocations up to the one that fails; negative: none does.
std::int64_t untilFailure = -1;
bool fromThenOn = false;

bool failsNow() {
    if (untilFailure < 0) return false;
    if (untilFailure > 0) {
        --untilFailure;
        return false;
    }
    if (!fromThenOn) untilFailure = -1;
    return true;
}

} // namespace

void* operator new(std::size_t size) {
    void* const memory = failsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

// What is told without memory goes to the error output: it is a file here, of which the length
// counts.
class ErrorOutput {
public:
    ErrorOutput() : m_file(std::tmpfile()), m_terminal(::dup(STDERR_FILENO)) {
        if (m_file == nullptr) std::exit(2);
        ::dup2(::fileno(m_file), STDERR_FILENO);
    }
    ~ErrorOutput() {
        ::dup2(m_terminal, STDERR_FILENO);
        ::close(m_terminal);
        std::fclose(m_file);
    }
    long length() const { return static_cast<long>(::lseek(::fileno(m_file), 0, SEEK_END)); }

private:
    std::FILE* m_file;
    int m_terminal;
};

// The user says yes to everything, and reads what is said about memory.
class Answering : public platform::UnansweredDialogs {
public:
    int told = 0;
    bool hourglass = false;
    platform::Reply messageBox(const std::string& text, int style, const std::string&) override {
        const std::string_view words = text;
        if (words.find("emory") != std::string_view::npos || words.starts_with("Error Printing"))
            ++told;
        switch (style & 0x0F) {
        case platform::boxStyle::yesNo:
        case platform::boxStyle::yesNoCancel:
            return platform::Reply::yes;
        case platform::boxStyle::retryCancel:
            return platform::Reply::cancel;
        default:
            return platform::Reply::ok;
        }
    }
    std::string inputBox(const std::string&, const std::string&, const std::string&) override {
        return "7";
    }
    void setHourglass(bool on) override { hourglass = on; }
};

constexpr std::array types{32, 25, 20}; // of the runs 1 to 3

std::string pathOf(int number) {
    return "/kvo/Data/24060512.3" + std::to_string(number) + "d";
}

testing::MemoryFiles storedRuns() {
    testing::MemoryFiles files;
    for (int number = 1; number <= 3; ++number) {
        const int type = types[static_cast<std::size_t>(number - 1)];
        const core::DataTypeFacts* facts = core::dataTypeFacts(type);
        auto run = std::make_unique<core::OpenRun>();
        run->path = pathOf(number);
        run->DataType = static_cast<std::uint8_t>(type);
        run->SampleCount = static_cast<std::uint16_t>(facts->rows);
        simulator::fillRun(run->image, type, facts->rows, facts->timeOffset, 1U);
        const std::string text =
            " Date:Wed 05 Jun 2024 Run: " + std::to_string(number) + " A long title of a run#";
        const core::AppConfig config = core::defaultConfig();
        const core::LoggerIdentity logger;
        core::RunInfo info;
        info.Text_ET = "a time that is longer than it is";
        if (!core::SaveRun(*run, {logger, text, config}, "/kvo", files) ||
            !core::AddRunToIndex(
                "/kvo", core::indexEntryOf(run->path, text), core::IndexOrder::asItIs, files) ||
            !core::SaveRunInfo("/kvo", core::infoFilePath(run->path), run->path, info, files))
            std::exit(2);
    }
    std::string dos = "23 VRN old program\r\n4 2 1 13 8249 53 49 8488 11628 2.11 3327 18.15 6885 "
                      "17.21 4380 4.18 \r\n";
    for (int i = 1; i <= 5; ++i)
        dos += std::to_string(i) + " 6555 9236 440 7380 29 101 102 103 104 105 106 107 77 \r\n";
    files.put("/disk/a.12d", *files.read(pathOf(2)));
    files.put("/disk/a.12i", *files.read(core::infoFilePath(pathOf(2))));
    files.put("/disk/old.13", platform::Bytes(dos.begin(), dos.end()));
    return files;
}

const testing::MemoryFiles& stored() {
    static const testing::MemoryFiles files = storedRuns();
    return files;
}

// A job that keeps what it is given as the program's own does, and says what became of it.
class KeptJob : public platform::PrintJob {
public:
    explicit KeptJob(int& open) : m_open(open) { ++m_open; }
    ~KeptJob() override { --m_open; }
    platform::Surface& surface() override { return m_surface; }
    void setFrame(const platform::PageFrame&) override {}
    void setDigitWidth(float) override {}
    void printAt(float x, float y, std::string_view text, platform::TextSide) override {
        m_surface.setCurrentX(x);
        m_surface.setCurrentY(y);
        m_surface.print(text);
    }
    float textWidth(std::string_view text) const override {
        return static_cast<float>(text.size());
    }
    float lineHeight() const override { return 1; }
    void drawImage(const platform::PixelImage&) override {}
    int page() const override { return 1; }
    void whilePrinting(std::function<bool(int, int)> goesOn) override {
        m_goesOn = std::move(goesOn);
    }
    bool whitePaper() const override { return true; }
    platform::PrintResult newPage(platform::Orientation) override { return {}; }
    platform::PrintResult endDoc() override { return {}; }
    void kill() override {}

private:
    int& m_open;
    platform::DisplayListSurface m_surface;
    std::function<bool(int, int)> m_goesOn;
};

class KeptPrinter : public platform::Printer {
public:
    int open = 0;
    platform::PrintStart begin(const platform::PrintRequest&) override {
        return {{}, std::make_unique<KeptJob>(open)};
    }
};

// The graph window, drawing on a display list, and all that stands behind it.
struct World : graph::CourseView, graph::TrendHost, library::ImportView, graph::PrintProgress {
    World() {
        state->AppFolder = "/kvo";
        state->Config = core::defaultConfig();
        for (auto& visible : {&state->Config.EngineVisible, &state->Config.InputVisible})
            *visible = core::flagOn;
        runs.read("/kvo", files);
        forgetDrawing();
        course.show(runOf(1));
        forgetDrawing();
    }
    // What is drawn next takes all its memory anew.
    void forgetDrawing() {
        const platform::UserScale scale = surface.scale();
        surface = {};
        surface.setScale(scale.left, scale.top, scale.right, scale.bottom);
        drawing.emplace(state->Config, state->Run, state->Overlay, view, *this);
    }
    core::ChosenRun runOf(int number) const {
        const std::string path = pathOf(number);
        return {path, core::infoFilePath(path), core::baseName(path), "described"};
    }

    std::optional<core::ChosenRun> chooseRun(const std::string&) override { return runOf(3); }
    void chooseRunsToDelete() override {}
    void showState() override { title = course.caption(); }
    void emptyLabels() override {}
    void emptyOverlayLabels() override {}
    void clearSurface() override {}
    void setScaleRight(int right) override {
        surface.setScale(0, graph::trendTop, static_cast<float>(right), 0);
    }
    void showChannelsForType(int) override {}
    void drawTrend() override { (void)drawing->DrawTrend(); }
    void overLayDraw() override { drawing->OverLayDraw(); }
    void timeLine() override {}
    platform::Surface& trend() override { return surface; }
    void setTrendHourglass(bool on) override { hourglass = on; }
    void showLoading(const std::string& text, const std::string&) override {
        loading = !text.empty();
    }
    void hideLoading() override { loading = false; }
    void setProgressMax(double) override {}
    void setProgressValue(double) override {}
    void showLabels(const graph::LabelVisibility&) override {}
    bool clutchLabelVisible() const override { return true; }
    void setOverlayLabelColour(int, std::int32_t) override {}
    void showFile(const std::string&, int, int) override {}
    void setProgress(int, int) override {}
    void clearProgress() override {}
    void showRuns() override {}
    bool goesOn(int, int) override { return true; }

    testing::MemoryFiles files = stored();
    Answering dialogs;
    std::unique_ptr<core::SharedState> state = std::make_unique<core::SharedState>();
    library::RunList runs;
    graph::GraphView view;
    platform::DisplayListSurface surface;
    std::optional<graph::TrendDrawing> drawing;
    graph::Course course{
        {state->Config, state->ConfigKnown, state->AppFolder, state->Run, state->Overlay, runs},
        view, *this, dialogs, files};
    library::Import import{{state->Config, state->AppFolder, runs}, *this, dialogs, files};
    KeptPrinter printer;
    std::string title;
    bool hourglass = false;
    bool loading = false;
};

// What an operation may leave: each is told apart from any mixture of two.
std::string shown(const core::OpenRun& run) {
    std::string all = run.path + "|" + run.infoPath + "|" + run.headerLine + "|" +
                      run.times.Text_ET + "|" + std::to_string(run.DataType) + "|" +
                      std::to_string(run.SampleCount) + "|" + std::to_string(run.PeakSpeedRaw);
    core::ByteWriter rows(core::maxSamples * core::runSampleWidth);
    for (const core::RunSample& row : run.image.samples) core::encode(rows, row);
    all.append(rows.bytes().begin(), rows.bytes().end());
    for (const std::string& name : run.image.setup.AnalogName) all += name;
    return all + std::to_string(run.image.tail.TimeOffset);
}

std::string listed(const library::RunList& runs) {
    std::string all = std::to_string(runs.chosenRow());
    for (const auto& row : runs.rows()) all += "|" + row.FileName + "|" + row.Description;
    return all;
}

std::string fileText(const World& world, const std::string& path) {
    const auto content = world.files.read(path);
    return content ? std::string(content->begin(), content->end()) : "none";
}

// One thing of each row: the run, the overlay, the list, each file.
std::vector<std::string> thingsOf(const World& world) {
    const bool overlaid = world.course.overlayLoaded();
    std::vector<std::string> all{shown(world.state->Run),
        overlaid ? shown(world.state->Overlay) : "none", listed(world.runs), world.course.caption(),
        fileText(world, "/kvo/Data/KvoData.Ini")};
    for (const char* name : {"24060512.31d", "24060512.32d", "24060512.33d", "26111500.12d",
             "26111500.12i", "26111500.13d"})
        all.push_back(fileText(world, std::string("/kvo/Data/") + name));
    return all;
}

void paint(World& world) {
    static std::vector<std::uint32_t> pixels(300 * 200);
    struct NoText : platform::TextPainter {
        void paintText(platform::PixelPoint, std::string_view, float, platform::Colour) override {}
    } noText;
    platform::Raster raster(pixels.data(), 300, {0, 0, 300, 200});
    world.surface.kept().paint(raster, noText, {300, 200, 1}, 0, world.surface.kept().size());
    testing::RecordingSurface copy;
    world.surface.kept().drawOn(copy);
}

struct Operation {
    const char* name;
    std::function<void(World&)> run;
};

const std::array operations{
    Operation{"load", [](World& world) { world.course.Mnu_LoadData(); }},
    Operation{"overlay", [](World& world) { world.course.Mnu_Overlay(); }},
    Operation{"read the index",
        [](World& world) {
            const std::string unread = world.runs.read("/kvo", world.files);
            if (!unread.empty()) world.dialogs.messageBox(unread, 16, "Run index");
        }},
    Operation{"add to the index",
        [](World& world) {
            const core::RunIndexEntry entry{"24060512.39d", "Wed 05 Jun 2024 Run: 9 of the day"};
            const auto added =
                core::AddRunToIndex("/kvo", entry, core::IndexOrder::sorted, world.files);
            if (!added) world.dialogs.messageBox(added.message, 16, "Run index");
        }},
    Operation{"import runs",
        [](World& world) {
            world.import.Data_File();
            (void)world.import.Butten_Import(library::ImportMode::windows, "/disk", {"a.12d"});
        }},
    Operation{"import a text",
        [](World& world) {
            world.import.Data_File();
            (void)world.import.Butten_Import(library::ImportMode::dos, "/disk", {"old.13"});
        }},
    Operation{"draw", [](World& world) { world.course.redraw(); }},
    Operation{"print",
        [](World& world) {
            const graph::PictureInput input{world.state->Config, world.state->Run,
                world.state->Overlay, world.view, {}, world.surface.scale(), {}, true, "", {}};
            graph::Mnu_Print(graph::printScreenAndData, input, world.state->AnalogPicture,
                {world.printer, world.dialogs, world, world});
        }},
};

// As the event loop does: what comes up to it is told there.
void asEvent(World& world, const Operation& operation) {
    platform::withinMemory(world.dialogs, "do this", [&] { operation.run(world); });
    world.dialogs.setHourglass(false);
}

class NoMemory {
public:
    NoMemory(faults::Proof& proof, const Operation& operation)
        : m_proof(proof), m_operation(operation), m_before(thingsOf(World())) {
        World world;
        asEvent(world, operation);
        m_after = thingsOf(world);
    }

    // False where the operation takes fewer than n allocations.
    bool fail(std::int64_t n, bool on) {
        World world;
        bool spoken = false;
        bool reached = false;
        {
            const ErrorOutput output;
            untilFailure = n;
            fromThenOn = on;
            asEvent(world, m_operation);
            reached = on ? untilFailure == 0 : untilFailure == -1;
            untilFailure = -1;
            spoken = world.dialogs.told > 0 || output.length() > 0;
        }
        if (!reached) return false;
        m_case = std::string(m_operation.name) + ", allocation " + std::to_string(n) +
                 (on ? " and all behind it" : "");
        judge(world, spoken);
        return true;
    }

private:
    void judge(World& world, bool spoken) {
        const auto things = thingsOf(world);
        for (std::size_t i = 0; i < things.size(); ++i)
            m_proof.check(things[i] == m_before[i] || things[i] == m_after[i],
                m_case + ": thing " + std::to_string(i) + " is neither old nor new");
        m_proof.check(spoken || things == m_after, m_case + ": not told");
        m_proof.check(world.view.LoadingBar == 0, m_case + ": still loading");
        m_proof.check(!world.import.running(), m_case + ": still importing");
        m_proof.check(world.printer.open == 0, m_case + ": a print job is open");
        paint(world);
        world.dialogs.told = 0;
        if (world.course.overlayLoaded() && m_operation.name == std::string_view("overlay"))
            world.course.Mnu_Overlay();
        asEvent(world, m_operation);
        m_proof.check(world.dialogs.told == 0, m_case + ": the next try is refused");
        m_proof.check(!world.hourglass && !world.loading, m_case + ": still drawing");
        paint(world);
        // A list to which something was added gets it twice.
        const auto again = thingsOf(world);
        m_proof.check(again[0] == m_after[0] && again[1] == m_after[1] && again[3] == m_after[3],
            m_case + ": the next try ends elsewhere");
    }

    faults::Proof& m_proof;
    const Operation& m_operation;
    std::vector<std::string> m_before;
    std::vector<std::string> m_after;
    std::string m_case;
};

} // namespace

int main(int argc, char* argv[]) {
    const faults::Options options = faults::optionsOf(argc, argv);
    faults::Proof proof(options);
    const std::int64_t last = options.count > 0 ? options.count : 5000;
    std::int64_t cases = 0;
    std::string reached;
    for (const Operation& operation : operations) {
        NoMemory noMemory(proof, operation);
        std::int64_t most = 0;
        for (const bool on : {false, true}) {
            // The first ones alone in the short form, and then fewer and fewer.
            for (std::int64_t n = 0; n<last; n += options.count> 0 ? 1 : 1 + n / 4) {
                if (!noMemory.fail(n, on)) break;
                ++cases;
                most = std::max(most, n + 1);
            }
        }
        reached +=
            std::string(reached.empty() ? "" : ", ") + operation.name + " " + std::to_string(most);
    }
    return proof.end("allocation n fails", cases, "failures", "highest n: " + reached);
}
