// A simulated logger as a program of its own: prints its device, serves it until it is told to end.
#include "tools/logger_simulator/options.h"
#include "tools/logger_simulator/serve.h"

int main(int argc, char** argv) {
    using namespace kvo::simulator;
    const auto arguments = kvo::command_line::read(syntax(), argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    std::string error;
    const auto options = optionsOf(arguments, error);
    return options ? serve(*options) : kvo::command_line::misuse(syntax(), error);
}
