#include "setup/forms/general_page.h"

#include "core/forms/doors.h"
#include "platform/qt/text.h"
#include "setup/forms/checked_box.h"
#include "setup/models.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <functional>
#include <utility>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int driverLetters = 25;   // the width of the field
constexpr int passwordLetters = 25; // of the masked boxes

// The list of ports asks what stands behind the numbers when it is looked at, since an adapter may
// come and go while the form is open.
class PortBox : public QComboBox {
public:
    explicit PortBox(std::function<void()> look) : m_look(std::move(look)) {}
    void showPopup() override {
        m_look();
        QComboBox::showPopup();
    }

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ToolTip) m_look();
        return QComboBox::event(event);
    }

private:
    std::function<void()> m_look;
};

QLineEdit* makeBox(const char* name) {
    QLineEdit* box = named(new QLineEdit, name);
    onlyFileLetters(box);
    return box;
}

QLineEdit* makeMaskedBox(const char* name) {
    QLineEdit* box = makeBox(name);
    box->setEchoMode(QLineEdit::Password);
    box->setStyleSheet(
        QStringLiteral("QLineEdit { lineedit-password-character: %1 }").arg(int('#')));
    box->setMaxLength(passwordLetters);
    return box;
}

void addLine(QGridLayout& grid, QLabel* label, QWidget* box) {
    const int line = grid.rowCount();
    grid.addWidget(label, line, 0);
    grid.addWidget(box, line, 1);
}

} // namespace

GeneralPage::GeneralPage() {
    setObjectName(QStringLiteral("General"));
    auto* left = column({makeVehicle(), makeLogger(), LayoutPart::room()});
    auto* right = column({makeDownload(), makePassword(), LayoutPart::room()});
    auto* all = row({{left, 1}, {right, 1}});
    all->setContentsMargins(0, 6, 0, 0);
    all->setSpacing(12);
    setLayout(all);
    setFocusProxy(Driver); // who opens the form may type a name at once
}

QWidget* GeneralPage::makeVehicle() {
    Driver = makeBox("Driver");
    Driver->setMaxLength(driverLetters);
    Driver->setMinimumWidth(Driver->fontMetrics().averageCharWidth() * (driverLetters + 2));
    selectOnFocus(Driver);
    Label_DriverNumber = named(buddyLabel({}, Driver), "Label_DriverNumber");
    Vehicle_Type = named(new QComboBox, "Vehicle_Type");
    for (const std::string_view vehicle : setup::vehicleList) Vehicle_Type->addItem(shown(vehicle));
    onLeave(Vehicle_Type, [this] { emit Vehicle_Type_LostFocus(); });
    auto* box = new QGroupBox(QStringLiteral("Vehicle"));
    auto* grid = new QGridLayout(box);
    addLine(*grid, Label_DriverNumber, Driver);
    addLine(*grid, buddyLabel(QStringLiteral("&Vehicle:"), Vehicle_Type), Vehicle_Type);
    return box;
}

QWidget* GeneralPage::makeLogger() {
    D_Modal = named(new QComboBox, "D_Modal");
    for (const setup::ModelFacts& model : setup::models()) D_Modal->addItem(shown(model.text));
    onLeave(D_Modal, [this] { emit D_Modal_LostFocus(); });
    DriverNo = makeBox("DriverNo");
    selectOnFocus(DriverNo);
    checkOnLeave(DriverNo, setup::DriverNo_LostFocus);
    ComPort = named(new PortBox([this] { showDevices(); }), "ComPort");
    for (int port = 1; port <= setup::comPorts; ++port)
        ComPort->addItem(QStringLiteral("COM%1").arg(port));
    But_FindComm = named(new QPushButton(QStringLiteral("&Find Comm Port")), "But_FindComm");
    But_FindComm->setAutoDefault(false);
    connect(But_FindComm, &QPushButton::clicked, this, &GeneralPage::But_FindComm_Click);
    auto* box = new QGroupBox(QStringLiteral("Logger"));
    auto* grid = new QGridLayout(box);
    addLine(*grid, buddyLabel(QStringLiteral("&Model:"), D_Modal), D_Modal);
    addLine(*grid, buddyLabel(QStringLiteral("Serial &Number:"), DriverNo), DriverNo);
    addLine(*grid, buddyLabel(QStringLiteral("&Comm Port:"), ComPort), ComPort);
    grid->addWidget(But_FindComm, grid->rowCount(), 1);
    return box;
}

QWidget* GeneralPage::makeDownload() {
    const std::array<const char*, 2> captions{"Safe D&ownload Mode", "Fast Do&wnload Mode"};
    OptionDownloadMode.make("OptionDownloadMode", [&](int mode) {
        return new QRadioButton(QLatin1String(captions.at(static_cast<std::size_t>(mode))));
    });
    Date_Prompt =
        named(new QCheckBox(QStringLiteral("Disable D&ate Prompt on Download")), "Date_Prompt");
    SpeedWheel_Prompt =
        named(new QCheckBox(QStringLiteral("Disable Speed W&heel Prompt on Download")),
            "SpeedWheel_Prompt");
    auto* box = new QGroupBox(QStringLiteral("Download"));
    box->setLayout(
        column({&OptionDownloadMode[0], &OptionDownloadMode[1], Date_Prompt, SpeedWheel_Prompt}));
    return box;
}

