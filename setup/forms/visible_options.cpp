#include "setup/forms/visible_options.h"

#include "core/forms/doors.h"
#include "core/shared_state.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "setup/forms/checked_box.h"
#include "setup/forms/scale_rows.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>

namespace kvo::forms {

using namespace platform_qt;
using setup::OptionGroup;

namespace {

// The routines of "All Off" (0) and "All On" (1).
using AllRoutine = void (*)(setup::VisibleOptions& form, int index);

template <class Array> auto& at(Array& items, int index) {
    return items[static_cast<std::size_t>(index)];
}

} // namespace

Visible_Options::Visible_Options() {
    setObjectName(QStringLiteral("Visible_Options"));
    setWindowTitle(QStringLiteral("Visible Options"));
    makeLayout();
}

// --- The controls

void Visible_Options::makeLayout() {
    TabStrip1 = named(new QTabBar, "TabStrip1");
    TabStrip1->setAccessibleName(QStringLiteral("Kinds of options"));
    TabStrip1->setElideMode(Qt::ElideNone);
    TabStrip1->setUsesScrollButtons(false); // the form is as wide as its tabs
    for (const std::string_view tab : setup::visibleTabs) TabStrip1->addTab(shown(tab));
    connect(TabStrip1, &QTabBar::currentChanged, this, [this](int tab) {
        if (tab != m_tab) TabStrip1_Click(tab);
    });
    onClickOfTheTabInView(TabStrip1, [this](int tab) { TabStrip1_Click(tab); });
    m_frames = new QStackedWidget;
    m_frames->addWidget(makeBoxes(0, "Frame(0)"));
    m_frames->addWidget(makeScales());
    m_frames->addWidget(makeBoxes(setup::firstSmoothBox, "Frame(2)"));
    Command1.set("Command1", 0, new QPushButton(QStringLiteral("&Save")))->setDefault(true);
    Command1.set("Command1", 1, new QPushButton(QStringLiteral("&Apply")));
    Command2 = named(new QPushButton, "Command2");
    connect(&Command1[0], &QPushButton::clicked, this, [this] { Command1_Click(0); });
    connect(&Command1[1], &QPushButton::clicked, this, [this] { Command1_Click(1); });
    connect(Command2, &QPushButton::clicked, this, &Visible_Options::Command2_Click);
    for (QPushButton* button : {&Command1[0], &Command1[1], Command2}) {
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus); // a click does not leave the box first
    }
    auto* all = column({TabStrip1, {m_frames, 1},
        row({LayoutPart::room(), &Command1[0], &Command1[1], Command2})});
    all->setContentsMargins(12, 10, 12, 12);
    setLayout(all);
}

// The 25 boxes from one on, in their groups.
QWidget* Visible_Options::makeBoxes(int firstBox, const char* name) {
    auto* frame = named(new QWidget, name);
    const bool smooth = firstBox == setup::firstSmoothBox;
    QVBoxLayout* channels = column({});
    QVBoxLayout* analogs = column({});
    QVBoxLayout* exhausts = column({});
    const std::array columns{channels, analogs, exhausts};
    for (int box = firstBox; box < firstBox + channels::channelCount; ++box) {
        Check1.set("Check1", box, new QCheckBox);
        connect(&Check1[box], &QCheckBox::toggled, this, &Visible_Options::changed);
        at(columns, static_cast<int>(setup::optionGroup(setup::channelOfBox(box))))
            ->addWidget(&Check1[box]);
    }
    for (QVBoxLayout* each : columns) each->addStretch(1);
    if (!smooth) {
        analogs->addLayout(makeAllButtons("AnalogCommand", setup::AnalogCommand_Click));
        exhausts->addLayout(makeAllButtons("EGTCommand", setup::EGTCommand_Click));
    }
    const auto group = [](const char* caption, QLayout* layout) {
        auto* made = new QGroupBox(QLatin1String(caption));
        made->setLayout(layout);
        return made;
    };
    QGroupBox* withExhausts = EGTFrame.set("EGTFrame", smooth ? 2 : 0, group("Exhausts", exhausts));
    auto* all =
        row({{group("Channels", channels), 1}, {group("Analogs", analogs), 1}, {withExhausts, 1}});
    all->setContentsMargins(0, 6, 0, 0);
    frame->setLayout(all);
    return frame;
}

