#include "mainwin/main_window.h"

#include "core/basic/numbers.h"
#include "core/config.h"
#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/shared_state.h"
#include "link/download_session.h"
#include "link/forms/logger_line.h"
#include "mainwin/opening.h"
#include "mainwin/product.h"
#include "platform/qt/application.h"
#include "platform/qt/file_drop.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/icons.h"
#include "platform/services.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QLabel>
#include <QScreen>

#include <array>

namespace kvo::forms {

using namespace platform_qt;

VrnWin32::VrnWin32() {
    setObjectName(QStringLiteral("VrnWin32"));
    makeCommands();
    makeInner();
    Form_Load();
    takeFileDrops(*this, openDropped);
}

void VrnWin32::makeInner() {
    m_inner = named(new QWidget, "Inner");
    Line1 = new QFrame(m_inner);
    Line1->setObjectName(QStringLiteral("Line1"));
    Line1->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Sunken));
    Logo = new QLabel(m_inner);
    Logo->setObjectName(QStringLiteral("Logo"));
    Logo->setAccessibleName(QStringLiteral("Picture of the vehicle"));
    Frame_Version = new QFrame(m_inner);
    Frame_Version->setObjectName(QStringLiteral("Frame_Version"));
    Label_Version = named(new QLabel, "Label_Version");
    auto* name = named(new QLabel(QStringLiteral("KVO")), "Label_Name");
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 2.4);
    large.setBold(true);
    name->setFont(large);
    for (QLabel* label : {name, Label_Version}) label->setAlignment(Qt::AlignHCenter);
    Frame_Version->setLayout(column({name, Label_Version}));
    Frame_Version->setAutoFillBackground(true); // readable on whatever the picture has there
    setCentralWidget(m_inner);
    m_inner->installEventFilter(this);
}

void VrnWin32::Form_Load() {
    setWindowTitle(
        QStringLiteral("DATA ACQUISITION SYSTEM") + QLatin1String(core::state().titleMark()));
    Label_Version->setText(versionText());
    m_picture = vehiclePicture();
    showRecent();
    const QSize room = screen()->availableSize();
    setMinimumSize(480, 320);
    resize(qMin(room.width() * 85 / 100, 1280), qMin(room.height() * 85 / 100, 940));
}

void VrnWin32::loadLogo() {
    m_picture = vehiclePicture();
    placeLogo();
}

bool VrnWin32::eventFilter(QObject* object, QEvent* event) {
    if (object == m_inner && event->type() == QEvent::Resize) Form_Resize();
    return QMainWindow::eventFilter(object, event);
}

void VrnWin32::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    Form_Resize();
}

// The window manager's frame belongs to the height, and comes only after the first show.
bool VrnWin32::event(QEvent* event) {
    const bool done = QMainWindow::event(event);
    const bool framed = event->type() == QEvent::Show || event->type() == QEvent::Move ||
                        event->type() == QEvent::WindowActivate;
    if (framed && m_inner != nullptr) Form_Resize();
    if (event->type() == QEvent::Show) showRecent();
    return done;
}

// In twips, as the window is measured.
void VrnWin32::Form_Resize() {
    constexpr int lowestWithVersion = 11925;
    constexpr int versionAboveBottom = 2250;
    const bool roomForVersion = toTwips(frameGeometry().height()) >= lowestWithVersion;
    Frame_Version->setVisible(roomForVersion);
    if (roomForVersion) {
        const int top = toPixels(toTwips(m_inner->height()) - versionAboveBottom);
        const QSize size = Frame_Version->sizeHint();
        Frame_Version->setGeometry(
            (m_inner->width() - size.width()) / 2, top, size.width(), size.height());
    }
    Line1->setGeometry(0, 0, m_inner->width(), Line1->sizeHint().height());
    placeLogo();
}

// A picture larger than the window is shown smaller; centred in either case.
void VrnWin32::placeLogo() {
    constexpr int margin = 16;
    const QSize room = m_inner->size() - QSize(2 * margin, 2 * margin);
    const QPixmap picture = fitted(m_picture, room, devicePixelRatioF());
    Logo->setPixmap(picture);
    Logo->resize(picture.deviceIndependentSize().toSize());
    Logo->move((m_inner->width() - Logo->width()) / 2, (m_inner->height() - Logo->height()) / 2);
}

void VrnWin32::closeEvent(QCloseEvent* event) {
    event->accept();
    Form_Unload();
}

void VrnWin32::Form_Unload() {
    changeFolder(core::state().AppFolder);
    QApplication::quit(); // a form that is live stops its logger first, as it goes
    closeLoggerLine();
}

void VrnWin32::Mnu_ViewRun_Click() {
    const MainMenusDisabled off;
    doors().showDataGraph();
}

void VrnWin32::Mnu_TimeGraph_Click() {
    const MainMenusDisabled off;
    doors().showTimeGraph(false);
}

