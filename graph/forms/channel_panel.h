#pragma once
// The panel under the surface: the line of time and read-out, and the channels in their groups,
// each with its toggle and value labels, and the run's track times. It shows what it is given.
#include "core/config_record.h"
#include "core/open_run.h"
#include "graph/forms/channel_cell.h"
#include "graph/forms/read_out_line.h"
#include "graph/print_panel.h"
#include "graph/read_outs.h"
#include "graph/reference.h"
#include "graph/spoken.h"
#include "graph/view.h"

#include <QFrame>

#include <array>
#include <optional>
#include <string>
#include <vector>

class QGridLayout;
class QHBoxLayout;

namespace kvo::forms {

class ChannelPanel : public QFrame {
    Q_OBJECT

public:
    explicit ChannelPanel(QWidget* parent);

    ReadOutLine& readOuts() { return *m_readOuts; }
    // The toggles in the order of the panel, for the tab order.
    std::vector<QWidget*> toggles() const;

    // The narrowest that the panel can be with all that it may show.
    int leastWidth() const;
    // Height that the panel needs at a width. It takes more rows where the columns do not fit.
    int heightNeeded(int widthPx);

    // Value and overlay labels of the channels that are named; the others keep what they show.
    void showTexts(const graph::ReadOutTexts& texts);
    // Differences to a reference, in the labels of the overlay's values and in their channels' own
    // colours; none while there is no reference.
    void showDifferences(
        const core::AppConfig& config, const std::optional<graph::Differences>& differences);
    void emptyLabels();
    void emptyOverlayLabels();
    void showLabels(const graph::LabelVisibility& labels);
    // Toggles, grounds and whether labels are enabled, by which channels are on.
    void showChannelsOn(const core::AppConfig& config);
    void showChannelOn(const core::AppConfig& config, int channel);
    // All colours of the configuration.
    void showColours(const core::AppConfig& config);
    void showColour(int channel, platform::Colour colour);
    void showOverlayColour(int channel, platform::Colour colour);
    void setAnalogCaption(int n, const std::string& caption);
    void showTimes(const core::TrackTimes& times);
    void setExhaustHeading(const QString& heading);
    // Room for the overlay's values, or for differences, which cover the run's times.
    void uncoverOverlay(bool on);

    // All that stands in the panel, to be printed: of a run with these times, with an overlay or
    // without, or with the differences to a reference.
    graph::PanelTexts shownTexts(
        const core::AppConfig& config, const core::TrackTimes& times, bool overlay) const;
    // The time and the values of the channels that are on, as they are read aloud.
    QString spokenCursor(const core::AppConfig& config) const;
    bool clutchLabelVisible() const;
    // Whether the pointer may find the channel's curve: its value label is enabled, and there.
    bool canBeFound(int channel) const;

signals:
    void toggled(int channel);
    // The user wants another colour for a channel.
    void colourWanted(int channel);
    // The panel needs another height at its width.
    void heightChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Group {
        QWidget* box = nullptr;
        QGridLayout* grid = nullptr;
        int columns = 1;
    };
    void showLabel(const graph::LabelText& label);
    QWidget* makeTimes();
    void makeGroup(QHBoxLayout& panels, int group);
    void makeCell(int channel, QWidget* box);
    void channelMenu(int channel, const QPoint& place);
    void setRows(int rows);
    void placeCells(int group);
    void limitWidth(const Group& group) const;
    // What the labels show.
    struct Texts {
        std::string time;
        std::string between; // the time from a reference
        bool differences = false;
        std::array<std::string, channels::channelCount> values;
        std::array<std::string, channels::channelCount> overlays;
    };
    graph::SpokenBox spokenBox(int channel) const;
    graph::PanelGroup shownGroup(const core::AppConfig& config, int group) const;
    int widthNeeded(int rows) const;
    int rowsFor(int widthPx) const;
    ChannelCell& cell(int channel) const { return *m_cells[static_cast<std::size_t>(channel)]; }

    ReadOutLine* m_readOuts = nullptr;
    QLabel* Label15 = nullptr; // heading of the exhausts
    QWidget* Frame_Times = nullptr;
    std::array<ChannelCell*, channels::channelCount> m_cells{};
    std::vector<Group> m_groups;
    Texts m_texts;
    QString m_exhaustHeading;
    bool m_overlayUncovered = false;
    int m_rows = 0;
};

} // namespace kvo::forms
