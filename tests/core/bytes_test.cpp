#include "core/basic/byte_reader.h"
#include "core/basic/byte_writer.h"

#include <gtest/gtest.h>

#include <array>

namespace kvo::core {
namespace {

TEST(Bytes, ComeBackAsWritten) {
    ByteWriter writer;
    writer.u8(0xFE);
    writer.i16le(-2);
    writer.i32le(-3);
    writer.f32le(1.5F);
    writer.f64le(-2.25);
    writer.u16be(0x1234);
    writer.text("abc", 5);
    ByteReader reader(writer.bytes());
    EXPECT_EQ(reader.u8(), std::uint8_t{0xFE});
    EXPECT_EQ(reader.i16le(), std::int16_t{-2});
    EXPECT_EQ(reader.i32le(), -3);
    EXPECT_EQ(reader.f32le(), 1.5F);
    EXPECT_EQ(reader.f64le(), -2.25);
    EXPECT_EQ(reader.u16be(), std::uint16_t{0x1234});
    EXPECT_EQ(reader.text(5), "abc  ");
    EXPECT_EQ(reader.left(), 0U);
    EXPECT_FALSE(reader.failed());
}

TEST(Bytes, LieLowByteFirstInFilesAndHighByteFirstOnTheWire) {
    ByteWriter writer;
    writer.u16le(0x1234);
    writer.u16be(0x1234);
    writer.u32le(0x01020304);
    EXPECT_EQ(writer.bytes(), (platform::Bytes{0x34, 0x12, 0x12, 0x34, 4, 3, 2, 1}));
}

TEST(ByteReader, NeverReadsBehindTheEnd) {
    const platform::Bytes bytes{1, 2, 3};
    ByteReader reader(bytes);
    EXPECT_FALSE(reader.u32le());
    EXPECT_TRUE(reader.failed());
    EXPECT_EQ(reader.position(), 0U); // a read that failed took nothing
    EXPECT_EQ(reader.u16le(), std::uint16_t{0x0201});
    EXPECT_FALSE(reader.text(2));
    std::array<std::uint8_t, 2> two{7, 7};
    EXPECT_FALSE(reader.raw(two));
    EXPECT_EQ(two[0], 7);
    EXPECT_FALSE(reader.skip(2));
    EXPECT_EQ(reader.u8(), std::uint8_t{3});
    EXPECT_FALSE(reader.u8());
    EXPECT_EQ(reader.text(0), "");
}

TEST(ByteReader, ReadsUpToTheVeryEnd) {
    const platform::Bytes bytes{1, 2, 3, 4, 5};
    ByteReader reader(bytes);
    std::array<std::uint8_t, 5> all{};
    EXPECT_TRUE(reader.raw(all));
    EXPECT_EQ(all[4], 5);
    EXPECT_EQ(reader.left(), 0U);
    EXPECT_FALSE(reader.failed());
    ByteReader skipping(bytes);
    EXPECT_TRUE(skipping.skip(5));
    EXPECT_EQ(skipping.left(), 0U);
}

TEST(ByteWriter, FillsWithZerosOnlyUpwards) {
    ByteWriter writer;
    writer.u8(1);
    writer.fillTo(3);
    EXPECT_EQ(writer.bytes(), (platform::Bytes{1, 0, 0}));
    writer.fillTo(2);
    EXPECT_EQ(writer.size(), 3U);
}

} // namespace
} // namespace kvo::core
