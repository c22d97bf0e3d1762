#include "mainwin/help.h"

#include "graph/forms/graph_commands.h"
#include "guide/chapters.h"
#include "guide/forms/help_key.h"
#include "guide/forms/help_window.h"
#include "mainwin/main_window.h"
#include "platform/qt/form_kit.h"

#include <QApplication>
#include <QPointer>

namespace kvo::forms {

using namespace platform_qt;

namespace {

guide::WindowCommands listed(const char* window, const std::vector<CommandRow>& rows) {
    guide::WindowCommands all{window, {}};
    for (const CommandRow& row : rows)
        all.rows.push_back({row.menu, row.caption, row.control, row.shortcut, row.isMenu});
    return all;
}

HelpWindow& helpWindow() {
    if (!isLoaded<HelpWindow>()) form<HelpWindow>().listCommands(allCommands());
    return form<HelpWindow>();
}

} // namespace

std::vector<guide::WindowCommands> allCommands() {
    return {listed("The main window", VrnWin32::commandRows()),
        listed("The graph", GraphCommands::commandRows())};
}

void showHelp(HelpPage page) {
    HelpWindow& help = helpWindow();
    switch (page) {
    case HelpPage::keyboard:
        return help.showKeyboard();
    case HelpPage::commands:
        return help.showCommands();
    case HelpPage::usingHelp:
        return help.showChapter(guide::anchorFor({"HelpWindow"}));
    case HelpPage::graph:
        return help.showChapter(guide::anchorFor({"DataGraph"}));
    case HelpPage::index:
        break;
    }
    help.showChapter({});
}

void showHelpOf(const std::vector<std::string>& names) {
    helpWindow().showChapter(guide::anchorFor(names));
}

void takeHelpKey() {
    static QPointer<HelpKey> key;
    if (key.isNull()) key = new HelpKey(qApp, showHelpOf);
}

} // namespace kvo::forms
