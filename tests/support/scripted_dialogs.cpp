#include "tests/support/scripted_dialogs.h"

#include "platform/text.h"

#include <cstdio>
#include <cstdlib>

namespace kvo::testing {

ScriptedDialogs::~ScriptedDialogs() {
    if (m_looked) return;
    const std::string wrong = problems();
    if (wrong.empty()) return;
    std::fprintf(stderr, "Dialogs that nobody looked at:\n%s", wrong.c_str());
    std::abort();
}

ScriptedDialogs::Expected& ScriptedDialogs::expectBox(
    std::string text, int style, std::string title, platform::Reply reply) {
    Expected& entry = expectBoxTitled(std::move(title), reply);
    entry.text = std::move(text);
    entry.style = style;
    return entry;
}

ScriptedDialogs::Expected& ScriptedDialogs::expectBoxTitled(
    std::string title, platform::Reply reply) {
    m_looked = false;
    Expected entry;
    entry.title = std::move(title);
    entry.reply = reply;
    return m_expected.emplace_back(std::move(entry));
}

ScriptedDialogs::Expected& ScriptedDialogs::expectInput(
    std::string prompt, std::string title, std::string preset, std::string answer) {
    Expected& entry = expectInputTitled(std::move(title), std::move(answer));
    entry.text = std::move(prompt);
    entry.preset = std::move(preset);
    return entry;
}

ScriptedDialogs::Expected& ScriptedDialogs::expectInputTitled(
    std::string title, std::string answer) {
    Expected& entry = expectBoxTitled(std::move(title));
    entry.kind = Expected::Kind::input;
    entry.answer = std::move(answer);
    return entry;
}

ScriptedDialogs::Expected& ScriptedDialogs::expectFolder(std::optional<std::string> answer) {
    m_looked = false;
    Expected entry;
    entry.kind = Expected::Kind::folder;
    entry.folder = std::move(answer);
    return m_expected.emplace_back(std::move(entry));
}

ScriptedDialogs::Expected& ScriptedDialogs::expectColour(std::optional<platform::Colour> answer) {
    m_looked = false;
    Expected entry;
    entry.kind = Expected::Kind::colour;
    entry.colour = answer;
    return m_expected.emplace_back(std::move(entry));
}

ScriptedDialogs::Expected& ScriptedDialogs::expectFile(
    std::string title, std::string suggestion, std::optional<std::string> answer) {
    m_looked = false;
    Expected entry;
    entry.kind = Expected::Kind::file;
    entry.title = std::move(title);
    entry.text = std::move(suggestion);
    entry.folder = std::move(answer);
    return m_expected.emplace_back(std::move(entry));
}

std::string ScriptedDialogs::problems() {
    m_looked = true;
    std::string all;
    for (const auto& problem : m_problems) all += problem + "\n";
    for (const auto& entry : m_expected)
        all += "never asked: " + entry.title.value_or("(any title)") + "\n";
    return all;
}

void ScriptedDialogs::compare(
    const char* what, const std::string& got, const std::optional<std::string>& wanted) {
    if (!wanted || got == *wanted) return;
    m_problems.push_back(std::string(what) + " is \"" + got + "\", expected \"" + *wanted + "\"");
}

std::optional<ScriptedDialogs::Expected> ScriptedDialogs::take(Expected::Kind kind,
    const std::string& text, const std::string& title, const std::optional<int>& style,
    const std::optional<std::string>& preset) {
    m_looked = false;
    m_titles.push_back(title);
    for (const std::string& said : {text, title}) {
        if (!platform::isUtf8(said)) m_problems.push_back("a file's text, as it is: " + said);
    }
    if (m_expected.empty() || m_expected.front().kind != kind) {
        m_problems.push_back("unexpected question: \"" + title + "\": " + text);
        return std::nullopt;
    }
    Expected entry = std::move(m_expected.front());
    m_expected.pop_front();
    compare("text", text, entry.text);
    compare("title", title, entry.title);
    if (preset) compare("preset", *preset, entry.preset);
    if (entry.contains && text.find(*entry.contains) == std::string::npos)
        m_problems.push_back("\"" + *entry.contains + "\" is not in: " + text);
    if (style && entry.style && *style != *entry.style)
        m_problems.push_back("style of \"" + title + "\" is " + std::to_string(*style) +
                             ", expected " + std::to_string(*entry.style));
    if (entry.whileShown) entry.whileShown();
    return entry;
}

platform::Reply ScriptedDialogs::messageBox(
    const std::string& text, int style, const std::string& title) {
    const auto entry = take(Expected::Kind::box, text, title, style, {});
    if (entry) return entry->reply;
    const int buttons = style & 15; // as if the box had been closed
    if (buttons == platform::boxStyle::yesNo) return platform::Reply::no;
    return buttons == platform::boxStyle::ok ? platform::Reply::ok : platform::Reply::cancel;
}

std::string ScriptedDialogs::inputBox(
    const std::string& prompt, const std::string& title, const std::string& preset) {
    const auto entry = take(Expected::Kind::input, prompt, title, {}, preset);
    return entry ? entry->answer : std::string();
}

std::optional<platform::Colour> ScriptedDialogs::chooseColour(std::optional<platform::Colour>) {
    const auto entry = take(Expected::Kind::colour, "colour", "", {}, {});
    return entry ? entry->colour : std::nullopt;
}

std::optional<std::string> ScriptedDialogs::chooseFolder(
    const std::string& title, const std::string&) {
    const auto entry = take(Expected::Kind::folder, "folder", title, {}, {});
    return entry ? entry->folder : std::nullopt;
}

std::optional<std::string> ScriptedDialogs::chooseFile(const platform::FileQuestion& question) {
    const auto entry = take(Expected::Kind::file, question.suggestion, question.title, {}, {});
    return entry ? entry->folder : std::nullopt;
}

} // namespace kvo::testing
