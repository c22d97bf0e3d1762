#include "layer_check.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <sstream>

namespace kvo::structure {
namespace {

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> result;
    for (std::string word; in >> word;) result.push_back(word);
    return result;
}

bool contains(const std::vector<std::string>& list, const std::string& word) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

// The words of a cell, a shared list in place of its name.
std::vector<std::string> expanded(
    const std::string& cell, const std::map<std::string, std::vector<std::string>>& lists) {
    std::vector<std::string> result;
    for (const std::string& word : words(cell)) {
        const auto list = lists.find(word);
        if (list == lists.end())
            result.push_back(word);
        else
            result.insert(result.end(), list->second.begin(), list->second.end());
    }
    return result;
}

bool liesIn(std::string_view file, std::string_view folder) {
    return file.size() > folder.size() && file.starts_with(folder) && file[folder.size()] == '/';
}

// Why a layer may not include an outside header; empty if it may.
std::string outsideBreach(const Layer& layer, const std::string& header) {
    if (header.starts_with('Q') || header.starts_with("Qt"))
        return contains(layer.outside, "Qt") ? "" : "is Qt, which " + layer.name + " must not know";
    const bool standard = header.find('/') == std::string::npos && !header.ends_with(".h");
    if (standard || contains(layer.outside, "system")) return "";
    return "is the system's, which " + layer.name + " must not know";
}

// Why a layer may not include a header of ours; empty if it may.
std::string insideBreach(const std::vector<Layer>& table, const Layer& layer,
    const std::string& header, const Sources& sources) {
    if (header.ends_with(".moc")) return "";
    if (!sources.contains(header)) return "is not there; name it from the project's folder";
    const Layer* target = layerOf(table, header);
    if (target == &layer || contains(layer.uses, target->name)) return "";
    return "belongs to " + target->name + ", which " + layer.name + " may not use";
}

std::string includeBreach(const std::vector<Layer>& table, const Layer& layer,
    const Include& include, const Sources& sources) {
    for (const std::string& pattern : layer.never)
        if (matches(pattern, include.name)) return "is what " + layer.name + " must never include";
    return include.angled ? outsideBreach(layer, include.name)
                          : insideBreach(table, layer, include.name, sources);
}

using Graph = std::map<std::string, std::set<std::string>>;

// The circles of a graph, each as "a -> b -> a", each told once.
std::vector<std::string> circlesOf(const Graph& graph) {
    std::vector<std::string> result;
    std::set<std::string> done;
    std::vector<std::string> path;
    std::function<void(const std::string&)> visit = [&](const std::string& node) {
        const auto open = std::find(path.begin(), path.end(), node);
        if (open != path.end()) {
            std::string text;
            for (auto i = open; i != path.end(); ++i) text += *i + " -> ";
            result.push_back(text + node);
            return;
        }
        const auto found = graph.find(node);
        if (found == graph.end() || done.contains(node)) return;
        path.push_back(node);
        for (const std::string& next : found->second) visit(next);
        path.pop_back();
        done.insert(node);
    };
    for (const auto& [node, next] : graph) visit(node);
    return result;
}

std::string unitOf(const std::string& file) {
    return file.substr(0, file.rfind('.'));
}

std::vector<std::string> circles(const Sources& sources) {
    Graph headers;
    Graph units;
    for (const auto& [file, text] : sources)
        for (const Include& include : includesOf(text)) {
            if (include.angled || !sources.contains(include.name)) continue;
            headers[file].insert(include.name);
            if (unitOf(include.name) != unitOf(file))
                units[unitOf(file)].insert(unitOf(include.name));
        }
    std::vector<std::string> result;
    for (const std::string& circle : circlesOf(headers))
        result.push_back("headers in a circle: " + circle);
    if (!result.empty()) return result; // their units go in the same circles
    for (const std::string& circle : circlesOf(units))
        result.push_back("units in a circle: " + circle);
    return result;
}

} // namespace

