// Golden vectors of the logger link: the exchange, the transfer, the decoding, the whole download.
#include "link_functions.h"

#include "core/config.h"
#include "core/run_index.h"
#include "core/run_records.h"
#include "link/decode.h"
#include "link/download.h"
#include "link/find_port.h"
#include "tests/support/fixed_clock.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"

#include <algorithm>
#include <optional>

namespace kvo::vectors {

using simulator::Fault;
using simulator::FaultyEnd;
using simulator::ModelLogger;
using testing::FixedClock;
using testing::VirtualLine;

void presetRun(int k, core::OpenRun& run, link::PulsePeriods& periods) {
    if (k <= 0) return;
    const auto type = link::downloadType(run.DataType);
    for (int r = 1; r <= core::maxSamples; ++r) {
        platform::Bytes packed(core::runSampleWidth);
        for (std::size_t j = 0; j < packed.size(); ++j)
            packed[j] = static_cast<std::uint8_t>(k + 31 * r + 7 * static_cast<int>(j));
        core::RunSample& row = run.image.samples[r];
        core::decode(packed, row);
        for (int c = (type ? type->analogOnWire : 8) + 1; c <= 8; ++c) row.Analog[c] = 0;
        if (type && type->auxAt == 0) row.Aux = 0;
        if (type && type->exhaustAt == 0) row.Exhaust.fill(0);
        periods.EnginePeriod[r] = 1000 * k + r;
        periods.InputPeriod[r] = 2000 * k + r;
        periods.OutputPeriod[r] = 3000 * k + r;
    }
}

namespace {

class QuietView : public link::DownloadView {
public:
    void setText_Display(const std::string& text) override { display = text; }
    void setProgressMax(int) override {}
    void setProgress(int) override {}
    void hideButtons() override {}
    void unload() override {}
    void showSoftwareSetup() override {}
    void showFreshRun(const std::string&, const std::string&) override {}
    void refreshChooser(const std::string&) override {}

