#include "tools/command_line/command_line.h"

#include "platform/text.h"

#include <algorithm>
#include <iostream>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h> // behind what it needs
#endif

namespace kvo::command_line {

namespace {

constexpr int misuseCode = 2;

bool isIn(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Takes the word at `place` and the value behind it, if it has one; what is wrong, else nothing.
std::string takeWord(const Syntax& syntax, const std::vector<std::string>& words,
    std::size_t& place, Arguments& arguments) {
    const std::string& word = words[place];
    if (word.size() < 2 || word.front() != '-') {
        arguments.operands.push_back(word);
        return {};
    }
    if (isIn(syntax.switches, word)) {
        arguments.options[word].clear();
        return {};
    }
    if (!isIn(syntax.options, word)) return "there is no option " + word;
    if (place + 1 == words.size()) return word + " wants a value";
    arguments.options[word] = words[++place];
    return {};
}

std::string countOff(const Syntax& syntax, std::size_t operands) {
    if (operands < syntax.fewestOperands) return "an argument is missing";
    if (operands > syntax.mostOperands) return "that is one argument too many";
    return {};
}

} // namespace

Arguments read(const Syntax& syntax, const std::vector<std::string>& words, std::ostream& out,
    std::ostream& err) {
    Arguments arguments;
    if (isIn(words, "--help") || isIn(words, "-h")) {
        out << "usage: " << syntax.usage << "\n\n" << syntax.help;
        arguments.exitCode = 0;
        return arguments;
    }
    std::string wrong;
    for (std::size_t place = 0; place < words.size() && wrong.empty(); ++place)
        wrong = takeWord(syntax, words, place, arguments);
    if (wrong.empty()) wrong = countOff(syntax, arguments.operands.size());
    if (!wrong.empty()) arguments.exitCode = misuse(syntax, wrong, err);
    return arguments;
}

Arguments read(const Syntax& syntax, int argc, const char* const* argv) {
    return read(syntax, wordsOf(argc, argv), std::cout, std::cerr);
}

#ifdef _WIN32

// What main() gets there has lost the letters that the system's old code page lacks.
std::vector<std::string> wordsOf(int, const char* const*) {
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> words;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; wide != nullptr && i < count; ++i) {
        const std::wstring word = wide[i];
        words.push_back(platform::utf8Of(std::u16string(word.begin(), word.end())));
    }
    LocalFree(static_cast<HLOCAL>(wide));
    return words;
}

#else

std::vector<std::string> wordsOf(int argc, const char* const* argv) {
    return {argv + std::min(argc, 1), argv + argc};
}

#endif

int misuse(const Syntax& syntax, const std::string& what, std::ostream& err) {
    err << syntax.usage.substr(0, syntax.usage.find(' ')) << ": " << what
        << "\nusage: " << syntax.usage << '\n';
    return misuseCode;
}

int misuse(const Syntax& syntax, const std::string& what) {
    return misuse(syntax, what, std::cerr);
}

} // namespace kvo::command_line
