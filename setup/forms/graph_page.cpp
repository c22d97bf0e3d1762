#include "setup/forms/graph_page.h"

#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "setup/forms/checked_box.h"
#include "setup/forms/scale_rows.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QTabBar>

namespace kvo::forms {

using namespace platform_qt;

GraphPage::GraphPage() {
    setObjectName(QStringLiteral("Graph"));
    auto* all = row({makeLooks(), {makeScales(), 1}});
    all->setContentsMargins(0, 6, 0, 0);
    all->setSpacing(12);
    setLayout(all);
}

QWidget* GraphPage::makeLooks() {
    auto* box = new QGroupBox(QStringLiteral("Graph"));
    auto* grid = new QGridLayout(box);
    grid->setVerticalSpacing(8);
    G_Res = makeList(*grid, QStringLiteral("&Graph Resolution:"), "G_Res", setup::resolutionList);
    MaxRpm = makeList(*grid, QStringLiteral("&Max. Eng. Rpm:"), "MaxRpm", setup::maxRpmList);
    Exhaust = makeList(*grid, QStringLiteral("&Exhaust Temps:"), "Exhaust", setup::temperatureList);
    GridStyle = makeList(*grid, QStringLiteral("Gri&d Style:"), "GridStyle", setup::lineStyleList);
    OverlayStyle =
        makeList(*grid, QStringLiteral("&Overlay Style:"), "OverlayStyle", setup::lineStyleList);
    OverlayColours = makeList(
        *grid, QStringLiteral("Overlay &Colours:"), "OverlayColours", setup::overlayColoursList);
    grid->setRowStretch(grid->rowCount(), 1);
    return box;
}

QComboBox* GraphPage::makeList(QGridLayout& grid, const QString& caption, const char* name,
    std::span<const std::string_view> entries) {
    auto* list = named(new QComboBox, name);
    for (const std::string_view entry : entries) list->addItem(shown(entry));
    const int line = grid.rowCount();
    grid.addWidget(buddyLabel(caption, list), line, 0);
    grid.addWidget(list, line, 1);
    return list;
}

QWidget* GraphPage::makeScales() {
    TabStrip2 = named(new QTabBar, "TabStrip2");
    TabStrip2->setAccessibleName(QStringLiteral("Scales of the channels"));
    TabStrip2->setElideMode(Qt::ElideNone);
    TabStrip2->setUsesScrollButtons(false);
    for (const std::string_view tab : setup::rowsTabs) TabStrip2->addTab(shown(tab));
    connect(TabStrip2, &QTabBar::currentChanged, this, [this](int tab) {
        if (tab != static_cast<int>(m_shown.TabStrip2)) TabStrip2_Click(tab);
    });
    onClickOfTheTabInView(TabStrip2, [this](int tab) { TabStrip2_Click(tab); });
    m_rows = new ScaleRows({"Magnify", "FrameAnalog", "FrameExhaust"});
    connect(m_rows, &ScaleRows::Command3_Click, this, &GraphPage::Command3_Click);
    auto* scales = new QWidget;
    auto* all = column({TabStrip2, {m_rows, 1}});
    all->setContentsMargins(0, 0, 0, 0);
    scales->setLayout(all);
    return scales;
}

void GraphPage::showValues(const setup::SetupValues& values) {
    G_Res->setCurrentIndex(values.graph.G_Res);
    MaxRpm->setCurrentIndex(values.graph.MaxRpm);
    Exhaust->setCurrentIndex(values.graph.Exhaust);
    GridStyle->setCurrentIndex(values.graph.GridStyle);
    OverlayStyle->setCurrentIndex(values.graph.OverlayStyle);
    OverlayColours->setCurrentIndex(values.graph.OverlayColours);
    m_rows->showValues(values.graph.scales);
    showRows(values);
}

void GraphPage::showRows(const setup::SetupValues& values) {
    m_shown = values.rows;
    m_rows->showCaptions(values.Label_Magnify);
    m_rows->showRows(m_shown.options, m_shown.FrameExhaust);
}

void GraphPage::collect(setup::SetupValues& values) const {
    values.graph.G_Res = G_Res->currentIndex();
    values.graph.MaxRpm = MaxRpm->currentIndex();
    values.graph.Exhaust = Exhaust->currentIndex();
    values.graph.GridStyle = GridStyle->currentIndex();
    values.graph.OverlayStyle = OverlayStyle->currentIndex();
    values.graph.OverlayColours = OverlayColours->currentIndex();
    values.graph.scales = m_rows->values();
}

// A click on a tab takes no focus; the box that has it is left all the same. Box after box goes
// then, so the focus stays with the tabs and wanders into none that is judged on leaving.
void GraphPage::TabStrip2_Click(int tab) {
    const int before = static_cast<int>(m_shown.TabStrip2);
    if (!mayLeaveBox(*window())) return TabStrip2->setCurrentIndex(before);
    if (m_rows->isAncestorOf(window()->focusWidget())) TabStrip2->setFocus();
    emit TabStrip2_Clicked(static_cast<setup::RowsTab>(tab));
}

// Changes the controls only; the form takes them with its Save.
void GraphPage::Command3_Click() {
    if (!mayLeaveBox(*window())) return;
    setup::ScaleValues values = m_rows->values();
    setup::restoreDefaults(values, m_shown.options);
    m_rows->showValues(values);
}

} // namespace kvo::forms
