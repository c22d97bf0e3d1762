#include "platform/os/window_show_requests.h"

#ifdef _WIN32

#include "platform/os/windows_api.h"

#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace kvo::platform_os {
namespace {

constexpr const wchar_t* windowClass = L"KvoShowRequests";
constexpr ULONG_PTR showMark = 0x4B76'6F01;  // other messages of this kind are not ours
constexpr std::size_t longestRequest = 8192; // more than the system's paths have
constexpr UINT longestWaitMs = 5000;
constexpr UINT showAsked = WM_APP;

std::wstring windowName(std::int64_t process) {
    return std::to_wstring(process);
}

} // namespace

// What came in. It is acted on behind the message that brought it, which its sender waits for.
struct WindowShowRequests::Heard {
    std::function<void(const std::string& run)> show;
    std::string run; // the last one that was asked for
    bool waiting = false;
    HWND window = nullptr;

    bool take(const COPYDATASTRUCT& message) {
        if (message.dwData != showMark || message.cbData > longestRequest) return false;
        run.assign(static_cast<const char*>(message.lpData), message.cbData);
        if (!waiting) waiting = PostMessageW(window, showAsked, 0, 0) != FALSE;
        return waiting;
    }

    void act() {
        waiting = false;
        const auto told = show; // which may ask for another one to be told
        told(std::exchange(run, {}));
    }

    // Nothing may be thrown through the system that calls this.
    static LRESULT CALLBACK hear(HWND window, UINT message, WPARAM word, LPARAM more) noexcept {
        auto* const heard = reinterpret_cast<Heard*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        try {
            if (heard && message == WM_COPYDATA)
                return heard->take(*reinterpret_cast<const COPYDATASTRUCT*>(more)) ? TRUE : FALSE;
            if (heard && message == showAsked) {
                heard->act();
                return 0;
            }
        } catch (const std::bad_alloc&) {
            return FALSE; // not heard, as its sender is told
        }
        return DefWindowProcW(window, message, word, more);
    }
};

WindowShowRequests::~WindowShowRequests() {
    closeWindow();
}

bool WindowShowRequests::askToShow(const platform::FolderHolder& holder, const std::string& run) {
    if (!holder.here) return false;
    const HWND window =
        FindWindowExW(HWND_MESSAGE, nullptr, windowClass, windowName(holder.process).c_str());
    if (!window) return false;
    AllowSetForegroundWindow(static_cast<DWORD>(holder.process));
    COPYDATASTRUCT message{};
    message.dwData = showMark;
    message.cbData = static_cast<DWORD>(run.size());
    message.lpData = const_cast<char*>(run.data());
    DWORD_PTR taken = FALSE;
    const LRESULT answered = SendMessageTimeoutW(window, WM_COPYDATA, 0,
        reinterpret_cast<LPARAM>(&message), SMTO_ABORTIFHUNG, longestWaitMs, &taken);
    return answered != 0 && taken == TRUE;
}

void WindowShowRequests::whenAsked(std::function<void(const std::string& run)> show) {
    closeWindow();
    WNDCLASSEXW kind{};
    kind.cbSize = sizeof kind;
    kind.lpfnWndProc = Heard::hear;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = windowClass;
    RegisterClassExW(&kind); // fails where it is there, from the time before
    auto heard = std::make_unique<Heard>();
    heard->show = std::move(show);
    heard->window = CreateWindowExW(0, windowClass, windowName(GetCurrentProcessId()).c_str(), 0, 0,
        0, 0, 0, HWND_MESSAGE, nullptr, kind.hInstance, nullptr);
    if (!heard->window) return;
    SetWindowLongPtrW(heard->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(heard.get()));
    m_heard = heard.release();
}

void WindowShowRequests::closeWindow() {
    if (!m_heard) return;
    DestroyWindow(m_heard->window);
    delete std::exchange(m_heard, nullptr);
}

} // namespace kvo::platform_os

#endif
