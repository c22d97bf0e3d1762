#pragma once
// What the code of the program must keep to and no compiler looks at: names that a layer must not
// use, the size of functions, files and classes, a test file for each unit, the data types' numbers
// in their one table. Used by the program structure_check and by its tests.
#include "layer_check.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::structure {

struct Breach {
    std::string where; // the file from the root, or "file:function"; what an exception names
    int line = 0;      // 0 for the file as a whole
    std::string what;

    std::string text() const;
};

// One line of tools/names.txt.
struct ForbiddenName {
    std::string name; // "core::state" as such, "state()" as a call, "files->" as what it points to
    std::vector<std::string> layers; // patterns, * is any text
    std::string instead;
};
std::vector<ForbiddenName> readNames(std::string_view text);

// Where a layer uses a name that it must not. A declaration of the name is no use of it. A pattern
// that fits no layer of the table is a breach as well, since it forbids where no code is.
std::vector<Breach> nameBreaches(const std::vector<Layer>& table,
    const std::vector<ForbiddenName>& names, const Sources& sources);

// Functions of more than 60 lines and files of more than 600.
std::vector<Breach> lengthBreaches(const Sources& sources);

// Classes of the program's headers that declare more than 60 functions and data, constructors
// aside. A struct without a function is a record, and as long as what it records.
std::vector<Breach> classBreaches(const Sources& sources);

// Units (folder/unit.cpp of a layer) without their test file. What knows Qt or is in a folder of
// forms has its tests in tests/forms, the interfaces to the machine and their bodies in
// tests/contract, every other layer in the folder of its name. The tools are no units of the
// program.
std::vector<Breach> testBreaches(const std::vector<Layer>& table, const Sources& sources);

// Comparisons with the number of a data type outside tests and benchmarks: what a type means is
// said in core/data_types alone. A line that the mark "// Required:" precedes or ends may compare.
std::vector<Breach> dataTypeBreaches(const Sources& sources);

// One line of a list of exceptions: rule | where | why.
struct Exception {
    std::string rule;
    std::string where;
    std::string why;
};
std::vector<Exception> readExceptions(std::string_view text);

// What is left of the breaches of a rule when its exceptions are taken away. An exception that
// nothing breaches or that gives no reason is a breach itself, so the list can only shrink.
std::vector<Breach> withoutExceptions(
    std::vector<Breach> breaches, std::string_view rule, const std::vector<Exception>& exceptions);

// Every header and source below the root, but build trees and hidden folders.
Sources readTree(const std::filesystem::path& root);

} // namespace kvo::structure
