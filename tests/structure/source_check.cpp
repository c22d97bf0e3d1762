#include "source_check.h"

#include "code_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <regex>
#include <sstream>

namespace kvo::structure {
namespace {

constexpr int longestFunction = 60;
constexpr int longestFile = 600;
constexpr int mostMembers = 60;

bool isProduct(std::string_view file) {
    return !file.starts_with("tests/") && !file.starts_with("bench/");
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> result;
    std::istringstream in{std::string(text)};
    for (std::string line; std::getline(in, line);) result.push_back(line);
    return result;
}

bool isWord(std::string_view text) {
    return std::isalnum(static_cast<unsigned char>(text.front())) != 0 || text.front() == '_';
}

// Whether the tokens at `at` are the name, and a use of it.
bool usesName(const std::vector<Token>& tokens, std::size_t at, const std::vector<Token>& name) {
    if (tokens.size() - at < name.size()) return false;
    for (std::size_t i = 0; i < name.size(); ++i)
        if (tokens[at + i].text != name[i].text) return false;
    const auto before = [&](std::size_t n) { return at >= n ? tokens[at - n].text : ";"; };
    if (name.back().text != ")") return true;
    // A call of another object's member of that name, or a declaration: "State& state()".
    if (before(1) == "." || before(1) == "->") return false;
    if (before(1) == "&" || before(1) == "*") return !isWord(before(2)) || before(2) == "return";
    return !isWord(before(1)) || before(1) == "return";
}

std::string testFolder(const Layer& layer, std::string_view file) {
    const bool qt =
        std::find(layer.outside.begin(), layer.outside.end(), "Qt") != layer.outside.end();
    if (qt || file.find("/forms/") != std::string_view::npos) return "forms";
    return layer.name.starts_with("platform") ? "contract" : layer.name;
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return "";
    return std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

// The lines of a table of three columns; comments and empty lines are passed over.
std::vector<std::array<std::string, 3>> rowsOf(std::string_view text) {
    std::vector<std::array<std::string, 3>> result;
    for (const std::string& line : linesOf(text)) {
        if (trimmed(line).empty() || line.starts_with('#')) continue;
        std::array<std::string, 3> cells;
        std::istringstream row(line);
        for (std::string& cell : cells) {
            std::getline(row, cell, '|');
            cell = trimmed(cell);
        }
        result.push_back(cells);
    }
    return result;
}

bool isForbiddenIn(const Layer& layer, const ForbiddenName& name) {
    return std::any_of(name.layers.begin(), name.layers.end(),
        [&](const std::string& pattern) { return matches(pattern, layer.name); });
}

} // namespace

std::string Breach::text() const {
    return where + (line > 0 ? ":" + std::to_string(line) : std::string()) + ": " + what;
}

std::vector<ForbiddenName> readNames(std::string_view text) {
    std::vector<ForbiddenName> result;
    for (const auto& [name, layers, instead] : rowsOf(text)) {
        std::istringstream patterns(layers);
        ForbiddenName row{name, {}, instead};
        for (std::string pattern; patterns >> pattern;) row.layers.push_back(pattern);
        result.push_back(std::move(row));
    }
    return result;
}

std::vector<Breach> nameBreaches(const std::vector<Layer>& table,
    const std::vector<ForbiddenName>& names, const Sources& sources) {
    std::vector<Breach> result;
    for (const ForbiddenName& row : names)
        for (const std::string& pattern : row.layers)
            if (std::none_of(table.begin(), table.end(),
                    [&](const Layer& layer) { return matches(pattern, layer.name); }))
                result.push_back({"tools/names.txt", 0, pattern + " is no layer"});
    for (const auto& [file, text] : sources) {
        const Layer* layer = layerOf(table, file);
        if (!layer || isEntry(file)) continue;
        const std::vector<Token> tokens = tokensOf(withoutComments(text));
        for (const ForbiddenName& row : names) {
            if (!isForbiddenIn(*layer, row)) continue;
            const std::vector<Token> name = tokensOf(row.name);
            for (std::size_t at = 0; at < tokens.size(); ++at)
                if (usesName(tokens, at, name))
                    result.push_back({file, tokens[at].line,
                        row.name + " is not for " + layer->name + ": " + row.instead});
        }
    }
    return result;
}

std::vector<Breach> lengthBreaches(const Sources& sources) {
    std::vector<Breach> result;
    for (const auto& [file, text] : sources) {
        const auto lines = std::count(text.begin(), text.end(), '\n');
        if (lines > longestFile)
            result.push_back({file, 0, std::to_string(lines) + " lines in a file"});
        for (const Function& function : functionsOf(text))
            if (function.lines() > longestFunction)
                result.push_back({file + ":" + function.name, function.firstLine,
                    std::to_string(function.lines()) + " lines in a function"});
    }
    return result;
}

std::vector<Breach> classBreaches(const Sources& sources) {
    std::vector<Breach> result;
    for (const auto& [file, text] : sources) {
        if (!isProduct(file) || !file.ends_with(".h")) continue;
        for (const Class& one : classesOf(text)) {
            const int members = one.functions + one.data;
            if (members <= mostMembers || (one.isStruct && one.functions == 0)) continue;
            result.push_back(
                {file + ":" + one.name, one.line, std::to_string(members) + " members of a class"});
        }
    }
    return result;
}

std::vector<Breach> testBreaches(const std::vector<Layer>& table, const Sources& sources) {
    std::vector<Breach> result;
    for (const auto& [file, text] : sources) {
        const Layer* layer = layerOf(table, file);
        if (!layer || !file.ends_with(".cpp") || isEntry(file) || file.starts_with("tools/"))
            continue;
        const std::string unit = std::filesystem::path(file).stem().string();
        const std::string test = "tests/" + testFolder(*layer, file) + "/" + unit + "_test.cpp";
        if (!sources.contains(test)) result.push_back({file, 0, "has no " + test});
    }
    return result;
}

std::vector<Breach> dataTypeBreaches(const Sources& sources) {
    // What is compared with less or more, or told apart otherwise, must be named as a type.
    static const std::string number = "(8|12|17|20|23|25|29|32|43)\\b";
    static const std::string type = "[Tt]ype(\\(\\))? *";
    static const std::regex comparison("== *" + number + "|" + type + "(!=|[<>]=?) *" + number +
                                       "|\\b" + number + " (!=|[<>]=?) [\\w.>()-]*[Tt]ype\\b");
    static const std::regex typeSwitch("\\bswitch *\\(.*" + type + "\\)");
    static const std::regex anySwitch("\\bswitch *\\(");
    static const std::regex typeCase("\\bcase " + number + " *:");
    static const std::string_view mark = "// Required:";
    std::vector<Breach> result;
    for (const auto& [file, text] : sources) {
        if (!isProduct(file) || file.starts_with("core/data_types.")) continue;
        const std::vector<std::string> written = linesOf(text);
        const std::vector<std::string> code = linesOf(withoutComments(text));
        bool inTypeSwitch = false;
        for (std::size_t i = 0; i < code.size(); ++i) {
            if (std::regex_search(code[i], anySwitch))
                inTypeSwitch = std::regex_search(code[i], typeSwitch);
            const bool marked = written[i].find(mark) != std::string::npos ||
                                (i > 0 && trimmed(written[i - 1]).starts_with(mark));
            const bool compares = std::regex_search(code[i], comparison) ||
                                  (inTypeSwitch && std::regex_search(code[i], typeCase));
            if (!marked && compares)
                result.push_back({file, static_cast<int>(i + 1),
                    "compares with a data type's number: " + trimmed(written[i])});
        }
    }
    return result;
}

std::vector<Exception> readExceptions(std::string_view text) {
    std::vector<Exception> result;
    for (const auto& [rule, where, why] : rowsOf(text)) result.push_back({rule, where, why});
    return result;
}

std::vector<Breach> withoutExceptions(
    std::vector<Breach> breaches, std::string_view rule, const std::vector<Exception>& exceptions) {
    std::vector<Breach> wrong;
    for (const Exception& exception : exceptions) {
        if (exception.rule != rule) continue;
        const std::size_t taken = std::erase_if(
            breaches, [&](const Breach& breach) { return breach.where == exception.where; });
        if (taken == 0) wrong.push_back({exception.where, 0, "is no exception any more"});
        if (exception.why.empty()) wrong.push_back({exception.where, 0, "is excepted unreasoned"});
    }
    breaches.insert(breaches.end(), wrong.begin(), wrong.end());
    return breaches;
}

Sources readTree(const std::filesystem::path& root) {
    Sources result;
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator i(root, error), end; i != end;
         i.increment(error)) {
        const std::string name = i->path().filename().string();
        if (i->is_directory(error) && (name.starts_with('.') || name == "build"))
            i.disable_recursion_pending();
        const std::string suffix = i->path().extension().string();
        if (suffix != ".h" && suffix != ".cpp") continue;
        std::ifstream in(i->path(), std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        result[std::filesystem::relative(i->path(), root, error).generic_string()] = text.str();
    }
    return result;
}

} // namespace kvo::structure
