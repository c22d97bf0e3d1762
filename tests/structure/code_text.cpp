#include "code_text.h"

#include <algorithm>
#include <cctype>

namespace kvo::structure {
namespace {

bool isWordSign(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

// The end of what begins at `at`: a comment, a literal, or one sign.
std::size_t endOfPiece(std::string_view text, std::size_t at) {
    const auto behind = [&](std::string_view mark, std::size_t from) {
        const std::size_t found = text.find(mark, from);
        return found == std::string_view::npos ? text.size() : found + mark.size();
    };
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("//")) return std::min(text.find('\n', at), text.size());
    if (rest.starts_with("/*")) return behind("*/", at + 2);
    if (rest.starts_with("R\"") && (at == 0 || !isWordSign(text[at - 1]))) {
        const std::size_t open = std::min(text.find('(', at), text.size());
        return behind(")" + std::string(text.substr(at + 2, open - at - 2)) + "\"", open);
    }
    // A quote inside a number parts its digits.
    const bool digits = text[at] == '\'' && at > 0 && isWordSign(text[at - 1]);
    if (text[at] != '"' && (text[at] != '\'' || digits)) return at + 1;
    std::size_t end = at + 1;
    while (end < text.size() && text[end] != text[at] && text[end] != '\n')
        end += text[end] == '\\' ? 2 : 1;
    return std::min(end + 1, text.size());
}

} // namespace

std::string withoutComments(std::string_view text) {
    std::string result(text);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = endOfPiece(text, at);
        if (end > at + 1) {
            const bool comment = text[at] == '/';
            for (std::size_t i = at; i < end; ++i) {
                const bool quote = !comment && (i == at || i + 1 == end);
                if (quote && text[i] != '\n')
                    result[i] = '"';
                else if (text[i] != '\n')
                    result[i] = ' ';
            }
        }
        at = end;
    }
    return result;
}

std::vector<Token> tokensOf(std::string_view code) {
    std::vector<Token> result;
    int line = 1;
    for (std::size_t at = 0; at < code.size();) {
        std::size_t end = at + 1;
        if (code[at] == '\n') ++line;
        if (isWordSign(code[at])) {
            while (end < code.size() && isWordSign(code[end])) ++end;
        } else if (code.substr(at, 2) == "->" || code.substr(at, 2) == "::") {
            end = at + 2;
        }
        if (std::isspace(static_cast<unsigned char>(code[at])) == 0)
            result.push_back({line, std::string(code.substr(at, end - at))});
        at = end;
    }
    return result;
}

namespace {

bool isAccess(std::string_view word) {
    return word == "public" || word == "protected" || word == "private" || word == "slots" ||
           word == "signals";
}

// Walks the tokens of a file from statement to statement.
class FunctionFinder {
public:
    explicit FunctionFinder(std::vector<Token> tokens) : m_tokens(std::move(tokens)) {}

    std::vector<Function> find() {
        while (m_at < m_tokens.size()) {
            const std::string& text = m_tokens[m_at].text;
            if (text == "#") {
                skipLine();
            } else if (text == ";" || text == "}") {
                m_start = ++m_at;
            } else if (text == "{") {
                openBrace();
            } else if (text == ":" && m_at > 0 && isAccess(m_tokens[m_at - 1].text)) {
                m_start = ++m_at;
            } else {
                ++m_at;
            }
        }
        return m_found;
    }

private:
    // A directive's words are no statement; its continued lines neither.
    void skipLine() {
        int line = m_tokens[m_at].line;
        for (; m_at < m_tokens.size() && m_tokens[m_at].line == line; ++m_at)
            if (m_tokens[m_at].text == "\\") ++line;
        m_start = m_at;
    }

    bool statementHas(std::string_view word) const {
        return std::any_of(m_tokens.begin() + static_cast<std::ptrdiff_t>(m_start),
            m_tokens.begin() + static_cast<std::ptrdiff_t>(m_at),
            [&](const Token& token) { return token.text == word; });
    }

    // Where the first parenthesis of the statement is; the statement's end for none. That of a
    // template's list does not count.
    std::size_t firstParenthesis() const {
        std::size_t at = m_start;
        if (at < m_at && m_tokens[at].text == "template") {
            int depth = 0;
            while (++at < m_at) {
                if (m_tokens[at].text == "<") ++depth;
                if (m_tokens[at].text == ">" && --depth == 0) break;
            }
        }
        while (at < m_at && m_tokens[at].text != "(" && m_tokens[at].text != "=") ++at;
        return at < m_at && m_tokens[at].text == "(" ? at : m_at;
    }

    void openBrace() {
        const std::size_t parenthesis = firstParenthesis();
        if (parenthesis < m_at) {
            // An initialiser's braces, "m_x{1}, m_y(2) {", come before the body's.
            const std::string& before = m_tokens[m_at - 1].text;
            const bool initialises = statementHas(":") && isWordSign(before.back()) &&
                                     before != "const" && before != "noexcept" &&
                                     before != "override";
            if (initialises) return skipBraces();
            Function function{nameBefore(parenthesis), m_tokens[m_start].line, 0};
            // A test's name is in its macro's list.
            if (function.name.starts_with("TEST") && parenthesis + 3 < m_at)
                function.name =
                    m_tokens[parenthesis + 1].text + "." + m_tokens[parenthesis + 3].text;
            skipBraces();
            function.lastLine = m_at > 0 ? m_tokens[m_at - 1].line : 0;
            m_found.push_back(std::move(function));
            m_start = m_at;
        } else if (statementHas("namespace") || isType()) {
            m_start = ++m_at;
        } else { // a table
            skipBraces();
        }
    }

