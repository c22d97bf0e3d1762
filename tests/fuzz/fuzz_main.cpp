// One libFuzzer program for each reader; KVO_FUZZ_READER names it. It begins with the kept inputs
// and ends with a row of figures; what it finds out about the reader goes to a folder of its own,
// and an input that ends it beside the program.
#include "lookers.h"

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

long long executions = 0;
std::string seed = "0";
Clock::time_point begun;
std::filesystem::path scratch;

void printFigure() {
    const std::chrono::duration<double> time = Clock::now() - begun;
    std::printf("figure: fuzz " KVO_FUZZ_READER
                " | %lld executions | 0 reports; %.0f a second | %.0f s | %s\n",
        executions, static_cast<double>(executions) / time.count(), time.count(), seed.c_str());
    std::error_code ignored;
    std::filesystem::remove_all(scratch, ignored);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static std::vector<std::string> words(*argv, *argv + *argc);
    begun = Clock::now();
    bool hasFolder = false;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i].starts_with("-seed=")) seed = words[i].substr(6);
        hasFolder |= !words[i].starts_with("-");
    }
    if (hasFolder) return 0; // somebody works on the kept inputs, and wants no row
    scratch = std::filesystem::temp_directory_path() / ("kvo_fuzz_" KVO_FUZZ_READER);
    std::filesystem::remove_all(scratch);
    std::filesystem::create_directories(scratch);
    words.push_back("-artifact_prefix=" KVO_FUZZ_FINDINGS "/" KVO_FUZZ_READER "-");
    words.push_back(scratch.string());
    words.push_back(KVO_FUZZ_CORPUS "/" KVO_FUZZ_READER);
    static std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    *argc = static_cast<int>(words.size());
    *argv = pointers.data();
    std::atexit(printFigure);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kvo::fuzz::Reader reader = kvo::fuzz::lookerNamed(KVO_FUZZ_READER);
    ++executions;
    reader({data, size});
    return 0;
}
