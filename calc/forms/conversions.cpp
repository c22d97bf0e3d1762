#include "calc/forms/conversions.h"

#include "core/forms/doors.h"
#include "platform/qt/application.h"
#include "platform/qt/text.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QKeyEvent>

#include <array>

namespace kvo::forms {

using namespace platform_qt;

namespace {

// The letter that presses the button, marked in the caption of the pair.
constexpr std::array<char, 8> buttonLetters{'u', 'I', 'F', 'L', 'P', 'M', 'H', 'D'};

QString buttonCaption(int index) {
    const auto place = static_cast<std::size_t>(index);
    QString caption = shown(calc::unitPairs()[place].button);
    return caption.insert(caption.indexOf(QLatin1Char(buttonLetters.at(place))), QLatin1Char('&'));
}

// The form keeps its size while the boxes come.
void hideKeepingRoom(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    widget->hide();
}

} // namespace

Conversions::Conversions() {
    setObjectName(QStringLiteral("Conversions"));
    setWindowTitle(QStringLiteral("Unit Convertor"));
    makeLayout();
    Label2_Change();
}

QWidget* Conversions::makeButtons() {
    constexpr int inALine = 4;
    auto* buttons = new QWidget;
    auto* grid = new QGridLayout(buttons);
    grid->setContentsMargins(0, 0, 0, 0);
    Command1.make("Command1", [&](int index) {
        auto* button = new QPushButton(buttonCaption(index));
        button->setAutoDefault(false);
        button->setCheckable(true); // the pair that is up stands out
        connect(button, &QPushButton::clicked, this, [this, index] { Command1_Click(index); });
        grid->addWidget(button, index / inALine, index % inALine);
        return button;
    });
    return buttons;
}

QWidget* Conversions::makeBoxes() {
    auto* boxes = new QWidget;
    Label3 = named(new QLabel(QStringLiteral("=")), "Label3");
    Text1.make("Text1", [](int) {
        auto* box = new QLineEdit;
        box->setFont(tabularFont());
        box->setAlignment(Qt::AlignRight);
        box->setMinimumWidth(
            QFontMetrics(box->font()).horizontalAdvance(QStringLiteral("0000000000.00")) + 24);
        return box;
    });
    for (int box = 0; box <= 1; ++box) {
        Label2.set("Label2", box, buddyLabel({}, &Text1[box]));
        Label2[box].setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("Cu.In ")));
        Text1[box].installEventFilter(this);
        // What comes without a key: pasted or dropped by the mouse, or written by an input method.
        connect(&Text1[box], &QLineEdit::textEdited, this, [this, box] {
            if (m_keysDown == 0) Text1_KeyUp(box);
        });
        hideKeepingRoom(&Text1[box]);
        hideKeepingRoom(&Label2[box]);
    }
    hideKeepingRoom(Label3);
    auto* line = row({{&Text1[0], 1}, &Label2[0], Label3, {&Text1[1], 1}, &Label2[1]});
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    boxes->setLayout(line);
    return boxes;
}

void Conversions::makeLayout() {
    Cancel = named(new QPushButton(QStringLiteral("&Close")), "Cancel");
    Cancel->setAutoDefault(false);
    connect(Cancel, &QPushButton::clicked, this, &Conversions::Cancel_Click);
    auto* all =
        column({makeButtons(), makeBoxes(), LayoutPart::room(), row({LayoutPart::room(), Cancel})});
    all->setContentsMargins(16, 14, 16, 14);
    all->setSpacing(14);
    setLayout(all);
}

void Conversions::showForMainWindow() {
    m_inMainsPlace = true;
    doors().hideMainWindow();
    show();
}

void Conversions::showOverForm() {
    showModal(*this);
}

void Conversions::Label2_Change() {
    const calc::UnitPair& pair = calc::unitPairs()[static_cast<std::size_t>(m_state.pair)];
    Label2[0].setText(shown(pair.left));
    Label2[1].setText(shown(pair.right));
}

void Conversions::Command1_Click(int index) {
    calc::Command1_Click(m_state, index);
    setWindowTitle(shown(calc::unitPairs()[static_cast<std::size_t>(index)].title));
    for (int button = Command1.first; button <= Command1.last; ++button)
        Command1[button].setChecked(button == index);
    Label2_Change();
    showTexts();
    for (QWidget* part :
        std::initializer_list<QWidget*>{&Text1[0], &Label2[0], Label3, &Text1[1], &Label2[1]})
        part->setVisible(m_state.shown);
}

// The box that is typed in keeps its cursor where its text stays.
void Conversions::showTexts() {
    for (int box = 0; box <= 1; ++box) {
        const QString text = shown(m_state.Text1[static_cast<std::size_t>(box)]);
        if (Text1[box].text() != text) Text1[box].setText(text);
    }
}

void Conversions::Text1_KeyUp(int box) {
    for (int each = 0; each <= 1; ++each)
        m_state.Text1[static_cast<std::size_t>(each)] = typed(Text1[each].text());
    calc::Text1_KeyUp(m_state, box);
    showTexts();
}

// A key that was pressed elsewhere, such as the Tab that led here, is none of the box.
bool Conversions::eventFilter(QObject* object, QEvent* event) {
    const auto type = event->type();
    if (type == QEvent::FocusIn || type == QEvent::FocusOut) m_keysDown = 0;
    if (type != QEvent::KeyPress && type != QEvent::KeyRelease) return false;
    if (static_cast<QKeyEvent*>(event)->isAutoRepeat()) return false;
    if (type == QEvent::KeyPress) {
        ++m_keysDown;
    } else if (m_keysDown > 0) {
        --m_keysDown;
        Text1_KeyUp(object == &Text1[0] ? 0 : 1);
    }
    return false;
}

void Conversions::Cancel_Click() {
    const bool wasInMainsPlace = m_inMainsPlace;
    unload<Conversions>();
    if (wasInMainsPlace) doors().showMainWindow();
}

} // namespace kvo::forms
