// simulate: the simulated logger.
#include "tools/kvo_cli/cli.h"
#include "tools/logger_simulator/serve.h"

namespace kvo::cli {

int simulateLogger(const Command& command, const command_line::Arguments& arguments, const Place&) {
    std::string error;
    const auto options = simulator::optionsOf(arguments, error);
    return options ? simulator::serve(*options) : command_line::misuse(command.syntax, error);
}

} // namespace kvo::cli
