#pragma once
// What stands in the lock of a folder, a line each: process, program, host, and where the system
// knows them its machine and when that was started.
#include <cstdint>
#include <string>

namespace kvo::platform_os {

struct LockText {
    std::int64_t process = 0; // 0 names nobody
    std::string program;
    std::string host;
    std::string machine;
    std::string start;
};

std::string linesOf(const LockText& text);
// Lines that are missing are empty; ends of lines may be those of any system.
LockText lockTextIn(const std::string& content);
// Whether all lines are there with their ends. Else it was cut off as it was written, and even a
// number in it may be only the front of one.
bool isWholeLock(const std::string& content);

} // namespace kvo::platform_os
