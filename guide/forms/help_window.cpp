#include "guide/forms/help_window.h"

#include "guide/chapters.h"
#include "guide/forms/guide_browser.h"
#include "platform/qt/form_kit.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QWindow>

#include <utility>

namespace kvo::forms {

using namespace platform_qt;

namespace {

QString guidePage() {
    return QStringLiteral("user-guide.md");
}

constexpr int addressRole = Qt::UserRole;

QPushButton* button(const char* name, const QString& caption, const QString& keys) {
    auto* made = named(new QPushButton(caption), name);
    made->setAutoDefault(false); // Return in the search finds
    made->setToolTip(keys);
    return made;
}

} // namespace

HelpWindow::HelpWindow() {
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(QStringLiteral("Kvo Help"));
    setWindowFlags(Qt::Window);
    makeControls();
    fillChapters();
    connectControls();
    takeKeys();
    const QSize room = screen()->availableSize();
    resize(qMin(room.width() * 9 / 10, 1020), qMin(room.height() * 9 / 10, 760));
}

void HelpWindow::makeControls() {
    List_Chapters = named(new QListWidget, "List_Chapters");
    List_Chapters->setAccessibleName(QStringLiteral("Chapters"));
    List_Chapters->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Text_Guide = named(new GuideBrowser, "Text_Guide");
    Text_Guide->setAccessibleName(QStringLiteral("Guide"));
    auto* both = named(new QSplitter, "Splitter1");
    both->addWidget(List_Chapters);
    both->addWidget(Text_Guide);
    both->setStretchFactor(1, 1);
    both->setChildrenCollapsible(false);
    both->setSizes({fontMetrics().averageCharWidth() * 36, 760});
    setLayout(column({LayoutPart(searchRow()), LayoutPart(both, 1)}));
}

QLayout* HelpWindow::searchRow() {
    But_Back = button("But_Back", QStringLiteral("&Back"), QStringLiteral("Alt+Left"));
    But_Forward = button("But_Forward", QStringLiteral("F&orward"), QStringLiteral("Alt+Right"));
    for (QPushButton* way : {But_Back, But_Forward}) way->setEnabled(false);
    Text_Find = named(new QLineEdit, "Text_Find");
    Text_Find->setToolTip(QStringLiteral("Ctrl+F"));
    But_Previous = button("But_Previous", QStringLiteral("&Previous"), QStringLiteral("Shift+F3"));
    But_Next = button("But_Next", QStringLiteral("&Next"), QStringLiteral("F3"));
    Label_Found = named(new QLabel, "Label_Found");
    Label_Found->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("Not found ")));
    But_Close = button("But_Close", QStringLiteral("&Close"), QStringLiteral("Esc"));
    return row({But_Back, But_Forward, buddyLabel(QStringLiteral("&Find:"), Text_Find),
        LayoutPart(Text_Find, 1), But_Previous, But_Next, Label_Found, But_Close});
}

void HelpWindow::fillChapters() {
    const auto add = [this](const QString& title, int level, const QUrl& page) {
        auto* item =
            new QListWidgetItem(QString(4 * level, QLatin1Char(' ')) + title, List_Chapters);
        item->setData(addressRole, page);
        item->setToolTip(plainTip(title));
    };
    const std::string text = Text_Guide->markdown(guidePage()).toStdString();
    for (const guide::Chapter& chapter : guide::chaptersOf(text)) {
        add(QString::fromStdString(chapter.title), qMax(0, chapter.level - 2),
            GuideBrowser::address(guidePage(), QString::fromStdString(chapter.anchor)));
    }
    add(QStringLiteral("Keyboard"), 0, GuideBrowser::address(QStringLiteral("keyboard")));
    add(QStringLiteral("Commands"), 0, GuideBrowser::address(QStringLiteral("commands")));
    add(QStringLiteral("File formats"), 0,
        GuideBrowser::address(QStringLiteral("file-formats.md")));
}

