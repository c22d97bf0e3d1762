#include "setup/forms/setup_software.h"

#include "core/config.h"
#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/shared_state.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"
#include "platform/text.h"
#include "setup/forms/analog_setup_frame.h"
#include "setup/forms/checked_box.h"
#include "setup/forms/data_logger_page.h"
#include "setup/forms/edit_gears_frame.h"
#include "setup/forms/general_page.h"
#include "setup/forms/graph_page.h"

#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>

#include <algorithm>
#include <string>

namespace kvo::forms {

using namespace platform_qt;
using setup::SetupValues;

SetupSoftware::SetupSoftware() {
    setObjectName(QStringLiteral("SetupSoftware"));
    setWindowTitle(QStringLiteral("Setup Software"));
    makeLayout();
    connectPages();
    Form_Load();
}

void SetupSoftware::makeLayout() {
    General = new GeneralPage;
    Graph = new GraphPage;
    Data_Logger = new DataLoggerPage;
    TabStrip1 = named(new QTabBar, "TabStrip1");
    TabStrip1->setAccessibleName(QStringLiteral("Parts of the setup"));
    m_pages = new QStackedWidget;
    for (const char* caption : {"General", "Graph", "Data Logger"})
        TabStrip1->addTab(QLatin1String(caption));
    for (SetupPage* page : pages()) m_pages->addWidget(page);
    SaveSetup = named(new QPushButton(QStringLiteral("&Save")), "SaveSetup");
    CancelSetup = named(new QPushButton(QStringLiteral("Cancel")), "CancelSetup");
    for (QPushButton* button : {SaveSetup, CancelSetup}) {
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus); // a click does not leave the box first
    }
    SaveSetup->setDefault(true);
    auto* all =
        column({TabStrip1, {m_pages, 1}, row({LayoutPart::room(), SaveSetup, CancelSetup})});
    all->setContentsMargins(12, 10, 12, 12);
    setLayout(all);
    Edit_Gears = new EditGearsFrame(m_values.editGears, this);
    Analog_Setup = new AnalogSetupFrame(this);
    for (QFrame* frame : frames()) {
        frame->setAutoFillBackground(true);
        frame->installEventFilter(this);
    }
}

void SetupSoftware::connectPages() {
    auto* forward = new QShortcut(QKeySequence::NextChild, this);
    auto* back = new QShortcut(QKeySequence::PreviousChild, this);
    connect(forward, &QShortcut::activated, this, [this] { turnTab(1); });
    connect(back, &QShortcut::activated, this, [this] { turnTab(-1); });
    connect(TabStrip1, &QTabBar::currentChanged, this, &SetupSoftware::TabStrip1_Click);
    connect(SaveSetup, &QPushButton::clicked, this, &SetupSoftware::SaveSetup_Click);
    connect(CancelSetup, &QPushButton::clicked, this, &SetupSoftware::CancelSetup_Click);
    connect(General, &GeneralPage::D_Modal_LostFocus, this,
        [this] { runRule([](SetupValues& v) { setup::D_Modal_Change(v.rows, v.D_Modal); }); });
    connect(General, &GeneralPage::Vehicle_Type_LostFocus, this, [this] {
        runRule([](SetupValues& v) { setup::Vehicle_Type_Change(v.rows, v.Vehicle_Type); });
    });
    connect(General, &GeneralPage::OPassword_Change, this, [this] {
        runRule([](SetupValues& v) { setup::OPassword_Change(v.password, core::state().Config); });
    });
    connect(Graph, &GraphPage::TabStrip2_Clicked, this, [this](setup::RowsTab tab) {
        runRule([tab](SetupValues& v) {
            setup::TabStrip2_Click(v.rows, tab, v.D_Modal, v.Vehicle_Type);
        });
    });
    connect(
        Data_Logger, &DataLoggerPage::GearRatios_Clicked, this, &SetupSoftware::GearRatios_Click);
    connect(
        Data_Logger, &DataLoggerPage::AnalogSetup_Clicked, this, &SetupSoftware::AnalogSetup_Click);
    connect(Edit_Gears, &EditGearsFrame::accepted, this, &SetupSoftware::Ok_Click);
    connect(Edit_Gears, &EditGearsFrame::left, this, &SetupSoftware::frameLeft);
    connect(Analog_Setup, &AnalogSetupFrame::captionChanged, this,
        [this](int channel, const std::string& caption) {
            runRule([&](SetupValues& v) { v.AnalogSetup[channel] = caption; });
        });
    connect(Analog_Setup, &AnalogSetupFrame::left, this, &SetupSoftware::frameLeft);
}

std::array<SetupPage*, 3> SetupSoftware::pages() const {
    return {General, Graph, Data_Logger};
}

std::array<QFrame*, 2> SetupSoftware::frames() const {
    return {Edit_Gears, Analog_Setup};
}

void SetupSoftware::Form_Load() {
    m_values = setup::loadSetup(core::state().Config);
    for (SetupPage* page : pages()) page->showValues(m_values);
    Edit_Gears->load();
    General->setFocus();
}

void SetupSoftware::collect() {
    for (const SetupPage* page : pages()) page->collect(m_values);
}

void SetupSoftware::showRows() {
    for (SetupPage* page : pages()) page->showRows(m_values);
}

