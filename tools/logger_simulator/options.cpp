#include "tools/logger_simulator/options.h"

#include "tools/logger_simulator/wire_layout.h"

#include <charconv>

namespace kvo::simulator {
namespace {

std::optional<std::uint32_t> wholeNumber(const std::string& text) {
    std::uint32_t value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

// Takes one option with its value; false if the value is wrong.
bool takeValue(const std::string& name, const std::string& value, Options& options) {
    if (name == "--type") {
        const auto number = wholeNumber(value);
        if (!number || !wireLayout(static_cast<int>(*number))) return false;
        options.dataType = static_cast<int>(*number);
        return true;
    }
    if (name == "--fault") {
        const auto fault = parseFault(value);
        if (fault) options.fault = *fault;
        return fault.has_value();
    }
    if (name == "--seed") {
        const auto number = wholeNumber(value);
        if (number) options.seed = *number;
        return number.has_value();
    }
    if (name == "--link") {
        options.linkPath = value;
        return !value.empty();
    }
    (name == "--state" ? options.statePath : options.streamPath) = value;
    return !value.empty();
}

} // namespace

std::optional<Options> optionsOf(const command_line::Arguments& arguments, std::string& error) {
    Options options;
    for (const auto& [name, value] : arguments.options) {
        if (name == "--unpaced") {
            options.paced = false;
        } else if (!takeValue(name, value, options)) {
            error.assign(name).append(" cannot be \"").append(value).append("\"");
            return std::nullopt;
        }
    }
    return options;
}

static std::string helpText() {
    std::string faults;
    for (const auto& name : faultNames()) faults += "                 " + name + "\n";
    return "A data logger on a pseudo-terminal, for trying the program without one.\n"
           "\n"
           "  --type N       data type 8, 12, 17, 20, 25 (as it comes), 32 or 43\n"
           "  --link PATH    makes PATH a link to the terminal while it runs, for instance\n"
           "                 COM1 in the program's folder: that is port 1 then\n"
           "  --fault NAME   one fault of the field; bytes of the answers are counted from 1:\n" +
           faults +
           "  --unpaced      as fast as it goes instead of 9600 baud\n"
           "  --seed N       another run of the same vehicle\n"
           "  --stream PATH  gives a recorded stream instead of a modelled run\n"
           "  --state PATH   keeps the settings that are written to it in this file, and shows\n"
           "                 them when it is started again\n"
           "\n"
           "It ends on Ctrl+C. The signal USR1 switches the logger off and on: settings that were\n"
           "written to it take effect then.\n";
}

const command_line::Syntax& syntax() {
    static const command_line::Syntax all{"kvo-simulator [OPTION...]", helpText(), 0, 0,
        {"--unpaced"}, {"--type", "--link", "--fault", "--seed", "--stream", "--state"}};
    return all;
}

} // namespace kvo::simulator
