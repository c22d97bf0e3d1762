#pragma once
// VrnWin32: the window from which the user reaches every function. Its menus and its toolbar are
// tables; a command whose form is not there yet has no routine and is disabled.
#include "platform/qt/commands.h"

#include <QMainWindow>
#include <QPixmap>

#include <span>
#include <vector>

class QFrame;
class QLabel;

namespace kvo::forms {

class VrnWin32 : public QMainWindow {
    Q_OBJECT

public:
    VrnWin32();

    // The five main menus and the toolbar.
    void enableMenus(bool on);
    bool menusEnabled() const { return m_menusEnabled; }
    // The picture of the vehicle that the configuration names now.
    void loadLogo();
    const platform_qt::Commands& commands() const { return m_commands; }
    // Its menus and its toolbar, for a list of all commands.
    static std::vector<platform_qt::CommandRow> commandRows();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Form_Load();
    void Form_Resize();
    void Form_Unload();
    void makeInner();
    void placeLogo();
    void showRecent();

    // main_window_menus.cpp
    static std::span<const platform_qt::MenuRow<VrnWin32>> menuRows();
    static std::span<const platform_qt::ToolRow<VrnWin32>> toolRows();
    void makeCommands();
    void Mnu_ViewRun_Click();
    void Mnu_TimeGraph_Click();
    void Mnu_DeleteRun_Click();
    void Mnu_Import_Click(int item);
    void Mnu_EnterRunInfo_Click();
    void Mnu_copydata_Click(int index);
    void Mnu_OpenFolder_Click();
    void Mnu_RecentFolder_Click(int place);
    void Mnu_RecentRun_Click(int place);
    void Mnu_Exit_Click();
    void Mnu_DownloadData_Click();
    void Mnu_PitRun_Click();
    void Calculator_Click(int sum);
    void MnuConversions_Click();
    void Mnu_ConfigureComputer_Click();
    void Mnu_SetupSoftware_Click();
    void Mnu_EditVSetup_Click();
    void Mnu_Help_Click(int index);
    void Mnu_UpDate_Click();
    void Mnu_AboutVrn_Click();

    platform_qt::Commands m_commands;
    bool m_menusEnabled = true;
    QWidget* m_inner = nullptr;
    QFrame* Line1 = nullptr;
    QLabel* Logo = nullptr;
    QFrame* Frame_Version = nullptr;
    QLabel* Label_Version = nullptr;
    QPixmap m_picture;
};

// Switches the main menus and the toolbar; every modal command wraps its work in it. Without a main
// window it does nothing.
void EnableMainMenus(bool on);
// Whether no command of it is at work; so too without a main window.
bool mainMenusEnabled();

// Reads the configuration anew; true where it was read whole. A file of no use is told, and leads
// into the setup form.
bool readConfig();

// The main window shows the picture of the vehicle that the configuration names now. Without a main
// window it does nothing.
void loadLogo();

// A form that is shown in the main window's place hides it, and shows it again when it goes.
// Without a main window they do nothing.
void hideMainWindow();
void showMainWindow();

// The menus are off for as long as the object lives.
class MainMenusDisabled {
public:
    MainMenusDisabled() { EnableMainMenus(false); }
    ~MainMenusDisabled() { EnableMainMenus(true); }
    MainMenusDisabled(const MainMenusDisabled&) = delete;
    MainMenusDisabled& operator=(const MainMenusDisabled&) = delete;
};

} // namespace kvo::forms
