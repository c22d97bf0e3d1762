#include "link/forms/setup_obc.h"

#include "core/shared_state.h"
#include "link/forms/logger_line.h"
#include "platform/qt/application.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace kvo::forms {

using namespace platform_qt;
using link::ObcBox;

namespace {

QGroupBox* framed(const char* title, QLayout* inside) {
    auto* frame = new QGroupBox(QLatin1String(title));
    frame->setLayout(inside);
    return frame;
}

} // namespace

SetupOBC::SetupOBC()
    : m_session(loggerLink(), core::state().AppFolder, *this, *platform::services().dialogs,
          *platform::services().clock, *platform::services().files) {
    setObjectName(QStringLiteral("SetupOBC"));
    setWindowTitle(QStringLiteral("Configure On Board Computer"));
    makeLayout();
}

QGroupBox* SetupOBC::makeIdentity() {
    auto* line = new QHBoxLayout;
    line->setSpacing(16);
    const auto add = [line](const char* caption, const char* name, const char* widest) {
        QLabel* value = named(valueLabel(QLatin1String(widest)), name);
        auto* pair = row({plainLabel(QLatin1String(caption)), value});
        pair->setSpacing(6);
        line->addLayout(pair);
        return value;
    };
    Label_DataType = add("Data Type:", "Label_DataType", "255");
    Label_Model = add("Model:", "Label_Model", "255");
    Label_Ver = add("Software Version:", "Label_Ver", "1.9");
    Label_MemType = add("Memory Type:", "Label_MemType", "512k");
    Label_S_No = add("Serial Number :", "Label_S_No", "-32768");
    line->addStretch(1);
    return framed("On Board Computer", line);
}

QLineEdit* SetupOBC::makeBox(ObcBox box) {
    auto* edit = named(new QLineEdit, link::obcBoxes()[static_cast<std::size_t>(box)].control);
    edit->setFont(tabularFont());
    edit->setAlignment(Qt::AlignRight);
    edit->setFixedWidth(
        QFontMetrics(edit->font()).horizontalAdvance(QStringLiteral("65000.00")) + 24);
    edit->installEventFilter(this);
    m_boxes[static_cast<std::size_t>(box)] = edit;
    return edit;
}

