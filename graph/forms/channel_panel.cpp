#include "graph/forms/channel_panel.h"

#include "graph/layout.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"

#include <QGridLayout>
#include <QMenu>

#include <algorithm>
#include <initializer_list>

namespace kvo::forms {

using namespace platform_qt;

namespace {

struct GroupFacts {
    const char* heading;
    std::initializer_list<int> channels;
};

// From left to right; a group is filled column by column.
const std::array<GroupFacts, 4>& groups() {
    using namespace channels;
    static const std::array<GroupFacts, 4> all{{
        {"Rpm", {engineChannel, clutchChannel, inputChannel, outputChannel}},
        {"Derived", {slipChannel, ratioChannel, mphChannel, rocosChannel, tyreGrowthChannel}},
        {"Analog", {analogChannel(1), analogChannel(2), analogChannel(3), analogChannel(4),
                       analogChannel(5), analogChannel(6), analogChannel(7), analogChannel(8)}},
        {"Exhaust Temps Deg F",
            {exhaustChannel(1), exhaustChannel(2), exhaustChannel(3), exhaustChannel(4),
                exhaustChannel(5), exhaustChannel(6), exhaustChannel(7), exhaustChannel(8)}},
    }};
    return all;
}
constexpr int exhaustGroup = 3;
// Lines of cells take what room there is. What is more than they may have stays free at the foot,
// so that full groups stand beside the others.
constexpr int cellStretch = 100;
constexpr int footStretch = 1;

const GroupFacts& factsOf(int group) {
    return groups()[static_cast<std::size_t>(group)];
}

int columnsOf(int group, int rows) {
    return graph::panelColumns(static_cast<int>(factsOf(group).channels.size()), rows);
}

struct TimeBox {
    const char* caption;
    const char* control;
    std::string core::TrackTimes::*time;
};
constexpr std::array<TimeBox, 6> timeBoxes{
    {{"60 ft", "Text_60FootTime", &core::TrackTimes::Text_60FootTime},
        {"330 ft", "Text_330FootTime", &core::TrackTimes::Text_330FootTime},
        {"660 ft", "Text_660FootTime", &core::TrackTimes::Text_660FootTime},
        {"660 mph", "Text_660FootSpeed", &core::TrackTimes::Text_660FootSpeed},
        {"1000 ft", "Text_1000FootTime", &core::TrackTimes::Text_1000FootTime},
        {"ET", "Text_ET", &core::TrackTimes::Text_ET}}};

// The caption of a channel that has no name of its own.
QString standIn(int channel) {
    const channels::ChannelFacts& facts = channels::channelFacts(channel);
    if (facts.kind == channels::ChannelKind::analog)
        return QStringLiteral("Analog %1").arg(facts.number);
    if (facts.kind == channels::ChannelKind::exhaust)
        return QStringLiteral("Exhaust %1").arg(facts.number);
    if (facts.kind == channels::ChannelKind::tyreGrowth) return QStringLiteral("Tyre Growth");
    return shown(facts.name);
}

platform::Colour asColour(std::int32_t stored) {
    return static_cast<platform::Colour>(stored);
}

} // namespace

// --- Making the controls

ChannelPanel::ChannelPanel(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("Frame3"));
    m_readOuts = named(new ReadOutLine, "ReadOuts");
    auto* panels = row({});
    panels->setSpacing(graph::groupGapPx);
    for (int group = 0; group < static_cast<int>(groups().size()); ++group)
        makeGroup(*panels, group);
    panels->addStretch(1);
    panels->addWidget(makeTimes());
    auto* all = column({LayoutPart(m_readOuts), LayoutPart(panels, 1)});
    all->setContentsMargins(
        graph::sideMarginPx, graph::lineGapPx, graph::sideMarginPx, graph::lineGapPx);
    all->setSpacing(graph::lineGapPx);
    setLayout(all);
    setRows(graph::fewRows);
}