QHBoxLayout* Visible_Options::makeAllButtons(const char* name, AllRoutine routine) {
    ControlArray<QPushButton, 0, 1> buttons;
    const std::array captions{"All Off", "All On"};
    buttons.make(name, [&](int index) {
        auto* button = new QPushButton(QLatin1String(at(captions, index)));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this,
            [=, this] { runRule([=](setup::VisibleOptions& form) { routine(form, index); }); });
        return button;
    });
    return row({&buttons[0], &buttons[1]});
}

QWidget* Visible_Options::makeScales() {
    auto* frame = named(new QWidget, "Frame(1)");
    m_rows = new ScaleRows({"Magnify", "FrameAnalog", "EGTFrame(1)"});
    connect(m_rows, &ScaleRows::changed, this, &Visible_Options::changed);
    connect(m_rows, &ScaleRows::Command3_Click, this, &Visible_Options::Command3_Click);
    auto* all = column({m_rows});
    all->setContentsMargins(0, 6, 0, 0);
    frame->setLayout(all);
    return frame;
}

// --- The events

void Visible_Options::Form_Load(const core::FromOne<std::string, 8>& analogNames) {
    const core::SharedState& state = core::state();
    m_model = setup::optionsModel(
        state.Run.SampleCount != 0 ? state.Run.DataType : 0, state.Config.LoggerDataType);
    m_form = setup::loadVisibleOptions(state.Config, m_model);
    const auto captions = setup::boxCaptions(analogNames);
    for (int box = Check1.first; box <= Check1.last; ++box) {
        Check1[box].setText(shownCaption(at(captions, box)));
        const int channel = setup::channelOfBox(box);
        if (setup::optionGroup(channel) == OptionGroup::analogs)
            Check1[box].setToolTip(shown(channels::channelFacts(channel).option.caption));
    }
    m_rows->showCaptions(setup::rowCaptions(analogNames));
    showForm();
}

void Visible_Options::collect() {
    for (int box = Check1.first; box <= Check1.last; ++box)
        at(m_form.values.Check1, box) = Check1[box].isChecked();
    m_form.values.scales = m_rows->values();
}

void Visible_Options::showForm() {
    m_showing = true;
    const setup::VisibleOptionsShown& shownNow = m_form.shown;
    m_frames->setCurrentIndex(shownNow.Frame);
    for (int box = Check1.first; box <= Check1.last; ++box) {
        Check1[box].setVisible(at(shownNow.Check1, box));
        Check1[box].setChecked(at(m_form.values.Check1, box));
    }
    for (const int group : {0, 2}) EGTFrame[group].setVisible(at(shownNow.EGTFrame, group));
    m_rows->showRows(shownNow.rows, shownNow.EGTFrame[1]);
    m_rows->showValues(m_form.values.scales);
    Command1[1].setEnabled(m_form.Command1_1_Enabled);
    Command2->setText(QString::fromStdString(m_form.Command2));
    m_showing = false;
}

template <class Rule> void Visible_Options::runRule(Rule rule) {
    collect();
    rule(m_form);
    showForm();
}

// Check1 Click, ComboScale Click and Text_Magnify Change.
void Visible_Options::changed() {
    if (m_showing) return;
    m_form.Command1_1_Enabled = true;
    Command1[1].setEnabled(true);
}

// A click on a tab takes no focus; the box that has it is left all the same. Box after box goes
// then, so the focus stays with the tabs and wanders into none that is judged on leaving.
void Visible_Options::TabStrip1_Click(int tab) {
    if (!mayLeaveBox(*this)) return TabStrip1->setCurrentIndex(m_tab);
    if (m_rows->isAncestorOf(focusWidget())) TabStrip1->setFocus();
    m_tab = tab;
    const int vehicle = core::state().Config.Vehicle_Type;
    runRule([=, this](setup::VisibleOptions& form) {
        setup::TabStrip1_Click(form.shown, static_cast<setup::VisibleTab>(tab), m_model, vehicle);
    });
}

void Visible_Options::Command1_Click(int index) {
    if (!mayLeaveBox(*this)) return;
    collect();
    setup::OptionsOutcome outcome;
    {
        const Hourglass busy(*platform::services().dialogs);
        outcome = setup::Command1_Click(m_form, index, core::state().Config);
        if (outcome.redraw) doors().redrawGraph();
    }
    if (outcome.graphDirty) doors().keepGraphOptions();
    if (outcome.unload) return unload<Visible_Options>();
    showForm();
}

void Visible_Options::Command2_Click() {
    unload<Visible_Options>();
}

// Escape and the window's close button.
void Visible_Options::reject() {
    Command2_Click();
}

void Visible_Options::Command3_Click() {
    if (mayLeaveBox(*this)) runRule(setup::Command3_Click);
}

} // namespace kvo::forms
