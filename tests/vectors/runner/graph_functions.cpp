// Golden vectors of the graph: the derived values and the plain rules of the window.
#include "graph_functions.h"

#include "channels/derived.h"
#include "core/basic/format.h"
#include "graph/grid.h"
#include "graph/layout.h"
#include "graph/view.h"

namespace kvo::vectors {

using namespace kvo::channels;
using namespace kvo::graph;

static core::RunHeader driveOf(const Json& in) {
    core::RunHeader header;
    header.CrankGearTeeth = in.at("CrankGearTeeth").get<std::uint8_t>();
    header.BasketGearTeeth = in.at("BasketGearTeeth").get<std::uint8_t>();
    return header;
}

static std::int16_t word(const Json& in, const char* name) {
    return in.at(name).get<std::int16_t>();
}

static Json valueOf(const Reading& reading) {
    if (reading.hasFailed()) return Json{{"error", true}};
    return Json{{"v", reading.hasValue() ? Json(reading.value) : Json()}};
}

static Json textOfReading(const TextReading& reading) {
    if (reading.hasFailed()) return Json{{"error", true}};
    return Json{{"text", reading.hasText() ? toJson(reading.text) : Json()}};
}

static void addClutchAndSlip() {
    add("ClutchRpm", [](const Case& c) {
        return Json{{"v", clutchRpm(primaryRatio(driveOf(c.in)).value(), word(c.in, "EngineRpm"))}};
    });
    add("SlipDrawn", [](const Case& c) {
        return valueOf(slipDrawn(
            primaryRatio(driveOf(c.in)).value(), word(c.in, "EngineRpm"), word(c.in, "InputRpm")));
    });
    add("SlipRead", [](const Case& c) {
        return Json{{"text", slipRead(primaryRatio(driveOf(c.in)).value(), word(c.in, "EngineRpm"),
                                 word(c.in, "InputRpm"))}};
    });
    add("SlipMouse", [](const Case& c) {
        return valueOf(slipMouse(
            primaryRatio(driveOf(c.in)).value(), word(c.in, "EngineRpm"), word(c.in, "InputRpm")));
    });
    add("SlipPrinted", [](const Case& c) {
        return textOfReading(
            slipPrinted(driveOf(c.in), word(c.in, "EngineRpm"), word(c.in, "InputRpm")));
    });
}

static core::RunAnalogBlock tyreOf(const Json& in) {
    core::RunAnalogBlock block;
    block.CrownTeeth = in.at("CrownTeeth").get<float>();
    block.PinionTeeth = in.at("PinionTeeth").get<float>();
    block.RearWheelDiameter = in.at("RearWheelDiameter").get<float>();
    return block;
}

static void addRatioAndTyre() {
    add("RatioDrawn", [](const Case& c) {
        return Json{{"v", ratioDrawn(primaryRatio(driveOf(c.in)).value(), word(c.in, "EngineRpm"),
                              word(c.in, "OutputRpm"))}};
    });
    add("TyreGrowthDrawn", [](const Case& c) {
        return valueOf(tyreGrowthDrawn(
            c.in.at("SpeedRaw").get<std::int32_t>(), word(c.in, "OutputRpm"), tyreOf(c.in)));
    });
}

static void addRocos() {
    add("RoCoSDrawn", [](const Case& c) {
        const auto made = graphCase(c);
        const core::OpenRun& run = made->state.Run;
        return valueOf(rocosDrawn(run.image, run.SampleCount, c.in.at("i").get<int>()));
    });
    add("RoCoS_Cal", [](const Case& c) {
        const auto made = graphCase(c);
        const core::SharedState& state = made->state;
        const bool fromOverlay = c.in.at("RocosFromOverlay").get<int>() != 0;
        return textOfReading(RoCoS_Cal(fromOverlay ? state.Overlay.image : state.Run.image,
            state.Run.SampleCount, c.in.at("i").get<int>()));
    });
}

static void addAnalog() {
    add("AnalogRead", [](const Case& c) {
        std::string picture;
        const AnalogSetup setup{c.in.at("type").get<int>(), c.in.at("scale").get<float>(),
            c.in.at("offset").get<float>(), c.in.at("decimals").get<int>()};
        return textOfReading(analogRead(
            setup, c.in.at("raw").get<double>(), c.in.at("Exhaust").get<int>(), picture));
    });
    add("LambdaValue", [](const Case& c) {
        const double value =
            lambdaValue(c.in.at("raw").get<double>(), c.in.at("FuelSelector").get<int>());
        return Json{{"value", value}, {"text", core::Format(value, "#0.0")}};
    });
    add("MphScale", [](const Case& c) {
        return Json{{"MphScale", mphScaleFor(c.in.at("PeakSpeedRaw").get<std::int32_t>())}};
    });
}

static Json flagOf(Show show) {
    return show == Show::show ? Json(-1) : Json(0);
}

static Json shownChannels(const Case& c) {
    const LabelVisibility labels =
        ShowChannelsForType(c.in.at("type").get<int>(), c.in.at("Vehicle_Type").get<int>());
    Json got{{"Clutch", labels.clutch == Show::hide ? 0 : -1}};
    if (labels.analogValue[5] != Show::leave) {
        for (int n = 5; n <= 8; ++n) got["Analog5to8"].push_back(flagOf(labels.analogValue[n]));
    }
    if (labels.exhaustValue != Show::leave) got["Exhaust"] = flagOf(labels.exhaustValue);
    // A key that the line does not have is a group that the routine does not touch.
    for (const auto& [key, value] : got.items()) {
        if (!c.expected.contains(key)) return Json{{"touched", key}};
    }
    return got;
}

static Json changedColours(const Case& c) {
    core::AppConfig config;
    config.GraphBackColour = c.in.at("GraphBackColour").get<std::int32_t>();
    for (int channel = 0; channel < channelCount; ++channel) {
        colourField(config, channel) =
            c.in.at("colours").at(std::string(channelFacts(channel).name)).get<std::int32_t>();
    }
    const ColourChange change = changeColour(config);
    Json got{{"changed", Json::array()}, {"SwitchColourDyna", change.switchDyna},
        {"SwitchColourShift", change.switchShift}, {"SwitchColourThrottle", change.switchThrottle},
        {"SwitchColourBrake", change.switchBrake}};
    for (int channel = 0; channel < channelCount; ++channel) {
        got["colours"][std::string(channelFacts(channel).name)] =
            change.colours[static_cast<std::size_t>(channel)];
    }
    for (const int channel : change.repaired) {
        got["changed"].push_back(std::string(channelFacts(channel).name));
    }
    return got;
}

static void addWindowRules() {
    add("ShowChannelsForType", shownChannels);
    add("ChangeColour", changedColours);
    add("InvertColour", [](const Case& c) {
        return Json{{"OverlayChannelColour", InvertColour(c.in.at("colour").get<std::int32_t>(),
                                                 c.in.at("GraphBackColour").get<std::int32_t>())}};
    });
    add("ResolutionCaption", [](const Case& c) {
        const ResolutionChoice choice = Resolution_Change(c.in.at("step").get<int>());
        return Json{{"caption", choice.caption}, {"checked", choice.checkedItem}};
    });
}

static Size sizeOf(const Json& in, const char* width, const char* height) {
    return {in.at(width).get<double>(), in.at(height).get<double>()};
}

static void addSizes() {
    add("GraphScale", [](const Case& c) {
        const GraphScaling scaling =
            Graph_scale(c.in.at("setting").get<int>(), sizeOf(c.in, "FormWidth", "FormHeight"), {},
                sizeOf(c.in, "TrendWidth", "TrendHeight"), c.in.value("factor", 1.0));
        Json got{{"Width", scaling.trend.value().width}, {"Height", scaling.trend->height},
            {"ScrollBars", scaling.scrollBars}};
        const int setting = c.in.at("setting").get<int>();
        if (setting < scaleCustom) got["caption"] = scaleCaption(setting);
        return got;
    });
    add("ArrangeGraph", [](const Case& c) {
        const CustomArrangement custom = arrangeCustom(sizeOf(c.in, "FormWidth", "FormHeight"), {},
            c.in.at("CustomScaleLow").get<int>(), c.in.at("CustomScaleHigh").get<int>());
        return Json{{"Width", custom.trend.width}, {"Height", custom.trend.height},
            {"HScrollMax", custom.hScrollMax}, {"VScrollMax", custom.vScrollMax},
            {"caption", scaleCaption(scaleCustom)}};
    });
    add("ScrollChange", [](const Case& c) {
        const ScrollPlace place = scrollPlace(sizeOf(c.in, "TrendWidth", "TrendHeight"),
            sizeOf(c.in, "FrameWidth", "FrameHeight"), c.in.at("HValue").get<int>(),
            c.in.at("VValue").get<int>());
        return Json{{"HScrollMax", place.hScrollMax}, {"VScrollMax", place.vScrollMax},
            {"TrendLeft", place.trendLeft}, {"TrendTop", place.trendTop}};
    });
    add("ScrollToCursor", [](const Case& c) {
        const auto value = ScrollToCursor(c.in.at("HScrollMax").get<int>(),
            c.in.at("SampleCount").get<int>(), c.in.at("CursorSample").get<int>());
        return Json{{"HScrollValue", value ? Json(*value) : Json()}};
    });
}

void addGraphFunctions() {
    addClutchAndSlip();
    addRatioAndTyre();
    addRocos();
    addAnalog();
    addWindowRules();
    addSizes();
    addGraphDrawing();
    addGraphCursor();
    addGraphPrinting();
}

} // namespace kvo::vectors
