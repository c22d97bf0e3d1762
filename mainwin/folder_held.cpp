#include "mainwin/folder_held.h"

#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"

#include <QLabel>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

QString holderText(const platform::FolderHolder& holder) {
    if (holder.process == 0) return QStringLiteral("Another Kvo has this folder open.");
    const platform::DateTime& since = holder.since;
    return QStringLiteral("Another Kvo has had this folder open since %1-%2-%3 %4:%5 "
                          "(%6, process %7 on %8).")
        .arg(since.year, 4, 10, QLatin1Char('0'))
        .arg(since.month, 2, 10, QLatin1Char('0'))
        .arg(since.day, 2, 10, QLatin1Char('0'))
        .arg(since.hour, 2, 10, QLatin1Char('0'))
        .arg(since.minute, 2, 10, QLatin1Char('0'))
        .arg(shownPath(holder.program))
        .arg(holder.process)
        .arg(shownPath(holder.host));
}

FolderHeld::FolderHeld() {
    setObjectName(QStringLiteral("FolderHeld"));
    setWindowTitle(QStringLiteral("Kvo"));
    const auto line = [](const char* name) {
        auto* label = named(plainLabel({}), name);
        label->setWordWrap(true);
        return label;
    };
    Label_Folder = line("Label_Folder");
    QFont bold = font();
    bold.setBold(true);
    Label_Folder->setFont(bold);
    Label_Holder = line("Label_Holder");
    auto* why = line("Label_Why");
    why->setText(QStringLiteral("Runs would be lost if two programs wrote in one folder. You can "
                                "go to the other window, open the folder here for looking only, "
                                "or leave."));
    Label_Unreached = line("Label_Unreached");
    const auto button = [this](const char* name, const char* caption, Answer what) {
        auto* made = named(new QPushButton(QLatin1String(caption)), name);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, [this, what] { answer(what); });
        return made;
    };
    Show_Other = button("Show_Other", "&Show That Window", Answer::showOther);
    Look_Only = button("Look_Only", "Look &Only", Answer::lookOnly);
    Leave = button("Leave", "&Leave", Answer::leave);
    auto* all = column({Label_Folder, Label_Holder, why, Label_Unreached,
        row({LayoutPart::room(), Show_Other, Look_Only, Leave})});
    all->setContentsMargins(20, 16, 20, 14);
    all->setSpacing(12);
    setLayout(all);
    setMinimumWidth(520);
}

FolderHeld::Answer FolderHeld::ask(
    const platform::FolderHolder& holder, const std::string& folder, bool unreached) {
    Label_Folder->setText(shownPath(folder));
    Label_Holder->setText(holderText(holder));
    if (!holder.here) {
        Label_Unreached->setText(QStringLiteral("It runs on another computer. If that is off, "
                                                "delete the file Kvo.lock in the folder."));
    } else if (unreached) {
        Label_Unreached->setText(QStringLiteral("That window could not be reached."));
    }
    Label_Unreached->setVisible(!holder.here || unreached);
    Show_Other->setEnabled(holder.here);
    QPushButton* first = holder.here && !unreached ? Show_Other : Look_Only;
    first->setDefault(true);
    first->setFocus();
    m_answer = Answer::leave;
    showModal(*this);
    return m_answer;
}

void FolderHeld::answer(Answer answer) {
    m_answer = answer;
    hide();
}

} // namespace kvo::forms
