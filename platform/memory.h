#pragma once
// Where memory runs out. std::bad_alloc is the one exception that is let up, as far as the place
// from which the work was begun: what it had built is dropped on the way, what was there before is
// still there, and the user is told.
#include "platform/dialogs.h"
#include "platform/files.h"

#include <new>
#include <string>
#include <utility>

namespace kvo::platform {

// Behind the path of a file with which it happened.
inline constexpr const char* noMemoryReason = "There is not enough memory.";

// A plain box: "Not enough memory to " and what was to be done. Where there is none for the box
// either it goes to the error output.
void tellNoMemory(Dialogs& dialogs, const char* toDo) noexcept;

// Runs work() and tells where there is not enough memory `toDo`; false then. The work must leave
// everything as it was where it is broken off.
template <class Work> bool withinMemory(Dialogs& dialogs, const char* toDo, Work&& work) {
    try {
        std::forward<Work>(work)();
        return true;
    } catch (const std::bad_alloc&) { // what the work held is free again behind this
    }
    tellNoMemory(dialogs, toDo);
    return false;
}

// What becomes of a write for which there is not enough memory before it reaches the disk: refused,
// as by a disk that is full. `path` is named in the message.
template <class Write> WriteResult writtenWithinMemory(const std::string& path, Write&& write) {
    try {
        return std::forward<Write>(write)();
    } catch (const std::bad_alloc&) {
    }
    return {false, path + "\ncould not be written.\n" + noMemoryReason, FileFailure::noMemory};
}

} // namespace kvo::platform
