// Golden vectors of the live display and of the logger's own settings.
#include "core/basic/byte_reader.h"
#include "link/obc_session.h"
#include "link/obc_setup.h"
#include "link/pit_run.h"
#include "link/pit_run_session.h"
#include "link_functions.h"
#include "tests/support/fixed_clock.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace kvo::vectors {
namespace {

Json orNull(const std::optional<std::string>& text) {
    return text ? toJson(*text) : Json();
}

template <typename Field> void takeEach(const Json& values, Field& field) {
    int i = 1;
    for (const Json& value : values) value.get_to(field[i++]);
}

core::AppConfig pitConfig(const Json& in) {
    core::AppConfig config;
    config.LoggerDataType = in.at("LoggerDataType").get<std::int16_t>();
    const Json& given = in.contains("config") ? in.at("config") : in;
    takeEach(given.at("Analog_Check"), config.Analog_Check);
    int c = 1;
    for (const Json& name : given.at("AnalogName")) config.AnalogName[c++] = textOf(name);
    if (!in.contains("config")) return config;
    given.at("Engine_Correction").get_to(config.Engine_Correction);
    given.at("Clutch_Correction").get_to(config.Clutch_Correction);
    given.at("Pinion_Correction").get_to(config.Pinion_Correction);
    given.at("Wheel").get_to(config.Wheel);
    given.at("Speed_Correction").get_to(config.Speed_Correction);
    given.at("Exhaust").get_to(config.Exhaust);
    takeEach(given.at("Analog_Type"), config.Analog_Type);
    takeEach(given.at("AnalogScale"), config.AnalogScale);
    takeEach(given.at("AnalogOffset"), config.AnalogOffset);
    takeEach(given.at("Decimals"), config.Decimals);
    return config;
}

core::AnalogTables pitTables(const Case& c) {
    const platform::Bytes all = fileBytes(c.files / c.in.at("tables").get<std::string>());
    core::ByteReader reader(all);
    core::AnalogTables tables;
    for (auto& table : tables)
        for (double& entry : table) entry = reader.f64le().value();
    return tables;
}

Json pitRunFrame(const Case& c) {
    const core::AppConfig config = pitConfig(c.in);
    const platform::Bytes bytes = bytesOfHex(c.in.at("frame").get<std::string>());
    const std::string frame(bytes.begin(), bytes.end());
    const auto got = link::decodePitFrame(frame, config, pitTables(c));
    if (!got) throw std::runtime_error("no frame of that type");
    Json out{{"LineNumber", toJson(got->LineNumber)}, {"ERpm", orNull(got->ERpm)},
        {"CRpm", orNull(got->CRpm)}, {"PRpm", orNull(got->PRpm)}, {"Mph", orNull(got->Mph)}};
    for (const auto& text : got->Analog) out["Analog"].push_back(orNull(text));
    for (const auto& text : got->T) out["T"].push_back(orNull(text));
    return out;
}

// Each byte that waits bears the number of its frame, from 1.
Json pollFrames(const Case& c) {
    const int waiting = c.in.at("InBufferCount").get<int>();
    const int length = c.in.at("InputLen").get<int>();
    std::string bytes;
    for (int i = 0; i < waiting; ++i) bytes.push_back(static_cast<char>(1 + i / length));
    simulator::ModelLogger silent(platform::Bytes{});
    testing::VirtualLine line(silent);
    line.setOldBytes(bytes);
    line.setPortOpen(true);
    line.setInputLen(length);
    const auto frame = link::takePitFrame(line);
    const int left = line.inBufferCount();
    return Json{{"reads", (waiting - left) / length}, {"left", left},
        {"shown", frame ? Json(static_cast<int>(frame->front())) : Json()}};
}

class LayoutView : public link::PitRunView {
public:
    void setCommand1(const std::string&) override {}
    void applyLayout(const link::PitRunLayout& given) override { layout = given; }
    void showReadings(const link::PitRunReadings&) override {}
    void setStatus(const std::string&) override {}
    void unload() override {}
    link::PitRunLayout layout;
};

template <typename Shown> Json flags(const Shown& shown) {
    Json all = Json::array();
    for (const bool one : shown) all.push_back(one ? -1 : 0);
    return all;
}

Json pitRunLayout(const Case& c) {
    Bench bench(platform::Bytes{});
    core::AppConfig& config = bench.state->Config = pitConfig(c.in);
    bench.link.LinkFailed = 0;
    testing::MemoryFiles files;
    LayoutView view;
    Json title;
    bench.dialogs.onBox = [&title](const std::string&, const std::string& of) {
        title = toJson(of);
        return platform::Reply::ok;
    };
    link::PitRunSession session(
        bench.link, {config, folderOfDownloads, bench.state->Tables}, view, bench.dialogs, files);
    session.Form_Load();
    const auto& texts = bench.dialogs.texts;
    Json out{{"LinkFailed", bench.link.LinkFailed}, {"title", title},
        {"message", texts.empty() ? Json() : toJson(texts.front())},
        {"Command1_Enabled", view.layout.canRun ? -1 : 0},
        {"Analog_Visible", flags(view.layout.Analog)}, {"T_Visible", flags(view.layout.T)},
        {"Temps_Label_Visible", view.layout.Temps_Label ? -1 : 0}};
    for (const auto& name : config.AnalogName) out["Text_Analog"].push_back(toJson(name));
    if (const auto type = link::pitRunType(config.LoggerDataType))
        out["InputLen"] = type->frameBytes;
    return out;
}

// Only the fields that a case gives.
link::LoggerHeader headerOf(const Json& given) {
    link::LoggerHeader header;
    core::RunHeader& run = header.RunHeader;
    const auto take = [&given](const char* name, auto& field) {
        if (given.contains(name)) given.at(name).get_to(field);
    };
    take("DataType", header.DataType);
    take("LoggerModel", header.LoggerModel);
    take("LoggerVersion", header.LoggerVersion);
    take("LoggerMemory", header.LoggerMemory);
    take("LoggerSerial", header.LoggerSerial);
    take("EnginePickups", run.EnginePickups);
    take("InputPickups", run.InputPickups);
    take("OutputPickups", run.OutputPickups);
    take("FrontWheelPickups", run.FrontWheelPickups);
    take("RecordOnRpm", run.RecordOnRpm);
    take("CrankGearTeeth", run.CrankGearTeeth);
    take("BasketGearTeeth", run.BasketGearTeeth);
    take("PreStartRpm", run.PreStartRpm);
    take("ShiftLightRpm1", run.ShiftLightRpm1);
    take("ShiftLightRpm2", run.ShiftLightRpm2);
    take("ShiftLightRpm3", run.ShiftLightRpm3);
    take("ShiftLightRpm4", run.ShiftLightRpm4);
    take("ShiftLightTime1", run.ShiftLightTime1);
    take("ShiftLightTime2", run.ShiftLightTime2);
    take("ShiftLightTime3", run.ShiftLightTime3);
    take("ShiftLightTime4", run.ShiftLightTime4);
    return header;
}

link::ObcBox boxNamed(const std::string& name) {
    for (const auto& facts : link::obcBoxes())
        if (name == facts.control) return facts.box;
    throw std::runtime_error("no such box: " + name);
}

// A form of plain values.
class ValuesView : public link::ObcView {
public:
    void showHeader(const link::ObcShown& given) override {
        shown = given;
        form = given.values;
    }
    void setStatus(const std::string&) override {}
    link::ObcValues values() const override { return form; }
    void setText(link::ObcBox box, const std::string& text) override { form[box] = text; }
    void focus(link::ObcBox) override {}
    void setWriting(bool) override {}
    void unload() override {}
    link::ObcShown shown;
    link::ObcValues form;
};

// A logger with that header, and the form over it.
struct ObcBench {
    explicit ObcBench(const Json& header) : bench(platform::Bytes{}) {
        bench.link.Header = headerOf(header);
        // Nothing answers, and none of these cases may wait for it.
        bench.line.setPortOpen(true);
    }
    void take(const Json& given) {
        for (const auto& facts : link::obcBoxes())
            if (given.contains(facts.control))
                view.form[facts.box] = textOf(given.at(facts.control));
        if (given.contains("ComboPPR")) given.at("ComboPPR").get_to(view.form.ComboPPR);
    }
    Bench bench;
    testing::MemoryFiles files;
    testing::FixedClock clock{platform::DateTime{}};
    ValuesView view;
    link::ObcSession session{bench.link, folderOfDownloads, view, bench.dialogs, clock, files};
};

Json setupForm(const Case& c) {
    ObcBench obc(c.in.at("header"));
    obc.bench.link.LinkFailed = -1;
    obc.session.Form_Load();
    const link::ObcShown& shown = obc.view.shown;
    Json out{{"Label_DataType", shown.Label_DataType}, {"Label_Model", shown.Label_Model},
        {"Label_Ver", orNull(shown.Label_Ver)}, {"Label_MemType", orNull(shown.Label_MemType)},
        {"Label_S_No", shown.Label_S_No}, {"ComboPPR", shown.values.ComboPPR},
        {"ShiftLightFrame_Visible", shown.ShiftLightFrame ? -1 : 0},
        {"LinkFailed", obc.bench.link.LinkFailed}};
    for (const auto& facts : link::obcBoxes()) out[facts.control] = shown.values[facts.box];
    return out;
}

// The texts of a box, line by line.
Json linesOf(const std::string& text) {
    Json lines = Json::array();
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t end = std::min(text.find("\r\n", from), text.size());
        lines.push_back(toJson(text.substr(from, end - from)));
        from = end + 2;
    }
    return lines;
}

