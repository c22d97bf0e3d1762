#pragma once
// Golden vectors: lines of input and expected output, run through the production code. Each group
// of functions registers what it can run; the runner reads the lines and compares.
#include <nlohmann/json.hpp>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace kvo::vectors {

using Json = nlohmann::json;

struct Case {
    const Json& in;
    Json& expected; // `out` of the line; a function may trim both sides before the comparison
    std::filesystem::path files; // the files/ folder beside the line's file
};

// Gives what the production code made of the line, keyed as `out`. Keys that `out` does not have
// are not compared. Texts inside both sides are made by toJson and read by textOf (vector_tools.h).
using Function = std::function<Json(const Case&)>;
// Two groups may use one name for lines of different keys; the first whose test fits is taken.
using Fits = std::function<bool(const Json& in)>;

void add(const std::string& fn, Function function, Fits fits = {});

// Each file of functions has one of these, called by the runner's main; no static initialisers.
void addCoreFunctions();
void addLinkFunctions();
void addGraphFunctions();
void addLibraryFunctions();
void addImportFunctions();
void addSetupFunctions();
void addAnalogFunctions();
void addCalcFunctions();
void addFormFunctions();

// What the forms run in; main holds it to its end.
std::shared_ptr<void> makeApplication();

} // namespace kvo::vectors
