#pragma once
// C++ text as the structure checks look at it: without comments and without what literals say, cut
// into tokens, and its functions with their lines. No compiler: what is looked for shows in the
// tokens alone.
#include <string>
#include <string_view>
#include <vector>

namespace kvo::structure {

// The text with comments and the insides of literals as blanks. Lines keep their numbers.
std::string withoutComments(std::string_view text);

struct Token {
    int line = 0; // from 1
    std::string text;
};

// Words, numbers, "->", "::" and single signs. The text is one without comments.
std::vector<Token> tokensOf(std::string_view code);

// A function with a body. Both lines belong to it; the first is where its declaration begins.
struct Function {
    std::string name; // as written, with its class: "Form::event"
    int firstLine = 0;
    int lastLine = 0;
    int lines() const { return lastLine - firstLine + 1; }
};

// The functions of namespaces and classes. Lambdas count with the function they are in, tables
// do not count. The text is as written, comments included.
std::vector<Function> functionsOf(std::string_view text);

// A class or struct with a body.
struct Class {
    std::string name;
    int line = 0;
    bool isStruct = false; // by its key
    int functions = 0;     // that it declares, but for constructors, destructor and deleted ones
    int data = 0;          // its own and static ones
};

// The classes of namespaces and, behind the one that they are in, of classes. Types, names of
// types and friends that a class declares are no members. The text is as written.
std::vector<Class> classesOf(std::string_view text);

} // namespace kvo::structure
