#include "runner.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <fstream>
#include <map>
#include <ostream>
#include <system_error>
#include <vector>

namespace kvo::vectors {

namespace fs = std::filesystem;

namespace {

struct Registered {
    Function function;
    Fits fits;
};

std::map<std::string, std::vector<Registered>>& registry() {
    static std::map<std::string, std::vector<Registered>> all;
    return all;
}

struct Failure {
    std::string id;
    std::string why;
    Difference difference;
};

struct Tally {
    int passed = 0;
    int total = 0;
    std::vector<Failure> firstFailures;
};
using Tallies = std::map<std::string, Tally>;

std::string shown(const Json& value) {
    constexpr std::size_t longest = 400;
    std::string text = value.dump(-1, ' ', true, Json::error_handler_t::replace);
    if (text.size() > longest) text = text.substr(0, longest) + "...";
    return text;
}

bool sameNumber(const Json& expected, const Json& got, double tolerance) {
    if (expected.is_number_integer() && got.is_number_integer()) return expected == got;
    const auto a = expected.get<double>();
    const auto b = got.get<double>();
    return a == b || (tolerance > 0 && std::abs(a - b) <= tolerance);
}

std::optional<Difference> compareAt(
    const std::string& path, const Json& expected, const Json& got, double tolerance) {
    const auto differs = [&] { return Difference{path, shown(expected), shown(got)}; };
    if (expected.is_object() && got.is_object()) {
        for (const auto& [key, value] : expected.items()) {
            const auto found = got.find(key);
            const std::string inner = path + "." + key;
            if (found == got.end()) return Difference{inner, shown(value), "(nothing)"};
            if (auto difference = compareAt(inner, value, *found, tolerance)) return difference;
        }
        return {};
    }
    if (expected.is_array() && got.is_array()) {
        if (expected.size() != got.size()) return differs();
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const std::string inner = path + "[" + std::to_string(i) + "]";
            if (auto difference = compareAt(inner, expected[i], got[i], tolerance)) {
                return difference;
            }
        }
        return {};
    }
    if (expected.is_number() && got.is_number()) {
        if (sameNumber(expected, got, tolerance)) return {};
        return differs();
    }
    if (expected == got) return {};
    return differs();
}

std::string stringAt(const Json& line, const char* key) {
    const auto found = line.find(key);
    return found != line.end() && found->is_string() ? found->get<std::string>() : std::string();
}

const Function* functionFor(const std::string& name, const Json& in) {
    const auto found = registry().find(name);
    if (found == registry().end()) return nullptr;
    for (const Registered& one : found->second) {
        if (!one.fits || one.fits(in)) return &one.function;
    }
    return nullptr;
}

// What is wrong with a line, or nothing.
std::optional<Difference> judge(const std::string& name, const Json& line, const fs::path& files) {
    try {
        const Json& in = line.at("in");
        Json expected = line.at("out");
        const Function* function = functionFor(name, in);
        if (!function) return Difference{"", shown(expected), "(no such function here)"};
        const double tolerance = line.value("tol", 0.0);
        const Json got = (*function)(Case{in, expected, files});
        return compare(expected, got, tolerance);
    } catch (const std::exception& error) {
        return Difference{"", "a result", std::string("exception: ") + error.what()};
    } catch (...) {
        return Difference{"", "a result", "an unknown exception"};
    }
}

void runLine(
    const std::string& text, const std::string& place, const fs::path& files, Tallies& all) {
    constexpr std::size_t shownFailures = 3;
    const Json line = Json::parse(text, nullptr, false);
    std::string name = line.is_object() ? stringAt(line, "fn") : std::string();
    std::optional<Difference> difference;
    if (name.empty()) {
        name = "(malformed)";
        difference = Difference{"", "a line with fn, in and out", text.substr(0, 80)};
    } else {
        difference = judge(name, line, files);
    }
    Tally& tally = all[name];
    ++tally.total;
    if (!difference) {
        ++tally.passed;
    } else if (tally.firstFailures.size() < shownFailures) {
        std::string id = line.is_object() ? stringAt(line, "id") : std::string();
        if (id.empty()) id = place;
        std::string why = line.is_object() ? stringAt(line, "why") : std::string();
        tally.firstFailures.push_back({std::move(id), std::move(why), std::move(*difference)});
    }
}

void runFile(const fs::path& path, Tallies& all) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        runLine("cannot be read", path.string(), {}, all);
        return;
    }
    std::string text;
    for (int number = 1; std::getline(file, text); ++number) {
        if (!text.empty() && text.back() == '\r') text.pop_back();
        if (text.find_first_not_of(" \t") == std::string::npos) continue;
        runLine(text, path.filename().string() + ":" + std::to_string(number),
            path.parent_path() / "files", all);
    }
}

std::vector<fs::path> filesBelow(const fs::path& folder) {
    std::vector<fs::path> paths;
    std::error_code error;
    for (fs::recursive_directory_iterator it(folder, error), end; !error && it != end;
         it.increment(error)) {
        if (it->path().extension() == ".jsonl" && it->is_regular_file())
            paths.push_back(it->path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

} // namespace

void add(const std::string& fn, Function function, Fits fits) {
    registry()[fn].push_back({std::move(function), std::move(fits)});
}

std::optional<Difference> compare(const Json& expected, const Json& got, double tolerance) {
    return compareAt("out", expected, got, tolerance);
}

int runVectors(const fs::path& folder, std::ostream& report) {
    Tallies all;
    for (const fs::path& path : filesBelow(folder)) runFile(path, all);
    int passed = 0;
    int failed = 0;
    for (const auto& [name, tally] : all) {
        report << name << ' ' << tally.passed << '/' << tally.total << '\n';
        for (const Failure& failure : tally.firstFailures) {
            report << "  " << failure.id << " (" << failure.why << ") " << failure.difference.path
                   << "\n    expected: " << failure.difference.expected
                   << "\n    got:      " << failure.difference.got << '\n';
        }
        passed += tally.passed;
        failed += tally.total - tally.passed;
    }
    report << passed << " passed, " << failed << " failed\n";
    return passed > 0 && failed == 0 ? 0 : 1;
}

} // namespace kvo::vectors
