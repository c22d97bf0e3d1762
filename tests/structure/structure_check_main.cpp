// Judges the project's sources by the rules that no compiler looks at.
#include "layer_check.h"
#include "source_check.h"
#include "tools/command_line/command_line.h"

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

using namespace kvo::structure;

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

struct Tree {
    std::filesystem::path root;
    std::vector<Layer> table;
    Sources sources;
};

// False for a rule that is not known.
bool judge(const std::string& rule, const Tree& tree, std::vector<Breach>& found) {
    const auto& [root, table, sources] = tree;
    if (rule == "names")
        found = nameBreaches(table, readNames(contentOf(root / "tools" / "names.txt")), sources);
    else if (rule == "lengths")
        found = lengthBreaches(sources);
    else if (rule == "classes")
        found = classBreaches(sources);
    else if (rule == "tests")
        found = testBreaches(table, sources);
    else if (rule == "data_types")
        found = dataTypeBreaches(sources);
    else if (rule == "includes")
        for (const std::string& breach : breaches(table, sources)) found.push_back({breach, 0, ""});
    else
        return false;
    return true;
}

} // namespace

int main(int argc, char** argv) {
    const kvo::command_line::Syntax syntax{"structure_check RULE ROOT",
        "Prints every breach of a rule below ROOT. Rules: includes names lengths\n"
        "classes tests data_types. The exit code is 1 if there is a breach.\n",
        2, 2};
    const auto arguments = kvo::command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    const std::string rule = arguments.operands[0];
    const std::filesystem::path root = arguments.operands[1];
    const Tree tree{root, readTable(contentOf(root / "tools" / "layers.txt")), readTree(root)};
    if (tree.table.empty() || tree.sources.empty()) {
        std::cerr << "no layers or no sources below " << root << "\n";
        return 2;
    }
    std::vector<Breach> found;
    if (!judge(rule, tree, found)) {
        std::cerr << "no rule is named " << rule << "\n";
        return 2;
    }
    const auto exceptions = root / "tests" / "structure" / "exceptions.txt";
    found = withoutExceptions(std::move(found), rule, readExceptions(contentOf(exceptions)));
    for (const Breach& breach : found) std::cout << breach.text() << "\n";
    std::cout << tree.sources.size() << " files of " << tree.table.size() << " layers, "
              << found.size() << " breaches\n";
    return found.empty() ? 0 : 1;
}
