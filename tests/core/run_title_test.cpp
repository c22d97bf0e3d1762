#include "core/run_title.h"

#include "core/run_records.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

TEST(TitleOf, IsDateNumberAndTitle) {
    EXPECT_EQ(titleOf("32 VRN32 Ver 1.3 128k Serial No 7  Date:Wed 05 Jun 2024 Run: 3 Final#"),
        "Wed 05 Jun 2024 Run: 3 Final");
    EXPECT_EQ(titleOf("20 an old file"), "20 an old file");
    EXPECT_EQ(titleOf("20 Date:cut off"), "cut off");
    EXPECT_EQ(titleOf(""), "");
}

TEST(TitleOf, IsInTheFirstRecordOfAFile) {
    testing::MemoryFiles files;
    ByteWriter record;
    encodeHeaderLine(record, "32 VRN32  Date:Wed 05 Jun 2024 Run: 3 M\xfcller  #");
    record.fillTo(runRecordWidth);
    files.put("/run", record.take());
    EXPECT_EQ(titleOfFile("/run", files), "Wed 05 Jun 2024 Run: 3 M\xfcller");
    EXPECT_EQ(titleOfFile("/none", files), "");
    files.put("/run", {});
    EXPECT_EQ(titleOfFile("/run", files), "");
}

} // namespace
} // namespace kvo::core
