// The border between the text of files and UTF-8.
#include "platform/text.h"

#include <gtest/gtest.h>

namespace kvo::platform {
namespace {

TEST(Text, OfAFileBecomesUtf8) {
    EXPECT_EQ(fromFile(""), "");
    EXPECT_EQ(fromFile("Run: 7\r\n"), "Run: 7\r\n");
    EXPECT_EQ(fromFile("M\xfcller 5\x80 \xb0"), "M\xc3\xbcller 5\xe2\x82\xac \xc2\xb0");
    EXPECT_EQ(fromFile(std::string("\x00\x81", 2)), std::string("\x00\xc2\x81", 3));
}

TEST(Text, EachByteHasACharacterThatGivesItBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        const auto one = static_cast<unsigned char>(byte);
        EXPECT_EQ(byteOf(unicodeOf(one)), static_cast<char>(one)) << byte;
        all.push_back(static_cast<char>(one));
    }
    EXPECT_TRUE(isUtf8(fromFile(all)));
    EXPECT_EQ(byteOf(u'\u0142'), '?');
    EXPECT_EQ(byteOf(u'\u0080'), '?') << "its byte is the euro sign";
}

TEST(Text, OfAFileIsToldFromUtf8) {
    for (const char* good : {"", "Kvo", "J\xc3\xbcrg\xc5\x82", "\xe3\x82\xac\xe3\x83\xac",
             "\xf0\x9f\x8f\x81", "\xed\x9f\xbf", "\xee\x80\x80", "\xf4\x8f\xbf\xbf"}) {
        EXPECT_TRUE(isUtf8(good)) << good;
    }
    // A file's letters; a follower without a lead, a lead without a follower; letters longer than
    // they need be; half of a pair; beyond the last character.
    for (const char* bad : {"M\xfcller", "5\x80", "\xc3", "\xc3\x28", "\xe3\x82", "\xc0\xaf",
             "\xe0\x80\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xff"}) {
        EXPECT_FALSE(isUtf8(bad));
    }
}

TEST(Text, GoesToUtf16AndBack) {
    const std::u16string_view wide[] = {u"", u"Kvo", u"J\u00fcrg\u0142",
        u"\u30ac\u30ec\u30fc\u30b8", u"\U0001f3c1", u"\ud7ff\ue000\uffff", u"\U00010000\U0010ffff"};
    const std::string_view narrow[] = {"", "Kvo", "J\xc3\xbcrg\xc5\x82",
        "\xe3\x82\xac\xe3\x83\xac\xe3\x83\xbc\xe3\x82\xb8", "\xf0\x9f\x8f\x81",
        "\xed\x9f\xbf\xee\x80\x80\xef\xbf\xbf", "\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"};
    for (std::size_t i = 0; i < std::size(wide); ++i) {
        EXPECT_EQ(utf8Of(wide[i]), narrow[i]);
        EXPECT_EQ(utf16Of(narrow[i]), wide[i]) << narrow[i];
    }
}

TEST(Text, ShowsWhatIsNoCharacter) {
    EXPECT_EQ(utf16Of("M\xfcller"), u"M\ufffdller");
    EXPECT_EQ(utf16Of("\xe3\x82"), u"\ufffd\ufffd");
    EXPECT_EQ(utf16Of("\xed\xa0\x80"), u"\ufffd\ufffd\ufffd");
    const char16_t high = 0xD83C;
    const char16_t low = 0xDFC1;
    EXPECT_EQ(utf8Of(std::u16string{u'a', high}), "a\xef\xbf\xbd");
    EXPECT_EQ(utf8Of(std::u16string{high, u'a'}), "\xef\xbf\xbd\x61");
    EXPECT_EQ(utf8Of(std::u16string{low, high}), "\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(utf8Of(std::u16string{high, low}), "\xf0\x9f\x8f\x81");
}

} // namespace
} // namespace kvo::platform
