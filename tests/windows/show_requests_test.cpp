// The request to another program to show its window, over real messages of the system.
#include "platform/os/window_show_requests.h"
#include "platform/os/windows_api.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kvo::platform_os {
namespace {

platform::FolderHolder ownHolder() {
    platform::FolderHolder holder;
    holder.here = true;
    holder.process = GetCurrentProcessId();
    return holder;
}

// What a program does while nothing happens.
void takeMessages() {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;)
        DispatchMessageW(&message);
}

TEST(WindowShowRequests, AreHeardBehindTheMessageAndOnlyWhileTheProgramLives) {
    WindowShowRequests asking;
    EXPECT_FALSE(asking.askToShow(ownHolder(), {}));
    {
        int shows = 0;
        WindowShowRequests asked;
        asked.whenAsked([&shows](const std::string& run) { shows += run.empty() ? 1 : 100; });
        EXPECT_TRUE(asking.askToShow(ownHolder(), {}));
        EXPECT_EQ(shows, 0);
        takeMessages();
        EXPECT_EQ(shows, 1);
        takeMessages();
        EXPECT_EQ(shows, 1);
        platform::FolderHolder other = ownHolder();
        other.here = false; // a number of another machine
        EXPECT_FALSE(asking.askToShow(other, {}));
    }
    EXPECT_FALSE(asking.askToShow(ownHolder(), {}));
}

TEST(WindowShowRequests, BringTheRunThatWasAskedForLast) {
    std::vector<std::string> runs;
    WindowShowRequests asked;
    asked.whenAsked([&runs](const std::string& run) { runs.push_back(run); });
    const std::string run = "C:\\J\xc3\xbcrg\\" + std::string(4000, 'x') + ".52d";
    EXPECT_TRUE(asked.askToShow(ownHolder(), "C:\\first.52d"));
    EXPECT_TRUE(asked.askToShow(ownHolder(), run));
    takeMessages();
    EXPECT_EQ(runs, std::vector<std::string>{run});
    EXPECT_TRUE(asked.askToShow(ownHolder(), {}));
    takeMessages();
    EXPECT_EQ(runs, (std::vector<std::string>{run, {}}));
}

TEST(WindowShowRequests, TakeNothingElseForOne) {
    int shows = 0;
    WindowShowRequests asked;
    asked.whenAsked([&shows](const std::string&) { ++shows; });
    const HWND window = FindWindowExW(
        HWND_MESSAGE, nullptr, nullptr, std::to_wstring(GetCurrentProcessId()).c_str());
    ASSERT_TRUE(window);
    std::string words(9000, 'x');
    COPYDATASTRUCT message{1, 4, words.data()};
    EXPECT_EQ(SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&message)), FALSE);
    EXPECT_FALSE(asked.askToShow(ownHolder(), words)) << "longer than any path";
    takeMessages();
    EXPECT_EQ(shows, 0);
}

TEST(WindowShowRequests, MayBeTakenAnewWhileOneIsHeard) {
    std::string heard;
    WindowShowRequests asked;
    asked.whenAsked([&](const std::string& run) {
        heard += run;
        asked.whenAsked([&heard](const std::string& next) { heard += "then " + next; });
    });
    EXPECT_TRUE(asked.askToShow(ownHolder(), "first "));
    takeMessages();
    EXPECT_TRUE(asked.askToShow(ownHolder(), "next"));
    takeMessages();
    EXPECT_EQ(heard, "first then next");
}

} // namespace
} // namespace kvo::platform_os
