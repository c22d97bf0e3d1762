// Golden vectors of the time line, the pointer and the tools.
#include "channels/derived.h"
#include "graph/cursor.h"
#include "graph/curves.h"
#include "graph/grid.h"
#include "graph/run_tools.h"
#include "graph_functions.h"
#include "tests/support/graph_calls.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include <array>

namespace kvo::vectors {

using namespace kvo::channels;
using namespace kvo::graph;

static std::string keyOfLabel(int channel, bool overlay) {
    const ChannelFacts& facts = channelFacts(channel);
    return std::string(overlay ? facts.overlayLabel.name : facts.valueLabel.name);
}

// Every label as the window has it; null is a label that was not filled.
static Json labelsJson(const std::vector<LabelText>& labels) {
    Json got = Json::object();
    const auto place = [&got](int channel, bool overlay) -> Json& {
        const int number = channelFacts(channel).number;
        Json& label = got[keyOfLabel(channel, overlay)];
        return number == 0 ? label : label[std::to_string(number)];
    };
    for (int channel = 0; channel < channelCount; ++channel) {
        place(channel, false) = nullptr;
        place(channel, true) = nullptr;
    }
    for (const LabelText& label : labels) place(label.channel, label.overlay) = toJson(label.text);
    return got;
}

static Json shownAtLine(const Case& c) {
    const auto made = graphCase(c);
    made->view.CursorSample = c.in.at("CursorSample").get<std::int16_t>();
    if (!testing::onRun(made->state, made->view.CursorSample))
        return Json{{"beep", true}, {"LoggerTime", nullptr}};
    const ReadOutTexts texts =
        testing::timeLineTexts(made->state, made->view, made->view.CursorSample);
    Json got = labelsJson(texts.labels);
    got["beep"] = false;
    got["LoggerTime"] = texts.loggerTime;
    return got;
}

static Json shownAverage(const Case& c) {
    const auto made = graphCase(c);
    made->view.CursorSample = c.in.value("CursorSample", std::int16_t{0});
    const AverageTexts texts = testing::AverageRange(
        made->state, made->view, c.in.at("a").get<float>(), c.in.at("b").get<float>());
    if (texts.outside) return Json{{"beep", true}, {"LoggerTime", nullptr}};
    if (texts.labels.empty()) return Json{{"error", true}};
    Json got = labelsJson(texts.labels);
    got["beep"] = false;
    got["LoggerTime"] = texts.loggerTime;
    return got;
}

static Json under(GraphCase& made, float x, float y) {
    const core::SharedState& state = made.state;
    const PointerLabels labels{[&state](int channel) { return channelOn(state.Config, channel); },
        [&state](int n) { return state.Run.image.setup.AnalogName[n]; }};
    const auto text = testing::textUnderPointer(made.state, made.view, x, y, labels);
    return text ? toJson(*text) : Json();
}

static Json shownUnderMouse(const Case& c) {
    const auto made = graphCase(c);
    made->view.RpmScale = static_cast<std::int16_t>(made->state.Config.MaxRpm + 6);
    made->view.MphScale = mphScaleFor(made->state.Run.PeakSpeedRaw);
    return Json{{"text", under(*made, c.in.at("X").get<float>(), c.in.at("Y").get<float>())}};
}

// The text under the mouse at sample 1, where only one channel is on.
static Json underAtFirst(GraphCase& made, int channel, const Reading& drawn) {
    made.state.Run.SampleCount = 1;
    made.state.Overlay.SampleCount = 1;
    visibleFlag(made.state.Config, channel) = -1;
    made.view.RpmScale = 8;
    made.view.MphScale = 6;
    if (!drawn.hasValue()) return nullptr;
    const auto y = curveHeight(
        made.state.Config, channel, drawn.value, made.view.RpmScale, made.view.MphScale);
    return under(made, 1, y.value());
}

static Json readRatio(const Case& c) {
    const auto made = std::make_unique<GraphCase>();
    core::RunSample& row = made->state.Run.image.samples[1];
    row.EngineRpm = c.in.at("EngineRpm").get<std::int16_t>();
    row.OutputRpm = c.in.at("OutputRpm").get<std::int16_t>();
    core::RunHeader& header = made->state.Run.image.header;
    header.CrankGearTeeth = c.in.at("CrankGearTeeth").get<std::uint8_t>();
    header.BasketGearTeeth = c.in.at("BasketGearTeeth").get<std::uint8_t>();
    const Reading mouse = ratioMouse(primaryRatio(header).value(), row.EngineRpm, row.OutputRpm);
    return Json{{"label", ratioRead(row.EngineRpm, row.OutputRpm)},
        {"printed", ratioPrinted(row.EngineRpm, row.OutputRpm)},
        {"mouse", underAtFirst(*made, ratioChannel, mouse)}};
}

static Json readTyreGrowth(const Case& c) {
    const auto made = std::make_unique<GraphCase>();
    made->view.OverlayLoaded = -1;
    core::RunSample& row = made->state.Overlay.image.samples[1];
    row.SpeedRaw = c.in.at("SpeedRaw").get<std::int32_t>();
    row.OutputRpm = c.in.at("OutputRpm").get<std::int16_t>();
    core::RunAnalogBlock& block = made->state.Overlay.image.analog;
    block.CrownTeeth = c.in.at("CrownTeeth").get<float>();
    block.PinionTeeth = c.in.at("PinionTeeth").get<float>();
    block.RearWheelDiameter = c.in.at("RearWheelDiameter").get<float>();
    const double speed = mph(row.SpeedRaw);
    Json got{{"label", tyreGrowthRead(speed, row.OutputRpm, mphRead(speed), block).text}};
    got["overlayMouse"] =
        underAtFirst(*made, tyreGrowthChannel, tyreGrowthDrawn(row.SpeedRaw, row.OutputRpm, block));
    return got;
}

static Json movedCursor(const Case& c, double x) {
    core::SharedState state;
    state.Run.SampleCount = c.in.at("SampleCount").get<std::uint16_t>();
    const int sample = cursorAt(x).value();
    return Json{{"CursorSample", sample}, {"beep", !testing::onRun(state, sample)}};
}

static Json keyedCursor(const Case& c) {
    const int keys = c.in.at("Shift").get<int>();
    const int step =
        cursorStep(c.in.at("key") == "Right", (keys & 1) != 0, (keys & 2) != 0, (keys & 4) != 0);
    return movedCursor(c, c.in.at("CurrentX").get<double>() + step);
}

static platform::Reply replyOf(const Json& box) {
    return box == "Yes" ? platform::Reply::yes : platform::Reply::no;
}

// The line of a question that names the shift.
static std::string askedLine(const std::string& prompt) {
    for (std::size_t from = 0; from < prompt.size();) {
        const std::size_t end = std::min(prompt.find('\n', from), prompt.size());
        const std::string line = prompt.substr(from, end - from);
        if (line.find("Shift time") != std::string::npos) return line;
        from = end + 1;
    }
    return {};
}

// Answers from lists, and remembers the questions.
class ListedAnswers : public testing::ScriptedDialogs {
public:
    explicit ListedAnswers(const Json& in) : m_in(in) {}
    std::vector<std::string> prompts;
    std::vector<std::string> boxes;
    platform::Reply messageBox(const std::string& text, int, const std::string&) override {
        boxes.push_back(text);
        const Json replies = m_in.value("boxes", Json::array());
        if (boxes.size() <= replies.size()) return replyOf(replies[boxes.size() - 1]);
        return m_in.contains("boxes") || boxes.size() > 1 ? platform::Reply::cancel
                                                          : platform::Reply::yes;
    }
    std::string inputBox(
        const std::string& prompt, const std::string&, const std::string&) override {
        prompts.push_back(prompt);
        if (m_in.contains("answer")) return textOf(m_in.at("answer"));
        return textOf(m_in.at("answers").at(prompts.size() - 1));
    }

private:
    const Json& m_in;
};

static std::uint32_t crcOfInput(const core::SharedState& state) {
    platform::Bytes bytes;
    for (int i = 1; i <= state.Run.SampleCount; ++i) {
        const auto word = static_cast<std::uint16_t>(state.Run.image.samples[i].InputRpm);
        bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(word >> 8));
    }
    return crc32(bytes);
}

