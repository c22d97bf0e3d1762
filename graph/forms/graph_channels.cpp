#include "graph/forms/graph_channels.h"

#include "core/shared_state.h"
#include "graph/forms/channel_panel.h"
#include "graph/line_width.h"
#include "platform/services.h"

namespace kvo::forms {

GraphChannels::GraphChannels(graph::GraphView& view, graph::Course& course,
    graph::CourseView& window, graph::TrendDrawing& drawing, graph::TrendHost& host,
    ChannelPanel& panel)
    : m_view(view), m_course(course), m_window(window), m_drawing(drawing), m_host(host),
      m_panel(panel) {
    connect(&m_panel, &ChannelPanel::toggled, this, &GraphChannels::Toggle_Click);
    connect(&m_panel, &ChannelPanel::colourWanted, this, &GraphChannels::Value_DblClick);
}

void GraphChannels::ChanaleEnable() {
    m_panel.showChannelsOn(core::state().Config);
}

void GraphChannels::Change_Colour() {
    m_drawing.Change_Colour();
    m_panel.showColours(core::state().Config);
}

void GraphChannels::Toggle_Click(int channel) {
    core::AppConfig& config = core::state().Config;
    m_view.GraphDirty = core::flagOn;
    m_host.trend().setAutoRedraw(true);
    std::int16_t& visible = channels::visibleFlag(config, channel);
    if (visible == 0) {
        // Only this channel, on top of the picture as it stands.
        visible = core::flagOn;
        m_drawing.drawChannelAlone(channel);
    } else {
        visible = 0;
        m_window.drawTrend();
        if (m_course.overlayLoaded()) m_window.overLayDraw();
    }
    m_panel.showChannelOn(config, channel);
    m_window.timeLine();
}

// The colour dialog of a channel. None where its colour stays.
std::optional<platform::Colour> GraphChannels::Trend_Colour_Set(int channel) {
    core::AppConfig& config = core::state().Config;
    platform::Dialogs& dialogs = *platform::services().dialogs;
    std::int32_t& colour = channels::colourField(config, channel);
    const auto chosen = dialogs.chooseColour(graph::colourDialogStart(colour));
    if (!chosen) return std::nullopt;
    if (*chosen == static_cast<platform::Colour>(config.GraphBackColour)) {
        dialogs.messageBox("You can't have the same colour as the graph background.",
            platform::boxStyle::critical, "Error");
        return std::nullopt;
    }
    colour = static_cast<std::int32_t>(*chosen);
    m_view.GraphDirty = core::flagOn;
    return chosen;
}

void GraphChannels::Value_DblClick(int channel) {
    if (const auto colour = Trend_Colour_Set(channel)) {
        m_panel.showColour(channel, *colour);
        m_window.showState();
    }
    if (!channels::channelOn(core::state().Config, channel)) return;
    m_host.trend().setAutoRedraw(true);
    m_drawing.drawChannelAlone(channel);
    m_window.timeLine();
}

void GraphChannels::Graph_Colour_Invert() {
    core::AppConfig& config = core::state().Config;
    const auto chosen = platform::services().dialogs->chooseColour(
        graph::colourDialogStart(config.GraphBackColour));
    m_view.GraphDirty = core::flagOn;
    if (!chosen) return;
    config.GraphBackColour = static_cast<std::int32_t>(*chosen);
    showNewGround();
}

void GraphChannels::chooseScheme(graph::ColourScheme scheme) {
    core::AppConfig& config = core::state().Config;
    const bool ownColours = !graph::schemeOf(config);
    if (ownColours && platform::services().dialogs->messageBox(
                          "Some colours of the graph were chosen by hand. Replace them all?",
                          platform::boxStyle::yesNo + platform::boxStyle::question,
                          "Colours") != platform::Reply::yes) {
        return m_window.showState(); // the check mark goes back to where it was
    }
    graph::takeScheme(config, scheme);
    m_view.GraphDirty = core::flagOn;
    showNewGround();
}

void GraphChannels::chooseLineWidth(int widthPx) {
    m_view.LineWidthPx = widthPx;
    graph::keepLineWidth(*platform::services().settings, widthPx);
    m_course.redraw();
    m_window.showState();
}

void GraphChannels::showNewGround() {
    Change_Colour();
    ChanaleEnable();
    m_course.redraw();
    m_window.showState();
}

} // namespace kvo::forms
