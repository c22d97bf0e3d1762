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

// Takes one option with its value; false with a reason if it is not known or the value is wrong.
bool takeValue(
    const std::string& name, const std::string& value, Options& options, std::string& error) {
    error = name + " cannot be " + value;
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
    if (name == "--stream") {
        options.streamPath = value;
        return !value.empty();
    }
    error = "There is no option " + name;
    return false;
}

} // namespace

std::optional<Options> parseOptions(const std::vector<std::string>& arguments, std::string& error) {
    Options options;
    for (std::size_t k = 0; k < arguments.size(); ++k) {
        const std::string& name = arguments[k];
        if (name == "--help" || name == "-h") {
            options.help = true;
        } else if (name == "--unpaced") {
            options.paced = false;
        } else if (k + 1 < arguments.size()) {
            if (!takeValue(name, arguments[++k], options, error)) return std::nullopt;
        } else {
            error = name + " is no option, or its value is missing";
            return std::nullopt;
        }
    }
    error.clear();
    return options;
}

std::string helpText() {
    std::string faults;
    for (const auto& name : faultNames()) faults += "                 " + name + "\n";
    return "logger_simulator: a data logger on a pseudo-terminal, for trying the program without "
           "one\n"
           "\n"
           "  --type N       data type 8, 12, 17, 20, 25 (as it comes), 32 or 43\n"
           "  --link PATH    makes PATH a link to the terminal while it runs, for instance\n"
           "                 COM1 in the program's folder: that is port 1 then\n"
           "  --fault NAME   one fault of the field; bytes of the answers are counted from 1:\n" +
           faults +
           "  --unpaced      as fast as it goes instead of 9600 baud\n"
           "  --seed N       another run of the same vehicle\n"
           "  --stream PATH  gives a recorded stream instead of a modelled run\n"
           "\n"
           "It ends on Ctrl+C. The signal USR1 switches the logger off and on: settings that were\n"
           "written to it take effect then.\n";
}

} // namespace kvo::simulator
