// Golden vectors against the production code.
#include "platform/system_path.h"
#include "runner.h"
#include "tools/command_line/command_line.h"

#ifdef KVO_QT_VECTORS
#include <QByteArray>
#endif

#include <exception>
#include <iostream>

static void addAllFunctions() {
#ifdef KVO_QT_VECTORS
    kvo::vectors::addFormFunctions(); // first: a function may have a plain body besides
#endif
    kvo::vectors::addCoreFunctions();
    kvo::vectors::addLinkFunctions();
    kvo::vectors::addGraphFunctions();
    kvo::vectors::addLibraryFunctions();
    kvo::vectors::addImportFunctions();
    kvo::vectors::addSetupFunctions();
    kvo::vectors::addAnalogFunctions();
    kvo::vectors::addCalcFunctions();
}

int main(int argc, char** argv) {
    const kvo::command_line::Syntax syntax{"kvo_vectors DIR",
        "Runs every line of every .jsonl file below DIR through the production code.\n"
        "The exit code is 1 if one of them gives anything else than it says.\n",
        1, 1};
    const auto arguments = kvo::command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
#ifdef KVO_QT_VECTORS
    // The widgets are real, but no window is to appear: an own choice of the caller wins.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", KVO_OFFSCREEN);
    const auto application = kvo::vectors::makeApplication();
#endif
    try {
        addAllFunctions();
        return kvo::vectors::runVectors(
            kvo::platform::systemPath(arguments.operands[0]), std::cout);
    } catch (const std::exception& error) {
        std::cerr << "kvo_vectors: " << error.what() << '\n';
        return 1;
    }
}
