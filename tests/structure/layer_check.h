#pragma once
// Judges every #include of the program by the table of the floors, tools/layers.txt: a file may
// include its own layer, the layers its line names, the standard library, and the outside headers
// its line allows. Used by the program structure_check and by its tests.
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::structure {

// One line of the table.
struct Layer {
    std::string name;
    std::vector<std::string> folders;
    std::vector<std::string> uses;
    std::vector<std::string> outside;
    std::vector<std::string> never; // patterns of headers, * is any text
};

// One #include of a file.
struct Include {
    int line = 0;
    std::string name;
    bool angled = false;
};

// The lines of the table, shared lists put in their place; comments and empty lines are passed
// over.
std::vector<Layer> readTable(std::string_view text);
// What is wrong with the table itself: a layer or a list named that is not above, a folder claimed
// twice. Since a layer may name only layers above it, a table without breaches has no circle.
std::vector<std::string> tableBreaches(const std::vector<Layer>& table);
// The layer whose longest folder holds the file (a path from the root, with '/'); nullptr for none.
const Layer* layerOf(const std::vector<Layer>& table, std::string_view file);
// Whether the file is a program's entry, which is above all floors.
bool isEntry(std::string_view file);
std::vector<Include> includesOf(std::string_view text);
// Whether a text fits a pattern, in which * is any text.
bool matches(std::string_view pattern, std::string_view text);

// A program's files by their path from the root.
using Sources = std::map<std::string, std::string>;
// Every breach, a sentence each, in the order of the files; empty if the floors hold. Circles are
// told of headers, and of units: a unit is a header with its source, and it uses what either
// includes. A source includes its own header first, which proves that the header leans on no other.
std::vector<std::string> breaches(const std::vector<Layer>& table, const Sources& sources);

} // namespace kvo::structure
