#include "setup/graph_options.h"

#include "core/basic/numbers.h"
#include "setup/models.h"

namespace kvo::setup {

namespace {

using namespace channels;

constexpr int raiseStep = 20;            // graph units an entry of the list
constexpr int smoothBoxOfAnalogRow = 34; // behind the row's own number

template <typename T, std::size_t N> T& at(std::array<T, N>& items, int index) {
    return items[static_cast<std::size_t>(index)];
}
template <typename T, std::size_t N> const T& at(const std::array<T, N>& items, int index) {
    return items[static_cast<std::size_t>(index)];
}

bool isMagnified(int channel) {
    return channelFacts(channel).magnifyDefault != 0;
}

void hideRow(OptionRows& rows, int channel) {
    rowOf(rows.Label_Magnify, channel) = false;
    rowOf(rows.Text_Magnify, channel) = false;
    rowOf(rows.ComboScale, channel) = false;
}

// First of the rows up to the last analog that the model does not have.
int firstUnusedRow(int model) {
    constexpr int firstTypeWithAll = 25;
    if (const ModelFacts* facts = modelAt(modelIndex(model)))
        return analogChannel(1) + facts->analogs;
    // Required: a type that no model has loses all of them if it is an early one, else none.
    return model >= firstTypeWithAll ? exhaustChannel(1) : engineChannel;
}

void setBoxes(VisibleOptions& form, ChannelKind kind, int index) {
    for (int channel = 0; channel < channelCount; ++channel) {
        const ChannelFacts& facts = channelFacts(channel);
        if (facts.kind != kind) continue;
        bool& box = at(form.values.Check1, facts.option.drawnBox);
        const bool on = index != 0;
        if (box != on) form.Command1_1_Enabled = true;
        box = on;
    }
}

} // namespace

OptionGroup optionGroup(int channel) {
    switch (channelFacts(channel).kind) {
    case ChannelKind::analog:
        return OptionGroup::analogs;
    case ChannelKind::exhaust:
        return OptionGroup::exhausts;
    default:
        return OptionGroup::channels;
    }
}

ByChannel<std::string> rowCaptions(const core::FromOne<std::string, 8>& analogNames) {
    ByChannel<std::string> captions;
    for (int channel = 0; channel < channelCount; ++channel) {
        const ChannelFacts& facts = channelFacts(channel);
        const bool named = facts.kind == ChannelKind::analog;
        rowOf(captions, channel) =
            named ? analogNames[facts.number] : std::string(facts.option.caption);
    }
    return captions;
}

std::string magnifyInSetup(std::uint8_t stored) {
    return core::CStr(stored == 0 ? 0 : stored - 1);
}

std::string magnifyInVisibleOptions(std::uint8_t stored) {
    return core::CStr(stored - 1); // Required: what was never set shows -1.
}

int raiseIndex(std::uint8_t stored) {
    const int index = core::CInt(static_cast<double>(stored) / raiseStep).value_or(-1);
    return index < static_cast<int>(raiseList.size()) ? index : -1;
}

std::optional<std::uint8_t> storedRaise(int index) {
    return core::CByte(index * raiseStep);
}

BoxCheck Text_Magnify_LostFocus(std::string_view text) {
    constexpr double largest = 50;
    const auto value = core::strictNumber(text);
    if (value && *value >= 0 && *value <= largest) return {std::string(text)};
    return {"0", true, true};
}

void restoreDefaults(ScaleValues& values, const OptionRows& rows) {
    const bool raiseInView = rowOf(rows.ComboScale, engineChannel);
    for (int channel = 0; channel < channelCount; ++channel) {
        const OptionFacts& option = channelFacts(channel).option;
        if (!raiseInView) {
            rowOf(values.Text_Magnify, channel) = core::CStr(option.restoredMagnify);
        } else if (option.restoredRaise >= 0) {
            rowOf(values.ComboScale, channel) = option.restoredRaise;
        }
    }
}

void SetupTabStrip2(OptionRows& rows, RowsTab tab, int D_Modal) {
    const ModelFacts* model = modelAt(D_Modal);
    const int analogs = model ? model->tabAnalogs : 0;
    const bool raise = tab == RowsTab::raise;
    for (int channel = 0; channel < channelCount; ++channel) {
        const ChannelFacts& facts = channelFacts(channel);
        if (facts.kind == ChannelKind::analog && facts.number > analogs) continue;
        rowOf(rows.ComboScale, channel) = raise;
        if (raise || isMagnified(channel)) rowOf(rows.Text_Magnify, channel) = !raise;
    }
}

void VisibleTabStrip1(VisibleOptionsShown& shown, VisibleTab tab) {
    switch (tab) {
    case VisibleTab::onOff:
        shown.Frame = 0;
        return;
    case VisibleTab::smooth:
        shown.Frame = 2;
        return;
    case VisibleTab::magnify:
    case VisibleTab::raise:
        break;
    }
    shown.Frame = 1;
    const bool raise = tab == VisibleTab::raise;
    for (int channel = 0; channel < channelCount; ++channel) {
        rowOf(shown.rows.Text_Magnify, channel) = !raise && isMagnified(channel);
        rowOf(shown.rows.ComboScale, channel) = raise;
    }
}

int optionsModel(int dataTypeOfRun, int LoggerDataType) {
    return dataTypeOfRun != 0 ? dataTypeOfRun : LoggerDataType;
}

void HideUnusedOptions(VisibleOptionsShown& shown, int model, int Vehicle_Type) {
    if (Vehicle_Type == car) {
        at(shown.Check1, clutchChannel) = false;
        hideRow(shown.rows, clutchChannel);
    }
    if (const ModelFacts* facts = modelAt(modelIndex(model)))
        for (int group = facts->exhaustGroups; group < 3; ++group)
            at(shown.EGTFrame, group) = false;
    for (int row = firstUnusedRow(model); row <= analogChannel(8); ++row) {
        at(shown.Check1, row) = false;
        // Required: in a row in front of the analogs this box smooths an exhaust.
        at(shown.Check1, row + smoothBoxOfAnalogRow) = false;
        hideRow(shown.rows, row);
        if (row >= analogChannel(1)) shown.rows.Label_Magnify_Analog_Text[row - 7] = false;
    }
}

void TabStrip1_Click(VisibleOptionsShown& shown, VisibleTab tab, int model, int Vehicle_Type) {
    VisibleTabStrip1(shown, tab);
    HideUnusedOptions(shown, model, Vehicle_Type);
}

int channelOfBox(int box) {
    int channel = 0;
    const auto isIts = [box](const OptionFacts& option) {
        return box < firstSmoothBox ? option.drawnBox == box
                                    : firstSmoothBox + option.smoothEntry == box;
    };
    while (!isIts(channelFacts(channel).option)) ++channel;
    return channel;
}

std::array<std::string, 50> boxCaptions(const core::FromOne<std::string, 8>& analogNames) {
    std::array<std::string, 50> captions;
    const ByChannel<std::string> rows = rowCaptions(analogNames);
    for (int channel = 0; channel < channelCount; ++channel) {
        const OptionFacts& option = channelFacts(channel).option;
        const std::string caption =
            option.boxCaption.empty() ? rowOf(rows, channel) : std::string(option.boxCaption);
        at(captions, option.drawnBox) = caption;
        at(captions, firstSmoothBox + option.smoothEntry) = caption;
    }
    return captions;
}

VisibleOptions loadVisibleOptions(const core::AppConfig& config, int model) {
    VisibleOptions form;
    HideUnusedOptions(form.shown, model, config.Vehicle_Type);
    for (int channel = 0; channel < channelCount; ++channel) {
        at(form.values.Check1, channelFacts(channel).option.drawnBox) = channelOn(config, channel);
        at(form.values.Check1, firstSmoothBox + channel) = at(config.SmoothOption, channel) == 1;
        ScaleValues& scales = form.values.scales;
        rowOf(scales.Text_Magnify, channel) =
            magnifyInVisibleOptions(at(config.Text_Magnify, channel));
        rowOf(scales.ComboScale, channel) = raiseIndex(at(config.ComboScale, channel));
    }
    return form;
}

void Command3_Click(VisibleOptions& form) {
    const ScaleValues before = form.values.scales;
    restoreDefaults(form.values.scales, form.shown.rows);
    if (form.values.scales != before) form.Command1_1_Enabled = true;
}

void EGTCommand_Click(VisibleOptions& form, int index) {
    setBoxes(form, ChannelKind::exhaust, index);
}

void AnalogCommand_Click(VisibleOptions& form, int index) {
    setBoxes(form, ChannelKind::analog, index);
}

void applyOptions(const VisibleOptionsValues& values, core::AppConfig& config) {
    for (int channel = 0; channel < channelCount; ++channel) {
        const bool drawn = at(values.Check1, channelFacts(channel).option.drawnBox);
        visibleFlag(config, channel) = drawn ? -1 : 0;
        if (const auto typed = core::strictNumber(rowOf(values.scales.Text_Magnify, channel)))
            core::keepOnFailure(at(config.Text_Magnify, channel), core::CByte(*typed + 1));
        core::keepOnFailure(
            at(config.ComboScale, channel), storedRaise(rowOf(values.scales.ComboScale, channel)));
        at(config.SmoothOption, channel) = at(values.Check1, firstSmoothBox + channel) ? 1 : 0;
    }
}

OptionsOutcome Command1_Click(VisibleOptions& form, int index, core::AppConfig& config) {
    const bool apply = index == 1;
    applyOptions(form.values, config);
    const OptionsOutcome outcome{apply || form.Command1_1_Enabled, !apply, !apply};
    if (apply) {
        form.Command1_1_Enabled = false;
        form.Command2 = "Exit";
    }
    return outcome;
}

CustomScaleValues loadCustomScale(const core::AppConfig& config) {
    const auto position = [](int stored) {
        return stored >= leastCustomScale && stored <= mostCustomScale ? stored : leastCustomScale;
    };
    return {position(config.CustomScaleLow), position(config.CustomScaleHigh)};
}

CustomSurface CustomScaleOK(const CustomScaleValues& values, double innerHeight, double innerWidth,
    core::AppConfig& config) {
    config.CustomScaleLow = static_cast<std::uint8_t>(values.Slider1);
    config.CustomScaleHigh = static_cast<std::uint8_t>(values.Slider2);
    // Required: what is taken off height and width is not what arranging the window takes off.
    return {(innerHeight - 265) * values.Slider1, (innerWidth - 2225) * values.Slider2,
        "&Graph Scale(Custom)"};
}

} // namespace kvo::setup