    std::string display;
};

std::optional<long> answeredBytes(const Json& value) {
    if (value.is_null()) return std::nullopt;
    return value.get<long>();
}

Fault silenceAfter(std::optional<long> bytes) {
    return bytes ? Fault{Fault::Kind::stopAfter, *bytes} : Fault{};
}

Json headerFields(const link::LoggerHeader& header) {
    const core::RunHeader& run = header.RunHeader;
    return Json{{"DataType", header.DataType}, {"LoggerModel", header.LoggerModel},
        {"LoggerVersion", header.LoggerVersion}, {"LoggerMemory", header.LoggerMemory},
        {"LoggerSerial", header.LoggerSerial}, {"EnginePickups", run.EnginePickups},
        {"InputPickups", run.InputPickups}, {"OutputPickups", run.OutputPickups},
        {"FrontWheelPickups", run.FrontWheelPickups}, {"RecordOnRpm", run.RecordOnRpm},
        {"CrankGearTeeth", run.CrankGearTeeth}, {"BasketGearTeeth", run.BasketGearTeeth},
        {"PreStartRpm", run.PreStartRpm}, {"ShiftLightRpm1", run.ShiftLightRpm1},
        {"ShiftLightTime1", static_cast<double>(run.ShiftLightTime1)},
        {"ShiftLightRpm2", run.ShiftLightRpm2},
        {"ShiftLightTime2", static_cast<double>(run.ShiftLightTime2)},
        {"ShiftLightRpm3", run.ShiftLightRpm3},
        {"ShiftLightTime3", static_cast<double>(run.ShiftLightTime3)},
        {"ShiftLightRpm4", run.ShiftLightRpm4},
        {"ShiftLightTime4", static_cast<double>(run.ShiftLightTime4)}};
}

Json requestRpm(const Case& c) {
    Bench bench(
        platform::Bytes{c.in.at("hi").get<std::uint8_t>(), c.in.at("lo").get<std::uint8_t>()});
    bench.link.CommandByte = link::command::nextByte;
    bench.link.RpmScale = 1.0F;
    bench.link.RpmValue = c.in.at("RpmValue").get<std::int16_t>();
    bench.link.RequestRpm();
    return Json{{"RpmValue", bench.link.RpmValue}};
}

Json readHeader(const Case& c) {
    const platform::Bytes replies = bytesOfHex(c.in.at("replies").get<std::string>());
    Bench bench(replies, silenceAfter(static_cast<long>(replies.size())));
    bench.link.RpmValue = c.in.at("RpmValue").get<std::int16_t>();
    bench.link.ReplyByte = c.in.value("ReplyByte", 0);
    bench.link.Header.DataType = c.in.value("DataType", std::uint8_t{0});
    bench.link.ReadLoggerHeader();
    Json out = headerFields(bench.link.Header);
    out["RpmValue"] = bench.link.RpmValue;
    out["ReplyByte"] = bench.link.ReplyByte;
    out["LinkFailed"] = bench.link.LinkFailed;
    out["D_bytes"] = bench.line.bytesSent();
    return out;
}

template <typename Value> std::uint32_t wordsCrc(int count, const Value& value) {
    core::ByteWriter writer;
    for (int i = 1; i <= count; ++i) writer.i32le(value(i));
    return crc32(writer.bytes());
}

Json download(const Case& c) {
    Bench bench(fileBytes(c.files / c.in.at("stream").get<std::string>()),
        silenceAfter(answeredBytes(c.in.at("answered"))));
    link::PulsePeriods periods;
    bench.link.ReadLoggerHeader();
    core::OpenRun& run = bench.state->Run;
    run.DataType = bench.link.Header.DataType;
    presetRun(c.in.at("preset").get<int>(), run, periods);
    const long headerBytes = bench.line.bytesSent();
    QuietView view;
    if (link::prepareDownload(run)) {
        link::Download transfer(bench.link, run, periods, view, bench.dialogs);
        if (c.in.at("mode") == "fast")
            transfer.DownloadFast();
        else
            transfer.DownloadSafe();
    }
    const int count = run.SampleCount;
    Json out{{"SampleCount", count}, {"TimeOffset", run.image.tail.TimeOffset},
        {"D_bytes", bench.line.bytesSent() - headerBytes}, {"LinkFailed", bench.link.LinkFailed}};
    out["EnginePeriod_crc32"] = wordsCrc(count, [&](int i) { return periods.EnginePeriod[i]; });
    out["InputPeriod_crc32"] = wordsCrc(count, [&](int i) { return periods.InputPeriod[i]; });
    out["OutputPeriod_crc32"] = wordsCrc(count, [&](int i) { return periods.OutputPeriod[i]; });
    out["SpeedRaw_crc32"] = wordsCrc(count, [&](int i) { return run.image.samples[i].SpeedRaw; });
    out["rows_crc32"] = rowsCrc(run.image, count);
    out["rows"] = Json::array();
    for (const auto& wanted : c.expected.value("rows", Json::array())) {
        const int i = wanted.at("i").get<int>();
        Json row = rowFields(run.image, i);
        row["EnginePeriod"] = periods.EnginePeriod[i];
        row["InputPeriod"] = periods.InputPeriod[i];
        row["OutputPeriod"] = periods.OutputPeriod[i];
        out["rows"].push_back(row);
    }
    return out;
}

Json decode(const Case& c) {
    const auto state = std::make_unique<core::SharedState>();
    const auto periods = std::make_unique<link::PulsePeriods>();
    core::AppConfig& config = state->Config;
    config.Engine_Correction = c.in.at("Engine_Correction").get<float>();
    config.Clutch_Correction = c.in.at("Clutch_Correction").get<float>();
    config.Pinion_Correction = c.in.at("Pinion_Correction").get<float>();
    config.Wheel = c.in.at("Wheel").get<float>();
    config.Speed_Correction = c.in.at("Speed_Correction").get<float>();
    const Json& rows = c.in.at("rows");
    state->Run.SampleCount = static_cast<std::uint16_t>(rows.size());
    for (int i = 1; i <= state->Run.SampleCount; ++i) {
        const Json& given = rows[static_cast<std::size_t>(i - 1)];
        core::RunSample& row = state->Run.image.samples[i];
        periods->EnginePeriod[i] = given[0].get<std::int32_t>();
        periods->InputPeriod[i] = given[1].get<std::int32_t>();
        periods->OutputPeriod[i] = given[2].get<std::int32_t>();
        row.SpeedRaw = given[3].get<std::int32_t>();
        row.EngineRpm = given[4].get<std::int16_t>();
        row.InputRpm = given[5].get<std::int16_t>();
        row.OutputRpm = given[6].get<std::int16_t>();
    }
    link::convertPulses(state->Run, state->Config, *periods);
    Json out{{"PeakSpeedRaw", state->Run.PeakSpeedRaw}, {"rows", Json::array()}};
    for (int i = 1; i <= state->Run.SampleCount; ++i) {
        const core::RunSample& row = state->Run.image.samples[i];
        out["rows"].push_back({row.EngineRpm, row.InputRpm, row.OutputRpm, row.SpeedRaw});
    }
    return out;
}

Json analogTables(const Case& c) {
    const auto state = std::make_unique<core::SharedState>();
    testing::MemoryFiles files;
    const platform::Bytes all = fileBytes(c.files / c.in.at("tables").get<std::string>());
    constexpr std::size_t tableBytes = 2048;
    for (int channel = 1; channel <= 8; ++channel) {
        const auto from = all.begin() + static_cast<std::ptrdiff_t>(tableBytes) * (channel - 1);
        files.put("/kvo/Analog" + std::to_string(channel) + ".Dat",
            platform::Bytes(from, from + static_cast<std::ptrdiff_t>(tableBytes)));
        const auto at = static_cast<std::size_t>(channel - 1);
        state->Config.Analog_Type[channel] = c.in.at("Analog_Type")[at].get<std::uint8_t>();
        state->Config.AnalogScale[channel] = c.in.at("AnalogScale")[at].get<float>();
    }
    state->AppFolder = "/kvo";
    state->Run.DataType = c.in.at("DataType").get<std::uint8_t>();
    const Json& rows = c.in.at("Analog");
    state->Run.SampleCount = static_cast<std::uint16_t>(rows.size());
    for (int i = 1; i <= state->Run.SampleCount; ++i)
        for (int channel = 1; channel <= 8; ++channel)
            state->Run.image.samples[i].Analog[channel] =
                rows[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(channel - 1)]
                    .get<std::uint8_t>();
    link::convertAnalogTables(state->Run, state->Config, state->Tables, state->AppFolder, files);
    Json out{{"Analog", Json::array()}};
    for (int i = 1; i <= state->Run.SampleCount; ++i) {
        const auto& analog = state->Run.image.samples[i].Analog;
        out["Analog"].push_back(Json(std::vector<int>(analog.begin(), analog.end())));
    }
    return out;
}

Json reportCommEvent(const Case& c) {
    Bench bench(platform::Bytes{});
    bench.line.setCommEvent(c.in.at("CommEvent").get<int>());
    bench.link.ReportCommEvent();
    const auto& shown = bench.dialogs.texts;
    return Json{{"text", shown.empty() ? Json() : toJson(shown.front())}};
}

// Sixteen ports, of which some open and some answer "Q" with a byte.
class ManyPorts : public simulator::LineEnd {
public:
    explicit ManyPorts(const Json& ports) : m_ports(ports) {}
    void receive(std::uint8_t) override {
        const Json& reply = m_ports[static_cast<std::size_t>(port - 1)].at("reply");
        if (!reply.is_null()) m_reply = reply.get<std::uint8_t>();
    }
    std::optional<simulator::OutgoingByte> next() override {
        if (!m_reply) return std::nullopt;
        const simulator::OutgoingByte out{*m_reply, true};
        m_reply.reset();
        return out;
    }
    int port = 1;

private:
    const Json& m_ports;
    std::optional<std::uint8_t> m_reply;
};

struct ChosenPort : link::PortListView {
    void selectComPort(int entry) override { selected = entry; }
    void showPort(int) override {}
    bool stopped() const override { return false; }
    void searchIsOver() override {}
    Json selected;
};

Json findLoggerPort(const Case& c) {
    const Json& ports = c.in.at("ports");
    ManyPorts far(ports);
    Bench bench(far);
    Json out{{"opens", Json::array()}, {"asked", Json::array()}, {"titles", Json::array()},
        {"not_found", false}};
    for (int port = 1; port <= 16; ++port)
        if (ports[static_cast<std::size_t>(port - 1)].at("opens") == 0)
            bench.line.failToOpen(port, platform::PortError::missing);
    bench.line.onOpen = [&](int port) {
        out["opens"].push_back(port);
        far.port = port;
        bench.line.plugInto(port);
    };
    bench.dialogs.onBox = [&](const std::string& text, const std::string& title) {
        const auto yes = [](const Json& answer) {
            return answer == "Yes" ? platform::Reply::yes : platform::Reply::no;
        };
        if (title == "Find Logger Comm Port !") return yes(c.in.at("continue"));
        if (title == "CANT FIND THE LOGGER") {
            out["not_found"] = true;
            return platform::Reply::ok;
        }
        if (text != "Do you want to use this Comm Port?") out["asked"].push_back("wrong text");
        out["asked"].push_back(far.port);
        out["titles"].push_back(title);
        return yes(ports[static_cast<std::size_t>(far.port - 1)].at("use"));
    };
    bench.line.setPortOpen(false);
    bench.link.ReplyByte = c.in.at("ReplyByte").get<std::int32_t>();
    ChosenPort view;
    link::FindLoggerPort(bench.link, bench.dialogs, view);
    out["selected"] = view.selected;
    out["ReplyByte"] = bench.link.ReplyByte;
    return out;
}

Json suggestTitle(const Case& c) {
    const Json& date = c.in.at("date");
    platform::DateTime today;
    today.year = date[0].get<int>();
    today.month = date[1].get<int>();
    today.day = date[2].get<int>();
    const Json& last = c.in.at("last");
    return Json{{"title", toJson(core::suggestTitle(last.is_null() ? "" : textOf(last), today))}};
}

} // namespace

Bench::Bench(platform::Bytes stream, Fault fault)
    : m_logger(std::make_unique<ModelLogger>(std::move(stream))),
      m_faulty(std::make_unique<FaultyEnd>(*m_logger, fault)), line(*m_faulty),
      state(std::make_unique<core::SharedState>()), link(line, line, dialogs) {
    line.setPortOpen(true);
}

Bench::Bench(simulator::LineEnd& far)
    : line(far), state(std::make_unique<core::SharedState>()), link(line, line, dialogs) {}

Json rowFields(const core::RunImage& run, int i) {
    const core::RunSample& row = run.rowOrZero(i);
    return Json{{"i", i}, {"Index", row.Index}, {"EngineRpm", row.EngineRpm},
        {"InputRpm", row.InputRpm}, {"OutputRpm", row.OutputRpm}, {"SpeedRaw", row.SpeedRaw},
        {"Status", row.Status}, {"Analog", std::vector<int>(row.Analog.begin(), row.Analog.end())},
        {"Aux", row.Aux}, {"Exhaust", std::vector<int>(row.Exhaust.begin(), row.Exhaust.end())}};
}

std::uint32_t rowsCrc(const core::RunImage& run, int count) {
    core::ByteWriter writer;
    for (int i = 1; i <= count; ++i) core::encode(writer, run.samples[i]);
    return crc32(writer.bytes());
}

void addLinkFunctions() {
    add("RequestRpm", requestRpm);
    add("ParseHeader", readHeader);
    add("ReadLoggerHeader", readHeader);
    add("Download", download);
    add("ProgressText", [](const Case& c) {
        return Json{{"Text_Display",
            link::progressText(c.in.at("i").get<int>(), c.in.at("SampleCount").get<int>())}};
    });
    add("Decode", decode);
    add("AnalogTables", analogTables);
    add("ReportCommEvent", reportCommEvent);
    add("FindLoggerPort", findLoggerPort);
    add("SuggestTitle", suggestTitle, [](const Json& in) { return in.contains("last"); });
    addFullDownload();
    addLinkPitFunctions();
}

} // namespace kvo::vectors
