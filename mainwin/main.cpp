// Entry of the program: makes the services, hands them to the forms, shows the first one.
#include "core/shared_state.h"
#include "link/forms/logger_line.h"
#include "mainwin/opening.h"
#include "mainwin/start.h"
#include "platform/machine/machine.h"
#include "platform/memory.h"
#include "platform/os/heap.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "tools/command_line/command_line.h"

#include <QProcess>

#include <algorithm>
#include <iostream>
#include <sstream>
#include <string_view>

using namespace kvo;

namespace {

const command_line::Syntax& syntax() {
    static const command_line::Syntax programSyntax{"kvo [--last-folder] [FOLDER | RUN]",
        "Reads the data logger of a drag-racing car or motorcycle and shows its runs.\n"
        "  FOLDER         the folder of your runs; the current one unless it is given\n"
        "  RUN            a run file, which is opened in its folder\n"
        "  --last-folder  the folder that was open last, as from a menu of the desktop\n",
        0, 1, {"--last-folder"}, {}};
    return programSyntax;
}

#ifdef _WIN32

// A program of windows has no console there, and so what others write is shown.
bool asksForHelp(int, char*[]) {
    return false;
}

command_line::Arguments readWords(const std::vector<std::string>& words) {
    std::ostringstream told;
    auto arguments = command_line::read(syntax(), words, told, told);
    if (arguments.exitCode)
        platform_qt::QtDialogs().messageBox(told.str(), platform::boxStyle::information, "Kvo");
    return arguments;
}

#else

// The help needs no display.
bool asksForHelp(int argc, char* argv[]) {
    return std::any_of(
        argv, argv + argc, [](std::string_view word) { return word == "--help" || word == "-h"; });
}

command_line::Arguments readWords(const std::vector<std::string>& words) {
    return command_line::read(syntax(), words, std::cout, std::cerr);
}

#endif

bool startAnew(const std::vector<std::string>& words) {
    QStringList arguments;
    for (const std::string& word : words) arguments << platform_qt::shownPath(word);
    return QProcess::startDetached(QCoreApplication::applicationFilePath(), arguments);
}

// False where the user has left, or was told why nothing can be opened.
bool start(const command_line::Arguments& arguments) {
    const auto place =
        forms::startPlace({arguments.operands.empty() ? std::string() : arguments.operands.front(),
            arguments.has("--last-folder"),
            platform_qt::typedPath(QCoreApplication::applicationDirPath())});
    if (!place) return false;
    if (!place->folder.empty()) platform_qt::changeFolder(place->folder);
    if (!forms::startProgram(place->run)) return false;
    if (!place->run.empty()) forms::openSoon(place->run);
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    if (asksForHelp(argc, argv)) return *command_line::read(syntax(), argc, argv).exitCode;
    platform_os::keepFreedMemory();
    platform_qt::Application application(argc, argv); // takes the toolkit's own options off
    platform_qt::prepareApplication(application);
    const auto arguments = readWords(platform_qt::wordsOf(argc, argv));
    if (arguments.exitCode) return *arguments.exitCode;

    platform_machine::Machine machine([] { return core::state().AppFolder; });
    platform::Services& services = platform::services();
    services = machine.services();
    services.startAnew = startAnew;
    link::LoggerLink logger(*services.port, *services.yield, *services.dialogs);
    forms::useLoggerLink(&logger);

    bool started = false;
    platform::withinMemory(*services.dialogs, "start", [&] { started = start(arguments); });
    const int result = started ? QApplication::exec() : 0;
    platform_qt::unloadAllForms();
    return result;
}
