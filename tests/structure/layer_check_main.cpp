// Judges every #include of the project by the floors of tools/layers.txt.
#include "layer_check.h"
#include "tools/command_line/command_line.h"

#include <fstream>
#include <iostream>
#include <sstream>

int main(int argc, char** argv) {
    const kvo::command_line::Syntax syntax{"layer_check ROOT",
        "Prints every breach of the floors in ROOT/tools/layers.txt. The exit code is\n"
        "1 if there is one.\n",
        1, 1};
    const auto arguments = kvo::command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    const std::filesystem::path root = arguments.operands[0];
    std::ifstream in(root / "tools" / "layers.txt");
    std::ostringstream text;
    text << in.rdbuf();
    const auto table = kvo::structure::readTable(text.str());
    const auto sources = kvo::structure::readSources(root, table);
    if (table.empty() || sources.empty()) {
        std::cerr << "no layers or no sources below " << root << "\n";
        return 2;
    }
    const auto found = kvo::structure::breaches(table, sources);
    for (const std::string& breach : found) std::cout << breach << "\n";
    std::cout << sources.size() << " files of " << table.size() << " layers, " << found.size()
              << " breaches\n";
    return found.empty() ? 0 : 1;
}
