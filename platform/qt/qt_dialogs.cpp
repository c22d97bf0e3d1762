#include "platform/qt/qt_dialogs.h"

#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>

#include <array>

namespace kvo::platform_qt {
namespace {

using platform::Colour;
using platform::Reply;

struct ButtonsOfStyle {
    int style;
    QMessageBox::StandardButton first;
    QMessageBox::StandardButton second;
    QMessageBox::StandardButton third;
    QMessageBox::StandardButton escape; // the least committing one
};

constexpr auto noButton = QMessageBox::NoButton;
constexpr std::array<ButtonsOfStyle, 5> buttonSets{{
    {platform::boxStyle::ok, QMessageBox::Ok, noButton, noButton, QMessageBox::Ok},
    {platform::boxStyle::okCancel, QMessageBox::Ok, QMessageBox::Cancel, noButton,
        QMessageBox::Cancel},
    {platform::boxStyle::yesNoCancel, QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel,
        QMessageBox::Cancel},
    {platform::boxStyle::yesNo, QMessageBox::Yes, QMessageBox::No, noButton, QMessageBox::No},
    {platform::boxStyle::retryCancel, QMessageBox::Retry, QMessageBox::Cancel, noButton,
        QMessageBox::Cancel},
}};

const ButtonsOfStyle& buttonsOf(int style) {
    for (const ButtonsOfStyle& row : buttonSets) {
        if (row.style == (style & 0x0F)) return row;
    }
    return buttonSets[0];
}

QMessageBox::Icon iconOf(int style) {
    switch (style & 0xF0) {
    case platform::boxStyle::critical:
        return QMessageBox::Critical;
    case platform::boxStyle::question:
        return QMessageBox::Question;
    case platform::boxStyle::warning:
        return QMessageBox::Warning;
    case platform::boxStyle::information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

Reply replyOf(int button) {
    switch (button) {
    case QMessageBox::Cancel:
        return Reply::cancel;
    case QMessageBox::Retry:
        return Reply::retry;
    case QMessageBox::Yes:
        return Reply::yes;
    case QMessageBox::No:
        return Reply::no;
    default:
        return Reply::ok;
    }
}

// The window that a question belongs to: the front dialog, else the active or any visible window.
QWidget* questionParent() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow()) return active;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && window->windowType() != Qt::Popup) return window;
    }
    return nullptr;
}

QString titleOrName(const std::string& title) {
    return title.empty() ? QStringLiteral("Kvo") : shownMessage(title);
}

int widestLine(const QFontMetrics& metrics, const QString& text) {
    int widest = 0;
    const auto lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines) widest = std::max(widest, metrics.horizontalAdvance(line));
    return widest;
}

// Left alone, a message box breaks lines at 500 pixels, which tears apart texts whose lines and
// leading blanks are meant. It gets room for its longest line, up to most of the screen.
void giveRoom(QMessageBox& box) {
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr) return;
    const int screenWidth =
        box.screen() != nullptr ? box.screen()->availableGeometry().width() : 1024;
    const int textWidth = widestLine(box.fontMetrics(), box.text()) + 8;
    const int iconWidth = box.icon() == QMessageBox::NoIcon ? 0 : 72;
    const int width = std::min(textWidth + iconWidth, screenWidth * 3 / 4);
    grid->addItem(new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Minimum),
        grid->rowCount(), 0, 1, grid->columnCount());
}

// The picture of a box is its kind, which is read aloud too.
void nameIcon(const QMessageBox& box) {
    auto* icon = box.findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"));
    if (icon == nullptr) return;
    switch (box.icon()) {
    case QMessageBox::Critical:
        return icon->setAccessibleName(QStringLiteral("Error"));
    case QMessageBox::Question:
        return icon->setAccessibleName(QStringLiteral("Question"));
    case QMessageBox::Warning:
        return icon->setAccessibleName(QStringLiteral("Warning"));
    case QMessageBox::Information:
        return icon->setAccessibleName(QStringLiteral("Information"));
    case QMessageBox::NoIcon:
        break;
    }
}