// The form's check of all boxes with the answer Yes to the question ahead of it; what the boxes
// said behind that, the first line of each.
struct Checked {
    std::vector<std::string> boxes;
};

Checked check(ObcBench& obc) {
    Checked result;
    bool asked = false;
    obc.bench.dialogs.onBox = [&](const std::string& text, const std::string&) {
        if (asked) result.boxes.push_back(text);
        asked = true;
        return platform::Reply::yes;
    };
    obc.session.SaveSetup_Click();
    return result;
}

bool saysRange(const std::string& text) {
    return text.find("Set Back to Your Default.") != std::string::npos;
}

Json rangeCheck(const Case& c) {
    const std::string name = c.in.at("field").get<std::string>();
    const link::ObcBox box = boxNamed(name);
    const std::string text = textOf(c.in.at("text"));
    switch (link::checkRange(box, text)) {
    case link::RangeResult::ok:
        return Json{{"result", "ok"}, {"text", toJson(text)}};
    case link::RangeResult::notANumber:
        return Json{{"result", "failure"}};
    default:
        break;
    }
    // Once more through the form, where all other boxes are well.
    static const std::map<std::string, std::string> fields{{"Label_RoRpm", "RecordOnRpm"},
        {"Label_GR1", "CrankGearTeeth"}, {"Label_GR2", "BasketGearTeeth"},
        {"Label_PreStartRPM", "PreStartRpm"}, {"Label_MR1", "ShiftLightRpm1"},
        {"Label_MR2", "ShiftLightRpm2"}, {"Label_MR3", "ShiftLightRpm3"},
        {"Label_MR4", "ShiftLightRpm4"}, {"Label_MT2", "ShiftLightTime2"},
        {"Label_MT3", "ShiftLightTime3"}, {"Label_MT4", "ShiftLightTime4"}};
    ObcBench obc(Json{{fields.at(name), c.in.at("header")}});
    for (const auto& facts : link::obcBoxes()) obc.view.form[facts.box] = "1";
    obc.view.form[box] = text;
    const Checked checked = check(obc);
    if (checked.boxes.size() != 1) throw std::runtime_error("not one box");
    const Json lines = linesOf(checked.boxes[0]);
    return Json{{"result", "message"}, {"message", lines[0]}, {"lines", lines},
        {"text", toJson(obc.view.form[box])}, {"LinkFailed", -1}};
}