void HelpWindow::connectControls() {
    connect(But_Back, &QPushButton::clicked, Text_Guide, &QTextBrowser::backward);
    connect(But_Forward, &QPushButton::clicked, Text_Guide, &QTextBrowser::forward);
    connect(Text_Guide, &QTextBrowser::backwardAvailable, But_Back, &QWidget::setEnabled);
    connect(Text_Guide, &QTextBrowser::forwardAvailable, But_Forward, &QWidget::setEnabled);
    connect(Text_Guide, &QTextBrowser::historyChanged, this, &HelpWindow::showPlace);
    connect(List_Chapters, &QListWidget::currentRowChanged, this, &HelpWindow::Chapters_Click);
    connect(List_Chapters, &QListWidget::itemClicked, this,
        [this] { Chapters_Click(List_Chapters->currentRow()); });
    connect(Text_Find, &QLineEdit::returnPressed, this, [this] { find(false); });
    connect(Text_Find, &QLineEdit::textEdited, Label_Found, &QLabel::clear);
    connect(But_Previous, &QPushButton::clicked, this, [this] { find(true); });
    connect(But_Next, &QPushButton::clicked, this, [this] { find(false); });
    connect(But_Close, &QPushButton::clicked, this, &QDialog::reject);
}

void HelpWindow::takeKeys() {
    const auto key = [this](const char* keys, auto&& does) {
        auto* shortcut = new QShortcut(QKeySequence(QLatin1String(keys)), this);
        connect(shortcut, &QShortcut::activated, this, does);
    };
    key("Ctrl+F", [this] {
        Text_Find->setFocus(Qt::ShortcutFocusReason);
        Text_Find->selectAll();
    });
    key("F3", [this] { find(false); });
    key("Shift+F3", [this] { find(true); });
    key("Alt+Left", [this] { Text_Guide->backward(); });
    key("Alt+Right", [this] { Text_Guide->forward(); });
}

void HelpWindow::listCommands(std::vector<guide::WindowCommands> commands) {
    Text_Guide->listCommands(std::move(commands));
}

// --- Coming and going

void HelpWindow::showChapter(const std::string& anchor) {
    come(GuideBrowser::address(guidePage(), QString::fromStdString(anchor)));
}

void HelpWindow::showKeyboard() {
    come(GuideBrowser::address(QStringLiteral("keyboard")));
}

void HelpWindow::showCommands() {
    come(GuideBrowser::address(QStringLiteral("commands")));
}

// A form that waits for the user takes no click for a window that is not modal itself. What was
// shown before such a form came is in its shade, and must go to come again.
void HelpWindow::come(const QUrl& page) {
    QWidget* const waiting = QApplication::activeModalWidget();
    if (waiting != this) {
        m_from = QApplication::activeWindow() == this ? nullptr : QApplication::activeWindow();
        const auto modality = waiting == nullptr ? Qt::NonModal : Qt::ApplicationModal;
        if (windowModality() != modality || waiting != nullptr) hide();
        setWindowModality(modality);
        winId();
        windowHandle()->setTransientParent(waiting == nullptr ? nullptr : waiting->windowHandle());
        if (!testAttribute(Qt::WA_Moved)) placeOn(waiting != nullptr ? *waiting : *this);
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    Text_Guide->setSource(page);
    Text_Guide->setFocus();
}

// In the middle of the screen, at first. Left to itself a desktop puts it over the middle of the
// form, and its title above the screen where the form stands high.
void HelpWindow::placeOn(const QWidget& beside) {
    const QRect room = beside.screen()->availableGeometry();
    const QSize free = room.size() - size();
    move(room.topLeft() + QPoint(qMax(0, free.width() / 2), qMax(0, free.height() / 3)));
}

void HelpWindow::done(int result) {
    QDialog::done(result);
    if (m_from != nullptr && m_from->isVisible()) m_from->activateWindow();
}

// --- Places

void HelpWindow::Chapters_Click(int row) {
    if (const QListWidgetItem* item = List_Chapters->item(row))
        Text_Guide->setSource(item->data(addressRole).toUrl());
}

// The list marks the chapter that was gone to, by whatever way.
void HelpWindow::showPlace() {
    const QSignalBlocker quiet(List_Chapters);
    for (int row = 0; row < List_Chapters->count(); ++row) {
        if (List_Chapters->item(row)->data(addressRole).toUrl() == Text_Guide->source())
            return List_Chapters->setCurrentRow(row);
    }
    List_Chapters->setCurrentRow(0);
}

// From the last place on, and once round.
void HelpWindow::find(bool back) {
    const QString word = Text_Find->text();
    const auto way = back ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const QTextCursor before = Text_Guide->textCursor();
    bool found = !word.isEmpty() && Text_Guide->find(word, way);
    if (!found && !word.isEmpty()) {
        Text_Guide->moveCursor(back ? QTextCursor::End : QTextCursor::Start);
        found = Text_Guide->find(word, way);
        if (!found) Text_Guide->setTextCursor(before);
    }
    Label_Found->setText(found || word.isEmpty() ? QString() : QStringLiteral("Not found"));
}

} // namespace kvo::forms