void ChannelPanel::makeGroup(QHBoxLayout& panels, int group) {
    Group made;
    made.box = new QWidget;
    made.grid = new QGridLayout(made.box);
    made.grid->setContentsMargins(0, 0, 0, 0);
    made.grid->setHorizontalSpacing(graph::columnGapPx);
    made.grid->setVerticalSpacing(0);
    made.grid->setRowStretch(graph::manyRows + 1, footStretch);
    QLabel* heading = headingLabel(QLatin1String(factsOf(group).heading));
    if (group == exhaustGroup) {
        Label15 = named(heading, "Label15");
        m_exhaustHeading = QLatin1String(factsOf(group).heading);
    }
    made.grid->addWidget(heading, 0, 0, 1, columnsOf(group, graph::fewRows));
    for (const int channel : factsOf(group).channels) makeCell(channel, made.box);
    panels.addWidget(made.box, 10);
    m_groups.push_back(made);
}

void ChannelPanel::makeCell(int channel, QWidget* box) {
    auto* one = new ChannelCell(channels::channelFacts(channel), box);
    one->toggle->setStandIn(standIn(channel));
    const bool analog = channels::channelFacts(channel).kind == channels::ChannelKind::analog;
    if (!analog) one->toggle->setCaption(standIn(channel));
    m_cells[static_cast<std::size_t>(channel)] = one;
    connect(one->toggle, &QCheckBox::clicked, this, [this, channel] { emit toggled(channel); });
    connect(one->value, &ValueLabel::doubleClicked, this,
        [this, channel] { emit colourWanted(channel); });
    connect(one->toggle, &ChannelToggle::colourWanted, this,
        [this, channel] { emit colourWanted(channel); });
    one->value->setSpoken([this, channel] { return shown(graph::spokenBox(spokenBox(channel))); });
    one->overlay->setSpoken(
        [this, channel] { return shown(graph::spokenSecond(spokenBox(channel))); });
    one->toggle->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(one->toggle, &QWidget::customContextMenuRequested, this,
        [this, channel, one](
            const QPoint& at) { channelMenu(channel, one->toggle->mapToGlobal(at)); });
}

// The run's times as its info file has them.
QWidget* ChannelPanel::makeTimes() {
    Frame_Times = named(new QWidget, "Frame_Times");
    auto* grid = new QGridLayout(Frame_Times);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(graph::columnGapPx);
    grid->setVerticalSpacing(graph::timesGapPx);
    grid->addWidget(headingLabel(QStringLiteral("Times")), 0, 0, 1, 4);
    int place = 0;
    for (const TimeBox& box : timeBoxes) {
        auto* time = new ValueLabel(Frame_Times);
        time->setObjectName(QLatin1String(box.control));
        time->setSpoken([time, &box] {
            return shown(graph::spokenBox(
                {box.caption, typed(time->text()), {}, graph::SecondValue::none, {}}));
        });
        time->setBackgroundRole(QPalette::Base);
        time->setForegroundRole(QPalette::Text);
        time->setFixedWidth(time->fontMetrics().horizontalAdvance(QStringLiteral("000.000")) +
                            graph::timePaddingPx);
        time->setMaximumHeight(m_cells[0]->maximumHeight());
        time->setContentsMargins(graph::valueLeftPx, 1, graph::valueRightPx, 1);
        grid->addWidget(new QLabel(QLatin1String(box.caption)), 1 + place % 3, place / 3 * 2);
        grid->addWidget(time, 1 + place % 3, place / 3 * 2 + 1);
        ++place;
    }
    for (int line = 1; line <= graph::fewRows; ++line) grid->setRowStretch(line, 1);
    return Frame_Times;
}

// What a double click on the value does, for the keyboard.
void ChannelPanel::channelMenu(int channel, const QPoint& place) {
    QMenu menu(this);
    const QAction* colour = menu.addAction(QStringLiteral("&Colour...\tC"));
    if (menu.exec(place) == colour) emit colourWanted(channel);
}

