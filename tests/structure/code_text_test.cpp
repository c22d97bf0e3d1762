// How the structure checks read C++: comments, literals, tokens, functions.
#include "code_text.h"

#include <gtest/gtest.h>

namespace kvo::structure {
namespace {

std::string joinedTokens(std::string_view code) {
    std::string result;
    for (const Token& token : tokensOf(withoutComments(code))) result += token.text + " ";
    return result;
}

TEST(CodeText, BlanksCommentsAndLiteralsAndKeepsLines) {
    EXPECT_EQ(withoutComments("a // b\nc /* d\ne */ f"), "a     \nc     \n     f");
    EXPECT_EQ(withoutComments("x = \"a\\\"b\" + 'c';"), "x = \"    \" + \" \";");
    EXPECT_EQ(withoutComments("n = 1'000; // one\nm"), "n = 1'000;       \nm");
    EXPECT_EQ(withoutComments("R\"x(a \" b)\" c)x\" d").substr(16), " d");
    EXPECT_EQ(withoutComments("an open \"literal\nnext").substr(16), "\nnext");
    EXPECT_EQ(withoutComments("/* never closed"), std::string(15, ' '));
}

TEST(CodeText, CutsIntoTokens) {
    EXPECT_EQ(joinedTokens("a->b::c(*d, 12); // e"), "a -> b :: c ( * d , 12 ) ; ");
    const auto tokens = tokensOf("a\n\nb");
    ASSERT_EQ(tokens.size(), 2U);
    EXPECT_EQ(tokens[1].line, 3);
}

TEST(CodeText, FindsTheFunctionsOfNamespacesAndClasses) {
    const auto found = functionsOf("#define OPEN {\n"
                                   "#include \"x.h\"\n"
                                   "namespace a {\n"
                                   "const int table[] = {1, 2};\n"
                                   "enum class E { one };\n"
                                   "// a comment before f() {\n"
                                   "int\n"
                                   "f(int x) {\n"
                                   "    if (x) { return 1; }\n"
                                   "    return g([](int y) { return y; });\n"
                                   "}\n"
                                   "class C : public B {\n"
                                   "public:\n"
                                   "    C() : m_x{1}, m_y(2) {}\n"
                                   "    bool is() const { return true; }\n"
                                   "    int m_x = 0;\n"
                                   "    std::vector<int> m_z{1, 2};\n"
                                   "};\n"
                                   "template <class T = int (*)(int)> T D<T>::h() {\n"
                                   "}\n"
                                   "} // namespace a\n"
                                   "TEST(Suite, Name) {\n"
                                   "\n"
                                   "}\n");
    std::vector<std::string> names;
    for (const Function& function : found) names.push_back(function.name);
    EXPECT_EQ(names, (std::vector<std::string>{"f", "C", "is", "h", "Suite.Name"}));
    EXPECT_EQ(found[0].firstLine, 7);
    EXPECT_EQ(found[0].lastLine, 11);
    EXPECT_EQ(found[0].lines(), 5);
    EXPECT_EQ(found[1].lines(), 1);
    EXPECT_EQ(found[4].lines(), 3);
}

TEST(CodeText, NamesAMemberWithItsClass) {
    const auto found = functionsOf("void Form::event() {\n}\nForm::~Form() {}\n");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].name, "Form::event");
    EXPECT_EQ(found[1].name, "Form::~Form");
}

TEST(CodeText, CountsTheMembersOfClasses) {
    const auto found = classesOf("class Later;\n"
                                 "enum class E { one, two };\n"
                                 "template <class T> class A : public B<T, int>, private C {\n"
                                 "    Q_OBJECT\n"
                                 "\n"
                                 "public:\n"
                                 "    A(int x) : m_x{x}, m_y(2) { f(); }\n"
                                 "    explicit A();\n"
                                 "    ~A() override;\n"
                                 "    A(const A&) = delete;\n"
                                 "    A& operator=(const A&) = delete;\n"
                                 "    using Base::Base;\n"
                                 "    friend class D;\n"
                                 "    std::vector<int> one() const { return {1, 2}; }\n"
                                 "    virtual void two() = 0;\n"
                                 "    template <class W> W& three(const std::map<W, int>& m);\n"
                                 "    bool operator==(const A&) const = default;\n"
                                 "signals:\n"
                                 "    void four(int a, int b = f(1));\n"
                                 "\n"
                                 "private:\n"
                                 "    struct Inner {\n"
                                 "        int a, b;\n"
                                 "        int c = 0;\n"
                                 "    };\n"
                                 "    enum class Kind { x, y };\n"
                                 "    std::map<int, int> m_x{{1, 2}, {3, 4}};\n"
                                 "    int m_y = f(1, 2), m_z[2] = {1, 2};\n"
                                 "    std::function<void(int)> m_call;\n"
                                 "};\n"
                                 "struct Record {};\n");
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].name, "A");
    EXPECT_EQ(found[0].line, 3);
    EXPECT_FALSE(found[0].isStruct);
    EXPECT_EQ(found[0].functions, 5);
    EXPECT_EQ(found[0].data, 4);
    EXPECT_EQ(found[1].name, "Inner");
    EXPECT_TRUE(found[1].isStruct);
    EXPECT_EQ(found[1].functions, 0);
    EXPECT_EQ(found[1].data, 3);
    EXPECT_EQ(found[2].name, "Record");
    EXPECT_EQ(found[2].data, 0);
}

} // namespace
} // namespace kvo::structure
