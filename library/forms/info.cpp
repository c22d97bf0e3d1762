#include "library/forms/info.h"

#include "core/config.h"
#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/run_title.h"
#include "core/shared_state.h"
#include "library/forms/notes_edit.h"
#include "library/forms/unread.h"
#include "platform/qt/file_letters.h"
#include "platform/qt/qt_printer.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>

#include <algorithm>
#include <array>

namespace kvo::forms {

using namespace platform_qt;
using core::RunInfo;

namespace {

constexpr const char* viewSetup = "View   &Vehicle Setup";
constexpr const char* hideSetup = "Hide   &Vehicle Setup";
constexpr int recordLetters = 398; // of a text in an info file
constexpr int defaultLetters = 17; // of a name or value in the file of the defaults

} // namespace

std::span<const Info::Box> Info::weather() {
    static constexpr std::array<Box, 3> boxes{{
        {"Text_AirTemp", "&Air Temperature:", &RunInfo::Text_AirTemp},
        {"Text_Barometric", "&Barometric Pressure:", &RunInfo::Text_Barometric},
        {"Text_Humidity", "&Humidity:", &RunInfo::Text_Humidity},
    }};
    return boxes;
}

std::span<const Info::Box> Info::times() {
    static constexpr std::array<Box, 7> boxes{{
        {"Text_60FootTime", "&60 Foot Time:", &RunInfo::Text_60FootTime},
        {"Text_330FootTime", "&330 Foot Time:", &RunInfo::Text_330FootTime},
        {"Text_660FootTime", "660 &Foot Time:", &RunInfo::Text_660FootTime},
        {"Text_660FootSpeed", "660 Foot &Mph:", &RunInfo::Text_660FootSpeed},
        {"Text_1000FootTime", "&1000 Foot Time:", &RunInfo::Text_1000FootTime},
        {"Text_ET", "&Elapsed Time:", &RunInfo::Text_ET},
        {"Text_Mph", "Spee&d (Mph):", &RunInfo::Text_Mph},
    }};
    return boxes;
}

// --- The form

Info::Info() {
    setObjectName(QStringLiteral("Info"));
    makeLayout();
}

QLineEdit* Info::makeBox() {
    auto* box = new QLineEdit;
    box->setMaxLength(recordLetters);
    box->setReadOnly(core::state().LookOnly);
    onlyFileLetters(box);
    connect(box, &QLineEdit::textChanged, this, [this] { setChanged(true); });
    return box;
}

QWidget* Info::makeNotes() {
    Info_Text = named(new NotesEdit(recordLetters), "Info_Text");
    Info_Text->setReadOnly(core::state().LookOnly);
    Info_Text->setMinimumSize(fontMetrics().averageCharWidth() * 36, fontMetrics().height() * 4);
    Label_Room = named(new QLabel, "Label_Room");
    connect(Info_Text, &NotesEdit::textChanged, this, [this] {
        setChanged(true);
        showRoom();
    });
    connect(Info_Text, &NotesEdit::full, this, [] { platform::services().dialogs->beep(); });
    auto* notes = new QWidget;
    auto* all = column(
        {row({buddyLabel(QStringLiteral("&Notes:"), Info_Text), LayoutPart::room(), Label_Room}),
            {Info_Text, 1}});
    all->setContentsMargins(0, 0, 0, 0);
    notes->setLayout(all);
    return notes;
}

QWidget* Info::makeBoxes(const char* title, std::span<const Box> boxes) {
    constexpr std::size_t linesHigh = 4;
    auto* group = new QGroupBox(QLatin1String(title));
    auto* grid = new QGridLayout(group);
    grid->setVerticalSpacing(3);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        QLineEdit* box = named(makeBox(), boxes[i].control);
        box->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000.0000")) + 12);
        const int line = static_cast<int>(i % linesHigh);
        const int place = static_cast<int>(2 * (i / linesHigh));
        grid->addWidget(buddyLabel(QLatin1String(boxes[i].caption), box), line, place);
        grid->addWidget(box, line, place + 1);
    }
    grid->setRowStretch(linesHigh, 1);
    return group;
}

