#include "tests/forms/support/form_test_main.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

namespace kvo::testing {

namespace {

using Main = int (*)(int argc, char* argv[]);

// The tests enter themselves before main() begins, in no certain order.
std::map<std::string, Main>& mains() {
    static std::map<std::string, Main> entered;
    return entered;
}

std::string running;

int tellUsage() {
    std::fputs("usage: form_tests TEST [ARGUMENT...]\n\nTests:\n", stderr);
    for (const auto& [name, main] : mains()) std::fprintf(stderr, "  %s\n", name.c_str());
    return 2;
}

} // namespace

bool enterFormTest(const char* file, Main main) {
    return mains().emplace(std::filesystem::path(file).stem().string(), main).second;
}

QString nameOfFormTest() {
    return QString::fromStdString(running);
}

} // namespace kvo::testing

int main(int argc, char* argv[]) {
    namespace testing = kvo::testing;
    if (argc < 2) return testing::tellUsage();
    const auto found = testing::mains().find(argv[1]);
    if (found == testing::mains().end()) return testing::tellUsage();
    testing::running = found->first;
    // Qt Test reads what is left as its own arguments.
    argv[1] = argv[0];
    return found->second(argc - 1, argv + 1);
}
