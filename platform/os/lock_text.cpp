#include "platform/os/lock_text.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace kvo::platform_os {

std::string linesOf(const LockText& text) {
    return std::to_string(text.process) + '\n' + text.program + '\n' + text.host + '\n' +
           text.machine + '\n' + text.start + '\n';
}

LockText lockTextIn(const std::string& content) {
    std::string lines = content;
    std::erase(lines, '\r');
    std::istringstream in(lines);
    LockText text;
    std::string process;
    std::getline(in, process);
    std::from_chars(process.data(), process.data() + process.size(), text.process);
    for (std::string* line : {&text.program, &text.host, &text.machine, &text.start})
        std::getline(in, *line);
    return text;
}

bool isWholeLock(const std::string& content) {
    return std::count(content.begin(), content.end(), '\n') >= 5;
}

} // namespace kvo::platform_os