// In three columns, each read downwards.
QGroupBox* Info::makeFrame1() {
    constexpr int linesHigh = 9;
    auto* frame = named(new QGroupBox(QStringLiteral("Vehicle Setup")), "Frame1");
    auto* grid = new QGridLayout(frame);
    grid->setVerticalSpacing(2);
    grid->setHorizontalSpacing(4);
    for (int i = InfoText.first; i <= InfoText.last; ++i) {
        QLineEdit* name = InfoText.set("InfoText", i, makeBox());
        QLineEdit* value = Text.set("Text", i, makeBox());
        for (QLineEdit* box : {name, value})
            box->setMinimumWidth(fontMetrics().averageCharWidth() * defaultLetters + 12);
        name->setAccessibleName(QStringLiteral("Name of line %1").arg(i));
        value->setAccessibleName(QStringLiteral("Value of line %1").arg(i));
        const int line = (i - 1) % linesHigh;
        const int place = 3 * ((i - 1) / linesHigh);
        grid->addWidget(name, line, place);
        grid->addWidget(value, line, place + 1);
    }
    constexpr int betweenColumns = 12;
    for (const int gap : {2, 5}) grid->setColumnMinimumWidth(gap, betweenColumns);
    return frame;
}

QLayout* Info::makeButtons() {
    const auto button = [this](const char* caption, const char* name, void (Info::*click)()) {
        auto* made = named(new QPushButton(QLatin1String(caption)), name);
        made->setAutoDefault(false); // Return in a box is no command
        connect(made, &QPushButton::clicked, this, click);
        return made;
    };
    Command1 = button(viewSetup, "Command1", &Info::Command1_Click);
    PrintGraph = button("&Print", "PrintGraph", &Info::PrintGraph_Click);
    Save_Info = button("&Save", "Save_Info", &Info::Save_Info_Click);
    But_SaveInfoNames = button("&Save", "But_SaveInfoNames", &Info::Save_Info_Click);
    Exit_Info = button("E&xit", "Exit_Info", &Info::Exit_Info_Click);
    Label_Status = named(new QLabel, "Label_Status");
    return row({Command1, LayoutPart::room(), Label_Status, PrintGraph, Save_Info,
        But_SaveInfoNames, Exit_Info});
}

void Info::makeMenu() {
    static constexpr auto rows = std::to_array<MenuRow<Info>>({
        {menuBarItself, "&Tools", "Mnu_Tools", {}, {.subMenu = true}},
        {"Mnu_Tools", "Unit &Convertor", "Convertor_Mnu", &Info::Convertor_Mnu_Click},
    });
    auto* bar = new QMenuBar;
    m_commands.makeMenus(*bar, *this, rows);
    layout()->setMenuBar(bar);
}

void Info::makeLayout() {
    m_runControls = new QWidget;
    auto* top =
        row({{makeNotes(), 1}, makeBoxes("Weather", weather()), makeBoxes("Times", times())});
    top->setContentsMargins(0, 0, 0, 0);
    m_runControls->setLayout(top);
    Frame1 = makeFrame1();
    auto* all = column({{m_runControls, 1}, Frame1, makeButtons()});
    all->setContentsMargins(12, 8, 12, 10);
    setLayout(all);
    makeMenu();
}

// --- What it holds

void Info::editRun(const std::string& runPath, const std::string& caption) {
    m_infoNamesOnly = false;
    m_runPath = runPath;
    setWindowTitle(shown(caption) + QLatin1String(core::state().titleMark()));
    Form_Load();
    showModal(*this);
}

void Info::editSetupDefaults() {
    m_infoNamesOnly = true;
    setWindowTitle(QStringLiteral("Edit Vehicle Setup Defaults"));
    Form_Load();
    showModal(*this);
}

void Info::Form_Load() {
    platform::Services& services = platform::services();
    std::string unread;
    const core::VehicleSetup defaults =
        core::LoadVehicleSetup(core::state().AppFolder, *services.files, &unread);
    tellUnread(unread);
    for (QWidget* part : {static_cast<QWidget*>(Command1), static_cast<QWidget*>(PrintGraph),
             static_cast<QWidget*>(Save_Info), m_runControls})
        part->setVisible(!m_infoNamesOnly);
    But_SaveInfoNames->setVisible(m_infoNamesOnly);
    Save_Info->setEnabled(!core::state().LookOnly);
    showFrame1(m_infoNamesOnly);
    const int most = m_infoNamesOnly ? defaultLetters : recordLetters;
    for (int i = InfoText.first; i <= InfoText.last; ++i) {
        InfoText[i].setMaxLength(most);
        Text[i].setMaxLength(most);
    }
    if (m_infoNamesOnly)
        showSetup(defaults);
    else
        showRun(
            core::LoadRunInfo(core::infoFilePath(m_runPath), defaults, *services.files, &unread));
    tellUnread(unread);
    setChanged(false);
}

