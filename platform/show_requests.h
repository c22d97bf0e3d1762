#pragma once
// A program that finds its folder held asks the holder to bring its window to the front.
#include "platform/folder_lock.h"

#include <functional>
#include <string>

namespace kvo::platform {

class ShowRequests {
public:
    virtual ~ShowRequests() = default;
    // Asks a holder on this machine to show its window, and in it a run of its folder unless `run`,
    // a whole path, is empty; false where it cannot be reached.
    [[nodiscard]] virtual bool askToShow(const FolderHolder& holder, const std::string& run) = 0;
    // What to do when another program asks this one; until then no request is heard.
    virtual void whenAsked(std::function<void(const std::string& run)> show) = 0;
};

} // namespace kvo::platform