std::vector<Layer> readTable(std::string_view text) {
    std::vector<Layer> table;
    std::map<std::string, std::vector<std::string>> lists;
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') continue;
        if (line[0] == '@') {
            const std::size_t equals = std::min(line.find('='), line.size() - 1);
            const std::vector<std::string> name = words(line.substr(0, equals));
            if (name.size() == 1) lists[name[0]] = words(line.substr(equals + 1));
            continue;
        }
        std::vector<std::string> cells;
        std::istringstream row(line);
        for (std::string cell; std::getline(row, cell, '|');) cells.push_back(cell);
        cells.resize(5);
        const std::vector<std::string> name = words(cells[0]);
        if (name.size() != 1) continue;
        table.push_back({name[0], words(cells[1]), words(cells[2]), words(cells[3]),
            expanded(cells[4], lists)});
    }
    return table;
}

std::vector<std::string> tableBreaches(const std::vector<Layer>& table) {
    std::vector<std::string> result;
    std::vector<std::string> names;
    std::vector<std::string> folders;
    for (const Layer& layer : table) {
        for (const std::string& used : layer.uses)
            if (!contains(names, used))
                result.push_back(layer.name + " uses " + used + ", which is no layer above it");
        for (const std::string& pattern : layer.never)
            if (pattern.starts_with('@'))
                result.push_back(
                    layer.name + " names the list " + pattern + ", which is not above it");
        for (const std::string& folder : layer.folders) {
            if (contains(folders, folder)) result.push_back(folder + " is claimed twice");
            folders.push_back(folder);
        }
        names.push_back(layer.name);
    }
    return result;
}

const Layer* layerOf(const std::vector<Layer>& table, std::string_view file) {
    const Layer* result = nullptr;
    std::size_t longest = 0;
    for (const Layer& layer : table)
        for (const std::string& folder : layer.folders)
            if (folder.size() > longest && liesIn(file, folder)) {
                result = &layer;
                longest = folder.size();
            }
    return result;
}

bool isEntry(std::string_view file) {
    return file.ends_with("/main.cpp");
}

std::vector<Include> includesOf(std::string_view text) {
    std::vector<Include> result;
    std::istringstream lines{std::string(text)};
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        std::string_view rest = line;
        const auto skipBlanks = [&rest] {
            rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
        };
        const auto take = [&](std::string_view word) {
            skipBlanks();
            if (!rest.starts_with(word)) return false;
            rest.remove_prefix(word.size());
            skipBlanks();
            return true;
        };
        if (!take("#") || !take("include") || rest.empty()) continue;
        const bool angled = rest[0] == '<';
        const std::size_t end = rest.find(angled ? '>' : '"', 1);
        if ((!angled && rest[0] != '"') || end == std::string_view::npos) continue;
        result.push_back({number, std::string(rest.substr(1, end - 1)), angled});
    }
    return result;
}

bool matches(std::string_view pattern, std::string_view text) {
    if (pattern.empty()) return text.empty();
    if (pattern[0] == '*')
        return matches(pattern.substr(1), text) ||
               (!text.empty() && matches(pattern, text.substr(1)));
    return !text.empty() && pattern[0] == text[0] && matches(pattern.substr(1), text.substr(1));
}

std::vector<std::string> breaches(const std::vector<Layer>& table, const Sources& sources) {
    std::vector<std::string> result = tableBreaches(table);
    for (const auto& [file, text] : sources) {
        const Layer* layer = layerOf(table, file);
        if (!layer || isEntry(file)) continue;
        const std::vector<Include> includes = includesOf(text);
        const std::string header = unitOf(file) + ".h";
        if (file.ends_with(".cpp") && sources.contains(header) &&
            (includes.empty() || includes[0].name != header))
            result.push_back(file + ": does not include " + header + " first");
        for (const Include& include : includes) {
            const std::string why = includeBreach(table, *layer, include, sources);
            if (!why.empty())
                result.push_back(
                    file + ":" + std::to_string(include.line) + ": " + include.name + " " + why);
        }
    }
    const std::vector<std::string> found = circles(sources);
    result.insert(result.end(), found.begin(), found.end());
    return result;
}

} // namespace kvo::structure
