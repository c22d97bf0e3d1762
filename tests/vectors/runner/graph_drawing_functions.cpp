// Golden vectors of the drawing, taken from what reaches a recording surface.
#include "graph/drawing.h"
#include "graph_functions.h"
#include "tests/support/draw_calls.h"
#include "tests/support/graph_calls.h"
#include "tests/support/recording_surface.h"

#include <bit>
#include <map>

namespace kvo::vectors {

using namespace kvo::channels;
using kvo::testing::drawCall;
using namespace kvo::graph;
using testing::RecordingHost;
using testing::SurfaceOperation;
using Kind = SurfaceOperation::Kind;

// Everything that drawing needs, on the scale of the run.
struct DrawnCase {
    std::unique_ptr<GraphCase> made;
    core::SharedState& state;
    GraphView& view;
    RecordingHost host;
    TrendDrawing drawing;

    explicit DrawnCase(const Case& c)
        : made(graphCase(c)), state(made->state), view(made->view),
          drawing(testing::drawingOf(state, view, host)) {
        host.surface.setScale(0, trendTop, static_cast<float>(state.Run.SampleCount + 1), 0);
        host.surface.forget();
    }
};

static Json pointJson(const platform::Point& point) {
    return Json::array({point.x, point.y});
}

static std::uint32_t crcOfPoints(const std::vector<platform::Point>& points) {
    platform::Bytes bytes;
    for (const platform::Point& point : points) {
        for (const float part : {point.x, point.y}) {
            const auto bits = std::bit_cast<std::uint32_t>(part);
            for (unsigned shift = 0; shift < 32; shift += 8) {
                bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
            }
        }
    }
    return crc32(bytes);
}

static Json drawnChannel(const Case& c) {
    DrawnCase drawn(c);
    drawn.view.RpmScale = c.in.at("RpmScale").get<std::int16_t>();
    drawn.view.MphScale = c.in.at("MphScale").get<double>();
    const int channel = c.in.at("channel").get<int>();
    const std::string routine = c.in.at("routine").get<std::string>();
    const bool overlay = routine.front() == 'O';
    if (drawCall(channel, overlay) != routine) return Json{{"routine", drawCall(channel, overlay)}};
    if (overlay) {
        drawn.drawing.drawOverlayChannel(channel);
    } else {
        drawn.drawing.drawChannel(channel);
    }
    const auto lines = drawn.host.surface.ofKind(Kind::polyline);
    if (lines.size() != 1 || lines[0].x1 != 0 || lines[0].y1 != 0) return Json{{"error", true}};
    const auto& points = lines[0].points;
    Json got{{"count", points.size()}, {"crc32", crcOfPoints(points)}, {"colour", lines[0].colour},
        {"first", Json::array()}, {"last", Json::array()}, {"samples", Json::array()},
        {"magnifyAfter", drawn.state.Config.Text_Magnify[static_cast<std::size_t>(channel)]}};
    const std::size_t few = std::min<std::size_t>(5, points.size());
    for (std::size_t i = 0; i < few; ++i) got["first"].push_back(pointJson(points[i]));
    for (std::size_t i = points.size() - few; i < points.size(); ++i) {
        got["last"].push_back(pointJson(points[i]));
    }
    for (const Json& sample : c.expected.at("samples")) {
        const auto at = sample.at(0).get<std::size_t>();
        if (at < points.size()) {
            got["samples"].push_back(Json::array({at, points[at].x, points[at].y}));
        }
    }
    return got;
}

static Json gridOperation(const SurfaceOperation& operation, const Json& expected) {
    if (operation.kind == Kind::line) {
        return Json{
            {"line", {operation.x1, operation.y1, operation.x2, operation.y2, operation.colour}}};
    }
    const bool isNumber = expected.contains("number");
    return Json{{isNumber ? "number" : "text",
        {operation.x1, operation.y1, isNumber ? trimmed(operation.text) : operation.text}}};
}

static Json drawnGrid(const Case& c) {
    DrawnCase drawn(c);
    drawn.view.RpmScale = static_cast<std::int16_t>(drawn.state.Config.MaxRpm + 6);
    drawn.drawing.DrawGrid();
    Json got{{"MphScale", drawn.view.MphScale}, {"RpmScale", drawn.view.RpmScale},
        {"DrawStyle", drawn.host.surface.drawStyle()},
        {"ForeColor", drawn.host.surface.foreColor()}, {"ops", Json::array()}};
    Json& expected = c.expected.at("ops");
    std::size_t at = 0;
    for (const SurfaceOperation& operation : drawn.host.surface.operations()) {
        const Json wanted = at < expected.size() ? expected[at] : Json::object();
        Json one = gridOperation(operation, wanted);
        // A position that is open on the other side is not judged.
        for (auto& [key, parts] : one.items()) {
            if (!wanted.contains(key)) continue;
            for (std::size_t k = 0; k < parts.size(); ++k) {
                if (wanted[key][k].is_null()) parts[k] = nullptr;
            }
        }
        got["ops"].push_back(std::move(one));
        ++at;
    }
    return got;
}

static Json boxJson(const SurfaceOperation& box) {
    return Json::array({box.x1, box.y1, box.x2, box.y2, box.colour});
}

static Json drawnSwitches(const Case& c) {
    static const std::map<float, std::string> names{{1096.0F, "Dyna"}, {1078.0F, "Shift"},
        {1060.0F, "Throttle"}, {1042.0F, "Brake"}, {1087.0F, "OverlayDyna"},
        {1069.0F, "OverlayShift"}, {1051.0F, "OverlayThrottle"}, {1033.0F, "OverlayBrake"}};
    DrawnCase drawn(c);
    drawn.drawing.Change_Colour();
    drawn.host.surface.forget();
    drawn.drawing.DrawSwitches();
    std::map<std::string, std::vector<SurfaceOperation>> bars;
    for (const SurfaceOperation& box : drawn.host.surface.ofKind(Kind::box)) {
        bars[names.at(box.y1)].push_back(box);
    }
    Json got = Json::object();
    for (const auto& [top, name] : names) {
        const std::vector<SurfaceOperation>& boxes = bars[name];
        Json bar{{"count", boxes.size()}, {"first", Json::array()}, {"last", Json::array()}};
        const std::size_t few = std::min<std::size_t>(3, boxes.size());
        for (std::size_t i = 0; i < few; ++i) bar["first"].push_back(boxJson(boxes[i]));
        for (std::size_t i = boxes.size() - few; i < boxes.size(); ++i) {
            bar["last"].push_back(boxJson(boxes[i]));
        }
        got[name] = std::move(bar);
    }
    return got;
}

static Json drawnOrder(const Case& c) {
    DrawnCase drawn(c);
    core::AppConfig& config = drawn.state.Config;
    // A colour for each channel tells whose line it is.
    for (int channel = 0; channel < channelCount; ++channel) {
        colourField(config, channel) = 1000 + channel;
    }
    config.GraphBackColour = 0;
    drawn.host.clutchVisible =
        ShowChannelsForType(drawn.state.Run.DataType, config.Vehicle_Type).clutch != Show::hide;
    const bool overlay = c.in.at("routine") == "OverLayDraw";
    if (overlay) {
        drawn.view.RpmScale = 8; // a full picture always comes first
        drawn.view.MphScale = 6;
        drawn.drawing.OverLayDraw();
    } else if (!drawn.drawing.DrawTrend()) {
        return Json{{"error", true}};
    }
    Json got{
        {"calls", Json::array()}, {"ProgressMax", drawn.host.progressMax}, {"G_Res", config.G_Res}};
    for (const SurfaceOperation& line : drawn.host.surface.ofKind(Kind::polyline)) {
        got["calls"].push_back(drawCall(static_cast<int>(line.colour) - 1000, overlay));
    }
    return got;
}

void addGraphDrawing() {
    add("DrawChannel", drawnChannel);
    add("DrawGrid", drawnGrid);
    add("DrawSwitches", drawnSwitches);
    add("DrawOrder", drawnOrder);
}

} // namespace kvo::vectors
