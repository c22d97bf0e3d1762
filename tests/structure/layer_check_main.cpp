// layer_check ROOT: prints every breach of the floors below ROOT; exit 1 if there is one.
#include "layer_check.h"

#include <fstream>
#include <iostream>
#include <sstream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: layer_check ROOT\n";
        return 2;
    }
    const std::filesystem::path root = argv[1];
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
