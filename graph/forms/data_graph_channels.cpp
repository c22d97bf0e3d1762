// The channels of the graph window: toggles, value labels and their colours.
#include "graph/forms/data_graph.h"

#include "core/basic/numbers.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QMenu>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr std::int16_t flagOn = -1;

platform::Colour asColour(std::int32_t stored) {
    return static_cast<platform::Colour>(stored);
}

} // namespace

// The caption that a channel bears before a run has named it.
QString DataGraph::channelCaption(int channel) const {
    const channels::ChannelFacts& facts = channels::channelFacts(channel);
    if (facts.kind == channels::ChannelKind::analog)
        return shown(core::state().Config.AnalogName[facts.number]);
    return standIn(channel);
}

// The caption of a channel that has no name.
QString DataGraph::standIn(int channel) {
    const channels::ChannelFacts& facts = channels::channelFacts(channel);
    if (facts.kind == channels::ChannelKind::analog)
        return QStringLiteral("Analog %1").arg(facts.number);
    if (facts.kind == channels::ChannelKind::exhaust)
        return QStringLiteral("Exhaust %1").arg(facts.number);
    if (facts.kind == channels::ChannelKind::tyreGrowth) return QStringLiteral("Tyre Growth");
    return shown(facts.name);
}

void DataGraph::ChanaleEnable() {
    const core::AppConfig& config = core::state().Config;
    for (const int channel : channels::labelOrder()) {
        const bool on = channels::channelOn(config, channel);
        const platform::Colour back =
            on ? asColour(config.GraphBackColour) : platform::systemButtonFace;
        const platform::Colour fore = asColour(channels::channelColour(config, channel));
        for (ValueLabel* label : {cell(channel).value, cell(channel).overlay}) {
            label->setBack(back);
            label->setEnabled(on);
        }
        cell(channel).toggle->setChecked(on);
        cell(channel).toggle->setColour(fore);
    }
}

void DataGraph::Change_Colour() {
    m_drawing.Change_Colour();
    const core::AppConfig& config = core::state().Config;
    for (const int channel : channels::labelOrder()) {
        const platform::Colour fore = asColour(channels::channelColour(config, channel));
        for (ValueLabel* label : {cell(channel).value, cell(channel).overlay}) {
            label->setBack(asColour(config.GraphBackColour));
            label->setFore(fore);
        }
        cell(channel).toggle->setColour(fore);
    }
}

void DataGraph::ShowChannelsForType(int type) {
    showLabels(graph::ShowChannelsForType(type, core::state().Config.Vehicle_Type));
}

void DataGraph::Toggle_Click(int channel) {
    core::SharedState& state = core::state();
    state.ImportMode = flagOn; // is GraphDirty here
    Trend->surface().setAutoRedraw(true);
    std::int16_t& visible = channels::visibleFlag(state.Config, channel);
    if (visible == 0) {
        // Only this channel, on top of the picture as it stands.
        visible = flagOn;
        m_drawing.drawChannel(channel);
        if (state.OverlayLoaded != 0) m_drawing.drawOverlayChannel(channel);
    } else {
        visible = 0;
        DrawTrend();
        if (state.OverlayLoaded != 0) m_drawing.OverLayDraw();
    }
    ChanaleEnable();
    TimeLine();
}

// The colour dialog of a channel, Trend_Colour_Set of the rules. Its title is not shown.
void DataGraph::Trend_Colour_Set(int channel) {
    core::SharedState& state = core::state();
    platform::Dialogs& dialogs = *platform::services().dialogs;
    std::int32_t& colour = channels::colourField(state.Config, channel);
    const auto chosen = dialogs.chooseColour(graph::colourDialogStart(colour));
    if (!chosen) return;
    if (*chosen == asColour(state.Config.GraphBackColour)) {
        dialogs.messageBox("You can't have the same colour as the graph background.",
            platform::boxStyle::critical, "Error");
        return;
    }
    colour = static_cast<std::int32_t>(*chosen);
    state.ImportMode = flagOn; // is GraphDirty here
    cell(channel).toggle->setColour(*chosen);
    cell(channel).value->setFore(*chosen);
}

void DataGraph::Value_DblClick(int channel) {
    core::SharedState& state = core::state();
    Trend_Colour_Set(channel);
    if (!channels::channelOn(state.Config, channel)) return;
    Trend->surface().setAutoRedraw(true);
    m_drawing.drawChannel(channel);
    if (state.OverlayLoaded != 0) m_drawing.drawOverlayChannel(channel);
    TimeLine();
}

// What a double click on the value does, for the keyboard.
void DataGraph::channelMenu(int channel, const QPoint& place) {
    QMenu menu(this);
    const QAction* colour = menu.addAction(QStringLiteral("&Colour..."));
    if (menu.exec(place) == colour) Value_DblClick(channel);
}

void DataGraph::Graph_Colour_Invert_Click() {
    core::SharedState& state = core::state();
    const auto chosen = platform::services().dialogs->chooseColour(
        graph::colourDialogStart(state.Config.GraphBackColour));
    state.ImportMode = flagOn; // is GraphDirty here
    if (!chosen) return;
    state.Config.GraphBackColour = static_cast<std::int32_t>(*chosen);
    Change_Colour();
    ChanaleEnable();
    redrawAll();
}

} // namespace kvo::forms