template <class Rule> void SetupSoftware::runRule(Rule rule) {
    collect();
    rule(m_values);
    showRows();
}

// A click on a tab takes no focus; the box that has it is left all the same.
void SetupSoftware::TabStrip1_Click(int tab) {
    if (tab == m_pages->currentIndex()) return;
    if (mayLeaveBox(*this))
        m_pages->setCurrentIndex(tab);
    else
        TabStrip1->setCurrentIndex(m_pages->currentIndex());
}

// Every control of such a name, and every member of an array of that name. A label goes with its
// box, so that its letter is free for the frame.
void SetupSoftware::EnableSetupControls(bool Enabled) {
    const auto widgets = findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        const auto* label = qobject_cast<QLabel*>(widget);
        const QWidget* named =
            label != nullptr && label->buddy() != nullptr ? label->buddy() : widget;
        const std::string name = named->objectName().section(QLatin1Char('('), 0, 0).toStdString();
        if (std::ranges::count(setup::lockedControls, name) > 0) widget->setEnabled(Enabled);
    }
}

// By the keys that turn the pages of a window of tabs.
void SetupSoftware::turnTab(int by) {
    if (!TabStrip1->isEnabled()) return;
    const int tabs = TabStrip1->count();
    TabStrip1->setCurrentIndex((TabStrip1->currentIndex() + by + tabs) % tabs);
}

bool SetupSoftware::lockFor(QWidget* button) {
    if (!mayLeaveBox(*this)) return false;
    collect();
    m_opener = button;
    // Box after box is disabled: the focus must not wander into one that is judged on leaving.
    if (QWidget* box = focusWidget()) box->clearFocus();
    EnableSetupControls(false);
    return true;
}

void SetupSoftware::GearRatios_Click(QWidget* button) {
    if (lockFor(button)) Edit_Gears->open(m_values.gearing);
}

void SetupSoftware::AnalogSetup_Click(int channel, QWidget* button) {
    if (lockFor(button)) Analog_Setup->open(channel, m_values.AnalogSetup[channel]);
}

void SetupSoftware::Ok_Click() {
    runRule([](SetupValues& v) { setup::Ok_Click(v.editGears, v.gearing); });
}

void SetupSoftware::frameLeft() {
    EnableSetupControls(true);
    SaveSetup->setDefault(true);
    if (m_opener != nullptr) m_opener->setFocus();
}

bool SetupSoftware::eventFilter(QObject* object, QEvent* event) {
    const bool sized = event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show;
    if (auto* frame = sized ? qobject_cast<QFrame*>(object) : nullptr) place(*frame);
    return QDialog::eventFilter(object, event);
}

void SetupSoftware::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    for (QFrame* frame : frames()) place(*frame);
}

void SetupSoftware::place(QFrame& frame) {
    const QSize size = frame.sizeHint().boundedTo(this->size());
    frame.setGeometry({{(width() - size.width()) / 2, (height() - size.height()) / 2}, size});
    frame.raise();
}

// Escape and the window's close button. With a frame up they are the frame's own Cancel, since the
// form's is locked.
void SetupSoftware::reject() {
    if (Edit_Gears->isVisible()) return Edit_Gears->Cancel_Click();
    if (Analog_Setup->isVisible()) return Analog_Setup->Command1_Click();
    CancelSetup_Click();
}

void SetupSoftware::CancelSetup_Click() {
    kept<SetupSoftware>().DialogCancelled = true;
    unload<SetupSoftware>();
}

void SetupSoftware::SaveSetup_Click() {
    if (!mayLeaveBox(*this)) return;
    collect();
    core::SharedState& state = core::state();
    const core::AppConfig before = state.Config;
    const setup::SetupSave save = setup::saveSetup(m_values, state.Config);
    showRows(); // a refused save too has named the battery
    if (!save.taken()) {
        platform::services().dialogs->messageBox(
            platform::fromFile(save.message), platform::boxStyle::critical, core::programName);
        return lookAt(save.box);
    }
    doors().loadLogo();
    if (!writeConfig()) {
        // The entries stay in the form alone: after a Cancel no other writer finds them.
        state.Config = before;
        return doors().loadLogo();
    }
    kept<SetupSoftware>().DialogCancelled = false;
    unload<SetupSoftware>();
}

void SetupSoftware::lookAt(const std::string& control) {
    auto* box = findChild<QWidget*>(QString::fromStdString(control));
    if (box == nullptr) return;
    for (int tab = 0; tab < m_pages->count(); ++tab)
        if (m_pages->widget(tab)->isAncestorOf(box)) TabStrip1->setCurrentIndex(tab);
    box->setFocus();
}

// A file that could not be written is told, and the form stays with all its entries.
bool SetupSoftware::writeConfig() {
    core::SharedState& state = core::state();
    platform::Services& services = platform::services();
    const platform::WriteResult saved =
        core::SaveConfig(state.AppFolder, state.Config, *services.files);
    if (saved) {
        state.ConfigKnown = true; // what counts from now on is what the user has stated
        return true;
    }
    services.dialogs->beep();
    services.dialogs->messageBox("The setup could NOT be saved to Disk.\r\n" + saved.message +
                                     "\r\n\r\nIt stays in the form: make room and save again.",
        platform::boxStyle::critical, core::programName);
    return false;
}

} // namespace kvo::forms
