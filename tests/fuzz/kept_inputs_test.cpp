// What fuzzing has kept, each input through its reader: one that once ended the program never does
// again.
#include "tests/fuzz/lookers.h"

#include "platform/bytes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace kvo::fuzz {
namespace {

namespace fs = std::filesystem;

const fs::path keptInputs = KVO_TEST_DATA "/fuzz/corpus";

int lookAtAll(const fs::path& folder, Reader look) {
    int looked = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        EXPECT_TRUE(file) << entry.path();
        look(platform::Bytes(std::istreambuf_iterator<char>(file), {}));
        ++looked;
    }
    return looked;
}

TEST(KeptInputs, GoThroughTheirReaders) {
    std::set<std::string> readers;
    for (const auto& entry : fs::directory_iterator(keptInputs)) {
        const std::string name = entry.path().filename().string();
        const Reader look = lookerNamed(name);
        ASSERT_NE(look, nullptr) << name;
        EXPECT_GT(lookAtAll(entry.path(), look), 0) << name;
        readers.insert(name);
    }
    EXPECT_EQ(readers, (std::set<std::string>{"config", "index", "info", "overlay", "raw", "run",
                           "serial", "setup", "table", "text", "times"}));
}

} // namespace
} // namespace kvo::fuzz