Json rangeCheckAll(const Case& c) {
    ObcBench obc(c.in.at("header"));
    obc.take(c.in.at("form"));
    const Checked checked = check(obc);
    Json out{{"messages", Json::array()}, {"form", Json::object()}};
    for (const std::string& text : checked.boxes)
        if (saysRange(text)) out["messages"].push_back(linesOf(text)[0]);
    for (const auto& facts : link::obcBoxes())
        out["form"][facts.control] = toJson(obc.view.form[facts.box]);
    out["LinkFailed"] = out["messages"].empty() ? 0 : -1;
    return out;
}

Json setupBytes(const Case& c) {
    ObcBench obc(c.in.at("header"));
    obc.take(c.in.at("form"));
    const long before = obc.bench.line.bytesSent();
    check(obc);
    const std::string wire =
        obc.bench.line.everythingSent().substr(static_cast<std::size_t>(before));
    const platform::Bytes bytes(wire.begin(), wire.end());
    return Json{{"result", wire.empty() ? "overflow" : "ok"}, {"wire", hexOf(bytes)}};
}

} // namespace

void addLinkPitFunctions() {
    add("PitRunFrame", pitRunFrame);
    add("PollFrames", pollFrames);
    add("PitRunLayout", pitRunLayout);
    add("SetupForm", setupForm);
    add("RangeCheck", rangeCheck);
    add("RangeCheckAll", rangeCheckAll);
    add("SetupBytes", setupBytes);
}

} // namespace kvo::vectors