std::vector<QWidget*> ChannelPanel::toggles() const {
    std::vector<QWidget*> all;
    for (const GroupFacts& group : groups()) {
        for (const int channel : group.channels) all.push_back(cell(channel).toggle);
    }
    return all;
}

// --- Where the cells stand

int ChannelPanel::widthNeeded(int rows) const {
    int columns = 0;
    for (int group = 0; group < static_cast<int>(groups().size()); ++group)
        columns += columnsOf(group, rows);
    const int groupCount = static_cast<int>(groups().size());
    std::optional<int> times;
    if (!Frame_Times->isHidden()) times = Frame_Times->minimumSizeHint().width();
    return graph::panelWidthPx(columns, groupCount, m_cells[0]->minimumSizeHint().width(), times);
}

int ChannelPanel::leastWidth() const {
    return widthNeeded(graph::manyRows);
}

int ChannelPanel::rowsFor(int widthPx) const {
    return widthNeeded(graph::fewRows) <= widthPx ? graph::fewRows : graph::manyRows;
}

int ChannelPanel::heightNeeded(int widthPx) {
    setRows(rowsFor(widthPx));
    layout()->activate();
    return minimumSizeHint().height();
}

void ChannelPanel::setRows(int rows) {
    if (rows == m_rows) return;
    m_rows = rows;
    for (int group = 0; group < static_cast<int>(m_groups.size()); ++group) {
        Group& one = m_groups[static_cast<std::size_t>(group)];
        one.columns = columnsOf(group, rows);
        for (const int channel : factsOf(group).channels) one.grid->removeWidget(&cell(channel));
        for (int line = 1; line <= graph::manyRows; ++line)
            one.grid->setRowStretch(line, line <= rows ? cellStretch : 0);
        placeCells(group);
        limitWidth(one);
    }
}

// The channels that a run has stand one behind the other; the others leave no gap.
void ChannelPanel::placeCells(int group) {
    const Group& one = m_groups[static_cast<std::size_t>(group)];
    const auto stands = [this, &one](int channel) {
        const ChannelCell& each = cell(channel);
        const bool shows = !each.toggle->isHidden();
        return each.isHidden() != shows && (one.grid->indexOf(&each) >= 0) == shows;
    };
    const auto& members = factsOf(group).channels;
    if (std::all_of(members.begin(), members.end(), stands)) return;
    int place = 0;
    for (const int channel : members) {
        ChannelCell& each = cell(channel);
        one.grid->removeWidget(&each);
        const bool shows = !each.toggle->isHidden();
        each.setVisible(shows);
        if (!shows) continue;
        const int rows = std::min(m_rows, static_cast<int>(members.size() + 1) / one.columns);
        one.grid->addWidget(&each, 1 + place % rows, place / rows);
        ++place;
    }
    one.box->setVisible(place > 0);
}

// Cells that are as wide as they get leave the rest of the panel empty.
void ChannelPanel::limitWidth(const Group& group) const {
    group.box->setMaximumWidth(graph::groupWidthPx(group.columns, m_cells[0]->maximumWidth()));
}

void ChannelPanel::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    if (rowsFor(width()) != m_rows) emit heightChanged();
}

void ChannelPanel::uncoverOverlay(bool on) {
    if (on == m_overlayUncovered) return;
    m_overlayUncovered = on;
    for (ChannelCell* one : m_cells) one->uncoverOverlay(on);
    for (const Group& group : m_groups) limitWidth(group);
    Frame_Times->setVisible(!on);
    if (rowsFor(width()) != m_rows) emit heightChanged();
    layout()->activate(); // a load that takes its time is painted before the next events
}

