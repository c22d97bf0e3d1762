// Where memory runs out: what was begun is broken off, and told in the words of its place.
#include "platform/memory.h"

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

using namespace kvo::platform;

namespace {

// No dialogs either.
class SpeechlessDialogs : public kvo::testing::ScriptedDialogs {
public:
    Reply messageBox(const std::string&, int, const std::string&) override {
        throw std::bad_alloc();
    }
};

} // namespace

TEST(Memory, IsToldOfWhereItDoesNotSuffice) {
    kvo::testing::ScriptedDialogs dialogs;
    EXPECT_TRUE(withinMemory(dialogs, "do nothing", [] {}));
    dialogs.expectBox("Not enough memory to load this.", boxStyle::critical, "Kvo");
    EXPECT_FALSE(withinMemory(dialogs, "load this", [] { throw std::bad_alloc(); }));
    EXPECT_EQ(dialogs.problems(), "");
}

TEST(Memory, ForTheBoxItselfMayBeMissing) {
    SpeechlessDialogs dialogs;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(withinMemory(dialogs, "load this", [] { throw std::bad_alloc(); }));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Not enough memory to load this.\n");
    EXPECT_EQ(dialogs.problems(), "");
}

TEST(Memory, OfAWriteIsLikeAFullDisk) {
    const auto result =
        writtenWithinMemory("/a/b", []() -> WriteResult { throw std::bad_alloc(); });
    EXPECT_FALSE(result.done);
    EXPECT_EQ(result.message, "/a/b\ncould not be written.\nThere is not enough memory.");
    EXPECT_EQ(result.failure, FileFailure::noMemory);
    EXPECT_TRUE(writtenWithinMemory("/a/b", [] { return WriteResult{}; }).done);
}