QGroupBox* SetupOBC::makeRecording() {
    auto* grid = new QGridLayout;
    const auto line = [&](int row, const char* caption, ObcBox box) {
        QLineEdit* edit = makeBox(box);
        grid->addWidget(buddyLabel(QLatin1String(caption), edit), row, 0);
        grid->addWidget(edit, row, 1);
    };
    line(0, "&Record on RPM =", ObcBox::Label_RoRpm);
    line(1, "Motorcycle &Crankshaft Reduction Gear teeth       =", ObcBox::Label_GR1);
    line(2, "Motorcycle Clutch &Basket Reduction Gear teeth =", ObcBox::Label_GR2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(3, 1);
    return framed("Recording", grid);
}

QGroupBox* SetupOBC::makePickups() {
    static constexpr std::array<const char*, 4> captions{
        "&Engine Digital Pickups per Rev =", "&Input Shaft     Pickups per Rev =",
        "&Output Shaft   Pickups per Rev =", "&Front Wheel    Pickups per Rev ="};
    auto* grid = new QGridLayout;
    ComboPPR.make("ComboPPR", [](int list) {
        auto* combo = new QComboBox;
        for (const std::string& entry : link::pickupEntries(list)) combo->addItem(shown(entry));
        return combo;
    });
    for (int list = 0; list <= ComboPPR.last; ++list) {
        const QString caption = QLatin1String(captions[static_cast<std::size_t>(list)]);
        grid->addWidget(buddyLabel(caption, &ComboPPR[list]), list, 0);
        grid->addWidget(&ComboPPR[list], list, 1);
    }
    grid->setColumnStretch(0, 1);
    return framed("Pickups", grid);
}

// Number 1 has no time of its own, the others take over at theirs.
void SetupOBC::addShiftLight(QGridLayout& grid, int row, const char* caption, int number) {
    const auto from = [number](ObcBox first, int of) {
        return static_cast<ObcBox>(static_cast<int>(first) + number - of);
    };
    QLineEdit* rpm = makeBox(from(ObcBox::Label_MR1, 1));
    grid.addWidget(buddyLabel(QLatin1String(caption), rpm), row, 0);
    grid.addWidget(rpm, row, 1);
    if (number == 1) {
        grid.addWidget(plainLabel(QStringLiteral("@  [ 0.00     ]  sec.")), row, 2, 1, 3);
        return;
    }
    QLineEdit* seconds = makeBox(from(ObcBox::Label_MT2, 2));
    seconds->setAccessibleName(QStringLiteral("Time of threshold %1 in seconds").arg(number));
    grid.addWidget(plainLabel(QStringLiteral("@")), row, 2);
    grid.addWidget(seconds, row, 3);
    grid.addWidget(plainLabel(QStringLiteral("sec.")), row, 4);
}

QGroupBox* SetupOBC::makeShiftLights() {
    auto* grid = new QGridLayout;
    QLineEdit* preStart = makeBox(ObcBox::Label_PreStartRPM);
    grid->addWidget(buddyLabel(QStringLiteral("&Pre Launch RPM threshold is"), preStart), 0, 0);
    grid->addWidget(preStart, 0, 1);
    addShiftLight(*grid, 1, "Shift &Light threshold is set to", 1);
    addShiftLight(*grid, 2, "S&hift Light threshold changes to", 2);
    addShiftLight(*grid, 3, "Shift Li&ght threshold changes to", 3);
    addShiftLight(*grid, 4, "Shift Light &threshold changes to", 4);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(5, 2);
    ShiftLightFrame = named(framed("Shift Light", grid), "ShiftLightFrame");
    return ShiftLightFrame;
}

void SetupOBC::makeLayout() {
    SaveSetup = named(new QPushButton(QStringLiteral("&Save")), "SaveSetup");
    CancelSetup = named(new QPushButton(QStringLiteral("Cancel")), "CancelSetup");
    // Return in a box must not be half of a save.
    for (QPushButton* button : {SaveSetup, CancelSetup}) button->setAutoDefault(false);
    connect(SaveSetup, &QPushButton::clicked, this, &SetupOBC::SaveSetup_Click);
    connect(CancelSetup, &QPushButton::clicked, this, &SetupOBC::CancelSetup_Click);
    Label_Status = named(plainLabel({}), "Label_Status");
    Label_Status->setWordWrap(true);
    Label_Status->hide();
    m_inner = new QWidget;
    auto* groups = column({makeIdentity(), row({makeRecording(), makePickups()}), makeShiftLights(),
        Label_Status, LayoutPart::room(), row({LayoutPart::room(), SaveSetup, CancelSetup})});
    groups->setContentsMargins(16, 14, 16, 14);
    groups->setSpacing(10);
    m_inner->setLayout(groups);
    auto* all = column({m_inner});
    all->setContentsMargins(0, 0, 0, 0);
    setLayout(all);
}

void SetupOBC::configure(const std::function<bool()>& wanted) {
    if (!m_session.Mnu_ConfigureComputer(core::state().Config.CommPort, wanted)) return unload();
    m_session.Form_Load();
    showModal(*this);
}

void SetupOBC::SaveSetup_Click() {
    m_session.SaveSetup_Click();
}

void SetupOBC::CancelSetup_Click() {
    m_session.CancelSetup_Click();
}

// Escape and the window's close button are Cancel, which does nothing while a write is under way.
void SetupOBC::reject() {
    CancelSetup_Click();
}

// A box that gets the focus has its whole text chosen, by a click of the mouse too, which would
// take the choice away again.
bool SetupOBC::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        auto* edit = qobject_cast<QLineEdit*>(object);
        if (edit != nullptr && reason != Qt::ActiveWindowFocusReason &&
            reason != Qt::PopupFocusReason)
            QTimer::singleShot(0, edit, &QLineEdit::selectAll);
    }
    return QDialog::eventFilter(object, event);
}

void SetupOBC::showHeader(const link::ObcShown& header) {
    Label_DataType->setText(shown(header.Label_DataType));
    Label_Model->setText(shown(header.Label_Model));
    if (header.Label_Ver) Label_Ver->setText(shown(*header.Label_Ver));
    if (header.Label_MemType) Label_MemType->setText(shown(*header.Label_MemType));
    Label_S_No->setText(shown(header.Label_S_No));
    ShiftLightFrame->setVisible(header.ShiftLightFrame);
    for (const link::ObcBoxFacts& facts : link::obcBoxes())
        setText(facts.box, header.values[facts.box]);
    for (int list = 0; list <= ComboPPR.last; ++list)
        ComboPPR[list].setCurrentIndex(header.values.ComboPPR[static_cast<std::size_t>(list)]);
    focus(ObcBox::Label_RoRpm);
}

void SetupOBC::setStatus(const std::string& text) {
    Label_Status->setText(QString::fromStdString(text));
    Label_Status->setVisible(!text.empty());
}

link::ObcValues SetupOBC::values() const {
    link::ObcValues all;
    for (const link::ObcBoxFacts& facts : link::obcBoxes())
        all[facts.box] = typed(boxOf(facts.box).text());
    for (int list = 0; list <= ComboPPR.last; ++list)
        all.ComboPPR[static_cast<std::size_t>(list)] = ComboPPR[list].currentIndex();
    return all;
}

void SetupOBC::setText(ObcBox box, const std::string& text) {
    boxOf(box).setText(shown(text));
}

void SetupOBC::focus(ObcBox box) {
    boxOf(box).setFocus();
    boxOf(box).selectAll();
}

void SetupOBC::setWriting(bool writing) {
    m_inner->setEnabled(!writing);
}

void SetupOBC::unload() {
    platform_qt::unload<SetupOBC>();
}

} // namespace kvo::forms