void ChannelPanel::showLabels(const graph::LabelVisibility& labels) {
    const auto apply = [](QWidget* widget, graph::Show show) {
        const bool visible = show == graph::Show::show;
        if (show != graph::Show::leave && widget->isHidden() == visible)
            widget->setVisible(visible);
    };
    const auto applyValues = [&](int channel, graph::Show show) {
        apply(cell(channel).value, show);
        apply(cell(channel).overlay, show);
    };
    apply(cell(channels::clutchChannel).toggle, labels.clutch);
    applyValues(channels::clutchChannel, labels.clutch);
    for (int n = 1; n <= 8; ++n) {
        apply(cell(channels::analogChannel(n)).toggle, labels.analogToggle[n]);
        applyValues(channels::analogChannel(n), labels.analogValue[n]);
        apply(cell(channels::exhaustChannel(n)).toggle, labels.exhaustToggle);
        applyValues(channels::exhaustChannel(n), labels.exhaustValue);
    }
    apply(Label15, labels.exhaustHeading);
    for (int group = 0; group < static_cast<int>(m_groups.size()); ++group) placeCells(group);
}

// --- What the labels show

void ChannelPanel::showTexts(const graph::ReadOutTexts& texts) {
    m_texts.time = texts.loggerTime;
    m_readOuts->showTime(shown(texts.loggerTime));
    for (const auto* list : {&texts.labels, &texts.emptied}) {
        for (const graph::LabelText& label : *list) showLabel(label);
    }
}

void ChannelPanel::showLabel(const graph::LabelText& label) {
    ChannelCell& shownIn = cell(label.channel);
    (label.overlay ? m_texts.overlays : m_texts.values)[static_cast<std::size_t>(label.channel)] =
        label.text;
    (label.overlay ? shownIn.overlay : shownIn.value)->setText(shown(label.text));
}

void ChannelPanel::showDifferences(
    const core::AppConfig& config, const std::optional<graph::Differences>& differences) {
    if (!differences) {
        if (m_texts.differences) emptyOverlayLabels();
        return;
    }
    m_texts.differences = true;
    m_texts.between = "Reference: " + differences->time;
    m_readOuts->showReference(shown(m_texts.between));
    for (const graph::LabelText& label : differences->labels) {
        showLabel(label);
        showOverlayColour(label.channel, asColour(channels::channelColour(config, label.channel)));
    }
}

void ChannelPanel::emptyLabels() {
    for (const ChannelCell* one : m_cells) one->value->clear();
    m_texts = {};
    emptyOverlayLabels();
    m_readOuts->showTime({});
    m_readOuts->showPointer({}, m_readOuts->pointerStandsInLine());
}

void ChannelPanel::emptyOverlayLabels() {
    for (const ChannelCell* one : m_cells) one->overlay->clear();
    m_texts.overlays = {};
    m_texts.between.clear();
    m_texts.differences = false;
    m_readOuts->showReference(std::nullopt);
}

void ChannelPanel::showChannelOn(const core::AppConfig& config, int channel) {
    const bool on = channels::channelOn(config, channel);
    const platform::Colour back =
        on ? asColour(config.GraphBackColour) : platform::systemButtonFace;
    for (ValueLabel* label : {cell(channel).value, cell(channel).overlay}) {
        label->setBack(back);
        label->setEnabled(on);
    }
    cell(channel).toggle->setChecked(on);
    cell(channel).toggle->setColour(asColour(channels::channelColour(config, channel)));
}

void ChannelPanel::showChannelsOn(const core::AppConfig& config) {
    for (const int channel : channels::labelOrder()) showChannelOn(config, channel);
}

void ChannelPanel::showColours(const core::AppConfig& config) {
    for (const int channel : channels::labelOrder()) {
        const platform::Colour fore = asColour(channels::channelColour(config, channel));
        for (ValueLabel* label : {cell(channel).value, cell(channel).overlay}) {
            label->setBack(asColour(config.GraphBackColour));
            label->setFore(fore);
        }
        cell(channel).toggle->setColour(fore);
    }
}