static Json redoneClutch(const Case& c) {
    const auto made = graphCase(c);
    core::SharedState& state = made->state;
    core::RunImage& run = state.Run.image;
    run.tail.GearCount = c.in.value("GearCount", run.tail.GearCount);
    run.tail.GearRatio6 = c.in.value("GearRatio6", run.tail.GearRatio6);
    if (c.in.contains("GearRatio")) {
        for (int gear = 1; gear <= 5; ++gear) {
            run.setup.GearRatio[gear] =
                c.in.at("GearRatio").at(static_cast<std::size_t>(gear - 1)).get<float>();
        }
    }
    ListedAnswers dialogs(c.in);
    testing::MemoryFiles files;
    const ToolResult result =
        Mnu_RedoClutch(state.Run, {state.Config.Gears, state.AppFolder, dialogs, files});
    Json got{{"ended", !result.changed}, {"asked", Json::array()}, {"T", result.shiftPoints},
        {"crc32", crcOfInput(state)}, {"samples", Json::array()}};
    for (const std::string& prompt : dialogs.prompts) got["asked"].push_back(askedLine(prompt));
    for (const Json& sample : c.expected.value("samples", Json::array())) {
        const int i = sample.at(0).get<int>();
        got["samples"].push_back(Json::array({i, run.samples[i].InputRpm}));
    }
    return got;
}

static Json movedTimeZero(const Case& c) {
    const auto state = std::make_unique<core::SharedState>();
    state->Run.DataType = c.in.at("DataType").get<std::uint8_t>();
    state->Run.SampleCount = c.in.at("SampleCount").get<std::uint16_t>();
    ListedAnswers dialogs(c.in);
    testing::MemoryFiles files;
    const ToolResult result = Mnu_TimeOffset(state->Run, {0, state->AppFolder, dialogs, files});
    if (result.changed) return Json{{"TimeOffset", state->Run.image.tail.TimeOffset}};
    if (dialogs.boxes.size() < 2) return Json{{"TimeOffset", nullptr}};
    return Json{{"TimeOffset", "invalid"}, {"text", toJson(dialogs.boxes[1])}};
}

void addGraphCursor() {
    add("TimeLine", shownAtLine);
    add("AverageRange", shownAverage);
    add("MouseMove", shownUnderMouse);
    add("RatioRead", readRatio);
    add("TyreGrowthRead", readTyreGrowth);
    add("CursorKey", keyedCursor);
    add("MouseDown", [](const Case& c) { return movedCursor(c, c.in.at("X").get<double>()); });
    add("RedoClutch", redoneClutch);
    add("TimeOffsetTool", movedTimeZero);
}

} // namespace kvo::vectors
