// One libFuzzer program for each reader; KVO_FUZZ_READER names it.
#include "readers.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kvo::fuzz::Reader reader = kvo::fuzz::readerNamed(KVO_FUZZ_READER);
    reader({data, size});
    return 0;
}
