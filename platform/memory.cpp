#include "platform/memory.h"

#include <cstdio>

namespace kvo::platform {

void tellNoMemory(Dialogs& dialogs, const char* toDo) noexcept {
    try {
        dialogs.messageBox(
            std::string("Not enough memory to ") + toDo + ".", boxStyle::critical, "Kvo");
    } catch (const std::bad_alloc&) {
        std::fputs("Not enough memory to ", stderr);
        std::fputs(toDo, stderr);
        std::fputs(".\n", stderr);
    }
}

} // namespace kvo::platform
