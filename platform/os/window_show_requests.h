#pragma once
// ShowRequests on Windows: each program has a window that is never shown and that is named by the
// number of its process. A request is a message to it, which only programs of the same user's
// desktop can send; it is heard while the thread that asked for it waits for its messages.
#include "platform/show_requests.h"

namespace kvo::platform_os {

#ifdef _WIN32

class WindowShowRequests : public platform::ShowRequests {
public:
    WindowShowRequests() = default;
    ~WindowShowRequests() override;
    WindowShowRequests(const WindowShowRequests&) = delete;
    WindowShowRequests& operator=(const WindowShowRequests&) = delete;

    // Gives the other program the right to come to the front as well; waits for its answer for five
    // seconds, unless the system knows that it hangs.
    bool askToShow(const platform::FolderHolder& holder, const std::string& run) override;
    void whenAsked(std::function<void(const std::string& run)> show) override;

private:
    struct Heard;
    void closeWindow();

    Heard* m_heard = nullptr; // of the window, while there is one
};

#endif

} // namespace kvo::platform_os