    bool isType() const {
        return !statementHas("=") && !statementHas("enum") &&
               (statementHas("class") || statementHas("struct") || statementHas("union") ||
                   statementHas("extern"));
    }

    std::string nameBefore(std::size_t parenthesis) const {
        std::string name;
        for (std::size_t at = parenthesis; at-- > m_start;) {
            const std::string& text = m_tokens[at].text;
            const bool joins = text == "::" || text == "~";
            if (!joins && !name.empty() && !name.starts_with("::") && !name.starts_with("~")) break;
            if (!joins && !isWordSign(text.back()) && !name.empty()) break;
            name.insert(0, text);
        }
        return name.starts_with("::") ? name.substr(2) : name; // a template's member
    }

    // To behind the brace that closes the one at hand.
    void skipBraces() {
        int depth = 0;
        do {
            if (m_tokens[m_at].text == "{") ++depth;
            if (m_tokens[m_at].text == "}") --depth;
        } while (++m_at < m_tokens.size() && depth > 0);
    }

    std::vector<Token> m_tokens;
    std::vector<Function> m_found;
    std::size_t m_at = 0;
    std::size_t m_start = 0; // of the statement at hand
};

} // namespace

std::vector<Function> functionsOf(std::string_view text) {
    return FunctionFinder(tokensOf(withoutComments(text))).find();
}

namespace {

// Reads class bodies from declaration to declaration.
class ClassFinder {
public:
    explicit ClassFinder(std::vector<Token> tokens) : m_tokens(std::move(tokens)) {}

    std::vector<Class> find() {
        while (m_at < m_tokens.size())
            if (!openClass()) ++m_at;
        return m_found;
    }

private:
    const std::string& text(std::size_t at) const {
        static const std::string none;
        return at < m_tokens.size() ? m_tokens[at].text : none;
    }

    // Reads the class that begins here. False, and nothing read, where none does.
    bool openClass() {
        const bool key = text(m_at) == "class" || text(m_at) == "struct";
        const std::string before = m_at > 0 ? text(m_at - 1) : std::string();
        if (!key || before == "enum" || before == "<" || before == ",") return false;
        std::size_t brace = m_at + 1;
        while (brace < m_tokens.size() && text(brace) != "{" && text(brace) != ";" &&
               text(brace) != "(" && text(brace) != "=")
            ++brace;
        if (text(brace) != "{") return false;
        const std::size_t place = m_found.size();
        m_found.push_back({text(m_at + 1), m_tokens[m_at].line, text(m_at) == "struct", 0, 0});
        m_at = brace + 1;
        while (m_at < m_tokens.size() && text(m_at) != "}") declaration(place);
        ++m_at;
        return true;
    }

    // One declaration of the class's body, counted.
    void declaration(std::size_t place) {
        if (isAccess(text(m_at)) || text(m_at) == ":") return void(++m_at);
        if (text(m_at) == "Q_OBJECT") return void(++m_at);
        if (openClass()) return skipTo(";");
        const std::size_t start = m_at;
        bool function = false;
        int commas = 0;
        while (m_at < m_tokens.size() && text(m_at) != ";" && text(m_at) != "}") {
            if (text(m_at) == "<") {
                skip("<", ">");
            } else if (text(m_at) == "(") {
                function = function || !hasBefore(start, "=") || hasBefore(start, "operator");
                skip("(", ")");
            } else if (text(m_at) == "{") {
                skip("{", "}");
                if (function && !initialises()) break;
            } else {
                commas += text(m_at++) == "," ? 1 : 0;
            }
        }
        const std::size_t end = m_at;
        if (text(m_at) == ";") ++m_at;
        count(m_found[place], start, end, function ? 0 : commas, function);
    }

    void count(Class& one, std::size_t start, std::size_t end, int commas, bool function) const {
        if (start == end) return;
        for (const char* word : {"using", "typedef", "friend", "static_assert", "enum", "template"})
            if (text(start) == word && (word != std::string_view("template") || !function)) return;
        if (!function) {
            one.data += 1 + commas;
            return;
        }
        for (std::size_t at = start; at < end && text(at) != "("; ++at)
            if (text(at) == one.name && text(at + 1) == "(") return;
        if (text(end - 1) == "delete") return;
        ++one.functions;
    }

    bool hasBefore(std::size_t start, std::string_view word) const {
        return std::any_of(m_tokens.begin() + static_cast<std::ptrdiff_t>(start),
            m_tokens.begin() + static_cast<std::ptrdiff_t>(m_at),
            [&](const Token& token) { return token.text == word; });
    }

    // Whether braces that were just read initialise a member: another or the body follows them.
    bool initialises() const { return text(m_at) == "," || text(m_at) == "{"; }

    void skip(std::string_view open, std::string_view close) {
        int depth = 0;
        do {
            if (text(m_at) == open) ++depth;
            if (text(m_at) == close) --depth;
        } while (++m_at < m_tokens.size() && depth > 0);
    }

    void skipTo(std::string_view sign) {
        while (m_at < m_tokens.size() && text(m_at) != sign) ++m_at;
        ++m_at;
    }

    std::vector<Token> m_tokens;
    std::vector<Class> m_found;
    std::size_t m_at = 0;
};

} // namespace

std::vector<Class> classesOf(std::string_view text) {
    return ClassFinder(tokensOf(withoutComments(text))).find();
}

} // namespace kvo::structure