void ChannelPanel::showColour(int channel, platform::Colour colour) {
    cell(channel).toggle->setColour(colour);
    cell(channel).value->setFore(colour);
}

void ChannelPanel::showOverlayColour(int channel, platform::Colour colour) {
    cell(channel).overlay->setFore(colour);
}

void ChannelPanel::setAnalogCaption(int n, const std::string& caption) {
    cell(channels::analogChannel(n)).toggle->setCaption(shown(caption));
}

void ChannelPanel::showTimes(const core::TrackTimes& times) {
    for (const TimeBox& box : timeBoxes)
        control<QLabel>(*this, box.control).setText(shown(times.*box.time));
}

void ChannelPanel::setExhaustHeading(const QString& heading) {
    m_exhaustHeading = heading;
    Label15->setText(heading);
}

graph::SpokenBox ChannelPanel::spokenBox(int channel) const {
    const auto place = static_cast<std::size_t>(channel);
    graph::SpokenBox box;
    box.caption = typed(cell(channel).toggle->shownCaption());
    box.value = m_texts.values[place];
    box.second = m_texts.overlays[place];
    if (m_texts.differences) {
        box.kind = graph::SecondValue::difference;
    } else if (m_overlayUncovered) {
        box.kind = graph::SecondValue::overlay;
    }
    box.unit = graph::spokenUnit(channel);
    return box;
}

QString ChannelPanel::spokenCursor(const core::AppConfig& config) const {
    std::vector<graph::SpokenBox> boxes;
    for (int group = 0; group < static_cast<int>(m_groups.size()); ++group) {
        for (const int channel : factsOf(group).channels) {
            if (channels::channelOn(config, channel) && !cell(channel).toggle->isHidden())
                boxes.push_back(spokenBox(channel));
        }
    }
    const bool differs = m_texts.differences && !m_texts.time.empty();
    return shown(
        graph::spokenCursor(differs ? m_texts.time + ". " + m_texts.between : m_texts.time, boxes));
}

graph::PanelGroup ChannelPanel::shownGroup(const core::AppConfig& config, int group) const {
    graph::PanelGroup all;
    all.heading = group == exhaustGroup ? typed(m_exhaustHeading) : factsOf(group).heading;
    for (const int channel : factsOf(group).channels) {
        const ChannelCell& one = cell(channel);
        if (one.toggle->isHidden()) continue;
        const auto place = static_cast<std::size_t>(channel);
        const bool hasValue = !one.value->isHidden();
        all.cells.push_back({channel, typed(one.toggle->shownCaption()),
            hasValue ? m_texts.values[place] : std::string(),
            hasValue ? m_texts.overlays[place] : std::string(),
            channels::channelOn(config, channel)});
    }
    return all;
}

graph::PanelTexts ChannelPanel::shownTexts(
    const core::AppConfig& config, const core::TrackTimes& times, bool overlay) const {
    graph::PanelTexts texts;
    texts.time = m_texts.time;
    if (m_texts.differences) texts.time += "    " + m_texts.between;
    if (m_readOuts->pointerStandsInLine()) texts.pointer = typed(m_readOuts->pointerText());
    for (int group = 0; group < static_cast<int>(m_groups.size()); ++group)
        texts.groups.push_back(shownGroup(config, group));
    texts.overlay = overlay;
    texts.differences = m_texts.differences;
    if (texts.hasSecond()) return texts;
    texts.groups.push_back({"Times", {}});
    for (const TimeBox& box : timeBoxes)
        texts.groups.back().cells.push_back({-1, box.caption, times.*box.time, {}, true});
    return texts;
}

bool ChannelPanel::clutchLabelVisible() const {
    return !cell(channels::clutchChannel).value->isHidden();
}

bool ChannelPanel::canBeFound(int channel) const {
    const ValueLabel& label = *cell(channel).value;
    return label.isEnabled() && (channel != channels::clutchChannel || !label.isHidden());
}

} // namespace kvo::forms
