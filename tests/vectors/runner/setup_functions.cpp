// Golden vectors of the graph's options.
#include "setup/graph_options.h"
#include "vector_tools.h"

#include <stdexcept>

namespace kvo::vectors {

using namespace kvo::setup;

// The indexes at which a flag is as wanted.
template <typename Flags> static Json indexesOf(const Flags& flags, bool wanted) {
    Json indexes = Json::array();
    for (std::size_t i = 0; i < flags.size(); ++i)
        if (flags[i] == wanted) indexes.push_back(i);
    return indexes;
}

static Json hiddenAnalogTexts(const OptionRows& rows) {
    Json indexes = Json::array();
    for (int n = 1; n <= 8; ++n)
        if (!rows.Label_Magnify_Analog_Text[n]) indexes.push_back(n);
    return indexes;
}

static OptionRows allShown(bool shown) {
    OptionRows rows;
    rows.Text_Magnify.fill(shown);
    rows.ComboScale.fill(shown);
    return rows;
}

template <std::size_t N>
static int tabOf(const Json& in, const std::array<std::string_view, N>& tabs) {
    const std::string text = textOf(in.at("tab"));
    for (std::size_t i = 0; i < N; ++i)
        if (tabs[i] == text) return static_cast<int>(i);
    throw std::runtime_error("no such tab: " + text);
}

static ScaleValues scalesOf(const Json& in) {
    ScaleValues values;
    for (std::size_t i = 0; i < values.ComboScale.size(); ++i) {
        values.ComboScale[i] = in.at("ComboScaleIndex").at(i).get<int>();
        values.Text_Magnify[i] = textOf(in.at("Text_Magnify").at(i));
    }
    return values;
}

static Json applied(const Case& c) {
    VisibleOptionsValues values;
    values.scales = scalesOf(c.in);
    for (std::size_t i = 0; i < 25; ++i)
        values.Check1[25 + i] = c.in.at("Check1_25_49").at(i).get<int>() != 0;
    core::AppConfig config;
    applyOptions(values, config);
    return Json{{"Text_Magnify", config.Text_Magnify}, {"ComboScale", config.ComboScale},
        {"SmoothOption", config.SmoothOption}};
}

static Json restored(const Case& c) {
    ScaleValues values = scalesOf(c.in);
    OptionRows rows;
    rows.ComboScale.fill(c.in.at("tab") == "Raise");
    restoreDefaults(values, rows);
    Json got{{"ComboScaleIndex", values.ComboScale}};
    for (const std::string& text : values.Text_Magnify) got["Text_Magnify"].push_back(toJson(text));
    return got;
}

static Json hiddenOptions(const Case& c) {
    VisibleOptionsShown shown;
    shown.rows = allShown(true);
    HideUnusedOptions(shown, c.in.at("model").get<int>(), c.in.at("Vehicle_Type").get<int>());
    return Json{{"Check1", indexesOf(shown.Check1, false)},
        {"Label_Magnify", indexesOf(shown.rows.Label_Magnify, false)},
        {"Text_Magnify", indexesOf(shown.rows.Text_Magnify, false)},
        {"ComboScale", indexesOf(shown.rows.ComboScale, false)},
        {"Label_Magnify_Analog_Text", hiddenAnalogTexts(shown.rows)},
        {"EGTFrame", indexesOf(shown.EGTFrame, false)}};
}

static Json visibleTab(const Case& c) {
    Json got;
    for (const bool before : {false, true}) {
        VisibleOptionsShown shown;
        shown.rows = allShown(before);
        VisibleTabStrip1(shown, static_cast<VisibleTab>(tabOf(c.in, visibleTabs)));
        const Json now{{"Frame", shown.Frame},
            {"Text_Magnify", indexesOf(shown.rows.Text_Magnify, true)},
            {"ComboScale", indexesOf(shown.rows.ComboScale, true)}};
        if (before && now != got) throw std::runtime_error("a control was left as it was");
        got = now;
    }
    return got;
}

// What a click shows is on view although all was hidden; what it hides, the other way round.
static Json setupTab(const Case& c) {
    const auto tab = static_cast<RowsTab>(tabOf(c.in, rowsTabs));
    OptionRows shown = allShown(false);
    OptionRows hidden = allShown(true);
    SetupTabStrip2(shown, tab, c.in.at("D_Modal").get<int>());
    SetupTabStrip2(hidden, tab, c.in.at("D_Modal").get<int>());
    return Json{{"Text_Magnify", {{"show", indexesOf(shown.Text_Magnify, true)},
                                     {"hide", indexesOf(hidden.Text_Magnify, false)}}},
        {"ComboScale", {{"show", indexesOf(shown.ComboScale, true)},
                           {"hide", indexesOf(hidden.ComboScale, false)}}}};
}

static Json customScale(const Case& c) {
    core::AppConfig config;
    const CustomSurface surface =
        CustomScaleOK({c.in.at("Slider1").get<int>(), c.in.at("Slider2").get<int>()},
            c.in.at("InnerHeight").get<double>(), c.in.at("InnerWidth").get<double>(), config);
    return Json{
        {"Height", surface.Height}, {"Width", surface.Width}, {"caption", surface.scaleCaption}};
}

void addSetupFunctions() {
    add("ApplyOptions", applied);
    add("RestoreDefaults", restored);
    add("HideUnusedOptions", hiddenOptions);
    add("VisibleTabStrip1", visibleTab);
    add("SetupTabStrip2", setupTab);
    add("CustomScaleOK", customScale);
    add("TextMagnifyLostFocus", [](const Case& c) {
        const BoxCheck check = Text_Magnify_LostFocus(textOf(c.in.at("text")));
        return Json{{"text", toJson(check.text)}, {"beep", check.beep}};
    });
    add("TextMagnifyShown", [](const Case& c) {
        const auto stored = c.in.at("stored").get<std::uint8_t>();
        return Json{{"SetupSoftware", toJson(magnifyInSetup(stored))},
            {"Visible_Options", toJson(magnifyInVisibleOptions(stored))}};
    });
}

} // namespace kvo::vectors
