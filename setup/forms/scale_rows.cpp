#include "setup/forms/scale_rows.h"

#include "platform/qt/text.h"
#include "setup/forms/checked_box.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <array>

namespace kvo::forms {

using namespace platform_qt;
using channels::ChannelFacts;
using channels::channelFacts;
using channels::ChannelKind;
using setup::rowOf;

namespace {

constexpr int buttonPadding = 8;

} // namespace

ScaleRows::ScaleRows(const Groups& names) {
    QGroupBox* speeds = makeGroup(QStringLiteral("Channels"), names.channels);
    QGroupBox* analogs = makeGroup(QStringLiteral("Analogs"), names.analogs);
    m_exhausts = makeGroup(QStringLiteral("Exhausts"), names.exhausts);
    const std::array groups{speeds, analogs, m_exhausts};
    // A group after the other, which is the order of the Tab key.
    for (QGroupBox* group : groups) {
        auto& grid = static_cast<QGridLayout&>(*group->layout());
        for (int channel = 0; channel < channels::channelCount; ++channel) {
            if (groups[static_cast<std::size_t>(setup::optionGroup(channel))] == group)
                makeRow(grid, channel);
        }
        grid.setRowStretch(grid.rowCount(), 1);
    }
    m_range = named(new QLabel(QStringLiteral("Range 0 to 50")), "Label_Range");
    Command3 = named(new QPushButton(QStringLiteral("&Restore Defaults")), "Command3");
    Command3->setAutoDefault(false);
    Command3->setFocusPolicy(Qt::TabFocus); // a click does not leave the box first
    Command3->setMinimumWidth(Command3->sizeHint().width() + 2 * buttonPadding);
    connect(Command3, &QPushButton::clicked, this, &ScaleRows::Command3_Click);
    auto* all = column({{row({{speeds, 1}, {analogs, 1}, {m_exhausts, 1}}), 1},
        row({m_range, LayoutPart::room(), Command3})});
    all->setContentsMargins(0, 0, 0, 0);
    setLayout(all);
}

QGroupBox* ScaleRows::makeGroup(const QString& caption, const char* name) {
    QGroupBox* group = named(new QGroupBox(caption), name);
    auto* grid = new QGridLayout(group);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(1, 1);
    return group;
}

void ScaleRows::makeRow(QGridLayout& grid, int channel) {
    const ChannelFacts& facts = channelFacts(channel);
    const int line = grid.rowCount();
    QLabel* label = Label_Magnify.set("Label_Magnify", channel, plainLabel({}));
    if (facts.kind == ChannelKind::analog) {
        auto* which = new QLabel(shown(facts.option.caption));
        Label_Magnify_Analog_Text.set("Label_Magnify_Analog_Text", facts.number, which);
        grid.addWidget(which, line, 0);
        grid.addWidget(label, line, 1);
    } else {
        grid.addWidget(label, line, 0, 1, 2);
    }
    QLineEdit* text = makeMagnify(channel);
    QComboBox* raise = makeRaise(channel);
    // A row keeps its size from tab to tab.
    const QSize size(
        raise->sizeHint().width(), qMax(text->sizeHint().height(), raise->sizeHint().height()));
    text->setFixedSize(size);
    raise->setFixedSize(size);
    label->setMinimumHeight(size.height());
    grid.addWidget(text, line, 2);
    grid.addWidget(raise, line, 3);
}

QLineEdit* ScaleRows::makeMagnify(int channel) {
    auto* text = Text_Magnify.set("Text_Magnify", channel, new QLineEdit);
    onlyFileLetters(text);
    selectOnFocus(text);
    checkOnLeave(text, setup::Text_Magnify_LostFocus);
    connect(text, &QLineEdit::textChanged, this, &ScaleRows::changed);
    return text;
}

QComboBox* ScaleRows::makeRaise(int channel) {
    auto* raise = ComboScale.set("ComboScale", channel, new QComboBox);
    for (const std::string_view entry : setup::raiseList) raise->addItem(shown(entry));
    raise->setCurrentIndex(-1);
    connect(raise, &QComboBox::currentIndexChanged, this, &ScaleRows::changed);
    // A pick of the entry that stands is a click too.
    connect(raise, &QComboBox::activated, this, &ScaleRows::changed);
    return raise;
}

void ScaleRows::showCaptions(const setup::ByChannel<std::string>& captions) {
    for (int channel = 0; channel < channels::channelCount; ++channel) {
        const QString caption = shown(rowOf(captions, channel));
        Label_Magnify[channel].setText(caption);
        Text_Magnify[channel].setAccessibleName(QStringLiteral("Magnify ") + caption);
        ComboScale[channel].setAccessibleName(QStringLiteral("Raise ") + caption);
    }
}

void ScaleRows::showValues(const setup::ScaleValues& values) {
    for (int channel = 0; channel < channels::channelCount; ++channel) {
        Text_Magnify[channel].setText(shown(rowOf(values.Text_Magnify, channel)));
        ComboScale[channel].setCurrentIndex(rowOf(values.ComboScale, channel));
    }
}

setup::ScaleValues ScaleRows::values() const {
    setup::ScaleValues values;
    for (int channel = 0; channel < channels::channelCount; ++channel) {
        rowOf(values.Text_Magnify, channel) = typed(Text_Magnify[channel].text());
        rowOf(values.ComboScale, channel) = ComboScale[channel].currentIndex();
    }
    return values;
}

void ScaleRows::showRows(const setup::OptionRows& rows, bool exhausts) {
    // What goes makes room for what comes, or the window would grow in between.
    for (const bool comes : {false, true}) {
        const auto change = [comes](QWidget& control, bool on) {
            if (on == comes) control.setVisible(on);
        };
        for (int channel = 0; channel < channels::channelCount; ++channel) {
            change(Label_Magnify[channel], rowOf(rows.Label_Magnify, channel));
            change(Text_Magnify[channel], rowOf(rows.Text_Magnify, channel));
            change(ComboScale[channel], rowOf(rows.ComboScale, channel));
        }
        for (int n = 1; n <= 8; ++n)
            change(Label_Magnify_Analog_Text[n], rows.Label_Magnify_Analog_Text[n]);
        change(*m_exhausts, exhausts);
    }
    m_range->setVisible(std::ranges::count(rows.Text_Magnify, true) > 0);
}

} // namespace kvo::forms
