// The lines of a folder's lock, which another version of the program, on another system, reads.
#include "platform/os/lock_text.h"

#include <gtest/gtest.h>

namespace kvo::platform_os {
namespace {

TEST(LockText, StandsInLines) {
    EXPECT_EQ(linesOf({12, "kvo", "paddock", "a1b2", "c3d4"}), "12\nkvo\npaddock\na1b2\nc3d4\n");
    EXPECT_EQ(linesOf({7, "kvo", "", "", ""}), "7\nkvo\n\n\n\n");
}

TEST(LockText, IsReadBack) {
    const LockText text = lockTextIn("12\nkvo\npaddock\na1b2\nc3d4\n");
    EXPECT_EQ(text.process, 12);
    EXPECT_EQ(text.program, "kvo");
    EXPECT_EQ(text.host, "paddock");
    EXPECT_EQ(text.machine, "a1b2");
    EXPECT_EQ(text.start, "c3d4");
}

TEST(LockText, OfAnotherSystemsEndsOfLines) {
    const LockText text = lockTextIn("12\r\nkvo\r\npaddock\r\n\r\n\r\n");
    EXPECT_EQ(text.program, "kvo");
    EXPECT_EQ(text.host, "paddock");
    EXPECT_EQ(text.machine, "");
}

TEST(LockText, ThatIsNotWholeNamesNobody) {
    EXPECT_EQ(lockTextIn("").process, 0);
    EXPECT_EQ(lockTextIn("what\nkvo\n").process, 0);
    EXPECT_EQ(lockTextIn("99999999999999999999\n").process, 0);
    EXPECT_EQ(lockTextIn("12\nkv").program, "kv");
    EXPECT_EQ(lockTextIn("12\nkv").host, "");
}

TEST(LockText, IsWholeWithItsLastEnd) {
    const std::string whole = linesOf({12, "kvo", "paddock", "", ""});
    EXPECT_TRUE(isWholeLock(whole));
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(isWholeLock(whole.substr(0, length))) << length;
    EXPECT_FALSE(isWholeLock(std::string(40, '\0'))); // as some disks come back from a power cut
    EXPECT_TRUE(isWholeLock("12\r\nkvo\r\npaddock\r\n\r\n\r\n"));
}

} // namespace
} // namespace kvo::platform_os