QWidget* GeneralPage::makePassword() {
    Check_Password =
        named(new QCheckBox(QStringLiteral("Enable &Password on Startup")), "Check_Password");
    OPassword = makeMaskedBox("OPassword");
    NPassword = makeBox("NPassword");
    VPassword = makeMaskedBox("VPassword");
    connect(OPassword, &QLineEdit::textChanged, this, &GeneralPage::OPassword_Change);
    m_oldLabel = buddyLabel(QStringLiteral("Enter O&ld Password:"), OPassword);
    m_newLabel = buddyLabel(QStringLiteral("N&ew Password:"), NPassword);
    m_verifyLabel = buddyLabel(QStringLiteral("Verif&y Password:"), VPassword);
    auto* note = new QLabel(QStringLiteral(
        "Stored readable in Kvo.Cfg. It keeps others from changing things by mistake; it "
        "protects nothing."));
    note->setWordWrap(true);
    FramePassword = named(new QGroupBox(QStringLiteral("Log In Password")), "FramePassword");
    auto* grid = new QGridLayout(FramePassword);
    grid->addWidget(Check_Password, 0, 0, 1, 2);
    addLine(*grid, m_oldLabel, OPassword);
    addLine(*grid, m_newLabel, NPassword);
    addLine(*grid, m_verifyLabel, VPassword);
    grid->addWidget(note, grid->rowCount(), 0, 1, 2);
    return FramePassword;
}

void GeneralPage::showValues(const setup::SetupValues& values) {
    Driver->setText(shown(values.Driver));
    Driver->setCursorPosition(0);
    DriverNo->setText(shown(values.DriverNo));
    D_Modal->setCurrentIndex(values.D_Modal);
    ComPort->setCurrentIndex(values.ComPort);
    Vehicle_Type->setCurrentIndex(values.Vehicle_Type);
    Date_Prompt->setChecked(values.Date_Prompt);
    SpeedWheel_Prompt->setChecked(values.SpeedWheel_Prompt);
    for (int mode = 0; mode <= 1; ++mode)
        OptionDownloadMode[mode].setChecked(
            values.OptionDownloadMode[static_cast<std::size_t>(mode)]);
    Check_Password->setChecked(values.password.Check_Password);
    showRows(values);
}

void GeneralPage::showRows(const setup::SetupValues& values) {
    const auto& captions = setup::vehicleCaptions(values.Vehicle_Type);
    Label_DriverNumber->setText(QLatin1Char('&') + shown(captions.Label_DriverNumber));
    showPassword(values.password);
}

void GeneralPage::showPassword(const setup::PasswordFrame& password) {
    Check_Password->setEnabled(password.Check_Password_Enabled);
    for (QWidget* part : {static_cast<QWidget*>(m_oldLabel), static_cast<QWidget*>(OPassword)})
        part->setVisible(password.OPassword_Shown);
    for (QWidget* part : {static_cast<QWidget*>(m_newLabel), static_cast<QWidget*>(NPassword),
             static_cast<QWidget*>(m_verifyLabel), static_cast<QWidget*>(VPassword)}) {
        part->setVisible(password.newShown);
    }
    for (QLineEdit* box : {NPassword, VPassword}) box->setEnabled(password.newEnabled);
    if (password.NPassword.empty()) NPassword->clear();
}

void GeneralPage::collect(setup::SetupValues& values) const {
    values.Driver = typed(Driver->text());
    values.DriverNo = typed(DriverNo->text());
    values.D_Modal = D_Modal->currentIndex();
    values.ComPort = ComPort->currentIndex();
    values.Vehicle_Type = Vehicle_Type->currentIndex();
    values.Date_Prompt = Date_Prompt->isChecked();
    values.SpeedWheel_Prompt = SpeedWheel_Prompt->isChecked();
    for (int mode = 0; mode <= 1; ++mode)
        values.OptionDownloadMode[static_cast<std::size_t>(mode)] =
            OptionDownloadMode[mode].isChecked();
    values.password.Check_Password = Check_Password->isChecked();
    values.password.OPassword = typed(OPassword->text());
    values.password.NPassword = typed(NPassword->text());
    values.password.VPassword = typed(VPassword->text());
}

void GeneralPage::But_FindComm_Click() {
    if (const auto port = doors().findLoggerPort()) ComPort->setCurrentIndex(*port - 1);
}

void GeneralPage::showDevices() {
    const std::vector<std::string> ports = doors().describePorts();
    for (int entry = 0; entry < ComPort->count() && entry < static_cast<int>(ports.size());
         ++entry) {
        const QString text = QString::fromStdString(ports[static_cast<std::size_t>(entry)]);
        ComPort->setItemData(entry, text, Qt::ToolTipRole);
        if (entry == ComPort->currentIndex()) ComPort->setToolTip(plainTip(text));
    }
}

} // namespace kvo::forms