void fillMessageBox(
    QMessageBox& box, const std::string& text, int style, const std::string& title) {
    const ButtonsOfStyle& buttons = buttonsOf(style);
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setTextFormat(Qt::PlainText);
    box.setText(shownMessage(text));
    box.setWindowTitle(titleOrName(title));
    box.setIcon(iconOf(style));
    nameIcon(box);
    box.setStandardButtons(buttons.first | buttons.second | buttons.third);
    const bool second = (style & platform::boxStyle::secondDefault) != 0;
    const bool hasSecond = buttons.second != QMessageBox::NoButton;
    box.setDefaultButton(second && hasSecond ? buttons.second : buttons.first);
    box.setEscapeButton(buttons.escape);
    giveRoom(box);
}

// A box that the focus comes to without selecting what is in it, so that a first key goes on with
// the text and does not wipe it.
class PresetEdit : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    void focusInEvent(QFocusEvent* event) override {
        // For a focus that comes with the Tab key, or with a fresh dialog, everything is selected.
        QFocusEvent quiet(event->type(), Qt::OtherFocusReason);
        QLineEdit::focusInEvent(&quiet);
    }
};

QLineEdit* fillInputBox(
    QDialog& box, const std::string& prompt, const std::string& title, const std::string& preset) {
    box.setObjectName(QStringLiteral("InputBox"));
    box.setWindowTitle(titleOrName(title));
    QLineEdit* edit = named(new PresetEdit(shown(preset)), "InputText"); // the caret is behind it
    edit->setMinimumWidth(QFontMetrics(edit->font()).averageCharWidth() * 50);
    QLabel* label = buddyLabel(QString(), edit);
    label->setTextFormat(Qt::PlainText);
    label->setText(shownMessage(prompt));
    edit->setAccessibleName(label->text());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);
    box.setLayout(column({label, edit, buttons}));
    return edit;
}

} // namespace

Reply QtDialogs::messageBox(const std::string& text, int style, const std::string& title) {
    // On the heap, since the parent may go while the box is open and takes the box along.
    const QPointer<QMessageBox> box = new QMessageBox(questionParent());
    fillMessageBox(*box, text, style, title);
    const int button = box->exec();
    delete box.data();
    return replyOf(button == 0 ? buttonsOf(style).escape : button);
}

std::string QtDialogs::inputBox(
    const std::string& prompt, const std::string& title, const std::string& preset) {
    const QPointer<QDialog> box = new QDialog(questionParent());
    QLineEdit* edit = fillInputBox(*box, prompt, title, preset);
    const bool accepted = box->exec() == QDialog::Accepted && !box.isNull();
    std::string answer = accepted ? typed(edit->text()) : std::string();
    delete box.data();
    return answer;
}

std::optional<Colour> QtDialogs::chooseColour(std::optional<Colour> start) {
    QColor initial(Qt::white);
    if (start) {
        initial = QColor(static_cast<int>(*start & 0xFFU), static_cast<int>((*start >> 8U) & 0xFFU),
            static_cast<int>((*start >> 16U) & 0xFFU));
    }
    const QColor chosen = QColorDialog::getColor(initial, questionParent());
    if (!chosen.isValid()) return std::nullopt;
    return static_cast<Colour>(chosen.red()) | static_cast<Colour>(chosen.green()) << 8U |
           static_cast<Colour>(chosen.blue()) << 16U;
}

std::optional<std::string> QtDialogs::chooseFolder(
    const std::string& title, const std::string& start) {
    const QString folder =
        QFileDialog::getExistingDirectory(questionParent(), shownMessage(title), shownPath(start));
    if (folder.isEmpty()) return std::nullopt;
    return typedPath(folder);
}

std::optional<std::string> QtDialogs::chooseFile(const platform::FileQuestion& question) {
    const QString path = QFileDialog::getSaveFileName(questionParent(),
        shownMessage(question.title), shownPath(question.suggestion), shownMessage(question.kind),
        nullptr, QFileDialog::DontConfirmOverwrite);
    if (path.isEmpty()) return std::nullopt;
    return typedPath(path);
}

void QtDialogs::beep() {
    QApplication::beep();
}

void QtDialogs::setHourglass(bool on) {
    if (on == m_hourglass) return;
    m_hourglass = on;
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

} // namespace kvo::platform_qt
