#pragma once
// Questions that a test expects, in their order, with the answers it gives. A question that was not
// expected, differs, was never asked, or is not in UTF-8 is a problem; a test that does not look at
// problems() ends the program when the script goes out of scope with one.
#include "platform/dialogs.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kvo::testing {

class ScriptedDialogs : public platform::Dialogs {
public:
    // One expected question. What is not set is not compared.
    struct Expected {
        enum class Kind { box, input, colour, folder, file } kind = Kind::box;
        std::optional<std::string> text;     // whole text or prompt
        std::optional<std::string> contains; // part of it
        std::optional<std::string> title;
        std::optional<int> style;
        std::optional<std::string> preset;
        platform::Reply reply = platform::Reply::ok;
        std::string answer;
        std::optional<platform::Colour> colour;
        std::optional<std::string> folder; // or the file
        std::function<void()> whileShown;  // runs while the question stands
    };

    ScriptedDialogs() = default;
    ScriptedDialogs(const ScriptedDialogs&) = delete;
    ScriptedDialogs& operator=(const ScriptedDialogs&) = delete;
    ~ScriptedDialogs() override;

    // Each gives the entry, so that a test can add to it.
    Expected& expectBox(std::string text, int style, std::string title,
        platform::Reply reply = platform::Reply::ok);
    Expected& expectBoxTitled(std::string title, platform::Reply reply = platform::Reply::ok);
    Expected& expectInput(
        std::string prompt, std::string title, std::string preset, std::string answer);
    Expected& expectInputTitled(std::string title, std::string answer);
    Expected& expectFolder(std::optional<std::string> answer);
    // The title, the path that is suggested, and the one that is chosen.
    Expected& expectFile(
        std::string title, std::string suggestion, std::optional<std::string> answer);
    Expected& expectColour(std::optional<platform::Colour> answer);

    // Everything that went wrong up to now, and what is still to be asked; empty if all is well.
    std::string problems();
    int beeps() const { return m_beeps; }
    bool hourglass() const { return m_hourglass; }
    // Titles of all boxes that were shown.
    const std::vector<std::string>& titles() const { return m_titles; }

    platform::Reply messageBox(
        const std::string& text, int style, const std::string& title) override;
    std::string inputBox(
        const std::string& prompt, const std::string& title, const std::string& preset) override;
    std::optional<platform::Colour> chooseColour(std::optional<platform::Colour> start) override;
    std::optional<std::string> chooseFolder(
        const std::string& title, const std::string& start) override;
    std::optional<std::string> chooseFile(const platform::FileQuestion& question) override;
    void beep() override { ++m_beeps; }
    void setHourglass(bool on) override { m_hourglass = on; }

private:
    std::optional<Expected> take(Expected::Kind kind, const std::string& text,
        const std::string& title, const std::optional<int>& style,
        const std::optional<std::string>& preset);
    void compare(
        const char* what, const std::string& got, const std::optional<std::string>& wanted);

    std::deque<Expected> m_expected;
    std::vector<std::string> m_problems;
    std::vector<std::string> m_titles;
    int m_beeps = 0;
    bool m_hourglass = false;
    bool m_looked = false;
};

} // namespace kvo::testing