void VrnWin32::Mnu_DeleteRun_Click() {
    const MainMenusDisabled off;
    doors().chooseRunsToDelete("Delete File");
}

void VrnWin32::Mnu_Import_Click(int item) {
    const MainMenusDisabled off;
    doors().importRuns(item == 0);
}

void VrnWin32::Mnu_EnterRunInfo_Click() {
    const MainMenusDisabled off;
    if (const auto run = doors().chooseRun("Load", "Load Data File"))
        doors().showInfo(run->path, "Info For: " + core::rightTrimmed(run->description));
}

void VrnWin32::Mnu_copydata_Click(int index) {
    const MainMenusDisabled off;
    if (index == 0)
        doors().copyRuns();
    else
        doors().mailRuns();
}

void VrnWin32::Mnu_OpenFolder_Click() {
    const MainMenusDisabled off;
    askForFolder();
    showRecent();
}

void VrnWin32::Mnu_RecentFolder_Click(int place) {
    const auto folders = recentFolders();
    if (place < static_cast<int>(folders.size()))
        openFolder(folders[static_cast<std::size_t>(place)]);
    showRecent();
}

void VrnWin32::Mnu_RecentRun_Click(int place) {
    const auto runs = recentRuns();
    if (place < static_cast<int>(runs.size())) openRecentRun(runs[static_cast<std::size_t>(place)]);
    showRecent();
}

void VrnWin32::Mnu_Exit_Click() {
    close();
}

void VrnWin32::Mnu_DownloadData_Click() {
    const platform::Services& services = platform::services();
    const MainMenusDisabled off;
    link::showDateCheck(core::state().Config, *services.dialogs, *services.clock);
    doors().downloadData();
}

void VrnWin32::Mnu_PitRun_Click() {
    const MainMenusDisabled off;
    doors().showPitRun();
}

// By the place of the sum in its table.
void VrnWin32::Calculator_Click(int sum) {
    const MainMenusDisabled off;
    doors().showCalculator(sum);
}

void VrnWin32::MnuConversions_Click() {
    const MainMenusDisabled off;
    doors().showConversions();
}

void VrnWin32::Mnu_ConfigureComputer_Click() {
    const MainMenusDisabled off;
    doors().configureComputer();
}

// The configuration is read anew, so that nothing of a setup that was left by Cancel is shown.
// Where the file is of no use, that reading has shown the form already.
void VrnWin32::Mnu_SetupSoftware_Click() {
    const MainMenusDisabled off;
    if (readConfig()) doors().showSoftwareSetup();
}

void VrnWin32::Mnu_EditVSetup_Click() {
    const MainMenusDisabled off;
    doors().editVehicleSetup();
}

// The toolbar's key has the index 0.
void VrnWin32::Mnu_Help_Click(int index) {
    static constexpr std::array pages{HelpPage::index, HelpPage::index, HelpPage::keyboard,
        HelpPage::commands, HelpPage::usingHelp};
    doors().showHelp(pages.at(static_cast<std::size_t>(index)));
}

void VrnWin32::Mnu_UpDate_Click() {
    const MainMenusDisabled off;
    platform::Services& services = platform::services();
    const std::string text =
        " Please Note that both Internet Explorer and an Internet connection\r\n"
        " are needed to established this check.\r\n\r\n"
        "Do you want to check for a newer version of Kvo Now ?";
    constexpr int style = platform::boxStyle::information + platform::boxStyle::yesNo;
    const auto reply = services.dialogs->messageBox(text, style, "Kvo UpDate Check");
    if (reply == platform::Reply::yes) services.browser->open(updatePage());
}

void VrnWin32::Mnu_AboutVrn_Click() {
    const MainMenusDisabled off;
    doors().showAbout();
}

bool readConfig() {
    core::SharedState& state = core::state();
    const platform::Services& services = platform::services();
    const core::ConfigRead read = core::LoadConfig(state.AppFolder, state.Config, *services.files);
    if (read.whole()) {
        state.ConfigKnown = true;
        return true;
    }
    services.dialogs->beep();
    services.dialogs->messageBox(read.message, platform::boxStyle::critical, core::programName);
    // Who only looks gets along with the default, since a setup could not be kept.
    if (!state.LookOnly) doors().showSoftwareSetup();
    return false;
}

void hideMainWindow() {
    if (isLoaded<VrnWin32>()) form<VrnWin32>().hide();
}

void showMainWindow() {
    if (!isLoaded<VrnWin32>()) return;
    form<VrnWin32>().show();
    form<VrnWin32>().activateWindow();
}

void loadLogo() {
    if (isLoaded<VrnWin32>()) form<VrnWin32>().loadLogo();
}

void EnableMainMenus(bool on) {
    if (isLoaded<VrnWin32>()) form<VrnWin32>().enableMenus(on);
}

bool mainMenusEnabled() {
    return !isLoaded<VrnWin32>() || form<VrnWin32>().menusEnabled();
}

} // namespace kvo::forms
