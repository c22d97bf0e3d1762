#pragma once
// A program that finds its folder held asks the holder to bring its window to the front.
#include "platform/folder_lock.h"

#include <functional>

namespace kvo::platform {

class ShowRequests {
public:
    virtual ~ShowRequests() = default;
    // Asks a holder on this machine to show its window; false where it cannot be reached.
    [[nodiscard]] virtual bool askToShow(const FolderHolder& holder) = 0;
    // What to do when another program asks this one; until then no request is heard.
    virtual void whenAsked(std::function<void()> show) = 0;
};

} // namespace kvo::platform
