#pragma once
// Info: what the user records of a run (notes, weather, track times, the vehicle's setup), or the
// names and values that the setup of a new run starts from.
#include "core/run_info.h"
#include "platform/qt/commands.h"
#include "platform/qt/form_kit.h"

#include <QDialog>
#include <QLineEdit>

#include <span>
#include <string>

class QGroupBox;
class QLabel;
class QLayout;
class QPushButton;

namespace kvo::forms {

class NotesEdit;

class Info : public QDialog {
    Q_OBJECT

public:
    Info();

    // The info of a run file, modal under this caption.
    void editRun(const std::string& runPath, const std::string& caption);
    // The defaults of the vehicle's setup, modal.
    void editSetupDefaults();

protected:
    void reject() override { Exit_Info_Click(); }

private:
    // One of the ten boxes of a line.
    struct Box {
        const char* control;
        const char* caption;
        std::string core::RunInfo::*text;
    };
    static std::span<const Box> weather();
    static std::span<const Box> times();

    void makeLayout();
    void makeMenu();
    QLayout* makeButtons();
    QWidget* makeNotes();
    QWidget* makeBoxes(const char* title, std::span<const Box> boxes);
    QGroupBox* makeFrame1();
    // A box of one line whose changes are the form's.
    QLineEdit* makeBox();

    void Form_Load();
    // Load and save in the same order of lines.
    void showRun(const core::RunInfo& info);
    core::RunInfo collectRun() const;
    void showSetup(const core::VehicleSetup& setup);
    core::VehicleSetup collectSetup() const;
    void setChanged(bool changed);
    void showRoom();
    void showFrame1(bool on);

    void Command1_Click();
    void Save_Info_Click();
    void Exit_Info_Click();
    void PrintGraph_Click();
    void Convertor_Mnu_Click();

    // False where the disk did not take it, which the user is told: all stays in the form.
    bool save();
    core::InfoWriteResult write() const;

    std::string m_runPath;
    bool m_infoNamesOnly = false;
    bool m_changed = false; // ChangedFlag
    platform_qt::Commands m_commands;
    QWidget* m_runControls = nullptr;
    NotesEdit* Info_Text = nullptr;
    QLabel* Label_Room = nullptr;
    QGroupBox* Frame1 = nullptr;
    platform_qt::ControlArray<QLineEdit, 1, 25> InfoText;
    platform_qt::ControlArray<QLineEdit, 1, 25> Text;
    QLabel* Label_Status = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* PrintGraph = nullptr;
    QPushButton* Save_Info = nullptr;
    QPushButton* But_SaveInfoNames = nullptr;
    QPushButton* Exit_Info = nullptr;
};

} // namespace kvo::forms