void Info::showRun(const RunInfo& info) {
    Info_Text->setFileText(info.Info_Text);
    showRoom();
    for (const auto boxes : {weather(), times()})
        for (const Box& box : boxes)
            control<QLineEdit>(*this, box.control).setText(shown(info.*box.text));
    showSetup(info.setup);
}

RunInfo Info::collectRun() const {
    RunInfo info;
    info.Info_Text = Info_Text->fileText();
    for (const auto boxes : {weather(), times()})
        for (const Box& box : boxes)
            info.*box.text = typed(control<QLineEdit>(*this, box.control).text());
    info.setup = collectSetup();
    return info;
}

void Info::showSetup(const core::VehicleSetup& setup) {
    for (int i = InfoText.first; i <= InfoText.last; ++i) {
        for (QLineEdit* box : {&InfoText[i], &Text[i]}) {
            const core::VehicleSetupLine& line = setup[i];
            box->setText(shown(box == &Text[i] ? line.Value : line.Name));
            box->setCursorPosition(0);
        }
    }
}

core::VehicleSetup Info::collectSetup() const {
    core::VehicleSetup setup;
    for (int i = InfoText.first; i <= InfoText.last; ++i)
        setup[i] = {typed(InfoText[i].text()), typed(Text[i].text())};
    return setup;
}

void Info::setChanged(bool changed) {
    m_changed = changed;
    Label_Status->clear();
}

void Info::showRoom() {
    Label_Room->setText(
        QStringLiteral("%1 of %2").arg(Info_Text->fileText().size()).arg(Info_Text->most()));
}

void Info::showFrame1(bool on) {
    Frame1->setVisible(on);
    Command1->setText(QLatin1String(on ? hideSetup : viewSetup));
}

// --- Commands

void Info::Command1_Click() {
    showFrame1(Frame1->isHidden());
    if (Frame1->isHidden()) adjustSize();
}

void Info::Save_Info_Click() {
    save();
}

core::InfoWriteResult Info::write() const {
    const core::SharedState& state = core::state();
    platform::Services& services = platform::services();
    if (!m_infoNamesOnly) {
        return core::SaveRunInfo(state.AppFolder, core::infoFilePath(m_runPath), m_runPath,
            collectRun(), *services.files);
    }
    platform::WriteResult saved =
        core::SaveVehicleSetup(state.AppFolder, collectSetup(), *services.files);
    // A configuration that was not read is not written over.
    if (saved && state.ConfigKnown)
        saved = core::SaveConfig(state.AppFolder, state.Config, *services.files);
    const bool done = saved.done;
    return {std::move(saved), done};
}

bool Info::save() {
    const core::InfoWriteResult saved = write();
    if (saved) {
        setChanged(false);
        Label_Status->setText(QStringLiteral("Saved."));
        return true;
    }
    platform::Dialogs& dialogs = *platform::services().dialogs;
    dialogs.beep();
    const std::string what = saved.notesDone
                                 ? "The notes are saved, but the times could NOT be saved for the "
                                   "time graph.\r\n"
                                 : "The info could NOT be saved to Disk.\r\n";
    dialogs.messageBox(
        what + saved.message + "\r\n\r\nIt stays in the form: make room and save again.",
        platform::boxStyle::critical, core::programName);
    return false;
}

// The window's close button and Escape come here too. What the disk does not take stays in the
// form.
void Info::Exit_Info_Click() {
    if (m_changed) {
        const auto reply = platform::services().dialogs->messageBox(
            " You have Changed the Info\r\n Do you wont to save your changes",
            platform::boxStyle::yesNo, core::programName);
        if (reply == platform::Reply::yes && !save()) return;
    }
    unload<Info>();
}

void Info::PrintGraph_Click() {
    const std::string title = core::titleOfFile(m_runPath, *platform::services().files);
    if (printWindow(*this, title).outcome != platform::Printed::failed) return;
    platform::services().dialogs->messageBox(
        "The Info could not be printed. ", platform::boxStyle::ok, core::programName);
}

void Info::Convertor_Mnu_Click() {
    doors().openConversions();
}

} // namespace kvo::forms
