#include "mainwin/splash.h"

#include "core/shared_state.h"
#include "core/start.h"
#include "mainwin/product.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/icons.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace kvo::forms {

using namespace platform_qt;

frmSplash::frmSplash() {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("Kvo"));
    m_login = core::loginNeeded(core::state().Config);
    // A login is a window like others, to be moved and closed.
    if (!m_login) setWindowFlag(Qt::FramelessWindowHint);
    Form_Load();
}

void frmSplash::Form_Load() {
    Picture = named(new QLabel, "Picture");
    Picture->setAlignment(Qt::AlignCenter);
    Picture->setMinimumSize(560, 300);
    Picture->setPixmap(fitted(vehiclePicture(), {560, 311}, devicePixelRatioF()));
    auto* name = named(new QLabel(QStringLiteral("KVO")), "Label_Name");
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 2.2);
    large.setBold(true);
    large.setLetterSpacing(QFont::PercentageSpacing, 110);
    name->setFont(large);
    auto* what = new QLabel(QStringLiteral("Data acquisition for drag racing"));
    Label_Version = named(new QLabel(versionText()), "Label_Version");
    auto* texts = row({column({name, what}), LayoutPart::room(), Label_Version});
    texts->setAlignment(Label_Version, Qt::AlignBottom);

    auto* frame = new QFrame;
    frame->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    auto* inside = column({Picture, texts});
    if (m_login) inside->addWidget(loginRow());
    inside->setContentsMargins(20, 16, 20, 16);
    inside->setSpacing(12);
    frame->setLayout(inside);
    auto* all = column({frame});
    all->setContentsMargins(0, 0, 0, 0);
    setLayout(all);

    Timer1 = named(new QTimer(this), "Timer1");
    Timer1->setSingleShot(true);
    Timer1->setInterval(3000);
    connect(Timer1, &QTimer::timeout, this, &frmSplash::Timer1_Timer);
}

QWidget* frmSplash::loginRow() {
    txtPassword = named(new QLineEdit, "txtPassword");
    txtPassword->setEchoMode(QLineEdit::Password);
    cmdOK = named(new QPushButton(QStringLiteral("OK")), "cmdOK");
    cmdCancel = named(new QPushButton(QStringLiteral("Cancel")), "cmdCancel");
    cmdOK->setDefault(true);
    cmdCancel->setAutoDefault(false);
    connect(cmdOK, &QPushButton::clicked, this, &frmSplash::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSplash::cmdCancel_Click);
    auto* bar = new QWidget;
    auto* parts = row({buddyLabel(QStringLiteral("&Password:"), txtPassword), {txtPassword, 1},
        cmdOK, cmdCancel});
    parts->setContentsMargins(0, 0, 0, 0);
    bar->setLayout(parts);
    return bar;
}

void frmSplash::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (m_login)
        txtPassword->setFocus();
    else
        Timer1->start();
}

void frmSplash::Timer1_Timer() {
    LoginSucceeded = true;
    hide();
}

void frmSplash::cmdOK_Click() {
    if (core::passwordMatches(core::state().Config, typed(txtPassword->text()))) {
        LoginSucceeded = true;
        hide();
        return;
    }
    platform::services().dialogs->messageBox(
        "Invalid Password, try again!", platform::boxStyle::ok, "Login");
    activateWindow();
    txtPassword->setFocus();
    txtPassword->selectAll();
}

void frmSplash::cmdCancel_Click() {
    LoginSucceeded = false;
    hide();
}

// Escape and closing are Cancel while a login is asked for. Without one only the timer closes it.
void frmSplash::reject() {
    if (m_login) cmdCancel_Click();
}

} // namespace kvo::forms
